// The event channel from outside, one call at a time: registration, masks, sending, posting and draining.
// Handlers that meddle with the channel are in KyEventReentrancy_test.cpp.

#include "VexaBase/event/KyEventReactor.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <deque>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "Recorder.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/event/KyScopedReactor.h"
#include "tests/rx/Layout.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KyEventChannel : public testing::Test {
protected:
    void Register(std::initializer_list<KyEventReactor*> reactors) {
        for (KyEventReactor* pReactor : reactors) {
            KyRegisterReactor(pReactor);
        }
    }

    Calls m_calls;
    Recorder m_a{m_calls, "A"}, m_b{m_calls, "B"}, m_c{m_calls, "C"};
};

// Registration
// --------------------------------------------------------------------------------------------------------

TEST_F(KyEventChannel, WithNobodyRegisteredASentEventReachesNobody) {
    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, IsEmpty());
}

TEST_F(KyEventChannel, ReactorsAreCalledInTheOrderOfRegistration) {
    Register({&m_b, &m_c, &m_a});

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("B:e", "C:e", "A:e"));
}

TEST_F(KyEventChannel, AReactorRegisteredTwiceIsCalledTwiceAtItsPlaces) {
    Register({&m_a, &m_b, &m_a});

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "A:e"));
}

TEST_F(KyEventChannel, UnregisteringRemovesEveryEntryAndKeepsTheOrderOfTheOthers) {
    Register({&m_a, &m_b, &m_a, &m_a, &m_c, &m_a});

    KyUnRegisterReactor(&m_a);
    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("B:e", "C:e"));
}

TEST_F(KyEventChannel, UnregisteringTheOnlyReactorLeavesNone) {
    Register({&m_a});

    KyUnRegisterReactor(&m_a);
    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, IsEmpty());
}

TEST_F(KyEventChannel, UnregisteringTheFirstTheMiddleOrTheLastLeavesTheOthers) {
    for (Recorder* pGone : {&m_a, &m_b, &m_c}) {
        m_calls.clear();
        Register({&m_a, &m_b, &m_c});

        KyUnRegisterReactor(pGone);
        KySendEvent(L"e", nullptr, 0);

        Calls expected;
        if (pGone != &m_a) expected.emplace_back("A:e");
        if (pGone != &m_b) expected.emplace_back("B:e");
        if (pGone != &m_c) expected.emplace_back("C:e");
        EXPECT_EQ(m_calls, expected);
        for (Recorder* pReactor : {&m_a, &m_b, &m_c}) {
            KyUnRegisterReactor(pReactor);
        }
    }
}

TEST_F(KyEventChannel, UnregisteringAnUnknownReactorOrNoneIsIgnored) {
    Register({&m_a, &m_b});

    KyUnRegisterReactor(&m_c);
    KyUnRegisterReactor(nullptr);
    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e"));
}

TEST_F(KyEventChannel, AReactorCanComeBackAndThenStandsLast) {
    Register({&m_a, &m_b});
    KyUnRegisterReactor(&m_a);

    Register({&m_a});
    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("B:e", "A:e"));
}

TEST_F(KyEventChannel, UnregisteringDoesNotTouchTheObject) {
    class Silent : public KyEventReactor {
    public:
        void React(const wchar_t*, void*) override {}
    };
    alignas(Silent) std::array<unsigned char, sizeof(Silent)> storage;
    auto* const pGone = new (storage.data()) Silent;
    Register({&m_a, pGone, &m_b});
    pGone->~Silent();
    storage.fill(0xFF);

    KyUnRegisterReactor(pGone);
    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(storage, testing::Each(0xFF));
    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e"));
}

