// The program's allocator for single objects. It stands apart so that no caller inlines half of it.
#include <cstdlib>
#include <new>

#include "GA_TestKit.h"

namespace {

long g_nUntilFailure = 0;

}  // namespace

void* operator new(std::size_t nSize) {
    void* const p = g_nUntilFailure != 0 && --g_nUntilFailure == 0 ? nullptr : std::malloc(nSize);
    return p != nullptr ? p : throw std::bad_alloc();
}

void operator delete(void* p) noexcept { std::free(p); }

void operator delete(void* p, std::size_t) noexcept { std::free(p); }

void FailingAllocation::At(long n) { g_nUntilFailure = n; }
