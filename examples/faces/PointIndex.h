// The points of a map in order, and where each of them stands.
//
// Points are kept in columns, about as many as there are points: a point is found, or put in order, among the
// few of its column. That is linear for maps whose points are spread over their width, and n log n for any.
#pragma once

#include <vector>

#include "examples/faces/Grid.h"

namespace faces {

class PointIndex {
public:
    /// Takes the ends of the segments, each point once.
    explicit PointIndex(const std::vector<Segment>& segments);

    /// The place of a point among all. Requires one that is there.
    unsigned int Find(GridPoint point) const;

    const Line& Points() const { return m_points; }

private:
    std::size_t ColumnOf(GridPoint point) const {
        return static_cast<std::size_t>(point.x - m_nLowX) >> m_nShift;
    }

    int m_nLowX = 0;
    unsigned int m_nShift = 0;          // a column is 2^m_nShift cells wide
    std::vector<unsigned int> m_first;  // the place of each column's first point; then the number of points
    Line m_points;                      // ascending
};

}  // namespace faces
