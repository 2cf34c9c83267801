#include "VexaBase/containers/KyDynArray.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <initializer_list>
#include <new>
#include <numeric>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "AllocationLog.h"
#include "CallRecorder.h"
#include "TestElements.h"
#include "VexaBase/containers/KyDynPArray.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Property;

using RecordingArray = Recording<KyDynArray<char>>;

std::vector<long> Numbers(long n) {
    std::vector<long> numbers(static_cast<std::size_t>(n));
    std::iota(numbers.begin(), numbers.end(), 0L);
    return numbers;
}

void FillNumbers(KyDynArray<long>& array, long n) {
    for (long i = 0; i < n; ++i) {
        array.Append(i);
    }
}

// How it is made

TEST(KyDynArray, AnArrayWithoutCapacityHasNoBlock) {
    const AllocationLog log;

    const KyDynArray<long> array(0, 7);

    EXPECT_THAT(log.Arrays(), IsEmpty());
    EXPECT_EQ(array.m_pData, nullptr);
    EXPECT_EQ(array.m_nCapacity, 0);
    EXPECT_EQ(array.m_nGrowBy, 7);
    EXPECT_EQ(array.m_nLength, 0);
    EXPECT_EQ(array.m_nCurIndex, -1);
}

TEST(KyDynArray, ACapacityIsAllocatedExactly) {
    const AllocationLog log;

    const KyDynArray<long> array(5, 2);

    EXPECT_THAT(log.Arrays(), ElementsAre(5 * sizeof(long)));
    EXPECT_NE(array.m_pData, nullptr);
    EXPECT_EQ(array.m_nCapacity, 5);
    EXPECT_EQ(array.m_nGrowBy, 2);
    EXPECT_EQ(array.m_nLength, 0);
    EXPECT_EQ(array.m_nCurIndex, -1);
}

TEST(KyDynArray, ANegativeCapacityIsNone) {
    const KyDynArray<long> array(-3, 2);

    EXPECT_EQ(array.m_pData, nullptr);
    EXPECT_EQ(array.m_nCapacity, 0);
}

TEST(KyDynArray, GrowsByAStepOf1024FromNothingUnlessToldOtherwise) {
    const KyDynArray<long> array;
    const KyDynArray<long> reserved(3);

    EXPECT_EQ(array.m_nCapacity, 0);
    EXPECT_EQ(array.m_nGrowBy, 1024);
    EXPECT_EQ(reserved.m_nCapacity, 3);
    EXPECT_EQ(reserved.m_nGrowBy, 1024);
    static_assert(!std::is_convertible_v<long, KyDynArray<long>>);
}

TEST(KyDynArray, ReleasesItsBlockAtTheEnd) {
    const AllocationLog log;

    {
        KyDynArray<long> array(3, 1);
        FillNumbers(array, 10);
    }

    EXPECT_EQ(log.LiveArrayBytes(), 0U);
}

TEST(KyDynArray, AnArrayWithoutABlockReleasesNothing) {
    const AllocationLog log;

    {
        const KyDynArray<long> array;
        Use(&array);
    }

    EXPECT_EQ(log.Releases(), 0);
}

// ReAllocate

TEST(KyDynArray, ReAllocateInsideTheCapacityOnlySetsTheLength) {
    KyDynArray<long> array(5, 1);
    FillNumbers(array, 3);
    const long* const pBlock = array.m_pData;
    array.MoveTo(2);
    const AllocationLog log;

    array.ReAllocate(5);
    EXPECT_EQ(array.m_nLength, 5);
    array.ReAllocate(1);
    EXPECT_EQ(array.m_nLength, 1);
    array.ReAllocate(0);
    EXPECT_EQ(array.m_nLength, 0);
    array.ReAllocate(3);

    EXPECT_THAT(array, ElementsAre(0, 1, 2));
    EXPECT_EQ(array.m_pData, pBlock);
    EXPECT_EQ(array.m_nCapacity, 5);
    EXPECT_EQ(array.m_nCurIndex, 2);
    EXPECT_THAT(log.Arrays(), IsEmpty());
}

TEST(KyDynArray, ReAllocatePastTheCapacityTakesTheLengthAskedForAndTheStep) {
    KyDynArray<long> array(2, 3);
    FillNumbers(array, 2);
    const AllocationLog log;

    array.ReAllocate(4);

    EXPECT_THAT(log.Arrays(), ElementsAre(7 * sizeof(long)));
    EXPECT_EQ(log.Releases(), 1);
    EXPECT_EQ(array.m_nCapacity, 7);
    EXPECT_EQ(array.m_nLength, 4);
    EXPECT_THAT(std::vector<long>(array.m_pData, array.m_pData + 2), ElementsAre(0, 1));
}

