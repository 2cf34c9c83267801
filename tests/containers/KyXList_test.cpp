// The indexed lists: the index is exact after every operation, and the binary search probes exactly the
// stated positions. What every list does alike is tested beside the other lists.
#include "VexaBase/containers/KyXList.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AllocationLog.h"
#include "ListProbes.h"
#include "TestElements.h"

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

class EveryStep : public testing::TestWithParam<long> {};

INSTANTIATE_TEST_SUITE_P(KyXList, EveryStep, testing::Values(1L, 2L, 3L, 7L, 64L));

/// Appends 0 .. n - 1.
void Count(KyXList<long>& list, long n) {
    for (long i = 0; i < n; ++i) {
        list.Append(i);
    }
}

/// Appends tokens with the keys 0, nGap, 2 nGap ..., each named by its position.
void Sow(KyPXList<Token>& list, long n, long nGap) {
    for (long i = 0; i < n; ++i) {
        list.Append(new Token(i * nGap, i));
    }
}

/// What a search does, beside its answer.
struct Search {
    bool bFound;
    long nCursor;
    Comparisons compared;
    std::vector<long> probed;  // positions the cursor was moved to, -1 for a step

    friend bool operator==(const Search& a, const Search& b) {
        return a.bFound == b.bFound && a.nCursor == b.nCursor && a.compared == b.compared &&
               a.probed == b.probed;
    }
    friend std::ostream& operator<<(std::ostream& os, const Search& x) {
        return os << x.bFound << " at " << x.nCursor << ", compared " << testing::PrintToString(x.compared)
                  << ", probed " << testing::PrintToString(x.probed);
    }
};

/// An indexed list that writes down where its cursor is moved to.
class ProbedList : public KyPXList<Token> {
public:
    using KyPXList<Token>::KyPXList;

    void MoveToFirst() override {
        m_probed.push_back(0);
        KyPXList<Token>::MoveToFirst();
    }
    void MoveToNext() override {
        m_probed.push_back(-1);
        KyPXList<Token>::MoveToNext();
    }
    void MoveTo(long i) override {
        m_probed.push_back(i);
        KyPXList<Token>::MoveTo(i);
    }

    std::vector<long> m_probed;
};

/// The search by the stated steps, over the keys in order. Positions stand for the objects' names.
Search SearchByTheSteps(const std::vector<long>& keys, long x, long first, long last) {
    const auto nLength = static_cast<long>(keys.size());
    Search search{false, -1, {}, {}};
    const auto moveTo = [&](long i) {
        search.probed.push_back(i);
        search.nCursor = i >= 0 && i < nLength ? i : -1;
    };
    const auto moveToNext = [&] {
        search.probed.push_back(-1);
        search.nCursor = search.nCursor + 1 < nLength ? search.nCursor + 1 : -1;
    };
    const auto compare = [&] {
        search.compared.emplace_back(-1, search.nCursor);
        const long nKey = keys[static_cast<std::size_t>(search.nCursor)];
        return x < nKey ? -1 : x > nKey ? 1 : 0;
    };
    if (nLength == 0) {
        return search;
    }
    long lo = std::min(std::max(first, 0L), nLength);
    long hi = std::min(last, nLength - 1);
    moveTo(lo);
    if (lo > hi) {
        return search;
    }
    if (compare() < 0) {
        return search;
    }
    moveTo(hi);
    if (compare() > 0) {
        moveToNext();
        return search;
    }
    while (lo < hi) {
        const long mid = (lo + hi) / 2;
        moveTo(mid);
        const int c = compare();
        if (c > 0) {
            lo = mid + 1;
            if (hi <= lo) {
                break;
            }
        } else if (c == 0) {
            search.bFound = true;
            return search;
        } else {
            hi = mid - 1;
            if (hi <= lo) {
                break;
            }
        }
    }
    if (hi < lo) {
        return search;
    }
    moveTo(hi);
    const int c = compare();
    if (c > 0) {
        moveToNext();
    }
    search.bFound = c == 0;
    return search;
}

