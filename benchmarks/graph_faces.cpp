// Building plane maps from their segments and tracing all faces, beside other libraries, and how time and
// memory grow with the map. A case's name is job/case/library/size; the size is a number of segments, about.
//
// All start from the same noded segments, which all bound faces, and count the same bounded faces. In order
// means ascending; ours then goes the way of the example faces, which adds nodes and arcs in order, and
// makes components that lie in faces of others their holes, as GEOS's polygonizer does. Unordered, it is the
// graph that sorts and makes unique whatever comes. Whoever wants line or curve objects gets them ready-made.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "FreeMemory.h"
#include "VexaBase/graph/KyGraphPath.h"
#include "examples/faces/Faces.h"
#include "examples/faces/Geos.h"
#include "examples/faces/MapReader.h"
#include "examples/faces/Noding.h"
#include "examples/faces/PlaneMap.h"
#include "examples/faces/PointIndex.h"
#include "examples/program/InputFile.h"
#include "tests/examples/RandomLattice.h"

#if defined(VEXABASE_HAS_BOOST_GRAPH)
#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/planar_face_traversal.hpp>
#endif
#if defined(VEXABASE_HAS_CGAL)
#include <CGAL/Arr_non_caching_segment_traits_2.h>
#include <CGAL/Arrangement_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#endif

namespace {

using faces::Geos;
using faces::GridPoint;
using faces::Segment;
using Segments = std::vector<Segment>;

/// The segments that bound a face, so without dead ends and bridges.
Segments Bounding(const Segments& segments) {
    faces::PlaneMap map(segments);
    map.PruneDeadEnds();
    map.MarkBridges();
    Segments bounding;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        if (!map.m_isDeadEnd[i] && !map.m_isBridge[i]) bounding.push_back(segments[i]);
    }
    return bounding;
}

/// A lattice with displaced points, from which some lines are left out and which some lines cut across.
Segments RandomMap(long nSegments) {
    constexpr int percent = 85;
    constexpr double segmentsACell = 3 * percent / 100.0;
    const double dSide = std::sqrt(static_cast<double>(nSegments) / segmentsACell);
    return Bounding(faces::RandomLattice(1, static_cast<int>(dSide), percent));
}

/// A lattice of squares.
Segments GridMap(long nSegments) {
    constexpr int cell = 100;
    const int nSide = static_cast<int>(std::sqrt(static_cast<double>(nSegments) / 2));
    Segments segments;
    for (int x = 0; x <= nSide; ++x) {
        for (int y = 0; y <= nSide; ++y) {
            const GridPoint point{cell * x, cell * y};
            if (y < nSide) segments.emplace_back(point, GridPoint{point.x, point.y + cell});
            if (x < nSide) segments.emplace_back(point, GridPoint{point.x + cell, point.y});
        }
    }
    return segments;
}

/// The borders of the counties, whatever the size asked for.
Segments RealBorders(long /*nSegments*/) {
    static const Segments segments = [] {
        const faces::BorderMap map = faces::ReadMap(program::ReadWhole(FACES_COUNTY_MAP), {});
        return Bounding(faces::NodeSegments(faces::SegmentsOf(map.m_lines).m_segments).m_segments);
    }();
    return segments;
}

/// How a map's segments come.
template <Segments (*pfnMap)(long)>
struct InOrder {
    static constexpr const char* pszName = "";
    static Segments Make(long nSegments) { return pfnMap(nSegments); }
};
template <Segments (*pfnMap)(long)>
struct Unordered {
    static constexpr const char* pszName = ", unordered";
    static Segments Make(long nSegments) {
        Segments segments = pfnMap(nSegments);
        std::shuffle(segments.begin(), segments.end(), std::mt19937(2));
        return segments;
    }
};

/// Each class below is a library, made for given segments: it builds the map and traces its faces, two steps
/// where the library keeps them apart, and returns the number of the bounded ones.
class Ours {
public:
    explicit Ours(const Segments& segments) : m_segments(segments) {}

    std::size_t BuildAndTrace() {
        Build();
        Trace();
        m_pFaces->LocateHoles();
        return m_pFaces->m_faces.size();
    }
    void Build() {
        m_pMap = std::make_unique<faces::PlaneMap>(m_segments);
        m_pMap->PruneDeadEnds();
        m_pMap->MarkBridges();
    }
    std::size_t Trace() {
        m_pFaces = std::make_unique<faces::FaceMap>(*m_pMap);
        return m_pFaces->m_faces.size();
    }
    void Free() {
        m_pFaces.reset();
        m_pMap.reset();
    }

