#include "VexaBase/ga/GA_Population.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <typeinfo>
#include <utility>

namespace {

using Node = KyListNode<GA_Individual*>;

/// Where the nodes of a list stand, kept up to date through insertions: each node while they are few, and when they are
/// many some of them, at most twice m_nStride apart. With it a bisection walks to no node, or not far.
class NodeIndex {
public:
    bool IsFor(const GA_IndividualList& list) const { return m_nLength == list.m_nLength; }

    /// Looks at every node of the list. O(length).
    void Build(const GA_IndividualList& list) {
        m_nLength = list.m_nLength;
        m_nStride = m_nLength < nMostNodes ? 1 : 2 * m_nLength / nMostPositions;
        m_nEntries = 0;
        Node* pNode = list.m_pHead->m_pNext;
        for (long i = 0; i < m_nLength; ++i, pNode = pNode->m_pNext) {
            if (i % m_nStride == 0) {
                AddEntry(m_nEntries, i, pNode);
            }
        }
    }

    void Forget() { m_nLength = -1; }

    /// The node at position i of the list.
    Node* At(long i) const {
        if (IsDense()) {
            return m_nodes[i];
        }
        const long k = EntryFrom(i);
        if (k == m_nEntries || (k > 0 && i - m_positions[k - 1] < m_positions[k] - i)) {
            return Behind(m_nodes[k - 1], i - m_positions[k - 1]);
        }
        Node* pNode = m_nodes[k];
        for (long n = m_positions[k]; n > i; --n) {
            pNode = static_cast<KyDListNode<GA_Individual*>*>(pNode)->m_pPre;
        }
        return pNode;
    }

    /// Takes in the node that was inserted at position i, or gives up for want of room.
    void Insert(long i, Node* pNode) {
        if (m_nEntries == (IsDense() ? nMostNodes : nMostPositions)) {
            Forget();
            return;
        }
        ++m_nLength;
        if (IsDense()) {
            AddEntry(i, i, pNode);
        } else {
            InsertBetweenEntries(i, pNode);
        }
    }

private:
    static constexpr long nMostNodes = 8192;
    static constexpr long nMostPositions = 1024;

    bool IsDense() const { return m_nStride == 1; }

    /// The first entry that stands at i or behind it.
    long EntryFrom(long i) const {
        return std::lower_bound(m_positions, m_positions + m_nEntries, i) - m_positions;
    }

    static Node* Behind(Node* pNode, long nSteps) {
        for (long i = 0; i < nSteps; ++i) {
            pNode = pNode->m_pNext;
        }
        return pNode;
    }

    void AddEntry(long k, long i, Node* pNode) {
        std::copy_backward(m_nodes + k, m_nodes + m_nEntries, m_nodes + m_nEntries + 1);
        m_nodes[k] = pNode;
        if (!IsDense()) {
            std::copy_backward(m_positions + k, m_positions + m_nEntries, m_positions + m_nEntries + 1);
            m_positions[k] = i;
        }
        ++m_nEntries;
    }

    void InsertBetweenEntries(long i, Node* pNode) {
        long kNext = EntryFrom(i);
        if (i == 0) {
            // The first entry is always the list's first node.
            m_nodes[0] = pNode;
            kNext = 1;
        }
        for (long k = kNext; k < m_nEntries; ++k) {
            ++m_positions[k];
        }
        const long nFrom = m_positions[kNext - 1];
        const long nTo = kNext < m_nEntries ? m_positions[kNext] : m_nLength;
        if (nTo - nFrom > 2 * m_nStride) {
            AddEntry(kNext, nFrom + m_nStride, Behind(m_nodes[kNext - 1], m_nStride));
        }
    }

    long m_nLength = -1;  // of the list when it was last looked at, -1 for not at all
    long m_nStride = 1;
    long m_nEntries = 0;
    Node* m_nodes[nMostNodes];
    long m_positions[nMostPositions];  // those of the nodes, unless every node is there
};

/// A running generation of a population that is no more than a GA_Population: its index, for Append to find.
class Generation {
public:
    explicit Generation(const GA_IndividualList& population)
        : m_pPopulation(&population), m_pOuter(std::exchange(s_pInnermost, this)) {}
    Generation(const Generation&) = delete;
    Generation& operator=(const Generation&) = delete;
    ~Generation() {
        s_pInnermost = m_pOuter;
        // A generation of the same population in which this one ran knows nothing of what this one changed.
        ForgetNodesOf(*m_pPopulation);
    }

    NodeIndex& Index() { return m_index; }

    static NodeIndex* IndexOf(const GA_IndividualList& population) {
        for (Generation* p = s_pInnermost; p != nullptr; p = p->m_pOuter) {
            if (p->m_pPopulation == &population) {
                return &p->m_index;
            }
        }
        return nullptr;
    }

