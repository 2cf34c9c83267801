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

namespace faces {

inline void PrintTo(GridPoint point, std::ostream* pOut) {
    *pOut << '(' << point.x << ", " << point.y << ')';
}
inline void PrintTo(const Segment& segment, std::ostream* pOut) {
    PrintTo(segment.m_from, pOut);
    *pOut << '-';
    PrintTo(segment.m_to, pOut);
}

/// Segments in order, each once.
inline std::vector<Segment> Sorted(std::vector<Segment> segments) {
    std::sort(segments.begin(), segments.end());
    segments.erase(std::unique(segments.begin(), segments.end()), segments.end());
    return segments;
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

/// A lattice of nSide x nSide cells with displaced points; each of its lines, and of the cells' diagonals, is
/// there with the given probability in percent. It is plane as it is.
inline std::vector<Segment> RandomLattice(unsigned int nSeed, int nSide, int nPercent) {
    constexpr int cell = 100;
    std::mt19937 random(nSeed);
    std::uniform_int_distribution<int> shift(-cell / 4 + 1, cell / 4 - 1);
    std::uniform_int_distribution<int> percent(0, 99);
    std::vector<Line> columns(static_cast<std::size_t>(nSide) + 1);
    for (int nX = 0; nX <= nSide; ++nX) {
        for (int nY = 0; nY <= nSide; ++nY) {
            const int nShiftX = shift(random);
            columns[static_cast<std::size_t>(nX)].push_back(
                {cell * (nX + 1) + nShiftX, cell * (nY + 1) + shift(random)});
        }
    }
    const auto at = [&](int nX, int nY) {
        return columns[static_cast<std::size_t>(nX)][static_cast<std::size_t>(nY)];
    };
    std::vector<Segment> segments;
    const auto maybe = [&](GridPoint a, GridPoint b) {
        if (percent(random) < nPercent) segments.emplace_back(a, b);
    };
    for (int nX = 0; nX <= nSide; ++nX) {
        for (int nY = 0; nY <= nSide; ++nY) {
            if (nX < nSide) maybe(at(nX, nY), at(nX + 1, nY));
            if (nY < nSide) maybe(at(nX, nY), at(nX, nY + 1));
            if (nX == nSide || nY == nSide) continue;
            if (percent(random) < 50) {
                maybe(at(nX, nY), at(nX + 1, nY + 1));
            } else {
                maybe(at(nX + 1, nY), at(nX, nY + 1));
            }
        }
    }
    return Sorted(std::move(segments));
}

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
