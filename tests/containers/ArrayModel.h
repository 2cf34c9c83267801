// A dynamic array as a vector and numbers, for whoever compares it with an array after every operation.
#pragma once

#include <cstddef>
#include <vector>

/// What KyDynArray and KyDynPArray have in common, as a std::vector and numbers.
template <class T>
struct ArrayModel {
    std::vector<T> m_elements;
    long m_nCurIndex = -1;
    long m_nCapacity = 0;
    long m_nGrowBy = 0;

    long Length() const { return static_cast<long>(m_elements.size()); }
    bool HasCurrent() const { return m_nCurIndex >= 0 && m_nCurIndex < Length(); }
    T& Current() { return m_elements[static_cast<std::size_t>(m_nCurIndex)]; }

    void GrowFor(long n) {
        if (m_nCapacity < n) {
            m_nCapacity = n + m_nGrowBy;
        }
    }
    void Resize(long n, const T& fill) {
        GrowFor(n);
        m_elements.resize(static_cast<std::size_t>(n), fill);
    }
    void InsertAt(long i, const T& x) {
        GrowFor(Length() + 1);
        m_elements.insert(m_elements.begin() + i, x);
        m_nCurIndex = i;
    }
    void Delete() {
        m_elements.erase(m_elements.begin() + m_nCurIndex);
        --m_nCurIndex;
    }
};
