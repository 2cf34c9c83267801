#include "VexaBase/graph/KyGraphNode.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

/// Makes a node the one around which arcs are ordered, for as long as this object lives.
class StartNodeScope {
public:
    explicit StartNodeScope(KyGraphNode* pNode)
        : m_pPrevious(std::exchange(KyGraphNode::s_pStartNode, pNode)) {}
    ~StartNodeScope() { KyGraphNode::s_pStartNode = m_pPrevious; }
    StartNodeScope(const StartNodeScope&) = delete;
    StartNodeScope& operator=(const StartNodeScope&) = delete;

private:
    KyGraphNode* m_pPrevious;
};

/// Removes the first nCount arcs from an arc list, without deleting them.
void DropFirst(KyPDList<KyGraphArc>& lstArc, long nCount) {
    for (long i = 0; i < nCount; ++i) {
        lstArc.MoveToFirst();
        lstArc.SetCurData(nullptr);
        lstArc.DelCur();
    }
}

}  // namespace

KyGraphNode* KyGraphNode::s_pStartNode = nullptr;

KyGraphNode::KyGraphNode() = default;

KyGraphNode::~KyGraphNode() { UnConnect(); }

int KyGraphNode::CmpNode(const KyGraphNode& other) const {
    const std::intptr_t nBytes =
        reinterpret_cast<std::intptr_t>(this) - reinterpret_cast<std::intptr_t>(&other);
    return static_cast<int>(nBytes / static_cast<std::intptr_t>(sizeof(KyGraphNode)));
}

int KyGraphNode::AppendArc(KyGraphArc* pArc) {
    KY_CHECK(pArc != nullptr, "KyGraphNode::AppendArc", "no arc (%ld arcs listed)", m_lstArc.m_nLength);
    const StartNodeScope scope(this);
    if (m_lstArc.m_nLength == 0) {
        m_lstArc.Append(pArc);
        return 1;
    }
    if (pArc->CmpArc(**m_lstArc.GetFirst()) < 0) {
        m_lstArc.InsertHead(pArc);
        return 1;
    }
    if (pArc->CmpArc(**m_lstArc.GetLast()) > 0) {
        m_lstArc.Append(pArc);
        return 1;
    }
    long nLow = 0;
    long nHigh = m_lstArc.m_nLength - 1;
    while (nLow < nHigh) {
        const long nMiddle = (nLow + nHigh) / 2;
        m_lstArc.MoveTo(nMiddle);
        const int nOrder = pArc->CmpArc(*m_lstArc.GetCurData());
        if (nOrder == 0) {
            return 0;
        }
        if (nOrder > 0) {
            nLow = nMiddle + 1;
        } else {
            nHigh = nMiddle - 1;
        }
    }
    if (nLow == nHigh) {
        m_lstArc.MoveTo(nLow);
        const int nOrder = pArc->CmpArc(*m_lstArc.GetCurData());
        if (nOrder == 0) {
            return 0;
        }
        if (nOrder > 0) {
            m_lstArc.InsertAfterCur(pArc);
            return 1;
        }
    }
    m_lstArc.InsertCur(pArc);
    return 1;
}

int KyGraphNode::RemoveArc(KyGraphArc* pArc) {
    for (m_lstArc.MoveToFirst(); m_lstArc.m_nCurIndex >= 0; m_lstArc.MoveToNext()) {
        if (m_lstArc.GetCurData() == pArc) {
            m_lstArc.SetCurData(nullptr);
            m_lstArc.DelCur();
            return 1;
        }
    }
    return 0;
}

void KyGraphNode::UnConnect() {
    for (KyGraphArc*& pArc : m_lstArc) {
        pArc->RePoint(this, nullptr);
        pArc = nullptr;
    }
    m_lstArc.Reset();
}

void KyGraphNode::Conbine(KyGraphNode* pOther) {
    KY_CHECK(pOther != nullptr, "KyGraphNode::Conbine", "no node (%ld arcs listed)", m_lstArc.m_nLength);
    if (pOther == this) {
        return;
    }
    long nTaken = 0;
    for (KyGraphArc* pArc : pOther->m_lstArc) {
        KyGraphNode* const pStart = pArc->m_pStart;
        KyGraphNode* const pEnd = pArc->m_pEnd;
        pArc->RePoint(pOther, this);
        try {
            AppendArc(pArc);
        } catch (...) {
            pArc->m_pStart = pStart;
            pArc->m_pEnd = pEnd;
            DropFirst(pOther->m_lstArc, nTaken);
            throw;
        }
        ++nTaken;
    }
    DropFirst(pOther->m_lstArc, nTaken);
}

KyGraphArc* KyGraphNode::FindNextArc(KyGraphArc* pArc) {
    const auto it = std::find(m_lstArc.begin(), m_lstArc.end(), pArc);
    if (m_lstArc.m_nLength < 2 || it == m_lstArc.end()) {
        return nullptr;
    }
    const auto itNext = std::next(it);
    return itNext != m_lstArc.end() ? *itNext : *m_lstArc.begin();
}

KyGraphArc* KyGraphNode::FindPreArc(KyGraphArc* pArc) {
    const auto it = std::find(m_lstArc.begin(), m_lstArc.end(), pArc);
    if (m_lstArc.m_nLength < 2 || it == m_lstArc.end()) {
        return nullptr;
    }
    return it != m_lstArc.begin() ? *std::prev(it) : *m_lstArc.GetLast();
}

void KyGraphNode::GetArcOut(KyDynArrayBase<KyGraphArc*>& out) {
    for (KyGraphArc* pArc : m_lstArc) {
        if (pArc->m_pStart == this) {
            out.Append(pArc);
        }
    }
}

void KyGraphNode::GetArcIn(KyDynArrayBase<KyGraphArc*>& out) {
    for (KyGraphArc* pArc : m_lstArc) {
        if (pArc->m_pEnd == this) {
            out.Append(pArc);
        }
    }
}
