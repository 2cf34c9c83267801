// The integer grid that a map's borders are laid on.
//
// Coordinates lie in 0 .. MaxCoordinate, so that the cross product of two differences fits a 64-bit integer:
// every comparison of directions, every containment test and every area is exact.
#pragma once

#include <cmath>
#include <tuple>
#include <vector>

namespace faces {

/// The largest coordinate on the grid.
constexpr int MaxCoordinate = 1 << 28;

struct GridPoint {
    int x = 0;
    int y = 0;

    friend bool operator==(GridPoint a, GridPoint b) { return a.x == b.x && a.y == b.y; }
    friend bool operator!=(GridPoint a, GridPoint b) { return !(a == b); }
    friend bool operator<(GridPoint a, GridPoint b) { return std::tie(a.x, a.y) < std::tie(b.x, b.y); }
};

/// A straight piece of border between two points, the lesser one first.
struct Segment {
    GridPoint m_from;
    GridPoint m_to;

    Segment(GridPoint a, GridPoint b) : m_from(b < a ? b : a), m_to(b < a ? a : b) {}

    friend bool operator==(const Segment& a, const Segment& b) {
        return a.m_from == b.m_from && a.m_to == b.m_to;
    }
    friend bool operator<(const Segment& a, const Segment& b) {
        return std::tie(a.m_from, a.m_to) < std::tie(b.m_from, b.m_to);
    }
};

using Line = std::vector<GridPoint>;

/// Positive when b lies counterclockwise of a as both are seen from the origin (y upwards), negative when
/// clockwise, 0 when the three are on one straight line. The value is twice the area of their triangle.
inline long Cross(GridPoint origin, GridPoint a, GridPoint b) {
    const long nAX = a.x - origin.x;
    const long nAY = a.y - origin.y;
    const long nBX = b.x - origin.x;
    const long nBY = b.y - origin.y;
    return nAX * nBY - nAY * nBX;
}

/// Where the grid lies in the map's own coordinates.
struct Grid {
    double m_dX = 0;  // of the grid's point (0, 0)
    double m_dY = 0;
    double m_dStepX = 1;
    double m_dStepY = 1;

    double X(GridPoint point) const { return m_dX + m_dStepX * point.x; }
    double Y(GridPoint point) const { return m_dY + m_dStepY * point.y; }
    double CellArea() const { return std::abs(m_dStepX * m_dStepY); }
};

}  // namespace faces
