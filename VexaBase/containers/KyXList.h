// Doubly linked lists with a sparse positional index, plain (KyXList) and owning with a binary search
// (KyPXList).
//
// The index is an array that points at every m_nStep-th node, so that a position is reached in at most half a
// step's nodes instead of a walk from the cursor. Appending costs no more than in KyDList; inserting or
// removing elsewhere also moves every index entry behind that place by one node.
//
// A list in which positions are reached again and again learns the positions of all its nodes (see
// KyNodePositions): as soon as the walks from index entries have passed as many nodes as it has. From then on
// no walks are needed. It keeps that knowledge through insertions and removals, and forgets it when many
// nodes change their places at once. So a large step, under which insertions have few entries to move, makes
// positions slow to reach only at first.
//
// Invariants, besides those of KyDList:
//   (1) after every operation the index has ceil(m_nLength / m_nStep) entries, and entry j is the node at
//       position j * m_nStep
//   (2) the index is exact even while the cursor's index is not (after ReverseList)
//   (3) the sentinel is a larger node: it remembers whether the cursor's index can be trusted, and knows the
//       positions of all nodes or of none
#pragma once

#include <algorithm>
#include <typeinfo>
#include <utility>

#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyNodePositions.h"
#include "VexaBase/containers/KyPDList.h"

template <class T>
class KY_API KyXList : public KyDList<T> {
public:
    /// The type of every node; the sentinel's is derived from it.
    using Node = KyDListNode<T>;

    /// An empty list with an index entry for every 64th node.
    KyXList() : KyXList(64) {}

    /// An empty list with an index entry for every nStep-th node. Requires nStep > 0.
    explicit KyXList(long nStep) : KyDList<T>(AroundSentinel{}, new Sentinel), m_nStep(nStep) {
        KY_CHECK(nStep > 0, "KyXList::KyXList", "no step (%ld)", nStep);
    }

    /// See KyList::ReAllocate.
    void ReAllocate(long n) override {
        const bool bCursorWasStale = SentinelOf().m_bCursorIsStale;
        KyDList<T>::ReAllocate(n);
        SentinelOf().m_bCursorIsStale = bCursorWasStale;
    }

    ~KyXList() override {
        if (this->m_pHead != nullptr) {
            this->template FreeRing<Sentinel>();
        }
    }

    /// Frees every element and every index entry: length 0, cursor on none, the index's cursor at -1.
    /// O(length).
    void Reset() override {
        KyDList<T>::Reset();
        m_arrIndex.Reset();
        Positions().Forget();
        TrustCursor();
    }

    /// Cursor to position i, on none when i is outside the list. O(m_nStep) until the list has
    /// learnt its positions, which is O(length) once, and O(log(length)) from then on. The index's own cursor
    /// goes to i / m_nStep where that is an entry, and stays otherwise.
    void MoveTo(long i) override {
        const long nEntry = i / m_nStep;
        if (nEntry >= 0 && nEntry < m_arrIndex.m_nLength) {
            m_arrIndex.m_nCurIndex = nEntry;
        }
        if (this->IsPosition(i)) {
            this->SetCursor(NodeAt(i), i);
        } else {
            this->SetCursor(this->m_pHead, -1);
        }
        TrustCursor();
    }

    /// Address of element i; the cursor stays. Takes what MoveTo takes inside the list; outside as in KyDList.
    T* GetAt(long i) const override {
        return this->IsPosition(i) ? this->DataOf(NodeAt(i)) : KyDList<T>::GetAt(i);
    }

    /// See KyDList::DelCur. O(1), plus one step for every index entry behind the cursor and, once positions
    /// are learnt, what KyNodePositions::Remove takes. Requires a current element.
    void DelCur() override {
        KY_CHECK(this->m_pCurNode != this->m_pHead, "KyXList::DelCur",
                 "no current element (index %ld, length %ld)", this->m_nCurIndex, this->m_nLength);
        const long nPosition = UnindexCur();
        KyDList<T>::DelCur();
        Positions().Remove(nPosition);
    }

    /// See KyDList::InsertAfterCur. O(1), plus one step for every index entry behind the cursor, so O(1) at
    /// the end. When the index must grow, it does so before the node is made; when that fails, the list is
    /// good for destruction only.
    T* InsertAfterCur(const T& x) override {
        const long nPosition = CursorPosition() + 1;
        if (m_arrIndex.m_nLength * m_nStep == this->m_nLength) {
            ReserveIndex(this->m_nLength + 1);
        }
        T* const pElement = KyDList<T>::InsertAfterCur(x);
        IndexNew(nPosition);
        return pElement;
    }

