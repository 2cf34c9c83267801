// A population that is exactly a GA_Population is left to jump to its elements while it evolves; one of a derived class
// is taken through the list's own operations step by step. Whatever an application can see is the same.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "AllocationLog.h"
#include "GA_TestKit.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

using List = KyPDList<GA_Individual>;

class DerivedPopulation : public GA_Population {
public:
    using GA_Population::GA_Population;
};

/// What a run starts from, and what its hooks do to the population.
struct Scene {
    std::vector<long> ancestors;  // their values
    long nPopSize = 0;
    long nMutationRate = 0;
    int nGenerations = 1;
    std::vector<int> draws;
    std::vector<int> edits = {0};  // one a hook, over and over; see Meddle
    long nFailingAllocation = 0;   // of the first generation, none with 0
};

/// What an application saw of a run: each hook with the individuals concerned and the cursor, then the population.
struct Account {
    using Event = std::tuple<char, long, long, long, long>;

    std::vector<Event> events;
    std::vector<long> forth;  // the individuals from the head on
    std::vector<long> back;   // and from the tail on
    std::vector<long> figures;

    friend bool operator==(const Account& a, const Account& b) {
        return a.events == b.events && a.forth == b.forth && a.back == b.back && a.figures == b.figures;
    }
};

class Value : public GA_Gene {
public:
    explicit Value(long n) : m_n(n) {}
    GA_Gene* Clone() const override { return new Value(m_n); }

    long m_n;
};

class Witness;

/// The run that is on, for the individuals to write to and meddle with.
struct Run {
    Run(const Scene& theScene, GA_Population& thePopulation) : scene(theScene), population(thePopulation) {
        account.events.reserve(1 << 18);
        removed.reserve(1 << 14);
    }

    void Note(char cWhat, long a, long b = 0);
    void Meddle(bool bComparing);
    void TakeOut(long i);

    const Scene& scene;
    GA_Population& population;
    Account account;
    std::vector<std::unique_ptr<GA_Individual>> removed;
    std::size_t nHooks = 0;
    long nIndividuals = 0;
    bool bMeddling = false;
};

Run* g_pRun = nullptr;

/// An individual with a number that tells of each hook and then meddles.
class Witness : public GA_Individual {
public:
    Witness() : m_nId(g_pRun->nIndividuals++) {}
    ~Witness() override { g_pRun->Note('~', m_nId); }

    static std::unique_ptr<Witness> Of(long nValue) {
        auto pWitness = std::make_unique<Witness>();
        for (const long n : {nValue % 7, nValue % 5, nValue}) {
            auto pGene = std::make_unique<Value>(n);
            pWitness->KyDynPArray<GA_Gene>::Append(pGene.get());
            static_cast<void>(pGene.release());
        }
        pWitness->Weigh();
        return pWitness;
    }

    GA_Individual* New() const override {
        auto pNew = std::make_unique<Witness>();
        g_pRun->Note('N', m_nId, pNew->m_nId);
        return pNew.release();
    }
    void Initialize() override {
        Weigh();
        g_pRun->Note('I', m_nId, m_nValue);
        g_pRun->Meddle(false);
    }
    GA_Individual* Mutation() const override {
        g_pRun->Note('M', m_nId);
        g_pRun->Meddle(false);
        return m_nValue % 3 == 0 ? nullptr : Of(m_nValue * 31 % 101).release();
    }
    bool operator<(const GA_Individual& other) const override {
        const auto& witness = static_cast<const Witness&>(other);
        g_pRun->Note('<', m_nId, witness.m_nId);
        g_pRun->Meddle(true);
        return m_nValue < witness.m_nValue;
    }
    bool operator>(const GA_Individual& other) const override {
        const auto& witness = static_cast<const Witness&>(other);
        g_pRun->Note('>', m_nId, witness.m_nId);
        g_pRun->Meddle(true);
        return m_nValue > witness.m_nValue;
    }

    long m_nId;

private:
    void Weigh() {
        m_nValue = 0;
        for (const GA_Gene* p : *this) {
            m_nValue += static_cast<const Value*>(p)->m_n;
        }
    }

    long m_nValue = 0;
};

