// Somewhere far away in the address space, for comparisons by address alone: nothing is there to be read.
#pragma once

#include <cstdint>
#include <cstring>

/// The place nObjects object sizes behind an object (before it when negative), as if an object stood there.
template <class Object>
const Object& PlaceBehind(const Object& object, long nObjects) {
    const auto nAddress =
        reinterpret_cast<std::intptr_t>(&object) + nObjects * static_cast<long>(sizeof(Object));
    const Object* pPlace = nullptr;
    std::memcpy(&pPlace, &nAddress, sizeof pPlace);
    return *pPlace;
}
