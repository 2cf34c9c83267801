// The singly linked list, and what every list does alike.
#include "VexaBase/containers/KyList.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <numeric>
#include <stdexcept>
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

/// An indexed list with several index entries, default-made as the other lists are.
struct IndexedList : KyXList<long> {
    IndexedList() : KyXList<long>(2) {}
};

class EveryList : public ListTest<long> {};
INSTANTIATE_TEST_SUITE_P(Lists, EveryList, testing::ValuesIn(ListKind<long>::All()), ListKind<long>::NameOf);

/// Lists of elements that are counted, the sentinel's included, and that can refuse to be copied.
class EveryFragileList : public ListTest<Fragile> {};
INSTANTIATE_TEST_SUITE_P(Lists, EveryFragileList, testing::ValuesIn(ListKind<Fragile>::All()),
                         ListKind<Fragile>::NameOf);

/// What depends on the list's own type: its iterators.
template <class List>
class EveryListType : public testing::Test {};

using Lists = testing::Types<KyList<long>, KyDList<long>, IndexedList>;
TYPED_TEST_SUITE(EveryListType, Lists, );

/// The lists that start with a number of elements.
template <class List>
class EverySizedList : public testing::Test {};

using SizedLists = testing::Types<KyList<Fragile>, KyDList<Fragile>>;
TYPED_TEST_SUITE(EverySizedList, SizedLists, );

}  // namespace

TEST_P(EveryList, StartsEmptyWithTheCursorOnTheSentinel) {
    const KyList<long>& list = New();

    EXPECT_EQ(list.m_nLength, 0);
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);
    EXPECT_EQ(list.m_pTail, list.m_pHead);
    EXPECT_EQ(list.m_pHead->m_pNext, list.m_pHead);
    EXPECT_TRUE(IsSound(list));
}

TEST_P(EveryList, EveryMoveOnAnEmptyListEndsOnTheSentinel) {
    KyList<long>& list = New();
    void (KyList<long>::*const moves[])() = {&KyList<long>::MoveToFirst, &KyList<long>::MoveToLast,
                                             &KyList<long>::MoveToPre, &KyList<long>::MoveToNext};

    for (const auto move : moves) {
        (list.*move)();

        EXPECT_EQ(list.m_nCurIndex, -1);
        EXPECT_TRUE(IsSound(list));
    }
    for (const long i : {-3L, -1L, 0L, 1L, 7L}) {
        list.MoveTo(i);

        EXPECT_EQ(list.m_nCurIndex, -1);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, AnEmptyListHasNoFirstAndNoLastElement) {
    const KyList<long>& list = New();

    EXPECT_EQ(list.GetFirst(), nullptr);
    EXPECT_EQ(list.GetLast(), nullptr);
    EXPECT_EQ(list.GetNext(nullptr), nullptr);
    EXPECT_EQ(list.GetPre(nullptr), nullptr);
    EXPECT_EQ(list.begin(), list.end());
}

TEST_P(EveryList, MoveToNextVisitsEveryElementThenTheSentinelThenTheFirstAgain) {
    KyList<long>& list = New();
    Fill(list, {10, 11, 12});
    std::vector<long> indices;

    list.MoveToFirst();
    for (int i = 0; i < 5; ++i) {
        indices.push_back(list.m_nCurIndex);
        EXPECT_TRUE(IsSound(list));
        list.MoveToNext();
    }

    EXPECT_THAT(indices, ElementsAre(0, 1, 2, -1, 0));
}

TEST_P(EveryList, MoveToPreWalksTheRingBackwards) {
    KyList<long>& list = New();
    Fill(list, {10, 11, 12});
    std::vector<long> indices;

    for (int i = 0; i < 5; ++i) {
        indices.push_back(list.m_nCurIndex);
        EXPECT_TRUE(IsSound(list));
        list.MoveToPre();
    }

    EXPECT_THAT(indices, ElementsAre(2, 1, 0, -1, 2));
}

TEST_P(EveryList, MoveToReachesEveryPositionFromEveryOther) {
    KyList<long>& list = New();
    Fill(list, {10, 11, 12, 13, 14, 15, 16});

    for (long from = -1; from < 7; ++from) {
        for (long to = -2; to < 9; ++to) {
            list.MoveTo(from);
            list.MoveTo(to);

            EXPECT_EQ(list.m_nCurIndex, to < 7 ? std::max(to, -1L) : -1) << from << " to " << to;
            EXPECT_TRUE(IsSound(list)) << from << " to " << to;
        }
    }
}

TEST_P(EveryList, MoveToLastAndMoveToFirstReachTheEnds) {
    KyList<long>& list = New();
    Fill(list, {10, 11, 12});

    list.MoveToFirst();
    EXPECT_EQ(list.m_nCurIndex, 0);
    EXPECT_EQ(list.GetCurData(), 10);

    list.MoveToLast();
    EXPECT_EQ(list.m_nCurIndex, 2);
    EXPECT_EQ(list.GetCurData(), 12);
}

TEST_P(EveryList, TheElementUnderTheCursorIsReadAndWrittenInPlace) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    list.MoveTo(1);
    const long* const p = list.GetAt(1);

    list.SetCurData(20);
    EXPECT_THAT(Elements(list), ElementsAre(1, 20, 3));

    list.GetCurData() = 21;
    EXPECT_THAT(Elements(list), ElementsAre(1, 21, 3));
    EXPECT_EQ(&list.GetCurData(), p);
    EXPECT_EQ(list.m_nCurIndex, 1);
}

