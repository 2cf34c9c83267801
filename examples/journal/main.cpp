// journal: a small drawing that is edited by a script, saved and opened again, and drawn as SVG.
//
// A script's lines (Script) become events; a reactor (Editor) does the edits (Edit) on the drawing
// (Document), another tells of them. The shapes (Shape, Shapes) are made through their class descriptors, by
// a script and by a file (DocumentFile) alike.
#include <cstdlib>
#include <iostream>
#include <optional>
#include <sstream>

#include "VexaBase/event/KyScopedReactor.h"
#include "examples/journal/DocumentFile.h"
#include "examples/journal/Editor.h"
#include "examples/journal/Script.h"
#include "examples/program/CommandLine.h"
#include "examples/program/FileError.h"
#include "examples/program/InputFile.h"
#include "examples/program/OutputFile.h"

namespace journal {
namespace {

struct Options : program::CommonOptions {
    std::string m_strScript;
    std::string m_strOpen;
    std::string m_strSave;
};

/// The exit status if the program is to end here.
std::optional<int> ReadCommandLine(int argc, char** argv, Options& options) {
    CLI::App app("Edits a small drawing by a script, and prints, saves and draws it.", "journal");
    app.add_option("script", options.m_strScript, "the file with the edits; - for standard input");
    program::AddCommonOptions(app, options, "the SVG file to draw it to",
                              "tell of every edit on standard error");
    app.add_option("--open", options.m_strOpen,
                   "begin with the drawing saved in this file; - for standard input");
    app.add_option("--save", options.m_strSave, "save the drawing to this file; - for standard output");
    return program::ReadCommandLine(app, argc, argv, [&options] {
        if (options.m_strScript.empty() && options.m_strOpen.empty())
            throw CLI::ValidationError("there is neither a script nor a drawing to open");
        if (options.m_strScript == "-" && options.m_strOpen == "-")
            throw CLI::ValidationError("standard input is either the script or the drawing");
        // A drawing may be saved where it was opened.
        program::CheckFiles({options.m_strScript}, {options.m_strOutput, options.m_strSave});
        program::CheckFiles({options.m_strOpen}, {options.m_strOutput});
    });
}

void Run(const Options& options) {
    Document document;
    Editor editor(document);
    Chronicle chronicle(std::cerr);
    const KyScopedReactor editing(editor);
    std::optional<KyScopedReactor> telling;
    if (options.m_bVerbose) telling.emplace(chronicle);

    if (!options.m_strOpen.empty()) {
        program::About(program::NameOfInput(options.m_strOpen),
                       [&] { ReadBytes(program::ReadWhole(options.m_strOpen), document); });
    }
    if (!options.m_strScript.empty()) {
        program::About(program::NameOfInput(options.m_strScript), [&] {
            std::istringstream script(program::ReadWhole(options.m_strScript));
            RunScript(script);
        });
    }
    if (!options.m_strSave.empty()) {
        program::About(program::NameOfOutput(options.m_strSave),
                       [&] { program::WriteWhole(options.m_strSave, BytesOf(document)); });
    }
    if (!options.m_strOutput.empty()) {
        program::About(program::NameOfOutput(options.m_strOutput),
                       [&] { program::WriteWhole(options.m_strOutput, DrawSvg(document)); });
    }
    if (options.m_bQuiet) return;
    const bool bOutputIsTaken = options.m_strSave == "-" || options.m_strOutput == "-";
    std::ostream& out = bOutputIsTaken ? std::cerr : std::cout;
    out << Listing(document);
    if (!out.flush()) throw program::FileError("standard output", "cannot be written");
}

}  // namespace
}  // namespace journal

int main(int argc, char** argv) {
    return program::Main("journal", [&] {
        journal::Options options;
        if (const auto exitStatus = journal::ReadCommandLine(argc, argv, options)) return *exitStatus;
        journal::Run(options);
        return EXIT_SUCCESS;
    });
}