Search SearchIn(ProbedList& list, long x, long first, long last) {
    const Token token(x, -1);
    Token::s_compared.clear();
    list.m_probed.clear();
    const bool bFound = list.BFindDataTo(token, first, last);
    return {bFound, list.m_nCurIndex, Token::s_compared, list.m_probed};
}

}  // namespace

TEST(KyXList, HoldsTheIndexAndTheStepBehindTheListsFields) {
    KyXList<long> list(7);
    const auto nOffset = [&list](const void* p) {
        return static_cast<const char*>(p) - reinterpret_cast<const char*>(&list);
    };

    EXPECT_EQ(nOffset(&list.m_arrIndex), static_cast<long>(sizeof(KyDList<long>)));
    EXPECT_EQ(nOffset(&list.m_nStep), static_cast<long>(sizeof(KyDList<long>) + sizeof(list.m_arrIndex)));
    EXPECT_EQ(sizeof(list), sizeof(KyDList<long>) + sizeof(list.m_arrIndex) + 8);
    EXPECT_TRUE((std::is_same_v<decltype(list.m_arrIndex), KyDynArray<KyDListNode<long>*>>));
    EXPECT_EQ(sizeof(KyPXList<Owned>), sizeof(KyXList<Owned*>));
    EXPECT_TRUE((std::is_base_of_v<KyXList<Owned*>, KyPXList<Owned>>));
}

TEST(KyXList, TheArgumentOfTheConstructorIsTheStep) {
    const KyXList<long> list(7);
    EXPECT_EQ(list.m_nStep, 7);
    EXPECT_EQ(list.m_nLength, 0);
    EXPECT_EQ(list.m_arrIndex.m_nLength, 0);
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, -1);

    EXPECT_EQ(KyXList<long>().m_nStep, 64);
    EXPECT_EQ(KyPXList<Owned>().m_nStep, 64);
    EXPECT_EQ(KyPXList<Owned>(3).m_nStep, 3);
}

TEST(KyXList, IsMadeFromEmptyBraces) {
    struct Lists {
        KyXList<long> m_values;
        KyPXList<long> m_objects;
    };

    const Lists lists = {};

    EXPECT_EQ(lists.m_values.m_nStep, 64);
    EXPECT_EQ(lists.m_objects.m_nStep, 64);
    EXPECT_FALSE((std::is_convertible_v<long, KyXList<long>>));
    EXPECT_FALSE((std::is_convertible_v<long, KyPXList<long>>));
}

TEST(KyXList, StandsEmptyOnItsSentinelUnderEveryStep) {
    KyXList<long> list(3);

    list.MoveTo(0);
    list.MoveTo(-1);
    list.Reset();

    EXPECT_TRUE(IsSound(list));
    EXPECT_EQ(list.m_nCurIndex, -1);
}

TEST_P(EveryStep, AppendingKeepsTheIndexExact) {
    KyXList<long> list(GetParam());

    for (long i = 0; i < 150; ++i) {
        list.Append(i);
        ASSERT_TRUE(IsSound(list)) << i;
    }
}

TEST_P(EveryStep, InsertingAndRemovingAtEveryPositionKeepTheIndexExact) {
    for (long nLength = 0; nLength < 16; ++nLength) {
        for (long i = 0; i <= nLength; ++i) {
            KyXList<long> list(GetParam());
            Count(list, nLength);

            list.Insert(i, 99);
            EXPECT_TRUE(IsSound(list)) << nLength << ", " << i;
            list.MoveTo(i);
            EXPECT_EQ(list.GetCurData(), 99);
            list.DelCur();
            EXPECT_TRUE(IsSound(list)) << nLength << ", " << i;
            EXPECT_EQ(list.m_nCurIndex, i - 1);
        }
    }
}

TEST_P(EveryStep, RemovingFromTheFrontKeepsTheIndexExact) {
    KyXList<long> list(GetParam());
    Count(list, 130);

    while (list.m_nLength != 0) {
        list.MoveToFirst();
        list.DelCur();
        ASSERT_TRUE(IsSound(list)) << list.m_nLength;
    }
}

