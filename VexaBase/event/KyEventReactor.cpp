#include "VexaBase/event/KyEventReactor.h"

#include <array>
#include <cstddef>
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

bool Wants(const KyEventReactor& reactor, unsigned int nMask) {
    return nMask == 0 || reactor.m_nMask == 0 || (reactor.m_nMask & nMask) != 0;
}

bool IsOnReactor() { return g_lstReactor.GetCurIndex() >= 0; }

/// Walks the reactors with the list's own cursor. A handler may change the list, move the cursor or destroy
/// its reactor: all that is read after it is the cursor. While the handlers leave that where it is, the walk
/// goes by its own copy of it, which spares every reactor the wait for what the one before has stored.
void Deliver(const wchar_t* pszName, void* pData, unsigned int nMask) {
    KyDList<KyEventReactor*>& lst = g_lstReactor;
    for (lst.MoveToFirst(); IsOnReactor(); lst.MoveToNext()) {
        const KyListNode<KyEventReactor*>* pNode = lst.m_pCurNode;
        for (long nIndex = lst.m_nCurIndex;; ++nIndex) {
            KyEventReactor* const pReactor = pNode->m_data;
            if (Wants(*pReactor, nMask)) {
                pReactor->React(pszName, pData);
            }
            const bool bStays = lst.m_pCurNode == pNode && lst.m_nCurIndex == nIndex;
            if (!bStays || pNode == lst.m_pTail) {
                break;
            }
            lst.m_pCurNode = pNode->m_pNext;
            lst.m_nCurIndex = nIndex + 1;
            pNode = pNode->m_pNext;
        }
    }
}

/// Copies a name, null being empty, into the array; false when it does not fit.
template <std::size_t nCapacity>
bool CopyName(const wchar_t* pszName, std::array<wchar_t, nCapacity>& copy) {
    if (pszName == nullptr) {
        pszName = L"";
    }
    for (wchar_t& ch : copy) {
        ch = *pszName++;
        if (ch == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

[[gnu::visibility("hidden")]] void OnEvent(KyEvent& event) {
    Deliver(event.m_strName.c_str(), event.m_pData, event.m_nMask);
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
    std::array<wchar_t, 24> shortName;  // written up to the name's 0
    if (CopyName(pszName, shortName)) {
        Deliver(shortName.data(), pData, nMask);
    } else {
        KyEvent event(pszName, pData, nMask);
        OnEvent(event);
    }
}

void KyProcessPostEvents() {
    KyEvent* pEvent = nullptr;
    while (g_queneEvent.DeQuene(pEvent)) {
        const std::unique_ptr<KyEvent> delivered(pEvent);
        OnEvent(*delivered);
    }
}
