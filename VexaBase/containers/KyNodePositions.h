// The nodes of an indexed list by position: a private part of KyXList.
//
// All nodes stand in order in blocks of bounded length, and beside the blocks stands the position of each
// one's first node. A node is found by bisection among the blocks; inserting one shifts part of a block and
// the positions of the blocks behind it.
//
// It is an aid, not a truth: a list works without it. What cannot be had memory for is forgotten, all at
// once. The memory comes from the C allocator, so that it is no business of an application that replaces
// operator new.
//
// Invariants:
//   (1) block b holds the nodes at positions m_pFirst[b] .. m_pFirst[b + 1] - 1, at least one
//   (2) every block has room for m_nRoom nodes, which is nMaxRoom where there are several
//   (3) nothing is known, and nothing allocated, while there is no block
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "VexaBase/containers/KyDList.h"

/// The nodes of an indexed list by position, at most nMaxRoom of them a block.
template <class T, long nMaxRoom = 1024>
class KyNodePositions {
public:
    /// The type of the list's nodes.
    using Node = KyDListNode<T>;

    KyNodePositions() = default;
    KyNodePositions(const KyNodePositions&) = delete;
    KyNodePositions& operator=(const KyNodePositions&) = delete;
    ~KyNodePositions() { Forget(); }

    /// Whether the positions of all nodes are known; else none is.
    bool IsKnown() const { return m_nBlocks != 0; }

    /// The block of a position that is in one of the blocks bLow .. bHigh. O(log(bHigh - bLow)).
    long BlockOf(long i, long bLow, long bHigh) const {
        for (long n = bHigh - bLow + 1; n > 1;) {
            const long nHalf = n / 2;
            bLow += m_pFirst[bLow + nHalf] <= i ? nHalf : 0;
            n -= nHalf;
        }
        return bLow;
    }
    /// The block of a position. O(log(length)).
    long BlockOf(long i) const { return BlockOf(i, 0, m_nBlocks - 1); }

    /// The node at position i, which is in block b.
    Node* At(long i, long b) const { return m_pBlocks[b][i - m_pFirst[b]]; }
    /// The node at position i. O(log(length)).
    Node* At(long i) const { return At(i, BlockOf(i)); }

    /// Takes in a node that now stands at position i, at most the length; does nothing while nothing is
    /// known. O(1) at the end, elsewhere O(nMaxRoom + length / nMaxRoom).
    void Insert(long i, Node* pNode) {
        if (!IsKnown()) {
            return;
        }
        long b = i < Length() ? BlockOf(i) : m_nBlocks - 1;
        if (CountOf(b) == m_nRoom) {
            if (!MakeRoom(b, i)) {
                Forget();
                return;
            }
            b += b + 1 < m_nBlocks && m_pFirst[b + 1] <= i ? 1 : 0;
        }
        Node** const pSlot = m_pBlocks[b] + (i - m_pFirst[b]);
        std::memmove(pSlot + 1, pSlot, BytesOf(m_pFirst[b + 1] - i));
        *pSlot = pNode;
        for (long k = b + 1; k <= m_nBlocks; ++k) {
            ++m_pFirst[k];
        }
    }

    /// Drops the node at position i; does nothing while nothing is known. Forgets everything when the blocks
    /// have become too empty to be worth their memory. O(nMaxRoom + length / nMaxRoom).
    void Remove(long i) {
        if (!IsKnown()) {
            return;
        }
        const long b = BlockOf(i);
        Node** const pSlot = m_pBlocks[b] + (i - m_pFirst[b]);
        std::memmove(pSlot, pSlot + 1, BytesOf(m_pFirst[b + 1] - i - 1));
        for (long k = b + 1; k <= m_nBlocks; ++k) {
            --m_pFirst[k];
        }
        if (CountOf(b) == 0) {
            RemoveBlock(b);
        }
        if (m_nBlocks > 1 && Length() < m_nBlocks * (nMaxRoom / 16)) {
            Forget();
        }
    }

