#include "VexaBase/containers/KyQuene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include "AllocationLog.h"
#include "TestElements.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class T>
void EnterAll(KyQuene<T>& queue, std::initializer_list<T> values) {
    for (const T& x : values) {
        queue.EnQuene(x);
    }
}

// What is taken out until the queue is empty.
template <class T>
std::vector<T> Drain(KyQuene<T>& queue) {
    std::vector<T> drained;
    for (T x{}; queue.DeQuene(x);) {
        drained.push_back(x);
    }
    return drained;
}

TEST(KyQuene, IsAbstractAndUnboundedUnlessToldOtherwise) {
    static_assert(std::is_abstract_v<KyQuene<long>>);
    static_assert(std::has_virtual_destructor_v<KyQuene<long>>);
    const KyListQuene<long> values;
    const KyPDListQuene<Owned> objects;
    const KyListQuene<long> bounded(5);
    const KyPDListQuene<Owned> boundedObjects(6);

    EXPECT_EQ(values.m_nMaxLength, -1);
    EXPECT_EQ(objects.m_nMaxLength, -1);
    EXPECT_EQ(bounded.m_nMaxLength, 5);
    EXPECT_EQ(boundedObjects.m_nMaxLength, 6);
}

TEST(KyQuene, AQueueOfOnesOwnIsUnboundedUnlessItSaysOtherwise) {
    class Idle : public KyQuene<long> {
    public:
        void Reset() override {}
        long GetLength() override { return 0; }
        long& operator[](long) override { return m_nMaxLength; }
        bool GetHeadData(long&) override { return false; }
        bool GetTailData(long&) override { return false; }
        bool EnQuene(const long&) override { return false; }
        bool DeQuene(long&) override { return false; }
    };
    class OverSingleLinks : public KyQueneOver<long, KyList<long>> {
    public:
        bool EnQuene(const long&) override { return false; }
        bool DeQuene(long&) override { return false; }
    };

    EXPECT_EQ(Idle().m_nMaxLength, -1);
    EXPECT_EQ(OverSingleLinks().m_nMaxLength, -1);
}

TEST(KyQuene, IsNeitherCopiedNorMovedNorMadeOfANumberInPassing) {
    static_assert(!std::is_copy_constructible_v<KyListQuene<long>> &&
                  !std::is_copy_assignable_v<KyListQuene<long>>);
    static_assert(!std::is_copy_constructible_v<KyPDListQuene<Owned>>);
    static_assert(!std::is_move_constructible_v<KyListQuene<long>>);
    static_assert(!std::is_convertible_v<long, KyListQuene<long>>);
    static_assert(!std::is_convertible_v<long, KyPDListQuene<Owned>>);
}

TEST(KyQuene, TakesItsParameterTypesFromTheElementType) {
    static_assert(std::is_base_of_v<KyQuene<long>, KyListQuene<long>>);
    static_assert(std::is_base_of_v<KyQuene<Owned*>, KyPDListQuene<Owned>>);
    static_assert(
        std::is_same_v<decltype(&KyQuene<Owned*>::EnQuene), bool (KyQuene<Owned*>::*)(Owned* const&)>);
    static_assert(
        std::is_same_v<decltype(&KyPDListQuene<Owned>::DeQuene), bool (KyPDListQuene<Owned>::*)(Owned*&)>);
    static_assert(std::is_same_v<decltype(KyListQuene<long>::m_list), KyList<long>>);
    static_assert(std::is_same_v<decltype(KyPDListQuene<Owned>::m_list), KyPDList<Owned>>);
}

// Both concrete queues with plain pointers as entries; null stands for no object.
template <class Queue>
class EveryQueue : public testing::Test {
protected:
    Queue m_queue;
    KyQuene<Owned*>& m_base = m_queue;
};

using Queues = testing::Types<KyListQuene<Owned*>, KyPDListQuene<Owned>>;
class QueueNames {
public:
    template <class Queue>
    static std::string GetName(int) {
        return std::is_same_v<Queue, KyListQuene<Owned*>> ? "KyListQuene" : "KyPDListQuene";
    }
};
TYPED_TEST_SUITE(EveryQueue, Queues, QueueNames);

