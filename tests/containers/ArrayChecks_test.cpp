// A checked build stops on each broken precondition of the arrays with one line on standard error, and never
// on what is defined. This program is compiled as a checked build whatever the library is.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TestElements.h"
#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyDynPArray.h"
#include "VexaBase/containers/KyQuene.h"

namespace {

using testing::ElementsAre;

// An array of [1, 2, 3] with the cursor at the index given.
template <class Container>
void FillTo(Container& array, long nCurIndex) {
    Fill(array, {1, 2, 3});
    array.m_nCurIndex = nCurIndex;
}

TEST(ArrayChecksDeathTest, TheLineIsAllThatIsWritten) {
    KyDynArray<long> array;

    EXPECT_DEATH(array.DelCur(),
                 "^VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::DelCur: no current element "
                 "\\(index -1, length 0\\)\n$");
}

TEST(ArrayChecksDeathTest, GetCurDataNeedsACurrentElement) {
    KyDynArray<long> array;
    FillTo(array, 3);

    EXPECT_DEATH(array.GetCurData(),
                 "VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::GetCurData: no current element "
                 "\\(index 3, length 3\\)");
}

TEST(ArrayChecksDeathTest, IndexingANegativeIndexFindsNoCurrentElement) {
    KyDynArray<long> array;
    FillTo(array, 0);

    EXPECT_DEATH(array[-2],
                 "VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::GetCurData: no current element "
                 "\\(index -2, length 3\\)");
}

TEST(ArrayChecksDeathTest, SetCurDataNeedsACurrentElement) {
    KyDynArray<long> array;
    FillTo(array, -1);

    EXPECT_DEATH(array.SetCurData(7),
                 "VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::SetCurData: no current element "
                 "\\(index -1, length 3\\)");
}

TEST(ArrayChecksDeathTest, GetAtNeedsAnIndexInsideTheArray) {
    KyDynArray<long> array;
    FillTo(array, 0);

    EXPECT_DEATH(array.GetAt(3),
                 "VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::GetAt: index out of range "
                 "\\(index 3, length 3\\)");
    EXPECT_DEATH(array.GetAt(-1),
                 "VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::GetAt: index out of range "
                 "\\(index -1, length 3\\)");
}

TEST(ArrayChecksDeathTest, InsertCurNeedsACursorInsideTheArrayOrAtItsEnd) {
    KyDynArray<long> array;
    FillTo(array, -1);

    EXPECT_DEATH(array.InsertCur(7),
                 "VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::InsertCur: cursor out of range "
                 "\\(index -1, length 3\\)");
    EXPECT_DEATH(array.Insert(4, 7),
                 "VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::InsertCur: cursor out of range "
                 "\\(index 4, length 3\\)");
}

TEST(ArrayChecksDeathTest, DelCurNeedsACurrentElement) {
    KyDynArray<long> array;
    FillTo(array, 3);

    EXPECT_DEATH(array.DelCur(),
                 "VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::DelCur: no current element "
                 "\\(index 3, length 3\\)");
}

TEST(ArrayChecksDeathTest, ReAllocateNeedsALengthOfZeroOrMore) {
    KyDynArray<long> array;
    KyDynPArray<Owned> owning;

    EXPECT_DEATH(
        array.ReAllocate(-1),
        "VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::ReAllocate: negative length \\(-1\\)");
    EXPECT_DEATH(
        owning.ReAllocate(-7),
        "VexaBase/containers/KyDynPArray\\.h:[0-9]+: KyDynPArray::ReAllocate: negative length \\(-7\\)");
}

TEST(ArrayChecksDeathTest, GrowthNeedsAStepOfZeroOrMore) {
    KyDynArray<long> array(2, -1);
    KyDynPArray<Owned> owning(0, -3);
    array.ReAllocate(2);

    EXPECT_DEATH(
        array.ReAllocate(3),
        "VexaBase/containers/KyDynArray\\.h:[0-9]+: KyDynArray::ReAllocate: negative growth step \\(-1\\)");
    EXPECT_DEATH(owning.Append(nullptr), "KyDynArray::ReAllocate: negative growth step \\(-3\\)");
}

TEST(ArrayChecksDeathTest, MoveOfTheOwningArrayNeedsPositionsInsideIt) {
    KyDynPArray<Owned> array;
    Adopt(array, {1, 2, 3});

    EXPECT_DEATH(array.Move(3, 0), "KyDynArray::GetCurData: no current element \\(index 3, length 3\\)");
    EXPECT_DEATH(array.Move(0, 4), "KyDynArray::InsertCur: cursor out of range \\(index 4, length 3\\)");
}

TEST(ArrayChecksDeathTest, MoveNeedsPositionsInsideTheArray) {
    KyDynArray<long> array;
    FillTo(array, 0);

    EXPECT_DEATH(array.Move(3, 0), "KyDynArray::GetCurData: no current element \\(index 3, length 3\\)");
    EXPECT_DEATH(array.Move(0, 4), "KyDynArray::InsertCur: cursor out of range \\(index 4, length 3\\)");
}

TEST(ArrayChecksDeathTest, DelCurOfTheOwningArrayNeedsACurrentElement) {
    KyDynPArray<Owned> array;
    Adopt(array, {1, 2});
    array.m_nCurIndex = -1;

    EXPECT_DEATH(array.DelCur(),
                 "VexaBase/containers/KyDynPArray\\.h:[0-9]+: KyDynPArray::DelCur: no current element "
                 "\\(index -1, length 2\\)");
}

TEST(ArrayChecksDeathTest, TheFixedArrayNeedsAnIndexInsideIt) {
    KyArray<long> array;
    array.ReAllocate(2, false);
    const KyArray<long>& constant = array;

    EXPECT_DEATH(array[2],
                 "VexaBase/containers/KyArray\\.h:[0-9]+: KyArray::operator\\[\\]: index out of range "
                 "\\(index 2, length 2\\)");
    EXPECT_DEATH(constant[-1],
                 "VexaBase/containers/KyArray\\.h:[0-9]+: KyArray::operator\\[\\]: index out of range "
                 "\\(index -1, length 2\\)");
}

TEST(ArrayChecks, WhatIsDefinedIsNotStopped) {
    KyDynArray<long> array(0, 0);
    array.MoveToLast();
    array.MoveTo(99);
    array.MoveToPre();
    array.Reset();
    Fill(array, {1, 2, 3});
    array.Insert(3, 4);
    array.MoveToFirst();
    array.DelCur();
    array.MoveToNext();
    array.Move(2, 0);
    array[5] = 6;
    array.SetLength(0, false);
    array.SetLength(-3, true);
    array.SetLength(0, true);
    array.Sort(true);

    EXPECT_EQ(array.m_nLength, 0);
}

TEST(ArrayChecks, TheOwningArrayIgnoresAnInvalidCursorWhereItSaysSo) {
    const OwnedWatch watch;
    KyDynPArray<Owned> array;
    Adopt(array, {1, 2, nNullId});

    for (const long i : {-1L, 3L, 50L}) {
        array.m_nCurIndex = i;
        array.ReleaseCur();
        EXPECT_EQ(array.TakeOffCur(), nullptr);
    }
    array.ReleaseAll();

    EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2));
}

TEST(ArrayChecks, ANegativeIndexOfAQueueIsTheSentinelsSlot) {
    KyListQuene<long> queue;
    queue.EnQuene(1);

    EXPECT_EQ(&queue[-1], &queue.m_list.m_pHead->m_data);
}

}  // namespace
