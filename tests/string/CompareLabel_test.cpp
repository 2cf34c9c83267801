#include "VexaBase/string/CompareLabel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Characters of negative value, each of which keeps the next one with it.
constexpr wchar_t lowest = static_cast<wchar_t>(0x80000000U);
constexpr wchar_t minusOne = static_cast<wchar_t>(0xffffffffU);

std::wstring Label(std::initializer_list<wchar_t> characters) { return characters; }

int Compare(const std::wstring& a, const std::wstring& b) { return CompareLabel(a.c_str(), b.c_str()); }

/// The definition with its temporary strings: a terminator that is taken along stands in the text.
int CompareByTheRule(const std::wstring& a, const std::wstring& b) {
    struct Parts {
        explicit Parts(const std::wstring& label) {
            for (std::size_t i = 0; i < label.size(); ++i) {
                if (label[i] >= 48 && label[i] <= 57) {
                    m_digits += label[i];
                    continue;
                }
                m_text += label[i];
                if (static_cast<std::int32_t>(label[i]) < 0) {
                    ++i;
                    m_text += label.c_str()[i];
                }
            }
        }
        std::wstring m_text;
        std::wstring m_digits;
    };
    const Parts partsA(a);
    const Parts partsB(b);
    const int nText = std::wcscmp(partsA.m_text.c_str(), partsB.m_text.c_str());
    if (nText != 0) return nText < 0 ? -1 : 1;
    const auto nA = static_cast<std::int32_t>(std::wcstol(partsA.m_digits.c_str(), nullptr, 10));
    const auto nB = static_cast<std::int32_t>(std::wcstol(partsB.m_digits.c_str(), nullptr, 10));
    return nA < nB ? -1 : nA > nB ? 1 : 0;
}

TEST(CompareLabel, EmptyLabelsAreEqual) { EXPECT_EQ(Compare(L"", L""), 0); }

TEST(CompareLabel, AnEmptyLabelOrdersBeforeAText) {
    EXPECT_EQ(Compare(L"", L"a"), -1);
    EXPECT_EQ(Compare(L"a", L""), 1);
}

TEST(CompareLabel, NumbersCompareByValue) {
    EXPECT_EQ(Compare(L"item9", L"item10"), -1);
    EXPECT_EQ(Compare(L"item10", L"item9"), 1);
    EXPECT_EQ(Compare(L"item10", L"item10"), 0);
}

TEST(CompareLabel, LeadingZerosDoNotCount) {
    EXPECT_EQ(Compare(L"item007", L"item7"), 0);
    EXPECT_EQ(Compare(L"item0", L"item000"), 0);
}

TEST(CompareLabel, TheTextDecidesWhateverDigitsFollow) {
    EXPECT_EQ(Compare(L"abc", L"abd"), -1);
    EXPECT_EQ(Compare(L"abc9", L"abd1"), -1);
    EXPECT_EQ(Compare(L"abd1", L"abc9"), 1);
    EXPECT_EQ(Compare(L"9abc", L"1abd"), -1);
    EXPECT_EQ(Compare(L"ab9", L"abc1"), -1) << "a shorter text orders first";
}

TEST(CompareLabel, UpperCaseOrdersFirst) {
    EXPECT_EQ(Compare(L"B1", L"a1"), -1);
    EXPECT_EQ(Compare(L"a1", L"B1"), 1);
}

TEST(CompareLabel, NoDigitsAreTheNumberZero) {
    EXPECT_EQ(Compare(L"x", L"x0"), 0);
    EXPECT_EQ(Compare(L"x", L"x1"), -1);
    EXPECT_EQ(Compare(L"", L"0"), 0);
    EXPECT_EQ(Compare(L"", L"7"), -1);
}

TEST(CompareLabel, AllDigitsFormOneNumberWhereverTheyStand) {
    EXPECT_EQ(Compare(L"a1b2", L"ab12"), 0);
    EXPECT_EQ(Compare(L"a1b2", L"a12b"), 0);
    EXPECT_EQ(Compare(L"12ab", L"a1b2"), 0);
    EXPECT_EQ(Compare(L"a1b2", L"a2b1"), -1);
}

TEST(CompareLabel, AMinusSignIsText) {
    EXPECT_EQ(Compare(L"a-5", L"a-3"), 1);
    EXPECT_EQ(Compare(L"a-5", L"a3"), 1);
    EXPECT_EQ(Compare(L"-1", L"0"), 1);
}

