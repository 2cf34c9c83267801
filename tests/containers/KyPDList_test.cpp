// The owning list: who is destroyed, when, and how often. The indexed owning list shares all of it.
#include "VexaBase/containers/KyPDList.h"

#include <iterator>
#include <memory>
#include <new>
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

/// An indexed owning list with several index entries, default-made as the other lists are.
struct IndexedOwningList : KyPXList<Owned> {
    IndexedOwningList() : KyPXList<Owned>(2) {}
};

template <class List>
class EveryOwningList : public testing::Test {};

using OwningLists = testing::Types<KyPDList<Owned>, IndexedOwningList>;
TYPED_TEST_SUITE(EveryOwningList, OwningLists, );

/// Objects of this class stand in lists of their own class while it is still incomplete.
class Folder {
public:
    void Adopt(Folder* pFolder) { m_children.Append(pFolder); }
    long Count() const {
        long n = 1;
        for (const Folder* p : m_children) {
            n += p->Count();
        }
        return n;
    }

private:
    KyPDList<Folder> m_children;
};

/// Objects destroyed without a virtual destructor.
struct Plain {
    explicit Plain(long* pCount) : m_pCount(pCount) {}
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;
    ~Plain() { ++*m_pCount; }

    long* m_pCount;
};

/// An object that, when it is destroyed, counts the elements still linked in its list.
struct Witness {
    Witness(const KyPDList<Witness>& list, std::vector<long>* pCounts) : m_list(list), m_pCounts(pCounts) {}
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    ~Witness() { m_pCounts->push_back(static_cast<long>(std::distance(m_list.begin(), m_list.end()))); }

    const KyPDList<Witness>& m_list;
    std::vector<long>* m_pCounts;
};

}  // namespace

TYPED_TEST(EveryOwningList, StartsEmptyWithNullInTheSentinel) {
    const TypeParam list;

    EXPECT_EQ(list.m_nLength, 0);
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pHead->m_data, nullptr);
    EXPECT_TRUE(IsSound(list));
}

TYPED_TEST(EveryOwningList, TakesOwnershipByEveryInsertion) {
    const OwnedWatch watch;
    {
        TypeParam list;
        list.Append(new Owned(1));
        list.InsertHead(new Owned(2));
        list.Insert(1, new Owned(3));
        list.InsertCur(new Owned(4));
        Owned** const pp = list.InsertAfterCur(new Owned(5));

        EXPECT_THAT(Ids(list), ElementsAre(2, 4, 5, 3, 1));
        EXPECT_EQ((*pp)->m_nId, 5);
        EXPECT_EQ(watch.Live(), 5);
        EXPECT_TRUE(IsSound(list));
    }
    EXPECT_EQ(watch.Live(), 0);
}

TYPED_TEST(EveryOwningList, DelCurDestroysTheObjectAndStepsBack) {
    for (long i = 0; i < 3; ++i) {
        TypeParam list;
        Adopt(list, {0, 1, 2});
        list.MoveTo(i);
        const OwnedWatch watch;

        list.DelCur();

        EXPECT_THAT(watch.Destroyed(), ElementsAre(i));
        EXPECT_EQ(list.m_nLength, 2);
        EXPECT_EQ(list.m_nCurIndex, i - 1);
        EXPECT_TRUE(IsSound(list));
    }
}

TYPED_TEST(EveryOwningList, DelCurOnANullElementFreesOnlyTheNode) {
    TypeParam list;
    Adopt(list, {1, nNullId, 2});
    list.MoveTo(1);
    const OwnedWatch watch;

    list.DelCur();

    EXPECT_THAT(watch.Destroyed(), ElementsAre());
    EXPECT_THAT(Ids(list), ElementsAre(1, 2));
    EXPECT_EQ(list.m_nCurIndex, 0);
}

TYPED_TEST(EveryOwningList, AnObjectIsTakenOutAliveByStoringNullFirst) {
    TypeParam list;
    Adopt(list, {1, 2, 3});
    list.MoveTo(1);
    const OwnedWatch watch;

    const std::unique_ptr<Owned> pTaken(list.GetCurData());
    list.SetCurData(nullptr);
    list.DelCur();

    EXPECT_EQ(pTaken->m_nId, 2);
    EXPECT_THAT(watch.Destroyed(), ElementsAre());
    EXPECT_THAT(Ids(list), ElementsAre(1, 3));
}

