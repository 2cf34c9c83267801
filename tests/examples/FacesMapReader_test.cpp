#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "FacesTestKit.h"
#include "examples/faces/MapReader.h"

namespace faces {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

std::string Topology(const std::string& strMembers) { return R"({"type": "Topology", )" + strMembers + "}"; }

/// Two squares, 10 to 20 wide, that share the line x = 10; quantized, with steps of 0.5 and 2.
const std::string twoSquares = Topology(R"(
    "transform": {"scale": [0.5, 2], "translate": [100, 200]},
    "arcs": [[[10, 0], [0, 10]], [[10, 10], [-10, 0], [0, -10], [10, 0]], [[10, 10], [10, 0], [0, -10], [-10, 0]]],
    "objects": {
        "outline": {"type": "MultiLineString", "arcs": [[1], [2]]},
        "squares": {"type": "GeometryCollection", "geometries": [
            {"type": "Polygon", "arcs": [[0, 1]], "properties": {"name": "West"}},
            {"type": "Polygon", "arcs": [[2, 0]], "id": 7}]}})");

TEST(FacesMapReader, AQuantizedFileBringsItsGridAlong) {
    const BorderMap map = ReadMap(twoSquares, {});

    EXPECT_THAT(map.m_lines, ElementsAre(Line{{10, 0}, {10, 10}}, Line{{10, 10}, {0, 10}, {0, 0}, {10, 0}},
                                         Line{{10, 10}, {20, 10}, {20, 0}, {10, 0}}));
    EXPECT_EQ(map.m_grid.X({20, 0}), 110);
    EXPECT_EQ(map.m_grid.Y({0, 10}), 220);
    EXPECT_EQ(map.m_grid.CellArea(), 1);
}

TEST(FacesMapReader, AGridBeginsAtTheLowestCoordinates) {
    const BorderMap map = ReadMap(
        Topology(R"("transform": {"scale": [1, -1], "translate": [0, 0]}, "arcs": [[[-5, 30], [4, -10]]],
                    "objects": {})"),
        {});

    EXPECT_THAT(map.m_lines, ElementsAre(Line{{0, 10}, {4, 0}}));
    EXPECT_EQ(map.m_grid.X({0, 0}), -5);
    EXPECT_EQ(map.m_grid.Y({0, 10}), -30);
}

TEST(FacesMapReader, ARingRunsAlongItsLinesInTheirDirections) {
    const BorderMap map = ReadMap(twoSquares, {});

    ASSERT_THAT(map.m_areas, SizeIs(2));
    EXPECT_THAT(map.m_areas[1].m_rings, ElementsAre(Ring{2, 0}));
    EXPECT_THAT(map.PointsOf(map.m_areas[1].m_rings[0]),
                ElementsAre(GridPoint{10, 10}, GridPoint{20, 10}, GridPoint{20, 0}, GridPoint{10, 0}));
}

TEST(FacesMapReader, AnAreaIsNamedByItsPropertyOrElseById) {
    const BorderMap map = ReadMap(twoSquares, {});

    ASSERT_THAT(map.m_areas, SizeIs(2));
    EXPECT_EQ(map.m_areas[0].m_strName, "West");
    EXPECT_EQ(map.m_areas[1].m_strName, "7");
}

TEST(FacesMapReader, AnAreaWithoutANameIsNumbered) {
    const BorderMap map = ReadMap(
        R"({"type": "MultiPolygon", "coordinates": [[[[0, 0], [1, 0], [0, 1]]], [[[5, 5], [6, 5], [5, 6]]]]})",
        {});

    ASSERT_THAT(map.m_areas, SizeIs(2));
    EXPECT_EQ(map.m_areas[0].m_strName, "area 1");
    EXPECT_EQ(map.m_areas[1].m_strName, "area 2");
}

TEST(FacesMapReader, ControlCharactersInANameBecomeBlanks) {
    const BorderMap map = ReadMap(R"({"type": "Feature", "properties": {"name": "a\u001b[1m\nb"},
        "geometry": {"type": "Polygon", "coordinates": [[[0, 0], [1, 0], [0, 1]]]}})",
                                  {});

    ASSERT_THAT(map.m_areas, SizeIs(1));
    EXPECT_EQ(map.m_areas[0].m_strName, "a [1m b");
}

