// journal: a small drawing that is edited by a script, saved and opened again, and drawn as SVG.
//
// A script's lines (Script) become events; a reactor (Editor) does the edits (Edit) on the drawing
// (Document), another tells of them. The shapes (Shape, Shapes) are made through their class descriptors, by
// a script and by a file (DocumentFile) alike.
#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <system_error>

#include "VexaBase/event/KyScopedReactor.h"
#include "examples/faces/OutputFile.h"
#include "examples/journal/DocumentFile.h"
#include "examples/journal/Editor.h"
#include "examples/journal/Script.h"

namespace journal {
namespace {

constexpr int ExitFailure = 1;
constexpr int ExitUsage = 2;

struct Options {
    std::string m_strScript;
    std::string m_strOpen;
    std::string m_strSave;
    std::string m_strSvg;
    bool m_bVerbose = false;
    bool m_bQuiet = false;
};

/// Throws CLI::ValidationError if the command line makes no sense as a whole.
void CheckTogether(const Options& options) {
    if (options.m_strScript.empty() && options.m_strOpen.empty()) {
        throw CLI::ValidationError("there is neither a script nor a drawing to open");
    }
    const auto refuseReplacing = [](const std::string& strOutput, const std::string& strOther) {
        std::error_code error;
        const bool bSame = !strOutput.empty() &&
                           (strOutput == strOther || std::filesystem::equivalent(strOutput, strOther, error));
        if (bSame) throw CLI::ValidationError(strOutput + ": one file would replace the other");
    };
    if (options.m_strScript != "-") {
        refuseReplacing(options.m_strSave, options.m_strScript);
        refuseReplacing(options.m_strSvg, options.m_strScript);
    }
    refuseReplacing(options.m_strSvg, options.m_strOpen);
    refuseReplacing(options.m_strSvg, options.m_strSave);
}

/// The exit status if the program is to end here.
std::optional<int> ReadCommandLine(int argc, char** argv, Options& options) {
    CLI::App app("Edits a small drawing by a script, and prints, saves and draws it.");
    app.add_option("script", options.m_strScript, "the file with the edits; - for standard input");
    app.add_option("--open", options.m_strOpen, "begin with the drawing saved in this file");
    app.add_option("--save", options.m_strSave, "save the drawing to this file; - for standard output");
    app.add_option("--svg", options.m_strSvg, "draw it to this SVG file; - for standard output");
    CLI::Option* pVerbose =
        app.add_flag("-v,--verbose", options.m_bVerbose, "tell of every edit on standard error");
    app.add_flag("-q,--quiet", options.m_bQuiet, "print nothing but errors")->excludes(pVerbose);
    app.set_version_flag("--version", std::string("journal ") + VEXABASE_VERSION);
    try {
        app.parse(argc, argv);
        CheckTogether(options);
    } catch (const CLI::Success& success) {
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        std::cerr << "journal: " << error.what() << " (--help tells more)\n";
        return ExitUsage;
    }
    return std::nullopt;
}

std::string Shown(const std::string& strFile, const char* pszStandard) {
    return strFile == "-" ? pszStandard : strFile;
}

/// Does something about a file and names the file if that fails.
template <class Work>
void About(const std::string& strFile, const Work& work) {
    try {
        work();
    } catch (const std::system_error& error) {
        throw std::runtime_error(strFile + ": " + error.code().message());
    } catch (const std::exception& error) {
        throw std::runtime_error(strFile + ": " + error.what());
    }
}

void RunScriptFile(const std::string& strFile) {
    if (strFile == "-") return RunScript(std::cin);
    errno = 0;
    std::ifstream file(strFile);
    if (!file || file.peek() == std::ifstream::traits_type::eof()) {
        if (errno != 0) throw std::system_error(errno, std::generic_category());
    }
    RunScript(file);
}

void Run(const Options& options) {
    Document document;
    Editor editor(document);
    Chronicle chronicle(std::cerr);
    const KyScopedReactor editing(editor);
    std::optional<KyScopedReactor> telling;
    if (options.m_bVerbose) telling.emplace(chronicle);

    if (!options.m_strOpen.empty())
        About(options.m_strOpen, [&] { ReadDocument(options.m_strOpen, document); });
    if (!options.m_strScript.empty()) {
        About(Shown(options.m_strScript, "standard input"), [&] { RunScriptFile(options.m_strScript); });
    }
    if (!options.m_strSave.empty()) {
        About(Shown(options.m_strSave, "standard output"),
              [&] { WriteDocument(options.m_strSave, document); });
    }
    if (!options.m_strSvg.empty()) {
        About(Shown(options.m_strSvg, "standard output"),
              [&] { faces::WriteWhole(options.m_strSvg, DrawSvg(document)); });
    }
    if (options.m_bQuiet) return;
    const bool bOutputIsTaken = options.m_strSave == "-" || options.m_strSvg == "-";
    std::ostream& out = bOutputIsTaken ? std::cerr : std::cout;
    out << Listing(document);
    if (!out.flush()) throw std::runtime_error("standard output: cannot be written");
}

}  // namespace
}  // namespace journal

int main(int argc, char** argv) {
    try {
        journal::Options options;
        if (const auto exitStatus = journal::ReadCommandLine(argc, argv, options)) return *exitStatus;
        journal::Run(options);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "journal: %s\n", error.what());
        return journal::ExitFailure;
    }
}
