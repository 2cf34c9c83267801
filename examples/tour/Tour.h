// The tours that evolve: a gene is a city, an individual a closed tour, and the shorter of two is the fitter.
#pragma once

#include <chrono>
#include <limits>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "VexaBase/ga/GA_Population.h"
#include "examples/tour/Instance.h"
#include "examples/tour/LocalSearch.h"

namespace tour {

class TourPopulation;

using Order = std::vector<int>;

class City : public GA_Gene {
public:
    explicit City(int nNumber) : m_nNumber(nNumber) {}

    GA_Gene* Clone() const override { return new City(m_nNumber); }

    int m_nNumber;
};

class Tour : public GA_Individual {
public:
    /// A tour of the population's instance, without cities yet.
    explicit Tour(TourPopulation& population) : m_population(population) {}

    GA_Individual* New() const override;

    /// Shortens the tour by local search and measures it.
    void Initialize() override;

    /// A tour with a few of its roads changed at random and shortened again; null when that is no new tour.
    GA_Individual* Mutation() const override;

    /// Two children: a run of cities of one parent, the others in the order in which they stand in the other
    /// parent, and the same with the parents' roles changed. A child that is no new tour is changed at
    /// random, once, and else dropped.
    int Multiply(const GA_Individual& other, GA_Population& pop) const override;

    bool operator<(const GA_Individual& other) const override { return m_nTotal < TotalOf(other); }
    bool operator>(const GA_Individual& other) const override { return m_nTotal > TotalOf(other); }

    /// The cities in the order of the tour.
    Order Cities() const;
    void SetCities(const Order& order);

    /// The length of the tour, as Initialize measured it.
    long Total() const { return m_nTotal; }

private:
    static long TotalOf(const GA_Individual& other) { return static_cast<const Tour&>(other).m_nTotal; }
    std::unique_ptr<Tour> Grown(const Order& order) const;
    int Enter(const Order& order, TourPopulation& population) const;

    TourPopulation& m_population;
    long m_nTotal = 0;
};

/// When to stop. What is not set does not stop anything.
struct Limits {
    using Clock = std::chrono::steady_clock;

    std::optional<Clock::time_point> m_deadline;
    std::optional<long> m_nStagnation;  // generations without a shorter tour
    std::optional<long> m_nTarget;      // a length to reach
};

/// What is reported. An event's data points to one.
struct Progress {
    long m_nGeneration;
    long m_nBest;
    double m_dMean;
};

/// The events of a population; their masks tell them apart too.
inline constexpr const wchar_t* ShorterTourEvent = L"tour/shorter";
inline constexpr const wchar_t* GenerationEvent = L"tour/generation";
inline constexpr unsigned int ShorterTourMask = 0x1;
inline constexpr unsigned int GenerationMask = 0x2;

/// A population of different tours, told apart by their lengths. It sends a ShorterTourEvent for each new
/// best tour and a GenerationEvent after each generation. All chance comes from the seed, and from the
/// library's rand(), which it seeds.
class TourPopulation : public GA_Population {
public:
    TourPopulation(const Instance& instance, long nPopSize, long nMutationRate, unsigned nSeed,
                   const Limits& limits);

    /// Fills the population with random tours, improved; fewer than m_nPopSize where there are no more
    /// different ones.
    void Populate();

    /// Takes a tour in unless one of its length is there. False if it was not taken.
    bool Admit(std::unique_ptr<Tour> pTour);

    /// False when a limit is reached.
    bool IsContinue() override;
    void Step() override { Watch(); }
    void Evolve() override;

    /// Whether the best tour has not changed for as many generations as the limits allow.
    bool IsStagnant() const;

    /// Tells of the best tour if it is new.
    void Watch();

    const Tour& Best() const { return static_cast<const Tour&>(**GetFirst()); }
    bool Knows(long nTotal) const;
    double Mean() const;

    /// The best tours, the shortest first.
    std::vector<const Tour*> Elite(long n) const;

    const Instance& Problem() const { return m_instance; }
    LocalSearch& Search() { return m_search; }

    /// A number from 0 to n - 1.
    std::size_t Random(std::size_t n) { return static_cast<std::size_t>(m_random() % n); }

private:
    const Instance& m_instance;
    Limits m_limits;
    LocalSearch m_search;
    std::mt19937_64 m_random;
    long m_nBest = std::numeric_limits<long>::max();
    long m_nBestGeneration = 0;
};

}  // namespace tour
