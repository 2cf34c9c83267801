// The plain exact-size array: one block and its length, no cursor, no spare capacity. It is the buffer under
// the wide string, and an indexable snapshot of any container.
//
// Invariant: m_pData is null exactly when m_nLength is 0; otherwise it is a block of exactly m_nLength
// elements.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "VexaBase/containers/KyDynArrayBase.h"

template <class T>
class KY_API KyArray {
public:
    using value_type = T;
    using size_type = long;
    using difference_type = std::ptrdiff_t;
    using reference = T&;
    using const_reference = const T&;
    using iterator = T*;
    using const_iterator = const T*;

    KyArray() = default;

    /// A snapshot of the source's elements, in order. The source's cursor stays. O(length).
    explicit KyArray(const KyDynArrayBase<T>& source) {
        std::unique_ptr<T[]> block = NewBlock(source.m_nLength);
        long nCount = 0;
        for (const T* p = source.GetFirst(); p != nullptr; p = source.GetNext(p)) {
            block[static_cast<std::size_t>(nCount++)] = *p;
        }
        m_nLength = std::max(source.m_nLength, 0L);
        m_pData = block.release();
    }

    /// A deep copy. O(length).
    KyArray(const KyArray& other) {
        std::unique_ptr<T[]> block = NewBlock(other.m_nLength);
        std::copy(other.begin(), other.end(), block.get());
        m_nLength = other.m_nLength;
        m_pData = block.release();
    }

    /// Takes other's block and leaves other empty. O(1).
    KyArray(KyArray&& other) noexcept
        : m_pData(std::exchange(other.m_pData, nullptr)), m_nLength(std::exchange(other.m_nLength, 0)) {}

    /// A deep copy. When it cannot be made, this array stays as it was. O(length).
    KyArray& operator=(const KyArray& other) {
        if (this != &other) {
            KyArray copy(other);
            swap(copy);
        }
        return *this;
    }

    /// Takes other's block and leaves other empty. O(1).
    KyArray& operator=(KyArray&& other) noexcept {
        KyArray moved(std::move(other));
        swap(moved);
        return *this;
    }

    virtual ~KyArray() { delete[] m_pData; }

    /// Makes the block exactly n elements, none when n is below 1. With bKeep the first min(old length, n)
    /// elements are copied, otherwise new elements are uninitialised where T is. When n is the length
    /// already, nothing happens: the contents stay either way. O(n).
    void ReAllocate(long n, bool bKeep) {
        if (n == m_nLength) {
            return;
        }
        std::unique_ptr<T[]> block = NewBlock(n);
        if (bKeep) {
            std::copy(m_pData, m_pData + std::min(m_nLength, std::max(n, 0L)), block.get());
        }
        m_nLength = std::max(n, 0L);
        delete[] std::exchange(m_pData, block.release());
    }

    /// Element i. Requires 0 <= i < length.
    T& operator[](long i) {
        KY_CHECK(i >= 0 && i < m_nLength, "KyArray::operator[]", "index out of range (index %ld, length %ld)",
                 i, m_nLength);
        return m_pData[i];
    }
    /// Element i. Requires 0 <= i < length.
    const T& operator[](long i) const {
        KY_CHECK(i >= 0 && i < m_nLength, "KyArray::operator[]", "index out of range (index %ld, length %ld)",
                 i, m_nLength);
        return m_pData[i];
    }

    long GetLength() const { return m_nLength; }

    /// Exchanges the blocks. O(1).
    void swap(KyArray& other) noexcept {
        std::swap(m_pData, other.m_pData);
        std::swap(m_nLength, other.m_nLength);
    }
    /// Exchanges the blocks. O(1).
    friend void swap(KyArray& a, KyArray& b) noexcept { a.swap(b); }

    iterator begin() { return m_pData; }
    iterator end() { return m_pData + m_nLength; }
    const_iterator begin() const { return m_pData; }
    const_iterator end() const { return m_pData + m_nLength; }

    T* m_pData = nullptr;  // the block
    long m_nLength = 0;    // elements in the block

private:
    static std::unique_ptr<T[]> NewBlock(long n) {
        return std::unique_ptr<T[]>(n < 1 ? nullptr : new T[static_cast<std::size_t>(n)]);
    }
};
