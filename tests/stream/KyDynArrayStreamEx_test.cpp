#include "VexaBase/stream/KyDynArrayStreamEx.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <climits>
#include <cstddef>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "ByteModel.h"
#include "StreamKit.h"
#include "tests/rx/Layout.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

static_assert(std::is_base_of_v<KyStream, KyDynArrayStreamEx>);
static_assert(!std::is_base_of_v<KyDynArrayStream, KyDynArrayStreamEx>);
static_assert(!std::is_copy_constructible_v<KyDynArrayStreamEx> &&
              !std::is_copy_assignable_v<KyDynArrayStreamEx>);
static_assert(!std::is_convertible_v<long, KyDynArrayStreamEx>);

/// Position, length, number of chunks and their array's cursor.
std::vector<long> State(const KyDynArrayStreamEx& stream) {
    return {stream.m_nPos, stream.m_nLength, stream.m_chunks.m_nLength, stream.m_chunks.m_nCurIndex};
}

std::vector<std::string> Chunks(const KyDynArrayStreamEx& stream) {
    std::vector<std::string> chunks;
    for (const KyDynArrayStream* pChunk : stream.m_chunks) {
        chunks.push_back(Bytes(*pChunk));
    }
    return chunks;
}

// What it is

TEST(KyDynArrayStreamEx, TheChunkSizeAndTheChunksStandBehindThePositionAndTheLength) {
    const KyDynArrayStreamEx stream(4);

    EXPECT_THAT((std::vector<long>{OffsetOf(stream, stream.m_nChunkSize), OffsetOf(stream, stream.m_chunks)}),
                ElementsAre(24, 32));
    EXPECT_EQ(sizeof(KyDynArrayStreamEx), 32 + sizeof(KyDynPArray<KyDynArrayStream>));
}

TEST(KyDynArrayStreamEx, StartsWithoutChunks) {
    const KyDynArrayStreamEx stream(4);

    EXPECT_THAT(State(stream), ElementsAre(0, 0, 0, -1));
    EXPECT_EQ(stream.m_nChunkSize, 4);
    EXPECT_EQ(stream.m_chunks.m_pData, nullptr);
    EXPECT_EQ(stream.m_chunks.m_nGrowBy, 1024);
}

// Write

TEST(KyDynArrayStreamExWrite, FillsChunkAfterChunk) {
    KyDynArrayStreamEx stream(4);

    WriteBytes(stream, "abcdefghij");

    EXPECT_THAT(State(stream), ElementsAre(0, 10, 3, 3));
    EXPECT_EQ(Chunks(stream)[0], "abcd");
    EXPECT_EQ(Chunks(stream)[1], "efgh");
    EXPECT_EQ(Chunks(stream)[2].substr(0, 2), "ij");
    EXPECT_EQ(ReadBytes(stream, 10), "abcdefghij");
}

TEST(KyDynArrayStreamExWrite, OverAChunksEndIsSplit) {
    KyDynArrayStreamEx stream(4);
    stream.MoveTo(3);

    WriteBytes(stream, "xyz");

    EXPECT_THAT(State(stream), ElementsAre(3, 6, 2, 2));
    EXPECT_EQ(Chunks(stream)[0].substr(3), "x");
    EXPECT_EQ(Chunks(stream)[1].substr(0, 2), "yz");
}

TEST(KyDynArrayStreamExWrite, ToAChunksEndMakesNoFurtherChunk) {
    KyDynArrayStreamEx stream(4);

    WriteBytes(stream, "abcdefgh");

    EXPECT_THAT(State(stream), ElementsAre(0, 8, 2, 2));
}

TEST(KyDynArrayStreamExWrite, EveryChunkIsAChunkLongFromTheStart) {
    KyDynArrayStreamEx stream(4);

    WriteBytes(stream, "abcde");

    for (const KyDynArrayStream* pChunk : stream.m_chunks) {
        EXPECT_EQ(pChunk->m_nLength, 4);
        EXPECT_EQ(pChunk->m_bytes.m_nLength, 4);
        EXPECT_EQ(pChunk->m_bytes.m_nCapacity, 4);
        EXPECT_EQ(pChunk->m_bytes.m_nGrowBy, 1024);
    }
}

TEST(KyDynArrayStreamExWrite, LeavesTheChunksOwnPositionsAndCursorsWhereTheLastPieceWas) {
    KyDynArrayStreamEx stream(4);
    stream.MoveTo(2);

    WriteBytes(stream, "abcdefg");

    std::vector<std::vector<long>> chunks;
    for (const KyDynArrayStream* pChunk : stream.m_chunks) {
        chunks.push_back({pChunk->m_nPos, pChunk->m_bytes.m_nCurIndex});
    }
    EXPECT_THAT(chunks, ElementsAre(ElementsAre(2, 3), ElementsAre(0, 3), ElementsAre(0, 0)));
}

