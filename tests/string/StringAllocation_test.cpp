// What the strings take from the allocator, and what a failing one leaves behind.

#include <gmock/gmock.h>

#include <climits>
#include <cstddef>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "AllocationLog.h"
#include "StringKit.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/string/CompareLabel.h"
#include "VexaBase/string/KyString.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t operator""_chars(unsigned long long n) { return n * sizeof(wchar_t); }

/// The sizes of all blocks taken, by array new first.
std::vector<std::size_t> Taken(const AllocationLog& log) {
    std::vector<std::size_t> sizes = log.Singles();
    const std::vector<std::size_t> arrays = log.Arrays();
    sizes.insert(sizes.begin(), arrays.begin(), arrays.end());
    return sizes;
}

TEST(KyStringAllocation, AStringTakesOneBlockAndGivesItBack) {
    const AllocationLog log;

    {
        const KyString s(L"abc");
        Use(&s);
    }

    EXPECT_THAT(log.Arrays(), ElementsAre(4_chars));
    EXPECT_EQ(log.LiveArrayBytes(), 0U);
}

TEST(KyStringAllocation, EveryPieceOfTextCostsOneExactReallocation) {
    KyString s;
    const AllocationLog log;

    s.Copy(L"abc", 0);
    s.Copy(L"de", 3);
    s.Copy(0, 4, 3);

    EXPECT_THAT(log.Arrays(), ElementsAre(4_chars, 6_chars, 8_chars));
    EXPECT_EQ(log.Releases(), 3);
}

TEST(KyStringAllocation, AnEditThatFitsTakesNothing) {
    KyString s;
    s.Format(L"abcdef");
    const KyString x(L"x");
    const AllocationLog log;

    s.Copy(L"xy", 2);
    s.Copy(0, 3, 6);
    s.Insert(2, x);
    s << 2.5;
    s.MakeUpper();
    s.Format(L"%d", 5);

    EXPECT_THAT(Taken(log), IsEmpty());
}

TEST(KyStringAllocation, AnInsertionReallocatesOnce) {
    KyString s(L"abcdef");
    const KyString x(L"xyz");
    const AllocationLog log;

    s.Insert(2, x);

    EXPECT_THAT(log.Arrays(), ElementsAre(10_chars));
}

TEST(KyStringAllocation, TheFirstFormatTakesItsBuffer) {
    KyString s;
    const AllocationLog log;

    s.Format(L"%d", 5);

    EXPECT_THAT(log.Arrays(), ElementsAre(1025_chars));
}

TEST(KyStringAllocation, ANumberTakesRoomForItsDecimalsOnly) {
    KyString s(L"x");
    const AllocationLog log;

    s << 2.5;

    EXPECT_THAT(log.Arrays(), ElementsAre(10_chars));
}

TEST(KyStringAllocation, AMoveTakesOneTerminatorAndAMoveAssignmentNothing) {
    KyString s(L"abcdef");
    KyString target;
    const AllocationLog log;

    KyString moved(std::move(s));
    target = std::move(moved);

    EXPECT_THAT(log.Arrays(), ElementsAre(1_chars));
}

TEST(KyStringAllocation, AnAssignmentOfTheSameLengthReusesTheBuffer) {
    KyString s(L"abc");
    const KyString other(L"xyz");
    const AllocationLog log;

    s = other;

    EXPECT_THAT(log.Arrays(), IsEmpty());
}

TEST(KyStringAllocation, ASearchForAShortTextTakesNothing) {
    const KyString s(L"xxabxxab");
    const KyString pattern(std::wstring(64, L'a').c_str());
    const KyString ab(L"ab");
    const AllocationLog log;

    s.Find(ab);
    s.Find(pattern);

    EXPECT_THAT(Taken(log), IsEmpty());
}

TEST(KyStringAllocation, ASearchForALongTextTakesItsNextTableAndGivesItBack) {
    const KyString s(std::wstring(200, L'a').c_str());
    const KyString pattern(std::wstring(100, L'a').c_str());
    const AllocationLog log;

    s.Find(pattern);

    EXPECT_THAT(log.Arrays(), ElementsAre(100 * sizeof(long)));
    EXPECT_EQ(log.LiveArrayBytes(), 0U);
}

TEST(KyStringAllocation, AReplacementTakesOneBlockOfTheExactSize) {
    KyString s(L"aXaXa");
    const KyString sOld(L"a");
    const KyString sNew(L"bcd");
    const AllocationLog log;

    s.Replace(sOld, sNew);

    EXPECT_THAT(log.Arrays(), ElementsAre(12_chars));
    EXPECT_EQ(log.Releases(), 1);
}

TEST(KyStringExtent, ASearchReadsNothingBehindTheText) {
    const FencedArrays fenced;
    for (long nText = 3; nText < 120; nText += 4) {
        const std::wstring text(static_cast<std::size_t>(nText), L'a');
        const KyString s(text.c_str());
        for (long nPattern = 1; nPattern <= nText; ++nPattern) {
            const std::wstring as = text.substr(1, static_cast<std::size_t>(nPattern - 1));

            EXPECT_EQ(s.Find((as + L"a").c_str()), 0);
            EXPECT_EQ(s.Find((as + L"b").c_str()), -1);
            EXPECT_EQ(s.Find((L"a" + as + L"b").c_str()), -1);
            EXPECT_EQ(s.Find((L"b" + as).c_str()), -1);
        }
    }
}

