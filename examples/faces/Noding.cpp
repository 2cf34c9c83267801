#include "examples/faces/Noding.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "examples/faces/Geos.h"

namespace faces {
namespace {

/// A segment's index, as an item of GEOS's R-tree: its place in the vector, so that it is never null.
using SegmentItem = const Segment*;

std::vector<Segment> SortedOnce(std::vector<Segment> segments) {
    std::sort(segments.begin(), segments.end());
    segments.erase(std::unique(segments.begin(), segments.end()), segments.end());
    return segments;
}

void AppendSegments(const Geos& geos, const GEOSGeometry* pLine, std::vector<Segment>& segments) {
    const GEOSCoordSequence* pCoordinates = GEOSGeom_getCoordSeq_r(geos, pLine);
    unsigned int nPoints = 0;
    GEOSCoordSeq_getSize_r(geos, pCoordinates, &nPoints);
    std::vector<double> coordinates(2 * std::size_t{nPoints});
    GEOSCoordSeq_copyToBuffer_r(geos, pCoordinates, coordinates.data(), 0, 0);
    for (std::size_t i = 2; i < coordinates.size(); i += 2) {
        const GridPoint from{static_cast<int>(coordinates[i - 2]), static_cast<int>(coordinates[i - 1])};
        const GridPoint to{static_cast<int>(coordinates[i]), static_cast<int>(coordinates[i + 1])};
        if (from != to) segments.emplace_back(from, to);
    }
}

std::vector<Segment> SnapRound(const Geos& geos, const std::vector<Segment>& segments) {
    if (segments.empty()) return {};
    std::vector<GEOSGeometry*> lines;
    lines.reserve(segments.size());
    for (const Segment& segment : segments) {
        lines.push_back(geos.NewLine(segment.m_from, segment.m_to).release());
    }
    const Geos::Geometry pLines = geos.Own(GEOSGeom_createCollection_r(
        geos, GEOS_MULTILINESTRING, lines.data(), static_cast<unsigned int>(lines.size())));
    const Geos::Geometry pNoded = geos.Own(GEOSUnaryUnionPrec_r(geos, pLines.get(), 1));

    std::vector<Segment> noded;
    noded.reserve(segments.size());
    const int nLines = GEOSGetNumGeometries_r(geos, pNoded.get());
    for (int i = 0; i < nLines; ++i) {
        AppendSegments(geos, GEOSGetGeometryN_r(geos, pNoded.get(), i), noded);
    }
    return SortedOnce(std::move(noded));
}

int Sign(long n) { return n > 0 ? 1 : n < 0 ? -1 : 0; }

/// -1, 0 or 1: on which side of the segment's line the point lies.
int SideOf(const Segment& segment, GridPoint point) {
    return Sign(Cross(segment.m_from, segment.m_to, point));
}

bool CrossInside(const Segment& a, const Segment& b) {
    return SideOf(a, b.m_from) * SideOf(a, b.m_to) < 0 && SideOf(b, a.m_from) * SideOf(b, a.m_to) < 0;
}

/// Two segments on one straight line share more than a point; the common part begins at the greater of the
/// first ends.
bool Overlap(const Segment& a, const Segment& b) {
    return SideOf(a, b.m_from) == 0 && SideOf(a, b.m_to) == 0 &&
           std::max(a.m_from, b.m_from) < std::min(a.m_to, b.m_to);
}

GridPoint RoundedCrossing(const Segment& a, const Segment& b) {
    const auto dFrom = static_cast<double>(Cross(b.m_from, b.m_to, a.m_from));
    const auto dTo = static_cast<double>(Cross(b.m_from, b.m_to, a.m_to));
    const double dPart = dFrom / (dFrom - dTo);
    return {static_cast<int>(std::lround(a.m_from.x + dPart * (a.m_to.x - a.m_from.x))),
            static_cast<int>(std::lround(a.m_from.y + dPart * (a.m_to.y - a.m_from.y)))};
}

bool EndsInside(const Segment& segment, GridPoint point) {
    return SideOf(segment, point) == 0 && segment.m_from < point && point < segment.m_to;
}

enum class CellContact { None, Touch, Inside };

/// Whether the segment touches the cell around the point, or goes through its inside.
CellContact ContactWithCell(const Segment& segment, GridPoint point) {
    // Twice the grid, so that the cell's corners lie on it.
    if (2 * point.x + 1 < 2 * segment.m_from.x || 2 * point.x - 1 > 2 * segment.m_to.x)
        return CellContact::None;
    const auto [nLow, nHigh] = std::minmax(segment.m_from.y, segment.m_to.y);
    if (2 * point.y + 1 < 2 * nLow || 2 * point.y - 1 > 2 * nHigh) return CellContact::None;

    const GridPoint from{2 * segment.m_from.x, 2 * segment.m_from.y};
    const GridPoint to{2 * segment.m_to.x, 2 * segment.m_to.y};
    const auto side = [&](int nRight, int nUp) {
        return Sign(Cross(from, to, {2 * point.x + nRight, 2 * point.y + nUp}));
    };
    const auto [nMin, nMax] = std::minmax({side(-1, -1), side(1, -1), side(-1, 1), side(1, 1)});
    if (nMin < 0 && nMax > 0) return CellContact::Inside;
    return nMin <= 0 && nMax >= 0 ? CellContact::Touch : CellContact::None;
}

long AlongSegment(const Segment& segment, GridPoint point) {
    const long nDX = segment.m_to.x - segment.m_from.x;
    const long nDY = segment.m_to.y - segment.m_from.y;
    return nDX * (point.x - segment.m_from.x) + nDY * (point.y - segment.m_from.y);
}

/// Finds what became of segments: the way along noded segments through all cells that the segment goes
/// through. One that it only touches may be on the way or not.
class ChainFinder {
public:
    explicit ChainFinder(const std::vector<Segment>& noded) {
        m_steps.reserve(2 * noded.size());
        for (const Segment& segment : noded) {
            m_steps.emplace_back(segment.m_from, segment.m_to);
            m_steps.emplace_back(segment.m_to, segment.m_from);
        }
        std::sort(m_steps.begin(), m_steps.end());
    }

