#include "VexaBase/containers/KyDynArrayBase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <numeric>
#include <string>
#include <type_traits>
#include <vector>

#include "CallRecorder.h"
#include "TestElements.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyXList.h"

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::UnorderedElementsAre;

// The least that a container has to bring along: the cursor operations over a std::vector. What is positional
// comes from the base.
class MinimalArray : public KyDynArrayBase<char> {
public:
    MinimalArray() = default;
    explicit MinimalArray(const char* pszElements) { Set(pszElements); }

    void ReAllocate(long n) override {
        m_elements.resize(static_cast<std::size_t>(n));
        m_nLength = n;
    }
    void SetLength(long n, bool) override { ReAllocate(n); }
    char& GetCurData() override { return m_elements[static_cast<std::size_t>(m_nCurIndex)]; }
    void SetCurData(const char& x) override { GetCurData() = x; }
    char* GetFirst() const override { return m_nLength != 0 ? Data() : nullptr; }
    char* GetNext(const char* p) const override {
        return p == nullptr || p == Data() + m_nLength - 1 ? nullptr : At(p + 1);
    }
    char* GetPre(const char* p) const override { return p == nullptr || p == Data() ? nullptr : At(p - 1); }
    char* GetLast() const override { return m_nLength != 0 ? Data() + m_nLength - 1 : nullptr; }
    char* GetAt(long i) const override { return Data() + i; }
    void InsertCur(const char& x) override {
        const char value = x;
        m_elements.insert(m_elements.begin() + m_nCurIndex, value);
        ++m_nLength;
    }
    void DelCur() override {
        m_elements.erase(m_elements.begin() + m_nCurIndex);
        --m_nLength;
        --m_nCurIndex;
    }
    void Sort(bool) override {}
    void Sort(int (*)(const char&, const char&)) override {}

    void Set(const char* pszElements) {
        const std::string sElements = pszElements;
        m_elements.assign(sElements.begin(), sElements.end());
        m_nLength = static_cast<long>(m_elements.size());
    }
    std::string Text() const { return {m_elements.begin(), m_elements.end()}; }

private:
    char* Data() const { return const_cast<char*>(m_elements.data()); }
    char* At(const char* p) const { return Data() + (p - m_elements.data()); }

    std::vector<char> m_elements;
};

using RecordingArray = Recording<MinimalArray>;

TEST(KyDynArrayBase, ANewContainerIsEmptyAndHasNoCurrentElement) {
    const MinimalArray array;

    EXPECT_EQ(array.m_nLength, 0);
    EXPECT_EQ(array.m_nCurIndex, -1);
    EXPECT_EQ(array.GetLength(), 0);
    EXPECT_EQ(array.GetCurIndex(), -1);
}

TEST(KyDynArrayBase, MoveToFirstIsIndexZeroEvenWhenEmpty) {
    MinimalArray array;

    array.MoveToFirst();

    EXPECT_EQ(array.m_nCurIndex, 0);
}

TEST(KyDynArrayBase, MoveToLastOnAnEmptyContainerLeavesTheCursorAtMinusOne) {
    MinimalArray array;
    array.MoveTo(7);

    array.MoveToLast();

    EXPECT_EQ(array.m_nCurIndex, -1);
}

TEST(KyDynArrayBase, MoveToLastIsTheLastIndex) {
    MinimalArray array("ABCD");

    array.MoveToLast();

    EXPECT_EQ(array.m_nCurIndex, 3);
}

TEST(KyDynArrayBase, TheCursorStepsPastEitherEndWithoutBeingHeld) {
    MinimalArray array("AB");
    array.MoveTo(1);

    array.MoveToNext();
    EXPECT_EQ(array.GetCurIndex(), 2);
    array.MoveToNext();
    EXPECT_EQ(array.GetCurIndex(), 3);

    array.MoveToFirst();
    array.MoveToPre();
    EXPECT_EQ(array.GetCurIndex(), -1);
    array.MoveToPre();
    EXPECT_EQ(array.GetCurIndex(), -2);
    EXPECT_EQ(array.GetLength(), 2);
}

