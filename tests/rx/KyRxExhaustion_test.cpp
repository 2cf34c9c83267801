// Kinship asked where the bases lead in a circle. It has to end on an exhausted stack at every optimisation
// level: a compiler that turned the recursion into a loop would hang here, so a clock runs.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <deque>

#include "VexaBase/rx/KyRxClass.h"

namespace {

#if defined(__SANITIZE_ADDRESS__)
#define UNDER_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define UNDER_ADDRESS_SANITIZER 1
#endif
#endif

// What an exhausted stack looks like from outside: the sanitizer says so and exits, otherwise the kernel ends
// the process.
#if defined(UNDER_ADDRESS_SANITIZER)
bool EndedByItsStack(int nStatus) { return WIFEXITED(nStatus) && WEXITSTATUS(nStatus) != 0; }
const char szReport[] = "stack-overflow";
#else
bool EndedByItsStack(int nStatus) { return WIFSIGNALED(nStatus) && WTERMSIG(nStatus) == SIGSEGV; }
const char szReport[] = "";
#endif

constexpr unsigned nSecondsUntilItHangs = 60;
constexpr rlim_t nStackBytes = 4 * 1024 * 1024;

template <class Argument>
void Ask(const KyRxClassInfo& info, Argument argument) {
    const rlimit stack{nStackBytes, nStackBytes};
    setrlimit(RLIMIT_STACK, &stack);
    alarm(nSecondsUntilItHangs);
    std::fprintf(stderr, "answered %d\n", static_cast<int>(info.IsClassOf(argument)));
    _exit(0);
}

class Creatable : public KyRxDynCreateClass {
    KY_DECLARE_DYNCREATE(Creatable)
};
KY_IMPLEMENT_DYNCREATE(Creatable, 0, KyRxDynCreateClass)

TEST(KyRxExhaustionDeathTest, TheCreatableRootNeverAnswers) {
    const KyRxClassInfo& info = KyRxDynCreateClass::s_classInfo;

    EXPECT_EXIT(Ask(info, &info), EndedByItsStack, szReport);
    EXPECT_EXIT(Ask<const KyRxClassInfo*>(info, KyRxRunTimeClass::GetStaticCI()), EndedByItsStack, szReport);
    EXPECT_EXIT(Ask(info, "KyRxDynCreateClass"), EndedByItsStack, szReport);
    EXPECT_EXIT(Ask(info, "Nobody"), EndedByItsStack, szReport);
}

TEST(KyRxExhaustionDeathTest, NeitherDoesAClassDerivedFromIt) {
    const KyRxClassInfo& info = Creatable::s_classInfo;

    EXPECT_EXIT(Ask(info, &info), EndedByItsStack, szReport);
    EXPECT_EXIT(Ask(info, "Creatable"), EndedByItsStack, szReport);
}

TEST(KyRxExhaustionDeathTest, ACircleThroughTheLastBaseExhaustsTheStackToo) {
    KyRxClassInfo a("A", 0, nullptr);
    KyRxClassInfo last("Last", 0, nullptr, &a, &a, &a, &a);
    last.m_pBases[4] = &last;

    EXPECT_EXIT(Ask(last, &last), EndedByItsStack, szReport);
    EXPECT_EXIT(Ask(last, "Last"), EndedByItsStack, szReport);
}

TEST(KyRxExhaustionDeathTest, ACircleOfTwoExhaustsTheStackToo) {
    KyRxClassInfo one("One", 0, nullptr);
    KyRxClassInfo two("Two", 0, nullptr, &one);
    one.m_pBases[0] = &two;

    EXPECT_EXIT(Ask(one, &one), EndedByItsStack, szReport);
    EXPECT_EXIT(Ask(two, "One"), EndedByItsStack, szReport);
}

TEST(KyRxExhaustionDeathTest, ACircleOfManyExhaustsTheStackToo) {
    std::deque<KyRxClassInfo> infos;
    infos.emplace_back("First", 0, nullptr);
    for (int i = 0; i < 100; ++i) {
        infos.emplace_back("Next", 0, nullptr, &infos.back());
    }
    infos.front().m_pBases[0] = &infos.back();

    EXPECT_EXIT(Ask(infos.back(), &infos.front()), EndedByItsStack, szReport);
    EXPECT_EXIT(Ask(infos.back(), "Next"), EndedByItsStack, szReport);
}

TEST(KyRxExhaustionDeathTest, ABaseThatAnswersBeforeTheCircleEndsTheQuestion) {
    KyRxClassInfo root("Root", 0, nullptr);
    const KyRxClassInfo before("Before", 0, nullptr, &root, KyRxDynCreateClass::GetStaticCI());
    const KyRxClassInfo behind("Behind", 0, nullptr, KyRxDynCreateClass::GetStaticCI(), &root);

    EXPECT_TRUE(before.IsClassOf(&root));
    EXPECT_TRUE(before.IsClassOf("Root"));
    EXPECT_EXIT(Ask(before, &before), EndedByItsStack, szReport);
    EXPECT_EXIT(Ask<const KyRxClassInfo*>(behind, &root), EndedByItsStack, szReport);
}

}  // namespace
