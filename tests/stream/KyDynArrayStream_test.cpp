#include "VexaBase/stream/KyDynArrayStream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <climits>
#include <cstddef>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include "ByteModel.h"
#include "StreamKit.h"
#include "VexaBase/containers/KyDynPArray.h"
#include "tests/rx/Layout.h"

namespace {

using testing::ElementsAre;

static_assert(std::is_base_of_v<KyStream, KyDynArrayStream>);
static_assert(!std::is_copy_constructible_v<KyDynArrayStream> &&
              !std::is_copy_assignable_v<KyDynArrayStream>);

/// Position, length, and the bytes' count, cursor and capacity.
std::vector<long> State(const KyDynArrayStream& stream) {
    return {stream.m_nPos, stream.m_nLength, stream.m_bytes.m_nLength, stream.m_bytes.m_nCurIndex,
            stream.m_bytes.m_nCapacity};
}

// What it is

TEST(KyDynArrayStream, TheBytesStandBehindThePositionAndTheLength) {
    const KyDynArrayStream stream;

    EXPECT_EQ(OffsetOf(stream, stream.m_bytes), 24);
    EXPECT_EQ(sizeof(KyDynArrayStream), 24 + sizeof(KyDynArray<char>));
}

TEST(KyDynArrayStream, StartsEmptyWithoutStorage) {
    const KyDynArrayStream stream;

    EXPECT_THAT(State(stream), ElementsAre(0, 0, 0, -1, 0));
    EXPECT_EQ(stream.m_bytes.m_pData, nullptr);
    EXPECT_EQ(stream.m_bytes.m_nGrowBy, 1024);
}

TEST(KyDynArrayStream, ReservesACapacityAboveZero) {
    const KyDynArrayStream reserved(5);
    const KyDynArrayStream none(-5);

    EXPECT_THAT(State(reserved), ElementsAre(0, 0, 0, -1, 5));
    EXPECT_NE(reserved.m_bytes.m_pData, nullptr);
    EXPECT_THAT(State(none), ElementsAre(0, 0, 0, -1, 0));
    EXPECT_EQ(reserved.m_bytes.m_nGrowBy, 1024);
}

// Write

TEST(KyDynArrayStreamWrite, LeavesThePositionAndPutsTheCursorOnTheLastByte) {
    KyDynArrayStream stream;

    WriteBytes(stream, Codes({1, 2, 3}));

    EXPECT_THAT(State(stream), ElementsAre(0, 3, 3, 2, 1025));
    EXPECT_EQ(Bytes(stream), Codes({1, 2, 3}));
}

TEST(KyDynArrayStreamWrite, ATypedWriteBehindItOverwritesFromThePosition) {
    KyDynArrayStream stream;
    WriteBytes(stream, Codes({1, 2, 3}));

    stream.WriteChar(9);

    EXPECT_EQ(Bytes(stream), Codes({9, 2, 3}));
    EXPECT_THAT(State(stream), ElementsAre(1, 3, 3, 0, 1025));
}

TEST(KyDynArrayStreamWrite, PastTheEndLeavesAGap) {
    KyDynArrayStream stream;
    stream.MoveTo(10);

    stream.WriteChar('a');

    EXPECT_THAT(State(stream), ElementsAre(11, 11, 11, 10, 11 + 1024));
    EXPECT_EQ(Bytes(stream)[10], 'a');
}

TEST(KyDynArrayStreamWrite, OverTheEndOverwritesAndAppends) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcd");
    stream.MoveTo(2);

    WriteBytes(stream, "xyz");

    EXPECT_EQ(Bytes(stream), "abxyz");
    EXPECT_THAT(State(stream), ElementsAre(2, 5, 5, 4, 1025));
}

TEST(KyDynArrayStreamWrite, ACountBelowOneStoresNothingButTakesTheLengthFromTheBytes) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcd");
    char data[] = "xyz";
    stream.MoveTo(100);

    for (const long nCount : {0L, -1L, LONG_MIN}) {
        stream.m_nLength = 77;
        stream.Write(data, nCount);
        EXPECT_THAT(State(stream), ElementsAre(100, 4, 4, 3, 1025)) << nCount;
    }
    stream.Write(nullptr, 0);

    EXPECT_EQ(Bytes(stream), "abcd");
}

TEST(KyDynArrayStreamWrite, UsesTheReserveBeforeItGrows) {
    KyDynArrayStream stream(4);
    const char* const pBlock = stream.m_bytes.m_pData;

    WriteBytes(stream, "abcd");
    EXPECT_EQ(stream.m_bytes.m_pData, pBlock);
    EXPECT_EQ(stream.m_bytes.m_nCapacity, 4);

    stream.MoveTo(4);
    stream.WriteChar('e');
    EXPECT_EQ(stream.m_bytes.m_nCapacity, 5 + 1024);
    EXPECT_EQ(Bytes(stream), "abcde");
}

