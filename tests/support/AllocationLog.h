// What a test sees of the global allocator: which blocks were taken and given back while a log was open, how
// many are in use, and a failure to order. A program that uses it links test_allocator, which replaces the
// global operators. It stops when a block is given back with another size than its own, or when something was
// written behind it.
#pragma once

#include <cstddef>
#include <vector>

#include "FaultPoints.h"

/// Blocks given back, in order.
struct Deallocations {
    std::vector<void*> m_unsized;  // through operator delete(void*)
    std::vector<void*> m_others;   // through any other operator delete
};

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

    /// Number of blocks taken so far, either way.
    long Allocations() const;

    /// Number of blocks given back so far by array delete, whenever they were taken.
    long Releases() const;

    /// Blocks given back so far, whenever they were taken.
    Deallocations GivenBack() const;

    /// Bytes taken since the log was opened that have not been given back.
    std::size_t LiveBytes() const;

    /// Those of them that were taken by array new.
    std::size_t LiveArrayBytes() const;
};

/// Makes the allocation number nAllocation from now on (0 is the next one) throw std::bad_alloc, once, unless
/// this ends before.
class FailingAllocation {
public:
    explicit FailingAllocation(long nAllocation) : m_fault(FaultKind::Allocation, nAllocation + 1) {}

private:
    FaultAt m_fault;
};

/// Has the blocks that array new takes during its lifetime end at memory that can't be read, up to 15 bytes
/// that fill a block's last 16. A sanitizer watches the ends of blocks itself.
class FencedArrays {
public:
    FencedArrays();
    FencedArrays(const FencedArrays&) = delete;
    FencedArrays& operator=(const FencedArrays&) = delete;
    ~FencedArrays();
};

/// Blocks of the global allocator in use.
long LiveBlocks();

/// Bytes from p to the end of the block, taken by array new, that it lies in; 0 for no block. Only the latest
/// blocks are known, a few hundred.
std::size_t RoomAt(const void* p);

/// Makes the optimiser believe that the object is used, so that it keeps the object's allocations.
void Use(const void* pObject);