    const Segments& m_segments;
    std::unique_ptr<faces::PlaneMap> m_pMap;
    std::unique_ptr<faces::FaceMap> m_pFaces;
};

/// The plain way: each segment is an arc with two nodes of its own, which the graph makes unique.
class OursByCreate {
public:
    explicit OursByCreate(const Segments& segments) : m_segments(segments) {}

    std::size_t BuildAndTrace() {
        Build();
        return Trace();
    }

    void Build() {
        m_pGraph = std::make_unique<KyGraph>();
        unsigned int nIndex = 0;
        for (const Segment& segment : m_segments) {
            m_pGraph->Create(new faces::MapArc(new faces::MapNode(segment.m_from),
                                               new faces::MapNode(segment.m_to), nIndex++));
        }
    }

    std::size_t Trace() {
        for (KyGraphArc* pArc : m_pGraph->m_lstArc) {
            pArc->m_nBits = 0;
        }
        std::size_t nBounded = 0;
        for (KyGraphArc* pArc : m_pGraph->m_lstArc) {
            for (const int nDir : {KyGraphArc::Forward, KyGraphArc::Backward}) {
                if ((pArc->m_nBits & 1UL << nDir) == 0) nBounded += TraceFace(*pArc, nDir) > 0 ? 1 : 0;
            }
        }
        return nBounded;
    }

    void Free() { m_pGraph.reset(); }

private:
    /// Marks the sides of the arcs around a face, and returns twice its area.
    static long TraceFace(KyGraphArc& arc, int nDir) {
        const std::unique_ptr<const KyGraphPath> pPath(arc.FindMesh(nDir));
        const auto* const pBegin = static_cast<const faces::MapNode*>(pPath->m_pBeginNode);
        const faces::MapNode* pAt = pBegin;
        long nTwiceArea = 0;
        for (KyGraphArc* pStep : *pPath) {
            const bool bForward = pStep->m_pStart == pAt;
            pStep->m_nBits |= 1UL << (bForward ? KyGraphArc::Forward : KyGraphArc::Backward);
            const auto* const pNext =
                static_cast<const faces::MapNode*>(bForward ? pStep->m_pEnd : pStep->m_pStart);
            nTwiceArea += faces::Cross(pBegin->m_point, pAt->m_point, pNext->m_point);
            pAt = pNext;
        }
        return nTwiceArea;
    }

    const Segments& m_segments;
    std::unique_ptr<KyGraph> m_pGraph;
};

class GeosPolygonizer {
public:
    explicit GeosPolygonizer(const Segments& segments) {
        for (const Segment& segment : segments) {
            m_lines.push_back(m_geos.NewLine(segment.m_from, segment.m_to));
            m_pointers.push_back(m_lines.back().get());
        }
    }
    std::size_t BuildAndTrace() {
        m_pPolygons = m_geos.Own(
            GEOSPolygonize_r(m_geos, m_pointers.data(), static_cast<unsigned int>(m_pointers.size())));
        return static_cast<std::size_t>(GEOSGetNumGeometries_r(m_geos, m_pPolygons.get()));
    }
    void Free() { m_pPolygons.reset(); }

private:
    Geos m_geos;
    std::vector<Geos::Geometry> m_lines;
    std::vector<const GEOSGeometry*> m_pointers;
    Geos::Geometry m_pPolygons{nullptr, {m_geos}};
};

#if defined(VEXABASE_HAS_BOOST_GRAPH)
class BoostGraph {
public:
    explicit BoostGraph(const Segments& segments) : m_segments(segments) {}

    std::size_t BuildAndTrace() {
        Build();
        return Trace();
    }

