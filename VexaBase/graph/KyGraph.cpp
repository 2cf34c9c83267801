#include "VexaBase/graph/KyGraph.h"

#include <utility>

namespace {

/// An element that is out of its list for a while. Its node waits to be put back or freed; the element itself
/// is its owner's business.
template <class List>
class Absent {
public:
    Absent() = default;

    /// Takes the current element out.
    explicit Absent(List& list)
        : m_pList(&list), m_nIndex(list.m_nCurIndex), m_pNode((list.*(&Operations::TakeOutCur))()) {}

    /// Makes it the element that it was. Whatever was taken out of the list later has to be back.
    void PutBack() {
        if (m_pNode != nullptr) {
            (m_pList->*(&Operations::PutBack))(std::exchange(m_pNode, nullptr), m_nIndex);
        }
    }

    /// The element has been destroyed.
    void Empty() {
        if (m_pNode != nullptr) {
            m_pNode->m_data = nullptr;
        }
    }

    /// Removes the elements of the list that were put back empty.
    void RemoveEmpty() {
        if (m_pList != nullptr) {
            for (m_pList->MoveToFirst(); m_pList->m_nCurIndex >= 0; m_pList->MoveToNext()) {
                if (m_pList->GetCurData() == nullptr) {
                    m_pList->DelCur();
                }
            }
        }
    }

    void Free() { delete std::exchange(m_pNode, nullptr); }

private:
    /// What lists have for the classes derived from them.
    struct Operations : List {
        using List::PutBack;
        using List::TakeOutCur;
    };

    List* m_pList = nullptr;
    long m_nIndex = -1;
    KyDListNode<typename List::value_type>* m_pNode = nullptr;
};

/// An arc's places around its nodes, which it is off for a while. Its ends stay what they are.
class AbsentArc {
public:
    AbsentArc() = default;
    explicit AbsentArc(const KyGraphArc& arc)
        : m_atStart(TakeOff(arc.m_pStart, arc)), m_atEnd(TakeOff(arc.m_pEnd, arc)) {}

    void PutBack() {
        m_atEnd.PutBack();
        m_atStart.PutBack();
    }
    void Empty() {
        m_atStart.Empty();
        m_atEnd.Empty();
    }
    void RemoveEmpty() {
        m_atStart.RemoveEmpty();
        m_atEnd.RemoveEmpty();
    }
    void Free() {
        m_atStart.Free();
        m_atEnd.Free();
    }

private:
    using Place = Absent<KyPDList<KyGraphArc>>;

    static Place TakeOff(KyGraphNode* pNode, const KyGraphArc& arc) {
        if (pNode == nullptr) {
            return {};
        }
        KyPDList<KyGraphArc>& lstArc = pNode->m_lstArc;
        for (lstArc.MoveToFirst(); lstArc.m_nCurIndex >= 0; lstArc.MoveToNext()) {
            if (lstArc.GetCurData() == &arc) {
                return Place(lstArc);
            }
        }
        return {};
    }

    Place m_atStart;
    Place m_atEnd;
};

/// An arc taken off a node that is being put in order; and of the arc behind it, which stays, what it was
/// before another node took it over.
struct Collected {
    KyGraphArc* m_pArc = nullptr;  // null once it has been destroyed
    AbsentArc m_places{};
    bool m_bIsReattached = false;

    KyGraphArc* m_pNext = nullptr;
    KyGraphNode* m_pNextStart = nullptr;
    KyGraphNode* m_pNextEnd = nullptr;
    bool m_bNextIsListed = false;
};

/// Takes an arc off both its nodes, its ends staying what they are.
void Unlist(KyGraphArc& arc) {
    KyGraphNode* const pStart = arc.m_pStart;
    KyGraphNode* const pEnd = arc.m_pEnd;
    arc.UnConnect();
    arc.m_pStart = pStart;
    arc.m_pEnd = pEnd;
}

/// Index of an arc by identity, or -1.
long IndexOf(const KyPXList<KyGraphArc>& lstArc, const KyGraphArc* pArc) {
    long i = 0;
    for (const KyGraphArc* p : lstArc) {
        if (p == pArc) {
            return i;
        }
        ++i;
    }
    return -1;
}

}  // namespace

KyGraph::KyGraph(long nStep) : m_lstNode(nStep), m_lstArc(nStep) {}

KyGraph::~KyGraph() { UnConnect(); }

