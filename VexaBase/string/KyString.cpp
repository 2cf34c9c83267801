#include "VexaBase/string/KyString.h"

#include <algorithm>
#include <array>
#include <cfenv>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdarg>
#include <cstddef>
#include <cstring>
#include <cwchar>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace {

std::size_t Size(long n) { return static_cast<std::size_t>(n); }

/// Holds the longest double with six decimals.
using FixedText = std::array<wchar_t, std::numeric_limits<double>::max_exponent10 + 16>;

/// Prints d as "%f" does, in the caller's locale and rounding mode, and returns the number of characters.
long PrintFixed(double d, FixedText& text) {
    const bool bPlain = std::isfinite(d) && std::fegetround() == FE_TONEAREST &&
                        std::strcmp(std::localeconv()->decimal_point, ".") == 0;
    if (!bPlain) {
        return std::swprintf(text.data(), text.size(), L"%f", d);
    }
    // The same digits, several times as fast.
    std::array<char, std::tuple_size_v<FixedText>> digits;
    const char* const pEnd =
        std::to_chars(digits.data(), digits.data() + digits.size(), d, std::chars_format::fixed, 6).ptr;
    return std::copy(static_cast<const char*>(digits.data()), pEnd, text.data()) - text.data();
}

/// Writes runs of characters one behind the other. Most runs of a replacement are short: those are written as
/// eight characters, of which the next run overwrites what is too much.
class RunWriter {
public:
    static constexpr long nShort = 8;

    RunWriter(wchar_t* pOut, const wchar_t* pEnd) : m_pOut(pOut), m_pEnd(pEnd) {}

    /// Writes nCount characters of p, which can be read up to pEnd.
    void Write(const wchar_t* p, long nCount, const wchar_t* pEnd) {
        if (nCount <= nShort && pEnd - p >= nShort && m_pEnd - m_pOut >= nShort) {
            std::memcpy(m_pOut, p, nShort * sizeof(wchar_t));
        } else {
            std::copy_n(p, nCount, m_pOut);
        }
        m_pOut += nCount;
    }

private:
    wchar_t* m_pOut;
    const wchar_t* m_pEnd;
};

/// A few characters of a pattern, its first one to begin with, and where in a text they are all right, for a
/// block of positions at once.
template <int nProbes>
class Probes {
public:
    static constexpr long nBlock = 16;

    /// A bit, from the lowest on, for each of the nBlock positions from p on.
    unsigned AreRight(const wchar_t* p) const {
        const Four a = AreRightAtFour(p);
        const Four b = AreRightAtFour(p + 4);
        const Four c = AreRightAtFour(p + 8);
        const Four d = AreRightAtFour(p + 12);
        return Bits(a | b | c | d) == 0 ? 0 : Bits(a) | Bits(b) << 4U | Bits(c) << 8U | Bits(d) << 12U;
    }

    void Set(int i, const wchar_t* pPattern, long nIndex) {
        const wchar_t ch = pPattern[nIndex];
        m_characters[i] = Four{ch, ch, ch, ch};
        m_indices[i] = nIndex;
    }

private:
    // Four characters, as every x86-64 compares them at once.
    using Four = int __attribute__((vector_size(16)));
    using FourFloats = float __attribute__((vector_size(16)));

    static Four Load(const wchar_t* p) {
        Four four;
        std::memcpy(&four, p, sizeof(four));
        return four;
    }
    static unsigned Bits(Four mask) {
        return static_cast<unsigned>(__builtin_ia32_movmskps(reinterpret_cast<FourFloats>(mask)));
    }
    Four AreRightAtFour(const wchar_t* p) const {
        // The first one stands at 0.
        Four right = Load(p) == m_characters[0];
        for (int i = 1; i < nProbes; ++i) {
            right &= Load(p + m_indices[i]) == m_characters[i];
        }
        return right;
    }

    Four m_characters[nProbes];
    long m_indices[nProbes];
};

