// faces: traces every face of a map out of its bare border lines, and draws them.
//
// The stages, one file each: read the lines (MapReader), make them plane (Noding), build the graph and set
// apart what bounds no face (PlaneMap), trace the faces and put holes where they belong (Faces), find the
// file's areas again among them (RingMatch), keep what a picture needs (DrawnMap), save that or load it
// instead of tracing (MapFile, over FileStream), draw (Colouring, SvgWriter). They
// tell of their progress by events (Events, Stages), which a bar and a log listen to (ProgressBar, StageLog).
#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "VexaBase/stream/KyDynArrayStream.h"
#include "examples/faces/DrawnMap.h"
#include "examples/faces/Events.h"
#include "examples/faces/Faces.h"
#include "examples/faces/MapFile.h"
#include "examples/faces/MapReader.h"
#include "examples/faces/Noding.h"
#include "examples/faces/PlaneMap.h"
#include "examples/faces/ProgressBar.h"
#include "examples/faces/Report.h"
#include "examples/faces/RingMatch.h"
#include "examples/faces/StageLog.h"
#include "examples/faces/Stages.h"
#include "examples/faces/SvgWriter.h"
#include "examples/faces/Utf8.h"
#include "examples/program/CommandLine.h"
#include "examples/program/FileError.h"
#include "examples/program/InputFile.h"
#include "examples/program/OutputFile.h"

