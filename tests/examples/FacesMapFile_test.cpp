#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>

#include "FacesTestKit.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"
#include "examples/faces/MapFile.h"
#include "examples/faces/SvgWriter.h"

namespace faces {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::size_t versionPos = 8;
constexpr std::size_t lengthPos = 16;
constexpr std::size_t titlePos = 24;

std::string ReadBytes(const std::string& strFile) {
    std::ifstream file(strFile, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The map in FACES_WARDS.
const std::string golden = ReadBytes(FACES_SAVED_WARDS);

std::string BytesOf(const DrawnMap& map) {
    KyDynArrayStream stream;
    SaveMap(map, stream);
    return {stream.m_bytes.m_pData, static_cast<std::size_t>(stream.GetLength())};
}

DrawnMap Load(std::string strBytes) {
    KyDynArrayStream stream;
    stream.Write(strBytes.data(), static_cast<long>(strBytes.size()));
    return LoadMap(stream);
}

/// Why the bytes are refused; empty if they are not.
std::string Refusal(const std::string& strBytes) {
    try {
        Load(strBytes);
    } catch (const MapError& error) {
        return error.what();
    }
    return "";
}

long LongAt(const std::string& strBytes, std::size_t nPos) {
    long n = 0;
    std::memcpy(&n, strBytes.data() + nPos, sizeof n);
    return n;
}

std::string WithLong(std::string strBytes, std::size_t nPos, long n) {
    std::memcpy(strBytes.data() + nPos, &n, sizeof n);
    return strBytes;
}

/// Where the counts and numbers of the golden file stand.
struct Places {
    Places() {
        m_grid = titlePos + 8 + static_cast<std::size_t>(LongAt(golden, titlePos));
        m_components = m_grid + 4 * 8 + 1 + 4 * 8;
        m_points = m_components + 8;
        m_arcs = m_points + 8 + 16 * CountAt(m_points);
        m_names = m_arcs + 8 + 17 * CountAt(m_arcs);
        m_walks = m_names + 8;
        for (std::size_t n = CountAt(m_names); n > 0; --n) m_walks += 8 + CountAt(m_walks);
        m_faces = m_walks + 8;
        for (std::size_t n = CountAt(m_walks); n > 0; --n) m_faces += 8 + 8 * CountAt(m_faces);
    }
    static std::size_t CountAt(std::size_t nPos) { return static_cast<std::size_t>(LongAt(golden, nPos)); }

    std::size_t m_grid;
    std::size_t m_components;
    std::size_t m_points;
    std::size_t m_arcs;
    std::size_t m_names;
    std::size_t m_walks;
    std::size_t m_faces;
};

/// The golden file with one thing changed in the map.
std::string RefusalOfChanged(const std::function<void(DrawnMap&)>& change) {
    DrawnMap map = Load(golden);
    change(map);
    return Refusal(BytesOf(map));
}

TEST(FacesMapFile, TheGoldenFileIsReadToTheLetter) {
    const DrawnMap map = Load(golden);

    EXPECT_EQ(map.m_strTitle, "wards.geo.json");
    EXPECT_TRUE(map.m_bYUp);
    EXPECT_EQ(map.m_grid.m_dStepX, 0.1);
    EXPECT_EQ(map.m_low, (GridPoint{0, 0}));
    EXPECT_EQ(map.m_high, (GridPoint{450, 100}));
    EXPECT_EQ(map.m_points.size(), 15U);
    EXPECT_EQ(map.m_arcs.size(), 17U);
    EXPECT_EQ(map.CountArcs(ArcKind::DeadEnd), 1);
    EXPECT_EQ(map.CountArcs(ArcKind::Bridge), 1);
    EXPECT_EQ(map.m_nComponents, 2);
    EXPECT_THAT(map.m_names, ElementsAre("Ward 10", "Ward 9", "\xc3\x8ele"));
    EXPECT_EQ(map.m_faces.size(), 4U);
    EXPECT_EQ(map.CountHoles(), 1);
    EXPECT_EQ(map.m_walks.size(), 6U);
}

TEST(FacesMapFile, TheGoldenFileComesBackByteForByte) { EXPECT_EQ(BytesOf(Load(golden)), golden); }

TEST(FacesMapFile, TheHeaderIsMagicVersionAndLength) {
    EXPECT_THAT(golden, StartsWith("\x89VXB\r\n\x1a\n"));
    EXPECT_EQ(LongAt(golden, versionPos), 1);
    EXPECT_EQ(LongAt(golden, lengthPos), static_cast<long>(golden.size()));
}

TEST(FacesMapFile, EveryStreamGivesTheSameBytes) {
    const DrawnMap map = Load(golden);
    for (const long nChunkSize : {1L, 7L, 100'000L}) {
        KyDynArrayStreamEx chunked(nChunkSize);
        SaveMap(map, chunked);
        std::string strBytes(static_cast<std::size_t>(chunked.GetLength()), '\0');
        chunked.MoveTo(0);
        chunked.Read(strBytes.data(), chunked.GetLength());
        EXPECT_EQ(strBytes, golden);
        EXPECT_EQ(BytesOf(LoadMap(chunked)), golden);
    }
    EXPECT_EQ(BytesOf(LoadMapFile(FACES_SAVED_WARDS)), golden);
}

TEST(FacesMapFile, ALoadedMapIsDrawnLikeTheTracedOne) {
    for (const unsigned int nSeed : {1U, 2U, 3U}) {
        const TracedMap traced(RandomLattice(nSeed, 12, 70));
        BorderMap map;
        for (const Segment& segment : traced.m_segments) {
            map.m_lines.push_back({segment.m_from, segment.m_to});
        }
        map.m_areas = {{"one", {}}, {"two", {}}, {"one", {}}};
        RingMatch match;
        match.m_areaOfFace.assign(traced.m_faces.m_faces.size(), RingMatch::NoArea);
        match.m_areaOfFace[0] = 2;
        match.m_areaOfFace[1] = 1;
        const DrawnMap drawn(map, traced.m_faces, match, "lattice");

        const DrawnMap loaded = Load(BytesOf(drawn));

        EXPECT_EQ(DrawSvg(loaded), DrawSvg(drawn));
        EXPECT_EQ(loaded.Neighbours(), traced.m_faces.Neighbours());
        EXPECT_EQ(BytesOf(loaded), BytesOf(drawn));
    }
}

TEST(FacesMapFile, ATitleThatIsNoUtf8IsSavedValid) {
    const TracedMap traced(Rings({Square(0, 10)}));
    BorderMap map;
    map.m_lines = {Square(0, 10)};
    RingMatch match;
    match.m_areaOfFace = {RingMatch::NoArea};

    const DrawnMap drawn(map, traced.m_faces, match, "a\xff");

    EXPECT_EQ(Load(BytesOf(drawn)).m_strTitle, "a\xef\xbf\xbd");
}

TEST(FacesMapFile, EveryTruncationIsRefusedAsSuch) {
    for (std::size_t n = 0; n < golden.size(); ++n) {
        EXPECT_THAT(Refusal(golden.substr(0, n)), StartsWith("the saved map is truncated: ")) << n;
    }
}

TEST(FacesMapFile, EveryTruncationIsRefusedEvenIfTheLengthIsMadeToFit) {
    for (std::size_t n = titlePos; n < golden.size(); ++n) {
        const std::string strCut = WithLong(golden.substr(0, n), lengthPos, static_cast<long>(n));
        EXPECT_THAT(Refusal(strCut), StartsWith("the saved map is damaged: ")) << n;
    }
}

TEST(FacesMapFile, BytesBehindTheEndAreRefused) {
    EXPECT_THAT(Refusal(golden + "x"), HasSubstr("1 bytes stand behind its end"));
    EXPECT_THAT(Refusal(WithLong(golden + "x", lengthPos, static_cast<long>(golden.size()) + 1)),
                HasSubstr("goes on behind its faces"));
}

TEST(FacesMapFile, AForeignFileIsRefused) {
    EXPECT_EQ(Refusal("<svg></svg>"), "this is no map saved by faces");
    EXPECT_EQ(Refusal("x"), "this is no map saved by faces");
    std::string strUnixLines = golden;
    strUnixLines.erase(4, 1);
    EXPECT_EQ(Refusal(strUnixLines), "this is no map saved by faces");
}

TEST(FacesMapFile, ANewerVersionIsRefusedWhateverFollows) {
    EXPECT_EQ(Refusal(WithLong(golden, versionPos, 2)),
              "the saved map is of version 2, newer than this program's, which is 1");
    EXPECT_THAT(Refusal(WithLong(golden, versionPos, 2).substr(0, 16)), HasSubstr("newer"));
    EXPECT_THAT(Refusal(WithLong(golden, versionPos, 0)), HasSubstr("version 0"));
}

TEST(FacesMapFile, NoCountIsTrusted) {
    const Places places;
    for (const std::size_t nPos :
         {titlePos, places.m_points, places.m_arcs, places.m_names, places.m_names + 8, places.m_walks,
          places.m_walks + 8, places.m_faces, places.m_faces + 8 + 16}) {
        for (const long n : {-1L, 1'000'000L, 2'147'483'647L, 1L << 40, std::numeric_limits<long>::max(),
                             std::numeric_limits<long>::min()}) {
            EXPECT_THAT(Refusal(WithLong(golden, nPos, n)), StartsWith("the saved map is damaged: "))
                << n << " at " << nPos;
        }
    }
}

TEST(FacesMapFile, ANumberThatMakesNoSenseIsRefused) {
    const auto refusal = &RefusalOfChanged;

    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_strTitle = "\xff"; }), HasSubstr("title is no UTF-8"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_grid.m_dX = 1.0 / 0.0; }), HasSubstr("no extent"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_grid.m_dStepX = map.m_grid.m_dStepY = 0; }),
                HasSubstr("no extent"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_grid.m_dStepX = map.m_grid.m_dStepY = 1e-310; }),
                HasSubstr("no extent"));
    EXPECT_THAT(refusal([](DrawnMap& map) { std::swap(map.m_low, map.m_high); }), HasSubstr("reversed"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_high.x = MaxCoordinate + 1; }),
                HasSubstr("extent 26843545"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_low.x = 1; }), HasSubstr("outside its extent"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_nComponents = 3; }), HasSubstr("Euler"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_nComponents = -1; }), HasSubstr("components -1"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_points[1] = map.m_points[0]; }),
                HasSubstr("points are out of order"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_arcs[0].m_nTo = 15; }), HasSubstr("arc 15"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_arcs[0].m_nTo = map.m_arcs[0].m_nFrom; }),
                HasSubstr("arcs are out of order"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_arcs[1] = map.m_arcs[0]; }),
                HasSubstr("arcs are out of order"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_arcs[0].m_kind = static_cast<ArcKind>('x'); }),
                HasSubstr("unknown kind"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_arcs[0].m_kind = ArcKind::DeadEnd; }),
                HasSubstr("along a dead end"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_names[1] = map.m_names[0]; }), HasSubstr("there twice"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_names[1] = "\xc3"; }), HasSubstr("name is no UTF-8"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_sides[1] = map.m_sides[0]; }), HasSubstr("share a side"));
    EXPECT_THAT(refusal([](DrawnMap& map) { std::swap(map.m_sides[0], map.m_sides[1]); }), HasSubstr("torn"));
    EXPECT_THAT(refusal([](DrawnMap& map) { --map.m_walks[0].m_nLength; }), HasSubstr("not closed"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_walks[0].m_nLength = 0; }), HasSubstr("walk is empty"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_sides[0] = 34; }), HasSubstr("side 34"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_walks.pop_back(); }), HasSubstr("on no walk"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_faces[1] = map.m_faces[0]; }), HasSubstr("share a walk"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_faces[0].m_nOuterWalk = 6; }), HasSubstr("walk 6"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_faces[0].m_nName = 3; }), HasSubstr("name 3"));
    EXPECT_THAT(refusal([](DrawnMap& map) { map.m_faces[0].m_nName = -2; }), HasSubstr("name -2"));
}

TEST(FacesMapFile, AFlippedBitIsRefusedOrDrawsAPicture) {
    for (std::size_t nBit = 0; nBit < 8 * golden.size(); ++nBit) {
        std::string strBytes = golden;
        strBytes[nBit / 8] = static_cast<char>(strBytes[nBit / 8] ^ (1 << nBit % 8));
        try {
            const DrawnMap map = Load(strBytes);

            EXPECT_THAT(DrawSvg(map), StartsWith("<svg ")) << nBit;
        } catch (const MapError&) {
            SUCCEED();
        }
    }
}

TEST(FacesMapFile, AFileIsASavedMapByItsNameOrItsMagic) {
    EXPECT_TRUE(IsMapFile(FACES_SAVED_WARDS));
    EXPECT_FALSE(IsMapFile(FACES_WARDS));
    EXPECT_FALSE(IsMapFile("none.vxb"));
}

}  // namespace
}  // namespace faces
