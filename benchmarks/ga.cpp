// The time of a child bred, with a fitness that costs next to nothing: what the framework itself takes.
// Beside it a simple genetic algorithm over vectors of structs, with the same numbers of children, mutants
// and survivors, and pagmo's. A case's name is job/case/library; its argument the population. The figure to
// compare is the time per child.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <numeric>
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

constexpr int nGenes = 16;

double RandomUnit() { return std::rand() / (RAND_MAX + 1.0); }

class NumberGene : public GA_Gene {
public:
    explicit NumberGene(double value) : m_value(value) {}
    GA_Gene* Clone() const override { return new NumberGene(*this); }

    double m_value;
};

class Vector : public GA_Individual {
public:
    static std::unique_ptr<Vector> Random() {
        auto pVector = std::make_unique<Vector>();
        for (int i = 0; i < nGenes; ++i) {
            pVector->KyDynPArray<GA_Gene>::Append(new NumberGene(RandomUnit()));
        }
        pVector->Initialize();
        return pVector;
    }

    GA_Individual* New() const override { return new Vector; }
    void Initialize() override {
        m_cost = 0;
        for (const GA_Gene* pGene : *this) {
            m_cost += static_cast<const NumberGene*>(pGene)->m_value;
        }
    }
    bool operator<(const GA_Individual& other) const override {
        return m_cost < static_cast<const Vector&>(other).m_cost;
    }
    bool operator>(const GA_Individual& other) const override {
        return m_cost > static_cast<const Vector&>(other).m_cost;
    }

    double m_cost = 0;
};

void SetChildren(benchmark::State& state, long nPerGeneration) {
    state.counters["per child"] =
        benchmark::Counter(static_cast<double>(nPerGeneration),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void EvolveOurs(benchmark::State& state) {
    std::srand(1);
    const long n = state.range(0);
    GA_Population population(n, 0);
    for (long i = 0; i < n; ++i) {
        population.Append(Vector::Random().release());
    }
    for (auto _ : state) {
        population.Evolve();
    }
    SetChildren(state, 4 * n);
}
BENCHMARK(EvolveOurs)->Name("evolution/generation/ours")->Arg(100)->Arg(1000);

struct Individual {
    std::vector<double> genes;
    double cost;
};

Individual Bred(const Individual& a, const Individual& b, int nFirst, int nLast) {
    Individual child = a;
    for (int i = nFirst; i != nLast; i = (i + 1) % nGenes) {
        child.genes[static_cast<std::size_t>(i)] = b.genes[static_cast<std::size_t>(i)];
    }
    child.cost = std::accumulate(child.genes.begin(), child.genes.end(), 0.0);
    return child;
}

void EvolveStructs(benchmark::State& state) {
    std::srand(1);
    const std::size_t n = static_cast<std::size_t>(state.range(0));
    const auto fitter = [](const Individual& a, const Individual& b) { return a.cost < b.cost; };
    std::vector<Individual> population(n);
    for (Individual& individual : population) {
        individual.genes.resize(nGenes);
        std::generate(individual.genes.begin(), individual.genes.end(), RandomUnit);
        individual.cost = std::accumulate(individual.genes.begin(), individual.genes.end(), 0.0);
    }
    for (auto _ : state) {
        std::vector<Individual> all = population;
        for (std::size_t i = 0; i < n; ++i) {
            for (int nPartner = 0; nPartner < 2; ++nPartner) {
                const double draw = RandomUnit() * static_cast<double>(n);
                const std::size_t nMate = nPartner == 0
                                              ? static_cast<std::size_t>(draw * draw / static_cast<double>(n))
                                              : static_cast<std::size_t>(draw);
                const int nFirst = std::rand() % nGenes;
                const int nLast = (nFirst + nGenes / 2) % nGenes;
                all.push_back(Bred(population[nMate], population[i], nFirst, nLast));
                all.push_back(Bred(population[i], population[nMate], nFirst, nLast));
            }
        }
        std::sort(all.begin(), all.end(), fitter);
        all.resize(n);
        population = std::move(all);
    }
    SetChildren(state, 4 * state.range(0));
}
BENCHMARK(EvolveStructs)->Name("evolution/generation/vectors of structs")->Arg(100)->Arg(1000);

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
    pagmo::population population(pagmo::problem(Sum{}), n, 1U);
    const pagmo::algorithm algorithm(pagmo::sga(1U));
    for (auto _ : state) {
        population = algorithm.evolve(population);
    }
    SetChildren(state, state.range(0));
}
BENCHMARK(EvolvePagmo)->Name("evolution/generation/pagmo::sga")->Arg(100)->Arg(1000);

#endif

}  // namespace