TEST(KyDynArrayStreamExWrite, NeverMovesWhatWasWritten) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abcd");
    const char* const pFirst = stream.m_chunks.m_pData[0]->m_bytes.m_pData;

    stream.MoveTo(4);
    WriteBytes(stream, std::string(100000, 'x'));

    EXPECT_EQ(stream.m_chunks.m_pData[0]->m_bytes.m_pData, pFirst);
    EXPECT_EQ(Chunks(stream)[0], "abcd");
}

TEST(KyDynArrayStreamExWrite, PastTheEndMakesEveryChunkUpToTheLastByte) {
    KyDynArrayStreamEx stream(4);
    stream.MoveTo(17);

    WriteBytes(stream, "xy");

    EXPECT_THAT(State(stream), ElementsAre(17, 19, 5, 5));
    EXPECT_EQ(ReadBytes(stream, 5), "xy...");
}

TEST(KyDynArrayStreamExWrite, InsideTheStreamKeepsTheLength) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abcdefghij");
    stream.MoveTo(2);

    WriteBytes(stream, "XYZ");

    EXPECT_THAT(State(stream), ElementsAre(2, 10, 3, 2));
    stream.MoveTo(0);
    EXPECT_EQ(ReadBytes(stream, 10), "abXYZfghij");
}

TEST(KyDynArrayStreamExWrite, TheChunksArrayGrowsByItsOwnRule) {
    KyDynArrayStreamEx stream(1);

    WriteBytes(stream, std::string(1025, 'x'));
    EXPECT_EQ(stream.m_chunks.m_nCapacity, 1025);
    EXPECT_EQ(stream.m_chunks.m_nLength, 1025);

    stream.MoveTo(1025);
    stream << 'y';
    EXPECT_EQ(stream.m_chunks.m_nCapacity, 1026 + 1024);
    EXPECT_EQ(stream.m_chunks.m_nLength, 1026);
}

// Counts below 1

TEST(KyDynArrayStreamExWrite, OfNothingAtTheStartMakesTheFirstChunk) {
    KyDynArrayStreamEx stream(4);

    stream.Write(nullptr, 0);

    EXPECT_THAT(State(stream), ElementsAre(0, 0, 1, 0));
}

TEST(KyDynArrayStreamExWrite, OfNothingAtTheStartOfAStreamOfSingleBytesMakesNoChunk) {
    KyDynArrayStreamEx stream(1);

    stream.Write(nullptr, 0);

    EXPECT_THAT(State(stream), ElementsAre(0, 0, 0, 0));
}

struct Nothing {
    long nPos;
    long nCount;
    long nLength;
    long nChunks;
    long nCursor;
};

void PrintTo(const Nothing& row, std::ostream* pOut) { *pOut << row.nCount << " at " << row.nPos; }

class KyDynArrayStreamExNothing : public testing::TestWithParam<Nothing> {};

TEST_P(KyDynArrayStreamExNothing, MakesChunksAndLengthensByTruncatingArithmetic) {
    KyDynArrayStreamEx stream(4);
    stream.MoveTo(GetParam().nPos);

    stream.Write(nullptr, GetParam().nCount);

    EXPECT_THAT(State(stream),
                ElementsAre(GetParam().nPos, GetParam().nLength, GetParam().nChunks, GetParam().nCursor));
}

INSTANTIATE_TEST_SUITE_P(Rows, KyDynArrayStreamExNothing,
                         testing::Values(Nothing{0, -1, 0, 1, 0},  // (0 - 1 - 1) / 4 is 0
                                         Nothing{0, -2, 0, 1, 0},  // (0 - 2 - 1) / 4 is 0
                                         Nothing{0, -3, 0, 0, 0},  // (0 - 3 - 1) / 4 is -1
                                         Nothing{0, LONG_MIN, 0, 0, 0}, Nothing{4, 0, 4, 1, 1},
                                         Nothing{5, 0, 5, 2, 1}, Nothing{9, 0, 9, 3, 2},
                                         Nothing{9, -1, 8, 2, 2}, Nothing{9, -9, 0, 1, 2},
                                         Nothing{9, -100, 0, 0, 2}, Nothing{9, LONG_MIN, 0, 0, 2}));

// Read

TEST(KyDynArrayStreamExRead, CrossesChunks) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abcdefghij");
    stream.MoveTo(3);

    EXPECT_EQ(ReadBytes(stream, 6), "defghi");

    EXPECT_THAT(State(stream), ElementsAre(3, 10, 3, 3));
}

