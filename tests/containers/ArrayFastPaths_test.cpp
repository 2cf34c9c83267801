// What the arrays do faster for elements of built-in types, beside the plain rule: on random input both leave
// the same elements and the same fields.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyDynPArray.h"

namespace {

using testing::ElementsAre;

// Sorting by the elements' own order

template <class Pointer>
Pointer PointerTo(std::uintptr_t nAddress) {
    Pointer p;
    std::memcpy(&p, &nAddress, sizeof(p));
    return p;
}

// Any element, with a liking for the odd ones and for equal ones.
template <class T>
T AnyElement() {
    if constexpr (std::is_pointer_v<T>) {
        return PointerTo<T>(AnyElement<std::uintptr_t>());
    } else if constexpr (std::is_floating_point_v<T>) {
        const auto nAny = *rc::gen::inRange(-30, 30);
        return nAny == 29    ? std::numeric_limits<T>::infinity()
               : nAny == -29 ? -std::numeric_limits<T>::infinity()
               : nAny == 28  ? static_cast<T>(-0.0)
               : nAny == 27  ? std::numeric_limits<T>::denorm_min()
                             : static_cast<T>(nAny) / 4;
    } else if constexpr (std::is_same_v<T, bool>) {
        return *rc::gen::arbitrary<bool>();
    } else {
        const auto nAny = *rc::gen::inRange<std::int64_t>(0, 40);
        const auto nBits = *rc::gen::arbitrary<std::uint64_t>();
        return nAny == 0   ? std::numeric_limits<T>::min()
               : nAny == 1 ? std::numeric_limits<T>::max()
               : nAny < 20 ? static_cast<T>(nAny - 10)
                           : static_cast<T>(nBits * 0x9E37'79B9'7F4A'7C15U >> 3);
    }
}

template <class T>
bool SameElement(T a, T b) {
    if constexpr (std::is_floating_point_v<T>) {
        return (a == b || (std::isnan(a) && std::isnan(b))) && std::signbit(a) == std::signbit(b);
    } else {
        return a == b;
    }
}

// Two arrays of the same elements, one sorted by its own operation, one by the plain rule.
template <class T>
class SortedTwice {
public:
    void Append(T x) {
        m_sorted.Append(x);
        m_plain.Append(x);
    }

    void Sort(bool bAscending) {
        m_sorted.m_nCurIndex = 2;
        m_sorted.Sort(bAscending);
        T* const pData = m_plain.m_pData;
        KySortByRank(pData, m_plain.m_nLength, [pData, bAscending](long i, long j) {
            return bAscending ? KyElementOrder<T>::IsGreater(pData[i], pData[j])
                              : KyElementOrder<T>::IsLess(pData[i], pData[j]);
        });
    }

    bool AreAlike() const {
        return std::equal(m_sorted.begin(), m_sorted.end(), m_plain.begin(), m_plain.end(), SameElement<T>) &&
               m_sorted.m_nCapacity == m_plain.m_nCapacity && m_sorted.m_nCurIndex == 2;
    }

private:
    KyDynArray<T> m_sorted;
    KyDynArray<T> m_plain;
};

template <class T>
class BuiltInElements : public testing::Test {};
using BuiltIns = testing::Types<bool, char, signed char, unsigned char, short, unsigned short, int, unsigned,
                                long, unsigned long, wchar_t, float, double, long double, char*,
                                const long* const*, void (*)(int)>;
class BuiltInNames {
public:
    template <class T>
    static std::string GetName(int n) {
        return (std::is_pointer_v<T>          ? "Pointer"
                : std::is_floating_point_v<T> ? "Floating"
                : std::is_signed_v<T>         ? "Signed"
                                              : "Unsigned") +
               std::to_string(8 * sizeof(T)) + "No" + std::to_string(n);
    }
};
TYPED_TEST_SUITE(BuiltInElements, BuiltIns, BuiltInNames);

TYPED_TEST(BuiltInElements, SortLikeEveryOtherElementInShortArrays) {
    EXPECT_TRUE(rc::check([] {
        SortedTwice<TypeParam> arrays;
        for (long n = *rc::gen::inRange(0L, 40L); n > 0; --n) {
            arrays.Append(AnyElement<TypeParam>());
        }

        arrays.Sort(*rc::gen::arbitrary<bool>());

        RC_ASSERT(arrays.AreAlike());
    }));
}

TYPED_TEST(BuiltInElements, SortLikeEveryOtherElementAroundTheLengthsWhereTheMethodChanges) {
    std::mt19937_64 engine(1);
    for (const long nLength : {2L, 7L, 8L, 9L, 15L, 16L, 17L, 64L, 65L, 255L, 256L, 257L, 700L}) {
        for (const bool bAscending : {true, false}) {
            SortedTwice<TypeParam> arrays;
            for (long i = 0; i < nLength; ++i) {
                if constexpr (std::is_pointer_v<TypeParam>) {
                    arrays.Append(PointerTo<TypeParam>(engine()));
                } else if constexpr (std::is_same_v<TypeParam, bool>) {
                    arrays.Append(engine() % 2 != 0);
                } else {
                    arrays.Append(static_cast<TypeParam>(static_cast<long>(engine())));
                }
            }

            arrays.Sort(bAscending);

            EXPECT_TRUE(arrays.AreAlike()) << nLength;
        }
    }
}

RC_GTEST_PROP(ArrayFastPaths, NumbersWithNaNAmongThemAreOrderedByThePlainRule, ()) {
    SortedTwice<double> arrays;
    for (long n = *rc::gen::inRange(1L, 20L); n > 0; --n) {
        arrays.Append(*rc::gen::inRange(0, 4) == 0 ? std::nan("") : AnyElement<double>());
    }
    arrays.Append(std::nan(""));

    arrays.Sort(*rc::gen::arbitrary<bool>());

    RC_ASSERT(arrays.AreAlike());
}

TEST(ArrayFastPaths, ZeroesOfEitherSignAreEqualAndKeepTheirOrder) {
    KyDynArray<double> array;
    for (const double x : {0.0, -0.0, 1.0, -0.0, 0.0, -1.0, 0.0, -0.0, -0.0, 0.0, -0.0}) {
        array.Append(x);
    }

    array.Sort(true);

    std::vector<bool> signs;
    std::transform(array.begin() + 1, array.end() - 1, std::back_inserter(signs),
                   [](double x) { return std::signbit(x); });
    EXPECT_THAT(signs, ElementsAre(false, true, true, false, false, true, true, false, true));
}

// Sorting by a comparison

// A small element that is copied in a block, and the same one that is assigned along the cycles.
struct Trivial {
    long m_nKey;
    long m_nTag;
};
struct Assigned : Trivial {
    Assigned() : Trivial{0, 0} {}
    Assigned& operator=(const Assigned& other) {
        m_nKey = other.m_nKey;
        m_nTag = other.m_nTag;
        return *this;
    }
    Assigned(const Assigned&) = default;
};

std::uint64_t g_nAnswers = 0;

// Any answers at all, but the same ones in both runs.
template <class T>
int Whatever(const T& a, const T& b) {
    const auto nPair = static_cast<std::uint64_t>(64 * a.m_nTag + b.m_nTag) + g_nAnswers;
    return nPair * 0x9E37'79B9'7F4A'7C15U >> 63 != 0 ? 1 : -1;
}
template <class T>
int ByKey(const T& a, const T& b) {
    return a.m_nKey < b.m_nKey ? -1 : a.m_nKey > b.m_nKey ? 1 : 0;
}

RC_GTEST_PROP(ArrayFastPaths, SmallElementsArePlacedAsAssignedOnesAre, ()) {
    const auto keys = *rc::gen::scale(2.0, rc::gen::container<std::vector<long>>(rc::gen::inRange(0L, 30L)));
    const bool bOrdering = *rc::gen::arbitrary<bool>();
    g_nAnswers = *rc::gen::arbitrary<std::uint64_t>();
    KyDynArray<Trivial> trivial;
    KyDynArray<Assigned> assigned;
    for (const long nKey : keys) {
        const long nTag = trivial.m_nLength;
        trivial.Append({nKey, nTag});
        static_cast<Trivial&>(assigned[nTag]) = {nKey, nTag};
    }

    trivial.Sort(bOrdering ? ByKey<Trivial> : Whatever<Trivial>);
    assigned.Sort(bOrdering ? ByKey<Assigned> : Whatever<Assigned>);

    for (long i = 0; i < trivial.m_nLength; ++i) {
        RC_ASSERT(trivial.m_pData[i].m_nKey == assigned.m_pData[i].m_nKey);
        RC_ASSERT(trivial.m_pData[i].m_nTag == assigned.m_pData[i].m_nTag);
    }
}

// Appending

// A number that is of a class: none of the faster ways is open to it.
struct Number {
    Number(long n = 0) : m_n(n) {}
    long m_n;
};

// Where the compiler cannot see the class.
template <class T>
long AppendTo(KyDynArrayBase<T>& array, const T& x) {
    KyDynArrayBase<T>* volatile pArray = &array;
    return pArray->Append(x);
}

// An array that overrides something, so that no short cut may be taken.
template <class T>
class Counting : public KyDynArray<T> {
public:
    using KyDynArray<T>::KyDynArray;
    void ReAllocate(long n) override {
        ++m_nCalls;
        KyDynArray<T>::ReAllocate(n);
    }
    void MoveTo(long i) override {
        ++m_nCalls;
        KyDynArray<T>::MoveTo(i);
    }
    long m_nCalls = 0;
};

// One random run on two arrays, one of the built-in number and one of the other.
template <class Fast, class Plain>
void AppendLikeEachOther(Fast& fast, Plain& plain) {
    const auto steps = *rc::gen::scale(2.0, rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 1000)));
    for (const int nStep : steps) {
        const long nLength = fast.m_nLength;
        const long nAny = nStep / 10;
        const long nOwn = nLength == 0 ? 0 : nAny % nLength;
        switch (nLength == 0 ? 0 : nStep % 6) {
            case 0:
                RC_ASSERT(fast.Append(nAny) == plain.Append(Number(nAny)));
                break;
            case 1:
                RC_ASSERT(AppendTo<long>(fast, nAny) == AppendTo<Number>(plain, Number(nAny)));
                break;
            case 2:
                RC_ASSERT(fast.Append(fast.m_pData[nOwn]) == plain.Append(plain.m_pData[nOwn]));
                break;
            case 3:
                fast.Insert(nAny % (nLength + 1), fast.m_pData[nOwn]);
                plain.Insert(nAny % (nLength + 1), plain.m_pData[nOwn]);
                break;
            case 4:
                fast.MoveTo(nOwn);
                fast.DelCur();
                plain.MoveTo(nOwn);
                plain.DelCur();
                break;
            default:
                fast.MoveToLast();
                fast.MoveToNext();
                fast.InsertCur(nAny);
                plain.MoveToLast();
                plain.MoveToNext();
                plain.InsertCur(Number(nAny));
                break;
        }
        RC_ASSERT(fast.m_nLength == plain.m_nLength);
        RC_ASSERT(fast.m_nCurIndex == plain.m_nCurIndex);
        RC_ASSERT(fast.m_nCapacity == plain.m_nCapacity);
        RC_ASSERT(std::equal(fast.begin(), fast.end(), plain.begin(), plain.end(),
                             [](long a, const Number& b) { return a == b.m_n; }));
    }
}

