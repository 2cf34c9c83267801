// Text between UTF-8, as files and terminals have it, and KyString, which has one character of Unicode an
// element:
//
//     const KyString name = KyFromUtf8(strLine);
//     std::cout << KyToUtf8(name);
//
// Neither direction fails: U+FFFD, the replacement character, stands for what is not valid. U+0000 and a byte
// order mark are characters like any other. Text that is valid comes back as it was.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "VexaBase/string/KyString.h"

/// What stands for text that is not valid.
constexpr wchar_t KyReplacementCharacter = 0xFFFD;

/// The character that begins at pText, which moves past it. Bytes that are no character of UTF-8 (truncated,
/// overlong, a surrogate, past U+10FFFF) give the replacement character, and pText moves past those that
/// could still have become one, or past one byte. Requires pText before pEnd.
inline wchar_t KyNextOfUtf8(const char*& pText, const char* pEnd) {
    const auto nFirst = static_cast<unsigned char>(*pText++);
    if (nFirst < 0x80) {
        return static_cast<wchar_t>(nFirst);
    }
    const int nMore = nFirst < 0xC2 ? 0 : nFirst < 0xE0 ? 1 : nFirst < 0xF0 ? 2 : nFirst < 0xF5 ? 3 : 0;
    if (nMore == 0) {
        return KyReplacementCharacter;
    }
    // The second byte's range leaves out the overlong, the surrogates and what lies past U+10FFFF.
    unsigned int nLow = nFirst == 0xE0 ? 0xA0 : nFirst == 0xF0 ? 0x90 : 0x80;
    unsigned int nHigh = nFirst == 0xED ? 0x9F : nFirst == 0xF4 ? 0x8F : 0xBF;
    unsigned int nCharacter = nFirst & (0x3FU >> nMore);
    for (int i = 0; i < nMore; ++i) {
        if (pText == pEnd) {
            return KyReplacementCharacter;
        }
        const auto nByte = static_cast<unsigned char>(*pText);
        if (nByte < nLow || nByte > nHigh) {
            return KyReplacementCharacter;
        }
        ++pText;
        nCharacter = nCharacter << 6 | (nByte & 0x3FU);
        nLow = 0x80;
        nHigh = 0xBF;
    }
    return static_cast<wchar_t>(nCharacter);
}

/// The text of UTF-8 bytes, in a buffer of exactly its length + 1. Each longest run of bytes that begins a
/// character but does not complete it, and each byte that cannot begin one, becomes one U+FFFD, as Unicode
/// recommends. O(bytes).
inline KyString KyFromUtf8(std::string_view bytes) {
    const char* const pEnd = bytes.data() + bytes.size();
    long nLength = 0;
    for (const char* p = bytes.data(); p != pEnd; ++nLength) {
        KyNextOfUtf8(p, pEnd);
    }
    KyString text;
    text.Copy(0, nLength, 0);  // lengthens it
    const char* p = bytes.data();
    for (wchar_t& ch : text) {
        ch = KyNextOfUtf8(p, pEnd);
    }
    return text;
}

/// The UTF-8 bytes of a text. What is no character of Unicode (a surrogate, a negative element, one past
/// U+10FFFF) is written as U+FFFD. O(length).
inline std::string KyToUtf8(const KyString& text) {
    std::string strBytes;
    strBytes.reserve(static_cast<std::size_t>(text.GetLength()));
    const auto append = [&strBytes](char32_t nByte) { strBytes += static_cast<char>(nByte); };
    for (const wchar_t ch : text) {
        auto nCharacter = static_cast<char32_t>(ch);
        if (nCharacter > 0x10FFFF || (nCharacter >= 0xD800 && nCharacter < 0xE000)) {
            nCharacter = KyReplacementCharacter;
        }
        if (nCharacter < 0x80) {
            append(nCharacter);
            continue;
        }
        if (nCharacter < 0x800) {
            append(0xC0 | nCharacter >> 6);
        } else if (nCharacter < 0x10000) {
            append(0xE0 | nCharacter >> 12);
            append(0x80 | (nCharacter >> 6 & 0x3F));
        } else {
            append(0xF0 | nCharacter >> 18);
            append(0x80 | (nCharacter >> 12 & 0x3F));
            append(0x80 | (nCharacter >> 6 & 0x3F));
        }
        append(0x80 | (nCharacter & 0x3F));
    }
    return strBytes;
}
