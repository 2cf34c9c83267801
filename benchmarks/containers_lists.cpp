// Lists beside the standard library's: appending, walking, editing at the cursor, sorting. Every pair does the
// same work on the same data; a case's name is job/case/library, a size behind it the number of elements.
#include <benchmark/benchmark.h>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <forward_list>
#include <iterator>
#include <list>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyList.h"

namespace {

/// Gives every case a heap without leftovers of the one before, which would scatter its nodes.
void TidyHeap() { malloc_trim(0); }

std::vector<long> RandomNumbers(long n) {
    std::mt19937 engine(1);
    std::vector<long> numbers(static_cast<std::size_t>(n));
    for (long& number : numbers) {
        number = static_cast<long>(engine() % 100'000);
    }
    return numbers;
}

void Fill(KyList<long>& list, long n) {
    for (long i = 0; i < n; ++i) {
        list.Append(i);
    }
}
void Fill(std::list<long>& list, long n) {
    for (long i = 0; i < n; ++i) {
        list.push_back(i);
    }
}
void Fill(std::forward_list<long>& list, long n) {
    auto it = list.before_begin();
    for (long i = 0; i < n; ++i) {
        it = list.insert_after(it, i);
    }
}

// Appending ends before the list is emptied: giving nodes back is the allocator's affair.
template <class List>
void AppendOurs(benchmark::State& state) {
    TidyHeap();
    const long n = state.range(0);
    for (auto _ : state) {
        List list;
        for (long i = 0; i < n; ++i) {
            list.Append(i);
        }
        state.PauseTiming();
        list.Reset();
        state.ResumeTiming();
    }
}
BENCHMARK(AppendOurs<KyDList<long>>)->Name("lists/append/ours")->Arg(1'000)->Arg(100'000);
BENCHMARK(AppendOurs<KyList<long>>)->Name("lists/append, singly linked/ours")->Arg(1'000)->Arg(100'000);

template <class List>
void AppendStd(benchmark::State& state) {
    TidyHeap();
    for (auto _ : state) {
        List list;
        Fill(list, state.range(0));
        state.PauseTiming();
        list.clear();
        state.ResumeTiming();
    }
}
BENCHMARK(AppendStd<std::list<long>>)->Name("lists/append/std::list")->Arg(1'000)->Arg(100'000);
BENCHMARK(AppendStd<std::forward_list<long>>)
    ->Name("lists/append, singly linked/std::forward_list")
    ->Arg(1'000)
    ->Arg(100'000);

template <class List>
void LiveOurs(benchmark::State& state) {
    TidyHeap();
    const long n = state.range(0);
    for (auto _ : state) {
        List list;
        for (long i = 0; i < n; ++i) {
            list.Append(i);
        }
        benchmark::DoNotOptimize(list.m_pTail);
    }
}
BENCHMARK(LiveOurs<KyDList<long>>)->Name("lists/append and release/ours")->Arg(1'000)->Arg(100'000);
BENCHMARK(LiveOurs<KyList<long>>)
    ->Name("lists/append and release, singly linked/ours")
    ->Arg(1'000)
    ->Arg(100'000);

template <class List>
void LiveStd(benchmark::State& state) {
    TidyHeap();
    for (auto _ : state) {
        List list;
        Fill(list, state.range(0));
        benchmark::DoNotOptimize(list.front());
    }
}
BENCHMARK(LiveStd<std::list<long>>)->Name("lists/append and release/std::list")->Arg(1'000)->Arg(100'000);
BENCHMARK(LiveStd<std::forward_list<long>>)
    ->Name("lists/append and release, singly linked/std::forward_list")
    ->Arg(1'000)
    ->Arg(100'000);

/// Ends the program unless the elements are 0 .. n - 1.
template <class List>
void ExpectNumbers(const List& list, long n) {
    long nNext = 0;
    for (const long nElement : list) {
        if (nElement != nNext++) {
            std::fputs("lists: a wrong element\n", stderr);
            std::abort();
        }
    }
    if (nNext != n) {
        std::fputs("lists: a wrong length\n", stderr);
        std::abort();
    }
}

template <class List>
void WalkByRange(benchmark::State& state) {
    TidyHeap();
    List list;
    Fill(list, state.range(0));
    ExpectNumbers(list, state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::accumulate(list.begin(), list.end(), 0L));
    }
}
BENCHMARK(WalkByRange<KyDList<long>>)->Name("lists/walk by range/ours")->Arg(1'000)->Arg(100'000);
BENCHMARK(WalkByRange<std::list<long>>)->Name("lists/walk by range/std::list")->Arg(1'000)->Arg(100'000);
BENCHMARK(WalkByRange<KyList<long>>)
    ->Name("lists/walk by range, singly linked/ours")
    ->Arg(1'000)
    ->Arg(100'000);
BENCHMARK(WalkByRange<std::forward_list<long>>)
    ->Name("lists/walk by range, singly linked/std::forward_list")
    ->Arg(1'000)
    ->Arg(100'000);

template <class List>
void WalkByCursor(benchmark::State& state) {
    TidyHeap();
    List list;
    Fill(list, state.range(0));
    for (auto _ : state) {
        long nSum = 0;
        for (list.MoveToFirst(); list.GetCurIndex() >= 0 && list.GetCurIndex() < list.GetLength();
             list.MoveToNext()) {
            nSum += list.GetCurData();
        }
        benchmark::DoNotOptimize(nSum);
    }
}
BENCHMARK(WalkByCursor<KyDList<long>>)->Name("lists/walk by cursor/ours")->Arg(1'000)->Arg(100'000);
BENCHMARK(WalkByRange<std::list<long>>)->Name("lists/walk by cursor/std::list")->Arg(1'000)->Arg(100'000);
BENCHMARK(WalkByCursor<KyList<long>>)
    ->Name("lists/walk by cursor, singly linked/ours")
    ->Arg(1'000)
    ->Arg(100'000);
BENCHMARK(WalkByRange<std::forward_list<long>>)
    ->Name("lists/walk by cursor, singly linked/std::forward_list")
    ->Arg(1'000)
    ->Arg(100'000);

void EditOurs(benchmark::State& state) {
    TidyHeap();
    KyDList<long> list(10'000);
    list.MoveTo(5'000);
    for (auto _ : state) {
        list.InsertCur(1);
        list.DelCur();
        list.MoveToNext();
    }
}
BENCHMARK(EditOurs)->Name("lists/insert and delete at the cursor/ours");

void EditStd(benchmark::State& state) {
    TidyHeap();
    std::list<long> list(10'000);
    auto it = std::next(list.begin(), 5'000);
    for (auto _ : state) {
        it = list.insert(it, 1);
        it = list.erase(it);
    }
}
BENCHMARK(EditStd)->Name("lists/insert and delete at the cursor/std::list");

// A singly linked list reaches the element before the cursor from the head: only there is deleting constant.
void HeadEditOurs(benchmark::State& state) {
    TidyHeap();
    KyList<long> list(10'000);
    for (auto _ : state) {
        list.InsertHead(1);
        list.DelCur();
    }
}
BENCHMARK(HeadEditOurs)->Name("lists/insert and delete at the head, singly linked/ours");

void HeadEditStd(benchmark::State& state) {
    TidyHeap();
    std::forward_list<long> list(10'000);
    for (auto _ : state) {
        list.push_front(1);
        benchmark::DoNotOptimize(list.front());
        list.pop_front();
    }
}
BENCHMARK(HeadEditStd)->Name("lists/insert and delete at the head, singly linked/std::forward_list");

using Comparison = int (*)(const long&, const long&);

int Compare(const long& a, const long& b) { return static_cast<int>(b < a) - static_cast<int>(a < b); }

/// What the lists' sort costs at least: the same comparisons on a plain array, and for every element that
/// moves a new node while the old one goes.
class InsertionSorter {
public:
    explicit InsertionSorter(std::size_t n) : m_nodes(n) {
        for (auto& pNode : m_nodes) {
            pNode = std::make_unique<Node>(0);
        }
    }

    void Sort(std::vector<long>& array, Comparison pfnCompare) {
        for (std::size_t i = 1; i < array.size(); ++i) {
            if (pfnCompare(array[i - 1], array[i]) > 0) {
                const long x = array[i];
                std::size_t j = i;
                do {
                    array[j] = array[j - 1];
                    --j;
                } while (j > 0 && pfnCompare(array[j - 1], x) > 0);
                array[j] = x;
                m_nodes[i] = std::make_unique<Node>(x);
            }
        }
    }

private:
    struct Node {
        explicit Node(long nElement) : m_nElement(nElement) {}
        long m_nElement;
        Node* m_pNext = nullptr;
        Node* m_pPre = nullptr;
    };

    std::vector<std::unique_ptr<Node>> m_nodes;
};

void Sort(KyDList<long>& list, Comparison pfnCompare) { list.Sort(pfnCompare); }
void Sort(std::list<long>& list, Comparison pfnCompare) {
    list.sort([pfnCompare](const long& a, const long& b) { return pfnCompare(a, b) < 0; });
}

/// Ends the program unless the list holds the numbers in order.
template <class List>
void ExpectSorted(const List& list, std::vector<long> numbers) {
    std::sort(numbers.begin(), numbers.end());
    if (!std::equal(list.begin(), list.end(), numbers.begin(), numbers.end())) {
        std::fputs("list sort: not in order\n", stderr);
        std::abort();
    }
}

template <class List>
void SortList(benchmark::State& state) {
    TidyHeap();
    const std::vector<long> numbers = RandomNumbers(state.range(0));
    Comparison pfnCompare = Compare;
    benchmark::DoNotOptimize(pfnCompare);
    List list;
    Fill(list, state.range(0));
    std::copy(numbers.begin(), numbers.end(), list.begin());
    Sort(list, pfnCompare);
    ExpectSorted(list, numbers);
    for (auto _ : state) {
        std::copy(numbers.begin(), numbers.end(), list.begin());
        Sort(list, pfnCompare);
    }
}
BENCHMARK(SortList<KyDList<long>>)
    ->Name("list sort/comparison function/ours")
    ->RangeMultiplier(8)
    ->Range(8, 512);
BENCHMARK(SortList<std::list<long>>)
    ->Name("list sort/comparison function/std::list::sort")
    ->RangeMultiplier(8)
    ->Range(8, 512);

void SortLimit(benchmark::State& state) {
    TidyHeap();
    const std::vector<long> numbers = RandomNumbers(state.range(0));
    Comparison pfnCompare = Compare;
    benchmark::DoNotOptimize(pfnCompare);
    std::vector<long> array = numbers;
    InsertionSorter sorter(array.size());
    sorter.Sort(array, pfnCompare);
    ExpectSorted(array, numbers);
    for (auto _ : state) {
        std::copy(numbers.begin(), numbers.end(), array.begin());
        sorter.Sort(array, pfnCompare);
        benchmark::DoNotOptimize(array.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SortLimit)->Name("list sort/comparison function/limit")->RangeMultiplier(8)->Range(8, 512);

}  // namespace