TEST_P(EveryList, AnElementsAddressIsItsNodesAddress) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    EXPECT_EQ(static_cast<void*>(list.GetFirst()), nodes[0]);
    EXPECT_EQ(static_cast<void*>(list.GetAt(1)), nodes[1]);
    EXPECT_EQ(static_cast<void*>(list.GetNext(list.GetAt(1))), nodes[2]);
    EXPECT_EQ(static_cast<void*>(list.GetPre(list.GetAt(1))), nodes[0]);
    EXPECT_EQ(static_cast<void*>(list.GetLast()), nodes[2]);
    list.MoveTo(1);
    EXPECT_EQ(static_cast<void*>(list.InsertAfterCur(9)), list.m_pCurNode);
}

TEST_P(EveryList, WalkingByAddressVisitsAllElementsBothWaysAndLeavesTheCursor) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3, 4});

    for (long nCursor = -1; nCursor < 4; ++nCursor) {
        list.MoveTo(nCursor);
        std::vector<long> forward;
        std::vector<long> backward;
        for (const long* p = list.GetFirst(); p != nullptr; p = list.GetNext(p)) {
            forward.push_back(*p);
        }
        for (const long* p = list.GetLast(); p != nullptr; p = list.GetPre(p)) {
            backward.push_back(*p);
        }

        EXPECT_THAT(forward, ElementsAre(1, 2, 3, 4));
        EXPECT_THAT(backward, ElementsAre(4, 3, 2, 1));
        EXPECT_EQ(list.m_nCurIndex, nCursor);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, NothingFollowsTheLastOrPrecedesTheFirstElement) {
    KyList<long>& list = New();
    Fill(list, {1, 2});

    EXPECT_EQ(list.GetNext(list.GetLast()), nullptr);
    EXPECT_EQ(list.GetPre(list.GetFirst()), nullptr);
    EXPECT_EQ(list.GetNext(nullptr), nullptr);
    EXPECT_EQ(list.GetPre(nullptr), nullptr);
}

