// The memory streams' typed operations, which skip the virtual calls where nothing can tell, beside the same
// operations in derived streams, which cannot skip them, and beside the rules byte by byte.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <climits>
#include <cstddef>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "ByteModel.h"
#include "StreamKit.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"

namespace {

using testing::ElementsAre;

// What the operators take and give back

template <class Stream, class T, class = void>
struct CanBeWritten : std::false_type {};
template <class Stream, class T>
struct CanBeWritten<Stream, T, std::void_t<decltype(std::declval<Stream&>() << std::declval<T>())>>
    : std::true_type {};

template <class Stream>
constexpr bool TakesTheFiveTypesOnly() {
    return CanBeWritten<Stream, char>::value && CanBeWritten<Stream, bool>::value &&
           CanBeWritten<Stream, short>::value && CanBeWritten<Stream, long>::value &&
           CanBeWritten<Stream, double>::value && !CanBeWritten<Stream, int>::value &&
           !CanBeWritten<Stream, unsigned long>::value && !CanBeWritten<Stream, const char*>::value &&
           !CanBeWritten<Stream, const char(&)[5]>::value && !CanBeWritten<Stream, void*>::value &&
           !CanBeWritten<Stream, long KyStream::*>::value && !CanBeWritten<Stream, std::nullptr_t>::value;
}
static_assert(TakesTheFiveTypesOnly<KyDynArrayStream>() && TakesTheFiveTypesOnly<KyDynArrayStreamEx>());

TEST(DirectTransfer, EveryOperatorGivesBackTheStream) {
    KyDynArrayStream contiguous;
    KyDynArrayStreamEx chunked(8);
    long nValue = 1;

    EXPECT_EQ(&(contiguous << nValue), &contiguous);
    EXPECT_EQ(&(contiguous >> nValue), &contiguous);
    EXPECT_EQ(&(chunked << nValue), &chunked);
    EXPECT_EQ(&(chunked >> nValue), &chunked);
}

// The same operation by its four ways: the operator of the class, that of the base, the typed operation, and
// the operator of a derived stream that overrides nothing

template <class Stream>
struct Derived : Stream {
    using Stream::Stream;
};

void WriteTyped(KyStream& stream, char value) { stream.WriteChar(value); }
void WriteTyped(KyStream& stream, bool value) { stream.WriteBool(value); }
void WriteTyped(KyStream& stream, short value) { stream.WriteShort(value); }
void WriteTyped(KyStream& stream, long value) { stream.WriteLong(value); }
void WriteTyped(KyStream& stream, double value) { stream.WriteDouble(value); }
void ReadTyped(KyStream& stream, char& value) { stream.ReadChar(value); }
void ReadTyped(KyStream& stream, bool& value) { stream.ReadBool(value); }
void ReadTyped(KyStream& stream, short& value) { stream.ReadShort(value); }
void ReadTyped(KyStream& stream, long& value) { stream.ReadLong(value); }
void ReadTyped(KyStream& stream, double& value) { stream.ReadDouble(value); }

/// Four streams that get the same operations.
template <class Stream>
class Four {
public:
    explicit Four(long nSize) : m_own(nSize), m_base(nSize), m_typed(nSize), m_derived(nSize) {}

    template <class T>
    void Put(T value) {
        m_own << value;
        static_cast<KyStream&>(m_base) << value;
        WriteTyped(m_typed, value);
        m_derived << value;
    }

    /// What the four read, over a destination that holds the value.
    template <class T>
    std::array<T, 4> Get(T value) {
        std::array<T, 4> read = {value, value, value, value};
        m_own >> read[0];
        static_cast<KyStream&>(m_base) >> read[1];
        ReadTyped(m_typed, read[2]);
        m_derived >> read[3];
        return read;
    }

