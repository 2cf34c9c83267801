#include "VexaBase/ga/GA_Individual.h"

#include <cstdlib>
#include <memory>

#include "VexaBase/ga/GA_Population.h"

namespace {

/// The positions that the children exchange: a cyclic run of half of n positions, at least one, that starts
/// anywhere.
class Segment {
public:
    explicit Segment(long n) {
        const long r = std::rand();
        m_nFirst = r % n;
        m_nLast = (m_nFirst + n / 2 - 1) % n;
    }

    bool Contains(long i) const {
        return m_nFirst <= m_nLast ? m_nFirst <= i && i <= m_nLast : i <= m_nLast || m_nFirst <= i;
    }

private:
    long m_nFirst;
    long m_nLast;
};

std::unique_ptr<GA_Individual> NewChild(const GA_Individual& parent) {
    std::unique_ptr<GA_Individual> pChild(parent.New());
    KY_CHECK(pChild != nullptr, "GA_Individual::Multiply", "New returned no individual (length %ld)",
             parent.m_nLength);
    return pChild;
}

/// Gives the child a copy of the parent's gene at position i.
void Inherit(GA_Individual& child, const GA_Individual& parent, long i) {
    const GA_Gene* const pInherited = *parent.GetAt(i);
    KY_CHECK(pInherited != nullptr, "GA_Individual::Multiply", "no gene to inherit (index %ld, length %ld)",
             i, parent.m_nLength);
    std::unique_ptr<GA_Gene> pGene(pInherited->Clone());
    GA_Gene*& pSlot = child[i];
    pSlot = pGene.release();
}

}  // namespace

GA_Individual::GA_Individual() = default;

GA_Individual::~GA_Individual() = default;

GA_Individual* GA_Individual::New() const { return nullptr; }

void GA_Individual::Initialize() {}

GA_Individual* GA_Individual::Mutation() const { return nullptr; }

int GA_Individual::Multiply(const GA_Individual& other, GA_Population& pop) const {
    if (other.m_nLength > m_nLength) {
        return other.Multiply(*this, pop);
    }
    const long nLength = m_nLength;
    const long nShared = other.m_nLength;
    KY_CHECK(nShared > 0, "GA_Individual::Multiply", "a parent without genes (lengths %ld and %ld)", nLength,
             nShared);

    std::unique_ptr<GA_Individual> pChild1 = NewChild(*this);
    std::unique_ptr<GA_Individual> pChild2 = NewChild(*this);
    pChild1->SetLength(nLength, false);
    pChild2->SetLength(nLength, false);

    const Segment exchanged(nShared);
    for (long i = 0; i < nShared; ++i) {
        const bool bExchanged = exchanged.Contains(i);
        Inherit(*pChild1, bExchanged ? other : *this, i);
        Inherit(*pChild2, bExchanged ? *this : other, i);
    }
    for (long i = nShared; i < nLength; ++i) {
        Inherit(*pChild1, *this, i);
        Inherit(*pChild2, *this, i);
    }

    pChild1->Initialize();
    pChild2->Initialize();
    pop.Append(pChild1.release());
    pop.Append(pChild2.release());
    return 2;
}

bool GA_Individual::operator<(const GA_Individual&) const { return false; }

bool GA_Individual::operator>(const GA_Individual&) const { return false; }