TEST(KyDynArrayBase, MoveToTakesAnyIndex) {
    MinimalArray array("AB");

    for (const long i : {0L, 1L, 2L, 1000L, -1L, -1000L}) {
        array.MoveTo(i);

        EXPECT_EQ(array.m_nCurIndex, i);
        EXPECT_EQ(array.m_nLength, 2);
    }
}

TEST(KyDynArrayBase, TheRangeTestEndsALoopBehindTheLastElement) {
    MinimalArray array("ABC");
    std::string sSeen;

    for (array.MoveToFirst(); array.m_nCurIndex >= 0 && array.m_nCurIndex < array.m_nLength;
         array.MoveToNext()) {
        sSeen += array.GetCurData();
    }

    EXPECT_EQ(sSeen, "ABC");
    EXPECT_EQ(array.m_nCurIndex, 3);
}

TEST(KyDynArrayBase, ResetDeletesFromTheEnd) {
    RecordingArray array("ABC");

    array.Reset();

    EXPECT_THAT(array.TakeCalls(),
                ElementsAre("Reset", "MoveToLast", "DelCur", "MoveToLast", "DelCur", "MoveToLast", "DelCur"));
    EXPECT_EQ(array.m_nLength, 0);
    EXPECT_EQ(array.m_nCurIndex, -1);
}

TEST(KyDynArrayBase, ResetOfAnEmptyContainerDeletesNothingAndLeavesNoCurrentElement) {
    RecordingArray array;
    array.m_nCurIndex = 5;

    array.Reset();

    EXPECT_THAT(array.TakeCalls(), ElementsAre("Reset"));
    EXPECT_EQ(array.m_nLength, 0);
    EXPECT_EQ(array.m_nCurIndex, -1);
}

TEST(KyDynArrayBase, IndexingInsideMovesTheCursorAndDoesNotGrow) {
    RecordingArray array("ABC");

    char& element = array[1];

    EXPECT_EQ(&element, array.GetFirst() + 1);
    EXPECT_THAT(array.TakeCalls(), ElementsAre("operator[] 1", "MoveTo 1", "GetCurData", "GetFirst"));
    EXPECT_EQ(array.m_nLength, 3);
    EXPECT_EQ(array.m_nCurIndex, 1);
}

TEST(KyDynArrayBase, IndexingAtOrPastTheEndGrowsToJustThatElement) {
    RecordingArray array("ABC");

    array[3] = 'D';
    EXPECT_THAT(array.TakeCalls(), ElementsAre("operator[] 3", "ReAllocate 4", "MoveTo 3", "GetCurData"));
    array[6] = 'G';

    EXPECT_THAT(array.TakeCalls(), ElementsAre("operator[] 6", "ReAllocate 7", "MoveTo 6", "GetCurData"));
    EXPECT_EQ(array.m_nLength, 7);
    EXPECT_EQ(array.m_nCurIndex, 6);
    EXPECT_EQ(array.Text(), std::string("ABCD\0\0G", 7));
}

TEST(KyDynArrayBase, InsertMovesTheCursorAndInsertsThere) {
    RecordingArray array("ABD");

    array.Insert(2, 'C');

    EXPECT_THAT(array.TakeCalls(), ElementsAre("Insert 2", "MoveTo 2", "InsertCur"));
    EXPECT_EQ(array.Text(), "ABCD");
    EXPECT_EQ(array.m_nCurIndex, 2);
}

TEST(KyDynArrayBase, InsertAtTheLengthAppends) {
    RecordingArray array("AB");

    array.Insert(2, 'C');

    EXPECT_EQ(array.Text(), "ABC");
    EXPECT_EQ(array.m_nCurIndex, 2);
}

