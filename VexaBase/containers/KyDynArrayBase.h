// The container protocol: one cursor-based interface that every array and list of the library implements.
//
// A container carries one current position, the cursor. Most editing happens at the cursor; the positional
// operations (Insert, InsertHead, Append, operator[], Move) are cursor moves followed by cursor operations,
// all called through the virtual interface, so that a derived container's overrides take part. GetFirst,
// GetNext, GetPre, GetLast and GetAt walk by element address and leave the cursor alone, and so do the ranges
// begin() and end().
//
// Invariants:
//   (1) the cursor designates an element only while 0 <= m_nCurIndex < m_nLength; nothing in this class keeps
//       it there, and it is the caller's test of that range that ends a loop
//   (2) a new or reset container has m_nLength 0 and m_nCurIndex -1
//   (3) moving the cursor never changes m_nLength
//
// Elements are held by value. A container of pointers does not own what they point to, the owning kinds
// excepted. A container and its cursor belong to one thread at a time: even operator[] moves the cursor.
#pragma once

#include <cstddef>
#include <functional>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>

#include "VexaBase/KyConfig.h"

/// The element type's own order, as Sort(bool) uses it: its operator> and operator<, raw pointers by address.
/// A type that lacks the operator is still an element type: no pair of it is out of order.
template <class T>
class KyElementOrder {
public:
    /// True when a belongs behind b in ascending order.
    static bool IsGreater(T& a, T& b) {
        if constexpr (std::is_pointer_v<T>) {
            return std::greater<T>()(a, b);
        } else if constexpr (HasGreater<T>::value) {
            return static_cast<bool>(a > b);
        } else {
            return false;
        }
    }

    /// True when a belongs behind b in descending order.
    static bool IsLess(T& a, T& b) {
        if constexpr (std::is_pointer_v<T>) {
            return std::less<T>()(a, b);
        } else if constexpr (HasLess<T>::value) {
            return static_cast<bool>(a < b);
        } else {
            return false;
        }
    }

    /// True when Sort(bAscending) has an order to sort by. Ask it inside a function body, where T is
    /// complete.
    static constexpr bool IsOrdered(bool bAscending) {
        return std::is_pointer_v<T> || (bAscending ? HasGreater<T>::value : HasLess<T>::value);
    }

private:
    template <class U, class = void>
    struct HasGreater : std::false_type {};
    template <class U>
    struct HasGreater<U, std::void_t<decltype(static_cast<bool>(std::declval<U&>() > std::declval<U&>()))>>
        : std::true_type {};

    template <class U, class = void>
    struct HasLess : std::false_type {};
    template <class U>
    struct HasLess<U, std::void_t<decltype(static_cast<bool>(std::declval<U&>() < std::declval<U&>()))>>
        : std::true_type {};
};

/// True for a pointer, or a lambda that turns into one, that is not a comparison function of any of the given
/// types: passed to Sort it would silently become Sort(bool), so that overload is deleted.
template <class F, class... Comparisons>
struct KyIsWrongComparison {
    template <class U, class = void>
    struct IsPointer : std::false_type {};
    template <class U>
    struct IsPointer<U, std::void_t<decltype(+std::declval<U&>())>>
        : std::is_pointer<decltype(+std::declval<U&>())> {};

    /// Whether F is a pointer at all, or turns into one.
    static constexpr bool bAnyPointer = IsPointer<F>::value || std::is_member_pointer_v<F>;
    /// Whether F is a pointer, and to no comparison of the given types.
    static constexpr bool value = bAnyPointer && !(std::is_convertible_v<F, Comparisons> || ...);
};

/// Undoes something at the end of its scope unless it is dismissed, as a catch block that throws on would. (That would
/// keep the containers from programs that are compiled without exceptions.)
template <class Undo>
class KyUndo {
public:
    /// Does so by calling `undo`, which must not throw.
    explicit KyUndo(Undo undo) : m_undo(undo) {}
    KyUndo(const KyUndo&) = delete;
    KyUndo& operator=(const KyUndo&) = delete;
    ~KyUndo() {
        if (m_bWanted) {
            m_undo();
        }
    }

    /// What was done stays.
    void Dismiss() { m_bWanted = false; }

private:
    Undo m_undo;
    bool m_bWanted = true;
};

/// Forward iterator over any container of the protocol, by GetNext. It does not touch the cursor.
template <class T, class Element>
class KyProtocolIterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = std::remove_const_t<Element>;
    using difference_type = std::ptrdiff_t;
    using pointer = Element*;
    using reference = Element&;

    KyProtocolIterator() = default;
    /// Stands at an element of the container; null is the end.
    KyProtocolIterator(const T* pContainer, Element* pElement)
        : m_pContainer(pContainer), m_pElement(pElement) {}
    /// A const iterator is made from any other.
    template <class U, class = std::enable_if_t<!std::is_const_v<U> && std::is_same_v<const U, Element>>>
    KyProtocolIterator(const KyProtocolIterator<T, U>& other)
        : m_pContainer(other.m_pContainer), m_pElement(other.m_pElement) {}

    reference operator*() const { return *m_pElement; }
    pointer operator->() const { return m_pElement; }
    KyProtocolIterator& operator++() {
        m_pElement = m_pContainer->GetNext(m_pElement);
        return *this;
    }
    KyProtocolIterator operator++(int) {
        KyProtocolIterator before = *this;
        ++*this;
        return before;
    }

    friend bool operator==(const KyProtocolIterator& a, const KyProtocolIterator& b) {
        return a.m_pElement == b.m_pElement;
    }
    friend bool operator!=(const KyProtocolIterator& a, const KyProtocolIterator& b) { return !(a == b); }

private:
    template <class C, class E>
    friend class KyProtocolIterator;

    const T* m_pContainer = nullptr;
    Element* m_pElement = nullptr;
};

