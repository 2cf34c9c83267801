#include "EveryOperation.h"

TEST_P(EveryOperation, ThrowsLeaksNothingKeepsItsPromiseAndCanBeTriedAgain) { GetParam().m_run(); }