TEST(KyDynArrayBase, InsertHeadMovesTheCursorToTheFirstElementAndInsertsThere) {
    RecordingArray array("BC");
    array.m_nCurIndex = 1;

    array.InsertHead('A');

    EXPECT_THAT(array.TakeCalls(), ElementsAre("InsertHead", "MoveToFirst", "InsertCur"));
    EXPECT_EQ(array.Text(), "ABC");
    EXPECT_EQ(array.m_nCurIndex, 0);
}

TEST(KyDynArrayBase, AppendMovesTheCursorBehindTheLastElementAndInsertsThere) {
    RecordingArray array("ABCD");

    const long nIndex = array.Append('E');

    EXPECT_EQ(nIndex, 4);
    EXPECT_THAT(array.TakeCalls(), ElementsAre("Append", "MoveTo 4", "InsertCur"));
    EXPECT_EQ(array.Text(), "ABCDE");
    EXPECT_EQ(array.m_nCurIndex, 4);
}

TEST(KyDynArrayBase, AppendReturnsTheCursorIndexWhateverTheInsertionMadeOfIt) {
    class Wandering : public MinimalArray {
        void InsertCur(const char& x) override {
            MinimalArray::InsertCur(x);
            m_nCurIndex = 42;
        }
    };
    Wandering array;

    EXPECT_EQ(array.Append('A'), 42);
}

TEST(KyDynArrayBase, MoveForwardInsertsThenDeletesThenReturnsToTheElement) {
    RecordingArray array("ABCD");

    const bool bMoved = array.Move(0, 3);

    EXPECT_TRUE(bMoved);
    EXPECT_THAT(array.TakeCalls(), ElementsAre("Move 0 3", "MoveTo 0", "GetCurData", "Insert 3", "MoveTo 3",
                                               "InsertCur", "MoveTo 0", "DelCur", "MoveTo 2"));
    EXPECT_EQ(array.Text(), "BCAD");
    EXPECT_EQ(array.m_nCurIndex, 2);
}

TEST(KyDynArrayBase, MoveBackwardDeletesOnePlaceFurtherOn) {
    RecordingArray array("ABCD");

    const bool bMoved = array.Move(2, 0);

    EXPECT_TRUE(bMoved);
    EXPECT_THAT(array.TakeCalls(), ElementsAre("Move 2 0", "MoveTo 2", "GetCurData", "Insert 0", "MoveTo 0",
                                               "InsertCur", "MoveTo 3", "DelCur", "MoveTo 0"));
    EXPECT_EQ(array.m_nCurIndex, 0);
}

TEST(KyDynArrayBase, MoveToTheLengthIsMoveToTheEnd) {
    RecordingArray array("ABCD");

    const bool bMoved = array.Move(1, 4);

    EXPECT_TRUE(bMoved);
    EXPECT_EQ(array.Text(), "ACDB");
    EXPECT_EQ(array.m_nCurIndex, 3);
}

TEST(KyDynArrayBase, MoveToWhereTheElementStandsCallsNothing) {
    RecordingArray array("ABCD");
    array.m_nCurIndex = 1;

    EXPECT_FALSE(array.Move(2, 2));
    EXPECT_THAT(array.TakeCalls(), ElementsAre("Move 2 2"));
    EXPECT_FALSE(array.Move(2, 3));

    EXPECT_THAT(array.TakeCalls(), ElementsAre("Move 2 3"));
    EXPECT_EQ(array.Text(), "ABCD");
    EXPECT_EQ(array.m_nCurIndex, 1);
}

TEST(KyDynArrayBase, MoveHandsTheElementOverByReference) {
    // The reference is the first element's own address, so an insertion that overwrites it before it reads
    // sees that.
    class Overwriting : public MinimalArray {
        void Insert(long i, const char& x) override {
            *GetFirst() = 'x';
            MinimalArray::Insert(i, x);
        }
    };
    Overwriting array;
    array.Set("ABC");

    array.Move(0, 3);

    EXPECT_EQ(array.Text(), "BCx");
}

