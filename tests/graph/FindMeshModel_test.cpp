// The mesh walk on random plane maps, against half-edges sorted by angle.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <memory>
#include <numeric>
#include <set>
#include <utility>
#include <vector>

#include "PlaneElements.h"

namespace {

/// An undirected segment, its lower end first.
using Segment = std::pair<Point, Point>;
using Map = std::vector<Segment>;

/// One side of a segment: the walk from one end to the other.
struct Side {
    Point from;
    Point to;

    Side Twin() const { return {to, from}; }
    friend bool operator<(const Side& a, const Side& b) {
        return std::tie(a.from, a.to) < std::tie(b.from, b.to);
    }
    friend bool operator==(const Side& a, const Side& b) { return a.from == b.from && a.to == b.to; }
    friend std::ostream& operator<<(std::ostream& os, const Side& s) { return os << s.from << '-' << s.to; }
};

// Random maps -----------------------------------------------------------------------------------------------

bool DoCross(const Segment& a, const Segment& b) {
    const auto sign = [](long n) { return Order(n, 0L); };
    const auto within = [](const Segment& s, const Point& p) {
        return Cross(s.first, s.second, p) == 0 && s.first < p && p < s.second;
    };
    if (within(a, b.first) || within(a, b.second) || within(b, a.first) || within(b, a.second)) return true;
    return a == b ||
           (sign(Cross(a.first, a.second, b.first)) * sign(Cross(a.first, a.second, b.second)) < 0 &&
            sign(Cross(b.first, b.second, a.first)) * sign(Cross(b.first, b.second, a.second)) < 0);
}

/// Some of the edges of a grid of squares, each square with one of its diagonals or none.
rc::Gen<Map> GridMaps() {
    return rc::gen::exec([] {
        const int nWidth = *rc::gen::inRange(1, 8);
        const int nHeight = *rc::gen::inRange(1, 8);
        const int nDensity = *rc::gen::inRange(30, 101);
        const auto isIn = [&] { return *rc::gen::resize(100, rc::gen::inRange(0, 100)) < nDensity; };
        Map map;
        for (long x = 0; x <= nWidth; ++x) {
            for (long y = 0; y <= nHeight; ++y) {
                if (x < nWidth && isIn()) map.push_back({{x, y}, {x + 1, y}});
                if (y < nHeight && isIn()) map.push_back({{x, y}, {x, y + 1}});
                if (x == nWidth || y == nHeight) continue;
                const int nDiagonal = *rc::gen::inRange(0, 3);
                if (nDiagonal == 1) map.push_back({{x, y}, {x + 1, y + 1}});
                if (nDiagonal == 2) map.push_back({{x, y + 1}, {x + 1, y}});
            }
        }
        return map;
    });
}

/// Segments between random points, taken in random order as long as they cross none before: all of them make
/// a triangulation.
rc::Gen<Map> TriangulatedMaps() {
    return rc::gen::exec([] {
        const auto coordinate = rc::gen::resize(100, rc::gen::inRange(0L, 12L));
        const auto points = *rc::gen::resize(
            14, rc::gen::unique<std::vector<Point>>(rc::gen::construct<Point>(coordinate, coordinate)));
        Map candidates;
        for (const Point& a : points) {
            for (const Point& b : points) {
                if (a < b) candidates.push_back({a, b});
            }
        }
        Map map;
        for (std::size_t nLeft = candidates.size(); nLeft > 0; --nLeft) {
            std::swap(candidates[*rc::gen::inRange<std::size_t>(0, nLeft)], candidates[nLeft - 1]);
            const Segment& segment = candidates[nLeft - 1];
            if (std::none_of(map.begin(), map.end(), [&](const Segment& s) { return DoCross(s, segment); })) {
                map.push_back(segment);
            }
        }
        map.resize(map.size() - *rc::gen::inRange<std::size_t>(0, map.size() / 2 + 1));
        return map;
    });
}

rc::Gen<Map> Maps() { return rc::gen::oneOf(GridMaps(), TriangulatedMaps()); }

/// The map without its dead ends.
Map Pruned(Map map) {
    for (bool bGoesOn = true; bGoesOn;) {
        std::map<Point, int> degrees;
        for (const Segment& segment : map) {
            ++degrees[segment.first];
            ++degrees[segment.second];
        }
        const auto hasDeadEnd = [&](const Segment& s) {
            return degrees[s.first] == 1 || degrees[s.second] == 1;
        };
        const auto itDead = std::remove_if(map.begin(), map.end(), hasDeadEnd);
        bGoesOn = itDead != map.end();
        map.erase(itDead, map.end());
    }
    return map;
}

// Half-edges ------------------------------------------------------------------------------------------------

/// The sides of a map, linked around its faces.
class HalfEdges {
public:
    explicit HalfEdges(const Map& map) {
        std::map<Point, std::vector<Point>> around;
        for (const auto& [a, b] : map) {
            around[a].push_back(b);
            around[b].push_back(a);
        }
        for (auto& [centre, far] : around) {
            const Point at = centre;
            const auto angle = [&](const Point& p) {
                return std::atan2(static_cast<double>(p.y - at.y), static_cast<double>(p.x - at.x));
            };
            std::sort(far.begin(), far.end(),
                      [&](const Point& a, const Point& b) { return angle(a) < angle(b); });
            for (std::size_t i = 0; i < far.size(); ++i) {
                const Side next{at, far[(i + 1) % far.size()]};
                m_next[Side{far[i], at}] = next;
                m_previous[next] = Side{far[i], at};
                m_degrees[at] = far.size();
            }
        }
    }

