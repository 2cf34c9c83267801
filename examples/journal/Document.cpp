#include "examples/journal/Document.h"

#include <algorithm>
#include <optional>
#include <sstream>

#include "examples/journal/Text.h"
#include "examples/program/XmlText.h"

namespace journal {
namespace {

long CountOf(const Document& document, const KyRxClassInfo* pInfo) {
    return std::count_if(document.m_shapes.begin(), document.m_shapes.end(),
                         [pInfo](const Shape* pShape) { return pShape->GetCI() == pInfo; });
}

std::string Number(long n, const std::string& strThing) {
    return std::to_string(n) + ' ' + strThing + (n == 1 ? "" : "s");
}

/// The space that all shapes take, with a margin.
Box BoundsOf(const Document& document) {
    std::optional<Box> box;
    for (const Shape* pShape : document.m_shapes) {
        const Box bounds = pShape->Bounds();
        if (!box) box = bounds;
        box->m_low = {std::min(box->m_low.x, bounds.m_low.x), std::min(box->m_low.y, bounds.m_low.y)};
        box->m_high = {std::max(box->m_high.x, bounds.m_high.x), std::max(box->m_high.y, bounds.m_high.y)};
    }
    if (!box) box = Box();
    constexpr double margin = 10;
    return {{box->m_low.x - margin, box->m_low.y - margin}, {box->m_high.x + margin, box->m_high.y + margin}};
}

}  // namespace

long Document::Find(const std::string& strName) const {
    const auto it = std::find_if(m_shapes.begin(), m_shapes.end(),
                                 [&](const Shape* pShape) { return pShape->m_strName == strName; });
    return it != m_shapes.end() ? std::distance(m_shapes.begin(), it) : -1;
}

long Document::Locate(const std::string& strName) const {
    const long i = Find(strName);
    if (i < 0) throw Refusal("there is no shape " + Quoted(strName));
    return i;
}

void Document::Insert(long i, std::unique_ptr<Shape>& shape) {
    if (Find(shape->m_strName) >= 0)
        throw Refusal("there is a shape " + Quoted(shape->m_strName) + " already");
    m_shapes.Insert(i, shape.get());
    static_cast<void>(shape.release());  // the list's from now on
}

std::unique_ptr<Shape> Document::TakeOut(long i) {
    std::unique_ptr<Shape> shape(m_shapes[i]);
    m_shapes.SetCurData(nullptr);  // so that the list does not delete it
    m_shapes.DelCur();
    return shape;
}

std::string Listing(const Document& document) {
    std::string strListing;
    for (const Shape* pShape : document.m_shapes) {
        strListing += std::string(pShape->GetCI()->m_pszName) + ' ' + pShape->m_strName + " at " +
                      ToText(pShape->m_position.x) + ", " + ToText(pShape->m_position.y) + ", " +
                      pShape->Measures() + ", " + pShape->m_strColour + '\n';
    }
    strListing += Number(document.m_shapes.GetLength(), "shape");
    std::string strSeparator = ": ";
    for (const KyRxClassInfo* pInfo : ShapeClasses()) {
        const long nShapes = CountOf(document, pInfo);
        if (nShapes == 0) continue;
        strListing += strSeparator + Number(nShapes, pInfo->m_pszName);
        strSeparator = ", ";
    }
    return strListing + '\n';
}

std::string DrawSvg(const Document& document) {
    const Box box = BoundsOf(document);
    std::ostringstream svg;
    svg << "<svg xmlns=\"http://www.w3.org/2000/svg\" font-family=\"sans-serif\" viewBox=\""
        << ToText(box.m_low.x) << ' ' << ToText(box.m_low.y) << ' ' << ToText(box.m_high.x - box.m_low.x)
        << ' ' << ToText(box.m_high.y - box.m_low.y) << "\">\n";
    for (const Shape* pShape : document.m_shapes) {
        const std::string strElement = pShape->SvgElement();
        const std::string strTag = strElement.substr(1, strElement.find(' ') - 1);
        svg << strElement << "<title>" << program::XmlText(pShape->m_strName) << "</title>"
            << pShape->SvgText() << "</" << strTag << ">\n";
    }
    svg << "</svg>\n";
    return svg.str();
}

}  // namespace journal
