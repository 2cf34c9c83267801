#include "VexaBase/stream/KyStream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "StreamKit.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"
#include "tests/rx/Layout.h"

namespace {

using testing::_;
using testing::DoubleEq;
using testing::ElementsAre;
using testing::InSequence;
using testing::Ref;
using testing::StrictMock;

// What the operators take

template <class T, class = void>
struct CanBeWritten : std::false_type {};
template <class T>
struct CanBeWritten<T, std::void_t<decltype(std::declval<KyStream&>() << std::declval<T>())>>
    : std::true_type {};

template <class T, class = void>
struct CanBeRead : std::false_type {};
template <class T>
struct CanBeRead<T, std::void_t<decltype(std::declval<KyStream&>() >> std::declval<T&>())>> : std::true_type {
};

static_assert(CanBeWritten<char>::value && CanBeWritten<bool>::value && CanBeWritten<short>::value &&
              CanBeWritten<long>::value && CanBeWritten<double>::value);
static_assert(CanBeRead<char>::value && CanBeRead<bool>::value && CanBeRead<short>::value &&
              CanBeRead<long>::value && CanBeRead<double>::value);
static_assert(!CanBeWritten<int>::value && !CanBeWritten<unsigned>::value && !CanBeWritten<wchar_t>::value &&
                  !CanBeWritten<unsigned long>::value && !CanBeWritten<long long>::value,
              "an integer of another type has no width on the wire");
static_assert(!CanBeRead<int>::value && !CanBeRead<float>::value && !CanBeRead<const long>::value);
static_assert(!CanBeWritten<const char (&)[5]>::value && !CanBeWritten<const char*>::value &&
                  !CanBeWritten<void*>::value && !CanBeWritten<KyStream*>::value &&
                  !CanBeWritten<void (*)()>::value && !CanBeWritten<long KyStream::*>::value &&
                  !CanBeWritten<std::nullptr_t>::value,
              "a pointer is not written as a bool");

static_assert(!std::is_copy_constructible_v<KyStream> && !std::is_copy_assignable_v<KyStream>);
static_assert(std::has_virtual_destructor_v<KyStream> && !std::is_abstract_v<KyStream>);

// What it is

TEST(KyStreamLayout, ThePositionStandsBeforeTheLength) {
    const KyStream stream;

    EXPECT_THAT((std::vector<long>{OffsetOf(stream, stream.m_nPos), OffsetOf(stream, stream.m_nLength)}),
                ElementsAre(8, 16));
    EXPECT_EQ(sizeof(KyStream), 24U);
}

TEST(KyStreamLayout, TheVirtualOperationsStandInTheirSlots) {
    EXPECT_THAT(
        (std::vector<long>{
            SlotOf(&KyStream::MoveTo), SlotOf(&KyStream::Reset), SlotOf(&KyStream::Write),
            SlotOf(&KyStream::Read), SlotOf(&KyStream::WriteChar), SlotOf(&KyStream::WriteBool),
            SlotOf(&KyStream::WriteShort), SlotOf(&KyStream::WriteLong), SlotOf(&KyStream::WriteDouble),
            SlotOf(&KyStream::ReadChar), SlotOf(&KyStream::ReadBool), SlotOf(&KyStream::ReadShort),
            SlotOf(&KyStream::ReadLong), SlotOf(&KyStream::ReadDouble)}),
        ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13));
}

TEST(KyStreamLayout, TheDestructorStandsLastInTwoSlots) {
    struct Probed : KyStream {
        virtual void Probe() {}
    };

    EXPECT_EQ(SlotOf(&Probed::Probe), 16);
}

