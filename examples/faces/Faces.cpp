#include "examples/faces/Faces.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "VexaBase/graph/KyGraphFaces.h"
#include "examples/faces/Colouring.h"
#include "examples/faces/Events.h"
#include "examples/faces/Geos.h"

namespace faces {
namespace {

/// Goes ahead of the tracing, which takes the arcs in their order: asks those that it will come to next into
/// the processor's cache, and sends PartDone now and then.
class Scout {
public:
    explicit Scout(const std::vector<MapArc*>& arcs) : m_arcs(arcs) {}

    /// The tracing has come to the arc of this index.
    void ComeTo(std::size_t nIndex) {
        for (; m_nPrefetched < std::min(nIndex + ArcsAhead, m_arcs.size()); ++m_nPrefetched) {
            Prefetch(m_arcs[m_nPrefetched]);
        }
        for (; m_nTold <= nIndex; m_nTold += ArcsAhead) {
            double dDone = static_cast<double>(m_nTold) / static_cast<double>(m_arcs.size());
            KySendEvent(PartDone, &dDone, PartMask);
        }
    }

private:
    /// Nodes, arcs and the entries of the nodes' lists stand in memory much in the order of the arcs, as they
    /// were made; a walk touches some that lie a little ahead, in no order that the processor could foresee.
    static constexpr std::size_t ArcsAhead = 4096;

    static void Prefetch(const MapArc* pArc) {
        constexpr std::ptrdiff_t cacheLine = 64;
        constexpr std::ptrdiff_t bytesAnArc = 256;
        for (std::ptrdiff_t n = 0; n < bytesAnArc; n += cacheLine) {
            __builtin_prefetch(reinterpret_cast<const char*>(pArc) + n);
        }
    }