    std::vector<Side> Sides() const {
        std::vector<Side> sides;
        for (const auto& link : m_next) {
            sides.push_back(link.first);
        }
        return sides;
    }

    /// All sides around the face of one.
    std::vector<Side> Face(const Side& first) const {
        std::vector<Side> face{first};
        for (Side side = m_next.at(first); !(side == first); side = m_next.at(side)) {
            face.push_back(side);
        }
        return face;
    }

    std::vector<std::vector<Side>> Faces() const {
        std::set<Side> seen;
        std::vector<std::vector<Side>> faces;
        for (const Side& side : Sides()) {
            if (seen.count(side) != 0) continue;
            faces.push_back(Face(side));
            seen.insert(faces.back().begin(), faces.back().end());
        }
        return faces;
    }

    /// The walk from a side as far as it goes: until it meets the side or its twin, or else from dead end to
    /// dead end.
    std::vector<Side> Walk(const Side& first) const {
        std::vector<Side> walk{first};
        for (Side side = first; m_degrees.at(side.to) > 1;) {
            side = m_next.at(side);
            if (side == first || side == first.Twin()) return walk;
            walk.push_back(side);
        }
        for (Side side = first; m_degrees.at(side.from) > 1;) {
            side = m_previous.at(side);
            walk.insert(walk.begin(), side);
        }
        return walk;
    }

    std::size_t Nodes() const { return m_degrees.size(); }