TYPED_TEST(EveryOwningList, SetCurDataDestroysNothing) {
    TypeParam list;
    Adopt(list, {1});
    const std::unique_ptr<Owned> pOld(list.GetCurData());
    const OwnedWatch watch;

    list.SetCurData(new Owned(2));

    EXPECT_THAT(watch.Destroyed(), ElementsAre());
    EXPECT_THAT(Ids(list), ElementsAre(2));
}

TYPED_TEST(EveryOwningList, ResetDestroysExactlyTheObjectsInOrder) {
    TypeParam list;
    Adopt(list, {nNullId, 1, nNullId, 2, 3, nNullId});
    const auto* const pHead = list.m_pHead;
    const OwnedWatch watch;

    list.Reset();

    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2, 3));
    EXPECT_EQ(list.m_nLength, 0);
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pHead, pHead);
    EXPECT_TRUE(IsSound(list));

    Adopt(list, {4});
    EXPECT_THAT(Ids(list), ElementsAre(4));
}

TYPED_TEST(EveryOwningList, ReAllocateAppendsNullAndKeepsTheCursor) {
    const OwnedWatch watch;
    TypeParam list;
    list.ReAllocate(3);
    EXPECT_THAT(Ids(list), ElementsAre(nNullId, nNullId, nNullId));
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);

    list.MoveTo(1);
    list.ReAllocate(4);
    EXPECT_EQ(list.m_nLength, 4);
    EXPECT_EQ(list.m_nCurIndex, 1);
    list.ReAllocate(2);
    EXPECT_EQ(list.m_nLength, 4);
    EXPECT_EQ(list.m_nCurIndex, 1);
    EXPECT_TRUE(IsSound(list));

    list.Reset();
    EXPECT_THAT(watch.Destroyed(), ElementsAre());
}

TYPED_TEST(EveryOwningList, IndexingPastTheEndFillsUpWithNull) {
    const OwnedWatch watch;
    TypeParam list;
    Adopt(list, {1});

    list[3] = new Owned(2);

    EXPECT_THAT(Ids(list), ElementsAre(1, nNullId, nNullId, 2));
    EXPECT_EQ(list.m_nCurIndex, 3);
    EXPECT_EQ(watch.Live(), 2);
}

TYPED_TEST(EveryOwningList, SetLengthDestroysTheObjectsAtTheEnd) {
    for (const bool bKeep : {true, false}) {
        TypeParam list;
        Adopt(list, {1, 2, 3, 4});
        const OwnedWatch watch;

        list.SetLength(1, bKeep);

        EXPECT_THAT(watch.Destroyed(), ElementsAre(4, 3, 2));
        EXPECT_THAT(Ids(list), ElementsAre(1));
        EXPECT_EQ(list.m_nCurIndex, 0);
        EXPECT_TRUE(IsSound(list));
    }
}

TYPED_TEST(EveryOwningList, SetLengthGrowsByNull) {
    TypeParam list;
    Adopt(list, {1});
    const OwnedWatch watch;

    list.SetLength(3, false);

    EXPECT_THAT(Ids(list), ElementsAre(1, nNullId, nNullId));
    EXPECT_THAT(watch.Destroyed(), ElementsAre());
}

TYPED_TEST(EveryOwningList, ReleaseAllDestroysTheObjectsAndKeepsTheElements) {
    TypeParam list;
    Adopt(list, {1, nNullId, 2});
    list.MoveTo(0);
    const std::vector<KyListNode<Owned*>*> nodes = Nodes(list);
    const OwnedWatch watch;

    list.ReleaseAll();

    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2));
    EXPECT_THAT(Ids(list), ElementsAre(nNullId, nNullId, nNullId));
    EXPECT_EQ(Nodes(list), nodes);
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);

    list.ReleaseAll();
    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2));
}

