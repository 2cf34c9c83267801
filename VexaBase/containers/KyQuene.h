// First-in first-out queues over lists: the interface (KyQuene), a queue of values (KyListQuene) and a queue
// that owns heap objects (KyPDListQuene). The spelling is the interface's own.
//
// A queue keeps its entries in a list of its own, head first, and uses that list's cursor freely.
// m_nMaxLength bounds what EnQuene accepts; a negative bound is none. The concrete queues ask for their
// length through the virtual GetLength, so a derived queue that redefines it changes what the other
// operations see.
#pragma once

#include "VexaBase/KyConfig.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"

template <class T>
class KY_API KyQuene {
public:
    /// An unbounded queue.
    KyQuene() : KyQuene(-1) {}

    /// A queue of at most nMaxLength entries; negative: unbounded.
    explicit KyQuene(long nMaxLength) : m_nMaxLength(nMaxLength) {}
    KyQuene(const KyQuene&) = delete;
    KyQuene& operator=(const KyQuene&) = delete;

    /// Empties the queue.
    virtual void Reset() = 0;

    /// Number of entries.
    virtual long GetLength() = 0;

    /// Entry i, counted from the head. Grows the queue to i + 1 default entries when i is past the tail,
    /// whatever the bound.
    virtual T& operator[](long i) = 0;

    /// Copies the head into `out`; false, and `out` untouched, when the queue is empty.
    virtual bool GetHeadData(T& out) = 0;

    /// Copies the tail into `out`; false, and `out` untouched, when the queue is empty.
    virtual bool GetTailData(T& out) = 0;

    /// Adds x at the tail; false, and nothing added, when the queue is full.
    virtual bool EnQuene(const T& x) = 0;

    /// Moves the head out of the queue into `out`; false, and `out` untouched, when the queue is empty.
    virtual bool DeQuene(T& out) = 0;

    virtual ~KyQuene() = default;

    long m_nMaxLength;  // most entries that EnQuene accepts; negative: no limit
};

/// What the two concrete queues share: a queue of T over a List of T.
template <class T, class List>
class KY_API KyQueneOver : public KyQuene<T> {
public:
    using value_type = T;
    using iterator = typename List::iterator;
    using const_iterator = typename List::const_iterator;

    /// An unbounded queue.
    KyQueneOver() : KyQueneOver(-1) {}

    /// A queue of at most nMaxLength entries; negative: unbounded.
    explicit KyQueneOver(long nMaxLength) : KyQuene<T>(nMaxLength) {}

    /// Empties the queue, as its list's Reset does. O(length).
    void Reset() override { m_list.Reset(); }
    /// Number of entries. O(1).
    long GetLength() override { return m_list.GetLength(); }

    /// O(distance from the entry used last). A negative i gives the sentinel's slot, which is no entry.
    T& operator[](long i) override {
        if (i < 0) {
            m_list.MoveTo(-1);
            return m_list.m_pHead->m_data;
        }
        return m_list[i];
    }

    /// Copies the head into `out`; false, and `out` untouched, when the queue is empty. O(1).
    bool GetHeadData(T& out) override {
        if (this->GetLength() == 0) {
            return false;
        }
        m_list.MoveToFirst();
        out = m_list.GetCurData();
        return true;
    }

    /// Copies the tail into `out`; false, and `out` untouched, when the queue is empty. O(1).
    bool GetTailData(T& out) override {
        if (this->GetLength() == 0) {
            return false;
        }
        m_list.MoveToLast();
        out = m_list.GetCurData();
        return true;
    }

    /// O(1).
    bool EnQuene(const T& x) override {
        if (this->m_nMaxLength >= 0 && this->GetLength() >= this->m_nMaxLength) {
            return false;
        }
        m_list.MoveToLast();
        m_list.InsertAfterCur(x);
        return true;
    }

    iterator begin() { return m_list.begin(); }
    iterator end() { return m_list.end(); }
    const_iterator begin() const { return m_list.begin(); }
    const_iterator end() const { return m_list.end(); }

    List m_list;  // the entries, head first
};

/// A queue of values in a singly linked list.
template <class T>
class KY_API KyListQuene : public KyQueneOver<T, KyList<T>> {
public:
    /// An unbounded queue.
    KyListQuene() : KyListQuene(-1) {}

    /// A queue of at most nMaxLength entries; negative: unbounded.
    explicit KyListQuene(long nMaxLength) : KyQueneOver<T, KyList<T>>(nMaxLength) {}

    /// O(1).
    bool DeQuene(T& out) override {
        if (this->GetLength() == 0) {
            return false;
        }
        this->m_list.MoveToFirst();
        out = this->m_list.GetCurData();
        this->m_list.DelCur();
        return true;
    }
};

/// A queue of heap objects that it owns: EnQuene takes an object over, DeQuene hands it to the caller, Reset
/// and the destructor delete those still queued. A null entry means no object.
template <class T>
class KY_API KyPDListQuene : public KyQueneOver<T*, KyPDList<T>> {
public:
    /// An unbounded queue.
    KyPDListQuene() : KyPDListQuene(-1) {}

    /// A queue of at most nMaxLength entries; negative: unbounded.
    explicit KyPDListQuene(long nMaxLength) : KyQueneOver<T*, KyPDList<T>>(nMaxLength) {}

    /// The caller owns the object from now on. O(1).
    bool DeQuene(T*& out) override {
        if (this->GetLength() == 0) {
            return false;
        }
        this->m_list.MoveToFirst();
        out = this->m_list.GetCurData();
        this->m_list.SetCurData(nullptr);
        this->m_list.DelCur();
        return true;
    }
};
