#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <string>
#include <tuple>
#include <vector>

#include "StringKit.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/string/KyString.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::wstring zero(1, L'\0');

// The texts of an alphabet, shortest first

std::vector<std::wstring> AllTexts(const std::wstring& alphabet, std::size_t nLongest) {
    std::vector<std::wstring> texts{L""};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (texts[i].size() == nLongest) break;
        for (const wchar_t ch : alphabet) {
            texts.push_back(texts[i] + ch);
        }
    }
    return texts;
}

std::vector<KyString> Strings(const std::vector<std::wstring>& texts) {
    std::vector<KyString> strings;
    for (const std::wstring& text : texts) {
        strings.emplace_back(text.c_str());
    }
    return strings;
}

// Naive searches, by comparing at every position

std::vector<long> AllMatches(const std::wstring& text, const std::wstring& pattern, long nStart, long nEnd) {
    if (nEnd == -1 || nEnd >= Length(text)) nEnd = Length(text) - 1;
    std::vector<long> matches;
    for (long i = nStart; i + Length(pattern) - 1 <= nEnd;) {
        const bool bMatches = text.compare(static_cast<std::size_t>(i), pattern.size(), pattern) == 0;
        if (bMatches) matches.push_back(i);
        i += bMatches ? Length(pattern) : 1;
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

/// A queue that keeps what it is offered in a vector.
class Positions : public KyQuene<long> {
public:
    void Reset() override { m_positions.clear(); }
    long GetLength() override { return static_cast<long>(m_positions.size()); }
    long& operator[](long i) override { return m_positions[static_cast<std::size_t>(i)]; }
    bool GetHeadData(long& out) override { return Get(0, out); }
    bool GetTailData(long& out) override { return Get(m_positions.size() - 1, out); }
    bool EnQuene(const long& n) override {
        m_positions.push_back(n);
        return true;
    }
    bool DeQuene(long& out) override {
        if (!Get(0, out)) return false;
        m_positions.erase(m_positions.begin());
        return true;
    }

    std::vector<long> m_positions;

private:
    bool Get(std::size_t i, long& out) const {
        if (m_positions.empty()) return false;
        out = m_positions[i];
        return true;
    }
};

// The next table

std::vector<long> NextTable(const KyString& pattern) {
    constexpr long nUntouched = -77;
    std::vector<long> table(static_cast<std::size_t>(pattern.GetLength()) + 1, nUntouched);
    pattern.CreateNextTable(table.data());
    EXPECT_EQ(table.back(), nUntouched)
        << "written behind the table of " << testing::PrintToString(Text(pattern));
    table.pop_back();
    return table;
}

/// The table's definition, step by step.
std::vector<long> NextTableByTheRule(const std::wstring& p) {
    const std::size_t m = p.size();
    if (m < 1) return {};
    std::vector<long> next(m);
    next[0] = -1;
    if (m == 1) return next;
    next[1] = 0;
    if (m == 2) return next;
    std::size_t i = 1;
    long j = 0;
    do {
        if (p[i] == p[static_cast<std::size_t>(j)]) {
            i = i + 1;
            j = j + 1;
            if (p[i] != p[static_cast<std::size_t>(j)]) {
                next[i] = j;
            } else {
                next[i] = next[static_cast<std::size_t>(j)];
            }
        } else {
            j = next[static_cast<std::size_t>(j)];
            if (j == -1) {
                i = i + 1;
                j = 0;
                next[i] = 0;
            }
        }
    } while (i < m - 1);
    return next;
}

TEST(KyStringNextTable, AnEmptyPatternHasNone) { EXPECT_THAT(NextTable(L""), IsEmpty()); }

TEST(KyStringNextTable, BeginsWithMinusOneAndAPlainZero) {
    EXPECT_THAT(NextTable(L"a"), ElementsAre(-1));
    EXPECT_THAT(NextTable(L"ab"), ElementsAre(-1, 0));
    EXPECT_THAT(NextTable(L"aa"), ElementsAre(-1, 0)) << "plain, although the characters are equal";
}

TEST(KyStringNextTable, SkipsEqualCharactersOnlyInsideARunOfMatches) {
    EXPECT_THAT(NextTable(L"aaab"), ElementsAre(-1, 0, 0, 2));
    EXPECT_THAT(NextTable(L"abab"), ElementsAre(-1, 0, 0, 0));
    EXPECT_THAT(NextTable(L"aab"), ElementsAre(-1, 0, 1));
    EXPECT_THAT(NextTable(L"abcabd"), ElementsAre(-1, 0, 0, 0, 0, 2));
}

TEST(KyStringNextTable, AnEntryBehindARestartIsAPlainZeroEvenForTheFirstCharacter) {
    EXPECT_THAT(NextTable(L"aba"), ElementsAre(-1, 0, 0));
    EXPECT_THAT(NextTable(L"abcaa"), ElementsAre(-1, 0, 0, 0, 1));
}

TEST(KyStringNextTable, FollowsTheRuleForEveryPatternUpToSevenOfThreeLetters) {
    std::vector<std::wstring> wrong;

    for (const std::wstring& pattern : AllTexts(L"abc", 7)) {
        if (NextTable(pattern.c_str()) != NextTableByTheRule(pattern)) wrong.push_back(pattern);
    }

    EXPECT_THAT(wrong, IsEmpty());
}

TEST(KyStringNextTable, FollowsTheRuleForEveryPatternUpToTwelveOfTwoLetters) {
    std::vector<std::wstring> wrong;

    for (const std::wstring& pattern : AllTexts(L"ab", 12)) {
        if (NextTable(pattern.c_str()) != NextTableByTheRule(pattern)) wrong.push_back(pattern);
    }

    EXPECT_THAT(wrong, IsEmpty());
}

// The single search

TEST(KyStringFind, GivesTheFirstOccurrence) {
    const KyString s(L"xxabxxab");

    EXPECT_EQ(s.Find(L"ab"), 2);
    EXPECT_EQ(s.Find(L"x"), 0);
    EXPECT_EQ(s.Find(L"xxabxxab"), 0);
    EXPECT_EQ(s.Find(L"b"), 3);
}

TEST(KyStringFind, AMissingTextIsMinusOne) {
    EXPECT_EQ(KyString(L"xxab").Find(L"ba"), -1);
    EXPECT_EQ(KyString(L"xxab").Find(L"xxabx"), -1);
    EXPECT_EQ(KyString().Find(L"a"), -1);
}

TEST(KyStringFind, AnEmptyPatternIsNeverFound) {
    EXPECT_EQ(KyString(L"abc").Find(L""), -1);
    EXPECT_EQ(KyString().Find(L""), -1);
    EXPECT_EQ(KyString(L"abc").Find(L"", 1, 2), -1);
}

TEST(KyStringFind, StartsAtNStart) {
    const KyString s(L"xxabxxab");

    EXPECT_EQ(s.Find(L"ab", 2), 2);
    EXPECT_EQ(s.Find(L"ab", 3), 6);
    EXPECT_EQ(s.Find(L"ab", 7), -1);
    EXPECT_EQ(s.Find(L"ab", 8), -1);
    EXPECT_EQ(s.Find(L"ab", LONG_MAX), -1);
}

TEST(KyStringFind, AMatchEndsAtNEndOrBefore) {
    const KyString s(L"xxabxxab");

    EXPECT_EQ(s.Find(L"ab", 3, 7), 6);
    EXPECT_EQ(s.Find(L"ab", 3, 6), -1);
    EXPECT_EQ(s.Find(L"ab", 0, 3), 2);
    EXPECT_EQ(s.Find(L"ab", 0, 2), -1);
    EXPECT_EQ(s.Find(L"x", 0, 0), 0);
    EXPECT_EQ(s.Find(L"a", 2, 2), 2);
}

TEST(KyStringFind, AnEndPastTheTextIsTheLastCharacter) {
    KyString s;
    s.Format(L"xxab|ab");
    s.Format(L"xxab");

    EXPECT_EQ(s.Find(L"ab", 0, 1000), 2);
    EXPECT_EQ(s.Find(L"ab", 3, 1000), -1) << "the buffer behind the text is no text";
    EXPECT_EQ(s.Find(L"ab", 0, LONG_MAX), 2);
}

TEST(KyStringFind, AnEmptyWindowHoldsNothing) {
    const KyString s(L"aaaa");

    EXPECT_EQ(s.Find(L"a", 2, 1), -1);
    EXPECT_EQ(s.Find(L"a", 0, -2), -1);
    EXPECT_EQ(s.Find(L"a", -1, -2), -1);
    EXPECT_EQ(s.Find(L"a", 0, LONG_MIN), -1);
}

TEST(KyStringFind, FindsAStringInItself) {
    const KyString s(L"abc");

    EXPECT_EQ(s.Find(s), 0);
    EXPECT_EQ(s.Find(s, 1), -1);
}

TEST(KyStringFind, LooksBehindEmbeddedZeros) {
    const KyString s = Make(L"ab" + zero + L"cd" + zero);

    EXPECT_EQ(s.Find(L"cd"), 3);
    EXPECT_EQ(s.Find(Make(zero + L"c")), 2);
    EXPECT_EQ(s.Find(Make(zero)), 2);
    EXPECT_EQ(s.Find(Make(zero), 3), 5);
    EXPECT_EQ(s.Find(Make(zero + zero)), -1) << "the terminator is no character";
}

TEST(KyStringFind, ComparesWholeCharacters) {
    const wchar_t text[] = {static_cast<wchar_t>(0x10061), static_cast<wchar_t>(0x80000061), L'a', 0};
    const wchar_t pattern[] = {static_cast<wchar_t>(0x80000061), 0};

    EXPECT_EQ(KyString(text).Find(L"a"), 2);
    EXPECT_EQ(KyString(text).Find(pattern), 1);
}

TEST(KyStringFind, FindsPatternsOfAnyLength) {
    for (const std::size_t nPattern : {63U, 64U, 65U, 5000U}) {
        const std::wstring pattern = std::wstring(nPattern - 1, L'a') + L"b";
        const std::wstring text =
            std::wstring(nPattern, L'a') + L"c" + std::wstring(2 * nPattern, L'a') + L"b";

        const long nFound = KyString(text.c_str()).Find(pattern.c_str());

        EXPECT_EQ(nFound, static_cast<long>(text.find(pattern))) << nPattern;
    }
}

TEST(KyStringFind, ATextThatNearlyMatchesAlmostEverywhereIsSearchedInLinearTime) {
    std::wstring text;
    for (int i = 0; i < 200000; ++i) {
        text += L"ab";
    }
    std::wstring pattern = text.substr(0, 200000);
    text += L"cb";
    const KyString s((text + text).c_str());

    EXPECT_EQ(s.Find(pattern.c_str()), 0);
    EXPECT_EQ(s.Find((pattern + L"cb").c_str()), 200000);
    EXPECT_EQ(s.Find((pattern + L"db").c_str()), -1);
}

struct Window {
    long m_nStart;
    long m_nEnd;
};

std::vector<Window> AllWindows(long nLength) {
    std::vector<Window> windows;
    for (long nStart = 0; nStart <= nLength + 1; ++nStart) {
        for (long nEnd = -2; nEnd <= nLength + 1; ++nEnd) {
            windows.push_back({nStart, nEnd});
        }
    }
    return windows;
}

using Search = std::tuple<std::wstring, std::wstring, long, long>;

TEST(KyStringFind, AgreesWithANaiveSearchForEveryTextPatternAndWindowUpToEightOfTwoLetters) {
    const std::vector<std::wstring> texts = AllTexts(L"ab", 8);
    const std::vector<KyString> strings = Strings(texts);
    std::vector<Search> wrong;

    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::vector<Window> windows = AllWindows(Length(texts[i]));
        for (std::size_t j = 1; j < texts.size(); ++j) {
            for (const auto& [nStart, nEnd] : windows) {
                const long nLast = nEnd == -1 ? Length(texts[i]) - 1 : std::min(nEnd, Length(texts[i]) - 1);
                const std::size_t nFound = nStart > Length(texts[i])
                                               ? std::wstring::npos
                                               : texts[i].find(texts[j], static_cast<std::size_t>(nStart));
                const bool bInside =
                    nFound != std::wstring::npos && static_cast<long>(nFound) + Length(texts[j]) - 1 <= nLast;
                const long nExpected = bInside ? static_cast<long>(nFound) : -1;
                if (strings[i].Find(strings[j], nStart, nEnd) != nExpected) {
                    wrong.emplace_back(texts[i], texts[j], nStart, nEnd);
                }
            }
        }
    }

    EXPECT_THAT(wrong, IsEmpty());
}

// All matches

TEST(KyStringFindAll, QueuesMatchesThatDoNotOverlapInAscendingOrder) {
    KyListQuene<long> queue;

    EXPECT_EQ(KyString(L"aaaaa").Find(L"aa", queue), 2);

    EXPECT_THAT(queue, ElementsAre(0, 2));
}

TEST(KyStringFindAll, KeepsWhatTheQueueHeldAndCountsIt) {
    KyListQuene<long> queue;
    queue.EnQuene(77);

    EXPECT_EQ(KyString(L"abab").Find(L"b", queue), 3);

    EXPECT_THAT(queue, ElementsAre(77, 1, 3));
}

TEST(KyStringFindAll, WithoutAMatchReturnsTheQueuesLength) {
    KyListQuene<long> queue;
    EXPECT_EQ(KyString(L"abab").Find(L"x", queue), 0);
    queue.EnQuene(77);

    EXPECT_EQ(KyString(L"abab").Find(L"x", queue), 1);
    EXPECT_EQ(KyString().Find(L"x", queue), 1);
    EXPECT_EQ(KyString(L"xx").Find(L"x", queue, 1, 0), 1);

    EXPECT_THAT(queue, ElementsAre(77));
}

TEST(KyStringFindAll, AnEmptyPatternReturnsMinusOneAndLeavesTheQueueAlone) {
    KyListQuene<long> queue;
    queue.EnQuene(77);

    EXPECT_EQ(KyString(L"abc").Find(L"", queue), -1);
    EXPECT_EQ(KyString(L"abc").Find(L"", queue, 2, 1), -1);

    EXPECT_THAT(queue, ElementsAre(77));
}

TEST(KyStringFindAll, AFullQueueIgnoresFurtherMatches) {
    KyListQuene<long> queue(2);

    EXPECT_EQ(KyString(L"xaxaxa").Find(L"a", queue), 2);

    EXPECT_THAT(queue, ElementsAre(1, 3));
}

TEST(KyStringFindAll, OffersEveryMatchAndAsksTheQueueForItsLength) {
    class Refusing : public Positions {
    public:
        bool EnQuene(const long& n) override {
            Positions::EnQuene(n);
            return false;
        }
        long GetLength() override { return 1000; }
    };
    Refusing queue;

    EXPECT_EQ(KyString(L"xaxaxa").Find(L"a", queue), 1000);

    EXPECT_THAT(queue.m_positions, ElementsAre(1, 3, 5));
}

TEST(KyStringFindAll, HoldsToTheWindow) {
    Positions queue;
    const KyString s(L"ababab");

    EXPECT_EQ(s.Find(L"ab", queue, 1), 2);
    EXPECT_EQ(s.Find(L"ab", queue, 0, 4), 4);
    EXPECT_EQ(s.Find(L"ab", queue, 3, 100), 5);

    EXPECT_THAT(queue.m_positions, ElementsAre(2, 4, 0, 2, 4));
}

TEST(KyStringFindAll, AgreesWithANaiveSearchForEveryTextPatternAndWindowUpToEightOfTwoLetters) {
    const std::vector<std::wstring> texts = AllTexts(L"ab", 8);
    const std::vector<KyString> strings = Strings(texts);
    std::vector<Search> wrong;
    Positions queue;

    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::vector<Window> windows = AllWindows(Length(texts[i]));
        for (std::size_t j = 1; j < texts.size(); ++j) {
            for (const auto& [nStart, nEnd] : windows) {
                queue.m_positions.clear();
                const long nFound = strings[i].Find(strings[j], queue, nStart, nEnd);
                const std::vector<long> expected = AllMatches(texts[i], texts[j], nStart, nEnd);
                if (nFound != static_cast<long>(expected.size()) || queue.m_positions != expected) {
                    wrong.emplace_back(texts[i], texts[j], nStart, nEnd);
                }
            }
        }
    }

    EXPECT_THAT(wrong, IsEmpty());
}