TEST(KyStreamLayout, TheMemoryStreamsOverrideNoOtherSlots) {
    struct Contiguous : KyDynArrayStream {
        virtual void Probe() {}
    };
    struct Chunked : KyDynArrayStreamEx {
        virtual void Probe() {}
    };

    EXPECT_EQ(SlotOf(&Contiguous::Probe), 16);
    EXPECT_EQ(SlotOf(&Chunked::Probe), 16);
    EXPECT_TRUE((std::is_same_v<decltype(&KyDynArrayStream::MoveTo), void (KyStream::*)(long)>));
    EXPECT_TRUE((std::is_same_v<decltype(&KyDynArrayStreamEx::MoveTo), void (KyStream::*)(long)>));
    EXPECT_TRUE((std::is_same_v<decltype(&KyDynArrayStream::WriteLong), void (KyStream::*)(long)>));
    EXPECT_TRUE((std::is_same_v<decltype(&KyDynArrayStreamEx::ReadBool), void (KyStream::*)(bool&)>));
}

// The bare stream

TEST(KyStream, StartsEmptyAtPositionZero) {
    const KyStream stream;

    EXPECT_EQ(stream.GetPosition(), 0);
    EXPECT_EQ(stream.GetLength(), 0);
    EXPECT_EQ(stream.m_nPos, 0);
    EXPECT_EQ(stream.m_nLength, 0);
}

TEST(KyStream, ANegativePositionBecomesZero) {
    KyStream stream;
    stream.MoveTo(7);

    stream.MoveTo(-5);
    EXPECT_EQ(stream.GetPosition(), 0);

    stream.MoveTo(LONG_MIN);
    EXPECT_EQ(stream.GetPosition(), 0);
}

TEST(KyStream, APositionPastTheLengthIsAllowedAndLeavesTheLength) {
    KyStream stream;

    stream.MoveTo(1000);

    EXPECT_EQ(stream.GetPosition(), 1000);
    EXPECT_EQ(stream.GetLength(), 0);
}

TEST(KyStream, RawTransfersDoNothing) {
    KyStream stream;
    stream.MoveTo(3);

    WriteBytes(stream, "abc");
    const std::string bytes = ReadBytes(stream, 3);

    EXPECT_EQ(bytes, "...");
    EXPECT_EQ(stream.GetPosition(), 3);
    EXPECT_EQ(stream.GetLength(), 0);
}

TEST(KyStream, TypedOperationsOnlyMoveThePosition) {
    KyStream stream;
    long nValue = 77;

    stream.WriteLong(5);
    EXPECT_EQ(stream.GetPosition(), 8);

    stream.ReadLong(nValue);
    EXPECT_EQ(stream.GetPosition(), 16);
    EXPECT_EQ(stream.GetLength(), 0);
    EXPECT_EQ(nValue, 77);
}

TEST(KyStream, EveryTypedOperationMovesByItsWidth) {
    KyStream stream;
    std::vector<long> positions;
    const auto note = [&](KyStream& moved) { positions.push_back(moved.GetPosition()); };
    char c = 'c';
    bool b = true;
    short n = 2;
    long l = 3;
    double d = 4;

    note(stream << c);
    note(stream << b);
    note(stream << n);
    note(stream << l);
    note(stream << d);
    note(stream >> c);
    note(stream >> b);
    note(stream >> n);
    note(stream >> l);
    note(stream >> d);

    EXPECT_THAT(positions, ElementsAre(1, 2, 4, 12, 20, 21, 22, 24, 32, 40));
    EXPECT_EQ(c, 'c');
    EXPECT_TRUE(b);
    EXPECT_EQ(n, 2);
    EXPECT_EQ(l, 3);
    EXPECT_EQ(d, 4.0);
}

TEST(KyStream, ResetReturnsToTheStart) {
    KyStream stream;
    stream.MoveTo(1000);
    stream.m_nLength = 5;

    stream.Reset();

    EXPECT_EQ(stream.GetPosition(), 0);
    EXPECT_EQ(stream.GetLength(), 0);
}

TEST(KyStream, APositionThatNoLongHoldsIsTheLargestOne) {
    KyStream stream;
    stream.MoveTo(LONG_MAX - 3);

    stream.WriteLong(1);

    EXPECT_EQ(stream.GetPosition(), LONG_MAX);
}

// Derived streams

class Transfers : public KyStream {
public:
    MOCK_METHOD(void, MoveTo, (long), (override));
    MOCK_METHOD(void, Write, (void*, long), (override));
    MOCK_METHOD(void, Read, (void*, long), (override));

