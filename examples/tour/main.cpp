// tour: looks for the shortest closed tour through cities, with a genetic algorithm on the library's classes.
//
// What it is made of, one file each: the cities are read (TimeZones, TsplibFile) into an Instance; tours
// breed and mutate (Tour) and are shortened (LocalSearch) generation by generation (Solver), on islands that
// exchange their best tours if asked to (Migration, Islands); the result is written (TsplibFile) and drawn
// (Picture).
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>

#include "examples/program/CommandLine.h"
#include "examples/program/FileError.h"
#include "examples/program/InputFile.h"
#include "examples/program/OutputFile.h"
#include "examples/tour/Picture.h"
#include "examples/tour/Solver.h"
#include "examples/tour/TimeZones.h"
#include "examples/tour/TsplibFile.h"
#include "examples/tour/Watchers.h"

namespace tour {
namespace {

struct Options : program::CommonOptions {
    std::string m_strInput;
    std::string m_strTourFile;
    Settings m_settings;
    std::optional<double> m_dTimeLimit;
    bool m_bIslands = false;
};

constexpr long UsualStagnation = 100;

/// The exit status if the program is to end here.
std::optional<int> ReadCommandLine(int argc, char** argv, Options& options) {
    CLI::App app("Looks for the shortest closed tour through cities.", "tour");
    Settings& settings = options.m_settings;
    const auto positive = program::Within(1L, 1000000000L);
    app.add_option(
        "instance", options.m_strInput,
        "a TSPLIB file, - for standard input; the cities of the system's time-zone table if not given");
    program::AddCommonOptions(app, options, "the SVG picture to write",
                              "tell of every generation on standard error");
    app.add_option("--tour-out", options.m_strTourFile,
                   "the tour file to write, in TSPLIB's format; - for standard output");
    app.add_option("--generations", settings.m_nGenerations, "stop after so many generations")
        ->check(program::Within(0L, 1000000000L));
    app.add_option("--time-limit", options.m_dTimeLimit, "stop after so many seconds")
        ->check(CLI::Range(0.0, 1e7).description("0 to 10000000"));
    app.add_option("--stagnation", settings.m_limits.m_nStagnation,
                   "stop after so many generations without a shorter tour (" +
                       std::to_string(UsualStagnation) + " if no other limit is given)")
        ->check(positive);
    app.add_option("--target", settings.m_limits.m_nTarget, "stop at a tour of this length or less");
    app.add_option("--seed", settings.m_nSeed, "the same one gives the same tour, unless time decides")
        ->capture_default_str();
    app.add_option("--population", settings.m_nPopSize, "tours that survive a generation, over all islands")
        ->check(program::Within(1L, 1000000L))
        ->capture_default_str();
    app.add_option("--mutation-rate", settings.m_nMutationRate,
                   "mutants a generation, in percent of the population")
        ->check(program::Within(0L, 10000L))
        ->capture_default_str();
    CLI::Option* pIslands =
        app.add_flag("--islands", options.m_bIslands, "one population for each process of mpirun");
    app.add_option("--migrate-every", settings.m_nMigrationInterval, "generations between migrations")
        ->check(positive)
        ->capture_default_str()
        ->needs(pIslands);
    app.add_option("--migrants", settings.m_nMigrants, "tours that migrate at a time")
        ->check(program::Within(1L, 1000L))
        ->capture_default_str()
        ->needs(pIslands);
    const auto exitStatus = program::ReadCommandLine(app, argc, argv, [&options] {
        program::CheckFiles({options.m_strInput}, {options.m_strOutput, options.m_strTourFile});
    });
    if (exitStatus) {
        return exitStatus;
    }
    if (!settings.m_nGenerations && !options.m_dTimeLimit && !settings.m_limits.m_nStagnation) {
        settings.m_limits.m_nStagnation = UsualStagnation;
    }
    if (options.m_bIslands && !Islands::AreBuilt()) {
        throw std::runtime_error("--islands: this program was built without MPI");
    }
    return std::nullopt;
}

Instance ReadInstance(const Options& options) {
    const std::string strFile = options.m_strInput.empty() ? TimeZoneTable : options.m_strInput;
    return program::About(program::NameOfInput(strFile), [&] {
        const std::string strText = program::ReadWhole(strFile);
        return options.m_strInput.empty()
                   ? ReadTimeZones(strText)
                   : ReadTsplib(strText,
                                std::filesystem::path(program::NameOfInput(strFile)).stem().string());
    });
}

/// So that a mistyped name is not found out after the work.
void CheckFolder(const std::string& strFile) {
    if (strFile.empty() || strFile == "-") {
        return;
    }
    if (!std::filesystem::is_directory(std::filesystem::absolute(strFile).parent_path())) {
        throw program::FileError(strFile, "there is no such folder");
    }
}

void Write(const std::string& strFile, const std::string& strText) {
    program::About(program::NameOfOutput(strFile), [&] { program::WriteWhole(strFile, strText); });
}

std::string Seconds(std::chrono::duration<double> duration) {
    char sz[32];
    std::snprintf(sz, sizeof(sz), "%.1f s", duration.count());
    return sz;
}

void WriteResults(const Options& options, const Instance& instance, const Result& result,
                  const History& history) {
    if (!options.m_strTourFile.empty()) {
        Write(options.m_strTourFile, TsplibTour(instance, result.m_order));
    }
    if (!options.m_strOutput.empty()) {
        const std::string strSubtitle = std::to_string(instance.Cities()) + " cities, a tour of length " +
                                        std::to_string(result.m_nLength) + " after " +
                                        std::to_string(result.m_nGenerations) + " generations";
        const std::string strTitle =
            options.m_strInput.empty() ? "A tour of the world's time zones" : instance.Name();
        Write(options.m_strOutput,
              DrawSvg({instance, result.m_order, history.m_generations, strTitle, strSubtitle}));
    }
}

void FindAndWrite(Options& options, const Islands& islands) {
    const auto begin = Limits::Clock::now();
    if (options.m_dTimeLimit) {
        options.m_settings.m_limits.m_deadline =
            begin + std::chrono::duration_cast<Limits::Clock::duration>(
                        std::chrono::duration<double>(*options.m_dTimeLimit));
    }
    CheckFolder(options.m_strOutput);
    CheckFolder(options.m_strTourFile);
    const Instance instance = ReadInstance(options);
    const bool bFirst = islands.Rank() == 0;
    History history;
    const Result result = [&] {
        const StatusLine line(bFirst && !options.m_bQuiet && !options.m_bVerbose);
        std::optional<Chronicle> chronicle;
        if (bFirst && options.m_bVerbose) {
            chronicle.emplace();
        }
        return Solve(instance, options.m_settings, islands);
    }();
    if (result.m_nRefused > 0) {
        std::cerr << "tour: island " << islands.Rank() << " refused " << result.m_nRefused
                  << " broken migrants\n";
    }
    if (!bFirst) {
        return;
    }
    WriteResults(options, instance, result, history);
    if (options.m_bQuiet) {
        return;
    }
    std::ostream& out = options.m_strOutput == "-" || options.m_strTourFile == "-" ? std::cerr : std::cout;
    out << instance.Name() << ": " << instance.Cities() << " cities, length " << result.m_nLength << ", "
        << result.m_nGenerations << " generations, " << Seconds(Limits::Clock::now() - begin);
    if (islands.Count() > 1) {
        out << ", " << islands.Count() << " islands";
    }
    if (!(out << std::endl)) {
        throw program::FileError("standard output", "cannot be written");
    }
}

int Run(int argc, char** argv) {
    Options options;
    if (const auto exitStatus = ReadCommandLine(argc, argv, options)) {
        return *exitStatus;
    }
    const Islands islands(argc, argv, options.m_bIslands);
    try {
        FindAndWrite(options, islands);
    } catch (const std::exception& error) {
        // What ends one island ends them all: one of them says so, before any leaves.
        if (islands.Rank() == 0) {
            std::cerr << "tour: " << error.what() << '\n';
        }
        return program::ExitFailure;
    }
    return EXIT_SUCCESS;
}

}  // namespace
}  // namespace tour

int main(int argc, char** argv) {
    return program::Main("tour", [&] { return tour::Run(argc, argv); });
}