TEST(CompareLabel, OnlyAsciiDigitsAreDigits) {
    EXPECT_EQ(Compare(L"\u0665", L"\u0661"), 1);
    EXPECT_EQ(Compare(L"a\u0665", L"a9"), 1);
    EXPECT_EQ(Compare(L"a/", L"a:"), -1);
}

TEST(CompareLabel, NumbersCompareByTheirLow32Bits) {
    EXPECT_EQ(Compare(L"n4294967297", L"n1"), 0);
    EXPECT_EQ(Compare(L"n4294967296", L"n0"), 0);
    EXPECT_EQ(Compare(L"n2147483647", L"n2147483646"), 1);
    EXPECT_EQ(Compare(L"n2147483648", L"n0"), -1) << "the low 32 bits are the smallest value";
    EXPECT_EQ(Compare(L"n4294967295", L"n0"), -1) << "the low 32 bits are -1";
    EXPECT_EQ(Compare(L"n2147483648", L"n4294967295"), -1);
}

TEST(CompareLabel, ANumberBeyondTheLargestLongIsClampedToIt) {
    EXPECT_EQ(Compare(L"n99999999999999999999", L"n0"), -1) << "the low 32 bits are -1";
    EXPECT_EQ(Compare(L"n99999999999999999999", L"n4294967295"), 0);
    EXPECT_EQ(Compare(L"n9223372036854775807", L"n99999999999999999999"), 0);
    EXPECT_EQ(Compare(L"n9223372036854775808", L"n9223372036854775807"), 0);
    EXPECT_EQ(Compare(L"n9223372036854775806", L"n9223372036854775807"), -1);
    EXPECT_EQ(Compare(L"n9000000000000000000", L"n9223372036854775807"), -1) << "this one is not clamped";
    EXPECT_EQ(Compare(L"n92233720368547758070", L"n9223372036854775807"), 0) << "once clamped it stays so";
    EXPECT_EQ(Compare(L"n18446744073709551616", L"n4294967295"), 0) << "2^64 does not wrap to 0";
    EXPECT_EQ(Compare(L"n00000000000000000000000007", L"n7"), 0);
}

TEST(CompareLabel, ANegativeCharacterTakesADigitAlongIntoTheText) {
    EXPECT_EQ(Compare(Label({lowest, L'1'}), Label({lowest, L'2'})), -1);
    EXPECT_EQ(Compare(Label({lowest, L'5'}), Label({lowest, L'5', L'9'})), -1) << "only one is taken along";
    EXPECT_EQ(Compare(Label({lowest, L'9', L'1'}), Label({lowest, L'1', L'9'})), 1);
    EXPECT_EQ(Compare(Label({L'7', lowest, L'1'}), Label({lowest, L'1', L'7'})), 0);
}

TEST(CompareLabel, ANegativeCharacterThatWasTakenAlongTakesNothing) {
    EXPECT_EQ(Compare(Label({lowest, minusOne, L'5'}), Label({lowest, minusOne, L'4'})), 1);
    EXPECT_EQ(Compare(Label({lowest, minusOne, L'0', L'5'}), Label({lowest, minusOne, L'5'})), 0);
}

TEST(CompareLabel, ANegativeCharacterAtTheEndTakesTheTerminatorAlong) {
    EXPECT_EQ(Compare(Label({L'a', lowest}), Label({L'a', lowest})), 0);
    EXPECT_EQ(Compare(Label({L'a', L'5', lowest}), Label({L'a', L'4', lowest})), 1);
    EXPECT_EQ(Compare(Label({lowest}), Label({lowest, L'0'})), -1)
        << "the digit is text, the terminator ends it";
    EXPECT_EQ(Compare(Label({lowest}), Label({lowest, minusOne})), 1);
}

TEST(CompareLabel, NothingBehindATerminatorThatWasTakenAlongIsRead) {
    const std::wstring end(1, L'\0');

    EXPECT_EQ(Compare(Label({L'a', lowest}) + end + L"5", Label({L'a', lowest}) + end + L"6"), 0);
}

TEST(CompareLabel, ANegativeCharacterOrdersAsWcscmpOrdersIt) {
    const std::wstring negative = Label({lowest});

    EXPECT_EQ(Compare(negative, L"a"), -1);
    EXPECT_EQ(Compare(negative, L""), -1) << "even before the end of a text";
    EXPECT_EQ(Compare(Label({lowest}), Label({minusOne})), -1);
}

TEST(CompareLabel, LeavesErrnoAlone) {
    errno = 0;

    Compare(L"n99999999999999999999", L"n1");

    EXPECT_EQ(errno, 0);
}

