// The sorts of KyDynArray and KyDynPArray.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <numeric>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "AllocationLog.h"
#include "TestElements.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyDynPArray.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

// The tags of the elements or objects that were compared, pair by pair.
std::vector<std::pair<long, long>> g_compared;

// A three-way comparison by the key that notes what it is asked.
int CompareKeys(const Keyed& a, const Keyed& b) {
    g_compared.emplace_back(a.m_nTag, b.m_nTag);
    return a.m_nKey < b.m_nKey ? -1 : a.m_nKey > b.m_nKey ? 1 : 0;
}

int ComparePointersByKey(Keyed* const& a, Keyed* const& b) { return CompareKeys(*a, *b); }

int CompareNothing(const long&, const long&) { return 0; }
int CompareLongs(const long& a, const long& b) { return a < b ? -1 : a > b ? 1 : 0; }

// An element whose own operators note what they are asked.
struct Noting {
    long m_nKey = 0;
    long m_nTag = 0;

    friend bool operator>(const Noting& a, const Noting& b) {
        g_compared.emplace_back(a.m_nTag, b.m_nTag);
        return a.m_nKey > b.m_nKey;
    }
    friend bool operator<(const Noting& a, const Noting& b) {
        g_compared.emplace_back(a.m_nTag, b.m_nTag);
        return a.m_nKey < b.m_nKey;
    }
};

// An element that counts how often one was made.
struct Made {
    Made(long nKey = 0) : m_nKey(nKey) { ++s_nMade; }

    friend bool operator>(const Made& a, const Made& b) { return a.m_nKey > b.m_nKey; }
    friend bool operator<(const Made& a, const Made& b) { return a.m_nKey < b.m_nKey; }

    long m_nKey;

    inline static long s_nMade = 0;
};

// Every pair i < j of n elements, i ascending, then j: what the sort asks.
std::vector<std::pair<long, long>> AllPairs(long n) {
    std::vector<std::pair<long, long>> pairs;
    for (long i = 0; i < n; ++i) {
        for (long j = i + 1; j < n; ++j) {
            pairs.emplace_back(i, j);
        }
    }
    return pairs;
}

// Calls visit with every sequence of nLength keys below nKeys.
void ForEverySequence(long nLength, long nKeys, const std::function<void(const std::vector<long>&)>& visit) {
    std::vector<long> keys(static_cast<std::size_t>(nLength), 0);
    for (;;) {
        visit(keys);
        std::size_t i = 0;
        while (i < keys.size() && ++keys[i] == nKeys) {
            keys[i++] = 0;
        }
        if (i == keys.size()) {
            return;
        }
    }
}

template <class Element>
void FillTagged(KyDynArray<Element>& array, const std::vector<long>& keys) {
    for (const long nKey : keys) {
        array.Append({nKey, array.m_nLength});
    }
}

template <class Element>
void AdoptTagged(KyDynPArray<Element>& array, const std::vector<long>& keys) {
    for (const long nKey : keys) {
        array.Append(new Element{nKey, array.m_nLength});
    }
}

long TagOf(const Keyed& x) { return x.m_nTag; }
long TagOf(const Noting& x) { return x.m_nTag; }
template <class Object>
long TagOf(const Object* p) {
    return p->m_nTag;
}

template <class Container>
std::vector<long> Tags(const Container& container) {
    std::vector<long> tags;
    for (const auto& x : container) {
        tags.push_back(TagOf(x));
    }
    return tags;
}

// The positions of the keys in the order of a stable sort.
std::vector<long> StableOrder(const std::vector<long>& keys, bool bAscending) {
    std::vector<long> tags(keys.size());
    std::iota(tags.begin(), tags.end(), 0L);
    std::stable_sort(tags.begin(), tags.end(), [&](long a, long b) {
        const long nKeyA = keys[static_cast<std::size_t>(a)];
        const long nKeyB = keys[static_cast<std::size_t>(b)];
        return bAscending ? nKeyA < nKeyB : nKeyA > nKeyB;
    });
    return tags;
}

std::vector<long> Sorted(std::vector<long> values, bool bAscending) {
    KyDynArray<long> array;
    for (const long x : values) {
        array.Append(x);
    }
    array.Sort(bAscending);
    return {array.begin(), array.end()};
}

std::vector<int> SortedBytes(std::initializer_list<int> bytes, bool bAscending) {
    KyDynArray<char> array;
    for (const int x : bytes) {
        array.Append(static_cast<char>(x));
    }
    array.Sort(bAscending);
    std::vector<int> sorted;
    for (const char c : array) {
        sorted.push_back(static_cast<unsigned char>(c));
    }
    return sorted;
}

// Few elements

