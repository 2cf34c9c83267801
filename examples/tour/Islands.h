// The processes that evolve a population each, in a ring. Without MPI there is one, alone.
#pragma once

#include <memory>
#include <vector>

namespace tour {

using Bytes = std::vector<char>;

class Islands {
public:
    /// Whether this program was built with MPI.
    static bool AreBuilt();

    /// Joins the processes that mpirun started, or stays alone. At most one at a time.
    Islands(int argc, char** argv, bool bJoin);
    Islands(const Islands&) = delete;
    Islands& operator=(const Islands&) = delete;

    int Rank() const { return m_nRank; }
    int Count() const { return m_nCount; }

    // Each of these is called by every process, or by none.

    /// Sends bytes to the next island of the ring and returns those of the one before.
    Bytes SendRound(const Bytes& bytes) const;

    bool Any(bool b) const;
    bool All(bool b) const;

    /// The bytes of the island with the least number, everywhere; of equals the lowest rank's.
    Bytes OfTheLeast(long nNumber, const Bytes& bytes) const;

private:
    std::shared_ptr<void> m_pSession;  // null when alone; leaves MPI at its end
    int m_nRank = 0;
    int m_nCount = 1;
};

}  // namespace tour