TYPED_TEST(EveryQueue, StartsEmpty) {
    EXPECT_EQ(this->m_base.GetLength(), 0);
    EXPECT_EQ(this->m_queue.m_list.m_nLength, 0);
    EXPECT_THAT(this->m_queue, ElementsAre());
}

TYPED_TEST(EveryQueue, ReadingAnEmptyQueueAnswersFalseAndLeavesTheOutputAlone) {
    Owned object(1);
    Owned* pOut = &object;

    EXPECT_FALSE(this->m_base.DeQuene(pOut));
    EXPECT_FALSE(this->m_base.GetHeadData(pOut));
    EXPECT_FALSE(this->m_base.GetTailData(pOut));

    EXPECT_EQ(pOut, &object);
    EXPECT_EQ(this->m_base.GetLength(), 0);
}

TYPED_TEST(EveryQueue, GivesBackInTheOrderOfArrival) {
    const auto a = std::make_unique<Owned>(1);
    const auto b = std::make_unique<Owned>(2);
    Owned* pOut = nullptr;

    EXPECT_TRUE(this->m_base.EnQuene(a.get()));
    EXPECT_TRUE(this->m_base.EnQuene(b.get()));
    EXPECT_EQ(this->m_base.GetLength(), 2);
    EXPECT_TRUE(this->m_base.DeQuene(pOut));
    EXPECT_EQ(pOut, a.get());
    EXPECT_TRUE(this->m_base.GetTailData(pOut));
    EXPECT_EQ(pOut, b.get());
    pOut = nullptr;
    EXPECT_TRUE(this->m_base.GetHeadData(pOut));
    EXPECT_EQ(pOut, b.get());
    EXPECT_EQ(this->m_base.GetLength(), 1);
    EXPECT_TRUE(this->m_base.DeQuene(pOut));

    EXPECT_EQ(pOut, b.get());
    EXPECT_FALSE(this->m_base.DeQuene(pOut));
}

TYPED_TEST(EveryQueue, ReadingHeadAndTailRemovesNothing) {
    const auto a = std::make_unique<Owned>(1);
    const auto b = std::make_unique<Owned>(2);
    EnterAll<Owned*>(this->m_base, {a.get(), nullptr, b.get()});
    Owned* pHead = nullptr;
    Owned* pTail = nullptr;

    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(this->m_base.GetHeadData(pHead));
        EXPECT_TRUE(this->m_base.GetTailData(pTail));
    }

    EXPECT_EQ(pHead, a.get());
    EXPECT_EQ(pTail, b.get());
    EXPECT_THAT(this->m_queue, ElementsAre(a.get(), nullptr, b.get()));
    Drain(this->m_base);
}

TYPED_TEST(EveryQueue, ABoundOfTwoRefusesTheThird) {
    this->m_queue.m_nMaxLength = 2;

    EXPECT_TRUE(this->m_base.EnQuene(nullptr));
    EXPECT_TRUE(this->m_base.EnQuene(nullptr));
    EXPECT_FALSE(this->m_base.EnQuene(nullptr));
    EXPECT_EQ(this->m_base.GetLength(), 2);

    Owned* pOut = nullptr;
    EXPECT_TRUE(this->m_base.DeQuene(pOut));
    EXPECT_TRUE(this->m_base.EnQuene(nullptr));
    EXPECT_FALSE(this->m_base.EnQuene(nullptr));
}

TYPED_TEST(EveryQueue, ABoundOfZeroRefusesEveryEntry) {
    TypeParam queue(0);

    EXPECT_FALSE(queue.EnQuene(nullptr));

    EXPECT_EQ(queue.GetLength(), 0);
}

TYPED_TEST(EveryQueue, ANegativeBoundRefusesNone) {
    for (const long nMaxLength : {-1L, -100L}) {
        TypeParam queue(nMaxLength);

        for (int i = 0; i < 1000; ++i) {
            ASSERT_TRUE(queue.EnQuene(nullptr));
        }

        EXPECT_EQ(queue.GetLength(), 1000);
    }
}

