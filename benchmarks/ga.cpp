// The time of a child bred, with a fitness that costs next to nothing: what the framework itself takes.
//
// The limit is bare C++ under the same rule: genes on the heap behind a virtual Clone, the same draws, the same
// comparisons through virtual functions in the same order, a linked node for each individual, and no virtual call
// beyond these. It must breed the very same populations. pagmo's simple genetic algorithm stands beside them for
// context: it compares no individuals one by one and keeps no genes on the heap.
//
// Every iteration starts from the same random population, as a population that has converged is less work.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <set>
#include <vector>

#include "VexaBase/ga/GA_Gene.h"
#include "VexaBase/ga/GA_Individual.h"
#include "VexaBase/ga/GA_Population.h"

#if defined(VEXABASE_HAS_PAGMO)
#include <pagmo/algorithm.hpp>
#include <pagmo/algorithms/sga.hpp>
#include <pagmo/population.hpp>
#include <pagmo/problem.hpp>
#endif

namespace {

constexpr long nGenes = 16;
constexpr int nGenerations = 8;

double RandomUnit() { return std::rand() / (RAND_MAX + 1.0); }

/// What was compared, to tell that two algorithms compare alike.
long g_nComparisons = 0;

class NumberGene : public GA_Gene {
public:
    explicit NumberGene(double value) : m_value(value) {}
    GA_Gene* Clone() const override { return new NumberGene(*this); }

    double m_value;
};

class Vector : public GA_Individual {
public:
    GA_Individual* New() const override { return new Vector; }
    void Initialize() override {
        m_cost = 0;
        for (const GA_Gene* pGene : *this) {
            m_cost += static_cast<const NumberGene*>(pGene)->m_value;
        }
    }
    bool operator<(const GA_Individual& other) const override {
        ++g_nComparisons;
        return m_cost < static_cast<const Vector&>(other).m_cost;
    }
    bool operator>(const GA_Individual& other) const override {
        ++g_nComparisons;
        return m_cost > static_cast<const Vector&>(other).m_cost;
    }

    double m_cost = 0;
};

/// A population that watches, as most do.
class Watched : public GA_Population {
public:
    using GA_Population::GA_Population;
    void Step() override { ++m_nSteps; }

    long m_nSteps = 0;
};

template <class Population>
class Ours {
public:
    explicit Ours(long n) : m_population(n, 0) {
        for (long i = 0; i < n; ++i) {
            auto pVector = std::make_unique<Vector>();
            pVector->SetLength(nGenes, false);
            for (GA_Gene*& pGene : *pVector) {
                pGene = new NumberGene(RandomUnit());
            }
            pVector->Initialize();
            m_population.Append(pVector.release());
        }
    }

    void Evolve() { m_population.Evolve(); }

    std::vector<double> Costs() const {
        std::vector<double> costs;
        for (const GA_Individual* p : m_population) {
            costs.push_back(static_cast<const Vector*>(p)->m_cost);
        }
        return costs;
    }

private:
    Population m_population;
};

class BareGene {
public:
    virtual BareGene* Clone() const = 0;
    virtual ~BareGene() = default;
};

class BareNumberGene final : public BareGene {
public:
    explicit BareNumberGene(double value) : m_value(value) {}
    BareGene* Clone() const override { return new BareNumberGene(*this); }

    double m_value;
};

class BareIndividual {
public:
    BareIndividual() = default;
    BareIndividual(const BareIndividual&) = delete;
    BareIndividual& operator=(const BareIndividual&) = delete;
    virtual ~BareIndividual() {
        for (long i = 0; i < m_nLength; ++i) {
            delete m_genes[static_cast<std::size_t>(i)];
        }
    }

    virtual BareIndividual* New() const = 0;
    virtual void Initialize() = 0;
    virtual bool operator<(const BareIndividual& other) const = 0;
    virtual bool operator>(const BareIndividual& other) const = 0;

    void SetLength(long n) {
        m_genes.reset(new BareGene*[static_cast<std::size_t>(n)]);
        m_nLength = n;
    }
    BareGene*& operator[](long i) { return m_genes[static_cast<std::size_t>(i)]; }
    const BareGene* operator[](long i) const { return m_genes[static_cast<std::size_t>(i)]; }

    // As large as an owning array with a cursor, which the rule makes of an individual.
    long m_nLength = 0;
    long m_nCurIndex = -1;
    std::unique_ptr<BareGene*[]> m_genes;
    long m_nCapacity = 0;
    long m_nGrowBy = 1024;
};

class BareVector final : public BareIndividual {
public:
    BareIndividual* New() const override { return new BareVector; }
    void Initialize() override {
        m_cost = 0;
        for (long i = 0; i < m_nLength; ++i) {
            m_cost += static_cast<const BareNumberGene*>((*this)[i])->m_value;
        }
    }
    bool operator<(const BareIndividual& other) const override {
        ++g_nComparisons;
        return m_cost < static_cast<const BareVector&>(other).m_cost;
    }
    bool operator>(const BareIndividual& other) const override {
        ++g_nComparisons;
        return m_cost > static_cast<const BareVector&>(other).m_cost;
    }

