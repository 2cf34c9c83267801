// What the tests of the example share: instances whose shortest tours are known, and an exact solver for few
// cities.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

#include "examples/tour/Instance.h"

namespace tour {

/// Points on a circle at these angles, in degrees. They are the corners of a convex polygon, which is the
/// shortest tour.
inline Instance OnACircle(const std::vector<double>& angles) {
    std::vector<Point> points;
    for (const double dAngle : angles) {
        points.push_back({1e6 * std::cos(dAngle * M_PI / 180), 1e6 * std::sin(dAngle * M_PI / 180)});
    }
    return {"circle", Metric::Euclidean, points};
}

/// The length round the polygon of OnACircle.
inline long LengthOfPolygon(const Instance& instance, const std::vector<double>& angles) {
    std::vector<int> order(angles.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) {
        return angles[static_cast<std::size_t>(a)] < angles[static_cast<std::size_t>(b)];
    });
    return instance.Length(order);
}

/// A grid of points 100 apart. Every road is at least 100 long; round a grid with an even side that is
/// reached, otherwise one diagonal is needed.
inline Instance Grid(int nColumns, int nRows) {
    std::vector<Point> points;
    for (int i = 0; i < nColumns * nRows; ++i) {
        points.push_back({100.0 * (i % nColumns), 100.0 * (i / nColumns)});
    }
    return {"grid", Metric::Euclidean, points};
}

inline long ShortestTourOfGrid(int nColumns, int nRows) {
    const long n = static_cast<long>(nColumns) * nRows;
    return n % 2 == 0 ? 100 * n : 100 * n + 41;
}

/// The length of the shortest tour, over all subsets of the cities. For a dozen or so.
inline long ShortestTour(const Instance& instance) {
    const auto n = static_cast<std::size_t>(instance.Cities());
    if (n < 2) {
        return 0;
    }
    // paths[s * (n - 1) + j]: the shortest path from the last city through the set s of others, ending in j.
    const std::size_t nOthers = n - 1;
    const long nUnknown = std::numeric_limits<long>::max() / 2;
    std::vector<long> paths((std::size_t{1} << nOthers) * nOthers, nUnknown);
    const auto distance = [&](std::size_t a, std::size_t b) {
        return instance.Distance(static_cast<int>(a), static_cast<int>(b));
    };
    for (std::size_t j = 0; j < nOthers; ++j) {
        paths[(std::size_t{1} << j) * nOthers + j] = distance(nOthers, j);
    }
    for (std::size_t s = 1; s < std::size_t{1} << nOthers; ++s) {
        for (std::size_t j = 0; j < nOthers; ++j) {
            for (std::size_t k = 0; k < nOthers; ++k) {
                if ((s >> j & 1) != 0 && (s >> k & 1) == 0) {
                    long& nPath = paths[(s | std::size_t{1} << k) * nOthers + k];
                    nPath = std::min(nPath, paths[s * nOthers + j] + distance(j, k));
                }
            }
        }
    }
    long nShortest = nUnknown;
    for (std::size_t j = 0; j < nOthers; ++j) {
        const std::size_t nAll = (std::size_t{1} << nOthers) - 1;
        nShortest = std::min(nShortest, paths[nAll * nOthers + j] + distance(j, nOthers));
    }
    return nShortest;
}

/// Whether it has each of the cities 0 to n - 1 once.
inline bool IsTour(std::vector<int> order, int n) {
    std::sort(order.begin(), order.end());
    std::vector<int> cities(static_cast<std::size_t>(n));
    std::iota(cities.begin(), cities.end(), 0);
    return order == cities;
}

/// Fourteen places in Burma, a well-known instance; its shortest tour has 3323 kilometres.
inline const char* const Burma =
    "NAME: burma14\nTYPE: TSP\nCOMMENT: 14-Staedte in Burma (Zaw Win)\nDIMENSION: 14\nEDGE_WEIGHT_TYPE: GEO\n"
    "EDGE_WEIGHT_FORMAT: FUNCTION\nDISPLAY_DATA_TYPE: COORD_DISPLAY\nNODE_COORD_SECTION\n"
    "   1  16.47       96.10\n   2  16.47       94.44\n   3  20.09       92.54\n   4  22.39       93.37\n"
    "   5  25.23       97.24\n   6  22.00       96.05\n   7  20.47       97.02\n   8  17.20       96.29\n"
    "   9  16.30       97.38\n  10  14.05       98.12\n  11  16.53       97.38\n  12  21.52       95.59\n"
    "  13  19.41       97.13\n  14  20.09       94.55\nEOF\n";

}  // namespace tour
