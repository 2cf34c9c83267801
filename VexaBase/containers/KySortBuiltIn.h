// The arrays' sort of elements of built-in types. Nobody can observe how these are compared, so it gives what
// KySortByRank gives, bit for bit, without asking for every pair. No comparison is branched on.
#pragma once

#include <algorithm>
#include <climits>
#include <cstddef>
#include <functional>
#include <iterator>
#include <memory>
#include <type_traits>

/// True for numbers and raw pointers: nobody can observe how they are compared and copied.
template <class T>
constexpr bool KyIsBuiltIn = (std::is_arithmetic_v<T> ||
                              std::is_pointer_v<T>)&&std::is_same_v<T, std::remove_cv_t<T>>;

/// The stable merge sort of KySortBuiltIn. isAfter(a, b) says that a, the earlier element, must come behind
/// b.
template <class T, class IsAfter>
class KyMergeSort {
public:
    /// Sorts by the given rule.
    explicit KyMergeSort(IsAfter isAfter) : m_isAfter(isAfter) {}

    /// Sorts the n elements at pData with the help of n more at pScratch. O(n log n).
    void Sort(T* pData, T* pScratch, long n) const { SortTo(pData, pData, pScratch, n); }

private:
    static constexpr long nRanked = 8;

    // Sorts the elements at pData into pTarget, which is pData or pScratch; what the other holds then has no
    // meaning.
    void SortTo(T* pTarget, T* pData, T* pScratch, long n) const {
        if (n <= nRanked) {
            RankTo(pTarget, pData, n);
            return;
        }
        T* const pHalves = pTarget == pData ? pScratch : pData;
        const long nRight = n / 2;
        const long nLeft = n - nRight;
        SortTo(pHalves, pData, pScratch, nLeft);
        SortTo(pHalves + nLeft, pData + nLeft, pScratch + nLeft, nRight);
        MergeTo(pTarget, pHalves, nLeft, nRight);
    }

    void RankTo(T* pTarget, const T* pData, long n) const {
        long ranks[nRanked];
        for (long j = 0; j < n; ++j) {
            ranks[j] = j;
            for (long i = 0; i < j; ++i) {
                const long nIsAfter = m_isAfter(pData[i], pData[j]) ? 1 : 0;
                ranks[i] += nIsAfter;
                ranks[j] -= nIsAfter;
            }
        }
        T sorted[nRanked];
        for (long i = 0; i < n; ++i) {
            sorted[ranks[i]] = pData[i];
        }
        for (long i = 0; i < n; ++i) {
            pTarget[i] = sorted[i];
        }
    }

    // Merges the halves from both ends at once: two chains of steps for the processor instead of one. The
    // halves are of one length, the left one may have one more, so that neither runs out before the middle.
    void MergeTo(T* pTarget, const T* pHalves, long nLeft, long nRight) const {
        const T* pLeft = pHalves;
        const T* pRight = pHalves + nLeft;
        const T* pLeftLast = pRight - 1;
        const T* pRightLast = pRight + nRight - 1;
        T* pFirst = pTarget;
        T* pLast = pTarget + nLeft + nRight - 1;
        for (long i = 0; i < nRight; ++i) {
            const T left = *pLeft;
            const T right = *pRight;
            const bool bRightIsNext = m_isAfter(left, right);
            *pFirst++ = bRightIsNext ? right : left;
            pLeft += !bRightIsNext;
            pRight += bRightIsNext;

            const T leftLast = *pLeftLast;
            const T rightLast = *pRightLast;
            const bool bLeftIsLast = m_isAfter(leftLast, rightLast);
            *pLast-- = bLeftIsLast ? leftLast : rightLast;
            pLeftLast -= bLeftIsLast;
            pRightLast -= !bLeftIsLast;
        }
        if (nLeft != nRight) {
            *pFirst = pLeft == pLeftLast ? *pLeft : *pRight;
        }
    }

    IsAfter m_isAfter;
};

/// Sorts bytes by counting them. O(n).
template <class T>
void KySortBytes(T* pData, long n, bool bAscending) {
    static_assert(sizeof(T) == 1);
    constexpr int nValues = UCHAR_MAX + 1;
    constexpr int nLeast = std::is_signed_v<T> ? SCHAR_MIN : 0;
    std::ptrdiff_t counts[nValues] = {};
    for (long i = 0; i < n; ++i) {
        ++counts[pData[i] - nLeast];
    }
    for (int i = 0; i < nValues; ++i) {
        const int nValue = bAscending ? i : nValues - 1 - i;
        pData = std::fill_n(pData, counts[nValue], static_cast<T>(nValue + nLeast));
    }
}

/// Sorts the n elements at pData, stably. False, and nothing is done, where they have no order: NaN is among
/// them. O(n log n); one temporary array of n ranks (none below two elements), as the ranking sort has.
template <class T>
bool KySortBuiltIn(T* pData, long n, bool bAscending) {
    static_assert(KyIsBuiltIn<T> && sizeof(T) <= sizeof(long));
    if constexpr (std::is_floating_point_v<T>) {
        if (std::any_of(pData, pData + std::max(n, 0L), [](T x) { return x != x; })) {
            return false;
        }
    }
    if (n < 2) {
        return true;
    }
    const std::unique_ptr<long[]> scratch(new long[static_cast<std::size_t>(n)]);
    if constexpr (sizeof(T) == 1) {
        constexpr long nCountingPays = 256;
        if (n >= nCountingPays) {
            KySortBytes(pData, n, bAscending);
            return true;
        }
    }
    T* const pScratch = reinterpret_cast<T*>(scratch.get());
    if (bAscending) {
        KyMergeSort<T, std::greater<T>>({}).Sort(pData, pScratch, n);
    } else {
        KyMergeSort<T, std::less<T>>({}).Sort(pData, pScratch, n);
    }
    return true;
}
