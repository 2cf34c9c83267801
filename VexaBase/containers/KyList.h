// A singly linked list behind the container protocol, and the base of every list of the library.
//
// Elements live in heap nodes, closed into a ring by a sentinel. The cursor stands on a node: on an element,
// or on the sentinel, which is the place before the first and behind the last element and has index -1.
// Stepping past the end reaches the sentinel, the next step the first element again. An element's address is
// its node's address: GetNext and GetPre take any element pointer as a position, and it stays valid until
// that element is removed.
//
// Invariants:
//   (1) the chain is circular: sentinel, first ... m_pTail, sentinel; an empty list's sentinel is its own tail
//   (2) m_pCurNode is the node at position m_nCurIndex, the sentinel exactly when that is -1 (ReverseList alone
//       leaves the index behind, see there)
//   (3) m_nLength counts the element nodes; the sentinel's m_data is never an element
//
// The list owns its nodes, not what pointer elements point to (see KyPDList). Operations on the whole list
// are built from the cursor's, called through the virtual interface, so that a derived list's own versions
// take part.
#pragma once

#if defined(KY_CHECKED)
#include <atomic>
#endif
#include <iterator>
#include <limits>
#include <memory>
#include <utility>

#include "VexaBase/containers/KyDynArrayBase.h"

/// A list node. The element comes first, so its address is the node's.
template <class T>
struct KyListNode {
    /// The element.
    T m_data;
    /// The following node.
    KyListNode* m_pNext;
};

/// Bidirectional iterator over a list. Node is the list's node type; stepping back is O(1) where the node
/// knows its predecessor and a walk around the ring where it does not.
template <class T, class Node>
class KyListIterator {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = std::remove_const_t<T>;
    using difference_type = std::ptrdiff_t;
    using pointer = T*;
    using reference = T&;

    KyListIterator() = default;
    /// Stands at a node; the sentinel is the end.
    explicit KyListIterator(KyListNode<value_type>* pNode) : m_pNode(pNode) {}
    /// A const iterator is made from any other.
    template <class U, class = std::enable_if_t<!std::is_const_v<U> && std::is_same_v<const U, T>>>
    KyListIterator(const KyListIterator<U, Node>& other) : m_pNode(other.m_pNode) {}

    reference operator*() const { return m_pNode->m_data; }
    pointer operator->() const { return std::addressof(m_pNode->m_data); }
    KyListIterator& operator++() {
        m_pNode = m_pNode->m_pNext;
        return *this;
    }
    KyListIterator operator++(int) { return KyListIterator(std::exchange(m_pNode, m_pNode->m_pNext)); }
    KyListIterator& operator--() {
        m_pNode = Predecessor(static_cast<Node*>(m_pNode));
        return *this;
    }
    KyListIterator operator--(int) {
        const KyListIterator before = *this;
        --*this;
        return before;
    }

    friend bool operator==(const KyListIterator& a, const KyListIterator& b) {
        return a.m_pNode == b.m_pNode;
    }
    friend bool operator!=(const KyListIterator& a, const KyListIterator& b) {
        return a.m_pNode != b.m_pNode;
    }

private:
    template <class U, class N>
    friend class KyListIterator;

    template <class N>
    static auto Predecessor(N* pNode) -> decltype(pNode->m_pPre) {
        return pNode->m_pPre;
    }
    static KyListNode<value_type>* Predecessor(KyListNode<value_type>* pNode) {
        KyListNode<value_type>* p = pNode;
        while (p->m_pNext != pNode) {
            p = p->m_pNext;
        }
        return p;
    }

    KyListNode<value_type>* m_pNode = nullptr;
};

#if defined(KY_CHECKED)
template <class T>
class KyList;

/// Tells whether a list is doubly linked. The first such list sets it, whose class this header cannot know.
template <class T>
[[gnu::visibility("hidden")]] inline std::atomic<bool (*)(const KyList<T>&)> KyIsDoublyLinked{nullptr};
#endif

template <class T>
class KY_API KyList : public KyDynArrayBase<T> {
public:
    /// The type of every node, the sentinel included.
    using Node = KyListNode<T>;
    using iterator = KyListIterator<T, Node>;
    using const_iterator = KyListIterator<const T, Node>;