TEST(FacesMapReader, TheAreasAreThoseOfTheObjectWithMost) {
    const BorderMap map =
        ReadMap(Topology(R"("arcs": [[[0, 0], [9, 0], [0, 9], [0, 0]], [[5, 5], [8, 9], [5, 9], [5, 5]]],
        "objects": {"one": {"type": "Polygon", "arcs": [[0]], "id": "one"},
                    "two": {"type": "MultiPolygon", "arcs": [[[0]], [[1]]], "id": "two"},
                    "three": {"type": "Polygon", "arcs": [[1]], "id": "three"}})"),
                {});

    ASSERT_THAT(map.m_areas, SizeIs(2));
    EXPECT_EQ(map.m_areas[0].m_strName, "two");
}

TEST(FacesMapReader, AnObjectByNameBringsItsOwnLinesOnly) {
    const BorderMap map = ReadMap(twoSquares, {"outline", 0});

    EXPECT_THAT(map.m_lines, ElementsAre(IsEmpty(), SizeIs(4), SizeIs(4)));
    EXPECT_THAT(map.m_areas, IsEmpty());
}

TEST(FacesMapReader, AnUnquantizedFileIsLaidOnAGridAlongItsLongerSide) {
    const BorderMap map =
        ReadMap(Topology(R"("arcs": [[[-1, 2], [3, 4.5]], [[3, 4.5], [1, 2]]], "objects": {})"), {});

    EXPECT_THAT(map.m_lines, ElementsAre(Line{{0, 0}, {DefaultGrid, 625'000}},
                                         Line{{DefaultGrid, 625'000}, {500'000, 0}}));
    EXPECT_EQ(map.m_grid.X({DefaultGrid, 0}), 3);
    EXPECT_EQ(map.m_grid.Y({0, 625'000}), 4.5);
}

TEST(FacesMapReader, TheGridCanBeChosen) {
    const BorderMap map = ReadMap(twoSquares, {"", 40});

    // 10 x 20 in the map's own coordinates
    EXPECT_THAT(map.m_lines[1],
                ElementsAre(GridPoint{10, 40}, GridPoint{0, 40}, GridPoint{0, 0}, GridPoint{10, 0}));
    EXPECT_EQ(map.m_grid.CellArea(), 0.25);
}

TEST(FacesMapReader, AQuantizedFileWithFractionsIsLaidOnAGrid) {
    const BorderMap map = ReadMap(
        Topology(
            R"("transform": {"scale": [2, 2], "translate": [0, 0]}, "arcs": [[[0.5, 0], [2, 0]]], "objects": {})"),
        {});

    EXPECT_THAT(map.m_lines, ElementsAre(Line{{0, 0}, {DefaultGrid, 0}}));
    EXPECT_EQ(map.m_grid.X({0, 0}), 1);
    EXPECT_EQ(map.m_grid.X({DefaultGrid, 0}), 5);
}

TEST(FacesMapReader, AQuantizedFileWiderThanTheGridIsLaidOnOne) {
    const BorderMap map = ReadMap(Topology(R"("transform": {"scale": [1, 1], "translate": [0, 0]},
                                             "arcs": [[[0, 0], [4000000000000, 0]]], "objects": {})"),
                                  {});

    EXPECT_THAT(map.m_lines, ElementsAre(Line{{0, 0}, {DefaultGrid, 0}}));
}

TEST(FacesMapReader, AnOpenRingIsClosed) {
    const BorderMap map =
        ReadMap(R"({"type": "Polygon", "coordinates": [[[0, 0], [2, 0], [2, 1]]]})", {"", 2});

    EXPECT_THAT(map.m_lines, ElementsAre(Line{{0, 0}, {2, 0}, {2, 1}, {0, 0}}));
}

TEST(FacesMapReader, YGrowsUpwardsInLongitudeAndLatitudeOnly) {
    const auto lineTo = [](const char* pszEnd) {
        return ReadMap(std::string(R"({"type": "LineString", "coordinates": [[0, 0], )") + pszEnd + "]}", {});
    };

    EXPECT_TRUE(lineTo("[180, 90]").m_bYUp);
    EXPECT_FALSE(lineTo("[181, 10]").m_bYUp);
    EXPECT_FALSE(lineTo("[10, -91]").m_bYUp);
}

struct Kind {
    std::string m_strText;
    std::size_t m_nLines;
    std::size_t m_nAreas;
};

void PrintTo(const Kind& kind, std::ostream* pOut) { *pOut << kind.m_strText; }

class FacesMapReaderKinds : public testing::TestWithParam<Kind> {};

TEST_P(FacesMapReaderKinds, EveryKindOfGeoJsonGivesItsLinesAndAreas) {
    const BorderMap map = ReadMap(GetParam().m_strText, {});

    EXPECT_THAT(map.m_lines, SizeIs(GetParam().m_nLines));
    EXPECT_THAT(map.m_areas, SizeIs(GetParam().m_nAreas));
}

const std::string line = R"({"type": "LineString", "coordinates": [[0, 0, 55], [1, 1]]})";
const std::string polygon = R"({"type": "Polygon", "coordinates":
    [[[0, 0], [9, 0], [9, 9], [0, 0]], [[5, 2], [6, 2], [6, 3], [5, 2]]]})";

INSTANTIATE_TEST_SUITE_P(
    All, FacesMapReaderKinds,
    testing::Values(
        Kind{line, 1, 0},
        Kind{R"({"type": "MultiLineString", "coordinates": [[[0, 0], [1, 1]], [[2, 2], [3, 3]]]})", 2, 0},
        Kind{polygon, 2, 1},
        Kind{
            R"({"type": "MultiPolygon", "coordinates": [[[[0, 0], [1, 0], [0, 1]]], [], [[[5, 5], [6, 5], [5, 6]]]]})",
            2, 2},
        Kind{R"({"type": "Feature", "properties": null, "geometry": )" + polygon + "}", 2, 1},
        Kind{R"({"type": "GeometryCollection", "geometries": [)" + line + "," + polygon +
                 R"(, {"type": "Point", "coordinates": [1, 2]}]})",
             3, 1},
        Kind{R"({"type": "FeatureCollection", "features": [
                {"type": "Feature", "geometry": null}, {"type": "Feature", "geometry": )" +
                 line +
                 R"(}, {"type": "Feature", "geometry": {"type": "MultiPoint", "coordinates": [[1, 2]]}}]})",
             1, 0},
        Kind{"\xef\xbb\xbf" + line, 1, 0}));

struct BadMap {
    std::string m_strText;
    std::string m_strReason;
};

void PrintTo(const BadMap& map, std::ostream* pOut) { *pOut << map.m_strReason; }

class FacesBadMap : public testing::TestWithParam<BadMap> {};

TEST_P(FacesBadMap, TheReasonIsToldInOneLine) {
    try {
        ReadMap(GetParam().m_strText, {});
        FAIL() << "no error";
    } catch (const MapError& error) {
        EXPECT_THAT(error.what(), HasSubstr(GetParam().m_strReason));
        EXPECT_THAT(error.what(), Not(HasSubstr("\n")));
    }
}

std::string TopologyWithRing(const std::string& strRing) {
    return Topology(
        R"("arcs": [[[0, 0], [1, 0], [0, 1], [0, 0]]], "objects": {"a": {"type": "Polygon", "arcs": [)" +
        strRing + "]}}");
}

std::string Nested(int nDepth) {
    std::string strText = line;
    for (int i = 0; i < nDepth; ++i)
        strText = R"({"type": "GeometryCollection", "geometries": [)" + strText + "]}";
    return strText;
}

INSTANTIATE_TEST_SUITE_P(
    All, FacesBadMap,
    testing::Values(
        BadMap{"", "unexpected end of input"}, BadMap{line.substr(0, 40), "unexpected end of input"},
        BadMap{line + "\n}", "parse error"}, BadMap{"[1, 2]", "neither TopoJSON nor GeoJSON"},
        BadMap{"3", "neither TopoJSON nor GeoJSON"}, BadMap{R"({"type": 5})", "neither TopoJSON nor GeoJSON"},
        BadMap{R"({"type": "Sphere"})", "neither TopoJSON nor GeoJSON"},
        BadMap{R"({"type": "LineString", "coordinates": [[0, 0], [NaN, 1]]})", "invalid literal"},
        BadMap{R"({"type": "LineString", "coordinates": [[0, 0], [Infinity, 1]]})", "invalid literal"},
        BadMap{R"({"type": "LineString", "coordinates": [[0, 0], [1e999, 1]]})", "number overflow"},
        BadMap{R"({"type": "LineString", "coordinates": [[0, 0], [null, 1]]})", "not two numbers"},
        BadMap{R"({"type": "LineString", "coordinates": [[0, 0], ["1", 1]]})", "not two numbers"},
        BadMap{R"({"type": "LineString", "coordinates": [[0, 0], [1]]})", "not two numbers"},
        BadMap{R"({"type": "LineString", "coordinates": [[1e308, 0], [-1e308, 1]]})", "too far apart"},
        BadMap{R"({"type": "LineString", "coordinates": [[0, 0], [1e-310, 0]]})", "too close together"},
        BadMap{R"({"type": "LineString", "coordinates": {}})", "an array is missing"},
        BadMap{R"({"type": "MultiLineString", "coordinates": [3]})", "an array is missing"},
        BadMap{R"({"type": "LineString"})", "has no \"coordinates\""},
        BadMap{R"({"type": "Feature"})", "has no \"geometry\""},
        BadMap{R"({"type": "FeatureCollection"})", "has no \"features\""},
        BadMap{R"({"type": "FeatureCollection", "features": [{"type": "Point"}]})", "is no feature"},
        BadMap{R"({"type": "Feature", "geometry": {"type": "Circle"}})", "unknown geometry type \"Circle\""},
        BadMap{R"({"type": "Feature", "geometry": 3})", "no type"}, BadMap{Nested(200), "nested too deeply"},
        BadMap{R"({"type": "FeatureCollection", "features": []})", "map is empty"},
        BadMap{R"({"type": "Point", "coordinates": [1, 2]})", "map is empty"},
        BadMap{R"({"type": "LineString", "coordinates": [[1, 2]]})", "map is empty"},
        BadMap{Topology(R"("arcs": [], "objects": {})"), "map is empty"},
        BadMap{Topology(R"("objects": {})"), "has no \"arcs\""},
        BadMap{Topology(R"("arcs": [])"), "has no \"objects\""},
        BadMap{Topology(R"("arcs": [], "objects": [])"), "\"objects\" is no object"},
        BadMap{Topology(R"("arcs": [5], "objects": {})"), "arc 0: an array is missing"},
        BadMap{Topology(R"("arcs": [[[0, 0], [1, "x"]]], "objects": {})"),
               "arc 0: a position is not two numbers"},
        BadMap{TopologyWithRing("[1]"), "arc index 1 is out of range: there are 1 arcs"},
        BadMap{TopologyWithRing("[-2]"), "arc index -2 is out of range"},
        BadMap{TopologyWithRing("[18446744073709551615]"), "arc index 18446744073709551615 is out of range"},
        BadMap{TopologyWithRing("[0.5]"), "not an integer"},
        BadMap{TopologyWithRing("0"), "an array is missing"},
        BadMap{Topology(R"("transform": {"scale": [0, 1], "translate": [0, 0]}, "arcs": [], "objects": {})"),
               "scale is 0"},
        BadMap{Topology(R"("transform": {"scale": [1, 1]}, "arcs": [], "objects": {})"),
               "has no \"translate\""},
        BadMap{
            Topology(R"("transform": {"scale": [1, "a"], "translate": [0, 0]}, "arcs": [], "objects": {})"),
            "transform's scale"},
        BadMap{
            Topology(
                R"("transform": {"scale": [1e308, 1], "translate": [1e308, 0]}, "arcs": [[[0.5, 0], [9, 9]]],
                           "objects": {})"),
            "not finite"}));

TEST(FacesMapReader, AnObjectThatIsNotThereIsAnError) {
    EXPECT_THROW(ReadMap(twoSquares, {"circles", 0}), MapError);
    EXPECT_THROW(ReadMap(line, {"circles", 0}), MapError);
}

TEST(FacesMapReader, DeepNestingOfOtherThingsIsNoHarm) {
    constexpr std::size_t depth = 1'000'000;

    EXPECT_THROW(ReadMap(std::string(depth, '['), {}), MapError);
    EXPECT_THROW(ReadMap(std::string(depth, '[') + std::string(depth, ']'), {}), MapError);
}

TEST(FacesMapReader, AMapOfOnePointOverAndOverHasLinesOfNoLength) {
    const BorderMap map = ReadMap(R"({"type": "LineString", "coordinates": [[5, 5], [5, 5], [5, 5]]})", {});

    EXPECT_THAT(map.m_lines, ElementsAre(Line{{0, 0}, {0, 0}, {0, 0}}));
}

}  // namespace
}  // namespace faces
