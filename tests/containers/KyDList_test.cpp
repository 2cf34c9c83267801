// What a backward link adds to the list; what every list does alike is tested beside the singly linked one.
#include "VexaBase/containers/KyDList.h"

#include <iterator>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AllocationLog.h"
#include "ListProbes.h"
#include "TestElements.h"

using testing::ElementsAre;

namespace {

const KyDListNode<long>* PreOf(const KyListNode<long>* pNode) {
    return static_cast<const KyDListNode<long>*>(pNode)->m_pPre;
}

}  // namespace

TEST(KyDList, AddsNoFieldToTheSinglyLinkedList) {
    EXPECT_EQ(sizeof(KyDList<long>), sizeof(KyList<long>));
    EXPECT_TRUE((std::is_base_of_v<KyList<long>, KyDList<long>>));
}

TEST(KyDList, ItsNodeIsTheElementTheLinkToTheNextAndTheLinkToTheOneBefore) {
    KyDListNode<long> node{{7, nullptr}, nullptr};
    const auto nOffset = [&node](const void* p) {
        return static_cast<const char*>(p) - reinterpret_cast<char*>(&node);
    };

    EXPECT_EQ(nOffset(&node.m_data), 0);
    EXPECT_EQ(nOffset(&node.m_pNext), 8);
    EXPECT_EQ(nOffset(&node.m_pPre), 16);
    EXPECT_EQ(sizeof(node), 24U);
}

TEST(KyDList, AnEmptyListsSentinelIsLinkedToItselfBothWays) {
    const KyDList<long> list;

    EXPECT_EQ(list.m_pHead->m_pNext, list.m_pHead);
    EXPECT_EQ(PreOf(list.m_pHead), list.m_pHead);
}

TEST(KyDList, StartsWithTheNumberOfDefaultElementsAskedFor) {
    const KyDList<long> list(3);

    EXPECT_THAT(list, ElementsAre(0, 0, 0));
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_TRUE(IsSound(list));
}

TEST(KyDList, StartsEmptyWhenAskedForNoElementOrFewer) {
    EXPECT_THAT(KyDList<long>(0), ElementsAre());
    EXPECT_THAT(KyDList<long>(-1), ElementsAre());
}

TEST(KyDList, ItsConstructionTakesNoMoreNodesThanElementsAndTheSentinel) {
    const AllocationLog log;

    const KyDList<long> list(2);

    EXPECT_THAT(log.Singles(), ElementsAre(24U, 24U, 24U));
    EXPECT_THAT(log.Arrays(), ElementsAre());
}

TEST(KyDList, MoveToPreOnTheFirstElementReachesTheSentinelThenTheTail) {
    KyDList<long> list;
    Fill(list, {1, 2, 3});
    list.MoveToFirst();

    list.MoveToPre();
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);

    list.MoveToPre();
    EXPECT_EQ(list.m_nCurIndex, 2);
    EXPECT_EQ(list.m_pCurNode, list.m_pTail);
}

TEST(KyDList, MoveToPreOnAnEmptyListStaysOnTheSentinel) {
    KyDList<long> list;

    list.MoveToPre();

    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);
}

TEST(KyDList, MoveToNeverWalksToTheEndsOrTheSentinel) {
    Recorded<KyDList<long>> list;
    Fill(list, {0, 1, 2, 3, 4, 5, 6});
    list.MoveTo(3);
    list.TakeCalls();

    for (const long i : {0L, 6L, -1L, 7L}) {
        list.MoveTo(i);
        EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo " + std::to_string(i)));
    }
}

TEST(KyDList, MoveToWalksFromTheCursorEvenWhenAnEndIsNearer) {
    Recorded<KyDList<long>> list;
    Fill(list, {0, 1, 2, 3, 4, 5, 6});
    list.MoveTo(5);
    list.TakeCalls();

    list.MoveTo(2);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo 2", "MoveToPre", "MoveToPre", "MoveToPre"));

    list.MoveToLast();
    list.MoveTo(1);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveToLast", "MoveTo 1", "MoveToPre", "MoveToPre", "MoveToPre",
                                              "MoveToPre", "MoveToPre"));

    list.MoveTo(1);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo 1"));
}

TEST(KyDList, MoveToFromTheSentinelWalksFromTheFirstElement) {
    Recorded<KyDList<long>> list;
    Fill(list, {0, 1, 2, 3, 4});
    list.MoveTo(-1);
    list.TakeCalls();

    list.MoveTo(2);

    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo 2", "MoveToNext", "MoveToNext", "MoveToNext"));
    EXPECT_TRUE(IsSound(list));
}