TEST(KyDynArray, ReAllocateFromNothingCopiesAndReleasesNothing) {
    KyDynArray<long> array(0, 3);
    const AllocationLog log;

    array.ReAllocate(2);

    EXPECT_THAT(log.Arrays(), ElementsAre(5 * sizeof(long)));
    EXPECT_EQ(log.Releases(), 0);
    EXPECT_EQ(array.m_nCapacity, 5);
    EXPECT_EQ(array.m_nLength, 2);
}

TEST(KyDynArray, GrowthCopiesTheElementsBelowTheLengthAlone) {
    KyDynArray<Fragile> array(4, 2);
    array.ReAllocate(3);
    const FragileWatch watch;

    array.ReAllocate(5);

    EXPECT_EQ(watch.Copies(), 3);
    EXPECT_EQ(watch.Live(), 7 - 4);
}

TEST(KyDynArray, TheFirstAppendWithAStepOf1024AllocatesOnceForThousandTwentyFiveElements) {
    KyDynArray<char> array(0, 1024);
    const AllocationLog log;

    array.Append('x');
    EXPECT_THAT(log.Arrays(), ElementsAre(1025U));
    EXPECT_EQ(array.m_nLength, 1);
    for (int i = 0; i < 1024; ++i) {
        array.Append('x');
    }
    EXPECT_THAT(log.Arrays(), ElementsAre(1025U));
    EXPECT_EQ(array.m_nLength, 1025);
    EXPECT_EQ(array.m_nCapacity, 1025);
    array.Append('x');

    EXPECT_THAT(log.Arrays(), ElementsAre(1025U, 2050U));
    EXPECT_EQ(array.m_nCapacity, 2050);
}

TEST(KyDynArray, GrowsLinearlyOnceInStepPlusOneInsertions) {
    KyDynArray<char> array(0, 3);
    std::vector<long> capacities;

    for (int i = 0; i < 13; ++i) {
        array.Append('x');
        capacities.push_back(array.m_nCapacity);
    }

    EXPECT_THAT(capacities, ElementsAre(4, 4, 4, 4, 8, 8, 8, 8, 12, 12, 12, 12, 16));
}

TEST(KyDynArray, AStepOfZeroReallocatesOnEveryGrowth) {
    KyDynArray<char> array(0, 0);
    const AllocationLog log;

    for (const char c : {'A', 'B', 'C', 'D'}) {
        array.Append(c);
    }

    EXPECT_THAT(log.Arrays(), ElementsAre(1U, 2U, 3U, 4U));
    EXPECT_EQ(log.LiveArrayBytes(), 4U);
    EXPECT_EQ(array.m_nCapacity, 4);
    EXPECT_THAT(array, ElementsAre('A', 'B', 'C', 'D'));
}

TEST(KyDynArray, TheStepMayBeChangedBetweenGrowths) {
    KyDynArray<char> array(0, 0);
    array.Append('A');

    array.m_nGrowBy = 9;
    array.Append('B');

    EXPECT_EQ(array.m_nCapacity, 11);
    EXPECT_THAT(array, ElementsAre('A', 'B'));
}

// SetLength

TEST(KyDynArray, SetLengthToTheCapacityKeepsTheBlockAndItsContents) {
    for (const bool bKeep : {true, false}) {
        KyDynArray<long> array(4, 1);
        FillNumbers(array, 4);
        array.ReAllocate(2);
        array.MoveTo(1);
        const AllocationLog log;

        array.SetLength(4, bKeep);

        EXPECT_THAT(log.Arrays(), IsEmpty());
        EXPECT_EQ(log.Releases(), 0);
        EXPECT_EQ(array.m_nLength, 4);
        EXPECT_EQ(array.m_nCapacity, 4);
        EXPECT_EQ(array.m_nCurIndex, 1);
        EXPECT_THAT(array, ElementsAre(0, 1, 2, 3));
    }
}

