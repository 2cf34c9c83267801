// Searches and replacements over any text, pattern and window, against comparing at every position.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ByteSource.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/string/KyString.h"

namespace {

std::vector<long> AllMatches(const std::wstring& text, const std::wstring& pattern, long nStart, long nEnd) {
    const long nLength = static_cast<long>(text.size());
    const long nPattern = static_cast<long>(pattern.size());
    const long nLast = nEnd == -1 ? nLength - 1 : std::min(nEnd, nLength - 1);
    std::vector<long> matches;
    for (long i = nStart; i + nPattern - 1 <= nLast;) {
        const bool bMatches = text.compare(static_cast<std::size_t>(i), pattern.size(), pattern) == 0;
        if (bMatches) matches.push_back(i);
        i += bMatches ? nPattern : 1;
    }
    return matches;
}

std::wstring Replaced(const std::wstring& text, const std::vector<long>& matches, std::size_t nOld,
                      const std::wstring& sNew) {
    std::wstring result;
    std::size_t nDone = 0;
    for (const long i : matches) {
        result += text.substr(nDone, static_cast<std::size_t>(i) - nDone) + sNew;
        nDone = static_cast<std::size_t>(i) + nOld;
    }
    return result + text.substr(nDone);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    ByteSource source(pData, nSize);
    const std::wstring alphabet =
        std::wstring(L"abcd").substr(0, static_cast<std::size_t>(source.Number(1, 4)));
    const std::wstring pattern = L"a" + source.Text(80, alphabet);
    const std::wstring sNew = source.Text(20, alphabet);
    const std::wstring text = source.Text(250, alphabet) + pattern + source.Text(250, alphabet);
    const long nStart = source.Number(0, 200);
    const long nEnd = source.Number(-1, 200);

    KyString s(text.c_str());
    KyListQuene<long> queue;
    const long nFirst = s.Find(pattern.c_str(), nStart, nEnd);
    const long nAll = s.Find(pattern.c_str(), queue, nStart, nEnd);
    const long nReplaced = s.Replace(pattern.c_str(), sNew.c_str(), nStart, nEnd);

    const std::vector<long> matches = AllMatches(text, pattern, nStart, nEnd);
    FUZZ_CHECK(nFirst == (matches.empty() ? -1 : matches.front()));
    FUZZ_CHECK(nAll == static_cast<long>(matches.size()));
    FUZZ_CHECK(std::vector<long>(queue.begin(), queue.end()) == matches);
    FUZZ_CHECK(nReplaced == nAll);
    FUZZ_CHECK(std::wstring(s.begin(), s.end()) == Replaced(text, matches, pattern.size(), sNew));
    FUZZ_CHECK(s.m_nLength == s.m_nStrLength + 1 && s.c_str()[s.GetLength()] == 0);
    return 0;
}