TYPED_TEST(EveryQueue, ALoweredBoundRemovesNothing) {
    EnterAll<Owned*>(this->m_base, {nullptr, nullptr, nullptr});

    this->m_queue.m_nMaxLength = 1;

    EXPECT_EQ(this->m_base.GetLength(), 3);
    EXPECT_FALSE(this->m_base.EnQuene(nullptr));
    EXPECT_EQ(this->m_base.GetLength(), 3);
}

TYPED_TEST(EveryQueue, IndexingReachesAnEntryCountedFromTheHead) {
    const auto a = std::make_unique<Owned>(1);
    const auto b = std::make_unique<Owned>(2);
    EnterAll<Owned*>(this->m_base, {a.get(), nullptr, b.get()});

    EXPECT_EQ(this->m_base[2], b.get());
    EXPECT_EQ(this->m_base[0], a.get());
    EXPECT_EQ(this->m_base[1], nullptr);
    EXPECT_EQ(this->m_queue.m_list.m_nCurIndex, 1);
    EXPECT_EQ(this->m_base.GetLength(), 3);
    this->m_base[1] = b.get();
    this->m_base[2] = nullptr;

    EXPECT_THAT(this->m_queue, ElementsAre(a.get(), b.get(), nullptr));
    Drain(this->m_base);
}

TYPED_TEST(EveryQueue, IndexingPastTheTailGrowsPastAnyBound) {
    this->m_queue.m_nMaxLength = 1;

    Owned*& entry = this->m_base[3];
    entry = nullptr;

    EXPECT_EQ(this->m_base.GetLength(), 4);
    EXPECT_EQ(&entry, this->m_queue.m_list.GetLast());
    EXPECT_EQ(this->m_queue.m_list.m_nCurIndex, 3);
    EXPECT_FALSE(this->m_base.EnQuene(nullptr));
}

TYPED_TEST(EveryQueue, ANegativeIndexGivesTheSentinelsSlot) {
    EnterAll<Owned*>(this->m_base, {nullptr, nullptr});

    Owned*& slot = this->m_base[-1];
    EXPECT_EQ(&slot, &this->m_queue.m_list.m_pHead->m_data);
    EXPECT_EQ(&this->m_base[-77], &slot);

    EXPECT_EQ(this->m_queue.m_list.m_nCurIndex, -1);
    EXPECT_EQ(this->m_base.GetLength(), 2);
}

TYPED_TEST(EveryQueue, TheListsCursorFollowsEachOperation) {
    Owned* pOut = nullptr;
    const KyList<Owned*>& list = this->m_queue.m_list;

    EnterAll<Owned*>(this->m_base, {nullptr, nullptr, nullptr});
    EXPECT_EQ(list.m_nCurIndex, 2);
    this->m_base.GetHeadData(pOut);
    EXPECT_EQ(list.m_nCurIndex, 0);
    this->m_base.GetTailData(pOut);
    EXPECT_EQ(list.m_nCurIndex, 2);
    this->m_base.DeQuene(pOut);
    EXPECT_EQ(list.m_nCurIndex, -1);
    EXPECT_EQ(list.m_pCurNode, list.m_pHead);
    this->m_base.Reset();

    EXPECT_EQ(list.m_nCurIndex, -1);
}

TYPED_TEST(EveryQueue, ResetEmptiesAndTheQueueGoesOn) {
    EnterAll<Owned*>(this->m_base, {nullptr, nullptr});

    this->m_base.Reset();
    EXPECT_EQ(this->m_base.GetLength(), 0);
    this->m_base.EnQuene(nullptr);

    EXPECT_EQ(this->m_base.GetLength(), 1);
}

