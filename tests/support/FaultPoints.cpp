#include "FaultPoints.h"

namespace {

FaultKind g_kind = FaultKind::Allocation;
Faults g_faults = Faults::Once;
long g_nUntilFault = 0;  // 0: none is ordered, or it has happened
bool g_bHasHappened = false;

}  // namespace

FaultAt::FaultAt(FaultKind kind, long k, Faults faults) {
    g_kind = kind;
    g_faults = faults;
    g_nUntilFault = k;
    g_bHasHappened = false;
}

FaultAt::~FaultAt() {
    g_nUntilFault = 0;
    g_bHasHappened = false;
}

bool FaultAt::HasHappened() const { return g_bHasHappened; }

void FaultAt::Pass(FaultKind kind) {
    if (IsDue(kind)) {
        throw OrderedFault();
    }
}

bool FaultAt::IsDue(FaultKind kind) noexcept {
    if (kind != g_kind) {
        return false;
    }
    if (g_nUntilFault > 0 && --g_nUntilFault == 0) {
        g_bHasHappened = true;
        return true;
    }
    return g_bHasHappened && g_faults == Faults::FromThenOn;
}