    template <class Operation>
    void Each(Operation operation) {
        operation(m_own);
        operation(m_base);
        operation(m_typed);
        operation(m_derived);
    }

private:
    Stream m_own;
    Stream m_base;
    Stream m_typed;
    Derived<Stream> m_derived;
};

bool Agree(const KyDynArrayStream& stream, const ByteModel& model) {
    return stream.m_nPos == model.m_nPos && stream.m_nLength == model.m_nLength &&
           stream.m_bytes.m_nLength == model.m_nCount && stream.m_bytes.m_nCurIndex == model.m_nCursor &&
           stream.m_bytes.m_nCapacity == model.m_nCapacity &&
           BytesAgree(stream.m_bytes.m_pData, model.m_bytes);
}

bool Agree(const KyDynArrayStreamEx& stream, const ChunkModel& model) {
    if (stream.m_nPos != model.m_nPos || stream.m_nLength != model.m_nLength ||
        stream.m_chunks.m_nLength != static_cast<long>(model.m_chunks.size()) ||
        stream.m_chunks.m_nCurIndex != model.m_nCursor || stream.m_chunks.m_nCapacity != model.m_nCapacity) {
        return false;
    }
    for (std::size_t i = 0; i < model.m_chunks.size(); ++i) {
        if (!Agree(*stream.m_chunks.m_pData[i], model.m_chunks[i])) return false;
    }
    return true;
}

template <class T>
std::string BytesOf(T value) {
    std::string bytes(sizeof(T), '.');
    std::memcpy(bytes.data(), &value, sizeof(T));
    return bytes;
}

void WriteTo(ByteModel& model, const std::string& bytes) { model.Write(bytes); }
void WriteTo(ChunkModel& model, const std::string& bytes) {
    model.Write(bytes, static_cast<long>(bytes.size()));
}

template <class T, class Stream, class Model>
void PutAndCompare(Four<Stream>& streams, Model& model) {
    const T value = *rc::gen::arbitrary<T>();
    streams.Put(value);
    WriteTo(model, BytesOf(value));
    model.MoveTo(model.m_nPos + static_cast<long>(sizeof(T)));
}

template <class T, class Stream, class Model>
void GetAndCompare(Four<Stream>& streams, Model& model) {
    const T before = *rc::gen::arbitrary<T>();
    const std::array<T, 4> values = streams.Get(before);
    std::vector<Byte> expected = model.Read(sizeof(T)).m_bytes;
    model.MoveTo(model.m_nPos + static_cast<long>(sizeof(T)));
    if (std::is_same_v<T, bool> && !expected.empty() && expected[0].has_value()) {
        expected[0] = static_cast<char>(*expected[0] != 0);
    }
    const std::string kept = BytesOf(before);
    for (const T value : values) {
        const std::string bytes = BytesOf(value);
        RC_ASSERT(BytesAgree(bytes.data(), expected));
        RC_ASSERT(bytes.substr(expected.size()) == kept.substr(expected.size()));
    }
}

/// Any operation but SetLength, which one class alone has.
template <class Stream, class Model>
void AnyOperation(Four<Stream>& streams, Model& model) {
    switch (*rc::gen::inRange(0, 16)) {
        case 0:
        case 1:
            return PutAndCompare<char>(streams, model);
        case 2:
            return PutAndCompare<bool>(streams, model);
        case 3:
            return PutAndCompare<short>(streams, model);
        case 4:
        case 5:
            return PutAndCompare<long>(streams, model);
        case 6:
            return PutAndCompare<double>(streams, model);
        case 7:
            return GetAndCompare<char>(streams, model);
        case 8:
            return GetAndCompare<bool>(streams, model);
        case 9:
            return GetAndCompare<short>(streams, model);
        case 10:
            return GetAndCompare<long>(streams, model);
        case 11:
            return GetAndCompare<double>(streams, model);
        case 12:
        case 13: {
            const long nPos = *rc::gen::inRange(-3L, 70L);
            streams.Each([nPos](KyStream& stream) { stream.MoveTo(nPos); });
            return model.MoveTo(nPos);
        }
        case 14: {
            std::string bytes =
                *rc::gen::container<std::string>(*rc::gen::inRange(1U, 30U), rc::gen::arbitrary<char>());
            streams.Each(
                [&bytes](KyStream& stream) { stream.Write(bytes.data(), static_cast<long>(bytes.size())); });
            return WriteTo(model, bytes);
        }
        default:
            if (*rc::gen::inRange(0, 4) == 0) {
                streams.Each([](KyStream& stream) { stream.Reset(); });
                model.Reset();
            }
    }
}

RC_GTEST_PROP(DirectTransfer, OfAContiguousStreamFollowsTheByteByByteRule, ()) {
    const long nCapacity = *rc::gen::inRange(-1L, 40L);
    Four<KyDynArrayStream> streams(nCapacity);
    ByteModel model(nCapacity);
    model.m_nGrowBy = *rc::gen::element(0L, 1L, 5L, 16L, 1024L);
    streams.Each([&model](KyDynArrayStream& stream) { stream.m_bytes.m_nGrowBy = model.m_nGrowBy; });
    const int nOperations = *rc::gen::inRange(0, 60);
    for (int i = 0; i < nOperations; ++i) {
        if (*rc::gen::inRange(0, 12) == 0) {
            const long n = *rc::gen::inRange(0L, 50L);
            streams.Each([n](KyDynArrayStream& stream) { stream.SetLength(n); });
            model.SetLength(n);
        } else {
            AnyOperation(streams, model);
        }
        streams.Each([&model](const KyDynArrayStream& stream) { RC_ASSERT(Agree(stream, model)); });
    }
}

RC_GTEST_PROP(DirectTransfer, OfAChunkedStreamFollowsTheRuleOfChunks, ()) {
    const long nChunkSize = *rc::gen::element(1L, 2L, 3L, 7L, 8L, 9L, 20L, 64L, 1000L);
    Four<KyDynArrayStreamEx> streams(nChunkSize);
    ChunkModel model(nChunkSize);
    const int nOperations = *rc::gen::inRange(0, 60);
    for (int i = 0; i < nOperations; ++i) {
        AnyOperation(streams, model);
        streams.Each([&model](const KyDynArrayStreamEx& stream) { RC_ASSERT(Agree(stream, model)); });
    }
}

// Where there is something to tell

TEST(DirectTransfer, IntoTheBytesThatAreBeingReadCopiesThemInAscendingOrder) {
    const std::string letters = "abcdefghijklmnopqrstuvwx";
    for (std::size_t nPos = 0; nPos <= 16; ++nPos) {
        std::string expected = letters;
        for (std::size_t i = 0; i < 8; ++i) {
            expected[8 + i] = expected[nPos + i];
        }
        KyDynArrayStream stream(24);
        Derived<KyDynArrayStream> derived(24);
        for (KyDynArrayStream* pStream : {&stream, static_cast<KyDynArrayStream*>(&derived)}) {
            WriteBytes(*pStream, letters);
            pStream->MoveTo(static_cast<long>(nPos));
            long& nInside = *new (pStream->m_bytes.m_pData + 8) long;
            std::memcpy(pStream->m_bytes.m_pData + 8, "ijklmnop", 8);
            *pStream >> nInside;
        }

        EXPECT_EQ(Bytes(stream), expected) << "position " << nPos;
        EXPECT_EQ(Bytes(derived), expected) << "position " << nPos;
    }
}

TEST(DirectTransfer, ToANegativeLengthFindsNoStorage) {
    KyDynArrayStream stream(16);
    stream << 1L;
    stream.SetLength(LONG_MIN);
    stream.MoveTo(5);
    long nValue = 77;

    stream >> nValue;

    EXPECT_EQ(nValue, 77);
    EXPECT_EQ(stream.m_nPos, 13);
}

TEST(DirectTransfer, AtTheLargestPositionStaysThere) {
    KyDynArrayStream contiguous(16);
    KyDynArrayStreamEx chunked(16);
    contiguous << 1L;
    chunked << 1L;
    contiguous.MoveTo(LONG_MAX - 3);
    chunked.MoveTo(LONG_MAX - 3);
    long nValue = 77;

    contiguous >> nValue;
    chunked >> nValue;

    EXPECT_EQ(nValue, 77);
    EXPECT_EQ(contiguous.m_nPos, LONG_MAX);
    EXPECT_EQ(chunked.m_nPos, LONG_MAX);
}

TEST(DirectTransfer, OverAChunkReachesTheOneBehindIt) {
    for (const long nSkipped : {1L, 2L, 3L}) {
        KyDynArrayStreamEx stream(8);
        stream << 0L << 1L << 2L << 3L << 4L;
        long nValue = 77;
        stream.MoveTo(0);
        stream >> nValue;

        stream.MoveTo(8 + 8 * nSkipped);
        stream >> nValue;
        EXPECT_EQ(nValue, 1 + nSkipped);
        EXPECT_EQ(stream.m_chunks.m_nCurIndex, 2 + nSkipped);

        stream.MoveTo(0);
        stream << 10L;
        stream.MoveTo(8 + 8 * nSkipped);
        stream << 20L;
        std::vector<long> values;
        stream.MoveTo(0);
        for (int i = 0; i < 5; ++i) {
            stream >> nValue;
            values.push_back(nValue);
        }
        std::vector<long> expected = {10, 1, 2, 3, 4};
        expected[static_cast<std::size_t>(1 + nSkipped)] = 20;
        EXPECT_EQ(values, expected);
    }
}

TEST(DirectTransfer, ToAChunkBehindThoseThatExistTakesTheLongWay) {
    KyDynArrayStreamEx stream(8);
    stream << 1L;
    stream.MoveTo(LONG_MAX);
    char c = 'x';
    stream.Read(&c, 1);
    ASSERT_EQ(stream.m_chunks.m_nCurIndex, LONG_MAX / 8);
    long nValue = 77;

    stream.MoveTo(0);
    stream >> nValue;

    EXPECT_EQ(nValue, 1);
    EXPECT_EQ(stream.m_chunks.m_nCurIndex, 1);
}

// Overrides

using Calls = std::vector<std::string>;

/// Notes every virtual call that reaches it, and hands it on.
template <class Stream>
struct Noting : Stream {
    Noting(Calls& calls, long nSize) : Stream(nSize), m_calls(calls) {}