template <class T>
class KY_API KyDynArrayBase {
public:
    using value_type = T;
    using size_type = long;
    using difference_type = std::ptrdiff_t;
    using reference = T&;
    using const_reference = const T&;
    using iterator = KyProtocolIterator<KyDynArrayBase, T>;
    using const_iterator = KyProtocolIterator<KyDynArrayBase, const T>;

    KyDynArrayBase() = default;
    KyDynArrayBase(const KyDynArrayBase&) = delete;
    KyDynArrayBase& operator=(const KyDynArrayBase&) = delete;

    // The virtual operations stand in the order of their slots, which derived classes and their callers rely
    // on.

    /// Makes the container n elements long; what new elements hold, and whether it shrinks, is each
    /// container's rule.
    virtual void ReAllocate(long n) = 0;

    virtual ~KyDynArrayBase() = default;

    /// Makes the container n elements long. With bKeep the first min(old length, n) elements survive.
    virtual void SetLength(long n, bool bKeep) = 0;

    /// Removes every element: length 0, cursor -1.
    virtual void Reset() {
        while (m_nLength != 0) {
            MoveToLast();
            DelCur();
        }
        m_nCurIndex = -1;
    }

    /// The current element. Requires a current element.
    virtual T& GetCurData() = 0;

    /// Assigns x to the current element. Requires a current element.
    virtual void SetCurData(const T& x) = 0;

    /// Cursor to index 0.
    virtual void MoveToFirst() { m_nCurIndex = 0; }

    /// Cursor to the next index; past the last element it is out of range, which is what ends a loop.
    virtual void MoveToNext() { ++m_nCurIndex; }

    /// Cursor to the previous index.
    virtual void MoveToPre() { --m_nCurIndex; }

    /// Cursor to the last element, -1 when the container is empty.
    virtual void MoveToLast() { m_nCurIndex = m_nLength - 1; }

    /// Cursor to index i, unchecked.
    virtual void MoveTo(long i) { m_nCurIndex = i; }

    /// Element i. Moves the cursor to i, and first lengthens the container to i + 1 elements when i is past
    /// the end. Requires i >= 0.
    virtual T& operator[](long i) {
        if (i >= m_nLength) {
            ReAllocate(i + 1);
        }
        MoveTo(i);
        return GetCurData();
    }

    /// Address of the first element, null when empty. The cursor stays.
    virtual T* GetFirst() const = 0;

    /// Address of the element behind the one at p; null when p is null or the last. The cursor stays.
    virtual T* GetNext(const T* p) const = 0;

    /// Address of the element before the one at p; null when p is null or the first. The cursor stays.
    virtual T* GetPre(const T* p) const = 0;

    /// Address of the last element, null when empty. The cursor stays.
    virtual T* GetLast() const = 0;

    /// Address of element i. The cursor stays. Requires an index inside the container.
    virtual T* GetAt(long i) const = 0;

    /// Inserts x in front of the current element; the cursor then designates x.
    virtual void InsertCur(const T& x) = 0;

    /// Inserts x at index i; i = length appends. The cursor ends on x.
    virtual void Insert(long i, const T& x) {
        MoveTo(i);
        InsertCur(x);
    }

    /// Inserts x in front of the first element. The cursor ends on x.
    virtual void InsertHead(const T& x) {
        MoveToFirst();
        InsertCur(x);
    }

    /// Inserts x behind the last element. The cursor ends on x; returns its index.
    virtual long Append(const T& x) {
        MoveTo(m_nLength);
        InsertCur(x);
        return m_nCurIndex;
    }

    /// Removes the current element. The cursor steps back by one. Requires a current element.
    virtual void DelCur() = 0;

    /// Sorts by the elements' operator> (ascending) or operator< (descending), stably; raw pointers by
    /// address. Leaves a type without these operators as it is.
    virtual void Sort(bool bAscending) = 0;

    /// Sorts by a three-way comparison, stably: a positive result puts the first argument behind the second.
    virtual void Sort(int (*pfnCompare)(const T&, const T&)) = 0;

    /// Moves element `from` in front of the element at `to`; to = length moves it to the end. The cursor ends
    /// on it. False, and nothing changes, when it stands there already (to is from or from + 1).
    ///
    /// The element is handed to Insert by reference. Where the insertion shifts elements (KyDynArray), a move
    /// towards the front therefore inserts the element that stood before it, deliberately: Move(2, 0) on [A,
    /// B, C, D] gives [B, A, B, D]. Lists and the owning array move exactly. Requires both positions inside
    /// the container.
    virtual bool Move(long from, long to) {
        if (from == to || from == to - 1) {
            return false;
        }
        MoveTo(from);
        const T* p = std::addressof(GetCurData());
        Insert(to, *p);
        if (from > to) {
            MoveTo(from + 1);
            DelCur();
            MoveTo(to);
        } else {
            MoveTo(from);
            DelCur();
            MoveTo(to - 1);
        }
        return true;
    }

    /// A pointer that is no comparison function of this container: a compile error rather than Sort(bool).
    template <class F, class = std::enable_if_t<KyIsWrongComparison<F, int (*)(const T&, const T&)>::value>>
    void Sort(F) = delete;

    long GetLength() const { return m_nLength; }

    /// Index of the current element; -1, or an index past the end, when there is none.
    long GetCurIndex() const { return m_nCurIndex; }

    iterator begin() { return {this, GetFirst()}; }
    iterator end() { return {this, nullptr}; }
    const_iterator begin() const { return {this, GetFirst()}; }
    const_iterator end() const { return {this, nullptr}; }

    long m_nLength = 0;     // number of elements
    long m_nCurIndex = -1;  // index of the current element
};