    /// See KyList::DetachAfterCur. O(1), plus O(length) / 1024 where positions are to be forgotten. The index
    /// loses the entries of the nodes cut off.
    long DetachAfterCur() override {
        this->m_nCurIndex = CursorPosition();
        KyDList<T>::DetachAfterCur();
        Positions().Forget();
        m_arrIndex.ReAllocate(EntriesBelow(this->m_nLength));
        TrustCursor();
        return this->m_nLength;
    }

    /// See KyList::Conbine. O(number of elements that move). Requires a doubly linked `other`.
    long Conbine(KyList<T>& other, long pos) override {
        if (pos < 0 || pos >= other.m_nLength || &other == this) {
            return this->m_nLength;
        }
        ReserveIndex(this->m_nLength + other.m_nLength - pos);
        const long nOldLength = this->m_nLength;
        KyListNode<T>* const pOldTail = this->m_pTail;
        KyDList<T>::Conbine(other, pos);
        IndexFrom(nOldLength, pOldTail->m_pNext);
        return this->m_nLength;
    }

    /// See KyList::ReverseList; the index is exact afterwards. O(length).
    void ReverseList() override {
        if (this->m_nLength <= 1) {
            return;
        }
        KyDList<T>::ReverseList();
        IndexFrom(0, this->m_pHead->m_pNext);
        SentinelOf().m_bCursorIsStale = true;
    }

    /// See KyList::Rotate; the index is exact afterwards. O(length).
    void Rotate(long from, long to) override {
        KyDList<T>::Rotate(from, to);
        if (from != to) {
            IndexFrom(0, this->m_pHead->m_pNext);
        }
    }

    KyDynArray<Node*>
        m_arrIndex;  // entry j: the node at position j * m_nStep; its cursor: the entry used last
    long m_nStep;    // positions between two indexed nodes

protected:
    using typename KyDList<T>::AroundSentinel;

    /// See KyDList::TakeOutCur.
    Node* TakeOutCur() {
        const long nPosition = UnindexCur();
        Node* const pNode = KyDList<T>::TakeOutCur();
        Positions().Remove(nPosition);
        return pNode;
    }

    /// See KyDList::PutBack. The index must have room: the list is not to become longer than it was before.
    void PutBack(Node* pNode, long i) {
        KyDList<T>::PutBack(pNode, i);
        IndexNew(i);
    }

    /// What the list knows of its nodes' positions.
    KyNodePositions<T>& Positions() const { return SentinelOf().m_positions; }

    /// Node at a position inside the list.
    Node* NodeAt(long i) const { return Positions().IsKnown() ? Positions().At(i) : WalkTo(i); }

    /// Leaves the cursors as a search does whose last move by MoveTo was to nProbed, a position inside the
    /// list, and which then reached position i.
    void StandOn(KyListNode<T>* pNode, long i, long nProbed) {
        m_arrIndex.m_nCurIndex = nProbed / m_nStep;
        this->SetCursor(pNode, i);
        TrustCursor();
    }

private:
    struct Sentinel : Node {
        Sentinel() : Node{{T(), nullptr}, nullptr} {}

        bool m_bCursorIsStale = false;  // m_nCurIndex may not be m_pCurNode's position
        long m_nWalked = 0;             // nodes passed on the way to positions that were not known
        KyNodePositions<T> m_positions;
    };

    /// Node at a position inside the list, from the nearer of the two index entries around it, or the tail.
    Node* WalkTo(long i) const {
        const long nEntry = i / m_nStep;
        const long nAfter = i - nEntry * m_nStep;
        const bool bLastEntry = nEntry + 1 == m_arrIndex.m_nLength;
        const long nBefore = (bLastEntry ? this->m_nLength - 1 : (nEntry + 1) * m_nStep) - i;
        LearnAfterWalking(std::min(nAfter, nBefore));
        if (nAfter <= nBefore) {
            KyListNode<T>* pNode = m_arrIndex.m_pData[nEntry];
            for (long k = 0; k < nAfter; ++k) {
                pNode = pNode->m_pNext;
            }
            return static_cast<Node*>(pNode);
        }
        Node* pNode = bLastEntry ? static_cast<Node*>(this->m_pTail) : m_arrIndex.m_pData[nEntry + 1];
        for (long k = 0; k < nBefore; ++k) {
            pNode = pNode->m_pPre;
        }
        return pNode;
    }

    /// Learns the positions once all walks together have passed as many nodes as the list has. A short list
    /// is left to its walks.
    void LearnAfterWalking(long nPassed) const {
        constexpr long nShort = 32;
        Sentinel& sentinel = SentinelOf();
        sentinel.m_nWalked += nPassed;
        if (sentinel.m_nWalked > this->m_nLength && this->m_nLength >= nShort) {
            sentinel.m_nWalked = 0;
            sentinel.m_positions.Learn(this->m_pHead->m_pNext, this->m_nLength);
        }
    }

