// The state of the heap between two timed runs.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdlib>

/// Has the C library merge what has been freed, which it would otherwise do during some later allocation that
/// is timed. As in a new program, free memory is then in one piece.
inline void MergeFreeMemory() {
    constexpr std::size_t nLarge = 1 << 16;
    void* const p = std::malloc(nLarge);
    benchmark::DoNotOptimize(p);
    std::free(p);
}
