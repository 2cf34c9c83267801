#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "FacesTestKit.h"
#include "examples/faces/Noding.h"

namespace faces {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::vector<std::pair<ChangeKind, GridPoint>> KindsAndPlaces(const NodedSegments& noded) {
    std::vector<std::pair<ChangeKind, GridPoint>> changes;
    for (const Change& change : noded.m_changes) changes.emplace_back(change.m_kind, change.m_at);
    return changes;
}

TEST(FacesSegments, NoLinesHaveNoSegments) {
    const DistinctSegments distinct = SegmentsOf({});

    EXPECT_THAT(distinct.m_segments, IsEmpty());
    EXPECT_EQ(distinct.m_nDuplicates, 0);
    EXPECT_EQ(distinct.m_nZeroLength, 0);
}

TEST(FacesSegments, DuplicatesInEitherDirectionAndSegmentsOfNoLengthAreDroppedAndCounted) {
    const DistinctSegments distinct = SegmentsOf(
        {{{3, 0}, {0, 0}, {0, 0}, {0, 5}}, {}, {{7, 7}}, {{0, 0}, {3, 0}}, {{3, 0}, {0, 0}, {3, 0}}});

    EXPECT_THAT(distinct.m_segments, ElementsAre(Segment({0, 0}, {0, 5}), Segment({0, 0}, {3, 0})));
    EXPECT_EQ(distinct.m_nDuplicates, 3);
    EXPECT_EQ(distinct.m_nZeroLength, 1);
}

TEST(FacesNoding, NoSegmentsStayNone) { EXPECT_THAT(NodeSegments({}).m_segments, IsEmpty()); }

TEST(FacesNoding, PlaneSegmentsStayAsTheyAre) {
    const std::vector<Segment> segments = Rings({Square(0, 10), Square(2, 5)});

    const NodedSegments noded = NodeSegments(segments);

    EXPECT_EQ(noded.m_segments, segments);
    EXPECT_THAT(noded.m_changes, IsEmpty());
    EXPECT_TRUE(noded.m_chains.empty());
}

TEST(FacesNoding, SegmentsThatCrossAreCutAtTheCrossing) {
    const NodedSegments noded = NodeSegments(Sorted({{{0, 0}, {10, 10}}, {{0, 10}, {10, 0}}}));

    EXPECT_THAT(noded.m_segments, ElementsAre(Segment({0, 0}, {5, 5}), Segment({0, 10}, {5, 5}),
                                              Segment({5, 5}, {10, 0}), Segment({5, 5}, {10, 10})));
    EXPECT_THAT(KindsAndPlaces(noded), ElementsAre(std::pair(ChangeKind::Crossing, GridPoint{5, 5}),
                                                   std::pair(ChangeKind::Crossing, GridPoint{5, 5})));
    EXPECT_EQ(noded.m_chains.at({{0, 10}, {10, 0}}), (Line{{0, 10}, {5, 5}, {10, 0}}));
}

TEST(FacesNoding, ACrossingIsRoundedToTheGrid) {
    const NodedSegments noded = NodeSegments(Sorted({{{0, 0}, {10, 3}}, {{0, 3}, {10, 0}}}));

    EXPECT_THAT(KindsAndPlaces(noded), ElementsAre(std::pair(ChangeKind::Crossing, GridPoint{5, 2}),
                                                   std::pair(ChangeKind::Crossing, GridPoint{5, 2})));
    EXPECT_EQ(noded.m_chains.at({{0, 0}, {10, 3}}), (Line{{0, 0}, {5, 2}, {10, 3}}));
}

TEST(FacesNoding, SegmentsThatOverlapAreCutAtTheirEnds) {
    const NodedSegments noded = NodeSegments(Sorted({{{0, 0}, {6, 0}}, {{4, 0}, {10, 0}}}));

    EXPECT_THAT(noded.m_segments,
                ElementsAre(Segment({0, 0}, {4, 0}), Segment({4, 0}, {6, 0}), Segment({6, 0}, {10, 0})));
    EXPECT_THAT(KindsAndPlaces(noded), ElementsAre(std::pair(ChangeKind::Overlap, GridPoint{4, 0}),
                                                   std::pair(ChangeKind::Overlap, GridPoint{4, 0})));
}

TEST(FacesNoding, ASegmentThatAnotherOneEndsOnIsCutThere) {
    const NodedSegments noded = NodeSegments(Sorted({{{0, 0}, {10, 0}}, {{4, 0}, {4, 9}}}));

    EXPECT_THAT(noded.m_segments,
                ElementsAre(Segment({0, 0}, {4, 0}), Segment({4, 0}, {4, 9}), Segment({4, 0}, {10, 0})));
    EXPECT_THAT(KindsAndPlaces(noded), ElementsAre(std::pair(ChangeKind::Touch, GridPoint{4, 0})));
}

TEST(FacesNoding, ASegmentThatPassesByAPointWithinHalfACellIsLedThroughIt) {
    const NodedSegments noded = NodeSegments(Sorted({{{0, 0}, {100, 1}}, {{25, 0}, {25, -9}}}));

    EXPECT_EQ(noded.m_chains.at({{0, 0}, {100, 1}}), (Line{{0, 0}, {25, 0}, {100, 1}}));
    EXPECT_THAT(KindsAndPlaces(noded), ElementsAre(std::pair(ChangeKind::Near, GridPoint{25, 0})));
}

TEST(FacesNoding, ARingFollowsTheChainsOfItsSegmentsInTheirDirections) {
    const Line ring = Square(0, 10);
    const NodedSegments noded = NodeSegments(Sorted([&] {
        std::vector<Segment> segments = Rings({ring});
        segments.emplace_back(GridPoint{5, 10}, GridPoint{5, 20});
        segments.emplace_back(GridPoint{5, 0}, GridPoint{5, -20});
        return segments;
    }()));

    EXPECT_THAT(NodedRing(ring, noded), ElementsAre(GridPoint{0, 0}, GridPoint{5, 0}, GridPoint{10, 0},
                                                    GridPoint{10, 10}, GridPoint{5, 10}, GridPoint{0, 10}));
}

TEST(FacesNoding, TheGridsFarCornersAreExact) {
    constexpr int far = MaxCoordinate;
    const NodedSegments noded = NodeSegments(Sorted({{{0, 0}, {far, far}}, {{0, far}, {far, 0}}}));

    EXPECT_THAT(noded.m_chains.at({{0, 0}, {far, far}}),
                ElementsAre(GridPoint{0, 0}, GridPoint{far / 2, far / 2}, GridPoint{far, far}));
}

int SideOf(const Segment& segment, GridPoint point) {
    const long nCross = Cross(segment.m_from, segment.m_to, point);
    return nCross > 0 ? 1 : nCross < 0 ? -1 : 0;
}

/// Two distinct segments share nothing but, at most, an end.
bool ArePlane(const Segment& a, const Segment& b) {
    const int nSides[] = {SideOf(a, b.m_from), SideOf(a, b.m_to), SideOf(b, a.m_from), SideOf(b, a.m_to)};
    if (nSides[0] * nSides[1] < 0 && nSides[2] * nSides[3] < 0) return false;
    const auto endsInside = [](const Segment& segment, GridPoint point) {
        return SideOf(segment, point) == 0 && segment.m_from < point && point < segment.m_to;
    };
    return !endsInside(a, b.m_from) && !endsInside(a, b.m_to) && !endsInside(b, a.m_from) &&
           !endsInside(b, a.m_to);
}

double Distance(const Segment& segment, GridPoint point) {
    const double dX = segment.m_to.x - segment.m_from.x;
    const double dY = segment.m_to.y - segment.m_from.y;
    return std::abs(static_cast<double>(Cross(segment.m_from, segment.m_to, point))) / std::hypot(dX, dY);
}

RC_GTEST_PROP(FacesNoding, TheOutcomeIsPlane, ()) {
    const int nExtent = *rc::gen::element(6, 20, 100, 5000);
    const auto segments =
        RandomSegments(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 40), nExtent);

