#include "VexaBase/stream/KyDynArrayStream.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace {

std::size_t Size(long n) { return static_cast<std::size_t>(n); }
std::uintptr_t Address(const char* p) { return reinterpret_cast<std::uintptr_t>(p); }

/// Copies byte by byte in ascending order: where the destination begins inside the source, what has been
/// copied is copied again.
void CopyAscending(const char* pFrom, char* pTo, long nCount) {
    const std::size_t nCopied = Size(nCount);
    const std::uintptr_t nAhead = Address(pTo) - Address(pFrom);
    if (nAhead == 0 || nAhead >= nCopied) {
        std::memmove(pTo, pFrom, nCopied);
        return;
    }
    for (std::size_t i = 0; i < nCopied; ++i) {
        pTo[i] = pFrom[i];
    }
}

}  // namespace

KyDynArrayStream::KyDynArrayStream(long nCapacity) : m_bytes(nCapacity, 1024) {}

void KyDynArrayStream::Reset() {
    MoveTo(0);
    m_nLength = 0;
    m_bytes.Reset();
}

void KyDynArrayStream::Write(void* pData, long nCount) {
    if (nCount >= 1) {
        KY_CHECK(pData != nullptr, "KyDynArrayStream::Write", "no data (count %ld)", nCount);
        KY_CHECK(m_nPos >= 0, "KyDynArrayStream::Write", "negative position (%ld)", m_nPos);
        const long nEnd = PastTheNext(nCount);
        const std::unique_ptr<char[]> replaced = GrowTo(nEnd);
        CopyAscending(static_cast<const char*>(pData), m_bytes.m_pData + m_nPos, nCount);
        m_bytes.m_nCurIndex = nEnd - 1;
    }
    m_nLength = m_bytes.m_nLength;
}

void KyDynArrayStream::Read(void* pData, long nCount) {
    m_bytes.m_nCurIndex = m_nPos;
    if (nCount < 1 || m_nPos < 0 || m_nPos >= m_bytes.m_nLength) {
        return;
    }
    KY_CHECK(pData != nullptr, "KyDynArrayStream::Read", "no destination (count %ld)", nCount);
    const long nCopied = std::min(nCount, m_bytes.m_nLength - m_nPos);
    CopyAscending(m_bytes.m_pData + m_nPos, static_cast<char*>(pData), nCopied);
    m_bytes.m_nCurIndex = m_nPos + nCopied;
}

KyDynArrayStream::~KyDynArrayStream() = default;

void KyDynArrayStream::SetLength(long n) {
    m_bytes.SetLength(n, true);
    m_nLength = n;
}

/// Makes room for the bytes from the position to nEnd. One step a byte gives the capacity: each byte that
/// does not fit takes m_nGrowBy more with it, so storage grows by whole steps of m_nGrowBy + 1 from the first
/// such byte on. Returns the block that was replaced, in which the bytes to be written may lie.
std::unique_ptr<char[]> KyDynArrayStream::GrowTo(long nEnd) {
    std::unique_ptr<char[]> block;
    if (nEnd > m_bytes.m_nCapacity) {
        KY_CHECK(m_bytes.m_nGrowBy >= 0, "KyDynArrayStream::Write", "negative growth step (%ld)",
                 m_bytes.m_nGrowBy);
        const long nFirst = std::max({m_nPos, m_bytes.m_nLength, m_bytes.m_nCapacity});
        const std::size_t nBehindFirst = Size(std::max(nEnd - nFirst, 1L) - 1);
        const std::size_t nStep = Size(m_bytes.m_nGrowBy) + 1;
        // Unsigned, so that a sum that no long holds becomes a size that the allocation refuses.
        const std::size_t nCapacity = Size(nFirst) + (nBehindFirst / nStep + 1) * nStep;
        block.reset(new char[nCapacity]);
        std::copy_n(m_bytes.m_pData, m_bytes.m_nLength, block.get());
        m_bytes.m_nCapacity = static_cast<long>(nCapacity);
        block.reset(std::exchange(m_bytes.m_pData, block.release()));
    }
    m_bytes.m_nLength = std::max(m_bytes.m_nLength, nEnd);
    return block;
}
