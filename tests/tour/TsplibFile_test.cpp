#include "examples/tour/TsplibFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "AllocationLog.h"
#include "TourKit.h"

namespace tour {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Lt;
using testing::StartsWith;

std::string WhatIsWrong(const std::string& strText) {
    try {
        ReadTsplib(strText, "");
    } catch (const FormatError& error) {
        return error.what();
    }
    return "nothing";
}

TEST(TsplibFile, IsReadWithItsNameAndCities) {
    const Instance instance = ReadTsplib(
        "NAME : square\nCOMMENT : four: corners\nTYPE : TSP\nDIMENSION : 4\nEDGE_WEIGHT_TYPE : EUC_2D\n"
        "NODE_COORD_SECTION\n1 0 0\n2 1e1 0\n3 +10.0 10\n4 0 10\nEOF\n",
        "file");

    EXPECT_EQ(instance.Name(), "square");
    EXPECT_EQ(instance.Cities(), 4);
    EXPECT_EQ(instance.Length({0, 1, 2, 3}), 40);
}

TEST(TsplibFile, MayBeLooselyWritten) {
    const Instance instance = ReadTsplib(
        "TYPE:TSP (M.~Hofmeister)\r\nDIMENSION:3\r\nEDGE_WEIGHT_TYPE:CEIL_2D\r\n\r\nNODE_COORD_SECTION:\r\n3 "
        "0\t9\r\n"
        "1 0 0 2\n 5 0",
        "file");

    EXPECT_EQ(instance.Name(), "file");
    EXPECT_EQ(instance.Distance(0, 1), 5);
    EXPECT_EQ(instance.Distance(0, 2), 9);
}

TEST(TsplibFile, EndsAtItsEofWhateverFollows) {
    EXPECT_EQ(WhatIsWrong("DIMENSION: 1\nEDGE_WEIGHT_TYPE: ATT\nNODE_COORD_SECTION\n1 0 0\nEOF\nrubbish\n"),
              "nothing");
}

// Each row: the format and the entries of one and the same matrix.
class TsplibMatrix : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(TsplibMatrix, GivesTheDistances) {
    const auto [pszFormat, pszEntries] = GetParam();
    const Instance instance =
        ReadTsplib("DIMENSION: 4\nEDGE_WEIGHT_TYPE: EXPLICIT\nEDGE_WEIGHT_FORMAT: " + std::string(pszFormat) +
                       "\nEDGE_WEIGHT_SECTION\n" + pszEntries + "\nEOF\n",
                   "");

    std::vector<long> distances;
    for (int a = 0; a < 4; ++a) {
        for (int b = 0; b < 4; ++b) {
            distances.push_back(instance.Distance(a, b));
        }
    }
    EXPECT_THAT(distances, ElementsAre(0, 12, 13, 14, 12, 0, 23, 24, 13, 23, 0, 34, 14, 24, 34, 0));
}

INSTANTIATE_TEST_SUITE_P(
    Formats, TsplibMatrix,
    testing::Values(std::pair("FULL_MATRIX", "0 12 13 14 12 0 23 24 13 23 0 34 14 24 34 0"),
                    std::pair("UPPER_ROW", "12 13 14\n23 24\n34"),
                    std::pair("LOWER_ROW", "12\n13 23\n14 24 34"),
                    std::pair("UPPER_DIAG_ROW", "0 12 13 14 0 23 24 0 34 0"),
                    std::pair("LOWER_DIAG_ROW", "0 12 0 13 23 0 14 24 34 0"),
                    std::pair("UPPER_COL", "12 13 23 14 24 34"), std::pair("LOWER_COL", "12 13 14 23 24 34"),
                    std::pair("UPPER_DIAG_COL", "0 12 0 13 23 0 14 24 34 0"),
                    std::pair("LOWER_DIAG_COL", "0 12 13 14 0 23 24 0 34 0"),
                    // A diagonal has no say.
                    std::pair("LOWER_DIAG_ROW", "9999 12 9999 13 23 9999 14 24 34 9999")));

TEST(TsplibFile, ShowsTheCitiesOfAMatrixWhereItSays) {
    const std::string strHead =
        "DIMENSION: 2\nEDGE_WEIGHT_TYPE: EXPLICIT\nEDGE_WEIGHT_FORMAT: UPPER_ROW\nEDGE_WEIGHT_SECTION\n5\n";

    EXPECT_TRUE(ReadTsplib(strHead, "").Map().m_points.empty());
    EXPECT_EQ(ReadTsplib(strHead + "DISPLAY_DATA_SECTION\n1 7 8\n2 9 10\n", "").Map().m_points[1].x, 9);
}

// Each row: a file and what is said of it.
class BadTsplibFile : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(BadTsplibFile, IsRefusedInOneLine) {
    const auto [pszText, pszWhat] = GetParam();