    void MoveBase(long nPos) { KyStream::MoveTo(nPos); }
};

TEST(KyStreamDerived, ATypedWriteIsOneWriteAndThenOneMove) {
    StrictMock<Transfers> stream;
    stream.MoveBase(100);
    const InSequence sequence;
    for (const long nWidth : {1L, 1L, 2L, 8L, 8L}) {
        EXPECT_CALL(stream, Write(_, nWidth));
        EXPECT_CALL(stream, MoveTo(100 + nWidth));
    }

    stream.WriteChar('c');
    stream.WriteBool(true);
    stream.WriteShort(1);
    stream.WriteLong(1);
    stream.WriteDouble(1);

    EXPECT_EQ(stream.GetPosition(), 100) << "only MoveTo moves";
}

TEST(KyStreamDerived, ATypedReadIsOneReadIntoTheDestinationAndThenOneMove) {
    StrictMock<Transfers> stream;
    stream.MoveBase(100);
    char c = 0;
    bool b = false;
    short n = 0;
    long l = 0;
    double d = 0;
    const InSequence sequence;
    EXPECT_CALL(stream, Read(&c, 1));
    EXPECT_CALL(stream, MoveTo(101));
    EXPECT_CALL(stream, Read(&b, 1));
    EXPECT_CALL(stream, MoveTo(101));
    EXPECT_CALL(stream, Read(&n, 2));
    EXPECT_CALL(stream, MoveTo(102));
    EXPECT_CALL(stream, Read(&l, 8));
    EXPECT_CALL(stream, MoveTo(108));
    EXPECT_CALL(stream, Read(&d, 8));
    EXPECT_CALL(stream, MoveTo(108));

    stream.ReadChar(c);
    stream.ReadBool(b);
    stream.ReadShort(n);
    stream.ReadLong(l);
    stream.ReadDouble(d);
}

TEST(KyStreamDerived, ResetMovesThroughTheVirtualTable) {
    StrictMock<Transfers> stream;
    stream.m_nLength = 5;
    EXPECT_CALL(stream, MoveTo(0));

    stream.Reset();

    EXPECT_EQ(stream.GetLength(), 0);
}

TEST(KyStreamDerived, TheMoveSeesThePositionThatAWriteLeft) {
    struct Moving : KyStream {
        void Write(void*, long) override { m_nPos = 40; }
        void Read(void*, long) override { m_nPos = 60; }
    };
    Moving stream;
    char c = 0;

    stream.WriteChar('c');
    EXPECT_EQ(stream.GetPosition(), 41);

    stream.ReadChar(c);
    EXPECT_EQ(stream.GetPosition(), 61);
}

class Typed : public KyStream {
public:
    MOCK_METHOD(void, WriteChar, (char), (override));
    MOCK_METHOD(void, WriteBool, (bool), (override));
    MOCK_METHOD(void, WriteShort, (short), (override));
    MOCK_METHOD(void, WriteLong, (long), (override));
    MOCK_METHOD(void, WriteDouble, (double), (override));
    MOCK_METHOD(void, ReadChar, (char&), (override));
    MOCK_METHOD(void, ReadBool, (bool&), (override));
    MOCK_METHOD(void, ReadShort, (short&), (override));
    MOCK_METHOD(void, ReadLong, (long&), (override));
    MOCK_METHOD(void, ReadDouble, (double&), (override));
};

