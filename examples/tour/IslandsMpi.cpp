#define OMPI_SKIP_MPICXX 1
#define MPICH_SKIP_MPICXX 1
#include <mpi.h>

#include "examples/tour/Islands.h"

namespace tour {

bool Islands::AreBuilt() { return true; }

Islands::Islands(int argc, char** argv, bool bJoin) {
    if (bJoin) {
        MPI_Init(&argc, &argv);
        m_pSession.reset(static_cast<void*>(this), [](void*) { MPI_Finalize(); });
        MPI_Comm_rank(MPI_COMM_WORLD, &m_nRank);
        MPI_Comm_size(MPI_COMM_WORLD, &m_nCount);
    }
}

Bytes Islands::SendRound(const Bytes& bytes) const {
    if (m_nCount == 1) {
        return bytes;
    }
    const int nNext = (m_nRank + 1) % m_nCount;
    const int nBefore = (m_nRank + m_nCount - 1) % m_nCount;
    const int nSent = static_cast<int>(bytes.size());
    int nReceived = 0;
    MPI_Sendrecv(&nSent, 1, MPI_INT, nNext, 0, &nReceived, 1, MPI_INT, nBefore, 0, MPI_COMM_WORLD,
                 MPI_STATUS_IGNORE);
    Bytes received(static_cast<std::size_t>(nReceived));
    MPI_Sendrecv(bytes.data(), nSent, MPI_BYTE, nNext, 1, received.data(), nReceived, MPI_BYTE, nBefore, 1,
                 MPI_COMM_WORLD, MPI_STATUS_IGNORE);
    return received;
}

bool Islands::Any(bool b) const {
    int nAny = b ? 1 : 0;
    if (m_pSession != nullptr) {
        MPI_Allreduce(MPI_IN_PLACE, &nAny, 1, MPI_INT, MPI_MAX, MPI_COMM_WORLD);
    }
    return nAny != 0;
}

bool Islands::All(bool b) const { return !Any(!b); }

Bytes Islands::OfTheLeast(long nNumber, const Bytes& bytes) const {
    if (m_nCount == 1) {
        return bytes;
    }
    struct {
        long m_nNumber;
        int m_nRank;
    } least = {nNumber, m_nRank};
    MPI_Allreduce(MPI_IN_PLACE, &least, 1, MPI_LONG_INT, MPI_MINLOC, MPI_COMM_WORLD);
    int nSize = static_cast<int>(bytes.size());
    MPI_Bcast(&nSize, 1, MPI_INT, least.m_nRank, MPI_COMM_WORLD);
    Bytes theirs = bytes;
    theirs.resize(static_cast<std::size_t>(nSize));
    MPI_Bcast(theirs.data(), nSize, MPI_BYTE, least.m_nRank, MPI_COMM_WORLD);
    return theirs;
}

}  // namespace tour
