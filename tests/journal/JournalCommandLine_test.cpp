// The program from outside: what it prints and writes, and one line for whatever goes wrong.

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

#include "tests/program/ProgramTest.h"

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

class JournalCommandLine : public program::ProgramTest {
protected:
    Outcome Run(const std::string& strArguments, const std::string& strInput = "") const {
        return RunLine("'" JOURNAL_PROGRAM "' " + strArguments, strInput);
    }
};

/// One line on standard error that begins with the program's and the file's name.
auto IsOneLineAbout(const std::string& strFile, const std::string& strReason) {
    return AllOf(StartsWith("journal: " + strFile + ": "), HasSubstr(strReason), EndsWith("\n"),
                 Not(ContainsRegex("\n.")));
}

TEST_F(JournalCommandLine, HelpAndVersionAreNoErrors) {
    const Outcome help = Run("--help");
    EXPECT_EQ(help.m_nExit, 0);
    EXPECT_THAT(help.m_strOut, AllOf(HasSubstr("--open"), HasSubstr("--save"), HasSubstr("-o"),
                                     HasSubstr("\nExit status:\n  0  ")));

    const Outcome version = Run("--version");
    EXPECT_EQ(version.m_nExit, 0);
    EXPECT_EQ(version.m_strOut, "journal " VEXABASE_VERSION "\n");
}

TEST_F(JournalCommandLine, AScriptIsRunAndTheDrawingPrinted) {
    Write("script", "add Circle sun 1 2 3\nmove sun 1 1\n");

    const Outcome outcome = Run("script");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_strOut, "Circle sun at 2, 3, radius 3, gold\n1 shape: 1 Circle\n");
    EXPECT_THAT(outcome.m_strErr, IsEmpty());
}

TEST_F(JournalCommandLine, AScriptMayComeFromStandardInput) {
    const Outcome outcome = Run("-", "add Circle sun 1 2 3\nundo\n");

    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_EQ(outcome.m_strOut, "0 shapes\n");
}

TEST_F(JournalCommandLine, AnEmptyScriptIsOne) {
    Write("script", "");

    EXPECT_EQ(Run("script").m_strOut, "0 shapes\n");
    EXPECT_EQ(Run("-").m_strOut, "0 shapes\n");
}

TEST_F(JournalCommandLine, ASavedDrawingIsOpenedEditedAndSavedAgain) {
    EXPECT_EQ(Run("- --save drawing", "add Circle sun 1 2 3\nadd Label sign 0 0 9 Hello\n").m_nExit, 0);

    const Outcome shown = Run("--open drawing");
    EXPECT_EQ(shown.m_nExit, 0);
    EXPECT_EQ(shown.m_strOut,
              "Circle sun at 1, 2, radius 3, gold\n"
              "Label sign at 0, 0, height 9, \"Hello\", black\n"
              "2 shapes: 1 Circle, 1 Label\n");

    EXPECT_EQ(Run("- --open drawing --save drawing", "remove sun\n").m_nExit, 0);
    EXPECT_THAT(Run("--open drawing").m_strOut, EndsWith("1 shape: 1 Label\n"));

    EXPECT_THAT(Run("- --open drawing", "undo\n").m_strErr, HasSubstr("there are 0 edits to undo"))
        << "a file holds the drawing, not what was done to it";
}

TEST_F(JournalCommandLine, ThePictureIsWrittenToAFileOrToStandardOutput) {
    Write("script", "add Circle sun 1 2 3\n");

    const Outcome toFile = Run("script -o picture.svg");
    EXPECT_EQ(toFile.m_nExit, 0);
    EXPECT_THAT(ReadWork("picture.svg"),
                AllOf(StartsWith("<svg "), HasSubstr("<circle "), EndsWith("</svg>\n")));
    EXPECT_THAT(toFile.m_strOut, HasSubstr("1 shape"));

    const Outcome toOutput = Run("script -o -");
    EXPECT_EQ(toOutput.m_strOut, ReadWork("picture.svg"));
    EXPECT_THAT(toOutput.m_strErr, HasSubstr("1 shape"));
}

TEST_F(JournalCommandLine, VerboseTellsOfEveryEditAndQuietOfNothing) {
    const std::string strScript = "add Circle sun 1 2 3\nmove sun 1 1\nundo 2\nredo\n";

    const Outcome verbose = Run("- -v", strScript);
    EXPECT_EQ(verbose.m_strErr, "add sun\nmove sun\nundo move sun, add sun\nredo add sun\n");
    EXPECT_THAT(verbose.m_strOut, EndsWith("1 shape: 1 Circle\n"));

    const Outcome quiet = Run("- -q", strScript);
    EXPECT_EQ(quiet.m_nExit, 0);
    EXPECT_THAT(quiet.m_strOut + quiet.m_strErr, IsEmpty());
}

