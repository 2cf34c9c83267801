// Descriptors as an application meets them: kinship, creation, the macros and the layout.

#include "VexaBase/rx/KyRxClass.h"

#include <gmock/gmock.h>

#include <iterator>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "Layout.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsNull;
using testing::Ref;
using testing::StrEq;

// The library's own descriptors
// ---------------------------------------------------------------------------------------

TEST(KyRxRunTimeClass, DescriptorHoldsItsNameNumberZeroNoCreatorAndNoBases) {
    const KyRxClassInfo& info = KyRxRunTimeClass::s_classInfo;

    EXPECT_THAT(info.m_pszName, StrEq("KyRxRunTimeClass"));
    EXPECT_EQ(info.m_nNumber, 0);
    EXPECT_EQ(info.m_pfnCreate, nullptr);
    EXPECT_THAT(info.m_pBases, Each(IsNull()));
}

TEST(KyRxDynCreateClass, DescriptorNamesItselfAsItsOnlyBase) {
    const KyRxClassInfo& info = KyRxDynCreateClass::s_classInfo;

    EXPECT_THAT(info.m_pszName, StrEq("KyRxDynCreateClass"));
    EXPECT_EQ(info.m_nNumber, 1);
    EXPECT_EQ(info.m_pfnCreate, &KyRxDynCreateClass::NewObject);
    EXPECT_THAT(info.m_pBases, ElementsAre(&info, IsNull(), IsNull(), IsNull(), IsNull()));
}

TEST(KyRxRunTimeClass, ObjectAndClassAnswerTheSameDescriptor) {
    const KyRxRunTimeClass object;

    EXPECT_EQ(KyRxRunTimeClass::GetStaticCI(), &KyRxRunTimeClass::s_classInfo);
    EXPECT_EQ(object.GetCI(), &KyRxRunTimeClass::s_classInfo);
}

TEST(KyRxDynCreateClass, ObjectAndClassAnswerTheSameDescriptor) {
    const KyRxDynCreateClass object;
    const KyRxRunTimeClass& asRoot = object;

    EXPECT_EQ(KyRxDynCreateClass::GetStaticCI(), &KyRxDynCreateClass::s_classInfo);
    EXPECT_EQ(object.GetCI(), &KyRxDynCreateClass::s_classInfo);
    EXPECT_EQ(asRoot.GetCI(), &KyRxDynCreateClass::s_classInfo);
}

TEST(KyRxDynCreateClass, InitObjectDoesNothingAndReturnsTheObjectItself) {
    KyRxDynCreateClass object;

    EXPECT_EQ(object.InitObject(), &object);
}

TEST(KyRxRunTimeClass, IsItsOwnKindByDescriptorAndByName) {
    const KyRxClassInfo& info = KyRxRunTimeClass::s_classInfo;

    EXPECT_TRUE(info.IsClassOf(&info));
    EXPECT_TRUE(info.IsClassOf("KyRxRunTimeClass"));
}

TEST(KyRxRunTimeClass, NamesAreComparedWholeAndWithCase) {
    const KyRxClassInfo& info = KyRxRunTimeClass::s_classInfo;

    EXPECT_FALSE(info.IsClassOf("kyrxruntimeclass"));
    EXPECT_FALSE(info.IsClassOf("KyRxRunTimeClas"));
    EXPECT_FALSE(info.IsClassOf("KyRxRunTimeClass "));
    EXPECT_FALSE(info.IsClassOf(""));
}

TEST(KyRxRunTimeClass, NamesAreComparedByTextNotByAddress) {
    const std::string strName = KyRxRunTimeClass::s_classInfo.m_pszName;

    EXPECT_TRUE(KyRxRunTimeClass::s_classInfo.IsClassOf(strName.c_str()));
}

TEST(KyRxRunTimeClass, NoDescriptorIsNoKind) {
    EXPECT_FALSE(KyRxRunTimeClass::s_classInfo.IsClassOf(static_cast<const KyRxClassInfo*>(nullptr)));
}