TEST_P(EveryList, GetAtFindsEveryElementFromEveryCursorAndLeavesIt) {
    KyList<long>& list = New();
    Fill(list, {0, 1, 2, 3, 4, 5, 6});

    for (long nCursor = -1; nCursor < 7; ++nCursor) {
        list.MoveTo(nCursor);
        for (long i = 0; i < 7; ++i) {
            EXPECT_EQ(*list.GetAt(i), i) << "cursor " << nCursor;
        }
        EXPECT_EQ(list.m_nCurIndex, nCursor);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, GetAtTheLengthIsTheSentinelsSlot) {
    KyList<long>& list = New();
    Fill(list, {0, 1, 2});

    for (long nCursor = -1; nCursor < 3; ++nCursor) {
        list.MoveTo(nCursor);

        EXPECT_EQ(list.GetAt(3), &list.m_pHead->m_data);
        EXPECT_EQ(list.GetAt(-1), &list.m_pHead->m_data);
    }
}

TEST_P(EveryList, GetAtBeyondTheLengthWalksOnAroundTheRing) {
    KyList<long>& list = New();
    Fill(list, {0, 1, 2});

    for (long nCursor = -1; nCursor < 3; ++nCursor) {
        list.MoveTo(nCursor);

        EXPECT_EQ(*list.GetAt(4), 0);
        EXPECT_EQ(*list.GetAt(6), 2);
        EXPECT_EQ(list.GetAt(7), &list.m_pHead->m_data);
    }
}

TEST_P(EveryList, InsertPutsTheElementAtItsPositionAndTheCursorOnIt) {
    for (long i = 0; i <= 3; ++i) {
        KyList<long>& list = New();
        Fill(list, {0, 1, 2});
        std::vector<long> expected = {0, 1, 2};
        expected.insert(expected.begin() + i, 9);

        list.Insert(i, 9);

        EXPECT_THAT(Elements(list), ElementsAreArray(expected));
        EXPECT_EQ(list.m_nCurIndex, i);
        EXPECT_EQ(list.GetCurData(), 9);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, InsertOutsideTheListPutsTheElementFirst) {
    for (const long i :
         {std::numeric_limits<long>::min(), -7L, -1L, 4L, 8L, std::numeric_limits<long>::max()}) {
        KyList<long>& list = New();
        Fill(list, {0, 1, 2});

        list.Insert(i, 9);

        EXPECT_THAT(Elements(list), ElementsAre(9, 0, 1, 2)) << i;
        EXPECT_EQ(list.m_nCurIndex, 0);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, InsertIntoAnEmptyListMakesItsOnlyElement) {
    KyList<long>& list = New();

    list.Insert(0, 9);

    EXPECT_THAT(Elements(list), ElementsAre(9));
    EXPECT_EQ(list.m_nCurIndex, 0);
    EXPECT_TRUE(IsSound(list));
}

TEST_P(EveryList, InsertHeadPutsTheElementFirstFromAnyCursor) {
    for (long nCursor = -1; nCursor < 2; ++nCursor) {
        KyList<long>& list = New();
        Fill(list, {1, 2});
        list.MoveTo(nCursor);

        list.InsertHead(9);

        EXPECT_THAT(Elements(list), ElementsAre(9, 1, 2));
        EXPECT_EQ(list.m_nCurIndex, 0);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, AppendReturnsTheNewElementsIndex) {
    for (long nCursor = -1; nCursor < 4; ++nCursor) {
        KyList<long>& list = New();
        Fill(list, {0, 1, 2, 3});
        list.MoveTo(nCursor);

        const long nIndex = list.Append(9);

        EXPECT_EQ(nIndex, 4);
        EXPECT_THAT(Elements(list), ElementsAre(0, 1, 2, 3, 9));
        EXPECT_EQ(list.m_nCurIndex, 4);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, InsertCurTakesTheCurrentPositionAndTheOldElementFollows) {
    for (long i = 0; i < 4; ++i) {
        KyList<long>& list = New();
        Fill(list, {0, 1, 2, 3});
        list.MoveTo(i);
        std::vector<long> expected = {0, 1, 2, 3};
        expected.insert(expected.begin() + i, 9);

        list.InsertCur(9);

        EXPECT_THAT(Elements(list), ElementsAreArray(expected));
        EXPECT_EQ(list.m_nCurIndex, i);
        EXPECT_EQ(list.GetCurData(), 9);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST(KyListInsertCur, LeavesTheCursorToAnInsertionThatInsertsNothing) {
    class Refusing : public KyList<long> {
    public:
        long* InsertAfterCur(const long&) override { return nullptr; }
    };
    Refusing list;
    for (const long x : {1, 2, 3}) {
        list.KyList<long>::InsertAfterCur(x);
    }

    list.InsertCur(9);

    EXPECT_THAT(list, ElementsAre(1, 2, 3));
    EXPECT_EQ(list.m_nCurIndex, 1);
}

TEST_P(EveryList, GivesEveryBlockBack) {
    const long nBefore = LiveBlocks();

    {
        const std::unique_ptr<KyList<long>> pList = GetParam().m_pfnMake();
        pList->ReAllocate(10);
        pList->MoveTo(5);
        pList->DelCur();
    }

    EXPECT_EQ(LiveBlocks(), nBefore);
}

TEST_P(EveryList, InsertCurWithNoCurrentElementAppends) {
    KyList<long>& list = New();
    list.InsertCur(1);
    EXPECT_THAT(Elements(list), ElementsAre(1));
    EXPECT_EQ(list.m_nCurIndex, 0);

    list.MoveTo(-1);
    list.InsertCur(2);

    EXPECT_THAT(Elements(list), ElementsAre(1, 2));
    EXPECT_EQ(list.m_nCurIndex, 1);
    EXPECT_TRUE(IsSound(list));
}

TEST_P(EveryList, InsertAfterCurLinksBehindTheCursorAndReturnsTheNewElement) {
    for (long nCursor = -1; nCursor < 3; ++nCursor) {
        KyList<long>& list = New();
        Fill(list, {0, 1, 2});
        list.MoveTo(nCursor);
        std::vector<long> expected = {0, 1, 2};
        expected.insert(expected.begin() + nCursor + 1, 9);

        const long* const pNew = list.InsertAfterCur(9);

        EXPECT_THAT(Elements(list), ElementsAreArray(expected));
        EXPECT_EQ(pNew, &list.GetCurData());
        EXPECT_EQ(*pNew, 9);
        EXPECT_EQ(list.m_nCurIndex, nCursor + 1);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, AnInsertedElementMayBeOneOfTheList) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});

    list.Insert(0, *list.GetLast());
    list.Append(*list.GetAt(1));
    list.MoveTo(2);
    list.InsertCur(list.GetCurData());

    EXPECT_THAT(Elements(list), ElementsAre(3, 1, 2, 2, 3, 1));
}

TEST_P(EveryList, DelCurLeavesTheCursorOnThePredecessor) {
    for (long i = 0; i < 4; ++i) {
        KyList<long>& list = New();
        Fill(list, {0, 1, 2, 3});
        list.MoveTo(i);
        std::vector<long> expected = {0, 1, 2, 3};
        expected.erase(expected.begin() + i);

        list.DelCur();

        EXPECT_THAT(Elements(list), ElementsAreArray(expected));
        EXPECT_EQ(list.m_nCurIndex, i - 1);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, DelCurOnTheTailMakesThePredecessorTheTail) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    list.DelCur();

    EXPECT_EQ(list.m_pTail, nodes[1]);
    EXPECT_EQ(list.m_pTail->m_pNext, list.m_pHead);
    EXPECT_EQ(list.GetLast(), &nodes[1]->m_data);
}

TEST_P(EveryList, DelCurOnTheOnlyElementLeavesAnEmptyRing) {
    KyList<long>& list = New();
    list.Append(1);

    list.DelCur();

    EXPECT_EQ(list.m_nLength, 0);
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pHead->m_pNext, list.m_pHead);
    EXPECT_EQ(list.m_pTail, list.m_pHead);
    EXPECT_TRUE(IsSound(list));
}

TEST_P(EveryList, DelCurThenMoveToNextVisitsTheElementThatFollowed) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3, 4, 5, 6});

    for (list.MoveToFirst(); list.m_nCurIndex >= 0; list.MoveToNext()) {
        if (list.GetCurData() % 2 != 0) {
            list.DelCur();
        }
    }

    EXPECT_THAT(Elements(list), ElementsAre(2, 4, 6));
    EXPECT_TRUE(IsSound(list));
}

TEST_P(EveryList, AddressesStayUntilTheirElementIsRemoved) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    list.InsertHead(0);
    list.Insert(2, 15);
    list.Append(4);
    list.MoveTo(3);
    list.DelCur();
    list.SetLength(9, true);
    list.ReAllocate(12);
    list.SetLength(5, false);

    EXPECT_EQ(list.GetAt(1), &nodes[0]->m_data);
    EXPECT_EQ(list.GetAt(3), &nodes[2]->m_data);
    EXPECT_THAT(Elements(list), ElementsAre(0, 1, 15, 3, 4));
}