// The operations that do nothing

std::wstring Repeated(const std::wstring& unit, int nTimes) {
    std::wstring text;
    for (int i = 0; i < nTimes; ++i) {
        text += unit;
    }
    return text;
}

void ExpectAllMatches(const std::wstring& text, const std::wstring& pattern) {
    Positions queue;

    KyString(text.c_str()).Find(pattern.c_str(), queue, 0, -1);

    EXPECT_EQ(queue.m_positions, AllMatches(text, pattern, 0, -1)) << "length " << text.size();
}

TEST(KyStringFindAll, FindsAMatchBehindAnyNumberOfBeginningsOfOne) {
    for (int nBeginnings = 0; nBeginnings < 120; ++nBeginnings) {
        ExpectAllMatches(Repeated(L"aab", nBeginnings) + L"aabb" + Repeated(L"aab", 40) + L"aabb", L"abb");
    }
}

TEST(KyStringFindAll, FindsEveryCharacterOfARun) { ExpectAllMatches(Repeated(L"a", 100), L"a"); }

TEST(KyStringFindEx, ReturnsMinusOneForEveryInput) {
    const KyString s(L"abc");
    KyString out(L"out");

    EXPECT_EQ(s.FindEx(L"b", out, 0), -1);
    EXPECT_EQ(s.FindEx(L"b", out, 3, 0, -1), -1);
    EXPECT_EQ(s.FindEx(L"", out, -1, 2, 1), -1);

    EXPECT_THAT(out, IsString(L"out", 4));
    EXPECT_THAT(s, IsString(L"abc", 4));
}

