// Where a class keeps its virtual operations and its fields, read off without calling anything.
#pragma once

#include <cstddef>
#include <cstring>

/// Slot of a virtual member function in the virtual table, counted from 0: the common C++ ABI keeps 1 + its
/// offset in the pointer to it.
template <class Function>
long SlotOf(Function pfn) {
    static_assert(sizeof(pfn) == 2 * sizeof(std::ptrdiff_t));
    std::ptrdiff_t words[2];
    std::memcpy(words, &pfn, sizeof(words));
    constexpr std::ptrdiff_t nVirtual = 1;
    if ((words[0] & nVirtual) == 0) return -1;
    return (words[0] - nVirtual) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

/// Offset of a field in its object.
template <class Object, class Field>
long OffsetOf(const Object& object, const Field& field) {
    return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&object);
}