    /// An empty list.
    KyList() : KyList(0) {}

    /// Starts with n default elements and the cursor on none. O(n).
    explicit KyList(long n) : KyList(AroundSentinel{}, new Node{T(), nullptr}) { AppendDefaults(n); }

    /// Lengthens the list to n elements by appending T(); a list never shrinks here. The cursor stays. The
    /// elements appended by the time an exception comes out stay too. O(n - length).
    void ReAllocate(long n) override {
        if (n <= this->m_nLength) {
            return;
        }
        const CursorScope scope(*this);
        while (this->m_nLength < n) {
            this->MoveToLast();
            this->Append(T());
        }
    }

    ~KyList() override {
        if (m_pHead != nullptr) {
            FreeNodes<Node>();
            delete m_pHead;
        }
    }

    /// Makes the list n elements long; the flag is ignored by every list. Growing leaves the cursor where it
    /// was, shrinking deletes from the end and leaves it on the new last element, or on none. Requires n >=
    /// 0.
    void SetLength(long n, bool /*bKeep*/) override {
        KY_CHECK(n >= 0, "KyList::SetLength", "negative length (%ld)", n);
        if (n > this->m_nLength) {
            this->ReAllocate(n);
            return;
        }
        while (this->m_nLength > n) {
            this->MoveToLast();
            this->DelCur();
        }
    }

    /// Frees every element: length 0, cursor on none. O(length).
    void Reset() override { FreeNodes<Node>(); }

    /// The current element; with the cursor on none, the sentinel's slot. Requires a current element.
    T& GetCurData() override {
        KY_CHECK(m_pCurNode != m_pHead, "KyList::GetCurData", "no current element (index %ld, length %ld)",
                 this->m_nCurIndex, this->m_nLength);
        return m_pCurNode->m_data;
    }

    /// Assigns x to the current element. Requires a current element.
    void SetCurData(const T& x) override {
        KY_CHECK(m_pCurNode != m_pHead, "KyList::SetCurData", "no current element (index %ld, length %ld)",
                 this->m_nCurIndex, this->m_nLength);
        m_pCurNode->m_data = x;
    }

    /// Cursor to the first element; on none when the list is empty. O(1).
    void MoveToFirst() override { SetCursor(m_pHead->m_pNext, this->m_nLength != 0 ? 0 : -1); }

    /// Cursor one step around the ring: from the last element to none (index -1), from none to the first.
    /// O(1).
    void MoveToNext() override {
        m_pCurNode = m_pCurNode->m_pNext;
        this->m_nCurIndex = m_pCurNode == m_pHead ? -1 : this->m_nCurIndex + 1;
    }

    /// Cursor one step back: from the first element to none, from none to the last. O(index) here, O(1) from
    /// none.
    void MoveToPre() override {
        if (this->m_nCurIndex == -1) {
            this->MoveToLast();
        } else {
            this->MoveTo(this->m_nCurIndex - 1);
        }
    }

    /// Cursor to the last element; on none when the list is empty. O(1).
    void MoveToLast() override { SetCursor(m_pTail, this->m_nLength - 1); }

    /// Cursor to position i, on none when i is outside the list. Forward the distance from the cursor,
    /// backward i + 1 steps from the head, O(1) to the last element.
    void MoveTo(long i) override {
        if (i < 0 || i >= this->m_nLength) {
            SetCursor(m_pHead, -1);
            return;
        }
        if (i == this->m_nLength - 1) {
            this->MoveToLast();
            return;
        }
        if (i < this->m_nCurIndex) {
            this->MoveToFirst();
        }
        while (this->m_nCurIndex != i) {
            this->MoveToNext();
        }
    }

    T* GetFirst() const override { return this->m_nLength != 0 ? DataOf(m_pHead->m_pNext) : nullptr; }
    T* GetNext(const T* p) const override {
        return p == nullptr || NodeOf(p) == m_pTail ? nullptr : DataOf(NodeOf(p)->m_pNext);
    }