TEST_F(KyEventChannel, AScopedReactorIsRegisteredForItsScope) {
    {
        const KyScopedReactor listening(m_a);
        KySendEvent(L"in", nullptr, 0);
    }
    KySendEvent(L"out", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:in"));
}

// Masks
// ---------------------------------------------------------------------------------------------------------------

TEST_F(KyEventChannel, TheMasksDecideWhomAnEventReaches) {
    m_b.m_nMask = 0x1;
    m_c.m_nMask = 0x6;
    Register({&m_a, &m_b, &m_c});

    KySendEvent(L"two", nullptr, 0x2);
    EXPECT_THAT(m_calls, ElementsAre("A:two", "C:two"));

    m_calls.clear();
    KySendEvent(L"zero", nullptr, 0);
    EXPECT_THAT(m_calls, ElementsAre("A:zero", "B:zero", "C:zero"));

    m_calls.clear();
    KySendEvent(L"eight", nullptr, 0x8);
    EXPECT_THAT(m_calls, ElementsAre("A:eight"));
}

TEST_F(KyEventChannel, TheHighestBitOfAMaskIsABitLikeAnyOther) {
    m_a.m_nMask = 0x80000000u;
    m_b.m_nMask = 0x7FFFFFFFu;
    Register({&m_a, &m_b});

    KySendEvent(L"e", nullptr, 0x80000000u);

    EXPECT_THAT(m_calls, ElementsAre("A:e"));
}

TEST_F(KyEventChannel, AReactorsMaskIsReadWhenItsTurnComes) {
    Register({&m_a, &m_b});
    m_b.m_nMask = 0x2;
    m_a.Once([&] { m_b.m_nMask = 0x1; });

    KySendEvent(L"e", nullptr, 0x1);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e"));
}

TEST_F(KyEventChannel, TheNamePlaysNoPartInTheChoice) {
    m_a.m_nMask = 0x1;
    Register({&m_a});

    KySendEvent(L"A", nullptr, 0x2);
    KySendEvent(L"", nullptr, 0x1);
    KySendEvent(nullptr, nullptr, 0x1);

    EXPECT_THAT(m_calls, ElementsAre("A:", "A:"));
}

RC_GTEST_PROP(KyEventMasks, AnEventReachesAReactorWhenEitherMaskIsZeroOrTheyMeet, ()) {
    const auto mask = rc::gen::weightedOneOf<unsigned int>(
        {{1, rc::gen::just(0u)},
         {3, rc::gen::map(rc::gen::inRange(0, 32), [](int n) { return 1u << n; })},
         {2, rc::gen::arbitrary<unsigned int>()}});
    const auto masks = *rc::gen::container<std::vector<unsigned int>>(mask);
    const unsigned int nEventMask = *mask;
    Calls calls, expected;
    std::deque<Recorder> reactors;
    for (const unsigned int nMask : masks) {
        const std::string strName = std::to_string(reactors.size());
        KyRegisterReactor(&reactors.emplace_back(calls, strName, nMask));
        if (nMask == 0 || nEventMask == 0 || (nMask & nEventMask) != 0) expected.push_back(strName + ":e");
    }

    KySendEvent(L"e", nullptr, nEventMask);
    RC_ASSERT(calls == expected);

    calls.clear();
    KyPostEvent(L"e", nullptr, nEventMask);
    KyProcessPostEvents();
    RC_ASSERT(calls == expected);
}

// Sending
// -------------------------------------------------------------------------------------------------------------

TEST_F(KyEventChannel, ASentEventIsDeliveredBeforeSendReturns) {
    Register({&m_a});
    bool bDelivered = false;
    m_a.Once([&] { bDelivered = true; });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_TRUE(bDelivered);
}

TEST_F(KyEventChannel, TheHandlerReceivesACopyOfTheNameAndTheVeryPointer) {
    class Keen : public KyEventReactor {
    public:
        void React(const wchar_t* pszName, void* pData) override {
            m_pszName = pszName;
            m_strName = pszName;
            m_pData = pData;
        }
        const wchar_t* m_pszName = nullptr;
        std::wstring m_strName;
        void* m_pData = nullptr;
    };
    Keen keen;
    const KyScopedReactor listening(keen);
    const wchar_t szName[] = L"gr\u00f6\u00dfer \U0001F600";
    int nData = 0;

    KySendEvent(szName, &nData, 0);

    EXPECT_NE(keen.m_pszName, szName);
    EXPECT_EQ(keen.m_strName, szName);
    EXPECT_EQ(keen.m_pData, &nData);
}

RC_GTEST_PROP(KyEventNames, ArriveAsTheyWereSentOrPosted, ()) {
    class Reader : public KyEventReactor {
    public:
        void React(const wchar_t* pszName, void* pData) override {
            m_names.emplace_back(pszName);
            m_bIsCopy = m_bIsCopy && pszName != pData;
        }
        std::vector<std::wstring> m_names;
        bool m_bIsCopy = true;
    };
    const auto codes =
        *rc::gen::scale(2, rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 0x110000)));
    std::wstring name(codes.begin(), codes.end());
    Reader reader;
    const KyScopedReactor listening(reader);

    KySendEvent(name.c_str(), name.data(), 0);
    KyPostEvent(name.c_str(), name.data(), 0);
    KyProcessPostEvents();

    RC_ASSERT(reader.m_names == (std::vector<std::wstring>{name, name}));
    RC_ASSERT(reader.m_bIsCopy);
}