    Sentinel& SentinelOf() const { return *static_cast<Sentinel*>(this->m_pHead); }
    void TrustCursor() { SentinelOf().m_bCursorIsStale = false; }

    /// Index entries at positions below n: ceil(n / m_nStep).
    long EntriesBelow(long n) const { return n == 0 ? 0 : (n - 1) / m_nStep + 1; }

    /// Position of the node under the cursor. O(1), O(length) while the cursor's index cannot be trusted.
    long CursorPosition() {
        if (!SentinelOf().m_bCursorIsStale) {
            return this->m_nCurIndex;
        }
        long nPosition = -1;
        for (KyListNode<T>* pNode = this->m_pHead; pNode != this->m_pCurNode; pNode = pNode->m_pNext) {
            ++nPosition;
        }
        SentinelOf().m_bCursorIsStale = nPosition != this->m_nCurIndex;
        return nPosition;
    }

    /// Takes the current element, which is about to go, out of the index, and returns its position.
    long UnindexCur() {
        const long nPosition = CursorPosition();
        if ((m_arrIndex.m_nLength - 1) * m_nStep == this->m_nLength - 1) {
            m_arrIndex.ReAllocate(m_arrIndex.m_nLength - 1);
        }
        for (long j = m_arrIndex.m_nLength - 1; j >= 0 && j * m_nStep >= nPosition; --j) {
            m_arrIndex.m_pData[j] = static_cast<Node*>(m_arrIndex.m_pData[j]->m_pNext);
        }
        return nPosition;
    }

    /// Takes the element under the cursor, linked a moment ago at nPosition, into the index, which has room.
    void IndexNew(long nPosition) {
        for (long j = m_arrIndex.m_nLength - 1; j >= 0 && j * m_nStep >= nPosition; --j) {
            m_arrIndex.m_pData[j] = m_arrIndex.m_pData[j]->m_pPre;
        }
        if (m_arrIndex.m_nLength * m_nStep < this->m_nLength) {
            AddEntry(this->m_pTail);
        }
        Positions().Insert(nPosition, static_cast<Node*>(this->m_pCurNode));
    }

    /// Makes room in the index for a list of nLength elements, without changing its entries.
    void ReserveIndex(long nLength) {
        const long nEntries = m_arrIndex.m_nLength;
        m_arrIndex.ReAllocate(std::max(nEntries, EntriesBelow(nLength)));
        m_arrIndex.ReAllocate(nEntries);
    }

    void AddEntry(KyListNode<T>* pNode) {
        m_arrIndex.ReAllocate(m_arrIndex.m_nLength + 1);
        m_arrIndex.m_pData[m_arrIndex.m_nLength - 1] = static_cast<Node*>(pNode);
    }

    /// Writes the entries from position nFrom on anew, pNode being the node there. The index has room for
    /// them.
    void IndexFrom(long nFrom, KyListNode<T>* pNode) {
        m_arrIndex.ReAllocate(EntriesBelow(nFrom));
        if (nFrom == 0) {
            Positions().Forget();
        }
        for (long i = nFrom; i < this->m_nLength; ++i, pNode = pNode->m_pNext) {
            if (i % m_nStep == 0) {
                AddEntry(pNode);
            }
            Positions().Insert(i, static_cast<Node*>(pNode));
        }
    }
};

/// The indexed list that owns the objects its elements point to, with a search by bisection.
template <class T>
class KY_API KyPXList : public KyOwningList<T, KyXList<T*>> {
public:
    /// An empty list with an index entry for every 64th node.
    KyPXList() : KyPXList(64) {}

    /// An empty list with an index entry for every nStep-th node. Requires nStep > 0.
    explicit KyPXList(long nStep) : KyOwningList<T, KyXList<T*>>(nStep) {}

    /// Searches a list that is sorted by x.Cmp(object) for an object that compares equal to x, by bisection
    /// between the positions first and last, clamped to the list. True with the cursor on such an object;
    /// false with the cursor on the element before which x belongs, or on none when that is the end; false
    /// with the cursor at `first` when the range is empty. O(log(last - first)) comparisons and as many
    /// positions, each as in MoveTo. Requires an object in every element probed.
    bool BFindDataTo(const T& x, long first, long last) {
        first = std::clamp(first, 0L, this->m_nLength);
        last = std::min(last, this->m_nLength - 1);
        if (first <= last && this->Positions().IsKnown() && typeid(*this) == typeid(KyPXList)) {
            return FindByNodes(x, first, last);
        }
        return FindByMoves(x, first, last);
    }