TEST(KyStringReplaceEx, ChangesNothing) {
    KyString s(L"abc");
    const wchar_t* const pBuffer = s.c_str();

    s.ReplaceEx(L"b", L"x", 1);
    s.ReplaceEx(L"", L"", 0);

    EXPECT_THAT(s, IsString(L"abc", 4));
    EXPECT_EQ(s.c_str(), pBuffer);
}

// Replace

TEST(KyStringReplace, ByALongerText) {
    KyString s(L"aXa");

    EXPECT_EQ(s.Replace(L"a", L"bb"), 2);

    EXPECT_THAT(s, IsString(L"bbXbb", 6));
}

TEST(KyStringReplace, ByAShorterText) {
    KyString s(L"xabcxabcx");

    EXPECT_EQ(s.Replace(L"abc", L"-"), 2);

    EXPECT_THAT(s, IsString(L"x-x-x", 6));
}

TEST(KyStringReplace, ByATextOfTheSameSizeStillTakesANewBuffer) {
    KyString s(L"abab");
    const wchar_t* const pBuffer = s.c_str();

    EXPECT_EQ(s.Replace(L"a", L"x"), 2);

    EXPECT_THAT(s, IsString(L"xbxb", 5));
    EXPECT_NE(s.c_str(), pBuffer);
}

