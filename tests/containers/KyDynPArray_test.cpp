#include "VexaBase/containers/KyDynPArray.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

#include "AllocationLog.h"
#include "CallRecorder.h"
#include "TestElements.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::IsNull;

using OwningArray = KyDynPArray<Owned>;
using RecordingArray = RecordingOwner<OwningArray>;

// How it is made, and how it ends

TEST(KyDynPArray, StartsEmptyWithTheCapacityAndStepGiven) {
    const AllocationLog log;

    const OwningArray reserved(5, 2);
    const OwningArray array;

    EXPECT_THAT(log.Arrays(), ElementsAre(5 * sizeof(Owned*)));
    EXPECT_EQ(reserved.m_nCapacity, 5);
    EXPECT_EQ(reserved.m_nGrowBy, 2);
    EXPECT_EQ(reserved.m_nLength, 0);
    EXPECT_EQ(array.m_pData, nullptr);
    EXPECT_EQ(array.m_nCapacity, 0);
    EXPECT_EQ(array.m_nGrowBy, 1024);
    EXPECT_EQ(array.m_nCurIndex, -1);
}

TEST(KyDynPArray, DeletesItsObjectsInOrderAndItsBlockAtTheEnd) {
    const OwnedWatch watch;
    const AllocationLog log;

    {
        OwningArray array(0, 1);
        Adopt(array, {1, nNullId, 2, 3});
    }

    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2, 3));
    EXPECT_EQ(watch.Live(), 0);
    EXPECT_EQ(log.LiveArrayBytes(), 0U);
}

TEST(KyDynPArray, DeletesItsObjectsThroughThePointerArrayToo) {
    const OwnedWatch watch;
    std::unique_ptr<KyDynArrayBase<Owned*>> pArray = std::make_unique<OwningArray>();
    pArray->Append(new Owned(1));

    pArray.reset();

    EXPECT_EQ(watch.Live(), 0);
}

TEST(KyDynPArray, NullsEachSlotAfterItsObjectIsDeletedAtTheEnd) {
    struct Looking {
        explicit Looking(KyDynPArray<Looking>& home, std::vector<std::vector<bool>>& seen)
            : m_home(home), m_seen(seen) {}
        ~Looking() {
            std::vector<bool> isNull;
            for (const Looking* p : m_home) {
                isNull.push_back(p == nullptr);
            }
            m_seen.push_back(isNull);
        }
        KyDynPArray<Looking>& m_home;
        std::vector<std::vector<bool>>& m_seen;
    };
    std::vector<std::vector<bool>> seen;

    {
        KyDynPArray<Looking> array;
        array.Append(new Looking(array, seen));
        array.Append(new Looking(array, seen));
    }

    EXPECT_THAT(seen, ElementsAre(ElementsAre(false, false), ElementsAre(true, false)));
}

TEST(KyDynPArray, DeletesDerivedObjectsWhole) {
    struct Derived : Owned {
        explicit Derived(bool& bGone) : Owned(1), m_bGone(bGone) {}
        ~Derived() override { m_bGone = true; }
        bool& m_bGone;
    };
    bool bGone = false;

    {
        OwningArray array;
        array.Append(new Derived(bGone));
    }

    EXPECT_TRUE(bGone);
}

TEST(KyDynPArray, IsNeitherCopiedNorMoved) {
    static_assert(!std::is_copy_constructible_v<OwningArray> && !std::is_copy_assignable_v<OwningArray>);
    static_assert(!std::is_move_constructible_v<OwningArray> && !std::is_move_assignable_v<OwningArray>);
    static_assert(!std::is_convertible_v<long, OwningArray>);
    static_assert(std::is_base_of_v<KyDynArray<Owned*>, OwningArray>);
}

// Objects come in

TEST(KyDynPArray, AdoptsWhateverIsInsertedAnywhere) {
    const OwnedWatch watch;
    {
        OwningArray array;
        EXPECT_EQ(array.Append(new Owned(1)), 0);
        array.InsertHead(new Owned(2));
        array.Insert(1, new Owned(3));
        array.MoveTo(2);
        array.InsertCur(new Owned(4));
        array[4] = new Owned(5);

        EXPECT_THAT(Ids(array), ElementsAre(2, 3, 4, 1, 5));
        EXPECT_EQ(array.m_nCurIndex, 4);
        EXPECT_THAT(watch.Destroyed(), IsEmpty());
    }
    EXPECT_EQ(watch.Live(), 0);
}

