// The wide-character string, and the duplication of plain wide strings.
//
// A KyString is an exact-size buffer (KyArray<wchar_t>, whose m_nLength is the size of the buffer) and a
// count of the characters in it. Edits are written in terms of positions; whatever an edit writes past the
// end lengthens the string:
//
//     KyString name(L"area ");
//     name << 7.5;                            // "area 7.5"
//     name.Copy(L"zone", 0);                  // "zone 7.5": writing over the middle never shortens
//     name.Insert(0, L"the ");                // "the zone 7.5"
//     name.Replace(L"zone", L"face");         // "the face 7.5"
//
// The extension rule, shared by every edit that ends at index e: when e lies past the end, the string's
// length becomes e, and a buffer of e characters or fewer is replaced by one of exactly e + 1. There is no
// spare capacity: text built piece by piece pays one reallocation a piece. A larger buffer is kept.
//
// Invariants:
//   (1) m_pData is never null, m_pData[m_nStrLength] is 0, and m_nStrLength < m_nLength
//   (2) the characters up to m_nStrLength may include 0; plain wide strings that come in end at their first 0
//
// Text that comes in may be the string's own, or the string itself: it counts as it was when the call was
// made. A string is a value: copies are deep and take a buffer of m_nStrLength + 1, and one that was moved
// from is empty.
#pragma once

#include <memory>

#include "VexaBase/KyConfig.h"
#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyQuene.h"

class KY_API KyString : public KyArray<wchar_t> {
public:
    /// The text of s, in a buffer of exactly its length + 1; null is taken as empty. Text converts to a
    /// string. O(length).
    KyString(const wchar_t* s = L"");

    /// A deep copy, in a buffer of its length + 1. O(length).
    KyString(const KyString& other);

    /// Takes other's buffer and leaves other empty with a fresh buffer of one character, which is an
    /// allocation. O(1).
    KyString(KyString&& other);  // NOLINT(performance-noexcept-move-constructor): the fresh buffer

    /// A deep copy, in a buffer of its length + 1. O(length).
    KyString& operator=(const KyString& other);

    /// Takes other's buffer and leaves other empty, in the buffer that this string had. O(1), allocates
    /// nothing.
    KyString& operator=(KyString&& other) noexcept;

    ~KyString() override;

    /// Writes the characters of s over the string from nPos on. The string grows where they reach past its
    /// end (see the extension rule) and is never shortened; from a position past the end, the gap holds what
    /// the buffer held. Null does nothing. O(length of s), plus the string's when the buffer is replaced.
    /// Requires nPos >= 0 when s has text.
    void Copy(const wchar_t* s, long nPos);

    /// Copies nCount characters from nFrom on to nTo on, rightly where the two runs overlap. The string first
    /// grows to nTo + nCount (see the extension rule), even when nothing is copied because nCount is below 1
    /// or nFrom is nTo. Requires the run to copy, where there is one, to lie inside the grown buffer.
    void Copy(long nFrom, long nTo, long nCount);

    /// Inserts s in front of the character at nPos; m_nStrLength appends. False, and nothing changes, when
    /// nPos is outside 0 .. m_nStrLength. O(length), with one reallocation at most.
    bool Insert(long nPos, const KyString& s);

    /// Replaces the contents by formatted text, in a buffer of 1025 characters that is kept from one call to
    /// the next.
    ///
    /// The text is what vswprintf writes for fmt, in the caller's locale: decimal separators are
    /// LC_NUMERIC's, "%s" is decoded by LC_CTYPE. It ends at the first 0 among its characters. A longer text
    /// is cut at 1023 characters; a conversion error leaves what was written before it. Requires fmt not
    /// null.
    KyString& Format(const wchar_t* fmt, ...);

    /// Changes the ASCII letters a to z to upper case; no other character changes, whatever the locale.
    void MakeUpper();

    /// Index of the last ch, or -1.
    long ReverseFind(wchar_t ch) const;

