// An individual: a chromosome, which is an owning array of genes, and the crossover that breeds two of them.
//
// The application derives its own individual, keeps there whatever ranks it (a length, a cost) and overrides
// the hooks: New, Initialize, Mutation and the two comparisons; Multiply too where its chromosomes need
// another crossover.
//
// "Less" means fitter. A population keeps the individuals that compare as less at its head, prefers them as
// mates and cuts its tail. No setting turns that round. operator< and operator> are two hooks, neither made
// of the other, and a population asks both.
//
// Ownership: an individual owns its genes. What New, Mutation and GA_Gene::Clone return belongs to the
// caller; an individual handed to GA_Population::Append belongs to the population.
//
// What crossover does for each gene stands in this header: an application's own genes and individuals are known
// where it is compiled, and most of the virtual calls turn into plain ones.
#pragma once

#include <algorithm>
#include <memory>
#include <utility>

#include "VexaBase/containers/KyDynPArray.h"
#include "VexaBase/ga/GA_Gene.h"

class GA_Population;

class KY_API GA_Individual : public KyDynPArray<GA_Gene> {
public:
    /// Starts without genes.
    GA_Individual() = default;

    ~GA_Individual() override = default;

    // The virtual operations stand in the order of their slots, behind those of the array.

    /// A new individual of the same concrete class, which the caller owns; crossover makes its children with
    /// it and discards any genes they already hold. The library's version returns null: override it before
    /// breeding.
    virtual GA_Individual* New() const;

    /// Called on each child once crossover has filled all its genes, before it enters the population: the
    /// place to work out what the comparisons need. The library's version does nothing.
    virtual void Initialize();

    /// A new, mutated copy of this individual, which the caller owns, or null for none. The library's version
    /// returns null.
    virtual GA_Individual* Mutation() const;

    /// Breeds with `other`, hands the children to pop and returns how many they were.
    ///
    /// The library's version is a two-point crossover on a ring that always makes two children of the longer
    /// parent's length. When `other` is longer the call is forwarded to it, so that the longer parent's
    /// override and its New do the work. One rand() draw chooses a cyclic run of about half of the shorter
    /// parent's positions: there the first child carries the shorter parent's genes (on equal lengths, those
    /// of `other`) and the second the longer one's, elsewhere the other way round. Genes beyond the shorter
    /// parent come from the longer one in both. The parents stay as they are; an individual may be crossed
    /// with itself.
    ///
    /// When a hook throws, children that the population has not taken over yet are deleted. O(genes) plus two
    /// GA_Population::Append. Requires a gene in every slot of both parents, at least one in the shorter, and
    /// a New that returns an individual.
    virtual int Multiply(const GA_Individual& other, GA_Population& pop) const;

    /// True when this individual is fitter than `other`. The library's version returns false.
    virtual bool operator<(const GA_Individual& other) const;

    /// True when this individual is less fit than `other`. The library's version returns false.
    virtual bool operator>(const GA_Individual& other) const;

private:
    static void RequireGenes(const GA_Individual& longer, const GA_Individual& shorter);
    std::unique_ptr<GA_Individual> NewChild() const;
    static std::pair<long, long> DrawSegment(long n);
    static void Inherit(GA_Individual& child, const GA_Individual& parent, long i);
    static void InheritBoth(GA_Individual& child1, const GA_Individual& parent1, GA_Individual& child2,
                            const GA_Individual& parent2, long nFrom, long nTo);
    static void Enter(GA_Population& pop, GA_Individual* pChild);
};

inline int GA_Individual::Multiply(const GA_Individual& other, GA_Population& pop) const {
    if (other.m_nLength > m_nLength) {
        return other.Multiply(*this, pop);
    }
    const long nLength = m_nLength;
    const long nShared = other.m_nLength;
    RequireGenes(*this, other);

    std::unique_ptr<GA_Individual> pChild1 = NewChild();
    std::unique_ptr<GA_Individual> pChild2 = NewChild();
    pChild1->SetLength(nLength, false);
    pChild2->SetLength(nLength, false);

    const auto [nFirst, nLast] = DrawSegment(nShared);
    // The run itself, or what it leaves out where it wraps around the end.
    const long nFrom = std::min(nFirst, nLast + 1);
    const long nTo = std::max(nFirst, nLast + 1);
    const GA_Individual& inner = nFirst <= nLast ? other : *this;
    const GA_Individual& outer = nFirst <= nLast ? *this : other;
    InheritBoth(*pChild1, outer, *pChild2, inner, 0, nFrom);
    InheritBoth(*pChild1, inner, *pChild2, outer, nFrom, nTo);
    InheritBoth(*pChild1, outer, *pChild2, inner, nTo, nShared);
    InheritBoth(*pChild1, *this, *pChild2, *this, nShared, nLength);

    pChild1->Initialize();
    pChild2->Initialize();
    Enter(pop, pChild1.release());
    Enter(pop, pChild2.release());
    return 2;
}

inline std::unique_ptr<GA_Individual> GA_Individual::NewChild() const {
    std::unique_ptr<GA_Individual> pChild(New());
    KY_CHECK(pChild != nullptr, "GA_Individual::Multiply", "New returned no individual (length %ld)",
             m_nLength);
    return pChild;
}

/// Gives each child copies of its parent's genes in nFrom .. nTo - 1.
inline void GA_Individual::InheritBoth(GA_Individual& child1, const GA_Individual& parent1,
                                       GA_Individual& child2, const GA_Individual& parent2, long nFrom,
                                       long nTo) {
    for (long i = nFrom; i < nTo; ++i) {
        Inherit(child1, parent1, i);
        Inherit(child2, parent2, i);
    }
}

/// Gives the child a copy of the parent's gene at position i.
inline void GA_Individual::Inherit(GA_Individual& child, const GA_Individual& parent, long i) {
    const GA_Gene* const pInherited = *parent.GetAt(i);
    KY_CHECK(pInherited != nullptr, "GA_Individual::Multiply", "no gene to inherit (index %ld, length %ld)",
             i, parent.m_nLength);
    std::unique_ptr<GA_Gene> pGene(pInherited->Clone());
    GA_Gene*& pSlot = child[i];
    pSlot = pGene.release();
}