/// Calls onMatch with the index of every match of a pattern in a text, ascending and without overlaps, until
/// it answers false.
///
/// A search begins with what is fastest in most texts, and changes for good to what is safer when that has
/// cost more than the text that it has seen is worth. First it goes from one first character to the next; when
/// that one is frequent, it looks for two characters of the pattern in blocks, then for eight; when even these
/// are right in too many places, it goes by the pattern's next table (Knuth, Morris and Pratt). So the whole
/// is linear in text and pattern.
class Searcher {
public:
    /// For a pattern that is not empty, and outlives the searcher.
    explicit Searcher(const KyString& pattern)
        : m_pattern(pattern), m_p(pattern.c_str()), m_nPattern(pattern.GetLength()) {
        if (m_nPattern > nShortTable) {
            m_longTable.reset(new long[Size(m_nPattern)]);
        }
    }

    /// Searches pText[nFrom .. nEnd - 1].
    template <class OnMatch>
    void ForEachMatch(const wchar_t* pText, long nFrom, long nEnd, OnMatch onMatch) const {
        // A match begins below this.
        const long nBehind = nEnd - m_nPattern + 1;
        nFrom = SearchByFirst(pText, nFrom, nBehind, onMatch);
        if (nFrom < nBehind) {
            nFrom = SearchByProbes(TwoProbes(), nInterruption, pText, nFrom, nBehind, onMatch);
        }
        if (nFrom < nBehind) {
            // What comes next is slow enough for the interruptions not to count.
            nFrom = SearchByProbes(EightProbes(), 0, pText, nFrom, nBehind, onMatch);
        }
        if (nFrom < nBehind) {
            SearchByTable(pText, nFrom, nBehind, onMatch);
        }
    }

private:
    static constexpr long nShortTable = 64;

    // Looking closer at one position costs as much as this many characters in blocks.
    static constexpr long nInterruption = 32;

    // Each of these searches from nFrom on and returns where the next one has to go on, nBehind or more when
    // nothing is left.

    template <class OnMatch>
    long SearchByFirst(const wchar_t* pText, long nFrom, long nBehind, OnMatch onMatch) const {
        long nCost = -4 * nInterruption;
        for (long i = nFrom; i < nBehind; ++i) {
            if (nCost > i - nFrom) {
                return i;
            }
            const wchar_t* const pFirst = std::wmemchr(pText + i, *m_p, Size(nBehind - i));
            if (pFirst == nullptr) {
                return nBehind;
            }
            i = pFirst - pText;
            const long nSame = CountSame(pFirst);
            if (nSame == m_nPattern) {
                if (!onMatch(i)) {
                    return nBehind;
                }
                i += m_nPattern - 1;
            }
            nCost += nInterruption + nSame;
        }
        return nBehind;
    }

    template <int nProbes, class OnMatch>
    [[gnu::noinline]] long SearchByProbes(const Probes<nProbes>& probes, long nMissCost, const wchar_t* pText,
                                          long nFrom, long nBehind, OnMatch onMatch) const {
        long nCost = -1024;
        long i = nFrom;
        while (nBehind - i >= Probes<nProbes>::nBlock) {
            long nNext = i;
            for (unsigned n = probes.AreRight(pText + i); n != 0; n &= n - 1) {
                const long k = i + __builtin_ctz(n);
                if (k < nNext) {
                    continue;
                }
                const long nSame = CountSame(pText + k);
                if (nSame == m_nPattern) {
                    if (!onMatch(k)) {
                        return nBehind;
                    }
                    nNext = k + m_nPattern;
                    continue;
                }
                nCost += nMissCost + nSame;
                if (nCost > k - nFrom) {
                    return k + 1;
                }
            }
            i = std::max(i + Probes<nProbes>::nBlock, nNext);
        }
        return i;
    }