TEST(KyDynArray, SetLengthWithKeepingCopiesIntoABlockOfExactlyThatSize) {
    struct Row {
        long m_nLength;
        long m_nNewLength;
        std::vector<long> m_kept;
    };
    for (const Row& row : {Row{3, 2, {0, 1}}, Row{3, 3, {0, 1, 2}}, Row{3, 6, {0, 1, 2}}, Row{0, 6, {}}}) {
        KyDynArray<long> array(5, 1);
        FillNumbers(array, row.m_nLength);
        array.MoveTo(2);
        const AllocationLog log;

        array.SetLength(row.m_nNewLength, true);

        EXPECT_THAT(log.Arrays(), ElementsAre(static_cast<std::size_t>(row.m_nNewLength) * sizeof(long)));
        EXPECT_EQ(log.Releases(), 1);
        EXPECT_EQ(array.m_nLength, row.m_nNewLength);
        EXPECT_EQ(array.m_nCapacity, row.m_nNewLength);
        EXPECT_EQ(array.m_nCurIndex, 2);
        EXPECT_EQ(std::vector<long>(array.m_pData, array.m_pData + row.m_kept.size()), row.m_kept);
    }
}

TEST(KyDynArray, SetLengthToTheOwnLengthTrimsTheSpareCapacity) {
    KyDynArray<long> array(0, 1024);
    FillNumbers(array, 3);
    const AllocationLog log;

    array.SetLength(3, true);

    EXPECT_THAT(log.Arrays(), ElementsAre(3 * sizeof(long)));
    EXPECT_EQ(array.m_nCapacity, 3);
    EXPECT_THAT(array, ElementsAre(0, 1, 2));
}

TEST(KyDynArray, SetLengthWithoutKeepingCopiesNothing) {
    KyDynArray<Fragile> array(4, 1);
    array.ReAllocate(4);
    const FragileWatch watch(0);
    const AllocationLog log;

    array.SetLength(2, false);
    EXPECT_EQ(array.m_nLength, 2);
    EXPECT_EQ(array.m_nCapacity, 2);
    array.SetLength(6, false);

    EXPECT_EQ(watch.Copies(), 0);
    EXPECT_EQ(log.Arrays().size(), 2U);
    EXPECT_EQ(log.Releases(), 2);
    EXPECT_EQ(array.m_nLength, 6);
    EXPECT_EQ(array.m_nCapacity, 6);
}

TEST(KyDynArray, SetLengthWithKeepingCopiesTheSmallerOfTheTwoLengths) {
    KyDynArray<Fragile> array(4, 1);
    array.ReAllocate(3);
    const FragileWatch watch;

    array.SetLength(2, true);
    EXPECT_EQ(watch.Copies(), 2);
    array.SetLength(7, true);

    EXPECT_EQ(watch.Copies(), 2 + 2);
    EXPECT_EQ(watch.Live(), 7 - 4);
}

TEST(KyDynArray, SetLengthZeroGivesTheBlockBack) {
    for (const bool bKeep : {true, false}) {
        KyDynArray<long> array(0, 9);
        FillNumbers(array, 4);
        const AllocationLog log;

        array.SetLength(0, bKeep);

        EXPECT_THAT(log.Arrays(), IsEmpty());
        EXPECT_EQ(log.Releases(), 1);
        EXPECT_EQ(array.m_pData, nullptr);
        EXPECT_EQ(array.m_nCapacity, 0);
        EXPECT_EQ(array.m_nLength, 0);
        EXPECT_EQ(array.m_nCurIndex, 3);
        EXPECT_EQ(array.m_nGrowBy, 9);
    }
}

TEST(KyDynArray, SetLengthZeroOfAnArrayWithoutABlockDoesNothing) {
    KyDynArray<long> array;
    const AllocationLog log;

    array.SetLength(0, true);

    EXPECT_EQ(log.Releases(), 0);
    EXPECT_EQ(array.m_pData, nullptr);
    EXPECT_EQ(array.m_nCapacity, 0);
    EXPECT_EQ(array.m_nLength, 0);
}

TEST(KyDynArray, SetLengthBelowZeroReleasesTheBlockAndTakesTheNumberAsItIs) {
    KyDynArray<long> array(0, 9);
    FillNumbers(array, 4);

    array.SetLength(-3, true);

    EXPECT_EQ(array.m_pData, nullptr);
    EXPECT_EQ(array.m_nCapacity, -3);
    EXPECT_EQ(array.m_nLength, -3);
}

TEST(KyDynArray, SetLengthFromNothingAllocatesWithoutReleasing) {
    KyDynArray<long> array(0, 9);
    const AllocationLog log;

    array.SetLength(3, true);

    EXPECT_THAT(log.Arrays(), ElementsAre(3 * sizeof(long)));
    EXPECT_EQ(log.Releases(), 0);
    EXPECT_EQ(array.m_nLength, 3);
    EXPECT_EQ(array.m_nCapacity, 3);
    EXPECT_EQ(array.m_nCurIndex, -1);
}

