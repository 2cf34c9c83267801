#include "VexaBase/string/KyString.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstddef>
#include <cwchar>
#include <limits>
#include <utility>
#include <vector>

namespace {

std::size_t Size(long n) { return static_cast<std::size_t>(n); }

/// Searches for one pattern by Knuth, Morris and Pratt, with the pattern's next table. The pattern is not
/// empty and outlives the searcher.
class Searcher {
public:
    explicit Searcher(const KyString& pattern)
        : m_pPattern(pattern.c_str()), m_nPattern(pattern.GetLength()) {
        if (Size(m_nPattern) > m_shortTable.size()) {
            m_longTable.reset(new long[Size(m_nPattern)]);
            m_pNext = m_longTable.get();
        }
        pattern.CreateNextTable(m_pNext);
    }
    Searcher(const Searcher&) = delete;
    Searcher& operator=(const Searcher&) = delete;

    /// Index of the first match inside pText[nFrom .. nEnd - 1], or -1.
    long Next(const wchar_t* pText, long nFrom, long nEnd) const {
        long i = nFrom;
        long j = 0;
        while (nEnd - i >= m_nPattern - j) {
            if (pText[i] == m_pPattern[j]) {
                ++i;
                ++j;
                if (j == m_nPattern) {
                    return i - m_nPattern;
                }
            } else if (j == 0) {
                const wchar_t* const pCandidate = std::wmemchr(pText + i, *m_pPattern, Size(nEnd - i));
                if (pCandidate == nullptr) {
                    return -1;
                }
                i = pCandidate - pText;
            } else {
                j = m_pNext[j];
                if (j == -1) {
                    ++i;
                    j = 0;
                }
            }
        }
        return -1;
    }

private:
    const wchar_t* m_pPattern;
    long m_nPattern;
    std::array<long, 64> m_shortTable;
    std::unique_ptr<long[]> m_longTable;
    long* m_pNext = m_shortTable.data();
};

}  // namespace

KyString::KyString(const wchar_t* s) : KyString(s, s == nullptr ? 0 : static_cast<long>(std::wcslen(s))) {}

KyString::KyString(const wchar_t* pText, long nCount) {
    ReAllocate(nCount + 1, false);
    std::copy_n(pText, nCount, m_pData);
    Cut(nCount);
}

KyString::KyString(const KyString& other) : KyString(other.m_pData, other.m_nStrLength) {}

// NOLINTNEXTLINE(performance-noexcept-move-constructor): the fresh buffer
KyString::KyString(KyString&& other) : KyString() { swap(other); }

KyString& KyString::operator=(const KyString& other) {
    if (this != &other) {
        ReAllocate(other.m_nStrLength + 1, false);
        std::copy_n(other.m_pData, other.m_nStrLength, m_pData);
        Cut(other.m_nStrLength);
    }
    return *this;
}

KyString& KyString::operator=(KyString&& other) noexcept {
    if (this != &other) {
        swap(other);
        other.Cut(0);
    }
    return *this;
}

KyString::~KyString() = default;

void KyString::Copy(const wchar_t* s, long nPos) {
    if (s == nullptr) {
        return;
    }
    const long nCount = static_cast<long>(std::wcslen(s));
    if (nCount == 0 && nPos <= m_nStrLength) {
        return;
    }
    KY_CHECK(nPos >= 0, "KyString::Copy", "negative position (%ld)", nPos);
    Write(s, nCount, nPos);
}

void KyString::Copy(long nFrom, long nTo, long nCount) {
    const long nEnd = nTo + nCount;
    if (nEnd > m_nStrLength) {
        if (nEnd >= m_nLength) {
            ReAllocate(nEnd + 1, true);
        }
        Cut(nEnd);
    }
    if (nCount < 1 || nFrom == nTo) {
        return;
    }
    KY_CHECK(nFrom >= 0 && nTo >= 0 && nFrom <= m_nLength - nCount, "KyString::Copy",
             "run outside the buffer (from %ld, to %ld, count %ld, buffer size %ld)", nFrom, nTo, nCount,
             m_nLength);
    std::wmemmove(m_pData + nTo, m_pData + nFrom, Size(nCount));
}