long KyGraph::operator<<(KyGraphNode* pNode) {
    KY_CHECK(pNode != nullptr, "KyGraph::operator<<", "no node (%ld nodes)", m_lstNode.m_nLength);
    if (!m_lstNode.BFindDataTo(*pNode)) {
        m_lstNode.InsertCur(pNode);
    } else if (KyGraphNode* const pResident = m_lstNode.GetCurData(); pResident != pNode) {
        pResident->Conbine(pNode);
        delete pNode;
    }
    return m_lstNode.m_nCurIndex;
}

long KyGraph::operator<<(KyGraphArc* pArc) {
    KY_CHECK(pArc != nullptr, "KyGraph::operator<<", "no arc (%ld arcs)", m_lstArc.m_nLength);
    if (m_lstArc.BFindDataTo(*pArc)) {
        if (m_lstArc.GetCurData() != pArc) {
            delete pArc;
        }
        return m_lstArc.m_nCurIndex;
    }
    m_lstArc.InsertCur(pArc);
    try {
        pArc->Connect();
    } catch (...) {
        Unlist(*pArc);
        m_lstArc.SetCurData(nullptr);
        m_lstArc.DelCur();
        throw;
    }
    return m_lstArc.m_nCurIndex;
}

long KyGraph::Create(KyGraphArc* pArc) {
    KY_CHECK(pArc != nullptr && pArc->m_pStart != nullptr && pArc->m_pEnd != nullptr, "KyGraph::Create",
             "no arc, or an arc without both ends (%ld arcs)", m_lstArc.m_nLength);
    const bool bIsLoop = pArc->m_pStart == pArc->m_pEnd;
    *this << pArc->m_pStart;
    pArc->m_pStart = m_lstNode.GetCurData();
    if (bIsLoop) {
        pArc->m_pEnd = pArc->m_pStart;
        // Looked for, but not added: without an order it might not be found, and would be owned twice.
        m_lstNode.BFindDataTo(*pArc->m_pStart);
    } else {
        *this << pArc->m_pEnd;
        pArc->m_pEnd = m_lstNode.GetCurData();
    }
    return *this << pArc;
}

long KyGraph::Find(const KyGraphNode& node) {
    return m_lstNode.BFindDataTo(node) ? m_lstNode.m_nCurIndex : -1;
}

long KyGraph::Find(const KyGraphArc& arc) { return m_lstArc.BFindDataTo(arc) ? m_lstArc.m_nCurIndex : -1; }

void KyGraph::UnConnect() {
    for (KyGraphNode* pNode : m_lstNode) {
        pNode->UnConnect();
    }
    for (KyGraphArc* pArc : m_lstArc) {
        pArc->UnConnect();
    }
}

long KyGraph::CheckArc(long i) {
    KY_CHECK(i >= 0 && i < m_lstArc.m_nLength, "KyGraph::CheckArc",
             "index out of range (index %ld, %ld arcs)", i, m_lstArc.m_nLength);
    m_lstArc.MoveTo(i);
    KyGraphArc* const pArc = m_lstArc.GetCurData();
    Absent element(m_lstArc);
    AbsentArc places(*pArc);
    try {
        *this << pArc;
    } catch (...) {
        places.PutBack();
        element.PutBack();
        throw;
    }
    places.Free();
    element.Free();
    return m_lstArc.m_nCurIndex;
}

/// One run of CheckNode, which can be undone until the node is merged away.
class KyGraph::NodeCheck {
public:
    NodeCheck(KyGraph& graph, long i) : m_graph(graph) {
        m_graph.m_lstNode.MoveTo(i);
        m_pNode = m_graph.m_lstNode.GetCurData();
        m_place = Absent(m_graph.m_lstNode);
    }
    NodeCheck(const NodeCheck&) = delete;
    NodeCheck& operator=(const NodeCheck&) = delete;
    ~NodeCheck() {
        m_place.Free();
        for (Collected& collected : m_lstCollected) {
            collected.m_places.Free();
        }
    }

    long Run(KyDynArrayBase<KyGraphArc*>* pLost) {
        try {
            Collect();
            InsertNode();
            Reattach(pLost);
        } catch (...) {
            if (!m_bIsMerged) {
                Undo();
            }
            throw;
        }
        return m_nIndex;
    }

private:
    /// Taking an arc off shortens the node's list while k advances: every second arc stays where it is, as
    /// documented.
    void Collect() {
        for (long k = 0; k < m_pNode->m_lstArc.m_nLength; ++k) {
            KyGraphArc* const pArc = *m_pNode->m_lstArc.GetAt(k);
            m_lstCollected.Append(Collected{pArc});
            m_lstCollected.GetLast()->m_places = AbsentArc(*pArc);
        }
    }