// Descriptors alone
// ---------------------------------------------------------------------------------------------------

TEST(KyRxClassInfo, ConstructorStoresEachArgumentInItsField) {
    const char szName[] = "Pipe";
    KyRxClassInfo a("A", 0, nullptr), b("B", 0, nullptr), c("C", 0, nullptr), d("D", 0, nullptr),
        e("E", 0, nullptr);

    const KyRxClassInfo info(szName, -7000000000L, &KyRxDynCreateClass::NewObject, &a, &b, &c, &d, &e);

    EXPECT_EQ(info.m_nNumber, -7000000000L);
    EXPECT_EQ(info.m_pszName, szName) << "the pointer is kept, not the text";
    EXPECT_THAT(info.m_pBases, ElementsAre(&a, &b, &c, &d, &e));
    EXPECT_EQ(info.m_pfnCreate, &KyRxDynCreateClass::NewObject);
}

TEST(KyRxClassInfo, EveryOneOfFiveBasesCounts) {
    KyRxClassInfo a("A", 0, nullptr), b("B", 0, nullptr), c("C", 0, nullptr), d("D", 0, nullptr),
        e("E", 0, nullptr);
    KyRxClassInfo stranger("Stranger", 0, nullptr);
    const KyRxClassInfo info("Self", 0, nullptr, &a, &b, &c, &d, &e);

    for (const KyRxClassInfo* pBase : {&a, &b, &c, &d, &e}) {
        EXPECT_TRUE(info.IsClassOf(pBase)) << pBase->m_pszName;
        EXPECT_TRUE(info.IsClassOf(pBase->m_pszName)) << pBase->m_pszName;
    }
    EXPECT_TRUE(info.IsClassOf(&info));
    EXPECT_FALSE(info.IsClassOf(&stranger));
    EXPECT_FALSE(info.IsClassOf("Stranger"));
}

TEST(KyRxClassInfo, TheFirstNullBaseHidesThoseBehindIt) {
    KyRxClassInfo a("A", 0, nullptr), hidden("Hidden", 0, nullptr);
    const KyRxClassInfo first("First", 0, nullptr, nullptr, &hidden);
    const KyRxClassInfo second("Second", 0, nullptr, &a, nullptr, &hidden, &hidden, &hidden);

    EXPECT_THAT(first.m_pBases, ElementsAre(IsNull(), &hidden, IsNull(), IsNull(), IsNull()));
    EXPECT_FALSE(first.IsClassOf(&hidden));
    EXPECT_FALSE(first.IsClassOf("Hidden"));
    EXPECT_TRUE(second.IsClassOf(&a));
    EXPECT_FALSE(second.IsClassOf(&hidden));
    EXPECT_FALSE(second.IsClassOf("Hidden"));
}

TEST(KyRxClassInfo, ABaseIsNotItsDerivedClass) {
    KyRxClassInfo base("Base", 0, nullptr);
    const KyRxClassInfo derived("Derived", 0, nullptr, &base);

    EXPECT_FALSE(base.IsClassOf(&derived));
    EXPECT_FALSE(base.IsClassOf("Derived"));
}

TEST(KyRxClassInfo, TwoDescriptorsOfOneNameAreOneKindByNameAndTwoByDescriptor) {
    const KyRxClassInfo one("Same", 0, nullptr), other("Same", 0, nullptr);

    EXPECT_FALSE(one.IsClassOf(&other));
    EXPECT_TRUE(one.IsClassOf("Same"));
    EXPECT_TRUE(other.IsClassOf("Same"));
}

TEST(KyRxClassInfo, KinshipReachesThroughALongChainOfBases) {
    std::vector<std::unique_ptr<KyRxClassInfo>> chain;
    KyRxClassInfo* pBase = nullptr;
    for (int i = 0; i < 1000; ++i) {
        chain.push_back(std::make_unique<KyRxClassInfo>(i == 0 ? "Root" : "Link", i, nullptr, pBase));
        pBase = chain.back().get();
    }

    EXPECT_TRUE(pBase->IsClassOf(chain.front().get()));
    EXPECT_TRUE(pBase->IsClassOf("Root"));
    EXPECT_FALSE(chain.front()->IsClassOf(pBase));
}