    double m_cost = 0;
};

/// As the node of a doubly linked list.
struct Node {
    BareIndividual* m_pIndividual;
    Node* m_pNext;
    Node* m_pPre;
};

/// A population in order: a ring of nodes, which the rule asks for, and a vector of them to bisect.
class Row {
public:
    Row() = default;
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;
    ~Row() {
        while (Length() > 0) {
            DeleteLast();
        }
    }

    long Length() const { return static_cast<long>(m_nodes.size()); }
    const BareIndividual& At(long i) const { return *m_nodes[static_cast<std::size_t>(i)]->m_pIndividual; }

    void Insert(long i, BareIndividual* p) {
        Node* const pNext = i < Length() ? m_nodes[static_cast<std::size_t>(i)] : &m_end;
        Node* const pNode = new Node{p, pNext, pNext->m_pPre};
        pNode->m_pPre->m_pNext = pNode;
        pNext->m_pPre = pNode;
        m_nodes.insert(m_nodes.begin() + i, pNode);
    }

    void DeleteLast() {
        Node* const pLast = m_nodes.back();
        pLast->m_pPre->m_pNext = &m_end;
        m_end.m_pPre = pLast->m_pPre;
        m_nodes.pop_back();
        delete pLast->m_pIndividual;
        delete pLast;
    }

    std::vector<const BareIndividual*> All() const {
        std::vector<const BareIndividual*> all;
        all.reserve(m_nodes.size());
        for (const Node* pNode : m_nodes) {
            all.push_back(pNode->m_pIndividual);
        }
        return all;
    }

private:
    Node m_end{nullptr, &m_end, &m_end};
    std::vector<Node*> m_nodes;
};

/// A population in order: a ring of nodes and a cursor that walks, which is what a derived population must be given, as
/// it may have steps of its own.
class Ring {
public:
    Ring() = default;
    Ring(const Ring&) = delete;
    Ring& operator=(const Ring&) = delete;
    ~Ring() {
        while (m_nLength > 0) {
            DeleteLast();
        }
    }

    long Length() const { return m_nLength; }

    const BareIndividual& At(long i) {
        MoveTo(i);
        return *m_pCur->m_pIndividual;
    }

    void Insert(long i, BareIndividual* p) {
        if (i == m_nLength) {
            m_pCur = &m_end;
        } else {
            MoveTo(i);
        }
        Node* const pNode = new Node{p, m_pCur, m_pCur->m_pPre};
        pNode->m_pPre->m_pNext = pNode;
        m_pCur->m_pPre = pNode;
        m_pCur = pNode;
        m_nCur = i;
        ++m_nLength;
    }

    void DeleteLast() {
        Node* const pLast = m_end.m_pPre;
        pLast->m_pPre->m_pNext = &m_end;
        m_end.m_pPre = pLast->m_pPre;
        m_pCur = m_end.m_pPre;
        m_nCur = --m_nLength - 1;
        delete pLast->m_pIndividual;
        delete pLast;
    }

    std::vector<const BareIndividual*> All() const {
        std::vector<const BareIndividual*> all;
        all.reserve(static_cast<std::size_t>(m_nLength));
        for (const Node* pNode = m_end.m_pNext; pNode != &m_end; pNode = pNode->m_pNext) {
            all.push_back(pNode->m_pIndividual);
        }
        return all;
    }

private:
    void MoveTo(long i) {
        if (i == 0) {
            m_pCur = m_end.m_pNext;
        } else if (i == m_nLength - 1) {
            m_pCur = m_end.m_pPre;
        } else {
            for (; m_nCur < i; ++m_nCur) {
                m_pCur = m_pCur->m_pNext;
            }
            for (; m_nCur > i; --m_nCur) {
                m_pCur = m_pCur->m_pPre;
            }
        }
        m_nCur = i;
    }

    Node m_end{nullptr, &m_end, &m_end};
    Node* m_pCur = &m_end;
    long m_nCur = -1;
    long m_nLength = 0;
};

template <class Order>
class Limit {
public:
    explicit Limit(long n) : m_nPopSize(n) {
        for (long i = 0; i < n; ++i) {
            auto pVector = std::make_unique<BareVector>();
            pVector->SetLength(nGenes);
            for (long iGene = 0; iGene < nGenes; ++iGene) {
                (*pVector)[iGene] = new BareNumberGene(RandomUnit());
            }
            pVector->Initialize();
            Append(pVector.release());
        }
    }

    void Evolve() {
        const std::vector<const BareIndividual*> parents = m_order.All();
        const long n = m_order.Length();
        for (const BareIndividual* pParent : parents) {
            const long r = std::rand();
            const long nFromWorst = static_cast<long>(std::sqrt(static_cast<double>(r % (n * n))));
            Breed(*parents[static_cast<std::size_t>(n - 1 - nFromWorst)], *pParent);
            Breed(*parents[static_cast<std::size_t>(r % n)], *pParent);
        }
        while (m_order.Length() > m_nPopSize) {
            m_order.DeleteLast();
        }
    }

