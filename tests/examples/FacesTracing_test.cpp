#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <set>

#include "FacesTestKit.h"
#include "VexaBase/event/KyScopedReactor.h"
#include "examples/faces/Events.h"
#include "examples/faces/Faces.h"
#include "examples/faces/Geos.h"
#include "examples/faces/MapReader.h"
#include "examples/faces/Noding.h"
#include "examples/program/InputFile.h"

namespace faces {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Pairs = std::vector<std::pair<long, long>>;

TEST(FacesTracing, AnEmptyMapHasNoFaces) {
    const TracedMap traced(std::vector<Segment>{});

    EXPECT_THAT(traced.m_faces.m_faces, IsEmpty());
    EXPECT_TRUE(traced.m_faces.CountForEuler().Holds());
}

TEST(FacesTracing, ATriangleHasAnInsideAndAnOutside) {
    const TracedMap traced(Rings({{{0, 0}, {4, 0}, {0, 3}}}));

    EXPECT_THAT(traced.TwiceAreas(), ElementsAre(12));
    EXPECT_THAT(traced.m_faces.m_walks, SizeIs(2));
    EXPECT_THAT(traced.m_faces.m_holes, IsEmpty());
    EXPECT_EQ(traced.m_faces.TwiceTotalArea(), 12);
}

TEST(FacesTracing, ABoundedFaceIsWalkedCounterclockwise) {
    const TracedMap traced(Rings({{{0, 0}, {4, 0}, {0, 3}}}));

    const Walk& walk = traced.m_faces.m_walks[traced.m_faces.m_faces[0].m_nOuterWalk];

    EXPECT_THAT(traced.m_faces.PointsOf(walk),
                ElementsAre(GridPoint{0, 3}, GridPoint{0, 0}, GridPoint{4, 0}));
    EXPECT_EQ(walk.m_nTwiceArea, 12);
}

TEST(FacesTracing, ADiagonalPartsASquareIntoNeighbours) {
    std::vector<Segment> segments = Rings({Square(0, 10)});
    segments.emplace_back(GridPoint{0, 0}, GridPoint{10, 10});

    const TracedMap traced(segments);

    EXPECT_THAT(traced.TwiceAreas(), ElementsAre(100, 100));
    EXPECT_EQ(traced.m_faces.Neighbours(), (Pairs{{0, 1}}));
}

TEST(FacesTracing, FacesThatMeetInAPointAreNoNeighbours) {
    const TracedMap traced(Rings({Square(0, 10), Square(10, 20)}));

    EXPECT_THAT(traced.TwiceAreas(), ElementsAre(200, 200));
    EXPECT_THAT(traced.m_faces.Neighbours(), IsEmpty());
}

TEST(FacesTracing, ARingInsideAFaceIsAHoleOfItAndItsNeighbour) {
    const TracedMap traced(Rings({Square(0, 100), Square(40, 60)}));

    EXPECT_THAT(traced.TwiceAreas(), ElementsAre(2 * 400, 2 * (10'000 - 400)));
    EXPECT_THAT(traced.m_faces.m_holes, SizeIs(1));
    EXPECT_EQ(traced.m_faces.Neighbours(), (Pairs{{0, 1}}));
    EXPECT_EQ(traced.m_faces.TwiceTotalArea(), 20'000);
}

TEST(FacesTracing, AComponentIsAHoleOfTheInnermostFaceAroundIt) {
    const TracedMap traced(Rings({Square(0, 100), Square(10, 90), Square(20, 80), Square(110, 120)}));

    EXPECT_THAT(traced.TwiceAreas(), ElementsAre(2 * 100, 2 * (6400 - 3600), 2 * (10'000 - 6400), 2 * 3600));
    EXPECT_THAT(traced.m_faces.m_holes, SizeIs(2));
}

TEST(FacesTracing, AFaceCanHaveManyHolesOfManyFaces) {
    std::vector<Line> rings{Square(0, 100)};
    for (int i = 0; i < 9; ++i) rings.push_back(Square(5 + 10 * i, 10 + 10 * i));
    std::vector<Segment> segments = Rings(rings);
    segments.emplace_back(GridPoint{5, 5}, GridPoint{10, 10});

    const TracedMap traced(segments);

    EXPECT_THAT(traced.m_faces.m_holes, SizeIs(9));
    EXPECT_EQ(traced.TwiceAreas().back(), 2 * (10'000 - 9 * 25));
    EXPECT_THAT(traced.m_faces.m_faces, SizeIs(1 + 9 + 1));
}

TEST(FacesTracing, AComponentBesideAFaceWithinItsBoxIsNoHole) {
    // A hook around a square that lies outside of it.
    const Line hook = {{0, 0}, {100, 0}, {100, 100}, {90, 100}, {90, 10}, {0, 10}};

    const TracedMap traced(Rings({hook, Square(30, 60)}));

    EXPECT_THAT(traced.m_faces.m_holes, IsEmpty());
    EXPECT_THAT(traced.m_faces.Neighbours(), IsEmpty());
}

TEST(FacesTracing, ARingHeldByABridgeIsPartOfTheFacesBoundary) {
    std::vector<Segment> segments = Rings({Square(0, 100), Square(40, 60)});
    segments.emplace_back(GridPoint{0, 0}, GridPoint{40, 40});

    const TracedMap traced(segments);

    EXPECT_EQ(traced.m_nBridges, 1);
    EXPECT_THAT(traced.m_faces.m_holes, IsEmpty());
    EXPECT_THAT(traced.TwiceAreas(), ElementsAre(2 * 400, 2 * (10'000 - 400)));
    EXPECT_EQ(traced.m_faces.Neighbours(), (Pairs{{0, 1}}));
    EXPECT_THAT(traced.m_faces.m_walks, SizeIs(3));
}

TEST(FacesTracing, ABridgeIsWalkedOnBothSidesByOneFace) {
    std::vector<Segment> segments = Rings({Square(0, 10), Square(30, 40)});
    segments.emplace_back(GridPoint{10, 10}, GridPoint{30, 30});

    const TracedMap traced(segments);

    const auto nBridge =
        static_cast<Side>(std::find(traced.m_map.m_isBridge.begin(), traced.m_map.m_isBridge.end(), true) -
                          traced.m_map.m_isBridge.begin());
    EXPECT_EQ(traced.m_faces.WalkOf(2 * nBridge), traced.m_faces.WalkOf(2 * nBridge + 1));
    EXPECT_EQ(traced.m_faces.FaceOf(2 * nBridge), FaceMap::Outside);
    EXPECT_THAT(traced.TwiceAreas(), ElementsAre(200, 200));
}

TEST(FacesTracing, DeadEndsAreOnNoWalk) {
    std::vector<Segment> segments = Rings({Square(0, 10)});
    segments.emplace_back(GridPoint{10, 10}, GridPoint{15, 15});

    const TracedMap traced(segments);

    EXPECT_EQ(traced.m_faces.WalkOf(8), FaceMap::NoWalk);
    EXPECT_EQ(traced.m_faces.FaceOf(9), FaceMap::Outside);
}

TEST(FacesTracing, TheFarthestCornersOfTheGridAreExact) {
    const TracedMap traced(Rings({Square(0, MaxCoordinate)}));

    EXPECT_THAT(traced.TwiceAreas(), ElementsAre(2L * MaxCoordinate * MaxCoordinate));
}

TEST(FacesTracing, LinesThatCrossAreFoundOut) {
    // A square and both its diagonals, not noded: no drawing of it in the plane has these directions.
    std::vector<Segment> segments = Rings({Square(0, 10)});
    segments.insert(segments.end(), {{{0, 0}, {10, 10}}, {{0, 10}, {10, 0}}});
    segments = Sorted(segments);
    PlaneMap map(segments);
    map.PruneDeadEnds();
    map.MarkBridges();

    EXPECT_FALSE(FaceMap(map).CountForEuler().Holds());
}

TEST(FacesTracing, ProgressGrowsFromNothing) {
    const auto segments = RandomLattice(1, 60, 90);
    PlaneMap map(segments);
    map.PruneDeadEnds();
    map.MarkBridges();
    class Listener : public KyEventReactor {
    public:
        Listener() : KyEventReactor(PartMask) {}

        void React(const wchar_t* pszName, void* pData) override {
            EXPECT_STREQ(pszName, PartDone);
            m_told.push_back(*static_cast<double*>(pData));
        }

        std::vector<double> m_told;
    };
    Listener listener;
    const KyScopedReactor listening(listener);

    const FaceMap faceMap(map);

    const std::vector<double>& told = listener.m_told;
    EXPECT_GT(told.size(), 1U);
    EXPECT_EQ(told.front(), 0);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_LT(told.back(), 1);
}

/// Twice the areas of the polygons that GEOS makes of the same segments, ascending.
std::vector<long> TwiceAreasByGeos(const std::vector<Segment>& segments) {
    const Geos geos;
    std::vector<Geos::Geometry> lines;
    std::vector<const GEOSGeometry*> pointers;
    for (const Segment& segment : segments) {
        lines.push_back(geos.NewLine(segment.m_from, segment.m_to));
        pointers.push_back(lines.back().get());
    }
    const Geos::Geometry pPolygons =
        geos.Own(GEOSPolygonize_r(geos, pointers.data(), static_cast<unsigned int>(pointers.size())));
    std::vector<long> areas;
    for (int i = 0; i < GEOSGetNumGeometries_r(geos, pPolygons.get()); ++i) {
        double dArea = 0;
        GEOSArea_r(geos, GEOSGetGeometryN_r(geos, pPolygons.get(), i), &dArea);
        areas.push_back(std::lround(2 * dArea));
    }
    std::sort(areas.begin(), areas.end());
    return areas;
}

RC_GTEST_PROP(FacesTracing, FacesAreThePolygonsOfGeos, ()) {
    const int nExtent = *rc::gen::element(10, 100, 1000);
    const auto segments =
        NodeSegments(RandomSegments(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 80), nExtent))
            .m_segments;

    const TracedMap traced(segments);

    RC_ASSERT(traced.m_faces.CountForEuler().Holds());
    RC_ASSERT(traced.TwiceAreas() == TwiceAreasByGeos(segments));
}

RC_GTEST_PROP(FacesTracing, FacesOfMapsWithManyHolesAreThePolygonsOfGeos, ()) {
    const auto segments = RandomLattice(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 20),
                                        *rc::gen::inRange(20, 100));

    const TracedMap traced(segments);

    RC_ASSERT(traced.m_faces.CountForEuler().Holds());
    RC_ASSERT(traced.TwiceAreas() == TwiceAreasByGeos(segments));
}

RC_GTEST_PROP(FacesTracing, EverySideLiesOnOneWalkAndWalksAreClosed, ()) {
    const auto segments = RandomLattice(*rc::gen::arbitrary<unsigned int>(), *rc::gen::inRange(1, 20),
                                        *rc::gen::inRange(20, 100));

    const TracedMap traced(segments);

    const FaceMap& faceMap = traced.m_faces;
    std::set<Side> seen;
    for (std::size_t nWalk = 0; nWalk < faceMap.m_walks.size(); ++nWalk) {
        const Walk& walk = faceMap.m_walks[nWalk];
        for (unsigned int i = 0; i < walk.m_nLength; ++i) {
            const Side nSide = faceMap.m_sides[walk.m_nFirst + i];
            const Side nNext = faceMap.m_sides[walk.m_nFirst + (i + 1) % walk.m_nLength];
            RC_ASSERT(seen.insert(nSide).second);
            RC_ASSERT(faceMap.WalkOf(nSide) == nWalk);
            RC_ASSERT(traced.m_map.End(nSide) == traced.m_map.Start(nNext));
        }
        RC_ASSERT(!traced.m_map.m_isBridge[ArcOf(faceMap.m_sides[walk.m_nFirst])]);
    }
    RC_ASSERT(seen.size() == 2 * (segments.size() - static_cast<std::size_t>(traced.m_nDeadEnds)));
}

TEST(FacesTracing, TheCountiesAreThePolygonsOfGeos) {
    const BorderMap map = ReadMap(program::ReadWhole(FACES_COUNTY_MAP), {});
    const auto segments = NodeSegments(SegmentsOf(map.m_lines).m_segments).m_segments;

    const TracedMap traced(segments);

    EXPECT_EQ(traced.TwiceAreas(), TwiceAreasByGeos(segments));
    EXPECT_THAT(traced.m_faces.m_faces, SizeIs(3306));
    EXPECT_THAT(traced.m_faces.m_holes, SizeIs(13));
}

}  // namespace
}  // namespace faces
