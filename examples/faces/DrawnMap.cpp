#include "examples/faces/DrawnMap.h"

#include <algorithm>
#include <map>

#include "examples/faces/Colouring.h"
#include "examples/faces/SvgWriter.h"
#include "examples/faces/Utf8.h"

namespace faces {
namespace {

/// Gives each name a number, the same one to equal names.
class NameNumbers {
public:
    explicit NameNumbers(std::vector<std::string>& names) : m_names(names) {}

    long Of(const std::string& strName) {
        const std::string strValid = ValidUtf8(strName);
        const auto [it, bNew] = m_numbers.emplace(strValid, static_cast<long>(m_names.size()));
        if (bNew) m_names.push_back(strValid);
        return it->second;
    }

private:
    std::vector<std::string>& m_names;
    std::map<std::string, long> m_numbers;
};

ArcKind KindOf(const PlaneMap& plane, std::size_t nArc) {
    if (plane.m_isDeadEnd[nArc]) return ArcKind::DeadEnd;
    return plane.m_isBridge[nArc] ? ArcKind::Bridge : ArcKind::Border;
}

}  // namespace

DrawnMap::DrawnMap(const BorderMap& map, const FaceMap& faceMap, const RingMatch& match,
                   const std::string& strTitle)
    : m_strTitle(ValidUtf8(strTitle)),
      m_grid(map.m_grid),
      m_bYUp(map.m_bYUp),
      m_low{MaxCoordinate, MaxCoordinate},
      m_nComponents(static_cast<long>(faceMap.m_map.m_firstNodes.size())),
      m_sides(faceMap.m_sides) {
    const PlaneMap& plane = faceMap.m_map;
    for (const Line& line : map.m_lines) {
        for (const GridPoint point : line) {
            m_low = {std::min(m_low.x, point.x), std::min(m_low.y, point.y)};
            m_high = {std::max(m_high.x, point.x), std::max(m_high.y, point.y)};
        }
    }
    m_points.resize(plane.m_nodes.size());
    for (std::size_t i = 0; i < plane.m_ends.size(); ++i) {
        const auto [nStart, nEnd] = plane.m_ends[i];
        m_points[nStart] = plane.m_segments[i].m_from;
        m_points[nEnd] = plane.m_segments[i].m_to;
        m_arcs.push_back({nStart, nEnd, KindOf(plane, i)});
    }
    NameNumbers numbers(m_names);
    std::vector<long> nameOfArea;
    for (const Area& area : map.m_areas) {
        nameOfArea.push_back(numbers.Of(area.m_strName));
    }
    for (const Walk& walk : faceMap.m_walks) {
        m_walks.push_back({walk.m_nFirst, walk.m_nLength});
    }
    for (std::size_t i = 0; i < faceMap.m_faces.size(); ++i) {
        const long nArea = match.m_areaOfFace[i];
        const long nName =
            nArea == RingMatch::NoArea ? DrawnFace::NoName : nameOfArea[static_cast<std::size_t>(nArea)];
        m_faces.push_back({faceMap.m_faces[i].m_nOuterWalk, nName, {}});
    }
    for (const Hole& hole : faceMap.m_holes) {
        m_faces[static_cast<std::size_t>(hole.m_nFace)].m_holes.push_back(hole.m_nWalk);
    }
}

GridPoint DrawnMap::Start(Side nSide) const {
    const DrawnArc& arc = m_arcs[ArcOf(nSide)];
    return m_points[nSide % 2 == 0 ? arc.m_nFrom : arc.m_nTo];
}

Line DrawnMap::PointsOf(const DrawnWalk& walk) const {
    Line points;
    points.reserve(walk.m_nLength);
    for (unsigned int n = walk.m_nFirst; n < walk.m_nFirst + walk.m_nLength; ++n) {
        points.push_back(Start(m_sides[n]));
    }
    return points;
}

std::vector<long> DrawnMap::FaceOfWalks() const {
    std::vector<long> faceOf(m_walks.size(), FaceMap::Outside);
    for (std::size_t i = 0; i < m_faces.size(); ++i) {
        faceOf[m_faces[i].m_nOuterWalk] = static_cast<long>(i);
        for (const unsigned int nHole : m_faces[i].m_holes) faceOf[nHole] = static_cast<long>(i);
    }
    return faceOf;
}

std::vector<std::pair<long, long>> DrawnMap::Neighbours() const {
    const std::vector<long> faceOfWalks = FaceOfWalks();
    std::vector<long> faceOfSides(2 * m_arcs.size(), FaceMap::Outside);
    for (std::size_t i = 0; i < m_walks.size(); ++i) {
        const DrawnWalk& walk = m_walks[i];
        for (unsigned int n = walk.m_nFirst; n < walk.m_nFirst + walk.m_nLength; ++n) {
            faceOfSides[m_sides[n]] = faceOfWalks[i];
        }
    }
    return PairsAcross(faceOfSides);
}

std::string DrawnMap::Subtitle() const {
    return WithCommas(static_cast<long>(m_faces.size())) + " faces, traced out of " +
           WithCommas(static_cast<long>(m_arcs.size())) + " border segments between " +
           WithCommas(static_cast<long>(m_points.size())) + " points in " + WithCommas(m_nComponents) +
           " components";
}

long DrawnMap::CountArcs(ArcKind kind) const {
    return std::count_if(m_arcs.begin(), m_arcs.end(),
                         [kind](const DrawnArc& arc) { return arc.m_kind == kind; });
}

long DrawnMap::CountHoles() const {
    long nHoles = 0;
    for (const DrawnFace& face : m_faces) nHoles += static_cast<long>(face.m_holes.size());
    return nHoles;
}

}  // namespace faces
