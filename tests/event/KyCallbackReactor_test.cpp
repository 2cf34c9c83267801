#include "VexaBase/event/KyCallbackReactor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "VexaBase/event/KyScopedReactor.h"

namespace {

using testing::ElementsAre;

static_assert(std::is_base_of_v<KyEventReactor, KyCallbackReactor<void (*)(const wchar_t*, void*)>>);

int* g_pReceived = nullptr;
void Receive(const wchar_t*, void* pData) { g_pReceived = static_cast<int*>(pData); }

TEST(KyCallbackReactor, ALambdaIsCalledWithNameAndData) {
    std::vector<std::wstring> names;
    int nSum = 0;
    KyCallbackReactor reactor([&](const wchar_t* pszName, void* pData) {
        names.emplace_back(pszName);
        nSum += *static_cast<int*>(pData);
    });
    const KyScopedReactor listening(reactor);
    int nOne = 1;
    int nTen = 10;

    KySendEvent(L"one", &nOne, 0);
    KySendEvent(L"ten", &nTen, 0x4);

    EXPECT_THAT(names, ElementsAre(L"one", L"ten"));
    EXPECT_EQ(nSum, 11);
}

TEST(KyCallbackReactor, AFunctionWillDo) {
    KyCallbackReactor reactor(&Receive);
    const KyScopedReactor listening(reactor);
    int nData = 0;

    KySendEvent(L"e", &nData, 0);

    EXPECT_EQ(g_pReceived, &nData);
}

TEST(KyCallbackReactor, WantsTheKindsOfItsMask) {
    int nCalls = 0;
    KyCallbackReactor reactor([&](const wchar_t*, void*) { ++nCalls; }, 0x6);
    const KyScopedReactor listening(reactor);

    KySendEvent(L"e", nullptr, 0x1);
    EXPECT_EQ(nCalls, 0);
    KySendEvent(L"e", nullptr, 0x2);
    EXPECT_EQ(nCalls, 1);
}

TEST(KyCallbackReactor, KeepsACallbackThatOnlyMovesAndMayChange) {
    auto pCount = std::make_unique<int>(0);
    const int& nCount = *pCount;
    KyCallbackReactor reactor(
        [pCount = std::move(pCount), nStep = 0](const wchar_t*, void*) mutable { *pCount += ++nStep; });
    const KyScopedReactor listening(reactor);

    KySendEvent(L"e", nullptr, 0);
    KySendEvent(L"e", nullptr, 0);

    EXPECT_EQ(nCount, 3);
}

TEST(KyCallbackReactor, IsNotRegisteredUntilTheCallerDoesIt) {
    int nCalls = 0;
    const KyCallbackReactor reactor([&](const wchar_t*, void*) { ++nCalls; });

    KySendEvent(L"e", nullptr, 0);

    EXPECT_EQ(nCalls, 0);
}

}  // namespace
