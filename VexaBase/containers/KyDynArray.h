// The contiguous array of the container protocol: one block, an index as cursor, growth by a fixed step.
//
// Invariants, besides those of KyDynArrayBase:
//   (1) m_pData is a block of m_nCapacity elements made by array new, null when nothing is allocated
//   (2) 0 <= m_nLength <= m_nCapacity; the elements from m_nLength on have no meaning
//   (3) only growth, SetLength and destruction change the block, so element addresses hold until then
//
// Growth is linear, never doubling: m_nGrowBy spare elements beyond what is asked for, chosen by the array's
// owner. The array owns its block alone; what pointer elements point to is not its business (see
// KyDynPArray).
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "VexaBase/containers/KyDynArrayBase.h"
#include "VexaBase/containers/KySortBuiltIn.h"

/// Makes n ranks, each in 0 .. n - 1, a permutation. Those of an ordering are one already and stay; where the
/// comparison was no ordering, elements of equal rank follow each other in their former order. O(n), O(n^2)
/// in that case, in place.
inline void KyMakeRanksDistinct(long* pRank, long n) {
    // An entry's complement marks the rank that is the entry's index as taken.
    bool bDistinct = true;
    for (long i = 0; i < n; ++i) {
        long& nMark = pRank[std::max(pRank[i], ~pRank[i])];
        bDistinct = bDistinct && nMark >= 0;
        nMark = std::min(nMark, ~nMark);
    }
    for (long i = 0; i < n; ++i) {
        pRank[i] = std::max(pRank[i], ~pRank[i]);
    }
    if (bDistinct) {
        return;
    }
    // An entry's complement is its new rank.
    for (long nRank = 0; nRank < n; ++nRank) {
        long nFirst = -1;
        for (long i = 0; i < n; ++i) {
            if (pRank[i] >= 0 && (nFirst < 0 || pRank[i] < pRank[nFirst])) {
                nFirst = i;
            }
        }
        pRank[nFirst] = ~nRank;
    }
    for (long i = 0; i < n; ++i) {
        pRank[i] = ~pRank[i];
    }
}

/// Moves each of n elements to its rank, through a copy on the stack instead of along the permutation's
/// cycles. False, and nothing is done, where that could be observed or takes too much room, and where the
/// ranks are no permutation.
template <class T>
bool KyPlaceFewByRank(T* pData, const long* pRank, long n) {
    if constexpr (std::is_trivial_v<T> && sizeof(T) <= 2 * sizeof(long)) {
        constexpr long nFew = 64;
        if (n > nFew) {
            return false;
        }
        T former[nFew];
        std::uint64_t nMissing = ~std::uint64_t{0} >> (nFew - n);
        for (long i = 0; i < n; ++i) {
            former[i] = pData[i];
            nMissing &= ~(std::uint64_t{1} << pRank[i]);
        }
        if (nMissing != 0) {
            return false;
        }
        for (long i = 0; i < n; ++i) {
            pData[pRank[i]] = former[i];
        }
        return true;
    } else {
        return false;
    }
}