TEST(KyDynPArray, IndexingPastTheEndAddsNullSlots) {
    OwningArray array(0, 3);
    Adopt(array, {1});

    Owned*& slot = array[3];

    EXPECT_EQ(slot, nullptr);
    EXPECT_EQ(array.m_nCurIndex, 3);
    EXPECT_THAT(Ids(array), ElementsAre(1, nNullId, nNullId, nNullId));
}

TEST(KyDynPArray, SetCurDataOverwritesWithoutDeleting) {
    const OwnedWatch watch;
    OwningArray array;
    Adopt(array, {1, 2});
    const std::unique_ptr<Owned> pFormer(array.m_pData[1]);
    array.MoveTo(1);

    array.SetCurData(new Owned(3));

    EXPECT_THAT(watch.Destroyed(), IsEmpty());
    EXPECT_THAT(Ids(array), ElementsAre(1, 3));
}

// ReleaseCur, TakeOffCur, ReleaseAll, Reset

TEST(KyDynPArray, ReleaseCurDeletesTheObjectAndLeavesANullSlot) {
    const OwnedWatch watch;
    RecordingArray array;
    Adopt(array, {1, 2, 3});
    array.MoveTo(1);
    array.TakeCalls();

    array.ReleaseCur();

    EXPECT_THAT(array.TakeCalls(), ElementsAre("ReleaseCur", "SetCurData"));
    EXPECT_THAT(watch.Destroyed(), ElementsAre(2));
    EXPECT_THAT(Ids(array), ElementsAre(1, nNullId, 3));
    EXPECT_EQ(array.m_nCurIndex, 1);
    EXPECT_EQ(array.m_nLength, 3);
}

TEST(KyDynPArray, ReleaseCurOnANullSlotDoesNothing) {
    RecordingArray array;
    Adopt(array, {1, nNullId});
    array.MoveTo(1);
    array.TakeCalls();

    array.ReleaseCur();

    EXPECT_THAT(array.TakeCalls(), ElementsAre("ReleaseCur"));
    EXPECT_THAT(Ids(array), ElementsAre(1, nNullId));
}

TEST(KyDynPArray, ReleaseCurAndTakeOffCurIgnoreACursorOutsideTheArray) {
    const OwnedWatch watch;
    OwningArray array(8, 1);
    Adopt(array, {1, 2});

    for (const long i : {-1L, -5L, 2L, 3L, 100L}) {
        array.MoveTo(i);

        array.ReleaseCur();
        EXPECT_EQ(array.TakeOffCur(), nullptr);

        EXPECT_EQ(array.m_nCurIndex, i);
    }

    EXPECT_THAT(watch.Destroyed(), IsEmpty());
    EXPECT_THAT(Ids(array), ElementsAre(1, 2));
}

TEST(KyDynPArray, TakeOffCurOfAnEmptyArrayIsNull) {
    OwningArray array;

    EXPECT_EQ(array.TakeOffCur(), nullptr);
}

TEST(KyDynPArray, TakeOffCurHandsTheObjectOverAndLeavesANullSlot) {
    const OwnedWatch watch;
    RecordingArray array;
    Adopt(array, {1, 2, 3});
    array.MoveTo(1);
    array.TakeCalls();

    const std::unique_ptr<Owned> pTaken(array.TakeOffCur());
    EXPECT_THAT(array.TakeCalls(), ElementsAre("TakeOffCur", "SetCurData"));
    EXPECT_EQ(array.TakeOffCur(), nullptr);

    ASSERT_NE(pTaken, nullptr);
    EXPECT_EQ(pTaken->m_nId, 2);
    EXPECT_EQ(array.m_nLength, 3);
    EXPECT_EQ(array.m_nCurIndex, 1);
    EXPECT_THAT(Ids(array), ElementsAre(1, nNullId, 3));
    array.Reset();
    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 3));
}

TEST(KyDynPArray, ReleaseAllDeletesEveryObjectAndKeepsTheSlots) {
    const OwnedWatch watch;
    OwningArray array;
    Adopt(array, {1, 2, 3});

    array.ReleaseAll();

    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2, 3));
    EXPECT_THAT(array, ElementsAre(IsNull(), IsNull(), IsNull()));
    EXPECT_EQ(array.m_nLength, 3);
    EXPECT_EQ(array.m_nCurIndex, 3);
}

