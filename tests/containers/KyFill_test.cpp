#include "VexaBase/containers/KyFill.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "AllocationLog.h"
#include "TestElements.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyXList.h"
#include "VexaBase/string/KyString.h"

namespace {

using testing::ElementsAre;

template <class Container, class = void>
struct CanBeFilled : std::false_type {};
template <class Container>
struct CanBeFilled<Container, std::void_t<decltype(KyFill(std::declval<Container&>(), {}))>>
    : std::true_type {};

static_assert(CanBeFilled<KyArray<wchar_t>>::value);
static_assert(!CanBeFilled<KyString>::value, "a string is made from text");

template <class Container>
class KyFillOfValues : public testing::Test {};

using OfValues = testing::Types<KyDynArray<long>, KyArray<long>, KyList<long>, KyDList<long>, KyXList<long>,
                                KyListQuene<long>>;
TYPED_TEST_SUITE(KyFillOfValues, OfValues, );

TYPED_TEST(KyFillOfValues, TheElementsAreThoseInTheBraces) {
    TypeParam container;

    EXPECT_EQ(&KyFill(container, {3, 1, 2}), &container);

    EXPECT_THAT(container, ElementsAre(3, 1, 2));
}

TYPED_TEST(KyFillOfValues, WhatWasThereBeforeIsGone) {
    TypeParam container;
    KyFill(container, {1, 2, 3, 4});

    KyFill(container, {5});
    EXPECT_THAT(container, ElementsAre(5));

    KyFill(container, {});
    EXPECT_THAT(container, ElementsAre());
}

template <class Container>
class KyFillOfObjects : public testing::Test {};

using OfObjects = testing::Types<KyDynPArray<Owned>, KyPDList<Owned>, KyPXList<Owned>, KyPDListQuene<Owned>>;
TYPED_TEST_SUITE(KyFillOfObjects, OfObjects, );

TYPED_TEST(KyFillOfObjects, TheContainerOwnsTheObjectsInTheBraces) {
    const OwnedWatch watch;
    {
        TypeParam container;
        KyFill(container, {new Owned(1), nullptr, new Owned(2)});

        EXPECT_THAT(Ids(container), ElementsAre(1, nNullId, 2));
        EXPECT_EQ(watch.Live(), 2);

        KyFill(container, {new Owned(3)});

        EXPECT_THAT(Ids(container), ElementsAre(3));
        EXPECT_THAT(watch.Destroyed(), ElementsAre(1, 2));
    }
    EXPECT_EQ(watch.Live(), 0);
}

TYPED_TEST(KyFillOfObjects, WhatItCannotTakeIsDeleted) {
    const OwnedWatch watch;
    for (const long nAllocation : {0, 1, 2}) {
        TypeParam container;
        Owned* const pA = new Owned(1);
        Owned* const pB = new Owned(2);
        Owned* const pC = new Owned(3);
        try {
            const FailingAllocation failing(nAllocation);
            KyFill(container, {pA, pB, pC});
        } catch (const std::bad_alloc&) {
            EXPECT_LT(container.GetLength(), 3);
        }
    }
    EXPECT_EQ(watch.Live(), 0);
}

TEST(KyFill, TheCursorEndsOnTheLastElementOrOnNone) {
    KyDList<long> list;
    EXPECT_EQ(KyFill(list, {7, 8}).m_nCurIndex, 1);
    EXPECT_EQ(KyFill(list, {}).m_nCurIndex, -1);

    KyDynArray<long> array;
    EXPECT_EQ(KyFill(array, {7, 8}).m_nCurIndex, 1);
    EXPECT_EQ(KyFill(array, {}).m_nCurIndex, -1);
}

TEST(KyFill, FillsThroughTheInterface) {
    KyDList<long> list;
    KyDynArrayBase<long>& base = list;

    KyFill(base, {1, 2});

    EXPECT_THAT(list, ElementsAre(1, 2));
}

TEST(KyFill, ElementsOfTheContainerItselfMayStandInTheBraces) {
    KyDList<std::string> list;
    KyFill(list, {"a", "b"});

    KyFill(list, {list[1], list[0], "c"});

    EXPECT_THAT(list, ElementsAre("b", "a", "c"));
}

TEST(KyFill, AnArraysFormerElementsAreNotCopied) {
    KyArray<Fragile> array;
    KyFill(array, {Fragile(1), Fragile(2)});
    const FragileWatch watch;

    KyFill(array, {Fragile(3), Fragile(4), Fragile(5)});

    EXPECT_EQ(watch.Copies(), 3);
    EXPECT_EQ(array[2].m_nId, 5);
}

TEST(KyFill, AContainersOwnAppendIsUsed) {
    struct Sorted : KyDList<long> {
        long Append(const long& x) override {
            const long nIndex = KyDList<long>::Append(x);
            Sort(true);
            return nIndex;
        }
    };
    Sorted list;

    KyFill(list, {3, 1, 2});

    EXPECT_THAT(list, ElementsAre(1, 2, 3));
}

TEST(KyFill, AnArrayOfPointersThatOwnsNothingLeavesTheObjectsAlone) {
    Owned object(1);
    const OwnedWatch watch;
    {
        KyDynArray<Owned*> array;
        KyFill(array, {&object, &object});
        EXPECT_EQ(array.GetLength(), 2);
    }
    EXPECT_THAT(watch.Destroyed(), ElementsAre());
}

TEST(KyFill, ABoundedQueueRefusesWhatItHasNoRoomFor) {
    KyListQuene<long> values(2);
    EXPECT_THAT(KyFill(values, {1, 2, 3}), ElementsAre(1, 2));

    const OwnedWatch watch;
    KyPDListQuene<Owned> objects(1);
    KyFill(objects, {new Owned(1), new Owned(2), new Owned(3)});
    EXPECT_THAT(Ids(objects), ElementsAre(1));
    EXPECT_THAT(watch.Destroyed(), ElementsAre(2, 3));
}

}  // namespace