    /// Starts anew with the n nodes from pNode on. O(n). Requires n > 0.
    void Learn(KyListNode<T>* pNode, long n) {
        Forget();
        m_nRoom = nMaxRoom;
        while (m_nRoom / 2 > n) {
            m_nRoom /= 2;
        }
        const long nCount = m_nRoom < nMaxRoom ? n : nMaxRoom * 3 / 4;
        for (long i = 0; i < n; i += nCount) {
            if (!AddBlock(m_nBlocks)) {
                Forget();
                return;
            }
            Node** const pBlock = m_pBlocks[m_nBlocks - 1];
            const long nEnd = n - i < nCount ? n - i : nCount;
            for (long k = 0; k < nEnd; ++k, pNode = pNode->m_pNext) {
                pBlock[k] = static_cast<Node*>(pNode);
            }
            m_pFirst[m_nBlocks] = i + nEnd;
        }
    }

    /// Knows nothing from now on, and gives all memory back. O(length / nMaxRoom).
    void Forget() {
        while (m_nBlocks > 0) {
            std::free(m_pBlocks[--m_nBlocks]);
        }
        std::free(m_pBlocks);
        std::free(m_pFirst);
        m_pBlocks = nullptr;
        m_pFirst = nullptr;
        m_nMaxBlocks = 0;
    }

private:
    long Length() const { return m_pFirst[m_nBlocks]; }
    long CountOf(long b) const { return m_pFirst[b + 1] - m_pFirst[b]; }
    template <class P = Node*>
    static std::size_t BytesOf(long n) {
        return static_cast<std::size_t>(n) * sizeof(P);
    }

    template <class P>
    static bool Resize(P*& p, long n) {
        void* const pNew = std::realloc(p, BytesOf<P>(n));
        p = pNew != nullptr ? static_cast<P*>(pNew) : p;
        return pNew != nullptr;
    }

    /// Makes room for a node at position i in the full block b. The last block stays full when the node goes
    /// behind it, so that blocks filled in order are full.
    bool MakeRoom(long b, long i) {
        if (m_nRoom < nMaxRoom) {
            if (!Resize(m_pBlocks[0], 2 * m_nRoom)) {
                return false;
            }
            m_nRoom *= 2;
            return true;
        }
        if (!AddBlock(b + 1)) {
            return false;
        }
        const long nStay = i == Length() ? nMaxRoom : nMaxRoom / 2;
        std::memcpy(m_pBlocks[b + 1], m_pBlocks[b] + nStay, BytesOf(nMaxRoom - nStay));
        m_pFirst[b + 1] = m_pFirst[b] + nStay;
        return true;
    }

    /// Adds an empty block b.
    bool AddBlock(long b) {
        if (m_nBlocks == m_nMaxBlocks) {
            const long nMaxBlocks = m_nMaxBlocks != 0 ? 2 * m_nMaxBlocks : 4;
            if (!Resize(m_pBlocks, nMaxBlocks) || !Resize(m_pFirst, nMaxBlocks + 1)) {
                return false;
            }
            m_nMaxBlocks = nMaxBlocks;
        }
        Node** pBlock = nullptr;
        if (!Resize(pBlock, m_nRoom)) {
            return false;
        }
        if (m_nBlocks == 0) {
            m_pFirst[0] = 0;
        }
        std::memmove(m_pBlocks + b + 1, m_pBlocks + b, BytesOf<Node**>(m_nBlocks - b));
        std::memmove(m_pFirst + b + 1, m_pFirst + b, BytesOf<long>(m_nBlocks - b + 1));
        m_pBlocks[b] = pBlock;
        ++m_nBlocks;
        return true;
    }

    /// Removes block b, which is empty.
    void RemoveBlock(long b) {
        std::free(m_pBlocks[b]);
        std::memmove(m_pBlocks + b, m_pBlocks + b + 1, BytesOf<Node**>(m_nBlocks - b - 1));
        std::memmove(m_pFirst + b, m_pFirst + b + 1, BytesOf<long>(m_nBlocks - b));
        if (--m_nBlocks == 0) {
            Forget();
        }
    }

    Node*** m_pBlocks = nullptr;
    long* m_pFirst = nullptr;  // the position of each block's first node; behind the last, the length
    long m_nBlocks = 0;
    long m_nMaxBlocks = 0;
    long m_nRoom = 0;
};