    std::size_t Components() const {
        std::map<Point, Point> leaders;
        for (const auto& node : m_degrees) {
            leaders[node.first] = node.first;
        }
        const auto leader = [&](Point p) {
            while (leaders[p] != p) p = leaders[p];
            return p;
        };
        for (const auto& link : m_next) {
            leaders[leader(link.first.from)] = leader(link.first.to);
        }
        return static_cast<std::size_t>(
            std::count_if(leaders.begin(), leaders.end(), [](const auto& l) { return l.first == l.second; }));
    }

private:
    std::map<Side, Side> m_next;
    std::map<Side, Side> m_previous;
    std::map<Point, std::size_t> m_degrees;
};

/// Twice the area that a closed walk surrounds, negative clockwise.
long Area(const std::vector<Side>& walk) {
    return std::accumulate(walk.begin(), walk.end(), 0L,
                           [](long n, const Side& s) { return n + s.from.x * s.to.y - s.from.y * s.to.x; });
}

// The graph -------------------------------------------------------------------------------------------------

Point PointOf(const KyGraphNode* pNode) { return static_cast<const PlaneNode*>(pNode)->m_at; }

/// Builds the map in the order given, each segment in a random direction.
void Build(KyGraph& graph, const Map& map) {
    for (const auto& [a, b] : map) {
        const bool bForward = *rc::gen::arbitrary<bool>();
        graph.Create(new PlaneArc(new PlaneNode(bForward ? a : b), new PlaneNode(bForward ? b : a)));
    }
}

Map Shuffled(Map map) {
    for (std::size_t nLeft = map.size(); nLeft > 1; --nLeft) {
        std::swap(map[*rc::gen::inRange<std::size_t>(0, nLeft)], map[nLeft - 1]);
    }
    return map;
}

std::vector<Side> WalkOf(KyGraphArc& arc, int nDir) {
    const std::unique_ptr<KyGraphPath> path(arc.FindMesh(nDir));
    std::vector<Side> walk;
    Point at = PointOf(path->m_pBeginNode);
    for (const KyGraphArc* pArc : *path) {
        const Point far = PointOf(pArc->m_pStart) == at ? PointOf(pArc->m_pEnd) : PointOf(pArc->m_pStart);
        walk.push_back({at, far});
        at = far;
    }
    return walk;
}

Side SideOf(const KyGraphArc& arc, int nDir) {
    const Side side{PointOf(arc.m_pStart), PointOf(arc.m_pEnd)};
    return nDir == KyGraphArc::Forward ? side : side.Twin();
}

RC_GTEST_PROP(FindMeshModel, EveryWalkIsThatOfTheHalfEdges, ()) {
    const Map map = Shuffled(*Maps());
    KyGraph graph(*rc::gen::element(1L, 2L, 16L));
    Build(graph, map);
    const HalfEdges model(map);

    for (KyGraphArc* pArc : graph.m_lstArc) {
        for (const int nDir : {KyGraphArc::Forward, KyGraphArc::Backward}) {
            RC_ASSERT(WalkOf(*pArc, nDir) == model.Walk(SideOf(*pArc, nDir)));
        }
    }
}

RC_GTEST_PROP(FindMeshModel, TurningIsAPermutationOfArcSidesWhoseCyclesObeyEulersFormula, ()) {
    const Map map = Pruned(*Maps());
    KyGraph graph;
    Build(graph, map);
    const HalfEdges model(map);

    std::map<Side, Side> next;
    for (KyGraphArc* pArc : graph.m_lstArc) {
        for (KyGraphNode* pNode : {pArc->m_pStart, pArc->m_pEnd}) {
            const KyGraphArc* const pNext = pNode->FindNextArc(pArc);
            const int nArriving = pNode == pArc->m_pEnd ? KyGraphArc::Forward : KyGraphArc::Backward;
            const int nLeaving = pNode == pNext->m_pStart ? KyGraphArc::Forward : KyGraphArc::Backward;
            next[SideOf(*pArc, nArriving)] = SideOf(*pNext, nLeaving);
        }
    }
    std::set<Side> images;
    for (const auto& link : next) {
        images.insert(link.second);
    }
    RC_ASSERT(next.size() == 2 * map.size());
    RC_ASSERT(images.size() == 2 * map.size());

    std::size_t nWalks = 0;
    for (std::set<Side> left = images; !left.empty(); ++nWalks) {
        Side side = *left.begin();
        while (left.erase(side) != 0) side = next.at(side);
    }
    RC_ASSERT(model.Nodes() + nWalks == map.size() + 2 * model.Components());
    RC_ASSERT(static_cast<std::size_t>(graph.m_lstNode.GetLength()) == model.Nodes());
}

RC_GTEST_PROP(FindMeshModel, TracesEachFaceOnceFromEachSideOfItsArcsWhereNoArcIsABridge, ()) {
    Map map = Pruned(*Maps());
    // An arc with the same face on both sides is a bridge; without it there may be new dead ends.
    for (bool bGoesOn = true; bGoesOn;) {
        const HalfEdges model(map);
        const auto isBridge = [&](const Segment& s) {
            const auto face = model.Face({s.first, s.second});
            return std::count(face.begin(), face.end(), Side{s.second, s.first}) != 0;
        };
        const auto itBridge = std::remove_if(map.begin(), map.end(), isBridge);
        bGoesOn = itBridge != map.end();
        map.erase(itBridge, map.end());
    }
    KyGraph graph;
    Build(graph, map);
    const HalfEdges model(map);

    std::map<Side, std::vector<Side>> faces;  // by their least side
    long nArea = 0;
    for (KyGraphArc* pArc : graph.m_lstArc) {
        for (const int nDir : {KyGraphArc::Forward, KyGraphArc::Backward}) {
            std::vector<Side> walk = WalkOf(*pArc, nDir);
            RC_ASSERT(walk == model.Face(SideOf(*pArc, nDir)));
            std::rotate(walk.begin(), std::min_element(walk.begin(), walk.end()), walk.end());
            const auto [itFace, bIsNew] = faces.emplace(walk.front(), walk);
            RC_ASSERT(itFace->second == walk);
            if (bIsNew) nArea += Area(walk);
        }
    }
    RC_ASSERT(faces.size() == model.Faces().size());
    RC_ASSERT(nArea == 0);  // the outer walks surround what the inner ones do, the other way round
    RC_ASSERT(model.Nodes() + faces.size() == map.size() + 2 * model.Components());
    const auto nOuter =
        std::count_if(faces.begin(), faces.end(), [](const auto& f) { return Area(f.second) > 0; });
    RC_ASSERT(static_cast<std::size_t>(nOuter) == model.Components());
}

TEST(FindMeshModel, ACompleteTriangulationHasTheStatedNumberOfFaces) {
    // A hexagon with its centre: seven nodes, twelve arcs, six triangles and the outside.
    const std::vector<Point> rim{{2, 0}, {1, 2}, {-1, 2}, {-2, 0}, {-1, -2}, {1, -2}};
    Map map;
    for (std::size_t i = 0; i < rim.size(); ++i) {
        map.push_back(std::minmax(rim[i], rim[(i + 1) % rim.size()]));
        map.push_back(std::minmax(rim[i], Point{0, 0}));
    }
    KyGraph graph;
    for (const auto& [a, b] : map) {
        graph.Create(new PlaneArc(new PlaneNode(a), new PlaneNode(b)));
    }

    std::map<std::size_t, int> sidesByLength;
    for (KyGraphArc* pArc : graph.m_lstArc) {
        ++sidesByLength[WalkOf(*pArc, KyGraphArc::Forward).size()];
        ++sidesByLength[WalkOf(*pArc, KyGraphArc::Backward).size()];
    }

    EXPECT_EQ(graph.m_lstNode.GetLength(), 7);
    EXPECT_EQ(graph.m_lstArc.GetLength(), 12);
    EXPECT_THAT(sidesByLength, testing::ElementsAre(std::pair(3, 18), std::pair(6, 6)));
}

}  // namespace