TEST(ArraySorting, ArraysOfLengthZeroAndOneAreLeftAloneAndNothingIsAllocated) {
    for (const long nLength : {0L, 1L}) {
        g_compared.clear();
        KyDynArray<Keyed> array(4, 1);
        KyDynPArray<Keyed> owning(4, 1);
        FillTagged(array, std::vector<long>(static_cast<std::size_t>(nLength), 7));
        AdoptTagged(owning, std::vector<long>(static_cast<std::size_t>(nLength), 7));
        array.m_nCurIndex = 3;
        const AllocationLog log;

        array.Sort(true);
        array.Sort(false);
        array.Sort(CompareKeys);
        owning.Sort(true);
        owning.Sort(false);
        owning.Sort(CompareKeys);
        owning.Sort(ComparePointersByKey);

        const std::vector<std::size_t> singles = log.Singles();
        EXPECT_THAT(singles, IsEmpty());
        EXPECT_THAT(log.Arrays(), IsEmpty());
        EXPECT_THAT(g_compared, IsEmpty());
        EXPECT_EQ(array.m_nLength, nLength);
        EXPECT_EQ(array.m_nCurIndex, 3);
    }
}

TEST(ArraySorting, TheOnlyAllocationIsOneRankForEachElement) {
    KyDynArray<Keyed> array;
    KyDynPArray<Keyed> owning;
    FillTagged(array, {3, 1, 2, 0, 4});
    AdoptTagged(owning, {3, 1, 2});
    g_compared.reserve(100);
    const AllocationLog log;

    array.Sort(true);
    array.Sort(CompareKeys);
    owning.Sort(true);
    owning.Sort(CompareKeys);
    owning.Sort(ComparePointersByKey);

    const std::vector<std::size_t> singles = log.Singles();
    EXPECT_THAT(singles, IsEmpty());
    EXPECT_THAT(log.Arrays(), ElementsAre(40U, 40U, 24U, 24U, 24U));
    EXPECT_EQ(log.LiveArrayBytes(), 0U);
}

TEST(ArraySorting, AscendingAndDescending) {
    EXPECT_THAT(SortedBytes({3, 1, 2}, true), ElementsAre(1, 2, 3));
    EXPECT_THAT(SortedBytes({3, 1, 2}, false), ElementsAre(3, 2, 1));
    EXPECT_THAT(Sorted({3, -1, 2}, true), ElementsAre(-1, 2, 3));
    EXPECT_THAT(Sorted({3, -1, 2}, false), ElementsAre(3, 2, -1));
}

TEST(ArraySorting, BytesCompareAsSignedValues) {
    EXPECT_THAT(SortedBytes({5, 200, 7}, true), ElementsAre(200, 5, 7));
    EXPECT_THAT(SortedBytes({5, 200, 7, 127, 128, 0, 255}, false), ElementsAre(127, 7, 5, 0, 255, 200, 128));
}