    /// Appends d as "%f" prints it in the caller's locale, then strips zeros from the end of the whole
    /// string, except one directly behind a full stop: 2 gives 2.0, 1.5 gives 1.5. In a locale with another
    /// decimal separator that zero goes too (2 gives "2,"). The buffer keeps room for all six decimals. Other
    /// numbers convert to double.
    KyString& operator<<(double d);

    /// Writes the next table of this string, as a pattern, into pNext[0 .. m_nStrLength - 1]: the state in
    /// which a search goes on when the character in question is not the pattern's, -1 for the next character
    /// of the text.
    ///
    /// Entry 1 and every entry behind a restart are a plain 0, deliberately, even where the character equals
    /// the first; only inside a run of matches does an entry skip a state whose character is the same: aaab
    /// gives -1, 0, 0, 2. O(length). Requires pNext to hold m_nStrLength entries.
    void CreateNextTable(long* pNext) const;

    /// Index of the first s that lies wholly inside characters nStart .. nEnd, or -1; an empty s is never
    /// found. nEnd -1, or one past the end, means the last character. O(length of the window + length of s),
    /// whatever the text. Requires nStart >= 0 unless the window is empty.
    long Find(const KyString& s, long nStart = 0, long nEnd = -1) const;

    /// Appends the indices of all s inside the window to the queue, ascending; matches do not overlap (aaaa
    /// holds aa twice). Each is offered to the queue's EnQuene, which refuses it when a bounded queue is
    /// full. Returns the queue's length, entries that it had before included; -1, and the queue untouched,
    /// when s is empty. Otherwise as Find.
    long Find(const KyString& s, KyQuene<long>& queue, long nStart = 0, long nEnd = -1) const;

    /// Reserved; does nothing and returns -1, deliberately.
    long FindEx(const KyString& s, KyString& out, int n, long nStart = 0, long nEnd = -1) const;

    /// Replaces every sOld that the all-matches Find gives for the window by sNew and returns their number.
    /// With none the string is untouched; otherwise it has a new buffer of exactly its new length + 1, of the
    /// same size or not. O(length of the old and the new string), and of sOld.
    ///
    /// An empty sOld counts -1 times, deliberately: the text stays, in a new buffer of m_nStrLength + 1, and
    /// -1 is returned. The size for -1 replacements is m_nStrLength + 1 - (length of sNew); when that is
    /// negative, the allocation throws its std::bad_alloc, and the string is unchanged.
    long Replace(const KyString& sOld, const KyString& sNew, long nStart = 0, long nEnd = -1);

    /// Reserved; does nothing, deliberately.
    void ReplaceEx(const KyString& sOld, const KyString& sNew, int n);

    /// Number of characters; the size of the buffer is the field m_nLength.
    long GetLength() const { return m_nStrLength; }

    /// The text with its terminator. Valid until the next edit.
    const wchar_t* c_str() const { return m_pData; }

    /// Exchanges the buffers. O(1).
    void swap(KyString& other) noexcept;
    /// Exchanges the buffers. O(1).
    friend void swap(KyString& a, KyString& b) noexcept { a.swap(b); }

    iterator begin() { return m_pData; }
    iterator end() { return m_pData + m_nStrLength; }
    const_iterator begin() const { return m_pData; }
    const_iterator end() const { return m_pData + m_nStrLength; }

    long m_nStrLength;  // number of characters, the terminator excluded

private:
    KyString(const wchar_t* pText, long nCount);

    void Write(const wchar_t* pText, long nCount, long nPos);
    void Adopt(std::unique_ptr<wchar_t[]> buffer, long nStrLength);
    void Cut(long nStrLength);
    long LastInWindow(long nEnd) const;
    template <class OnMatch>
    void ForEachMatch(const KyString& s, long nStart, long nEnd, OnMatch onMatch) const;
};

/// A copy of s with its terminator, made by array new; the caller releases it with delete[]. Requires s not
/// null.
KY_API wchar_t* CloneString(const wchar_t* s);