    Line Find(const Segment& segment) const {
        const std::vector<Stop> stops = StopsAlong(segment);
        constexpr std::size_t none = ~std::size_t{0};
        const std::size_t nLast = stops.size() - 1;
        if (stops[nLast].m_point != segment.m_to) return {};

        // From the far end back: the farthest next stop from which the far end can be reached.
        std::vector<std::size_t> next(stops.size(), none);
        next[nLast] = nLast;
        for (std::size_t i = nLast; i-- > 0;) {
            for (std::size_t j = i + 1; j <= nLast; ++j) {
                if (next[j] != none && IsStep(stops[i].m_point, stops[j].m_point)) next[i] = j;
                if (stops[j].m_bInside) break;
            }
        }
        if (next[0] == none) return {};
        Line chain;
        for (std::size_t i = 0; i != nLast; i = next[i]) chain.push_back(stops[i].m_point);
        chain.push_back(segment.m_to);
        return chain;
    }

private:
    using Step = std::pair<GridPoint, GridPoint>;

    struct Stop {
        GridPoint m_point;
        bool m_bInside;  // the segment goes through the inside of its cell
    };

    bool IsStep(GridPoint from, GridPoint to) const {
        return std::binary_search(m_steps.begin(), m_steps.end(), Step{from, to});
    }

    /// The points that can be reached from the first end through cells that the segment meets, in order along
    /// it.
    std::vector<Stop> StopsAlong(const Segment& segment) const {
        std::set<GridPoint> seen{segment.m_from};
        std::vector<Stop> stops{{segment.m_from, true}};
        for (std::size_t i = 0; i < stops.size(); ++i) {
            const GridPoint from = stops[i].m_point;
            auto it = std::lower_bound(m_steps.begin(), m_steps.end(), Step{from, {-1, -1}});
            for (; it != m_steps.end() && it->first == from; ++it) {
                const CellContact contact = ContactWithCell(segment, it->second);
                if (contact == CellContact::None || !seen.insert(it->second).second) continue;
                stops.push_back({it->second, contact == CellContact::Inside});
            }
        }
        std::sort(stops.begin(), stops.end(), [&](const Stop& a, const Stop& b) {
            const long nA = AlongSegment(segment, a.m_point);
            const long nB = AlongSegment(segment, b.m_point);
            return nA != nB ? nA < nB : a.m_point < b.m_point;
        });
        return stops;
    }

