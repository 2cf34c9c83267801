#include "AllocationLog.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

struct Block {
    void* m_p;
    std::size_t m_nBytes;
    bool m_bArray;
    bool m_bLive;
};

// The log must not allocate while it records.
std::array<Block, 65536> g_blocks;
std::size_t g_nBlocks = 0;
long g_nReleases = 0;
bool g_bOpen = false;
long g_nUntilFailure = -1;

constexpr std::size_t nDefaultAlignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__;

void* Take(std::size_t nBytes, std::size_t nAlignment, bool bArray) {
    const bool bOrderedToFail = g_nUntilFailure >= 0 && g_nUntilFailure-- == 0;
    if (bOrderedToFail || nBytes > PTRDIFF_MAX) {
        throw std::bad_alloc();
    }
    void* p = nullptr;
    if (posix_memalign(&p, nAlignment, nBytes != 0 ? nBytes : 1) != 0) {
        throw std::bad_alloc();
    }
    if (g_bOpen) {
        if (g_nBlocks == g_blocks.size()) {
            std::abort();
        }
        g_blocks[g_nBlocks++] = {p, nBytes, bArray, true};
    }
    return p;
}

void* TryToTake(std::size_t nBytes, bool bArray) noexcept {
    try {
        return Take(nBytes, nDefaultAlignment, bArray);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void Give(void* p, bool bArray) noexcept {
    if (g_bOpen && p != nullptr) {
        g_nReleases += bArray ? 1 : 0;
        for (std::size_t i = g_nBlocks; i-- > 0;) {
            if (g_blocks[i].m_bLive && g_blocks[i].m_p == p) {
                g_blocks[i].m_bLive = false;
                break;
            }
        }
    }
    std::free(p);
}

/// Keeps the log closed while its own answers are put together.
class Closed {
public:
    Closed() { g_bOpen = false; }
    Closed(const Closed&) = delete;
    Closed& operator=(const Closed&) = delete;
    ~Closed() { g_bOpen = m_bWasOpen; }

private:
    bool m_bWasOpen = g_bOpen;
};

std::vector<std::size_t> Sizes(bool bArray) {
    const Closed closed;
    std::vector<std::size_t> sizes;
    for (std::size_t i = 0; i < g_nBlocks; ++i) {
        if (g_blocks[i].m_bArray == bArray) {
            sizes.push_back(g_blocks[i].m_nBytes);
        }
    }
    return sizes;
}

}  // namespace

void* operator new(std::size_t nBytes) { return Take(nBytes, nDefaultAlignment, false); }
void* operator new[](std::size_t nBytes) { return Take(nBytes, nDefaultAlignment, true); }
void* operator new(std::size_t nBytes, std::align_val_t nAlignment) {
    return Take(nBytes, static_cast<std::size_t>(nAlignment), false);
}
void* operator new[](std::size_t nBytes, std::align_val_t nAlignment) {
    return Take(nBytes, static_cast<std::size_t>(nAlignment), true);
}
void* operator new(std::size_t nBytes, const std::nothrow_t&) noexcept { return TryToTake(nBytes, false); }
void* operator new[](std::size_t nBytes, const std::nothrow_t&) noexcept { return TryToTake(nBytes, true); }
void operator delete(void* p) noexcept { Give(p, false); }
void operator delete[](void* p) noexcept { Give(p, true); }
void operator delete(void* p, const std::nothrow_t&) noexcept { Give(p, false); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { Give(p, true); }
void operator delete(void* p, std::size_t) noexcept { Give(p, false); }
void operator delete[](void* p, std::size_t) noexcept { Give(p, true); }
void operator delete(void* p, std::align_val_t) noexcept { Give(p, false); }
void operator delete[](void* p, std::align_val_t) noexcept { Give(p, true); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { Give(p, false); }
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept { Give(p, true); }

AllocationLog::AllocationLog() {
    if (g_bOpen) {
        std::abort();
    }
    g_nBlocks = 0;
    g_nReleases = 0;
    g_bOpen = true;
}

AllocationLog::~AllocationLog() { g_bOpen = false; }

std::vector<std::size_t> AllocationLog::Arrays() const { return Sizes(true); }
std::vector<std::size_t> AllocationLog::Singles() const { return Sizes(false); }
long AllocationLog::Releases() const { return g_nReleases; }

std::size_t AllocationLog::LiveArrayBytes() const {
    std::size_t nBytes = 0;
    for (std::size_t i = 0; i < g_nBlocks; ++i) {
        nBytes += g_blocks[i].m_bArray && g_blocks[i].m_bLive ? g_blocks[i].m_nBytes : 0;
    }
    return nBytes;
}

FailingAllocation::FailingAllocation(long nAllocation) { g_nUntilFailure = nAllocation; }
FailingAllocation::~FailingAllocation() { g_nUntilFailure = -1; }

void Use(const void*) {}
