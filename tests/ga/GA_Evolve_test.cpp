#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <string>
#include <vector>

#include "GA_TestKit.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class Evolve : public testing::Test {
protected:
    void SetUp() override { Journal::Clear(); }

    /// Mates named m0 (the fittest), m1, ...
    static void FillWithMates(GA_Population& population, long n) {
        for (long i = 0; i < n; ++i) {
            static_cast<KyPDList<GA_Individual>&>(population).Append(new Mate("m" + std::to_string(i), i));
        }
        Journal::Clear();
    }

    /// Individuals of one gene each, named A, B, ... from the fittest on.
    static void FillWithParents(GA_Population& population, long n) {
        for (long i = 0; i < n; ++i) {
            const std::string strName(1, static_cast<char>('A' + i));
            static_cast<KyPDList<GA_Individual>&>(population).Append(new NamedIndividual(strName, 1, 10 * i));
        }
        Journal::Clear();
    }
};

TEST_F(Evolve, OfAnEmptyPopulationCountsAGeneration) {
    TracedPopulation population(5, 0);
    ScriptedRand::Set({});

    population.Evolve();

    EXPECT_EQ(population.m_nGeneration, 1);
    EXPECT_EQ(population.m_nLength, 0);
    EXPECT_THAT(Journal::Lines(), IsEmpty());
}

TEST_F(Evolve, TakesEachStepInItsPlace) {
    TracedPopulation population(2, 100);
    FillWithMates(population, 3);
    ScriptedRand::Set({0, 4, 8, 7, 6});

    population.Evolve();

    // Ranks 0, 2, 2 from the worst of three; uniform partners 0, 1, 2.
    EXPECT_THAT(Journal::Lines(),
                ElementsAre("IsContinue", "rand", "m2 x m0", "m0 x m0", "Step",              //
                            "IsContinue", "rand", "m0 x m1", "m1 x m1", "Step",              //
                            "IsContinue", "rand", "m0 x m2", "m2 x m2", "Step",              //
                            "MoveToLast", "DelCur",                                          // truncation
                            "IsContinue", "rand", "MoveTo(1)", "GetCurData", "m1.Mutation",  // mutants
                            "MoveTo(0)", "GetCurData", "m1*<m0", "MoveTo(1)", "GetCurData", "m1*>m1",  //
                            "MoveTo(0)", "GetCurData", "m1*>m0", "MoveTo(1)", "GetCurData", "m1*>m1",  //
                            "m1*<m1", "InsertCur(m1*)", "Step",                                        //
                            "IsContinue", "rand", "MoveTo(0)", "GetCurData", "m0.Mutation",            //
                            "MoveTo(0)", "GetCurData", "m0*<m0", "MoveTo(2)", "GetCurData", "m0*>m1",  //
                            "MoveTo(1)", "GetCurData", "m0*>m1*", "m0*<m1*",                           //
                            "MoveTo(0)", "GetCurData", "m0*>m0", "m0*<m0", "InsertCur(m0*)", "Step"));
    EXPECT_THAT(population.Names(), ElementsAre("m0*", "m0", "m1*", "m1"));
    EXPECT_EQ(population.m_nGeneration, 1);
}

TEST_F(Evolve, DrawsTheRankBiasedPartnerByTheSquareRootOfTheDraw) {
    for (long n = 1; n <= 12; ++n) {
        std::vector<long> chosen(static_cast<std::size_t>(n), 0);
        for (long r = 0; r < n * n; ++r) {
            NamedPopulation population(n, 0);
            FillWithMates(population, n);
            population.m_nContinues = 1;
            ScriptedRand::Set({static_cast<int>(r)});

            population.Evolve();

            long k = 0;
            while ((k + 1) * (k + 1) <= r) {
                ++k;
            }
            const std::string strPartner = "m" + std::to_string(n - 1 - k);
            ASSERT_EQ(Journal::LinesWith(" x ").front(), strPartner + " x m0") << "draw " << r << " of " << n;
            ++chosen[static_cast<std::size_t>(n - 1 - k)];
        }
        for (long m = 0; m < n; ++m) {
            EXPECT_EQ(chosen[static_cast<std::size_t>(m)], 2 * n - 2 * m - 1)
                << "individual " << m << " of " << n;
        }
    }
}

