// A reactor made from anything that can be called with an event's name and data:
//
//     KyCallbackReactor count([&](const wchar_t*, void*) { ++nEvents; }, 0x1);
//     const KyScopedReactor listening(count);
#pragma once

#include <utility>

#include "VexaBase/event/KyEventReactor.h"

template <class Callback>
class KyCallbackReactor final : public KyEventReactor {
public:
    /// Keeps the callback, which is called as callback(const wchar_t* pszName, void* pData) for each event
    /// that nMask wants; 0 wants every event. Registering it is the caller's business, as for any reactor.
    explicit KyCallbackReactor(Callback callback, unsigned int nMask = 0)
        : KyEventReactor(nMask), m_callback(std::move(callback)) {}
    KyCallbackReactor(const KyCallbackReactor&) = delete;
    KyCallbackReactor& operator=(const KyCallbackReactor&) = delete;

    void React(const wchar_t* pszName, void* pData) override { m_callback(pszName, pData); }

private:
    Callback m_callback;
};
