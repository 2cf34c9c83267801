// Arrays beside std::vector: appending, walking, editing in the middle, sorting. Where the rules of the array
// decide the time, the third figure is what plain code under the same rules takes: the case's limit. A case's
// name is job/case/library/size.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

#include "VexaBase/containers/KyDynArray.h"

namespace {

// The allocator keeps its pages, for both sides: otherwise the time of a large block is that of its page
// faults, whose number depends on the cases that ran before.
[[maybe_unused]] const bool bKeepsPages =
    mallopt(M_MMAP_THRESHOLD, 1 << 30) == 1 && mallopt(M_TRIM_THRESHOLD, 1 << 30) == 1;

// Appending

void AppendWithCapacityOurs(benchmark::State& state) {
    const long n = state.range(0);
    for (auto _ : state) {
        KyDynArray<long> array(n);
        for (long i = 0; i < n; ++i) {
            array.Append(i);
        }
        benchmark::DoNotOptimize(array.m_pData);
    }
}
BENCHMARK(AppendWithCapacityOurs)->Name("arrays/append, capacity given/ours")->Arg(1000)->Arg(100'000);

void AppendWithCapacityStd(benchmark::State& state) {
    const long n = state.range(0);
    for (auto _ : state) {
        std::vector<long> array;
        array.reserve(static_cast<std::size_t>(n));
        for (long i = 0; i < n; ++i) {
            array.push_back(i);
        }
        benchmark::DoNotOptimize(array.data());
    }
}
BENCHMARK(AppendWithCapacityStd)->Name("arrays/append, capacity given/std::vector")->Arg(1000)->Arg(100'000);

void AppendWithStepOurs(benchmark::State& state) {
    const long n = state.range(0);
    for (auto _ : state) {
        KyDynArray<long> array(0, n / 4);
        for (long i = 0; i < n; ++i) {
            array.Append(i);
        }
        benchmark::DoNotOptimize(array.m_pData);
    }
}
BENCHMARK(AppendWithStepOurs)->Name("arrays/append, step given/ours")->Arg(1000)->Arg(100'000);

void AppendStd(benchmark::State& state) {
    const long n = state.range(0);
    for (auto _ : state) {
        std::vector<long> array;
        for (long i = 0; i < n; ++i) {
            array.push_back(i);
        }
        benchmark::DoNotOptimize(array.data());
    }
}
BENCHMARK(AppendStd)->Name("arrays/append, step given/std::vector")->Arg(1000)->Arg(100'000);

constexpr long nSmallLength = 16;

// Small arrays, one after the other.
template <long nGrowBy>
void AppendToFreshArraysOurs(benchmark::State& state) {
    for (auto _ : state) {
        KyDynArray<long> array(0, nGrowBy);
        for (long i = 0; i < nSmallLength; ++i) {
            array.Append(i);
        }
        benchmark::DoNotOptimize(array.m_pData);
    }
}
BENCHMARK(AppendToFreshArraysOurs<1024>)->Name("arrays/append 16 to fresh arrays/ours");
BENCHMARK(AppendToFreshArraysOurs<nSmallLength - 1>)
    ->Name("arrays/append 16 to fresh arrays/ours, step given");

void AppendToFreshArraysStd(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<long> array;
        for (long i = 0; i < nSmallLength; ++i) {
            array.push_back(i);
        }
        benchmark::DoNotOptimize(array.data());
    }
}
BENCHMARK(AppendToFreshArraysStd)->Name("arrays/append 16 to fresh arrays/std::vector");

// Small arrays, all alive at the end.
constexpr long nSmallArrays = 1000;

template <long nGrowBy>
void AppendToManyArraysOurs(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<std::unique_ptr<KyDynArray<long>>> arrays(static_cast<std::size_t>(state.range(0)));
        for (std::unique_ptr<KyDynArray<long>>& pArray : arrays) {
            pArray = std::make_unique<KyDynArray<long>>(0, nGrowBy);
            for (long i = 0; i < nSmallLength; ++i) {
                pArray->Append(i);
            }
        }
        benchmark::DoNotOptimize(arrays.data());
    }
}
BENCHMARK(AppendToManyArraysOurs<1024>)->Name("arrays/append 16 to arrays kept/ours")->Arg(nSmallArrays);
BENCHMARK(AppendToManyArraysOurs<nSmallLength - 1>)
    ->Name("arrays/append 16 to arrays kept/ours, step given")
    ->Arg(nSmallArrays);

void AppendToManyArraysStd(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<std::unique_ptr<std::vector<long>>> arrays(static_cast<std::size_t>(state.range(0)));
        for (std::unique_ptr<std::vector<long>>& pArray : arrays) {
            pArray = std::make_unique<std::vector<long>>();
            for (long i = 0; i < nSmallLength; ++i) {
                pArray->push_back(i);
            }
        }
        benchmark::DoNotOptimize(arrays.data());
    }
}
BENCHMARK(AppendToManyArraysStd)->Name("arrays/append 16 to arrays kept/std::vector")->Arg(nSmallArrays);

constexpr long nDefaultStep = 1024;

void AppendWithDefaultStepOurs(benchmark::State& state) {
    const long n = state.range(0);
    for (auto _ : state) {
        KyDynArray<long> array;
        for (long i = 0; i < n; ++i) {
            array.Append(i);
        }
        benchmark::DoNotOptimize(array.m_pData);
    }
}
BENCHMARK(AppendWithDefaultStepOurs)->Name("arrays/append, default step/ours")->Arg(1'000'000);

void AppendWithDefaultStepLimit(benchmark::State& state) {
    const long n = state.range(0);
    for (auto _ : state) {
        std::unique_ptr<long[]> block;
        long nLength = 0;
        long nCapacity = 0;
        for (long i = 0; i < n; ++i) {
            if (nLength == nCapacity) {
                nCapacity = nLength + 1 + nDefaultStep;
                std::unique_ptr<long[]> grown(new long[static_cast<std::size_t>(nCapacity)]);
                std::copy(block.get(), block.get() + nLength, grown.get());
                block = std::move(grown);
            }
            block[static_cast<std::size_t>(nLength++)] = i;
        }
        benchmark::DoNotOptimize(block.get());
    }
}
BENCHMARK(AppendWithDefaultStepLimit)->Name("arrays/append, default step/limit")->Arg(1'000'000);

// Walking and editing

template <class Array>
void Walk(benchmark::State& state) {
    Array array(static_cast<std::size_t>(state.range(0)));
    std::iota(array.begin(), array.end(), 0L);
    const Array& constArray = array;
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::accumulate(constArray.begin(), constArray.end(), 0L));
    }
}
struct FilledArray : KyDynArray<long> {
    explicit FilledArray(std::size_t n) { ReAllocate(static_cast<long>(n)); }
};
BENCHMARK(Walk<FilledArray>)->Name("arrays/walk by range/ours")->Arg(1000)->Arg(100'000);
BENCHMARK(Walk<std::vector<long>>)->Name("arrays/walk by range/std::vector")->Arg(1000)->Arg(100'000);

void EditInTheMiddleOurs(benchmark::State& state) {
    KyDynArray<long> array;
    array.ReAllocate(state.range(0));
    std::iota(array.begin(), array.end(), 0L);
    const long nMiddle = array.m_nLength / 2;
    for (auto _ : state) {
        array.Insert(nMiddle, 1);
        array.DelCur();
    }
}
BENCHMARK(EditInTheMiddleOurs)->Name("arrays/insert and erase in the middle/ours")->Arg(10'000);

void EditInTheMiddleStd(benchmark::State& state) {
    std::vector<long> array(static_cast<std::size_t>(state.range(0)));
    std::iota(array.begin(), array.end(), 0L);
    const auto nMiddle = static_cast<std::ptrdiff_t>(array.size() / 2);
    for (auto _ : state) {
        array.erase(array.insert(array.begin() + nMiddle, 1));
    }
}
BENCHMARK(EditInTheMiddleStd)->Name("arrays/insert and erase in the middle/std::vector")->Arg(10'000);

// Sorting

// Elements enough for many arrays of any size, so that no branch predictor learns one of them by heart.
constexpr long nDrawn = 1 << 16;

template <class T>
std::vector<T> RandomElements() {
    static const std::vector<char> targets(1 << 20);
    std::mt19937_64 engine(1);
    std::vector<T> elements(nDrawn);
    for (T& element : elements) {
        if constexpr (std::is_pointer_v<T>) {
            element = &targets[engine() % targets.size()];
        } else {
            element = static_cast<T>(engine());
        }
    }
    return elements;
}

// Gives fnSort one array after the other: the drawn elements, nLength at a time.
template <class T, class Sort>
void SortOneAfterAnother(benchmark::State& state, T* pData, Sort fnSort) {
    const long nLength = state.range(0);
    const std::vector<T> elements = RandomElements<T>();
    auto itDrawn = elements.begin();
    for (auto _ : state) {
        if (elements.end() - itDrawn < nLength) {
            itDrawn = elements.begin();
        }
        std::copy(itDrawn, itDrawn + nLength, pData);
        itDrawn += nLength;
        fnSort();
        benchmark::ClobberMemory();
    }
}

template <class T>
void StopUnlessSortedAlike(long nLength) {
    const std::vector<T> elements = RandomElements<T>();
    KyDynArray<T> array;
    array.ReAllocate(nLength);
    for (auto it = elements.begin(); elements.end() - it >= nLength; it += nLength) {
        std::vector<T> expected(it, it + nLength);
        std::copy(expected.begin(), expected.end(), array.begin());
        array.Sort(true);
        std::sort(expected.begin(), expected.end());
        if (!std::equal(array.begin(), array.end(), expected.begin(), expected.end())) {
            std::fprintf(stderr, "array sort: KyDynArray and std::sort differ at %ld elements\n", nLength);
            std::abort();
        }
    }
}

template <class T>
void SortOurs(benchmark::State& state) {
    StopUnlessSortedAlike<T>(state.range(0));
    KyDynArray<T> array;
    array.ReAllocate(state.range(0));
    SortOneAfterAnother(state, array.m_pData, [&array] { array.Sort(true); });
}
template <class T>
void SortStd(benchmark::State& state) {
    std::vector<T> array(static_cast<std::size_t>(state.range(0)));
    SortOneAfterAnother(state, array.data(), [&array] { std::sort(array.begin(), array.end()); });
}
BENCHMARK(SortOurs<char>)->Name("array sort/char/ours")->RangeMultiplier(2)->Range(8, 1024);
BENCHMARK(SortStd<char>)->Name("array sort/char/std::sort")->RangeMultiplier(2)->Range(8, 1024);
BENCHMARK(SortOurs<long>)->Name("array sort/long/ours")->RangeMultiplier(2)->Range(8, 1024);
BENCHMARK(SortStd<long>)->Name("array sort/long/std::sort")->RangeMultiplier(2)->Range(8, 1024);
BENCHMARK(SortOurs<const char*>)->Name("array sort/pointers/ours")->RangeMultiplier(2)->Range(8, 1024);
BENCHMARK(SortStd<const char*>)->Name("array sort/pointers/std::sort")->RangeMultiplier(2)->Range(8, 1024);

using Comparison = int (*)(const long&, const long&);

int Compare(const long& a, const long& b) { return a < b ? -1 : static_cast<int>(b < a); }

// The comparison as a caller's own code gives it: known at run time.
Comparison AnyComparison() {
    Comparison pfnCompare = Compare;
    benchmark::DoNotOptimize(pfnCompare);
    return pfnCompare;
}

void SortByFunctionOurs(benchmark::State& state) {
    KyDynArray<long> array;
    array.ReAllocate(state.range(0));
    const Comparison pfnCompare = AnyComparison();
    SortOneAfterAnother(state, array.m_pData, [&] { array.Sort(pfnCompare); });
}
BENCHMARK(SortByFunctionOurs)
    ->Name("array sort/comparison function/ours")
    ->RangeMultiplier(2)
    ->Range(8, 1024);

// The limit: one call for every pair, a rank for every element in one temporary array, and every element moved once,
// along the cycles of the ranks.
void SortByRank(std::vector<long>& array, Comparison pfnCompare) {
    const std::size_t nLength = array.size();
    const std::unique_ptr<std::size_t[]> rank(new std::size_t[nLength]);
    std::iota(rank.get(), rank.get() + nLength, std::size_t{0});
    for (std::size_t i = 0; i + 1 < nLength; ++i) {
        std::size_t nBefore = 0;
        for (std::size_t j = i + 1; j < nLength; ++j) {
            const std::size_t nIsAfter = pfnCompare(array[i], array[j]) > 0 ? 1 : 0;
            nBefore += nIsAfter;
            rank[j] -= nIsAfter;
        }
        rank[i] += nBefore;
    }
    for (std::size_t i = 0; i < nLength; ++i) {
        long carried = array[i];
        for (std::size_t nTarget = rank[i]; nTarget != i;) {
            std::swap(carried, array[nTarget]);
            nTarget = std::exchange(rank[nTarget], nTarget);
        }
        array[i] = carried;
    }
}

void SortByFunctionLimit(benchmark::State& state) {
    std::vector<long> array = RandomElements<long>();
    array.resize(static_cast<std::size_t>(state.range(0)));
    const Comparison pfnCompare = AnyComparison();
    SortByRank(array, pfnCompare);
    if (!std::is_sorted(array.begin(), array.end())) {
        std::fprintf(stderr, "array sort: the limit does not sort %zu elements\n", array.size());
        std::abort();
    }
    SortOneAfterAnother(state, array.data(), [&] { SortByRank(array, pfnCompare); });
}
BENCHMARK(SortByFunctionLimit)
    ->Name("array sort/comparison function/limit")
    ->RangeMultiplier(2)
    ->Range(8, 1024);

}  // namespace
