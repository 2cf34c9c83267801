// The channel and the allocator: what a queued event is made of, that nothing is leaked whichever allocation
// fails or handler throws, and what the channel looks like inside afterwards.

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>
#include <string>

#include "AllocationLog.h"
#include "Inside.h"
#include "Recorder.h"

namespace {

using testing::ElementsAre;

constexpr wchar_t szName[] = L"a name of thirty-one characters";
constexpr long nMostAllocations = 10;

/// Empty at both ends; a test that leaves something behind is told.
class KyEventStorage : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(g_queneEvent.GetLength(), 0);
        EXPECT_EQ(g_lstReactor.GetLength(), 0);
    }
};

/// Performs an operation with its first allocation failing, then with its second, until it needs no more, and
/// returns how many it needs. After each failure nothing may be left.
template <class Operation, class AfterFailure>
long FailEachAllocationOf(Operation operation, AfterFailure afterFailure) {
    for (long nAllocation = 0; nAllocation < nMostAllocations; ++nAllocation) {
        std::size_t nLeaked = 0;
        bool bFailed = false;
        {
            const AllocationLog watch;
            const FailingAllocation failing(nAllocation);
            try {
                operation();
            } catch (const std::bad_alloc&) {
                bFailed = true;
            }
            nLeaked = watch.LiveBytes();
        }
        if (!bFailed) return nAllocation;
        EXPECT_EQ(nLeaked, 0u) << "allocation " << nAllocation << " failed";
        afterFailure();
    }
    return nMostAllocations;
}

TEST_F(KyEventStorage, AQueuedEventIsARecordItsNameAndANode) {
    std::size_t nLive = 0;
    {
        const AllocationLog watch;
        KyPostEvent(szName, nullptr, 0);
        nLive = watch.LiveBytes();
    }

    EXPECT_EQ(nLive, sizeof(KyEvent) + sizeof(szName) + sizeof(KyDListNode<KyEvent*>));
    KyProcessPostEvents();
}

TEST_F(KyEventStorage, ANameOfUpTo23CharactersIsSentWithoutAllocating) {
    long nShort = 0, nLong = 0;
    {
        const AllocationLog watch;
        KySendEvent(L"", nullptr, 0);
        KySendEvent(nullptr, nullptr, 0);
        KySendEvent(L"twenty-three characters", nullptr, 0);
        nShort = watch.Allocations();
        KySendEvent(L"twenty-four characters..", nullptr, 0);
        nLong = watch.Allocations();
    }

    EXPECT_EQ(nShort, 0);
    EXPECT_EQ(nLong, 1) << "the name";
}

TEST_F(KyEventStorage, ADeliveredEventLeavesNothing) {
    std::size_t nPosted = 0, nSent = 0;
    {
        const AllocationLog watch;
        KyPostEvent(szName, nullptr, 0);
        KyProcessPostEvents();
        nPosted = watch.LiveBytes();
        KySendEvent(szName, nullptr, 0);
        nSent = watch.LiveBytes();
    }

    EXPECT_EQ(nPosted, 0u);
    EXPECT_EQ(nSent, 0u);
}

TEST_F(KyEventStorage, APostThatRunsOutOfMemoryQueuesNothingAndLeaksNothing) {
    const long nNeeded = FailEachAllocationOf([] { KyPostEvent(szName, nullptr, 0); },
                                              [] { EXPECT_EQ(g_queneEvent.GetLength(), 0); });

    EXPECT_GE(nNeeded, 3) << "record, name and node";
    EXPECT_LT(nNeeded, nMostAllocations);
    EXPECT_EQ(g_queneEvent.GetLength(), 1) << "the attempt that had its memory";
    KyProcessPostEvents();
}

TEST_F(KyEventStorage, APostThatRunsOutOfMemoryLeavesThoseAlreadyQueued) {
    Calls calls;
    Recorder reactor(calls, "A");
    KyPostEvent(L"1", nullptr, 0);
    FailEachAllocationOf([] { KyPostEvent(L"2", nullptr, 0); },
                         [] { EXPECT_EQ(g_queneEvent.GetLength(), 1); });

    KyRegisterReactor(&reactor);
    KyProcessPostEvents();

    EXPECT_THAT(calls, ElementsAre("A:1", "A:2"));
}

TEST_F(KyEventStorage, ASendThatRunsOutOfMemoryReachesNobodyAndLeaksNothing) {
    class Counter : public KyEventReactor {
    public:
        void React(const wchar_t*, void*) override { ++m_nCalls; }
        int m_nCalls = 0;
    };
    Counter counter;
    KyRegisterReactor(&counter);

    const long nNeeded = FailEachAllocationOf([] { KySendEvent(szName, nullptr, 0); },
                                              [&] { EXPECT_EQ(counter.m_nCalls, 0); });

    EXPECT_GE(nNeeded, 1);
    EXPECT_EQ(counter.m_nCalls, 1) << "the attempt that had its memory";
    KyUnRegisterReactor(&counter);
}

