// What the program says about a map.
#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "examples/faces/Faces.h"
#include "examples/faces/MapReader.h"
#include "examples/faces/Noding.h"
#include "examples/faces/RingMatch.h"

namespace faces {

/// All that is known of a map in the end.
struct Findings {
    const BorderMap& m_map;
    const DistinctSegments& m_distinct;
    const NodedSegments& m_noded;
    const std::vector<ChangedPlace>& m_places;
    const PlaneMap& m_plane;
    const FaceMap& m_faceMap;
    const RingMatch& m_match;
    long m_nDeadEnds;
    long m_nBridges;
    std::vector<std::pair<std::string, double>> m_stages;  // with the milliseconds each took
};

/// Prints the counts and times. `bVerbose` adds every place that noding changed.
void PrintReport(std::ostream& out, const std::string& strTitle, const Findings& findings, bool bVerbose);

/// What noding changed at a place: "crossing at (1, 2), on the border of A, B".
std::string Describe(const ChangedPlace& place, const Grid& grid);

}  // namespace faces