TEST_P(EveryStep, GrowingAndShrinkingKeepTheIndexExact) {
    KyXList<long> list(GetParam());

    for (const long n : {5L, 64L, 65L, 128L, 3L, 1L, 0L, 70L}) {
        list.SetLength(n, true);

        EXPECT_TRUE(IsSound(list)) << n;
        EXPECT_EQ(list.m_nLength, n);
    }
    list[99] = 1;
    EXPECT_TRUE(IsSound(list));
    list.Reset();
    EXPECT_TRUE(IsSound(list));
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, -1);
}

TEST_P(EveryStep, CuttingTheListTrimsTheIndex) {
    for (long nCursor = -1; nCursor < 20; ++nCursor) {
        KyXList<long> list(GetParam());
        Count(list, 20);
        const std::vector<KyListNode<long>*> nodes = Nodes(list);
        list.MoveTo(nCursor);

        EXPECT_EQ(list.DetachAfterCur(), nCursor + 1);

        EXPECT_TRUE(IsSound(list)) << nCursor;
        FreeNodes<KyDListNode<long>>(
            std::vector<KyListNode<long>*>(nodes.begin() + nCursor + 1, nodes.end()));
    }
}

TEST_P(EveryStep, MoveToAndGetAtReachEveryPosition) {
    KyXList<long> list(GetParam());
    Count(list, 140);

    for (long i = 0; i < 140; ++i) {
        list.MoveTo(i * 37 % 140);
        EXPECT_EQ(list.GetCurData(), i * 37 % 140);
        EXPECT_EQ(*list.GetAt(i), i);
        ASSERT_TRUE(IsSound(list));
    }
}

TEST_P(EveryStep, TheIndexsCursorIsTheEntryUsedLast) {
    const long nStep = GetParam();
    KyXList<long> list(nStep);
    Count(list, 10);
    const long nEntries = list.m_arrIndex.m_nLength;
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, -1) << "appending uses no entry";

    long nExpected = -1;
    for (const long i : {0L, 9L, 4L, 10L, 7L, -1L, 3L, 200L, 6L, -70L, 9L, -200L}) {
        list.MoveTo(i);
        const long k = i / nStep;
        nExpected = k >= 0 && k < nEntries ? k : nExpected;

        EXPECT_EQ(list.m_arrIndex.m_nCurIndex, nExpected) << i;
    }

    list.MoveToFirst();
    list.MoveToLast();
    list.MoveToPre();
    list.MoveToNext();
    list.GetAt(2);
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, nExpected) << "only MoveTo uses the index";
}