long IdOf(const GA_Individual* p) { return p == nullptr ? -1 : static_cast<const Witness*>(p)->m_nId; }

void Run::Note(char cWhat, long a, long b) {
    // An individual that is on its way out may stand in its element still.
    const long nCurrent = cWhat == '~' ? -2 : IdOf(population.m_pCurNode->m_data);
    account.events.emplace_back(cWhat, a, b, population.m_nCurIndex, nCurrent);
}

/// Takes an individual out of the population alive.
void Run::TakeOut(long i) {
    population.MoveTo(i);
    removed.emplace_back(population.GetCurData());
    population.SetCurData(nullptr);
    population.DelCur();
}

/// Does to the population what the scene has for this hook. While a search is on, nothing is removed and the cursor is
/// left where it may go on from.
void Run::Meddle(bool bComparing) {
    if (bMeddling) {
        return;
    }
    const int nEdit = scene.edits[nHooks++ % scene.edits.size()];
    const long n = population.m_nLength;
    const long i = n == 0 ? 0 : static_cast<long>(nHooks) * 7 % n;
    const long j = n == 0 ? 0 : static_cast<long>(nHooks) * 5 % n;
    List& list = population;
    List other;
    bMeddling = true;
    try {
        if (nEdit == 1) {
            list.ReverseList();
            list.MoveToFirst();
        } else if (nEdit == 2 && n > 0) {
            list.Rotate(i, j);
        } else if (nEdit == 3 && n > 0) {
            list.Move(i, j);
        } else if (nEdit == 4 && n > 0) {
            list.MoveTo(i);
        } else if (nEdit == 5) {
            auto p = Witness::Of(i);
            list.Append(p.get());
            static_cast<void>(p.release());
        } else if (nEdit == 6) {
            auto p = Witness::Of(j);
            list.InsertHead(p.get());
            static_cast<void>(p.release());
        } else if (nEdit == 7) {
            population.Append(Witness::Of(i + j).release());
        } else if (nEdit == 8 && n > 0) {
            std::swap(*list.GetAt(i), *list.GetAt(j));
        } else if (nEdit == 9 && n > 2 && !bComparing) {
            TakeOut(i);
        } else if (nEdit == 10 && n > 2 && !bComparing) {
            list.Conbine(other, 0);
            other.Conbine(list, i);
            other.InsertHead(Witness::Of(j).release());
            list.Conbine(other, 0);
        } else if (nEdit == 11 && n > 2 && !bComparing) {
            while (list.m_nLength > 2) {
                TakeOut(list.m_nLength - 1);
            }
            for (GA_Individual*& p : list) {
                removed.emplace_back(std::exchange(p, nullptr));
            }
            list.Reset();
            list.Append(Witness::Of(i).release());
            list.Append(Witness::Of(j).release());
        } else if (nEdit == 12 && !bComparing) {
            list.Sort(i % 2 == 0);
        }
    } catch (...) {
        bMeddling = false;
        throw;
    }
    bMeddling = false;
}

template <class Population>
Account AccountOf(const Scene& scene) {
    Journal::Clear();
    ScriptedRand::Set(scene.draws);
    auto pPopulation = std::make_unique<Population>(scene.nPopSize, scene.nMutationRate);
    GA_Population& population = *pPopulation;
    Run run(scene, population);
    g_pRun = &run;
    run.bMeddling = true;
    for (const long n : scene.ancestors) {
        static_cast<List&>(population).Append(Witness::Of(n).release());
    }
    population.Sort(true);
    run.bMeddling = false;

    long nFailures = 0;
    std::optional<FailingAllocation> failing;
    if (scene.nFailingAllocation > 0) {
        failing.emplace(scene.nFailingAllocation - 1);
    }
    for (int i = 0; i < scene.nGenerations; ++i) {
        try {
            population.Evolve();
        } catch (const std::bad_alloc&) {
            ++nFailures;
            run.bMeddling = false;
        }
        failing.reset();
    }

    Account& account = run.account;
    for (const GA_Individual* p : population) {
        account.forth.push_back(IdOf(p));
    }
    for (auto it = population.end(); it != population.begin();) {
        account.back.push_back(IdOf(*--it));
    }
    account.figures = {population.m_nLength,     population.m_nCurIndex, IdOf(population.m_pCurNode->m_data),
                       population.m_nGeneration, ScriptedRand::Drawn(),  nFailures};
    // The last of the individuals write too.
    population.Reset();
    run.removed.clear();
    g_pRun = nullptr;
    return std::move(account);
}