TEST(KyRxClassInfo, AnAnswerFoundInAnEarlierBaseIsGivenBeforeTheDescriptorThatNeverAnswersIsReached) {
    KyRxClassInfo before("Before", 0, nullptr);
    const KyRxClassInfo info("Self", 0, nullptr, &before, KyRxDynCreateClass::GetStaticCI());

    EXPECT_TRUE(info.IsClassOf(&before));
    EXPECT_TRUE(info.IsClassOf("Before"));
}

TEST(KyRxClassInfo, NewObjectIsWhateverTheCreatorReturns) {
    static KyRxDynCreateClass theOne;
    const KyRxClassInfo info("Singleton", 0, []() -> KyRxDynCreateClass* { return &theOne; });
    const KyRxClassInfo barren("Barren", 0, []() -> KyRxDynCreateClass* { return nullptr; });

    EXPECT_EQ(info.NewObject(), &theOne);
    EXPECT_EQ(barren.NewObject(), nullptr);
}

TEST(KyRxClassInfo, NewObjectWithoutACreatorIsNull) {
    EXPECT_EQ(KyRxRunTimeClass::s_classInfo.NewObject(), nullptr);
}

TEST(KyRxClassInfo, NewObjectPassesTheCreatorsExceptionThrough) {
    const KyRxClassInfo info("Greedy", 0, []() -> KyRxDynCreateClass* { throw std::bad_alloc(); });

    EXPECT_THROW(info.NewObject(), std::bad_alloc);
}

TEST(KyRxDynCreateClass, NewObjectMakesAnObjectOfThatClass) {
    const std::unique_ptr<KyRxDynCreateClass> first(KyRxDynCreateClass::s_classInfo.NewObject());
    const std::unique_ptr<KyRxDynCreateClass> second(KyRxDynCreateClass::NewObject());

    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->GetCI(), &KyRxDynCreateClass::s_classInfo);
    EXPECT_EQ(second->GetCI(), &KyRxDynCreateClass::s_classInfo);
}

// Classes spelled out by hand
// -----------------------------------------------------------------------------------------

class A1 : public KyRxRunTimeClass {
public:
    KyRxClassInfo* GetCI() const override { return &s_classInfo; }
    static KyRxClassInfo* GetStaticCI() { return &s_classInfo; }
    static KyRxClassInfo s_classInfo;
};

class A2 : public KyRxRunTimeClass {
public:
    KyRxClassInfo* GetCI() const override { return &s_classInfo; }
    static KyRxClassInfo* GetStaticCI() { return &s_classInfo; }
    static KyRxClassInfo s_classInfo;
};

class B : public A1, public A2 {
public:
    KyRxClassInfo* GetCI() const override { return &s_classInfo; }
    static KyRxClassInfo* GetStaticCI() { return &s_classInfo; }
    static KyRxClassInfo s_classInfo;
};

// In the wrong order on purpose: descriptors hold addresses only.
KyRxClassInfo B::s_classInfo("B", 3, nullptr, A1::GetStaticCI(), A2::GetStaticCI());
KyRxClassInfo A1::s_classInfo("A1", 1, nullptr);
KyRxClassInfo A2::s_classInfo("A2", 2, nullptr, KyRxRunTimeClass::GetStaticCI());

