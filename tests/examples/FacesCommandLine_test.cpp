#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>

#include "tests/program/ProgramTest.h"

namespace faces {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;
using program::Outcome;

class FacesCommandLine : public program::ProgramTest {
protected:
    Outcome Run(const std::string& strArguments, const std::string& strBefore = "") const {
        return RunLine(strBefore + "'" FACES_PROGRAM "' " + strArguments);
    }
    std::ptrdiff_t CountFiles() const {
        return std::distance(fs::directory_iterator(m_folder / "work"), fs::directory_iterator());
    }
};

const std::string square =
    R"({"type": "Feature", "properties": {"name": "Land"}, "geometry": {"type": "Polygon",
    "coordinates": [[[0, 0], [10, 0], [10, 10], [0, 10], [0, 0]]]}})";
const std::string cross =
    R"({"type": "MultiLineString", "coordinates": [[[0, 0], [10, 10]], [[0, 10], [10, 0]]]})";

/// One line on standard error that begins with the program's and the file's name.
auto IsOneLineAbout(const std::string& strFile, const std::string& strReason) {
    return AllOf(StartsWith("faces: " + strFile + ": "), HasSubstr(strReason), EndsWith("\n"),
                 Not(HasSubstr("\n\n")), Not(ContainsRegex("\n.")));
}

MATCHER_P2(Row, strLabel, strValue, "") {
    const auto n = arg.find("\n  " + std::string(strLabel) + " ");
    if (n == std::string::npos) return false;
    const std::string strLine = arg.substr(n + 1, arg.find('\n', n + 1) - n - 1);
    *result_listener << "where the row is \"" << strLine << '"';
    const auto nValue = strLine.find_first_not_of(' ', std::string(strLabel).size() + 2);
    return strLine.compare(nValue, std::string(strValue).size(), strValue) == 0 &&
           (strLine.size() == nValue + std::string(strValue).size() ||
            strLine[nValue + std::string(strValue).size()] == ' ');
}

TEST_F(FacesCommandLine, HelpAndVersionAreNoErrors) {
    const Outcome help = Run("--help");
    EXPECT_EQ(help.m_nExit, 0);
    EXPECT_THAT(help.m_strOut, AllOf(HasSubstr("--strict"), HasSubstr("--verbose"), HasSubstr("--quiet")));

    const Outcome version = Run("--version");
    EXPECT_EQ(version.m_nExit, 0);
    EXPECT_EQ(version.m_strOut, "faces " VEXABASE_VERSION "\n");
}

TEST_F(FacesCommandLine, AWrongCommandLineIsToldInOneLineWithStatusTwo) {
    Write("map.json", square);
    for (const char* pszArguments :
         {"", "--no-such-option map.json", "map.json another.json", "map.json -o", "map.json --grid 0",
          "map.json --grid x", "map.json --grid 999999999", "map.json --y sideways",
          "map.json --quiet --verbose", "map.json --quiet --list", "map.json --verbose --list",
          "map.json -o map.json", "map.json -o ./map.json", "map.json --save map.json",
          "map.json --log map.json", "map.json -o a --save ./a", "map.json --save a --log a",
          "map.json --save -", "map.json --log -"}) {
        const Outcome outcome = Run(pszArguments);

        EXPECT_EQ(outcome.m_nExit, 2) << pszArguments;
        EXPECT_THAT(outcome.m_strErr, AllOf(StartsWith("faces: "), EndsWith("\n"), Not(ContainsRegex("\n."))))
            << pszArguments;
        EXPECT_THAT(outcome.m_strOut, IsEmpty()) << pszArguments;
    }
    EXPECT_EQ(ReadWork("map.json"), square);
}