TEST_P(EveryList, ReAllocateAppendsDefaultElementsAndKeepsTheCursor) {
    for (long nCursor = -1; nCursor < 2; ++nCursor) {
        KyList<long>& list = New();
        Fill(list, {1, 2});
        list.MoveTo(nCursor);

        list.ReAllocate(5);

        EXPECT_THAT(Elements(list), ElementsAre(1, 2, 0, 0, 0));
        EXPECT_EQ(list.m_nCurIndex, nCursor);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, ReAllocateNotAboveTheLengthChangesNothing) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    list.MoveTo(1);
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    for (const long n : {3L, 2L, 0L, -1L}) {
        list.ReAllocate(n);

        EXPECT_EQ(Nodes(list), nodes);
        EXPECT_EQ(list.m_nCurIndex, 1);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, SetLengthShrinksFromTheEndAndStandsOnTheNewLastElement) {
    for (const bool bKeep : {true, false}) {
        KyList<long>& list = New();
        Fill(list, {1, 2, 3, 4});
        const long* const pFirst = list.GetFirst();

        list.SetLength(1, bKeep);

        EXPECT_THAT(Elements(list), ElementsAre(1));
        EXPECT_EQ(list.GetFirst(), pFirst);
        EXPECT_EQ(list.m_nCurIndex, 0);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, SetLengthGrowsAndLeavesTheCursorWhereItWas) {
    for (const bool bKeep : {true, false}) {
        KyList<long>& list = New();
        Fill(list, {1, 2, 3, 4});
        list.MoveTo(2);

        list.SetLength(6, bKeep);

        EXPECT_THAT(Elements(list), ElementsAre(1, 2, 3, 4, 0, 0));
        EXPECT_EQ(list.m_nCurIndex, 2);
        EXPECT_TRUE(IsSound(list));
    }
}

TEST_P(EveryList, SetLengthToTheLengthLeavesTheCursorWhereItWas) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    list.MoveTo(0);

    list.SetLength(3, false);

    EXPECT_EQ(list.m_nCurIndex, 0);
    EXPECT_THAT(Elements(list), ElementsAre(1, 2, 3));
}

TEST(KyListSetLength, ToTheLengthCallsNothing) {
    Recorded<KyList<long>> list;
    Fill(list, {1, 2});
    list.TakeCalls();

    list.SetLength(2, true);

    EXPECT_THAT(list.TakeCalls(), ElementsAre("SetLength 2 1"));
}

TEST_P(EveryList, SetLengthZeroEmptiesTheListAndKeepsTheSentinel) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    const auto* const pHead = list.m_pHead;

    list.SetLength(0, true);

    EXPECT_EQ(list.m_nLength, 0);
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pHead, pHead);
    EXPECT_TRUE(IsSound(list));
}

TEST_P(EveryList, ResetEmptiesTheListKeepsTheSentinelAndLeavesItUsable) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    const auto* const pHead = list.m_pHead;

    list.Reset();
    EXPECT_EQ(list.m_nLength, 0);
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pHead, pHead);
    EXPECT_TRUE(IsSound(list));

    list.Reset();
    EXPECT_TRUE(IsSound(list));

    Fill(list, {4, 5});
    EXPECT_THAT(Elements(list), ElementsAre(4, 5));
    EXPECT_TRUE(IsSound(list));
}

TEST_P(EveryList, IndexingMovesTheCursor) {
    KyList<long>& list = New();
    Fill(list, {10, 11, 12});

    for (const long i : {1L, 0L, 2L}) {
        EXPECT_EQ(list[i], 10 + i);
        EXPECT_EQ(list.m_nCurIndex, i);
        EXPECT_TRUE(IsSound(list));
    }
    EXPECT_EQ(list.m_nLength, 3);
}

TEST_P(EveryList, IndexingPastTheEndLengthensTheList) {
    KyList<long>& list = New();
    Fill(list, {10, 11, 12});

    const long& nNew = list[5];

    EXPECT_EQ(nNew, 0);
    EXPECT_EQ(&nNew, list.GetLast());
    EXPECT_THAT(Elements(list), ElementsAre(10, 11, 12, 0, 0, 0));
    EXPECT_EQ(list.m_nCurIndex, 5);
    EXPECT_TRUE(IsSound(list));
}

TEST_P(EveryList, MoveIsExactInBothDirections) {
    constexpr long nLength = 6;
    for (long from = 0; from < nLength; ++from) {
        for (long to = 0; to <= nLength; ++to) {
            KyList<long>& list = New();
            list.SetLength(nLength, false);
            std::iota(list.begin(), list.end(), 0L);
            list.MoveTo(3);
            std::vector<long> expected(nLength);
            std::iota(expected.begin(), expected.end(), 0L);
            const bool bMoves = from != to && from != to - 1;
            const long nEnd = from < to ? to - 1 : to;
            expected.erase(expected.begin() + from);
            expected.insert(expected.begin() + nEnd, from);

            const bool bMoved = list.Move(from, to);

            EXPECT_EQ(bMoved, bMoves) << from << " to " << to;
            EXPECT_THAT(Elements(list), ElementsAreArray(expected)) << from << " to " << to;
            EXPECT_EQ(list.m_nCurIndex, bMoves ? nEnd : 3) << from << " to " << to;
            EXPECT_TRUE(IsSound(list)) << from << " to " << to;
        }
    }
}

TEST_P(EveryList, MoveMakesOneNewNodeAndKeepsTheOthers) {
    KyList<long>& list = New();
    Fill(list, {0, 1, 2, 3});
    const std::vector<KyListNode<long>*> before = Nodes(list);

    list.Move(2, 0);

    const std::vector<KyListNode<long>*> after = Nodes(list);
    EXPECT_THAT(Elements(list), ElementsAre(2, 0, 1, 3));
    EXPECT_THAT(after, testing::IsSupersetOf({before[0], before[1], before[3]}));
    EXPECT_NE(after[0], before[2]);
}

TEST_P(EveryList, MoveToItsOwnPlaceChangesNothing) {
    KyList<long>& list = New();
    Fill(list, {0, 1, 2, 3});
    list.MoveTo(1);
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    EXPECT_FALSE(list.Move(2, 2));
    EXPECT_FALSE(list.Move(2, 3));
    EXPECT_FALSE(list.Move(3, 4));

    EXPECT_EQ(Nodes(list), nodes);
    EXPECT_EQ(list.m_nCurIndex, 1);
}

