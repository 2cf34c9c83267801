#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "FacesTestKit.h"
#include "examples/faces/MapReader.h"
#include "examples/faces/Noding.h"
#include "examples/faces/RingMatch.h"

namespace faces {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// A map read from text, all the way to its matched rings. A cell of the grid is one unit if the map is 100
/// wide.
struct MatchedMap {
    explicit MatchedMap(const std::string& strText, int nGrid = 100)
        : m_map(ReadMap(strText, {"", nGrid})),
          m_noded(NodeSegments(SegmentsOf(m_map.m_lines).m_segments)),
          m_traced(m_noded.m_segments),
          m_match(MatchRings(m_map, m_noded, m_traced.m_faces)) {}

    /// The names of the faces' areas; "-" for none.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const long nArea : m_match.m_areaOfFace) {
            names.push_back(
                nArea == RingMatch::NoArea ? "-" : m_map.m_areas[static_cast<std::size_t>(nArea)].m_strName);
        }
        return names;
    }

    BorderMap m_map;
    NodedSegments m_noded;
    TracedMap m_traced;
    RingMatch m_match;
};

std::string Feature(const std::string& strName, const std::string& strRings) {
    return R"({"type": "Feature", "properties": {"name": ")" + strName +
           R"("}, "geometry": {"type": "Polygon", "coordinates": [)" + strRings + "]}}";
}

std::string Collection(const std::string& strFeatures) {
    return R"({"type": "FeatureCollection", "features": [)" + strFeatures + "]}";
}

auto Lost(const char* pszName, bool bHole, RingLoss reason) {
    return AllOf(Field(&LostRing::m_strName, pszName), Field(&LostRing::m_bHole, bHole),
                 Field(&LostRing::m_reason, reason));
}

TEST(FacesRingMatch, ARingIsFoundAgainWhicheverWayItRuns) {
    const MatchedMap matched(Collection(Feature("left", "[[0,0], [0,100], [50,100], [50,0], [0,0]]") + "," +
                                        Feature("right", "[[50,0], [100,0], [100,100], [50,100], [50,0]]")));

    EXPECT_EQ(matched.m_match.m_nRings, 2);
    EXPECT_EQ(matched.m_match.m_nFound, 2);
    EXPECT_THAT(matched.m_match.m_lost, IsEmpty());
    EXPECT_THAT(matched.Names(), UnorderedElementsAre("left", "right"));
}

TEST(FacesRingMatch, AHoleIsFoundAgainAsTheWalkAroundWhatFillsIt) {
    const MatchedMap matched(Collection(Feature(
        "land",
        "[[0,0], [100,0], [100,100], [0,100], [0,0]], [[40,40], [60,40], [60,60], [40,60], [40,40]]")));

    EXPECT_EQ(matched.m_match.m_nRings, 2);
    EXPECT_EQ(matched.m_match.m_nFound, 2);
    EXPECT_THAT(matched.Names(), UnorderedElementsAre("land", "-"));
}

TEST(FacesRingMatch, AHoleFilledByTwoAreasIsStillFound) {
    const MatchedMap matched(Collection(
        Feature(
            "land",
            "[[0,0], [100,0], [100,100], [0,100], [0,0]], [[40,40], [60,40], [60,60], [40,60], [40,40]]") +
        "," + Feature("a", "[[40,40], [60,40], [60,60], [40,40]]") + "," +
        Feature("b", "[[40,40], [60,60], [40,60], [40,40]]")));

    EXPECT_EQ(matched.m_match.m_nFound, 4);
    EXPECT_THAT(matched.Names(), UnorderedElementsAre("land", "a", "b"));
}

TEST(FacesRingMatch, ARingOfTwoPointsHasCollapsed) {
    const MatchedMap matched(Collection(Feature("land", "[[0,0], [100,0], [100,100], [0,0]]") + "," +
                                        Feature("islet", "[[10.1,50], [10.2,60], [10.3,50], [10.1,50]]")));

    EXPECT_EQ(matched.m_match.m_nRings, 2);
    EXPECT_EQ(matched.m_match.m_nFound, 1);
    EXPECT_THAT(matched.m_match.m_lost, ElementsAre(Lost("islet", false, RingLoss::Collapsed)));
}

