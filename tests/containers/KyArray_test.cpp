#include "VexaBase/containers/KyArray.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "AllocationLog.h"
#include "CallRecorder.h"
#include "TestElements.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

KyArray<long> ArrayOf(std::initializer_list<long> values) {
    KyArray<long> array;
    array.ReAllocate(static_cast<long>(values.size()), false);
    std::copy(values.begin(), values.end(), array.begin());
    return array;
}

// How it is made

TEST(KyArray, StartsWithoutABlock) {
    const AllocationLog log;

    const KyArray<long> array;

    EXPECT_EQ(array.m_pData, nullptr);
    EXPECT_EQ(array.m_nLength, 0);
    EXPECT_EQ(array.GetLength(), 0);
    EXPECT_THAT(array, ElementsAre());
    EXPECT_THAT(log.Arrays(), IsEmpty());
}

TEST(KyArray, ReleasesItsBlockAtTheEnd) {
    const AllocationLog log;

    {
        const KyArray<long> array = ArrayOf({1, 2, 3});
        Use(&array);
        EXPECT_THAT(log.Arrays(), ElementsAre(3 * sizeof(long)));
    }

    EXPECT_EQ(log.LiveArrayBytes(), 0U);
}

TEST(KyArray, DestroysThroughItsBase) {
    struct Derived : KyArray<long> {
        explicit Derived(bool& bGone) : m_bGone(bGone) {}
        ~Derived() override { m_bGone = true; }
        bool& m_bGone;
    };
    bool bGone = false;
    std::unique_ptr<KyArray<long>> pArray = std::make_unique<Derived>(bGone);

    pArray.reset();

    EXPECT_TRUE(bGone);
    static_assert(std::has_virtual_destructor_v<KyArray<long>>);
}

// Snapshots

TEST(KyArray, TheSnapshotOfAnEmptyContainerHasNoBlock) {
    const KyDynArray<long> reserved(5, 1);
    const KyList<long> list;
    const AllocationLog log;

    const KyArray<long> ofArray(reserved);
    const KyArray<long> ofList(list);

    EXPECT_EQ(ofArray.m_pData, nullptr);
    EXPECT_EQ(ofArray.m_nLength, 0);
    EXPECT_EQ(ofList.m_pData, nullptr);
    EXPECT_EQ(ofList.m_nLength, 0);
    EXPECT_THAT(log.Arrays(), IsEmpty());
}

TEST(KyArray, TheSnapshotOfAListHasItsElementsAndLeavesItsCursor) {
    KyList<char> list;
    Fill(list, {'a', 'b', 'c'});
    list.MoveTo(1);
    const KyListNode<char>* const pCurNode = list.m_pCurNode;
    const AllocationLog log;

    const KyArray<char> array(list);

    EXPECT_THAT(log.Arrays(), ElementsAre(3U));
    EXPECT_THAT(array, ElementsAre('a', 'b', 'c'));
    EXPECT_EQ(array.m_nLength, 3);
    EXPECT_EQ(list.m_nCurIndex, 1);
    EXPECT_EQ(list.m_pCurNode, pCurNode);
}

TEST(KyArray, TheSnapshotOfAnArrayHasNoSpareCapacity) {
    KyDynArray<long> source(100, 100);
    Fill(source, {1, 2});
    source.MoveTo(57);
    const AllocationLog log;

    const KyArray<long> array(source);

    EXPECT_THAT(log.Arrays(), ElementsAre(2 * sizeof(long)));
    EXPECT_THAT(array, ElementsAre(1, 2));
    EXPECT_EQ(source.m_nCurIndex, 57);
}

TEST(KyArray, TheSnapshotWalksByGetFirstAndGetNextAlone) {
    Recording<KyDynArray<long>> source;
    Fill(source, {1, 2, 3});
    source.TakeCalls();

    const KyArray<long> array(source);

    EXPECT_THAT(source.TakeCalls(), ElementsAre("GetFirst", "GetNext", "GetNext", "GetNext"));
    EXPECT_THAT(array, ElementsAre(1, 2, 3));
}

TEST(KyArray, TheSnapshotIsIndependentOfItsSource) {
    KyDList<long> source;
    Fill(source, {1, 2, 3});
    const KyArray<long> array(source);

    source.Reset();

    EXPECT_THAT(array, ElementsAre(1, 2, 3));
}