TEST_F(JournalCommandLine, AWrongCommandLineIsToldInOneLineWithStatusTwo) {
    Write("script", "add Circle sun 1 2 3\n");
    for (const char* pszArguments :
         {"", "-o picture.svg", "--no-such-option script", "script another", "script --save", "script -q -v",
          "script --save script", "script -o ./script", "script --save one -o one", "script --save - -o -"}) {
        const Outcome outcome = Run(pszArguments);

        EXPECT_EQ(outcome.m_nExit, 2) << pszArguments;
        EXPECT_THAT(outcome.m_strErr,
                    AllOf(StartsWith("journal: "), EndsWith("\n"), Not(ContainsRegex("\n."))))
            << pszArguments;
        EXPECT_THAT(outcome.m_strOut, IsEmpty()) << pszArguments;
    }
    EXPECT_EQ(ReadWork("script"), "add Circle sun 1 2 3\n");
    EXPECT_FALSE(Exists("one"));
}

TEST_F(JournalCommandLine, ABadScriptIsToldInOneLineAndNothingIsSavedOrDrawn) {
    Write("script", "add Circle sun 1 2 3\nadd Ellipse moon 1 2 3\n");
    Write("old", "old");

    const Outcome outcome = Run("script --save old -o new.svg");

    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_strErr, IsOneLineAbout("script", "line 2: unknown class 'Ellipse'"));
    EXPECT_THAT(outcome.m_strOut, IsEmpty());
    EXPECT_EQ(ReadWork("old"), "old");
    EXPECT_FALSE(Exists("new.svg"));
    EXPECT_THAT(Run("-", "raise nobody\n").m_strErr,
                IsOneLineAbout("standard input", "line 1: there is no shape 'nobody'"));
}

TEST_F(JournalCommandLine, ATruncatedOrForeignDrawingIsToldInOneLine) {
    Run("- --save drawing", "add Circle sun 1 2 3\n");
    const std::string strBytes = ReadWork("drawing");
    Write("cut", strBytes.substr(0, strBytes.size() - 1));
    Write("foreign", "<svg/>");
    Write("empty", "");
    std::string strUnknown = strBytes;
    strUnknown.replace(strUnknown.find("Circle"), 6, "Circus");
    Write("unknown", strUnknown);

    const Outcome cut = Run("--open cut -o picture.svg");
    EXPECT_EQ(cut.m_nExit, 1);
    EXPECT_THAT(cut.m_strErr, IsOneLineAbout("cut", "shape 1 of 1: truncated: it ends in the radius"));
    EXPECT_THAT(cut.m_strOut, IsEmpty());
    EXPECT_FALSE(Exists("picture.svg"));

    EXPECT_THAT(Run("--open foreign").m_strErr, IsOneLineAbout("foreign", "not a drawing"));
    EXPECT_THAT(Run("--open empty").m_strErr, IsOneLineAbout("empty", "not a drawing"));
    EXPECT_THAT(Run("--open unknown").m_strErr, IsOneLineAbout("unknown", "unknown class 'Circus'"));
}

TEST_F(JournalCommandLine, AFileThatCannotBeReadOrWrittenIsNamedWithTheReason) {
    fs::create_directory(m_folder / "work" / "folder");

    for (const char* pszArguments : {"none", "--open none"}) {
        const Outcome outcome = Run(pszArguments);
        EXPECT_EQ(outcome.m_nExit, 1) << pszArguments;
        EXPECT_THAT(outcome.m_strErr, IsOneLineAbout("none", "No such file or directory")) << pszArguments;
    }
    for (const char* pszArguments : {"folder", "--open folder", "- --save folder", "- -o folder"}) {
        const Outcome outcome = Run(pszArguments);
        EXPECT_EQ(outcome.m_nExit, 1) << pszArguments;
        EXPECT_THAT(outcome.m_strErr, IsOneLineAbout("folder", "Is a directory")) << pszArguments;
    }
    EXPECT_THAT(Run("- --save none/drawing").m_strErr,
                IsOneLineAbout("none/drawing", "No such file or directory"));
    EXPECT_THAT(Run("- --save /dev/full").m_strErr, IsOneLineAbout("/dev/full", "No space left on device"));

    const Outcome full = Run("- >/dev/full");
    EXPECT_EQ(full.m_nExit, 1);
    EXPECT_THAT(full.m_strErr, IsOneLineAbout("standard output", "cannot be written"));
}

TEST_F(JournalCommandLine, TheExamplesOwnScriptDrawsItsHouse) {
    const Outcome outcome = Run("'" JOURNAL_HOUSE "' -o house.svg --save house");

    EXPECT_EQ(outcome.m_nExit, 0) << outcome.m_strErr;
    EXPECT_THAT(outcome.m_strOut, EndsWith("9 shapes: 2 Circles, 1 Label, 2 Lines, 4 Rectangles\n"));
    EXPECT_EQ(Run("--open house").m_strOut, outcome.m_strOut);
    EXPECT_THAT(ReadWork("house.svg"), HasSubstr(">Home &amp; garden</text>"));
}

}  // namespace
