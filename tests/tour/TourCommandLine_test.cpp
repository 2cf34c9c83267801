#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "TourKit.h"
#include "tests/program/ProgramTest.h"

namespace tour {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;
using program::Outcome;

/// Runs the program in a folder of its own, where burma14.tsp lies.
class TourCommandLine : public program::ProgramTest {
protected:
    TourCommandLine() { Write("burma14.tsp", Burma); }

    Outcome Run(const std::string& strArguments, const std::string& strBefore = "") const {
        return RunLine(strBefore + " '" TOUR_PROGRAM "' " + strArguments);
    }
};

auto IsOneLine(const std::string& strLine) { return testing::Eq("tour: " + strLine + "\n"); }

TEST_F(TourCommandLine, PrintsLengthGenerationsAndTime) {
    const Outcome outcome = Run("burma14.tsp --generations 5");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut,
                MatchesRegex("burma14: 14 cities, length 3323, 5 generations, [0-9]+\\.[0-9] s\n"));
    EXPECT_THAT(outcome.m_strErr, IsEmpty());
}

TEST_F(TourCommandLine, VerboseTellsOfEveryGenerationAndQuietOfNothing) {
    const Outcome verbose = Run("burma14.tsp --generations 3 -v");
    EXPECT_EQ(verbose.m_nExit, 0);
    EXPECT_THAT(verbose.m_strErr,
                MatchesRegex("(generation [123]: best 33[0-9][0-9], mean [0-9]+\\.[0-9]\n)+"));
    EXPECT_THAT(verbose.m_strErr, AllOf(StartsWith("generation 1: "), HasSubstr("\ngeneration 2: "),
                                        HasSubstr("\ngeneration 3: best 3323, ")));
    EXPECT_THAT(verbose.m_strOut, StartsWith("burma14: 14 cities, length 3323, 3 generations"));

    const Outcome quiet = Run("burma14.tsp --generations 3 -q");
    EXPECT_EQ(quiet.m_nExit, 0);
    EXPECT_THAT(quiet.m_strOut + quiet.m_strErr, IsEmpty());
}

TEST_F(TourCommandLine, WritesTheTourAndThePicture) {
    const Outcome outcome = Run("burma14.tsp --generations 5 -o a.svg --tour-out a.tour -q");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut, IsEmpty());
    EXPECT_THAT(ReadWork("a.tour"),
                AllOf(StartsWith("NAME : burma14.tour\nCOMMENT : Length 3323\n"), EndsWith("-1\nEOF\n")));
    EXPECT_THAT(ReadWork("a.svg"),
                AllOf(StartsWith("<svg "), HasSubstr("a tour of length 3323"), EndsWith("</svg>\n")));
}

TEST_F(TourCommandLine, WritesToStandardOutputAndReportsBeside) {
    const Outcome outcome = Run("burma14.tsp --generations 1 --tour-out -");

    EXPECT_THAT(outcome.m_strOut, StartsWith("NAME : burma14.tour\n"));
    EXPECT_THAT(outcome.m_strErr, StartsWith("burma14: 14 cities, "));
}

TEST_F(TourCommandLine, TakesTheCitiesOfTheTimeZonesByDefault) {
    const Outcome outcome = Run("--generations 2 --population 5 -o a.svg");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut, ContainsRegex("^time-zones: [0-9]+ cities, length [0-9]+, 2 generations"));
    EXPECT_THAT(ReadWork("a.svg").substr(0, 400),
                HasSubstr("<title>A tour of the world's time zones</title>"));
}

TEST_F(TourCommandLine, WritesTheSameBytesForTheSameSeed) {
    Run("--generations 3 --population 10 --seed 4 -q --tour-out a.tour -o a.svg");
    Run("--generations 3 --population 10 --seed 4 -q --tour-out b.tour -o b.svg");

    EXPECT_THAT(ReadWork("a.tour"), Not(IsEmpty()));
    EXPECT_EQ(ReadWork("a.tour"), ReadWork("b.tour"));
    EXPECT_EQ(ReadWork("a.svg"), ReadWork("b.svg"));
}

TEST_F(TourCommandLine, StopsByItselfWithoutALimit) {
    const Outcome outcome = Run("burma14.tsp --population 5");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut, HasSubstr("length 3323, 10"));
}

TEST_F(TourCommandLine, StopsInTime) {
    const Outcome outcome = Run("burma14.tsp --time-limit 0.2");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_THAT(outcome.m_strOut, HasSubstr("length 3323, "));
}

TEST_F(TourCommandLine, StopsAtATarget) {
    EXPECT_THAT(Run("burma14.tsp --target 3323 --generations 1000000").m_strOut, HasSubstr("length 3323, "));
}

TEST_F(TourCommandLine, RefusesBadFilesInOneLine) {
    Write("empty.tsp", "");
    Write("short.tsp", "DIMENSION: 3\nEDGE_WEIGHT_TYPE: GEO\nNODE_COORD_SECTION\n1 0 0\n");
    fs::create_directory(m_folder / "work" / "folder");

    for (const auto& [strFile, strWhat] :
         {std::pair("empty.tsp", "there is no DIMENSION"),
          std::pair("short.tsp", "line 4: the file ends where the number of a city should stand"),
          std::pair("none.tsp", "No such file or directory"), std::pair("folder", "Is a directory")}) {
        const Outcome outcome = Run(std::string(strFile) + " --generations 1 -o a.svg");

        EXPECT_EQ(outcome.m_nExit, 1);
        EXPECT_THAT(outcome.m_strErr, IsOneLine(std::string(strFile) + ": " + strWhat));
        EXPECT_THAT(outcome.m_strOut, IsEmpty());
        EXPECT_FALSE(Exists("a.svg"));
    }
}

