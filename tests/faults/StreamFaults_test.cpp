// The memory streams, and an application's own stream that throws.

#include <algorithm>
#include <array>

#include "Elements.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"

namespace {

template <class Stream>
class StreamSubject : public Subject {
public:
    template <class... Arguments>
    explicit StreamSubject(Arguments... arguments) : m_stream(arguments...) {
        std::fill(m_data.begin(), m_data.end(), 'x');
    }

    std::string Words() const {
        return Contents() + " at " + std::to_string(m_stream.m_nPos) + ", read " +
               std::string(m_read.begin(), m_read.end()) + " gives " + std::to_string(m_nResult);
    }

    /// The bytes, read without moving the position for good.
    std::string Contents() const {
        std::string bytes(static_cast<std::size_t>(m_stream.m_nLength), '?');
        const long nPos = m_stream.m_nPos;
        m_stream.MoveTo(0);
        m_stream.Read(bytes.data(), m_stream.m_nLength);
        m_stream.MoveTo(nPos);
        return bytes;
    }

    mutable Stream m_stream;
    std::array<char, 300> m_data;
    std::array<char, 6> m_read{'.', '.', '.', '.', '.', '.'};
};

class Contiguous : public StreamSubject<KyDynArrayStream> {
public:
    Contiguous() : StreamSubject(4L) {}

    std::string Words() const {
        return StreamSubject::Words() + " of " + std::to_string(m_stream.m_bytes.m_nCapacity);
    }
    std::string Fault() const {
        if (m_stream.m_nLength != m_stream.m_bytes.m_nLength) return "the length is not the bytes'";
        if (m_stream.m_bytes.m_nLength > m_stream.m_bytes.m_nCapacity)
            return "the length is outside the block";
        if ((m_stream.m_bytes.m_pData == nullptr) != (m_stream.m_bytes.m_nCapacity == 0)) return "no block";
        return "";
    }
    bool IsLost() const { return ::IsLost(m_stream.m_bytes); }
};

class Chunked : public StreamSubject<KyDynArrayStreamEx> {
public:
    Chunked() : StreamSubject(4L) {}