TEST(KyStringReplace, WithoutAMatchReturnsZeroAndLeavesTheStringAlone) {
    KyString s;
    s.Format(L"aXa");
    const wchar_t* const pBuffer = s.c_str();

    EXPECT_EQ(s.Replace(L"q", L"z"), 0);
    EXPECT_EQ(s.Replace(L"aXaX", L"z"), 0);
    EXPECT_EQ(s.Replace(L"a", L"z", 1, 1), 0);

    EXPECT_THAT(s, IsString(L"aXa", 1025));
    EXPECT_EQ(s.c_str(), pBuffer);
}

TEST(KyStringReplace, InAnEmptyStringFindsNothing) {
    KyString s;

    EXPECT_EQ(s.Replace(L"a", L"b"), 0);

    EXPECT_THAT(s, IsString(L"", 1));
}

TEST(KyStringReplace, ByTheEmptyTextRemovesAndTerminates) {
    KyString all(L"abab");
    KyString inside(L"xabyabz");
    KyString behind(L"xab");

    EXPECT_EQ(all.Replace(L"ab", L""), 2);
    EXPECT_EQ(inside.Replace(L"ab", L""), 2);
    EXPECT_EQ(behind.Replace(L"ab", L""), 1);

    EXPECT_THAT(all, IsString(L"", 1));
    EXPECT_THAT(inside, IsString(L"xyz", 4));
    EXPECT_THAT(behind, IsString(L"x", 2));
}

