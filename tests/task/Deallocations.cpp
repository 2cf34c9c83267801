#include "Deallocations.h"

#include <array>
#include <cstdlib>
#include <new>
#include <utility>

namespace {

// Recording must not allocate.
struct Record {
    std::array<void*, 256> m_blocks;
    std::size_t m_nBlocks;

    void Add(void* p) {
        if (m_nBlocks == m_blocks.size()) std::abort();
        m_blocks[m_nBlocks++] = p;
    }
};

Record g_unsized;
Record g_others;
bool g_bOpen = false;
bool g_bFailNext = false;

void* Take(std::size_t nBytes, std::size_t nAlignment) {
    void* p = nullptr;
    if (std::exchange(g_bFailNext, false) || posix_memalign(&p, nAlignment, nBytes != 0 ? nBytes : 1) != 0) {
        throw std::bad_alloc();
    }
    return p;
}

void Give(void* p, Record& record) noexcept {
    if (g_bOpen && p != nullptr) record.Add(p);
    std::free(p);
}

std::vector<void*> Blocks(const Record& record) {
    return {record.m_blocks.begin(), record.m_blocks.begin() + static_cast<std::ptrdiff_t>(record.m_nBlocks)};
}

}  // namespace

void* operator new(std::size_t nBytes) { return Take(nBytes, __STDCPP_DEFAULT_NEW_ALIGNMENT__); }
void* operator new[](std::size_t nBytes) { return Take(nBytes, __STDCPP_DEFAULT_NEW_ALIGNMENT__); }
void* operator new(std::size_t nBytes, std::align_val_t nAlignment) {
    return Take(nBytes, static_cast<std::size_t>(nAlignment));
}
void* operator new[](std::size_t nBytes, std::align_val_t nAlignment) {
    return Take(nBytes, static_cast<std::size_t>(nAlignment));
}
void operator delete(void* p) noexcept { Give(p, g_unsized); }
void operator delete[](void* p) noexcept { Give(p, g_others); }
void operator delete(void* p, std::size_t) noexcept { Give(p, g_others); }
void operator delete[](void* p, std::size_t) noexcept { Give(p, g_others); }
void operator delete(void* p, std::align_val_t) noexcept { Give(p, g_others); }
void operator delete[](void* p, std::align_val_t) noexcept { Give(p, g_others); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { Give(p, g_others); }
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept { Give(p, g_others); }

void StartRecording() {
    g_unsized.m_nBlocks = 0;
    g_others.m_nBlocks = 0;
    g_bOpen = true;
}

Deallocations StopRecording() {
    g_bOpen = false;
    return {Blocks(g_unsized), Blocks(g_others)};
}

FailingAllocation::FailingAllocation() { g_bFailNext = true; }
FailingAllocation::~FailingAllocation() { g_bFailNext = false; }