    template <class OnMatch>
    [[gnu::noinline]] void SearchByTable(const wchar_t* pText, long nFrom, long nBehind,
                                         OnMatch onMatch) const {
        long shortTable[nShortTable];
        long* const pNext = m_longTable != nullptr ? m_longTable.get() : shortTable;
        m_pattern.CreateNextTable(pNext);
        long i = nFrom;
        long j = 0;
        while (i - j < nBehind) {
            if (pText[i] == m_p[j]) {
                ++i;
                ++j;
                if (j == m_nPattern) {
                    if (!onMatch(i - m_nPattern)) {
                        return;
                    }
                    j = 0;
                }
            } else {
                j = pNext[j];
                if (j == -1) {
                    ++i;
                    j = 0;
                }
            }
        }
    }

    /// The first character, and the last one that is another, or the last one where there is no other.
    Probes<2> TwoProbes() const {
        const std::wstring_view pattern(m_p, Size(m_nPattern));
        const std::size_t nOther = pattern.find_last_not_of(*m_p);
        Probes<2> probes;
        probes.Set(0, m_p, 0);
        probes.Set(1, m_p, nOther == std::wstring_view::npos ? m_nPattern - 1 : static_cast<long>(nOther));
        return probes;
    }

    /// Evenly from the first to the last.
    Probes<8> EightProbes() const {
        Probes<8> probes;
        for (int i = 0; i < 8; ++i) {
            probes.Set(i, m_p, i * (m_nPattern - 1) / 7);
        }
        return probes;
    }

    /// How many characters at pText are the pattern's.
    long CountSame(const wchar_t* pText) const {
        long n = 0;
        while (n < m_nPattern && pText[n] == m_p[n]) {
            ++n;
        }
        return n;
    }

    const KyString& m_pattern;
    const wchar_t* m_p;
    long m_nPattern;
    std::unique_ptr<long[]> m_longTable;
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
    FixedText text;
    Write(text.data(), PrintFixed(d, text), m_nStrLength);

    long nLast = m_nStrLength - 1;
    while (m_pData[nLast] == L'0' && m_pData[nLast - 1] != L'.') {
        --nLast;
    }
    Cut(nLast + 1);
    return *this;
}

void KyString::CreateNextTable(long* pNext) const {
    if (m_nStrLength < 1) {
        return;
    }
    KY_CHECK(pNext != nullptr, "KyString::CreateNextTable", "no table (length %ld)", m_nStrLength);
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
    Searcher(s).ForEachMatch(m_pData, std::max(nStart, 0L), nLast + 1, [&onMatch](long i) {
        onMatch(i);
        return true;
    });
}

long KyString::Find(const KyString& s, long nStart, long nEnd) const {
    const long nLast = LastInWindow(nEnd);
    if (s.m_nStrLength < 1 || nLast < nStart) {
        return -1;
    }
    KY_CHECK(nStart >= 0, "KyString::Find", "negative start (%ld)", nStart);
    long nFound = -1;
    Searcher(s).ForEachMatch(m_pData, std::max(nStart, 0L), nLast + 1, [&nFound](long i) {
        nFound = i;
        return false;
    });
    return nFound;
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
    RunWriter writer(buffer.get(), buffer.get() + nSize);
    wchar_t aNew[RunWriter::nShort] = {};
    const wchar_t* pNew = sNew.m_pData;
    if (sNew.m_nStrLength <= RunWriter::nShort) {
        pNew = aNew;
        std::copy_n(sNew.m_pData, sNew.m_nStrLength, aNew);
    }
    long nDone = 0;
    for (const long i : positions) {
        writer.Write(m_pData + nDone, i - nDone, m_pData + m_nLength);
        writer.Write(pNew, sNew.m_nStrLength, pNew + std::max(sNew.m_nStrLength, RunWriter::nShort));
        nDone = i + sOld.m_nStrLength;
    }
    writer.Write(m_pData + nDone, m_nStrLength - nDone, m_pData + m_nLength);
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