bool KyString::Insert(long nPos, const KyString& s) {
    if (nPos < 0 || nPos > m_nStrLength) {
        return false;
    }
    const wchar_t* const pTail = m_pData + nPos;
    const long nTail = m_nStrLength - nPos;
    const long nStrLength = m_nStrLength + s.m_nStrLength;
    if (nStrLength < m_nLength) {
        // The tail moves behind all of this string's text, so that s is still whole when it is this string.
        std::wmemmove(m_pData + nPos + s.m_nStrLength, pTail, Size(nTail));
        std::wmemmove(m_pData + nPos, s.m_pData, Size(s.m_nStrLength));
        Cut(nStrLength);
        return true;
    }
    std::unique_ptr<wchar_t[]> buffer(new wchar_t[Size(nStrLength) + 1]);
    wchar_t* pOut = std::copy_n(m_pData, nPos, buffer.get());
    pOut = std::copy_n(s.m_pData, s.m_nStrLength, pOut);
    std::copy_n(pTail, nTail, pOut);
    Adopt(std::move(buffer), nStrLength);
    return true;
}

KyString& KyString::Format(const wchar_t* fmt, ...) {
    KY_CHECK(fmt != nullptr, "KyString::Format", "no format");
    constexpr long nBuffer = 1025;
    // The arguments may be this string's own text, so the result is made beside it. vswprintf does not
    // terminate a text that it has cut: the zeros see to that.
    wchar_t text[nBuffer] = {};
    std::va_list args;
    va_start(args, fmt);
    std::vswprintf(text, nBuffer - 1, fmt, args);
    va_end(args);

    Cut(0);
    ReAllocate(nBuffer, false);
    m_pData[nBuffer - 1] = 0;
    const long nStrLength = static_cast<long>(std::wcslen(text));
    std::copy_n(text, nStrLength, m_pData);
    Cut(nStrLength);
    return *this;
}

void KyString::MakeUpper() {
    for (wchar_t& ch : *this) {
        if (ch >= L'a' && ch <= L'z') {
            ch = static_cast<wchar_t>(ch - 32);
        }
    }
}

long KyString::ReverseFind(wchar_t ch) const {
    long i = m_nStrLength - 1;
    while (i >= 0 && m_pData[i] != ch) {
        --i;
    }
    return i;
}

KyString& KyString::operator<<(double d) {
    constexpr std::size_t nLongest = std::numeric_limits<double>::max_exponent10 + 16;
    wchar_t text[nLongest];
    Write(text, std::swprintf(text, nLongest, L"%f", d), m_nStrLength);

    long nLast = m_nStrLength - 1;
    while (nLast > 0 && m_pData[nLast] == L'0' && m_pData[nLast - 1] != L'.') {
        --nLast;
    }
    Cut(nLast + 1);
    return *this;
}

void KyString::CreateNextTable(long* pNext) const {
    if (m_nStrLength < 1) {
        return;
    }
    pNext[0] = -1;
    if (m_nStrLength == 1) {
        return;
    }
    pNext[1] = 0;
    long i = 1;
    long j = 0;
    while (i < m_nStrLength - 1) {
        if (m_pData[i] == m_pData[j]) {
            ++i;
            ++j;
            pNext[i] = m_pData[i] != m_pData[j] ? j : pNext[j];
            continue;
        }
        j = pNext[j];
        if (j == -1) {
            ++i;
            j = 0;
            pNext[i] = 0;
        }
    }
}

/// The last character of a search window that the caller ended at nEnd.
long KyString::LastInWindow(long nEnd) const {
    return nEnd == -1 ? m_nStrLength - 1 : std::min(nEnd, m_nStrLength - 1);
}

/// Calls onMatch with the index of every match of s inside the window, ascending, without overlaps.
template <class OnMatch>
void KyString::ForEachMatch(const KyString& s, long nStart, long nEnd, OnMatch onMatch) const {
    const long nLast = LastInWindow(nEnd);
    if (nLast < nStart) {
        return;
    }
    KY_CHECK(nStart >= 0, "KyString::Find", "negative start (%ld)", nStart);
    const Searcher searcher(s);
    long i = searcher.Next(m_pData, std::max(nStart, 0L), nLast + 1);
    while (i != -1) {
        onMatch(i);
        i = searcher.Next(m_pData, i + s.m_nStrLength, nLast + 1);
    }
}

