#include "ShortMemory.h"

#include <cstddef>
#include <unordered_set>

namespace {

constexpr long nUnlimited = -1;
long g_nLeft = nUnlimited;
bool g_bHasRefused = false;

// Never destroyed: memory is given back until the very end.
std::unordered_set<void*>& Blocks() {
    static auto* const pBlocks = new std::unordered_set<void*>;
    return *pBlocks;
}

}  // namespace

extern "C" {
// The linker's names: what calls of realloc and free become, and the C library's own.
void* __real_realloc(void* p, std::size_t nBytes);   // NOLINT(bugprone-reserved-identifier)
void* __wrap_realloc(void* p, std::size_t nBytes) {  // NOLINT(bugprone-reserved-identifier)
    if (g_nLeft == 0) {
        g_bHasRefused = true;
        return nullptr;
    }
    g_nLeft -= g_nLeft > 0 ? 1 : 0;
    void* const pNew = __real_realloc(p, nBytes);
    if (pNew != nullptr) {
        Blocks().erase(p);
        Blocks().insert(pNew);
    }
    return pNew;
}
void __real_free(void* p);   // NOLINT(bugprone-reserved-identifier)
void __wrap_free(void* p) {  // NOLINT(bugprone-reserved-identifier)
    Blocks().erase(p);
    __real_free(p);
}
}

ShortMemory::ShortMemory(long nFirst) {
    g_nLeft = nFirst;
    g_bHasRefused = false;
}

ShortMemory::~ShortMemory() { g_nLeft = nUnlimited; }

bool ShortMemory::HasRefused() const { return g_bHasRefused; }

long ReallocatedBlocks() { return static_cast<long>(Blocks().size()); }