TEST_P(EveryStep, ThousandsOfRandomOperationsKeepTheIndexExact) {
    std::mt19937 random(static_cast<unsigned>(GetParam()));
    const auto pick = [&random](long n) {
        return static_cast<long>(random() % static_cast<unsigned long>(n));
    };
    KyXList<long> list(GetParam());
    KyXList<long> other(1 + pick(5));
    std::vector<long> expected;
    std::vector<long> expectedOther;

    for (long nRun = 0; nRun < 6000; ++nRun) {
        const long nLength = list.m_nLength;
        const long i = pick(nLength + 1);
        const auto at = [&expected](long n) { return expected.begin() + n; };
        const long nOperation = nLength > 150 ? 9 : pick(12);
        switch (nOperation) {
            case 0:
                list.Append(nRun);
                expected.push_back(nRun);
                break;
            case 1:
            case 2:
                list.Insert(i, nRun);
                expected.insert(at(i), nRun);
                break;
            case 3:
                list.MoveTo(i);
                list.InsertCur(nRun);
                expected.insert(at(i), nRun);
                break;
            case 4:
                if (i < nLength) {
                    list.MoveTo(i);
                    list.DelCur();
                    expected.erase(at(i));
                }
                break;
            case 5:
                if (nLength != 0) {
                    const long to = pick(nLength);
                    list.Rotate(i % nLength, to);
                    std::rotate(expected.begin(), at((i % nLength - to + nLength) % nLength), expected.end());
                }
                break;
            case 6: {
                // The operation that follows meets the cursor as ReverseList leaves it.
                list.MoveTo(i);
                list.ReverseList();
                std::reverse(expected.begin(), expected.end());
                const long nPosition = CursorPosition(list);
                const long nNext = pick(5);
                if (nNext == 0) {
                    list.InsertAfterCur(nRun);
                    expected.insert(at(nPosition + 1), nRun);
                } else if (nNext == 1 && nPosition >= 0) {
                    list.DelCur();
                    expected.erase(at(nPosition));
                } else if (nNext == 2) {
                    list.ReAllocate(nLength + 2);
                    expected.resize(static_cast<std::size_t>(nLength + 2));
                    list.InsertAfterCur(nRun);
                    expected.insert(at(nPosition + 1), nRun);
                } else if (nNext == 3) {
                    list.InsertCur(nRun);
                    expected.insert(nPosition < 0 ? expected.end() : at(nPosition), nRun);
                }
                break;
            }
            case 7:
                list.Sort(pick(2) == 0);
                std::sort(expected.begin(), expected.end());
                if (nLength > 1 && *list.GetFirst() > *list.GetLast()) {
                    std::reverse(expected.begin(), expected.end());
                }
                break;
            case 8:
                if (i < nLength) {
                    const long to = pick(nLength);
                    const long x = expected[static_cast<std::size_t>(i)];
                    if (list.Move(i, to)) {
                        expected.erase(at(i));
                        expected.insert(at(i < to ? to - 1 : to), x);
                    }
                }
                break;
            case 9:
                if (i < nLength) {
                    EXPECT_EQ(other.Conbine(list, i), static_cast<long>(expectedOther.size()) + nLength - i);
                    expectedOther.insert(expectedOther.end(), at(i), expected.end());
                    expected.erase(at(i), expected.end());
                }
                break;
            case 10:
                other.Reset();
                expectedOther.clear();
                break;
            default: {
                const long n = pick(nLength + 20);
                list.SetLength(n, false);
                expected.resize(static_cast<std::size_t>(n));
            }
        }
        ASSERT_EQ(Elements(list), expected) << "operation " << nOperation << " of run " << nRun;
        ASSERT_EQ(Elements(other), expectedOther);
        ASSERT_TRUE(RingIsSound(list)) << "operation " << nOperation << " of run " << nRun;
        ASSERT_TRUE(IsSound(other));
    }
}

