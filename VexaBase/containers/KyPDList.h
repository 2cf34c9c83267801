// The owning list: a doubly linked list of pointers that owns the objects they point to.
//
// An object is deleted, by a plain delete, when its element is removed or the list is emptied or destroyed;
// so T needs a virtual destructor where derived objects are stored. A null element means no object. To take
// an object out alive, store null into its element first (SetCurData(nullptr)) and then remove the element.
//
// Invariants, besides those of KyDList:
//   (1) every non-null element is owned, by this list and this element alone
//   (2) the sentinel's slot holds null
#pragma once

#include <algorithm>

#include "VexaBase/containers/KyDList.h"

/// What an owning list adds to List, a doubly linked list of T*. KyPDList and KyPXList are made of it.
template <class T, class List>
class KY_API KyOwningList : public List {
public:
    /// Lengthens the list to n elements by appending null; a list never shrinks here. The cursor stays. O(n -
    /// length).
    void ReAllocate(long n) override { List::ReAllocate(n); }

    ~KyOwningList() override { ReleaseAll(); }

    /// Deletes every object and frees every element, one after the other: length 0, cursor on none. O(length).
    void Reset() override {
        KyListNode<T*>* const pHead = this->m_pHead;
        while (pHead->m_pNext != pHead) {
            KyListNode<T*>* const pNode = pHead->m_pNext;
            this->Link(pHead, pNode->m_pNext);
            delete pNode->m_data;
            delete static_cast<KyDListNode<T*>*>(pNode);
        }
        this->m_pTail = pHead;
        List::Reset();
    }

    /// Deletes the current object, if there is one, and removes the element as KyDList::DelCur does. Requires
    /// a current element.
    void DelCur() override {
        KY_CHECK(this->m_pCurNode != this->m_pHead, "KyPDList::DelCur",
                 "no current element (index %ld, length %ld)", this->m_nCurIndex, this->m_nLength);
        delete this->m_pCurNode->m_data;
        this->m_pCurNode->m_data = nullptr;
        List::DelCur();
    }

    /// Stable insertion sort by the objects' operator> (ascending) or operator< (descending). Null elements
    /// end up behind every object, either way; the cursor then ends on the last of them, otherwise on none. A
    /// list shorter than 2 is left alone, cursor included. Objects of a type without these operators keep
    /// their order. No object is deleted. When a comparison throws or a node cannot be had, the objects are
    /// in some order and the nulls behind them, as far as there is memory for those.
    void Sort(bool bAscending) override {
        if (this->m_nLength < 2) {
            return;
        }
        long nNulls = RemoveNulls();
        using Order = KyElementOrder<T>;
        KyUndo putBack([this, &nNulls] { TryToAppendNulls(nNulls); });
        if (bAscending) {
            SortObjects([](T& e, T& x) { return Order::IsGreater(e, x); });
        } else {
            SortObjects([](T& e, T& x) { return Order::IsLess(e, x); });
        }
        for (; nNulls > 0; --nNulls) {
            this->Append(nullptr);
        }
        putBack.Dismiss();
    }

    /// Sorts by comparing the pointers themselves, and deletes each object that moves: an inherited slot that
    /// no owning list should be sorted through. Use one of the other two.
    void Sort(int (*pfnCompare)(T* const&, T* const&)) override { List::Sort(pfnCompare); }

    /// Moves the object at `from` in front of the one at `to`; to = length moves it to the end. The cursor
    /// ends on it. False, and nothing changes, when it stands there already. No object is deleted. Requires
    /// both positions inside the list.
    bool Move(long from, long to) override {
        if (from == to || from == to - 1) {
            return false;
        }
        KY_CHECK(this->IsPosition(from) && to >= 0 && to <= this->m_nLength, "KyPDList::Move",
                 "position out of range (%ld to %ld, length %ld)", from, to, this->m_nLength);
        this->MoveTo(from);
        T*& slot = this->GetCurData();
        T* const pObject = slot;
        KyUndo putBack([&slot, pObject] { slot = pObject; });
        this->SetCurData(nullptr);
        this->Insert(to, pObject);
        putBack.Dismiss();
        if (from > to) {
            this->MoveTo(from + 1);
            this->DelCur();
            this->MoveTo(to);
        } else {
            this->MoveTo(from);
            this->DelCur();
            this->MoveTo(to - 1);
        }
        return true;
    }

    /// The same sort as Sort(bool) by a three-way comparison of the objects. Requires an object in every
    /// element.
    virtual void Sort(int (*pfnCompare)(const T&, const T&)) {
        KY_CHECK(std::find(this->begin(), this->end(), nullptr) == this->end(), "KyPDList::Sort",
                 "null element (length %ld)", this->m_nLength);
        SortObjects([pfnCompare](const T& e, const T& x) { return pfnCompare(e, x) > 0; });
    }

    /// See KyDynArrayBase::Sort(F).
    template <class F, class = std::enable_if_t<KyIsWrongComparison<F, int (*)(const T&, const T&),
                                                                    int (*)(T* const&, T* const&)>::value>>
    void Sort(F) = delete;

    /// Deletes every object and leaves null elements. The length stays; the cursor ends on none. O(length).
    void ReleaseAll() {
        this->MoveToFirst();
        while (this->m_nCurIndex >= 0 && this->m_nCurIndex < this->m_nLength) {
            T*& pObject = this->m_pCurNode->m_data;
            delete pObject;
            pObject = nullptr;
            this->MoveToNext();
        }
    }

protected:
    using List::List;

private:
    /// Removes every null element and returns how many there were; the cursor ends on none.
    long RemoveNulls() {
        long nRemoved = 0;
        this->MoveToFirst();
        while (this->m_nCurIndex >= 0) {
            if (this->GetCurData() == nullptr) {
                this->DelCur();
                ++nRemoved;
            }
            this->MoveToNext();
        }
        return nRemoved;
    }

    /// Appends n nulls, or as many as there is memory for.
    void TryToAppendNulls([[maybe_unused]] long n) noexcept {
#if defined(__cpp_exceptions)  // without, nothing calls this
        try {
            for (; n > 0; --n) {
                this->Append(nullptr);
            }
        } catch (...) {
            return;
        }
#endif
    }

    /// The list's sort by a rule about objects. The moved object belongs to its new element before its old
    /// one is removed.
    template <class IsAfter>
    void SortObjects(IsAfter isAfter) {
        this->InsertionSort([isAfter](T* e, T* x) { return isAfter(*e, *x); },
                            [this] { this->SetCurData(nullptr); });
    }
};

template <class T>
class KY_API KyPDList : public KyOwningList<T, KyDList<T*>> {
public:
    /// An empty list.
    KyPDList() : KyPDList(0) {}

    /// Starts with n null elements and the cursor on none. O(n).
    explicit KyPDList(long n) : KyOwningList<T, KyDList<T*>>(n) {}
};
