#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "FacesTestKit.h"
#include "examples/faces/SvgWriter.h"

namespace faces {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(FacesText, ThousandsAreSetOff) {
    EXPECT_EQ(WithCommas(0), "0");
    EXPECT_EQ(WithCommas(999), "999");
    EXPECT_EQ(WithCommas(1000), "1,000");
    EXPECT_EQ(WithCommas(1234567), "1,234,567");
    EXPECT_EQ(WithCommas(-123), "-123");
    EXPECT_EQ(WithCommas(-123456), "-123,456");
}

/// The picture of segments on a grid as it is.
std::string Draw(const TracedMap& traced, BorderMap map, bool bYUp = false) {
    for (const Segment& segment : traced.m_segments) map.m_lines.push_back({segment.m_from, segment.m_to});
    map.m_bYUp = bYUp;
    RingMatch match;
    match.m_areaOfFace.assign(traced.m_faces.m_faces.size(), RingMatch::NoArea);
    for (std::size_t i = 0; i < map.m_areas.size(); ++i) match.m_areaOfFace[i] = static_cast<long>(i);
    return DrawSvg(DrawnMap(map, traced.m_faces, match, "A <title>"));
}

TEST(FacesSvg, HasATitleASubtitleAndALegend) {
    const std::string strSvg = Draw(TracedMap(Rings({Square(0, 1200)})), {});

    EXPECT_THAT(strSvg, HasSubstr("<title>A &lt;title&gt;</title>"));
    EXPECT_THAT(strSvg, HasSubstr(">A &lt;title&gt;</text>"));
    EXPECT_THAT(
        strSvg,
        HasSubstr(">1 faces, traced out of 4 border segments between 4 points in 1 components</text>"));
    EXPECT_THAT(strSvg, HasSubstr(">Outer border</text>"));
    EXPECT_THAT(strSvg, Not(HasSubstr("Dead end")));
    EXPECT_THAT(strSvg, Not(HasSubstr("Bridge")));
    EXPECT_THAT(strSvg, Not(HasSubstr("without a name")));
}

TEST(FacesSvg, AFaceIsAClosedPathInStepsOfATwentiethOfAPixel) {
    // 1200 cells wide and 600 high: a cell is a pixel.
    const std::string strSvg = Draw(TracedMap(Rings({{{0, 0}, {1200, 0}, {1200, 600}, {0, 600}}})), {});

    EXPECT_THAT(strSvg, HasSubstr("M800 14080l0-12000 24000 0 0 12000z"));
}

TEST(FacesSvg, UpwardsIsUpwardsWhereYGrowsThatWay) {
    const TracedMap traced(Rings({{{0, 0}, {1200, 0}, {0, 600}}}));

    EXPECT_THAT(Draw(traced, {}, false), HasSubstr("M800 14080l0-12000 24000 0z"));
    EXPECT_THAT(Draw(traced, {}, true), HasSubstr("M800 2080l0 12000 24000 0z"));
}

TEST(FacesSvg, AHoleIsAPathWithinItsFacesPath) {
    const std::string strSvg = Draw(TracedMap(Rings({Square(0, 100), Square(40, 60)})), {});

    EXPECT_THAT(strSvg, testing::ContainsRegex("d=\"M[^\"]*zM[^\"]*z\"/>"));
    EXPECT_THAT(strSvg, HasSubstr("fill-rule=\"evenodd\""));
}

TEST(FacesSvg, DeadEndsAndBridgesAreDrawnAndExplained) {
    std::vector<Segment> segments = Rings({Square(0, 100), Square(200, 300)});
    segments.insert(segments.end(), {{{100, 100}, {200, 200}}, {{300, 300}, {310, 310}}});

    const std::string strSvg = Draw(TracedMap(segments), {});

    EXPECT_THAT(strSvg, HasSubstr(">Dead end</text>"));
    EXPECT_THAT(strSvg, HasSubstr(">Bridge</text>"));
}

TEST(FacesSvg, AFaceShowsItsNameOrIsGrey) {
    BorderMap map;
    map.m_areas.push_back({"this & that", {}});

    const std::string strSvg = Draw(TracedMap(Rings({Square(0, 100), Square(200, 300)})), map);

    EXPECT_THAT(strSvg, HasSubstr("<title>this &amp; that</title></path>"));
    EXPECT_THAT(strSvg, HasSubstr(">Face without a name</text>"));
}

TEST(FacesSvg, AMapWithoutWidthOrHeightIsDrawnAsWell) {
    EXPECT_THAT(Draw(TracedMap({{{5, 0}, {5, 9}}}), {}), Not(testing::ContainsRegex("nan|inf|-2147483648")));
    EXPECT_THAT(Draw(TracedMap({{{0, 5}, {9, 5}}}), {}), Not(testing::ContainsRegex("nan|inf|-2147483648")));
}

TEST(FacesSvg, TheSameMapGivesTheSameBytes) {
    const std::string strOne = Draw(TracedMap(RandomLattice(3, 20, 70)), {});
    const std::string strOther = Draw(TracedMap(RandomLattice(3, 20, 70)), {});

    EXPECT_EQ(strOne, strOther);
}

}  // namespace
}  // namespace faces