TEST(KyDynArray, SetLengthLeavesTheCursorPastTheEnd) {
    KyDynArray<long> array;
    FillNumbers(array, 5);
    array.MoveToLast();

    array.SetLength(2, true);

    EXPECT_EQ(array.m_nCurIndex, 4);
    EXPECT_THAT(array, ElementsAre(0, 1));
}

TEST(KyDynArray, GrowthAfterAnExactLengthAddsTheStepAgain) {
    KyDynArray<long> array(0, 5);
    array.SetLength(2, true);

    array.Append(7);

    EXPECT_EQ(array.m_nCapacity, 8);
    EXPECT_EQ(array.m_nLength, 3);
}

// Reset

TEST(KyDynArray, ResetKeepsTheBlock) {
    KyDynArray<long> array(0, 5);
    FillNumbers(array, 3);
    const long* const pBlock = array.m_pData;
    const AllocationLog log;

    array.Reset();
    EXPECT_EQ(array.m_nLength, 0);
    EXPECT_EQ(array.m_nCurIndex, -1);
    EXPECT_EQ(array.m_nCapacity, 6);
    FillNumbers(array, 6);

    EXPECT_EQ(array.m_pData, pBlock);
    EXPECT_THAT(log.Arrays(), IsEmpty());
    EXPECT_EQ(log.Releases(), 0);
}

TEST(KyDynArray, ResetMakesNoFurtherVirtualCalls) {
    RecordingArray array;
    Fill(array, {'A', 'B'});
    array.TakeCalls();

    array.Reset();

    EXPECT_THAT(array.TakeCalls(), ElementsAre("Reset"));
}

// Reading and writing at the cursor, and walking by address

TEST(KyDynArray, GetCurDataIsTheElementItself) {
    KyDynArray<long> array;
    FillNumbers(array, 3);
    array.MoveTo(1);

    array.GetCurData() = 7;

    EXPECT_EQ(&array.GetCurData(), array.m_pData + 1);
    EXPECT_THAT(array, ElementsAre(0, 7, 2));
}

TEST(KyDynArray, SetCurDataAssignsOnce) {
    KyDynArray<Fragile> array;
    Fill(array, {1, 2, 3});
    array.MoveTo(2);
    const Fragile value(9);
    const FragileWatch watch;

    array.SetCurData(value);

    EXPECT_EQ(watch.Copies(), 1);
    EXPECT_THAT(array, ElementsAre(Fragile(1), Fragile(2), Fragile(9)));
    EXPECT_EQ(array.m_nCurIndex, 2);
}

TEST(KyDynArray, IsMadeFromEmptyBraces) {
    struct Arrays {
        KyDynArray<long> m_values;
        KyDynPArray<long> m_objects;
    };

    const Arrays arrays = {};

    EXPECT_EQ(arrays.m_values.m_pData, nullptr);
    EXPECT_EQ(arrays.m_values.m_nGrowBy, 1024);
    EXPECT_EQ(arrays.m_objects.m_pData, nullptr);
    EXPECT_EQ(arrays.m_objects.m_nGrowBy, 1024);
    EXPECT_FALSE((std::is_convertible_v<long, KyDynArray<long>>));
    EXPECT_FALSE((std::is_convertible_v<long, KyDynPArray<long>>));
}

TEST(KyDynArray, GetFirstAndGetLastOfAnEmptyArrayAreNullEvenWithABlock) {
    KyDynArray<long> array(5, 1);

    EXPECT_EQ(array.GetFirst(), nullptr);
    EXPECT_EQ(array.GetLast(), nullptr);
    array.Append(1);
    array.Reset();

    EXPECT_NE(array.m_pData, nullptr);
    EXPECT_EQ(array.GetFirst(), nullptr);
    EXPECT_EQ(array.GetLast(), nullptr);
}

TEST(KyDynArray, TheWalkGivesAddressesInTheBlock) {
    KyDynArray<long> array;
    FillNumbers(array, 3);
    const long* const p = array.m_pData;
    array.m_nCurIndex = 1;

    EXPECT_EQ(array.GetFirst(), p);
    EXPECT_EQ(array.GetLast(), p + 2);
    EXPECT_EQ(array.GetNext(p), p + 1);
    EXPECT_EQ(array.GetNext(p + 1), p + 2);
    EXPECT_EQ(array.GetNext(p + 2), nullptr);
    EXPECT_EQ(array.GetNext(nullptr), nullptr);
    EXPECT_EQ(array.GetPre(p + 2), p + 1);
    EXPECT_EQ(array.GetPre(p + 1), p);
    EXPECT_EQ(array.GetPre(p), nullptr);
    EXPECT_EQ(array.GetPre(nullptr), nullptr);
    EXPECT_EQ(array.GetAt(0), p);
    EXPECT_EQ(array.GetAt(2), p + 2);
    EXPECT_EQ(array.m_nCurIndex, 1);
}

