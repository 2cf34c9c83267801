// What the command lines of the programs have in common: some options, the exit statuses, and one line on standard
// error that says what is wrong.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace program {

constexpr int ExitFailure = 1;  // what was asked for cannot be done
constexpr int ExitUsage = 2;    // the command line makes no sense

/// What every program is told the same way.
struct CommonOptions {
    std::string m_strOutput;  // "-" for standard output, empty for none
    bool m_bVerbose = false;
    bool m_bQuiet = false;
};

/// Adds -o/--output, -v/--verbose, -q/--quiet, the two of which exclude each other, and --version; --help also tells of
/// the exit statuses.
void AddCommonOptions(CLI::App& app, CommonOptions& options, const std::string& strOutputHelp,
                      const std::string& strVerboseHelp);

/// Whether a number is one of these, for check().
CLI::Validator Within(long nLeast, long nMost);

/// Reads the command line; `check` throws CLI::ValidationError if it makes no sense as a whole. The exit status if the
/// program is to end here.
std::optional<int> ReadCommandLine(CLI::App& app, int argc, char** argv, const std::function<void()>& check);

/// Throws CLI::ValidationError if an output would replace an input or another output, or two would go to
/// standard output. An empty name is none.
void CheckFiles(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs);

/// The program but for what goes wrong: what `run` throws is told in one line.
int Main(const char* pszProgram, const std::function<int()>& run);

}  // namespace program
