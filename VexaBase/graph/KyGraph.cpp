#include "VexaBase/graph/KyGraph.h"

#include <memory>

namespace {

/// Takes element i out of an owning list without deleting it.
template <class T>
std::unique_ptr<T> TakeOut(KyPXList<T>& list, long i) {
    list.MoveTo(i);
    std::unique_ptr<T> pElement(list.GetCurData());
    list.SetCurData(nullptr);
    list.DelCur();
    return pElement;
}

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
    }
    *this << pArc->m_pEnd;
    pArc->m_pEnd = m_lstNode.GetCurData();
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
    std::unique_ptr<KyGraphArc> pArc = TakeOut(m_lstArc, i);
    Unlist(*pArc);
    const long nIndex = *this << pArc.get();
    static_cast<void>(pArc.release());
    return nIndex;
}

long KyGraph::CheckNode(long i, KyDynArrayBase<KyGraphArc*>* pLost) {
    KY_CHECK(i >= 0 && i < m_lstNode.m_nLength, "KyGraph::CheckNode",
             "index out of range (index %ld, %ld nodes)", i, m_lstNode.m_nLength);
    std::unique_ptr<KyGraphNode> pOwned = TakeOut(m_lstNode, i);
    KyGraphNode* const pNode = pOwned.get();
    KyList<KyGraphArc*> lstTaken;
    const auto rePoint = [&](KyGraphNode* pNew) {
        for (KyGraphArc* pArc : m_lstArc) {
            pArc->RePoint(pNode, pNew);
        }
        for (KyGraphArc* pArc : lstTaken) {
            pArc->RePoint(pNode, pNew);
        }
    };
    long nIndex = -1;
    try {
        // Unlisting an arc shortens the list while k advances: every second arc stays where it is, as
        // documented.
        for (long k = 0; k < pNode->m_lstArc.m_nLength; ++k) {
            KyGraphArc* const pArc = *pNode->m_lstArc.GetAt(k);
            lstTaken.Append(pArc);
            Unlist(*pArc);
        }
        nIndex = *this << pNode;
        static_cast<void>(pOwned.release());
    } catch (...) {
        rePoint(nullptr);
        throw;
    }
    KyGraphNode* const pSurvivor = m_lstNode.GetCurData();
    if (pSurvivor != pNode) {
        // Before the first comparison below, which might read the node that is gone.
        rePoint(pSurvivor);
    }
    for (KyGraphArc* pArc : lstTaken) {
        const long nArc = IndexOf(m_lstArc, pArc);
        if (nArc < 0) {
            if (pLost != nullptr) {
                pLost->Append(pArc);
            }
            continue;
        }
        std::unique_ptr<KyGraphArc> pTaken = TakeOut(m_lstArc, nArc);
        *this << pTaken.get();
        static_cast<void>(pTaken.release());
    }
    return nIndex;
}
