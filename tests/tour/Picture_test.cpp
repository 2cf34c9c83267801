#include "examples/tour/Picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TourKit.h"

namespace tour {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::size_t Count(const std::string& strText, const std::string& strWord) {
    std::size_t nCount = 0;
    for (auto n = strText.find(strWord); n != std::string::npos; n = strText.find(strWord, n + 1)) {
        ++nCount;
    }
    return nCount;
}

/// The data of the path with this colour and width.
std::string PathWith(const std::string& strSvg, const std::string& strStroke) {
    const auto nStroke = strSvg.find("\" fill=\"none\" stroke=\"" + strStroke);
    const auto nData = strSvg.rfind("d=\"", nStroke);
    return nStroke == std::string::npos ? "" : strSvg.substr(nData + 3, nStroke - nData - 3);
}

const std::string Roads = "#1f6feb\" stroke-width=\"1.40\"";
const std::string Best = "#1f6feb\" stroke-width=\"2.00\"";
const std::string Mean = "#d97706";

TEST(TourPicture, DrawsEveryRoadAndEveryCity) {
    const Instance grid = Grid(3, 2);

    const std::string strSvg = DrawSvg({grid, {0, 1, 2, 5, 4, 3}, {}, "Grid", "six cities"});

    EXPECT_THAT(strSvg, AllOf(StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\""), EndsWith("</svg>\n")));
    EXPECT_EQ(Count(PathWith(strSvg, Roads), "M"), 6U);
    EXPECT_EQ(Count(PathWith(strSvg, Roads), "L"), 6U);
    EXPECT_EQ(Count(strSvg, "<circle"), 6U);
    EXPECT_THAT(strSvg, AllOf(HasSubstr(">Grid</text>"), HasSubstr(">six cities</text>"),
                              HasSubstr("<title>Grid</title>")));
}

TEST(TourPicture, DrawsYUpwards) {
    const Instance two("two", Metric::Euclidean, {{0, 0}, {100, 100}});

    const std::string strRoads = PathWith(DrawSvg({two, {0, 1}, {}, "", ""}), Roads);

    EXPECT_EQ(strRoads, "M100.00 864.00L860.00 104.00M860.00 104.00L100.00 864.00");
}

TEST(TourPicture, ShowsTheHistoryBeside) {
    const Instance grid = Grid(2, 2);
    const std::vector<Progress> history = {{1, 500, 700.0}, {2, 450, 600.0}, {3, 400, 500.0}};

    const std::string strSvg = DrawSvg({grid, {0, 1, 3, 2}, history, "", ""});

    EXPECT_EQ(Count(PathWith(strSvg, Best), "L"), 2U);
    EXPECT_EQ(Count(PathWith(strSvg, Mean), "L"), 2U);
    EXPECT_THAT(strSvg, AllOf(HasSubstr(">generation</text>"), HasSubstr(">best</text>"),
                              HasSubstr(">population mean</text>")));
}

TEST(TourPicture, DrawsAHistoryOfOneGeneration) {
    const Instance grid = Grid(2, 2);

    const std::string strSvg = DrawSvg({grid, {0, 1, 3, 2}, {{1, 400, 400.0}}, "", ""});

    EXPECT_THAT(strSvg, AllOf(Not(HasSubstr("nan")), Not(HasSubstr("inf"))));
    EXPECT_EQ(Count(PathWith(strSvg, Best), "M"), 1U);
}

TEST(TourPicture, FollowsGreatCirclesAcrossTheDateLine) {
    const Instance pacific("pacific", Metric::GreatCircle, {{170, 50}, {-170, 50}, {0, -10}});

    const std::string strRoads = PathWith(DrawSvg({pacific, {0, 1, 2}, {}, "", ""}), Roads);

    // Three roads, of which that over the date line begins twice; its ends lie at the map's edges, 40 and
    // 920.
    EXPECT_EQ(Count(strRoads, "M"), 4U);
    EXPECT_GT(Count(strRoads, "L"), 100U);
    EXPECT_THAT(strRoads, AllOf(HasSubstr("L920.00 "), HasSubstr("M40.00 ")));
}

TEST(TourPicture, DrawsAntipodesAndTwins) {
    const Instance poles("poles", Metric::GreatCircle, {{0, 90}, {0, -90}, {0, 90}, {180, 0}, {-180, 0}});

    const std::string strSvg = DrawSvg({poles, {0, 1, 2, 3, 4}, {}, "", ""});

    EXPECT_THAT(strSvg, AllOf(Not(HasSubstr("nan")), Not(HasSubstr("inf"))));
}

TEST(TourPicture, DrawsCitiesOnOnePoint) {
    const Instance heap("heap", Metric::Euclidean, {{5, 5}, {5, 5}});

    EXPECT_THAT(DrawSvg({heap, {0, 1}, {}, "", ""}), AllOf(Not(HasSubstr("nan")), Not(HasSubstr("inf"))));
}

TEST(TourPicture, SaysWhereThereIsNothingToDraw) {
    const Instance matrix("matrix", 2, {0, 5, 5, 0}, {});

    const std::string strSvg = DrawSvg({matrix, {0, 1}, {{1, 10, 10.0}}, "", ""});

    EXPECT_THAT(strSvg,
                AllOf(HasSubstr("no places to draw"), Not(HasSubstr("<circle")), Not(HasSubstr("inf"))));
}

TEST(TourPicture, WritesNamesAsText) {
    const Instance grid = Grid(2, 2);

    EXPECT_THAT(DrawSvg({grid, {0, 1, 3, 2}, {}, "<a> & \xff Z\xc3\xbcrich", ""}),
                HasSubstr("<title>&lt;a&gt; &amp; \xef\xbf\xbd Z\xc3\xbcrich</title>"));
}

}  // namespace
}  // namespace tour
