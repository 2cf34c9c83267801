#include "VexaBase/event/KyEventReactor.h"

#include <cwchar>
#include <memory>

#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyQuene.h"

// The channel. Private to the library, like its delivery routine, whatever visibility a build gives to the
// rest. The priorities set the order of construction across source files and before an application's own
// static objects, so that those may register reactors in their constructors and unregister them in their
// destructors; rx/KyRxClass.cpp has the next two.
[[gnu::visibility("hidden"), gnu::init_priority(101)]] KyPDListQuene<KyEvent> g_queneEvent(-1);
[[gnu::visibility("hidden"), gnu::init_priority(102)]] KyDList<KyEventReactor*> g_lstReactor;

namespace {

bool Wants(const KyEventReactor& reactor, const KyEvent& event) {
    return reactor.m_nMask == 0 || event.m_nMask == 0 || (reactor.m_nMask & event.m_nMask) != 0;
}

bool IsOnReactor() {
    return g_lstReactor.GetCurIndex() >= 0 && g_lstReactor.GetCurIndex() < g_lstReactor.GetLength();
}

}  // namespace

/// Walks the reactors with the list's own cursor. A handler may change the list, move the cursor or destroy
/// its reactor: all that is read after it is the cursor.
[[gnu::visibility("hidden")]] void OnEvent(KyEvent& event) {
    for (g_lstReactor.MoveToFirst(); IsOnReactor(); g_lstReactor.MoveToNext()) {
        KyEventReactor* const pReactor = g_lstReactor.GetCurData();
        if (Wants(*pReactor, event)) {
            pReactor->React(event.m_strName.c_str(), event.m_pData);
        }
    }
}

KyEvent::KyEvent(const wchar_t* pszName, void* pData, unsigned int nMask)
    : m_strName(pszName), m_pData(pData), m_nMask(nMask) {}

bool KyEvent::operator<(const KyEvent& other) const {
    return std::wcscmp(m_strName.c_str(), other.m_strName.c_str()) < 0;
}

bool KyEvent::operator>(const KyEvent& other) const { return other < *this; }

KyEventReactor::KyEventReactor(unsigned int nMask) : m_nMask(nMask) {}

KyEventReactor::~KyEventReactor() = default;

void KyRegisterReactor(KyEventReactor* pReactor) {
    KY_CHECK(pReactor != nullptr, "KyRegisterReactor", "null reactor");
    g_lstReactor.Append(pReactor);
}

void KyUnRegisterReactor(KyEventReactor* pReactor) {
    for (g_lstReactor.MoveToFirst(); IsOnReactor(); g_lstReactor.MoveToNext()) {
        if (g_lstReactor.GetCurData() == pReactor) {
            g_lstReactor.DelCur();
        }
    }
}

void KyPostEvent(const wchar_t* pszName, void* pData, unsigned int nMask) {
    auto pEvent = std::make_unique<KyEvent>(pszName, pData, nMask);
    g_queneEvent.EnQuene(pEvent.get());  // takes everything: the queue has no bound
    static_cast<void>(pEvent.release());
}

void KySendEvent(const wchar_t* pszName, void* pData, unsigned int nMask) {
    KyEvent event(pszName, pData, nMask);
    OnEvent(event);
}

void KyProcessPostEvents() {
    KyEvent* pEvent = nullptr;
    while (g_queneEvent.DeQuene(pEvent)) {
        const std::unique_ptr<KyEvent> delivered(pEvent);
        OnEvent(*delivered);
    }
}
