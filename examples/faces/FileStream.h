// A binary stream over a file, beside those in memory.
//
// Invariants, besides the contract of KyStream:
//   (1) m_nLength is the length that the file has once Flush has been called
//   (2) the block holds the file's bytes from m_nBlockPos on: bytes that were read, or, when m_bUnwritten,
//       bytes that the file does not have yet
//
// Typed values are a few bytes each; the block makes one call of the operating system out of thousands. Bytes
// that were skipped over are 0. Other than the memory streams this one can fail: it then throws
// std::runtime_error with the reason.
#pragma once

#include <string>

#include "VexaBase/stream/KyStream.h"

namespace faces {

class FileStream : public KyStream {
public:
    /// Over an open file, which stays the caller's and has to outlive the stream. Position 0, whatever the
    /// file's own one.
    explicit FileStream(int nDescriptor);

    /// Makes the file empty.
    void Reset() override;

    /// A count below 1 stores nothing.
    void Write(void* pData, long nCount) override;

    void Read(void* pData, long nCount) override;

    /// Writes what is left in the block. The destructor doesn't, since it could not tell of a failure.
    void Flush();

private:
    bool IsInBlock(long nCount) const;

    int m_nDescriptor;
    std::string m_strBlock;
    long m_nBlockPos = 0;
    bool m_bUnwritten = false;
};

}  // namespace faces
