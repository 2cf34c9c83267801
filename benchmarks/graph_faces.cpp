// Tracing the faces of maps: the county map beside GEOS's polygonizer, and how time and memory grow with
// random plane maps.
//
// Both are given the same noded segments and go from there to faces with their holes, all that they allocate
// included (and freed again, but for what they return). The growth is of building and tracing alone.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <stdexcept>
#include <vector>

#include "examples/faces/Faces.h"
#include "examples/faces/Geos.h"
#include "examples/faces/MapReader.h"
#include "examples/faces/Noding.h"
#include "examples/faces/PlaneMap.h"

namespace {

using faces::Geos;
using faces::Segment;

const std::vector<Segment>& CountySegments() {
    static const std::vector<Segment> segments = [] {
        const faces::BorderMap map = faces::ReadMap(faces::ReadText(FACES_COUNTY_MAP), {});
        return faces::NodeSegments(faces::SegmentsOf(map.m_lines).m_segments).m_segments;
    }();
    return segments;
}

/// A map and its faces, which are kept so that their memory can be counted.
struct Traced {
    explicit Traced(const std::vector<Segment>& segments) {
        m_pMap = std::make_unique<faces::PlaneMap>(segments);
        m_pMap->PruneDeadEnds();
        m_pMap->MarkBridges();
        m_pFaces = std::make_unique<faces::FaceMap>(*m_pMap);
        m_pFaces->LocateHoles();
    }

    std::unique_ptr<faces::PlaneMap> m_pMap;
    std::unique_ptr<faces::FaceMap> m_pFaces;
};

std::vector<Geos::Geometry> GeosLines(const Geos& geos, const std::vector<Segment>& segments) {
    std::vector<Geos::Geometry> lines;
    lines.reserve(segments.size());
    for (const Segment& segment : segments) lines.push_back(geos.NewLine(segment.m_from, segment.m_to));
    return lines;
}

void CountyMap_VexaBase(benchmark::State& state) {
    const std::vector<Segment>& segments = CountySegments();
    std::size_t nFaces = 0;
    for (auto _ : state) {
        const Traced traced(segments);
        nFaces = traced.m_pFaces->m_faces.size();
        benchmark::DoNotOptimize(nFaces);
    }
    state.counters["faces"] = static_cast<double>(nFaces);
}
BENCHMARK(CountyMap_VexaBase)->Unit(benchmark::kMillisecond);

/// GEOS is given its own line objects ready-made; making them is not timed.
void CountyMap_Geos(benchmark::State& state) {
    const Geos geos;
    const std::vector<Geos::Geometry> lines = GeosLines(geos, CountySegments());
    std::vector<const GEOSGeometry*> pointers;
    pointers.reserve(lines.size());
    for (const Geos::Geometry& pLine : lines) pointers.push_back(pLine.get());
    int nFaces = 0;
    for (auto _ : state) {
        const Geos::Geometry pPolygons =
            geos.Own(GEOSPolygonize_r(geos, pointers.data(), static_cast<unsigned int>(pointers.size())));
        nFaces = GEOSGetNumGeometries_r(geos, pPolygons.get());
        benchmark::DoNotOptimize(nFaces);
    }
    state.counters["faces"] = static_cast<double>(nFaces);
}
BENCHMARK(CountyMap_Geos)->Unit(benchmark::kMillisecond);

/// A lattice with its points displaced at random, some of its lines left out and some of its cells cut
/// across. Points move by less than a quarter of a cell, so no lines cross.
std::vector<Segment> RandomPlaneMap(long nSegments) {
    constexpr int cell = 1000;
    constexpr double segmentsAPoint = 2.5;
    const int nSide = static_cast<int>(std::sqrt(static_cast<double>(nSegments) / segmentsAPoint));
    std::mt19937 random(1);
    std::uniform_int_distribution<int> shift(-cell / 4 + 1, cell / 4 - 1);
    std::uniform_int_distribution<int> percent(0, 99);
    std::vector<faces::Line> columns(static_cast<std::size_t>(nSide) + 1);
    for (int nX = 0; nX <= nSide; ++nX) {
        for (int nY = 0; nY <= nSide; ++nY) {
            const int nShiftX = shift(random);
            columns[static_cast<std::size_t>(nX)].push_back(
                {cell * (nX + 1) + nShiftX, cell * (nY + 1) + shift(random)});
        }
    }
    const auto at = [&](int nX, int nY) {
        return columns[static_cast<std::size_t>(nX)][static_cast<std::size_t>(nY)];
    };
    std::vector<Segment> segments;
    for (int nX = 0; nX < nSide; ++nX) {
        for (int nY = 0; nY < nSide; ++nY) {
            if (percent(random) < 85) segments.emplace_back(at(nX, nY), at(nX + 1, nY));
            if (percent(random) < 85) segments.emplace_back(at(nX, nY), at(nX, nY + 1));
            const int nAcross = percent(random);
            if (nAcross < 40) segments.emplace_back(at(nX, nY), at(nX + 1, nY + 1));
            if (nAcross >= 60) segments.emplace_back(at(nX + 1, nY), at(nX, nY + 1));
        }
    }
    std::sort(segments.begin(), segments.end());
    return segments;
}

double HeapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

/// Freeing the map is left out of the time. The counters are per segment, so they stay the same if growth is
/// linear.
void RandomMap_BuildAndTrace(benchmark::State& state) {
    const std::vector<Segment> segments = RandomPlaneMap(state.range(0));
    const auto nSegments = static_cast<double>(segments.size());
    double dBytes = 0;
    for (auto _ : state) {
        const double dBefore = HeapInUse();
        auto pTraced = std::make_unique<Traced>(segments);
        state.PauseTiming();
        dBytes = HeapInUse() - dBefore;
        if (!pTraced->m_pFaces->CountForEuler().Holds())
            throw std::logic_error("Euler's formula does not hold");
        pTraced.reset();
        malloc_trim(0);
        state.ResumeTiming();
    }
    state.counters["segments"] = nSegments;
    state.counters["bytes_per_segment"] = dBytes / nSegments;
    state.counters["time_per_segment"] = benchmark::Counter(
        nSegments, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(RandomMap_BuildAndTrace)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