TEST(KyStringExtent, AReplacementReadsNothingBehindTheTexts) {
    const FencedArrays fenced;
    for (std::size_t nText = 3; nText < 24; nText += 4) {
        for (std::size_t nAt = 0; nAt < nText; ++nAt) {
            for (std::size_t nNew = 3; nNew < 24; nNew += 4) {
                std::wstring text(nText, L'a');
                text[nAt] = L'b';
                text.back() = L'b';
                const std::wstring sNew(nNew, L'c');
                std::wstring expected;
                for (const wchar_t ch : text) {
                    expected += ch == L'b' ? sNew : std::wstring(1, ch);
                }
                KyString s(text.c_str());

                s.Replace(L"b", sNew.c_str());

                EXPECT_EQ(s.c_str(), expected) << nText << ' ' << nAt << ' ' << nNew;
            }
        }
    }
}

TEST(KyStringAllocation, AComparisonOfLabelsTakesNothing) {
    const AllocationLog log;

    const int n = CompareLabel(L"a label of some length 9", L"a label of some length 10");

    EXPECT_THAT(Taken(log), IsEmpty());
    EXPECT_EQ(n, -1);
}

TEST(KyStringAllocation, ACloneIsOneArray) {
    const AllocationLog log;

    delete[] CloneString(L"abc");

    EXPECT_THAT(log.Arrays(), ElementsAre(4_chars));
    EXPECT_EQ(log.LiveArrayBytes(), 0U);
}

// A failing allocation

/// Whether the operation on a string fails with its n-th allocation; where it does, the string must be as it
/// was and nothing may leak.
bool FailsCleanly(const std::function<void(KyString&)>& operation, long nAllocation) {
    KyString s(L"abcdef");
    const AllocationLog log;
    bool bFailed = false;
    {
        const FailingAllocation failing(nAllocation);
        try {
            operation(s);
        } catch (const std::bad_alloc&) {
            bFailed = true;
        }
    }
    if (bFailed) {
        EXPECT_THAT(s, IsString(L"abcdef", 7));
        EXPECT_EQ(log.LiveArrayBytes(), 0U);
    }
    return bFailed;
}

TEST(KyStringFailure, AnEditThatCannotAllocateChangesNothingAndLeaksNothing) {
    const KyString x(L"x");
    const KyString xyz(L"xyz");
    const KyString cd(L"cd");
    const std::function<void(KyString&)> edits[] = {
        [](KyString& s) { s.Copy(L"xyz", 5); },
        [](KyString& s) { s.Copy(s.c_str(), 3); },
        [](KyString& s) { s.Copy(0, 5, 6); },
        [&x](KyString& s) { s.Insert(3, x); },
        [](KyString& s) { s.Insert(3, s); },
        [](KyString& s) { s << 2.5; },
        [&](KyString& s) { s.Replace(cd, xyz); },
        [&](KyString& s) { s = xyz; },
        [](KyString& s) { const KyString moved(std::move(s)); },
    };

    for (const auto& edit : edits) {
        long nFailures = 0;
        while (FailsCleanly(edit, nFailures)) ++nFailures;
        EXPECT_GE(nFailures, 1);
    }
}

TEST(KyStringFailure, AFormatThatCannotTakeItsBufferLeavesAnEmptyString) {
    KyString s(L"abcdef");

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(s.Format(L"%d", 5), std::bad_alloc);
    }

    EXPECT_THAT(s, IsString(L"", 7));
}

TEST(KyStringFailure, ANegativeSizeIsRefusedAndTakesNothing) {
    KyString s(L"ab");
    const KyString sOld;
    const KyString sNew(L"12345");
    const AllocationLog log;

    EXPECT_THROW(s.Replace(sOld, sNew), std::bad_alloc);

    EXPECT_THAT(log.Arrays(), IsEmpty());
}

// Sizes that no allocation grants. They are asked for here, where the test's own allocator refuses them: a
// sanitizer's would end the program.

TEST(KyStringExtent, AnEndThatNoBufferReachesThrowsAndChangesNothing) {
    KyString s(L"abc");

    EXPECT_THROW(s.Copy(L"x", LONG_MAX - 1), std::bad_alloc);
    EXPECT_THROW(s.Copy(L"xy", LONG_MAX), std::bad_alloc);
    EXPECT_THROW(s.Copy(0, LONG_MAX / 2, 3), std::bad_alloc);

    EXPECT_THAT(s, IsString(L"abc", 4));
}

TEST(KyStringReplaceNothing, ByATextTwoLongerThanTheStringAsksForANegativeSize) {
    KyString s(L"abcd");
    const wchar_t* const pBuffer = s.c_str();

    EXPECT_THROW(s.Replace(L"", L"123456"), std::bad_alloc);

    EXPECT_THAT(s, IsString(L"abcd", 5));
    EXPECT_EQ(s.c_str(), pBuffer);
}

TEST(KyStringReplaceNothing, InAnEmptyStringByTwoCharactersAsksForANegativeSize) {
    KyString s;

    EXPECT_THROW(s.Replace(L"", L"xy"), std::bad_alloc);

    EXPECT_THAT(s, IsString(L"", 1));
}

}  // namespace