    void MoveTo(long nPos) override {
        m_calls.push_back("MoveTo " + std::to_string(nPos));
        Stream::MoveTo(nPos);
    }
    void Write(void* pData, long nCount) override {
        m_calls.push_back("Write " + std::to_string(nCount));
        Stream::Write(pData, nCount);
    }
    void Read(void* pData, long nCount) override {
        m_calls.push_back("Read " + std::to_string(nCount));
        Stream::Read(pData, nCount);
    }
    void WriteShort(short value) override {
        m_calls.push_back("WriteShort");
        Stream::WriteShort(value);
    }
    void ReadBool(bool& value) override {
        m_calls.push_back("ReadBool");
        Stream::ReadBool(value);
    }

    Calls& m_calls;
};

template <class Stream>
class DirectTransferOverridden : public testing::Test {};
using MemoryStreams = testing::Types<KyDynArrayStream, KyDynArrayStreamEx>;
TYPED_TEST_SUITE(DirectTransferOverridden, MemoryStreams, );

TYPED_TEST(DirectTransferOverridden, EveryVirtualCallReachesTheDerivedStream) {
    Calls calls;
    Noting<TypeParam> stream(calls, 64);
    TypeParam& known = stream;
    KyStream& base = stream;
    bool b = false;
    long n = 0;

    known << 1L << static_cast<short>(2);
    base << true << 1.0;
    known.MoveTo(0);
    known >> n >> b;
    base >> b;

    EXPECT_THAT(calls, ElementsAre("Write 8", "MoveTo 8", "WriteShort", "Write 2", "MoveTo 10", "Write 1",
                                   "MoveTo 11", "Write 8", "MoveTo 19", "MoveTo 0", "Read 8", "MoveTo 8",
                                   "ReadBool", "Read 1", "MoveTo 9", "ReadBool", "Read 1", "MoveTo 10"));
}

TEST(DirectTransfer, AChunkOfADerivedClassSeesItsCalls) {
    Calls calls;
    KyDynArrayStreamEx stream(16);
    auto* const pChunk = new Noting<KyDynArrayStream>(calls, 16);
    pChunk->SetLength(16);
    stream.m_chunks.Append(pChunk);
    long n = 0;

    stream << 1L << 'c';
    static_cast<KyStream&>(stream) << 'd';
    stream.MoveTo(0);
    stream >> n;

    EXPECT_THAT(calls, ElementsAre("MoveTo 0", "Write 8", "MoveTo 8", "Write 1", "MoveTo 9", "Write 1",
                                   "MoveTo 0", "Read 8"));
}

}  // namespace
