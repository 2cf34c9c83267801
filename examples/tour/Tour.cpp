#include "examples/tour/Tour.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

#include "VexaBase/event/KyEventReactor.h"

namespace tour {
namespace {

std::ptrdiff_t Offset(std::size_t n) { return static_cast<std::ptrdiff_t>(n); }

/// A run of a's cities where it stands in a, and the others behind it in b's order.
Order Crossed(const Order& a, const Order& b, TourPopulation& population) {
    const std::size_t n = a.size();
    const std::size_t nRun = std::max<std::size_t>(n / 4 + population.Random(n / 2 + 1), 1);
    const std::size_t nFirst = population.Random(n);
    std::vector<char> isTaken(n, 0);
    Order child;
    child.reserve(n);
    for (std::size_t i = 0; i < std::min(nRun, n); ++i) {
        child.push_back(a[(nFirst + i) % n]);
        isTaken[static_cast<std::size_t>(child.back())] = 1;
    }
    const auto last = std::find(b.begin(), b.end(), child.back());
    const auto takeFree = [&](int city) {
        if (isTaken[static_cast<std::size_t>(city)] == 0) {
            child.push_back(city);
        }
    };
    std::for_each(last, b.end(), takeFree);
    std::for_each(b.begin(), last, takeFree);
    return child;
}

/// Changes the places of two neighbouring runs of up to 50 cities: a step that the local search does not take
/// back at once.
Order Kicked(Order order, TourPopulation& population) {
    constexpr std::size_t longestRun = 50;
    const std::size_t n = order.size();
    if (n < 8) {
        for (std::size_t i = n; i > 1; --i) {
            std::swap(order[i - 1], order[population.Random(i)]);
        }
        return order;
    }
    std::rotate(order.begin(), order.begin() + Offset(population.Random(n)), order.end());
    const std::size_t nLongest = std::min(longestRun, n / 3);
    const std::size_t nFirst = 1 + population.Random(nLongest);
    const std::size_t nSecond = 1 + population.Random(nLongest);
    std::rotate(order.begin(), order.begin() + Offset(nFirst), order.begin() + Offset(nFirst + nSecond));
    return order;
}

}  // namespace

GA_Individual* Tour::New() const { return new Tour(m_population); }

void Tour::Initialize() {
    Order order = Cities();
    m_population.Search().Improve(order);
    SetCities(order);
    m_nTotal = m_population.Problem().Length(order);
}

GA_Individual* Tour::Mutation() const {
    std::unique_ptr<Tour> pMutant = Grown(Kicked(Cities(), m_population));
    return m_population.Knows(pMutant->Total()) ? nullptr : pMutant.release();
}

int Tour::Multiply(const GA_Individual& other, GA_Population& pop) const {
    auto& population = static_cast<TourPopulation&>(pop);
    const Order own = Cities();
    if (this == &other) {
        return Enter(Kicked(own, population), population) + Enter(Kicked(own, population), population);
    }
    const Order others = static_cast<const Tour&>(other).Cities();
    return Enter(Crossed(own, others, population), population) +
           Enter(Crossed(others, own, population), population);
}

Order Tour::Cities() const {
    Order order;
    order.reserve(static_cast<std::size_t>(m_nLength));
    std::transform(begin(), end(), std::back_inserter(order),
                   [](const GA_Gene* pGene) { return static_cast<const City*>(pGene)->m_nNumber; });
    return order;
}

void Tour::SetCities(const Order& order) {
    const auto n = static_cast<long>(order.size());
    if (m_nLength != n) {
        SetLength(n, false);
        std::transform(order.begin(), order.end(), begin(), [](int city) { return new City(city); });
        return;
    }
    for (long i = 0; i < n; ++i) {
        static_cast<City*>(*GetAt(i))->m_nNumber = order[static_cast<std::size_t>(i)];
    }
}

/// A new tour that begins with this order.
std::unique_ptr<Tour> Tour::Grown(const Order& order) const {
    std::unique_ptr<Tour> pTour(static_cast<Tour*>(New()));
    pTour->SetCities(order);
    pTour->Initialize();
    return pTour;
}

/// Enters a child that begins with this order; returns how many came of it, one or none.
int Tour::Enter(const Order& order, TourPopulation& population) const {
    std::unique_ptr<Tour> pChild = Grown(order);
    if (population.Knows(pChild->Total())) {
        pChild = Grown(Kicked(pChild->Cities(), population));
    }
    return population.Admit(std::move(pChild)) ? 1 : 0;
}

TourPopulation::TourPopulation(const Instance& instance, long nPopSize, long nMutationRate, unsigned nSeed,
                               const Limits& limits)
    : GA_Population(nPopSize, nMutationRate),
      m_instance(instance),
      m_limits(limits),
      m_search(instance),
      m_random(nSeed) {
    std::srand(nSeed);
}

void TourPopulation::Populate() {
    Order order(static_cast<std::size_t>(m_instance.Cities()));
    std::iota(order.begin(), order.end(), 0);
    for (long nTries = 2 * m_nPopSize; m_nLength < m_nPopSize && nTries > 0; --nTries) {
        for (std::size_t i = order.size(); i > 1; --i) {
            std::swap(order[i - 1], order[Random(i)]);
        }
        auto pTour = std::make_unique<Tour>(*this);
        pTour->SetCities(order);
        pTour->Initialize();
        Admit(std::move(pTour));
        Watch();
        if (!IsContinue()) {
            return;
        }
    }
}

bool TourPopulation::Admit(std::unique_ptr<Tour> pTour) {
    if (Knows(pTour->Total())) {
        return false;
    }
    Append(pTour.release());
    return true;
}

bool TourPopulation::IsContinue() {
    return !(m_limits.m_nTarget && m_nBest <= *m_limits.m_nTarget) && !IsStagnant() &&
           !(m_limits.m_deadline && Limits::Clock::now() >= *m_limits.m_deadline);
}

void TourPopulation::Evolve() {
    GA_Population::Evolve();
    Progress progress{m_nGeneration, m_nBest, Mean()};
    KySendEvent(GenerationEvent, &progress, GenerationMask);
}

bool TourPopulation::IsStagnant() const {
    return m_limits.m_nStagnation && m_nGeneration - m_nBestGeneration >= *m_limits.m_nStagnation;
}

void TourPopulation::Watch() {
    if (m_nLength == 0 || Best().Total() >= m_nBest) {
        return;
    }
    m_nBest = Best().Total();
    m_nBestGeneration = m_nGeneration;
    Progress progress{m_nGeneration, m_nBest, Mean()};
    KySendEvent(ShorterTourEvent, &progress, ShorterTourMask);
}

bool TourPopulation::Knows(long nTotal) const {
    return std::any_of(begin(), end(), [nTotal](const GA_Individual* pIndividual) {
        return static_cast<const Tour*>(pIndividual)->Total() == nTotal;
    });
}

double TourPopulation::Mean() const {
    const double dSum = std::accumulate(begin(), end(), 0.0, [](double d, const GA_Individual* pIndividual) {
        return d + static_cast<double>(static_cast<const Tour*>(pIndividual)->Total());
    });
    return m_nLength == 0 ? 0 : dSum / static_cast<double>(m_nLength);
}

std::vector<const Tour*> TourPopulation::Elite(long n) const {
    std::vector<const Tour*> elite;
    for (const GA_Individual* pIndividual : *this) {
        if (static_cast<long>(elite.size()) >= n) {
            break;
        }
        elite.push_back(static_cast<const Tour*>(pIndividual));
    }
    return elite;
}

}  // namespace tour