TEST(KyDynPArray, ReleaseAllOfAnEmptyArrayMovesTheCursorToZero) {
    OwningArray array;

    array.ReleaseAll();

    EXPECT_EQ(array.m_nCurIndex, 0);
    EXPECT_EQ(array.m_nLength, 0);
}

TEST(KyDynPArray, ReleaseAllIsMadeOfVirtualCalls) {
    RecordingArray array;
    Adopt(array, {1, nNullId});
    array.TakeCalls();

    array.ReleaseAll();

    EXPECT_THAT(array.TakeCalls(), ElementsAre("MoveToFirst", "ReleaseCur", "SetCurData", "MoveToNext",
                                               "ReleaseCur", "MoveToNext"));
}

TEST(KyDynPArray, ResetDeletesEveryObjectAndKeepsTheBlock) {
    const OwnedWatch watch;
    RecordingArray array(0, 4);
    Adopt(array, {1, nNullId, 3});
    Owned** const pBlock = array.m_pData;
    array.TakeCalls();

    array.Reset();

    EXPECT_THAT(array.TakeCalls(),
                ElementsAre("Reset", "MoveToFirst", "ReleaseCur", "SetCurData", "MoveToNext", "ReleaseCur",
                            "MoveToNext", "ReleaseCur", "SetCurData", "MoveToNext"));
    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 3));
    EXPECT_EQ(array.m_nLength, 0);
    EXPECT_EQ(array.m_nCurIndex, -1);
    EXPECT_EQ(array.m_pData, pBlock);
    EXPECT_EQ(array.m_nCapacity, 5);
}

// DelCur

TEST(KyDynPArray, DelCurInTheMiddleDeletesThatObjectOnly) {
    const OwnedWatch watch;
    OwningArray array;
    Adopt(array, {1, 2, 3});
    array.MoveTo(1);

    array.DelCur();

    EXPECT_THAT(watch.Destroyed(), ElementsAre(2));
    EXPECT_THAT(Ids(array), ElementsAre(1, 3));
    EXPECT_EQ(array.m_nCurIndex, 0);
}

TEST(KyDynPArray, DelCurAtAnyPlaceOfAnyLengthDeletesThatObjectOnly) {
    for (long nLength = 1; nLength <= 5; ++nLength) {
        for (long i = 0; i < nLength; ++i) {
            const OwnedWatch watch;
            OwningArray array;
            std::vector<long> expected;
            for (long nId = 0; nId < nLength; ++nId) {
                Adopt(array, {nId});
                expected.push_back(nId);
            }
            expected.erase(expected.begin() + i);
            array.MoveTo(i);

            array.DelCur();

            EXPECT_THAT(watch.Destroyed(), ElementsAre(i));
            EXPECT_EQ(Ids(array), expected);
            EXPECT_EQ(array.m_nCurIndex, i - 1);
        }
    }
}

TEST(KyDynPArray, DelCurOfANullSlotDeletesNothing) {
    const OwnedWatch watch;
    OwningArray array;
    Adopt(array, {1, nNullId, 3});
    array.MoveTo(1);

    array.DelCur();

    EXPECT_THAT(watch.Destroyed(), IsEmpty());
    EXPECT_THAT(Ids(array), ElementsAre(1, 3));
}

TEST(KyDynPArray, DelCurKeepsANullInTheLastSlot) {
    OwningArray array;
    Adopt(array, {1, 2, nNullId});
    array.MoveToFirst();

    array.DelCur();

    EXPECT_THAT(Ids(array), ElementsAre(2, nNullId));
}

TEST(KyDynPArray, DelCurIsMadeOfVirtualCalls) {
    RecordingArray array;
    Adopt(array, {1, 2, 3});
    array.MoveTo(1);
    array.TakeCalls();

    array.DelCur();
    EXPECT_THAT(array.TakeCalls(), ElementsAre("DelCur", "ReleaseCur", "SetCurData", "ReAllocate 2"));
    array.MoveToLast();
    array.TakeCalls();
    array.DelCur();

    EXPECT_THAT(array.TakeCalls(), ElementsAre("DelCur", "ReleaseCur", "SetCurData", "ReAllocate 1"));
}

// ReAllocate