    std::string Words() const {
        return StreamSubject::Words() + " in " + std::to_string(m_stream.m_chunks.m_nLength);
    }
    std::string Fault() const {
        if (m_stream.m_nLength > m_stream.m_chunks.m_nLength * m_stream.m_nChunkSize)
            return "chunks are missing";
        for (const KyDynArrayStream* pChunk : m_stream.m_chunks) {
            if (pChunk == nullptr) return "a chunk is null";
            if (pChunk->m_nLength != m_stream.m_nChunkSize) return "a chunk is not of the chunks' size";
        }
        return "";
    }
    bool IsLost() const { return ::IsLost(m_stream.m_chunks); }
};

/// Four bytes, which fill the block or the first chunk; the position is behind them.
template <class State>
void FourBytes(State& s) {
    for (const char ch : {'a', 'b', 'c', 'd'}) {
        s.m_stream << ch;
    }
}

/// The same, with the position at the beginning.
template <class State>
void Rewound(State& s) {
    FourBytes(s);
    s.m_stream.MoveTo(0);
}

template <class State>
const Operation<State> g_streams[] = {
    {"Write", FourBytes<State>, [](State& s) { s.m_stream.Write(s.m_data.data(), 10); }, Sound},
    {"WriteMuch", FourBytes<State>, [](State& s) { s.m_stream.Write(s.m_data.data(), 300); }, Sound},
    {"WriteInside", Rewound<State>, [](State& s) { s.m_stream.Write(s.m_data.data(), 3); }, CannotFail},
    {"Read", Rewound<State>, [](State& s) { s.m_stream.Read(s.m_read.data(), 6); }, CannotFail},
    {"MoveTo", FourBytes<State>, [](State& s) { s.m_stream.MoveTo(2); }, CannotFail},
    {"Reset", FourBytes<State>, [](State& s) { s.m_stream.Reset(); }, CannotFail},
    {"WriteChar", FourBytes<State>, [](State& s) { s.m_stream.WriteChar('e'); }, Sound},
    {"WriteBool", FourBytes<State>, [](State& s) { s.m_stream.WriteBool(true); }, Sound},
    {"WriteShort", FourBytes<State>, [](State& s) { s.m_stream.WriteShort(5); }, Sound},
    {"WriteLong", FourBytes<State>, [](State& s) { s.m_stream.WriteLong(5); }, Sound},
    {"WriteDouble", FourBytes<State>, [](State& s) { s.m_stream.WriteDouble(5); }, Sound},
    {"WriteByOperator", FourBytes<State>, [](State& s) { s.m_stream << 5L; }, Sound},
    {"ReadValues", Rewound<State>,
     [](State& s) {
         char ch = 0;
         bool b = false;
         short n = 0;
         long m = 0;
         double d = 0;
         s.m_stream >> ch >> b >> n >> m >> d;
         s.m_nResult = n;
     },
     CannotFail},
};
RUN_UNDER_FAULTS(KyDynArrayStream, g_streams<Contiguous>);
RUN_UNDER_FAULTS(KyDynArrayStreamEx, g_streams<Chunked>);

const Operation<Contiguous> g_contiguous[] = {
    {"Make", FourBytes<Contiguous>, [](Contiguous& s) { s.m_nResult = KyDynArrayStream(8).m_nLength; }, Same},
    {"WriteLeavesTheStreamAsItWas", FourBytes<Contiguous>,
     [](Contiguous& s) { s.m_stream.Write(s.m_data.data(), 300); }, Same},
    {"SetLengthToLonger", FourBytes<Contiguous>,
     [](Contiguous& s) {
         s.m_stream.SetLength(8);
         std::copy_n(s.m_data.data(), 4, s.m_stream.m_bytes.m_pData + 4);
     },
     Same},
    {"SetLengthToShorter", FourBytes<Contiguous>, [](Contiguous& s) { s.m_stream.SetLength(2); }, Same},
    {"SetLengthToNone", FourBytes<Contiguous>, [](Contiguous& s) { s.m_stream.SetLength(0); }, CannotFail},
};
RUN_UNDER_FAULTS(KyDynArrayStreamAlone, g_contiguous);

const Operation<Chunked> g_chunked[] = {
    {"Make", FourBytes<Chunked>, [](Chunked& s) { s.m_nResult = KyDynArrayStreamEx(8).m_nLength; },
     CannotFail},
    {"WriteKeepsTheBytes", FourBytes<Chunked>, [](Chunked& s) { s.m_stream.Write(s.m_data.data(), 10); },
     Kept},
    {"WriteWithFullSlots",
     [](Chunked& s) {
         FourBytes(s);
         s.m_stream.m_chunks.SetLength(2, true);
         s.m_stream.m_chunks.ReAllocate(1);
         s.m_stream.m_chunks.m_nGrowBy = 0;
     },
     [](Chunked& s) { s.m_stream.Write(s.m_data.data(), 17); }, Kept},
    {"WriteOfNothing", [](Chunked&) {}, [](Chunked& s) { s.m_stream.Write(nullptr, 0); }, Kept},
};
RUN_UNDER_FAULTS(KyDynArrayStreamExAlone, g_chunked);

// The typed operations on a stream whose own may throw

class ThrowingStream : public KyStream {
public:
    void MoveTo(long nPos) override {
        FaultAt::Pass(FaultKind::Hook);
        KyStream::MoveTo(nPos);
    }
    void Write(void*, long nCount) override {
        FaultAt::Pass(FaultKind::Hook);
        m_nLength = std::max(m_nLength, m_nPos + nCount);
    }
    void Read(void*, long) override { FaultAt::Pass(FaultKind::Hook); }
};

class OwnStream : public Subject {
public:
    std::string Words() const {
        return "at " + std::to_string(m_stream.m_nPos) + " of " + std::to_string(m_stream.m_nLength);
    }
    std::string Contents() const { return ""; }
    std::string Fault() const { return ""; }

    ThrowingStream m_stream;
};

void AtFive(OwnStream& s) { s.m_stream.MoveTo(5); }

const Operation<OwnStream> g_ownStream[] = {
    {"Write", AtFive, [](OwnStream& s) { s.m_stream << 5L; }, Kept},
    {"Read", AtFive,
     [](OwnStream& s) {
         bool b = false;
         s.m_stream >> b;
     },
     Same},
    {"Reset", AtFive, [](OwnStream& s) { s.m_stream.Reset(); }, Same},
};
RUN_UNDER_FAULTS(KyStream, g_ownStream);

}  // namespace