TEST(KyRxClassInfo, AClassIsKinToItselfAndToEveryAncestorByDescriptor) {
    EXPECT_TRUE(B::s_classInfo.IsClassOf(B::GetStaticCI()));
    EXPECT_TRUE(B::s_classInfo.IsClassOf(A1::GetStaticCI()));
    EXPECT_TRUE(B::s_classInfo.IsClassOf(A2::GetStaticCI()));
    EXPECT_TRUE(B::s_classInfo.IsClassOf(KyRxRunTimeClass::GetStaticCI()));
    EXPECT_FALSE(B::s_classInfo.IsClassOf(KyRxDynCreateClass::GetStaticCI()));
    EXPECT_FALSE(A1::s_classInfo.IsClassOf(KyRxRunTimeClass::GetStaticCI()))
        << "A1's descriptor names no base";
}

TEST(KyRxClassInfo, AClassIsKinToItselfAndToEveryAncestorByName) {
    EXPECT_TRUE(B::s_classInfo.IsClassOf("B"));
    EXPECT_TRUE(B::s_classInfo.IsClassOf("A1"));
    EXPECT_TRUE(B::s_classInfo.IsClassOf("A2"));
    EXPECT_TRUE(B::s_classInfo.IsClassOf("KyRxRunTimeClass"));
    EXPECT_FALSE(B::s_classInfo.IsClassOf("KyRxDynCreateClass"));
    EXPECT_FALSE(A1::s_classInfo.IsClassOf("KyRxRunTimeClass"));
}

TEST(KyRxClassInfo, AnObjectAnswersThroughWhicheverBaseItIsAsked) {
    const B object;
    const A1& asA1 = object;
    const A2& asA2 = object;

    EXPECT_EQ(asA1.GetCI(), &B::s_classInfo);
    EXPECT_EQ(asA2.GetCI(), &B::s_classInfo);
}

// Classes made with the macros
// ----------------------------------------------------------------------------------------

class Movable : public virtual KyRxRunTimeClass {
    KY_DECLARE_CLASS(Movable)
};
class Visible : public virtual KyRxRunTimeClass {
    KY_DECLARE_CLASS(Visible)
};
class Named : public virtual KyRxRunTimeClass {
    KY_DECLARE_CLASS(Named)
};
class Solid : public virtual KyRxRunTimeClass {
    KY_DECLARE_CLASS(Solid)
};
class Audible : public virtual KyRxRunTimeClass {
    KY_DECLARE_CLASS(Audible)
};
class Actor : public Movable, public Visible, public Named, public Solid, public Audible {
    KY_DECLARE_CLASS(Actor)
};
class Ghost : public Actor {
    KY_DECLARE_CLASS(Ghost);
};

KY_IMPLEMENT_CLASS(Movable, 10, KyRxRunTimeClass)
KY_IMPLEMENT_CLASS(Visible, 11, KyRxRunTimeClass)
KY_IMPLEMENT_CLASS(Named, 12, KyRxRunTimeClass)
KY_IMPLEMENT_CLASS(Solid, 13, KyRxRunTimeClass)
KY_IMPLEMENT_CLASS(Audible, 14, KyRxRunTimeClass)
KY_IMPLEMENT_CLASS(Actor, 20, Movable, Visible, Named, Solid, Audible)
KY_IMPLEMENT_CLASS(Ghost, 21, Actor);

TEST(KyImplementClass, DescriptorHoldsNameNumberAndTheBasesInOrder) {
    const KyRxClassInfo& info = Actor::s_classInfo;

    EXPECT_THAT(info.m_pszName, StrEq("Actor"));
    EXPECT_EQ(info.m_nNumber, 20);
    EXPECT_EQ(info.m_pfnCreate, nullptr);
    EXPECT_THAT(info.m_pBases,
                ElementsAre(Movable::GetStaticCI(), Visible::GetStaticCI(), Named::GetStaticCI(),
                            Solid::GetStaticCI(), Audible::GetStaticCI()));
}

