#include "examples/faces/FileStream.h"

#include <algorithm>
#include <cstring>

#include "examples/program/Descriptor.h"

namespace faces {
namespace {

constexpr long BlockSize = 1 << 16;

/// As many of the bytes as the file has.
long ReadAt(int nDescriptor, char* pTo, long nCount, long nPos) {
    long nDone = 0;
    while (nDone < nCount) {
        const ssize_t n =
            ::pread(nDescriptor, pTo + nDone, static_cast<std::size_t>(nCount - nDone), nPos + nDone);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) program::FailAsErrnoSays();
        if (n == 0) break;
        nDone += n;
    }
    return nDone;
}

void WriteAt(int nDescriptor, const char* pFrom, long nCount, long nPos) {
    for (long nDone = 0; nDone < nCount;) {
        const ssize_t n =
            ::pwrite(nDescriptor, pFrom + nDone, static_cast<std::size_t>(nCount - nDone), nPos + nDone);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) program::FailAsErrnoSays();
        nDone += n;
    }
}

}  // namespace

FileStream::FileStream(int nDescriptor) : m_nDescriptor(nDescriptor) {
    struct stat status {};
    if (::fstat(nDescriptor, &status) != 0) program::FailAsErrnoSays();
    m_nLength = status.st_size;
}

void FileStream::Reset() {
    if (::ftruncate(m_nDescriptor, 0) != 0) program::FailAsErrnoSays();
    m_strBlock.clear();
    m_bUnwritten = false;
    KyStream::Reset();
}

void FileStream::Write(void* pData, long nCount) {
    if (nCount < 1) return;
    const auto* pFrom = static_cast<const char*>(pData);
    const long nBlockEnd = m_nBlockPos + static_cast<long>(m_strBlock.size());
    const bool bAppends =
        m_bUnwritten && m_nPos == nBlockEnd && nCount <= BlockSize - static_cast<long>(m_strBlock.size());
    if (!bAppends) {
        Flush();
        m_strBlock.clear();
        m_nBlockPos = m_nPos;
    }
    if (nCount > BlockSize) {
        WriteAt(m_nDescriptor, pFrom, nCount, m_nPos);
    } else {
        m_strBlock.append(pFrom, static_cast<std::size_t>(nCount));
        m_bUnwritten = true;
    }
    m_nLength = std::max(m_nLength, m_nPos + nCount);
}

void FileStream::Read(void* pData, long nCount) {
    nCount = std::min(nCount, m_nLength - m_nPos);
    if (nCount < 1) return;
    Flush();
    auto* pTo = static_cast<char*>(pData);
    if (nCount > BlockSize) {
        ReadAt(m_nDescriptor, pTo, nCount, m_nPos);
        return;
    }
    if (!IsInBlock(nCount)) {
        m_strBlock.resize(static_cast<std::size_t>(BlockSize));
        m_strBlock.resize(
            static_cast<std::size_t>(ReadAt(m_nDescriptor, m_strBlock.data(), BlockSize, m_nPos)));
        m_nBlockPos = m_nPos;
    }
    const auto nFrom = static_cast<std::size_t>(m_nPos - m_nBlockPos);
    m_strBlock.copy(pTo, static_cast<std::size_t>(nCount), nFrom);
}

void FileStream::Flush() {
    if (!m_bUnwritten) return;
    WriteAt(m_nDescriptor, m_strBlock.data(), static_cast<long>(m_strBlock.size()), m_nBlockPos);
    m_bUnwritten = false;
}

bool FileStream::IsInBlock(long nCount) const {
    return m_nPos >= m_nBlockPos && m_nPos + nCount <= m_nBlockPos + static_cast<long>(m_strBlock.size());
}

}  // namespace faces