    static void ForgetNodesOf(const GA_IndividualList& population) {
        if (NodeIndex* const pIndex = IndexOf(population)) {
            pIndex->Forget();
        }
    }

private:
    static thread_local Generation* s_pInnermost;

    const GA_IndividualList* m_pPopulation;
    Generation* m_pOuter;
    NodeIndex m_index;
};

thread_local Generation* Generation::s_pInnermost = nullptr;

/// A population's cursor, moved by the population's own operations.
class VirtualCursor {
public:
    explicit VirtualCursor(GA_Population& population) : m_population(population) {}

    void MoveTo(long i) { m_population.MoveTo(i); }
    void MoveToNext() { m_population.MoveToNext(); }
    const GA_Individual* Current() { return m_population.GetCurData(); }
    void Insert(GA_Individual* p) { m_population.InsertCur(p); }
    void DeleteLast() {
        m_population.MoveToLast();
        m_population.DelCur();
    }

private:
    GA_Population& m_population;
};

/// The cursor of a population that is no more than a GA_Population. It jumps.
class IndexedCursor {
public:
    IndexedCursor(GA_Population& population, NodeIndex& index) : m_population(population), m_index(index) {}

    void MoveTo(long i) {
        // A comparison may have changed the population.
        if (m_index.IsFor(m_population) && i >= 0 && i < m_population.m_nLength) {
            m_population.m_pCurNode = m_index.At(i);
            m_population.m_nCurIndex = i;
        } else {
            m_population.List::MoveTo(i);
        }
    }
    void MoveToNext() { m_population.List::MoveToNext(); }
    const GA_Individual* Current() { return m_population.m_pCurNode->m_data; }
    void Insert(GA_Individual* p) {
        const bool bIndexed = m_index.IsFor(m_population);
        Node* const pNode = m_population.m_pCurNode;
        const long nIndex = m_population.m_nCurIndex;
        m_population.List::MoveToPre();
        try {
            m_population.List::InsertAfterCur(p);
        } catch (...) {
            // As InsertCur leaves it.
            m_population.m_pCurNode = pNode;
            m_population.m_nCurIndex = nIndex;
            throw;
        }
        if (bIndexed) {
            m_index.Insert(m_population.m_nCurIndex, m_population.m_pCurNode);
        } else {
            m_index.Forget();
        }
    }
    void DeleteLast() {
        m_population.List::MoveToLast();
        m_population.List::DelCur();
        m_index.Forget();
    }

private:
    using List = KyPDList<GA_Individual>;

    GA_Population& m_population;
    NodeIndex& m_index;
};

/// Sorted insertion into a population, in operations of its cursor.
template <class Cursor>
class Insertion {
public:
    Insertion(const GA_Population& population, Cursor cursor) : m_population(population), m_cursor(cursor) {}

    void Insert(GA_Individual* p) {
        MoveToPlaceOf(*p);
        m_cursor.Insert(p);
    }

private:
    /// Moves the cursor to the element in front of which the newcomer belongs, to none when it belongs at the end.
    void MoveToPlaceOf(const GA_Individual& newcomer) {
        m_cursor.MoveTo(0);
        if (m_population.m_nLength == 0 || newcomer < Resident()) {
            return;
        }
        long nHigh = m_population.m_nLength - 1;
        m_cursor.MoveTo(nHigh);
        if (newcomer > Resident()) {
            m_cursor.MoveToNext();
            return;
        }
        long nLow = 0;
        while (nHigh > nLow) {
            const long nMid = (nLow + nHigh) / 2;
            m_cursor.MoveTo(nMid);
            const GA_Individual& resident = Resident();
            if (newcomer > resident) {
                nLow = nMid + 1;
            } else if (newcomer < resident) {
                nHigh = nMid - 1;
            } else {
                return;
            }
        }
        if (nHigh != nLow) {
            return;
        }
        m_cursor.MoveTo(nLow);
        const GA_Individual& resident = Resident();
        if (newcomer > resident) {
            m_cursor.MoveToNext();
        } else {
            // Asked for the application's sake, which sees every comparison; the place is the same either way.
            static_cast<void>(newcomer < resident);
        }
    }

    /// The individual under the cursor, for the newcomer to be compared with.
    const GA_Individual& Resident() {
        const GA_Individual* const p = m_cursor.Current();
        KY_CHECK(p != nullptr, "GA_Population::Append",
                 "no individual in the element (index %ld, length %ld)", m_population.m_nCurIndex,
                 m_population.m_nLength);
        return *p;
    }

    const GA_Population& m_population;
    Cursor m_cursor;
};

}  // namespace

long GA_IndividualList::Append(GA_Individual* const& p) { return KyPDList<GA_Individual>::Append(p); }

