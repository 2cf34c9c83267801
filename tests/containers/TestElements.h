// The elements that the container tests are made with, and short ways to fill a container and to read one
// back.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <stdexcept>
#include <vector>

/// An object for the owning containers: it has a name, counts the living and remembers who died.
class Owned {
public:
    explicit Owned(long nId) : m_nId(nId) { ++s_nLive; }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    virtual ~Owned() {
        --s_nLive;
        s_destroyed.push_back(m_nId);
    }

    friend bool operator<(const Owned& a, const Owned& b) { return a.m_nId < b.m_nId; }
    friend bool operator>(const Owned& a, const Owned& b) { return a.m_nId > b.m_nId; }

    long m_nId;

    inline static long s_nLive = 0;
    inline static std::vector<long> s_destroyed;
};

/// Watches the objects of type Owned from its construction on.
class OwnedWatch {
public:
    /// Makes room first: an object may be destroyed while allocations are ordered to fail.
    OwnedWatch() {
        Owned::s_destroyed.clear();
        Owned::s_destroyed.reserve(1024);
    }

    /// How many more are alive than at the start.
    long Live() const { return Owned::s_nLive - m_nLiveAtStart; }

    /// Ids of the objects destroyed since, in that order.
    const std::vector<long>& Destroyed() const { return Owned::s_destroyed; }

private:
    const long m_nLiveAtStart = Owned::s_nLive;
};

/// A value that counts its living and its copies, and throws when it is copied once too often.
class Fragile {
public:
    Fragile(long nId = 0) : m_nId(nId) { ++s_nLive; }
    Fragile(const Fragile& other) : m_nId(other.m_nId) {
        CountCopy();
        ++s_nLive;
    }
    Fragile& operator=(const Fragile& other) {
        CountCopy();
        m_nId = other.m_nId;
        return *this;
    }
    ~Fragile() { --s_nLive; }

    friend bool operator==(const Fragile& a, const Fragile& b) { return a.m_nId == b.m_nId; }
    friend bool operator>(const Fragile& a, const Fragile& b) { return a.m_nId > b.m_nId; }
    friend bool operator<(const Fragile& a, const Fragile& b) { return a.m_nId < b.m_nId; }
    friend std::ostream& operator<<(std::ostream& os, const Fragile& x) {
        return os << "Fragile " << x.m_nId;
    }

    long m_nId;

    inline static long s_nLive = 0;
    inline static long s_nCopies = 0;
    inline static long s_nCopiesLeft = -1;  // this many more succeed, the next throws; negative: all succeed

private:
    static void CountCopy() {
        if (s_nCopiesLeft == 0) {
            throw std::runtime_error("one copy too many");
        }
        --s_nCopiesLeft;
        ++s_nCopies;
    }
};

/// Allows so many copies of Fragile while it lives; without an argument any number. Counts them and the
/// living.
class FragileWatch {
public:
    explicit FragileWatch(long nCopiesAllowed = -1) {
        Fragile::s_nCopies = 0;
        Allow(nCopiesAllowed);
    }
    FragileWatch(const FragileWatch&) = delete;
    FragileWatch& operator=(const FragileWatch&) = delete;
    ~FragileWatch() { Fragile::s_nCopiesLeft = -1; }

    void Allow(long nCopies) { Fragile::s_nCopiesLeft = nCopies; }
    long Copies() const { return Fragile::s_nCopies; }
    long Live() const { return Fragile::s_nLive - m_nLiveAtStart; }

private:
    const long m_nLiveAtStart = Fragile::s_nLive;
};

/// An element with no ordering of its own.
struct Unordered {
    long m_nKey;

    friend bool operator==(const Unordered& a, const Unordered& b) { return a.m_nKey == b.m_nKey; }
    friend std::ostream& operator<<(std::ostream& os, const Unordered& x) { return os << x.m_nKey; }
};

/// An element whose operators take objects that are not const.
struct NonConstOrdered {
    long m_nKey;

    bool operator>(NonConstOrdered& other) { return m_nKey > other.m_nKey; }
    bool operator<(NonConstOrdered& other) { return m_nKey < other.m_nKey; }

    friend bool operator==(const NonConstOrdered& a, const NonConstOrdered& b) {
        return a.m_nKey == b.m_nKey;
    }
    friend std::ostream& operator<<(std::ostream& os, const NonConstOrdered& x) { return os << x.m_nKey; }
};

/// An element that orders by its key alone; the tag tells equal keys apart.
struct Keyed {
    long m_nKey;
    long m_nTag;

    friend bool operator>(const Keyed& a, const Keyed& b) { return a.m_nKey > b.m_nKey; }
    friend bool operator<(const Keyed& a, const Keyed& b) { return a.m_nKey < b.m_nKey; }
    friend bool operator==(const Keyed& a, const Keyed& b) {
        return a.m_nKey == b.m_nKey && a.m_nTag == b.m_nTag;
    }
    friend std::ostream& operator<<(std::ostream& os, const Keyed& x) {
        return os << x.m_nKey << '#' << x.m_nTag;
    }
};

/// An element that plain array new would misplace.
struct alignas(64) Overaligned {
    long m_nId;

    bool IsAligned() const { return reinterpret_cast<std::uintptr_t>(this) % alignof(Overaligned) == 0; }
};

/// Appends the values.
template <class Container>
void Fill(Container& container, std::initializer_list<typename Container::value_type> values) {
    for (const auto& value : values) {
        container.Append(value);
    }
}

/// The id that stands for a null element.
constexpr long nNullId = -1;

/// Appends a new object for each id, null for nNullId.
template <class Container>
void Adopt(Container& container, std::initializer_list<long> ids) {
    for (const long nId : ids) {
        container.Append(nId == nNullId ? nullptr : new Owned(nId));
    }
}

/// The objects' ids in order, nNullId for a null element.
template <class Container>
std::vector<long> Ids(const Container& container) {
    std::vector<long> ids;
    for (const Owned* p : container) {
        ids.push_back(p == nullptr ? nNullId : p->m_nId);
    }
    return ids;
}