    std::vector<double> Costs() const {
        std::vector<double> costs;
        for (const BareIndividual* p : m_order.All()) {
            costs.push_back(static_cast<const BareVector*>(p)->m_cost);
        }
        return costs;
    }

private:
    void Breed(const BareIndividual& a, const BareIndividual& b) {
        std::unique_ptr<BareIndividual> pChild1(a.New());
        std::unique_ptr<BareIndividual> pChild2(a.New());
        pChild1->SetLength(nGenes);
        pChild2->SetLength(nGenes);
        const long nFirst = std::rand() % nGenes;
        const long nLast = (nFirst + nGenes / 2 - 1) % nGenes;
        for (long i = 0; i < nGenes; ++i) {
            const bool bExchanged = nFirst <= nLast ? nFirst <= i && i <= nLast : i <= nLast || nFirst <= i;
            (*pChild1)[i] = (bExchanged ? b : a)[i]->Clone();
            (*pChild2)[i] = (bExchanged ? a : b)[i]->Clone();
        }
        pChild1->Initialize();
        pChild2->Initialize();
        Append(pChild1.release());
        Append(pChild2.release());
    }

    void Append(BareIndividual* p) { m_order.Insert(PlaceOf(*p), p); }

    long PlaceOf(const BareIndividual& newcomer) {
        const long nLength = m_order.Length();
        if (nLength == 0 || newcomer < m_order.At(0)) {
            return 0;
        }
        if (newcomer > m_order.At(nLength - 1)) {
            return nLength;
        }
        long nLow = 0;
        long nHigh = nLength - 1;
        long nMid = nHigh;
        while (nHigh > nLow) {
            nMid = (nLow + nHigh) / 2;
            const BareIndividual& resident = m_order.At(nMid);
            if (newcomer > resident) {
                nLow = nMid + 1;
            } else if (newcomer < resident) {
                nHigh = nMid - 1;
            } else {
                return nMid;
            }
        }
        if (nHigh != nLow) {
            return nMid;
        }
        const BareIndividual& resident = m_order.At(nLow);
        if (newcomer > resident) {
            return nLow + 1;
        }
        benchmark::DoNotOptimize(newcomer < resident);
        return nLow;
    }

    long m_nPopSize;
    Order m_order;
};

/// What the generations of one iteration come to.
template <class Population>
std::vector<double> Outcome(long n) {
    std::srand(1);
    g_nComparisons = 0;
    Population population(n);
    for (int i = 0; i < nGenerations; ++i) {
        population.Evolve();
    }
    std::vector<double> outcome = population.Costs();
    outcome.push_back(static_cast<double>(g_nComparisons));
    return outcome;
}

/// Stops the program unless the population comes to what the limit comes to; looks once.
template <class Population>
void ExpectTheLimitsOutcome(long n) {
    static std::set<long> seen;
    if (seen.insert(n).second && Outcome<Population>(n) != Outcome<Limit<Row>>(n)) {
        std::fprintf(stderr, "ga: another population than the limit's, or by other comparisons\n");
        std::abort();
    }
}

template <class Population>
void Evolve(benchmark::State& state) {
    const long n = state.range(0);
    ExpectTheLimitsOutcome<Population>(n);
    for (auto _ : state) {
        state.PauseTiming();
        std::srand(1);
        auto pPopulation = std::make_unique<Population>(n);
        state.ResumeTiming();
        for (int i = 0; i < nGenerations; ++i) {
            pPopulation->Evolve();
        }
        state.PauseTiming();
        pPopulation.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * nGenerations * 4 * n);
}
BENCHMARK(Evolve<Ours<GA_Population>>)->Name("evolution/child/ours")->Arg(100)->Arg(1000);
BENCHMARK(Evolve<Ours<Watched>>)->Name("evolution/child/ours, derived population")->Arg(100)->Arg(1000);
BENCHMARK(Evolve<Limit<Row>>)->Name("evolution/child/limit")->Arg(100)->Arg(1000);
BENCHMARK(Evolve<Limit<Ring>>)->Name("evolution/child/limit, derived population")->Arg(100)->Arg(1000);

#if defined(VEXABASE_HAS_PAGMO)

struct Sum {
    pagmo::vector_double fitness(const pagmo::vector_double& x) const {
        return {std::accumulate(x.begin(), x.end(), 0.0)};
    }
    std::pair<pagmo::vector_double, pagmo::vector_double> get_bounds() const {
        return {pagmo::vector_double(nGenes, 0.0), pagmo::vector_double(nGenes, 1.0)};
    }
};

void EvolvePagmo(benchmark::State& state) {
    const auto n = static_cast<pagmo::population::size_type>(state.range(0));
    const pagmo::algorithm algorithm{pagmo::sga(nGenerations)};
    for (auto _ : state) {
        state.PauseTiming();
        auto pPopulation = std::make_unique<pagmo::population>(pagmo::problem(Sum{}), n, 1U);
        state.ResumeTiming();
        *pPopulation = algorithm.evolve(*pPopulation);
        state.PauseTiming();
        pPopulation.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * nGenerations * state.range(0));
}
BENCHMARK(EvolvePagmo)->Name("evolution/child/pagmo::sga")->Arg(100)->Arg(1000);

#endif

}  // namespace
