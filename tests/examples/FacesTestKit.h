// Small maps for the tests of the example faces.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "examples/faces/Faces.h"
#include "examples/faces/Grid.h"
#include "examples/faces/PlaneMap.h"
#include "tests/examples/RandomLattice.h"

namespace faces {

inline void PrintTo(GridPoint point, std::ostream* pOut) {
    *pOut << '(' << point.x << ", " << point.y << ')';
}
inline void PrintTo(const Segment& segment, std::ostream* pOut) {
    PrintTo(segment.m_from, pOut);
    *pOut << '-';
    PrintTo(segment.m_to, pOut);
}

/// The segments of closed lines.
inline std::vector<Segment> Rings(const std::vector<Line>& rings) {
    std::vector<Segment> segments;
    for (const Line& ring : rings) {
        for (std::size_t i = 0; i < ring.size(); ++i)
            segments.emplace_back(ring[i], ring[(i + 1) % ring.size()]);
    }
    return Sorted(std::move(segments));
}

inline Line Square(int nLow, int nHigh) {
    return {{nLow, nLow}, {nHigh, nLow}, {nHigh, nHigh}, {nLow, nHigh}};
}

/// A plane map with all that is known of it.
struct TracedMap {
    explicit TracedMap(std::vector<Segment> segments)
        : m_segments(Sorted(std::move(segments))),
          m_map(m_segments),
          m_nDeadEnds(m_map.PruneDeadEnds()),
          m_nBridges(m_map.MarkBridges()),
          m_faces(m_map) {
        m_faces.LocateHoles();
    }

    /// Twice the areas of the bounded faces without their holes, ascending.
    std::vector<long> TwiceAreas() const {
        std::vector<long> areas;
        for (const Face& face : m_faces.m_faces) areas.push_back(face.m_nTwiceArea);
        std::sort(areas.begin(), areas.end());
        return areas;
    }

    std::vector<Segment> m_segments;
    PlaneMap m_map;
    long m_nDeadEnds;
    long m_nBridges;
    FaceMap m_faces;
};

/// Segments anywhere in a square of the grid.
inline std::vector<Segment> RandomSegments(unsigned int nSeed, int nSegments, int nExtent) {
    std::mt19937 random(nSeed);
    std::uniform_int_distribution<int> coordinate(0, nExtent);
    std::vector<Segment> segments;
    while (static_cast<int>(segments.size()) < nSegments) {
        const GridPoint from{coordinate(random), coordinate(random)};
        const GridPoint to{coordinate(random), coordinate(random)};
        if (from != to) segments.emplace_back(from, to);
    }
    return Sorted(std::move(segments));
}

}  // namespace faces