TEST_P(EveryStep, EachOperationStraightAfterReverseListKeepsTheIndexExact) {
    using List = KyXList<long>;
    const std::vector<std::pair<const char*, void (*)(List&)>> operations = {
        {"InsertAfterCur", [](List& list) { list.InsertAfterCur(9); }},
        {"InsertCur", [](List& list) { list.InsertCur(9); }},
        {"Insert", [](List& list) { list.Insert(3, 9); }},
        {"InsertHead", [](List& list) { list.InsertHead(9); }},
        {"Append", [](List& list) { list.Append(9); }},
        {"ReAllocate", [](List& list) { list.ReAllocate(14); }},
        {"SetLength, up", [](List& list) { list.SetLength(14, true); }},
        {"SetLength, down", [](List& list) { list.SetLength(6, true); }},
        {"operator[]", [](List& list) { list[12]; }},
        {"Sort", [](List& list) { list.Sort(true); }},
        {"Rotate", [](List& list) { list.Rotate(1, 3); }},
        {"Move", [](List& list) { list.Move(5, 1); }},
        {"ReverseList", [](List& list) { list.ReverseList(); }},
        {"Reset", [](List& list) { list.Reset(); }},
        {"MoveToNext", [](List& list) { list.MoveToNext(); }},
        {"MoveToPre", [](List& list) { list.MoveToPre(); }},
        {"MoveToFirst", [](List& list) { list.MoveToFirst(); }},
        {"MoveToLast", [](List& list) { list.MoveToLast(); }},
        {"DelCur",
         [](List& list) {
             if (list.m_pCurNode != list.m_pHead) {
                 list.DelCur();
             }
         }},
        {"Conbine",
         [](List& list) {
             List other(2);
             Count(other, 5);
             list.Conbine(other, 1);
         }},
        {"Conbine, from it",
         [](List& list) {
             List other(2);
             other.Conbine(list, 4);
         }},
        {"DetachAfterCur",
         [](List& list) {
             std::vector<KyListNode<long>*> nodes = Nodes(list);
             const long n = list.DetachAfterCur();
             FreeNodes<KyDListNode<long>>(std::vector<KyListNode<long>*>(nodes.begin() + n, nodes.end()));
         }},
    };
    for (const auto& [pszFirst, first] : operations) {
        for (const auto& [pszSecond, second] : operations) {
            for (const long nCursor : {-1L, 0L, 1L, 4L, 9L}) {
                List list(GetParam());
                Count(list, 10);
                list.MoveTo(nCursor);
                list.ReverseList();
                ASSERT_TRUE(RingIsSound(list));

                first(list);
                ASSERT_TRUE(RingIsSound(list)) << pszFirst << ", cursor " << nCursor;
                if (list.m_nLength < 6) {
                    continue;
                }
                second(list);
                ASSERT_TRUE(RingIsSound(list))
                    << pszFirst << ", then " << pszSecond << ", cursor " << nCursor;
            }
        }
    }
}

TEST_P(EveryStep, DetachAfterCurStraightAfterReverseListCountsTheNodesThatAreLeft) {
    KyXList<long> list(GetParam());
    Count(list, 5);
    list.MoveTo(1);
    list.ReverseList();
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    EXPECT_EQ(list.DetachAfterCur(), 4);

    EXPECT_THAT(list, ElementsAre(4, 3, 2, 1));
    EXPECT_TRUE(IsSound(list));
    FreeNodes<KyDListNode<long>>(std::vector<KyListNode<long>*>{nodes[4]});
}

TEST(KyXList, AfterRemovingTheSecondIndexedNodeItsEntryIsTheNodeThatFollowed) {
    KyXList<long> list(3);
    Count(list, 8);
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    list.MoveTo(3);
    list.DelCur();

    EXPECT_EQ(list.m_arrIndex.m_pData[1], nodes[4]);
    list.MoveTo(3);
    EXPECT_EQ(list.m_pCurNode, nodes[4]);
}

TEST(KyXList, RemovingFromAListOneLongerThanAMultipleOfTheStepShrinksTheIndex) {
    for (const long nStep : {1L, 2L, 3L, 64L}) {
        for (long i = 0; i <= 2 * nStep; ++i) {
            KyXList<long> list(nStep);
            Count(list, 2 * nStep + 1);
            EXPECT_EQ(list.m_arrIndex.m_nLength, 3);

            list.MoveTo(i);
            list.DelCur();

            EXPECT_EQ(list.m_arrIndex.m_nLength, 2);
            EXPECT_TRUE(IsSound(list));
        }
    }
}

TEST(KyXList, TheIndexGrowsPastItsFirstBlock) {
    KyXList<long> list(1);

    Count(list, 2500);

    EXPECT_TRUE(IsSound(list));
    list.MoveTo(2400);
    EXPECT_EQ(list.GetCurData(), 2400);
}

TEST(KyXList, TheIndexGrowsNoSoonerThanItIsFull) {
    KyXList<long> list(1);

    Count(list, 1025);
    EXPECT_EQ(list.m_arrIndex.m_nCapacity, 1025);

    list.Append(0);
    EXPECT_GT(list.m_arrIndex.m_nCapacity, 1025);
}