std::vector<int> Draws(std::size_t n, unsigned nSeed) {
    std::mt19937 engine(nSeed);
    std::vector<int> draws(n);
    for (int& draw : draws) {
        draw = static_cast<int>(engine() >> 1);
    }
    return draws;
}

rc::Gen<Scene> Scenes(const rc::Gen<int>& edit) {
    return rc::gen::build<Scene>(
        rc::gen::set(&Scene::ancestors, rc::gen::container<std::vector<long>>(rc::gen::inRange(0L, 60L))),
        rc::gen::set(&Scene::nPopSize, rc::gen::inRange(1L, 20L)),
        rc::gen::set(&Scene::nMutationRate, rc::gen::inRange(0L, 150L)),
        rc::gen::set(&Scene::nGenerations, rc::gen::just(3)),
        rc::gen::set(&Scene::draws, rc::gen::map(rc::gen::arbitrary<unsigned>(),
                                                 [](unsigned nSeed) { return Draws(20000, nSeed); })),
        rc::gen::set(&Scene::edits, rc::gen::nonEmpty(rc::gen::container<std::vector<int>>(edit))));
}

RC_GTEST_PROP(PlainPopulationProperty, EvolvesAsADerivedOne, ()) {
    Scene scene = *Scenes(rc::gen::just(0));
    scene.ancestors.push_back(3);

    RC_ASSERT(AccountOf<GA_Population>(scene) == AccountOf<DerivedPopulation>(scene));
}

RC_GTEST_PROP(PlainPopulationProperty, EvolvesAsADerivedOneUnderHooksThatChangeIt, ()) {
    Scene scene = *Scenes(rc::gen::weightedOneOf<int>({{9, rc::gen::just(0)}, {1, rc::gen::inRange(1, 13)}}));
    scene.ancestors.insert(scene.ancestors.end(), {3, 1, 2});
    scene.nPopSize += 2;

    RC_ASSERT(AccountOf<GA_Population>(scene) == AccountOf<DerivedPopulation>(scene));
}

RC_GTEST_PROP(PlainPopulationProperty, FailsAsADerivedOne, ()) {
    Scene scene = *Scenes(rc::gen::just(0));
    scene.ancestors.push_back(3);
    scene.nFailingAllocation = *rc::gen::inRange(1L, 200L);

    RC_ASSERT(AccountOf<GA_Population>(scene) == AccountOf<DerivedPopulation>(scene));
}

TEST(PlainPopulation, EvolvesAsADerivedOneOnceItIsLarge) {
    Scene scene;
    for (long i = 0; i < 2200; ++i) {
        scene.ancestors.push_back(i * 7919 % 100003);
    }
    scene.nPopSize = 9000;
    scene.nMutationRate = 1;
    scene.draws = Draws(7000, 1);

    EXPECT_TRUE(AccountOf<GA_Population>(scene) == AccountOf<DerivedPopulation>(scene));
}

/// A number that, the second time any is asked for a mutant, runs another generation with one mutant.
class Nesting : public GA_Individual {
public:
    struct Gene : GA_Gene {
        GA_Gene* Clone() const override { return new Gene; }
    };

    Nesting(GA_Population& population, int& nAsked, int nKey)
        : m_population(population), m_nAsked(nAsked), m_nKey(nKey) {
        Append(new Gene);
    }

    GA_Individual* New() const override { return new Nesting(m_population, m_nAsked, m_nKey); }

    GA_Individual* Mutation() const override {
        auto pMutant = std::make_unique<Nesting>(m_population, m_nAsked, m_nKey);
        if (++m_nAsked == 2) {
            m_population.m_nMutationRate = 10;
            m_population.Evolve();
        }
        return pMutant.release();
    }

    bool operator<(const GA_Individual& other) const override {
        return m_nKey < dynamic_cast<const Nesting&>(other).m_nKey;
    }
    bool operator>(const GA_Individual& other) const override { return other < *this; }

private:
    GA_Population& m_population;
    int& m_nAsked;
    int m_nKey;
};