TEST(KyDynPArray, ReAllocateAddsNullSlotsAndDeletesWhatItCutsOff) {
    const OwnedWatch watch;
    OwningArray array(0, 4);
    Adopt(array, {1, 2});
    array.MoveTo(1);

    array.ReAllocate(5);
    EXPECT_THAT(Ids(array), ElementsAre(1, 2, nNullId, nNullId, nNullId));
    EXPECT_THAT(watch.Destroyed(), IsEmpty());
    array.ReAllocate(1);

    EXPECT_THAT(watch.Destroyed(), ElementsAre(2));
    EXPECT_THAT(Ids(array), ElementsAre(1));
    EXPECT_EQ(array.m_nCapacity, 5);
    EXPECT_EQ(array.m_nCurIndex, 1);
}

TEST(KyDynPArray, ReAllocateDeletesInAscendingOrder) {
    const OwnedWatch watch;
    OwningArray array;
    Adopt(array, {1, 2, nNullId, 3, 4});

    array.ReAllocate(1);

    EXPECT_THAT(watch.Destroyed(), ElementsAre(2, 3, 4));
}

TEST(KyDynPArray, ReAllocateToTheLengthDoesNothing) {
    const OwnedWatch watch;
    OwningArray array(0, 4);
    Adopt(array, {1, 2});
    const AllocationLog log;

    array.ReAllocate(2);

    EXPECT_THAT(log.Arrays(), IsEmpty());
    EXPECT_THAT(watch.Destroyed(), IsEmpty());
    EXPECT_THAT(Ids(array), ElementsAre(1, 2));
}

TEST(KyDynPArray, ReAllocateGrowsTheBlockByTheStepBeyondTheLengthAskedFor) {
    OwningArray array(2, 3);
    Adopt(array, {1, 2});
    const AllocationLog log;

    array.ReAllocate(4);
    EXPECT_THAT(log.Arrays(), ElementsAre(7 * sizeof(Owned*)));
    array.ReAllocate(7);

    EXPECT_EQ(log.Arrays().size(), 1U);
    EXPECT_EQ(log.Releases(), 1);
    EXPECT_EQ(array.m_nCapacity, 7);
    EXPECT_EQ(array.m_nLength, 7);
}

TEST(KyDynPArray, SlotsThatComeBackAfterShrinkingAreNull) {
    const OwnedWatch watch;
    OwningArray array;
    Adopt(array, {1, 2, 3});

    array.ReAllocate(0);
    array.ReAllocate(3);

    EXPECT_THAT(array, Each(IsNull()));
    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2, 3));
}

// SetLength

TEST(KyDynPArray, SetLengthWithKeepingDeletesTheObjectsBeyondIt) {
    const OwnedWatch watch;
    OwningArray array;
    Adopt(array, {1, 2, 3, 4, 5});
    const AllocationLog log;

    array.SetLength(3, true);

    EXPECT_THAT(watch.Destroyed(), ElementsAre(4, 5));
    EXPECT_THAT(Ids(array), ElementsAre(1, 2, 3));
    EXPECT_THAT(log.Arrays(), ElementsAre(3 * sizeof(Owned*)));
    EXPECT_EQ(array.m_nCapacity, 3);
    EXPECT_EQ(array.m_nCurIndex, 4);
}

TEST(KyDynPArray, SetLengthWithKeepingToTheCapacityKeepsTheBlock) {
    OwningArray array(3, 0);
    Adopt(array, {1, 2});
    const AllocationLog log;

    array.SetLength(3, true);

    EXPECT_THAT(log.Arrays(), IsEmpty());
    EXPECT_THAT(Ids(array), ElementsAre(1, 2, nNullId));
    EXPECT_EQ(array.m_nCapacity, 3);
}

TEST(KyDynPArray, SetLengthWithKeepingGrowsToExactlyThatManySlots) {
    OwningArray array(3, 7);
    Adopt(array, {1, 2});
    const AllocationLog log;

    array.SetLength(5, true);

    EXPECT_THAT(log.Arrays(), ElementsAre(5 * sizeof(Owned*)));
    EXPECT_EQ(log.Releases(), 1);
    EXPECT_EQ(array.m_nCapacity, 5);
    EXPECT_THAT(Ids(array), ElementsAre(1, 2, nNullId, nNullId, nNullId));
}

TEST(KyDynPArray, SetLengthWithKeepingAboveTheLengthCanShrinkTheBlock) {
    OwningArray array(9, 7);
    Adopt(array, {1, 2});

    array.SetLength(4, true);

    EXPECT_EQ(array.m_nCapacity, 4);
    EXPECT_THAT(Ids(array), ElementsAre(1, 2, nNullId, nNullId));
}

