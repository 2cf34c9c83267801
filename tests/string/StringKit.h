// How the tests of the strings look at one.
#pragma once

#include <gmock/gmock.h>

#include <cstddef>
#include <string>

#include "VexaBase/string/KyString.h"

inline std::wstring Text(const KyString& s) { return {s.begin(), s.end()}; }

inline long Length(const std::wstring& text) { return static_cast<long>(text.size()); }

/// A string with these characters, embedded zeros included.
inline KyString Make(const std::wstring& text) {
    KyString s(text.c_str());
    for (std::size_t i = static_cast<std::size_t>(s.GetLength()); i < text.size();
         i = static_cast<std::size_t>(s.GetLength())) {
        s.Copy(L"?", s.GetLength());
        s.m_pData[i] = 0;
        s.Copy(text.c_str() + i + 1, s.GetLength());
    }
    return s;
}

/// A terminated string with these characters in a buffer of this size.
MATCHER_P2(IsString, text, nBuffer,
           "holds " + testing::PrintToString(std::wstring(text)) + " in a buffer of " +
               std::to_string(nBuffer)) {
    const KyString& s = arg;
    if (s.m_pData == nullptr || s.m_nStrLength < 0 || s.m_nStrLength >= s.m_nLength) {
        *result_listener << "length " << s.m_nStrLength << " in a buffer of " << s.m_nLength;
        return false;
    }
    *result_listener << "holds " << testing::PrintToString(Text(s)) << " in a buffer of " << s.m_nLength
                     << (s.m_pData[s.m_nStrLength] == 0 ? "" : ", not terminated");
    return s.m_pData[s.m_nStrLength] == 0 && Text(s) == std::wstring(text) && s.m_nLength == nBuffer;
}