TEST(GA_PlainPopulation, StaysWholeWhenAMutationRunsAGenerationThatLeavesTheLengthAsItWas) {
    ScriptedRand::Set(Draws(1000, 1));
    GA_Population population(10, 20);
    int nAsked = 0;
    for (int i = 0; i < 10; ++i) {
        population.Append(new Nesting(population, nAsked, i));
    }

    population.Evolve();

    EXPECT_EQ(population.m_nGeneration, 2);
    EXPECT_EQ(population.m_nLength, 12);
    EXPECT_EQ(std::distance(population.begin(), population.end()), 12);
    EXPECT_TRUE(std::is_sorted(population.begin(), population.end(),
                               [](const GA_Individual* p, const GA_Individual* q) { return *p < *q; }));
}

/// A number, the smaller the fitter, that has no children and the mutants that the test gives it.
class Number : public GA_Individual {
public:
    using Mutate = std::function<GA_Individual*()>;

    Number(long nKey, const Mutate& mutate) : m_nKey(nKey), m_mutate(mutate) {}

    GA_Individual* New() const override { return new Number(m_nKey, m_mutate); }
    int Multiply(const GA_Individual&, GA_Population&) const override { return 0; }
    GA_Individual* Mutation() const override { return m_mutate(); }
    bool operator<(const GA_Individual& other) const override { return m_nKey < KeyOf(other); }
    bool operator>(const GA_Individual& other) const override { return m_nKey > KeyOf(other); }

    static long KeyOf(const GA_Individual& individual) {
        return static_cast<const Number&>(individual).m_nKey;
    }

private:
    long m_nKey;
    const Mutate& m_mutate;
};

std::vector<long> KeysOf(const GA_Population& population) {
    std::vector<long> keys;
    for (const GA_Individual* p : population) {
        keys.push_back(Number::KeyOf(*p));
    }
    return keys;
}

TEST(GA_PlainPopulation, OnceItIsLargeStaysInOrderWhereverItsMutantsGo) {
    constexpr long nLength = 9000;
    ScriptedRand::Set(Draws(nLength + 90, 1));
    GA_Population population(nLength, 1);
    std::vector<long> expected;
    Number::Mutate mutate;
    for (long i = 0; i < nLength; ++i) {
        expected.push_back(2 * i);
        static_cast<List&>(population).Append(new Number(2 * i, mutate));
    }
    // Every other one is the worst of all so far, the others go between two.
    mutate = [&] {
        const auto n = static_cast<long>(expected.size()) - nLength;
        expected.push_back(n % 2 == 0 ? 2 * nLength + n : 199 * n);
        return new Number(expected.back(), mutate);
    };

    population.Evolve();

    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(population.m_nLength, nLength + 90);
    EXPECT_EQ(KeysOf(population), expected);
}

TEST(GA_PlainPopulation, OnceItIsLargeStaysInOrderWhenItDoublesWithinAGeneration) {
    constexpr long nLength = 8192;
    ScriptedRand::Set(std::vector<int>(nLength + 10000, 0));
    GA_Population population(nLength, 120);
    std::vector<long> expected;
    std::vector<long> mutants;
    Number::Mutate mutate;
    for (long i = 0; i < nLength; ++i) {
        expected.push_back(100 * i);
        static_cast<List&>(population).Append(new Number(100 * i, mutate));
    }
    const auto crowdTogether = [&](long nFrom, long nMutants) {
        for (long i = 0; i < nMutants; ++i) {
            mutants.push_back(nFrom + i);
        }
    };
    // One more than as many again into the middle of every sixteen, the last ones after one of the runs has doubled
    // once more; then more of that run, and of the first sixteen and the last.
    for (long i = 0; i < nLength - 16; i += 16) {
        crowdTogether(100 * (i + 8) + 1, 17);
    }
    crowdTogether(100 * 8 + 18, 15);
    crowdTogether(100 * (nLength - 8) + 1, 17);
    crowdTogether(100 * 8 + 33, 40);
    crowdTogether(-40, 40);
    crowdTogether(100 * nLength, 40);
    expected.insert(expected.end(), mutants.begin(), mutants.end());
    std::sort(expected.begin(), expected.end());
    auto itMutant = mutants.begin();
    mutate = [&]() -> GA_Individual* {
        return itMutant == mutants.end() ? nullptr : new Number(*itMutant++, mutate);
    };

    population.Evolve();

    EXPECT_EQ(population.m_nLength, static_cast<long>(expected.size()));
    EXPECT_EQ(KeysOf(population), expected);
}