TEST(KyDynArrayStreamExRead, EndsAtTheLengthNotAtTheLastChunksEnd) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abcdef");
    stream.MoveTo(4);

    EXPECT_EQ(ReadBytes(stream, 4), "ef..");
}

TEST(KyDynArrayStreamExRead, EndsWithTheChunksWhereTheLengthGoesOn) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abcdefghij");
    stream.m_chunks.MoveToLast();
    stream.m_chunks.DelCur();

    EXPECT_EQ(ReadBytes(stream, 10), "abcdefgh..");

    EXPECT_THAT(State(stream), ElementsAre(0, 10, 2, 2));
}

TEST(KyDynArrayStreamExRead, AtOrBehindTheLengthCopiesNothing) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abcdef");

    stream.MoveTo(6);
    EXPECT_EQ(ReadBytes(stream, 2), "..");
    EXPECT_EQ(stream.m_chunks.m_nCurIndex, 1);

    stream.MoveTo(100);
    EXPECT_EQ(ReadBytes(stream, 2), "..");
    EXPECT_EQ(stream.m_chunks.m_nCurIndex, 25);

    stream.MoveTo(LONG_MAX);
    EXPECT_EQ(ReadBytes(stream, 2), "..");
    EXPECT_EQ(stream.m_chunks.m_nCurIndex, LONG_MAX / 4);
}

TEST(KyDynArrayStreamExRead, OfAnEmptyStreamCopiesNothing) {
    KyDynArrayStreamEx stream(4);

    EXPECT_EQ(ReadBytes(stream, 2), "..");

    EXPECT_THAT(State(stream), ElementsAre(0, 0, 0, 0));
}

TEST(KyDynArrayStreamExRead, ACountBelowOneOnlyPutsTheCursorOnTheChunk) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abcdef");
    stream.MoveTo(5);

    for (const long nCount : {0L, -1L, LONG_MIN}) {
        stream.m_chunks.m_nCurIndex = -1;
        stream.Read(nullptr, nCount);
        EXPECT_THAT(State(stream), ElementsAre(5, 6, 2, 1)) << nCount;
    }
}

TEST(KyDynArrayStreamExRead, ALengthWithoutChunksEndsTheReadAtTheLastChunk) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abcd");
    stream.MoveTo(4);
    stream.Write(nullptr, 0);
    stream.MoveTo(3);

    EXPECT_EQ(ReadBytes(stream, 3), "d..");
}

TEST(KyDynArrayStreamExRead, ANegativeChunkCopiesNothing) {
    struct Unclamped : KyDynArrayStreamEx {
        using KyDynArrayStreamEx::KyDynArrayStreamEx;
        void MoveTo(long nPos) override { m_nPos = nPos; }
    };
    Unclamped stream(4);
    WriteBytes(stream, "abcdef");
    stream.MoveTo(-6);

    EXPECT_EQ(ReadBytes(stream, 2), "..");

    EXPECT_EQ(stream.m_chunks.m_nCurIndex, -1);
}

// Reset and destruction

/// A chunk that counts its kind.
class Counted : public KyDynArrayStream {
public:
    explicit Counted(long& nLive) : m_nLive(nLive) { ++m_nLive; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() override { --m_nLive; }

private:
    long& m_nLive;
};

TEST(KyDynArrayStreamExReset, DeletesTheChunksAndKeepsTheSlots) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abcdefghij");
    stream.MoveTo(5);

    stream.Reset();

    EXPECT_THAT(State(stream), ElementsAre(0, 0, 0, -1));
    EXPECT_EQ(stream.m_chunks.m_nCapacity, 1025);
    EXPECT_THAT(std::vector<KyDynArrayStream*>(stream.m_chunks.m_pData, stream.m_chunks.m_pData + 3),
                Each(nullptr));
}

TEST(KyDynArrayStreamExReset, AWriteBehindItStartsWithAFreshChunk) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abcdefghij");
    stream.Reset();

    WriteBytes(stream, "xy");

    EXPECT_THAT(State(stream), ElementsAre(0, 2, 1, 1));
    EXPECT_EQ(ReadBytes(stream, 4), "xy..");
}

TEST(KyDynArrayStreamExReset, AndDestructionDeleteThroughTheChunksVirtualDestructor) {
    long nLive = 0;
    {
        KyDynArrayStreamEx stream(4);
        stream.m_chunks.Append(new Counted(nLive));
        stream.Reset();
        EXPECT_EQ(nLive, 0);

        stream.m_chunks.Append(new Counted(nLive));
        EXPECT_EQ(nLive, 1);
    }

    EXPECT_EQ(nLive, 0);
}