/// The arrays' sort: a stable ranking sort. Asks isAfter(i, j), "must element i come behind element j?", once
/// for every pair i < j in ascending order of i, then j, and moves each element straight to its rank, along
/// the permutation's cycles where anyone could see that. O(n^2) comparisons, O(n) moves, one temporary array
/// of n ranks (none below two elements).
template <class T, class IsAfter>
void KySortByRank(T* pData, long nLength, IsAfter isAfter) {
    if (nLength < 2) {
        return;
    }
    const std::unique_ptr<long[]> rank(new long[static_cast<std::size_t>(nLength)]);
    for (long i = 0; i < nLength; ++i) {
        rank[static_cast<std::size_t>(i)] = i;
    }
    long* const pRank = rank.get();
    for (long i = 0; i < nLength - 1; ++i) {
        // Added up, not branched on: no answer can be foreseen.
        long nBefore = 0;
#pragma GCC unroll 4
        for (long j = i + 1; j < nLength; ++j) {
            const long nIsAfter = isAfter(i, j) ? 1 : 0;
            nBefore += nIsAfter;
            pRank[j] -= nIsAfter;
        }
        pRank[i] += nBefore;
    }
    if (KyPlaceFewByRank(pData, pRank, nLength)) {
        return;
    }
    KyMakeRanksDistinct(pRank, nLength);
    long i = 0;
    while (i < nLength && pRank[i] == i) {
        ++i;
    }
    if (i == nLength) {
        return;
    }
    // Carries elements by default construction and assignment, which is all that an element type must have.
    T carry;
    T saved;
    for (; i < nLength; ++i) {
        if (pRank[i] == i) {
            continue;
        }
        carry = pData[i];
        for (long nTarget = pRank[i];;) {
            saved = pData[nTarget];
            pData[nTarget] = carry;
            const long nNext = std::exchange(pRank[nTarget], nTarget);
            if (nNext == i) {
                break;
            }
            carry = saved;
            nTarget = nNext;
        }
        pData[i] = saved;
        pRank[i] = i;
    }
}

template <class T>
class KY_API KyDynArray : public KyDynArrayBase<T> {
public:
    using iterator = T*;
    using const_iterator = const T*;

    /// An empty array without a block.
    KyDynArray() : KyDynArray(0) {}

    /// An empty array that reserves nCapacity elements (no block when that is 0 or less) and grows by
    /// nGrowBy.
    explicit KyDynArray(long nCapacity, long nGrowBy = 1024) : m_nGrowBy(nGrowBy) {
        if (nCapacity > 0) {
            m_pData = new T[static_cast<std::size_t>(nCapacity)];
            m_nCapacity = nCapacity;
        }
    }

    /// Makes the array n elements long. New elements are uninitialised where T is; the block never shrinks.
    /// O(1), or O(length) when the block must grow, to n + m_nGrowBy elements. When that allocation fails,
    /// the exception leaves the raised capacity behind, deliberately: such an array is good for destruction
    /// only. Requires n >= 0, and m_nGrowBy >= 0 when the block must grow.
    void ReAllocate(long n) override {
        KY_CHECK(n >= 0, "KyDynArray::ReAllocate", "negative length (%ld)", n);
        if (m_nCapacity < n) {
            Grow(n);
        }
        this->m_nLength = n;
    }

    ~KyDynArray() override { delete[] m_pData; }

    /// Sets length and capacity to exactly n (no block when n is below 1), the only way to give memory back.
    /// With bKeep the first min(old length, n) elements are copied. An array that has that capacity already
    /// keeps its block and its contents either way. The cursor stays, and may lie past the end then. O(n).
    void SetLength(long n, bool bKeep) override {
        if (m_nCapacity != n) {
            ReplaceBlock(std::max(n, 0L), bKeep ? std::min(this->m_nLength, n) : 0);
        }
        m_nCapacity = n;
        this->m_nLength = n;
    }

    /// Removes every element and keeps the block for reuse. O(1).
    void Reset() override {
        this->m_nLength = 0;
        this->m_nCurIndex = -1;
    }

    /// The current element. Requires a current element.
    T& GetCurData() override {
        KY_CHECK(HasCurrent(), "KyDynArray::GetCurData", "no current element (index %ld, length %ld)",
                 this->m_nCurIndex, this->m_nLength);
        return m_pData[this->m_nCurIndex];
    }

    /// Assigns x to the current element. Requires a current element.
    void SetCurData(const T& x) override {
        KY_CHECK(HasCurrent(), "KyDynArray::SetCurData", "no current element (index %ld, length %ld)",
                 this->m_nCurIndex, this->m_nLength);
        m_pData[this->m_nCurIndex] = x;
    }