TEST(KyDynArrayStreamWrite, AMegabyteHasTheCapacityOfAMillionSingleBytes) {
    const std::string megabyte(1U << 20U, 'x');
    KyDynArrayStream atOnce;
    KyDynArrayStream single;

    WriteBytes(atOnce, megabyte);
    for (const char c : megabyte) {
        single << c;
    }

    EXPECT_EQ(atOnce.m_bytes.m_nCapacity, 1024 * 1025);
    EXPECT_EQ(single.m_bytes.m_nCapacity, 1024 * 1025);
    EXPECT_EQ(Bytes(atOnce), megabyte);
    EXPECT_EQ(Bytes(single), megabyte);
}

TEST(KyDynArrayStreamWrite, TheCapacityIsTheByteByByteRulesForEverySmallCase) {
    std::vector<std::vector<long>> wrong;
    const std::string data(40, 'x');

    for (long nGrowBy = 0; nGrowBy <= 5; ++nGrowBy) {
        for (long nCapacity = 0; nCapacity <= 6; ++nCapacity) {
            for (long nLength = 0; nLength <= 6; ++nLength) {
                for (long nPos = 0; nPos <= 9; ++nPos) {
                    for (long nCount = 0; nCount <= 20; ++nCount) {
                        KyDynArrayStream stream(nCapacity);
                        ByteModel model(nCapacity);
                        stream.m_bytes.m_nGrowBy = model.m_nGrowBy = nGrowBy;
                        WriteBytes(stream, data.substr(0, Size(nLength)));
                        model.Write(data.substr(0, Size(nLength)));
                        stream.MoveTo(nPos);
                        model.MoveTo(nPos);

                        WriteBytes(stream, data.substr(0, Size(nCount)));
                        model.Write(data.substr(0, Size(nCount)));

                        if (State(stream) != std::vector<long>{model.m_nPos, model.m_nLength, model.m_nCount,
                                                               model.m_nCursor, model.m_nCapacity}) {
                            wrong.push_back({nGrowBy, nCapacity, nLength, nPos, nCount});
                        }
                    }
                }
            }
        }
    }

    EXPECT_THAT(wrong, testing::IsEmpty());
}

TEST(KyDynArrayStreamWrite, TakesItsOwnBytesWhetherItGrowsOrNot) {
    KyDynArrayStream growing(4);
    KyDynArrayStream roomy(100);
    for (KyDynArrayStream* pStream : {&growing, &roomy}) {
        WriteBytes(*pStream, "abcd");
        pStream->MoveTo(4);

        pStream->Write(pStream->m_bytes.m_pData, 4);

        EXPECT_EQ(Bytes(*pStream), "abcdabcd");
    }
}

TEST(KyDynArrayStreamWrite, OwnBytesAreCopiedInAscendingOrder) {
    KyDynArrayStream up(100);
    WriteBytes(up, "abcdefgh");
    up.MoveTo(2);
    KyDynArrayStream upByOne(100);
    WriteBytes(upByOne, "abcdefgh");
    upByOne.MoveTo(1);
    KyDynArrayStream down(100);
    WriteBytes(down, "abcdefgh");

    up.Write(up.m_bytes.m_pData, 4);
    upByOne.Write(upByOne.m_bytes.m_pData, 4);
    down.Write(down.m_bytes.m_pData + 2, 4);

    EXPECT_EQ(Bytes(up), "abababgh") << "what was copied is copied again";
    EXPECT_EQ(Bytes(upByOne), "aaaaafgh");
    EXPECT_EQ(Bytes(down), "cdefefgh");
}

// Read

TEST(KyDynArrayStreamRead, CopiesFromThePositionAndPutsTheCursorBehindTheLastByte) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcdef");
    stream.MoveTo(2);

    EXPECT_EQ(ReadBytes(stream, 3), "cde");

    EXPECT_THAT(State(stream), ElementsAre(2, 6, 6, 5, 1025));
}

TEST(KyDynArrayStreamRead, StopsAtTheEndAndLeavesTheRestOfTheDestination) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcdef");
    stream.MoveTo(4);

    EXPECT_EQ(ReadBytes(stream, 5), "ef...");

    EXPECT_THAT(State(stream), ElementsAre(4, 6, 6, 6, 1025));
}

TEST(KyDynArrayStreamRead, ACountOfAnySizeStopsAtTheEnd) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcdef");
    stream.MoveTo(4);
    char data[] = "xyz";

    stream.Read(data, LONG_MAX);

    EXPECT_STREQ(data, "efz");
}