TEST(KyXList, AStepBeyondEveryLengthKeepsOneEntry) {
    KyXList<long> list(std::numeric_limits<long>::max());

    Count(list, 4);
    EXPECT_EQ(list.m_arrIndex.m_nLength, 1);
    list.MoveTo(2);
    list.DelCur();

    EXPECT_THAT(list, ElementsAre(0, 1, 3));
    EXPECT_TRUE(IsSound(list));
    list.Reset();
    EXPECT_EQ(list.m_arrIndex.m_nLength, 0);
}

TEST(KyXList, MoveToTheSentinelMayUseTheFirstEntry) {
    KyXList<long> list(3);
    Count(list, 7);
    list.MoveTo(6);

    list.MoveTo(-1);

    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, 0) << "-1 / 3 is 0";
}

TEST(KyXList, AppendingAllocatesANodeEachAndTheIndexByItsGrowthStep) {
    constexpr std::size_t nNode = sizeof(KyDListNode<long>);
    KyXList<long> list(2);
    const AllocationLog log;

    Count(list, 5);

    EXPECT_THAT(log.Singles(), ElementsAre(nNode, nNode, nNode, nNode, nNode));
    EXPECT_THAT(log.Arrays(), ElementsAre(1025 * sizeof(void*)));
}

TEST(KyXList, AnInsertionWhoseIndexCannotGrowLeavesTheElementsAsTheyWere) {
    const FragileWatch watch;
    {
        KyXList<Fragile> list(1);
        const long nEmpty = watch.Live();
        const Fragile x(1);
        {
            const FailingAllocation failing(0);
            EXPECT_THROW(list.Append(x), std::bad_alloc);
        }

        EXPECT_EQ(list.m_nLength, 0);
        EXPECT_EQ(list.m_pHead->m_pNext, list.m_pHead);
        EXPECT_EQ(watch.Live(), nEmpty + 1);
    }
    EXPECT_EQ(watch.Live(), 0);
}

TEST(KyXList, HoldsElementsWithAnExplicitDefaultConstructor) {
    struct Explicit {
        explicit Explicit() = default;
        long m_n = 5;
    };
    KyXList<Explicit> list;

    list.ReAllocate(2);

    EXPECT_EQ(list.GetAt(1)->m_n, 5);
}

TEST(KyXList, AConstructionThatFindsNoMemoryLeavesNothing) {
    const FragileWatch watch;
    const FailingAllocation failing(0);

    EXPECT_THROW(KyXList<Fragile>(2), std::bad_alloc);

    EXPECT_EQ(watch.Live(), 0);
}

TEST_P(EveryStep, TheOwningListKeepsItsIndexExactThroughItsOwnOperations) {
    const OwnedWatch watch;
    {
        KyPXList<Token> list(GetParam());
        for (long i = 0; i < 140; ++i) {
            list.Append(i % 3 == 0 ? nullptr : new Token(i * 37 % 140, i));
        }
        EXPECT_TRUE(IsSound(list));

        list.Sort(true);
        EXPECT_TRUE(IsSound(list));
        EXPECT_EQ(list.m_nLength, 140);

        list.SetLength(90, true);
        EXPECT_TRUE(IsSound(list));

        list.Sort(Token::Compare);
        list.Sort([](const Token& a, const Token& b) { return Token::Compare(b, a); });
        EXPECT_TRUE(IsSound(list));

        list.Move(3, 70);
        list.Move(70, 2);
        EXPECT_TRUE(IsSound(list));

        list.ReverseList();
        list.ReAllocate(100);
        list.InsertAfterCur(nullptr);
        EXPECT_TRUE(RingIsSound(list));

        while (list.m_nLength > 50) {
            list.MoveTo(list.m_nLength / 3);
            list.DelCur();
            ASSERT_TRUE(IsSound(list));
        }
        list.ReleaseAll();
        EXPECT_TRUE(IsSound(list));
        EXPECT_EQ(watch.Live(), 0);
        list.Reset();
        EXPECT_TRUE(IsSound(list));
    }
    EXPECT_EQ(watch.Live(), 0);
}