TEST(KyDList, BuildsItsEditingFromCursorOperations) {
    Recorded<KyDList<long>> list;
    Fill(list, {0, 1, 2});
    list.TakeCalls();

    list.Append(3);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Append", "MoveToLast", "InsertAfterCur"));

    list.InsertHead(4);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("InsertHead", "MoveTo -1", "InsertAfterCur"));

    list.Insert(2, 5);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Insert 2", "MoveTo 1", "MoveToNext", "InsertAfterCur"));

    list.InsertCur(6);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("InsertCur", "MoveToPre", "InsertAfterCur"));

    list.DelCur();
    EXPECT_THAT(list.TakeCalls(), ElementsAre("DelCur", "MoveToPre"));

    list.SetLength(5, true);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("SetLength 5 1", "MoveToLast", "DelCur", "MoveToPre"));

    list.SetLength(6, true);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("SetLength 6 1", "ReAllocate 6", "MoveToLast", "Append",
                                              "MoveToLast", "InsertAfterCur"));

    list[6];
    EXPECT_THAT(list.TakeCalls(), ElementsAre("operator[] 6", "ReAllocate 7", "MoveToLast", "Append",
                                              "MoveToLast", "InsertAfterCur", "MoveTo 6", "GetCurData"));

    list.Reset();
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Reset"));
}

TEST(KyDList, MoveIsBuiltFromCursorOperations) {
    Recorded<KyDList<long>> list;
    Fill(list, {0, 1, 2, 3});
    list.TakeCalls();

    list.Move(3, 0);
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("Move 3 0", "MoveTo 3", "GetCurData", "Insert 0", "MoveTo -1", "InsertAfterCur",
                            "MoveTo 4", "DelCur", "MoveToPre", "MoveTo 0"));

    list.Move(0, 2);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Move 0 2", "MoveTo 0", "GetCurData", "Insert 2", "MoveTo 1",
                                              "MoveToNext", "InsertAfterCur", "MoveTo 0", "DelCur",
                                              "MoveToPre", "MoveTo 1", "MoveToNext", "MoveToNext"));

    list.Move(2, 3);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Move 2 3"));
}

TEST(KyDList, InsertAfterCurLinksTheNewNodeInBothDirections) {
    KyDList<long> list;
    Fill(list, {0, 1, 2});
    const std::vector<KyListNode<long>*> nodes = Nodes(list);
    list.MoveTo(1);

    list.InsertAfterCur(9);

    const KyListNode<long>* const pNew = list.m_pCurNode;
    EXPECT_EQ(nodes[1]->m_pNext, pNew);
    EXPECT_EQ(PreOf(pNew), nodes[1]);
    EXPECT_EQ(pNew->m_pNext, nodes[2]);
    EXPECT_EQ(PreOf(nodes[2]), pNew);
    EXPECT_EQ(list.m_pTail, nodes[2]);
}

TEST(KyDList, InsertingBehindTheTailMovesTheTailAndTheSentinelsBackLink) {
    KyDList<long> list;
    list.Append(0);

    list.InsertAfterCur(1);

    EXPECT_EQ(list.m_pTail, list.m_pCurNode);
    EXPECT_EQ(PreOf(list.m_pHead), list.m_pCurNode);
}

TEST(KyDList, DelCurLinksTheNeighboursInBothDirections) {
    KyDList<long> list;
    Fill(list, {0, 1, 2});
    const std::vector<KyListNode<long>*> nodes = Nodes(list);
    list.MoveTo(1);

    list.DelCur();

    EXPECT_EQ(nodes[0]->m_pNext, nodes[2]);
    EXPECT_EQ(PreOf(nodes[2]), nodes[0]);
    EXPECT_EQ(list.m_pCurNode, nodes[0]);
}

TEST(KyDList, DelCurOnTheFirstElementLeavesTheCursorOnTheSentinel) {
    KyDList<long> list;
    Fill(list, {1, 2, 3});
    list.MoveToFirst();

    list.DelCur();

    EXPECT_THAT(list, ElementsAre(2, 3));
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);
    EXPECT_EQ(PreOf(list.m_pHead->m_pNext), list.m_pHead);
}

TEST(KyDList, DelCurOnTheOnlyElementLeavesTheSentinelLinkedToItselfBothWays) {
    KyDList<long> list;
    list.Append(1);

    list.DelCur();

    EXPECT_EQ(list.m_pHead->m_pNext, list.m_pHead);
    EXPECT_EQ(PreOf(list.m_pHead), list.m_pHead);
    EXPECT_EQ(list.m_pTail, list.m_pHead);
    EXPECT_EQ(list.m_nCurIndex, -1);
}

