#include "examples/faces/RingMatch.h"

#include <algorithm>
#include <map>

namespace faces {
namespace {

/// Twice the area within a closed line, positive if it runs counterclockwise.
long TwiceArea(const Line& ring) {
    unsigned long nTwiceArea = 0;
    for (std::size_t i = 2; i < ring.size(); ++i) {
        nTwiceArea += static_cast<unsigned long>(Cross(ring[0], ring[i - 1], ring[i]));
    }
    return static_cast<long>(nTwiceArea);
}

bool VisitsAPointTwice(Line ring) {
    std::sort(ring.begin(), ring.end());
    return std::adjacent_find(ring.begin(), ring.end()) != ring.end();
}

/// The sides along a closed line; empty if it does not run along arcs all the way.
std::vector<Side> SidesAlong(const Line& ring, const std::vector<Segment>& segments) {
    std::vector<Side> sides;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const GridPoint from = ring[i];
        const Segment segment(from, ring[i + 1 == ring.size() ? 0 : i + 1]);
        const auto it = std::lower_bound(segments.begin(), segments.end(), segment);
        if (it == segments.end() || !(*it == segment)) return {};
        sides.push_back(2 * static_cast<Side>(it - segments.begin()) + (from == segment.m_from ? 0 : 1));
    }
    return sides;
}

bool IsOneWalk(const std::vector<Side>& sides, const FaceMap& faceMap) {
    if (sides.empty()) return false;
    const unsigned int nWalk = faceMap.WalkOf(sides.front());
    return nWalk != FaceMap::NoWalk && faceMap.m_walks[nWalk].m_nLength == sides.size() &&
           std::all_of(sides.begin(), sides.end(),
                       [&](Side nSide) { return faceMap.WalkOf(nSide) == nWalk; });
}

/// The names of the areas that each changed segment bounds.
std::map<Segment, std::set<std::string>> AreasAlongChanges(const BorderMap& map, const NodedSegments& noded) {
    std::map<Segment, std::set<std::string>> names;
    if (noded.m_chains.empty()) return names;
    for (const Area& area : map.m_areas) {
        for (const Ring& ring : area.m_rings) {
            const Line points = map.PointsOf(ring);
            for (std::size_t i = 0; i < points.size(); ++i) {
                const Segment segment(points[i], points[i + 1 == points.size() ? 0 : i + 1]);
                if (noded.m_chains.count(segment) != 0) names[segment].insert(area.m_strName);
            }
        }
    }
    return names;
}

}  // namespace

RingMatch MatchRings(const BorderMap& map, const NodedSegments& noded, const FaceMap& faceMap) {
    RingMatch match;
    match.m_areaOfFace.assign(faceMap.m_faces.size(), RingMatch::NoArea);
    for (std::size_t nArea = 0; nArea < map.m_areas.size(); ++nArea) {
        const Area& area = map.m_areas[nArea];
        std::map<unsigned int, unsigned int> sidesOnWalk;
        for (std::size_t nRing = 0; nRing < area.m_rings.size(); ++nRing) {
            const bool bHole = nRing > 0;
            Line points = NodedRing(map.PointsOf(area.m_rings[nRing]), noded);
            const long nTwiceArea = TwiceArea(points);
            // The area shall lie to the left, as a face does.
            if ((nTwiceArea > 0) == bHole) std::reverse(points.begin(), points.end());
            const std::vector<Side> sides = SidesAlong(points, noded.m_segments);
            for (const Side nSide : sides) {
                if (faceMap.WalkOf(nSide) != FaceMap::NoWalk) ++sidesOnWalk[faceMap.WalkOf(nSide)];
            }

            ++match.m_nRings;
            if (IsOneWalk(sides, faceMap)) {
                ++match.m_nFound;
                continue;
            }
            const RingLoss reason = nTwiceArea == 0             ? RingLoss::Collapsed
                                    : VisitsAPointTwice(points) ? RingLoss::TouchesItself
                                                                : RingLoss::Parted;
            match.m_lost.push_back({area.m_strName, bHole, reason});
        }
        for (const auto& [nWalk, nSides] : sidesOnWalk) {
            const Walk& walk = faceMap.m_walks[nWalk];
            if (walk.m_nTwiceArea <= 0 || nSides != walk.m_nLength) continue;
            long& nAreaOfFace = match.m_areaOfFace[static_cast<std::size_t>(walk.m_nFace)];
            if (nAreaOfFace == RingMatch::NoArea) nAreaOfFace = static_cast<long>(nArea);
        }
    }
    return match;
}

std::vector<ChangedPlace> ChangedPlaces(const BorderMap& map, const NodedSegments& noded) {
    const auto names = AreasAlongChanges(map, noded);
    std::vector<ChangedPlace> places;
    for (const Change& change : noded.m_changes) {
        if (places.empty() || places.back().m_at != change.m_at || places.back().m_kind != change.m_kind) {
            places.push_back({change.m_at, change.m_kind, {}});
        }
        const auto it = names.find(change.m_segment);
        if (it != names.end()) places.back().m_names.insert(it->second.begin(), it->second.end());
    }
    return places;
}

}  // namespace faces
