// A fuzzer's input, taken apart into numbers and texts. Where it has run out, everything is 0 or empty.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

class ByteSource {
public:
    ByteSource(const std::uint8_t* pData, std::size_t nSize) : m_p(pData), m_nLeft(nSize) {}

    bool IsEmpty() const { return m_nLeft == 0; }

    std::uint8_t Byte() {
        if (m_nLeft == 0) return 0;
        --m_nLeft;
        return *m_p++;
    }

    /// A number in nFirst .. nLast, at most 255 apart.
    long Number(long nFirst, long nLast) { return nFirst + Byte() % (nLast - nFirst + 1); }

    /// A text of up to nLongest characters of the alphabet.
    std::wstring Text(long nLongest, const std::wstring& alphabet) {
        std::wstring text;
        for (long n = Number(0, nLongest); n > 0; --n) {
            text += alphabet[Byte() % alphabet.size()];
        }
        return text;
    }

    /// The bytes of a text of up to nLongest.
    std::string Bytes(long nLongest) {
        const std::size_t nSize = std::min(static_cast<std::size_t>(Number(0, nLongest)), m_nLeft);
        std::string bytes(reinterpret_cast<const char*>(m_p), nSize);
        m_p += nSize;
        m_nLeft -= nSize;
        return bytes;
    }

private:
    const std::uint8_t* m_p;
    std::size_t m_nLeft;
};

/// Ends the run with a finding unless the condition holds.
#define FUZZ_CHECK(condition)                                                              \
    do {                                                                                   \
        if (!(condition)) {                                                                \
            std::fprintf(stderr, "%s:%d: not true: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                  \
        }                                                                                  \
    } while (false)
