// A gene: what the application's chromosomes are made of.
//
// A gene belongs to the individual that holds it and is deleted through this class. Crossover copies genes
// and never looks into them.
#pragma once

#include <functional>

#include "VexaBase/KyConfig.h"

class KY_API GA_Gene {
public:
    /// A new copy of this gene, which the caller owns. The library's version returns null, and crossover
    /// stores what it gets: a concrete gene overrides this.
    virtual GA_Gene* Clone() const;

    virtual ~GA_Gene() = default;

    /// Genes order by address, so that an individual can be sorted like any owning array. Deliberately not
    /// virtual: a gene's value is the application's own business.
    bool operator<(const GA_Gene& other) const { return std::less<const GA_Gene*>()(this, &other); }
    /// The other way round.
    bool operator>(const GA_Gene& other) const { return std::less<const GA_Gene*>()(&other, this); }
};
