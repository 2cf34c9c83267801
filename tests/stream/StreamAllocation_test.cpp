// What the streams take from the allocator, and what a failing one leaves behind.

#include <gmock/gmock.h>

#include <climits>
#include <cstddef>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "AllocationLog.h"
#include "StreamKit.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"

namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(KyDynArrayStreamAllocation, AMegabyteWrittenAtOnceTakesOneBlock) {
    std::string megabyte(1U << 20U, 'x');
    KyDynArrayStream stream;
    stream << 'a';
    stream.MoveTo(1);
    const AllocationLog log;

    stream.Write(megabyte.data(), 1 << 20);

    EXPECT_THAT(log.Arrays(), ElementsAre(1024U * 1025U));
    EXPECT_EQ(log.Releases(), 1);
}

TEST(KyDynArrayStreamAllocation, ARunOfSmallWritesTakesOneBlockForEveryGrowthStep) {
    KyDynArrayStream stream;
    const AllocationLog log;

    for (int i = 0; i < 10250; ++i) {
        stream << 'x';
    }

    EXPECT_THAT(log.Arrays(), SizeIs(10));
    EXPECT_EQ(stream.m_bytes.m_nCapacity, 10250);
}

TEST(KyDynArrayStreamAllocation, WritesInsideTheStorageAndReadsTakeNothing) {
    KyDynArrayStream stream(100);
    long nValue = 0;
    const AllocationLog log;

    stream << 1L << 2.0 << 'c';
    stream.MoveTo(0);
    stream >> nValue;
    stream.Reset();
    stream << 1L;

    EXPECT_THAT(log.Arrays(), IsEmpty());
}

TEST(KyDynArrayStreamAllocation, SetLengthTakesOneExactBlockUnlessTheCapacityIsThat) {
    KyDynArrayStream stream(100);
    const AllocationLog log;

    stream.SetLength(100);
    stream.SetLength(40);
    stream.SetLength(0);

    EXPECT_THAT(log.Arrays(), ElementsAre(40U));
    EXPECT_EQ(log.Releases(), 2);
}

TEST(KyDynArrayStreamFailure, AWriteThatCannotGrowLeavesTheStreamAsItWas) {
    KyDynArrayStream stream(4);
    WriteBytes(stream, "abcd");
    stream.MoveTo(2);

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(stream << 1L, std::bad_alloc);
    }

    EXPECT_EQ(Bytes(stream), "abcd");
    EXPECT_EQ(stream.GetPosition(), 2);
    EXPECT_EQ(stream.m_bytes.m_nCapacity, 4);
    stream << 1L;
    EXPECT_EQ(Bytes(stream), "ab" + Codes({1, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(KyDynArrayStreamFailure, AnEndThatNoBlockReachesThrowsAndChangesNothing) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abcd");

    stream.MoveTo(LONG_MAX);
    EXPECT_THROW(stream.WriteChar('x'), std::bad_alloc);
    EXPECT_EQ(stream.GetPosition(), LONG_MAX);

    stream.MoveTo(LONG_MAX - 100);
    EXPECT_THROW(stream.WriteLong(1), std::bad_alloc);
    EXPECT_EQ(stream.GetPosition(), LONG_MAX - 100);
    EXPECT_EQ(stream.m_bytes.m_nCapacity, 1025);

    stream.MoveTo(4);
    stream << 'e';
    EXPECT_EQ(Bytes(stream), "abcde");
}

TEST(KyDynArrayStreamExAllocation, AChunkIsOneObjectAndOneBlock) {
    KyDynArrayStreamEx stream(64);
    std::string bytes(192, 'x');
    const AllocationLog log;

    stream.Write(bytes.data(), 192);

    const std::vector<std::size_t> objects = log.Singles();
    EXPECT_THAT(log.Arrays(), ElementsAre(1025 * sizeof(void*), 64U, 64U, 64U));
    EXPECT_THAT(objects, AllOf(SizeIs(3), Each(sizeof(KyDynArrayStream))));
}

TEST(KyDynArrayStreamExAllocation, ResetAndDestructionGiveEverythingBack) {
    const AllocationLog log;

    {
        auto pStream = std::make_unique<KyDynArrayStreamEx>(8);
        for (long i = 0; i < 100; ++i) {
            *pStream << i;
        }
        pStream->Reset();
        *pStream << 1L;
    }

    EXPECT_EQ(log.LiveArrayBytes(), 0U);
}

TEST(KyDynArrayStreamExAllocation, ALargeWriteGrowsTheSlotsStepByStep) {
    KyDynArrayStreamEx stream(1);
    std::string bytes(3000, 'x');
    const AllocationLog log;

    stream.Write(bytes.data(), 3000);

    std::vector<std::size_t> slots;
    for (const std::size_t nBytes : log.Arrays()) {
        if (nBytes != 1) slots.push_back(nBytes / sizeof(void*));
    }
    EXPECT_THAT(slots, ElementsAre(1025U, 2050U, 3075U));
}

TEST(KyDynArrayStreamExFailure, AWriteThatCannotMakeItsChunksLeaksNothingAndCanBeRepeated) {
    std::string bytes = Counting(40);
    long nFailures = 0;
    bool bFailed = true;
    while (bFailed) {
        KyDynArrayStreamEx stream(8);
        WriteBytes(stream, "abcdefghij");
        stream.MoveTo(5);
        {
            const FailingAllocation failing(nFailures);
            try {
                stream.Write(bytes.data(), 40);
                bFailed = false;
            } catch (const std::bad_alloc&) {
                ++nFailures;
            }
        }
        if (bFailed) {
            EXPECT_EQ(stream.GetLength(), 10);
            EXPECT_EQ(stream.GetPosition(), 5);
            EXPECT_EQ(ReadBytes(stream, 10), "fghij.....") << "failure " << nFailures;
            stream.Write(bytes.data(), 40);
        }
        EXPECT_EQ(ReadBytes(stream, 41), bytes + ".");
        EXPECT_EQ(stream.m_chunks.m_nLength, 6);
    }

    EXPECT_EQ(nFailures, 8) << "four chunks of two blocks";
}

TEST(KyDynArrayStreamExFailure, ASlotThatCannotBeHadLeavesTheChunksUsable) {
    for (const long nFailing : {0L, 1L, 2L}) {
        KyDynArrayStreamEx stream(2);
        WriteBytes(stream, std::string(2 * 1025, 'x'));
        ASSERT_EQ(stream.m_chunks.m_nCapacity, 1025);
        stream.MoveTo(2 * 1025);
        {
            const FailingAllocation failing(nFailing);
            EXPECT_THROW(stream << 'y', std::bad_alloc) << nFailing;
        }
        EXPECT_EQ(stream.m_chunks.m_nLength, 1025);

        stream << 'y';

        EXPECT_EQ(stream.m_chunks.m_nLength, 1026);
        EXPECT_EQ(stream.m_chunks.m_nCapacity, 2050);
        stream.MoveTo(0);
        EXPECT_EQ(ReadBytes(stream, 2 * 1025 + 1), std::string(2 * 1025, 'x') + "y");
    }
}

TEST(KyDynArrayStreamExFailure, SlotsThatNoAllocatorCanAddressAreItsException) {
    KyDynArrayStreamEx stream(8);
    stream.m_chunks.m_nGrowBy = std::numeric_limits<long>::max() / 8;

    EXPECT_THROW(stream << 1L, std::bad_alloc);

    EXPECT_EQ(stream.m_chunks.m_nLength, 0);
}

}  // namespace