TEST(KyDynArray, TheOnlyElementIsFirstAndLast) {
    KyDynArray<long> array;
    array.Append(7);

    EXPECT_EQ(array.GetFirst(), array.GetLast());
    EXPECT_EQ(array.GetNext(array.GetFirst()), nullptr);
    EXPECT_EQ(array.GetPre(array.GetFirst()), nullptr);
}

TEST(KyDynArray, AddressesHoldUntilTheBlockIsReplaced) {
    KyDynArray<long> array(4, 4);
    FillNumbers(array, 2);
    const long* const pFirst = array.GetFirst();

    array.Append(2);
    array.Append(3);
    array.DelCur();

    EXPECT_EQ(array.GetFirst(), pFirst);
    EXPECT_EQ(*pFirst, 0);
}

// InsertCur

TEST(KyDynArray, InsertCurTakesTheCurrentIndexAndShiftsTheRest) {
    KyDynArray<char> array;
    Fill(array, {'A', 'B'});
    array.MoveTo(1);

    array.InsertCur('x');

    EXPECT_THAT(array, ElementsAre('A', 'x', 'B'));
    EXPECT_EQ(array.m_nCurIndex, 1);
}

TEST(KyDynArray, InsertCurAtTheLengthAppends) {
    KyDynArray<char> array;
    Fill(array, {'A', 'B'});
    array.MoveTo(2);

    array.InsertCur('x');

    EXPECT_THAT(array, ElementsAre('A', 'B', 'x'));
    EXPECT_EQ(array.m_nCurIndex, 2);
}

TEST(KyDynArray, InsertCurIntoAnEmptyArrayAtIndexZero) {
    KyDynArray<char> array;
    array.MoveToFirst();

    array.InsertCur('x');

    EXPECT_THAT(array, ElementsAre('x'));
    EXPECT_EQ(array.m_nCurIndex, 0);
}

TEST(KyDynArray, InsertCurChangesTheLengthThroughReAllocate) {
    RecordingArray array;
    Fill(array, {'A', 'B'});
    array.TakeCalls();
    array.m_nCurIndex = 1;

    array.InsertCur('x');

    EXPECT_THAT(array.TakeCalls(), ElementsAre("InsertCur", "ReAllocate 3"));
}

TEST(KyDynArray, InsertCurAssignsEachElementBehindItAndTheNewOneOnce) {
    KyDynArray<Fragile> array(8, 0);
    Fill(array, {1, 2, 3, 4, 5});
    array.MoveTo(2);
    const Fragile value(9);
    const FragileWatch watch;

    array.InsertCur(value);

    EXPECT_EQ(watch.Copies(), 3 + 1);
    EXPECT_THAT(array, ElementsAreArray(std::vector<Fragile>{1, 2, 9, 3, 4, 5}));
}

TEST(KyDynArray, AnInsertedElementOfTheArrayItselfIsReadAfterTheShift) {
    // Of [A, B, C, D], the element in slot nSource goes to index nTarget: slots from nTarget on have moved up
    // when it is read.
    for (const bool bGrows : {false, true}) {
        for (long nSource = 0; nSource < 4; ++nSource) {
            for (long nTarget = 0; nTarget <= 4; ++nTarget) {
                KyDynArray<std::string> array(bGrows ? 4 : 5, 0);
                Fill(array, {"A", "B", "C", "D"});
                std::vector<std::string> expected{"A", "B", "C", "D", ""};
                std::copy_backward(expected.begin() + nTarget, expected.begin() + 4, expected.end());
                expected[static_cast<std::size_t>(nTarget)] = expected[static_cast<std::size_t>(nSource)];

                array.Insert(nTarget, *array.GetAt(nSource));

                EXPECT_THAT(array, ElementsAreArray(expected))
                    << nSource << " to " << nTarget << ", grows " << bGrows;
                EXPECT_EQ(array.m_nCurIndex, nTarget);
            }
        }
    }
}