TEST_P(EveryList, DetachAfterCurCutsBehindTheCursorAndReturnsTheNewLength) {
    for (long nCursor = -1; nCursor < 4; ++nCursor) {
        KyList<long>& list = New();
        Fill(list, {0, 1, 2, 3});
        std::vector<KyListNode<long>*> nodes = Nodes(list);
        list.MoveTo(nCursor);

        const long nLength = list.DetachAfterCur();

        EXPECT_EQ(nLength, nCursor + 1);
        EXPECT_EQ(list.m_nLength, nCursor + 1);
        EXPECT_EQ(list.m_nCurIndex, nCursor);
        EXPECT_TRUE(IsSound(list));
        const std::vector<KyListNode<long>*> cutOff(nodes.begin() + nCursor + 1, nodes.end());
        for (std::size_t i = 0; i < cutOff.size(); ++i) {
            EXPECT_EQ(cutOff[i]->m_data, nCursor + 1 + static_cast<long>(i));
            EXPECT_EQ(cutOff[i]->m_pNext, i + 1 < cutOff.size() ? cutOff[i + 1] : list.m_pHead);
        }
        GetParam().m_pfnFreeNodes(cutOff);
    }
}

TYPED_TEST(EveryListType, IsARangeInBothDirections) {
    TypeParam list;
    Fill(list, {1, 2, 3});
    list.MoveTo(1);
    const TypeParam& constList = list;

    EXPECT_THAT(std::vector<long>(list.begin(), list.end()), ElementsAre(1, 2, 3));
    EXPECT_THAT(std::vector<long>(constList.begin(), constList.end()), ElementsAre(1, 2, 3));
    EXPECT_THAT(
        std::vector<long>(std::make_reverse_iterator(list.end()), std::make_reverse_iterator(list.begin())),
        ElementsAre(3, 2, 1));
    EXPECT_THAT(std::vector<long>(std::make_reverse_iterator(constList.end()),
                                  std::make_reverse_iterator(constList.begin())),
                ElementsAre(3, 2, 1));
    EXPECT_EQ(list.m_nCurIndex, 1);
}

TYPED_TEST(EveryListType, ItsIteratorsAreBidirectional) {
    using Iterator = typename TypeParam::iterator;
    using ConstIterator = typename TypeParam::const_iterator;

    EXPECT_TRUE((std::is_same_v<typename std::iterator_traits<Iterator>::iterator_category,
                                std::bidirectional_iterator_tag>));
    EXPECT_TRUE((std::is_same_v<typename std::iterator_traits<Iterator>::reference, long&>));
    EXPECT_TRUE((std::is_same_v<typename std::iterator_traits<ConstIterator>::reference, const long&>));
    EXPECT_TRUE((std::is_convertible_v<Iterator, ConstIterator>));
    EXPECT_FALSE((std::is_convertible_v<ConstIterator, Iterator>));
    EXPECT_TRUE(std::is_default_constructible_v<Iterator>);
}

TYPED_TEST(EveryListType, IteratorsStepBothWaysByPrefixAndPostfix) {
    TypeParam list;
    Fill(list, {1, 2, 3});

    auto it = list.begin();
    EXPECT_EQ(*it++, 1);
    EXPECT_EQ(*it, 2);
    EXPECT_EQ(*++it, 3);
    EXPECT_EQ(*it--, 3);
    EXPECT_EQ(*--it, 1);
    EXPECT_EQ(*--list.end(), 3);
    EXPECT_EQ(it.operator->(), list.GetFirst());
    const typename TypeParam::const_iterator constIt = it;
    EXPECT_EQ(constIt, list.begin());
    EXPECT_NE(constIt, list.end());
}

TYPED_TEST(EveryListType, TheStandardAlgorithmsWorkOnIt) {
    TypeParam list;
    Fill(list, {3, 1, 2, 5, 4});

    EXPECT_EQ(std::accumulate(list.begin(), list.end(), 0L), 15);
    EXPECT_EQ(*std::find(list.begin(), list.end(), 5), 5);
    EXPECT_EQ(*std::max_element(list.begin(), list.end()), 5);
    std::reverse(list.begin(), list.end());
    EXPECT_THAT(Elements(list), ElementsAre(4, 5, 2, 1, 3));
    std::stable_partition(list.begin(), list.end(), [](long n) { return n % 2 == 0; });
    EXPECT_THAT(Elements(list), ElementsAre(4, 2, 5, 1, 3));
    for (long& n : list) {
        n *= 10;
    }
    EXPECT_THAT(Elements(list), ElementsAre(40, 20, 50, 10, 30));
    EXPECT_TRUE(IsSound(list));
}

TEST_P(EveryList, WorksThroughTheProtocol) {
    KyList<long>& list = New();
    KyDynArrayBase<long>& container = list;

    container.Append(1);
    container.InsertHead(0);
    container.Insert(2, 2);

    EXPECT_EQ(container.GetLength(), 3);
    EXPECT_EQ(container.GetCurIndex(), 2);
    EXPECT_THAT(container, ElementsAre(0, 1, 2));
    std::vector<long> visited;
    for (container.MoveToFirst(); container.m_nCurIndex >= 0 && container.m_nCurIndex < container.m_nLength;
         container.MoveToNext()) {
        visited.push_back(container.GetCurData());
    }
    EXPECT_THAT(visited, ElementsAre(0, 1, 2));
}

TYPED_TEST(EveryListType, IsNeitherCopiedNorAssigned) {
    EXPECT_FALSE(std::is_copy_constructible_v<TypeParam>);
    EXPECT_FALSE(std::is_copy_assignable_v<TypeParam>);
    EXPECT_FALSE(std::is_move_constructible_v<TypeParam>);
    EXPECT_FALSE(std::is_move_assignable_v<TypeParam>);
}

