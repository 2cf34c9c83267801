// The memory streams' rules as they are stated, byte by byte. A byte that the rules leave unspecified is none
// here.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using Byte = std::optional<char>;

/// What a read put where: none where the destination keeps what it held.
struct ReadResult {
    std::vector<Byte> m_bytes;  // the bytes that arrived, from the first on
};

inline std::size_t Size(long n) { return static_cast<std::size_t>(std::max(n, 0L)); }

/// A contiguous stream.
struct ByteModel {
    explicit ByteModel(long nCapacity = 0) : m_nCapacity(std::max(nCapacity, 0L)) {}

    void MoveTo(long nPos) { m_nPos = nPos >= 0 ? nPos : 0; }

    void Reset() {
        MoveTo(0);
        m_nLength = 0;
        m_nCount = 0;
        m_nCursor = -1;
        m_bytes.clear();
    }

    void Write(const std::string& data) {
        for (std::size_t i = 0; i < data.size(); ++i) {
            const long k = m_nPos + static_cast<long>(i);
            if (k >= m_nCount) {
                if (m_nCapacity < k + 1) m_nCapacity = k + 1 + m_nGrowBy;
                m_nCount = k + 1;
                m_bytes.resize(Size(m_nCount));
            }
            m_nCursor = k;
            m_bytes[Size(k)] = data[i];
        }
        m_nLength = m_nCount;
    }

    ReadResult Read(long nCount) {
        ReadResult result;
        m_nCursor = m_nPos;
        if (nCount < 1 || m_nPos >= m_nCount || m_nPos < 0) return result;
        while (nCount > 0 && m_nCursor < m_nCount) {
            result.m_bytes.push_back(m_bytes[Size(m_nCursor)]);
            ++m_nCursor;
            --nCount;
        }
        return result;
    }

    void SetLength(long n) {
        const std::size_t nKept = std::min(Size(n), Size(m_nCount));
        m_bytes.resize(nKept);
        m_bytes.resize(Size(n));
        m_nCapacity = n;
        m_nCount = n;
        m_nLength = n;
    }

    long m_nPos = 0;
    long m_nLength = 0;
    long m_nCount = 0;
    long m_nCursor = -1;
    long m_nCapacity;
    long m_nGrowBy = 1024;
    std::vector<Byte> m_bytes;
};

/// A stream in chunks.
struct ChunkModel {
    explicit ChunkModel(long nChunkSize) : m_nChunkSize(nChunkSize) {}

    void MoveTo(long nPos) { m_nPos = nPos >= 0 ? nPos : 0; }

    void Reset() {
        MoveTo(0);
        m_nLength = 0;
        m_chunks.clear();
        m_nCursor = -1;
    }

    /// Writes the first nCount bytes of the data, none when that is below 1.
    void Write(const std::string& data, long nCount) {
        const long nLast = (m_nPos + nCount - 1) / m_nChunkSize;
        while (nLast >= static_cast<long>(m_chunks.size())) {
            ByteModel chunk(m_nChunkSize);
            chunk.SetLength(m_nChunkSize);
            const long nChunks = static_cast<long>(m_chunks.size()) + 1;
            if (m_nCapacity < nChunks) m_nCapacity = nChunks + 1024;
            m_chunks.push_back(chunk);
        }
        m_nCursor = m_nPos / m_nChunkSize;
        for (long nDone = 0; nDone < nCount;) {
            ByteModel& chunk = m_chunks[Size(m_nCursor)];
            chunk.MoveTo(nDone == 0 ? m_nPos % m_nChunkSize : 0);
            const long nPiece = std::min(nCount - nDone, m_nChunkSize - chunk.m_nPos);
            chunk.Write(data.substr(Size(nDone), Size(nPiece)));
            nDone += nPiece;
            ++m_nCursor;
        }
        if (m_nPos + nCount > m_nLength) m_nLength = m_nPos + nCount;
    }

    ReadResult Read(long nCount) {
        ReadResult result;
        const long n = std::min(m_nLength - m_nPos, nCount);
        m_nCursor = m_nPos / m_nChunkSize;
        if (n < 1 || m_nCursor >= static_cast<long>(m_chunks.size()) || m_nCursor < 0) return result;
        long nDone = 0;
        do {
            ByteModel& chunk = m_chunks[Size(m_nCursor)];
            chunk.MoveTo(nDone == 0 ? m_nPos % m_nChunkSize : 0);
            const long nPiece = std::min(n - nDone, m_nChunkSize - chunk.m_nPos);
            const ReadResult piece = chunk.Read(nPiece);
            result.m_bytes.insert(result.m_bytes.end(), piece.m_bytes.begin(), piece.m_bytes.end());
            nDone += nPiece;
            ++m_nCursor;
        } while (nDone < n && m_nCursor < static_cast<long>(m_chunks.size()));
        return result;
    }

    long m_nPos = 0;
    long m_nLength = 0;
    long m_nChunkSize;
    long m_nCursor = -1;
    long m_nCapacity = 0;
    std::vector<ByteModel> m_chunks;
};

/// True when the bytes are the model's, wherever the model knows them.
inline bool BytesAgree(const char* pBytes, const std::vector<Byte>& expected) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (expected[i].has_value() && pBytes[i] != *expected[i]) return false;
    }
    return true;
}
