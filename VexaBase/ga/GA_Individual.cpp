#include "VexaBase/ga/GA_Individual.h"

#include <cstdlib>

#include "VexaBase/ga/GA_Population.h"

GA_Individual* GA_Individual::New() const { return nullptr; }

void GA_Individual::Initialize() {}

GA_Individual* GA_Individual::Mutation() const { return nullptr; }

bool GA_Individual::operator<(const GA_Individual&) const { return false; }

bool GA_Individual::operator>(const GA_Individual&) const { return false; }

void GA_Individual::RequireGenes([[maybe_unused]] const GA_Individual& longer,
                                 [[maybe_unused]] const GA_Individual& shorter) {
    KY_CHECK(shorter.m_nLength > 0, "GA_Individual::Multiply", "a parent without genes (lengths %ld and %ld)",
             longer.m_nLength, shorter.m_nLength);
}

/// Draws the positions that the children exchange, a cyclic run of half of n positions, at least one: its first and its
/// last.
std::pair<long, long> GA_Individual::DrawSegment(long n) {
    const long r = std::rand();
    const long nFirst = r % n;
    return {nFirst, (nFirst + n / 2 - 1) % n};
}

/// Hands the child to the population.
void GA_Individual::Enter(GA_Population& pop, GA_Individual* pChild) { pop.Append(pChild); }
