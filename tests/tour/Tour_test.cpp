#include "examples/tour/Tour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "TourKit.h"
#include "VexaBase/event/KyScopedReactor.h"

namespace tour {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Field;

constexpr unsigned Seed = 7;

/// A hundred places without order.
Instance Scattered() {
    std::vector<Point> points;
    for (int i = 0; i < 100; ++i) {
        points.push_back(
            {static_cast<double>(i * i * 37 % 1009), static_cast<double>(i * i * i * 101 % 997)});
    }
    return {"scattered", Metric::Euclidean, points};
}

class TourTest : public testing::Test {
protected:
    std::unique_ptr<Tour> Made(const Order& order) {
        auto pTour = std::make_unique<Tour>(m_population);
        pTour->SetCities(order);
        return pTour;
    }
    std::unique_ptr<Tour> Shuffled(unsigned nSeed) {
        Order order(100);
        std::iota(order.begin(), order.end(), 0);
        std::shuffle(order.begin(), order.end(), std::mt19937(nSeed));
        return Made(order);
    }

    void ExpectSortedToursOfDifferentLengths() const {
        std::vector<long> lengths;
        for (const GA_Individual* p : m_population) {
            const auto& tour = static_cast<const Tour&>(*p);
            EXPECT_TRUE(IsTour(tour.Cities(), 100));
            EXPECT_EQ(m_instance.Length(tour.Cities()), tour.Total());
            lengths.push_back(tour.Total());
        }
        EXPECT_TRUE(std::is_sorted(lengths.begin(), lengths.end()));
        EXPECT_EQ(std::set<long>(lengths.begin(), lengths.end()).size(), lengths.size());
    }

    const Instance m_instance = Scattered();
    TourPopulation m_population{m_instance, 8, 50, Seed, {}};
};

TEST_F(TourTest, KeepsTheCitiesInItsGenes) {
    const auto pTour = Made({2, 0, 1});

    EXPECT_THAT(pTour->Cities(), ElementsAre(2, 0, 1));
    EXPECT_EQ(static_cast<const City*>(*pTour->GetAt(0))->m_nNumber, 2);

    pTour->SetCities({1, 2, 0});

    EXPECT_THAT(pTour->Cities(), ElementsAre(1, 2, 0));
}

TEST_F(TourTest, ClonesItsGenesByNumber) {
    const City city(11);

    const std::unique_ptr<GA_Gene> pClone(city.Clone());

    EXPECT_EQ(static_cast<const City&>(*pClone).m_nNumber, 11);
}

TEST_F(TourTest, MakesEmptyToursOfItsPopulation) {
    const auto pTour = Shuffled(1);

    const std::unique_ptr<GA_Individual> pNew(pTour->New());

    EXPECT_EQ(pNew->m_nLength, 0);
    EXPECT_NE(dynamic_cast<Tour*>(pNew.get()), nullptr);
}

TEST_F(TourTest, IsShortenedAndMeasuredByInitialize) {
    const auto pTour = Shuffled(1);
    const long nBefore = m_instance.Length(pTour->Cities());

    pTour->Initialize();

    EXPECT_LT(pTour->Total(), nBefore);
    EXPECT_EQ(pTour->Total(), m_instance.Length(pTour->Cities()));
}

TEST_F(TourTest, IsFitterTheShorterItIs) {
    const Instance line("line", Metric::Euclidean, {{0, 0}, {10, 0}, {20, 0}, {30, 0}});
    TourPopulation population(line, 2, 0, Seed, {});
    Tour shorter(population);
    shorter.SetCities({0, 1, 2, 3});
    shorter.Initialize();
    Tour longer(population);
    longer.SetCities({0, 2, 1, 3});
    longer.Initialize();

    EXPECT_TRUE(shorter < longer);
    EXPECT_FALSE(shorter > longer);
    EXPECT_TRUE(longer > shorter);
    EXPECT_FALSE(shorter < shorter);
    EXPECT_FALSE(shorter > shorter);
}

TEST_F(TourTest, BreedsToursOfTheSameCities) {
    auto pMother = Shuffled(1);
    auto pFather = Shuffled(2);
    pMother->Initialize();
    pFather->Initialize();
    const Order before = pMother->Cities();

    const int nChildren = pMother->Multiply(*pFather, m_population);

    EXPECT_EQ(m_population.m_nLength, nChildren);
    EXPECT_GT(nChildren, 0);
    EXPECT_EQ(pMother->Cities(), before);
    ExpectSortedToursOfDifferentLengths();
}

TEST_F(TourTest, BreedsWithItselfByChance) {
    auto pTour = Shuffled(3);
    pTour->Initialize();

    const int nChildren = pTour->Multiply(*pTour, m_population);

    EXPECT_EQ(m_population.m_nLength, nChildren);
    ExpectSortedToursOfDifferentLengths();
}

TEST_F(TourTest, MutatesIntoATourThatThePopulationDoesNotKnow) {
    m_population.Populate();
    long nMutants = 0;

    for (int i = 0; i < 50; ++i) {
        const std::unique_ptr<GA_Individual> pMutant(m_population.Best().Mutation());
        if (pMutant != nullptr) {
            ++nMutants;
            EXPECT_FALSE(m_population.Knows(static_cast<Tour&>(*pMutant).Total()));
            EXPECT_TRUE(IsTour(static_cast<Tour&>(*pMutant).Cities(), 100));
        }
    }

    EXPECT_GT(nMutants, 0);
}

TEST_F(TourTest, PopulatesWithDifferentTours) {
    m_population.Populate();

    EXPECT_EQ(m_population.m_nLength, 8);
    ExpectSortedToursOfDifferentLengths();
}

TEST_F(TourTest, PopulatesWithFewerWhereThereAreNoMore) {
    const Instance triangle("triangle", Metric::Euclidean, {{0, 0}, {10, 0}, {0, 10}});
    TourPopulation population(triangle, 8, 0, Seed, {});

    population.Populate();

    EXPECT_EQ(population.m_nLength, 1);
    EXPECT_EQ(population.Best().Total(), 34);
}

TEST_F(TourTest, AdmitsNoSecondTourOfOneLength) {
    m_population.Populate();
    const Order best = m_population.Best().Cities();
    auto pTwin = Made(best);
    pTwin->Initialize();

    EXPECT_FALSE(m_population.Admit(std::move(pTwin)));
    EXPECT_EQ(m_population.m_nLength, 8);
}

TEST_F(TourTest, EvolvesAndNeverLosesTheBest) {
    m_population.Populate();

    for (int i = 0; i < 10; ++i) {
        const long nBest = m_population.Best().Total();
        m_population.Evolve();
        EXPECT_LE(m_population.Best().Total(), nBest);
        EXPECT_LE(m_population.m_nLength, 8 + 4);
        ExpectSortedToursOfDifferentLengths();
    }
}

TEST_F(TourTest, GivesTheMeanAndTheBestInOrder) {
    m_population.Populate();
    const std::vector<const Tour*> elite = m_population.Elite(3);
    const std::vector<const Tour*> all = m_population.Elite(100);

    ASSERT_EQ(elite.size(), 3U);
    EXPECT_EQ(elite[0], &m_population.Best());
    EXPECT_LT(elite[0]->Total(), elite[1]->Total());
    EXPECT_EQ(all.size(), 8U);
    double dSum = 0;
    for (const Tour* pTour : all) {
        dSum += static_cast<double>(pTour->Total());
    }
    EXPECT_DOUBLE_EQ(m_population.Mean(), dSum / 8);
}

TEST(TourLimits, StopAtATarget) {
    const Instance instance = Scattered();
    Limits limits;
    limits.m_nTarget = std::numeric_limits<long>::max() - 1;
    TourPopulation population(instance, 8, 0, Seed, limits);
    EXPECT_TRUE(population.IsContinue());

    population.Populate();

    EXPECT_FALSE(population.IsContinue());
    EXPECT_EQ(population.m_nLength, 1);
}

TEST(TourLimits, StopAtADeadline) {
    const Instance instance = Scattered();
    Limits limits;
    limits.m_deadline = Limits::Clock::now() - std::chrono::seconds(1);
    TourPopulation population(instance, 8, 0, Seed, limits);

    population.Populate();

    EXPECT_FALSE(population.IsContinue());
    EXPECT_EQ(population.m_nLength, 1);
}

TEST(TourLimits, StopAfterGenerationsWithoutAShorterTour) {
    const std::vector<double> angles = {0, 30, 77, 140, 200, 210, 300};
    const Instance instance = OnACircle(angles);
    Limits limits;
    limits.m_nStagnation = 4;
    TourPopulation population(instance, 5, 0, Seed, limits);
    population.Populate();

    while (population.IsContinue()) {
        population.Evolve();
    }

    EXPECT_TRUE(population.IsStagnant());
    EXPECT_GE(population.m_nGeneration, 4);
    EXPECT_EQ(population.Best().Total(), LengthOfPolygon(instance, angles));
}

/// Keeps what it hears.
class Ear : public KyEventReactor {
public:
    explicit Ear(unsigned int nMask) : KyEventReactor(nMask) {}
    void React(const wchar_t* pszName, void* pData) override {
        m_names.insert(pszName);
        m_progress.push_back(*static_cast<Progress*>(pData));
    }