TEST(KyStreamDerived, TheOperatorsCallTheTypedOperationsAndChain) {
    StrictMock<Typed> stream;
    char c = 0;
    bool b = false;
    short n = 0;
    long l = 0;
    double d = 0;
    const InSequence sequence;
    EXPECT_CALL(stream, WriteChar('c'));
    EXPECT_CALL(stream, WriteBool(true));
    EXPECT_CALL(stream, WriteShort(-2));
    EXPECT_CALL(stream, WriteLong(3));
    EXPECT_CALL(stream, WriteDouble(DoubleEq(4.5)));
    EXPECT_CALL(stream, ReadChar(Ref(c)));
    EXPECT_CALL(stream, ReadBool(Ref(b)));
    EXPECT_CALL(stream, ReadShort(Ref(n)));
    EXPECT_CALL(stream, ReadLong(Ref(l)));
    EXPECT_CALL(stream, ReadDouble(Ref(d)));

    KyStream& written = stream << 'c' << true << static_cast<short>(-2) << 3L << 4.5;
    KyStream& read = stream >> c >> b >> n >> l >> d;

    EXPECT_EQ(&written, &stream);
    EXPECT_EQ(&read, &stream);
}

TEST(KyStreamDerived, IsDestroyedThroughItsBase) {
    struct Noting : KyStream {
        explicit Noting(bool& bDestroyed) : m_bDestroyed(bDestroyed) {}
        Noting(const Noting&) = delete;
        Noting& operator=(const Noting&) = delete;
        ~Noting() override { m_bDestroyed = true; }
        bool& m_bDestroyed;
    };
    bool bDestroyed = false;

    std::unique_ptr<KyStream> pStream = std::make_unique<Noting>(bDestroyed);
    pStream.reset();

    EXPECT_TRUE(bDestroyed);
}

// The bytes on the wire, and the typed rule over both memory streams

class KyStreamWire : public testing::TestWithParam<long> {
protected:
    KyStreamWire() : m_pStream(MakeStream()) {}

    /// A contiguous stream, or one of chunks of the parameter's size.
    static std::unique_ptr<KyStream> MakeStream() {
        if (GetParam() == 0) return std::make_unique<KyDynArrayStream>();
        return std::make_unique<KyDynArrayStreamEx>(GetParam());
    }

    std::string Written() {
        m_pStream->MoveTo(0);
        return ReadBytes(*m_pStream, m_pStream->GetLength());
    }

    std::unique_ptr<KyStream> m_pStream;
};

INSTANTIATE_TEST_SUITE_P(ContiguousAndChunked, KyStreamWire, testing::Values(0, 1, 2, 3, 7, 8, 64));

TEST_P(KyStreamWire, IntegersAreLittleEndianTwosComplement) {
    *m_pStream << static_cast<short>(0x1234) << static_cast<short>(-2) << 0x0102030405060708L << -1L;

    EXPECT_EQ(Written(), Codes({0x34, 0x12, 0xfe, 0xff, 8,    7,    6,    5,    4,    3,
                                2,    1,    0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff}));
}

TEST_P(KyStreamWire, ADoubleIsItsBinary64) {
    *m_pStream << 1.0 << -0.0;

    EXPECT_EQ(Written(), Codes({0, 0, 0, 0, 0, 0, 0xf0, 0x3f, 0, 0, 0, 0, 0, 0, 0, 0x80}));
}

TEST_P(KyStreamWire, ABoolIsOneByteOfZeroOrOne) {
    *m_pStream << true << false;

    EXPECT_EQ(Written(), Codes({1, 0}));
}

TEST_P(KyStreamWire, ValuesFollowOneAnotherWithoutPadding) {
    *m_pStream << 'A' << true << static_cast<short>(2) << 3L << 1.0;

    EXPECT_EQ(m_pStream->GetPosition(), 20);
    EXPECT_EQ(m_pStream->GetLength(), 20);
    EXPECT_EQ(Written(), Codes({'A', 1, 2, 0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xf0, 0x3f}));
}

TEST_P(KyStreamWire, WhatWasWrittenIsReadBack) {
    char c = 0;
    bool b = false;
    short n = 0;
    long l = 0;
    double d = 0;

    *m_pStream << '\x80' << true << std::numeric_limits<short>::min() << std::numeric_limits<long>::min()
               << 0.1;
    m_pStream->MoveTo(0);
    *m_pStream >> c >> b >> n >> l >> d;

    EXPECT_EQ(c, '\x80');
    EXPECT_TRUE(b);
    EXPECT_EQ(n, std::numeric_limits<short>::min());
    EXPECT_EQ(l, std::numeric_limits<long>::min());
    EXPECT_EQ(d, 0.1);
    EXPECT_EQ(m_pStream->GetPosition(), 20);
}

