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

#include <memory>

#include "VexaBase/KyConfig.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/stream/KyStream.h"

class KY_API KyDynArrayStream : public KyStream {
public:
    /// An empty stream that reserves nCapacity bytes (none when that is 0 or less) and grows by 1024.
    explicit KyDynArrayStream(long nCapacity = 0);

    /// Empties the stream and keeps its storage: MoveTo(0), length 0, the bytes' cursor -1. O(1).
    void Reset() override;

    /// Stores nCount bytes at the position, which stays, in ascending order; the stream grows to hold them. A
    /// count below 1 stores nothing but still sets the length from the bytes. O(nCount), plus O(length) when
    /// a new block is taken; an allocation that fails leaves the stream as it was. The data may lie in the
    /// stream's own bytes. Requires a position of 0 or more.
    void Write(void* pData, long nCount) override;

    /// Copies min(nCount, bytes from the position on) bytes, in ascending order. O(bytes copied).
    void Read(void* pData, long nCount) override;

    ~KyDynArrayStream() override;

    /// Makes the stream exactly n bytes of exactly that capacity, no block when n is below 1, and keeps the
    /// first min(n, length) of them. A block that has that capacity already stays. The position and the
    /// bytes' cursor stay, and may lie past the end then. A negative n is stored as it is, deliberately, in
    /// length, count and capacity. O(n).
    void SetLength(long n);

    KyDynArray<char> m_bytes;  // the stream's bytes

private:
    std::unique_ptr<char[]> GrowTo(long nEnd);
};
