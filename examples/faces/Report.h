// What the program says about a map.
#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "examples/faces/DrawnMap.h"
#include "examples/faces/Faces.h"
#include "examples/faces/MapReader.h"
#include "examples/faces/Noding.h"
#include "examples/faces/RingMatch.h"

namespace faces {

/// The stages with the milliseconds each took.
using StageTimes = std::vector<std::pair<std::string, double>>;

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
    StageTimes m_stages;
};

/// Prints the counts and times. `bVerbose` adds every place that noding changed.
void PrintReport(std::ostream& out, const std::string& strTitle, const Findings& findings, bool bVerbose);

/// The same for a map that was not traced but loaded.
void PrintSavedReport(std::ostream& out, const std::string& strTitle, const DrawnMap& map,
                      const StageTimes& stages);

/// What noding changed at a place: "crossing at (1, 2), on the border of A, B".
std::string Describe(const ChangedPlace& place, const Grid& grid);

}  // namespace faces
