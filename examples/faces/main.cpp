// faces: traces every face of a map out of its bare border lines, and draws them.
//
// The stages, one file each: read the lines (MapReader), make them plane (Noding), build the graph and set
// apart what bounds no face (PlaneMap), trace the faces and put holes where they belong (Faces), find the
// file's areas again among them (RingMatch), draw (Colouring, SvgWriter) and write (OutputFile).
#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>

#include "examples/faces/Faces.h"
#include "examples/faces/MapReader.h"
#include "examples/faces/Noding.h"
#include "examples/faces/OutputFile.h"
#include "examples/faces/PlaneMap.h"
#include "examples/faces/Progress.h"
#include "examples/faces/Report.h"
#include "examples/faces/RingMatch.h"
#include "examples/faces/SvgWriter.h"

namespace faces {
namespace {

struct Options {
    std::string m_strInput;
    std::string m_strOutput;
    std::string m_strTitle;
    std::string m_strYAxis = "auto";
    ReadOptions m_read;
    bool m_bStrict = false;
    bool m_bVerbose = false;
    bool m_bQuiet = false;
};

constexpr int ExitFailure = 1;
constexpr int ExitUsage = 2;

/// The exit status if the program is to end here.
std::optional<int> ReadCommandLine(int argc, char** argv, Options& options) {
    CLI::App app("Traces every face of a map out of its bare border lines, and draws them.");
    app.add_option("map", options.m_strInput, "a TopoJSON or GeoJSON file; - for standard input")->required();
    app.add_option("-o,--output", options.m_strOutput, "the SVG file to write; - for standard output");
    app.add_option("--title", options.m_strTitle, "the picture's title (the file's name if not given)");
    app.add_option("--object", options.m_read.m_strObject,
                   "of a TopoJSON file, take this object's lines and areas only");
    app.add_option(
           "--grid", options.m_read.m_nGrid,
           "cells along the map's longer side (a quantized file's own grid, or 1000000, if not given)")
        ->check(CLI::Range(1, MaxCoordinate));
    app.add_option(
           "--y", options.m_strYAxis,
           "where y grows in the picture; auto is up for longitude and latitude, down for anything else")
        ->check(CLI::IsMember({"auto", "up", "down"}));
    app.add_flag("--strict", options.m_bStrict, "fail if borders cross or overlap, instead of noding them");
    CLI::Option* pVerbose =
        app.add_flag("-v,--verbose", options.m_bVerbose, "list every place that noding changed");
    app.add_flag("-q,--quiet", options.m_bQuiet, "print nothing but errors")->excludes(pVerbose);
    app.set_version_flag("--version", std::string("faces ") + VEXABASE_VERSION);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) {
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        std::cerr << "faces: " << error.what() << " (--help tells more)\n";
        return ExitUsage;
    }
    std::error_code error;
    if (std::filesystem::equivalent(options.m_strInput, options.m_strOutput, error)) {
        std::cerr << "faces: " << options.m_strOutput
                  << ": the output would replace the map (--help tells more)\n";
        return ExitUsage;
    }
    return std::nullopt;
}

std::string NameOfInput(const Options& options) {
    return options.m_strInput == "-" ? "standard input" : options.m_strInput;
}

/// Runs the stages one by one, shows them in the progress bar and takes their times.
class Stages {
public:
    Stages(bool bShown, int nStages) : m_progress(bShown, nStages) {}

    template <class Work>
    auto Run(const char* pszStage, const Work& work) {
        m_progress.Next(pszStage);
        const auto begin = std::chrono::steady_clock::now();
        auto result = work();
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begin;
        m_times.emplace_back(pszStage, taken.count());
        return result;
    }

    Progress m_progress;
    std::vector<std::pair<std::string, double>> m_times;
};

void RefuseCrossings(const std::vector<ChangedPlace>& places, const Grid& grid) {
    for (const ChangedPlace& place : places) {
        const bool bPlane = place.m_kind != ChangeKind::Crossing && place.m_kind != ChangeKind::Overlap;
        if (!bPlane) throw MapError("the borders are not plane: " + Describe(place, grid));
    }
}

/// What is wrong with a file, named.
class FileError : public std::runtime_error {
public:
    FileError(const std::string& strFile, const std::string& strReason)
        : runtime_error(strFile + ": " + strReason) {}
};

void WriteOutput(const std::string& strFile, const std::string& strText) {
    try {
        WriteWhole(strFile, strText);
    } catch (const std::exception& error) {
        throw FileError(strFile == "-" ? "standard output" : strFile, error.what());
    }
}

std::string Subtitle(const FaceMap& faceMap, const PlaneMap& plane) {
    return WithCommas(static_cast<long>(faceMap.m_faces.size())) + " faces, traced out of " +
           WithCommas(static_cast<long>(plane.m_arcs.size())) + " border segments between " +
           WithCommas(static_cast<long>(plane.m_nodes.size())) + " points in " +
           WithCommas(static_cast<long>(plane.m_firstNodes.size())) + " components";
}

void TraceAndDraw(const Options& options) {
    const bool bDraw = !options.m_strOutput.empty();
    Stages stages(!options.m_bQuiet, bDraw ? 8 : 7);

    BorderMap map = stages.Run("read", [&] { return ReadMap(ReadText(options.m_strInput), options.m_read); });
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
    FaceMap faceMap = stages.Run(
        "trace", [&] { return FaceMap(*pPlane, [&](double dDone) { stages.m_progress.Show(dDone); }); });
    stages.Run("locate holes", [&] { return faceMap.LocateHoles(), true; });
    if (!faceMap.CountForEuler().Holds())
        throw MapError("Euler's formula does not hold: the map is not plane");
    const RingMatch match = stages.Run("match rings", [&] { return MatchRings(map, noded, faceMap); });

    const std::string strName = NameOfInput(options);
    if (bDraw) {
        const std::string strTitle = !options.m_strTitle.empty()
                                         ? options.m_strTitle
                                         : std::filesystem::path(strName).filename().string();
        const std::string strSvg = stages.Run("draw", [&] {
            return DrawSvg({map, faceMap, match, strTitle, Subtitle(faceMap, *pPlane)});
        });
        WriteOutput(options.m_strOutput, strSvg);
    }
    stages.m_progress.Clear();
    if (options.m_bQuiet) return;
    std::ostream& out = options.m_strOutput == "-" ? std::cerr : std::cout;
    PrintReport(out, strName,
                {map, distinct, noded, places, *pPlane, faceMap, match, nDeadEnds, nBridges, stages.m_times},
                options.m_bVerbose);
    if (!out.flush()) throw FileError("standard output", "cannot be written");
}

int Run(int argc, char** argv) {
    Options options;
    if (const auto exitStatus = ReadCommandLine(argc, argv, options)) return *exitStatus;
    try {
        TraceAndDraw(options);
    } catch (const FileError&) {
        throw;
    } catch (const std::exception& error) {
        throw FileError(NameOfInput(options), error.what());
    }
    return EXIT_SUCCESS;
}

}  // namespace
}  // namespace faces

int main(int argc, char** argv) {
    try {
        return faces::Run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "faces: %s\n", error.what());
    }
    return faces::ExitFailure;
}