    /// O(1) when p is behind the cursor, else O(position of p).
    T* GetPre(const T* p) const override {
        if (p == nullptr || NodeOf(p) == m_pHead->m_pNext) {
            return nullptr;
        }
        if (m_pCurNode->m_pNext == NodeOf(p)) {
            return DataOf(m_pCurNode);
        }
        Node* pNode = m_pHead->m_pNext;
        for (long i = 1; i < this->m_nLength; ++i) {
            if (pNode->m_pNext == NodeOf(p)) {
                return DataOf(pNode);
            }
            pNode = pNode->m_pNext;
        }
        return nullptr;
    }
    T* GetLast() const override { return this->m_nLength != 0 ? DataOf(m_pTail) : nullptr; }

    /// Address of element i; the cursor stays. An index outside the list is no error: the walk goes on around
    /// the ring through the sentinel's slot, which is what GetAt(length) gives on a list whose cursor is on
    /// none. O(distance from the cursor) forward, O(i) backward.
    T* GetAt(long i) const override {
        Node* pNode = m_pCurNode;
        long nIndex = this->m_nCurIndex;
        if (i < nIndex) {
            pNode = m_pHead;
            nIndex = -1;
        }
        for (; nIndex < i; ++nIndex) {
            pNode = pNode->m_pNext;
        }
        return DataOf(pNode);
    }

    /// Inserts x in front of the current element, behind the last one with the cursor on none. The cursor
    /// ends on x; it stays where it was when the insertion throws. O(index) in a singly linked list.
    void InsertCur(const T& x) override {
        Node* const pCurNode = m_pCurNode;
        const long nCurIndex = this->m_nCurIndex;
        const long nLength = this->m_nLength;
        this->MoveToPre();
        KyUndo moveBack([this, pCurNode, nCurIndex, nLength] {
            if (this->m_nLength == nLength) {
                SetCursor(pCurNode, nCurIndex);
            }
        });
        this->InsertAfterCur(x);
        moveBack.Dismiss();
    }

    /// Inserts x at position i; at the head when i is outside 0 .. length, deliberately no error. The cursor
    /// ends on x.
    void Insert(long i, const T& x) override {
        this->MoveTo(i != std::numeric_limits<long>::min() ? i - 1 : i);
        this->InsertAfterCur(x);
    }

    /// Inserts x in front of the first element. The cursor ends on x. O(1).
    void InsertHead(const T& x) override {
        this->MoveTo(-1);
        this->InsertAfterCur(x);
    }

    /// Inserts x behind the last element and returns its index. The cursor ends on x. O(1).
    long Append(const T& x) override {
        this->MoveToLast();
        this->InsertAfterCur(x);
        return this->m_nLength - 1;
    }

    /// Removes the current element. The cursor steps back to the element before it, or to none when the first
    /// one goes, so that MoveToNext lands on the element that followed. O(index) in a singly linked list.
    /// Requires a current element.
    void DelCur() override {
        KY_CHECK(m_pCurNode != m_pHead, "KyList::DelCur", "no current element (index %ld, length %ld)",
                 this->m_nCurIndex, this->m_nLength);
        Node* const pRemoved = m_pCurNode;
        this->MoveToPre();
        m_pCurNode->m_pNext = pRemoved->m_pNext;
        if (pRemoved == m_pTail) {
            m_pTail = m_pCurNode;
        }
        delete pRemoved;
        --this->m_nLength;
    }

    using KyDynArrayBase<T>::Sort;

    /// Stable insertion sort; a list shorter than 2 is left alone, cursor included, otherwise the cursor ends
    /// on none. Elements that move get new nodes, the others keep theirs. See KyDynArrayBase::Sort. O(n^2)
    /// comparisons at worst, and cursor steps that are O(n) each in a singly linked list.
    void Sort(bool bAscending) override {
        if (bAscending) {
            InsertionSort([](T& e, T& x) { return KyElementOrder<T>::IsGreater(e, x); });
        } else {
            InsertionSort([](T& e, T& x) { return KyElementOrder<T>::IsLess(e, x); });
        }
    }

    /// The same sort by a comparison function, called with the earlier element first.
    void Sort(int (*pfnCompare)(const T&, const T&)) override {
        InsertionSort([pfnCompare](const T& e, const T& x) { return pfnCompare(e, x) > 0; });
    }