TEST_F(Evolve, DrawsTheUniformPartnerFromTheSameNumber) {
    for (int r = 0; r < 30; ++r) {
        NamedPopulation population(5, 0);
        FillWithMates(population, 5);
        population.m_nContinues = 1;
        ScriptedRand::Set({r});

        population.Evolve();

        EXPECT_EQ(Journal::LinesWith(" x ").back(), "m" + std::to_string(r % 5) + " x m0");
        EXPECT_EQ(ScriptedRand::Drawn(), 1);
    }
}

TEST_F(Evolve, WrapsDrawsBeyondTheSquareOfTheLength) {
    NamedPopulation population(3, 0);
    FillWithMates(population, 3);
    population.m_nContinues = 2;
    ScriptedRand::Set({9 + 3, RAND_MAX});

    population.Evolve();

    // 12 mod 9 is 3, its root 1; 2147483647 mod 9 is 1, its root 1, and mod 3 it is 1.
    EXPECT_THAT(Journal::LinesWith(" x "), ElementsAre("m1 x m0", "m0 x m0", "m1 x m1", "m1 x m1"));
}

TEST_F(Evolve, AsksForTheLengthBeforeItAsksToContinue) {
    NamedPopulation population(3, 0);
    FillWithMates(population, 3);
    ScriptedRand::Set({0, 0, 0});

    population.Evolve();

    EXPECT_THAT(Journal::LinesWith("IsContinue"), SizeIs(3));
    EXPECT_THAT(Journal::LinesWith("Step"), SizeIs(3));
}

TEST_F(Evolve, AddsFourChildrenForEachIndividual) {
    NamedPopulation population(1000, 0);
    FillWithParents(population, 3);
    ScriptedRand::Set(std::vector<int>(9, 0));

    population.Evolve();

    EXPECT_EQ(population.m_nLength, 3 + 12);
    EXPECT_EQ(ScriptedRand::Drawn(), 9);
}

TEST_F(Evolve, LetsChildrenWaitForTheNextGeneration) {
    NamedPopulation population(1000, 0);
    FillWithParents(population, 2);
    ScriptedRand::Set(std::vector<int>(6, 0));

    population.Evolve();

    EXPECT_THAT(Journal::LinesWith(".New"), SizeIs(8));
    EXPECT_THAT(Journal::LinesWith("IsContinue"), SizeIs(2));
    EXPECT_THAT(Journal::LinesWith("c").size(), testing::Gt(0U));
    EXPECT_THAT(Journal::LinesWith("c1.New"), IsEmpty());
}

TEST_F(Evolve, CrossesTheOnlyIndividualWithItself) {
    NamedPopulation population(3, 0);
    FillWithParents(population, 1);
    ScriptedRand::Set({5, 6, 7});

    population.Evolve();

    EXPECT_EQ(population.m_nLength, 3);
    EXPECT_THAT(Journal::LinesWith("clone"), ElementsAre("clone A0", "clone A0", "clone A0", "clone A0"));
    for (const GA_Individual* p : population) {
        EXPECT_THAT(dynamic_cast<const NamedIndividual&>(*p).Genes(), ElementsAre("A0"));
    }
}

TEST_F(Evolve, CutsTheWorst) {
    NamedPopulation population(2, 0);
    FillWithMates(population, 5);
    population.m_nContinues = 0;
    const long nAlive = NamedIndividual::s_nAlive;

    population.Evolve();

    EXPECT_THAT(population.Names(), ElementsAre("m0", "m1"));
    EXPECT_EQ(population.m_nCurIndex, 1);
    EXPECT_EQ(NamedIndividual::s_nAlive, nAlive - 3);
}

TEST_F(Evolve, CutsFromTheTailOneByOne) {
    TracedPopulation population(1, 0);
    FillWithMates(population, 3);
    population.m_nContinues = 0;

    population.Evolve();

    EXPECT_THAT(Journal::Lines(), ElementsAre("IsContinue", "MoveToLast", "DelCur", "MoveToLast", "DelCur"));
}

TEST_F(Evolve, KeepsAPopulationSmallerThanItsSize) {
    NamedPopulation population(10, 0);
    FillWithMates(population, 2);
    ScriptedRand::Set({0, 0});

    population.Evolve();

    EXPECT_THAT(population.Names(), ElementsAre("m0", "m1"));
}