TEST(KyDynArray, MoveBackwardRepeatsTheElementBeforeItWithAndWithoutGrowth) {
    for (const long nCapacity : {4L, 5L}) {
        KyDynArray<char> array(nCapacity, 0);
        Fill(array, {'A', 'B', 'C', 'D'});

        const bool bMoved = array.Move(2, 0);

        EXPECT_TRUE(bMoved);
        EXPECT_THAT(array, ElementsAre('B', 'A', 'B', 'D')) << "capacity " << nCapacity;
        EXPECT_EQ(array.m_nCurIndex, 0);
        EXPECT_EQ(array.m_nLength, 4);
        EXPECT_EQ(array.m_nCapacity, 5);
    }
}

TEST(KyDynArray, MoveBackwardByAnyDistanceRepeatsTheElementBeforeIt) {
    for (long nFrom = 1; nFrom < 5; ++nFrom) {
        for (long nTo = 0; nTo < nFrom; ++nTo) {
            KyDynArray<long> array;
            FillNumbers(array, 5);
            std::vector<long> expected = Numbers(5);
            expected.erase(expected.begin() + nFrom);
            expected.insert(expected.begin() + nTo, nFrom - 1);

            array.Move(nFrom, nTo);

            EXPECT_THAT(array, ElementsAreArray(expected)) << nFrom << " to " << nTo;
            EXPECT_EQ(array.m_nCurIndex, nTo);
        }
    }
}

TEST(KyDynArray, MoveForwardIsExactWithAndWithoutGrowth) {
    for (const long nCapacity : {5L, 6L}) {
        for (long nFrom = 0; nFrom < 5; ++nFrom) {
            for (long nTo = nFrom + 2; nTo <= 5; ++nTo) {
                KyDynArray<std::string> array(nCapacity, 0);
                Fill(array, {"A", "B", "C", "D", "E"});
                std::vector<std::string> expected{"A", "B", "C", "D", "E"};
                std::rotate(expected.begin() + nFrom, expected.begin() + nFrom + 1, expected.begin() + nTo);

                const bool bMoved = array.Move(nFrom, nTo);

                EXPECT_TRUE(bMoved);
                EXPECT_THAT(array, ElementsAreArray(expected)) << nFrom << " to " << nTo;
                EXPECT_EQ(array.m_nCurIndex, nTo - 1);
            }
        }
    }
}

TEST(KyDynArray, MoveIsMadeOfVirtualCalls) {
    RecordingArray array;
    Fill(array, {'A', 'B', 'C', 'D'});
    array.TakeCalls();

    array.Move(0, 3);
    EXPECT_THAT(array.TakeCalls(),
                ElementsAre("Move 0 3", "MoveTo 0", "GetCurData", "Insert 3", "MoveTo 3", "InsertCur",
                            "ReAllocate 5", "MoveTo 0", "DelCur", "ReAllocate 4", "MoveTo 2"));
    array.Move(2, 0);

    EXPECT_THAT(array.TakeCalls(),
                ElementsAre("Move 2 0", "MoveTo 2", "GetCurData", "Insert 0", "MoveTo 0", "InsertCur",
                            "ReAllocate 5", "MoveTo 3", "DelCur", "ReAllocate 4", "MoveTo 0"));
}

TEST(KyDynArray, ThePositionalOperationsAreMadeOfVirtualCalls) {
    RecordingArray array;

    array.Append('B');
    EXPECT_THAT(array.TakeCalls(), ElementsAre("Append", "MoveTo 0", "InsertCur", "ReAllocate 1"));
    array.InsertHead('A');
    EXPECT_THAT(array.TakeCalls(), ElementsAre("InsertHead", "MoveToFirst", "InsertCur", "ReAllocate 2"));
    array.Insert(1, 'x');
    EXPECT_THAT(array.TakeCalls(), ElementsAre("Insert 1", "MoveTo 1", "InsertCur", "ReAllocate 3"));
    array[4] = 'E';
    EXPECT_THAT(array.TakeCalls(), ElementsAre("operator[] 4", "ReAllocate 5", "MoveTo 4", "GetCurData"));
    array.SetLength(2, true);
    EXPECT_THAT(array.TakeCalls(), ElementsAre("SetLength 2 1"));
    array.Sort(true);

    EXPECT_THAT(array.TakeCalls(), ElementsAre("Sort 1"));
}

// DelCur

TEST(KyDynArray, DelCurOfTheFirstElementLeavesTheCursorBeforeTheArray) {
    KyDynArray<char> array;
    Fill(array, {'A', 'B', 'C'});
    array.MoveToFirst();

    array.DelCur();
    EXPECT_THAT(array, ElementsAre('B', 'C'));
    EXPECT_EQ(array.m_nCurIndex, -1);
    array.MoveToNext();

    EXPECT_EQ(array.GetCurData(), 'B');
}

