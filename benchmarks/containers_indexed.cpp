// The indexed lists, kept sorted, beside the sorted sets and maps that one would take instead: inserting,
// looking up, reaching the k-th element. A case's name is job/case/library/size.
//
// All of them own objects on the heap and compare them through the pointer; the map keeps a copy of the key
// beside it. Making an object is part of inserting it; freeing the whole is not timed. In the ascending load
// each key happens to be the greatest so far, but nobody is told.
//
// Ours has the step that a graph's lists have; the variant has the lists' own default.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <list>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "FreeMemory.h"
#include "VexaBase/containers/KyXList.h"

#if defined(VEXABASE_HAS_FLAT_SET)
#include <boost/container/flat_set.hpp>
#endif
#if defined(VEXABASE_HAS_ABSEIL)
#include <absl/container/btree_set.h>
#endif
#if __has_include(<ext/pb_ds/assoc_container.hpp>)
#define VEXABASE_HAS_RANKED_TREE
#include <ext/pb_ds/assoc_container.hpp>
#include <ext/pb_ds/tree_policy.hpp>
#endif

namespace {

struct Item {
    explicit Item(long nKey) : m_nKey(nKey) {}
    int Cmp(const Item& other) const { return m_nKey < other.m_nKey ? -1 : m_nKey > other.m_nKey ? 1 : 0; }

    long m_nKey;
};

using Owned = std::unique_ptr<Item>;

struct ByKey {
    using is_transparent = void;
    bool operator()(const Owned& a, const Owned& b) const { return a->m_nKey < b->m_nKey; }
    bool operator()(const Owned& a, long nKey) const { return a->m_nKey < nKey; }
    bool operator()(long nKey, const Owned& b) const { return nKey < b->m_nKey; }
};

/// What the cases ask of a sorted container; each class below is one.
template <long nStep>
struct Ours {
    void Insert(long nKey) {
        auto pItem = std::make_unique<Item>(nKey);
        if (!m_list.BFindDataTo(*pItem)) {
            m_list.InsertCur(pItem.get());
            static_cast<void>(pItem.release());
        }
    }
    const Item* Find(long nKey) { return m_list.BFindDataTo(Item(nKey)) ? m_list.GetCurData() : nullptr; }
    const Item* Kth(long k) { return *m_list.GetAt(k); }

    KyPXList<Item> m_list{nStep};
};

template <long nStep>
struct OursByMoveTo : Ours<nStep> {
    const Item* Kth(long k) {
        this->m_list.MoveTo(k);
        return this->m_list.GetCurData();
    }
};

template <class Set>
struct PeerSet {
    void Insert(long nKey) { m_set.insert(std::make_unique<Item>(nKey)); }
    const Item* Find(long nKey) const {
        const auto it = m_set.find(nKey);
        return it != m_set.end() ? it->get() : nullptr;
    }

    Set m_set;
};

/// What the lists' rule costs by itself in an ascending load: two comparisons, an object and a node.
struct BareList {
    void Insert(long nKey) {
        auto pItem = std::make_unique<Item>(nKey);
        if (m_list.empty() || (pItem->Cmp(*m_list.front()) >= 0 && pItem->Cmp(*m_list.back()) > 0)) {
            m_list.push_back(std::move(pItem));
        }
    }

    std::list<Owned> m_list;
};

struct Map {
    void Insert(long nKey) { m_map.emplace(nKey, std::make_unique<Item>(nKey)); }
    const Item* Find(long nKey) const {
        const auto it = m_map.find(nKey);
        return it != m_map.end() ? it->second.get() : nullptr;
    }

    std::map<long, Owned> m_map;
};

#if defined(VEXABASE_HAS_RANKED_TREE)
struct RankedTree {
    struct ByItsKey {
        bool operator()(const Item* a, const Item* b) const { return a->m_nKey < b->m_nKey; }
    };

    void Insert(long nKey) {
        m_items.push_back(std::make_unique<Item>(nKey));
        m_tree.insert(m_items.back().get());
    }
    const Item* Kth(long k) const { return *m_tree.find_by_order(static_cast<std::size_t>(k)); }

