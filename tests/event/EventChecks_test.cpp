// What the checked build stops on.

#include <gmock/gmock.h>

#include "Recorder.h"
#include "VexaBase/event/KyEventReactor.h"

namespace {

using testing::ElementsAre;

TEST(EventChecksDeathTest, RegisteringNoReactorIsStopped) {
    EXPECT_DEATH(KyRegisterReactor(nullptr),
                 "VexaBase/event/KyEventReactor.cpp:[0-9]+: KyRegisterReactor: null reactor");
}

TEST(EventChecks, WhatIsDefinedIsNotStopped) {
    Calls calls;
    Recorder a(calls, "A"), b(calls, "B");
    KyUnRegisterReactor(nullptr);
    KyUnRegisterReactor(&a);
    KyProcessPostEvents();
    KySendEvent(nullptr, nullptr, 0);
    KyRegisterReactor(&a);
    KyRegisterReactor(&a);
    a.Once([&] {
        KyUnRegisterReactor(&b);
        KyProcessPostEvents();
        KySendEvent(L"in", nullptr, 0);
    });

    KySendEvent(L"out", nullptr, 0);

    EXPECT_THAT(calls, ElementsAre("A:out", "A:in", "A:in", "A:out", "A:out"));
}

}  // namespace