TEST(KyDynArrayBase, TheRangeWalksByGetFirstAndGetNextAndLeavesTheCursor) {
    RecordingArray array("AB");
    array.m_nCurIndex = 1;
    std::string sSeen;

    for (const char c : static_cast<KyDynArrayBase<char>&>(array)) {
        sSeen += c;
    }

    EXPECT_EQ(sSeen, "AB");
    EXPECT_THAT(array.TakeCalls(), ElementsAre("GetFirst", "GetNext", "GetNext"));
    EXPECT_EQ(array.m_nCurIndex, 1);
}

TEST(KyDynArrayBase, TheRangeOfAConstContainerGivesConstElements) {
    const MinimalArray array("ABC");
    const KyDynArrayBase<char>& base = array;

    static_assert(std::is_same_v<decltype(*base.begin()), const char&>);
    EXPECT_EQ(std::string(base.begin(), base.end()), "ABC");
}

TEST(KyDynArrayBase, TheIteratorIsAForwardIterator) {
    using Iterator = KyDynArrayBase<char>::iterator;
    using ConstIterator = KyDynArrayBase<char>::const_iterator;
    static_assert(
        std::is_same_v<std::iterator_traits<Iterator>::iterator_category, std::forward_iterator_tag>);
    static_assert(std::is_same_v<std::iterator_traits<ConstIterator>::value_type, char>);
    static_assert(std::is_convertible_v<Iterator, ConstIterator>);
    static_assert(!std::is_convertible_v<ConstIterator, Iterator>);
    MinimalArray array("AB");
    KyDynArrayBase<char>& base = array;

    Iterator it = base.begin();
    const ConstIterator first = it;
    const Iterator before = it++;

    EXPECT_EQ(before, base.begin());
    EXPECT_EQ(first, ConstIterator(before));
    EXPECT_NE(it, before);
    EXPECT_EQ(*it, 'B');
    EXPECT_EQ(++it, base.end());
    EXPECT_EQ(Iterator(), Iterator());
}

TEST(KyDynArrayBase, TheIteratorReachesMembersAndWrites) {
    KyDynArray<Keyed> array;
    Fill(array, {{1, 10}, {2, 20}});
    KyDynArrayBase<Keyed>& base = array;

    std::next(base.begin())->m_nTag = 21;

    EXPECT_THAT(base, ElementsAre(Keyed{1, 10}, Keyed{2, 21}));
}

TEST(KyDynArrayBase, ContainersAreNeitherCopiedNorMoved) {
    using Base = KyDynArrayBase<long>;
    static_assert(!std::is_copy_constructible_v<MinimalArray> && !std::is_move_constructible_v<MinimalArray>);
    static_assert(!std::is_copy_assignable_v<MinimalArray> && !std::is_move_assignable_v<MinimalArray>);
    static_assert(!std::is_copy_assignable_v<Base> && !std::is_move_assignable_v<Base>);
    static_assert(!std::is_copy_constructible_v<KyDynArray<long>> &&
                  !std::is_copy_assignable_v<KyDynArray<long>>);
    static_assert(!std::is_move_constructible_v<KyDynArray<long>> &&
                  !std::is_move_assignable_v<KyDynArray<long>>);
    static_assert(!std::is_copy_constructible_v<KyList<long>> && !std::is_copy_assignable_v<KyList<long>>);
    static_assert(!std::is_copy_constructible_v<KyDList<long>> && !std::is_copy_assignable_v<KyDList<long>>);
    static_assert(!std::is_copy_constructible_v<KyXList<long>> && !std::is_copy_assignable_v<KyXList<long>>);
}

TEST(KyDynArrayBase, IsAbstractAndDestroysThroughTheBase) {
    static_assert(std::is_abstract_v<KyDynArrayBase<long>>);
    static_assert(std::has_virtual_destructor_v<KyDynArrayBase<long>>);
    static_assert(std::is_polymorphic_v<KyDynArrayBase<long>>);
    const FragileWatch watch;

    std::unique_ptr<KyDynArrayBase<Fragile>> pArray = std::make_unique<KyDynArray<Fragile>>(5);
    pArray->Append(1);
    EXPECT_EQ(watch.Live(), 5);
    pArray.reset();

    EXPECT_EQ(watch.Live(), 0);
}

