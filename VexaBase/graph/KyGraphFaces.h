// All faces of a graph, each once:
//
//     KyForEachFace(graph, [](std::unique_ptr<KyGraphPath> pFace) { ... });
//
// Every arc has two sides, which are its two directions. Going along a side and then, at each node, on to the
// next arc in rotational order comes back to where it began: the sides passed bound one face. Every side lies
// on one face, so that the faces divide the sides among them. Where arcs are ordered clockwise the face lies
// to the left, otherwise to the right; each component has one face around its outside as well.
//
// These are the closed faces of KyGraphArc::FindMesh, and besides them those that FindMesh does not close: at
// a dead end the walk turns round and comes back along the other side, and a bridge is passed once in each
// direction, so that either stands in the path twice. A loop, which its node lists once, has one side only,
// the forward one.
#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <utility>

#include "VexaBase/graph/KyGraph.h"
#include "VexaBase/graph/KyGraphPath.h"

/// Calls visit(KyGraphArc&, int nDir) for each arc of a path, with the direction in which the path passes it.
template <class Visit>
void KyForEachSide(const KyGraphPath& path, Visit visit) {
    const KyGraphNode* pFrom = path.m_pBeginNode;
    for (KyGraphArc* pArc : path) {
        const bool bForward = pArc->m_pStart == pFrom;
        visit(*pArc, bForward ? KyGraphArc::Forward : KyGraphArc::Backward);
        pFrom = bForward ? pArc->m_pEnd : pArc->m_pStart;
    }
}

/// The face on the side of an arc that leaves pFrom, one of its ends. O(arcs passed, times the arcs at their
/// nodes).
inline std::unique_ptr<KyGraphPath> KyTraceFace(KyGraphArc& arc, KyGraphNode* pFrom) {
    std::unique_ptr<KyGraphPath> pMesh(
        arc.FindMesh(arc.m_pStart == pFrom ? KyGraphArc::Forward : KyGraphArc::Backward));
    // A mesh ends where it meets the arc again, at either end: one that comes to the far end is but a part.
    KyGraphArc* const pLast = *pMesh->GetLast();
    const KyGraphNode* const pFar = arc.m_pStart == pFrom ? arc.m_pEnd : arc.m_pStart;
    const auto isEndOfLast = [pLast](const KyGraphNode* pNode) {
        return pLast->m_pStart == pNode || pLast->m_pEnd == pNode;
    };
    const bool bMayClose = pMesh->m_pBeginNode == pFrom && pFrom != nullptr && isEndOfLast(pFrom) &&
                           (pFar == pFrom || !isEndOfLast(pFar));
    if (bMayClose && *pMesh->GetFirst() == &arc && pFrom->FindNextArc(pLast) == &arc) {
        return pMesh;
    }

    // An open chain through a dead end, one that a bridge cuts short, or two arcs between the same nodes.
    auto pFace = std::make_unique<KyGraphPath>();
    pFace->m_pBeginNode = pFrom;
    KyGraphArc* pArc = &arc;
    KyGraphNode* pAt = pFrom;
    do {
        pFace->Append(pArc);
        pAt = pArc->m_pStart == pAt ? pArc->m_pEnd : pArc->m_pStart;
        KyGraphArc* const pNext = pAt != nullptr ? pAt->FindNextArc(pArc) : nullptr;
        pArc = pNext != nullptr ? pNext : pArc;
    } while (pArc != &arc || pAt != pFrom);
    return pFace;
}

/// Calls visit(std::unique_ptr<KyGraphPath>) for each face along these arcs. The path is the visitor's to
/// keep, its arcs are the graph's. Arcs are taken in their order, forward before backward, and a face begins
/// with the first of its sides that comes. Arcs without a node are passed over.
///
/// The caller remembers sides, as suits an application that has its arcs numbered: isPassed(const KyGraphArc&,
/// int nDir), asked for every side before the face from there is traced, is true where the path of an earlier
/// visit had that side (see KyForEachSide), or where no face is to begin. `arcs` is any range of pointers to
/// arcs. Requires the arcs to stay as they are until the last visit, and to be listed as a KyGraph lists
/// them. O(sides, times the arcs at their nodes).
template <class Arcs, class IsPassed, class Visit>
void KyForEachFace(const Arcs& arcs, IsPassed isPassed, Visit visit) {
    for (KyGraphArc* pArc : arcs) {
        const bool bLoop = pArc->m_pStart == pArc->m_pEnd;
        if (bLoop && pArc->m_pStart == nullptr) {
            continue;
        }
        if (!isPassed(*pArc, KyGraphArc::Forward)) {
            visit(KyTraceFace(*pArc, pArc->m_pStart));
        }
        if (!bLoop && !isPassed(*pArc, KyGraphArc::Backward)) {
            visit(KyTraceFace(*pArc, pArc->m_pEnd));
        }
    }
}

/// All faces of a graph, each once, as above, from its arcs in the graph's order. Remembers the sides in a hash table.
template <class Visit>
void KyForEachFace(const KyGraph& graph, Visit visit) {
    struct Sides {
        bool m_isPassed[2] = {};
    };
    std::unordered_map<const KyGraphArc*, Sides> sides;
    sides.reserve(static_cast<std::size_t>(graph.m_lstArc.GetLength()));
    const auto isPassed = [&sides](const KyGraphArc& arc, int nDir) -> bool& {
        return sides[&arc].m_isPassed[nDir == KyGraphArc::Forward ? 0 : 1];
    };
    KyForEachFace(graph.m_lstArc, isPassed, [&](std::unique_ptr<KyGraphPath> pFace) {
        KyForEachSide(*pFace, [&](const KyGraphArc& arc, int nDir) { isPassed(arc, nDir) = true; });
        visit(std::move(pFace));
    });
}