    std::vector<Owned> m_items;
    __gnu_pbds::tree<Item*, __gnu_pbds::null_type, ByItsKey, __gnu_pbds::rb_tree_tag,
                     __gnu_pbds::tree_order_statistics_node_update>
        m_tree;
};
#endif

/// 0, 2, 4, ... in random order.
std::vector<long> RandomKeys(long nCount, unsigned int nSeed) {
    std::vector<long> keys(static_cast<std::size_t>(nCount));
    std::iota(keys.begin(), keys.end(), 0L);
    std::shuffle(keys.begin(), keys.end(), std::mt19937(nSeed));
    for (long& nKey : keys) {
        nKey *= 2;
    }
    return keys;
}

template <class Container>
void RandomInserts(benchmark::State& state) {
    const std::vector<long> keys = RandomKeys(state.range(0), 1);
    for (auto _ : state) {
        auto pContainer = std::make_unique<Container>();
        for (const long nKey : keys) {
            pContainer->Insert(nKey);
        }
        state.PauseTiming();
        pContainer.reset();
        MergeFreeMemory();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Container>
void AscendingLoad(benchmark::State& state) {
    for (auto _ : state) {
        auto pContainer = std::make_unique<Container>();
        for (long i = 0; i < state.range(0); ++i) {
            pContainer->Insert(2 * i);
        }
        state.PauseTiming();
        pContainer.reset();
        MergeFreeMemory();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// A container with the keys inserted at random.
template <class Container>
std::unique_ptr<Container> Filled(long nCount) {
    auto pContainer = std::make_unique<Container>();
    for (const long nKey : RandomKeys(nCount, 1)) {
        pContainer->Insert(nKey);
    }
    return pContainer;
}

template <class Container>
void LookUps(benchmark::State& state) {
    const auto pContainer = Filled<Container>(state.range(0));
    const std::vector<long> keys = RandomKeys(state.range(0), 2);
    for (auto _ : state) {
        for (const long nKey : keys) {
            benchmark::DoNotOptimize(pContainer->Find(nKey));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class Container>
void Kths(benchmark::State& state) {
    const auto pContainer = Filled<Container>(state.range(0));
    const std::vector<long> keys = RandomKeys(state.range(0), 3);
    for (auto _ : state) {
        for (const long nKey : keys) {
            benchmark::DoNotOptimize(pContainer->Kth(nKey / 2));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Register(const char* pszCase, const std::string& sLibrary, void (*pfnCase)(benchmark::State&)) {
    const std::string sName = std::string("indexed sorted list/") + pszCase + "/" + sLibrary;
    benchmark::RegisterBenchmark(sName.c_str(), pfnCase)->Arg(1'000)->Arg(10'000)->Arg(100'000);
}

/// Stops unless a container finds the keys that are there, and no others.
template <class Container>
void CheckFinds(const std::string& sLibrary) {
    constexpr long nCount = 5'000;
    const auto pContainer = Filled<Container>(nCount);
    for (long nKey = -1; nKey <= 2 * nCount; ++nKey) {
        const Item* const pItem = pContainer->Find(nKey);
        const bool bIsThere = nKey % 2 == 0 && nKey >= 0 && nKey < 2 * nCount;
        if (bIsThere ? pItem == nullptr || pItem->m_nKey != nKey : pItem != nullptr) {
            std::fprintf(stderr, "%s: wrong answer for %ld\n", sLibrary.c_str(), nKey);
            std::abort();
        }
    }
}

template <class Container>
void CheckKths(const std::string& sLibrary) {
    constexpr long nCount = 5'000;
    const auto pContainer = Filled<Container>(nCount);
    for (long k = 0; k < nCount; ++k) {
        if (pContainer->Kth(k)->m_nKey != 2 * k) {
            std::fprintf(stderr, "%s: wrong element %ld\n", sLibrary.c_str(), k);
            std::abort();
        }
    }
}

template <class Container>
void RegisterSorted(const std::string& sLibrary) {
    CheckFinds<Container>(sLibrary);
    Register("random inserts", sLibrary, RandomInserts<Container>);
    Register("ascending load", sLibrary, AscendingLoad<Container>);
    Register("look-ups", sLibrary, LookUps<Container>);
}

template <long nStep>
void RegisterOurs(const std::string& sLibrary) {
    CheckKths<Ours<nStep>>("ours");
    CheckKths<OursByMoveTo<nStep>>("ours, MoveTo");
    RegisterSorted<Ours<nStep>>(sLibrary);
    Register("k-th element", sLibrary, Kths<Ours<nStep>>);
    Register("k-th element", sLibrary + ", MoveTo", Kths<OursByMoveTo<nStep>>);
}

const bool bRegistered = [] {
    RegisterOurs<4096>("ours");
    RegisterOurs<64>("ours, step 64");
    Register("ascending load", "limit", AscendingLoad<BareList>);
#if defined(VEXABASE_HAS_ABSEIL)
    RegisterSorted<PeerSet<absl::btree_set<Owned, ByKey>>>("absl::btree_set");
#endif
#if defined(VEXABASE_HAS_FLAT_SET)
    using FlatSet = PeerSet<boost::container::flat_set<Owned, ByKey>>;
    CheckFinds<FlatSet>("boost::flat_set");
    Register("look-ups", "boost::flat_set", LookUps<FlatSet>);
#endif
    CheckFinds<Map>("std::map");
    Register("look-ups", "std::map", LookUps<Map>);
#if defined(VEXABASE_HAS_RANKED_TREE)
    CheckKths<RankedTree>("__gnu_pbds::tree");
    Register("k-th element", "__gnu_pbds::tree", Kths<RankedTree>);
#endif
    return true;
}();

}  // namespace
