#include "FaultPoints.h"

namespace {

FaultKind g_kind = FaultKind::Allocation;
long g_nUntilFault = 0;  // 0: none is ordered, or it has happened

}  // namespace

FaultAt::FaultAt(FaultKind kind, long k) {
    g_kind = kind;
    g_nUntilFault = k;
}

FaultAt::~FaultAt() { g_nUntilFault = 0; }

bool FaultAt::HasHappened() const { return g_nUntilFault == 0; }

void FaultAt::Pass(FaultKind kind) {
    if (IsDue(kind)) {
        throw OrderedFault();
    }
}

bool FaultAt::IsDue(FaultKind kind) noexcept {
    return g_nUntilFault > 0 && kind == g_kind && --g_nUntilFault == 0;
}
