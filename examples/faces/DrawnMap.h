// A traced map as its picture needs it, without the graph that it was traced from: what a file keeps.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "examples/faces/Faces.h"
#include "examples/faces/MapReader.h"
#include "examples/faces/RingMatch.h"

namespace faces {

/// The values are those in files.
enum class ArcKind : char { Border = 'b', DeadEnd = 'd', Bridge = 'i' };

/// A straight piece of border, by the indices of its points, the lesser one first.
struct DrawnArc {
    unsigned int m_nFrom;
    unsigned int m_nTo;
    ArcKind m_kind;
};

/// A walk's sides in DrawnMap::m_sides.
struct DrawnWalk {
    unsigned int m_nFirst;
    unsigned int m_nLength;
};

struct DrawnFace {
    static constexpr long NoName = -1;

    unsigned int m_nOuterWalk;
    long m_nName;  // in DrawnMap::m_names, or NoName
    std::vector<unsigned int> m_holes;
};

struct DrawnMap {
    DrawnMap() = default;

    /// Requires located holes.
    DrawnMap(const BorderMap& map, const FaceMap& faceMap, const RingMatch& match,
             const std::string& strTitle);

    GridPoint Start(Side nSide) const;
    Line PointsOf(const DrawnWalk& walk) const;

    /// The face that each walk has on its left; FaceMap::Outside for the unbounded one.
    std::vector<long> FaceOfWalks() const;

    /// As FaceMap::Neighbours.
    std::vector<std::pair<long, long>> Neighbours() const;

    /// The map's counts in one line.
    std::string Subtitle() const;

    long CountArcs(ArcKind kind) const;
    long CountHoles() const;

    std::string m_strTitle;  // UTF-8
    Grid m_grid;
    bool m_bYUp = true;
    GridPoint m_low;  // the least coordinates of all lines of the map
    GridPoint m_high;
    long m_nComponents = 0;
    std::vector<GridPoint> m_points;   // ascending
    std::vector<DrawnArc> m_arcs;      // ascending by points; side numbers are those of these arcs
    std::vector<std::string> m_names;  // of all areas, each once; UTF-8
    std::vector<Side> m_sides;
    std::vector<DrawnWalk> m_walks;
    std::vector<DrawnFace> m_faces;
};

}  // namespace faces