RC_GTEST_PROP(ArrayFastPaths, NumbersAreAppendedLikeEveryOtherElement, ()) {
    const long nGrowBy = *rc::gen::inRange(0L, 4L);
    KyDynArray<long> fast(0, nGrowBy);
    KyDynArray<Number> plain(0, nGrowBy);

    AppendLikeEachOther(fast, plain);
}

RC_GTEST_PROP(ArrayFastPaths, ADerivedArraySeesTheSameCallsForNumbersAsForEveryOtherElement, ()) {
    const long nGrowBy = *rc::gen::inRange(0L, 4L);
    Counting<long> fast(0, nGrowBy);
    Counting<Number> plain(0, nGrowBy);

    AppendLikeEachOther(fast, plain);

    RC_ASSERT(fast.m_nCalls == plain.m_nCalls);
}

TEST(ArrayFastPaths, AFieldOfTheArrayIsAppendedAsItIsAfterTheLengthHasChanged) {
    for (const long nCapacity : {4L, 5L}) {
        KyDynArray<long> length(nCapacity, 7);
        KyDynArray<long> capacity(nCapacity, 7);
        KyDynArray<long> growBy(nCapacity, 7);
        KyDynArray<long> cursor(nCapacity, 7);
        for (KyDynArray<long>* pArray : {&length, &capacity, &growBy, &cursor}) {
            pArray->ReAllocate(4);
        }

        length.Append(length.m_nLength);
        capacity.Append(capacity.m_nCapacity);
        growBy.Append(growBy.m_nGrowBy);
        cursor.Append(cursor.m_nCurIndex);

        EXPECT_EQ(length.m_pData[4], 5);
        EXPECT_EQ(capacity.m_pData[4], nCapacity == 4 ? 12 : 5);
        EXPECT_EQ(growBy.m_pData[4], 7);
        EXPECT_EQ(cursor.m_pData[4], 4);
    }
}