long KyString::Find(const KyString& s, long nStart, long nEnd) const {
    const long nLast = LastInWindow(nEnd);
    if (s.m_nStrLength < 1 || nLast < nStart) {
        return -1;
    }
    KY_CHECK(nStart >= 0, "KyString::Find", "negative start (%ld)", nStart);
    return Searcher(s).Next(m_pData, std::max(nStart, 0L), nLast + 1);
}

long KyString::Find(const KyString& s, KyQuene<long>& queue, long nStart, long nEnd) const {
    if (s.m_nStrLength < 1) {
        return -1;
    }
    ForEachMatch(s, nStart, nEnd, [&queue](long i) { queue.EnQuene(i); });
    return queue.GetLength();
}

long KyString::FindEx(const KyString& /*s*/, KyString& /*out*/, int /*n*/, long /*nStart*/,
                      long /*nEnd*/) const {
    return -1;
}

long KyString::Replace(const KyString& sOld, const KyString& sNew, long nStart, long nEnd) {
    std::vector<long> positions;
    long nCount = -1;
    if (sOld.m_nStrLength > 0) {
        ForEachMatch(sOld, nStart, nEnd, [&positions](long i) { positions.push_back(i); });
        nCount = static_cast<long>(positions.size());
    }
    if (nCount == 0) {
        return 0;
    }

    long nSize = m_nStrLength + (sNew.m_nStrLength - sOld.m_nStrLength) * nCount + 1;
    if (nCount < 0 && nSize >= 0) {
        // The size for -1 replacements may be too small for the text; only a negative one is left to the
        // allocation to refuse.
        nSize = m_nStrLength + 1;
    }
    std::unique_ptr<wchar_t[]> buffer(new wchar_t[Size(nSize)]);
    wchar_t* pOut = buffer.get();
    long nDone = 0;
    for (const long i : positions) {
        pOut = std::copy_n(m_pData + nDone, i - nDone, pOut);
        pOut = std::copy_n(sNew.m_pData, sNew.m_nStrLength, pOut);
        nDone = i + sOld.m_nStrLength;
    }
    std::copy_n(m_pData + nDone, m_nStrLength - nDone, pOut);
    Adopt(std::move(buffer), nSize - 1);
    return nCount;
}

void KyString::ReplaceEx(const KyString& /*sOld*/, const KyString& /*sNew*/, int /*n*/) {}

void KyString::swap(KyString& other) noexcept {
    KyArray::swap(other);
    std::swap(m_nStrLength, other.m_nStrLength);
}

/// Writes nCount characters, possibly the string's own, from nPos on, by the extension rule.
void KyString::Write(const wchar_t* pText, long nCount, long nPos) {
    // Unsigned, so that an end that no long holds becomes a size that the allocation refuses.
    const std::size_t nEnd = Size(nPos) + Size(nCount);
    if (nEnd < Size(m_nLength)) {
        std::wmemmove(m_pData + nPos, pText, Size(nCount));
        Cut(std::max(static_cast<long>(nEnd), m_nStrLength));
        return;
    }
    std::unique_ptr<wchar_t[]> buffer(new wchar_t[nEnd + 1]);
    std::copy_n(m_pData, std::min(nPos, m_nLength), buffer.get());
    std::copy_n(pText, nCount, buffer.get() + nPos);
    Adopt(std::move(buffer), static_cast<long>(nEnd));
}

/// Replaces the buffer by one of exactly nStrLength + 1 characters, and terminates it.
void KyString::Adopt(std::unique_ptr<wchar_t[]> buffer, long nStrLength) {
    delete[] std::exchange(m_pData, buffer.release());
    m_nLength = nStrLength + 1;
    Cut(nStrLength);
}

/// Ends the string at nStrLength, inside the buffer.
void KyString::Cut(long nStrLength) {
    m_pData[nStrLength] = 0;
    m_nStrLength = nStrLength;
}

wchar_t* CloneString(const wchar_t* s) {
    KY_CHECK(s != nullptr, "CloneString", "no string");
    const std::size_t nSize = std::wcslen(s) + 1;
    wchar_t* const pClone = new wchar_t[nSize];
    std::wmemcpy(pClone, s, nSize);
    return pClone;
}
