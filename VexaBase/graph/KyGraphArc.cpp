#include "VexaBase/graph/KyGraphArc.h"

#include <cstdint>
#include <memory>

#include "VexaBase/graph/KyGraphNode.h"
#include "VexaBase/graph/KyGraphPath.h"

namespace {

KyGraphNode* OtherEnd(const KyGraphArc& arc, const KyGraphNode* pNode) {
    return arc.m_pStart == pNode ? arc.m_pEnd : arc.m_pStart;
}

/// Finds out a walk that goes in circles, by comparing it with one earlier step: Brent's method.
class WalkWatch {
public:
    /// Whether the walk has left this node along this arc before; true in the second round at the latest.
    bool HasMet(const KyGraphNode* pNode, const KyGraphArc* pArc) {
        if (pNode == m_pNode && pArc == m_pArc) {
            return true;
        }
        if (--m_nStepsLeft == 0) {
            m_nStepsLeft = m_nSteps *= 2;
            m_pNode = pNode;
            m_pArc = pArc;
        }
        return false;
    }

private:
    const KyGraphNode* m_pNode = nullptr;
    const KyGraphArc* m_pArc = nullptr;
    long m_nSteps = 1;
    long m_nStepsLeft = 1;
};

}  // namespace

KyGraphArc::~KyGraphArc() { UnConnect(); }

int KyGraphArc::CmpArc(const KyGraphArc& other) const {
    const std::intptr_t nBytes =
        reinterpret_cast<std::intptr_t>(this) - reinterpret_cast<std::intptr_t>(&other);
    return static_cast<int>(nBytes / static_cast<std::intptr_t>(sizeof(KyGraphArc)));
}

void KyGraphArc::Connect() {
    if (m_pStart != nullptr) {
        m_pStart->AppendArc(this);
    }
    if (m_pEnd != nullptr) {
        m_pEnd->AppendArc(this);
    }
}

void KyGraphArc::UnConnect() {
    if (m_pStart != nullptr) {
        m_pStart->RemoveArc(this);
    }
    if (m_pEnd != nullptr) {
        m_pEnd->RemoveArc(this);
    }
    m_pStart = nullptr;
    m_pEnd = nullptr;
}

KyGraphPath* KyGraphArc::FindMesh(int nDir) {
    KyGraphNode* const pBegin = nDir == Forward ? m_pStart : m_pEnd;
    auto pPath = std::make_unique<KyGraphPath>();
    pPath->m_pBeginNode = pBegin;

    KyGraphNode* pNode = pBegin;
    [[maybe_unused]] WalkWatch forward;
    for (KyGraphArc* pArc = this; pArc != nullptr;) {
        KY_CHECK(!forward.HasMet(pNode, pArc), "KyGraphArc::FindMesh", "a walk without end (%ld arcs passed)",
                 pPath->m_nLength);
        pPath->Append(pArc);
        pNode = OtherEnd(*pArc, pNode);
        pArc = pNode != nullptr ? pNode->FindNextArc(pArc) : nullptr;
        if (pArc == this) {
            return pPath.release();
        }
    }

    // The chain is open: the other half lies behind the beginning.
    pNode = pBegin;
    KyGraphArc* pArc = this;
    [[maybe_unused]] WalkWatch backward;
    while (pNode != nullptr && (pArc = pNode->FindPreArc(pArc)) != nullptr) {
        KY_CHECK(!backward.HasMet(pNode, pArc), "KyGraphArc::FindMesh",
                 "a walk without end (%ld arcs passed)", pPath->m_nLength);
        pPath->InsertHead(pArc);
        pNode = OtherEnd(*pArc, pNode);
    }
    pPath->m_pBeginNode = pNode;
    return pPath.release();
}

void KyGraphArc::RePoint(const KyGraphNode* pOld, KyGraphNode* pNew) {
    if (m_pStart == pOld) {
        m_pStart = pNew;
    }
    if (m_pEnd == pOld) {
        m_pEnd = pNew;
    }
}