TEST(KyDynPArray, SetLengthWithKeepingToTheLengthDoesNothingAtAll) {
    OwningArray array(9, 7);
    Adopt(array, {1, 2});
    const AllocationLog log;

    array.SetLength(2, true);

    EXPECT_THAT(log.Arrays(), IsEmpty());
    EXPECT_EQ(array.m_nCapacity, 9);
    EXPECT_THAT(Ids(array), ElementsAre(1, 2));
}

TEST(KyDynPArray, SetLengthZeroDeletesEverythingAndGivesTheBlockBack) {
    for (const bool bKeep : {true, false}) {
        const OwnedWatch watch;
        OwningArray array;
        Adopt(array, {1, 2});
        const AllocationLog log;

        array.SetLength(0, bKeep);

        EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2));
        EXPECT_THAT(log.Arrays(), IsEmpty());
        EXPECT_EQ(log.Releases(), 1);
        EXPECT_EQ(array.m_pData, nullptr);
        EXPECT_EQ(array.m_nCapacity, 0);
        EXPECT_EQ(array.m_nLength, 0);
        EXPECT_EQ(array.m_nCurIndex, 1);
    }
}

TEST(KyDynPArray, SetLengthWithoutKeepingDeletesEveryObjectAndLeavesNullSlots) {
    for (const long nLength : {1L, 3L, 5L, 9L}) {
        const OwnedWatch watch;
        OwningArray array(5, 1);
        Adopt(array, {1, 2, 3});
        array.MoveTo(1);
        const AllocationLog log;

        array.SetLength(nLength, false);

        EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2, 3));
        EXPECT_EQ(log.Arrays().size(), nLength == 5 ? 0U : 1U);
        EXPECT_EQ(array.m_nLength, nLength);
        EXPECT_EQ(array.m_nCapacity, nLength);
        EXPECT_THAT(array, Each(IsNull()));
        EXPECT_EQ(array.m_nCurIndex, 1);
    }
}

TEST(KyDynPArray, SetLengthWithoutKeepingDeletesBeforeItAllocates) {
    const OwnedWatch watch;
    OwningArray array(5, 1);
    Adopt(array, {1, 2, 3});

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(array.SetLength(9, false), std::bad_alloc);
    }

    EXPECT_EQ(watch.Live(), 0);
    EXPECT_THAT(array, ElementsAre(IsNull(), IsNull(), IsNull()));
    EXPECT_EQ(array.m_nCapacity, 5);
}

TEST(KyDynPArray, ShrinkingDeletesAndLowersTheLengthBeforeItAllocates) {
    const OwnedWatch watch;
    OwningArray array(5, 1);
    Adopt(array, {1, 2, 3});

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(array.SetLength(2, true), std::bad_alloc);
    }

    EXPECT_THAT(watch.Destroyed(), ElementsAre(3));
    EXPECT_THAT(Ids(array), ElementsAre(1, 2));
    EXPECT_EQ(array.m_nCapacity, 5);
}

// Move

TEST(KyDynPArray, MoveBackwardIsExact) {
    const OwnedWatch watch;
    OwningArray array;
    Adopt(array, {0, 1, 2, 3});

    const bool bMoved = array.Move(2, 0);

    EXPECT_TRUE(bMoved);
    EXPECT_THAT(Ids(array), ElementsAre(2, 0, 1, 3));
    EXPECT_EQ(array.m_nCurIndex, 0);
    EXPECT_THAT(watch.Destroyed(), IsEmpty());
}

TEST(KyDynPArray, MoveIsExactBetweenAnyTwoPlacesWithAndWithoutGrowth) {
    for (const long nCapacity : {5L, 6L}) {
        for (long nFrom = 0; nFrom < 5; ++nFrom) {
            for (long nTo = 0; nTo <= 5; ++nTo) {
                const OwnedWatch watch;
                OwningArray array(nCapacity, 0);
                Adopt(array, {0, 1, 2, 3, 4});
                const long nCurIndex = array.m_nCurIndex;
                const bool bStandsThere = nTo == nFrom || nTo == nFrom + 1;
                std::vector<long> expected{0, 1, 2, 3, 4};
                const long nEnd = nFrom < nTo ? nTo - 1 : nTo;
                if (!bStandsThere) {
                    expected.erase(expected.begin() + nFrom);
                    expected.insert(expected.begin() + nEnd, nFrom);
                }

                const bool bMoved = array.Move(nFrom, nTo);

                EXPECT_EQ(bMoved, !bStandsThere);
                EXPECT_EQ(Ids(array), expected) << nFrom << " to " << nTo;
                EXPECT_EQ(array.m_nCurIndex, bStandsThere ? nCurIndex : nEnd);
                EXPECT_THAT(watch.Destroyed(), IsEmpty());
            }
        }
    }
}

