#include "examples/program/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

namespace program {
namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace fs = std::filesystem;

class CommandLine : public testing::Test {
protected:
    CommandLine() {
        std::string strTemplate = (fs::temp_directory_path() / "command-line-XXXXXX").string();
        m_folder = ::mkdtemp(strTemplate.data());
        std::ofstream(m_folder / "a") << "a";
        std::ofstream(m_folder / "b") << "b";
        fs::create_symlink(m_folder / "a", m_folder / "link");
        fs::create_directory(m_folder / "folder");
    }
    ~CommandLine() override { fs::remove_all(m_folder); }

    std::vector<std::string> Paths(std::initializer_list<const char*> names) const {
        std::vector<std::string> paths;
        for (const std::string strName : names) {
            paths.push_back(strName.empty() || strName == "-" ? strName : (m_folder / strName).string());
        }
        return paths;
    }

    /// What CheckFiles has against the files, without their folder; empty if nothing.
    std::string Clash(std::initializer_list<const char*> inputs,
                      std::initializer_list<const char*> outputs) const {
        try {
            CheckFiles(Paths(inputs), Paths(outputs));
        } catch (const CLI::ValidationError& error) {
            const std::string strError = error.what();
            return strError.substr(strError.rfind('/') + 1);
        }
        return "";
    }

    fs::path m_folder;
};

TEST_F(CommandLine, FilesThatDifferDoNotClash) {
    EXPECT_EQ(Clash({"a"}, {"b", "c", "folder/a"}), "");
    EXPECT_EQ(Clash({}, {"c"}), "");
    EXPECT_EQ(Clash({"a"}, {}), "");
}

TEST_F(CommandLine, AnOutputMustNotReplaceTheInputByWhateverName) {
    EXPECT_EQ(Clash({"a"}, {"a"}), "a: the output would replace the input");
    EXPECT_EQ(Clash({"a"}, {"b", "link"}), "link: the output would replace the input");
    EXPECT_EQ(Clash({"b", "a"}, {"folder/../a"}), "a: the output would replace the input");
    EXPECT_EQ(Clash({"none"}, {"none"}), "none: the output would replace the input");
}

TEST_F(CommandLine, TwoOutputsMustNotGoToOnePlace) {
    EXPECT_EQ(Clash({}, {"a", "link"}), "link: two outputs would go there");
    EXPECT_EQ(Clash({}, {"new", "b", "folder/../new"}), "new: two outputs would go there");
    EXPECT_EQ(Clash({}, {"-", "b", "-"}), "two outputs would go to standard output");
}

TEST_F(CommandLine, StandardInputAndNoFileAtAllDoNotClash) {
    EXPECT_EQ(Clash({"-"}, {"-"}), "");
    EXPECT_EQ(Clash({""}, {"", ""}), "");
}

TEST_F(CommandLine, ADeviceIsNotReplaced) {
    EXPECT_NO_THROW(CheckFiles({"/dev/null"}, {"/dev/null", "/dev/null"}));
}

struct Outcome {
    std::optional<int> m_exitStatus;
    CommonOptions m_options;
    std::string m_strError;
};

Outcome Read(
    std::vector<std::string> arguments, const std::function<void()>& check = [] {}) {
    CLI::App app("Does nothing.", "nothing");
    Outcome outcome;
    AddCommonOptions(app, outcome.m_options, "the file to write", "tell more");
    arguments.insert(arguments.begin(), "nothing");
    std::vector<char*> argv;
    for (std::string& strArgument : arguments) {
        argv.push_back(strArgument.data());
    }
    CaptureStderr();
    outcome.m_exitStatus = ReadCommandLine(app, static_cast<int>(argv.size()), argv.data(), check);
    outcome.m_strError = GetCapturedStderr();
    return outcome;
}

TEST_F(CommandLine, EveryProgramHasTheseOptions) {
    const Outcome none = Read({});
    EXPECT_EQ(none.m_exitStatus, std::nullopt);
    EXPECT_EQ(none.m_options.m_strOutput, "");
    EXPECT_FALSE(none.m_options.m_bVerbose);
    EXPECT_FALSE(none.m_options.m_bQuiet);

    EXPECT_EQ(Read({"-o", "a"}).m_options.m_strOutput, "a");
    EXPECT_EQ(Read({"--output=-"}).m_options.m_strOutput, "-");
    EXPECT_TRUE(Read({"-v"}).m_options.m_bVerbose);
    EXPECT_TRUE(Read({"--verbose"}).m_options.m_bVerbose);
    EXPECT_TRUE(Read({"-q"}).m_options.m_bQuiet);
    EXPECT_TRUE(Read({"--quiet"}).m_options.m_bQuiet);
}

TEST_F(CommandLine, QuietAndVerboseExcludeEachOther) {
    const Outcome outcome = Read({"-q", "-v"});

    EXPECT_EQ(outcome.m_exitStatus, ExitUsage);
    EXPECT_EQ(outcome.m_strError, "nothing: --verbose excludes --quiet (--help tells more)\n");
}

TEST_F(CommandLine, WhatMakesNoSenseAsAWholeIsOneLineToo) {
    const Outcome outcome = Read({}, [] { throw CLI::ValidationError("too little"); });

    EXPECT_EQ(outcome.m_exitStatus, ExitUsage);
    EXPECT_EQ(outcome.m_strError, "nothing: too little (--help tells more)\n");
}

TEST_F(CommandLine, WhatAProgramThrowsIsOneLine) {
    CaptureStderr();
    const int nExit = Main("nothing", []() -> int { throw std::runtime_error("no luck"); });

    EXPECT_EQ(GetCapturedStderr(), "nothing: no luck\n");
    EXPECT_EQ(nExit, ExitFailure);
    EXPECT_EQ(Main("nothing", [] { return 5; }), 5);
}

}  // namespace
}  // namespace program