TEST_P(EveryList, CostsOneNodeAnElementAndNothingElseAfterTheFirst) {
    const std::size_t nNode = GetParam().m_nNodeBytes;
    KyList<long>& list = New();
    list.Append(0);
    const AllocationLog log;

    list.Append(1);
    list.InsertHead(2);
    list.Insert(1, 3);
    list.InsertCur(4);
    list.InsertAfterCur(5);

    EXPECT_THAT(log.Singles(), ElementsAre(nNode, nNode, nNode, nNode, nNode));
    EXPECT_THAT(log.Arrays(), ElementsAre());
}

TEST_P(EveryList, MovingTheCursorAndReadingAllocateNothing) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    const AllocationLog log;

    list.MoveToFirst();
    list.MoveToNext();
    list.MoveToPre();
    list.MoveToLast();
    list.MoveTo(1);
    list.GetPre(list.GetNext(list.GetAt(0)));
    list.SetCurData(list[2]);
    list.ReAllocate(2);

    EXPECT_THAT(log.Singles(), ElementsAre());
    EXPECT_THAT(log.Arrays(), ElementsAre());
}

TEST_P(EveryList, AnInsertionThatFindsNoMemoryChangesNothing) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});
    list.MoveTo(1);
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(list.InsertAfterCur(9), std::bad_alloc);
    }

    EXPECT_EQ(Nodes(list), nodes);
    EXPECT_EQ(list.m_nCurIndex, 1);
    EXPECT_TRUE(IsSound(list));
    list.InsertAfterCur(9);
    EXPECT_THAT(Elements(list), ElementsAre(1, 2, 9, 3));
}

TEST_P(EveryList, AGrowthThatFindsNoMemoryMidwayLeavesASoundList) {
    KyList<long>& list = New();
    Fill(list, {1, 2, 3});

    {
        const FailingAllocation failing(2);
        EXPECT_THROW(list.ReAllocate(9), std::bad_alloc);
    }

    EXPECT_THAT(Elements(list), ElementsAre(1, 2, 3, 0, 0));
    EXPECT_TRUE(IsSound(list));
}

TEST_P(EveryFragileList, EachRemovalDestroysOneElement) {
    const FragileWatch watch;
    KyList<Fragile>& list = New();
    const long nEmpty = watch.Live();
    Fill(list, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(watch.Live() - nEmpty, 6);

    list.MoveTo(2);
    list.DelCur();
    EXPECT_EQ(watch.Live() - nEmpty, 5);

    list.SetLength(3, true);
    EXPECT_EQ(watch.Live() - nEmpty, 3);

    list.Reset();
    EXPECT_EQ(watch.Live() - nEmpty, 0);
}

TEST_P(EveryFragileList, DestroysItsElementsThroughAnyOfItsBases) {
    const FragileWatch watch;

    {
        const std::unique_ptr<KyList<Fragile>> pList = GetParam().m_pfnMake();
        Fill(*pList, {1, 2, 3});
        const std::unique_ptr<KyDynArrayBase<Fragile>> pContainer = GetParam().m_pfnMake();
        Fill(*pContainer, {1, 2, 3});
    }

    EXPECT_EQ(watch.Live(), 0);
}

TEST_P(EveryFragileList, EachInsertionCopiesTheElementOnce) {
    KyList<Fragile>& list = New();
    Fill(list, {1, 2, 3});
    const Fragile x(9);
    const FragileWatch watch;

    list.Append(x);
    list.InsertHead(x);
    list.Insert(1, x);
    list.InsertCur(x);
    list.InsertAfterCur(x);

    EXPECT_EQ(watch.Copies(), 5);
}

TEST_P(EveryFragileList, RemovingAndWalkingCopiesNothing) {
    KyList<Fragile>& list = New();
    Fill(list, {1, 2, 3, 4, 5});
    const FragileWatch watch;

    list.MoveTo(2);
    list.DelCur();
    list.ReverseList();
    list.MoveToFirst();
    list.Rotate(2, 0);
    list.SetLength(2, true);
    list.GetPre(list.GetLast());

    EXPECT_EQ(watch.Copies(), 0);
}

TEST_P(EveryFragileList, AnElementThatThrowsWhenCopiedChangesNothing) {
    KyList<Fragile>& list = New();
    Fill(list, {1, 2, 3});
    list.MoveTo(1);
    const Fragile x(9);
    FragileWatch watch(0);

    EXPECT_THROW(list.InsertAfterCur(x), std::runtime_error);
    EXPECT_EQ(list.m_nCurIndex, 1);
    EXPECT_TRUE(IsSound(list));
    EXPECT_THROW(list.Append(x), std::runtime_error);
    EXPECT_THROW(list.InsertHead(x), std::runtime_error);
    EXPECT_THROW(list.Insert(1, x), std::runtime_error);
    EXPECT_THROW(list.Move(0, 3), std::runtime_error);
    EXPECT_TRUE(IsSound(list));

    watch.Allow(-1);
    EXPECT_EQ(watch.Live(), 0);
    EXPECT_THAT(Elements(list), ElementsAre(Fragile(1), Fragile(2), Fragile(3)));
}

TEST_P(EveryFragileList, AnInsertionThatFindsNoMemoryCopiesAndChangesNothing) {
    KyList<Fragile>& list = New();
    Fill(list, {1, 2, 3});
    list.MoveTo(1);
    const Fragile x(9);
    const FragileWatch watch;

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(list.InsertAfterCur(x), std::bad_alloc);
    }

    EXPECT_EQ(watch.Live(), 0);
    EXPECT_EQ(watch.Copies(), 0);
    EXPECT_EQ(list.m_nCurIndex, 1);
    EXPECT_EQ(list.m_nLength, 3);
    EXPECT_TRUE(IsSound(list));
}

