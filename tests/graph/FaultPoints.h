// Faults to order. A fault point is passed by every allocation of the program (which must link
// FaultPoints.cpp, that replaces the global operators), and wherever a test calls Pass.
#pragma once

#include <stdexcept>

enum class FaultKind { Allocation, Comparison };

struct OrderedFault : std::runtime_error {
    OrderedFault() : std::runtime_error("an ordered fault") {}
};

/// Makes the k-th passage (from 1) of a kind of fault points throw, as long as this lives: std::bad_alloc
/// from an allocation, an OrderedFault from a comparison. One at a time.
class FaultAt {
public:
    FaultAt(FaultKind kind, long k);
    FaultAt(const FaultAt&) = delete;
    FaultAt& operator=(const FaultAt&) = delete;
    ~FaultAt();

    /// True when the fault has happened.
    bool HasHappened() const;

    static void Pass(FaultKind kind);
};

/// Blocks of the global allocator in use.
long LiveBlocks();