TEST_F(Evolve, ToSizeZeroBreedsAndThenDeletesEverybody) {
    NamedPopulation population(0, 100);
    FillWithParents(population, 2);
    ScriptedRand::Set(std::vector<int>(6, 0));

    population.Evolve();

    EXPECT_EQ(population.m_nLength, 0);
    EXPECT_EQ(population.m_nCurIndex, -1);
    EXPECT_THAT(Journal::LinesWith(".Initialize"), SizeIs(8));
    EXPECT_THAT(Journal::LinesWith("Mutation"), IsEmpty());
    EXPECT_EQ(population.m_nGeneration, 1);
}

TEST_F(Evolve, StoppedAtOnceStillCutsAndCounts) {
    NamedPopulation population(1, 100);
    FillWithMates(population, 3);
    population.m_nContinues = 0;
    ScriptedRand::Set({});

    population.Evolve();

    EXPECT_THAT(Journal::Lines(), ElementsAre("IsContinue", "IsContinue"));
    EXPECT_THAT(population.Names(), ElementsAre("m0"));
    EXPECT_EQ(population.m_nGeneration, 1);
}

TEST_F(Evolve, StoppedInTheMiddleAsksAgainBeforeMutating) {
    class Impatient : public NamedPopulation {
    public:
        using NamedPopulation::NamedPopulation;
        bool IsContinue() override {
            Journal::Note("IsContinue");
            return ++m_nAsked != 2;
        }
        long m_nAsked = 0;
    };
    Impatient population(3, 34);
    FillWithMates(population, 3);
    ScriptedRand::Set({0, 0});

    population.Evolve();

    EXPECT_THAT(Journal::LinesWith(" x "), SizeIs(2));
    EXPECT_THAT(Journal::LinesWith("Mutation"), ElementsAre("m0.Mutation"));
    EXPECT_THAT(Journal::LinesWith("Step"), SizeIs(2));
}

TEST_F(Evolve, StoppedWhileMutatingKeepsTheMutantsMade) {
    NamedPopulation population(3, 100);
    FillWithMates(population, 3);
    population.m_nContinues = 3 + 2;
    ScriptedRand::Set({0, 0, 0, 0, 0});

    population.Evolve();

    EXPECT_EQ(population.m_nLength, 5);
    EXPECT_THAT(Journal::LinesWith("IsContinue"), SizeIs(6));
    EXPECT_EQ(population.m_nGeneration, 1);
}

// Each row: size, rate, mutants.
class MutantCount : public testing::TestWithParam<std::tuple<long, long, std::size_t>> {};

TEST_P(MutantCount, IsTheRatesShareOfTheSizeRoundedDown) {
    const auto [nPopSize, nRate, nMutants] = GetParam();
    Journal::Clear();
    NamedPopulation population(nPopSize, nRate);
    population.Append(new Mate("m"));
    ScriptedRand::Set(std::vector<int>(1 + nMutants, 0));

    population.Evolve();

    EXPECT_THAT(Journal::LinesWith("Mutation"), SizeIs(nMutants));
    EXPECT_EQ(population.m_nLength, std::min(1L, nPopSize) + static_cast<long>(nMutants));
}

INSTANTIATE_TEST_SUITE_P(Rows, MutantCount,
                         testing::Values(std::tuple(10L, 15L, 1U), std::tuple(10L, 5L, 0U),
                                         std::tuple(10L, 19L, 1U), std::tuple(10L, 20L, 2U),
                                         std::tuple(10L, 0L, 0U), std::tuple(3L, 100L, 3U),
                                         std::tuple(3L, 250L, 7U), std::tuple(1L, 99L, 0U),
                                         std::tuple(0L, 500L, 0U), std::tuple(10L, -50L, 0U)));

TEST_F(Evolve, ChoosesMutantsAmongSurvivorsAndMutantsSoFar) {
    NamedPopulation population(2, 150);
    FillWithMates(population, 2);
    ScriptedRand::Set({0, 0, 1, 5, 7});

    population.Evolve();

    // Of two the second; of three the last, which is m1 behind its mutant; of four the last again.
    EXPECT_THAT(Journal::LinesWith("Mutation"), ElementsAre("m1.Mutation", "m1.Mutation", "m1.Mutation"));
    EXPECT_EQ(population.m_nLength, 5);
}