TEST_F(KyEventStorage, ARegistrationThatRunsOutOfMemoryAddsNobody) {
    Calls calls;
    Recorder reactor(calls, "A");

    const long nNeeded = FailEachAllocationOf([&] { KyRegisterReactor(&reactor); },
                                              [] { EXPECT_EQ(g_lstReactor.GetLength(), 0); });

    EXPECT_EQ(nNeeded, 1);
    EXPECT_EQ(g_lstReactor.GetLength(), 1);
    KyUnRegisterReactor(&reactor);
}

TEST_F(KyEventStorage, UnregisteringAndDrainingAnEmptyQueueAllocateNothing) {
    Calls calls;
    Recorder reactor(calls, "A");
    KyRegisterReactor(&reactor);
    long nAllocations = 0;
    {
        const AllocationLog watch;
        KyProcessPostEvents();
        KyUnRegisterReactor(&reactor);
        nAllocations = watch.Allocations();
    }

    EXPECT_EQ(nAllocations, 0);
}

TEST_F(KyEventStorage, AThrowingHandlerLeaksNoEventSentOrPosted) {
    class Thrower : public KyEventReactor {
    public:
        void React(const wchar_t*, void*) override { throw 1; }
    };
    Thrower thrower;
    KyRegisterReactor(&thrower);
    std::size_t nSent = 0, nPosted = 0;
    int nCaught = 0;
    {
        const AllocationLog watch;
        try {
            KySendEvent(szName, nullptr, 0);
        } catch (int) {
            ++nCaught;
        }
        nSent = watch.LiveBytes();
        KyPostEvent(szName, nullptr, 0);
        try {
            KyProcessPostEvents();
        } catch (int) {
            ++nCaught;
        }
        nPosted = watch.LiveBytes();
    }

    EXPECT_EQ(nCaught, 2);
    EXPECT_EQ(nSent, 0u);
    EXPECT_EQ(nPosted, 0u);
    KyUnRegisterReactor(&thrower);
}

TEST_F(KyEventStorage, EachEventOfADrainIsGoneBeforeTheNextIsDelivered) {
    Calls calls;
    std::vector<long> lengths;
    Recorder reactor(calls, "A");
    KyRegisterReactor(&reactor);
    KyPostEvent(L"1", nullptr, 0);
    KyPostEvent(L"2", nullptr, 0);
    reactor.Once([&] {
        lengths.push_back(g_queneEvent.GetLength());
        reactor.Once([&] { lengths.push_back(g_queneEvent.GetLength()); });
    });

    KyProcessPostEvents();

    EXPECT_THAT(lengths, ElementsAre(1, 0)) << "an event is off the queue when its handlers run";
}

TEST_F(KyEventStorage, EveryWalkEndsWithTheCursorOnNone) {
    Calls calls;
    Recorder a(calls, "A"), b(calls, "B");
    KyRegisterReactor(&a);
    KyRegisterReactor(&b);
    EXPECT_EQ(g_lstReactor.m_nCurIndex, 1) << "registering leaves it on the new entry";

    KySendEvent(L"e", nullptr, 0);
    EXPECT_EQ(g_lstReactor.m_nCurIndex, -1);

    KyRegisterReactor(&a);
    KyUnRegisterReactor(&a);
    EXPECT_EQ(g_lstReactor.m_nCurIndex, -1);

    KyUnRegisterReactor(&b);
    EXPECT_EQ(g_lstReactor.m_nCurIndex, -1);
}

TEST_F(KyEventStorage, TheWalkStepsOnFromTheIndexThatAHandlerLeft) {
    Calls calls;
    Recorder a(calls, "A"), b(calls, "B"), c(calls, "C"), d(calls, "D");
    for (Recorder* p : {&a, &b, &c, &d}) {
        KyRegisterReactor(p);
    }
    // A walk of its own that stops at the same reactor, which is the second by then.
    c.Once([&] {
        KyUnRegisterReactor(&a);
        c.Once([] { throw std::runtime_error("no"); });
        EXPECT_THROW(KySendEvent(L"inner", nullptr, 0), std::runtime_error);
        EXPECT_EQ(g_lstReactor.m_nCurIndex, 1);
    });
    long nIndex = 0;
    d.Once([&] { nIndex = g_lstReactor.m_nCurIndex; });

    KySendEvent(L"outer", nullptr, 0);

    EXPECT_EQ(nIndex, 2);
    EXPECT_THAT(calls, ElementsAre("A:outer", "B:outer", "C:outer", "B:inner", "C:inner", "D:outer"));
}

TEST_F(KyEventStorage, TheQueueHasNoBound) { EXPECT_EQ(g_queneEvent.m_nMaxLength, -1); }

}  // namespace