TEST(KyStringReplace, ABufferOfAnySizeBecomesExact) {
    KyString s;
    s.Format(L"abab");

    EXPECT_EQ(s.Replace(L"b", L"c"), 2);

    EXPECT_THAT(s, IsString(L"acac", 5));
}

TEST(KyStringReplace, DoesNotLookIntoWhatItHasInserted) {
    KyString s(L"aa");

    EXPECT_EQ(s.Replace(L"a", L"aa"), 2);

    EXPECT_THAT(s, IsString(L"aaaa", 5));
}

TEST(KyStringReplace, TakesMatchesThatDoNotOverlap) {
    KyString s(L"aaaaa");

    EXPECT_EQ(s.Replace(L"aa", L"b"), 2);

    EXPECT_THAT(s, IsString(L"bba", 4));
}

TEST(KyStringReplace, HoldsToTheWindow) {
    KyString s(L"ababab");

    EXPECT_EQ(s.Replace(L"ab", L"X", 1, 3), 1);
    EXPECT_THAT(s, IsString(L"abXab", 6));

    EXPECT_EQ(s.Replace(L"ab", L"Y", 3, 100), 1);
    EXPECT_THAT(s, IsString(L"abXY", 5));
}

TEST(KyStringReplace, KeepsEmbeddedZeros) {
    KyString s = Make(L"a" + zero + L"b" + zero + L"c");

    EXPECT_EQ(s.Replace(L"b", Make(L"x" + zero)), 1);

    EXPECT_THAT(s, IsString(L"a" + zero + L"x" + zero + zero + L"c", 7));
}