TEST_F(FacesCommandLine, BadInputIsToldInOneLineWithStatusOneAndLeavesTheOutputAsItWas) {
    const struct {
        const char* m_pszText;
        const char* m_pszReason;
    } cases[] = {
        {"", "unexpected end of input"},
        {R"({"type": "LineString", "coordinates": [[0, 0], [1)", "unexpected end of input"},
        {"<svg/>", "syntax error"},
        {R"({"name": "something else"})", "neither TopoJSON nor GeoJSON"},
        {R"({"type": "LineString", "coordinates": [[0, 0], [NaN, 1]]})", "invalid literal"},
        {R"({"type": "LineString", "coordinates": [[0, 0], [1e999, 1]]})", "number overflow"},
        {R"({"type": "Topology", "arcs": [[[0, 0], [1, 1]]], "objects": {"a": {"type": "LineString", "arcs": [1]}}})",
         "arc index 1 is out of range"},
        {R"({"type": "FeatureCollection", "features": []})", "the map is empty"},
        {R"({"type": "LineString", "coordinates": [[5, 5], [5, 5]]})",
         "the map is empty: all its lines collapse"},
    };
    for (const auto& [pszText, pszReason] : cases) {
        Write("map.json", pszText);
        Write("old.svg", "old");

        const Outcome outcome = Run("map.json -o old.svg");
        EXPECT_EQ(outcome.m_nExit, 1) << pszText;
        EXPECT_THAT(outcome.m_strErr, IsOneLineAbout("map.json", pszReason)) << pszText;
        EXPECT_THAT(outcome.m_strOut, IsEmpty()) << pszText;
        EXPECT_EQ(ReadWork("old.svg"), "old") << pszText;

        EXPECT_EQ(Run("map.json -o new.svg").m_nExit, 1) << pszText;
        EXPECT_FALSE(Exists("new.svg")) << pszText;
        EXPECT_EQ(CountFiles(), 2) << pszText;
    }
}

TEST_F(FacesCommandLine, AMissingFileOrAFolderIsNamedWithTheReason) {
    fs::create_directory(m_folder / "work" / "folder");

    const Outcome missing = Run("none.json");
    EXPECT_EQ(missing.m_nExit, 1);
    EXPECT_THAT(missing.m_strErr, IsOneLineAbout("none.json", "No such file or directory"));

    const Outcome folder = Run("folder");
    EXPECT_EQ(folder.m_nExit, 1);
    EXPECT_THAT(folder.m_strErr, IsOneLineAbout("folder", "Is a directory"));
}

TEST_F(FacesCommandLine, AnOutputThatCannotBeWrittenIsNamedWithTheReason) {
    Write("map.json", square);
    fs::create_directory(m_folder / "work" / "folder");
    const struct {
        const char* m_pszOutput;
        const char* m_pszReason;
    } cases[] = {{"none/a.svg", "No such file or directory"},
                 {"folder", "Is a directory"},
                 {"map.json/a.svg", "Not a directory"},
                 {"/dev/full", "No space left on device"}};
    for (const auto& [pszOutput, pszReason] : cases) {
        const Outcome outcome = Run(std::string("map.json -o ") + pszOutput);

        EXPECT_EQ(outcome.m_nExit, 1) << pszOutput;
        EXPECT_THAT(outcome.m_strErr, IsOneLineAbout(pszOutput, pszReason));
        EXPECT_THAT(outcome.m_strOut, IsEmpty());
        EXPECT_EQ(CountFiles(), 2) << pszOutput;
    }
}

TEST_F(FacesCommandLine, ADiskThatFillsUpLeavesNoFileAndAnOldOneAsItWas) {
    Write("old.svg", "old");
    const std::string strSmallFilesOnly = "trap '' XFSZ; ulimit -f 16; ";

    for (const char* pszOutput : {"new.svg", "old.svg"}) {
        const Outcome outcome = Run("'" FACES_COUNTY_MAP "' -o " + std::string(pszOutput), strSmallFilesOnly);

        EXPECT_EQ(outcome.m_nExit, 1);
        EXPECT_THAT(outcome.m_strErr, IsOneLineAbout(pszOutput, "File too large"));
    }
    EXPECT_EQ(ReadWork("old.svg"), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FacesCommandLine, AReportThatCannotBeWrittenIsAnError) {
    Write("map.json", square);

    const Outcome outcome = Run("map.json >/dev/full");

    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_strErr, HasSubstr("standard output"));
}

