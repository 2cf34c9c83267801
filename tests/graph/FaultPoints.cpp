#include "FaultPoints.h"

#include <cstdlib>
#include <new>

namespace {

FaultKind g_kind = FaultKind::Allocation;
long g_nUntilFault = 0;  // 0: none is ordered, or it has happened
long g_nLiveBlocks = 0;

bool IsDue(FaultKind kind) { return g_nUntilFault > 0 && kind == g_kind && --g_nUntilFault == 0; }

void* Take(std::size_t nBytes) {
    if (IsDue(FaultKind::Allocation)) throw std::bad_alloc();
    void* const p = std::malloc(nBytes != 0 ? nBytes : 1);
    if (p == nullptr) throw std::bad_alloc();
    ++g_nLiveBlocks;
    return p;
}

void* TakeOrNull(std::size_t nBytes) noexcept {
    try {
        return Take(nBytes);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void Give(void* p) noexcept {
    if (p != nullptr) --g_nLiveBlocks;
    std::free(p);
}

}  // namespace

FaultAt::FaultAt(FaultKind kind, long k) {
    g_kind = kind;
    g_nUntilFault = k;
}
FaultAt::~FaultAt() { g_nUntilFault = 0; }
bool FaultAt::HasHappened() const { return g_nUntilFault == 0; }
void FaultAt::Pass(FaultKind kind) {
    if (IsDue(kind)) throw OrderedFault();
}

long LiveBlocks() { return g_nLiveBlocks; }

void* operator new(std::size_t nBytes) { return Take(nBytes); }
void* operator new[](std::size_t nBytes) { return Take(nBytes); }
void* operator new(std::size_t nBytes, const std::nothrow_t&) noexcept { return TakeOrNull(nBytes); }
void* operator new[](std::size_t nBytes, const std::nothrow_t&) noexcept { return TakeOrNull(nBytes); }
void operator delete(void* p) noexcept { Give(p); }
void operator delete[](void* p) noexcept { Give(p); }
void operator delete(void* p, std::size_t) noexcept { Give(p); }
void operator delete[](void* p, std::size_t) noexcept { Give(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { Give(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { Give(p); }
