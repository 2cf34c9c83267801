#include "AllocationLog.h"

#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

struct Block {
    void* m_p;
    std::size_t m_nBytes;
    bool m_bArray;
    bool m_bLive;
};

struct Release {
    void* m_p;
    bool m_bArray;
    bool m_bUnsized;
};

// The log must not allocate while it records.
std::array<Block, 65536> g_blocks;
std::size_t g_nBlocks = 0;
std::array<Release, 65536> g_releases;
std::size_t g_nReleases = 0;
bool g_bOpen = false;
bool g_bFenced = false;
long g_nLiveBlocks = 0;

struct Extent {
    char* m_pBegin;
    char* m_pEnd;
};
std::array<Extent, 512> g_latestArrays;
std::size_t g_nArrays = 0;

constexpr std::size_t nDefaultAlignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
constexpr std::size_t nAnySize = SIZE_MAX;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool bSanitized = true;
#elif defined(__has_feature)
constexpr bool bSanitized = __has_feature(address_sanitizer);
#else
constexpr bool bSanitized = false;
#endif

// Where no sanitizer watches a block's ends, it has its size in front and a guard behind it.
struct alignas(nDefaultAlignment) Front {
    void* m_pWhole;
    std::size_t m_nBytes;
    std::size_t m_nMapped;  // 0: the whole is none of its own mappings, and has no fence
};
constexpr std::array<unsigned char, 16> guard = {0xA5, 0xC3, 0x96, 0xE1, 0xB4, 0xD2, 0x87, 0xF0,
                                                 0xA5, 0xC3, 0x96, 0xE1, 0xB4, 0xD2, 0x87, 0xF0};

void* TakeGuarded(std::size_t nBytes, std::size_t nAlignment) {
    void* pWhole = nullptr;
    if constexpr (bSanitized) {
        return posix_memalign(&pWhole, nAlignment, nBytes != 0 ? nBytes : 1) == 0 ? pWhole : nullptr;
    }
    const std::size_t nFront = std::max(nAlignment, sizeof(Front));
    if (posix_memalign(&pWhole, nAlignment, nFront + nBytes + guard.size()) != 0) {
        return nullptr;
    }
    char* const p = static_cast<char*>(pWhole) + nFront;
    const Front front = {pWhole, nBytes, 0};
    std::memcpy(p - sizeof(Front), &front, sizeof(Front));
    std::memcpy(p + nBytes, guard.data(), guard.size());
    return p;
}

void* TakeFenced(std::size_t nBytes) {
    constexpr std::size_t nPage = 4096;
    const std::size_t nRoom = (nBytes + nDefaultAlignment - 1) / nDefaultAlignment * nDefaultAlignment;
    const std::size_t nOpen = (sizeof(Front) + nRoom + nPage - 1) / nPage * nPage;
    const std::size_t nMapped = nOpen + nPage;
    void* const pWhole = mmap(nullptr, nMapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pWhole == MAP_FAILED) {
        return nullptr;
    }
    char* const pFence = static_cast<char*>(pWhole) + nOpen;
    mprotect(pFence, nPage, PROT_NONE);
    char* const p = pFence - nRoom;
    const Front front = {pWhole, nBytes, nMapped};
    std::memcpy(p - sizeof(Front), &front, sizeof(Front));
    return p;
}

void GiveGuarded(void* p, std::size_t nBytes) {
    if constexpr (bSanitized) {
        std::free(p);
        return;
    }
    Front front = {};
    std::memcpy(&front, static_cast<char*>(p) - sizeof(Front), sizeof(Front));
    if (nBytes != nAnySize && nBytes != front.m_nBytes) {
        std::fprintf(stderr, "A block of %zu bytes is given back as one of %zu\n", front.m_nBytes, nBytes);
        std::abort();
    }
    if (front.m_nMapped != 0) {
        munmap(front.m_pWhole, front.m_nMapped);
        return;
    }
    if (std::memcmp(static_cast<char*>(p) + front.m_nBytes, guard.data(), guard.size()) != 0) {
        std::fprintf(stderr, "Something was written behind a block of %zu bytes\n", front.m_nBytes);
        std::abort();
    }
    std::free(front.m_pWhole);
}