TEST(KyDynArrayBase, KnowsItsClassAtRunTime) {
    KyDynArray<long> array;
    KyDynArrayBase<long>& base = array;

    EXPECT_EQ(dynamic_cast<KyDynArray<long>*>(&base), &array);
    EXPECT_EQ(dynamic_cast<KyList<long>*>(&base), nullptr);
}

// What holds for every container of plain values behind the protocol.
template <class Container>
class EveryContainer : public testing::Test {
protected:
    Container m_container;
    KyDynArrayBase<long>& m_base = m_container;
};

using Containers = testing::Types<KyDynArray<long>, KyList<long>, KyDList<long>, KyXList<long>>;
class ContainerNames {
public:
    template <class Container>
    static std::string GetName(int) {
        return std::is_same_v<Container, KyDynArray<long>> ? "KyDynArray"
               : std::is_same_v<Container, KyList<long>>   ? "KyList"
               : std::is_same_v<Container, KyDList<long>>  ? "KyDList"
                                                           : "KyXList";
    }
};
TYPED_TEST_SUITE(EveryContainer, Containers, ContainerNames);

TYPED_TEST(EveryContainer, StartsEmpty) {
    EXPECT_EQ(this->m_base.GetLength(), 0);
    EXPECT_EQ(this->m_base.GetCurIndex(), -1);
    EXPECT_EQ(this->m_base.GetFirst(), nullptr);
    EXPECT_EQ(this->m_base.GetLast(), nullptr);
    EXPECT_THAT(this->m_base, ElementsAre());
    EXPECT_THAT(this->m_container, ElementsAre());
}

TYPED_TEST(EveryContainer, MoveToLastWhenEmptyLeavesTheCursorAtMinusOne) {
    this->m_base.MoveToLast();

    EXPECT_EQ(this->m_base.m_nCurIndex, -1);
}

TYPED_TEST(EveryContainer, IndexingPastTheEndGrowsMovesTheCursorAndReturnsThatElement) {
    Fill(this->m_base, {1, 2, 3});

    long& element = this->m_base[5];

    EXPECT_EQ(this->m_base.m_nLength, 6);
    EXPECT_EQ(this->m_base.m_nCurIndex, 5);
    EXPECT_EQ(&element, this->m_base.GetLast());
    EXPECT_EQ(&element, this->m_base.GetAt(5));
    EXPECT_EQ(*this->m_base.GetAt(2), 3);
}

TYPED_TEST(EveryContainer, AppendReturnsTheIndexOfTheNewElement) {
    for (const long i : {0L, 1L, 2L, 3L, 4L}) {
        EXPECT_EQ(this->m_base.Append(10 * i), i);
        EXPECT_EQ(this->m_base.m_nCurIndex, i);
    }

    EXPECT_THAT(this->m_base, ElementsAre(0, 10, 20, 30, 40));
}

TYPED_TEST(EveryContainer, InsertAtTheLengthBehavesAsAppend) {
    Fill(this->m_base, {1, 2});

    this->m_base.Insert(2, 3);

    EXPECT_THAT(this->m_base, ElementsAre(1, 2, 3));
    EXPECT_EQ(this->m_base.m_nCurIndex, 2);
}

TYPED_TEST(EveryContainer, InsertPutsTheElementAtThatIndexAndTheCursorOnIt) {
    Fill(this->m_base, {1, 2, 3});

    this->m_base.Insert(1, 9);
    EXPECT_EQ(this->m_base.m_nCurIndex, 1);
    this->m_base.InsertHead(8);

    EXPECT_EQ(this->m_base.m_nCurIndex, 0);
    EXPECT_THAT(this->m_base, ElementsAre(8, 1, 9, 2, 3));
}