    /// Searches the whole list.
    bool BFindDataTo(const T& x) { return BFindDataTo(x, 0, this->m_nLength - 1); }

    using typename KyXList<T*>::Node;

private:
    /// A probe of a search on the nodes themselves. The cursor goes where the last one was made when the
    /// search ends, in whatever way.
    struct Probe {
        ~Probe() { m_list.StandOn(m_pNode, m_nIndex, m_nProbed); }

        int Compare(const T& x, Node* pNode, long i) {
            m_pNode = pNode;
            m_nIndex = i;
            m_nProbed = i;
            return m_list.Compare(x, pNode->m_data, i);
        }

        /// To the element behind, or to none.
        void StepOn() {
            m_pNode = m_pNode->m_pNext;
            m_nIndex = m_pNode != m_list.m_pHead ? m_nIndex + 1 : -1;
        }

        KyPXList& m_list;
        KyListNode<T*>* m_pNode;
        long m_nIndex;
        long m_nProbed;
    };

    /// The search by the stated steps. Every move of the cursor is a virtual call.
    bool FindByMoves(const T& x, long first, long last) {
        if (this->m_nLength == 0) {
            this->SetCursor(this->m_pHead, -1);
            return false;
        }
        if (first == 0) {
            this->m_arrIndex.m_nCurIndex = 0;
            this->MoveToFirst();
        } else {
            this->MoveTo(first);
        }
        if (first > last || CompareCurrent(x) < 0) {
            return false;
        }
        this->MoveTo(last);
        if (CompareCurrent(x) > 0) {
            this->MoveToNext();
            return false;
        }
        while (first < last) {
            const long nMiddle = (first + last) / 2;
            this->MoveTo(nMiddle);
            const int nOrder = CompareCurrent(x);
            if (nOrder == 0) {
                return true;
            }
            if (nOrder > 0) {
                first = nMiddle + 1;
            } else {
                last = nMiddle - 1;
            }
        }
        if (last < first) {
            return false;
        }
        this->MoveTo(last);
        const int nOrder = CompareCurrent(x);
        if (nOrder > 0) {
            this->MoveToNext();
        }
        return nOrder == 0;
    }

    /// The same on the nodes, for a list whose operations are the library's own and whose positions are
    /// known. While an object is compared, the two that may be next are already on their way to the
    /// processor. Requires a range that is not empty.
    bool FindByNodes(const T& x, long first, long last) {
        const auto& positions = this->Positions();
        Probe probe{*this, nullptr, -1, -1};
        long bLow = positions.BlockOf(first);  // the blocks that are still in question
        long bHigh = positions.BlockOf(last);
        if (probe.Compare(x, positions.At(first, bLow), first) < 0) {
            return false;
        }
        if (probe.Compare(x, positions.At(last, bHigh), last) > 0) {
            probe.StepOn();
            return false;
        }
        long nMiddle = (first + last) / 2;
        long b = positions.BlockOf(nMiddle, bLow, bHigh);
        Node* pNode = positions.At(nMiddle, b);
        while (first < last) {
            const long nBelow = std::max(first, (first + nMiddle - 1) / 2);
            const long nAbove = (nMiddle + 1 + last) / 2;
            const long bBelow = positions.BlockOf(nBelow, bLow, b);
            const long bAbove = positions.BlockOf(nAbove, b, bHigh);
            Node* const pBelow = positions.At(nBelow, bBelow);
            Node* const pAbove = positions.At(nAbove, bAbove);
            __builtin_prefetch(pBelow->m_data);
            __builtin_prefetch(pAbove->m_data);
            const int nOrder = probe.Compare(x, pNode, nMiddle);
            if (nOrder == 0) {
                return true;
            }
            // Chosen without a jump, which could not be foreseen.
            const bool bUp = nOrder > 0;
            first = bUp ? nMiddle + 1 : first;
            last = bUp ? last : nMiddle - 1;
            bLow = bUp ? b : bLow;
            bHigh = bUp ? bHigh : b;
            b = bUp ? bAbove : bBelow;
            nMiddle = bUp ? nAbove : nBelow;
            pNode = bUp ? pAbove : pBelow;
        }
        if (last < first) {
            return false;
        }
        const int nOrder = probe.Compare(x, pNode, nMiddle);
        if (nOrder > 0) {
            probe.StepOn();
        }
        return nOrder == 0;
    }

    int CompareCurrent(const T& x) { return Compare(x, this->GetCurData(), this->m_nCurIndex); }

    int Compare(const T& x, const T* pObject, [[maybe_unused]] long i) {
        KY_CHECK(pObject != nullptr, "KyPXList::BFindDataTo", "null element (index %ld, length %ld)", i,
                 this->m_nLength);
        return x.Cmp(*pObject);
    }
};
