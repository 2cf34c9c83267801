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
    /// chunks made so far stay, and the bytes are as they were. Requires a position of 0 or more.
    void Write(void* pData, long nCount) override;

    /// Copies min(nCount, length - position) bytes. O(bytes copied).
    void Read(void* pData, long nCount) override;

    /// Deletes every chunk.
    ~KyDynArrayStreamEx() override;

    long m_nChunkSize;                       // bytes a chunk
    KyDynPArray<KyDynArrayStream> m_chunks;  // the chunks in order

private:
    void AppendChunk();
    template <class Transfer>
    void ForEachPiece(long nCount, Transfer transfer);
};