TEST_F(KyEventChannel, SendingLeavesTheQueueAlone) {
    KyPostEvent(L"posted", nullptr, 0);
    KySendEvent(L"unheard", nullptr, 0);
    Register({&m_a});

    KySendEvent(L"sent", nullptr, 0);
    EXPECT_THAT(m_calls, ElementsAre("A:sent"));

    KyProcessPostEvents();
    EXPECT_THAT(m_calls, ElementsAre("A:sent", "A:posted"));
}

TEST_F(KyEventChannel, ANullNameIsEmpty) {
    Register({&m_a});

    KySendEvent(nullptr, nullptr, 0);
    KyPostEvent(nullptr, nullptr, 0);
    KyProcessPostEvents();

    EXPECT_THAT(m_calls, ElementsAre("A:", "A:"));
}

// Posting and draining
// ------------------------------------------------------------------------------------------------

TEST_F(KyEventChannel, DrainingAnEmptyQueueCallsNobody) {
    Register({&m_a});

    KyProcessPostEvents();

    EXPECT_THAT(m_calls, IsEmpty());
}

TEST_F(KyEventChannel, APostedEventWaitsForTheDrain) {
    Register({&m_a});

    KyPostEvent(L"e", nullptr, 0);
    EXPECT_THAT(m_calls, IsEmpty());

    KyProcessPostEvents();
    EXPECT_THAT(m_calls, ElementsAre("A:e"));
}

TEST_F(KyEventChannel, PostedEventsAreDeliveredInTheOrderOfPostingAndLeaveTheQueue) {
    Register({&m_a, &m_b});
    for (const wchar_t* pszName : {L"c", L"a", L"b"}) {
        KyPostEvent(pszName, nullptr, 0);
    }

    KyProcessPostEvents();
    EXPECT_THAT(m_calls, ElementsAre("A:c", "B:c", "A:a", "B:a", "A:b", "B:b"));

    m_calls.clear();
    KyProcessPostEvents();
    EXPECT_THAT(m_calls, IsEmpty());
}

TEST_F(KyEventChannel, ManyPostedEventsAllArriveInOrder) {
    Register({&m_a});
    Calls expected;
    for (int i = 0; i < 5000; ++i) {
        KyPostEvent(std::to_wstring(i).c_str(), nullptr, 0);
        expected.push_back("A:" + std::to_string(i));
    }

    KyProcessPostEvents();

    EXPECT_EQ(m_calls, expected);
}

TEST_F(KyEventChannel, ThePostersNameBufferMayChangeAtOnce) {
    Register({&m_a});
    std::wstring strName = L"before";

    KyPostEvent(strName.c_str(), nullptr, 0);
    strName = L"after!";
    KyProcessPostEvents();

    EXPECT_THAT(m_calls, ElementsAre("A:before"));
}