TYPED_TEST(EverySizedList, AConstructionThatFindsNoMemoryMidwayReleasesTheList) {
    for (long nSuccesses = 0; nSuccesses < 5; ++nSuccesses) {
        const FragileWatch watch;
        const FailingAllocation failing(nSuccesses);

        EXPECT_THROW(TypeParam(4), std::bad_alloc);

        EXPECT_EQ(watch.Live(), 0) << nSuccesses;
    }
}

TYPED_TEST(EverySizedList, AConstructionWhoseElementsThrowMidwayReleasesTheList) {
    for (long nCopies = 0; nCopies < 4; ++nCopies) {
        const FragileWatch watch(nCopies);

        EXPECT_THROW(TypeParam(4), std::runtime_error);

        EXPECT_EQ(watch.Live(), 0) << nCopies;
    }
}

TYPED_TEST(EverySizedList, DestroysTheElementsItStartedWith) {
    const FragileWatch watch;

    { const TypeParam list(3); }

    EXPECT_EQ(watch.Live(), 0);
}

TEST(KyList, AnIntegerIsNoListByItself) {
    EXPECT_FALSE((std::is_convertible_v<long, KyList<long>>));
    EXPECT_FALSE((std::is_convertible_v<long, KyDList<long>>));
    EXPECT_FALSE((std::is_convertible_v<long, KyPDList<Owned>>));
    EXPECT_FALSE((std::is_convertible_v<long, KyXList<long>>));
    EXPECT_FALSE((std::is_convertible_v<long, KyPXList<Owned>>));
}

TEST(KyList, HoldsItsFieldsInTheStatedOrder) {
    KyList<long> list;
    const auto nAddress = [](const void* p) { return static_cast<const char*>(p); };
    const char* const pBase = nAddress(&list);

    EXPECT_EQ(nAddress(&list.m_nLength) - pBase, 8);
    EXPECT_EQ(nAddress(&list.m_nCurIndex) - pBase, 16);
    EXPECT_EQ(nAddress(&list.m_pCurNode) - pBase, 24);
    EXPECT_EQ(nAddress(&list.m_pHead) - pBase, 32);
    EXPECT_EQ(nAddress(&list.m_pTail) - pBase, 40);
    EXPECT_EQ(sizeof(list), 48U);
}

TEST(KyList, ItsNodeIsTheElementAndTheLinkToTheNext) {
    KyListNode<long> node{7, nullptr};

    EXPECT_EQ(static_cast<void*>(&node), &node.m_data);
    EXPECT_EQ(reinterpret_cast<char*>(&node.m_pNext) - reinterpret_cast<char*>(&node), 8);
    EXPECT_EQ(sizeof(node), 16U);
}

TEST(KyList, StartsWithTheNumberOfDefaultElementsAskedFor) {
    const KyList<long> list(3);

    EXPECT_THAT(Elements(list), ElementsAre(0, 0, 0));
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);
    EXPECT_TRUE(IsSound(list));
}

TEST(KyList, IsMadeFromEmptyBracesAsEveryListIs) {
    struct Lists {
        KyList<long> m_single;
        KyDList<long> m_double;
        KyPDList<long> m_owning;
    };

    const Lists lists = {};

    EXPECT_EQ(lists.m_single.m_pTail, lists.m_single.m_pHead);
    EXPECT_EQ(lists.m_double.m_pTail, lists.m_double.m_pHead);
    EXPECT_EQ(lists.m_owning.m_pTail, lists.m_owning.m_pHead);
    EXPECT_FALSE((std::is_convertible_v<long, KyList<long>>));
    EXPECT_FALSE((std::is_convertible_v<long, KyDList<long>>));
    EXPECT_FALSE((std::is_convertible_v<long, KyPDList<long>>));
}

TEST(KyList, StartsEmptyWhenAskedForNoElementOrFewer) {
    EXPECT_THAT(KyList<long>(0), ElementsAre());
    EXPECT_THAT(KyList<long>(-4), ElementsAre());
}

TEST(KyList, ItsConstructionTakesTheSentinelAndOneNodeAnElement) {
    const AllocationLog log;

    const KyList<long> list(2);

    EXPECT_THAT(log.Singles(), ElementsAre(16U, 16U, 16U));
    EXPECT_THAT(log.Arrays(), ElementsAre());
}

TEST(KyList, MoveToNeverWalksToTheLastElementOrTheSentinel) {
    Recorded<KyList<long>> list;
    Fill(list, {0, 1, 2, 3, 4, 5, 6});
    list.MoveToFirst();
    list.TakeCalls();

    list.MoveTo(6);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo 6", "MoveToLast"));

    list.MoveTo(-1);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo -1"));

    list.MoveTo(7);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo 7"));
}

TEST(KyList, MoveToWalksForwardFromTheCursorAndBackwardFromTheHead) {
    Recorded<KyList<long>> list;
    Fill(list, {0, 1, 2, 3, 4, 5, 6});
    list.MoveTo(2);
    list.TakeCalls();

    list.MoveTo(4);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo 4", "MoveToNext", "MoveToNext"));

    list.MoveTo(1);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo 1", "MoveToFirst", "MoveToNext"));

    list.MoveTo(1);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo 1"));

    list.MoveTo(-1);
    list.MoveTo(1);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo -1", "MoveTo 1", "MoveToNext", "MoveToNext"));
}

TEST(KyList, MoveToPreRestartsFromTheHead) {
    Recorded<KyList<long>> list;
    Fill(list, {0, 1, 2, 3});
    list.MoveTo(2);
    list.TakeCalls();

    list.MoveToPre();
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveToPre", "MoveTo 1", "MoveToFirst", "MoveToNext"));

    list.MoveToPre();
    list.MoveToPre();
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("MoveToPre", "MoveTo 0", "MoveToFirst", "MoveToPre", "MoveTo -1"));

    list.MoveToPre();
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveToPre", "MoveToLast"));
}

