// Plane maps made at random, for tests and benchmarks.
#pragma once

#include <algorithm>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

#include "examples/faces/Grid.h"

namespace faces {

/// Segments in order, each once.
inline std::vector<Segment> Sorted(std::vector<Segment> segments) {
    std::sort(segments.begin(), segments.end());
    segments.erase(std::unique(segments.begin(), segments.end()), segments.end());
    return segments;
}

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

}  // namespace faces