TEST_F(KyEventChannel, APostedEventCarriesItsOwnPointerAndMask) {
    m_b.m_nMask = 0x1;
    Register({&m_a, &m_b});
    int nFirst = 0, nSecond = 0;

    KyPostEvent(L"one", &nFirst, 0x1);
    KyPostEvent(L"two", &nSecond, 0x2);
    KyProcessPostEvents();

    EXPECT_THAT(m_calls, ElementsAre("A:one", "B:one", "A:two"));
    EXPECT_THAT(m_a.m_data, ElementsAre(&nFirst, &nSecond));
    EXPECT_THAT(m_b.m_data, ElementsAre(&nFirst));
}

TEST_F(KyEventChannel, ReactorsAreChosenWhenAnEventIsDeliveredNotWhenItIsPosted) {
    Register({&m_a});
    KyPostEvent(L"e", nullptr, 0);
    KyUnRegisterReactor(&m_a);
    Register({&m_b});

    KyProcessPostEvents();

    EXPECT_THAT(m_calls, ElementsAre("B:e"));
}

TEST_F(KyEventChannel, ADrainWithNobodyListeningEmptiesTheQueue) {
    KyPostEvent(L"e", nullptr, 0);
    KyProcessPostEvents();
    Register({&m_a});

    KyProcessPostEvents();

    EXPECT_THAT(m_calls, IsEmpty());
}

// Handlers that throw
// -------------------------------------------------------------------------------------------------

TEST_F(KyEventChannel, AThrowingHandlerEndsTheWalkOfASentEventAndTheNextOneIsDeliveredInFull) {
    Register({&m_a, &m_b, &m_c});
    m_b.Once([] { throw std::runtime_error("B"); });

    EXPECT_THROW(KySendEvent(L"e", nullptr, 0), std::runtime_error);
    KySendEvent(L"f", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "A:f", "B:f", "C:f"));
}

TEST_F(KyEventChannel, AThrowingHandlerEndsTheDrainAndTheRestStaysQueued) {
    Register({&m_a, &m_b});
    for (const wchar_t* pszName : {L"1", L"2", L"3"}) {
        KyPostEvent(pszName, nullptr, 0);
    }
    m_a.Once([] { throw std::runtime_error("A"); });

    EXPECT_THROW(KyProcessPostEvents(), std::runtime_error);
    EXPECT_THAT(m_calls, ElementsAre("A:1"));

    KyPostEvent(L"4", nullptr, 0);
    KyProcessPostEvents();
    EXPECT_THAT(m_calls, ElementsAre("A:1", "A:2", "B:2", "A:3", "B:3", "A:4", "B:4"));
}

TEST_F(KyEventChannel, AfterAThrowingHandlerReactorsComeAndGoAsBefore) {
    Register({&m_a, &m_b});
    m_a.Once([] { throw std::runtime_error("A"); });
    EXPECT_THROW(KySendEvent(L"e", nullptr, 0), std::runtime_error);
    m_calls.clear();

    Register({&m_c});
    KyUnRegisterReactor(&m_a);
    KySendEvent(L"f", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("B:f", "C:f"));
}

// The records
// ---------------------------------------------------------------------------------------------------------

TEST(KyEvent, HoldsACopyOfTheNameThePointerAndTheMask) {
    std::wstring strName = L"name";
    int nData = 0;

    const KyEvent event(strName.c_str(), &nData, 0x80000001u);
    strName = L"gone";

    EXPECT_EQ(std::wstring(event.m_strName.c_str()), L"name");
    EXPECT_EQ(event.m_pData, &nData);
    EXPECT_EQ(event.m_nMask, 0x80000001u);
}

TEST(KyEvent, OrdersByNameAlone) {
    int nData = 0;
    const KyEvent a(L"a", &nData, 9), again(L"a", nullptr, 0), ab(L"ab", nullptr, 0), b(L"b", nullptr, 0);

    EXPECT_TRUE(a < ab);
    EXPECT_TRUE(ab < b);
    EXPECT_TRUE(b > ab);
    EXPECT_FALSE(ab < a);
    EXPECT_FALSE(a > ab);
    EXPECT_FALSE(a < again);
    EXPECT_FALSE(a > again);
}