TEST(KyDynArrayStreamRead, AtOrBehindTheEndOnlyPutsTheCursorOnThePosition) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcdef");

    stream.MoveTo(6);
    EXPECT_EQ(ReadBytes(stream, 3), "...");
    EXPECT_EQ(stream.m_bytes.m_nCurIndex, 6);

    stream.MoveTo(LONG_MAX);
    EXPECT_EQ(ReadBytes(stream, 3), "...");
    EXPECT_EQ(stream.m_bytes.m_nCurIndex, LONG_MAX);
}

TEST(KyDynArrayStreamRead, ACountBelowOneOnlyPutsTheCursorOnThePosition) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcdef");
    stream.MoveTo(2);
    char data[] = "xyz";

    for (const long nCount : {0L, -1L, LONG_MIN}) {
        stream.m_bytes.m_nCurIndex = -1;
        stream.Read(data, nCount);
        EXPECT_EQ(stream.m_bytes.m_nCurIndex, 2) << nCount;
    }
    stream.Read(nullptr, 0);

    EXPECT_STREQ(data, "xyz");
}

TEST(KyDynArrayStreamRead, ANegativePositionCopiesNothing) {
    struct Unclamped : KyDynArrayStream {
        void MoveTo(long nPos) override { m_nPos = nPos; }
    };
    Unclamped stream;
    WriteBytes(stream, "abcdef");
    stream.MoveTo(-2);

    EXPECT_EQ(ReadBytes(stream, 3), "...");

    EXPECT_EQ(stream.m_bytes.m_nCurIndex, -2);
}

TEST(KyDynArrayStreamRead, AShortOverTheEndMovesPastIt) {
    KyDynArrayStream stream;
    WriteBytes(stream, Codes({1, 2, 3}));
    stream.MoveTo(2);
    short n = 0;

    stream >> n;

    EXPECT_EQ(n, 3);
    EXPECT_EQ(stream.GetPosition(), stream.GetLength() + 1);
}

// Reset

TEST(KyDynArrayStreamReset, KeepsTheStorage) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcdef");
    const char* const pBlock = stream.m_bytes.m_pData;
    stream.MoveTo(3);

    stream.Reset();

    EXPECT_THAT(State(stream), ElementsAre(0, 0, 0, -1, 1025));
    EXPECT_EQ(stream.m_bytes.m_pData, pBlock);
    EXPECT_EQ(pBlock[0], 'a') << "the old bytes are not cleared";
}

TEST(KyDynArrayStreamReset, AReadBehindItCopiesNothingAndMoves) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcdef");
    stream.Reset();
    char c = 'z';

    stream >> c;

    EXPECT_EQ(c, 'z');
    EXPECT_EQ(stream.GetPosition(), 1);
}

TEST(KyDynArrayStreamReset, MovesThroughTheVirtualTable) {
    struct Noting : KyDynArrayStream {
        void MoveTo(long nPos) override {
            m_moves.push_back(nPos);
            KyDynArrayStream::MoveTo(nPos);
        }
        std::vector<long> m_moves;
    };
    Noting stream;

    stream.Reset();

    EXPECT_THAT(stream.m_moves, ElementsAre(0));
}

// SetLength

TEST(KyDynArrayStreamSetLength, ShorteningKeepsTheFirstBytes) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcdefghij");

    stream.SetLength(4);

    EXPECT_EQ(Bytes(stream), "abcd");
    EXPECT_THAT(State(stream), ElementsAre(0, 4, 4, 9, 4));
}

TEST(KyDynArrayStreamSetLength, LengtheningKeepsThemAndTakesExactlyTheLength) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcdefghij");
    stream.SetLength(4);

    stream.SetLength(20);

    EXPECT_EQ(Bytes(stream).substr(0, 4), "abcd");
    EXPECT_THAT(State(stream), ElementsAre(0, 20, 20, 9, 20));
}

TEST(KyDynArrayStreamSetLength, TheCapacityIsWhatIsCompared) {
    KyDynArrayStream stream(10);
    WriteBytes(stream, "abcd");
    const char* const pBlock = stream.m_bytes.m_pData;

    stream.SetLength(10);
    EXPECT_EQ(stream.m_bytes.m_pData, pBlock);
    EXPECT_THAT(State(stream), ElementsAre(0, 10, 10, 3, 10));

    WriteBytes(stream, "");
    stream.SetLength(4);
    stream.SetLength(4);
    EXPECT_EQ(Bytes(stream), "abcd");
}

TEST(KyDynArrayStreamSetLength, ZeroReleasesTheStorage) {
    KyDynArrayStream stream(10);

    stream.SetLength(0);

    EXPECT_THAT(State(stream), ElementsAre(0, 0, 0, -1, 0));
    EXPECT_EQ(stream.m_bytes.m_pData, nullptr);
}