TEST_F(Evolve, TakesNoMutantFromAnIndividualThatMakesNone) {
    NamedPopulation population(1, 200);
    auto* const pSterile = new Mate("m");
    pSterile->m_bMutates = false;
    population.Append(pSterile);
    Journal::Clear();
    ScriptedRand::Set({0, 0, 0});

    population.Evolve();

    EXPECT_EQ(population.m_nLength, 1);
    EXPECT_THAT(Journal::LinesWith("Mutation"), SizeIs(2));
    EXPECT_THAT(Journal::LinesWith("Step"), SizeIs(3));
}

TEST_F(Evolve, ReadsTheSettingsThatTheApplicationChanges) {
    NamedPopulation population(5, 0);
    FillWithMates(population, 3);
    population.m_nPopSize = 1;
    population.m_nMutationRate = 100;
    population.m_nGeneration = 41;
    ScriptedRand::Set({0, 0, 0, 0});

    population.Evolve();

    EXPECT_THAT(population.Names(), ElementsAre("m0*", "m0"));
    EXPECT_EQ(population.m_nGeneration, 42);
}

TEST_F(Evolve, IsReachedThroughItsSlot) {
    class Idle : public GA_Population {
    public:
        void Evolve() override { m_nGeneration += 10; }
    };
    Idle idle;
    GA_Population& population = idle;

    population.Evolve();

    EXPECT_EQ(population.m_nGeneration, 10);
}

// A plain model of whole generations: chromosomes are vectors, an individual's rank is the sum of its genes.

using Chromosome = std::vector<long>;

class NumberGene : public GA_Gene, public Counted<NumberGene> {
public:
    explicit NumberGene(long n) : m_n(n) {}
    GA_Gene* Clone() const override { return new NumberGene(m_n); }
    long m_n;
};

class NumberIndividual : public GA_Individual, public Counted<NumberIndividual> {
public:
    NumberIndividual() = default;
    explicit NumberIndividual(const Chromosome& genes) {
        for (const long n : genes) {
            Append(new NumberGene(n));
        }
        NumberIndividual::Initialize();
    }

    Chromosome Genes() const {
        Chromosome genes;
        for (const GA_Gene* p : *this) {
            genes.push_back(dynamic_cast<const NumberGene&>(*p).m_n);
        }
        return genes;
    }

    GA_Individual* New() const override { return new NumberIndividual; }
    void Initialize() override {
        const Chromosome genes = Genes();
        m_nRank = std::accumulate(genes.begin(), genes.end(), 0L);
    }
    GA_Individual* Mutation() const override {
        Chromosome genes = Genes();
        if (m_nRank % 5 == 0) {
            return nullptr;
        }
        genes[static_cast<std::size_t>(m_nRank) % genes.size()] += 3;
        return new NumberIndividual(genes);
    }
    bool operator<(const GA_Individual& other) const override { return m_nRank < RankOf(other); }
    bool operator>(const GA_Individual& other) const override { return m_nRank > RankOf(other); }

private:
    static long RankOf(const GA_Individual& other) {
        return dynamic_cast<const NumberIndividual&>(other).m_nRank;
    }

    long m_nRank = 0;
};

class Model {
public:
    Model(std::vector<int> script, long nContinues) : m_script(std::move(script)), m_nContinues(nContinues) {}

    void Append(const Chromosome& x) {
        std::size_t nPlace = 0;
        if (!m_list.empty() && Rank(x) >= Rank(m_list.front())) {
            nPlace = Rank(x) > Rank(m_list.back()) ? m_list.size() : Bisect(Rank(x));
        }
        m_list.insert(m_list.begin() + static_cast<long>(nPlace), x);
        m_nCursor = static_cast<long>(nPlace);
    }

    void Evolve(long nPopSize, long nRate) {
        const std::vector<Chromosome> parents = m_list;
        const long n = static_cast<long>(parents.size());
        for (long i = 0; i < n && m_nContinues-- > 0; ++i) {
            const long r = Draw();
            const long k = static_cast<long>(std::floor(std::sqrt(r % (n * n))));
            const Chromosome& own = parents[static_cast<std::size_t>(i)];
            Cross(parents[static_cast<std::size_t>(n - 1 - k)], own);
            Cross(parents[static_cast<std::size_t>(r % n)], own);
        }
        while (static_cast<long>(m_list.size()) > nPopSize) {
            m_list.pop_back();
            m_nCursor = static_cast<long>(m_list.size()) - 1;
        }
        for (long j = 0; j < nPopSize * nRate / 100 && m_nContinues-- > 0; ++j) {
            m_nCursor = Draw() % static_cast<long>(m_list.size());
            Chromosome mutant = m_list[static_cast<std::size_t>(m_nCursor)];
            if (Rank(mutant) % 5 != 0) {
                mutant[static_cast<std::size_t>(Rank(mutant)) % mutant.size()] += 3;
                Append(mutant);
            }
        }
    }

