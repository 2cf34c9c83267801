// The library's static objects: the order of their construction, and what becomes of the channel at exit. The
// shared library is watched where each object registers its destruction: this program's __cxa_atexit comes
// before the C library's. Built as INSIDE, from the library's sources in several orders, the program looks at
// the objects from constructors of its own in between.

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "Inside.h"
#include "VexaBase/rx/KyRxClass.h"

namespace {

using testing::ElementsAre;

/// A static object of an application, which counts on the channel as soon as it is there itself and for as
/// long.
class Resident : public KyEventReactor {
public:
    Resident() { KyRegisterReactor(this); }
    ~Resident() override { KyUnRegisterReactor(this); }
    void React(const wchar_t*, void*) override { ++m_nCalls; }

    int m_nCalls = 0;
};

Resident g_resident;

/// Asks for kinship before main is reached.
const bool g_bRootIsItsOwnKind = KyRxRunTimeClass::s_classInfo.IsClassOf("KyRxRunTimeClass");

#if defined(INSIDE)

/// Whether an object with a table has been constructed: its memory is zero before. Read as memory, since it may be no object yet.
bool IsThere(const void* pObject) {
    std::uintptr_t nTable = 0;
    std::memcpy(&nTable, pObject, sizeof(nTable));
    return nTable != 0;
}

/// Notes which of the library's objects are there when it is constructed itself.
class Onlooker {
public:
    Onlooker() {
        if (IsThere(&g_queneEvent)) m_strThere += "events ";
        if (IsThere(&g_lstReactor)) m_strThere += "reactors ";
        if (IsThere(&KyRxRunTimeClass::s_classInfo)) m_strThere += "RunTime ";
        if (IsThere(&KyRxDynCreateClass::s_classInfo)) m_strThere += "DynCreate ";
    }

    std::string m_strThere;
};

// Among objects of one priority the order of the files counts: each of these comes right before or right
// after the library's.
[[gnu::init_priority(101)]] Onlooker g_onlooker101;
[[gnu::init_priority(102)]] Onlooker g_onlooker102;
[[gnu::init_priority(103)]] Onlooker g_onlooker103;
[[gnu::init_priority(104)]] Onlooker g_onlooker104;
[[gnu::init_priority(105)]] Onlooker g_onlooker105;

TEST(StaticObjects, AreTheEventsTheReactorsAndTheTwoDescriptorsInThatOrderAndBeforeTheApplications) {
    std::vector<std::string> there;
    for (const Onlooker* pOnlooker :
         {&g_onlooker101, &g_onlooker102, &g_onlooker103, &g_onlooker104, &g_onlooker105}) {
        if (!pOnlooker->m_strThere.empty()) there.push_back(pOnlooker->m_strThere);
    }
    there.erase(std::unique(there.begin(), there.end()), there.end());

    EXPECT_THAT(there, ElementsAre("events ", "events reactors ", "events reactors RunTime ",
                                   "events reactors RunTime DynCreate "));
}

#else

struct Registration {
    void* m_pObject;
    void* m_pModule;
};

// Plain memory: filled before any constructor of this program has run.
constexpr std::size_t nMostRegistrations = 1024;
Registration g_registrations[nMostRegistrations];
std::size_t g_nRegistrations;

extern "C" int __cxa_atexit(void (*pfnDestroy)(void*), void* pObject, void* pModule) {
    using AtExit = int (*)(void (*)(void*), void*, void*);
    static const auto pfnReal = reinterpret_cast<AtExit>(dlsym(RTLD_NEXT, "__cxa_atexit"));
    if (g_nRegistrations < nMostRegistrations) g_registrations[g_nRegistrations++] = {pObject, pModule};
    return pfnReal(pfnDestroy, pObject, pModule);
}

/// Whether two objects with a table are of one class.
template <class Sample>
bool HaveOneTable(const void* pObject, const Sample& sample) {
    return std::memcmp(pObject, static_cast<const void*>(&sample), sizeof(void*)) == 0;
}

void* ModuleOf(const void* pObject) {
    for (const Registration& registration : g_registrations) {
        if (registration.m_pObject == pObject) return registration.m_pModule;
    }
    return nullptr;
}

/// The two objects that the shared library hides are known by their table.
std::string KindOf(const Registration& registration) {
    if (registration.m_pObject == &g_resident) return "the application's";
    if (registration.m_pModule != ModuleOf(KyRxRunTimeClass::GetStaticCI())) return "";
    if (registration.m_pObject == KyRxRunTimeClass::GetStaticCI()) return "RunTime";
    if (registration.m_pObject == KyRxDynCreateClass::GetStaticCI()) return "DynCreate";
    if (HaveOneTable(registration.m_pObject, KyPDListQuene<KyEvent>())) return "events";
    if (HaveOneTable(registration.m_pObject, KyDList<KyEventReactor*>())) return "reactors";
    return "another object of the library";
}

TEST(StaticObjects, AreTheEventsTheReactorsAndTheTwoDescriptorsInThatOrderAndBeforeTheApplications) {
    const std::size_t nRegistrations = g_nRegistrations;
    std::vector<std::string> kinds;
    for (std::size_t i = 0; i < nRegistrations; ++i) {
        const std::string strKind = KindOf(g_registrations[i]);
        if (!strKind.empty()) kinds.push_back(strKind);
    }

    EXPECT_THAT(kinds, ElementsAre("events", "reactors", "RunTime", "DynCreate", "the application's"));
}

#endif

TEST(StaticObjects, AreUsableFromTheApplicationsOwn) {
    const int nCalls = g_resident.m_nCalls;

    KySendEvent(L"e", nullptr, 0);

    EXPECT_EQ(g_resident.m_nCalls, nCalls + 1);
    EXPECT_TRUE(g_bRootIsItsOwnKind);
}

TEST(StaticObjectsDeathTest, EventsStillQueuedAtExitAreNotDeliveredAndReactorsAreNotDeleted) {
    class Loud : public KyEventReactor {
    public:
        ~Loud() override { std::fputs("deleted\n", stderr); }
        void React(const wchar_t*, void*) override { std::fputs("delivered\n", stderr); }
    };
    static Loud* s_pLoud = nullptr;

    EXPECT_EXIT(
        {
            s_pLoud = new Loud;
            KyRegisterReactor(s_pLoud);
            KyPostEvent(L"too late", nullptr, 0);
            std::exit(0);
        },
        testing::ExitedWithCode(0), testing::IsEmpty());
}

}  // namespace