    void InsertNode() {
        KyPXList<KyGraphNode>& lstNode = m_graph.m_lstNode;
        if (!lstNode.BFindDataTo(*m_pNode)) {
            lstNode.InsertCur(m_pNode);
        } else {
            MergeInto(lstNode.GetCurData());
        }
        m_nIndex = lstNode.m_nCurIndex;
    }

    void MergeInto(KyGraphNode* pSurvivor) {
        TakeOver(pSurvivor);
        m_pNode->UnConnect();
        delete m_pNode;
        m_bIsMerged = true;
        // Before the first comparison of Reattach, which might read the node that is gone.
        for (KyGraphArc* pArc : m_graph.m_lstArc) {
            pArc->RePoint(m_pNode, pSurvivor);
        }
        for (const Collected& collected : m_lstCollected) {
            collected.m_pArc->RePoint(m_pNode, pSurvivor);
        }
    }

    /// What KyGraphNode::Conbine does, but all or nothing. The node still lists its arcs afterwards.
    void TakeOver(KyGraphNode* pSurvivor) {
        auto it = m_lstCollected.begin();
        try {
            for (KyGraphArc* pArc : m_pNode->m_lstArc) {
                it->m_pNext = pArc;
                it->m_pNextStart = pArc->m_pStart;
                it->m_pNextEnd = pArc->m_pEnd;
                pArc->RePoint(m_pNode, pSurvivor);
                it->m_bNextIsListed = pSurvivor->AppendArc(pArc) != 0;
                ++it;
            }
        } catch (...) {
            for (const Collected& collected : m_lstCollected) {
                if (collected.m_bNextIsListed) {
                    pSurvivor->RemoveArc(collected.m_pNext);
                }
                if (collected.m_pNext != nullptr) {
                    collected.m_pNext->m_pStart = collected.m_pNextStart;
                    collected.m_pNext->m_pEnd = collected.m_pNextEnd;
                }
            }
            throw;
        }
    }

    void Reattach(KyDynArrayBase<KyGraphArc*>* pLost) {
        KyPXList<KyGraphArc>& lstArc = m_graph.m_lstArc;
        for (Collected& collected : m_lstCollected) {
            const long nArc = IndexOf(lstArc, collected.m_pArc);
            if (nArc < 0) {
                if (pLost != nullptr) {
                    pLost->Append(collected.m_pArc);
                }
                continue;
            }
            lstArc.MoveTo(nArc);
            Absent element(lstArc);
            try {
                m_graph << collected.m_pArc;
            } catch (...) {
                element.PutBack();
                throw;
            }
            element.Free();
            collected.m_bIsReattached = lstArc.GetCurData() == collected.m_pArc;
            if (!collected.m_bIsReattached) {
                collected.m_pArc = nullptr;
            }
        }
    }

    void Undo() {
        for (const Collected& collected : m_lstCollected) {
            if (collected.m_bIsReattached) {
                Unlist(*collected.m_pArc);
            }
        }
        if (m_nIndex >= 0) {
            m_graph.m_lstNode.MoveTo(m_nIndex);
            Absent(m_graph.m_lstNode).Free();
        }
        m_place.PutBack();
        for (auto it = m_lstCollected.end(); it-- != m_lstCollected.begin();) {
            if (it->m_pArc == nullptr) {
                it->m_places.Empty();
            }
            it->m_places.PutBack();
        }
        for (Collected& collected : m_lstCollected) {
            if (collected.m_pArc == nullptr) {
                collected.m_places.RemoveEmpty();
            }
        }
    }

    KyGraph& m_graph;
    KyDList<Collected> m_lstCollected;
    KyGraphNode* m_pNode;
    Absent<KyPXList<KyGraphNode>> m_place;
    long m_nIndex = -1;
    bool m_bIsMerged = false;
};

long KyGraph::CheckNode(long i, KyDynArrayBase<KyGraphArc*>* pLost) {
    KY_CHECK(i >= 0 && i < m_lstNode.m_nLength, "KyGraph::CheckNode",
             "index out of range (index %ld, %ld nodes)", i, m_lstNode.m_nLength);
    return NodeCheck(*this, i).Run(pLost);
}
