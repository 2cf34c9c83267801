// A fixture that runs a program from outside, in a folder of its own.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace program {

struct Outcome {
    int m_nExit;
    std::string m_strOut;
    std::string m_strErr;
};

class ProgramTest : public testing::Test {
protected:
    ProgramTest() {
        std::string strTemplate = (std::filesystem::temp_directory_path() / "program-XXXXXX").string();
        m_folder = ::mkdtemp(strTemplate.data());
        std::filesystem::create_directory(m_folder / "work");
    }
    ~ProgramTest() override { std::filesystem::remove_all(m_folder); }

    /// What a line of the shell does in the folder, with that on its standard input.
    Outcome RunLine(const std::string& strLine, const std::string& strInput = "") const {
        std::ofstream(m_folder / "in") << strInput;
        const std::string strCommand =
            "cd '" + (m_folder / "work").string() + "' && { " + strLine + " ; } <../in >../out 2>../err";
        const int nStatus = std::system(strCommand.c_str());
        return {WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1, Read(m_folder / "out"),
                Read(m_folder / "err")};
    }

    void Write(const std::string& strFile, const std::string& strText) const {
        std::ofstream(m_folder / "work" / strFile) << strText;
    }
    std::string ReadWork(const std::string& strFile) const { return Read(m_folder / "work" / strFile); }
    bool Exists(const std::string& strFile) const {
        return std::filesystem::exists(m_folder / "work" / strFile);
    }
    static std::string Read(const std::filesystem::path& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::filesystem::path m_folder;
};

}  // namespace program