TEST(KyImplementClass, AClassWithFiveBasesIsKinToEachOfThemAndToTheRootThatTheyShare) {
    const Ghost ghost;
    const KyRxClassInfo& info = *static_cast<const KyRxRunTimeClass&>(ghost).GetCI();

    EXPECT_THAT(info, Ref(Ghost::s_classInfo));
    for (const KyRxClassInfo* pKin : {Ghost::GetStaticCI(), Actor::GetStaticCI(), Movable::GetStaticCI(),
                                      Visible::GetStaticCI(), Named::GetStaticCI(), Solid::GetStaticCI(),
                                      Audible::GetStaticCI(), KyRxRunTimeClass::GetStaticCI()}) {
        EXPECT_TRUE(info.IsClassOf(pKin)) << pKin->m_pszName;
        EXPECT_TRUE(info.IsClassOf(pKin->m_pszName)) << pKin->m_pszName;
    }
    EXPECT_FALSE(info.IsClassOf(B::GetStaticCI()));
    EXPECT_FALSE(info.IsClassOf("ghost"));
}

class Root : public KyRxRunTimeClass {
    KY_DECLARE_CLASS(Root)
};
class Left : public Root {
    KY_DECLARE_CLASS(Left)
};
class Right : public Root {
    KY_DECLARE_CLASS(Right)
};
class Tip : public Left, public Right {
    KY_DECLARE_CLASS(Tip)
};
KY_IMPLEMENT_CLASS(Tip, 4, Left, Right)
KY_IMPLEMENT_CLASS(Right, 3, Root)
KY_IMPLEMENT_CLASS(Left, 2, Root)
KY_IMPLEMENT_CLASS(Root, 1, KyRxRunTimeClass)

TEST(KyImplementClass, ADiamondWithTwoRootObjectsHasOneKinshipToTheRoot) {
    const Tip tip;

    EXPECT_EQ(static_cast<const Left&>(tip).GetCI(), Tip::GetStaticCI());
    EXPECT_EQ(static_cast<const Right&>(tip).GetCI(), Tip::GetStaticCI());
    for (const KyRxClassInfo* pKin : {Tip::GetStaticCI(), Left::GetStaticCI(), Right::GetStaticCI(),
                                      Root::GetStaticCI(), KyRxRunTimeClass::GetStaticCI()}) {
        EXPECT_TRUE(Tip::s_classInfo.IsClassOf(pKin)) << pKin->m_pszName;
    }
    EXPECT_FALSE(Left::s_classInfo.IsClassOf(Right::GetStaticCI()));
    EXPECT_FALSE(Root::s_classInfo.IsClassOf(Tip::GetStaticCI()));
}

class Document : public KyRxDynCreateClass {
    KY_DECLARE_DYNCREATE(Document)

    ~Document() override { --s_nLive; }
    KyRxDynCreateClass* InitObject() override {
        m_bInitialised = true;
        return this;
    }

    bool m_bInitialised = (++s_nLive, false);
    inline static int s_nLive = 0;
};
KY_IMPLEMENT_DYNCREATE(Document, 42, KyRxDynCreateClass)

TEST(KyImplementDyncreate, DescriptorHoldsTheCreator) {
    const KyRxClassInfo& info = Document::s_classInfo;

    EXPECT_THAT(info.m_pszName, StrEq("Document"));
    EXPECT_EQ(info.m_nNumber, 42);
    EXPECT_EQ(info.m_pfnCreate, &Document::NewObject);
    EXPECT_THAT(info.m_pBases,
                ElementsAre(KyRxDynCreateClass::GetStaticCI(), IsNull(), IsNull(), IsNull(), IsNull()));
}

TEST(KyImplementDyncreate, NewObjectMakesAnObjectOfTheClassThatNobodyHasInitialised) {
    const std::unique_ptr<KyRxDynCreateClass> object(Document::s_classInfo.NewObject());

    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->GetCI(), Document::GetStaticCI());
    EXPECT_FALSE(static_cast<Document&>(*object).m_bInitialised);

    EXPECT_EQ(object->InitObject(), object.get());
    EXPECT_TRUE(static_cast<Document&>(*object).m_bInitialised);
}