TEST(KyArray, TheSnapshotOfAnOwningListOwnsNothing) {
    const OwnedWatch watch;
    KyPDList<Owned> list;
    Adopt(list, {1, 2});

    { const KyArray<Owned*> array(list); }

    EXPECT_THAT(watch.Destroyed(), IsEmpty());
}

TEST(KyArray, ASnapshotIsTakenExplicitly) {
    static_assert(std::is_constructible_v<KyArray<long>, const KyDynArrayBase<long>&>);
    static_assert(!std::is_convertible_v<const KyDynArrayBase<long>&, KyArray<long>>);
    static_assert(!std::is_constructible_v<KyArray<long>, const KyDynArrayBase<char>&>);
}

// ReAllocate

TEST(KyArray, ReAllocateToTheLengthKeepsBlockAndContents) {
    for (const bool bKeep : {true, false}) {
        KyArray<long> array = ArrayOf({1, 2, 3});
        const long* const pBlock = array.m_pData;
        const AllocationLog log;

        array.ReAllocate(3, bKeep);

        EXPECT_EQ(array.m_pData, pBlock);
        EXPECT_THAT(array, ElementsAre(1, 2, 3));
        EXPECT_THAT(log.Arrays(), IsEmpty());
        EXPECT_EQ(log.Releases(), 0);
    }
}

TEST(KyArray, ReAllocateBelowOneReleasesTheBlock) {
    for (const bool bKeep : {true, false}) {
        for (const long n : {0L, -3L, LONG_MIN}) {
            KyArray<long> array = ArrayOf({1, 2, 3});
            const AllocationLog log;

            array.ReAllocate(n, bKeep);

            EXPECT_EQ(array.m_pData, nullptr);
            EXPECT_EQ(array.m_nLength, 0);
            EXPECT_THAT(log.Arrays(), IsEmpty());
            EXPECT_EQ(log.Releases(), 1);
        }
    }
}

TEST(KyArray, ReAllocateBelowOneOfAnEmptyArrayDoesNothing) {
    for (const long n : {0L, -3L}) {
        KyArray<long> array;
        const AllocationLog log;

        array.ReAllocate(n, true);

        EXPECT_EQ(array.m_pData, nullptr);
        EXPECT_EQ(array.m_nLength, 0);
        EXPECT_EQ(log.Releases(), 0);
    }
}

TEST(KyArray, ShrinkingWithKeepingKeepsTheFirstElements) {
    KyArray<long> array = ArrayOf({1, 2, 3, 4});
    const AllocationLog log;

    array.ReAllocate(2, true);

    EXPECT_THAT(array, ElementsAre(1, 2));
    EXPECT_EQ(array.m_nLength, 2);
    EXPECT_THAT(log.Arrays(), ElementsAre(2 * sizeof(long)));
    EXPECT_EQ(log.Releases(), 1);
}

TEST(KyArray, GrowingWithKeepingKeepsAllElements) {
    KyArray<std::string> array;
    array.ReAllocate(2, false);
    array[0] = "one";
    array[1] = "two";

    array.ReAllocate(4, true);

    EXPECT_THAT(array, ElementsAre("one", "two", "", ""));
    EXPECT_EQ(array.m_nLength, 4);
}

TEST(KyArray, EveryChangeOfSizeIsOneExactReallocation) {
    KyArray<char> array;
    const AllocationLog log;

    for (const long n : {1L, 2L, 3L, 2L, 9L}) {
        array.ReAllocate(n, true);
    }

    EXPECT_THAT(log.Arrays(), ElementsAre(1U, 2U, 3U, 2U, 9U));
    EXPECT_EQ(log.Releases(), 4);
}

TEST(KyArray, ReAllocateCopiesTheKeptElementsAlone) {
    KyArray<Fragile> array;
    array.ReAllocate(3, false);
    const FragileWatch watch;

    array.ReAllocate(5, true);
    EXPECT_EQ(watch.Copies(), 3);
    array.ReAllocate(2, true);
    EXPECT_EQ(watch.Copies(), 3 + 2);
    array.ReAllocate(7, false);

    EXPECT_EQ(watch.Copies(), 3 + 2);
    EXPECT_EQ(watch.Live(), 7 - 3);
}

