// How the tests of the streams write and look at bytes.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyStream.h"

/// Writes the bytes at the position, by Write.
inline void WriteBytes(KyStream& stream, std::string bytes) {
    stream.Write(bytes.data(), static_cast<long>(bytes.size()));
}

/// What Read gives for nCount bytes at the position, over a destination of dots.
inline std::string ReadBytes(KyStream& stream, long nCount) {
    std::string bytes(static_cast<std::size_t>(nCount), '.');
    stream.Read(bytes.data(), nCount);
    return bytes;
}

/// The bytes 0, 1, 2 and so on.
inline std::string Counting(long nCount) {
    std::string bytes;
    for (long i = 0; i < nCount; ++i) {
        bytes.push_back(static_cast<char>(i));
    }
    return bytes;
}

/// The contents of a contiguous stream.
inline std::string Bytes(const KyDynArrayStream& stream) {
    return {stream.m_bytes.begin(), stream.m_bytes.end()};
}

/// Codes of bytes as a string.
inline std::string Codes(std::initializer_list<unsigned> codes) {
    std::string bytes;
    for (const unsigned nCode : codes) {
        bytes.push_back(static_cast<char>(nCode));
    }
    return bytes;
}