TEST(KyDList, ResetLinksTheSentinelToItselfBothWays) {
    KyDList<long> list;
    Fill(list, {1, 2, 3});

    list.Reset();

    EXPECT_EQ(list.m_pHead->m_pNext, list.m_pHead);
    EXPECT_EQ(PreOf(list.m_pHead), list.m_pHead);
}

TEST(KyDList, DetachAfterCurClosesTheRingBothWaysAndLeavesTheCutNodesUntouched) {
    KyDList<long> list;
    Fill(list, {0, 1, 2, 3, 4});
    const std::vector<KyListNode<long>*> nodes = Nodes(list);
    list.MoveTo(1);

    const long nLength = list.DetachAfterCur();

    EXPECT_EQ(nLength, 2);
    EXPECT_THAT(list, ElementsAre(0, 1));
    EXPECT_EQ(list.m_pTail, nodes[1]);
    EXPECT_EQ(list.m_pTail->m_pNext, list.m_pHead);
    EXPECT_EQ(PreOf(list.m_pHead), nodes[1]);
    EXPECT_EQ(list.m_nCurIndex, 1);
    for (std::size_t i = 2; i < nodes.size(); ++i) {
        EXPECT_EQ(nodes[i]->m_data, static_cast<long>(i));
        EXPECT_EQ(PreOf(nodes[i]), nodes[i - 1]);
        EXPECT_EQ(nodes[i]->m_pNext, i + 1 < nodes.size() ? nodes[i + 1] : list.m_pHead);
    }
    FreeNodes<KyDListNode<long>>(std::vector<KyListNode<long>*>(nodes.begin() + 2, nodes.end()));
}

TEST(KyDList, DetachAfterCurOnTheSentinelEmptiesTheListAndLinksItToItselfBothWays) {
    KyDList<long> list;
    Fill(list, {0, 1});
    const std::vector<KyListNode<long>*> nodes = Nodes(list);
    list.MoveTo(-1);

    EXPECT_EQ(list.DetachAfterCur(), 0);

    EXPECT_EQ(PreOf(list.m_pHead), list.m_pHead);
    EXPECT_TRUE(IsSound(list));
    FreeNodes<KyDListNode<long>>(nodes);
}

TEST(KyDList, GetPreFindsThePredecessorFromAnyCursor) {
    KyDList<long> list;
    Fill(list, {0, 1, 2, 3});
    const std::vector<KyListNode<long>*> nodes = Nodes(list);

    for (long nCursor = -1; nCursor < 4; ++nCursor) {
        list.MoveTo(nCursor);

        EXPECT_EQ(list.GetPre(&nodes[0]->m_data), nullptr);
        for (std::size_t i = 1; i < nodes.size(); ++i) {
            EXPECT_EQ(list.GetPre(&nodes[i]->m_data), &nodes[i - 1]->m_data);
        }
        EXPECT_EQ(list.m_nCurIndex, nCursor);
    }
}

TEST(KyDList, GetAtANegativeIndexWalksBackAroundTheRing) {
    KyDList<long> list;
    Fill(list, {0, 1, 2});

    for (long nCursor = -1; nCursor < 3; ++nCursor) {
        list.MoveTo(nCursor);

        EXPECT_EQ(list.GetAt(-1), &list.m_pHead->m_data);
        EXPECT_EQ(*list.GetAt(-2), 2);
        EXPECT_EQ(*list.GetAt(-4), 0);
        EXPECT_EQ(list.GetAt(-5), &list.m_pHead->m_data);
    }
}

TEST(KyDList, SeenAsASinglyLinkedListItsRangeIsTheSame) {
    KyDList<long> list;
    Fill(list, {1, 2, 3});
    const KyList<long>& base = list;

    EXPECT_THAT(base, ElementsAre(1, 2, 3));
    EXPECT_EQ(*--base.end(), 3);
    EXPECT_EQ(*std::make_reverse_iterator(base.end()), 3);
}

TEST(KyDList, AMoveThatFindsNoMemoryLosesNothing) {
    KyDList<long> list;
    Fill(list, {0, 1, 2, 3});

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(list.Move(0, 3), std::bad_alloc);
    }

    EXPECT_THAT(list, ElementsAre(0, 1, 2, 3));
    EXPECT_TRUE(IsSound(list));
}

TEST(KyDList, HoldsElementsOfAnyAlignment) {
    KyDList<Overaligned> list(1);
    Fill(list, {{1}, {2}});
    list.MoveTo(1);
    list.DelCur();

    EXPECT_EQ(list.m_nLength, 2);
    for (const Overaligned& x : list) {
        EXPECT_TRUE(x.IsAligned());
    }
}