TEST_F(FacesCommandLine, TheReportTellsEveryCount) {
    Write("map.json", R"({"type": "GeometryCollection", "geometries": [
        {"type": "Polygon", "coordinates": [[[0, 0], [100, 0], [100, 100], [0, 100], [0, 0]]]},
        {"type": "Polygon", "coordinates": [[[40, 40], [60, 40], [60, 60], [40, 60], [40, 40]]]},
        {"type": "Polygon", "coordinates": [[[200, 0], [300, 0], [300, 100], [200, 100], [200, 0]]]},
        {"type": "MultiLineString", "coordinates": [[[100, 100], [200, 0]], [[300, 100], [310, 100], [310, 110]],
                                                    [[0, 0], [100, 0], [100, 0]]]}]})");

    const Outcome outcome = Run("map.json --grid 310");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strErr, IsEmpty());
    EXPECT_THAT(outcome.m_strOut, StartsWith("map.json\n"));
    EXPECT_THAT(outcome.m_strOut, Row("segments", "15   dropped: 1 duplicate, 1 of no length"));
    EXPECT_THAT(outcome.m_strOut, Row("changed by noding", "0"));
    EXPECT_THAT(outcome.m_strOut, Row("nodes", "14"));
    EXPECT_THAT(outcome.m_strOut, Row("arcs", "15"));
    EXPECT_THAT(outcome.m_strOut, Row("components", "2"));
    EXPECT_THAT(outcome.m_strOut, Row("dead ends", "2"));
    EXPECT_THAT(outcome.m_strOut, Row("bridges", "1"));
    EXPECT_THAT(outcome.m_strOut, Row("bounded faces", "3"));
    EXPECT_THAT(outcome.m_strOut, Row("holes", "1"));
    EXPECT_THAT(outcome.m_strOut, Row("total area", "20000"));
    EXPECT_THAT(outcome.m_strOut,
                Row("Euler's formula", "holds   12 nodes - 13 arcs + 5 walks = 2 x 2 components"));
    EXPECT_THAT(outcome.m_strOut, Row("rings found again", "3   of 3"));
    for (const char* pszStage : {"read", "node", "build", "prune", "trace", "locate holes", "match rings"}) {
        EXPECT_THAT(outcome.m_strOut,
                    ContainsRegex("\n  " + std::string(pszStage) + " +[0-9]+\\.[0-9] ms\n"));
    }
}

TEST_F(FacesCommandLine, TheCountyMapIsTracedAsAWhole) {
    const Outcome outcome = Run("'" FACES_COUNTY_MAP "' -o counties.svg --verbose");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strErr, IsEmpty()) << "no progress bar without a terminal";
    EXPECT_THAT(outcome.m_strOut, Row("segments", "28,375   dropped: 13 duplicate, 8 of no length"));
    EXPECT_THAT(outcome.m_strOut, Row("changed by noding", "3   places: 2, crossing: 1, near miss: 1"));
    EXPECT_THAT(
        outcome.m_strOut,
        HasSubstr("crossing at (730.1698307, 347.6237311), on the border of Cocke, Greene, Hamblen\n"));
    EXPECT_THAT(outcome.m_strOut, Row("nodes", "25,227"));
    EXPECT_THAT(outcome.m_strOut, Row("arcs", "28,377"));
    EXPECT_THAT(outcome.m_strOut, Row("components", "156"));
    EXPECT_THAT(outcome.m_strOut, Row("dead ends", "0"));
    EXPECT_THAT(outcome.m_strOut, Row("bridges", "0"));
    EXPECT_THAT(outcome.m_strOut, Row("bounded faces", "3,306"));
    EXPECT_THAT(outcome.m_strOut, Row("holes", "13"));
    EXPECT_THAT(outcome.m_strOut, Row("Euler's formula", "holds"));
    EXPECT_THAT(outcome.m_strOut, Row("rings found again", "3,313   of 3,347"));
    EXPECT_THAT(outcome.m_strOut, HasSubstr("not found: Hitchcock: its ring touches itself on the grid\n"));
    EXPECT_THAT(outcome.m_strOut, HasSubstr("not found: Greene: its ring is parted by other borders\n"));
    EXPECT_THAT(outcome.m_strOut, HasSubstr("not found: Radford, a hole: it collapses on the grid\n"));
    const std::string strSvg = ReadWork("counties.svg");
    EXPECT_THAT(strSvg, AllOf(StartsWith("<svg "), EndsWith("</svg>\n"), HasSubstr("<title>Mohave</title>")));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FacesCommandLine, TheSameMapGivesTheSamePicture) {
    EXPECT_EQ(Run("'" FACES_COUNTY_MAP "' -q -o one.svg").m_nExit, 0);
    EXPECT_EQ(Run("'" FACES_COUNTY_MAP "' -q -o other.svg").m_nExit, 0);

    EXPECT_EQ(ReadWork("one.svg"), ReadWork("other.svg"));
}