TEST(KyImplementDyncreate, TheCallerDeletesTheObjectThroughEitherRoot) {
    const int nLiveAtStart = Document::s_nLive;
    KyRxDynCreateClass* const pFirst = Document::s_classInfo.NewObject();
    KyRxRunTimeClass* const pSecond = Document::s_classInfo.NewObject();
    EXPECT_EQ(Document::s_nLive, nLiveAtStart + 2);

    delete pFirst;
    delete pSecond;

    EXPECT_EQ(Document::s_nLive, nLiveAtStart);
}

class Drawing : public Document, public Root {
    KY_DECLARE_DYNCREATE(Drawing)

    KyRxClassInfo* m_pInitialisedAs = nullptr;

    KyRxDynCreateClass* InitObject() override {
        m_pInitialisedAs = GetCI();
        return Document::InitObject();
    }
};
KY_IMPLEMENT_DYNCREATE(Drawing, 43, Document, Root)

TEST(KyImplementDyncreate, ACreatableLeafWithSeveralBasesIsCreatedAndToldApartByItsDescriptor) {
    const std::unique_ptr<KyRxDynCreateClass> object(Drawing::s_classInfo.NewObject());

    ASSERT_NE(object, nullptr);
    object->InitObject();

    EXPECT_EQ(object->GetCI(), Drawing::GetStaticCI());
    EXPECT_NE(object->GetCI(), Document::GetStaticCI());
    EXPECT_EQ(static_cast<Drawing&>(*object).m_pInitialisedAs, Drawing::GetStaticCI());
}

// Layout
// --------------------------------------------------------------------------------------------------------------

TEST(KyRxClassInfo, FieldsStandInTheirOrderBehindTheTablePointer) {
    const KyRxClassInfo info("Any", 0, nullptr);

    EXPECT_EQ(OffsetOf(info, info.m_nNumber), 8);
    EXPECT_EQ(OffsetOf(info, info.m_pszName), 16);
    EXPECT_EQ(OffsetOf(info, info.m_pBases), 24);
    EXPECT_EQ(std::size(info.m_pBases), 5u);
    EXPECT_EQ(OffsetOf(info, info.m_pfnCreate), 64);
    EXPECT_EQ(sizeof(info), 72u);
}

TEST(KyRxClassInfo, TheTableHoldsTheTwoDestructorsOnly) {
    class Probe : public KyRxClassInfo {
    public:
        using KyRxClassInfo::KyRxClassInfo;
        virtual void Next() {}
    };

    EXPECT_TRUE(std::has_virtual_destructor_v<KyRxClassInfo>);
    EXPECT_EQ(SlotOf(&Probe::Next), 2);
}

TEST(KyRxRunTimeClass, TheTableHoldsGetCIThenTheDestructors) {
    class Probe : public KyRxRunTimeClass {
    public:
        virtual void Next() {}
    };

    EXPECT_EQ(SlotOf(&KyRxRunTimeClass::GetCI), 0);
    EXPECT_TRUE(std::has_virtual_destructor_v<KyRxRunTimeClass>);
    EXPECT_EQ(SlotOf(&Probe::Next), 3);
    EXPECT_EQ(sizeof(KyRxRunTimeClass), sizeof(void*));
}

TEST(KyRxDynCreateClass, TheTableContinuesWithInitObject) {
    class Probe : public KyRxDynCreateClass {
    public:
        virtual void Next() {}
    };

    EXPECT_EQ(SlotOf(&KyRxDynCreateClass::GetCI), 0);
    EXPECT_EQ(SlotOf(&KyRxDynCreateClass::InitObject), 3);
    EXPECT_EQ(SlotOf(&Probe::Next), 4);
    EXPECT_TRUE((std::is_base_of_v<KyRxRunTimeClass, KyRxDynCreateClass>));
    EXPECT_EQ(sizeof(KyRxDynCreateClass), sizeof(void*));
}

TEST(KyRxClassInfo, IsToldApartByAddressAndThereforeNeverCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<KyRxClassInfo>);
    EXPECT_FALSE(std::is_copy_assignable_v<KyRxClassInfo>);
}

}  // namespace