TEST(ArrayFastPaths, WhatReAllocateMakesOfTheArgumentIsWhatIsAppended) {
    class Raising : public KyDynArray<long> {
    public:
        using KyDynArray<long>::KyDynArray;
        void ReAllocate(long n) override {
            m_nSource = 99;
            KyDynArray<long>::ReAllocate(n);
        }
        long m_nSource = 1;
    };
    for (const long nCapacity : {0L, 5L}) {
        Raising array(nCapacity, 0);

        array.Append(array.m_nSource);

        EXPECT_THAT(array, ElementsAre(99)) << "capacity " << nCapacity;
    }
    Raising full(1, 0);
    full.Append(5);
    full.m_nSource = 1;

    full.Append(full.m_nSource);

    EXPECT_THAT(full, ElementsAre(5, 99));
}

TEST(ArrayFastPaths, AnElementIsAppendedToItsOwnFullArray) {
    KyDynArray<double> array(3, 0);
    for (const double x : {1.5, std::nan(""), -0.0}) {
        array.Append(x);
    }
    Counting<double> derived(1, 0);
    derived.Append(std::nan(""));
    Counting<double> full(2, 0);
    full.Append(-0.0);
    full.Append(2.5);

    array.Append(array.m_pData[0]);
    array.Append(array.m_pData[1]);
    array.Append(array.m_pData[2]);
    derived.Append(derived.m_pData[0]);
    full.Append(full.m_pData[1]);

    EXPECT_EQ(array.m_nCapacity, 6);
    EXPECT_EQ(array.m_pData[3], 1.5);
    EXPECT_TRUE(std::isnan(array.m_pData[4]));
    EXPECT_TRUE(std::signbit(array.m_pData[5]));
    EXPECT_TRUE(std::isnan(derived.m_pData[1]));
    EXPECT_EQ(full.m_pData[2], 2.5);
}

