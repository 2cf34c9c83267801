// A checked build stops on each broken precondition of the lists with one line on standard error, and never
// on what is defined, however odd. This program is compiled as a checked build whatever the library is.

#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ListProbes.h"
#include "TestElements.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyXList.h"

using testing::ElementsAre;

namespace {

struct IndexedList : KyXList<long> {
    IndexedList() : KyXList<long>(2) {}
};

struct IndexedOwningList : KyPXList<Owned> {
    IndexedOwningList() : KyPXList<Owned>(2) {}
};

template <class List>
class ListChecksDeathTest : public testing::Test {};
using Lists = testing::Types<KyList<long>, KyDList<long>, IndexedList>;
TYPED_TEST_SUITE(ListChecksDeathTest, Lists, );

template <class List>
class OwningListChecksDeathTest : public testing::Test {};
using OwningLists = testing::Types<KyPDList<Owned>, IndexedOwningList>;
TYPED_TEST_SUITE(OwningListChecksDeathTest, OwningLists, );

}  // namespace

TYPED_TEST(ListChecksDeathTest, GetCurDataNeedsACurrentElement) {
    TypeParam list;
    Fill(list, {1, 2, 3});
    list.MoveTo(-1);

    EXPECT_DEATH(list.GetCurData(),
                 "^VexaBase/containers/KyList\\.h:[0-9]+: KyList::GetCurData: no current element "
                 "\\(index -1, length 3\\)\n$");
}

TYPED_TEST(ListChecksDeathTest, SetCurDataNeedsACurrentElement) {
    TypeParam list;

    EXPECT_DEATH(list.SetCurData(1),
                 "^VexaBase/containers/KyList\\.h:[0-9]+: KyList::SetCurData: no current element "
                 "\\(index -1, length 0\\)\n$");
}

TYPED_TEST(ListChecksDeathTest, IndexingANegativeIndexFindsNoCurrentElement) {
    TypeParam list;
    Fill(list, {1, 2});

    EXPECT_DEATH(list[-1], "KyList::GetCurData: no current element \\(index -1, length 2\\)");
}

TEST(EachKindOfListChecksDeathTest, DelCurNeedsACurrentElement) {
    KyList<long> singly;
    KyDList<long> doubly;
    IndexedList indexed;

    EXPECT_DEATH(singly.DelCur(),
                 "^VexaBase/containers/KyList\\.h:[0-9]+: KyList::DelCur: no current element "
                 "\\(index -1, length 0\\)\n$");
    EXPECT_DEATH(doubly.DelCur(),
                 "^VexaBase/containers/KyDList\\.h:[0-9]+: KyDList::DelCur: no current element "
                 "\\(index -1, length 0\\)\n$");
    EXPECT_DEATH(indexed.DelCur(),
                 "^VexaBase/containers/KyXList\\.h:[0-9]+: KyXList::DelCur: no current element "
                 "\\(index -1, length 0\\)\n$");
}

TYPED_TEST(ListChecksDeathTest, SetLengthNeedsALengthThatIsNotNegative) {
    TypeParam list;
    Fill(list, {1});

    EXPECT_DEATH(list.SetLength(-1, true),
                 "^VexaBase/containers/KyList\\.h:[0-9]+: KyList::SetLength: negative length \\(-1\\)\n$");
}

TYPED_TEST(ListChecksDeathTest, RotateNeedsPositionsInsideTheList) {
    TypeParam list;
    Fill(list, {1, 2, 3});
    TypeParam empty;

    EXPECT_DEATH(list.Rotate(3, 0),
                 "^VexaBase/containers/KyList\\.h:[0-9]+: KyList::Rotate: position out of range "
                 "\\(3 to 0, length 3\\)\n$");
    EXPECT_DEATH(list.Rotate(0, 3), "\\(0 to 3, length 3\\)");
    EXPECT_DEATH(list.Rotate(-1, 0), "\\(-1 to 0, length 3\\)");
    EXPECT_DEATH(list.Rotate(0, -1), "\\(0 to -1, length 3\\)");
    EXPECT_DEATH(empty.Rotate(0, 1), "\\(0 to 1, length 0\\)");
}

TYPED_TEST(ListChecksDeathTest, MoveNeedsAnElementToMove) {
    TypeParam list;
    Fill(list, {1, 2, 3});

    EXPECT_DEATH(list.Move(3, 0), "length 3\\)\n$");
    EXPECT_DEATH(list.Move(-1, 2), "length 3\\)\n$");
}

TYPED_TEST(ListChecksDeathTest, ADoublyLinkedListTakesNoSinglyLinkedNodes) {
    KyList<long> singly;
    Fill(singly, {1, 2});
    TypeParam list;
    KyList<long>& base = list;
    if (dynamic_cast<KyDList<long>*>(&base) == nullptr) {
        EXPECT_EQ(list.Conbine(singly, 0), 2);
        return;
    }

    EXPECT_DEATH(list.Conbine(singly, 0),
                 "^VexaBase/containers/KyDList\\.h:[0-9]+: KyDList::Conbine: "
                 "the other list is singly linked\n$");
}