TEST_P(KyStreamWire, ANotANumberKeepsItsBits) {
    const long nBits = 0x7ff4000000000abc;
    double dWritten = 0;
    std::memcpy(&dWritten, &nBits, sizeof(dWritten));
    double dRead = 0;

    *m_pStream << dWritten;
    m_pStream->MoveTo(0);
    *m_pStream >> dRead;

    long nRead = 0;
    std::memcpy(&nRead, &dRead, sizeof(nRead));
    EXPECT_EQ(nRead, nBits);
}

TEST_P(KyStreamWire, AReadPastTheEndFillsTheLowBytesAndMovesByTheFullWidth) {
    WriteBytes(*m_pStream, Codes({1, 2, 3}));
    long nValue = 0x1122334455667788;

    *m_pStream >> nValue;

    EXPECT_EQ(nValue, 0x1122334455030201);
    EXPECT_EQ(m_pStream->GetPosition(), 8);
    EXPECT_EQ(m_pStream->GetLength(), 3);
}

TEST_P(KyStreamWire, AReadAtOrBehindTheEndLeavesTheDestination) {
    *m_pStream << 7L;
    short n = 1234;

    *m_pStream >> n;
    EXPECT_EQ(n, 1234);
    EXPECT_EQ(m_pStream->GetPosition(), 10);

    m_pStream->MoveTo(1000);
    *m_pStream >> n;
    EXPECT_EQ(n, 1234);
    EXPECT_EQ(m_pStream->GetPosition(), 1002);
    EXPECT_EQ(m_pStream->GetLength(), 8);
}

TEST_P(KyStreamWire, AShortOverTheEndReadsItsLowByte) {
    *m_pStream << 'A' << 'B';
    m_pStream->MoveTo(1);
    short n = 0x7777;

    *m_pStream >> n;

    EXPECT_EQ(n, 0x7700 + 'B');
    EXPECT_EQ(m_pStream->GetPosition(), 3);
}

TEST_P(KyStreamWire, AForeignByteReadAsABoolIsAProperTrue) {
    WriteBytes(*m_pStream, Codes({0, 1, 2, 0xff, 0x80}));

    std::string values;
    for (int i = 0; i < 5; ++i) {
        bool b = false;
        *m_pStream >> b;
        char nByte = 0;
        std::memcpy(&nByte, &b, 1);
        values.push_back(nByte);
    }

    EXPECT_EQ(values, Codes({0, 1, 1, 1, 1}));
    EXPECT_EQ(m_pStream->GetPosition(), 5);
}

TEST_P(KyStreamWire, ABoolPastTheEndKeepsItsValue) {
    bool bTrue = true;
    bool bFalse = false;

    *m_pStream >> bTrue >> bFalse;

    EXPECT_TRUE(bTrue);
    EXPECT_FALSE(bFalse);
}

TEST_P(KyStreamWire, ResetAfterAnythingGivesAnEmptyStreamAtTheStart) {
    *m_pStream << 1L << 2.0;
    m_pStream->MoveTo(1000);

    m_pStream->Reset();
    EXPECT_EQ(m_pStream->GetPosition(), 0);
    EXPECT_EQ(m_pStream->GetLength(), 0);

    *m_pStream << 'z';
    EXPECT_EQ(m_pStream->GetLength(), 1);
    EXPECT_EQ(Written(), "z");
}

TEST_P(KyStreamWire, RawTransfersNeverMoveThePosition) {
    m_pStream->MoveTo(3);

    WriteBytes(*m_pStream, "abcde");
    EXPECT_EQ(m_pStream->GetPosition(), 3);

    EXPECT_EQ(ReadBytes(*m_pStream, 7), "abcde..");
    EXPECT_EQ(m_pStream->GetPosition(), 3);
    EXPECT_EQ(m_pStream->GetLength(), 8);
}

}  // namespace
