// A list as a vector and a cursor, for whoever compares it with a list after every operation.
#pragma once

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>
#include <vector>

/// How a list is linked, as far as its cursor can tell.
enum class ModelKind { Singly, Doubly, Indexed };

/// What a list of Element must look like, where T tells the elements apart. Its cursor is kept twice, as ReverseList
/// parts the node from the index.
template <class T, class Element = T>
class ListModel {
public:
    struct Slot {
        T value;
        const Element* pAddress = nullptr;  // null until the element has been seen in the list
    };

    ModelKind kind = ModelKind::Singly;
    long nStep = 0;
    std::vector<Slot> slots;
    long nPosition = -1;  // of the node under the cursor
    long nIndex = -1;     // m_nCurIndex
    long nEntry = -1;     // the cursor of the list's index

    long Length() const { return static_cast<long>(slots.size()); }
    bool IsStale() const { return nPosition != nIndex; }
    bool IsPosition(long i) const { return i >= 0 && i < Length(); }
    T& Current() { return slots[static_cast<std::size_t>(nPosition)].value; }
    const Element* SlotAddress(long i) const { return slots[static_cast<std::size_t>(i)].pAddress; }

    void Stand(long nWhere) { nPosition = nIndex = nWhere; }
    void MoveToFirst() { Stand(slots.empty() ? -1 : 0); }
    void MoveToLast() { Stand(Length() - 1); }
    void MoveToNext() {
        nPosition = nPosition + 1 == Length() ? -1 : nPosition + 1;
        nIndex = nPosition == -1 ? -1 : nIndex + 1;
    }
    void MoveToPre() {
        if (kind == ModelKind::Singly) {
            nIndex == -1 ? MoveToLast() : MoveTo(nIndex - 1);
            return;
        }
        nPosition = nPosition == -1 ? Length() - 1 : nPosition - 1;
        nIndex = nPosition == Length() - 1 ? nPosition : nIndex - 1;
    }
    void MoveTo(long i) {
        if (kind == ModelKind::Indexed) {
            const long k = i / nStep;
            if (k >= 0 && k * nStep < Length()) {
                nEntry = k;
            }
            Stand(IsPosition(i) ? i : -1);
        } else if (!IsPosition(i)) {
            Stand(-1);
        } else if (i == Length() - 1 || (i == 0 && kind == ModelKind::Doubly)) {
            Stand(i);
        } else if (i < nIndex && kind == ModelKind::Singly) {
            Stand(i);
        } else if (i < nIndex) {
            while (nIndex != i) {
                MoveToPre();
            }
        } else {
            while (nIndex != i) {
                MoveToNext();
            }
        }
    }

    /// The position that GetAt(i) reaches, -1 for the sentinel.
    long PositionOf(long i) const {
        if (kind == ModelKind::Indexed && IsPosition(i)) {
            return i;
        }
        const long nRing = Length() + 1;
        if (kind == ModelKind::Singly && i < nIndex) {
            return i < 0 ? -1 : (i + 1) % nRing - 1;
        }
        return ((nPosition + 1 + i - nIndex) % nRing + nRing) % nRing - 1;
    }

    void InsertAfterCur(const T& x) {
        ++nPosition;
        ++nIndex;
        slots.insert(slots.begin() + nPosition, Slot{x});
    }
    void DelCur() {
        const long nRemoved = nPosition;
        MoveToPre();
        slots.erase(slots.begin() + nRemoved);
    }
    long Append(const T& x) {
        MoveToLast();
        InsertAfterCur(x);
        return Length() - 1;
    }
    void Insert(long i, const T& x) {
        MoveTo(i - 1);
        InsertAfterCur(x);
    }
    void InsertCur(const T& x) {
        MoveToPre();
        InsertAfterCur(x);
    }
    void ReAllocate(long n) {
        const std::pair cursor(nPosition, nIndex);
        while (Length() < n) {
            Append(T());
            std::tie(nPosition, nIndex) = cursor;
        }
    }
    void SetLength(long n) {
        ReAllocate(n);
        while (Length() > n) {
            MoveToLast();
            DelCur();
        }
    }
    void Reset() {
        slots.clear();
        Stand(-1);
        nEntry = -1;
    }
    bool Move(long from, long to) {
        if (from == to || from == to - 1) {
            return false;
        }
        MoveTo(from);
        const T x = Current();
        Insert(to, x);
        MoveTo(from > to ? from + 1 : from);
        DelCur();
        MoveTo(from > to ? to : to - 1);
        return true;
    }
    void ReverseList() {
        if (Length() > 1) {
            std::reverse(slots.begin(), slots.end());
            nPosition = nPosition == -1 ? -1 : Length() - 1 - nPosition;
        }
    }
    void Rotate(long from, long to) {
        if (from == to) {
            return;
        }
        const long nShift = (from - to + Length()) % Length();
        MoveTo((Length() + nShift - 1) % Length());
        MoveTo(nShift);
        std::rotate(slots.begin(), slots.begin() + nShift, slots.end());
        Stand(0);
    }
    long DetachAfterCur() {
        nIndex = nPosition;
        slots.resize(static_cast<std::size_t>(nPosition + 1));
        return Length();
    }
    long Conbine(ListModel& other, long pos) {
        if (&other != this && other.IsPosition(pos)) {
            other.MoveTo(pos);
            slots.insert(slots.end(), other.slots.begin() + pos, other.slots.end());
            other.MoveToLast();
            other.MoveTo(pos - 1);
            other.DetachAfterCur();
        }
        return Length();
    }

    /// isAfter(e, x): x moves in front of e.
    template <class IsAfter>
    void Sort(IsAfter isAfter) {
        for (auto x = slots.begin(); x != slots.end(); ++x) {
            const auto place =
                std::find_if_not(std::make_reverse_iterator(x), slots.rend(), [&](const Slot& e) {
                    return isAfter(e.value, x->value);
                }).base();
            if (place != x) {
                x->pAddress = nullptr;
                std::rotate(place, x, x + 1);
            }
        }
        Stand(-1);
    }

    /// The owning lists' sort: nulls go out first and come back behind the objects.
    template <class IsAfter>
    void SortObjects(IsAfter isAfter) {
        const long nLength = Length();
        slots.erase(std::remove_if(slots.begin(), slots.end(),
                                   [](const Slot& slot) { return slot.value == nullptr; }),
                    slots.end());
        Sort(isAfter);
        while (Length() < nLength) {
            Append(T());
        }
    }

    /// The search by bisection; orderOf(value) compares what is searched for with an element.
    template <class OrderOf>
    bool Find(OrderOf orderOf, long first, long last) {
        const auto order = [&] { return orderOf(Current()); };
        MoveTo(first);
        if (first > last || order() < 0) {
            return false;
        }
        MoveTo(last);
        if (order() > 0) {
            MoveToNext();
            return false;
        }
        while (first < last) {
            const long nMiddle = (first + last) / 2;
            MoveTo(nMiddle);
            if (order() == 0) {
                return true;
            }
            (order() > 0 ? first : last) = nMiddle + (order() > 0 ? 1 : -1);
        }
        if (last < first) {
            return false;
        }
        MoveTo(last);
        const auto nOrder = order();
        if (nOrder > 0) {
            MoveToNext();
        }
        return nOrder == 0;
    }
};