TEST_F(TourCommandLine, NamesTheFileThatItCannotWrite) {
    fs::create_directory(m_folder / "work" / "folder");

    EXPECT_THAT(Run("burma14.tsp --generations 1 -o none/a.svg").m_strErr,
                IsOneLine("none/a.svg: there is no such folder"));
    EXPECT_EQ(Run("burma14.tsp --generations 1 -o none/a.svg").m_nExit, 1);
    EXPECT_THAT(Run("burma14.tsp --generations 1 --tour-out folder").m_strErr, StartsWith("tour: folder: "));
    EXPECT_EQ(Run("burma14.tsp --generations 1 --tour-out folder").m_nExit, 1);
}

TEST_F(TourCommandLine, ReplacesNeitherItsInputNorItsOtherOutput) {
    EXPECT_EQ(Run("burma14.tsp --generations 1 --tour-out ./burma14.tsp").m_nExit, 2);
    EXPECT_EQ(Run("burma14.tsp --generations 1 --tour-out a -o a").m_nExit, 2);
    EXPECT_EQ(ReadWork("burma14.tsp"), Burma);
    EXPECT_FALSE(Exists("a"));
}

TEST_F(TourCommandLine, RefusesBadOptionsInOneLine) {
    for (const char* pszOptions : {"--generations -1", "--generations x", "--population 0", "--time-limit -1",
                                   "--nonsense", "another", "-q -v", "-o", "-o - --tour-out -",
                                   "--stagnation 0", "--seed -1", "--migrants 3", "--mutation-rate -5"}) {
        const Outcome outcome = Run(std::string("burma14.tsp ") + pszOptions);

        EXPECT_EQ(outcome.m_nExit, 2) << pszOptions;
        EXPECT_THAT(outcome.m_strErr, AllOf(StartsWith("tour: "), EndsWith("(--help tells more)\n"),
                                            Not(ContainsRegex("\n."))));
    }
}

TEST_F(TourCommandLine, ExplainsItself) {
    EXPECT_THAT(Run("--help").m_strOut,
                AllOf(HasSubstr("--tour-out"), HasSubstr("--islands"),
                      HasSubstr("--population INT:1 to 1000000=40\n"), HasSubstr("\nExit status:\n  0  ")));
    EXPECT_EQ(Run("--help").m_nExit, 0);
    EXPECT_EQ(Run("--version").m_strOut, "tour " VEXABASE_VERSION "\n");
}

#if defined(TOUR_MPIRUN)

class TourIslands : public TourCommandLine {
protected:
    /// On so many islands, be they more than there are processors.
    Outcome RunIslands(int nIslands, const std::string& strArguments) const {
        return Run(
            "--islands " + strArguments,
            "OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1 OMPI_MCA_rmaps_base_oversubscribe=1 "
            "OMPI_MCA_btl_vader_single_copy_mechanism=none ASAN_OPTIONS=detect_leaks=0 '" TOUR_MPIRUN
            "' -n " +
                std::to_string(nIslands));
    }
};

TEST_F(TourIslands, FindTheShortestTour) {
    const Outcome outcome = RunIslands(2, "burma14.tsp --generations 5");

    EXPECT_EQ(outcome.m_nExit, 0) << outcome.m_strErr;
    EXPECT_THAT(outcome.m_strOut, AllOf(HasSubstr("length 3323, 5 generations"), EndsWith(", 2 islands\n")));
}

TEST_F(TourIslands, WriteTheSameBytesForTheSameSeed) {
    RunIslands(3, "--generations 4 --population 8 --migrate-every 2 --seed 4 --tour-out a.tour -q");
    RunIslands(3, "--generations 4 --population 8 --migrate-every 2 --seed 4 --tour-out b.tour -q");

    EXPECT_THAT(ReadWork("a.tour"), StartsWith("NAME : time-zones.tour\n"));
    EXPECT_EQ(ReadWork("a.tour"), ReadWork("b.tour"));
}

TEST_F(TourIslands, StopTogether) {
    EXPECT_EQ(RunIslands(3, "burma14.tsp --target 3323").m_nExit, 0);
    EXPECT_EQ(RunIslands(3, "burma14.tsp --time-limit 0.3").m_nExit, 0);
    EXPECT_EQ(RunIslands(3, "burma14.tsp --stagnation 7 --population 3").m_nExit, 0);
}

TEST_F(TourIslands, MayBeOne) {
    const Outcome outcome = Run("burma14.tsp --islands --generations 5", "ASAN_OPTIONS=detect_leaks=0 ");

    EXPECT_EQ(outcome.m_nExit, 0) << outcome.m_strErr;
    EXPECT_THAT(outcome.m_strOut, HasSubstr("length 3323, 5 generations"));
}

TEST_F(TourIslands, RefuseABadFileInOneLine) {
    const Outcome outcome = RunIslands(2, "none.tsp");

    // The launcher adds lines of its own, before or behind.
    const std::string strLine = "tour: none.tsp: No such file or directory\n";
    const std::size_t nAt = outcome.m_strErr.find(strLine);
    EXPECT_NE(outcome.m_nExit, 0);
    ASSERT_NE(nAt, std::string::npos) << outcome.m_strErr;
    EXPECT_EQ(outcome.m_strErr.find("tour: ", nAt + strLine.size()), std::string::npos) << outcome.m_strErr;
}

#else

TEST_F(TourCommandLine, SaysThatItHasNoIslandsWithoutMpi) {
    const Outcome outcome = Run("burma14.tsp --islands --generations 1");

    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_strErr, IsOneLine("--islands: this program was built without MPI"));
}

#endif

}  // namespace
}  // namespace tour
