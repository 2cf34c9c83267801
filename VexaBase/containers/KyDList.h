// A doubly linked list behind the container protocol.
//
// A node knows its predecessor too, so that stepping back, removing the current element and reaching a
// position from the cursor take constant or distance-bound time. Everything that KyList builds from cursor
// operations profits without being written again.
//
// Invariants, besides those of KyList:
//   (1) every node, the sentinel included, is a KyDListNode
//   (2) the ring closes both ways: n->m_pNext->m_pPre == n for every node n and for the sentinel, whose
//       m_pPre is the tail
#pragma once

#include <typeinfo>
#include <utility>

#include "VexaBase/containers/KyList.h"

/// A doubly linked node. The element comes first, so its address is the node's.
template <class T>
struct KyDListNode : KyListNode<T> {
    /// The preceding node.
    KyDListNode* m_pPre;
};

template <class T>
class KY_API KyDList : public KyList<T> {
public:
    /// The type of every node, the sentinel included.
    using Node = KyDListNode<T>;
    using iterator = KyListIterator<T, Node>;
    using const_iterator = KyListIterator<const T, Node>;

    /// An empty list.
    KyDList() : KyDList(0) {}

    /// Starts with n default elements and the cursor on none. O(n).
    explicit KyDList(long n) : KyDList(AroundSentinel{}, new Node{{T(), nullptr}, nullptr}) {
        this->AppendDefaults(n);
    }

    ~KyDList() override {
        if (this->m_pHead != nullptr) {
            FreeRing<Node>();
        }
    }

    /// Frees every element: length 0, cursor on none. O(length).
    void Reset() override {
        this->template FreeNodes<Node>();
        Link(this->m_pHead, this->m_pHead);
    }

    /// Cursor one step back around the ring: from the first element to none (index -1), from none to the
    /// last. O(1).
    void MoveToPre() override {
        this->m_pCurNode = PreOf(this->m_pCurNode);
        this->m_nCurIndex = this->m_pCurNode == this->m_pTail ? this->m_nLength - 1 : this->m_nCurIndex - 1;
    }

    /// Cursor to position i, on none when i is outside the list. O(distance from the cursor), O(1) to the
    /// first and the last.
    void MoveTo(long i) override {
        if (!this->IsPosition(i)) {
            this->SetCursor(this->m_pHead, -1);
        } else if (i == 0) {
            this->SetCursor(this->m_pHead->m_pNext, 0);
        } else if (i == this->m_nLength - 1) {
            this->SetCursor(this->m_pTail, i);
        } else if (i < this->m_nCurIndex) {
            while (this->m_nCurIndex != i) {
                this->MoveToPre();
            }
        } else {
            while (this->m_nCurIndex != i) {
                this->MoveToNext();
            }
        }
    }

    /// O(1).
    T* GetPre(const T* p) const override {
        return p == nullptr || this->NodeOf(p) == this->m_pHead->m_pNext
                   ? nullptr
                   : this->DataOf(PreOf(this->NodeOf(p)));
    }

    /// Address of element i; the cursor stays. An index outside the list is no error: the walk goes on around
    /// the ring through the sentinel's slot. O(distance from the cursor).
    T* GetAt(long i) const override {
        KyListNode<T>* pNode = this->m_pCurNode;
        long nIndex = this->m_nCurIndex;
        for (; nIndex < i; ++nIndex) {
            pNode = pNode->m_pNext;
        }
        for (; nIndex > i; --nIndex) {
            pNode = PreOf(pNode);
        }
        return this->DataOf(pNode);
    }

    /// Removes the current element. The cursor steps back to the element before it, or to none when the first
    /// one goes, so that MoveToNext lands on the element that followed. O(1). Requires a current element.
    void DelCur() override {
        KY_CHECK(this->m_pCurNode != this->m_pHead, "KyDList::DelCur",
                 "no current element (index %ld, length %ld)", this->m_nCurIndex, this->m_nLength);
        delete UnlinkCur();
        --this->m_nLength;
    }

    using KyList<T>::Sort;

    /// The sorts of KyList. O(length + pairs out of order).
    void Sort(bool bAscending) override {
        if (bAscending) {
            SortStably([](T& e, T& x) { return KyElementOrder<T>::IsGreater(e, x); });
        } else {
            SortStably([](T& e, T& x) { return KyElementOrder<T>::IsLess(e, x); });
        }
    }
    void Sort(int (*pfnCompare)(const T&, const T&)) override {
        SortStably([pfnCompare](const T& e, const T& x) { return pfnCompare(e, x) > 0; });
    }

    /// Inserts a copy of x behind the current element, at the head with the cursor on none. The cursor ends
    /// on x; returns its address. Changes nothing when the node cannot be had. O(1).
    T* InsertAfterCur(const T& x) override {
        Node* const pNode = new Node{{x, nullptr}, nullptr};
        LinkAfterCur(pNode);
        return this->DataOf(pNode);
    }

    /// See KyList::DetachAfterCur.
    long DetachAfterCur() override {
        Link(this->m_pCurNode, this->m_pHead);
        return KyList<T>::DetachAfterCur();
    }

