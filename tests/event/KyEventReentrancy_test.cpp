// Handlers that meddle with the channel while it delivers: the exact sequence of handler calls. Delivery
// walks the list of reactors with that list's own cursor, so each sequence follows from where the handler
// left the cursor.

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

#include "Recorder.h"
#include "VexaBase/event/KyEventReactor.h"

namespace {

using testing::ElementsAre;

/// A, B and C are registered in that order; D is not.
class KyEventReentrancy : public testing::Test {
protected:
    KyEventReentrancy() {
        for (Recorder* pReactor : {&m_a, &m_b, &m_c}) {
            KyRegisterReactor(pReactor);
        }
    }

    Calls m_calls;
    Recorder m_a{m_calls, "A"}, m_b{m_calls, "B"}, m_c{m_calls, "C"}, m_d{m_calls, "D"};
};

// Registering
// ---------------------------------------------------------------------------------------------------------

TEST_F(KyEventReentrancy, RegisteringEndsTheWalkAndTheNewReactorReceivesTheNextEvent) {
    m_a.Once([&] { KyRegisterReactor(&m_d); });

    KySendEvent(L"e", nullptr, 0);
    EXPECT_THAT(m_calls, ElementsAre("A:e"));

    m_calls.clear();
    KySendEvent(L"f", nullptr, 0);
    EXPECT_THAT(m_calls, ElementsAre("A:f", "B:f", "C:f", "D:f"));
}

TEST_F(KyEventReentrancy, RegisteringFromTheMiddleEndsTheWalkThere) {
    m_b.Once([&] { KyRegisterReactor(&m_d); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e"));
}

TEST_F(KyEventReentrancy, RegisteringFromTheLastReactorLeavesTheNewOneOut) {
    m_c.Once([&] { KyRegisterReactor(&m_d); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, RegisteringAReactorOnceMoreEndsTheWalkToo) {
    m_a.Once([&] { KyRegisterReactor(&m_b); });

    KySendEvent(L"e", nullptr, 0);
    KySendEvent(L"f", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "A:f", "B:f", "C:f", "B:f"));
}

TEST_F(KyEventReentrancy, RegisteringDuringADrainEndsOneEventsWalkAndNotTheNext) {
    KyPostEvent(L"1", nullptr, 0);
    KyPostEvent(L"2", nullptr, 0);
    m_a.Once([&] { KyRegisterReactor(&m_d); });

    KyProcessPostEvents();

    EXPECT_THAT(m_calls, ElementsAre("A:1", "A:2", "B:2", "C:2", "D:2"));
}

// Unregistering
// -------------------------------------------------------------------------------------------------------

TEST_F(KyEventReentrancy, UnregisteringItselfFirstInTheListRepeatsNothing) {
    m_a.Once([&] { KyUnRegisterReactor(&m_a); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, UnregisteringItselfInTheMiddleStartsOverAtTheFirst) {
    m_b.Once([&] { KyUnRegisterReactor(&m_b); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "A:e", "C:e"));
}

TEST_F(KyEventReentrancy, UnregisteringItselfLastInTheListRepeatsAllTheOthers) {
    m_c.Once([&] { KyUnRegisterReactor(&m_c); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "C:e", "A:e", "B:e"));
}

TEST_F(KyEventReentrancy, TheOnlyReactorUnregisteringItselfEndsTheWalk) {
    KyUnRegisterReactor(&m_b);
    KyUnRegisterReactor(&m_c);
    m_a.Once([&] { KyUnRegisterReactor(&m_a); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e"));
}

TEST_F(KyEventReentrancy, UnregisteringItselfTakesItsOtherEntriesAlong) {
    KyRegisterReactor(&m_a);
    m_a.Once([&] { KyUnRegisterReactor(&m_a); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, UnregisteringAnEarlierReactorStartsOverWithoutIt) {
    m_b.Once([&] { KyUnRegisterReactor(&m_a); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, UnregisteringALaterReactorStartsOverWithoutIt) {
    m_b.Once([&] { KyUnRegisterReactor(&m_c); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "A:e", "B:e"));
}

TEST_F(KyEventReentrancy, UnregisteringAnUnknownReactorStartsOverToo) {
    m_b.Once([&] { KyUnRegisterReactor(&m_d); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "A:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, UnregisteringFromTheLastReactorStartsOverToo) {
    m_c.Once([&] { KyUnRegisterReactor(&m_d); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "C:e", "A:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, UnregisteringEverybodyEndsTheWalk) {
    m_b.Once([&] {
        for (Recorder* pReactor : {&m_a, &m_b, &m_c}) {
            KyUnRegisterReactor(pReactor);
        }
    });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e"));
}

TEST_F(KyEventReentrancy, ARepeatedWalkAsksTheMasksAgain) {
    m_b.Once([&] {
        m_a.m_nMask = 0x2;
        KyUnRegisterReactor(&m_d);
    });

    KySendEvent(L"e", nullptr, 0x1);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, AReactorMayUnregisterAndDeleteItself) {
    auto* const pMortal = new Recorder(m_calls, "M");
    KyRegisterReactor(pMortal);
    pMortal->Once([&] { delete pMortal; });  // its destructor unregisters it

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "C:e", "M:e", "A:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, AReactorMayDeleteAnotherThatIsStillToCome) {
    auto mortal = std::make_unique<Recorder>(m_calls, "M");
    KyRegisterReactor(mortal.get());
    m_a.Once([&] { mortal.reset(); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "A:e", "B:e", "C:e"));
}

// Registering and unregistering in one handler
// ------------------------------------------------------------------------

TEST_F(KyEventReentrancy, UnregisteringThenRegisteringEndsTheWalk) {
    m_b.Once([&] {
        KyUnRegisterReactor(&m_a);
        KyRegisterReactor(&m_d);
    });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e"));
}

TEST_F(KyEventReentrancy, RegisteringThenUnregisteringStartsOverAndReachesTheNewReactor) {
    m_b.Once([&] {
        KyRegisterReactor(&m_d);
        KyUnRegisterReactor(&m_a);
    });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "B:e", "C:e", "D:e"));
}

// Sending
// -------------------------------------------------------------------------------------------------------------

TEST_F(KyEventReentrancy, SendingRunsAWalkOfItsOwnAndTheOuterOneStartsOver) {
    m_b.Once([] { KySendEvent(L"in", nullptr, 0); });

    KySendEvent(L"out", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:out", "B:out", "A:in", "B:in", "C:in", "A:out", "B:out", "C:out"));
}

TEST_F(KyEventReentrancy, SendingFromTheFirstOrTheLastStartsOverLikewise) {
    m_a.Once([] { KySendEvent(L"1", nullptr, 0); });
    m_c.Once([] { KySendEvent(L"2", nullptr, 0); });

    KySendEvent(L"e", nullptr, 0);

    // C receives "1" first and sends "2" from inside it, so that "1" starts over; then "e" does.
    EXPECT_THAT(m_calls, ElementsAre("A:e", "A:1", "B:1", "C:1", "A:2", "B:2", "C:2", "A:1", "B:1", "C:1",  //
                                     "A:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, SendingAnEventThatNobodyWantsStartsTheOuterWalkOverAllTheSame) {
    for (Recorder* pReactor : {&m_a, &m_b, &m_c}) {
        pReactor->m_nMask = 0x1;
    }
    m_b.Once([] { KySendEvent(L"unwanted", nullptr, 0x2); });

    KySendEvent(L"e", nullptr, 0x1);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "A:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, TheOuterNameIsIntactAfterANestedSend) {
    class Reader : public KyEventReactor {
    public:
        void React(const wchar_t* pszName, void*) override {
            if (std::exchange(m_bSent, true)) return;
            KySendEvent(L"a rather longer name than the outer event's", nullptr, 0);
            m_strAfter = pszName;
        }
        bool m_bSent = false;
        std::wstring m_strAfter;
    };
    Reader reader;
    KyRegisterReactor(&reader);

    KySendEvent(L"outer", nullptr, 0);
    KyUnRegisterReactor(&reader);

    EXPECT_EQ(reader.m_strAfter, L"outer");
}

TEST_F(KyEventReentrancy, RegisteringInANestedWalkEndsThatWalkAndTheOuterOneStartsOver) {
    m_a.Once([&] {
        m_b.Once([&] { KyRegisterReactor(&m_d); });
        KySendEvent(L"in", nullptr, 0);
    });

    KySendEvent(L"out", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:out", "A:in", "B:in", "A:out", "B:out", "C:out", "D:out"));
}

// Posting
// -------------------------------------------------------------------------------------------------------------

TEST_F(KyEventReentrancy, PostingDoesNotDisturbTheWalk) {
    m_b.Once([] { KyPostEvent(L"later", nullptr, 0); });

    KySendEvent(L"e", nullptr, 0);
    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "C:e"));

    KyProcessPostEvents();
    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "C:e", "A:later", "B:later", "C:later"));
}

TEST_F(KyEventReentrancy, AnEventPostedDuringADrainIsDeliveredInItBehindThoseThatWaited) {
    KyPostEvent(L"a", nullptr, 0);
    KyPostEvent(L"b", nullptr, 0);
    m_b.Once([] { KyPostEvent(L"x", nullptr, 0); });

    KyProcessPostEvents();

    EXPECT_THAT(m_calls, ElementsAre("A:a", "B:a", "C:a", "A:b", "B:b", "C:b", "A:x", "B:x", "C:x"));
}

TEST_F(KyEventReentrancy, AnEventPostedByTheLastEventOfADrainIsDeliveredInItToo) {
    KyUnRegisterReactor(&m_b);
    KyUnRegisterReactor(&m_c);
    KyPostEvent(L"1", nullptr, 0);
    m_a.Once([&] {
        KyPostEvent(L"2", nullptr, 0);
        m_a.Once([] { KyPostEvent(L"3", nullptr, 0); });
    });

    KyProcessPostEvents();

    EXPECT_THAT(m_calls, ElementsAre("A:1", "A:2", "A:3"));
}

// Draining
// ------------------------------------------------------------------------------------------------------------

TEST_F(KyEventReentrancy, DrainingAnEmptyQueueDoesNotDisturbTheWalk) {
    m_b.Once([] { KyProcessPostEvents(); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, DrainingInAHandlerDeliversAtOnceAndTheOuterWalkStartsOver) {
    KyPostEvent(L"1", nullptr, 0);
    KyPostEvent(L"2", nullptr, 0);
    m_b.Once([] { KyProcessPostEvents(); });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:e", "B:e", "A:1", "B:1", "C:1", "A:2", "B:2", "C:2",  //
                                     "A:e", "B:e", "C:e"));
}

TEST_F(KyEventReentrancy, DrainingInsideADrainTakesTheEventsThatAreLeft) {
    for (const wchar_t* pszName : {L"1", L"2", L"3"}) {
        KyPostEvent(pszName, nullptr, 0);
    }
    KyUnRegisterReactor(&m_c);
    m_b.Once([] { KyProcessPostEvents(); });

    KyProcessPostEvents();

    EXPECT_THAT(m_calls, ElementsAre("A:1", "B:1", "A:2", "B:2", "A:3", "B:3", "A:1", "B:1"));
}

TEST_F(KyEventReentrancy, DrainingTheLastEventOfADrainFromItsOwnHandlerFindsTheQueueEmpty) {
    KyPostEvent(L"1", nullptr, 0);
    m_b.Once([] { KyProcessPostEvents(); });

    KyProcessPostEvents();

    EXPECT_THAT(m_calls, ElementsAre("A:1", "B:1", "C:1"));
}

// Throwing inside
// -----------------------------------------------------------------------------------------------------

TEST_F(KyEventReentrancy, AHandlerThatSwallowsANestedFailureGoesOnWhereTheNestedWalkStopped) {
    m_a.Once([&] {
        m_b.Once([] { throw std::runtime_error("B"); });
        EXPECT_THROW(KySendEvent(L"in", nullptr, 0), std::runtime_error);
    });

    KySendEvent(L"out", nullptr, 0);

    EXPECT_THAT(m_calls, ElementsAre("A:out", "A:in", "B:in", "C:out"));
}

TEST_F(KyEventReentrancy, ANestedFailureThatNobodySwallowsEndsEveryWalk) {
    m_b.Once([&] {
        m_c.Once([] { throw std::runtime_error("C"); });
        KySendEvent(L"in", nullptr, 0);
    });

    EXPECT_THROW(KySendEvent(L"out", nullptr, 0), std::runtime_error);

    EXPECT_THAT(m_calls, ElementsAre("A:out", "B:out", "A:in", "B:in", "C:in"));
}

TEST_F(KyEventReentrancy, ANestedDrainThatFailsLeavesTheRestToTheOuterOne) {
    for (const wchar_t* pszName : {L"1", L"2", L"3"}) {
        KyPostEvent(pszName, nullptr, 0);
    }
    m_a.Once([&] {
        m_a.Once([] { throw std::runtime_error("A"); });
        EXPECT_THROW(KyProcessPostEvents(), std::runtime_error);
    });

    KyProcessPostEvents();

    // The nested walk of "2" stopped on A, so that of "1" goes on behind A.
    EXPECT_THAT(m_calls, ElementsAre("A:1", "A:2", "B:1", "C:1", "A:3", "B:3", "C:3"));
}

}  // namespace