TEST(KyStringReplace, TheStringItselfCountsAsItWas) {
    KyString byItself(L"abab");
    KyString ofItself(L"abab");
    KyString both(L"abab");

    EXPECT_EQ(byItself.Replace(L"a", byItself), 2);
    EXPECT_EQ(ofItself.Replace(ofItself, L"xy"), 1);
    EXPECT_EQ(both.Replace(both, both), 1);

    EXPECT_THAT(byItself, IsString(L"ababbababb", 11));
    EXPECT_THAT(ofItself, IsString(L"xy", 3));
    EXPECT_THAT(both, IsString(L"abab", 5));
}

TEST(KyStringReplace, AgreesWithANaiveReplacementForEveryTextPatternAndWindowUpToFiveOfTwoLetters) {
    const std::vector<std::wstring> texts = AllTexts(L"ab", 5);
    const std::vector<KyString> strings = Strings(texts);
    const std::vector<std::wstring> substitutes{L"", L"b", L"ab", L"xyz"};
    std::vector<Search> wrong;

    for (std::size_t i = 0; i < texts.size(); ++i) {
        for (std::size_t j = 1; j < texts.size(); ++j) {
            for (const auto& [nStart, nEnd] : AllWindows(Length(texts[i]))) {
                const std::vector<long> matches = AllMatches(texts[i], texts[j], nStart, nEnd);
                for (const std::wstring& sNew : substitutes) {
                    KyString s(strings[i]);
                    const long nReplaced = s.Replace(strings[j], sNew.c_str(), nStart, nEnd);
                    const std::wstring expected = Replaced(texts[i], matches, texts[j].size(), sNew);
                    const bool bValid = s.m_nLength == s.m_nStrLength + 1 && s.c_str()[s.GetLength()] == 0;
                    if (nReplaced != static_cast<long>(matches.size()) || Text(s) != expected || !bValid) {
                        wrong.emplace_back(texts[i], texts[j], nStart, nEnd);
                    }
                }
            }
        }
    }

    EXPECT_THAT(wrong, IsEmpty());
}