TEST(KyDynArrayStreamSetLength, ANegativeLengthIsStoredAsItIs) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcd");

    stream.SetLength(-5);

    EXPECT_THAT(State(stream), ElementsAre(0, -5, -5, 3, -5));
    EXPECT_EQ(stream.m_bytes.m_pData, nullptr);
    EXPECT_EQ(ReadBytes(stream, 2), "..");

    stream << 'z';
    EXPECT_THAT(State(stream), ElementsAre(1, 1, 1, 0, 1025));
    EXPECT_EQ(Bytes(stream), "z");
}

TEST(KyDynArrayStreamSetLength, LeavesThePositionAndTheCursorWhereTheyAre) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcdefghij");
    stream.MoveTo(8);

    stream.SetLength(2);

    EXPECT_THAT(State(stream), ElementsAre(8, 2, 2, 9, 2));
}

// In an owning array

TEST(KyDynArrayStream, AnArrayOfStreamsHasNoOrderToSortBy) {
    KyDynPArray<KyDynArrayStream> streams;
    for (long n = 3; n > 0; --n) {
        streams.Append(new KyDynArrayStream(n));
    }

    streams.Sort(true);
    streams.Sort(false);

    std::vector<long> capacities;
    for (const KyDynArrayStream* pStream : streams) {
        capacities.push_back(pStream->m_bytes.m_nCapacity);
    }
    EXPECT_THAT(capacities, ElementsAre(3, 2, 1));
}

// Any sequence of operations

bool Agree(const KyDynArrayStream& stream, const ByteModel& model) {
    return State(stream) == std::vector<long>{model.m_nPos, model.m_nLength, model.m_nCount, model.m_nCursor,
                                              model.m_nCapacity} &&
           BytesAgree(stream.m_bytes.m_pData, model.m_bytes);
}

RC_GTEST_PROP(KyDynArrayStreamModel, AnySequenceOfOperationsFollowsTheByteByByteRule, ()) {
    const long nCapacity = *rc::gen::inRange(-1L, 20L);
    KyDynArrayStream stream(nCapacity);
    ByteModel model(nCapacity);
    stream.m_bytes.m_nGrowBy = model.m_nGrowBy = *rc::gen::element(0L, 1L, 2L, 5L, 16L, 1024L);
    const int nOperations = *rc::gen::inRange(0, 100);
    for (int i = 0; i < nOperations; ++i) {
        const long nCount = *rc::gen::inRange(-2L, 50L);
        switch (*rc::gen::inRange(0, 9)) {
            case 0:
            case 1: {
                const long nPos = *rc::gen::inRange(-3L, 80L);
                stream.MoveTo(nPos);
                model.MoveTo(nPos);
                break;
            }
            case 2:
            case 3: {
                std::string data = *rc::gen::container<std::string>(Size(nCount), rc::gen::arbitrary<char>());
                data.reserve(1);
                stream.Write(data.data(), nCount);
                model.Write(data);
                break;
            }
            case 4: {
                std::string data(Size(nCount), '.');
                stream.Read(data.data(), nCount);
                const ReadResult result = model.Read(nCount);
                RC_ASSERT(BytesAgree(data.data(), result.m_bytes));
                RC_ASSERT(data.substr(result.m_bytes.size()) ==
                          std::string(data.size() - result.m_bytes.size(), '.'));
                break;
            }
            case 5: {
                const long nValue = *rc::gen::arbitrary<long>();
                stream << nValue;
                model.Write(std::string(reinterpret_cast<const char*>(&nValue), sizeof(nValue)));
                model.MoveTo(model.m_nPos + 8);
                break;
            }
            case 6: {
                short nValue = 0x5555;
                stream >> nValue;
                const ReadResult result = model.Read(2);
                model.MoveTo(model.m_nPos + 2);
                RC_ASSERT(BytesAgree(reinterpret_cast<const char*>(&nValue), result.m_bytes));
                break;
            }
            case 7:
                stream.SetLength(nCount);
                model.SetLength(nCount);
                break;
            default:
                if (nCount % 3 != 0) break;
                stream.Reset();
                model.Reset();
                break;
        }
        RC_ASSERT(Agree(stream, model));
    }
}

TEST(KyDynArrayStream, IsMadeFromEmptyBraces) {
    struct Holder {
        KyDynArrayStream m_stream;
    };

    const Holder holder = {};

    EXPECT_EQ(holder.m_stream.m_bytes.m_nCapacity, 0);
    EXPECT_EQ(holder.m_stream.m_bytes.m_nGrowBy, 1024);
}

}  // namespace