TEST(ArraySorting, PointersCompareAsUnsignedAddresses) {
    const auto at = [](unsigned long nAddress) { return reinterpret_cast<char*>(nAddress); };
    KyDynArray<char*> array;
    Fill(array, {at(0x8000'0000'0000'0000UL), at(1), nullptr, at(0xFFFF'FFFF'FFFF'FFFFUL),
                 at(0x7FFF'FFFF'FFFF'FFFFUL)});
    const auto ascending = std::vector<char*>{nullptr, at(1), at(0x7FFF'FFFF'FFFF'FFFFUL),
                                              at(0x8000'0000'0000'0000UL), at(0xFFFF'FFFF'FFFF'FFFFUL)};

    array.Sort(true);
    EXPECT_TRUE(std::equal(array.begin(), array.end(), ascending.begin(), ascending.end()));
    array.Sort(false);

    EXPECT_TRUE(std::equal(array.begin(), array.end(), ascending.rbegin(), ascending.rend()));
}

TEST(ArraySorting, VoidAndFunctionPointersSortByAddressToo) {
    long numbers[2] = {};
    KyDynArray<const void*> array;
    Fill(array, {numbers + 1, numbers, nullptr});
    KyDynArray<int (*)(const long&, const long&)> functions;
    Fill(functions, {CompareLongs, CompareNothing});

    array.Sort(true);
    functions.Sort(true);

    EXPECT_THAT(array, ElementsAre(nullptr, numbers, numbers + 1));
    EXPECT_TRUE(std::less<>()(functions.m_pData[0], functions.m_pData[1]));
}

// Every small case

TEST(ArraySorting, AgreesWithAStableSortAndAsksForEveryPairInOrder) {
    for (long nLength = 0; nLength <= 6; ++nLength) {
        ForEverySequence(nLength, 4, [nLength](const std::vector<long>& keys) {
            for (const bool bAscending : {true, false}) {
                KyDynArray<Noting> array(8, 0);
                KyDynPArray<Noting> owning(8, 0);
                FillTagged(array, keys);
                AdoptTagged(owning, keys);
                const std::vector<long> expected = StableOrder(keys, bAscending);

                g_compared.clear();
                array.Sort(bAscending);
                ASSERT_EQ(Tags(array), expected);
                ASSERT_EQ(g_compared, AllPairs(nLength));
                g_compared.clear();
                owning.Sort(bAscending);

                ASSERT_EQ(Tags(owning), expected);
                ASSERT_EQ(g_compared, AllPairs(nLength));
            }
        });
    }
}

TEST(ArraySorting, AgreesWithAStableSortByAComparisonAndAsksForEveryPairInOrder) {
    for (long nLength = 0; nLength <= 6; ++nLength) {
        ForEverySequence(nLength, 4, [nLength](const std::vector<long>& keys) {
            KyDynArray<Keyed> array(8, 0);
            KyDynPArray<Keyed> owning(8, 0);
            FillTagged(array, keys);
            AdoptTagged(owning, keys);
            const std::vector<long> expected = StableOrder(keys, true);

            g_compared.clear();
            array.Sort(CompareKeys);
            ASSERT_EQ(Tags(array), expected);
            ASSERT_EQ(g_compared, AllPairs(nLength));
            g_compared.clear();
            owning.Sort(CompareKeys);

            ASSERT_EQ(Tags(owning), expected);
            ASSERT_EQ(g_compared, AllPairs(nLength));
        });
    }
}

TEST(ArraySorting, SortsEveryPermutationOfSeven) {
    std::vector<long> keys(7);
    std::iota(keys.begin(), keys.end(), 0L);
    const std::vector<long> ascending = keys;
    const std::vector<long> descending(keys.rbegin(), keys.rend());

    do {
        ASSERT_EQ(Sorted(keys, true), ascending);
        ASSERT_EQ(Sorted(keys, false), descending);
    } while (std::next_permutation(keys.begin(), keys.end()));
}

TEST(ArraySorting, APairIsAskedForWithTheEarlierElementFirst) {
    KyDynArray<Keyed> array;
    FillTagged(array, {5, 5, 5, 5});
    g_compared.clear();

    array.Sort(CompareKeys);

    using Pair = std::pair<long, long>;
    EXPECT_THAT(g_compared,
                ElementsAre(Pair(0, 1), Pair(0, 2), Pair(0, 3), Pair(1, 2), Pair(1, 3), Pair(2, 3)));
}

TEST(ArraySorting, ThePointerSortOfAnOwningArrayComparesThePointers) {
    KyDynPArray<Keyed> array;
    AdoptTagged(array, {3, 1, 2, 1});
    g_compared.clear();

    array.Sort(ComparePointersByKey);

    EXPECT_THAT(Tags(array), ElementsAre(1, 3, 2, 0));
    EXPECT_EQ(g_compared, AllPairs(4));
}

// Stability

TEST(ArraySorting, AComparisonThatAlwaysAnswersZeroLeavesTheOrder) {
    KyDynArray<long> array;
    Fill(array, {3, 1, 2, 3, 0});

    array.Sort(CompareNothing);

    EXPECT_THAT(array, ElementsAre(3, 1, 2, 3, 0));
}

TEST(ArraySorting, RecordsOfEqualKeyKeepTheirFormerOrder) {
    KyDynArray<Keyed> array;
    Fill(array, {{2, 0}, {1, 1}, {2, 2}, {1, 3}, {0, 4}, {1, 5}});

    array.Sort(CompareKeys);
    EXPECT_THAT(Tags(array), ElementsAre(4, 1, 3, 5, 0, 2));
    array.Sort(false);

    EXPECT_THAT(Tags(array), ElementsAre(0, 2, 1, 3, 5, 4));
}

TEST(ArraySorting, AnyPositiveAnswerMeansAfterAndNoNegativeOneDoes) {
    KyDynArray<long> array;
    Fill(array, {3, 1, 2});

    array.Sort([](const long& a, const long& b) { return a > b ? std::numeric_limits<int>::max() : 0; });
    EXPECT_THAT(array, ElementsAre(1, 2, 3));
    array.Sort([](const long& a, const long& b) { return a < b ? std::numeric_limits<int>::min() : -1; });

    EXPECT_THAT(array, ElementsAre(1, 2, 3));
}

// What is moved

TEST(ArraySorting, TheCursorAndTheBlockStay) {
    KyDynArray<long> array(8, 3);
    Fill(array, {3, 1, 2});
    const long* const pBlock = array.m_pData;
    for (const long i : {1L, -1L, 17L}) {
        array.m_nCurIndex = i;

        array.Sort(false);
        array.Sort(CompareLongs);

        EXPECT_EQ(array.m_nCurIndex, i);
        EXPECT_EQ(array.m_nLength, 3);
        EXPECT_EQ(array.m_nCapacity, 8);
        EXPECT_EQ(array.m_pData, pBlock);
    }
}

TEST(ArraySorting, ElementsThatStandRightAreNotAssigned) {
    KyDynArray<Fragile> array;
    Fill(array, {1, 2, 3, 4});
    const FragileWatch watch(0);

    array.Sort(true);

    EXPECT_EQ(watch.Copies(), 0);
    EXPECT_EQ(watch.Live(), 0);
}

TEST(ArraySorting, NoElementIsMadeWhereAllStandRight) {
    KyDynArray<Made> array;
    Fill(array, {1, 2, 2, 3});
    const long nBefore = Made::s_nMade;

    array.Sort(true);

    EXPECT_EQ(Made::s_nMade, nBefore);
}

TEST(ArraySorting, EachElementIsCarriedAlongItsCycleInNoMoreThanThreeCopies) {
    // A cycle of n elements takes 3n - 2 copies: one into the hand for the first; saved, stored and taken up
    // again for each that follows, the last of them stored straight from where it was saved.
    KyDynArray<Fragile> array;
    Fill(array, {5, 1, 2, 3, 4});
    const FragileWatch watch;

    array.Sort(true);

    EXPECT_LE(watch.Copies(), 3 * 5 - 2);
    EXPECT_THAT(array, ElementsAre(Fragile(1), Fragile(2), Fragile(3), Fragile(4), Fragile(5)));
    EXPECT_EQ(watch.Live(), 0);
}

TEST(ArraySorting, ACycleIsWalkedFromItsFirstElement) {
    KyDynArray<Fragile> array;
    Fill(array, {5, 1, 2, 3, 4});

    {
        // Into the hand, the one that stands in its place saved, and stored.
        const FragileWatch watch(3);
        EXPECT_THROW(array.Sort(true), std::runtime_error);
    }

    EXPECT_THAT(array, ElementsAre(Fragile(5), Fragile(1), Fragile(2), Fragile(3), Fragile(5)));
}

TEST(ArraySorting, AnOwningArrayMovesPointersAndDeletesNothing) {
    const OwnedWatch watch;
    KyDynPArray<Owned> array;
    Adopt(array, {3, 1, 2, 5, 4});
    const std::vector<Owned*> before(array.begin(), array.end());
    array.MoveTo(2);

    array.Sort(true);
    EXPECT_THAT(Ids(array), ElementsAre(1, 2, 3, 4, 5));
    array.Sort(false);
    EXPECT_THAT(Ids(array), ElementsAre(5, 4, 3, 2, 1));
    array.Sort([](const Owned& a, const Owned& b) { return static_cast<int>(a.m_nId % 3 - b.m_nId % 3); });

    EXPECT_THAT(Ids(array), ElementsAre(3, 4, 1, 5, 2));
    EXPECT_THAT(watch.Destroyed(), IsEmpty());
    EXPECT_THAT(array, UnorderedElementsAreArray(before));
    EXPECT_EQ(array.m_nCurIndex, 2);
}

// Null slots

TEST(ArraySorting, NullSlotsOrderBeforeEveryObject) {
    const OwnedWatch watch;
    KyDynPArray<Owned> array;
    Adopt(array, {2, nNullId, 1, nNullId, 3});

    array.Sort(true);
    EXPECT_THAT(Ids(array), ElementsAre(nNullId, nNullId, 1, 2, 3));
    array.Sort(false);

    EXPECT_THAT(Ids(array), ElementsAre(3, 2, 1, nNullId, nNullId));
    EXPECT_THAT(watch.Destroyed(), IsEmpty());
}

TEST(ArraySorting, NullSlotsStayTooInADirectionThatTheObjectsHaveNoOperatorFor) {
    struct GreaterOnly {
        long m_nKey;
        bool operator>(const GreaterOnly& other) const { return m_nKey > other.m_nKey; }
    };
    KyDynPArray<GreaterOnly> array;
    for (GreaterOnly* p : {static_cast<GreaterOnly*>(nullptr), new GreaterOnly{1}, new GreaterOnly{2}}) {
        array.Append(p);
    }
    const std::vector<GreaterOnly*> before(array.begin(), array.end());

    array.Sort(false);

    EXPECT_THAT(array, ElementsAreArray(before));
}

TEST(ArraySorting, NullSlotsAreNotPassedToTheComparisonOfObjects) {
    KyDynPArray<Keyed> array;
    Fill(array, {new Keyed{2, 0}, nullptr, new Keyed{1, 2}, nullptr});
    g_compared.clear();

    array.Sort(CompareKeys);

    EXPECT_THAT(g_compared, ElementsAre(std::pair<long, long>(0, 2)));
    EXPECT_EQ(array.m_pData[0], nullptr);
    EXPECT_EQ(array.m_pData[1], nullptr);
    EXPECT_EQ(array.m_pData[2]->m_nKey, 1);
    EXPECT_EQ(array.m_pData[3]->m_nKey, 2);
}

TEST(ArraySorting, NullSlotsAreNotPassedToTheOperatorsOfTheObjects) {
    for (const bool bAscending : {true, false}) {
        KyDynPArray<Noting> array;
        Fill(array, {new Noting{2, 0}, nullptr, new Noting{1, 2}, nullptr});
        g_compared.clear();

        array.Sort(bAscending);

        EXPECT_THAT(g_compared, ElementsAre(std::pair<long, long>(0, 2)));
        EXPECT_EQ(array.m_pData[bAscending ? 0 : 3], nullptr);
        EXPECT_EQ(array.m_pData[1] == nullptr, bAscending);
    }
}

TEST(ArraySorting, NullSlotsGoFirstWhateverOrdersTheObjects) {
    KyDynPArray<NonConstOrdered> operators;
    KyDynPArray<Unordered> compared;
    Fill(operators, {new NonConstOrdered{2}, nullptr, new NonConstOrdered{1}, new NonConstOrdered{3}});
    Fill(compared, {new Unordered{2}, nullptr, new Unordered{1}, new Unordered{3}});

    operators.Sort(true);
    compared.Sort(
        [](const Unordered& a, const Unordered& b) { return static_cast<int>(a.m_nKey - b.m_nKey); });

    EXPECT_EQ(operators.m_pData[0], nullptr);
    EXPECT_EQ(operators.m_pData[1]->m_nKey, 1);
    EXPECT_EQ(operators.m_pData[3]->m_nKey, 3);
    EXPECT_EQ(compared.m_pData[0], nullptr);
    EXPECT_EQ(compared.m_pData[1]->m_nKey, 1);
    EXPECT_EQ(compared.m_pData[3]->m_nKey, 3);
    operators.Sort(false);

    EXPECT_EQ(operators.m_pData[0]->m_nKey, 3);
    EXPECT_EQ(operators.m_pData[2]->m_nKey, 1);
    EXPECT_EQ(operators.m_pData[3], nullptr);
}

TEST(ArraySorting, ThePointerSortPassesNullSlotsLikeAnyPointer) {
    static long nNulls = 0;
    nNulls = 0;
    KyDynPArray<Owned> array;
    Adopt(array, {2, nNullId, 1});

    array.Sort([](Owned* const& a, Owned* const& b) {
        nNulls += (a == nullptr ? 1 : 0) + (b == nullptr ? 1 : 0);
        const long nA = a == nullptr ? 99 : a->m_nId;
        const long nB = b == nullptr ? 99 : b->m_nId;
        return static_cast<int>(nA - nB);
    });

    EXPECT_EQ(nNulls, 2);
    EXPECT_THAT(Ids(array), ElementsAre(1, 2, nNullId));
}

TEST(ArraySorting, NullsAndObjectsAgreeWithAStableSortInEverySmallCase) {
    // Key 0 stands for a null slot.
    ForEverySequence(5, 3, [](const std::vector<long>& keys) {
        for (const bool bAscending : {true, false}) {
            KyDynPArray<Keyed> array;
            std::vector<Keyed*> objects;
            for (const long nKey : keys) {
                objects.push_back(nKey == 0 ? nullptr : new Keyed{nKey, 0});
                array.Append(objects.back());
            }
            std::vector<Keyed*> expected;
            for (const long nTag : StableOrder(keys, bAscending)) {
                expected.push_back(objects[static_cast<std::size_t>(nTag)]);
            }

            array.Sort(bAscending);

            ASSERT_TRUE(std::equal(array.begin(), array.end(), expected.begin(), expected.end()));
        }
    });
}

// Element types

TEST(ArraySorting, ElementsWithoutAnOrderStayWhereTheyAreThoughTheRanksAreTaken) {
    KyDynArray<Unordered> array;
    KyDynPArray<Unordered> owning;
    Fill(array, {{3}, {1}, {2}});
    Fill(owning, {new Unordered{3}, nullptr, new Unordered{1}});
    const std::vector<Unordered*> before(owning.begin(), owning.end());
    const AllocationLog log;

    array.Sort(true);
    array.Sort(false);
    owning.Sort(true);
    owning.Sort(false);

    EXPECT_THAT(log.Arrays(), ElementsAre(24U, 24U, 24U, 24U));
    EXPECT_THAT(array, ElementsAre(Unordered{3}, Unordered{1}, Unordered{2}));
    EXPECT_THAT(owning, ElementsAreArray(before));
}

TEST(ArraySorting, ElementsWithoutAnOrderSortByAComparison) {
    const auto compare = [](const Unordered& a, const Unordered& b) {
        return static_cast<int>(a.m_nKey - b.m_nKey);
    };
    KyDynArray<Unordered> array;
    KyDynPArray<Unordered> owning;
    Fill(array, {{3}, {1}, {2}});
    Fill(owning, {new Unordered{3}, new Unordered{1}});

    array.Sort(compare);
    owning.Sort(compare);

    EXPECT_THAT(array, ElementsAre(Unordered{1}, Unordered{2}, Unordered{3}));
    EXPECT_EQ(owning.m_pData[0]->m_nKey, 1);
}

TEST(ArraySorting, OperatorsThatTakeNonConstObjectsCount) {
    KyDynArray<NonConstOrdered> array;
    KyDynPArray<NonConstOrdered> owning;
    Fill(array, {{3}, {1}, {2}});
    Fill(owning, {new NonConstOrdered{1}, new NonConstOrdered{3}, new NonConstOrdered{2}});

    array.Sort(true);
    owning.Sort(false);

    EXPECT_THAT(array, ElementsAre(NonConstOrdered{1}, NonConstOrdered{2}, NonConstOrdered{3}));
    EXPECT_EQ(owning.m_pData[0]->m_nKey, 3);
    EXPECT_EQ(owning.m_pData[1]->m_nKey, 2);
    EXPECT_EQ(owning.m_pData[2]->m_nKey, 1);
}

TEST(ArraySorting, AscendingAsksOperatorGreaterAndDescendingOperatorLess) {
    struct Greater {
        long m_nKey;
        bool operator>(const Greater& other) const { return m_nKey > other.m_nKey; }
    };
    struct Less {
        long m_nKey;
        bool operator<(const Less& other) const { return m_nKey < other.m_nKey; }
    };
    KyDynArray<Greater> greater;
    KyDynArray<Less> less;
    Fill(greater, {{2}, {3}, {1}});
    Fill(less, {{2}, {3}, {1}});

    greater.Sort(true);
    less.Sort(false);
    EXPECT_EQ(greater.m_pData[0].m_nKey, 1);
    EXPECT_EQ(less.m_pData[0].m_nKey, 3);
    greater.Sort(false);
    less.Sort(true);

    EXPECT_EQ(greater.m_pData[0].m_nKey, 1);
    EXPECT_EQ(less.m_pData[0].m_nKey, 3);
}

TEST(ArraySorting, VirtualOperatorsOfTheObjectsAreHonoured) {
    struct Animal {
        explicit Animal(long nKey) : m_nKey(nKey) {}
        virtual ~Animal() = default;
        virtual bool operator>(const Animal& other) const { return m_nKey > other.m_nKey; }
        long m_nKey;
    };
    struct Backwards : Animal {
        using Animal::Animal;
        bool operator>(const Animal& other) const override { return m_nKey < other.m_nKey; }
    };
    KyDynPArray<Animal> array;
    Fill(array, {new Backwards(1), new Backwards(3), nullptr, new Backwards(2)});

    array.Sort(true);

    EXPECT_EQ(array.m_pData[0], nullptr);
    EXPECT_EQ(array.m_pData[1]->m_nKey, 3);
    EXPECT_EQ(array.m_pData[2]->m_nKey, 2);
    EXPECT_EQ(array.m_pData[3]->m_nKey, 1);
    array.Sort(false);  // for which the class has no operator

    EXPECT_EQ(array.m_pData[0], nullptr);
    EXPECT_EQ(array.m_pData[1]->m_nKey, 3);
}

// Comparisons that are none

TEST(ArraySorting, AnInconsistentComparisonLosesNoElement) {
    const double nan = std::nan("");
    KyDynArray<double> numbers;
    Fill(numbers, {2.0, nan, 1.0, nan, 0.0});
    KyDynArray<long> cycle;
    Fill(cycle, {0, 1, 2, 1, 0, 2, 2, 1});

    numbers.Sort(true);
    numbers.Sort(false);
    cycle.Sort([](const long& a, const long& b) { return (a - b + 3) % 3 == 1 ? 1 : -1; });

    EXPECT_EQ(std::count_if(numbers.begin(), numbers.end(), [](double x) { return std::isnan(x); }), 2);
    EXPECT_THAT(std::vector<double>(numbers.begin(), numbers.end()), testing::IsSupersetOf({0.0, 1.0, 2.0}));
    EXPECT_THAT(cycle, UnorderedElementsAreArray({0, 0, 1, 1, 1, 2, 2, 2}));
}

TEST(ArraySorting, EveryInconsistentAnswerOnThreeAndFourElementsLosesNone) {
    // Each bit of the mask is the answer to one pair, asked in order.
    static unsigned nMask = 0;
    static unsigned nAsked = 0;
    for (const long nLength : {3L, 4L}) {
        for (unsigned n = 0; n < (1U << (nLength * (nLength - 1) / 2)); ++n) {
            KyDynArray<long> array;
            std::vector<long> elements;
            for (long i = 0; i < nLength; ++i) {
                array.Append(i);
                elements.push_back(i);
            }
            nMask = n;
            nAsked = 0;

            array.Sort([](const long&, const long&) { return static_cast<int>((nMask >> nAsked++) & 1U); });

            ASSERT_THAT(array, UnorderedElementsAreArray(elements)) << "answers " << n;
        }
    }
}

RC_GTEST_PROP(ArraySorting, RanksOfAComparisonThatIsNoneBecomeAnOrderByRankThenByPlace, ()) {
    const auto nLength = *rc::gen::inRange<long>(1, 12);
    auto ranks = *rc::gen::container<std::vector<long>>(static_cast<std::size_t>(nLength),
                                                        rc::gen::inRange<long>(0, nLength));
    std::vector<std::size_t> places(ranks.size());
    std::iota(places.begin(), places.end(), 0U);
    std::stable_sort(places.begin(), places.end(),
                     [&ranks](std::size_t a, std::size_t b) { return ranks[a] < ranks[b]; });
    std::vector<long> expected(ranks.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        expected[places[i]] = static_cast<long>(i);
    }

    KyMakeRanksDistinct(ranks.data(), nLength);

    RC_ASSERT(ranks == expected);
}

TEST(ArraySorting, FewElementsAreMovedAtOnceToRanksThatAreAPermutation) {
    for (const long nLength : {1L, 2L, 31L, 32L, 33L, 63L, 64L, 65L}) {
        std::vector<long> elements(static_cast<std::size_t>(nLength));
        std::iota(elements.begin(), elements.end(), 0L);
        const std::vector<long> backwards(elements.rbegin(), elements.rend());
        const std::vector<long> before = elements;

        const bool bMoved = KyPlaceFewByRank(elements.data(), backwards.data(), nLength);

        EXPECT_EQ(bMoved, nLength <= 64) << nLength;
        EXPECT_EQ(elements, bMoved ? backwards : before) << nLength;
    }
}

TEST(ArraySorting, FewElementsAreNotMovedToRanksOfWhichOneIsMissing) {
    for (long nLength = 2; nLength <= 64; ++nLength) {
        std::vector<long> ranks(static_cast<std::size_t>(nLength));
        std::vector<long> elements(ranks.size());
        for (long nMissing = 0; nMissing < nLength; ++nMissing) {
            std::iota(ranks.begin(), ranks.end(), 0L);
            ranks[static_cast<std::size_t>(nMissing)] = nMissing == 0 ? 1 : nMissing - 1;
            std::iota(elements.begin(), elements.end(), 0L);
            const std::vector<long> before = elements;

            const bool bMoved = KyPlaceFewByRank(elements.data(), ranks.data(), nLength);

            ASSERT_FALSE(bMoved) << nLength << " elements, none of rank " << nMissing;
            ASSERT_EQ(elements, before);
        }
    }
}

// Failure

TEST(ArraySorting, ARefusedRankArrayChangesNothing) {
    KyDynArray<long> array;
    Fill(array, {3, 1, 2});

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(array.Sort(true), std::bad_alloc);
    }

    EXPECT_THAT(array, ElementsAre(3, 1, 2));
}

TEST(ArraySorting, AThrowingComparisonLeaksNothingAndMovesNothing) {
    const auto throwing = [](const Owned& a, const Owned&) -> int {
        return a.m_nId == 2 ? throw std::runtime_error("incomparable") : 1;
    };
    const OwnedWatch watch;
    KyDynPArray<Owned> array;
    Adopt(array, {3, 2, 1});
    const AllocationLog log;

    EXPECT_THROW(array.Sort(throwing), std::runtime_error);

    EXPECT_EQ(log.LiveArrayBytes(), 0U);
    EXPECT_THAT(Ids(array), ElementsAre(3, 2, 1));
    EXPECT_THAT(watch.Destroyed(), IsEmpty());
}

// What may be passed

template <class Container, class Argument, class = void>
struct CanSortBy : std::false_type {};
template <class Container, class Argument>
struct CanSortBy<Container, Argument,
                 std::void_t<decltype(std::declval<Container&>().Sort(std::declval<Argument>()))>>
    : std::true_type {};

TEST(ArraySorting, TakesADirectionOrAComparisonOfItsElements) {
    static_assert(CanSortBy<KyDynArray<long>, bool>::value);
    static_assert(CanSortBy<KyDynArray<long>, int (*)(const long&, const long&)>::value);
    static_assert(CanSortBy<KyDynArray<long>, int (*)(const long&, const long&) noexcept>::value);
    static_assert(CanSortBy<KyDynArrayBase<long>, int (*)(const long&, const long&)>::value);
    static_assert(CanSortBy<KyDynArray<Owned*>, int (*)(Owned* const&, Owned* const&)>::value);
    static_assert(CanSortBy<KyDynPArray<Owned>, bool>::value);
    static_assert(CanSortBy<KyDynPArray<Owned>, int (*)(const Owned&, const Owned&)>::value);
    static_assert(CanSortBy<KyDynPArray<Owned>, int (*)(Owned* const&, Owned* const&)>::value);
}

TEST(ArraySorting, RefusesAPointerThatIsNoComparisonOfItsElements) {
    struct Comparing {
        int Compare(const Comparing&) const;
        int m_nKey;
    };
    static_assert(!CanSortBy<KyDynArray<long>, int (*)(long, long)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, int (*)(long&, long&)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, bool (*)(const long&, const long&)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, long (*)(const long&, const long&)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, int (*)(const long&)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, int (*)(const int&, const int&)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, int (*)(const void*, const void*)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, const char*>::value);
    static_assert(!CanSortBy<KyDynArray<long>, void*>::value);
    static_assert(!CanSortBy<KyDynArray<Comparing>, int (Comparing::*)(const Comparing&) const>::value);
    static_assert(!CanSortBy<KyDynArray<Comparing>, int Comparing::*>::value);
    static_assert(!CanSortBy<KyDynArrayBase<long>, int (*)(long, long)>::value);
    static_assert(!CanSortBy<KyDynArray<Owned*>, int (*)(const Owned&, const Owned&)>::value);
    static_assert(!CanSortBy<KyDynPArray<Owned>, int (*)(Owned*, Owned*)>::value);
    static_assert(!CanSortBy<KyDynPArray<Owned>, int (*)(const Owned*, const Owned*)>::value);
    static_assert(!CanSortBy<KyDynPArray<Owned>, bool (*)(const Owned&, const Owned&)>::value);
}

TEST(ArraySorting, TakesALambdaExactlyWhereItsFunctionPointerIsTaken) {
    const auto right = [](const long&, const long&) { return 0; };
    const auto byValue = [](long, long) { return 0; };
    const auto answersBool = [](const long&, const long&) { return false; };
    const auto capturing = [right](const long& a, const long& b) { return right(a, b); };
    const auto generic = [](const auto& a, const auto& b) { return a < b ? -1 : 1; };
    const auto onObjects = [](const Owned&, const Owned&) { return 0; };
    const auto onPointers = [](Owned* const&, Owned* const&) { return 0; };

    static_assert(CanSortBy<KyDynArray<long>, decltype(right)>::value);
    static_assert(CanSortBy<KyDynArray<long>, decltype(generic)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, decltype(byValue)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, decltype(answersBool)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, decltype(capturing)>::value);
    static_assert(!CanSortBy<KyDynArray<long>, std::function<int(const long&, const long&)>>::value);
    static_assert(CanSortBy<KyDynPArray<Owned>, decltype(onObjects)>::value);
    static_assert(CanSortBy<KyDynPArray<Owned>, decltype(onPointers)>::value);
    static_assert(!CanSortBy<KyDynPArray<Owned>, decltype(byValue)>::value);
    static_assert(!CanSortBy<KyDynPArray<Owned>, std::nullptr_t>::value);
}

TEST(ArraySorting, AGenericLambdaComparesTheElements) {
    KyDynArray<long> array;
    Fill(array, {1, 3, 2});

    array.Sort([](const auto& a, const auto& b) { return a < b ? 1 : -1; });

    EXPECT_THAT(array, ElementsAre(3, 2, 1));
}

TEST(ArraySorting, SortsThroughTheAbstractBase) {
    KyDynArray<long> array;
    Fill(array, {1, 3, 2});
    KyDynArrayBase<long>& base = array;

    base.Sort(false);
    EXPECT_THAT(array, ElementsAre(3, 2, 1));
    base.Sort(CompareLongs);

    EXPECT_THAT(array, ElementsAre(1, 2, 3));
}

TEST(ArraySorting, AnOwningArraySortsItsObjectsThroughTheAbstractBase) {
    KyDynPArray<Owned> array;
    Adopt(array, {1, 3, 2});
    KyDynArrayBase<Owned*>& base = array;

    base.Sort(false);

    EXPECT_THAT(Ids(array), ElementsAre(3, 2, 1));
}

}  // namespace
