// What a test sees of the global allocator: which blocks were taken and given back while a log was open, and
// a failure to order. A program that uses it links AllocationLog.cpp, which replaces the global operators.
#pragma once

#include <cstddef>
#include <vector>

/// Records every block of the global allocator that is taken or given back during its lifetime. One at a
/// time.
class AllocationLog {
public:
    AllocationLog();
    AllocationLog(const AllocationLog&) = delete;
    AllocationLog& operator=(const AllocationLog&) = delete;
    ~AllocationLog();

    /// Sizes in bytes of the blocks taken so far by array new, in order.
    std::vector<std::size_t> Arrays() const;

    /// Sizes in bytes of the blocks taken so far by single new, in order.
    std::vector<std::size_t> Singles() const;

    /// Number of blocks given back so far by array delete, whenever they were taken.
    long Releases() const;

    /// Bytes taken by array new since the log was opened that have not been given back.
    std::size_t LiveArrayBytes() const;
};

/// Makes the allocation number nAllocation from now on (0 is the next one) throw std::bad_alloc, once, unless
/// this ends before.
class FailingAllocation {
public:
    explicit FailingAllocation(long nAllocation);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();
};

/// Makes the optimiser believe that the object is used, so that it keeps the object's allocations.
void Use(const void* pObject);