    T* GetFirst() const override { return this->m_nLength != 0 ? m_pData : nullptr; }
    T* GetNext(const T* p) const override {
        return p == nullptr || p == m_pData + this->m_nLength - 1 ? nullptr : const_cast<T*>(p) + 1;
    }
    T* GetPre(const T* p) const override {
        return p == nullptr || p == m_pData ? nullptr : const_cast<T*>(p) - 1;
    }
    T* GetLast() const override { return this->m_nLength != 0 ? m_pData + this->m_nLength - 1 : nullptr; }
    T* GetAt(long i) const override {
        KY_CHECK(i >= 0 && i < this->m_nLength, "KyDynArray::GetAt",
                 "index out of range (index %ld, length %ld)", i, this->m_nLength);
        return m_pData + i;
    }

    /// Inserts x in front of the current element; at the old length it appends. The cursor index stays and
    /// designates x. O(elements behind the cursor), plus growth. When x is an element of this array, its slot
    /// is read after the shift: the element that moved into it is inserted. Requires a cursor in 0 .. length.
    void InsertCur(const T& x) override {
        KY_CHECK(this->m_nCurIndex >= 0 && this->m_nCurIndex <= this->m_nLength, "KyDynArray::InsertCur",
                 "cursor out of range (index %ld, length %ld)", this->m_nCurIndex, this->m_nLength);
        if constexpr (KyIsBuiltIn<T>) {
            if (this->m_nCurIndex == this->m_nLength) {
                InsertBuiltInAtTheEnd(x);
                return;
            }
        }
        const long nOwnSlot = SlotOf(x);
        this->ReAllocate(this->m_nLength + 1);
        T* const pCur = m_pData + this->m_nCurIndex;
        T* const pLast = m_pData + this->m_nLength - 1;
        std::copy_backward(pCur, pLast, pLast + 1);
        *pCur = nOwnSlot < 0 ? x : m_pData[nOwnSlot];
    }

    /// See KyDynArrayBase::Append. O(1), plus growth.
    long Append(const T& x) override {
#if defined(__clang__)
        // g++ binds the calls of the base's version where it knows the class. clang does not.
        if (IsOfThisVeryClass() && this->m_nLength < m_nCapacity) {
            this->m_nCurIndex = this->m_nLength++;
            m_pData[this->m_nCurIndex] = x;
            return this->m_nCurIndex;
        }
#endif
        return KyDynArrayBase<T>::Append(x);
    }

    /// Removes the current element and steps the cursor back by one, to -1 from the first, so that MoveToNext
    /// lands on the element that moved into its place. O(elements behind the cursor). Requires a current
    /// element.
    void DelCur() override {
        KY_CHECK(HasCurrent(), "KyDynArray::DelCur", "no current element (index %ld, length %ld)",
                 this->m_nCurIndex, this->m_nLength);
        T* const pCur = m_pData + this->m_nCurIndex;
        std::copy(pCur + 1, m_pData + this->m_nLength, pCur);
        this->ReAllocate(this->m_nLength - 1);
        --this->m_nCurIndex;
    }

    using KyDynArrayBase<T>::Sort;

    /// O(n^2) comparisons, O(n) moves; O(n log n) for a built-in type. The cursor stays. See
    /// KyDynArrayBase::Sort, KySortByRank and KySortBuiltIn.
    void Sort(bool bAscending) override {
        T* const pData = m_pData;
        if constexpr (KyIsBuiltIn<T> && sizeof(T) <= sizeof(long)) {
            if (KySortBuiltIn(pData, this->m_nLength, bAscending)) {
                return;
            }
        }
        if (bAscending) {
            KySortByRank(pData, this->m_nLength, [pData](long i, long j) {
                return KyElementOrder<T>::IsGreater(pData[i], pData[j]);
            });
        } else {
            KySortByRank(pData, this->m_nLength,
                         [pData](long i, long j) { return KyElementOrder<T>::IsLess(pData[i], pData[j]); });
        }
    }

    /// Exactly n(n - 1) / 2 calls of pfnCompare, O(n) moves; the cursor stays. See KyDynArrayBase::Sort and
    /// KySortByRank.
    void Sort(int (*pfnCompare)(const T&, const T&)) override {
        T* const pData = m_pData;
        KySortByRank(pData, this->m_nLength,
                     [pData, pfnCompare](long i, long j) { return pfnCompare(pData[i], pData[j]) > 0; });
    }

