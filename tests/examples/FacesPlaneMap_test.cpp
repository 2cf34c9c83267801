#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <numeric>
#include <set>

#include "FacesTestKit.h"
#include "examples/faces/PlaneMap.h"
#include "examples/faces/PointIndex.h"

namespace faces {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST(FacesGrid, TheCrossProductTellsTheTurn) {
    EXPECT_GT(Cross({0, 0}, {1, 0}, {0, 1}), 0);
    EXPECT_LT(Cross({0, 0}, {0, 1}, {1, 0}), 0);
    EXPECT_EQ(Cross({1, 1}, {3, 2}, {7, 4}), 0);
}

TEST(FacesGrid, TheCrossProductIsExactAcrossTheWholeGrid) {
    constexpr int far = MaxCoordinate;

    EXPECT_EQ(Cross({0, 0}, {far, far - 1}, {far - 1, far - 2}), -1);
    EXPECT_EQ(Cross({far, 0}, {far, far}, {0, 0}), static_cast<long>(far) * far);
}

TEST(FacesPointIndex, NoSegmentsHaveNoPoints) { EXPECT_THAT(PointIndex({}).Points(), IsEmpty()); }

TEST(FacesPointIndex, EachEndIsThereOnceInOrder) {
    const PointIndex index(Rings({Square(0, 4), Square(4, 9)}));

    EXPECT_THAT(index.Points(),
                ElementsAre(GridPoint{0, 0}, GridPoint{0, 4}, GridPoint{4, 0}, GridPoint{4, 4},
                            GridPoint{4, 9}, GridPoint{9, 4}, GridPoint{9, 9}));
    EXPECT_EQ(index.Find({4, 9}), 4U);
}

TEST(FacesPointIndex, PointsAboveOneAnotherAreFound) {
    std::vector<Segment> segments;
    for (int nY = 0; nY < 100; ++nY) segments.emplace_back(GridPoint{7, nY}, GridPoint{7, nY + 1});

    const PointIndex index(segments);

    for (int nY = 0; nY <= 100; ++nY) EXPECT_EQ(index.Find({7, nY}), static_cast<unsigned int>(nY));
}

RC_GTEST_PROP(FacesPointIndex, AgreesWithASet, ()) {
    const int nExtent = *rc::gen::element(3, 50, 100'000, MaxCoordinate);
    const auto segments =
        RandomSegments(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 200), nExtent);
    std::set<GridPoint> expected;
    for (const Segment& segment : segments) expected.insert({segment.m_from, segment.m_to});

    const PointIndex index(segments);

    RC_ASSERT(index.Points() == Line(expected.begin(), expected.end()));
    for (const GridPoint point : expected) RC_ASSERT(index.Points()[index.Find(point)] == point);
}

TEST(FacesMapNode, NodesAreOrderedByXThenByY) {
    const MapNode node({5, 5});

    EXPECT_GT(node.CmpNode(MapNode({4, 9})), 0);
    EXPECT_LT(node.CmpNode(MapNode({6, 0})), 0);
    EXPECT_GT(node.CmpNode(MapNode({5, 4})), 0);
    EXPECT_LT(node.CmpNode(MapNode({5, 6})), 0);
    EXPECT_EQ(node.CmpNode(MapNode({5, 5})), 0);
}

TEST(FacesMapArc, ArcsAreOrderedByTheirEndsWhenNoNodeIsBeingOrdered) {
    MapNode a({0, 0});
    MapNode b({1, 5});
    MapNode c({2, 0});
    const MapArc ab(&a, &b, 0);
    const MapArc ac(&a, &c, 1);
    const MapArc bc(&b, &c, 2);

    EXPECT_LT(ab.CmpArc(ac), 0);
    EXPECT_GT(bc.CmpArc(ac), 0);
    EXPECT_EQ(ac.CmpArc(ac), 0);
}

TEST(FacesMapArc, AnArcThatDoesNotTouchTheNodeBeingOrderedKeepsTheGlobalOrder) {
    MapNode a({0, 0});
    MapNode b({1, 5});
    MapNode c({2, 0});
    MapNode d({3, 3});
    const MapArc ab(&a, &b, 0);
    const MapArc ac(&a, &c, 1);
    const MapArc cd(&c, &d, 2);

    KyGraphNode::s_pStartNode = &a;
    const int nAround = ab.CmpArc(ac);
    const int nElsewhere = ab.CmpArc(cd);
    KyGraphNode::s_pStartNode = nullptr;

    EXPECT_LT(nAround, 0) << "clockwise from straight down, up comes before right";
    EXPECT_LT(nElsewhere, 0);
}

/// The directions of the arcs around a node, as the graph keeps them.
Line PointsAround(const MapNode& node) {
    Line points;
    for (const KyGraphArc* pArc : node.m_lstArc) {
        const KyGraphNode* pFar = pArc->m_pStart == &node ? pArc->m_pEnd : pArc->m_pStart;
        points.push_back(static_cast<const MapNode*>(pFar)->m_point);
    }
    return points;
}

TEST(FacesPlaneMap, ArcsStandClockwiseAroundANodeFromStraightDown) {
    const GridPoint centre{5, 5};
    std::vector<Segment> segments;
    for (int nX = 4; nX <= 6; ++nX) {
        for (int nY = 4; nY <= 6; ++nY) {
            if (GridPoint{nX, nY} != centre) segments.emplace_back(centre, GridPoint{nX, nY});
        }
    }
    segments = Sorted(segments);

    const PlaneMap map(segments);

    EXPECT_THAT(PointsAround(*map.m_nodes[4]),
                ElementsAre(GridPoint{5, 4}, GridPoint{4, 4}, GridPoint{4, 5}, GridPoint{4, 6},
                            GridPoint{5, 6}, GridPoint{6, 6}, GridPoint{6, 5}, GridPoint{6, 4}));
}

RC_GTEST_PROP(FacesPlaneMap, TheOrderAroundANodeIsThatOfTheAngles, ()) {
    constexpr int radius = 1000;
    const GridPoint centre{radius, radius};
    std::mt19937 random(*rc::gen::arbitrary<unsigned int>());
    std::uniform_int_distribution<int> coordinate(0, 2 * radius);
    std::vector<std::pair<double, GridPoint>> byAngle;
    std::vector<Segment> segments;
    for (int i = *rc::gen::inRange(1, 60); i > 0; --i) {
        const GridPoint point{coordinate(random), coordinate(random)};
        // Clockwise from straight down, 0 to 2 pi.
        double dAngle = std::atan2(point.x - centre.x, point.y - centre.y) + std::acos(-1);
        if (dAngle >= 2 * std::acos(-1)) dAngle = 0;
        const bool bNew = std::none_of(segments.begin(), segments.end(), [&](const Segment& segment) {
            return Cross(centre, segment.m_from == centre ? segment.m_to : segment.m_from, point) == 0;
        });
        if (point == centre || !bNew) continue;
        byAngle.emplace_back(dAngle, point);
        segments.emplace_back(centre, point);
    }
    RC_PRE(!segments.empty());
    segments = Sorted(segments);

    const PlaneMap map(segments);

    std::sort(byAngle.begin(), byAngle.end());
    Line expected;
    for (const auto& [dAngle, point] : byAngle) expected.push_back(point);
    for (const MapNode* pNode : map.m_nodes) {
        if (pNode->m_point == centre) RC_ASSERT(PointsAround(*pNode) == expected);
    }
}

RC_GTEST_PROP(FacesPlaneMap, TheGraphHoldsEveryPointAndSegmentInOrder, ()) {
    const auto segments = RandomLattice(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 8),
                                        *rc::gen::inRange(20, 100));
    RC_PRE(!segments.empty());