void* Take(std::size_t nBytes, std::size_t nAlignment, bool bArray) {
    if (FaultAt::IsDue(FaultKind::Allocation) || nBytes > PTRDIFF_MAX) {
        throw std::bad_alloc();
    }
    const bool bFenced = g_bFenced && bArray && !bSanitized;
    void* const p = bFenced ? TakeFenced(nBytes) : TakeGuarded(nBytes, nAlignment);
    if (p == nullptr) {
        throw std::bad_alloc();
    }
    ++g_nLiveBlocks;
    if (bArray) {
        g_latestArrays[g_nArrays++ % g_latestArrays.size()] = {static_cast<char*>(p),
                                                               static_cast<char*>(p) + nBytes};
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

void Give(void* p, bool bArray, bool bUnsized, std::size_t nBytes = nAnySize) noexcept {
    if (p == nullptr) {
        return;
    }
    --g_nLiveBlocks;
    if (g_bOpen) {
        if (g_nReleases == g_releases.size()) {
            std::abort();
        }
        g_releases[g_nReleases++] = {p, bArray, bUnsized};
        for (std::size_t i = g_nBlocks; i-- > 0;) {
            if (g_blocks[i].m_bLive && g_blocks[i].m_p == p) {
                g_blocks[i].m_bLive = false;
                break;
            }
        }
    }
    GiveGuarded(p, nBytes);
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

std::size_t LiveBytesOf(bool bArraysOnly) {
    std::size_t nBytes = 0;
    for (std::size_t i = 0; i < g_nBlocks; ++i) {
        nBytes += g_blocks[i].m_bLive && (g_blocks[i].m_bArray || !bArraysOnly) ? g_blocks[i].m_nBytes : 0;
    }
    return nBytes;
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
void operator delete(void* p) noexcept { Give(p, false, true); }
void operator delete[](void* p) noexcept { Give(p, true, false); }
void operator delete(void* p, const std::nothrow_t&) noexcept { Give(p, false, false); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { Give(p, true, false); }
void operator delete(void* p, std::size_t nBytes) noexcept { Give(p, false, false, nBytes); }
void operator delete[](void* p, std::size_t nBytes) noexcept { Give(p, true, false, nBytes); }
void operator delete(void* p, std::align_val_t) noexcept { Give(p, false, false); }
void operator delete[](void* p, std::align_val_t) noexcept { Give(p, true, false); }
void operator delete(void* p, std::size_t nBytes, std::align_val_t) noexcept {
    Give(p, false, false, nBytes);
}
void operator delete[](void* p, std::size_t nBytes, std::align_val_t) noexcept {
    Give(p, true, false, nBytes);
}

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
long AllocationLog::Allocations() const { return static_cast<long>(g_nBlocks); }

long AllocationLog::Releases() const {
    return std::count_if(g_releases.begin(), g_releases.begin() + static_cast<std::ptrdiff_t>(g_nReleases),
                         [](const Release& release) { return release.m_bArray; });
}

Deallocations AllocationLog::GivenBack() const {
    const Closed closed;
    Deallocations givenBack;
    for (std::size_t i = 0; i < g_nReleases; ++i) {
        (g_releases[i].m_bUnsized ? givenBack.m_unsized : givenBack.m_others).push_back(g_releases[i].m_p);
    }
    return givenBack;
}

std::size_t AllocationLog::LiveBytes() const { return LiveBytesOf(false); }
std::size_t AllocationLog::LiveArrayBytes() const { return LiveBytesOf(true); }

FencedArrays::FencedArrays() { g_bFenced = true; }
FencedArrays::~FencedArrays() { g_bFenced = false; }

long LiveBlocks() { return g_nLiveBlocks; }

std::size_t RoomAt(const void* p) {
    for (std::size_t i = 0; i < g_latestArrays.size() && i < g_nArrays; ++i) {
        const Extent& extent = g_latestArrays[(g_nArrays - 1 - i) % g_latestArrays.size()];
        if (extent.m_pBegin <= p && p < extent.m_pEnd) {
            return static_cast<std::size_t>(extent.m_pEnd - static_cast<const char*>(p));
        }
    }
    return 0;
}

void Use(const void*) {}
