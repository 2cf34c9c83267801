#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <type_traits>
#include <vector>

#include "GA_TestKit.h"

namespace {

TEST(GA_Gene, ClonesToNullUnlessOverridden) {
    const GA_Gene gene;

    EXPECT_EQ(gene.Clone(), nullptr);
}

TEST(GA_Gene, IsDeletedThroughItsBase) {
    const long nAlive = NamedGene::s_nAlive;
    const GA_Gene* const pGene = new NamedGene("a");

    delete pGene;

    EXPECT_EQ(NamedGene::s_nAlive, nAlive);
}

TEST(GA_Gene, OrdersByAddress) {
    GA_Gene genes[2];

    EXPECT_TRUE(genes[0] < genes[1]);
    EXPECT_FALSE(genes[1] < genes[0]);
    EXPECT_TRUE(genes[1] > genes[0]);
    EXPECT_FALSE(genes[0] > genes[1]);
}

TEST(GA_Gene, IsNeitherLessNorGreaterThanItself) {
    const GA_Gene gene;

    EXPECT_FALSE(gene < gene);
    EXPECT_FALSE(gene > gene);
}

TEST(GA_Gene, HoldsNothingButItsDispatchPointer) {
    EXPECT_EQ(sizeof(GA_Gene), sizeof(void*));
    EXPECT_TRUE(std::has_virtual_destructor_v<GA_Gene>);
    EXPECT_FALSE(std::is_abstract_v<GA_Gene>);
}

TEST(GA_Gene, SortsByAddressInAnIndividual) {
    NamedIndividual individual("a", 6);
    std::vector<GA_Gene*> ascending(individual.begin(), individual.end());
    std::sort(ascending.begin(), ascending.end());
    std::reverse(individual.begin() + 1, individual.end());

    individual.Sort(true);

    EXPECT_THAT(individual, testing::ElementsAreArray(ascending));
}

}  // namespace