TEST_F(FacesCommandLine, StrictRefusesACrossingAndNamesThePlace) {
    Write("map.json", cross);

    const Outcome outcome = Run("map.json --strict -o a.svg");

    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_strErr, IsOneLineAbout("map.json", "crossing at (5, 5)"));
    EXPECT_FALSE(Exists("a.svg"));
}

TEST_F(FacesCommandLine, StrictNamesTheAreasOfTheCountyMapsCrossing) {
    const Outcome outcome = Run("'" FACES_COUNTY_MAP "' --strict");

    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_strErr, HasSubstr("on the border of Cocke, Greene, Hamblen"));
}

TEST_F(FacesCommandLine, StrictRefusesAnOverlap) {
    Write("map.json", R"({"type": "MultiLineString", "coordinates": [[[0, 0], [6, 0]], [[4, 0], [10, 0]]]})");

    const Outcome outcome = Run("map.json --strict");

    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_strErr, IsOneLineAbout("map.json", "overlap at (4, 0)"));
}

TEST_F(FacesCommandLine, StrictAcceptsLinesThatEndOnOthers) {
    Write("map.json", R"({"type": "MultiLineString", "coordinates": [[[0, 0], [10, 0]], [[5, 0], [5, 9]]]})");

    const Outcome outcome = Run("map.json --strict");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut, Row("changed by noding", "1   places: 1, touch: 1"));
}

TEST_F(FacesCommandLine, VerboseListsEveryPlaceThatNodingChanged) {
    Write("map.json", cross);

    EXPECT_THAT(Run("map.json").m_strOut, Not(HasSubstr("crossing at")));
    EXPECT_THAT(Run("map.json --verbose").m_strOut, HasSubstr("\n    crossing at (5, 5)\n"));
}

TEST_F(FacesCommandLine, QuietPrintsErrorsOnly) {
    Write("map.json", square);

    const Outcome outcome = Run("map.json --quiet -o a.svg");
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut + outcome.m_strErr, IsEmpty());
    EXPECT_TRUE(Exists("a.svg"));

    EXPECT_THAT(Run("none.json --quiet").m_strErr, HasSubstr("none.json"));
}

TEST_F(FacesCommandLine, StandardInputAndOutputAreMinus) {
    Write("map.json", square);

    const Outcome outcome = Run("- -o - <map.json");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut, AllOf(StartsWith("<svg "), EndsWith("</svg>\n")));
    EXPECT_THAT(outcome.m_strErr, AllOf(StartsWith("standard input\n"), Row("bounded faces", "1")));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FacesCommandLine, BadStandardInputIsNamedSo) {
    const Outcome outcome = Run("- </dev/null");

    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_strErr, IsOneLineAbout("standard input", "unexpected end of input"));
}

TEST_F(FacesCommandLine, AnObjectIsTracedByItself) {
    const Outcome outcome = Run("'" FACES_COUNTY_MAP "' --object states");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut, Row("rings found again", "197   of 198"));
    EXPECT_THAT(outcome.m_strOut, HasSubstr("not found: Delaware: its ring collapses on the grid\n"));

    const Outcome missing = Run("'" FACES_COUNTY_MAP "' --object parishes");
    EXPECT_EQ(missing.m_nExit, 1);
    EXPECT_THAT(missing.m_strErr, HasSubstr("there is no object \"parishes\""));
}

TEST_F(FacesCommandLine, AMapOfDeadEndsAloneHasNoFaces) {
    Write("map.json", R"({"type": "LineString", "coordinates": [[0, 0], [5, 5], [9, 0]]})");

    const Outcome outcome = Run("map.json -o a.svg");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut, Row("dead ends", "2"));
    EXPECT_THAT(outcome.m_strOut, Row("bounded faces", "0"));
    EXPECT_THAT(outcome.m_strOut, Row("Euler's formula", "holds"));
    EXPECT_THAT(ReadWork("a.svg"), HasSubstr("Dead end"));
}

TEST_F(FacesCommandLine, AProgressBarIsShownOnATerminalAndWipedOut) {
    if (std::system("script -q -e -c true /dev/null </dev/null >/dev/null 2>&1") != 0) {
        GTEST_SKIP() << "this system gives no pseudo-terminal (a root without /dev/pts)";
    }
    Write("map.json", square);
    const auto onATerminal = [this](const std::string& strArguments) {
        return Run("map.json " + strArguments, "script -q -e -c \"'" FACES_PROGRAM "' map.json " +
                                                   strArguments + " >../report\" /dev/null </dev/null; true ")
            .m_strOut;
    };

    EXPECT_THAT(onATerminal(""), AllOf(HasSubstr("\r[....."), HasSubstr("] read "),
                                       HasSubstr("] match rings"), ContainsRegex("\r +\r")));
    EXPECT_THAT(onATerminal("--quiet"), Not(HasSubstr("[..")));
}