TEST(KyDynArrayStreamExReset, MovesThroughTheVirtualTableAndDestructionDoesNotReset) {
    static std::vector<long> moves;
    struct Noting : KyDynArrayStreamEx {
        using KyDynArrayStreamEx::KyDynArrayStreamEx;
        void MoveTo(long nPos) override { moves.push_back(nPos); }
    };
    {
        Noting stream(4);
        stream.Reset();
    }

    EXPECT_THAT(moves, ElementsAre(0));
}

// Any sequence of operations

bool Agree(const KyDynArrayStreamEx& stream, const ChunkModel& model) {
    if (State(stream) != std::vector<long>{model.m_nPos, model.m_nLength,
                                           static_cast<long>(model.m_chunks.size()), model.m_nCursor} ||
        stream.m_chunks.m_nCapacity != model.m_nCapacity) {
        return false;
    }
    for (std::size_t i = 0; i < model.m_chunks.size(); ++i) {
        const KyDynArrayStream& chunk = *stream.m_chunks.m_pData[i];
        const ByteModel& expected = model.m_chunks[i];
        if (chunk.m_nPos != expected.m_nPos || chunk.m_nLength != expected.m_nLength ||
            chunk.m_bytes.m_nLength != expected.m_nCount || chunk.m_bytes.m_nCurIndex != expected.m_nCursor ||
            chunk.m_bytes.m_nCapacity != expected.m_nCapacity ||
            !BytesAgree(chunk.m_bytes.m_pData, expected.m_bytes)) {
            return false;
        }
    }
    return true;
}

TEST(KyDynArrayStreamExModel, EveryWriteAndReadOfASmallStreamFollowsTheRule) {
    std::vector<std::vector<long>> wrong;
    std::string data = Counting(12);

    for (long nChunkSize = 1; nChunkSize <= 5; ++nChunkSize) {
        for (long nPos = 0; nPos <= 11; ++nPos) {
            for (long nCount = -12; nCount <= 12; ++nCount) {
                for (long nReadPos = 0; nReadPos <= 12; nReadPos += 3) {
                    KyDynArrayStreamEx stream(nChunkSize);
                    ChunkModel model(nChunkSize);
                    stream.MoveTo(nPos);
                    model.MoveTo(nPos);
                    stream.Write(data.data(), nCount);
                    model.Write(data, nCount);
                    const bool bWritten = Agree(stream, model);
                    stream.MoveTo(nReadPos);
                    model.MoveTo(nReadPos);
                    const std::string bytes = ReadBytes(stream, 9);
                    const ReadResult result = model.Read(9);
                    if (!bWritten || !Agree(stream, model) || !BytesAgree(bytes.data(), result.m_bytes) ||
                        bytes.substr(result.m_bytes.size()) != std::string(9 - result.m_bytes.size(), '.')) {
                        wrong.push_back({nChunkSize, nPos, nCount, nReadPos});
                    }
                }
            }
        }
    }

    EXPECT_THAT(wrong, IsEmpty());
}

RC_GTEST_PROP(KyDynArrayStreamExModel, AnySequenceOfOperationsFollowsTheRule, ()) {
    const long nChunkSize = *rc::gen::element(1L, 2L, 3L, 4L, 7L, 8L, 13L, 64L, 1000L);
    KyDynArrayStreamEx stream(nChunkSize);
    ChunkModel model(nChunkSize);
    const int nOperations = *rc::gen::inRange(0, 100);
    for (int i = 0; i < nOperations; ++i) {
        const long nCount = *rc::gen::inRange(-20L, 60L);
        switch (*rc::gen::inRange(0, 8)) {
            case 0:
            case 1: {
                const long nPos = *rc::gen::inRange(-3L, 100L);
                stream.MoveTo(nPos);
                model.MoveTo(nPos);
                break;
            }
            case 2:
            case 3: {
                std::string data = *rc::gen::container<std::string>(Size(nCount), rc::gen::arbitrary<char>());
                stream.Write(data.data(), nCount);
                model.Write(data, nCount);
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
                const double d = *rc::gen::arbitrary<double>();
                stream << d;
                std::string data(sizeof(d), '.');
                std::memcpy(data.data(), &d, sizeof(d));
                model.Write(data, 8);
                model.MoveTo(model.m_nPos + 8);
                break;
            }
            case 6: {
                long nValue = 0x5555;
                stream >> nValue;
                const ReadResult result = model.Read(8);
                model.MoveTo(model.m_nPos + 8);
                RC_ASSERT(BytesAgree(reinterpret_cast<const char*>(&nValue), result.m_bytes));
                break;
            }
            default:
                if (nCount % 3 != 0) break;
                stream.Reset();
                model.Reset();
                break;
        }
        RC_ASSERT(Agree(stream, model));
    }
}

}  // namespace
