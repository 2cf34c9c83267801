// Reads the border lines of a map, and the names of the areas they bound, from TopoJSON or GeoJSON.
//
// A quantized TopoJSON file brings its integer grid along, and that one is used as it is. Every other map is
// laid on a grid of its own. Points that a file may hold besides its lines are passed over.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "examples/faces/Grid.h"

namespace faces {

/// What is wrong with a map, in one line without the file's name.
class MapError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A ring names the lines it runs along, in order: line i forwards as i, backwards as ~i.
using Ring = std::vector<long>;

/// One polygon of a named area: its outer ring, then its holes.
struct Area {
    std::string m_strName;
    std::vector<Ring> m_rings;
};

struct BorderMap {
    Grid m_grid;
    bool m_bYUp =
        true;  // north is where y grows, as in longitude and latitude; downwards as on a screen otherwise
    std::vector<Line> m_lines;
    std::vector<Area> m_areas;

    /// The points along a ring, the first not repeated at the end if the ring closes.
    Line PointsOf(const Ring& ring) const;
};

struct ReadOptions {
    std::string m_strObject;  // of a TopoJSON file: read this object's lines and areas only
    int m_nGrid = 0;          // cells along the map's longer side; 0: the file's own grid, or DefaultGrid
};

constexpr int DefaultGrid = 1'000'000;

/// Throws MapError.
BorderMap ReadMap(const std::string& strText, const ReadOptions& options);

}  // namespace faces
