#include "examples/program/CommandLine.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <system_error>

namespace program {
namespace {

/// Whether writing the one file would replace the other.
bool AreOneFile(const std::string& strA, const std::string& strB) {
    std::error_code error;
    if (std::filesystem::equivalent(strA, strB, error)) return std::filesystem::is_regular_file(strA, error);
    const auto absolute = [&error](const std::string& strFile) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(strFile), error);
    };
    return !std::filesystem::exists(strA, error) && absolute(strA) == absolute(strB);
}

bool IsFile(const std::string& strFile) { return !strFile.empty() && strFile != "-"; }

}  // namespace

void AddCommonOptions(CLI::App& app, CommonOptions& options, const std::string& strOutputHelp,
                      const std::string& strVerboseHelp) {
    app.add_option("-o,--output", options.m_strOutput, strOutputHelp + "; - for standard output");
    CLI::Option* const pVerbose = app.add_flag("-v,--verbose", options.m_bVerbose, strVerboseHelp);
    app.add_flag("-q,--quiet", options.m_bQuiet, "print nothing but errors")->excludes(pVerbose);
    app.set_version_flag("--version", app.get_name() + " " VEXABASE_VERSION);
    app.footer(
        "Exit status:\n"
        "  0  it is done\n"
        "  1  it cannot be done\n"
        "  2  the command line makes no sense");
}

CLI::Validator Within(long nLeast, long nMost) {
    return CLI::Range(nLeast, nMost).description(std::to_string(nLeast) + " to " + std::to_string(nMost));
}

std::optional<int> ReadCommandLine(CLI::App& app, int argc, char** argv, const std::function<void()>& check) {
    try {
        app.parse(argc, argv);
        check();
    } catch (const CLI::Success& success) {
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        std::cerr << app.get_name() << ": " << error.what() << " (--help tells more)\n";
        return ExitUsage;
    }
    return std::nullopt;
}

void CheckFiles(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs) {
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const std::string& strOutput = outputs[i];
        if (std::count(outputs.begin(), outputs.begin() + static_cast<long>(i), "-") != 0 && strOutput == "-")
            throw CLI::ValidationError("two outputs would go to standard output");
        if (!IsFile(strOutput)) continue;
        for (const std::string& strInput : inputs) {
            if (IsFile(strInput) && AreOneFile(strInput, strOutput))
                throw CLI::ValidationError(strOutput + ": the output would replace the input");
        }
        for (std::size_t k = 0; k < i; ++k) {
            if (IsFile(outputs[k]) && AreOneFile(outputs[k], strOutput))
                throw CLI::ValidationError(strOutput + ": two outputs would go there");
        }
    }
}

int Main(const char* pszProgram, const std::function<int()>& run) {
    try {
        return run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", pszProgram, error.what());
    }
    return ExitFailure;
}

}  // namespace program
