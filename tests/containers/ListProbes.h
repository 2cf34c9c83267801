// What the tests of the lists look through: walkers that check a ring from the outside, elements and objects
// that write down what they are compared with, and a list that writes down every virtual call.
#pragma once

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "CallRecorder.h"
#include "TestElements.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyXList.h"

/// Pairs of tags in the order in which their bearers were compared.
using Comparisons = std::vector<std::pair<long, long>>;

/// An element that orders by its key alone; the tag tells equal keys apart. Every comparison is written down.
struct Card {
    long m_nKey = 0;
    long m_nTag = 0;

    inline static Comparisons s_compared;

    static int Compare(const Card& a, const Card& b) {
        s_compared.emplace_back(a.m_nTag, b.m_nTag);
        return a.m_nKey < b.m_nKey ? -1 : a.m_nKey > b.m_nKey ? 1 : 0;
    }

    friend bool operator>(const Card& a, const Card& b) { return Compare(a, b) > 0; }
    friend bool operator<(const Card& a, const Card& b) { return Compare(a, b) < 0; }
    friend bool operator==(const Card& a, const Card& b) {
        return a.m_nKey == b.m_nKey && a.m_nTag == b.m_nTag;
    }
    friend std::ostream& operator<<(std::ostream& os, const Card& x) {
        return os << x.m_nKey << '#' << x.m_nTag;
    }
};

/// The same as an object for the owning lists, with the comparison that BFindDataTo asks for.
struct Token : Owned {
    explicit Token(long nKey, long nTag = 0) : Owned(nTag), m_nKey(nKey) {}

    long m_nKey;

    inline static Comparisons s_compared;

    static int Compare(const Token& a, const Token& b) {
        s_compared.emplace_back(a.m_nId, b.m_nId);
        return a.m_nKey < b.m_nKey ? -1 : a.m_nKey > b.m_nKey ? 1 : 0;
    }
    int Cmp(const Token& other) const { return Compare(*this, other); }

    friend bool operator>(const Token& a, const Token& b) { return Compare(a, b) > 0; }
    friend bool operator<(const Token& a, const Token& b) { return Compare(a, b) < 0; }
};

/// The element nodes from the first to the last, by m_pNext alone.
template <class T>
std::vector<KyListNode<T>*> Nodes(const KyList<T>& list) {
    std::vector<KyListNode<T>*> nodes;
    for (KyListNode<T>* p = list.m_pHead->m_pNext; p != list.m_pHead; p = p->m_pNext) {
        nodes.push_back(p);
    }
    return nodes;
}

template <class T>
std::vector<T> Elements(const KyList<T>& list) {
    std::vector<T> elements;
    for (const KyListNode<T>* p : Nodes(list)) {
        elements.push_back(p->m_data);
    }
    return elements;
}

/// Position of the node under the cursor, whatever the cursor's index says; -1 for the sentinel.
template <class T>
long CursorPosition(const KyList<T>& list) {
    long nPosition = -1;
    for (const KyListNode<T>* p = list.m_pHead; p != list.m_pCurNode; p = p->m_pNext) {
        ++nPosition;
    }
    return nPosition;
}

/// Whether the ring, the length, the tail, the backward links and the index entries agree; the cursor's node
/// apart.
template <class T>
::testing::AssertionResult RingIsSound(const KyList<T>& list) {
    const auto fail = [] { return ::testing::AssertionFailure(); };
    long nLength = 0;
    const KyListNode<T>* pLast = list.m_pHead;
    for (const KyListNode<T>* p = list.m_pHead->m_pNext; p != list.m_pHead; p = p->m_pNext) {
        if (++nLength > list.m_nLength) {
            return fail() << "more nodes than the length " << list.m_nLength;
        }
        pLast = p;
    }
    if (nLength != list.m_nLength) {
        return fail() << nLength << " nodes, length " << list.m_nLength;
    }
    if (list.m_pTail != pLast) {
        return fail() << "m_pTail is not the last node";
    }
    if (dynamic_cast<const KyDList<T>*>(&list) != nullptr) {
        const KyListNode<T>* p = list.m_pHead;
        do {
            if (static_cast<const KyDListNode<T>*>(p->m_pNext)->m_pPre != p) {
                return fail() << "a node's successor does not lead back to it";
            }
            p = p->m_pNext;
        } while (p != list.m_pHead);
    }
    if (const auto* pIndexed = dynamic_cast<const KyXList<T>*>(&list)) {
        const long nStep = pIndexed->m_nStep;
        const std::vector<KyListNode<T>*> nodes = Nodes(list);
        const auto& index = pIndexed->m_arrIndex;
        if (index.m_nLength != nLength / nStep + (nLength % nStep != 0 ? 1 : 0)) {
            return fail() << index.m_nLength << " index entries for length " << nLength << ", step " << nStep;
        }
        for (long j = 0; j < index.m_nLength; ++j) {
            if (index.m_pData[j] != nodes[static_cast<std::size_t>(j * nStep)]) {
                return fail() << "index entry " << j << " is not the node at position " << j * nStep;
            }
        }
    }
    return ::testing::AssertionSuccess();
}