// Replacing nothing, which counts as -1 replacements

TEST(KyStringReplaceNothing, RebuildsTheStringUnchangedAndReturnsMinusOne) {
    KyString s;
    s.Format(L"abcd");
    const wchar_t* const pBuffer = s.c_str();

    EXPECT_EQ(s.Replace(L"", L"xy"), -1);

    EXPECT_THAT(s, IsString(L"abcd", 5));
    EXPECT_NE(s.c_str(), pBuffer);
}

TEST(KyStringReplaceNothing, DoesSoForEverySubstituteUpToTheStringsLengthAndOneMore) {
    for (std::size_t nNew = 0; nNew <= 5; ++nNew) {
        KyString s(L"abcd");
        const wchar_t* const pBuffer = s.c_str();

        EXPECT_EQ(s.Replace(L"", std::wstring(nNew, L'x').c_str()), -1);

        EXPECT_THAT(s, IsString(L"abcd", 5)) << nNew;
        EXPECT_NE(s.c_str(), pBuffer) << nNew;
    }
}

TEST(KyStringReplaceNothing, InAnEmptyString) {
    KyString byNothing;
    KyString byOne;

    EXPECT_EQ(byNothing.Replace(L"", L""), -1);
    EXPECT_EQ(byOne.Replace(L"", L"x"), -1);

    EXPECT_THAT(byNothing, IsString(L"", 1));
    EXPECT_THAT(byOne, IsString(L"", 1));
}

TEST(KyStringReplaceNothing, IgnoresTheWindow) {
    KyString s(L"abcd");

    EXPECT_EQ(s.Replace(L"", L"x", 3, 1), -1);

    EXPECT_THAT(s, IsString(L"abcd", 5));
}

TEST(KyStringReplaceNothing, ByTheStringItself) {
    KyString s(L"abcd");
    KyString empty;

    EXPECT_EQ(s.Replace(L"", s), -1);
    EXPECT_EQ(empty.Replace(empty, empty), -1);

    EXPECT_THAT(s, IsString(L"abcd", 5));
    EXPECT_THAT(empty, IsString(L"", 1));
}

// Larger texts

