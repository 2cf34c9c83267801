// A binary stream in chunks of one size: growth adds chunks and never moves a byte that was written.
//
// Invariants, besides the contract of KyStream:
//   (1) chunk i holds the bytes from i * m_nChunkSize to (i + 1) * m_nChunkSize, exclusive, and is that long
//       from the moment it is made
//   (2) chunks are appended at the end only, and all up to the one of the last byte written exist
//   (3) m_nLength is the greatest end of a write since the last Reset; the stream ends there, not where the
//       last chunk does
//
// The chunks' array owns them; its cursor is one past the last chunk used. Bytes that were skipped over are
// unspecified. Positions fall into chunks by signed division that truncates toward zero. So, deliberately, a
// write of no bytes at position 0 of an empty stream makes the first chunk, when chunks have more than one
// byte.
#pragma once

#include <algorithm>

#include "VexaBase/KyConfig.h"
#include "VexaBase/containers/KyDynPArray.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyStream.h"

class KY_API KyDynArrayStreamEx : public KyStream {
public:
    /// An empty stream without chunks. Requires nChunkSize > 0.
    explicit KyDynArrayStreamEx(long nChunkSize);

    /// Empties the stream: MoveTo(0), length 0, every chunk deleted. The storage of the chunks' array is
    /// kept. O(chunks).
    void Reset() override;

    /// Stores nCount bytes at the position, which stays; makes every chunk up to the last byte's first. A
    /// count below 1 stores nothing, but makes the chunks up to position + nCount - 1 and lengthens the
    /// stream to position + nCount. O(nCount), plus the new chunks' bytes. When an allocation fails, the
    /// chunks made so far stay, and the bytes are as they were. Requires, when there is a byte to store, a pData
    /// that is not null and a position of 0 or more.
    void Write(void* pData, long nCount) override;

    /// Copies min(nCount, length - position) bytes. O(bytes copied). Requires a pData that is not null when
    /// there is a byte to copy.
    void Read(void* pData, long nCount) override;

    /// Deletes every chunk.
    ~KyDynArrayStreamEx() override;

    using KyStream::operator<<;
    using KyStream::operator>>;

    /// As KyStream's, in line: does what the typed write of its type does. O(1), growth apart.
    /// @{
    KyDynArrayStreamEx& operator<<(char value) { return Put(value); }
    KyDynArrayStreamEx& operator<<(bool value) { return Put(value); }
    KyDynArrayStreamEx& operator<<(short value) { return Put(value); }
    KyDynArrayStreamEx& operator<<(long value) { return Put(value); }
    KyDynArrayStreamEx& operator<<(double value) { return Put(value); }
    /// @}

    /// As KyStream's, in line: does what the typed read of its type does. O(1).
    /// @{
    KyDynArrayStreamEx& operator>>(char& value) { return Get(value); }
    KyDynArrayStreamEx& operator>>(bool& value) { return Get(value); }
    KyDynArrayStreamEx& operator>>(short& value) { return Get(value); }
    KyDynArrayStreamEx& operator>>(long& value) { return Get(value); }
    KyDynArrayStreamEx& operator>>(double& value) { return Get(value); }
    /// @}

    long m_nChunkSize;                       // bytes a chunk
    KyDynPArray<KyDynArrayStream> m_chunks;  // the chunks in order

private:
    friend class KyStream;

    void AppendChunk();
    template <class Transfer>
    void ForEachPiece(long nCount, Transfer transfer);

    template <class T>
    KyDynArrayStreamEx& Put(T value) {
        if (!WriteDirectly(value)) {
            KyStream::operator<<(value);
        }
        return *this;
    }

    template <class T>
    KyDynArrayStreamEx& Get(T& value) {
        if (!ReadDirectly(value)) {
            KyStream::operator>>(value);
        }
        return *this;
    }

    // A typed operation without its virtual calls, for a value that lies in the chunk used last; false, and
    // nothing happens, when it needs them.

    template <class T>
    bool WriteDirectly(T value) {
        KyDynArrayStream* const pChunk = ChunkUsedLast();
        if (pChunk == nullptr) {
            return false;
        }
        const long nPos = m_nPos;
        const long nLength = m_nLength;
        const long nPosInChunk = nPos - (m_chunks.m_nCurIndex - 1) * m_nChunkSize;
        if (!pChunk->WriteAt(nPosInChunk, value)) {
            return false;
        }
        pChunk->m_nPos = nPosInChunk;
        m_nPos = nPos + static_cast<long>(sizeof(T));
        m_nLength = std::max(nLength, m_nPos);
        return true;
    }

    template <class T>
    bool ReadDirectly(T& value) {
        KyDynArrayStream* const pChunk = ChunkUsedLast();
        const long nPos = m_nPos;
        if (pChunk == nullptr || nPos > m_nLength - static_cast<long>(sizeof(T))) {
            return false;
        }
        const long nPosInChunk = nPos - (m_chunks.m_nCurIndex - 1) * m_nChunkSize;
        if (!pChunk->ReadAt(nPosInChunk, value)) {
            return false;
        }
        pChunk->m_nPos = nPosInChunk;
        m_nPos = nPos + static_cast<long>(sizeof(T));
        return true;
    }

    /// The chunk in front of the chunks' cursor, where the transfer before this one ended; null when there is
    /// none, or this may be a derived stream.
    KyDynArrayStream* ChunkUsedLast() const {
        const long nChunk = m_chunks.m_nCurIndex - 1;
        const bool bThere = IsExactly<KyDynArrayStreamEx>() && nChunk >= 0 && nChunk < m_chunks.m_nLength;
        return bThere ? m_chunks.m_pData[nChunk] : nullptr;
    }
};