    std::vector<Step> m_steps;
};

/// Says why segments were changed, by the other segments around them.
class ChangeFinder {
public:
    ChangeFinder(const Geos& geos, const std::vector<Segment>& segments)
        : m_geos(geos), m_pTree(geos.NewTree()) {
        m_keys.reserve(segments.size());
        for (const Segment& segment : segments) {
            m_keys.push_back(geos.NewLine(segment.m_from, segment.m_to));
            GEOSSTRtree_insert_r(geos, m_pTree.get(), m_keys.back().get(), const_cast<Segment*>(&segment));
            m_points.insert(m_points.end(), {segment.m_from, segment.m_to});
        }
        std::sort(m_points.begin(), m_points.end());
    }

    void Find(const Segment& segment, const Line& chain, std::vector<Change>& changes) const {
        Line told;
        for (const SegmentItem pOther : Around(segment)) {
            if (*pOther == segment) continue;
            if (CrossInside(segment, *pOther)) {
                const GridPoint at = RoundedCrossing(std::min(segment, *pOther), std::max(segment, *pOther));
                changes.push_back({at, ChangeKind::Crossing, segment});
                told.push_back(at);
            } else if (Overlap(segment, *pOther)) {
                changes.push_back({std::max(segment.m_from, pOther->m_from), ChangeKind::Overlap, segment});
                told.insert(told.end(), {pOther->m_from, pOther->m_to});
            }
        }
        for (const GridPoint at : chain) {
            if (at == segment.m_from || at == segment.m_to) continue;
            if (std::find(told.begin(), told.end(), at) != told.end()) continue;
            const bool bOnMap = std::binary_search(m_points.begin(), m_points.end(), at);
            const bool bTouch = bOnMap && EndsInside(segment, at);
            changes.push_back({at, bTouch ? ChangeKind::Touch : ChangeKind::Near, segment});
        }
    }

private:
    std::vector<SegmentItem> Around(const Segment& segment) const {
        std::vector<SegmentItem> found;
        const auto keep = [](void* pItem, void* pFound) {
            static_cast<std::vector<SegmentItem>*>(pFound)->push_back(static_cast<SegmentItem>(pItem));
        };
        const Geos::Geometry pKey = m_geos.NewLine(segment.m_from, segment.m_to);
        GEOSSTRtree_query_r(m_geos, m_pTree.get(), pKey.get(), keep, &found);
        return found;
    }

    const Geos& m_geos;
    std::vector<Geos::Geometry> m_keys;
    Geos::Tree m_pTree;
    Line m_points;
};

}  // namespace

DistinctSegments SegmentsOf(const std::vector<Line>& lines) {
    DistinctSegments distinct;
    for (const Line& line : lines) {
        for (std::size_t i = 1; i < line.size(); ++i) {
            if (line[i - 1] == line[i]) {
                ++distinct.m_nZeroLength;
            } else {
                distinct.m_segments.emplace_back(line[i - 1], line[i]);
            }
        }
    }
    const std::size_t nAll = distinct.m_segments.size();
    distinct.m_segments = SortedOnce(std::move(distinct.m_segments));
    distinct.m_nDuplicates = static_cast<long>(nAll - distinct.m_segments.size());
    return distinct;
}

NodedSegments NodeSegments(const std::vector<Segment>& segments) {
    const Geos geos;
    NodedSegments noded;
    noded.m_segments = SnapRound(geos, segments);

    std::vector<Segment> changed;
    std::set_difference(segments.begin(), segments.end(), noded.m_segments.begin(), noded.m_segments.end(),
                        std::back_inserter(changed));
    if (changed.empty()) return noded;

    const ChainFinder chains(noded.m_segments);
    const ChangeFinder changes(geos, segments);
    for (const Segment& segment : changed) {
        Line chain = chains.Find(segment);
        changes.Find(segment, chain, noded.m_changes);
        noded.m_chains.emplace(segment, std::move(chain));
    }
    std::sort(noded.m_changes.begin(), noded.m_changes.end());
    return noded;
}

Line NodedRing(const Line& ring, const NodedSegments& noded) {
    Line points;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const GridPoint from = ring[i];
        const GridPoint to = ring[i + 1 == ring.size() ? 0 : i + 1];
        if (from == to) continue;
        points.push_back(from);
        const auto it = noded.m_chains.find(Segment(from, to));
        if (it == noded.m_chains.end()) continue;

        Line chain = it->second;
        if (chain.empty()) return {};
        if (from != it->first.m_from) std::reverse(chain.begin(), chain.end());
        points.insert(points.end(), chain.begin() + 1, chain.end() - 1);
    }
    return points;
}

}  // namespace faces
