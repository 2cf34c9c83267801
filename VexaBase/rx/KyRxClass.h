// Run-time class information: descriptors, kinship tests and creation of objects through a descriptor, apart
// from the language's own type information.
//
// Every class that takes part owns one static descriptor, a KyRxClassInfo, which names the class, its direct
// bases and, for a class that can be created through it, a creation function. An object answers its class's
// descriptor through the virtual GetCI. There are two roots: KyRxRunTimeClass for all classes with a
// descriptor, KyRxDynCreateClass for those that can also be created:
//
//     class Shape : public KyRxRunTimeClass {                 // Shape.h
//         KY_DECLARE_CLASS(Shape)
//     };
//     KY_IMPLEMENT_CLASS(Shape, 10, KyRxRunTimeClass)         // Shape.cpp
//
//     pObject->GetCI()->IsClassOf(Shape::GetStaticCI())       // a Shape, or derived from it?
//
// Invariants:
//   (1) descriptors are told apart by address; they are static objects and never change
//   (2) the bases stand in m_pBases in order; the first null ends them, whatever stands behind it
//   (3) a descriptor holds addresses only, so it does not matter which one is constructed first
//
// The descriptor of KyRxDynCreateClass names itself, not KyRxRunTimeClass, as its first base. This is
// deliberate and kept. A kinship test looks at the bases first: on that descriptor, and on every one whose
// bases lead to it before an answer is found, it never returns but exhausts the stack. Creatable classes are
// therefore told apart by descriptor identity (GetCI() == Circle::GetStaticCI()), and kinship is asked of
// classes rooted in KyRxRunTimeClass alone.
#pragma once

#include <type_traits>

#include "VexaBase/KyConfig.h"

class KyRxDynCreateClass;

/// A class descriptor.
class KY_API KyRxClassInfo {
public:
    /// Stores its arguments. pszName is kept as a pointer: its text has to outlive the descriptor. A null
    /// pfnCreate makes a class that cannot be created, a null base ends the list of bases.
    KyRxClassInfo(const char* pszName, long nNumber, KyRxDynCreateClass* (*pfnCreate)(),
                  KyRxClassInfo* pBase1 = nullptr, KyRxClassInfo* pBase2 = nullptr,
                  KyRxClassInfo* pBase3 = nullptr, KyRxClassInfo* pBase4 = nullptr,
                  KyRxClassInfo* pBase5 = nullptr);
    KyRxClassInfo(const KyRxClassInfo&) = delete;
    KyRxClassInfo& operator=(const KyRxClassInfo&) = delete;
    virtual ~KyRxClassInfo();

    /// What the creation function returns, a new object that the caller owns; null when there is none.
    KyRxDynCreateClass* NewObject() const;

    /// True when pOther describes this class or one of its ancestors. Depth first, left to right, bases
    /// before the class itself. O(paths to the roots). See above for the descriptors on which it does not
    /// return.
    KY_API bool IsClassOf(const KyRxClassInfo* pOther) const {
        return Walk<nLevelsInLine>(this, pOther, false);
    }

    /// The same walk, comparing names byte by byte. Requires a name.
    bool IsClassOf(const char* pszName) const;

    long m_nNumber;                        // the application's; the library never reads it
    const char* m_pszName;                 // the class name
    KyRxClassInfo* m_pBases[5];            // the direct bases; the first null ends them
    KyRxDynCreateClass* (*m_pfnCreate)();  // makes a new object; null when the class cannot be created

private:
    static constexpr int nLevelsInLine = 4;

    // The walk by descriptor from pInfo on: so many levels of single inheritance in line, the others in the
    // library. A descriptor answers for itself once none of its bases has. Whether it is the one asked for is
    // seen on the way to them (bIs), but no answer is given before that way has ended.
    template <int nLevels>
    [[gnu::always_inline]] static inline bool Walk(const KyRxClassInfo* pInfo, const KyRxClassInfo* pOther,
                                                   bool bIs) {
        if constexpr (nLevels == 0) {
            return WalkOn(pInfo, pOther, bIs);
        } else {
            if (__builtin_expect(pInfo->m_pBases[1] != nullptr, 0)) return WalkOn(pInfo, pOther, bIs);
            bIs |= pInfo == pOther;
            const KyRxClassInfo* const pBase = pInfo->m_pBases[0];
            return pBase != nullptr ? Walk<nLevels - 1>(pBase, pOther, bIs) : bIs;
        }
    }
    static bool WalkOn(const KyRxClassInfo* pInfo, const KyRxClassInfo* pOther, bool bIs);
};

/// The root of all classes that carry a descriptor.
class KY_API KyRxRunTimeClass {
public:
    /// The descriptor of the object's own class.
    virtual KyRxClassInfo* GetCI() const;

    virtual ~KyRxRunTimeClass();

    /// The descriptor of this class.
    static KyRxClassInfo* GetStaticCI();

    /// The descriptor of this class.
    static KyRxClassInfo s_classInfo;
};

/// The root of the classes that can be created through their descriptor.
class KY_API KyRxDynCreateClass : public KyRxRunTimeClass {
public:
    KyRxClassInfo* GetCI() const override;

    ~KyRxDynCreateClass() override;

    /// For initialising an object made by NewObject. The library never calls it: whoever creates through a
    /// descriptor does. This version does nothing and returns the object.
    virtual KyRxDynCreateClass* InitObject();

    /// The descriptor of this class.
    static KyRxClassInfo* GetStaticCI();

    /// A new KyRxDynCreateClass, owned by the caller; InitObject has not been called.
    static KyRxDynCreateClass* NewObject();

    /// The descriptor of this class.
    static KyRxClassInfo s_classInfo;
};

/// The descriptor of Class with the descriptors of Bases, one to five direct bases of it, in order.
template <class Class, class... Bases>
KyRxClassInfo KyRxDescribe(const char* pszName, long nNumber, KyRxDynCreateClass* (*pfnCreate)()) {
    static_assert(sizeof...(Bases) <= 5, "a descriptor has room for five bases");
    static_assert((std::is_base_of_v<Bases, Class> && ...), "a class is not a base of the class described");
    return KyRxClassInfo(pszName, nNumber, pfnCreate, Bases::GetStaticCI()...);
}

/// In the class: its descriptor, GetStaticCI and GetCI. The members that follow are public.
#define KY_DECLARE_CLASS(C)                                         \
public:                                                             \
    static KyRxClassInfo s_classInfo;                               \
    static KyRxClassInfo* GetStaticCI() { return &C::s_classInfo; } \
    KyRxClassInfo* GetCI() const override { return GetStaticCI(); }

/// The same for a class that can be created through its descriptor: it needs a default constructor, and
/// NewObject makes one.
#define KY_DECLARE_DYNCREATE(C) \
    KY_DECLARE_CLASS(C)         \
    static KyRxDynCreateClass* NewObject() { return new C(); }

/// In one source file: the descriptor of a class declared with KY_DECLARE_CLASS. The number is the
/// application's; the one to five direct bases follow as class names.
#define KY_IMPLEMENT_CLASS(C, number, ...) \
    KyRxClassInfo C::s_classInfo = KyRxDescribe<C, __VA_ARGS__>(#C, number, nullptr);

/// The same for a class declared with KY_DECLARE_DYNCREATE.
#define KY_IMPLEMENT_DYNCREATE(C, number, ...) \
    KyRxClassInfo C::s_classInfo = KyRxDescribe<C, __VA_ARGS__>(#C, number, &C::NewObject);
