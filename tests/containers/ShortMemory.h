// A C allocator that can be told to run out. A program that uses it links ShortMemory.cpp with
// -Wl,--wrap=realloc,--wrap=free.
#pragma once

/// Makes every realloc of the program's own code from number nFirst on (0 is the next one) answer null while
/// it lives.
class ShortMemory {
public:
    explicit ShortMemory(long nFirst = 0);
    ShortMemory(const ShortMemory&) = delete;
    ShortMemory& operator=(const ShortMemory&) = delete;
    ~ShortMemory();

    /// Whether memory has been refused.
    bool HasRefused() const;
};

/// Blocks that the program's own code has had from realloc and has not given back to free.
long ReallocatedBlocks();