TEST(KyEvent, OrdersByTheNumbersOfTheCharactersNotByTheirAlphabet) {
    const KyEvent upper(L"Z", nullptr, 0), lower(L"a", nullptr, 0), accented(L"\u00e9", nullptr, 0);
    const KyEvent ideograph(L"\u4e2d", nullptr, 0), emoji(L"\U0001F600", nullptr, 0), empty(L"", nullptr, 0);

    EXPECT_TRUE(empty < upper);
    EXPECT_TRUE(upper < lower);
    EXPECT_TRUE(lower < accented);
    EXPECT_TRUE(accented < ideograph);
    EXPECT_TRUE(ideograph < emoji);
}

TEST(KyEvent, AnOwningListSortsEventsByNameStably) {
    KyPDList<KyEvent> events;
    unsigned int nMask = 0;
    for (const wchar_t* pszName : {L"b", L"a", L"ab", L"b", L"a"}) {
        events.Append(new KyEvent(pszName, nullptr, nMask++));
    }
    const auto names = [&] {
        std::vector<std::wstring> result;
        for (const KyEvent* pEvent : events) {
            result.push_back(pEvent->m_strName.c_str() + std::to_wstring(pEvent->m_nMask));
        }
        return result;
    };

    events.Sort(true);
    EXPECT_THAT(names(), ElementsAre(L"a1", L"a4", L"ab2", L"b0", L"b3"));

    events.Sort(false);
    EXPECT_THAT(names(), ElementsAre(L"b0", L"b3", L"ab2", L"a1", L"a4"));
}

TEST(KyEventReactor, ItsMaskIsTheConstructorsArgumentAndZeroByDefault) {
    class Silent : public KyEventReactor {
    public:
        using KyEventReactor::KyEventReactor;
        void React(const wchar_t*, void*) override {}
    };

    EXPECT_EQ(Silent().m_nMask, 0u);
    EXPECT_EQ(Silent(0xF0u).m_nMask, 0xF0u);
}

// Layout
// --------------------------------------------------------------------------------------------------------------

TEST(KyEvent, FieldsStandInTheirOrderAndThereIsNoTable) {
    const KyEvent event(L"", nullptr, 0);

    EXPECT_FALSE(std::is_polymorphic_v<KyEvent>);
    EXPECT_FALSE(std::has_virtual_destructor_v<KyEvent>);
    EXPECT_EQ(OffsetOf(event, event.m_strName), 0);
    EXPECT_EQ(OffsetOf(event, event.m_pData), static_cast<long>(sizeof(KyString)));
    EXPECT_EQ(OffsetOf(event, event.m_nMask), static_cast<long>(sizeof(KyString) + sizeof(void*)));
}

TEST(KyEventReactor, TheTableHoldsReactThenTheDestructorsAndTheMaskStandsBehindIt) {
    class Probe : public KyEventReactor {
    public:
        void React(const wchar_t*, void*) override {}
        virtual void Next() {}
    };
    const Probe probe;

    EXPECT_EQ(SlotOf(&KyEventReactor::React), 0);
    EXPECT_TRUE(std::has_virtual_destructor_v<KyEventReactor>);
    EXPECT_EQ(SlotOf(&Probe::Next), 3);
    EXPECT_EQ(OffsetOf<KyEventReactor>(probe, probe.m_nMask), 8);
    EXPECT_EQ(sizeof(KyEventReactor), 16u);
    EXPECT_TRUE((std::is_same_v<decltype(probe.m_nMask), unsigned int>));
}

TEST(KyEventReactor, ADerivedOneIsMadeFromEmptyBraces) {
    struct Deaf : KyEventReactor {
        void React(const wchar_t* /*pszName*/, void* /*pData*/) override {}
    };
    struct Holder {
        Deaf m_reactor;
    };

    const Holder holder = {};

    EXPECT_EQ(holder.m_reactor.m_nMask, 0u);
}

}  // namespace
