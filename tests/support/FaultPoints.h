// Faults to order. A fault point is passed by every allocation of a program that links the test_allocator, and
// wherever a test's own code calls FaultAt::Pass.
#pragma once

#include <stdexcept>

enum class FaultKind {
    Allocation,  // a block of the global allocator
    Element,     // the making, the copy or the assignment of an element
    Comparison,
    Hook,  // any other operation that the application supplies
};

constexpr FaultKind g_faultKinds[] = {FaultKind::Allocation, FaultKind::Element, FaultKind::Comparison,
                                      FaultKind::Hook};

struct OrderedFault : std::runtime_error {
    OrderedFault() : std::runtime_error("an ordered fault") {}
};

enum class Faults { Once, FromThenOn };

/// Makes the k-th passage (from 1) of a kind of fault points throw, or every one from the k-th on, as long as
/// this lives: std::bad_alloc from an allocation, an OrderedFault from any other. One at a time.
class FaultAt {
public:
    FaultAt(FaultKind kind, long k, Faults faults = Faults::Once);
    FaultAt(const FaultAt&) = delete;
    FaultAt& operator=(const FaultAt&) = delete;
    ~FaultAt();

    /// True when a fault has happened.
    bool HasHappened() const;

    /// A fault point.
    static void Pass(FaultKind kind);

    /// The same for whoever throws himself: true when this is a passage to fail.
    static bool IsDue(FaultKind kind) noexcept;
};