// Elements

TEST(KyArray, IndexingReachesTheBlock) {
    KyArray<long> array = ArrayOf({1, 2, 3});
    const KyArray<long>& constant = array;

    array[1] = 7;

    EXPECT_EQ(&array[2], array.m_pData + 2);
    EXPECT_EQ(&constant[0], array.m_pData);
    EXPECT_EQ(constant[1], 7);
    static_assert(std::is_same_v<decltype(constant[0]), const long&>);
}

TEST(KyArray, IsARangeOverItsBlock) {
    KyArray<long> array = ArrayOf({3, 1, 2});
    const KyArray<long>& constant = array;

    std::sort(array.begin(), array.end());

    EXPECT_EQ(array.begin(), array.m_pData);
    EXPECT_EQ(constant.end(), array.m_pData + 3);
    EXPECT_THAT(constant, ElementsAre(1, 2, 3));
    static_assert(std::is_same_v<decltype(*constant.begin()), const long&>);
}

TEST(KyArray, KeepsOveralignedElementsAligned) {
    KyArray<Overaligned> array;

    array.ReAllocate(5, true);

    EXPECT_TRUE(std::all_of(array.begin(), array.end(), [](const Overaligned& x) { return x.IsAligned(); }));
}

TEST(KyArray, HoldsElementsThatContainSuchAnArray) {
    struct Branch {
        KyArray<Branch> m_branches;
    };
    Branch root;
    root.m_branches.ReAllocate(2, true);
    root.m_branches[1].m_branches.ReAllocate(3, true);

    const Branch copy = root;
    root.m_branches.ReAllocate(0, true);

    EXPECT_EQ(copy.m_branches.GetLength(), 2);
    EXPECT_EQ(copy.m_branches[1].m_branches.GetLength(), 3);
}

// Values

TEST(KyArray, ACopyHasABlockOfItsOwn) {
    KyArray<long> array = ArrayOf({1, 2, 3});

    const KyArray<long> copy(array);
    array[0] = 9;

    EXPECT_NE(copy.m_pData, array.m_pData);
    EXPECT_THAT(copy, ElementsAre(1, 2, 3));
    EXPECT_THAT(array, ElementsAre(9, 2, 3));
}

TEST(KyArray, ACopyOfAnEmptyArrayHasNoBlock) {
    const KyArray<long> array;

    const KyArray<long> copy(array);

    EXPECT_EQ(copy.m_pData, nullptr);
    EXPECT_EQ(copy.m_nLength, 0);
}

TEST(KyArray, CopyAssignmentReplacesTheElements) {
    const KyArray<long> array = ArrayOf({1, 2, 3});
    KyArray<long> target = ArrayOf({7, 8});
    KyArray<long> emptied = ArrayOf({7, 8});

    target = array;
    emptied = KyArray<long>();

    EXPECT_THAT(target, ElementsAre(1, 2, 3));
    EXPECT_NE(target.m_pData, array.m_pData);
    EXPECT_EQ(emptied.m_pData, nullptr);
}

TEST(KyArray, AssignmentToItselfChangesNothing) {
    KyArray<long> array = ArrayOf({1, 2, 3});
    KyArray<long>& same = array;
    const long* const pBlock = array.m_pData;

    array = same;
    EXPECT_EQ(array.m_pData, pBlock);
    array = std::move(same);

    EXPECT_EQ(array.m_pData, pBlock);
    EXPECT_THAT(array, ElementsAre(1, 2, 3));
}

TEST(KyArray, MovingHandsTheBlockOverAndLeavesAnEmptyArray) {
    KyArray<long> array = ArrayOf({1, 2, 3});
    const long* const pBlock = array.m_pData;
    const AllocationLog log;

    KyArray<long> moved(std::move(array));
    EXPECT_EQ(moved.m_pData, pBlock);
    EXPECT_EQ(array.m_pData, nullptr);
    EXPECT_EQ(array.m_nLength, 0);
    array = std::move(moved);

    EXPECT_EQ(array.m_pData, pBlock);
    EXPECT_EQ(array.m_nLength, 3);
    EXPECT_EQ(moved.m_pData, nullptr);
    EXPECT_EQ(moved.m_nLength, 0);
    EXPECT_THAT(log.Arrays(), IsEmpty());
}