    /// Inserts a copy of x behind the current element, at the head with the cursor on none. The cursor ends
    /// on x; returns its address. Changes nothing when the node cannot be had. O(1).
    virtual T* InsertAfterCur(const T& x) {
        Node* const pNode = new Node{x, m_pCurNode->m_pNext};
        m_pCurNode->m_pNext = pNode;
        SetCurrentToNew(pNode);
        return DataOf(pNode);
    }

    /// Cuts the list behind the cursor and returns the new length, index + 1. The nodes cut off are not
    /// freed: they belong to a caller who has them linked elsewhere, as Conbine does. O(1).
    virtual long DetachAfterCur() {
        m_pCurNode->m_pNext = m_pHead;
        m_pTail = m_pCurNode;
        this->m_nLength = this->m_nCurIndex + 1;
        return this->m_nLength;
    }

    /// Moves the elements of `other` from pos to its end behind the end of this list, node by node identity,
    /// and returns this list's new length. This cursor stays; the other's ends on its new last element, or on
    /// none. A pos outside `other` and a list's own self change nothing. O(other's length). Requires a singly
    /// linked `other`.
    virtual long Conbine(KyList& other, long pos) {
        KY_CHECK(KyIsDoublyLinked<T> == nullptr || !KyIsDoublyLinked<T>.load()(other), "KyList::Conbine",
                 "the other list is doubly linked");
        if (pos < 0 || pos >= other.m_nLength || &other == this) {
            return this->m_nLength;
        }
        SpliceTail(other, pos);
        return this->m_nLength;
    }

    /// Reverses the order of the nodes in place. The cursor keeps its node and, deliberately, its index,
    /// which is the node's old position: move the cursor (MoveToFirst or MoveToLast) before relying on it.
    /// O(length).
    virtual void ReverseList() {
        if (this->m_nLength <= 1) {
            return;
        }
        Node* const pOldFirst = m_pHead->m_pNext;
        Node* pBefore = m_pHead;
        for (Node* pNode = pOldFirst; pNode != m_pHead;) {
            Node* const pNext = pNode->m_pNext;
            pNode->m_pNext = pBefore;
            pBefore = pNode;
            pNode = pNext;
        }
        m_pHead->m_pNext = m_pTail;
        m_pTail = pOldFirst;
    }

    /// Shifts the elements around the ring so that the one at `from` comes to position `to`. The cursor ends
    /// on the first element; equal positions change nothing, the cursor included. O(length). Requires
    /// positions inside the list.
    virtual void Rotate(long from, long to) {
        if (from == to) {
            return;
        }
        KY_CHECK(IsPosition(from) && IsPosition(to), "KyList::Rotate",
                 "position out of range (%ld to %ld, length %ld)", from, to, this->m_nLength);
        if (IsPosition(from) && IsPosition(to)) {
            RotateRing(from, to);
        }
    }

    iterator begin() { return iterator(m_pHead->m_pNext); }
    iterator end() { return iterator(m_pHead); }
    const_iterator begin() const { return const_iterator(m_pHead->m_pNext); }
    const_iterator end() const { return const_iterator(m_pHead); }

    Node* m_pCurNode;  // the node under the cursor
    Node* m_pHead;     // the sentinel
    Node* m_pTail;     // the last node; the sentinel when the list is empty

protected:
    /// Marks the constructor that takes a sentinel.
    struct AroundSentinel {};

    /// An empty list closed by the given sentinel. A class that passes one of its own type frees it in its
    /// destructor and leaves m_pHead null.
    KyList(AroundSentinel, Node* pSentinel) : m_pCurNode(pSentinel), m_pHead(pSentinel), m_pTail(pSentinel) {
        pSentinel->m_pNext = pSentinel;
    }

    /// A node's element; it has the node's address.
    static T* DataOf(Node* pNode) { return std::addressof(pNode->m_data); }
    /// The node of an element of this list.
    static Node* NodeOf(const T* p) { return reinterpret_cast<Node*>(const_cast<T*>(p)); }

    /// Whether i is the position of an element.
    bool IsPosition(long i) const { return i >= 0 && i < this->m_nLength; }

