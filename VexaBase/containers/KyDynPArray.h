// A contiguous array of pointers that owns the objects they point to.
//
// An object is deleted, by a plain delete, when its slot is removed, cut off, released or reset, and when the
// array is destroyed; so T needs a virtual destructor where derived objects are stored. A slot may hold null,
// meaning no object. To take an object out alive use TakeOffCur, which leaves a null slot behind.
//
// Invariants, besides those of KyDynArray:
//   (1) every non-null pointer below m_nLength is owned, and stored in one slot only
//   (2) slots from m_nLength on are not owned and may hold stale pointers
#pragma once

#include <algorithm>

#include "VexaBase/containers/KyDynArray.h"

template <class T>
class KY_API KyDynPArray : public KyDynArray<T*> {
public:
    /// An empty array without a block.
    KyDynPArray() : KyDynPArray(0) {}

    /// An empty array that reserves nCapacity slots and grows by nGrowBy.
    explicit KyDynPArray(long nCapacity, long nGrowBy = 1024) : KyDynArray<T*>(nCapacity, nGrowBy) {}

    /// Makes the array n slots long: deletes the objects cut off, in ascending order, or adds null slots. The
    /// block grows as in KyDynArray (a failed growth too) and never shrinks. Requires n >= 0, and m_nGrowBy >= 0
    /// when the block must grow.
    void ReAllocate(long n) override {
        KY_CHECK(n >= 0, "KyDynPArray::ReAllocate", "negative length (%ld)", n);
        if (n < this->m_nLength) {
            DeleteFrom(n);
            this->m_nLength = n;
        } else if (n > this->m_nLength) {
            if (n > this->m_nCapacity) {
                this->Grow(n);
            }
            std::fill(this->m_pData + this->m_nLength, this->m_pData + n, nullptr);
            this->m_nLength = n;
        }
    }

    ~KyDynPArray() override { ReleaseAll(); }

    /// Sets length and capacity to exactly n. Without bKeep every object is deleted first and every slot of
    /// the result is null. With bKeep objects beyond n are deleted, before anything is allocated, and new
    /// slots are null; when n is the length already, nothing happens at all, deliberately: spare capacity is
    /// not trimmed. The cursor stays. O(n).
    void SetLength(long n, bool bKeep) override {
        if (!bKeep) {
            const long nCurIndex = this->m_nCurIndex;
            ReleaseAll();
            this->m_nCurIndex = nCurIndex;
        } else if (n == this->m_nLength) {
            return;
        } else if (n < this->m_nLength) {
            DeleteFrom(std::max(n, 0L));
            this->m_nLength = n;
        }
        if (this->m_nCapacity != n) {
            this->ReplaceBlock(std::max(n, 0L), bKeep ? std::min(this->m_nLength, n) : 0);
        }
        for (long i = bKeep ? this->m_nLength : 0; i < n; ++i) {
            this->m_pData[i] = nullptr;
        }
        this->m_nCapacity = n;
        this->m_nLength = n;
    }

    /// Deletes every object: length 0, cursor -1. The block is kept.
    void Reset() override {
        ReleaseAll();
        this->m_nLength = 0;
        this->m_nCurIndex = -1;
    }

    /// Deletes the current object and removes its slot. The cursor steps back by one. O(slots behind the
    /// cursor). Requires a current element.
    void DelCur() override {
        KY_CHECK(this->HasCurrent(), "KyDynPArray::DelCur", "no current element (index %ld, length %ld)",
                 this->m_nCurIndex, this->m_nLength);
        ReleaseCur();
        const long nLast = this->m_nLength - 1;
        if (this->m_nCurIndex >= nLast) {
            this->ReAllocate(nLast);
            --this->m_nCurIndex;
            return;
        }
        // The slot that is cut off must be null, or the shrinking would delete the object that has moved.
        T* const pLast = this->m_pData[nLast];
        this->m_pData[nLast] = nullptr;
        std::copy(this->m_pData + this->m_nCurIndex + 1, this->m_pData + this->m_nLength,
                  this->m_pData + this->m_nCurIndex);
        this->ReAllocate(nLast);
        --this->m_nCurIndex;
        this->m_pData[nLast - 1] = pLast;
    }

    /// Sorts the pointers by the objects' operator> (ascending) or operator< (descending), stably. Null slots
    /// order before every object. Objects of a type without these operators stay as they are, null slots too.
    /// The cursor stays.
    void Sort(bool bAscending) override {
        using Order = KyElementOrder<T>;
        T** const pData = this->m_pData;
        if (bAscending) {
            KySortByRank(pData, this->m_nLength, [pData](long i, long j) {
                return Order::IsOrdered(true) && pData[i] != nullptr &&
                       (pData[j] == nullptr || Order::IsGreater(*pData[i], *pData[j]));
            });
        } else {
            KySortByRank(pData, this->m_nLength, [pData](long i, long j) {
                return Order::IsOrdered(false) && pData[j] != nullptr &&
                       (pData[i] == nullptr || Order::IsLess(*pData[i], *pData[j]));
            });
        }
    }

    /// Sorts by comparing the pointers themselves. See KyDynArray::Sort.
    void Sort(int (*pfnCompare)(T* const&, T* const&)) override { KyDynArray<T*>::Sort(pfnCompare); }

    /// Moves the object at `from` in front of the one at `to`, exact in every direction, deleting nothing.
    /// The cursor ends on it. False, and nothing changes, when it stands there already. Requires both
    /// positions inside the array.
    bool Move(long from, long to) override {
        if (from == to || from == to - 1) {
            return false;
        }
        this->MoveTo(from);
        T* const p = this->GetCurData();
        KyUndo putBack([this, from, p] { this->m_pData[from] = p; });
        this->SetCurData(nullptr);
        this->Insert(to, p);
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

    /// Deletes the current object and leaves a null slot; does nothing without a current object. The cursor
    /// stays.
    virtual void ReleaseCur() {
        if (this->HasCurrent() && this->m_pData[this->m_nCurIndex] != nullptr) {
            delete this->m_pData[this->m_nCurIndex];
            this->SetCurData(nullptr);
        }
    }

    /// Hands the current object to the caller, who owns it from now on, and leaves a null slot. Null without
    /// a current element. The cursor stays.
    virtual T* TakeOffCur() {
        if (!this->HasCurrent()) {
            return nullptr;
        }
        T* const p = this->m_pData[this->m_nCurIndex];
        this->SetCurData(nullptr);
        return p;
    }

    /// Sorts the pointers by a three-way comparison of the objects, stably. Null slots order before every
    /// object and are not passed to pfnCompare. The cursor stays.
    virtual void Sort(int (*pfnCompare)(const T&, const T&)) {
        T** const pData = this->m_pData;
        KySortByRank(pData, this->m_nLength, [pData, pfnCompare](long i, long j) {
            return pData[i] != nullptr && (pData[j] == nullptr || pfnCompare(*pData[i], *pData[j]) > 0);
        });
    }

    /// See KyDynArrayBase::Sort(F).
    template <class F, class = std::enable_if_t<KyIsWrongComparison<F, int (*)(const T&, const T&),
                                                                    int (*)(T* const&, T* const&)>::value>>
    void Sort(F) = delete;

    /// Deletes every object and leaves null slots. The length stays; the cursor ends at the length.
    /// O(length).
    void ReleaseAll() {
        this->MoveToFirst();
        while (this->HasCurrent()) {
            ReleaseCur();
            this->MoveToNext();
        }
    }

private:
    void DeleteFrom(long nFirst) {
        for (long i = nFirst; i < this->m_nLength; ++i) {
            delete this->m_pData[i];
        }
    }
};