    const std::vector<MapArc*>& m_arcs;
    std::size_t m_nPrefetched = 0;
    std::size_t m_nTold = 0;
};

}  // namespace

FaceMap::FaceMap(const PlaneMap& map) : m_map(map), m_walkOfSide(2 * map.m_arcs.size(), NoWalk) {
    m_sides.reserve(m_walkOfSide.size());
    const EulerCount count = CountForEuler();
    const long nWalks = std::max(0L, 2 * count.m_nComponents - count.m_nNodes + count.m_nArcs);
    m_walks.reserve(static_cast<std::size_t>(nWalks));
    m_faces.reserve(static_cast<std::size_t>(nWalks));
    Scout scout(map.m_arcs);
    KyForEachFace(
        map.m_arcs,
        [&](const KyGraphArc& arc, int nDir) {
            const unsigned int nIndex = static_cast<const MapArc&>(arc).m_nIndex;
            scout.ComeTo(nIndex);
            return map.m_isBridge[nIndex] || m_walkOfSide[2 * nIndex + static_cast<Side>(nDir)] != NoWalk;
        },
        [this](const std::unique_ptr<KyGraphPath>& pPath) { AddWalk(*pPath); });
}

void FaceMap::AddWalk(const KyGraphPath& path) {
    const auto nWalk = static_cast<unsigned int>(m_walks.size());
    const auto nFirst = static_cast<unsigned int>(m_sides.size());
    const auto* pBegin = static_cast<const MapNode*>(path.m_pBeginNode);
    const MapNode* pAt = pBegin;
    unsigned long nTwiceArea = 0;  // may overflow on the way; the whole fits
    KyForEachSide(path, [&](const KyGraphArc& arc, int nDir) {
        const Side nSide = 2 * static_cast<const MapArc&>(arc).m_nIndex + static_cast<Side>(nDir);
        if (m_walkOfSide[nSide] != NoWalk)
            throw std::logic_error("the map is not plane: two faces share a side");
        m_walkOfSide[nSide] = nWalk;
        m_sides.push_back(nSide);
        const auto* pNext =
            static_cast<const MapNode*>(nDir == KyGraphArc::Forward ? arc.m_pEnd : arc.m_pStart);
        nTwiceArea += static_cast<unsigned long>(Cross(pBegin->m_point, pAt->m_point, pNext->m_point));
        pAt = pNext;
    });
    if (pAt != pBegin) throw std::logic_error("the map is not plane: a face is not closed");

    Walk walk{nFirst, static_cast<unsigned int>(m_sides.size()) - nFirst, static_cast<long>(nTwiceArea),
              Outside};
    if (walk.m_nTwiceArea > 0) {
        walk.m_nFace = static_cast<long>(m_faces.size());
        m_faces.push_back({nWalk, walk.m_nTwiceArea});
    }
    m_walks.push_back(walk);
}

void FaceMap::LocateHoles() {
    const std::vector<unsigned int> outerWalks = OuterWalks();
    if (outerWalks.size() < 2) return;

    const Geos geos;
    const Geos::Tree pTree = geos.NewTree();
    std::vector<Geos::Geometry> keys;
    for (MapNode* const& pFirst : m_map.m_firstNodes) {
        keys.push_back(geos.NewLine(pFirst->m_point, pFirst->m_point));
        GEOSSTRtree_insert_r(geos, pTree.get(), keys.back().get(), const_cast<MapNode**>(&pFirst));
    }

    // Every face looks for components in its box; a component keeps the smallest face that it is in.
    std::vector<long> faceAround(outerWalks.size(), Outside);
    std::vector<MapNode* const*> found;
    const auto keep = [](void* pItem, void* pFound) {
        static_cast<std::vector<MapNode* const*>*>(pFound)->push_back(static_cast<MapNode* const*>(pItem));
    };
    for (const Face& face : m_faces) {
        const Walk& walk = m_walks[face.m_nOuterWalk];
        GridPoint low = m_map.Start(m_sides[walk.m_nFirst]);
        GridPoint high = low;
        for (const GridPoint point : PointsOf(walk)) {
            low = {std::min(low.x, point.x), std::min(low.y, point.y)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        }
        found.clear();
        GEOSSTRtree_query_r(geos, pTree.get(), geos.NewLine(low, high).get(), keep, &found);
        for (MapNode* const* pItem : found) {
            const auto nComponent = static_cast<std::size_t>(pItem - m_map.m_firstNodes.data());
            if (nComponent == m_map.ComponentOf(ArcOf(m_sides[walk.m_nFirst]))) continue;
            long& nAround = faceAround[nComponent];
            const bool bSmaller = nAround == Outside ||
                                  face.m_nTwiceArea < m_faces[static_cast<std::size_t>(nAround)].m_nTwiceArea;
            if (bSmaller && Surrounds(walk, (*pItem)->m_point)) nAround = walk.m_nFace;
        }
    }
    for (std::size_t i = 0; i < outerWalks.size(); ++i) {
        if (faceAround[i] != Outside) MakeHole(outerWalks[i], faceAround[i]);
    }
    std::sort(m_holes.begin(), m_holes.end(), [](const Hole& a, const Hole& b) {
        return a.m_nFace != b.m_nFace ? a.m_nFace < b.m_nFace : a.m_nWalk < b.m_nWalk;
    });
}

/// The walk around the outside of each component.
std::vector<unsigned int> FaceMap::OuterWalks() const {
    std::vector<unsigned int> outerWalks(m_map.m_firstNodes.size(), NoWalk);
    for (unsigned int i = 0; i < m_walks.size(); ++i) {
        if (m_walks[i].m_nTwiceArea > 0) continue;
        unsigned int& nOuter = outerWalks[m_map.ComponentOf(ArcOf(m_sides[m_walks[i].m_nFirst]))];
        if (nOuter != NoWalk) throw std::logic_error("the map is not plane: a component has two outsides");
        nOuter = i;
    }
    if (std::find(outerWalks.begin(), outerWalks.end(), NoWalk) != outerWalks.end()) {
        throw std::logic_error("the map is not plane: a component has no outside");
    }
    return outerWalks;
}

void FaceMap::MakeHole(unsigned int nWalk, long nFace) {
    m_holes.push_back({nFace, nWalk});
    m_walks[nWalk].m_nFace = nFace;
    m_faces[static_cast<std::size_t>(nFace)].m_nTwiceArea += m_walks[nWalk].m_nTwiceArea;
}

/// Whether a point that is not on the walk lies inside it: a ray to the right of the point meets the walk an
/// odd number of times.
bool FaceMap::Surrounds(const Walk& walk, GridPoint point) const {
    bool bInside = false;
    for (unsigned int n = walk.m_nFirst; n < walk.m_nFirst + walk.m_nLength; ++n) {
        const GridPoint from = m_map.Start(m_sides[n]);
        const GridPoint to = m_map.End(m_sides[n]);
        if ((from.y > point.y) == (to.y > point.y)) continue;
        const bool bUp = to.y > from.y;
        if ((Cross(from, to, point) > 0) == bUp) bInside = !bInside;
    }
    return bInside;
}

EulerCount FaceMap::CountForEuler() const {
    const std::vector<unsigned int>& componentOf = m_map.m_componentOfNode;
    return {static_cast<long>(componentOf.size()) -
                std::count(componentOf.begin(), componentOf.end(), PlaneMap::NoComponent),
            std::count(m_map.m_isDeadEnd.begin(), m_map.m_isDeadEnd.end(), false),
            static_cast<long>(m_walks.size()), static_cast<long>(m_map.m_firstNodes.size())};
}

std::vector<std::pair<long, long>> FaceMap::Neighbours() const {
    std::vector<long> faceOfSides(m_walkOfSide.size());
    for (Side nSide = 0; nSide < faceOfSides.size(); ++nSide) faceOfSides[nSide] = FaceOf(nSide);
    return PairsAcross(faceOfSides);
}

long FaceMap::TwiceTotalArea() const {
    long nTwiceArea = 0;
    for (const Face& face : m_faces) nTwiceArea += face.m_nTwiceArea;
    return nTwiceArea;
}

Line FaceMap::PointsOf(const Walk& walk) const {
    Line points;
    points.reserve(walk.m_nLength);
    for (unsigned int n = walk.m_nFirst; n < walk.m_nFirst + walk.m_nLength; ++n) {
        points.push_back(m_map.Start(m_sides[n]));
    }
    return points;
}

long FaceMap::FaceOf(Side nSide) const {
    return m_walkOfSide[nSide] == NoWalk ? Outside : m_walks[m_walkOfSide[nSide]].m_nFace;
}

}  // namespace faces