TEST(KyPXList, SearchingAnEmptyListStaysOnTheSentinel) {
    KyPXList<Token> list;
    const Token x(1);

    EXPECT_FALSE(list.BFindDataTo(x));
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, -1);
    EXPECT_FALSE(list.BFindDataTo(x, 0, -1));
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);
}

TEST(KyPXList, SearchingBelowAllEndsOnTheFirstElementAndAboveAllOnTheSentinel) {
    KyPXList<Token> list(2);
    Sow(list, 5, 10);

    EXPECT_FALSE(list.BFindDataTo(Token(-1)));
    EXPECT_EQ(list.m_nCurIndex, 0);
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, 0);

    EXPECT_FALSE(list.BFindDataTo(Token(41)));
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);
}

TEST(KyPXList, FindsTheOnlyElement) {
    KyPXList<Token> list;
    Sow(list, 1, 1);

    EXPECT_TRUE(list.BFindDataTo(Token(0)));

    EXPECT_EQ(list.m_nCurIndex, 0);
}

TEST(KyPXList, TheOneArgumentSearchIsTheSearchOfTheWholeList) {
    for (long nLength = 0; nLength < 10; ++nLength) {
        ProbedList list(3);
        Sow(list, nLength, 2);
        for (long x = -1; x <= 2 * nLength; ++x) {
            const Search whole = SearchIn(list, x, 0, nLength - 1);
            const Token token(x, -1);
            Token::s_compared.clear();
            list.m_probed.clear();

            const bool bFound = list.BFindDataTo(token);

            EXPECT_EQ((Search{bFound, list.m_nCurIndex, Token::s_compared, list.m_probed}), whole);
        }
    }
}

TEST_P(EveryStep, BFindDataToProbesTheStatedPositionsForEveryLengthAndKey) {
    for (long nLength = 0; nLength <= 20; ++nLength) {
        ProbedList list(GetParam());
        Sow(list, nLength, 2);
        std::vector<long> keys;
        for (long i = 0; i < nLength; ++i) {
            keys.push_back(2 * i);
        }
        for (long x = -1; x <= 2 * nLength; ++x) {
            const Search search = SearchIn(list, x, 0, nLength - 1);

            EXPECT_EQ(search, SearchByTheSteps(keys, x, 0, nLength - 1)) << nLength << " elements, " << x;
            EXPECT_EQ(search.bFound, x >= 0 && x < 2 * nLength && x % 2 == 0);
            EXPECT_EQ(search.nCursor, x < 0 && nLength != 0 ? 0 : (x + 1) / 2 < nLength ? (x + 1) / 2 : -1);
            EXPECT_TRUE(IsSound(list));
        }
    }
}

TEST_P(EveryStep, BFindDataToProbesTheStatedPositionsInEveryRange) {
    for (long nLength = 0; nLength <= 9; ++nLength) {
        ProbedList list(GetParam());
        Sow(list, nLength, 2);
        std::vector<long> keys;
        for (long i = 0; i < nLength; ++i) {
            keys.push_back(2 * i);
        }
        for (long first = -2; first <= nLength + 1; ++first) {
            for (long last = -2; last <= nLength + 1; ++last) {
                for (long x = -1; x <= 2 * nLength; ++x) {
                    const Search search = SearchIn(list, x, first, last);

                    EXPECT_EQ(search, SearchByTheSteps(keys, x, first, last))
                        << nLength << " elements, " << x << " in " << first << " .. " << last;
                }
            }
        }
        EXPECT_TRUE(IsSound(list));
    }
}

