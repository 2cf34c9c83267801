// A binary stream in one contiguous, growable block of memory.
//
// Invariants, besides the contract of KyStream:
//   (1) m_nLength is m_bytes' element count after every Write, Reset and SetLength
//   (2) m_bytes' cursor is the last byte written, or one past the last byte read
//
// Bytes that were never written (a gap before the position of a Write, those gained by SetLength) are
// unspecified. Storage grows by the array's rule, byte for byte: when byte k does not fit, to k + 1 bytes and
// a reserve of m_nGrowBy (1024) more. A write of any size has the capacity that this gives, but takes one new
// block at most and copies once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>

#include "VexaBase/KyConfig.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/stream/KyStream.h"

class KY_API KyDynArrayStream : public KyStream {
public:
    /// An empty stream that reserves nothing.
    KyDynArrayStream() : KyDynArrayStream(0) {}

    /// An empty stream that reserves nCapacity bytes (none when that is 0 or less) and grows by 1024.
    explicit KyDynArrayStream(long nCapacity);

    /// Empties the stream and keeps its storage: MoveTo(0), length 0, the bytes' cursor -1. O(1).
    void Reset() override;

    /// Stores nCount bytes at the position, which stays, in ascending order; the stream grows to hold them. A
    /// count below 1 stores nothing but still sets the length from the bytes. O(nCount), plus O(length) when
    /// a new block is taken; an allocation that fails leaves the stream as it was. The data may lie in the
    /// stream's own bytes. Requires, when there is a byte to store, a pData that is not null, a position of 0 or
    /// more and m_bytes.m_nGrowBy >= 0.
    void Write(void* pData, long nCount) override;

    /// Copies min(nCount, bytes from the position on) bytes, in ascending order. O(bytes copied). Requires a
    /// pData that is not null when there is a byte to copy.
    void Read(void* pData, long nCount) override;

    ~KyDynArrayStream() override;

    /// Makes the stream exactly n bytes of exactly that capacity, no block when n is below 1, and keeps the
    /// first min(n, length) of them. A block that has that capacity already stays. The position and the
    /// bytes' cursor stay, and may lie past the end then. A negative n is stored as it is, deliberately, in
    /// length, count and capacity. O(n).
    void SetLength(long n);

    using KyStream::operator<<;
    using KyStream::operator>>;

    /// As KyStream's, in line: does what the typed write of its type does. O(1), growth apart.
    /// @{
    KyDynArrayStream& operator<<(char value) { return Put(value); }
    KyDynArrayStream& operator<<(bool value) { return Put(value); }
    KyDynArrayStream& operator<<(short value) { return Put(value); }
    KyDynArrayStream& operator<<(long value) { return Put(value); }
    KyDynArrayStream& operator<<(double value) { return Put(value); }
    /// @}

    /// As KyStream's, in line: does what the typed read of its type does. O(1).
    /// @{
    KyDynArrayStream& operator>>(char& value) { return Get(value); }
    KyDynArrayStream& operator>>(bool& value) { return Get(value); }
    KyDynArrayStream& operator>>(short& value) { return Get(value); }
    KyDynArrayStream& operator>>(long& value) { return Get(value); }
    KyDynArrayStream& operator>>(double& value) { return Get(value); }
    /// @}

    KyDynArray<char> m_bytes;  // the stream's bytes

private:
    friend class KyStream;
    friend class KyDynArrayStreamEx;

    std::unique_ptr<char[]> GrowTo(long nEnd);

    template <class T>
    KyDynArrayStream& Put(T value) {
        if (!WriteDirectly(value)) {
            KyStream::operator<<(value);
        }
        return *this;
    }

    template <class T>
    KyDynArrayStream& Get(T& value) {
        if (!ReadDirectly(value)) {
            KyStream::operator>>(value);
        }
        return *this;
    }

    // A typed operation without its virtual calls; false, and nothing happens, when it needs them.

    template <class T>
    bool WriteDirectly(T value) {
        const long nPos = m_nPos;
        if (!WriteAt(nPos, value)) {
            return false;
        }
        m_nPos = nPos + Width<T>();
        return true;
    }

    template <class T>
    bool ReadDirectly(T& value) {
        const long nPos = m_nPos;
        if (!ReadAt(nPos, value)) {
            return false;
        }
        m_nPos = nPos + Width<T>();
        return true;
    }

    // Write and Read of a value at nPos, without the calls; false, and nothing happens, when there may be an
    // override, the value does not lie in the storage, or the destination begins inside the bytes to be read.

    template <class T>
    bool WriteAt(long nPos, T value) {
        if (!IsExactly<KyDynArrayStream>() || !LiesBelow<T>(nPos, m_bytes.m_nCapacity)) {
            return false;
        }
        const long nEnd = nPos + Width<T>();
        m_bytes.m_nCurIndex = nEnd - 1;
        if (nEnd > m_bytes.m_nLength) {
            m_bytes.m_nLength = nEnd;
        }
        m_nLength = m_bytes.m_nLength;
        std::memcpy(m_bytes.m_pData + nPos, &value, sizeof(T));
        return true;
    }

    template <class T>
    bool ReadAt(long nPos, T& value) {
        if (!IsExactly<KyDynArrayStream>() || !LiesBelow<T>(nPos, m_bytes.m_nLength)) {
            return false;
        }
        const char* const pFrom = m_bytes.m_pData + nPos;
        const auto nAhead =
            reinterpret_cast<std::uintptr_t>(&value) - reinterpret_cast<std::uintptr_t>(pFrom);
        if (nAhead - 1 < sizeof(T) - 1) {
            return false;
        }
        if constexpr (std::is_same_v<T, bool>) {
            value = *pFrom != 0;
        } else {
            std::memmove(&value, pFrom, sizeof(T));
        }
        m_bytes.m_nCurIndex = nPos + Width<T>();
        return true;
    }

    template <class T>
    static constexpr long Width() {
        return static_cast<long>(sizeof(T));
    }

    /// Whether the bytes of a T from nPos on are among 0 .. nEnd - 1.
    template <class T>
    static bool LiesBelow(long nPos, long nEnd) {
        return (nPos | nEnd) >= 0 &&
               static_cast<std::size_t>(nPos) + sizeof(T) <= static_cast<std::size_t>(nEnd);
    }
};
