// Makes lines plane: afterwards two segments meet in common end points only.
//
// Lines that cross are cut at the crossing, rounded to the grid, and a segment that passes within half a cell
// of a point is led through that point (snap rounding, by GEOS). Points of the map stay where they are. What
// this changed is told place by place.
#pragma once

#include <map>
#include <vector>

#include "examples/faces/Grid.h"

namespace faces {

struct DistinctSegments {
    std::vector<Segment> m_segments;  // ascending
    long m_nZeroLength = 0;
    long m_nDuplicates = 0;
};

/// The segments of the lines, each once.
DistinctSegments SegmentsOf(const std::vector<Line>& lines);

/// Why a segment was changed at a place.
enum class ChangeKind {
    Crossing,  // it crosses another one there
    Overlap,   // it runs along with another one from there
    Touch,     // another one ends on it there
    Near       // it passes by a point there, closer than the grid can tell
};

struct Change {
    GridPoint m_at;
    ChangeKind m_kind;
    Segment m_segment;

    friend bool operator<(const Change& a, const Change& b) {
        return std::tie(a.m_at, a.m_kind, a.m_segment) < std::tie(b.m_at, b.m_kind, b.m_segment);
    }
};

struct NodedSegments {
    std::vector<Segment> m_segments;  // ascending, each once
    std::vector<Change> m_changes;    // ascending by place

    /// What became of each segment that is no longer there: the points from its first end to its last. Empty
    /// if its trace is lost.
    std::map<Segment, Line> m_chains;
};

/// Requires ascending segments without duplicates. O(n log n) for maps.
NodedSegments NodeSegments(const std::vector<Segment>& segments);

/// The points of a closed line after noding; empty if the trace of one of its segments is lost.
Line NodedRing(const Line& ring, const NodedSegments& noded);

}  // namespace faces