RC_GTEST_PROP(KyStringSearchModel, AnyTextAndAnyPieceOfItAgreeWithANaiveSearch, ()) {
    const auto anyText = rc::gen::container<std::wstring>(
        rc::gen::weightedElement<wchar_t>({{6, L'a'}, {2, L'b'}, {1, L'c'}}));
    std::wstring text;
    const int nPieces = *rc::gen::inRange(0, 6);
    for (int i = 0; i < nPieces; ++i) {
        text += *anyText;
        text += text.substr(text.size() / 2);
    }
    const long nFrom = *rc::gen::inRange(0L, Length(text) + 1);
    const long nPiece = *rc::gen::inRange(0L, 100L);
    std::wstring pattern = text.substr(static_cast<std::size_t>(nFrom), static_cast<std::size_t>(nPiece));
    if (pattern.empty()) pattern = L"b";
    const long nStart = *rc::gen::inRange(0L, Length(text) + 2);
    const long nEnd = *rc::gen::inRange(-1L, Length(text) + 2);
    const std::wstring sNew = *anyText;

    KyString s(text.c_str());
    Positions queue;
    const long nFirst = s.Find(pattern.c_str(), nStart, nEnd);
    const long nAll = s.Find(pattern.c_str(), queue, nStart, nEnd);
    const long nReplaced = s.Replace(pattern.c_str(), sNew.c_str(), nStart, nEnd);

    const std::vector<long> matches = AllMatches(text, pattern, nStart, nEnd);
    RC_ASSERT(nFirst == (matches.empty() ? -1 : matches.front()));
    RC_ASSERT(nAll == static_cast<long>(matches.size()));
    RC_ASSERT(queue.m_positions == matches);
    RC_ASSERT(nReplaced == static_cast<long>(matches.size()));
    RC_ASSERT(Text(s) == Replaced(text, matches, pattern.size(), sNew));
    RC_ASSERT(s.m_nLength == s.m_nStrLength + 1);
}

/// A text of one unit over and over, with a few other characters in it: what looks like a match often is
/// none.
std::wstring Repetitive(long nLength) {
    const std::wstring unit = *rc::gen::nonEmpty(
        rc::gen::container<std::wstring>(rc::gen::weightedElement<wchar_t>({{4, L'a'}, {1, L'b'}})));
    std::wstring text;
    while (Length(text) < nLength) text += unit;
    const int nOthers = *rc::gen::inRange(0, 4);
    for (int i = 0; i < nOthers; ++i) {
        text[static_cast<std::size_t>(*rc::gen::inRange(0L, Length(text)))] =
            *rc::gen::element(L'a', L'b', L'c');
    }
    return text;
}

RC_GTEST_PROP(KyStringSearchModel, ALongRepetitiveTextAgreesWithANaiveSearch, ()) {
    const std::wstring text = Repetitive(*rc::gen::inRange(1L, 6000L));
    const auto nFrom = static_cast<std::size_t>(*rc::gen::inRange(0L, Length(text)));
    std::wstring pattern = text.substr(nFrom, static_cast<std::size_t>(*rc::gen::inRange(1L, 120L)));
    if (*rc::gen::element(true, true, false)) {
        pattern[static_cast<std::size_t>(*rc::gen::inRange(0L, Length(pattern)))] = L'b';
    }
    const long nStart = *rc::gen::element(0L, 0L, 1L, 700L);
    const long nEnd = *rc::gen::element(-1L, -1L, 2000L);
    const std::wstring sNew(static_cast<std::size_t>(*rc::gen::inRange(0, 20)), L'x');

    KyString s(text.c_str());
    Positions queue;
    const long nFirst = s.Find(pattern.c_str(), nStart, nEnd);
    s.Find(pattern.c_str(), queue, nStart, nEnd);
    s.Replace(pattern.c_str(), sNew.c_str(), nStart, nEnd);

    const std::vector<long> matches = AllMatches(text, pattern, nStart, nEnd);
    RC_ASSERT(nFirst == (matches.empty() ? -1 : matches.front()));
    RC_ASSERT(queue.m_positions == matches);
    RC_ASSERT(Text(s) == Replaced(text, matches, pattern.size(), sNew));
}

}  // namespace