    /// See KyList::Conbine. Requires a doubly linked `other`.
    long Conbine(KyList<T>& other, long pos) override {
        KY_CHECK(IsDoublyLinked(other), "KyDList::Conbine", "the other list is singly linked");
        if (pos < 0 || pos >= other.m_nLength || &other == this) {
            return this->m_nLength;
        }
        KyListNode<T>* const pOldTail = this->m_pTail;
        Link(pOldTail, this->SpliceTail(other, pos));
        Link(this->m_pTail, this->m_pHead);
        return this->m_nLength;
    }

    /// See KyList::ReverseList.
    void ReverseList() override {
        KyList<T>::ReverseList();
        KyListNode<T>* pNode = this->m_pHead;
        do {
            Link(pNode, pNode->m_pNext);
            pNode = pNode->m_pNext;
        } while (pNode != this->m_pHead);
    }

    /// See KyList::Rotate. O(distance from the cursor).
    void Rotate(long from, long to) override {
        KyListNode<T>* const pOldTail = this->m_pTail;
        KyList<T>::Rotate(from, to);
        for (KyListNode<T>* pNode : {pOldTail, this->m_pTail, this->m_pHead}) {
            Link(pNode, pNode->m_pNext);
        }
    }

    iterator begin() { return iterator(this->m_pHead->m_pNext); }
    iterator end() { return iterator(this->m_pHead); }
    const_iterator begin() const { return const_iterator(this->m_pHead->m_pNext); }
    const_iterator end() const { return const_iterator(this->m_pHead); }

protected:
    using typename KyList<T>::AroundSentinel;

    /// An empty list closed by the given sentinel, for a derived class with a larger one.
    KyDList(AroundSentinel around, Node* pSentinel) : KyList<T>(around, pSentinel) {
        Link(pSentinel, pSentinel);
#if defined(KY_CHECKED)
        KyIsDoublyLinked<T> = IsDoublyLinked;
#endif
    }

    /// The node before a node of this list.
    static KyListNode<T>* PreOf(KyListNode<T>* pNode) { return static_cast<Node*>(pNode)->m_pPre; }

    /// Makes b follow a, in both directions.
    static void Link(KyListNode<T>* a, KyListNode<T>* b) {
        a->m_pNext = b;
        static_cast<Node*>(b)->m_pPre = static_cast<Node*>(a);
    }

    /// Takes the current node out of the ring and steps the cursor back. The node is the caller's then, and the
    /// length is the caller's to lower.
    Node* UnlinkCur() {
        KyListNode<T>* const pNode = this->m_pCurNode;
        this->MoveToPre();
        Link(this->m_pCurNode, pNode->m_pNext);
        if (pNode == this->m_pTail) {
            this->m_pTail = this->m_pCurNode;
        }
        return static_cast<Node*>(pNode);
    }

    /// Links a node of the caller's behind the current one and counts it. The cursor ends on it.
    void LinkAfterCur(Node* pNode) {
        Link(pNode, this->m_pCurNode->m_pNext);
        Link(this->m_pCurNode, pNode);
        this->SetCurrentToNew(pNode);
    }

    /// Removes the current element as KyDList::DelCur does, but hands its node to the caller.
    Node* TakeOutCur() {
        Node* const pNode = UnlinkCur();
        --this->m_nLength;
        return pNode;
    }

    /// Makes a node that was taken out of this list element i, without allocating. The cursor ends on it.
    void PutBack(Node* pNode, long i) {
        this->MoveTo(i - 1);
        LinkAfterCur(pNode);
    }

    /// Frees every element node and the sentinel, which is of the type given, and leaves no ring for the base
    /// class.
    template <class Sentinel>
    void FreeRing() {
        this->template FreeNodes<Node>();
        delete static_cast<Sentinel*>(std::exchange(this->m_pHead, nullptr));
    }

private:
    static bool IsDoublyLinked(const KyList<T>& list) {
        return dynamic_cast<const KyDList*>(&list) != nullptr;
    }

    template <class IsAfter>
    void SortStably(IsAfter isAfter) {
        if (typeid(*this) == typeid(KyDList)) {
            SortNodes(isAfter);
        } else {
            this->InsertionSort(isAfter);
        }
    }

    /// KyList::InsertionSort where no derived class takes part: the same steps, the cursor's included, from
    /// node to node.
    template <class IsAfter>
    void SortNodes(IsAfter isAfter) {
        if (this->m_nLength < 2) {
            return;
        }
        KyListNode<T>* pNode = this->m_pHead->m_pNext->m_pNext;
        for (long nIndex = 1; pNode != this->m_pHead; ++nIndex) {
            KyListNode<T>* const pNext = pNode->m_pNext;
            KyListNode<T>* pEarlier = PreOf(pNode);
            this->SetCursor(pEarlier, nIndex - 1);
            if (isAfter(pEarlier->m_data, pNode->m_data)) {
                long nEarlier = nIndex - 1;
                do {
                    pEarlier = PreOf(pEarlier);
                    this->SetCursor(pEarlier, --nEarlier);
                } while (nEarlier >= 0 && isAfter(pEarlier->m_data, pNode->m_data));
                KyDList::InsertAfterCur(pNode->m_data);
                this->SetCursor(pNode, nIndex + 1);
                KyDList::DelCur();
            }
            pNode = pNext;
        }
        this->SetCursor(this->m_pHead, -1);
    }
};
