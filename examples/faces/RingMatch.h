// Finds the rings of a file's areas again among the traced walks, and so the areas' names for the faces.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "examples/faces/Faces.h"
#include "examples/faces/MapReader.h"
#include "examples/faces/Noding.h"

namespace faces {

/// Why a ring is no walk.
enum class RingLoss {
    Collapsed,      // it encloses nothing on the grid
    TouchesItself,  // it meets itself on the grid
    Parted          // other borders run through what it encloses, or it is open
};

struct LostRing {
    std::string m_strName;
    bool m_bHole;
    RingLoss m_reason;
};

struct RingMatch {
    static constexpr long NoArea = -1;

    long m_nRings = 0;
    long m_nFound = 0;
    std::vector<LostRing> m_lost;
    std::vector<long> m_areaOfFace;  // the place of each face's area in BorderMap::m_areas, or NoArea
};

/// A ring is found again if its sides are all the sides of one walk. A face bears the name of an area if the
/// area's rings run along the whole of its walk, which also holds for the parts of an area that is parted on
/// the grid.
RingMatch MatchRings(const BorderMap& map, const NodedSegments& noded, const FaceMap& faceMap);

/// A place that noding changed, with the names of the areas whose borders it is on.
struct ChangedPlace {
    GridPoint m_at;
    ChangeKind m_kind;
    std::set<std::string> m_names;
};

/// All places that noding changed, in the order of the changes.
std::vector<ChangedPlace> ChangedPlaces(const BorderMap& map, const NodedSegments& noded);

}  // namespace faces