TYPED_TEST(EveryContainer, InsertCurTakesTheCurrentIndex) {
    Fill(this->m_base, {1, 2, 3});
    this->m_base.MoveTo(1);

    this->m_base.InsertCur(9);

    EXPECT_THAT(this->m_base, ElementsAre(1, 9, 2, 3));
    EXPECT_EQ(this->m_base.m_nCurIndex, 1);
    EXPECT_EQ(this->m_base.GetCurData(), 9);
}

TYPED_TEST(EveryContainer, DelCurStepsBackSoThatMoveToNextLandsOnTheFollower) {
    Fill(this->m_base, {1, 2, 3});
    this->m_base.MoveTo(1);

    this->m_base.DelCur();
    EXPECT_EQ(this->m_base.m_nCurIndex, 0);
    this->m_base.MoveToNext();

    EXPECT_EQ(this->m_base.GetCurData(), 3);
    EXPECT_THAT(this->m_base, ElementsAre(1, 3));
}

TYPED_TEST(EveryContainer, DelCurOfTheFirstElementLeavesNoCurrentElement) {
    Fill(this->m_base, {1, 2, 3});
    this->m_base.MoveToFirst();

    this->m_base.DelCur();

    EXPECT_EQ(this->m_base.m_nCurIndex, -1);
    EXPECT_THAT(this->m_base, ElementsAre(2, 3));
}

TYPED_TEST(EveryContainer, SetCurDataOverwritesTheCurrentElementAlone) {
    Fill(this->m_base, {1, 2, 3});
    this->m_base.MoveTo(1);

    this->m_base.SetCurData(9);

    EXPECT_THAT(this->m_base, ElementsAre(1, 9, 3));
    EXPECT_EQ(this->m_base.GetCurData(), 9);
    EXPECT_EQ(this->m_base.m_nCurIndex, 1);
}