TYPED_TEST(EveryQueue, ARedefinedLengthIsWhatTheOtherOperationsSee) {
    class Pretending : public TypeParam {
    public:
        using TypeParam::TypeParam;
        long GetLength() override {
            ++m_nAsked;
            return m_nPretended;
        }
        long m_nPretended = 0;
        long m_nAsked = 0;
    };
    Pretending queue(5);
    Owned* pOut = nullptr;

    queue.m_nPretended = 5;
    EXPECT_FALSE(queue.EnQuene(nullptr));
    queue.m_nPretended = 4;
    EXPECT_TRUE(queue.EnQuene(nullptr));
    queue.m_nPretended = 0;
    EXPECT_FALSE(queue.GetHeadData(pOut));
    EXPECT_FALSE(queue.GetTailData(pOut));
    EXPECT_FALSE(queue.DeQuene(pOut));
    EXPECT_EQ(queue.m_nAsked, 5);
    queue.m_nPretended = 9;
    EXPECT_TRUE(queue.GetHeadData(pOut));

    EXPECT_EQ(queue.m_list.m_nLength, 1);
}

TYPED_TEST(EveryQueue, IsARangeFromHeadToTail) {
    const auto a = std::make_unique<Owned>(1);
    EnterAll<Owned*>(this->m_base, {a.get(), nullptr});
    const TypeParam& queue = this->m_queue;

    EXPECT_THAT(queue, ElementsAre(a.get(), nullptr));
    EXPECT_EQ(std::count(queue.begin(), queue.end(), a.get()), 1);
    static_assert(std::is_same_v<decltype(*queue.begin()), Owned* const&>);
    *this->m_queue.begin() = nullptr;

    EXPECT_THAT(this->m_queue, ElementsAre(nullptr, nullptr));
}

TYPED_TEST(EveryQueue, ARefusedNodeLeavesTheEntriesAsTheyWere) {
    EnterAll<Owned*>(this->m_base, {nullptr});

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(this->m_base.EnQuene(nullptr), std::bad_alloc);
    }

    EXPECT_EQ(this->m_base.GetLength(), 1);
    EXPECT_TRUE(this->m_base.EnQuene(nullptr));
    EXPECT_EQ(this->m_base.GetLength(), 2);
}

// Values

TEST(KyListQuene, HoldsValues) {
    KyListQuene<long> queue;
    EnterAll<long>(queue, {3, 1, 2});

    EXPECT_EQ(queue[1], 1);
    EXPECT_THAT(Drain(queue), ElementsAre(3, 1, 2));
}

TEST(KyListQuene, IsMadeFromEmptyBracesAsEveryQueueIs) {
    struct EmptyQueues {
        KyListQuene<long> m_values;
        KyPDListQuene<long> m_objects;
    };

    const EmptyQueues queues = {};

    EXPECT_EQ(queues.m_values.m_nMaxLength, -1);
    EXPECT_EQ(queues.m_objects.m_nMaxLength, -1);
    EXPECT_FALSE((std::is_convertible_v<long, KyListQuene<long>>));
    EXPECT_FALSE((std::is_convertible_v<long, KyPDListQuene<long>>));
}

TEST(KyListQuene, LeavesTheOutputAloneWhenEmpty) {
    KyListQuene<long> queue;
    long nOut = 42;

    EXPECT_FALSE(queue.DeQuene(nOut));

    EXPECT_EQ(nOut, 42);
}

TEST(KyListQuene, GrowsByDefaultValues) {
    KyListQuene<long> queue;
    queue.EnQuene(7);

    queue[3] = 9;

    EXPECT_THAT(queue, ElementsAre(7, 0, 0, 9));
}

TEST(KyListQuene, EntersAnEntryOfItsOwn) {
    KyListQuene<std::vector<long>> queue;
    queue.EnQuene({1, 2});

    queue.EnQuene(queue[0]);

    EXPECT_THAT(queue, ElementsAre(ElementsAre(1, 2), ElementsAre(1, 2)));
}

TEST(KyListQuene, DoesNotOwnWhatItsPointersPointTo) {
    const OwnedWatch watch;
    Owned object(1);
    {
        KyListQuene<Owned*> queue;
        EnterAll<Owned*>(queue, {&object, &object});
        queue.Reset();
        queue.EnQuene(&object);
    }

    EXPECT_THAT(watch.Destroyed(), IsEmpty());
}