    EXPECT_EQ(WhatIsWrong(pszText), pszWhat);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadTsplibFile,
    testing::Values(
        std::pair("", "there is no DIMENSION"), std::pair("EOF", "there is no DIMENSION"),
        std::pair("DIMENSION: 3", "there is no EDGE_WEIGHT_TYPE"),
        std::pair("DIMENSION: 3\nEDGE_WEIGHT_TYPE: EUC_2D", "there is no NODE_COORD_SECTION"),
        std::pair("DIMENSION: 3\nEDGE_WEIGHT_TYPE: EXPLICIT", "there is no EDGE_WEIGHT_SECTION"),
        std::pair("TYPE: ATSP", "line 1: TYPE 'ATSP' is not TSP"),
        std::pair("TYPE: TSPX", "line 1: TYPE 'TSPX' is not TSP"),
        std::pair("DIMENSION: 0", "line 1: DIMENSION '0' is not from 1 to 20000"),
        std::pair("DIMENSION: -5", "line 1: DIMENSION '-5' is not from 1 to 20000"),
        std::pair("DIMENSION: 20001", "line 1: DIMENSION '20001' is not from 1 to 20000"),
        std::pair("DIMENSION: 99999999999999999999",
                  "line 1: DIMENSION '99999999999999999999' is not from 1 to 20000"),
        std::pair("DIMENSION: 3 4", "line 1: DIMENSION '3 4' is not from 1 to 20000"),
        std::pair("DIMENSION:", "line 1: DIMENSION '' is not from 1 to 20000"),
        std::pair("DIMENSION: 3\nDIMENSION: 4", "line 2: a second DIMENSION"),
        std::pair("EDGE_WEIGHT_TYPE: MAN_2D",
                  "line 1: EDGE_WEIGHT_TYPE 'MAN_2D' is not EUC_2D, CEIL_2D, GEO, ATT or EXPLICIT"),
        std::pair("NONSENSE: 1", "line 1: 'NONSENSE' is not known"),
        std::pair("\n\nnonsense", "line 3: 'nonsense' is not known"),
        std::pair("FIXED_EDGES_SECTION", "line 1: 'FIXED_EDGES_SECTION' is not known"),
        std::pair("NODE_COORD_SECTION\n1 0 0", "line 1: NODE_COORD_SECTION stands before DIMENSION"),
        std::pair("DIMENSION: 2\nNODE_COORD_SECTION\n1 0 0\n1 5 5", "line 4: city 1 stands there twice"),
        std::pair("DIMENSION: 2\nNODE_COORD_SECTION\n1 0 0\n3 5 5",
                  "line 4: the number of a city from 1 to 2 is wanted"),
        std::pair("DIMENSION: 2\nNODE_COORD_SECTION\n1.5 0 0",
                  "line 3: the number of a city from 1 to 2 is wanted"),
        std::pair("DIMENSION: 2\nNODE_COORD_SECTION\n1 0 0\n2 x 5", "line 4: 'x' is not a coordinate"),
        std::pair("DIMENSION: 2\nNODE_COORD_SECTION\n1 0 0\n2 nan 5", "line 4: 'nan' is not a coordinate"),
        std::pair("DIMENSION: 2\nNODE_COORD_SECTION\n1 0 0\n2 1e999 5",
                  "line 4: '1e999' is not a coordinate"),
        std::pair("DIMENSION: 2\nNODE_COORD_SECTION\n1 0 0\n2 5",
                  "line 4: the file ends where a coordinate should stand"),
        std::pair("DIMENSION: 2\nEDGE_WEIGHT_TYPE: EUC_2D\nNODE_COORD_SECTION\n1 0 0\n2 1e300 5\n",
                  "the cities are too far apart"),
        std::pair("DIMENSION: 2\nEDGE_WEIGHT_TYPE: GEO\nNODE_COORD_SECTION\n1 0 1e308\n2 0 0\n",
                  "a city is not on the globe"),
        std::pair("DIMENSION: 2\nEDGE_WEIGHT_SECTION\n5",
                  "line 2: EDGE_WEIGHT_FORMAT '' is no matrix that this program reads"),
        std::pair("DIMENSION: 2\nEDGE_WEIGHT_FORMAT: UPPER_ROW\nEDGE_WEIGHT_SECTION\n-5",
                  "line 4: a distance from 0 to 2147483647 is wanted"),
        std::pair("DIMENSION: 2\nEDGE_WEIGHT_FORMAT: UPPER_ROW\nEDGE_WEIGHT_SECTION\n2.5",
                  "line 4: a distance from 0 to 2147483647 is wanted"),
        std::pair("DIMENSION: 2\nEDGE_WEIGHT_FORMAT: UPPER_ROW\nEDGE_WEIGHT_SECTION\n",
                  "line 3: the file ends where a distance should stand"),
        std::pair("DIMENSION: 2\nEDGE_WEIGHT_FORMAT: FULL_MATRIX\nEDGE_WEIGHT_SECTION\n0 5\n6 0",
                  "line 5: the distance from city 2 to 1 is another one than back")));

TEST(TsplibFile, IsQuotedShortAndWithoutControlCharacters) {
    EXPECT_EQ(WhatIsWrong(std::string(1000, 'x')), "line 1: '" + std::string(40, 'x') + "...' is not known");
    EXPECT_EQ(WhatIsWrong("a\033[2Jb"), "line 1: 'a?[2Jb' is not known");
}

TEST(TsplibFile, TakesNoMemoryForDistancesThatItClaimsAndDoesNotHave) {
    const AllocationLog log;

    WhatIsWrong("DIMENSION: 20000\nEDGE_WEIGHT_FORMAT: FULL_MATRIX\nEDGE_WEIGHT_SECTION\n0 1");

    EXPECT_THAT(log.Singles(), Each(Lt(1000000U)));
}

RC_GTEST_PROP(TsplibFile, OfAnyBytesIsReadOrRefused, (const std::string& strText)) {
    const std::string strWhat =
        WhatIsWrong("DIMENSION: 2\nEDGE_WEIGHT_TYPE: GEO\nNODE_COORD_SECTION\n" + strText);

    RC_ASSERT(strWhat.find('\n') == std::string::npos);
}

TEST(TsplibTourFile, ListsTheCitiesFromTheFirst) {
    const Instance square("square", Metric::Euclidean, {{0, 0}, {10, 0}, {10, 10}, {0, 10}});

    EXPECT_EQ(TsplibTour(square, {2, 3, 0, 1}),
              "NAME : square.tour\nCOMMENT : Length 40\nTYPE : TOUR\nDIMENSION : "
              "4\nTOUR_SECTION\n1\n2\n3\n4\n-1\nEOF\n");
}

TEST(TsplibTourFile, IsTheSameForOneTourWhereverItBeginsAndWhicheverWayItGoes) {
    const Instance circle = OnACircle({0, 60, 120, 180, 240, 300});
    const std::string strFile = TsplibTour(circle, {0, 1, 2, 3, 4, 5});

    EXPECT_EQ(TsplibTour(circle, {3, 4, 5, 0, 1, 2}), strFile);
    EXPECT_EQ(TsplibTour(circle, {2, 1, 0, 5, 4, 3}), strFile);
    EXPECT_THAT(TsplibTour(circle, {0, 2, 1, 3, 4, 5}), HasSubstr("\n1\n3\n2\n4\n5\n6\n-1\n"));
}

TEST(TsplibTourFile, OfOneCity) {
    const Instance one("one", Metric::Euclidean, {{0, 0}});

    EXPECT_THAT(TsplibTour(one, {0}), HasSubstr("DIMENSION : 1\nTOUR_SECTION\n1\n-1\n"));
    EXPECT_THAT(TsplibTour(one, {0}), StartsWith("NAME : one.tour\nCOMMENT : Length 0\n"));
}

}  // namespace
}  // namespace tour