    /// Puts the cursor back where it was, at the end of a scope.
    class CursorScope {
    public:
        /// Remembers the cursor.
        explicit CursorScope(KyList& list)
            : m_list(list), m_pCurNode(list.m_pCurNode), m_nCurIndex(list.m_nCurIndex) {}
        CursorScope(const CursorScope&) = delete;
        CursorScope& operator=(const CursorScope&) = delete;
        ~CursorScope() { m_list.SetCursor(m_pCurNode, m_nCurIndex); }

    private:
        KyList& m_list;
        Node* m_pCurNode;
        long m_nCurIndex;
    };

    /// Puts the cursor on a node, of which the position is given.
    void SetCursor(Node* pNode, long nIndex) {
        m_pCurNode = pNode;
        this->m_nCurIndex = nIndex;
    }

    /// Counts a node just linked behind the cursor and puts the cursor on it. The length comes last: next to
    /// the index, g++ would read both as one vector, which waits for their separate stores.
    void SetCurrentToNew(Node* pNode) {
        Node* const pBefore = m_pCurNode;
        SetCursor(pNode, this->m_nCurIndex + 1);
        if (m_pTail == pBefore) {
            m_pTail = pNode;
        }
        ++this->m_nLength;
    }

    /// Appends T() until the list has n elements; the cursor ends on none.
    void AppendDefaults(long n) {
        while (this->m_nLength < n) {
            this->MoveToLast();
            this->InsertAfterCur(T());
        }
        SetCursor(m_pHead, -1);
    }

    /// Frees every element node, as the node type that it was made as, and leaves the bare sentinel.
    template <class N>
    void FreeNodes() {
        m_pTail->m_pNext = nullptr;
        for (Node* pNode = m_pHead->m_pNext; pNode != nullptr;) {
            Node* const pNext = pNode->m_pNext;
            delete static_cast<N*>(pNode);
            pNode = pNext;
        }
        m_pHead->m_pNext = m_pHead;
        m_pTail = m_pHead;
        SetCursor(m_pHead, -1);
        this->m_nLength = 0;
    }

    /// The lists' sort. isAfter(e, x) tells that x moves in front of the earlier element e; hand over is
    /// called with the cursor on a node whose element has been copied to its new place, before that node is
    /// removed.
    template <class IsAfter, class HandOver>
    void InsertionSort(IsAfter isAfter, HandOver handOver) {
        if (this->m_nLength < 2) {
            return;
        }
        this->MoveToFirst();
        this->MoveToNext();
        while (this->m_nCurIndex != -1) {
            Node* const pNode = m_pCurNode;
            const long nIndex = this->m_nCurIndex;
            T& x = this->GetCurData();
            this->MoveToPre();
            if (!isAfter(this->GetCurData(), x)) {
                this->MoveToNext();
            } else {
                do {
                    this->MoveToPre();
                } while (this->m_nCurIndex >= 0 && isAfter(this->GetCurData(), x));
                this->InsertAfterCur(x);
                SetCursor(pNode, nIndex + 1);
                handOver();
                this->DelCur();
            }
            this->MoveToNext();
        }
    }
    /// The same, where nothing is to be handed over.
    template <class IsAfter>
    void InsertionSort(IsAfter isAfter) {
        InsertionSort(isAfter, [] {});
    }

    /// Links other's nodes from pos on behind this list's tail, and returns the first of them.
    Node* SpliceTail(KyList& other, long pos) {
        other.MoveTo(pos);
        Node* const pFirst = other.m_pCurNode;
        other.MoveToLast();
        Node* const pLast = other.m_pCurNode;
        this->m_nLength += other.m_nLength - pos;
        other.MoveTo(pos - 1);
        other.DetachAfterCur();
        m_pTail->m_pNext = pFirst;
        pLast->m_pNext = m_pHead;
        m_pTail = pLast;
        return pFirst;
    }

    /// Rotates by valid positions that differ; the cursor ends on the new first node.
    void RotateRing(long from, long to) {
        const long n = this->m_nLength;
        const long nShift = (from - to + n) % n;
        this->MoveTo((n + nShift - 1) % n);
        Node* const pNewTail = m_pCurNode;
        this->MoveTo(nShift);
        m_pTail->m_pNext = m_pHead->m_pNext;
        m_pHead->m_pNext = m_pCurNode;
        pNewTail->m_pNext = m_pHead;
        m_pTail = pNewTail;
        this->m_nCurIndex = 0;
    }
};