    std::set<std::wstring> m_names;
    std::vector<Progress> m_progress;
};

TEST(TourEvents, TellOfEveryGeneration) {
    const Instance instance = Scattered();
    TourPopulation population(instance, 8, 0, Seed, {});
    Ear ear(GenerationMask);
    const KyScopedReactor registration(ear);
    population.Populate();

    population.Evolve();
    population.Evolve();

    EXPECT_EQ(ear.m_names, std::set<std::wstring>{GenerationEvent});
    ASSERT_EQ(ear.m_progress.size(), 2U);
    EXPECT_EQ(ear.m_progress[0].m_nGeneration, 1);
    EXPECT_EQ(ear.m_progress[1].m_nGeneration, 2);
    EXPECT_EQ(ear.m_progress[1].m_nBest, population.Best().Total());
    EXPECT_DOUBLE_EQ(ear.m_progress[1].m_dMean, population.Mean());
}

TEST(TourEvents, TellOfEveryShorterTour) {
    const Instance instance = Scattered();
    TourPopulation population(instance, 8, 0, Seed, {});
    Ear ear(ShorterTourMask);
    const KyScopedReactor registration(ear);

    population.Populate();
    population.Evolve();

    EXPECT_EQ(ear.m_names, std::set<std::wstring>{ShorterTourEvent});
    ASSERT_FALSE(ear.m_progress.empty());
    for (std::size_t i = 1; i < ear.m_progress.size(); ++i) {
        EXPECT_LT(ear.m_progress[i].m_nBest, ear.m_progress[i - 1].m_nBest);
    }
    EXPECT_EQ(ear.m_progress.back().m_nBest, population.Best().Total());
}

}  // namespace
}  // namespace tour