TEST(CompareLabel, SortsAListOfNames) {
    std::vector<std::wstring> names{L"Ward 10", L"Ward 9", L"Ward 1", L"Area 11", L"Ward 100"};

    std::sort(names.begin(), names.end(), [](const auto& a, const auto& b) { return Compare(a, b) < 0; });

    EXPECT_THAT(names, ElementsAre(L"Area 11", L"Ward 1", L"Ward 9", L"Ward 10", L"Ward 100"));
}

// Every pair of short labels

std::vector<std::wstring> AllLabels(const std::wstring& alphabet, std::size_t nLongest) {
    std::vector<std::wstring> labels{L""};
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (labels[i].size() == nLongest) break;
        for (const wchar_t ch : alphabet) {
            labels.push_back(labels[i] + ch);
        }
    }
    return labels;
}

using Pairs = std::vector<std::pair<std::wstring, std::wstring>>;

TEST(CompareLabelPairs, UpToLengthFiveOfFourCharactersFollowTheRuleAndItsMirror) {
    const std::vector<std::wstring> labels = AllLabels(Label({L'0', L'7', L'a', lowest}), 5);
    Pairs wrong;

    for (const std::wstring& a : labels) {
        for (const std::wstring& b : labels) {
            const int n = Compare(a, b);
            if (n != CompareByTheRule(a, b) || Compare(b, a) != -n) wrong.emplace_back(a, b);
        }
    }

    EXPECT_THAT(wrong, IsEmpty());
}

TEST(CompareLabelPairs, UpToLengthThreeOfEightCharactersFollowTheRuleAndItsMirror) {
    const std::vector<std::wstring> labels =
        AllLabels(Label({L'0', L'9', L'/', L':', L'-', L'Z', minusOne, static_cast<wchar_t>(0x7fffffff)}), 3);
    Pairs wrong;

    for (const std::wstring& a : labels) {
        for (const std::wstring& b : labels) {
            const int n = Compare(a, b);
            if (n != CompareByTheRule(a, b) || Compare(b, a) != -n) wrong.emplace_back(a, b);
        }
    }

    EXPECT_THAT(wrong, IsEmpty());
}

/// A comparison of labels is transitive exactly when there is an arrangement in which every label is at most
/// equal to every later one, and equal ones stand together in groups between which none are equal.
TEST(CompareLabelPairs, UpToLengthFiveAreTransitive) {
    std::vector<std::wstring> labels = AllLabels(Label({L'0', L'7', L'a', lowest}), 5);
    std::sort(labels.begin(), labels.end(), [](const auto& a, const auto& b) { return Compare(a, b) < 0; });
    std::vector<int> groups(labels.size(), 0);
    for (std::size_t i = 1; i < labels.size(); ++i) {
        groups[i] = groups[i - 1] + (Compare(labels[i - 1], labels[i]) != 0 ? 1 : 0);
    }
    Pairs wrong;

    for (std::size_t i = 0; i < labels.size(); ++i) {
        for (std::size_t j = i + 1; j < labels.size(); ++j) {
            const int nExpected = groups[i] == groups[j] ? 0 : -1;
            if (Compare(labels[i], labels[j]) != nExpected) wrong.emplace_back(labels[i], labels[j]);
        }
    }

    EXPECT_THAT(wrong, IsEmpty());
    EXPECT_GT(groups.back(), 100);
}

RC_GTEST_PROP(CompareLabelModel, AnyTwoLabelsFollowTheRule, ()) {
    const auto anyCharacter = rc::gen::weightedOneOf<wchar_t>(
        {{10, rc::gen::inRange(L'0', static_cast<wchar_t>(L'9' + 1))},
         {4, rc::gen::element(L'a', L'b', L' ', L'-', lowest, minusOne)},
         {1, rc::gen::map(rc::gen::inRange<std::int64_t>(1, 0x100000000), [](std::int64_t n) {
              return static_cast<wchar_t>(static_cast<std::uint32_t>(n));
          })}});
    const auto anyLabel = rc::gen::container<std::wstring>(anyCharacter);
    const std::wstring start = *anyLabel;
    const std::wstring a = start + *anyLabel;
    const std::wstring b = start + *anyLabel;

    RC_ASSERT(Compare(a, b) == CompareByTheRule(a, b));
    RC_ASSERT(Compare(b, a) == -Compare(a, b));
    RC_ASSERT(Compare(a, a) == 0);
}

}  // namespace