TEST(KyDynPArray, MoveCarriesANullSlot) {
    OwningArray array;
    Adopt(array, {1, 2, nNullId});

    array.Move(2, 0);

    EXPECT_THAT(Ids(array), ElementsAre(nNullId, 1, 2));
}

TEST(KyDynPArray, MoveIsMadeOfVirtualCalls) {
    RecordingArray array;
    Adopt(array, {0, 1, 2, 3});
    array.TakeCalls();

    array.Move(2, 0);
    EXPECT_THAT(array.TakeCalls(), ElementsAre("Move 2 0", "MoveTo 2", "GetCurData", "SetCurData", "Insert 0",
                                               "MoveTo 0", "InsertCur", "ReAllocate 5", "MoveTo 3", "DelCur",
                                               "ReleaseCur", "ReAllocate 4", "MoveTo 0"));
    array.Move(0, 3);
    EXPECT_THAT(array.TakeCalls(), ElementsAre("Move 0 3", "MoveTo 0", "GetCurData", "SetCurData", "Insert 3",
                                               "MoveTo 3", "InsertCur", "ReAllocate 5", "MoveTo 0", "DelCur",
                                               "ReleaseCur", "ReAllocate 4", "MoveTo 2"));
    array.Move(1, 2);

    EXPECT_THAT(array.TakeCalls(), ElementsAre("Move 1 2"));
}

// Failure

TEST(KyDynPArray, ARefusedGrowthLeavesTheObjectWithTheCallerAndTheOthersWithTheArray) {
    const OwnedWatch watch;
    const auto pObject = std::make_unique<Owned>(3);
    {
        OwningArray array(2, 0);
        Adopt(array, {1, 2});
        {
            const FailingAllocation failing(0);
            EXPECT_THROW(array.Append(pObject.get()), std::bad_alloc);
        }

        EXPECT_THAT(Ids(array), ElementsAre(1, 2));
        EXPECT_EQ(array.m_nCapacity, 3);
    }
    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2));
}

TEST(KyDynPArray, AMoveWhoseGrowthIsRefusedKeepsTheObject) {
    const OwnedWatch watch;
    {
        OwningArray array(3, 0);
        Adopt(array, {1, 2, 3});
        const FailingAllocation failing(0);

        EXPECT_THROW(array.Move(0, 3), std::bad_alloc);

        EXPECT_THAT(Ids(array), ElementsAre(1, 2, 3));
    }
    EXPECT_EQ(watch.Live(), 0);
}

TEST(KyDynPArray, AGrowthBeyondWhatBytesCanCountThrowsAndDeletesNothing) {
    const OwnedWatch watch;
    OwningArray array(2, 5);
    Adopt(array, {1, 2});

    EXPECT_THROW(array.ReAllocate(LONG_MAX / 4), std::bad_alloc);

    EXPECT_EQ(array.m_nCapacity, LONG_MAX / 4 + 5);
    EXPECT_THAT(Ids(array), ElementsAre(1, 2));
    EXPECT_THAT(watch.Destroyed(), IsEmpty());
}

// Element types

TEST(KyDynPArray, HoldsObjectsOfAClassThatContainsSuchAnArray) {
    struct Branch {
        KyDynPArray<Branch> m_branches;
    };
    Branch root;

    root.m_branches.Append(new Branch);
    root.m_branches[0]->m_branches.Append(new Branch);
    root.m_branches.Sort(true);

    EXPECT_EQ(root.m_branches.m_nLength, 1);
    EXPECT_EQ(root.m_branches[0]->m_branches.m_nLength, 1);
}

TEST(KyDynPArray, HoldsObjectsOfAnAbstractClass) {
    struct Shape {
        virtual ~Shape() = default;
        virtual long Sides() const = 0;
    };
    struct Square : Shape {
        long Sides() const override { return 4; }
    };
    KyDynPArray<Shape> array;

    array.Append(new Square);
    array.Sort(false);

    EXPECT_EQ(array.GetCurData()->Sides(), 4);
}

}  // namespace