    const PlaneMap map(segments);

    RC_ASSERT(map.m_graph.m_lstArc.GetLength() == static_cast<long>(segments.size()));
    std::size_t i = 0;
    for (const KyGraphArc* pArc : map.m_graph.m_lstArc) {
        RC_ASSERT(pArc == map.m_arcs[i]);
        RC_ASSERT(static_cast<const MapNode*>(pArc->m_pStart)->m_point == segments[i].m_from);
        RC_ASSERT(static_cast<const MapNode*>(pArc->m_pEnd)->m_point == segments[i].m_to);
        ++i;
    }
    RC_ASSERT(std::equal(map.m_nodes.begin(), map.m_nodes.end(), map.m_graph.m_lstNode.begin(),
                         map.m_graph.m_lstNode.end()));
    RC_ASSERT(std::is_sorted(map.m_nodes.begin(), map.m_nodes.end(),
                             [](const MapNode* a, const MapNode* b) { return a->m_point < b->m_point; }));
}

TEST(FacesPlaneMap, ATreeIsAllDeadEnds) {
    TracedMap traced(
        Sorted({{{0, 0}, {5, 0}}, {{5, 0}, {9, 3}}, {{5, 0}, {9, 0}}, {{9, 3}, {9, 9}}, {{20, 0}, {20, 1}}}));

    EXPECT_EQ(traced.m_nDeadEnds, 5);
    EXPECT_EQ(traced.m_nBridges, 0);
    EXPECT_THAT(traced.m_map.m_isDeadEnd, Each(true));
    EXPECT_THAT(traced.m_map.m_firstNodes, IsEmpty());
    EXPECT_THAT(traced.m_map.m_componentOfNode, Each(PlaneMap::NoComponent));
}