void GA_IndividualList::Reset() {
    KyPDList<GA_Individual>::Reset();
    Generation::ForgetNodesOf(*this);
}

void GA_IndividualList::DelCur() {
    KyPDList<GA_Individual>::DelCur();
    Generation::ForgetNodesOf(*this);
}

GA_Individual** GA_IndividualList::InsertAfterCur(GA_Individual* const& p) {
    GA_Individual** const pElement = KyPDList<GA_Individual>::InsertAfterCur(p);
    Generation::ForgetNodesOf(*this);
    return pElement;
}

long GA_IndividualList::DetachAfterCur() {
    const long nLength = KyPDList<GA_Individual>::DetachAfterCur();
    Generation::ForgetNodesOf(*this);
    return nLength;
}

long GA_IndividualList::Conbine(KyList<GA_Individual*>& other, long pos) {
    const long nLength = KyPDList<GA_Individual>::Conbine(other, pos);
    Generation::ForgetNodesOf(*this);
    return nLength;
}

void GA_IndividualList::ReverseList() {
    KyPDList<GA_Individual>::ReverseList();
    Generation::ForgetNodesOf(*this);
}

void GA_IndividualList::Rotate(long from, long to) {
    KyPDList<GA_Individual>::Rotate(from, to);
    Generation::ForgetNodesOf(*this);
}

GA_Population::GA_Population(long nPopSize, long nMutationRate)
    : m_nPopSize(nPopSize), m_nMutationRate(nMutationRate) {}

GA_Population::~GA_Population() = default;

void GA_Population::Append(GA_Individual* p) {
    if (p == nullptr) {
        return;
    }
    try {
        if (NodeIndex* const pIndex = Generation::IndexOf(*this)) {
            if (!pIndex->IsFor(*this)) {
                pIndex->Build(*this);
            }
            Insertion(*this, IndexedCursor(*this, *pIndex)).Insert(p);
        } else {
            Insertion(*this, VirtualCursor(*this)).Insert(p);
        }
    } catch (...) {
        // An override of InsertCur may have thrown after the insertion.
        if (std::find(begin(), end(), p) == end()) {
            delete p;
        }
        throw;
    }
}

bool GA_Population::IsContinue() { return true; }

void GA_Population::Step() {}

void GA_Population::Evolve() {
    KY_CHECK(m_nPopSize >= 0, "GA_Population::Evolve", "negative size (%ld)", m_nPopSize);
    if (typeid(*this) == typeid(GA_Population)) {
        Generation generation(*this);
        EvolveBy(IndexedCursor(*this, generation.Index()));
    } else {
        EvolveBy(VirtualCursor(*this));
    }
}

template <class Cursor>
void GA_Population::EvolveBy(Cursor cursor) {
    Breed();
    while (m_nLength > m_nPopSize) {
        cursor.DeleteLast();
    }
    Mutate();
    ++m_nGeneration;
}

namespace {

const GA_Individual& ParentAt(const KyArray<GA_Individual*>& arrParents, long i) {
    const GA_Individual* const pParent = arrParents[i];
    KY_CHECK(pParent != nullptr, "GA_Population::Evolve",
             "no individual in the element (index %ld, length %ld)", i, arrParents.GetLength());
    return *pParent;
}

}  // namespace

void GA_Population::Breed() {
    const long n = m_nLength;
    KY_CHECK(n == 0 || n <= std::numeric_limits<long>::max() / n, "GA_Population::Evolve",
             "the square of the length has no room (length %ld)", n);
    const KyArray<GA_Individual*> arrParents(*this);
    for (long i = 0; i < n && IsContinue(); ++i) {
        const long r = std::rand();
        const long nFromWorst = static_cast<long>(std::sqrt(static_cast<double>(r % (n * n))));
        const GA_Individual& mate = ParentAt(arrParents, i);
        ParentAt(arrParents, n - 1 - nFromWorst).Multiply(mate, *this);
        ParentAt(arrParents, r % n).Multiply(mate, *this);
        Step();
    }
}

void GA_Population::Mutate() {
    const long nMutants = m_nPopSize * m_nMutationRate / 100;
    for (long i = 0; i < nMutants && IsContinue(); ++i) {
        KY_CHECK(m_nLength > 0, "GA_Population::Evolve", "nothing to mutate (%ld mutants due)", nMutants);
        const long r = std::rand();
        MoveTo(r % m_nLength);
        const GA_Individual* const pChosen = GetCurData();
        KY_CHECK(pChosen != nullptr, "GA_Population::Evolve",
                 "no individual in the element (index %ld, length %ld)", m_nCurIndex, m_nLength);
        Append(pChosen->Mutation());
        Step();
    }
}
