// The global allocator in a test's hands. A program that uses this links Heap.cpp, which replaces the global
// operators.
#pragma once

#include <cstddef>

/// Counts what is taken and not given back from its construction on. One at a time.
class HeapWatch {
public:
    HeapWatch();
    HeapWatch(const HeapWatch&) = delete;
    HeapWatch& operator=(const HeapWatch&) = delete;
    ~HeapWatch();

    /// Bytes taken since and still held.
    std::size_t LiveBytes() const;

    /// Allocations since.
    long Allocations() const;
};

/// Makes one allocation throw std::bad_alloc, unless this ends before: the one with the number given, 0 being
/// the next.
class FailingAllocation {
public:
    explicit FailingAllocation(long nAllocation);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();
};
