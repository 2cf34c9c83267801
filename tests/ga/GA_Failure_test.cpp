// What is left when a hook or the allocator throws: nothing that nobody owns, and a population that is in
// order.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "AllocationLog.h"
#include "GA_TestKit.h"

namespace {

using testing::ElementsAre;

/// Throws on its way out of an insertion that has happened.
class ThrowingAfterInsertion : public NamedPopulation {
public:
    void InsertCur(GA_Individual* const& p) override {
        NamedPopulation::InsertCur(p);
        throw HookFailure();
    }
};

class Failure : public testing::Test {
protected:
    void SetUp() override { Journal::Clear(); }
    void TearDown() override {
        Journal::FailAt(0);
        FailAllocationAt(0);
        EXPECT_EQ(NamedGene::s_nAlive, 0);
        EXPECT_EQ(NamedIndividual::s_nAlive, 0);
    }

    /// Lets the first, the second, ... hook fail until one run of the work ends well; returns the number of
    /// failures.
    template <class Failed>
    static long FailEverywhere(const std::function<void(long)>& failAt, const std::function<void()>& work) {
        for (long n = 1;; ++n) {
            Journal::Clear();
            try {
                failAt(n);
                work();
                failAt(0);
                return n - 1;
            } catch (const Failed&) {
                failAt(0);
                EXPECT_EQ(NamedGene::s_nAlive, 0) << "after failure " << n;
                EXPECT_EQ(NamedIndividual::s_nAlive, 0) << "after failure " << n;
            }
        }
    }

    /// The nth allocation from now on throws std::bad_alloc, none with 0.
    static void FailAllocationAt(long n) {
        s_failing.reset();
        if (n != 0) {
            s_failing.emplace(n - 1);
        }
    }

    /// How many hooks an undisturbed run calls.
    static long HooksOf(const std::function<void()>& work) {
        Journal::Clear();
        work();
        return static_cast<long>(Journal::Lines().size()) - ScriptedRand::Drawn();
    }

    inline static std::optional<FailingAllocation> s_failing;

    static void BreedAPair() {
        const TracedIndividual a("A", 3);
        const TracedIndividual b("B", 2);
        TracedPopulation population;
        ScriptedRand::Set({1});
        a.Multiply(b, population);
    }

    static void EvolveTwoGenerations() {
        TracedPopulation population(3, 70);
        for (long i = 0; i < 3; ++i) {
            population.Append(new TracedIndividual("P" + std::to_string(i), i + 1, 2 - i));
        }
        ScriptedRand::Set(
            {5, 4, 3, 2, 1, 0, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 3, 4});
        population.Evolve();
        population.Evolve();
    }
};

TEST_F(Failure, OfAnyHookOfACrossoverLeaksNothing) {
    EXPECT_EQ(FailEverywhere<HookFailure>(Journal::FailAt, BreedAPair), HooksOf(BreedAPair));
}

TEST_F(Failure, OfAnyAllocationOfACrossoverLeaksNothing) {
    EXPECT_GT(FailEverywhere<std::bad_alloc>(FailAllocationAt, BreedAPair), 14);
}

TEST_F(Failure, OfAnyHookOfAGenerationLeaksNothing) {
    EXPECT_EQ(FailEverywhere<HookFailure>(Journal::FailAt, EvolveTwoGenerations),
              HooksOf(EvolveTwoGenerations));
}

TEST_F(Failure, OfAnyAllocationOfAGenerationLeaksNothing) {
    EXPECT_GT(FailEverywhere<std::bad_alloc>(FailAllocationAt, EvolveTwoGenerations), 100);
}

TEST_F(Failure, OfAComparisonInAppendDeletesTheNewcomer) {
    NamedPopulation population;
    population.Append(new NamedIndividual("a", 2));
    Journal::FailAt(1);

    EXPECT_THROW(population.Append(new NamedIndividual("b", 2)), HookFailure);

    EXPECT_THAT(population.Names(), ElementsAre("a"));
    EXPECT_EQ(NamedIndividual::s_nAlive, 1);
    EXPECT_EQ(NamedGene::s_nAlive, 2);
}

TEST_F(Failure, OfTheAllocationInAppendDeletesTheNewcomer) {
    NamedPopulation population;
    auto* const pNewcomer = new NamedIndividual("b", 2);
    FailAllocationAt(1);

    EXPECT_THROW(population.Append(pNewcomer), std::bad_alloc);

    EXPECT_EQ(population.m_nLength, 0);
    EXPECT_EQ(NamedIndividual::s_nAlive, 0);
}

TEST_F(Failure, AfterTheInsertionLeavesTheNewcomerInThePopulation) {
    ThrowingAfterInsertion population;

    EXPECT_THROW(population.Append(new NamedIndividual("a", 1)), HookFailure);

    EXPECT_THAT(population.Names(), ElementsAre("a"));
    EXPECT_EQ(NamedIndividual::s_nAlive, 1);
}

TEST_F(Failure, OfTheSecondChildsEntryLeavesTheFirstInThePopulation) {
    const NamedIndividual a("A", 1);
    NamedPopulation population;
    ScriptedRand::Set({0});
    const std::vector<std::string> beforeTheComparison = {"A.New", "A.New",   "clone",
                                                          "clone", "c1.Init", "c2.Init"};
    Journal::FailAt(static_cast<long>(beforeTheComparison.size()) + 1);

    EXPECT_THROW(a.Multiply(a, population), HookFailure);

    EXPECT_THAT(population.Names(), ElementsAre("c1"));
    EXPECT_EQ(NamedIndividual::s_nAlive, 2);
}

TEST_F(Failure, OfAStepLeavesTheChildrenInThePopulationAndTheGenerationUncounted) {
    class StepThrows : public NamedPopulation {
    public:
        using NamedPopulation::NamedPopulation;
        void Step() override { throw HookFailure(); }
    };
    StepThrows population(1, 0);
    population.Append(new NamedIndividual("A", 1));
    ScriptedRand::Set({0, 0, 0});

    EXPECT_THROW(population.Evolve(), HookFailure);

    EXPECT_EQ(population.m_nLength, 5);
    EXPECT_EQ(population.m_nGeneration, 0);
}

TEST_F(Failure, IsOverWithTheNextGeneration) {
    NamedPopulation population(2, 0);
    population.Append(new NamedIndividual("A", 2, 1));
    population.Append(new NamedIndividual("B", 2, 2));
    ScriptedRand::Set(
        {3, 2, 1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 3, 4, 5, 6, 7, 8});
    Journal::FailAt(25);
    EXPECT_THROW(population.Evolve(), HookFailure);

    population.Evolve();

    EXPECT_EQ(population.m_nLength, 2);
    EXPECT_EQ(population.m_nGeneration, 1);
    EXPECT_EQ(NamedIndividual::s_nAlive, 2);
}

}  // namespace
