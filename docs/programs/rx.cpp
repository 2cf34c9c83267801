// Class descriptors: who is kin to whom, and objects made by their class's
// name.

#include <VexaBase/rx/KyRxClass.h>

#include <cstring>
#include <iostream>
#include <memory>

namespace {

// Classes with kinship are rooted in KyRxRunTimeClass.
class Figure : public KyRxRunTimeClass {
    KY_DECLARE_CLASS(Figure)
};
class Circle : public Figure {
    KY_DECLARE_CLASS(Circle)
};
KY_IMPLEMENT_CLASS(Figure, 10, KyRxRunTimeClass)
KY_IMPLEMENT_CLASS(Circle, 11, Figure)

// Classes that are created through their descriptor are rooted in
// KyRxDynCreateClass.
class Pen : public KyRxDynCreateClass {
    KY_DECLARE_DYNCREATE(Pen)
    KyRxDynCreateClass* InitObject() override {
        m_nWidth = 3;
        return this;
    }
    long m_nWidth = 0;
};
KY_IMPLEMENT_DYNCREATE(Pen, 20, KyRxDynCreateClass)

/// A program's own register: the descriptors that a file may name.
KyRxClassInfo* FindClass(const char* pszName) {
    for (KyRxClassInfo* pInfo : {Pen::GetStaticCI(), Circle::GetStaticCI()}) {
        if (std::strcmp(pInfo->m_pszName, pszName) == 0) return pInfo;
    }
    return nullptr;
}

}  // namespace

int main() {
    std::cout << std::boolalpha;
    const Circle circle;
    const KyRxRunTimeClass& object = circle;
    std::cout << "the object is a " << object.GetCI()->m_pszName << ", number "
              << object.GetCI()->m_nNumber << '\n'
              << "a Figure? "
              << object.GetCI()->IsClassOf(Figure::GetStaticCI()) << '\n'
              << "a \"Circle\"? " << object.GetCI()->IsClassOf("Circle") << '\n'
              << "is every Figure a Circle? "
              << Figure::s_classInfo.IsClassOf(Circle::GetStaticCI()) << '\n';

    const std::unique_ptr<KyRxDynCreateClass> made(
        FindClass("Pen")->NewObject());
    // A creatable object is told by its descriptor's identity.
    if (made->GetCI() == Pen::GetStaticCI()) {
        auto* const pen = static_cast<Pen*>(made.get());
        std::cout << "a Pen of width " << pen->m_nWidth;
        pen->InitObject();  // NewObject does not call it
        std::cout << ", initialised: " << pen->m_nWidth << '\n';
    }
    const bool bMade = FindClass("Circle")->NewObject() != nullptr;
    std::cout << "does Circle's descriptor make one? " << bMade << '\n';
}