TEST_F(FacesCommandLine, TheTitleIsGivenOrTheFilesName) {
    Write("map.json", square);

    EXPECT_EQ(Run("map.json -q -o a.svg").m_nExit, 0);
    EXPECT_EQ(Run("map.json -q -o b.svg --title 'Fish & chips'").m_nExit, 0);

    EXPECT_THAT(ReadWork("a.svg"), HasSubstr("<title>map.json</title>"));
    EXPECT_THAT(ReadWork("b.svg"), HasSubstr("<title>Fish &amp; chips</title>"));
}

TEST_F(FacesCommandLine, AListHasTheNamesInTheOrderOfLabelsAndNothingElse) {
    const Outcome outcome = Run("'" FACES_WARDS "' --list");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_strOut, "Ward 9\nWard 10\n\xc3\x8ele\n");
    EXPECT_THAT(outcome.m_strErr, IsEmpty());
    EXPECT_EQ(Run("'" FACES_SAVED_WARDS "' --list").m_strOut, outcome.m_strOut);
    EXPECT_EQ(Run("'" FACES_WARDS "' --list -o -").m_strErr, outcome.m_strOut);
}

TEST_F(FacesCommandLine, AListThatCannotBeWrittenIsAnError) {
    const Outcome outcome = Run("'" FACES_WARDS "' --list >/dev/full");

    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_strErr, HasSubstr("standard output"));
}

TEST_F(FacesCommandLine, TheLogHasEveryStageWithItsTime) {
    EXPECT_EQ(Run("'" FACES_WARDS "' -q -o a.svg --save a.vxb --log log").m_nExit, 0);

    const std::string strLog = ReadWork("log");
    std::string strExpected;
    for (const char* pszStage :
         {"read", "node", "build", "prune", "trace", "locate holes", "match rings", "save", "draw"}) {
        strExpected += "\\[ *[0-9]+\\.[0-9] ms\\] " + std::string(pszStage) +
                       " begins\n\\[ *[0-9]+\\.[0-9] ms\\] " + pszStage + " ends after [0-9]+\\.[0-9] ms\n";
    }
    EXPECT_THAT(strLog, testing::MatchesRegex(strExpected + "\\[ *[0-9]+\\.[0-9] ms\\] done\n"));
}

TEST_F(FacesCommandLine, TheLogEndsWithTheReasonOfAFailure) {
    Write("map.json", cross);

    const Outcome outcome = Run("map.json --strict --log log");

    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_strErr, IsOneLineAbout("map.json", "crossing at (5, 5)"));
    EXPECT_THAT(ReadWork("log"),
                AllOf(HasSubstr(" ms] failed: map.json: "), EndsWith("crossing at (5, 5)\n")));
}

TEST_F(FacesCommandLine, ALogThatCannotBeWrittenIsToldInOneLineAndNothingIsDone) {
    const struct {
        const char* m_pszLog;
        const char* m_pszReason;
    } cases[] = {{"none/log", "No such file or directory"},
                 {".", "Is a directory"},
                 {"/dev/full", "No space left on device"}};
    for (const auto& [pszLog, pszReason] : cases) {
        const Outcome outcome = Run(std::string("'" FACES_WARDS "' -o a.svg --log ") + pszLog);

        EXPECT_EQ(outcome.m_nExit, 1) << pszLog;
        EXPECT_THAT(outcome.m_strErr, IsOneLineAbout(pszLog, pszReason));
        EXPECT_THAT(outcome.m_strOut, IsEmpty());
        EXPECT_EQ(CountFiles(), 0) << pszLog;
    }
}