    void Build() {
        if (std::is_sorted(m_segments.begin(), m_segments.end())) {
            m_pIndex = std::make_unique<faces::PointIndex>(m_segments);
        } else {
            m_pIndex = std::make_unique<faces::PointIndex>(faces::Sorted(m_segments));
        }
        const std::size_t nPoints = m_pIndex->Points().size();
        m_pGraph = std::make_unique<Graph>(nPoints);
        m_around.assign(nPoints, {});
        int nEdge = 0;
        for (const Segment& segment : m_segments) {
            const std::size_t from = m_pIndex->Find(segment.m_from);
            const std::size_t to = m_pIndex->Find(segment.m_to);
            const auto edge = boost::add_edge(from, to, nEdge++, *m_pGraph).first;
            m_around[from].push_back(edge);
            m_around[to].push_back(edge);
        }
        for (std::size_t nPoint = 0; nPoint < nPoints; ++nPoint) {
            const GridPoint centre = Point(nPoint);
            const auto farPoint = [&](const Edge& edge) {
                const std::size_t nSource = boost::source(edge, *m_pGraph);
                return Point(nSource != nPoint ? nSource : boost::target(edge, *m_pGraph));
            };
            std::sort(m_around[nPoint].begin(), m_around[nPoint].end(), [&](const Edge& a, const Edge& b) {
                const GridPoint farA = farPoint(a);
                const GridPoint farB = farPoint(b);
                const bool bGreaterA = centre < farA;
                const bool bGreaterB = centre < farB;
                return bGreaterA != bGreaterB ? bGreaterB : faces::Cross(centre, farA, farB) < 0;
            });
        }
    }

    std::size_t Trace() {
        FaceCounter counter(*this);
        boost::planar_face_traversal(*m_pGraph, m_around.data(), counter,
                                     boost::get(boost::edge_index, *m_pGraph));
        return counter.m_nBounded;
    }

    void Free() {
        m_pGraph.reset();
        m_pIndex.reset();
        m_around = {};
    }

private:
    using Graph = boost::adjacency_list<boost::vecS, boost::vecS, boost::undirectedS, boost::no_property,
                                        boost::property<boost::edge_index_t, int>>;
    using Edge = boost::graph_traits<Graph>::edge_descriptor;

    struct FaceCounter : boost::planar_face_traversal_visitor {
        explicit FaceCounter(const BoostGraph& graph) : m_graph(graph) {}
        void begin_face() { m_points.clear(); }
        void next_vertex(std::size_t nPoint) { m_points.push_back(m_graph.Point(nPoint)); }
        void end_face() {
            long nTwiceArea = 0;
            for (std::size_t i = 0; i < m_points.size(); ++i)
                nTwiceArea += faces::Cross(m_points[0], m_points[i], m_points[(i + 1) % m_points.size()]);
            if (nTwiceArea > 0) ++m_nPositive;
            if (nTwiceArea < 0) ++m_nNegative;
            m_nBounded = std::max(m_nPositive, m_nNegative);
        }
        const BoostGraph& m_graph;
        std::vector<GridPoint> m_points;
        std::size_t m_nPositive = 0;
        std::size_t m_nNegative = 0;
        std::size_t m_nBounded = 0;
    };

    GridPoint Point(std::size_t nPoint) const { return m_pIndex->Points()[nPoint]; }

    const Segments& m_segments;
    std::unique_ptr<faces::PointIndex> m_pIndex;
    std::unique_ptr<Graph> m_pGraph;
    std::vector<std::vector<Edge>> m_around;
};
#endif

#if defined(VEXABASE_HAS_CGAL)
class CgalArrangement {
public:
    explicit CgalArrangement(const Segments& segments) {
        for (const Segment& segment : segments) {
            m_curves.emplace_back(Kernel::Point_2(segment.m_from.x, segment.m_from.y),
                                  Kernel::Point_2(segment.m_to.x, segment.m_to.y));
        }
    }
    std::size_t BuildAndTrace() {
        m_pArrangement = std::make_unique<Arrangement>();
        CGAL::insert_non_intersecting_curves(*m_pArrangement, m_curves.begin(), m_curves.end());
        return m_pArrangement->number_of_faces() - m_pArrangement->number_of_unbounded_faces();
    }
    void Free() { m_pArrangement.reset(); }

private:
    using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
    using Traits = CGAL::Arr_non_caching_segment_traits_2<Kernel>;
    using Arrangement = CGAL::Arrangement_2<Traits>;

    std::vector<Traits::X_monotone_curve_2> m_curves;
    std::unique_ptr<Arrangement> m_pArrangement;
};
#endif

/// Freeing is not timed.
template <class Library, class Map>
void BuildAndTrace(benchmark::State& state) {
    const Segments segments = Map::Make(state.range(0));
    Library library(segments);
    for (auto _ : state) {
        benchmark::DoNotOptimize(library.BuildAndTrace());
        state.PauseTiming();
        library.Free();
        MergeFreeMemory();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(segments.size()));
}

template <class Library, class Map>
void TraceAlone(benchmark::State& state) {
    const Segments segments = Map::Make(state.range(0));
    Library library(segments);
    library.Build();
    for (auto _ : state) {
        benchmark::DoNotOptimize(library.Trace());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(segments.size()));
}

double HeapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

/// The counters are per segment, so they stay the same if growth is linear.
void Growth(benchmark::State& state) {
    const Segments segments = RandomMap(state.range(0));
    const auto nSegments = static_cast<double>(segments.size());
    double dBytes = 0;
    for (auto _ : state) {
        const double dBefore = HeapInUse();
        Ours ours(segments);
        ours.BuildAndTrace();
        state.PauseTiming();
        dBytes = HeapInUse() - dBefore;
        if (!ours.m_pFaces->CountForEuler().Holds()) throw std::logic_error("Euler's formula does not hold");
        ours.Free();
        malloc_trim(0);
        state.ResumeTiming();
    }
    state.counters["segments"] = nSegments;
    state.counters["bytes_per_segment"] = dBytes / nSegments;
    state.counters["time_per_segment"] = benchmark::Counter(
        nSegments, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// Stops unless a library finds the faces that ours does.
template <class Library>
void CheckFaces(const std::string& sLibrary, const Segments& segments) {
    Ours ours(segments);
    Library library(segments);
    const std::size_t nExpected = ours.BuildAndTrace();
    const std::size_t nFaces = library.BuildAndTrace();
    if (nFaces != nExpected) {
        std::fprintf(stderr, "%s: %zu faces, ours: %zu\n", sLibrary.c_str(), nFaces, nExpected);
        std::abort();
    }
}

benchmark::internal::Benchmark* Register(const std::string& sCase, const std::string& sLibrary,
                                         void (*pfnCase)(benchmark::State&)) {
    return benchmark::RegisterBenchmark(("graph/" + sCase + "/" + sLibrary).c_str(), pfnCase);
}

void WithThreeSizes(benchmark::internal::Benchmark* pCase) { pCase->Arg(1'000)->Arg(10'000)->Arg(100'000); }

template <class Library, template <Segments (*)(long)> class Order>
void RegisterFaces(const std::string& sLibrary) {
    CheckFaces<Library>(sLibrary, GridMap(2'000));
    CheckFaces<Library>(sLibrary, RandomMap(2'000));
    const std::string sOrder = Order<GridMap>::pszName;
    Register("faces of a grid" + sOrder, sLibrary, BuildAndTrace<Library, Order<GridMap>>)
        ->Apply(WithThreeSizes);
    Register("faces of a random map" + sOrder, sLibrary, BuildAndTrace<Library, Order<RandomMap>>)
        ->Apply(WithThreeSizes);
    Register("faces of real borders" + sOrder, sLibrary, BuildAndTrace<Library, Order<RealBorders>>)
        ->Arg(static_cast<long>(RealBorders(0).size()));
}

template <class Library, template <Segments (*)(long)> class Order>
void RegisterTracing(const std::string& sLibrary) {
    const std::string sOrder = Order<GridMap>::pszName;
    Register("tracing alone, grid" + sOrder, sLibrary, TraceAlone<Library, Order<GridMap>>)
        ->Apply(WithThreeSizes);
    Register("tracing alone, random map" + sOrder, sLibrary, TraceAlone<Library, Order<RandomMap>>)
        ->Apply(WithThreeSizes);
}

const bool bRegistered = [] {
    RegisterFaces<Ours, InOrder>("ours");
    RegisterFaces<OursByCreate, Unordered>("ours");
    RegisterTracing<Ours, InOrder>("ours");
    RegisterTracing<OursByCreate, Unordered>("ours");
    RegisterFaces<GeosPolygonizer, InOrder>("GEOS polygonizer");
    RegisterFaces<GeosPolygonizer, Unordered>("GEOS polygonizer");
#if defined(VEXABASE_HAS_BOOST_GRAPH)
    RegisterFaces<BoostGraph, InOrder>("Boost.Graph");
    RegisterFaces<BoostGraph, Unordered>("Boost.Graph");
    RegisterTracing<BoostGraph, InOrder>("Boost.Graph");
    RegisterTracing<BoostGraph, Unordered>("Boost.Graph");
#endif
#if defined(VEXABASE_HAS_CGAL)
    RegisterFaces<CgalArrangement, InOrder>("CGAL arrangement");
    RegisterFaces<CgalArrangement, Unordered>("CGAL arrangement");
#endif
    Register("growth, random map", "ours", Growth)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);
    return true;
}();

}  // namespace
