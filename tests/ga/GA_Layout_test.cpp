// Slots and fields stand where applications were compiled to find them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "GA_TestKit.h"

namespace {

using testing::ElementsAre;

/// The position of a virtual function in its class's table. A pointer to one holds 1 plus its offset there.
template <class Function>
long SlotOf(Function pfn) {
    static_assert(sizeof(pfn) == 2 * sizeof(std::ptrdiff_t));
    std::ptrdiff_t words[2];
    std::memcpy(words, &pfn, sizeof(pfn));
    EXPECT_EQ(words[0] % 2, 1) << "not virtual";
    return static_cast<long>((words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

long OffsetOf(const void* pObject, const void* pField) {
    return static_cast<long>(static_cast<const char*>(pField) - static_cast<const char*>(pObject));
}

constexpr long g_nArraySlots = 29;
constexpr long g_nListSlots = 32;

TEST(GA_Layout, AGeneClonesBeforeItIsDeleted) { EXPECT_EQ(SlotOf(&GA_Gene::Clone), 0); }

TEST(GA_Layout, AnIndividualsHooksFollowTheSlotsOfTheOwningArray) {
    using Compare = int (*)(const GA_Gene&, const GA_Gene&);
    using Sort = void (GA_Individual::*)(Compare);

    EXPECT_EQ(SlotOf(static_cast<Sort>(&GA_Individual::Sort)), g_nArraySlots - 1);
    EXPECT_EQ(SlotOf(&GA_Individual::New), g_nArraySlots);
    EXPECT_EQ(SlotOf(&GA_Individual::Initialize), g_nArraySlots + 1);
    EXPECT_EQ(SlotOf(&GA_Individual::Mutation), g_nArraySlots + 2);
    EXPECT_EQ(SlotOf(&GA_Individual::Multiply), g_nArraySlots + 3);
    EXPECT_EQ(SlotOf(&GA_Individual::operator<), g_nArraySlots + 4);
    EXPECT_EQ(SlotOf(&GA_Individual::operator>), g_nArraySlots + 5);
}

TEST(GA_Layout, APopulationsHooksFollowTheSlotsOfTheOwningList) {
    using Compare = int (*)(const GA_Individual&, const GA_Individual&);
    using Sort = void (GA_Population::*)(Compare);

    EXPECT_EQ(SlotOf(static_cast<Sort>(&GA_Population::Sort)), g_nListSlots - 1);
    EXPECT_EQ(SlotOf(&GA_Population::IsContinue), g_nListSlots);
    EXPECT_EQ(SlotOf(&GA_Population::Step), g_nListSlots + 1);
    EXPECT_EQ(SlotOf(&GA_Population::Evolve), g_nListSlots + 2);
}

TEST(GA_Layout, TheListsAppendKeepsItsSlotAndThePopulationsHasNone) {
    using ListAppend = long (KyPDList<GA_Individual>::*)(GA_Individual* const&);
    using PopulationAppend = void (GA_Population::*)(GA_Individual*);
    const PopulationAppend pfnAppend = &GA_Population::Append;
    std::ptrdiff_t words[2];
    std::memcpy(words, &pfnAppend, sizeof(pfnAppend));

    EXPECT_EQ(SlotOf(static_cast<ListAppend>(&KyPDList<GA_Individual>::Append)), 21);
    EXPECT_EQ(words[0] % 2, 0);
}

TEST(GA_Layout, AnIndividualHasTheFieldsOfItsArrayAlone) {
    EXPECT_EQ(sizeof(GA_Individual), sizeof(KyDynPArray<GA_Gene>));
    EXPECT_EQ(sizeof(GA_Individual), 6 * sizeof(long));
}

TEST(GA_Layout, APopulationsFieldsFollowThoseOfTheList) {
    const GA_Population population;

    EXPECT_EQ(OffsetOf(&population, &population.m_nPopSize), 48);
    EXPECT_EQ(OffsetOf(&population, &population.m_nMutationRate), 56);
    EXPECT_EQ(OffsetOf(&population, &population.m_nGeneration), 64);
    EXPECT_EQ(sizeof(GA_Population), 72U);
}

}  // namespace