/// RingIsSound, and the cursor's index is its node's position.
template <class T>
::testing::AssertionResult IsSound(const KyList<T>& list) {
    if (const auto ring = RingIsSound(list); !ring) {
        return ring;
    }
    bool bOnRing = list.m_pCurNode == list.m_pHead;
    for (const KyListNode<T>* p : Nodes(list)) {
        bOnRing = bOnRing || p == list.m_pCurNode;
    }
    if (!bOnRing) {
        return ::testing::AssertionFailure() << "the cursor is on no node of the list";
    }
    if (CursorPosition(list) != list.m_nCurIndex) {
        return ::testing::AssertionFailure() << "the cursor's index is " << list.m_nCurIndex
                                             << ", its node's position " << CursorPosition(list);
    }
    return ::testing::AssertionSuccess();
}

/// Frees nodes that DetachAfterCur cut off, as the node type given.
template <class Node, class T>
void FreeNodes(const std::vector<KyListNode<T>*>& nodes) {
    for (KyListNode<T>* p : nodes) {
        delete static_cast<Node*>(p);
    }
}

/// One kind of list, seen through the interface that all kinds share.
template <class T>
struct ListKind {
    const char* m_pszName;
    std::unique_ptr<KyList<T>> (*m_pfnMake)();
    std::size_t m_nNodeBytes;
    void (*m_pfnFreeNodes)(const std::vector<KyListNode<T>*>&);

    /// The plain kinds; the indexed one has an entry for every second node.
    static std::vector<ListKind> All() {
        return {{"KyList", []() -> std::unique_ptr<KyList<T>> { return std::make_unique<KyList<T>>(); },
                 sizeof(KyListNode<T>), FreeNodes<KyListNode<T>, T>},
                {"KyDList", []() -> std::unique_ptr<KyList<T>> { return std::make_unique<KyDList<T>>(); },
                 sizeof(KyDListNode<T>), FreeNodes<KyDListNode<T>, T>},
                {"KyXList", []() -> std::unique_ptr<KyList<T>> { return std::make_unique<KyXList<T>>(2); },
                 sizeof(KyDListNode<T>), FreeNodes<KyDListNode<T>, T>}};
    }
    static std::string NameOf(const testing::TestParamInfo<ListKind>& info) { return info.param.m_pszName; }
};

/// A test that holds for every kind of list.
template <class T>
class ListTest : public testing::TestWithParam<ListKind<T>> {
protected:
    /// A new list of the kind under test, which lives until the test ends.
    KyList<T>& New() {
        m_lists.push_back(this->GetParam().m_pfnMake());
        return *m_lists.back();
    }

private:
    std::vector<std::unique_ptr<KyList<T>>> m_lists;
};

/// A list that writes down each virtual call it receives, from outside or from itself, before it passes it
/// on.
template <class List>
class Recorded : public Recording<List> {
public:
    using T = typename List::value_type;
    using Recording<List>::Recording;

    T* InsertAfterCur(const T& x) override {
        this->Note("InsertAfterCur");
        return List::InsertAfterCur(x);
    }
    long DetachAfterCur() override {
        this->Note("DetachAfterCur");
        return List::DetachAfterCur();
    }
    long Conbine(KyList<T>& other, long pos) override {
        this->Note("Conbine", pos);
        return List::Conbine(other, pos);
    }
    void ReverseList() override {
        this->Note("ReverseList");
        List::ReverseList();
    }
    void Rotate(long from, long to) override {
        this->Note("Rotate", from, to);
        List::Rotate(from, to);
    }
};