TEST(KyListQuene, ACopyThatThrowsOnTheWayInOrOutLosesNothing) {
    FragileWatch watch;
    {
        KyListQuene<Fragile> queue;
        const Fragile value(7);
        queue.EnQuene(value);
        Fragile out(42);
        watch.Allow(0);

        EXPECT_THROW(queue.EnQuene(value), std::runtime_error);
        EXPECT_THROW(queue.DeQuene(out), std::runtime_error);

        watch.Allow(-1);
        EXPECT_THAT(queue, ElementsAre(Fragile(7)));
        EXPECT_EQ(out, Fragile(42));
    }
    EXPECT_EQ(watch.Live(), 0);
}

// Ownership

TEST(KyPDListQuene, DestroysWhatIsStillQueued) {
    const OwnedWatch watch;
    {
        KyPDListQuene<Owned> queue;
        EnterAll<Owned*>(queue, {new Owned(1), nullptr, new Owned(2)});
        std::unique_ptr<KyQuene<Owned*>> pQueue = std::make_unique<KyPDListQuene<Owned>>();
        pQueue->EnQuene(new Owned(3));
    }

    EXPECT_EQ(watch.Live(), 0);
    EXPECT_THAT(watch.Destroyed(), ElementsAre(3, 1, 2));
}

TEST(KyPDListQuene, ResetDestroysWhatIsQueuedAndNotWhatWasTakenOut) {
    const OwnedWatch watch;
    KyPDListQuene<Owned> queue;
    EnterAll<Owned*>(queue, {new Owned(1), new Owned(2), nullptr, new Owned(3)});
    Owned* pOut = nullptr;
    queue.DeQuene(pOut);
    const std::unique_ptr<Owned> pTaken(pOut);

    queue.Reset();

    EXPECT_EQ(pTaken->m_nId, 1);
    EXPECT_THAT(watch.Destroyed(), ElementsAre(2, 3));
    EXPECT_EQ(queue.GetLength(), 0);
}

TEST(KyPDListQuene, ReadingHeadAndTailKeepsTheOwnership) {
    const OwnedWatch watch;
    {
        KyPDListQuene<Owned> queue;
        queue.EnQuene(new Owned(1));
        Owned* pHead = nullptr;
        Owned* pTail = nullptr;

        queue.GetHeadData(pHead);
        queue.GetTailData(pTail);

        EXPECT_EQ(pHead, pTail);
        EXPECT_THAT(watch.Destroyed(), IsEmpty());
    }
    EXPECT_THAT(watch.Destroyed(), ElementsAre(1));
}

TEST(KyPDListQuene, ARefusedObjectStaysWithTheCaller) {
    const OwnedWatch watch;
    const auto pObject = std::make_unique<Owned>(1);
    {
        KyPDListQuene<Owned> queue(0);

        EXPECT_FALSE(queue.EnQuene(pObject.get()));
    }

    EXPECT_THAT(watch.Destroyed(), IsEmpty());
}

TEST(KyPDListQuene, ANodeThatCannotBeHadLeavesTheObjectWithTheCaller) {
    const OwnedWatch watch;
    const auto pObject = std::make_unique<Owned>(1);
    {
        KyPDListQuene<Owned> queue;
        const FailingAllocation failing(0);

        EXPECT_THROW(queue.EnQuene(pObject.get()), std::bad_alloc);
    }

    EXPECT_THAT(watch.Destroyed(), IsEmpty());
}

TEST(KyPDListQuene, IndexingPastTheTailAddsNullEntries) {
    KyPDListQuene<Owned> queue;

    Owned*& entry = queue[3];

    EXPECT_EQ(entry, nullptr);
    EXPECT_EQ(&entry, queue.m_list.GetLast());
    EXPECT_THAT(queue, ElementsAre(nullptr, nullptr, nullptr, nullptr));
}

TEST(KyPDListQuene, TakesOutANullEntryLikeAnyOther) {
    KyPDListQuene<Owned> queue;
    queue.EnQuene(nullptr);
    Owned object(1);
    Owned* pOut = &object;

    EXPECT_TRUE(queue.DeQuene(pOut));

    EXPECT_EQ(pOut, nullptr);
    EXPECT_EQ(queue.GetLength(), 0);
}

}  // namespace