TYPED_TEST(EveryOwningList, ReleaseAllOnAnEmptyListDoesNothing) {
    TypeParam list;

    list.ReleaseAll();

    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_TRUE(IsSound(list));
}

TEST(KyPDList, ReleaseAllEndsWhereADerivedListStepsPastItsLastElement) {
    struct EndsLikeAnArray : KyPDList<Owned> {
        void MoveToNext() override {
            if (m_pCurNode == m_pTail) {
                m_nCurIndex = m_nLength;
            } else {
                KyPDList<Owned>::MoveToNext();
            }
        }
    };
    EndsLikeAnArray list;
    Adopt(list, {1, 2});
    const OwnedWatch watch;

    list.ReleaseAll();

    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2));
    EXPECT_THAT(Ids(list), ElementsAre(nNullId, nNullId));
    EXPECT_EQ(list.m_nCurIndex, 2);
}

TYPED_TEST(EveryOwningList, DestroysItsObjectsInOrderWhenItIsDestroyed) {
    const OwnedWatch watch;

    {
        TypeParam list;
        Adopt(list, {1, nNullId, 2, 3});
        list.MoveTo(1);
    }

    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2, 3));
    EXPECT_EQ(watch.Live(), 0);
}

TYPED_TEST(EveryOwningList, DestroysItsObjectsThroughItsBases) {
    const OwnedWatch watch;

    {
        const std::unique_ptr<KyDynArrayBase<Owned*>> pContainer = std::make_unique<TypeParam>();
        Adopt(*pContainer, {1});
        const std::unique_ptr<KyList<Owned*>> pList = std::make_unique<TypeParam>();
        Adopt(*pList, {2});
        const std::unique_ptr<KyDList<Owned*>> pDList = std::make_unique<TypeParam>();
        Adopt(*pDList, {3});
        EXPECT_EQ(watch.Live(), 3);
    }

    EXPECT_EQ(watch.Live(), 0);
}

TYPED_TEST(EveryOwningList, DestroysDerivedObjectsThroughTheirVirtualDestructor) {
    struct Derived : Owned {
        Derived() : Owned(7), m_pMember(new Owned(8)) {}
        std::unique_ptr<Owned> m_pMember;
    };
    const OwnedWatch watch;

    {
        TypeParam list;
        list.Append(new Derived);
    }

    EXPECT_EQ(watch.Live(), 0);
}

TYPED_TEST(EveryOwningList, MoveIsExactAndDestroysNothing) {
    constexpr long nLength = 5;
    for (long from = 0; from < nLength; ++from) {
        for (long to = 0; to <= nLength; ++to) {
            TypeParam list;
            Adopt(list, {0, 1, 2, 3, 4});
            list.MoveTo(2);
            const OwnedWatch watch;
            const bool bMoves = from != to && from != to - 1;
            const long nEnd = from < to ? to - 1 : to;
            std::vector<long> expected = {0, 1, 2, 3, 4};
            expected.erase(expected.begin() + from);
            expected.insert(expected.begin() + nEnd, from);

            const bool bMoved = list.Move(from, to);

            EXPECT_EQ(bMoved, bMoves) << from << " to " << to;
            EXPECT_THAT(Ids(list), ElementsAreArray(expected)) << from << " to " << to;
            EXPECT_EQ(list.m_nCurIndex, bMoves ? nEnd : 2) << from << " to " << to;
            EXPECT_THAT(watch.Destroyed(), ElementsAre()) << from << " to " << to;
            EXPECT_TRUE(IsSound(list)) << from << " to " << to;
        }
    }
}

TYPED_TEST(EveryOwningList, MoveTakesNullElementsAlong) {
    TypeParam list;
    Adopt(list, {0, nNullId, 2});

    EXPECT_TRUE(list.Move(1, 3));

    EXPECT_THAT(Ids(list), ElementsAre(0, 2, nNullId));
}

TYPED_TEST(EveryOwningList, MoveKeepsTheObject) {
    TypeParam list;
    Adopt(list, {0, 1, 2, 3});
    const Owned* const pObject = *list.GetAt(0);

    list.Move(0, 3);

    EXPECT_THAT(Ids(list), ElementsAre(1, 2, 0, 3));
    EXPECT_EQ(*list.GetAt(2), pObject);
}