TEST(KyDynArray, DelCurStepsTheCursorBackByOne) {
    for (const long i : {1L, 2L}) {
        KyDynArray<char> array;
        Fill(array, {'A', 'B', 'C'});
        array.MoveTo(i);

        array.DelCur();

        EXPECT_EQ(array.m_nCurIndex, i - 1);
        EXPECT_EQ(array.m_nLength, 2);
        EXPECT_EQ(array.m_pData[0], 'A');
        EXPECT_EQ(array.m_pData[1], i == 1 ? 'C' : 'B');
    }
}

TEST(KyDynArray, DelCurOfTheOnlyElementLeavesAnEmptyArrayWithItsBlock) {
    KyDynArray<char> array(0, 3);
    array.Append('A');

    array.DelCur();

    EXPECT_EQ(array.m_nLength, 0);
    EXPECT_EQ(array.m_nCurIndex, -1);
    EXPECT_EQ(array.m_nCapacity, 4);
    EXPECT_NE(array.m_pData, nullptr);
}

TEST(KyDynArray, DelCurShiftsByAssignmentThenChangesTheLengthThroughReAllocate) {
    Recording<KyDynArray<Fragile>> array;
    Fill(array, {1, 2, 3, 4});
    array.TakeCalls();
    array.m_nCurIndex = 1;
    const FragileWatch watch;

    array.DelCur();

    EXPECT_EQ(watch.Copies(), 2);
    EXPECT_THAT(array.TakeCalls(), ElementsAre("DelCur", "ReAllocate 3"));
}

TEST(KyDynArray, DeletingInALoopVisitsEveryElementOnce) {
    KyDynArray<long> array;
    FillNumbers(array, 10);

    for (array.MoveToFirst(); array.m_nCurIndex >= 0 && array.m_nCurIndex < array.m_nLength;
         array.MoveToNext()) {
        if (array.GetCurData() % 3 != 0) {
            array.DelCur();
        }
    }

    EXPECT_THAT(array, ElementsAre(0, 3, 6, 9));
}

// Failure

TEST(KyDynArray, AGrowthBeyondWhatBytesCanCountThrowsAndKeepsTheOldBlock) {
    KyDynArray<long> array(2, 5);
    FillNumbers(array, 2);
    const long* const pBlock = array.m_pData;
    const long nTooLong = LONG_MAX / 4;

    EXPECT_THROW(array.ReAllocate(nTooLong), std::bad_alloc);

    EXPECT_EQ(array.m_nCapacity, nTooLong + 5);
    EXPECT_EQ(array.m_nLength, 2);
    EXPECT_EQ(array.m_pData, pBlock);
    EXPECT_EQ(array.m_nCurIndex, 1);
    EXPECT_THAT(array, ElementsAre(0, 1));
}

TEST(KyDynArray, ACapacityBeyondALongThrows) {
    const volatile long nLongest = LONG_MAX;
    KyDynArray<char> bytes(0, 1024);
    KyDynArray<long> numbers(0, nLongest);

    EXPECT_THROW(bytes.ReAllocate(nLongest), std::bad_alloc);
    EXPECT_THROW(numbers.Append(1), std::bad_alloc);

    EXPECT_EQ(bytes.m_pData, nullptr);
    EXPECT_EQ(bytes.m_nLength, 0);
    EXPECT_EQ(numbers.m_nLength, 0);
}

TEST(KyDynArray, AnExactLengthBeyondWhatBytesCanCountThrowsAndChangesNothing) {
    KyDynArray<long> array(3, 5);
    FillNumbers(array, 2);

    EXPECT_THROW(array.SetLength(LONG_MAX / 4, true), std::bad_alloc);
    EXPECT_THROW(array.SetLength(LONG_MAX / 4, false), std::bad_alloc);

    EXPECT_EQ(array.m_nCapacity, 3);
    EXPECT_THAT(array, ElementsAre(0, 1));
}

TEST(KyDynArray, ARefusedGrowthPassesTheExceptionOnAndLeavesTheRaisedCapacity) {
    KyDynArray<long> array(2, 5);
    FillNumbers(array, 2);
    const AllocationLog log;

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(array.ReAllocate(3), std::bad_alloc);
    }

    EXPECT_EQ(array.m_nCapacity, 8);
    EXPECT_THAT(array, ElementsAre(0, 1));
    EXPECT_EQ(log.Releases(), 0);
}