TYPED_TEST(ListChecksDeathTest, ASinglyLinkedListTakesNoDoublyLinkedNodes) {
    KyList<long> singly;
    TypeParam list;
    Fill(list, {1, 2});
    KyList<long>& base = list;
    if (dynamic_cast<KyDList<long>*>(&base) == nullptr) {
        EXPECT_EQ(singly.Conbine(base, 0), 2);
        return;
    }

    EXPECT_DEATH(singly.Conbine(base, 0),
                 "^VexaBase/containers/KyList\\.h:[0-9]+: KyList::Conbine: "
                 "the other list is doubly linked\n$");
}

TYPED_TEST(ListChecksDeathTest, WhatIsDefinedIsNeverFlagged) {
    TypeParam list;
    list.MoveToFirst();
    list.MoveToPre();
    list.MoveTo(7);
    list.GetAt(0);
    list.GetAt(-1);
    list.Sort(true);
    list.ReverseList();
    list.ReAllocate(-3);
    list.SetLength(0, false);
    list.Rotate(5, 5);
    list.Conbine(list, 0);
    list.Insert(9, 3);
    list.Insert(-9, 2);
    list.MoveTo(-1);
    list.InsertCur(4);
    list.GetAt(3);
    list.GetAt(11);
    TypeParam other;
    list.Conbine(other, 0);
    list.Conbine(other, -1);
    list.MoveTo(-1);
    list.InsertAfterCur(1);
    list.ReverseList();
    list.InsertAfterCur(0);
    list.MoveToFirst();
    EXPECT_FALSE(list.Move(1, 1));
    EXPECT_TRUE(list.Move(0, list.m_nLength));
    EXPECT_EQ(list[7], 0);
    const std::vector<KyListNode<long>*> nodes = Nodes(list);
    list.MoveTo(-1);

    EXPECT_EQ(list.DetachAfterCur(), 0);
    FreeNodes<typename TypeParam::Node>(nodes);
}

TYPED_TEST(OwningListChecksDeathTest, DelCurNeedsACurrentElement) {
    TypeParam list;
    Adopt(list, {1});
    list.MoveTo(-1);

    EXPECT_DEATH(list.DelCur(),
                 "^VexaBase/containers/KyPDList\\.h:[0-9]+: KyPDList::DelCur: no current element "
                 "\\(index -1, length 1\\)\n$");
}

TYPED_TEST(OwningListChecksDeathTest, MoveNeedsPositionsInsideTheList) {
    TypeParam list;
    Adopt(list, {1, 2, 3});

    EXPECT_DEATH(list.Move(3, 0),
                 "^VexaBase/containers/KyPDList\\.h:[0-9]+: KyPDList::Move: position out of range "
                 "\\(3 to 0, length 3\\)\n$");
    EXPECT_DEATH(list.Move(0, 4), "\\(0 to 4, length 3\\)");
    EXPECT_DEATH(list.Move(0, -1), "\\(0 to -1, length 3\\)");
}

TYPED_TEST(OwningListChecksDeathTest, TheSortOnObjectsNeedsAnObjectInEveryElement) {
    TypeParam list;
    Adopt(list, {1, nNullId, 2});

    EXPECT_DEATH(list.Sort([](const Owned&, const Owned&) { return 0; }),
                 "^VexaBase/containers/KyPDList\\.h:[0-9]+: KyPDList::Sort: null element \\(length 3\\)\n$");
}

TYPED_TEST(OwningListChecksDeathTest, WhatIsDefinedIsNeverFlagged) {
    const OwnedWatch watch;
    {
        TypeParam list;
        Adopt(list, {3, nNullId, 1});
        list.Sort(true);
        list.DelCur();
        list.Move(0, 2);
        EXPECT_FALSE(list.Move(9, 9));
        list.Sort([](const Owned& a, const Owned& b) { return a < b ? 1 : 0; });
        list.ReleaseAll();
        list.SetLength(5, true);
        list.MoveToLast();
        list.DelCur();
        EXPECT_THAT(Ids(list), ElementsAre(nNullId, nNullId, nNullId, nNullId));
    }
    EXPECT_EQ(watch.Live(), 0);
}

TEST(IndexedListChecksDeathTest, TheStepIsAtLeastOne) {
    EXPECT_DEATH(KyXList<long>(0),
                 "^VexaBase/containers/KyXList\\.h:[0-9]+: KyXList::KyXList: no step \\(0\\)\n$");
    EXPECT_DEATH(KyPXList<Owned>(-2), "no step \\(-2\\)");
}

TEST(IndexedListChecksDeathTest, ASearchNeedsAnObjectInEveryElementProbed) {
    KyPXList<Token> list;
    list.SetLength(2, true);
    const Token x(1);

    EXPECT_DEATH(list.BFindDataTo(x),
                 "^VexaBase/containers/KyXList\\.h:[0-9]+: KyPXList::BFindDataTo: null element "
                 "\\(index 0, length 2\\)\n$");
}

TEST(IndexedListChecksDeathTest, SearchingOutsideTheListIsNeverFlagged) {
    KyPXList<Token> list;
    const Token x(1);
    EXPECT_FALSE(list.BFindDataTo(x, 3, -7));

    list.Append(new Token(1));

    EXPECT_TRUE(list.BFindDataTo(x, -5, 99));
    EXPECT_FALSE(list.BFindDataTo(x, 1, 0));
    EXPECT_FALSE(list.BFindDataTo(x, 5, 9));
}