TEST(KyList, InsertCurLeavesTheCursorOnWhatAnOverrideInsertedBeforeItThrew) {
    struct ThrowsTooLate : KyList<long> {
        long* InsertAfterCur(const long& x) override {
            long* const pElement = KyList<long>::InsertAfterCur(x);
            if (x == 2) {
                throw std::runtime_error("too late");
            }
            return pElement;
        }
    };
    ThrowsTooLate list;
    Fill(list, {1, 3});

    EXPECT_THROW(list.InsertCur(2), std::runtime_error);

    EXPECT_THAT(list, ElementsAre(1, 2, 3));
    EXPECT_EQ(list.m_nCurIndex, 1);
    EXPECT_EQ(list.GetCurData(), 2);
    EXPECT_TRUE(IsSound(list));
}

TEST(KyList, BuildsItsEditingFromCursorOperations) {
    Recorded<KyList<long>> list;
    Fill(list, {0, 1, 2});
    list.TakeCalls();

    list.Append(3);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Append", "MoveToLast", "InsertAfterCur"));

    list.InsertHead(4);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("InsertHead", "MoveTo -1", "InsertAfterCur"));

    list.Insert(5, 5);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Insert 5", "MoveTo 4", "MoveToLast", "InsertAfterCur"));

    list.MoveToFirst();
    list.InsertCur(6);
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("MoveToFirst", "InsertCur", "MoveToPre", "MoveTo -1", "InsertAfterCur"));

    list.DelCur();
    EXPECT_THAT(list.TakeCalls(), ElementsAre("DelCur", "MoveToPre", "MoveTo -1"));

    list.SetLength(5, true);
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("SetLength 5 1", "MoveToLast", "DelCur", "MoveToPre", "MoveTo 4", "MoveToFirst",
                            "MoveToNext", "MoveToNext", "MoveToNext", "MoveToNext"));

    list.SetLength(6, true);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("SetLength 6 1", "ReAllocate 6", "MoveToLast", "Append",
                                              "MoveToLast", "InsertAfterCur"));

    list[6];
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("operator[] 6", "ReAllocate 7", "MoveToLast", "Append", "MoveToLast",
                            "InsertAfterCur", "MoveTo 6", "MoveToLast", "GetCurData"));

    list.Reset();
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Reset"));
}

TEST(KyList, MoveIsBuiltFromCursorOperations) {
    Recorded<KyList<long>> list;
    Fill(list, {0, 1, 2, 3});
    list.TakeCalls();

    list.Move(3, 0);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Move 3 0", "MoveTo 3", "MoveToLast", "GetCurData", "Insert 0",
                                              "MoveTo -1", "InsertAfterCur", "MoveTo 4", "MoveToLast",
                                              "DelCur", "MoveToPre", "MoveTo 3", "MoveToFirst", "MoveToNext",
                                              "MoveToNext", "MoveToNext", "MoveTo 0", "MoveToFirst"));

    list.Move(0, 2);
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("Move 0 2", "MoveTo 0", "GetCurData", "Insert 2", "MoveTo 1", "MoveToNext",
                            "InsertAfterCur", "MoveTo 0", "MoveToFirst", "DelCur", "MoveToPre", "MoveTo -1",
                            "MoveTo 1", "MoveToNext", "MoveToNext"));

    list.Move(2, 3);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Move 2 3"));
}

TEST(KyList, GetPreAnswersFromTheCursorOrFromAWalkAlike) {
    KyList<long> list;
    Fill(list, {0, 1, 2, 3, 4});
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    for (long nCursor = -1; nCursor < 5; ++nCursor) {
        list.MoveTo(nCursor);
        for (std::size_t i = 1; i < nodes.size(); ++i) {
            EXPECT_EQ(list.GetPre(&nodes[i]->m_data), &nodes[i - 1]->m_data) << "cursor " << nCursor;
        }
    }
}

TEST(KyList, GetPreOfAnElementOfNoOrAnotherListIsNull) {
    KyList<long> list;
    Fill(list, {0, 1, 2});
    KyList<long> other;
    Fill(other, {0, 1, 2});

    EXPECT_EQ(list.GetPre(other.GetAt(1)), nullptr);
    EXPECT_EQ(list.GetPre(other.GetLast()), nullptr);
}

TEST(KyList, GetAtANegativeIndexIsTheSentinelsSlot) {
    KyList<long> list;
    Fill(list, {0, 1, 2});

    for (long nCursor = 0; nCursor < 3; ++nCursor) {
        list.MoveTo(nCursor);

        EXPECT_EQ(list.GetAt(-1), &list.m_pHead->m_data);
        EXPECT_EQ(list.GetAt(-5), &list.m_pHead->m_data);
    }
}

TEST(KyList, HoldsElementsOfAnyAlignment) {
    KyList<Overaligned> list;
    Fill(list, {{1}, {2}});

    EXPECT_TRUE(std::all_of(list.begin(), list.end(), [](const Overaligned& x) { return x.IsAligned(); }));
}

TEST(KyList, HoldsPointersWithoutOwningThem) {
    const OwnedWatch watch;
    Owned object(1);
    {
        KyList<Owned*> list;
        Fill(list, {&object, nullptr, &object});
        list.DelCur();
        list.Reset();
        list.Append(&object);
    }

    EXPECT_EQ(watch.Live(), 1);
}

TEST(KyList, HoldsStrings) {
    KyList<std::string> list(1);
    Fill(list, {"a string that is too long to be stored in place", "b"});
    list.Move(2, 0);
    list.Sort(true);

    EXPECT_THAT(Elements(list), ElementsAre("", "a string that is too long to be stored in place", "b"));
}

TEST(KyList, StepsTheIteratorBackFromTheEndOfAOneElementList) {
    KyList<long> list;
    list.Append(1);

    EXPECT_EQ(--list.end(), list.begin());
}