    const NodedSegments noded = NodeSegments(segments);

    for (std::size_t i = 0; i < noded.m_segments.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) RC_ASSERT(ArePlane(noded.m_segments[i], noded.m_segments[j]));
    }
}

RC_GTEST_PROP(FacesNoding, EverySegmentStaysOrBecomesAChainOfNodedSegmentsCloseToIt, ()) {
    const int nExtent = *rc::gen::element(6, 20, 100, 5000);
    const auto segments =
        RandomSegments(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 40), nExtent);

    const NodedSegments noded = NodeSegments(segments);

    for (const Segment& segment : segments) {
        const auto it = noded.m_chains.find(segment);
        const Line chain = it == noded.m_chains.end() ? Line{segment.m_from, segment.m_to} : it->second;
        RC_ASSERT(chain.size() >= 2U);
        RC_ASSERT(chain.front() == segment.m_from);
        RC_ASSERT(chain.back() == segment.m_to);
        for (const GridPoint point : chain) RC_ASSERT(Distance(segment, point) <= std::sqrt(0.5));
        for (std::size_t i = 1; i < chain.size(); ++i) {
            const Segment step(chain[i - 1], chain[i]);
            RC_ASSERT(std::binary_search(noded.m_segments.begin(), noded.m_segments.end(), step));
        }
    }
}

// On a grid so fine that segments hardly ever pass exactly through a corner between four cells.
RC_GTEST_PROP(FacesNoding, EveryNodedSegmentIsPartOfAChain, ()) {
    const auto segments =
        RandomSegments(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 40), 50'000);

    const NodedSegments noded = NodeSegments(segments);

    std::vector<Segment> accounted;
    for (const Segment& segment : segments) {
        const auto it = noded.m_chains.find(segment);
        if (it == noded.m_chains.end()) {
            accounted.push_back(segment);
            continue;
        }
        for (std::size_t i = 1; i < it->second.size(); ++i)
            accounted.emplace_back(it->second[i - 1], it->second[i]);
    }
    RC_ASSERT(Sorted(accounted) == noded.m_segments);
}

RC_GTEST_PROP(FacesNoding, EveryCrossingAndOverlapIsTold, ()) {
    const auto segments = RandomSegments(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 15), 12);

    const NodedSegments noded = NodeSegments(segments);

    bool bExpected = false;
    for (const Segment& a : segments) {
        for (const Segment& b : segments) {
            const int nA = SideOf(a, b.m_from) * SideOf(a, b.m_to);
            const int nB = SideOf(b, a.m_from) * SideOf(b, a.m_to);
            const bool bCrossing = nA < 0 && nB < 0;
            const bool bOneLine = SideOf(a, b.m_from) == 0 && SideOf(a, b.m_to) == 0;
            const bool bOverlap =
                bOneLine && a < b && std::max(a.m_from, b.m_from) < std::min(a.m_to, b.m_to);
            bExpected = bExpected || bCrossing || bOverlap;
        }
    }
    const bool bTold = std::any_of(noded.m_changes.begin(), noded.m_changes.end(), [](const Change& change) {
        return change.m_kind == ChangeKind::Crossing || change.m_kind == ChangeKind::Overlap;
    });
    RC_ASSERT(bTold == bExpected);
}

}  // namespace
}  // namespace faces
