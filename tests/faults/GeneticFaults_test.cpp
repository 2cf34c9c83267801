// The genetic algorithm: every hook of a breeding or of a generation may throw.

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <numeric>

#include "EveryOperation.h"
#include "VexaBase/ga/GA_Population.h"
#include "tests/containers/ListProbes.h"

namespace {

class NumberGene : public GA_Gene, Counted {
public:
    explicit NumberGene(long n) : m_n(n) {}
    GA_Gene* Clone() const override {
        FaultAt::Pass(FaultKind::Hook);
        return new NumberGene(m_n);
    }

    long m_n;
};

/// The smaller the sum of its numbers, the fitter.
class Numbers : public GA_Individual, Counted {
public:
    Numbers() = default;
    Numbers(long nGenes, long n) {
        SetLength(nGenes, false);
        for (long i = 0; i < nGenes; ++i) {
            *GetAt(i) = new NumberGene(n);
        }
        m_nSum = n * nGenes;
    }

    GA_Individual* New() const override {
        FaultAt::Pass(FaultKind::Hook);
        return new Numbers;
    }
    void Initialize() override {
        FaultAt::Pass(FaultKind::Hook);
        m_nSum = std::accumulate(begin(), end(), 0L, [](long nSum, const GA_Gene* pGene) {
            return nSum + static_cast<const NumberGene*>(pGene)->m_n;
        });
    }
    GA_Individual* Mutation() const override {
        FaultAt::Pass(FaultKind::Hook);
        return new Numbers(m_nLength, 5);
    }
    bool operator<(const GA_Individual& other) const override {
        FaultAt::Pass(FaultKind::Comparison);
        return m_nSum < static_cast<const Numbers&>(other).m_nSum;
    }
    bool operator>(const GA_Individual& other) const override {
        FaultAt::Pass(FaultKind::Comparison);
        return m_nSum > static_cast<const Numbers&>(other).m_nSum;
    }

    long m_nSum = 0;
};

class HookedPopulation : public GA_Population {
public:
    using GA_Population::GA_Population;
    bool IsContinue() override {
        FaultAt::Pass(FaultKind::Hook);
        return true;
    }
    void Step() override { FaultAt::Pass(FaultKind::Hook); }
};

class Evolution : public Subject {
public:
    ~Evolution() {
        if (std::find(m_population.begin(), m_population.end(), m_pLoose) == m_population.end()) {
            delete m_pLoose;
        }
    }

    std::string Words() const {
        return Contents() + "at " + std::to_string(m_population.m_nCurIndex) + " gives " +
               std::to_string(m_nResult) + " in " + std::to_string(m_population.m_nGeneration);
    }
    std::string Contents() const {
        std::string words;
        for (const GA_Individual* p : m_population) {
            words += std::to_string(static_cast<const Numbers*>(p)->m_nSum) + " ";
        }
        return words;
    }
    std::string Fault() const {
        const testing::AssertionResult sound = IsSound<GA_Individual*>(m_population);
        if (!sound) return sound.message();
        if (m_population.m_nGeneration != m_nEvolved) return "a generation that failed is counted";
        const auto isLess = [](const GA_Individual* a, const GA_Individual* b) {
            return static_cast<const Numbers*>(a)->m_nSum < static_cast<const Numbers*>(b)->m_nSum;
        };
        return m_bIsSorted && !std::is_sorted(m_population.begin(), m_population.end(), isLess) ? "not sorted"
                                                                                                : "";
    }

    HookedPopulation m_population{3, 70};
    Numbers* m_pLoose = new Numbers(2, 3);  // the population's, once it is in there
    bool m_bIsSorted = true;
    long m_nEvolved = 0;
};

void Empty(Evolution&) {}
void ThreeIndividuals(Evolution& e) {
    for (const long n : {4, 2, 6}) {
        e.m_population.Append(new Numbers(3, n));
    }
}

/// Breeds with the same random numbers every time.
void Breed(Evolution& e, const GA_Individual& a, const GA_Individual& b) {
    std::srand(1);
    e.m_nResult = a.Multiply(b, e.m_population);
}

/// Appends an individual that a failure destroys.
template <long n>
void AppendOne(Evolution& e) {
    e.m_population.Append(new Numbers(3, n));
}

const Operation<Evolution> g_evolution[] = {
    {"MakeAGene", Empty, [](Evolution& e) { e.m_nResult = GA_Gene().Clone() == nullptr; }, CannotFail},
    {"MakeAnIndividual", Empty, [](Evolution& e) { e.m_nResult = GA_Individual().m_nLength; }, CannotFail},
    {"MakeAPopulation", Empty, [](Evolution& e) { e.m_nResult = GA_Population(3, 5).m_nPopSize; }, Same},
    {"AskAPlainIndividual", Empty,
     [](Evolution& e) {
         GA_Individual plain;
         plain.Initialize();
         e.m_nResult =
             plain.New() == nullptr && plain.Mutation() == nullptr && !(plain < plain) && !(plain > plain);
     },
     CannotFail},
    {"AppendToNothing", Empty, AppendOne<1>, Kept},
    {"AppendFirst", ThreeIndividuals, AppendOne<1>, Kept},
    {"AppendLast", ThreeIndividuals, AppendOne<9>, Kept},
    {"AppendBetween", ThreeIndividuals, AppendOne<5>, Kept},
    {"AppendAnEqual", ThreeIndividuals, AppendOne<4>, Kept},
    {"AppendNull", ThreeIndividuals, [](Evolution& e) { e.m_population.Append(nullptr); }, CannotFail},
    {"AppendUnsorted", [](Evolution& e) { ThreeIndividuals(e), e.m_bIsSorted = false; },
     [](Evolution& e) { e.m_nResult = e.m_population.GA_IndividualList::Append(e.m_pLoose); }, Kept},
    // The children enter the population when all hooks have been called; one that is in stays.
    {"Multiply", ThreeIndividuals,
     [](Evolution& e) { Breed(e, **e.m_population.GetFirst(), **e.m_population.GetLast()); },
     Changed.ButByHooks(Left::Same)},
    {"MultiplyWithoutRoomForChildren", Empty, [](Evolution& e) { Breed(e, Numbers(3, 1), Numbers(3, 2)); },
     Changed.ButByHooks(Left::Same)},
    {"MultiplyWithALongerOne", ThreeIndividuals,
     [](Evolution& e) { Breed(e, *e.m_pLoose, **e.m_population.GetLast()); }, Changed.ButByHooks(Left::Same)},
    {"Evolve", ThreeIndividuals,
     [](Evolution& e) {
         std::srand(1);
         e.m_population.Evolve();
         ++e.m_nEvolved;
     },
     Changed},
    {"EvolveNothing", [](Evolution& e) { e.m_population.m_nPopSize = 0; },
     [](Evolution& e) { e.m_population.Evolve(), ++e.m_nEvolved; }, CannotFail},
};
RUN_UNDER_FAULTS(GA_Population, g_evolution);

}  // namespace