TEST(GA_PlainPopulation, OnceItIsLargeStaysInOrderWhenItsBestAreTakenOutMeanwhile) {
    for (const long nLength : {8703L, 17000L}) {
        constexpr long nLeft = 8192;
        ScriptedRand::Set(std::vector<int>(static_cast<std::size_t>(2 * nLength), 8700));
        GA_Population population(nLength, 1);
        std::vector<long> expected;
        Number::Mutate mutate;
        for (long i = 0; i < nLength; ++i) {
            expected.push_back(2 * i);
            static_cast<List&>(population).Append(new Number(2 * i, mutate));
        }
        // The first joins the whole population. When the second is made, only the worst are left; it stands before the
        // last of them, and all others stand behind.
        std::vector<long> mutants = {2 * nLength, 2 * nLength - 3};
        for (long i = 1; i < 60; ++i) {
            mutants.push_back(2 * nLength + i);
        }
        expected.insert(expected.end(), mutants.begin(), mutants.end());
        std::sort(expected.begin(), expected.end());
        expected.erase(expected.begin(), expected.end() - nLeft - 60);
        auto itMutant = mutants.begin();
        mutate = [&]() -> GA_Individual* {
            if (itMutant == mutants.begin() + 1) {
                while (population.m_nLength > nLeft) {
                    population.MoveToFirst();
                    population.DelCur();
                }
            }
            return itMutant == mutants.end() ? nullptr : new Number(*itMutant++, mutate);
        };

        population.Evolve();

        EXPECT_EQ(KeysOf(population), expected);
    }
}

TEST(GA_PlainPopulation, OnceItWasLargerStaysInOrderWhenMutantsJoinAtEitherEnd) {
    constexpr long nLength = 17000;
    constexpr long nLeft = 8192;
    ScriptedRand::Set(std::vector<int>(nLength + 170, nLength - 100));
    GA_Population population(nLength, 1);
    std::vector<long> expected;
    Number::Mutate mutate;
    for (long i = 0; i < nLength; ++i) {
        expected.push_back(i);
        static_cast<List&>(population).Append(new Number(i, mutate));
    }
    // The first joins the whole population, the next ones what is left of it: some at the end, some at the head, and then
    // at the end again.
    std::vector<long> mutants = {nLength};
    for (long i = 1; i < 170; ++i) {
        mutants.push_back(i >= 12 && i < 20 ? -i : nLength + i);
    }
    auto itMutant = mutants.begin();
    mutate = [&]() -> GA_Individual* {
        if (itMutant == mutants.begin() + 1) {
            while (population.m_nLength > nLeft) {
                population.MoveToFirst();
                population.DelCur();
            }
        }
        return itMutant == mutants.end() ? nullptr : new Number(*itMutant++, mutate);
    };
    // The first mutant is one of those that are left.
    expected.erase(expected.begin(), expected.end() - (nLeft - 1));
    expected.insert(expected.end(), mutants.begin(), mutants.end());
    std::sort(expected.begin(), expected.end());

    population.Evolve();

    EXPECT_EQ(KeysOf(population), expected);
}

TEST(GA_PlainPopulation, StaysInOrderWhenItGrowsLargeAtItsEndAndOftenLosesItsBest) {
    constexpr long nLength = 8190;
    ScriptedRand::Set(std::vector<int>(nLength + 81, nLength / 2));
    GA_Population population(nLength, 1);
    std::deque<long> expected;
    Number::Mutate mutate;
    for (long i = 0; i < nLength; ++i) {
        expected.push_back(i);
        static_cast<List&>(population).Append(new Number(i, mutate));
    }
    mutate = [&] {
        if (population.m_nLength > 8192) {
            population.MoveToFirst();
            population.DelCur();
            expected.pop_front();
        }
        expected.push_back(expected.back() + 1);
        return new Number(expected.back(), mutate);
    };

    population.Evolve();

    EXPECT_EQ(population.m_nLength, 8193);
    EXPECT_THAT(KeysOf(population), ElementsAreArray(expected));
}

