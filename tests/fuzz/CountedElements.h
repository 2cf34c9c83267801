// Elements for the container targets: they count their living, and throw from a copy or a comparison on order.
#pragma once

#include <cstddef>

/// What an ordered fault throws.
struct Fault {};

/// Makes the n-th copy or comparison of elements from now on throw, unless this ends before; 0: none.
class OrderedFault {
public:
    explicit OrderedFault(long n) { s_nLeft = n; }
    OrderedFault(const OrderedFault&) = delete;
    OrderedFault& operator=(const OrderedFault&) = delete;
    ~OrderedFault() { s_nLeft = 0; }

    static void Pass() {
        if (s_nLeft > 0 && --s_nLeft == 0) throw Fault();
    }

private:
    inline static long s_nLeft = 0;
};

/// What tells elements apart. They order by the key.
struct Label {
    long m_nKey = 0;
    long m_nTag = 0;

    friend bool operator==(const Label& a, const Label& b) {
        return a.m_nKey == b.m_nKey && a.m_nTag == b.m_nTag;
    }
    friend bool operator!=(const Label& a, const Label& b) { return !(a == b); }
};

/// A value.
class Element {
public:
    Element(const Label& label = {}) : m_label(label) { ++s_nLive; }
    Element(const Element& other) : m_label(Copied(other)) { ++s_nLive; }
    Element& operator=(const Element& other) {
        m_label = Copied(other);
        return *this;
    }
    ~Element() { --s_nLive; }

    static int Compare(const Element& a, const Element& b) {
        OrderedFault::Pass();
        return static_cast<int>(a.m_label.m_nKey - b.m_label.m_nKey);
    }
    friend bool operator<(const Element& a, const Element& b) { return Compare(a, b) < 0; }
    friend bool operator>(const Element& a, const Element& b) { return Compare(a, b) > 0; }

    Label m_label;

    inline static long s_nLive = 0;

private:
    static const Label& Copied(const Element& other) {
        OrderedFault::Pass();
        return other.m_label;
    }
};

/// An object for the owning containers.
class Object {
public:
    explicit Object(const Label& label) : m_label(label) { ++s_nLive; }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() { --s_nLive; }

    int Cmp(const Object& other) const { return Compare(*this, other); }
    static int Compare(const Object& a, const Object& b) {
        OrderedFault::Pass();
        return static_cast<int>(a.m_label.m_nKey - b.m_label.m_nKey);
    }
    friend bool operator<(const Object& a, const Object& b) { return Compare(a, b) < 0; }
    friend bool operator>(const Object& a, const Object& b) { return Compare(a, b) > 0; }

    const Label m_label;

    inline static long s_nLive = 0;
};
