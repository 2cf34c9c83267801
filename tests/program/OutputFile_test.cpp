#include "examples/program/OutputFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace program {
namespace {

namespace fs = std::filesystem;

class OutputFile : public testing::Test {
protected:
    OutputFile() {
        std::string strTemplate = (fs::temp_directory_path() / "output-XXXXXX").string();
        m_folder = ::mkdtemp(strTemplate.data());
    }
    ~OutputFile() override { fs::remove_all(m_folder); }

    static std::string Read(const fs::path& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::ptrdiff_t CountFiles() const {
        return std::distance(fs::directory_iterator(m_folder), fs::directory_iterator());
    }

    fs::path m_folder;
};

TEST_F(OutputFile, ANewFileHasTheTextAndTheUsualRights) {
    const mode_t nMask = ::umask(027);

    WriteWhole((m_folder / "a.svg").string(), "text");

    ::umask(nMask);
    EXPECT_EQ(Read(m_folder / "a.svg"), "text");
    EXPECT_EQ(fs::status(m_folder / "a.svg").permissions(), static_cast<fs::perms>(0640));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(OutputFile, AnOldFileIsReplaced) {
    std::ofstream(m_folder / "a.svg") << "something longer";

    WriteWhole((m_folder / "a.svg").string(), "text");

    EXPECT_EQ(Read(m_folder / "a.svg"), "text");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(OutputFile, ALinkStaysALink) {
    std::ofstream(m_folder / "a.svg") << "old";
    fs::create_symlink(m_folder / "a.svg", m_folder / "link.svg");

    WriteWhole((m_folder / "link.svg").string(), "text");

    EXPECT_TRUE(fs::is_symlink(m_folder / "link.svg"));
    EXPECT_EQ(Read(m_folder / "a.svg"), "text");
}

TEST_F(OutputFile, AMissingFolderIsAnError) {
    EXPECT_THROW(WriteWhole((m_folder / "none" / "a.svg").string(), "text"), std::runtime_error);
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(OutputFile, AFolderInItsPlaceIsAnErrorAndStays) {
    fs::create_directory(m_folder / "a.svg");

    EXPECT_THROW(WriteWhole((m_folder / "a.svg").string(), "text"), std::runtime_error);

    EXPECT_TRUE(fs::is_directory(m_folder / "a.svg"));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(OutputFile, ADeviceIsWrittenToAndNotReplaced) {
    WriteWhole("/dev/null", "text");
    EXPECT_THROW(WriteWhole("/dev/full", "text"), std::runtime_error);

    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

}  // namespace
}  // namespace program