namespace faces {
namespace {

struct Options : program::CommonOptions {
    std::string m_strInput;
    std::string m_strSave;
    std::string m_strLog;
    std::string m_strTitle;
    std::string m_strYAxis = "auto";
    ReadOptions m_read;
    bool m_bStrict = false;
    bool m_bList = false;
};

/// The exit status if the program is to end here.
std::optional<int> ReadCommandLine(int argc, char** argv, Options& options) {
    CLI::App app("Traces every face of a map out of its bare border lines, and draws them.", "faces");
    app.add_option("map", options.m_strInput,
                   "a TopoJSON or GeoJSON file, or one that --save wrote; - for standard input")
        ->required();
    program::AddCommonOptions(app, options, "the SVG file to write", "list every place that noding changed");
    app.add_option("--save", options.m_strSave,
                   "the file to write the traced map to, from which it can be drawn again (*.vxb)");
    app.add_option("--log", options.m_strLog, "the file to write the stages to, with their times");
    app.add_option("--title", options.m_strTitle, "the picture's title (the file's name if not given)");
    app.add_option("--object", options.m_read.m_strObject,
                   "of a TopoJSON file, take this object's lines and areas only");
    app.add_option(
           "--grid", options.m_read.m_nGrid,
           "cells along the map's longer side (a quantized file's own grid, or 1000000, if not given)")
        ->check(program::Within(1, MaxCoordinate));
    app.add_option(
           "--y", options.m_strYAxis,
           "where y grows in the picture; auto is up for longitude and latitude, down for anything else")
        ->check(CLI::IsMember({"auto", "up", "down"}));
    app.add_flag("--strict", options.m_bStrict, "fail if borders cross or overlap, instead of noding them");
    app.add_flag("--list", options.m_bList, "print the names of the areas in order, and no report")
        ->excludes("--verbose")
        ->excludes("--quiet");
    return program::ReadCommandLine(app, argc, argv, [&options] {
        if (options.m_strSave == "-")
            throw CLI::ValidationError("--save: the map cannot go to standard output");
        if (options.m_strLog == "-")
            throw CLI::ValidationError("--log: the log cannot go to standard output");
        program::CheckFiles({options.m_strInput}, {options.m_strOutput, options.m_strSave, options.m_strLog});
    });
}

void RefuseCrossings(const std::vector<ChangedPlace>& places, const Grid& grid) {
    for (const ChangedPlace& place : places) {
        const bool bPlane = place.m_kind != ChangeKind::Crossing && place.m_kind != ChangeKind::Overlap;
        if (!bPlane) throw MapError("the borders are not plane: " + Describe(place, grid));
    }
}

using Source = std::variant<BorderMap, DrawnMap>;

DrawnMap LoadSaved(const Options& options, const std::function<DrawnMap()>& load) {
    DrawnMap map = load();
    const bool bTraced =
        !options.m_bStrict && options.m_read.m_nGrid == 0 && options.m_read.m_strObject.empty();
    if (!bTraced) throw MapError("the map is traced already: --strict, --grid and --object come too late");
    return map;
}

Source ReadSource(const Options& options) {
    if (options.m_strInput != "-" && IsMapFile(options.m_strInput))
        return LoadSaved(options, [&] { return LoadMapFile(options.m_strInput); });
    std::string strText = program::ReadWhole(options.m_strInput);
    if (strText.compare(0, MapFileMagic.size(), MapFileMagic) != 0) return ReadMap(strText, options.m_read);
    return LoadSaved(options, [&] {  // a pipe has no positions to move to
        KyDynArrayStream stream;
        stream.Write(strText.data(), static_cast<long>(strText.size()));
        return LoadMap(stream);
    });
}

std::string TitleOf(const Options& options) {
    return !options.m_strTitle.empty()
               ? options.m_strTitle
               : std::filesystem::path(program::NameOfInput(options.m_strInput)).filename().string();
}

std::ostream& ReportStream(const Options& options) {
    return options.m_strOutput == "-" ? std::cerr : std::cout;
}

/// What is done with a map whose faces are known, before the report.
void WriteOutputs(const Options& options, const DrawnMap& map, Stages& stages) {
    if (!options.m_strSave.empty()) {
        stages.Run("save", [&] {
            program::About(options.m_strSave, [&] { SaveMapFile(map, options.m_strSave); });
            return true;
        });
    }
    if (options.m_strOutput.empty()) return;
    const std::string strSvg = stages.Run("draw", [&] { return DrawSvg(map); });
    program::About(program::NameOfOutput(options.m_strOutput),
                   [&] { program::WriteWhole(options.m_strOutput, strSvg); });
}

/// Prints the list of names if that is wanted; otherwise the report, if that is.
void Print(const Options& options, const DrawnMap& map,
           const std::function<void(std::ostream&)>& printReport) {
    std::ostream& out = ReportStream(options);
    if (options.m_bList) {
        for (const std::string& strName : SortedAsLabels(map.m_names)) out << strName << '\n';
    } else if (!options.m_bQuiet) {
        printReport(out);
    }
    if (!out.flush()) throw program::FileError("standard output", "cannot be written");
}

void TraceAndDraw(const Options& options, BorderMap map, Stages& stages) {
    if (options.m_strYAxis != "auto") map.m_bYUp = options.m_strYAxis == "up";
    const DistinctSegments distinct = SegmentsOf(map.m_lines);
    if (distinct.m_segments.empty()) throw MapError("the map is empty: all its lines collapse on the grid");
    const NodedSegments noded = stages.Run("node", [&] { return NodeSegments(distinct.m_segments); });
    const std::vector<ChangedPlace> places = ChangedPlaces(map, noded);
    if (options.m_bStrict) RefuseCrossings(places, map.m_grid);

    const auto pPlane = stages.Run("build", [&] { return std::make_unique<PlaneMap>(noded.m_segments); });
    const auto [nDeadEnds, nBridges] = stages.Run("prune", [&] {
        const long nPruned = pPlane->PruneDeadEnds();
        return std::pair(nPruned, pPlane->MarkBridges());
    });
    FaceMap faceMap = stages.Run("trace", [&] { return FaceMap(*pPlane); });
    stages.Run("locate holes", [&] { return faceMap.LocateHoles(), true; });
    if (!faceMap.CountForEuler().Holds())
        throw MapError("Euler's formula does not hold: the map is not plane");
    const RingMatch match = stages.Run("match rings", [&] { return MatchRings(map, noded, faceMap); });

    const DrawnMap drawn(map, faceMap, match, TitleOf(options));
    WriteOutputs(options, drawn, stages);
    KySendEvent(WorkEnds, nullptr, StageMask);
    // Structured bindings cannot be captured.
    const Findings findings{map,     distinct, noded,     places,   *pPlane,
                            faceMap, match,    nDeadEnds, nBridges, stages.m_times};
    Print(options, drawn, [&](std::ostream& out) {
        PrintReport(out, program::NameOfInput(options.m_strInput), findings, options.m_bVerbose);
    });
}

void DrawSaved(const Options& options, DrawnMap map, Stages& stages) {
    if (options.m_strYAxis != "auto") map.m_bYUp = options.m_strYAxis == "up";
    if (!options.m_strTitle.empty()) map.m_strTitle = ValidUtf8(options.m_strTitle);
    WriteOutputs(options, map, stages);
    KySendEvent(WorkEnds, nullptr, StageMask);
    Print(options, map, [&](std::ostream& out) {
        PrintSavedReport(out, program::NameOfInput(options.m_strInput), map, stages.m_times);
    });
}

void Work(const Options& options) {
    constexpr int stagesToSource = 1;
    constexpr int stagesToFaces = 7;
    const int nOutputs = (options.m_strOutput.empty() ? 0 : 1) + (options.m_strSave.empty() ? 0 : 1);
    Stages stages(stagesToFaces + nOutputs);
    Source source = stages.Run("read", [&] { return ReadSource(options); });
    if (auto* pMap = std::get_if<BorderMap>(&source)) return TraceAndDraw(options, std::move(*pMap), stages);
    stages.m_nStages = stagesToSource + nOutputs;
    DrawSaved(options, std::move(std::get<DrawnMap>(source)), stages);
}

int Run(int argc, char** argv) {
    Options options;
    if (const auto exitStatus = ReadCommandLine(argc, argv, options)) return *exitStatus;
    std::optional<StageLog> log;
    if (!options.m_strLog.empty()) log.emplace(options.m_strLog);
    const ProgressBar bar(!options.m_bQuiet);
    try {
        Work(options);
    } catch (const std::exception& error) {
        std::string strReason = error.what();
        if (dynamic_cast<const program::FileError*>(&error) == nullptr)
            strReason = program::FileError(program::NameOfInput(options.m_strInput), strReason).what();
        KySendEvent(WorkFails, const_cast<char*>(strReason.c_str()), StageMask);
        throw std::runtime_error(strReason);
    }
    return EXIT_SUCCESS;
}

}  // namespace
}  // namespace faces

int main(int argc, char** argv) {
    return program::Main("faces", [&] { return faces::Run(argc, argv); });
}