/// How a hook replaces nodes of a population, the keys and their order staying.
struct Replacement {
    const char* strName;
    std::function<void(List&, const Number::Mutate&)> replace;
};

std::ostream& operator<<(std::ostream& stream, const Replacement& replacement) {
    return stream << replacement.strName;
}

/// Removes an element and inserts a new individual of the same key behind the one before.
void Replace(List& list, long i, const Number::Mutate& mutate) {
    list.MoveTo(i);
    const long nKey = Number::KeyOf(*list.GetCurData());
    list.DelCur();
    list.InsertAfterCur(new Number(nKey, mutate));
}

std::vector<long> TakeAll(List& list) {
    std::vector<long> keys;
    for (const GA_Individual* p : list) {
        keys.push_back(Number::KeyOf(*p));
    }
    list.Reset();
    return keys;
}

class PopulationWithNewNodes : public testing::TestWithParam<Replacement> {};

TEST_P(PopulationWithNewNodes, TakesTheNextMutantsWhereTheyBelong) {
    ScriptedRand::Set(std::vector<int>(40, 5));
    GA_Population population(20, 100);
    std::vector<long> expected;
    Number::Mutate mutate;
    for (long i = 0; i < 20; ++i) {
        expected.push_back(10 * i);
        population.Append(new Number(10 * i, mutate));
    }
    std::vector<std::unique_ptr<GA_Individual>> asked;
    long nMutants = 0;
    mutate = [&] {
        if (nMutants % 2 == 1) {
            // The individual that is asked stays alive, and one like it stands in for it.
            asked.emplace_back(population.GetCurData());
            population.SetCurData(new Number(Number::KeyOf(*asked.back()), mutate));
            GetParam().replace(population, mutate);
        }
        expected.push_back(nMutants * 77 % 200 + 1);
        ++nMutants;
        return new Number(expected.back(), mutate);
    };

    population.Evolve();

    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(KeysOf(population), expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, PopulationWithNewNodes,
                         testing::Values(Replacement{"each removed and inserted anew",
                                                     [](List& list, const Number::Mutate& mutate) {
                                                         for (long i = 0; i < list.m_nLength; ++i) {
                                                             Replace(list, i, mutate);
                                                         }
                                                     }},
                                         Replacement{"cut off and joined again",
                                                     [](List& list, const Number::Mutate& mutate) {
                                                         List other;
                                                         other.Conbine(list, 0);
                                                         for (long i = 0; i < other.m_nLength; ++i) {
                                                             Replace(other, i, mutate);
                                                         }
                                                         list.Conbine(other, 0);
                                                     }},
                                         Replacement{"emptied and filled again",
                                                     [](List& list, const Number::Mutate& mutate) {
                                                         for (const long nKey : TakeAll(list)) {
                                                             list.Append(new Number(nKey, mutate));
                                                         }
                                                     }},
                                         Replacement{"emptied and joined by others",
                                                     [](List& list, const Number::Mutate& mutate) {
                                                         List other;
                                                         for (const long nKey : TakeAll(list)) {
                                                             other.Append(new Number(nKey, mutate));
                                                         }
                                                         list.Conbine(other, 0);
                                                     }},
                                         Replacement{"the last ones removed and joined anew",
                                                     [](List& list, const Number::Mutate& mutate) {
                                                         List other;
                                                         while (list.m_nLength > 1) {
                                                             list.MoveToLast();
                                                             other.InsertHead(new Number(
                                                                 Number::KeyOf(*list.GetCurData()), mutate));
                                                             list.DelCur();
                                                         }
                                                         list.Conbine(other, 0);
                                                     }}),
                         [](const testing::TestParamInfo<Replacement>& row) {
                             std::string strName = row.param.strName;
                             std::replace(strName.begin(), strName.end(), ' ', '_');
                             return strName;
                         });

/// A number that has the best of its population removed when it is first asked whether it is worse.
class Displacing : public Number {
public:
    Displacing(GA_Population& population, long nKey, const Mutate& mutate)
        : Number(nKey, mutate), m_pPopulation(&population) {}

    bool operator>(const GA_Individual& other) const override {
        if (GA_Population* const pPopulation = std::exchange(m_pPopulation, nullptr)) {
            pPopulation->MoveToFirst();
            pPopulation->DelCur();
            pPopulation->MoveToLast();
        }
        return Number::operator>(other);
    }

private:
    mutable GA_Population* m_pPopulation;
};

TEST(GA_PlainPopulation, StaysInOrderWhenMutantsHaveTheBestRemovedWhileTheirPlaceIsSought) {
    ScriptedRand::Set(std::vector<int>(40, 5));
    GA_Population population(20, 100);
    std::vector<long> expected;
    Number::Mutate mutate;
    for (long i = 0; i < 20; ++i) {
        expected.push_back(10 * i);
        population.Append(new Number(10 * i, mutate));
    }
    // Four of five are the worst so far and have the best removed, the fifth goes before the last of them.
    long nWorst = 190;
    long nMutants = 0;
    mutate = [&]() -> GA_Individual* {
        if (++nMutants % 5 == 0) {
            expected.push_back(nWorst - 5);
            return new Number(nWorst - 5, mutate);
        }
        nWorst += 10;
        expected.push_back(nWorst);
        return new Displacing(population, nWorst, mutate);
    };

    population.Evolve();

    std::sort(expected.begin(), expected.end());
    expected.erase(expected.begin(), expected.begin() + 16);
    EXPECT_EQ(KeysOf(population), expected);
}

TEST(GA_PlainPopulation, AnotherPopulationIsKeptInOrderMeanwhile) {
    ScriptedRand::Set(Draws(100, 1));
    GA_Population population(10, 50);
    GA_Population other;
    long nMutants = 0;
    const Number::Mutate mutate = [&] {
        other.Append(new Number(++nMutants * 3 % 5, mutate));
        return new Number(nMutants * 20, mutate);
    };
    for (long i = 0; i < 10; ++i) {
        population.Append(new Number(i * 10 + 5, mutate));
    }

    population.Evolve();

    EXPECT_THAT(KeysOf(other), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(KeysOf(population), ElementsAre(5, 15, 20, 25, 35, 40, 45, 55, 60, 65, 75, 80, 85, 95, 100));
}

TEST(GA_PlainPopulation, TwoOthersOfOneLengthAreKeptApartMeanwhile) {
    ScriptedRand::Set(Draws(100, 1));
    GA_Population population(10, 60);
    GA_Population left;
    GA_Population right;
    long nMutants = 0;
    const Number::Mutate mutate = [&] {
        const long n = ++nMutants * 3 % 7;
        left.Append(new Number(n, mutate));
        right.Append(new Number(10 - n, mutate));
        return nullptr;
    };
    for (long i = 0; i < 10; ++i) {
        population.Append(new Number(i, mutate));
    }

    population.Evolve();

    EXPECT_THAT(KeysOf(left), ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_THAT(KeysOf(right), ElementsAre(4, 5, 6, 7, 8, 9));
    EXPECT_THAT(KeysOf(population), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9));
}

TEST(GA_PlainPopulation, AMutantIsTheOnlyOneWhereItsMakingEmptiedThePopulation) {
    ScriptedRand::Set(Draws(100, 1));
    GA_Population population(10, 20);
    std::vector<std::unique_ptr<GA_Individual>> removed;
    long nMutants = 0;
    const Number::Mutate mutate = [&] {
        for (GA_Individual*& p : population) {
            removed.emplace_back(std::exchange(p, nullptr));
        }
        population.Reset();
        return new Number(++nMutants, mutate);
    };
    for (long i = 0; i < 10; ++i) {
        population.Append(new Number(i, mutate));
    }

    population.Evolve();

    EXPECT_EQ(removed.size(), 11U);
    EXPECT_THAT(KeysOf(population), ElementsAre(2));
    EXPECT_EQ(population.m_nCurIndex, 0);
}

}  // namespace
