#include "VexaBase/ga/GA_Population.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

long GA_IndividualList::Append(GA_Individual* const& p) { return KyPDList<GA_Individual>::Append(p); }

GA_Population::GA_Population(long nPopSize, long nMutationRate)
    : m_nPopSize(nPopSize), m_nMutationRate(nMutationRate) {}

GA_Population::~GA_Population() = default;

void GA_Population::Append(GA_Individual* p) {
    if (p == nullptr) {
        return;
    }
    try {
        MoveToPlaceOf(*p);
        InsertCur(p);
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
    Breed();
    Truncate();
    Mutate();
    ++m_nGeneration;
}

void GA_Population::Breed() {
    const KyArray<GA_Individual*> arrParents(*this);
    const long n = arrParents.GetLength();
    KY_CHECK(n == 0 || n <= std::numeric_limits<long>::max() / n, "GA_Population::Evolve",
             "the square of the length has no room (length %ld)", n);
    for (long i = 0; i < n && IsContinue(); ++i) {
        const long r = std::rand();
        const long nFromWorst = static_cast<long>(std::sqrt(static_cast<double>(r % (n * n))));
        arrParents[n - 1 - nFromWorst]->Multiply(*arrParents[i], *this);
        arrParents[r % n]->Multiply(*arrParents[i], *this);
        Step();
    }
}

void GA_Population::Truncate() {
    while (m_nLength > m_nPopSize) {
        MoveToLast();
        DelCur();
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

/// Moves the cursor to the element in front of which the newcomer belongs, to none when it belongs at the
/// end.
void GA_Population::MoveToPlaceOf(const GA_Individual& newcomer) {
    MoveTo(0);
    if (m_nLength == 0 || newcomer < Resident()) {
        return;
    }
    long nHigh = m_nLength - 1;
    MoveTo(nHigh);
    if (newcomer > Resident()) {
        MoveToNext();
        return;
    }
    long nLow = 0;
    while (nHigh > nLow) {
        const long nMid = (nLow + nHigh) / 2;
        MoveTo(nMid);
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
    MoveTo(nLow);
    const GA_Individual& resident = Resident();
    if (newcomer > resident) {
        MoveToNext();
    } else {
        // Asked for the application's sake, which sees every comparison; the place is the same either way.
        static_cast<void>(newcomer < resident);
    }
}

/// The individual under the cursor, for a newcomer to be compared with.
const GA_Individual& GA_Population::Resident() {
    const GA_Individual* const p = GetCurData();
    KY_CHECK(p != nullptr, "GA_Population::Append", "no individual in the element (index %ld, length %ld)",
             m_nCurIndex, m_nLength);
    return *p;
}