TEST(KyDynArray, ARefusedCapacityLeavesNoArray) {
    const FailingAllocation failing(0);

    EXPECT_THROW(
        {
            const KyDynArray<long> array(3, 1);
            Use(&array);
        },
        std::bad_alloc);
}

TEST(KyDynArray, AThrowingCopyDuringGrowthLeaksNothingAndKeepsTheOldBlock) {
    const FragileWatch all;
    {
        KyDynArray<Fragile> array(3, 2);
        Fill(array, {1, 2, 3});
        FragileWatch watch(2);

        EXPECT_THROW(array.ReAllocate(4), std::runtime_error);

        watch.Allow(-1);
        EXPECT_EQ(watch.Live(), 0);
        EXPECT_EQ(array.m_nCapacity, 6);
        EXPECT_THAT(array, ElementsAre(Fragile(1), Fragile(2), Fragile(3)));
    }
    EXPECT_EQ(all.Live(), 0);
}

TEST(KyDynArray, AThrowingCopyDuringSetLengthChangesNothing) {
    KyDynArray<Fragile> array(5, 2);
    Fill(array, {1, 2, 3});
    FragileWatch watch(1);

    EXPECT_THROW(array.SetLength(3, true), std::runtime_error);

    watch.Allow(-1);
    EXPECT_EQ(watch.Live(), 0);
    EXPECT_EQ(array.m_nCapacity, 5);
    EXPECT_THAT(array, ElementsAre(Fragile(1), Fragile(2), Fragile(3)));
}

TEST(KyDynArray, AThrowingCopyDuringAShiftLeaksNothing) {
    const FragileWatch all;
    for (long nCopies = 0; nCopies < 4; ++nCopies) {
        KyDynArray<Fragile> array(8, 2);
        Fill(array, {1, 2, 3});
        const Fragile value(9);
        const FragileWatch watch(nCopies);

        EXPECT_THROW(array.InsertHead(value), std::runtime_error);
    }
    EXPECT_EQ(all.Live(), 0);
}

// Element types

TEST(KyDynArray, KeepsOveralignedElementsAligned) {
    KyDynArray<Overaligned> array(0, 1);

    for (long i = 0; i < 9; ++i) {
        array.Append({i});
    }
    array.SetLength(7, true);

    EXPECT_THAT(array, Each(Property(&Overaligned::IsAligned, true)));
    EXPECT_EQ(array.m_pData[6].m_nId, 6);
}

TEST(KyDynArray, KeepsElementsThatOwnStorage) {
    KyDynArray<std::vector<long>> array(0, 0);

    for (long i = 0; i < 5; ++i) {
        array.Append(Numbers(i));
    }
    array.Move(0, 5);
    array.MoveTo(1);
    array.DelCur();

    EXPECT_THAT(array, ElementsAre(Numbers(1), Numbers(3), Numbers(4), Numbers(0)));
}

TEST(KyDynArray, NeedsDefaultConstructionAndAssignmentOfItsElementsOnly) {
    struct AssignOnly {
        AssignOnly() = default;
        explicit AssignOnly(long n) : m_n(n) {}
        AssignOnly(const AssignOnly&) = delete;
        AssignOnly& operator=(const AssignOnly&) = default;
        bool operator>(const AssignOnly& other) const { return m_n > other.m_n; }
        long m_n = 0;
    };
    KyDynArray<AssignOnly> array(0, 0);
    array.Append(AssignOnly(3));
    array.Append(AssignOnly(1));
    array.Append(AssignOnly(2));

    array.Sort(true);

    EXPECT_EQ(array.m_pData[0].m_n, 1);
    EXPECT_EQ(array.m_pData[1].m_n, 2);
    EXPECT_EQ(array.m_pData[2].m_n, 3);
}

TEST(KyDynArray, DoesNotOwnWhatItsPointersPointTo) {
    const OwnedWatch watch;
    Owned object(1);
    {
        KyDynArray<Owned*> array;
        array.Append(&object);
        array.Append(nullptr);
        array.DelCur();
        array.SetLength(0, true);
        array.Append(&object);
        array.Reset();
        array.Append(&object);
    }

    EXPECT_EQ(watch.Live(), 1);
}

TEST(KyDynArray, TakesPointersToAnIncompleteType) {
    struct Elsewhere;
    KyDynArray<Elsewhere*> array;

    array.Append(nullptr);
    array.Sort(true);

    EXPECT_THAT(array, ElementsAre(nullptr));
}

}  // namespace
