#include "ShortMemory.h"

#include <cstddef>

namespace {

constexpr long nUnlimited = -1;
long g_nLeft = nUnlimited;
bool g_bHasRefused = false;

}  // namespace

extern "C" {
// The linker's names: what a call of realloc becomes, and the C library's own.
void* __real_realloc(void* p, std::size_t nBytes);   // NOLINT(bugprone-reserved-identifier)
void* __wrap_realloc(void* p, std::size_t nBytes) {  // NOLINT(bugprone-reserved-identifier)
    if (g_nLeft == 0) {
        g_bHasRefused = true;
        return nullptr;
    }
    g_nLeft -= g_nLeft > 0 ? 1 : 0;
    return __real_realloc(p, nBytes);
}
}

ShortMemory::ShortMemory(long nFirst) {
    g_nLeft = nFirst;
    g_bHasRefused = false;
}

ShortMemory::~ShortMemory() { g_nLeft = nUnlimited; }

bool ShortMemory::HasRefused() const { return g_bHasRefused; }
