// What the checked build stops on.

#include <gmock/gmock.h>

#include <climits>

#include "StreamKit.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"

namespace {

TEST(KyDynArrayStreamChecksDeathTest, ATransferWithoutMemoryIsStopped) {
    KyDynArrayStream stream;
    WriteBytes(stream, "abc");

    EXPECT_DEATH(
        stream.Write(nullptr, 2),
        "^VexaBase/stream/KyDynArrayStream.cpp:[0-9]+: KyDynArrayStream::Write: no data \\(count 2\\)\n$");
    EXPECT_DEATH(stream.Read(nullptr, 2), "KyDynArrayStream::Read: no destination \\(count 2\\)");
}

TEST(KyDynArrayStreamChecksDeathTest, AWriteAtANegativePositionIsStopped) {
    KyDynArrayStream stream;
    stream.m_nPos = -1;

    EXPECT_DEATH(stream.WriteChar('x'), "KyDynArrayStream::Write: negative position \\(-1\\)");
}

TEST(KyDynArrayStreamChecksDeathTest, ANegativeGrowthStepIsStopped) {
    KyDynArrayStream stream;
    stream.m_bytes.m_nGrowBy = -1;

    EXPECT_DEATH(stream.WriteChar('x'), "KyDynArrayStream::Write: negative growth step \\(-1\\)");
}

TEST(KyDynArrayStreamExChecksDeathTest, AChunkSizeBelowOneIsStopped) {
    EXPECT_DEATH(KyDynArrayStreamEx(0),
                 "VexaBase/stream/KyDynArrayStreamEx.cpp:[0-9]+: "
                 "KyDynArrayStreamEx::KyDynArrayStreamEx: chunk size below 1 \\(0\\)");
    EXPECT_DEATH(KyDynArrayStreamEx(-4), "chunk size below 1 \\(-4\\)");
}

TEST(KyDynArrayStreamExChecksDeathTest, ATransferWithoutMemoryIsStopped) {
    KyDynArrayStreamEx stream(4);
    WriteBytes(stream, "abc");

    EXPECT_DEATH(stream.Write(nullptr, 2), "KyDynArrayStreamEx::Write: no data \\(count 2\\)");
    EXPECT_DEATH(stream.Read(nullptr, 2), "KyDynArrayStreamEx::Read: no destination \\(count 2\\)");
}

TEST(KyDynArrayStreamExChecksDeathTest, AWriteAtANegativePositionIsStopped) {
    KyDynArrayStreamEx stream(4);
    stream.m_nPos = -1;

    EXPECT_DEATH(stream.WriteChar('x'), "KyDynArrayStreamEx::Write: negative position \\(-1\\)");
}

TEST(KyStreamChecks, WhatIsDefinedIsNotStopped) {
    KyStream bare;
    KyDynArrayStream stream;
    KyDynArrayStreamEx chunked(4);

    bare.Write(nullptr, 5);
    bare.Read(nullptr, 5);
    stream.Write(nullptr, 0);
    stream.Read(nullptr, 5);
    stream.SetLength(-3);
    stream.m_nPos = -1;
    stream.Write(nullptr, -1);
    stream.Read(nullptr, 5);
    chunked.Write(nullptr, 0);
    chunked.Write(nullptr, LONG_MIN);
    chunked.Read(nullptr, 5);
    chunked.m_nPos = -9;
    chunked.Write(nullptr, 0);
    chunked.Read(nullptr, 0);

    EXPECT_EQ(stream.GetLength(), -3);
    EXPECT_EQ(chunked.GetLength(), 0);
}

}  // namespace