    std::vector<Chromosome> m_list;
    long m_nCursor = -1;
    long m_nDrawn = 0;

private:
    static long Rank(const Chromosome& genes) { return std::accumulate(genes.begin(), genes.end(), 0L); }

    std::size_t Bisect(long nRank) const {
        long lo = 0;
        long hi = static_cast<long>(m_list.size()) - 1;
        long nProbed = 0;
        while (hi > lo) {
            nProbed = (lo + hi) / 2;
            const long e = Rank(m_list[static_cast<std::size_t>(nProbed)]);
            if (nRank == e) {
                return static_cast<std::size_t>(nProbed);
            }
            (nRank > e ? lo : hi) = nRank > e ? nProbed + 1 : nProbed - 1;
        }
        if (hi != lo) {
            return static_cast<std::size_t>(nProbed);
        }
        return static_cast<std::size_t>(nRank > Rank(m_list[static_cast<std::size_t>(lo)]) ? lo + 1 : lo);
    }

    void Cross(const Chromosome& receiver, const Chromosome& argument) {
        const Chromosome& a = argument.size() > receiver.size() ? argument : receiver;
        const Chromosome& b = argument.size() > receiver.size() ? receiver : argument;
        const long n = static_cast<long>(b.size());
        const long p1 = Draw() % n;
        Chromosome first = a;
        Chromosome second = a;
        std::copy(b.begin(), b.end(), second.begin());
        for (long nTaken = 0; nTaken < std::max(n / 2, 1L); ++nTaken) {
            const auto i = static_cast<std::size_t>((p1 + nTaken) % n);
            std::swap(first[i], second[i]);
        }
        Append(first);
        Append(second);
    }

    long Draw() { return m_script[static_cast<std::size_t>(m_nDrawn++)]; }

    std::vector<int> m_script;
    long m_nContinues;
};

std::vector<Chromosome> Chromosomes(const GA_Population& population) {
    std::vector<Chromosome> chromosomes;
    for (const GA_Individual* p : population) {
        chromosomes.push_back(dynamic_cast<const NumberIndividual&>(*p).Genes());
    }
    return chromosomes;
}

RC_GTEST_PROP(EvolveProperty, AgreesWithVectorsOverGenerations, ()) {
    const auto gene = rc::gen::inRange(0L, 6L);
    const auto length = rc::gen::inRange<std::size_t>(1, 6);
    const auto chromosome =
        rc::gen::mapcat(length, [gene](std::size_t n) { return rc::gen::container<Chromosome>(n, gene); });
    const auto script = *rc::gen::container<std::vector<int>>(2000, rc::gen::inRange(0, RAND_MAX));
    const auto nContinues = *rc::gen::inRange(0L, 120L);
    const auto ancestors =
        *rc::gen::container<std::vector<Chromosome>>(*rc::gen::inRange<std::size_t>(1, 8), chromosome);
    const auto nPopSize = *rc::gen::inRange(0L, 9L);
    const auto nRate = *rc::gen::inRange(0L, 120L);
    const long nGenes = NumberGene::s_nAlive;
    const long nIndividuals = NumberIndividual::s_nAlive;
    Journal::Clear();
    ScriptedRand::Set(script);
    {
        NamedPopulation population(nPopSize, nRate);
        population.m_nContinues = nContinues;
        Model model(script, nContinues);
        for (const Chromosome& genes : ancestors) {
            population.Append(new NumberIndividual(genes));
            model.Append(genes);
        }
        for (long nGeneration = 1; nGeneration <= 5; ++nGeneration) {
            population.Evolve();
            model.Evolve(nPopSize, nRate);

            RC_ASSERT(Chromosomes(population) == model.m_list);
            RC_ASSERT(population.m_nCurIndex == model.m_nCursor);
            RC_ASSERT(population.m_nGeneration == nGeneration);
            RC_ASSERT(ScriptedRand::Drawn() == model.m_nDrawn);
        }
    }
    RC_ASSERT(NumberGene::s_nAlive == nGenes);
    RC_ASSERT(NumberIndividual::s_nAlive == nIndividuals);
}

}  // namespace
