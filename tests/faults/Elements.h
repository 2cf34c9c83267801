// Elements and objects that may throw wherever an application's could.
#pragma once

#include <string>

#include "EveryOperation.h"
#include "VexaBase/containers/KyDynArray.h"

/// A value: its making, copying, assigning and comparing are fault points.
class Value : Counted {
public:
    Value(long n = 0) : m_n(n) { FaultAt::Pass(FaultKind::Element); }
    Value(const Value& other) : Counted(other), m_n(other.m_n) { FaultAt::Pass(FaultKind::Element); }
    Value& operator=(const Value& other) {
        FaultAt::Pass(FaultKind::Element);
        m_n = other.m_n;
        return *this;
    }

    static int Compare(const Value& a, const Value& b) {
        FaultAt::Pass(FaultKind::Comparison);
        return static_cast<int>(a.m_n - b.m_n);
    }
    friend bool operator<(const Value& a, const Value& b) { return Compare(a, b) < 0; }
    friend bool operator>(const Value& a, const Value& b) { return Compare(a, b) > 0; }

    long m_n;
};

inline std::string Word(const Value& value) { return std::to_string(value.m_n) + " "; }

inline std::string Word(long n) { return std::to_string(n) + " "; }

/// An object for the owning containers: comparing it is a fault point.
class Object : Counted {
public:
    explicit Object(long n = 0) : m_n(n) {}
    virtual ~Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    int Cmp(const Object& other) const { return Compare(*this, other); }
    static int Compare(const Object& a, const Object& b) {
        FaultAt::Pass(FaultKind::Comparison);
        return static_cast<int>(a.m_n - b.m_n);
    }
    static int ComparePointers(Object* const& a, Object* const& b) { return Compare(*a, *b); }
    friend bool operator<(const Object& a, const Object& b) { return Compare(a, b) < 0; }
    friend bool operator>(const Object& a, const Object& b) { return Compare(a, b) > 0; }

    long m_n;
};

inline std::string Word(const Object* p) { return p == nullptr ? "null " : std::to_string(p->m_n) + " "; }

/// Whether a growth has failed: the capacity is raised, and the block, if any, the old one.
template <class T>
bool IsLost(const KyDynArray<T>& array) {
    return RoomAt(array.m_pData) < static_cast<std::size_t>(array.m_nCapacity) * sizeof(T);
}

/// The elements of any container, in order.
template <class Container>
std::string WordsOf(const Container& container) {
    std::string words;
    for (const auto& element : container) {
        words += Word(element);
    }
    return words;
}