TEST(FacesPlaneMap, AChainIntoAFaceIsPrunedToItsRoot) {
    std::vector<Segment> segments = Rings({Square(0, 10)});
    segments.insert(segments.end(),
                    {{{0, 0}, {2, 2}}, {{2, 2}, {4, 2}}, {{4, 2}, {5, 5}}, {{10, 10}, {15, 15}}});

    const TracedMap traced(segments);

    EXPECT_EQ(traced.m_nDeadEnds, 4);
    EXPECT_THAT(traced.TwiceAreas(), ElementsAre(200));
}

TEST(FacesPlaneMap, APrunedArcIsStillTheGraphsButJoinsNothing) {
    std::vector<Segment> segments = Rings({Square(0, 10)});
    segments.emplace_back(GridPoint{10, 10}, GridPoint{15, 15});

    const TracedMap traced(segments);

    EXPECT_EQ(traced.m_map.m_graph.m_lstArc.GetLength(), 5);
    EXPECT_TRUE(traced.m_map.m_isDeadEnd[4]);
    EXPECT_EQ(traced.m_map.m_arcs[4]->m_pStart, nullptr);
    EXPECT_EQ(traced.m_map.m_arcs[4]->m_pEnd, nullptr);
}

TEST(FacesPlaneMap, AChainBetweenTwoRingsIsOfBridges) {
    std::vector<Segment> segments = Rings({Square(0, 10), Square(30, 40)});
    segments.insert(segments.end(), {{{10, 10}, {20, 20}}, {{20, 20}, {30, 30}}, {{20, 20}, {20, 25}}});

    const TracedMap traced(segments);

    EXPECT_EQ(traced.m_nDeadEnds, 1);
    EXPECT_EQ(traced.m_nBridges, 2);
    EXPECT_EQ(traced.m_map.m_firstNodes.size(), 1U);
}

TEST(FacesPlaneMap, RingsThatMeetInAPointHaveNoBridge) {
    const TracedMap traced(Rings({Square(0, 10), Square(10, 20)}));

    EXPECT_EQ(traced.m_nBridges, 0);
    EXPECT_EQ(traced.m_map.m_firstNodes.size(), 1U);
}

TEST(FacesPlaneMap, AComponentIsKnownByItsLeastNode) {
    const TracedMap traced(Rings({Square(20, 30), Square(0, 10)}));

    ASSERT_EQ(traced.m_map.m_firstNodes.size(), 2U);
    EXPECT_EQ(traced.m_map.m_firstNodes[0]->m_point, (GridPoint{0, 0}));
    EXPECT_EQ(traced.m_map.m_firstNodes[1]->m_point, (GridPoint{20, 20}));
}

/// The number of components, of the nodes that arcs are at, and without one of the arcs.
long CountComponents(const PlaneMap& map, std::size_t nWithout) {
    std::vector<unsigned int> root(map.m_nodes.size());
    std::iota(root.begin(), root.end(), 0U);
    const auto find = [&root](unsigned int n) {
        while (root[n] != n) n = root[n];
        return n;
    };
    std::set<unsigned int> touched;
    for (std::size_t i = 0; i < map.m_ends.size(); ++i) {
        if (map.m_isDeadEnd[i]) continue;
        touched.insert({map.m_ends[i].m_nStart, map.m_ends[i].m_nEnd});
        if (i != nWithout) root[find(map.m_ends[i].m_nStart)] = find(map.m_ends[i].m_nEnd);
    }
    return std::count_if(touched.begin(), touched.end(), [&](unsigned int n) { return find(n) == n; });
}

RC_GTEST_PROP(FacesPlaneMap, BridgesAndComponentsAreThoseFoundByTakingArcsAway, ()) {
    const auto segments = RandomLattice(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 8),
                                        *rc::gen::inRange(25, 60));

    const TracedMap traced(segments);

    const PlaneMap& map = traced.m_map;
    const long nComponents = CountComponents(map, segments.size());
    RC_ASSERT(static_cast<long>(map.m_firstNodes.size()) == nComponents);
    long nBridges = 0;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        if (map.m_isDeadEnd[i]) continue;
        const bool bBridge = CountComponents(map, i) > nComponents;
        RC_ASSERT(map.m_isBridge[i] == bBridge);
        nBridges += bBridge ? 1 : 0;
    }
    RC_ASSERT(traced.m_nBridges == nBridges);
}

RC_GTEST_PROP(FacesPlaneMap, WhatIsLeftAfterPruningHasNoDeadEnd, ()) {
    const auto segments = RandomLattice(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 8),
                                        *rc::gen::inRange(25, 60));

    const TracedMap traced(segments);

    for (const MapNode* pNode : traced.m_map.m_nodes) RC_ASSERT(pNode->m_lstArc.GetLength() != 1);
    RC_ASSERT(std::count(traced.m_map.m_isDeadEnd.begin(), traced.m_map.m_isDeadEnd.end(), true) ==
              traced.m_nDeadEnds);
}

}  // namespace
}  // namespace faces