TYPED_TEST(EveryOwningList, AMoveThatFindsNoMemoryLosesNoObject) {
    const OwnedWatch watch;
    {
        TypeParam list;
        Adopt(list, {0, 1, 2, 3});

        for (const auto& [from, to] : {std::pair(0L, 3L), std::pair(3L, 1L)}) {
            const FailingAllocation failing(0);
            EXPECT_THROW(list.Move(from, to), std::bad_alloc);
        }

        EXPECT_THAT(Ids(list), ElementsAre(0, 1, 2, 3));
        EXPECT_EQ(watch.Live(), 4);
        EXPECT_TRUE(IsSound(list));
    }
    EXPECT_EQ(watch.Live(), 0);
}

TYPED_TEST(EveryOwningList, AnInsertionThatFindsNoMemoryLeavesTheObjectWithTheCaller) {
    TypeParam list;
    Adopt(list, {1});
    const auto pObject = std::make_unique<Owned>(2);

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(list.Append(pObject.get()), std::bad_alloc);
    }

    EXPECT_THAT(Ids(list), ElementsAre(1));
    EXPECT_TRUE(IsSound(list));
}

TYPED_TEST(EveryOwningList, DetachedNodesTakeTheirObjectsAlong) {
    TypeParam list;
    Adopt(list, {1, 2, 3});
    const std::vector<KyListNode<Owned*>*> nodes = Nodes(list);
    list.MoveTo(0);
    const OwnedWatch watch;

    EXPECT_EQ(list.DetachAfterCur(), 1);

    EXPECT_THAT(watch.Destroyed(), ElementsAre());
    EXPECT_THAT(Ids(list), ElementsAre(1));
    EXPECT_TRUE(IsSound(list));
    delete nodes[1]->m_data;
    delete nodes[2]->m_data;
    FreeNodes<KyDListNode<Owned*>>(std::vector<KyListNode<Owned*>*>{nodes[1], nodes[2]});
}

TYPED_TEST(EveryOwningList, ConbineHandsTheObjectsOver) {
    const OwnedWatch watch;
    {
        TypeParam list;
        Adopt(list, {1});
        {
            TypeParam other;
            Adopt(other, {2, 3, 4});
            list.Conbine(other, 1);
        }

        EXPECT_THAT(watch.Destroyed(), ElementsAre(2));
        EXPECT_THAT(Ids(list), ElementsAre(1, 3, 4));
    }
    EXPECT_EQ(watch.Live(), 0);
}

TYPED_TEST(EveryOwningList, ReversingAndRotatingDestroyNothing) {
    TypeParam list;
    Adopt(list, {0, 1, 2, 3});
    const OwnedWatch watch;

    list.ReverseList();
    EXPECT_THAT(Ids(list), ElementsAre(3, 2, 1, 0));
    list.MoveToFirst();
    list.Rotate(0, 1);

    EXPECT_THAT(Ids(list), ElementsAre(0, 3, 2, 1));
    EXPECT_THAT(watch.Destroyed(), ElementsAre());
}

TYPED_TEST(EveryOwningList, IsARangeOfPointers) {
    TypeParam list;
    Adopt(list, {1, 2, 3});
    long nSum = 0;

    for (const Owned* p : list) {
        nSum += p->m_nId;
    }

    EXPECT_EQ(nSum, 6);
    EXPECT_TRUE((std::is_same_v<decltype(*list.begin()), Owned*&>));
}

TEST(KyPDList, DelCurMovesFromAnElementWithoutAnObject) {
    class Looking : public KyPDList<Owned> {
    public:
        void MoveToPre() override {
            m_pSeen = GetCurData();
            KyPDList<Owned>::MoveToPre();
        }
        Owned* m_pSeen = nullptr;
    };
    Looking list;
    Adopt(list, {1, 2});
    list.MoveToLast();
    list.m_pSeen = *list.GetFirst();

    list.DelCur();

    EXPECT_EQ(list.m_pSeen, nullptr);
}