TEST(ArrayFastPaths, AnOverrideThatBringsItsOwnBlockIsFollowed) {
    class Elsewhere : public KyDynArray<long> {
    public:
        Elsewhere() : KyDynArray<long>(0, 0) {}
        void ReAllocate(long n) override {
            auto* const pBlock = new long[static_cast<std::size_t>(n) + 1];
            std::copy(m_pData, m_pData + m_nLength, pBlock);
            delete[] m_pData;
            m_pData = pBlock;
            m_nCapacity = n + 1;
            m_nLength = n;
        }
    };
    Elsewhere array;

    array.Append(1);
    array.Append(2);
    array.Append(array.m_pData[0]);
    array.Append(array.m_pData[1]);

    EXPECT_THAT(array, ElementsAre(1, 2, 1, 2));
}

TEST(ArrayFastPaths, AnOwningArrayAppendsThroughItsOwnReAllocate) {
    KyDynPArray<long> array(1, 0);

    array.Append(new long(1));
    array.Append(new long(2));

    EXPECT_EQ(*array.m_pData[0], 1);
    EXPECT_EQ(*array.m_pData[1], 2);
    EXPECT_EQ(array.m_nCapacity, 2);
    EXPECT_EQ(array.m_nCurIndex, 1);
}

}  // namespace