    iterator begin() { return m_pData; }
    iterator end() { return m_pData + this->m_nLength; }
    const_iterator begin() const { return m_pData; }
    const_iterator end() const { return m_pData + this->m_nLength; }

    T* m_pData = nullptr;  // the block
    long m_nCapacity = 0;  // elements in the block
    long m_nGrowBy;        // spare elements taken beyond the length asked for when the block grows

protected:
    /// Whether the cursor designates an element.
    bool HasCurrent() const { return this->m_nCurIndex >= 0 && this->m_nCurIndex < this->m_nLength; }

    /// Replaces the block by one of n + m_nGrowBy elements. The capacity is raised first.
    void Grow(long n) {
        KY_CHECK(m_nGrowBy >= 0, "KyDynArray::ReAllocate", "negative growth step (%ld)", m_nGrowBy);
        // In unsigned arithmetic a sum that no long holds becomes a size that the allocation rejects.
        m_nCapacity =
            static_cast<long>(static_cast<unsigned long>(n) + static_cast<unsigned long>(m_nGrowBy));
        ReplaceBlock(m_nCapacity, this->m_nLength);
    }

    /// Replaces the block by one of exactly nSize elements, none when nSize is 0; copies the first nKept
    /// over.
    void ReplaceBlock(long nSize, long nKept) {
        delete[] std::exchange(m_pData, CopyOfBlock(m_pData, nSize, nKept));
    }

private:
    // Out of line and without the array, so that the fields of an array in a loop of its own stay in
    // registers.
    [[gnu::noinline]] static T* CopyOfBlock(T* pBlock, long nSize, long nKept) {
        std::unique_ptr<T[]> block(nSize != 0 ? new T[static_cast<std::size_t>(nSize)] : nullptr);
        if (pBlock != nullptr && nKept > 0) {
            std::copy(pBlock, pBlock + nKept, block.get());
        }
        return block.release();
    }

    /// True when no derived class can observe what an operation is made of; false when in doubt.
    bool IsOfThisVeryClass() const {
#if defined(__cpp_rtti)
        return &typeid(*this) == &typeid(KyDynArray);
#else
        return false;
#endif
    }

    /// InsertCur where nothing is shifted. x is read after ReAllocate, unless it may have been an element of
    /// a block that ReAllocate has released. Does not ask for the address of x (a comparison with that of a
    /// field aside): a caller's loop counter then stays in a register.
    void InsertBuiltInAtTheEnd(const T& x) {
        const T* const pBlock = m_pData;
        const T value = x;
        this->ReAllocate(this->m_nLength + 1);
        m_pData[this->m_nCurIndex] = m_pData != pBlock && MayBeElement(x, value) ? value : x;
    }

    /// Whether x, which had that value, may have been an element before the cursor. Says so of every x whose
    /// value cannot have changed since.
    bool MayBeElement(const T& x, T value) const {
        if constexpr (std::is_same_v<T, long>) {
            if (std::addressof(x) == &this->m_nLength || std::addressof(x) == &m_nCapacity) {
                return false;
            }
        }
        return IsOfThisVeryClass() || IsAmong(m_pData, this->m_nCurIndex, value);
    }
    [[gnu::noinline]] static bool IsAmong(const T* p, long n, T value) {
        return value != value || std::find(p, p + n, value) != p + n;
    }

    /// The slot of this block that x is, or -1.
    long SlotOf(const T& x) const {
        if (m_pData == nullptr) {
            return -1;
        }
        const auto nAddress = reinterpret_cast<std::uintptr_t>(std::addressof(x));
        const auto nFirst = reinterpret_cast<std::uintptr_t>(m_pData);
        const auto nBytes = static_cast<std::uintptr_t>(m_nCapacity) * sizeof(T);
        return nAddress - nFirst < nBytes ? static_cast<long>((nAddress - nFirst) / sizeof(T)) : -1;
    }
};