TEST(KyPDList, AddsNoField) {
    EXPECT_EQ(sizeof(KyPDList<Owned>), sizeof(KyDList<Owned*>));
    EXPECT_TRUE((std::is_base_of_v<KyDList<Owned*>, KyPDList<Owned>>));
}

TEST(KyPDList, StartsWithTheNumberOfNullElementsAskedFor) {
    const KyPDList<Owned> list(3);

    EXPECT_THAT(Elements(list), ElementsAre(nullptr, nullptr, nullptr));
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pHead->m_data, nullptr);
    EXPECT_TRUE(IsSound(list));
}

TEST(KyPDList, CostsOneNodeAnElement) {
    KyPDList<Owned> list;
    const AllocationLog log;

    list.ReAllocate(3);
    list.Append(nullptr);

    EXPECT_THAT(log.Singles(), ElementsAre(24U, 24U, 24U, 24U));
    EXPECT_THAT(log.Arrays(), ElementsAre());
}

TEST(KyPDList, HoldsObjectsOfAClassThatIsStillIncomplete) {
    Folder root;
    auto* const pChild = new Folder;
    pChild->Adopt(new Folder);
    root.Adopt(pChild);
    root.Adopt(new Folder);

    EXPECT_EQ(root.Count(), 4);
}

TEST(KyPDList, DestroysObjectsWithoutAVirtualDestructor) {
    long nDestroyed = 0;
    {
        KyPDList<Plain> list;
        list.Append(new Plain(&nDestroyed));
        list.Append(new Plain(&nDestroyed));
        list.DelCur();
        EXPECT_EQ(nDestroyed, 1);
    }
    EXPECT_EQ(nDestroyed, 2);
}

TEST(KyPDList, ResetFreesEachElementWithItsObject) {
    std::vector<long> counts;
    KyPDList<Witness> list;
    for (int i = 0; i < 3; ++i) {
        list.Append(new Witness(list, &counts));
    }

    list.Reset();

    EXPECT_THAT(counts, ElementsAre(2, 1, 0));
    EXPECT_EQ(list.GetLength(), 0);
    EXPECT_EQ(list.GetFirst(), nullptr);
}

TEST(KyPDList, BuildsItsEditingFromCursorOperations) {
    Recorded<KyPDList<Owned>> list;
    Adopt(list, {0, 1, 2});
    list.TakeCalls();

    list.MoveTo(1);
    list.DelCur();
    EXPECT_THAT(list.TakeCalls(), ElementsAre("MoveTo 1", "MoveToPre", "DelCur", "MoveToPre"));

    list.SetLength(1, true);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("SetLength 1 1", "MoveToLast", "DelCur", "MoveToPre"));

    list.ReAllocate(2);
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("ReAllocate 2", "MoveToLast", "Append", "MoveToLast", "InsertAfterCur"));

    list.ReleaseAll();
    EXPECT_THAT(list.TakeCalls(), testing::AllOf(testing::Contains("MoveToFirst").Times(1),
                                                 testing::Contains("MoveToNext").Times(2)));
}

TEST(KyPDList, MoveIsBuiltFromCursorOperations) {
    Recorded<KyPDList<Owned>> list;
    Adopt(list, {0, 1, 2, 3});
    list.TakeCalls();

    list.Move(3, 0);
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("Move 3 0", "MoveTo 3", "GetCurData", "SetCurData", "Insert 0", "MoveTo -1",
                            "InsertAfterCur", "MoveTo 4", "DelCur", "MoveToPre", "MoveTo 0"));

    list.Move(0, 3);
    EXPECT_THAT(list.TakeCalls(),
                ElementsAre("Move 0 3", "MoveTo 0", "GetCurData", "SetCurData", "Insert 3", "MoveTo 2",
                            "MoveToNext", "MoveToNext", "InsertAfterCur", "MoveTo 0", "DelCur", "MoveToPre",
                            "MoveTo 2", "MoveToNext", "MoveToNext", "MoveToNext"));

    list.Move(1, 2);
    EXPECT_THAT(list.TakeCalls(), ElementsAre("Move 1 2"));
}
