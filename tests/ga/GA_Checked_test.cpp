// The checked build's stops. This program compiles the library's sources with the checks on.
#include <gtest/gtest.h>

#include "VexaBase/ga/GA_Population.h"

namespace {

class Gene : public GA_Gene {
public:
    GA_Gene* Clone() const override { return new Gene; }
};

class Individual : public GA_Individual {
public:
    explicit Individual(long nGenes = 0) {
        for (long i = 0; i < nGenes; ++i) {
            Append(new Gene);
        }
    }
    GA_Individual* New() const override { return new Individual; }
    GA_Individual* Mutation() const override { return new Individual; }
};

class Childless : public Individual {
public:
    using Individual::Individual;
    GA_Individual* New() const override { return nullptr; }
};

class Stopped : public GA_Population {
public:
    using GA_Population::GA_Population;
    bool IsContinue() override { return false; }
};

class MutatesOnly : public GA_Population {
public:
    using GA_Population::GA_Population;
    bool IsContinue() override { return m_nAsked++ > 0; }

private:
    long m_nAsked = 0;
};

TEST(GA_CheckedDeathTest, MultiplyStopsAtAParentWithoutGenes) {
    const Individual genes(2);
    const Individual none;
    GA_Population population;

    EXPECT_DEATH(genes.Multiply(none, population),
                 "^VexaBase/ga/GA_Individual.cpp:[0-9]+: GA_Individual::Multiply: a parent without genes "
                 "\\(lengths 2 and 0\\)\n$");
    EXPECT_DEATH(none.Multiply(genes, population), "a parent without genes \\(lengths 2 and 0\\)");
    EXPECT_DEATH(none.Multiply(none, population), "a parent without genes \\(lengths 0 and 0\\)");
}

TEST(GA_CheckedDeathTest, MultiplyStopsWhenNewMakesNothing) {
    const Childless childless(2);
    GA_Population population;

    EXPECT_DEATH(childless.Multiply(childless, population),
                 "GA_Individual::Multiply: New returned no individual \\(length 2\\)");
}

TEST(GA_CheckedDeathTest, MultiplyStopsAtAnEmptyGeneSlot) {
    Individual parent(1);
    const Individual other(2);
    parent.ReAllocate(2);
    GA_Population population;

    EXPECT_DEATH(parent.Multiply(other, population),
                 "GA_Individual::Multiply: no gene to inherit \\(index 1, length 2\\)");
}

TEST(GA_CheckedDeathTest, EvolveStopsAtANegativeSize) {
    GA_Population population(-1, 0);

    EXPECT_DEATH(population.Evolve(),
                 "^VexaBase/ga/GA_Population.cpp:[0-9]+: GA_Population::Evolve: negative size \\(-1\\)\n$");
}

TEST(GA_CheckedDeathTest, EvolveStopsAtALengthWhoseSquareALongCannotHold) {
    Stopped population;
    const auto evolveWithLength = [&population](long nLength) {
        population.m_nLength = nLength;
        population.Evolve();
    };

    EXPECT_DEATH(evolveWithLength(3037000500),
                 "GA_Population::Evolve: the square of the length has no room \\(length 3037000500\\)");
}

TEST(GA_CheckedDeathTest, EvolveStopsWhenThereIsNobodyToMutate) {
    GA_Population population(10, 50);

    EXPECT_DEATH(population.Evolve(), "GA_Population::Evolve: nothing to mutate \\(5 mutants due\\)");
}

TEST(GA_CheckedDeathTest, AppendStopsAtAnElementWithoutIndividual) {
    GA_Population population;
    population.ReAllocate(1);

    EXPECT_DEATH(population.Append(new Individual),
                 "GA_Population::Append: no individual in the element \\(index 0, length 1\\)");
}

TEST(GA_CheckedDeathTest, EvolveStopsAtAnElementWithoutIndividualToBreed) {
    GA_Population population(1, 0);
    population.ReAllocate(1);

    EXPECT_DEATH(population.Evolve(),
                 "GA_Population::Evolve: no individual in the element \\(index 0, length 1\\)");
}

TEST(GA_CheckedDeathTest, EvolveStopsAtAnElementWithoutIndividualToMutate) {
    MutatesOnly population(1, 100);
    population.ReAllocate(1);

    EXPECT_DEATH(population.Evolve(),
                 "GA_Population::Evolve: no individual in the element \\(index 0, length 1\\)");
}

TEST(GA_Checked, LeavesAloneWhatIsDefined) {
    Stopped stopped(10, 50);
    GA_Population nobody(10, 5);
    GA_Population generation(2, 100);
    generation.Append(nullptr);
    generation.Append(new Individual(3));
    generation.Append(new Individual(1));

    stopped.Evolve();
    nobody.Evolve();
    generation.Evolve();

    EXPECT_EQ(stopped.m_nGeneration, 1);
    EXPECT_EQ(nobody.m_nGeneration, 1);
    EXPECT_EQ(generation.m_nLength, 4);
}

}  // namespace
