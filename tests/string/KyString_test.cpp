#include "VexaBase/string/KyString.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cfenv>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "StringKit.h"
#include "tests/rx/Layout.h"

namespace {

using testing::ElementsAre;

const std::wstring zero(1, L'\0');

// What it is

static_assert(std::is_base_of_v<KyArray<wchar_t>, KyString>);
static_assert(sizeof(KyString) == sizeof(KyArray<wchar_t>) + sizeof(long));
static_assert(std::is_convertible_v<const wchar_t*, KyString>);
static_assert(std::is_copy_constructible_v<KyString> && std::is_copy_assignable_v<KyString>);
static_assert(std::is_move_constructible_v<KyString> && !std::is_nothrow_move_constructible_v<KyString>);
static_assert(std::is_nothrow_move_assignable_v<KyString> && std::is_nothrow_swappable_v<KyString>);
static_assert(std::has_virtual_destructor_v<KyString>);

TEST(KyString, TheCharacterCountStandsBehindTheBuffer) {
    const KyString s;

    EXPECT_THAT(
        (std::vector<long>{OffsetOf(s, s.m_pData), OffsetOf(s, s.m_nLength), OffsetOf(s, s.m_nStrLength)}),
        ElementsAre(8, 16, 24));
}

TEST(KyString, TheDestructorIsTheOnlyVirtualOperation) {
    struct Probed : KyString {
        virtual void Probe() {}
    };

    constexpr long nDestructorSlots = 2;
    EXPECT_EQ(SlotOf(&Probed::Probe), nDestructorSlots);
}

TEST(KyString, IsDestroyedThroughItsBase) {
    const std::unique_ptr<KyArray<wchar_t>> pArray = std::make_unique<KyString>(L"abc");

    EXPECT_EQ(pArray->m_nLength, 4);
}

// How it is made

TEST(KyString, AnEmptyTextHasABufferOfOneTerminator) {
    EXPECT_THAT(KyString(), IsString(L"", 1));
    EXPECT_THAT(KyString(L""), IsString(L"", 1));
}

TEST(KyString, ANullTextIsEmpty) { EXPECT_THAT(KyString(nullptr), IsString(L"", 1)); }

TEST(KyString, ATextHasABufferOfItsLengthAndTheTerminator) {
    EXPECT_THAT(KyString(L"x"), IsString(L"x", 2));
    EXPECT_THAT(KyString(L"abcd"), IsString(L"abcd", 5));
}

TEST(KyString, ALiteralConvertsToAString) {
    const KyString s = L"abc";

    EXPECT_EQ(s.Find(L"c"), 2);
}

TEST(KyString, GetLengthCountsCharactersNotTheBuffer) {
    KyString s;
    s.Format(L"abc");

    EXPECT_EQ(s.GetLength(), 3);
    EXPECT_EQ(s.m_nLength, 1025);
}

TEST(KyString, CStrIsTheTerminatedBuffer) {
    const KyString s(L"abc");

    EXPECT_EQ(s.c_str(), s.m_pData);
    EXPECT_STREQ(s.c_str(), L"abc");
}

TEST(KyString, ARangeSpansTheCharactersWithoutTheTerminator) {
    KyString s(L"abc");
    const KyString& constant = s;

    EXPECT_THAT(s, ElementsAre(L'a', L'b', L'c'));
    EXPECT_EQ(constant.end() - constant.begin(), 3);
    std::reverse(s.begin(), s.end());
    EXPECT_THAT(s, IsString(L"cba", 4));
}

// A value

TEST(KyString, ACopyHasABufferOfItsOwnLengthWhateverTheSources) {
    KyString source;
    source.Format(L"abc");

    const KyString copy(source);

    EXPECT_THAT(copy, IsString(L"abc", 4));
    EXPECT_THAT(source, IsString(L"abc", 1025));
    EXPECT_NE(copy.m_pData, source.m_pData);
}

TEST(KyString, ACopyKeepsEmbeddedZeros) {
    const KyString source = Make(L"a" + zero + L"b");

    const KyString copy(source);

    EXPECT_THAT(copy, IsString(L"a" + zero + L"b", 4));
}

TEST(KyString, AnAssignedStringHasABufferOfTheSourcesLength) {
    KyString source;
    source.Format(L"abc");
    KyString shorter(L"x");
    KyString larger;
    larger.Format(L"a longer text");

    shorter = source;
    larger = source;

    EXPECT_THAT(shorter, IsString(L"abc", 4));
    EXPECT_THAT(larger, IsString(L"abc", 4));
    EXPECT_THAT(source, IsString(L"abc", 1025));
}

TEST(KyString, AssigningAStringToItselfChangesNothing) {
    KyString s;
    s.Format(L"abc");
    KyString& same = s;

    s = same;
    EXPECT_THAT(s, IsString(L"abc", 1025));

    s = std::move(same);
    EXPECT_THAT(s, IsString(L"abc", 1025));
}

TEST(KyString, AMovedStringTakesTheBufferAndLeavesAFreshEmptyOne) {
    KyString source(L"abc");
    const wchar_t* const pBuffer = source.c_str();

    const KyString moved(std::move(source));

    EXPECT_THAT(moved, IsString(L"abc", 4));
    EXPECT_EQ(moved.c_str(), pBuffer);
    EXPECT_THAT(source, IsString(L"", 1));  // NOLINT(bugprone-use-after-move): that is the promise
}

TEST(KyString, AMoveAssignmentTakesTheBufferAndLeavesAnEmptyString) {
    KyString source(L"abc");
    const wchar_t* const pBuffer = source.c_str();
    KyString target;

    target = std::move(source);

    EXPECT_THAT(target, IsString(L"abc", 4));
    EXPECT_EQ(target.c_str(), pBuffer);
    EXPECT_THAT(source, IsString(L"", 1));  // NOLINT(bugprone-use-after-move): that is the promise
}

TEST(KyString, AStringThatWasMovedFromCanBeWrittenAgain) {
    KyString source(L"abc");
    KyString target(L"something longer");
    target = std::move(source);

    source.Copy(L"again", 0);  // NOLINT(bugprone-use-after-move): that is the promise

    EXPECT_EQ(Text(source), L"again");
    EXPECT_THAT(target, IsString(L"abc", 4));
}

TEST(KyString, SwapExchangesTextsAndBuffers) {
    KyString a(L"abc");
    KyString b;
    b.Format(L"z");

    swap(a, b);
    EXPECT_THAT(a, IsString(L"z", 1025));
    EXPECT_THAT(b, IsString(L"abc", 4));

    a.swap(b);
    EXPECT_THAT(a, IsString(L"abc", 4));
}

// Copy of a text

TEST(KyStringCopy, OntoAnEmptyStringAssigns) {
    KyString s;

    s.Copy(L"abc", 0);

    EXPECT_THAT(s, IsString(L"abc", 4));
}

TEST(KyStringCopy, OverTheMiddleKeepsTheLengthAndTheRest) {
    KyString s(L"abcd");
    const wchar_t* const pBuffer = s.c_str();

    s.Copy(L"xy", 1);

    EXPECT_THAT(s, IsString(L"axyd", 5));
    EXPECT_EQ(s.c_str(), pBuffer);
}

TEST(KyStringCopy, UpToTheEndKeepsTheLength) {
    KyString s(L"abcd");

    s.Copy(L"xy", 2);

    EXPECT_THAT(s, IsString(L"abxy", 5));
}

TEST(KyStringCopy, PastTheEndGrowsTheBufferExactly) {
    KyString s(L"abcd");

    s.Copy(L"xyz", 3);

    EXPECT_THAT(s, IsString(L"abcxyz", 7));
}

TEST(KyStringCopy, AtTheEndAppends) {
    KyString s(L"abcd");

    s.Copy(L"xy", 4);

    EXPECT_THAT(s, IsString(L"abcdxy", 7));
}

TEST(KyStringCopy, IntoALargerBufferKeepsTheBuffer) {
    KyString s;
    s.Format(L"abcd");
    const wchar_t* const pBuffer = s.c_str();

    s.Copy(L"xyz", 3);

    EXPECT_THAT(s, IsString(L"abcxyz", 1025));
    EXPECT_EQ(s.c_str(), pBuffer);
}

TEST(KyStringCopy, FillsABufferToItsLastPlaceBeforeItGrows) {
    KyString s;
    s.Format(L"");
    const std::wstring longest(1024, L'x');

    s.Copy(longest.c_str(), 0);
    EXPECT_THAT(s, IsString(longest, 1025));

    s.Copy(L"y", 1024);
    EXPECT_THAT(s, IsString(longest + L"y", 1026));
}

TEST(KyStringCopy, ANullTextDoesNothing) {
    KyString s(L"abcd");

    s.Copy(nullptr, 0);
    s.Copy(nullptr, 100);

    EXPECT_THAT(s, IsString(L"abcd", 5));
}

TEST(KyStringCopy, AnEmptyTextInsideTheStringDoesNothing) {
    KyString s(L"abcd");

    s.Copy(L"", 0);
    s.Copy(L"", 4);

    EXPECT_THAT(s, IsString(L"abcd", 5));
}

TEST(KyStringCopy, PastTheEndLeavesAGapOfWhatTheBufferHeld) {
    KyString s;
    s.Format(L"abcdefgh");
    s.Format(L"ab");

    s.Copy(L"xy", 5);

    EXPECT_EQ(s.GetLength(), 7);
    EXPECT_EQ(s.m_nLength, 1025);
    EXPECT_EQ(Text(s).substr(0, 3), L"ab" + zero);
    EXPECT_EQ(Text(s).substr(5), L"xy");
}

TEST(KyStringCopy, PastTheEndOfTheBufferKeepsTheOldTextInFrontOfTheGap) {
    KyString s(L"ab");

    s.Copy(L"xy", 6);

    EXPECT_EQ(s.GetLength(), 8);
    EXPECT_EQ(s.m_nLength, 9);
    EXPECT_EQ(Text(s).substr(0, 3), L"ab" + zero);
    EXPECT_EQ(Text(s).substr(6), L"xy");
    EXPECT_EQ(s.m_pData[8], 0);
}

TEST(KyStringCopy, PastTheEndOfTheBufferKeepsAllThatItHeld) {
    KyString s;
    s.Format(L"abcdefgh");
    s.Format(L"ab");
    const std::wstring held(s.m_pData, s.m_pData + 9);

    s.Copy(L"x", 2000);

    EXPECT_EQ(s.GetLength(), 2001);
    EXPECT_EQ(s.m_nLength, 2002);
    EXPECT_EQ(Text(s).substr(0, 9), held);
    EXPECT_EQ(held, L"ab" + zero + L"defgh" + zero);
}

TEST(KyStringCopy, AnEmptyTextPastTheEndStillLengthensTheString) {
    KyString s(L"ab");

    s.Copy(L"", 5);

    EXPECT_EQ(s.GetLength(), 5);
    EXPECT_EQ(s.m_nLength, 6);
    EXPECT_EQ(Text(s).substr(0, 3), L"ab" + zero);
    EXPECT_EQ(s.m_pData[5], 0);
}

TEST(KyStringCopy, StopsAtTheTextsFirstZero) {
    KyString s(L"abcd");

    s.Copy((L"x" + zero + L"y").c_str(), 0);

    EXPECT_THAT(s, IsString(L"xbcd", 5));
}

TEST(KyStringCopy, OwnTextCountsAsItWasWhenTheBufferGrows) {
    KyString s(L"abcd");

    s.Copy(s.c_str() + 1, 4);

    EXPECT_THAT(s, IsString(L"abcdbcd", 8));
}

TEST(KyStringCopy, OwnTextCountsAsItWasWhereItOverlaps) {
    KyString up;
    up.Format(L"abcd");
    KyString down(L"abcd");

    up.Copy(up.c_str(), 1);
    down.Copy(down.c_str() + 1, 0);

    EXPECT_THAT(up, IsString(L"aabcd", 1025));
    EXPECT_THAT(down, IsString(L"bcdd", 5));
}

TEST(KyStringCopy, OwnTextOntoItselfChangesNothing) {
    KyString s(L"abcd");

    s.Copy(s.c_str(), 0);

    EXPECT_THAT(s, IsString(L"abcd", 5));
}

// Copy inside the string

struct InnerCopy {
    long nFrom;
    long nTo;
    long nCount;
    const wchar_t* pszResult;
    long nBuffer;
};

void PrintTo(const InnerCopy& row, std::ostream* pOut) {
    *pOut << "from " << row.nFrom << " to " << row.nTo << " count " << row.nCount;
}

class KyStringInnerCopy : public testing::TestWithParam<InnerCopy> {};

TEST_P(KyStringInnerCopy, MovesARunRightlyAndGrowsExactly) {
    KyString s(L"abcdef");

    s.Copy(GetParam().nFrom, GetParam().nTo, GetParam().nCount);

    EXPECT_THAT(s, IsString(GetParam().pszResult, GetParam().nBuffer));
}

INSTANTIATE_TEST_SUITE_P(Rows, KyStringInnerCopy,
                         testing::Values(InnerCopy{0, 2, 3, L"ababcf", 7},      // up, overlapping
                                         InnerCopy{2, 0, 3, L"cdedef", 7},      // down, overlapping
                                         InnerCopy{0, 3, 3, L"abcabc", 7},      // up to the very end
                                         InnerCopy{0, 5, 4, L"abcdeabcd", 10},  // past the end
                                         InnerCopy{4, 6, 2, L"abcdefef", 9},
                                         InnerCopy{0, 1, 6, L"aabcdef", 8},
                                         InnerCopy{3, 3, 3, L"abcdef", 7},  // onto itself
                                         InnerCopy{0, 3, 0, L"abcdef", 7},  // nothing
                                         InnerCopy{0, 3, -2, L"abcdef", 7}, InnerCopy{0, -9, 0, L"abcdef", 7},
                                         InnerCopy{5, 0, 1, L"fbcdef", 7}));

TEST(KyStringInnerCopies, OntoItselfPastTheEndGrowsWithoutCopying) {
    KyString s(L"abcdef");

    s.Copy(4, 4, 5);

    EXPECT_EQ(s.GetLength(), 9);
    EXPECT_EQ(s.m_nLength, 10);
    EXPECT_EQ(Text(s).substr(0, 7), L"abcdef" + zero);
    EXPECT_EQ(s.m_pData[9], 0);
}

TEST(KyStringInnerCopies, NothingPastTheEndStillGrows) {
    KyString s(L"ab");

    s.Copy(0, 4, 0);
    EXPECT_EQ(s.GetLength(), 4);
    EXPECT_EQ(s.m_nLength, 5);

    s.Copy(0, 10, -2);
    EXPECT_EQ(s.GetLength(), 8);
    EXPECT_EQ(s.m_nLength, 9);
    EXPECT_EQ(s.m_pData[8], 0);
}

TEST(KyStringInnerCopies, TheStringGrowsBeforeTheRunIsRead) {
    KyString s(L"abcd");

    s.Copy(3, 2, 4);

    EXPECT_EQ(s.GetLength(), 6);
    EXPECT_EQ(Text(s).substr(0, 4), L"abd" + zero);
    EXPECT_EQ(s.m_pData[5], 0) << "the new terminator was read along";
}

TEST(KyStringInnerCopies, ALargerBufferIsKept) {
    KyString s;
    s.Format(L"abcdef");

    s.Copy(0, 5, 4);

    EXPECT_THAT(s, IsString(L"abcdeabcd", 1025));
}

// Insert

TEST(KyStringInsert, InFrontPrepends) {
    KyString s(L"cd");

    EXPECT_TRUE(s.Insert(0, L"ab"));

    EXPECT_THAT(s, IsString(L"abcd", 5));
}

TEST(KyStringInsert, AtTheLengthAppends) {
    KyString s(L"ab");

    EXPECT_TRUE(s.Insert(2, L"cd"));

    EXPECT_THAT(s, IsString(L"abcd", 5));
}

TEST(KyStringInsert, InTheMiddleMovesTheTailUp) {
    KyString s(L"ad");

    EXPECT_TRUE(s.Insert(1, L"bc"));

    EXPECT_THAT(s, IsString(L"abcd", 5));
}

TEST(KyStringInsert, OutsideTheStringReturnsFalseAndChangesNothing) {
    KyString s(L"ab");
    const wchar_t* const pBuffer = s.c_str();

    EXPECT_FALSE(s.Insert(-1, L"x"));
    EXPECT_FALSE(s.Insert(3, L"x"));
    EXPECT_FALSE(s.Insert(LONG_MAX, L"x"));
    EXPECT_FALSE(s.Insert(LONG_MIN, L"x"));

    EXPECT_THAT(s, IsString(L"ab", 3));
    EXPECT_EQ(s.c_str(), pBuffer);
}

TEST(KyStringInsert, IntoAnEmptyStringGivesTheText) {
    KyString s;

    EXPECT_TRUE(s.Insert(0, L"ab"));
    EXPECT_FALSE(s.Insert(3, L"x"));

    EXPECT_THAT(s, IsString(L"ab", 3));
}

TEST(KyStringInsert, AnEmptyTextChangesNothing) {
    KyString s(L"ab");

    EXPECT_TRUE(s.Insert(1, L""));

    EXPECT_THAT(s, IsString(L"ab", 3));
}

TEST(KyStringInsert, IntoALargerBufferKeepsIt) {
    KyString s;
    s.Format(L"ad");
    const wchar_t* const pBuffer = s.c_str();

    s.Insert(1, L"bc");

    EXPECT_THAT(s, IsString(L"abcd", 1025));
    EXPECT_EQ(s.c_str(), pBuffer);
}

TEST(KyStringInsert, FillsABufferToItsLastPlaceBeforeItGrows) {
    KyString s;
    s.Format(L"ad");
    const wchar_t* const pBuffer = s.c_str();
    const std::wstring filling(1022, L'x');

    s.Insert(1, filling.c_str());
    EXPECT_THAT(s, IsString(L"a" + filling + L"d", 1025));
    EXPECT_EQ(s.c_str(), pBuffer);

    s.Insert(1, L"y");
    EXPECT_THAT(s, IsString(L"ay" + filling + L"d", 1026));
}

TEST(KyStringInsert, TakesEveryCharacterOfTheOtherStringWithEmbeddedZeros) {
    KyString s(L"ad");

    s.Insert(1, Make(L"b" + zero + L"c"));

    EXPECT_THAT(s, IsString(L"ab" + zero + L"cd", 6));
}

TEST(KyStringInsert, MovesATailWithEmbeddedZeros) {
    KyString s = Make(L"a" + zero + L"d");

    s.Insert(1, L"bc");

    EXPECT_THAT(s, IsString(L"abc" + zero + L"d", 6));
}

TEST(KyStringInsert, AStringIntoItselfCountsAsItWas) {
    for (long i = 0; i <= 4; ++i) {
        KyString exact(L"abcd");
        KyString large;
        large.Format(L"abcd");

        EXPECT_TRUE(exact.Insert(i, exact));
        EXPECT_TRUE(large.Insert(i, large));

        const std::wstring expected = std::wstring(L"abcd").insert(static_cast<std::size_t>(i), L"abcd");
        EXPECT_THAT(exact, IsString(expected, 9));
        EXPECT_THAT(large, IsString(expected, 1025));
    }
}

// Format

TEST(KyStringFormat, ReplacesTheContentsInABufferOf1025) {
    KyString s(L"before");

    KyString& result = s.Format(L"%ls %d/%ld %c %.2f", L"name", 7, 9L, 'x', 2.5);

    EXPECT_EQ(&result, &s);
    EXPECT_THAT(s, IsString(L"name 7/9 x 2.50", 1025));
    EXPECT_EQ(s.m_pData[1024], 0);
}

TEST(KyStringFormat, ANothingIsAnEmptyString) {
    KyString s(L"before");

    s.Format(L"");

    EXPECT_THAT(s, IsString(L"", 1025));
}

TEST(KyStringFormat, KeepsItsBufferFromOneCallToTheNext) {
    KyString s;
    s.Format(L"%d", 1);
    const wchar_t* const pBuffer = s.c_str();

    s.Format(L"%d", 22);

    EXPECT_THAT(s, IsString(L"22", 1025));
    EXPECT_EQ(s.c_str(), pBuffer);
}

TEST(KyStringFormat, ReplacesALargerBufferToo) {
    KyString s(std::wstring(3000, L'x').c_str());

    s.Format(L"a");

    EXPECT_THAT(s, IsString(L"a", 1025));
}

TEST(KyStringFormat, HoldsAResultOf1023CharactersWhole) {
    const std::wstring text = std::wstring(1022, L'x') + L"y";
    KyString s;

    s.Format(L"%ls", text.c_str());

    EXPECT_THAT(s, IsString(text, 1025));
    EXPECT_EQ(s.m_pData[1024], 0);
}

TEST(KyStringFormat, CutsALongerResultAt1023Characters) {
    const std::wstring wide(2000, L'w');
    const std::string narrow(2000, 'n');
    KyString s;

    s.Format(L"%ls", wide.substr(0, 1024).c_str());
    EXPECT_THAT(s, IsString(wide.substr(0, 1023), 1025));

    s.Format(L"%ls", wide.c_str());
    EXPECT_THAT(s, IsString(wide.substr(0, 1023), 1025));
    EXPECT_EQ(s.m_pData[1024], 0);

    s.Format(wide.c_str());
    EXPECT_THAT(s, IsString(wide.substr(0, 1023), 1025));

    s.Format(L"%s", narrow.c_str());
    EXPECT_THAT(s, IsString(std::wstring(1023, L'n'), 1025));

    s.Format(L"%2000d", 5);
    EXPECT_THAT(s, IsString(std::wstring(1023, L' '), 1025));

    s.Format(L"%-2000d", 5);
    EXPECT_THAT(s, IsString(L"5" + std::wstring(1022, L' '), 1025));

    s.Format(L"%02000d", -5);
    EXPECT_THAT(s, IsString(L"-" + std::wstring(1022, L'0'), 1025));

    s.Format(L"%1020d%d", 1, 987654);
    EXPECT_THAT(s, IsString(std::wstring(1019, L' ') + L"1987", 1025));

    s.Format(L"%.1500f", 1.5);
    EXPECT_THAT(s, IsString(L"1.5" + std::wstring(1020, L'0'), 1025));
}

TEST(KyStringFormat, AShortResultBehindACutOneIsWhole) {
    KyString s;
    s.Format(L"%2000d", 5);

    s.Format(L"%d", 5);

    EXPECT_THAT(s, IsString(L"5", 1025));
}

TEST(KyStringFormat, EndsAtTheFirstZeroAmongItsCharacters) {
    KyString s;

    s.Format(L"ab%ccd", 0);

    EXPECT_THAT(s, IsString(L"ab", 1025));
}

TEST(KyStringFormat, ItsOwnTextAsAnArgumentCountsAsItWas) {
    KyString exact(L"abc");
    KyString large;
    large.Format(L"abc");

    exact.Format(L"<%ls|%ls>", exact.c_str(), exact.c_str() + 1);
    large.Format(L"<%ls|%ls>", large.c_str(), large.c_str() + 1);

    EXPECT_THAT(exact, IsString(L"<abc|bc>", 1025));
    EXPECT_THAT(large, IsString(L"<abc|bc>", 1025));
}

TEST(KyStringFormat, ItsOwnTextMayBeTheFormat) {
    KyString exact(L"%d of %d");
    KyString large;
    large.Format(L"%%d of %%d");

    exact.Format(exact.c_str(), 1, 2);
    large.Format(large.c_str(), 1, 2);

    EXPECT_THAT(exact, IsString(L"1 of 2", 1025));
    EXPECT_THAT(large, IsString(L"1 of 2", 1025));
}

// Upper case and the last occurrence

TEST(KyStringMakeUpper, ChangesTheAsciiLettersAToZOnly) {
    KyString s(L"a\u00e91Z`{az\u0161\u03b1");

    s.MakeUpper();

    EXPECT_THAT(s, IsString(L"A\u00e91Z`{AZ\u0161\u03b1", 11));
}

TEST(KyStringMakeUpper, AnEmptyStringStaysEmpty) {
    KyString s;

    s.MakeUpper();

    EXPECT_THAT(s, IsString(L"", 1));
}

TEST(KyStringMakeUpper, LooksBehindEmbeddedZerosAndLeavesTheBufferBehindTheTextAlone) {
    KyString s = Make(L"a" + zero + L"b");
    KyString large;
    large.Format(L"abc");
    large.Copy(L"z", 4);
    large.m_nStrLength = 3;

    s.MakeUpper();
    large.MakeUpper();

    EXPECT_EQ(Text(s), L"A" + zero + L"B");
    EXPECT_EQ(large.m_pData[4], L'z');
}

TEST(KyStringReverseFind, GivesTheLastOccurrence) {
    const KyString s(L"abcabc");

    EXPECT_EQ(s.ReverseFind(L'a'), 3);
    EXPECT_EQ(s.ReverseFind(L'c'), 5);
    EXPECT_EQ(KyString(L"xyz").ReverseFind(L'x'), 0);
}

TEST(KyStringReverseFind, AMissingCharacterIsMinusOne) {
    EXPECT_EQ(KyString(L"abc").ReverseFind(L'x'), -1);
    EXPECT_EQ(KyString().ReverseFind(L'x'), -1);
}

TEST(KyStringReverseFind, TheTerminatorIsNoCharacter) {
    EXPECT_EQ(KyString(L"abc").ReverseFind(0), -1);
    EXPECT_EQ(KyString().ReverseFind(0), -1);
    EXPECT_EQ(Make(L"a" + zero + L"b").ReverseFind(0), 1);
}

// Numbers

using NumberText = std::pair<double, std::wstring>;

class KyStringNumber : public testing::TestWithParam<NumberText> {};

TEST_P(KyStringNumber, IsAppendedWithoutTrailingZerosExceptOneBehindTheFullStop) {
    KyString s;

    s << GetParam().first;

    EXPECT_EQ(Text(s), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Rows, KyStringNumber,
                         testing::Values(NumberText(2.0, L"2.0"), NumberText(1.5, L"1.5"),
                                         NumberText(100.0, L"100.0"), NumberText(0.000001, L"0.000001"),
                                         NumberText(0.0, L"0.0"), NumberText(-0.0, L"-0.0"),
                                         NumberText(-2.25, L"-2.25"), NumberText(0.0000001, L"0.0"),
                                         NumberText(1234.5678909, L"1234.567891"),
                                         NumberText(10.05, L"10.05"),
                                         NumberText(std::numeric_limits<double>::infinity(), L"inf"),
                                         NumberText(-std::numeric_limits<double>::infinity(), L"-inf")));

TEST(KyStringNumbers, StandBehindTheText) {
    KyString s(L"x");

    s << 2.5;

    EXPECT_EQ(Text(s), L"x2.5");
}

TEST(KyStringNumbers, TheZerosAreStrippedFromTheWholeString) {
    KyString s(L"10");

    s << 0.0;

    EXPECT_EQ(Text(s), L"100.0");
}

TEST(KyStringNumbers, TheBufferKeepsRoomForAllSixDecimals) {
    KyString s(L"x");

    s << 2.5;

    EXPECT_THAT(s, IsString(L"x2.5", 10));
}

TEST(KyStringNumbers, OnesThatFitIntoTheBufferKeepIt) {
    KyString s;
    s.Format(L"x");

    s << 2.5 << 3.0;

    EXPECT_THAT(s, IsString(L"x2.53.0", 1025));
}

TEST(KyStringNumbers, ChainAndConvertFromOtherTypes) {
    KyString s;

    KyString& result = s << 2 << -3L << 1.5F;

    EXPECT_EQ(&result, &s);
    EXPECT_EQ(Text(s), L"2.0-3.01.5");
}

TEST(KyStringNumbers, TheLargestAndTheSmallestAreWhole) {
    KyString largest;
    KyString smallest;

    largest << -std::numeric_limits<double>::max();
    smallest << std::numeric_limits<double>::denorm_min();

    EXPECT_EQ(largest.GetLength(), 1 + 309 + 2);
    EXPECT_EQ(Text(largest).substr(0, 5), L"-1797");
    EXPECT_EQ(Text(smallest), L"0.0");
}

TEST(KyStringNumbers, ANotANumberEndsTheStringWithItsName) {
    KyString s(L"10");

    s << std::numeric_limits<double>::quiet_NaN();

    EXPECT_EQ(Text(s), L"10nan");
}

/// What "%f" gives, in the locale and the rounding mode of the moment, its zeros stripped.
std::wstring Printed(double d) {
    wchar_t buffer[400];
    std::wstring text(buffer, static_cast<std::size_t>(std::swprintf(buffer, 400, L"%f", d)));
    while (text.size() > 1 && text.back() == L'0' && text[text.size() - 2] != L'.') text.pop_back();
    return text;
}

/// Any double at all, or one whose seventh decimal decides.
double AnyNumber() {
    if (*rc::gen::arbitrary<bool>()) {
        const auto nBits = *rc::gen::arbitrary<std::uint64_t>();
        double d = 0;
        std::memcpy(&d, &nBits, sizeof(d));
        return d;
    }
    return std::ldexp(static_cast<double>(*rc::gen::inRange(-100'000'000L, 100'000'000L)),
                      -*rc::gen::inRange(0, 40));
}

RC_GTEST_PROP(KyStringNumbersModel, AnyNumberIsWhatTheCLibraryPrintsInAnyRoundingMode, ()) {
    const double d = AnyNumber();
    const int nMode = *rc::gen::element(FE_TONEAREST, FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO);
    KyString s;

    std::fesetround(nMode);
    s << d;
    const std::wstring expected = Printed(d);
    std::fesetround(FE_TONEAREST);

    RC_ASSERT(Text(s) == expected);
}

TEST(KyStringNumbers, ATieGoesToTheEvenDecimal) {
    KyString s;

    s << std::ldexp(1, -7) << std::ldexp(3, -7);

    EXPECT_EQ(Text(s), L"0.0078120.023438");
}

TEST(KyStringNumbers, TheRoundingModeDecidesTheLastDecimal) {
    KyString up;
    KyString down;

    std::fesetround(FE_UPWARD);
    up << 1.0000001;
    std::fesetround(FE_DOWNWARD);
    down << 0.9999999;
    std::fesetround(FE_TONEAREST);

    EXPECT_EQ(Text(up), L"1.000001");
    EXPECT_EQ(Text(down), L"0.999999");
}

// CloneString

TEST(CloneString, GivesANewArrayWithTheTextAndItsTerminator) {
    const wchar_t text[] = L"abc";

    const std::unique_ptr<wchar_t[]> clone(CloneString(text));

    EXPECT_NE(clone.get(), text);
    EXPECT_STREQ(clone.get(), L"abc");
}

TEST(CloneString, AnEmptyTextIsOneTerminator) {
    const std::unique_ptr<wchar_t[]> clone(CloneString(L""));

    EXPECT_EQ(clone[0], 0);
}

// Any sequence of edits

/// The text and the size of its buffer, by the extension rule.
struct Model {
    std::wstring m_text;
    long m_nBuffer = 1;

    void ExtendTo(long nEnd) {
        if (nEnd <= Length(m_text)) return;
        if (nEnd >= m_nBuffer) m_nBuffer = nEnd + 1;
        m_text.resize(static_cast<std::size_t>(nEnd), L'?');
    }

    void Copy(const std::wstring& text, long nPos) {
        ExtendTo(nPos + Length(text));
        m_text.replace(static_cast<std::size_t>(nPos), text.size(), text);
    }

    void Copy(long nFrom, long nTo, long nCount) {
        const std::wstring run =
            m_text.substr(static_cast<std::size_t>(nFrom), static_cast<std::size_t>(nCount));
        Copy(run, nTo);
    }

    void Insert(long nPos, const std::wstring& text) {
        const std::wstring tail = m_text.substr(static_cast<std::size_t>(nPos));
        m_text.resize(static_cast<std::size_t>(nPos));
        Copy(text, Length(m_text));
        Copy(tail, Length(m_text));
    }

    void Format(const std::wstring& text) {
        m_text = text;
        m_nBuffer = 1025;
    }

    void MakeUpper() {
        std::replace_if(
            m_text.begin(), m_text.end(), [](wchar_t ch) { return ch == L'a'; }, L'A');
        std::replace_if(
            m_text.begin(), m_text.end(), [](wchar_t ch) { return ch == L'b'; }, L'B');
    }

    void Append(double d) {
        Copy(std::to_wstring(d), Length(m_text));
        std::size_t nLast = m_text.size() - 1;
        while (m_text[nLast] == L'0' && m_text[nLast - 1] != L'.') --nLast;
        m_text.resize(nLast + 1);
    }

    void Replace(const std::wstring& sOld, const std::wstring& sNew) {
        std::wstring result;
        std::size_t nDone = 0;
        for (std::size_t i = 0; (i = m_text.find(sOld, nDone)) != std::wstring::npos;
             nDone = i + sOld.size()) {
            result += m_text.substr(nDone, i - nDone) + sNew;
        }
        if (nDone == 0) return;
        m_text = result + m_text.substr(nDone);
        m_nBuffer = Length(m_text) + 1;
    }
};

RC_GTEST_PROP(KyStringModel, AnySequenceOfEditsGivesTheModelsTextAndBuffer, ()) {
    KyString s;
    Model model;
    const auto anyText = rc::gen::container<std::wstring>(rc::gen::element(L'a', L'b', L'0', L'.'));
    const int nEdits = *rc::gen::inRange(0, 100);
    // Some edits multiply the text: a hundred of them would fill the memory.
    for (int i = 0; i < nEdits && Length(model.m_text) <= 2000; ++i) {
        const std::wstring text = *anyText;
        const long nLength = Length(model.m_text);
        const long nPos = *rc::gen::inRange(0L, nLength + 1);
        const std::wstring own = model.m_text.substr(static_cast<std::size_t>(nPos));
        switch (*rc::gen::inRange(0, 11)) {
            case 0:
                s.Copy(text.c_str(), nPos);
                model.Copy(text, nPos);
                break;
            case 1: {
                const long nTo = *rc::gen::inRange(0L, nLength + 1);
                s.Copy(s.c_str() + nPos, nTo);
                model.Copy(own, nTo);
                break;
            }
            case 2: {
                const long nTo = *rc::gen::inRange(0L, nLength + 1);
                const long nCount = *rc::gen::inRange(0L, nLength - nPos + 1);
                s.Copy(nPos, nTo, nCount);
                model.Copy(nPos, nTo, nCount);
                break;
            }
            case 3:
                RC_ASSERT(s.Insert(nPos, Make(text)));
                model.Insert(nPos, text);
                break;
            case 4:
                if (nLength > 2000) break;
                RC_ASSERT(s.Insert(nPos, s));
                model.Insert(nPos, std::wstring(model.m_text));
                break;
            case 5:
                s.Format(L"%ls%ls", text.c_str(), s.c_str() + nPos);
                model.Format((text + own).substr(0, 1023));
                break;
            case 6:
                s.MakeUpper();
                model.MakeUpper();
                break;
            case 7: {
                const double d = *rc::gen::inRange(-2000, 2000) / 8.0;
                s << d;
                model.Append(d);
                break;
            }
            case 8: {
                const std::wstring sOld = *rc::gen::element<std::wstring>(L"a", L"ab", L"0", L"aa", L".b");
                s.Replace(sOld.c_str(), text.c_str());
                model.Replace(sOld, text);
                break;
            }
            case 9: {
                KyString other(s);
                RC_ASSERT(other.m_nLength == nLength + 1);
                s = std::move(other);
                model.m_nBuffer = nLength + 1;
                break;
            }
            default: {
                const KyString other(std::move(s));
                s = other;
                model.m_nBuffer = nLength + 1;
                break;
            }
        }
        RC_ASSERT(Text(s) == model.m_text);
        RC_ASSERT(s.m_nLength == model.m_nBuffer);
        RC_ASSERT(s.m_nStrLength < s.m_nLength);
        RC_ASSERT(s.m_pData[s.m_nStrLength] == 0);
        RC_ASSERT(s.ReverseFind(L'a') == static_cast<long>(model.m_text.rfind(L'a')));
    }
}

}  // namespace
