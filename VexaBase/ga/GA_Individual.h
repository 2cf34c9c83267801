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
#pragma once

#include "VexaBase/containers/KyDynPArray.h"
#include "VexaBase/ga/GA_Gene.h"

class GA_Population;

class KY_API GA_Individual : public KyDynPArray<GA_Gene> {
public:
    /// Starts without genes.
    GA_Individual();

    ~GA_Individual() override;

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
};
