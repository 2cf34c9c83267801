#include "Heap.h"

#include <array>
#include <cstdlib>
#include <new>

namespace {

struct Block {
    void* m_p;
    std::size_t m_nBytes;
};

// Watching must not allocate.
std::array<Block, 4096> g_live;
std::size_t g_nLive = 0;
long g_nAllocations = 0;
bool g_bWatching = false;
long g_nUntilFailure = -1;

void* Take(std::size_t nBytes) {
    if (g_nUntilFailure >= 0 && g_nUntilFailure-- == 0) throw std::bad_alloc();
    void* const p = std::malloc(nBytes != 0 ? nBytes : 1);
    if (p == nullptr) throw std::bad_alloc();
    if (g_bWatching) {
        if (g_nLive == g_live.size()) std::abort();
        g_live[g_nLive++] = {p, nBytes};
        ++g_nAllocations;
    }
    return p;
}

void Give(void* p) noexcept {
    for (std::size_t i = 0; i < g_nLive; ++i) {
        if (g_live[i].m_p == p) {
            g_live[i] = g_live[--g_nLive];
            break;
        }
    }
    std::free(p);
}

}  // namespace

void* operator new(std::size_t nBytes) { return Take(nBytes); }
void* operator new[](std::size_t nBytes) { return Take(nBytes); }
void operator delete(void* p) noexcept { Give(p); }
void operator delete[](void* p) noexcept { Give(p); }
void operator delete(void* p, std::size_t) noexcept { Give(p); }
void operator delete[](void* p, std::size_t) noexcept { Give(p); }

HeapWatch::HeapWatch() {
    g_nLive = 0;
    g_nAllocations = 0;
    g_bWatching = true;
}

HeapWatch::~HeapWatch() {
    g_bWatching = false;
    g_nLive = 0;
}

std::size_t HeapWatch::LiveBytes() const {
    std::size_t nBytes = 0;
    for (std::size_t i = 0; i < g_nLive; ++i) {
        nBytes += g_live[i].m_nBytes;
    }
    return nBytes;
}

long HeapWatch::Allocations() const { return g_nAllocations; }

FailingAllocation::FailingAllocation(long nAllocation) { g_nUntilFailure = nAllocation; }
FailingAllocation::~FailingAllocation() { g_nUntilFailure = -1; }
