// Evolves a population of tours, on one island or several, to the limits given.
#pragma once

#include <optional>
#include <vector>

#include "examples/tour/Islands.h"
#include "examples/tour/Tour.h"

namespace tour {

struct Settings {
    long m_nPopSize = 40;       // over all islands
    long m_nMutationRate = 20;  // percent
    unsigned m_nSeed = 1;
    std::optional<long> m_nGenerations;
    Limits m_limits;
    long m_nMigrationInterval = 2;  // generations between migrations
    long m_nMigrants = 2;           // tours that migrate at a time
};

struct Result {
    Order m_order;
    long m_nLength = 0;
    long m_nGenerations = 0;
    long m_nRefused = 0;  // migrants that this island could not read
};

/// Every island returns the shortest tour of all. With generations for the only limit it depends on the
/// instance, the settings and the number of islands alone. Progress is reported through the event channel.
Result Solve(const Instance& instance, const Settings& settings, const Islands& islands);

}  // namespace tour