TEST(KyArray, MoveAssignmentReleasesTheFormerBlock) {
    KyArray<long> array = ArrayOf({1, 2, 3});
    KyArray<long> target = ArrayOf({7, 8});
    const AllocationLog log;

    target = std::move(array);

    EXPECT_EQ(log.Releases(), 1);
    EXPECT_THAT(target, ElementsAre(1, 2, 3));
    EXPECT_THAT(array, ElementsAre());
}

TEST(KyArray, AMovedFromArrayIsUsable) {
    KyArray<long> array = ArrayOf({1, 2, 3});
    const KyArray<long> moved(std::move(array));

    array.ReAllocate(2, true);
    array[1] = 5;

    EXPECT_EQ(array.GetLength(), 2);
    EXPECT_EQ(array[1], 5);
}

TEST(KyArray, SwapExchangesTheBlocks) {
    KyArray<long> a = ArrayOf({1, 2, 3});
    KyArray<long> b;
    const long* const pBlock = a.m_pData;
    const AllocationLog log;

    a.swap(b);
    EXPECT_EQ(b.m_pData, pBlock);
    EXPECT_THAT(a, ElementsAre());
    using std::swap;
    swap(a, b);

    EXPECT_EQ(a.m_pData, pBlock);
    EXPECT_EQ(a.m_nLength, 3);
    EXPECT_EQ(b.m_pData, nullptr);
    EXPECT_THAT(log.Arrays(), IsEmpty());
}

TEST(KyArray, MovesAndSwapsWithoutThrowing) {
    static_assert(std::is_nothrow_move_constructible_v<KyArray<Fragile>>);
    static_assert(std::is_nothrow_move_assignable_v<KyArray<Fragile>>);
    static_assert(std::is_nothrow_swappable_v<KyArray<Fragile>>);
    static_assert(std::is_copy_constructible_v<KyArray<Fragile>> &&
                  std::is_copy_assignable_v<KyArray<Fragile>>);
}

TEST(KyArray, LivesInStandardContainers) {
    std::vector<KyArray<long>> arrays;

    for (long i = 0; i < 20; ++i) {
        arrays.push_back(ArrayOf({i, i + 1}));
    }

    EXPECT_THAT(arrays[0], ElementsAre(0, 1));
    EXPECT_THAT(arrays[19], ElementsAre(19, 20));
}

// Failure

TEST(KyArray, ASizeBeyondWhatBytesCanCountThrowsAndChangesNothing) {
    KyArray<long> array = ArrayOf({1, 2, 3});

    EXPECT_THROW(array.ReAllocate(LONG_MAX / 4, true), std::bad_alloc);

    EXPECT_THAT(array, ElementsAre(1, 2, 3));
}

TEST(KyArray, ARefusedAllocationChangesNothing) {
    KyArray<long> array = ArrayOf({1, 2, 3});
    KyArray<long> other;

    for (const bool bKeep : {true, false}) {
        const FailingAllocation failing(0);
        EXPECT_THROW(array.ReAllocate(5, bKeep), std::bad_alloc);
    }
    {
        const FailingAllocation failing(0);
        EXPECT_THROW(other = array, std::bad_alloc);
    }

    EXPECT_THAT(array, ElementsAre(1, 2, 3));
    EXPECT_THAT(other, ElementsAre());
}

TEST(KyArray, AThrowingCopyLeaksNothingAndChangesNothing) {
    KyDynArray<Fragile> source;
    Fill(source, {1, 2, 3});
    KyArray<Fragile> array(source);
    KyArray<Fragile> other;
    FragileWatch watch;

    watch.Allow(2);
    EXPECT_THROW(array.ReAllocate(5, true), std::runtime_error);
    watch.Allow(2);
    EXPECT_THROW(KyArray<Fragile>{array}, std::runtime_error);
    watch.Allow(2);
    EXPECT_THROW(KyArray<Fragile>{source}, std::runtime_error);
    watch.Allow(2);
    EXPECT_THROW(other = array, std::runtime_error);
    watch.Allow(-1);

    EXPECT_EQ(watch.Live(), 0);
    EXPECT_THAT(array, ElementsAre(Fragile(1), Fragile(2), Fragile(3)));
    EXPECT_EQ(other.m_nLength, 0);
}

}  // namespace
