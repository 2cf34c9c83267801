// Arrays and lists beside the standard library's: appending, walking, editing in the middle, sorting. Every
// pair does the same work on the same data; a case's name is job/case/library.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <forward_list>
#include <list>
#include <numeric>
#include <random>
#include <vector>

#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyList.h"

namespace {

constexpr long nMany = 100'000;

std::vector<long> RandomNumbers(long n) {
    std::mt19937 engine(1);
    std::vector<long> numbers(static_cast<std::size_t>(n));
    for (long& number : numbers) {
        number = static_cast<long>(engine() % 100'000);
    }
    return numbers;
}

int Compare(const long& a, const long& b) { return a < b ? -1 : static_cast<int>(b < a); }

void ArrayAppendOurs(benchmark::State& state) {
    for (auto _ : state) {
        KyDynArray<long> array(nMany);
        for (long i = 0; i < nMany; ++i) {
            array.Append(i);
        }
        benchmark::DoNotOptimize(array.m_pData);
    }
}
BENCHMARK(ArrayAppendOurs)->Name("array/append/ours");

void ArrayAppendStd(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<long> array;
        array.reserve(nMany);
        for (long i = 0; i < nMany; ++i) {
            array.push_back(i);
        }
        benchmark::DoNotOptimize(array.data());
    }
}
BENCHMARK(ArrayAppendStd)->Name("array/append/std::vector");

template <class Container>
void Walk(benchmark::State& state, const Container& container) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::accumulate(container.begin(), container.end(), 0L));
    }
}

template <class Container>
void WalkOurs(benchmark::State& state) {
    Container container;
    for (long i = 0; i < nMany; ++i) {
        container.Append(i);
    }
    Walk(state, container);
}
BENCHMARK(WalkOurs<KyDynArray<long>>)->Name("array/walk/ours");
BENCHMARK(WalkOurs<KyDList<long>>)->Name("list/walk/ours");

template <class Container>
void WalkStd(benchmark::State& state) {
    Container container;
    for (long i = 0; i < nMany; ++i) {
        container.push_back(i);
    }
    Walk(state, container);
}
BENCHMARK(WalkStd<std::vector<long>>)->Name("array/walk/std::vector");
BENCHMARK(WalkStd<std::list<long>>)->Name("list/walk/std::list");

template <class List>
void ListAppendOurs(benchmark::State& state) {
    for (auto _ : state) {
        List list;
        for (long i = 0; i < 10'000; ++i) {
            list.Append(i);
        }
        benchmark::DoNotOptimize(list.m_pTail);
    }
}
BENCHMARK(ListAppendOurs<KyList<long>>)->Name("forward list/append/ours");
BENCHMARK(ListAppendOurs<KyDList<long>>)->Name("list/append/ours");

void ListAppendStd(benchmark::State& state) {
    for (auto _ : state) {
        std::list<long> list;
        for (long i = 0; i < 10'000; ++i) {
            list.push_back(i);
        }
        benchmark::DoNotOptimize(list.back());
    }
}
BENCHMARK(ListAppendStd)->Name("list/append/std::list");

void ForwardListAppendStd(benchmark::State& state) {
    for (auto _ : state) {
        std::forward_list<long> list;
        auto it = list.before_begin();
        for (long i = 0; i < 10'000; ++i) {
            it = list.insert_after(it, i);
        }
        benchmark::DoNotOptimize(*it);
    }
}
BENCHMARK(ForwardListAppendStd)->Name("forward list/append/std::forward_list");

void ListEditOurs(benchmark::State& state) {
    KyDList<long> list(10'000);
    list.MoveTo(5'000);
    for (auto _ : state) {
        list.InsertCur(1);
        list.DelCur();
        list.MoveToNext();
    }
}
BENCHMARK(ListEditOurs)->Name("list/insert and delete at the cursor/ours");

void ListEditStd(benchmark::State& state) {
    std::list<long> list(10'000);
    auto it = std::next(list.begin(), 5'000);
    for (auto _ : state) {
        it = list.insert(it, 1);
        it = list.erase(it);
    }
}
BENCHMARK(ListEditStd)->Name("list/insert and delete at the cursor/std::list");

void ArraySortOurs(benchmark::State& state) {
    const std::vector<long> numbers = RandomNumbers(state.range(0));
    KyDynArray<long> array(state.range(0));
    array.ReAllocate(state.range(0));
    for (auto _ : state) {
        std::copy(numbers.begin(), numbers.end(), array.begin());
        array.Sort(true);
    }
}
BENCHMARK(ArraySortOurs)->Name("array/sort/ours")->RangeMultiplier(4)->Range(8, 512);

void ArraySortStd(benchmark::State& state) {
    const std::vector<long> numbers = RandomNumbers(state.range(0));
    std::vector<long> array(numbers.size());
    for (auto _ : state) {
        std::copy(numbers.begin(), numbers.end(), array.begin());
        std::stable_sort(array.begin(), array.end());
    }
}
BENCHMARK(ArraySortStd)->Name("array/sort/std::stable_sort")->RangeMultiplier(4)->Range(8, 512);

void ListSortOurs(benchmark::State& state) {
    const std::vector<long> numbers = RandomNumbers(state.range(0));
    for (auto _ : state) {
        KyDList<long> list;
        for (const long number : numbers) {
            list.Append(number);
        }
        list.Sort(Compare);
        benchmark::DoNotOptimize(list.m_pTail);
    }
}
BENCHMARK(ListSortOurs)->Name("list/sort/ours")->RangeMultiplier(4)->Range(8, 512);

void ListSortStd(benchmark::State& state) {
    const std::vector<long> numbers = RandomNumbers(state.range(0));
    for (auto _ : state) {
        std::list<long> list(numbers.begin(), numbers.end());
        list.sort([](const long& a, const long& b) { return Compare(a, b) < 0; });
        benchmark::DoNotOptimize(list.back());
    }
}
BENCHMARK(ListSortStd)->Name("list/sort/std::list")->RangeMultiplier(4)->Range(8, 512);

}  // namespace