TEST_F(FacesCommandLine, ASavedMapIsTheSameOnEveryRunAndDrawsTheSamePicture) {
    EXPECT_EQ(Run("'" FACES_WARDS "' --grid 450 -q --save a.vxb -o a.svg").m_nExit, 0);
    EXPECT_EQ(ReadWork("a.vxb"), Read(FACES_SAVED_WARDS));

    const Outcome outcome = Run("a.vxb -o b.svg --save b.vxb");
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut, StartsWith("a.vxb\n"));
    EXPECT_THAT(outcome.m_strOut, Row("nodes", "15"));
    EXPECT_THAT(outcome.m_strOut, Row("bounded faces", "4"));
    EXPECT_THAT(outcome.m_strOut, Row("holes", "1"));
    EXPECT_THAT(outcome.m_strOut, Not(HasSubstr("trace"))) << "it is not traced again";
    EXPECT_EQ(ReadWork("b.svg"), ReadWork("a.svg"));
    EXPECT_EQ(ReadWork("b.vxb"), ReadWork("a.vxb"));
    EXPECT_EQ(CountFiles(), 4);
}

TEST_F(FacesCommandLine, TheSavedCountyMapDrawsTheSamePicture) {
    EXPECT_EQ(Run("'" FACES_COUNTY_MAP "' -q --save counties -o a.svg").m_nExit, 0);
    EXPECT_EQ(Run("counties -q -o b.svg").m_nExit, 0) << "known by its magic";
    EXPECT_EQ(Run("- -q -o c.svg <counties").m_nExit, 0);

    EXPECT_EQ(ReadWork("b.svg"), ReadWork("a.svg"));
    EXPECT_EQ(ReadWork("c.svg"), ReadWork("a.svg"));
}

TEST_F(FacesCommandLine, ASavedMapTakesAnotherTitleAndAnotherDirectionOfY) {
    EXPECT_EQ(Run("'" FACES_WARDS "' --grid 450 -q -o a.svg --title Wards --y down").m_nExit, 0);
    EXPECT_EQ(Run("'" FACES_SAVED_WARDS "' -q -o b.svg --title Wards --y down").m_nExit, 0);

    EXPECT_EQ(ReadWork("b.svg"), ReadWork("a.svg"));
}

TEST_F(FacesCommandLine, ASavedMapIsNotTracedInAnotherWay) {
    for (const char* pszOption : {"--strict", "--grid 9", "--object states"}) {
        const Outcome outcome = Run(std::string("'" FACES_SAVED_WARDS "' ") + pszOption);

        EXPECT_EQ(outcome.m_nExit, 1);
        EXPECT_THAT(outcome.m_strErr, IsOneLineAbout(FACES_SAVED_WARDS, "traced already"));
    }
}

TEST_F(FacesCommandLine, ABadSavedMapIsToldInOneLine) {
    const std::string strGolden = Read(FACES_SAVED_WARDS);
    std::string strNewer = strGolden;
    strNewer[8] = 2;
    const struct {
        std::string m_strBytes;
        const char* m_pszReason;
    } cases[] = {{"", "truncated"},
                 {strGolden.substr(0, 100), "truncated: 100 bytes of"},
                 {square, "this is no map saved by faces"},
                 {strNewer, "version 2, newer"},
                 {strGolden + "x", "damaged"}};
    for (const auto& [strBytes, pszReason] : cases) {
        Write("map.vxb", strBytes);

        const Outcome outcome = Run("map.vxb -o a.svg --save b.vxb");

        EXPECT_EQ(outcome.m_nExit, 1);
        EXPECT_THAT(outcome.m_strErr, IsOneLineAbout("map.vxb", pszReason));
        EXPECT_THAT(outcome.m_strOut, IsEmpty());
        EXPECT_EQ(CountFiles(), 1);
    }
}

TEST_F(FacesCommandLine, AMapThatCannotBeSavedLeavesAnOldFileAsItWas) {
    Write("old.vxb", "old");

    const Outcome full = Run("'" FACES_COUNTY_MAP "' --save old.vxb", "trap '' XFSZ; ulimit -f 16; ");
    EXPECT_EQ(full.m_nExit, 1);
    EXPECT_THAT(full.m_strErr, IsOneLineAbout("old.vxb", "File too large"));
    EXPECT_EQ(ReadWork("old.vxb"), "old");
    EXPECT_EQ(CountFiles(), 1);

    EXPECT_THAT(Run("'" FACES_WARDS "' --save none/a.vxb").m_strErr,
                IsOneLineAbout("none/a.vxb", "No such file or directory"));
    EXPECT_THAT(Run("'" FACES_WARDS "' --save /dev/full").m_strErr,
                IsOneLineAbout("/dev/full", "No space left on device"));
}

}  // namespace
}  // namespace faces
