#include "examples/program/InputFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "examples/program/FileError.h"

namespace program {
namespace {

namespace fs = std::filesystem;

std::string ReasonOf(const std::string& strFile) {
    try {
        About(strFile, [&] { return ReadWhole(strFile); });
    } catch (const FileError& error) {
        return error.what();
    }
    return "";
}

TEST(InputFile, IsReadWholeWhateverItsBytes) {
    std::string strTemplate = (fs::temp_directory_path() / "input-XXXXXX").string();
    const int nDescriptor = ::mkstemp(strTemplate.data());
    ::close(nDescriptor);
    std::string strText(200'000, 'x');
    strText[70'000] = '\0';

    EXPECT_EQ(ReadWhole(strTemplate), "");
    std::ofstream(strTemplate, std::ios::binary) << strText;
    EXPECT_EQ(ReadWhole(strTemplate), strText);

    fs::remove(strTemplate);
}

TEST(InputFile, WhatCannotBeReadIsNamedWithTheReason) {
    EXPECT_EQ(ReasonOf("/none/file"), "/none/file: No such file or directory");
    EXPECT_EQ(ReasonOf("/"), "/: Is a directory");
}

TEST(InputFile, ADashIsStandardInput) {
    EXPECT_EQ(NameOfInput("-"), "standard input");
    EXPECT_EQ(NameOfInput("a"), "a");
}

}  // namespace
}  // namespace program
