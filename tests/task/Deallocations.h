// Which blocks a piece of code gives back, and through which of the global operators. A program that uses
// this links Deallocations.cpp, which replaces them.
#pragma once

#include <vector>

/// Blocks given back, in order.
struct Deallocations {
    std::vector<void*> m_unsized;  // through operator delete(void*)
    std::vector<void*> m_others;   // through any other operator delete
};

void StartRecording();
Deallocations StopRecording();

/// What `code` gives back.
template <class Code>
Deallocations GivenBackBy(Code code) {
    StartRecording();
    code();
    return StopRecording();
}

/// Makes the next allocation throw std::bad_alloc, unless this ends before.
class FailingAllocation {
public:
    FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();
};