TYPED_TEST(EveryContainer, MoveToWhereTheElementStandsChangesNothing) {
    Fill(this->m_base, {1, 2, 3, 4});
    this->m_base.MoveTo(1);

    EXPECT_FALSE(this->m_base.Move(2, 2));
    EXPECT_FALSE(this->m_base.Move(2, 3));

    EXPECT_THAT(this->m_base, ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(this->m_base.m_nCurIndex, 1);
}

TYPED_TEST(EveryContainer, MoveForwardStandsBeforeTheTarget) {
    Fill(this->m_base, {1, 2, 3, 4});

    const bool bMoved = this->m_base.Move(0, 3);

    EXPECT_TRUE(bMoved);
    EXPECT_THAT(this->m_base, ElementsAre(2, 3, 1, 4));
    EXPECT_EQ(this->m_base.m_nCurIndex, 2);
}

TYPED_TEST(EveryContainer, MoveBackwardIsExactInListsAndRepeatsTheShiftedNeighbourInTheArray) {
    Fill(this->m_base, {1, 2, 3, 4});

    const bool bMoved = this->m_base.Move(2, 0);

    EXPECT_TRUE(bMoved);
    EXPECT_EQ(this->m_base.m_nCurIndex, 0);
    if (std::is_same_v<TypeParam, KyDynArray<long>>) {
        EXPECT_THAT(this->m_base, ElementsAre(2, 1, 2, 4));
    } else {
        EXPECT_THAT(this->m_base, ElementsAre(3, 1, 2, 4));
    }
}

TYPED_TEST(EveryContainer, TheElementsAreWalkedByAddressWithoutTheCursor) {
    Fill(this->m_base, {1, 2, 3});
    this->m_base.MoveTo(1);
    std::vector<long> forward;
    std::vector<long> backward;

    for (const long* p = this->m_base.GetFirst(); p != nullptr; p = this->m_base.GetNext(p)) {
        forward.push_back(*p);
    }
    for (const long* p = this->m_base.GetLast(); p != nullptr; p = this->m_base.GetPre(p)) {
        backward.push_back(*p);
    }

    EXPECT_THAT(forward, ElementsAre(1, 2, 3));
    EXPECT_THAT(backward, ElementsAre(3, 2, 1));
    EXPECT_EQ(*this->m_base.GetAt(2), 3);
    EXPECT_EQ(*this->m_base.GetAt(0), 1);
    EXPECT_EQ(this->m_base.m_nCurIndex, 1);
}

TYPED_TEST(EveryContainer, WalkingFromNullGivesNull) {
    Fill(this->m_base, {1, 2});

    EXPECT_EQ(this->m_base.GetNext(nullptr), nullptr);
    EXPECT_EQ(this->m_base.GetPre(nullptr), nullptr);
}

TYPED_TEST(EveryContainer, ResetEmptiesWhereverTheCursorWas) {
    Fill(this->m_base, {1, 2, 3});
    this->m_base.MoveTo(1);

    this->m_base.Reset();

    EXPECT_EQ(this->m_base.m_nLength, 0);
    EXPECT_EQ(this->m_base.m_nCurIndex, -1);
    EXPECT_EQ(this->m_base.GetFirst(), nullptr);
    EXPECT_THAT(this->m_base, ElementsAre());
}

TYPED_TEST(EveryContainer, SetLengthWithKeepingKeepsTheFirstElements) {
    Fill(this->m_base, {1, 2, 3, 4});

    this->m_base.SetLength(2, true);
    EXPECT_THAT(this->m_base, ElementsAre(1, 2));
    this->m_base.SetLength(3, true);

    EXPECT_EQ(this->m_base.m_nLength, 3);
    EXPECT_EQ(*this->m_base.GetAt(0), 1);
    EXPECT_EQ(*this->m_base.GetAt(1), 2);
}

TYPED_TEST(EveryContainer, ServesTheStandardAlgorithmsWithoutMovingTheCursor) {
    Fill(this->m_container, {3, 1, 2});
    this->m_container.MoveTo(1);
    auto& container = this->m_container;

    EXPECT_EQ(std::accumulate(container.begin(), container.end(), 0L), 6);
    EXPECT_EQ(*std::max_element(container.begin(), container.end()), 3);
    EXPECT_EQ(std::distance(container.begin(), container.end()), 3);
    EXPECT_TRUE(std::any_of(std::begin(container), std::end(container), [](long x) { return x == 1; }));
    std::transform(container.begin(), container.end(), container.begin(), [](long x) { return 10 * x; });
    std::reverse(container.begin(), container.end());

    EXPECT_THAT(container, ElementsAre(20, 10, 30));
    EXPECT_EQ(container.m_nCurIndex, 1);
}

TYPED_TEST(EveryContainer, ServesTheMatchersAsAContainer) {
    Fill(this->m_container, {3, 1, 2});
    const auto& container = this->m_container;

    EXPECT_THAT(container, ElementsAreArray({3, 1, 2}));
    EXPECT_THAT(container, UnorderedElementsAre(1, 2, 3));
    EXPECT_THAT(container, Contains(2));
    EXPECT_THAT(container, Each(testing::Gt(0)));
}

TYPED_TEST(EveryContainer, IsARangeThroughAConstReference) {
    Fill(this->m_container, {1, 2});
    const TypeParam& container = this->m_container;

    static_assert(std::is_same_v<decltype(*container.begin()), const long&>);
    static_assert(std::is_same_v<decltype(*this->m_container.begin()), long&>);
    EXPECT_EQ(std::vector<long>(container.begin(), container.end()), (std::vector<long>{1, 2}));
}

TYPED_TEST(EveryContainer, TheConstOperationsLeaveTheCursorAlone) {
    Fill(this->m_container, {1, 2, 3});
    this->m_container.MoveTo(1);
    const TypeParam& container = this->m_container;

    container.GetFirst();
    container.GetLast();
    container.GetAt(2);
    container.GetNext(container.GetFirst());
    container.GetPre(container.GetLast());
    container.GetLength();
    static_cast<void>(std::distance(container.begin(), container.end()));

    EXPECT_EQ(container.GetCurIndex(), 1);
}

}  // namespace