TEST(FacesRingMatch, ARingOfOnePointHasCollapsed) {
    const MatchedMap matched(Collection(Feature(
        "land", "[[0,0], [100,0], [100,100], [0,0]], [[50.1,20], [50.2,20], [50.2,20.1], [50.1,20]]")));

    EXPECT_THAT(matched.m_match.m_lost, ElementsAre(Lost("land", true, RingLoss::Collapsed)));
    EXPECT_THAT(matched.Names(), ElementsAre("land"));
}

TEST(FacesRingMatch, ARingThatMeetsItselfIsLostButItsPartsBearItsName) {
    // Two lobes, joined by a corridor that is narrower than a cell.
    const MatchedMap matched(Collection(Feature(
        "lobes",
        "[[0,0], [40,0], [50,20], [60,0], [100,0], [100,100], [60,40], [50,20.2], [40,40], [0,40], [0,0]]")));

    EXPECT_THAT(matched.m_match.m_lost, ElementsAre(Lost("lobes", false, RingLoss::TouchesItself)));
    EXPECT_THAT(matched.Names(), ElementsAre("lobes", "lobes"));
}

TEST(FacesRingMatch, ARingWithASpikeIsLostButItsFaceBearsItsName) {
    const MatchedMap matched(
        Collection(Feature("land", "[[0,0], [100,0], [100,50], [50,50], [50,90], [50,50], [0,50], [0,0]]")));

    EXPECT_THAT(matched.m_match.m_lost, ElementsAre(Lost("land", false, RingLoss::TouchesItself)));
    EXPECT_THAT(matched.Names(), ElementsAre("land"));
}

TEST(FacesRingMatch, AHoleThatTouchesItsOuterRingLosesBothButNotTheName) {
    const MatchedMap matched(Collection(
        Feature("land", "[[0,0], [100,0], [100,100], [0,100], [0,0]], [[0,0], [20,40], [40,20], [0,0]]")));

    EXPECT_EQ(matched.m_match.m_nFound, 0);
    EXPECT_THAT(matched.Names(), UnorderedElementsAre("land", "-"));
}

TEST(FacesRingMatch, ARingThatOtherBordersRunThroughIsParted) {
    const MatchedMap matched(Collection(Feature("land", "[[0,0], [100,0], [100,100], [0,100], [0,0]]") + "," +
                                        Feature("half", "[[0,0], [50,0], [50,100], [0,100], [0,0]]")));

    EXPECT_EQ(matched.m_match.m_nFound, 1);
    EXPECT_THAT(matched.m_match.m_lost, ElementsAre(Lost("land", false, RingLoss::Parted)));
    EXPECT_THAT(matched.Names(), UnorderedElementsAre("half", "-"));
}

TEST(FacesRingMatch, ARingThatNodingBentIsFoundAgain) {
    const MatchedMap matched(Collection(Feature("land", "[[0,0], [100,0], [100,100], [0,100], [0,0]]") + "," +
                                        Feature("other", "[[50,0], [70,-40], [30,-40], [50,0]]")));

    EXPECT_EQ(matched.m_match.m_nFound, 2);
    EXPECT_FALSE(matched.m_noded.m_chains.empty());
}

TEST(FacesRingMatch, APlaceThatNodingChangedNamesTheAreasThere) {
    const MatchedMap matched(
        Collection(Feature("left", "[[0,0], [60,0], [60,60], [0,60], [0,0]]") + "," +
                   Feature("right", "[[40,40], [100,40], [100,100], [40,100], [40,40]]")));

    const std::vector<ChangedPlace> places = ChangedPlaces(matched.m_map, matched.m_noded);

    const auto isCrossing = [](GridPoint at) {
        return AllOf(Field(&ChangedPlace::m_at, at), Field(&ChangedPlace::m_kind, ChangeKind::Crossing),
                     Field(&ChangedPlace::m_names, ElementsAre("left", "right")));
    };
    EXPECT_THAT(places, ElementsAre(isCrossing({40, 60}), isCrossing({60, 40})));
}

TEST(FacesRingMatch, AMapOfLinesAloneHasNoRings) {
    const MatchedMap matched(R"({"type": "LineString", "coordinates": [[0,0], [100,0], [100,100], [0,0]]})");

    EXPECT_EQ(matched.m_match.m_nRings, 0);
    EXPECT_THAT(matched.Names(), ElementsAre("-"));
}

}  // namespace
}  // namespace faces
