#include "VexaBase/stream/KyDynArrayStreamEx.h"

#include <algorithm>
#include <memory>

KyDynArrayStreamEx::KyDynArrayStreamEx(long nChunkSize) : m_nChunkSize(nChunkSize) {
    KY_CHECK(nChunkSize > 0, "KyDynArrayStreamEx::KyDynArrayStreamEx", "chunk size below 1 (%ld)",
             nChunkSize);
}

void KyDynArrayStreamEx::Reset() {
    MoveTo(0);
    m_nLength = 0;
    m_chunks.Reset();
}

/// Sets the chunks' cursor to the position's chunk and calls transfer(chunk, bytes done, bytes to do) for
/// each chunk that nCount bytes from there on touch, the chunk moved to its first byte of them. The cursor
/// ends one past the last.
template <class Transfer>
void KyDynArrayStreamEx::ForEachPiece(long nCount, Transfer transfer) {
    m_chunks.MoveTo(m_nPos / m_nChunkSize);
    long nPosInChunk = m_nPos % m_nChunkSize;
    long nDone = 0;
    while (nDone < nCount && m_chunks.m_nCurIndex >= 0 && m_chunks.m_nCurIndex < m_chunks.m_nLength) {
        KyDynArrayStream& chunk = *m_chunks.GetCurData();
        chunk.MoveTo(nPosInChunk);
        const long nPiece = std::min(nCount - nDone, m_nChunkSize - chunk.m_nPos);
        transfer(chunk, nDone, nPiece);
        nDone += nPiece;
        nPosInChunk = 0;
        m_chunks.MoveToNext();
    }
}

void KyDynArrayStreamEx::Write(void* pData, long nCount) {
    KY_CHECK(pData != nullptr || nCount < 1, "KyDynArrayStreamEx::Write", "no data (count %ld)", nCount);
    KY_CHECK(m_nPos >= 0 || nCount < 1, "KyDynArrayStreamEx::Write", "negative position (%ld)", m_nPos);
    const long nEnd = PastTheNext(nCount);
    // An end further down lies in front of the first chunk all the same.
    const long nLast = std::max(nEnd, -m_nChunkSize) - 1;
    while (nLast / m_nChunkSize >= m_chunks.m_nLength) {
        AppendChunk();
    }
    char* const pFrom = static_cast<char*>(pData);
    ForEachPiece(nCount, [pFrom](KyDynArrayStream& chunk, long nDone, long nPiece) {
        chunk.Write(pFrom + nDone, nPiece);
    });
    m_nLength = std::max(m_nLength, nEnd);
}

void KyDynArrayStreamEx::Read(void* pData, long nCount) {
    const long nRead = std::min(m_nLength - m_nPos, nCount);
    KY_CHECK(pData != nullptr || nRead < 1, "KyDynArrayStreamEx::Read", "no destination (count %ld)", nCount);
    char* const pTo = static_cast<char*>(pData);
    ForEachPiece(
        nRead, [pTo](KyDynArrayStream& chunk, long nDone, long nPiece) { chunk.Read(pTo + nDone, nPiece); });
}

KyDynArrayStreamEx::~KyDynArrayStreamEx() = default;

void KyDynArrayStreamEx::AppendChunk() {
    const long nChunks = m_chunks.m_nLength;
    if (nChunks == m_chunks.m_nCapacity) {
        // The slot comes first, by the array's own growth rule, so that appending the chunk cannot fail.
        m_chunks.SetLength(nChunks + 1 + m_chunks.m_nGrowBy, true);
        m_chunks.ReAllocate(nChunks);
    }
    auto chunk = std::make_unique<KyDynArrayStream>(m_nChunkSize);
    chunk->SetLength(m_nChunkSize);
    m_chunks.Append(chunk.release());
}