TEST(KyPXList, AmongEqualElementsTheSearchEndsOnOneOfThemAtTheStatedProbe) {
    for (long nLength = 1; nLength <= 12; ++nLength) {
        for (long nWord = 0; nWord < 1 << (nLength - 1); ++nWord) {
            ProbedList list(3);
            std::vector<long> keys;
            long nKey = 0;
            for (long i = 0; i < nLength; ++i) {
                nKey += i > 0 && (nWord >> (i - 1) & 1) != 0 ? 2 : 0;
                keys.push_back(nKey);
                list.Append(new Token(nKey, i));
            }
            for (long x = -1; x <= nKey + 1; x += nLength < 8 ? 1 : 3) {
                EXPECT_EQ(SearchIn(list, x, 0, nLength - 1), SearchByTheSteps(keys, x, 0, nLength - 1));
            }
        }
    }
}

TEST(KyPXList, TheFirstPositioningOfASearchIsMoveToFirst) {
    Recorded<KyPXList<Token>> list(2);
    Sow(list, 4, 10);
    list.TakeCalls();

    list.BFindDataTo(Token(10));

    std::vector<std::string> calls = list.TakeCalls();
    calls.erase(std::remove(calls.begin(), calls.end(), "GetCurData"), calls.end());
    EXPECT_THAT(calls, ElementsAre("MoveToFirst", "MoveTo 3", "MoveTo 1"));
}

TEST(KyPXList, ASearchLeavesTheIndexsCursorAtTheLastEntryItUsed) {
    KyPXList<Token> list(2);
    Sow(list, 9, 10);

    list.BFindDataTo(Token(-5));
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, 0);

    list.BFindDataTo(Token(80));
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, 4);

    list.BFindDataTo(Token(20));
    EXPECT_EQ(list.m_nCurIndex, 2);
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, 1);

    list.BFindDataTo(Token(95));
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_arrIndex.m_nCurIndex, 4);
}

TEST(KyPXList, ASearchInAnEmptyListLeavesTheCursorOnNoneWhateverItsIndexWas) {
    KyPXList<Token> list(2);
    Sow(list, 2, 10);
    list.MoveTo(0);
    list.ReverseList();
    list.DelCur();
    list.DelCur();

    EXPECT_FALSE(list.BFindDataTo(Token(5)));

    EXPECT_EQ(list.m_nCurIndex, -1);
}

TEST(KyPXList, ASearchFollowedByInsertCurKeepsTheListSorted) {
    std::mt19937 random(7);
    KyPXList<Token> list(3);

    for (long i = 0; i < 500; ++i) {
        auto pToken = std::make_unique<Token>(static_cast<long>(random() % 200), i);
        if (!list.BFindDataTo(*pToken)) {
            list.InsertCur(pToken.release());
        }
        ASSERT_TRUE(IsSound(list));
    }

    EXPECT_TRUE(std::is_sorted(list.begin(), list.end(),
                               [](const Token* a, const Token* b) { return a->m_nKey < b->m_nKey; }));
    EXPECT_EQ(std::adjacent_find(list.begin(), list.end(),
                                 [](const Token* a, const Token* b) { return a->m_nKey == b->m_nKey; }),
              list.end());
    EXPECT_GT(list.m_nLength, 100);
}

TEST(KyPXList, SearchesExactlyStraightAfterReverseList) {
    KyPXList<Token> list(2);
    for (long i = 9; i >= 0; --i) {
        list.Append(new Token(i, i));
    }
    list.MoveTo(4);
    list.ReverseList();

    for (long x = 0; x < 10; ++x) {
        EXPECT_TRUE(list.BFindDataTo(Token(x)));
        EXPECT_EQ(list.m_nCurIndex, x);
        EXPECT_TRUE(IsSound(list));
        list.ReverseList();
        list.ReverseList();
    }
}

TEST(KyPXList, TheSearchedObjectIsAskedAndNoOther) {
    struct Asked {
        explicit Asked(long n) : m_n(n) {}
        int Cmp(const Asked& other) const { return m_n < other.m_n ? -7 : m_n > other.m_n ? 7 : 0; }
        long m_n;
    };
    KyPXList<Asked> list;
    list.Append(new Asked(1));
    list.Append(new Asked(5));
    const Asked x(3);

    EXPECT_FALSE(list.BFindDataTo(x));

    EXPECT_EQ(list.m_nCurIndex, 1);
}
