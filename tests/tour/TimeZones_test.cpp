#include "examples/tour/TimeZones.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "examples/tour/TsplibFile.h"

namespace tour {
namespace {

TEST(TourTimeZones, ReadsTheCoordinatesOfEachLine) {
    const Instance instance = ReadTimeZones(
        "# a comment\n"
        "AD\t+4230+00131\tEurope/Andorra\n"
        "\n"
        "AQ\t-690022+0393524\tAntarctica/Syowa\tSyowa\n"
        "AR\t-3436-05827\tAmerica/Argentina/Buenos_Aires\tmost areas\n");

    const std::vector<Point>& points = instance.Map().m_points;
    ASSERT_EQ(points.size(), 3U);
    EXPECT_DOUBLE_EQ(points[0].x, 1 + 31 / 60.0);
    EXPECT_DOUBLE_EQ(points[0].y, 42.5);
    EXPECT_DOUBLE_EQ(points[1].x, 39 + 35 / 60.0 + 24 / 3600.0);
    EXPECT_DOUBLE_EQ(points[1].y, -(69 + 0 / 60.0 + 22 / 3600.0));
    EXPECT_DOUBLE_EQ(points[2].x, -(58 + 27 / 60.0));
    EXPECT_DOUBLE_EQ(points[2].y, -(34 + 36 / 60.0));
    EXPECT_TRUE(instance.Map().m_bGlobe);
}

TEST(TourTimeZones, MeasuresInKilometres) {
    const Instance instance = ReadTimeZones("A\t+0000+00000\tA\nB\t+9000+00000\tB\n");

    EXPECT_EQ(instance.Distance(0, 1), 10008);
}

TEST(TourTimeZones, SaysWhereATableIsBad) {
    const auto what = [](const char* pszText) {
        try {
            ReadTimeZones(pszText);
        } catch (const FormatError& error) {
            return std::string(error.what());
        }
        return std::string("fine");
    };

    EXPECT_EQ(what(""), "there is no time zone");
    EXPECT_EQ(what("# only a comment\n"), "there is no time zone");
    for (const char* pszBad : {"AD", "AD\t", "AD\tx", "AD\t+4230", "AD\t4230+00131", "AD\t+42300+00131",
                               "AD\t+4230+0131", "AD\t+4260+00131", "AD\t+9100+00131", "AD\t+4230+18100",
                               "AD\t+4x30+00131", "AD\t++", "AD\t+4230+001310"}) {
        EXPECT_EQ(what(("#\n" + std::string(pszBad) + "\tEurope/Andorra\n").c_str()),
                  "line 2: the second column is no pair of coordinates")
            << pszBad;
    }
}

}  // namespace
}  // namespace tour
