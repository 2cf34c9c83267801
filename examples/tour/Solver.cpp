#include "examples/tour/Solver.h"

#include <stdexcept>

#include "examples/tour/Migration.h"

namespace tour {
namespace {

/// Far enough apart that no two islands of neighbouring seeds are the same.
unsigned SeedOf(const Settings& settings, const Islands& islands) {
    return settings.m_nSeed + 1000003U * static_cast<unsigned>(islands.Rank());
}

/// An island's part of the population.
long PopSizeOf(const Settings& settings, const Islands& islands) {
    return (settings.m_nPopSize + islands.Count() - 1) / islands.Count();
}

Bytes BytesOf(const Tour& tour) {
    KyDynArrayStream stream;
    WriteMigrant(stream, tour);
    return {stream.m_bytes.begin(), stream.m_bytes.end()};
}

std::optional<Order> TourIn(Bytes bytes, const Instance& instance) {
    KyDynArrayStream stream;
    stream.Write(bytes.data(), static_cast<long>(bytes.size()));
    return ReadMigrant(stream, instance);
}

class Evolution {
public:
    Evolution(const Instance& instance, const Settings& settings, const Islands& islands)
        : m_settings(settings),
          m_islands(islands),
          m_population(instance, PopSizeOf(settings, islands), settings.m_nMutationRate,
                       SeedOf(settings, islands), settings.m_limits) {}

    Result Run() {
        m_population.Populate();
        while (true) {
            EvolveToNextMigration();
            const bool bStagnant = m_population.IsStagnant();
            // Reached is a limit of this island's, stagnation one of all.
            const bool bOver = !bStagnant && !m_population.IsContinue();
            if (m_islands.Any(bOver) || m_islands.All(bStagnant || IsLast())) {
                return Gathered();
            }
            Migrate();
        }
    }

private:
    bool IsLast() const {
        return m_settings.m_nGenerations && m_population.m_nGeneration >= *m_settings.m_nGenerations;
    }

    /// Every island that has not stopped comes to the same generation.
    void EvolveToNextMigration() {
        const long nInterval = m_islands.Count() == 1 ? 1 : m_settings.m_nMigrationInterval;
        for (long i = 0; i < nInterval && !IsLast() && m_population.IsContinue(); ++i) {
            m_population.Evolve();
        }
    }

    void Migrate() {
        if (m_islands.Count() == 1) {
            return;
        }
        const std::vector<const Tour*> elite = m_population.Elite(m_settings.m_nMigrants);
        std::vector<Bytes> migrants;
        for (long i = 0; i < m_settings.m_nMigrants; ++i) {
            // Where there are fewer tours, the last one goes again, so that every island sends the same
            // number.
            const auto nTour = std::min(static_cast<std::size_t>(i), elite.size() - 1);
            migrants.push_back(BytesOf(*elite[nTour]));
        }
        for (const Bytes& bytes : migrants) {
            Welcome(m_islands.SendRound(bytes));
        }
        m_population.Watch();
    }

    void Welcome(const Bytes& bytes) {
        const std::optional<Order> order = TourIn(bytes, m_population.Problem());
        if (!order) {
            ++m_nRefused;
            return;
        }
        auto pTour = std::make_unique<Tour>(m_population);
        pTour->SetCities(*order);
        pTour->Initialize();
        m_population.Admit(std::move(pTour));
    }

    Result Gathered() const {
        const Tour& best = m_population.Best();
        const Bytes bytes = m_islands.OfTheLeast(best.Total(), BytesOf(best));
        const std::optional<Order> order = TourIn(bytes, m_population.Problem());
        if (!order) {
            throw std::runtime_error("the best island's tour arrived broken");
        }
        return {*order, m_population.Problem().Length(*order), m_population.m_nGeneration, m_nRefused};
    }

    const Settings& m_settings;
    const Islands& m_islands;
    TourPopulation m_population;
    long m_nRefused = 0;
};

}  // namespace

Result Solve(const Instance& instance, const Settings& settings, const Islands& islands) {
    return Evolution(instance, settings, islands).Run();
}

}  // namespace tour
