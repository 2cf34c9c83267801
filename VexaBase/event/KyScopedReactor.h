// A registration that ends with its scope:
//
//     Progress progress;
//     const KyScopedReactor listening(progress);
#pragma once

#include "VexaBase/event/KyEventReactor.h"

class KyScopedReactor {
public:
    /// Registers the reactor, which has to outlive this object.
    explicit KyScopedReactor(KyEventReactor& reactor) : m_pReactor(&reactor) {
        KyRegisterReactor(m_pReactor);
    }
    KyScopedReactor(const KyScopedReactor&) = delete;
    KyScopedReactor& operator=(const KyScopedReactor&) = delete;

    /// Unregisters the reactor, and with it every other registration of the same one.
    ~KyScopedReactor() { KyUnRegisterReactor(m_pReactor); }

private:
    KyEventReactor* m_pReactor;
};
