#include "examples/journal/Shape.h"

#include <algorithm>

#include "examples/journal/Shapes.h"

namespace journal {

KY_IMPLEMENT_CLASS(Shape, 0, KyRxDynCreateClass)

KyRxDynCreateClass* Shape::InitObject() {
    m_strColour = "black";
    return this;
}

const std::vector<const KyRxClassInfo*>& ShapeClasses() {
    static const std::vector<const KyRxClassInfo*> classes = {Circle::GetStaticCI(), Label::GetStaticCI(),
                                                              Line::GetStaticCI(), Rectangle::GetStaticCI()};
    return classes;
}

const KyRxClassInfo* FindShapeClass(const std::string& strName) {
    const auto& classes = ShapeClasses();
    const auto it = std::find_if(classes.begin(), classes.end(),
                                 [&](const KyRxClassInfo* pInfo) { return pInfo->m_pszName == strName; });
    return it != classes.end() ? *it : nullptr;
}

std::string ShapeClassNames() {
    std::string strNames;
    for (const KyRxClassInfo* pInfo : ShapeClasses()) {
        if (!strNames.empty()) strNames += ", ";
        strNames += pInfo->m_pszName;
    }
    return strNames;
}

std::unique_ptr<Shape> NewShape(const KyRxClassInfo& info) {
    std::unique_ptr<Shape> shape(static_cast<Shape*>(info.NewObject()));
    shape->InitObject();
    return shape;
}

}  // namespace journal
