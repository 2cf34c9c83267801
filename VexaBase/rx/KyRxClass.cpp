#include "VexaBase/rx/KyRxClass.h"

#include <cstring>

namespace {

/// So many levels of single inheritance are walked in a loop; every further such stretch is a call, so that a
/// circle of bases ends on an exhausted stack, never in an endless loop.
constexpr int nLoopedLevels = 16;

/// What the first of the bases answers that is of the class asked for; bElse where none is.
template <class Argument>
[[gnu::noinline]] bool AnswerOfBases(const KyRxClassInfo& info, Argument argument, bool bElse) {
    for (const KyRxClassInfo* pBase : info.m_pBases) {
        if (pBase == nullptr) return bElse;
        const bool bIs = pBase->IsClassOf(argument);
        // Emits nothing, but has to come after the call: no compiler may turn the recursion into a jump or
        // take it for free of effects.
        asm volatile("");
        if (bIs) return true;
    }
    return bElse;
}

/// Callers have it in line; this has the library export it all the same.
[[gnu::used]] bool (KyRxClassInfo::*const g_pfnIsClassOf)(const KyRxClassInfo*) const =
    &KyRxClassInfo::IsClassOf;

}  // namespace

KyRxClassInfo::KyRxClassInfo(const char* pszName, long nNumber, KyRxDynCreateClass* (*pfnCreate)(),
                             KyRxClassInfo* pBase1, KyRxClassInfo* pBase2, KyRxClassInfo* pBase3,
                             KyRxClassInfo* pBase4, KyRxClassInfo* pBase5)
    : m_nNumber(nNumber),
      m_pszName(pszName),
      m_pBases{pBase1, pBase2, pBase3, pBase4, pBase5},
      m_pfnCreate(pfnCreate) {}

KyRxClassInfo::~KyRxClassInfo() = default;

KyRxDynCreateClass* KyRxClassInfo::NewObject() const {
    return m_pfnCreate != nullptr ? m_pfnCreate() : nullptr;
}

bool KyRxClassInfo::WalkOn(const KyRxClassInfo* pInfo, const KyRxClassInfo* pOther, bool bIs) {
    bIs = bIs || pInfo == pOther;
    for (int nLevels = 1; nLevels < nLoopedLevels && pInfo->m_pBases[1] == nullptr; ++nLevels) {
        if (pInfo->m_pBases[0] == nullptr) return bIs;
        pInfo = pInfo->m_pBases[0];
        bIs = bIs || pInfo == pOther;
    }
    return AnswerOfBases(*pInfo, pOther, bIs);
}

bool KyRxClassInfo::IsClassOf(const char* pszName) const {
    KY_CHECK(pszName != nullptr, "KyRxClassInfo::IsClassOf", "null name (class %s)", m_pszName);
    // The names are compared on the way back, in the order of the walk: one behind the first match is not read.
    const KyRxClassInfo* pInfos[nLoopedLevels];
    int nInfos = 0;
    const KyRxClassInfo* pInfo = this;
    for (;;) {
        pInfos[nInfos++] = pInfo;
        const KyRxClassInfo* const pBase = pInfo->m_pBases[0];
        if (pBase == nullptr) break;
        if (pInfo->m_pBases[1] != nullptr || nInfos == nLoopedLevels) {
            if (AnswerOfBases(*pInfo, pszName, false)) return true;
            break;
        }
        pInfo = pBase;
    }
    while (nInfos > 0) {
        const char* const pszInfo = pInfos[--nInfos]->m_pszName;
        if (*pszInfo == *pszName && std::strcmp(pszInfo, pszName) == 0) return true;
    }
    return false;
}

// The library's static objects are constructed in one order, that of their priorities, in whatever order the
// linker meets their files, statically linked or not, and before every static object of an application that
// names no priority: 101 the posted events and 102 the reactors, in event/KyEventReactor.cpp, then these two.
// 101 is the first priority that is not reserved. They are destroyed in the reverse order.
[[gnu::init_priority(103)]] KyRxClassInfo KyRxRunTimeClass::s_classInfo("KyRxRunTimeClass", 0, nullptr);
[[gnu::init_priority(104)]] KyRxClassInfo KyRxDynCreateClass::s_classInfo("KyRxDynCreateClass", 1,
                                                                          &KyRxDynCreateClass::NewObject,
                                                                          KyRxDynCreateClass::GetStaticCI());

KyRxClassInfo* KyRxRunTimeClass::GetCI() const { return &s_classInfo; }

KyRxRunTimeClass::~KyRxRunTimeClass() = default;

KyRxClassInfo* KyRxRunTimeClass::GetStaticCI() { return &s_classInfo; }

KyRxClassInfo* KyRxDynCreateClass::GetCI() const { return &s_classInfo; }

KyRxDynCreateClass::~KyRxDynCreateClass() = default;

KyRxDynCreateClass* KyRxDynCreateClass::InitObject() { return this; }

KyRxClassInfo* KyRxDynCreateClass::GetStaticCI() { return &s_classInfo; }

KyRxDynCreateClass* KyRxDynCreateClass::NewObject() { return new KyRxDynCreateClass; }
