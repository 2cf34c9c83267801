#include "examples/journal/Shapes.h"

#include <algorithm>

#include "examples/journal/Bytes.h"
#include "examples/journal/Text.h"
#include "examples/journal/Words.h"
#include "examples/program/XmlText.h"

namespace journal {
namespace {

/// cx="3.5", behind a space.
std::string Attribute(const char* pszName, double d) {
    return " " + std::string(pszName) + "=\"" + ToText(d) + '"';
}
std::string Attribute(const char* pszName, const std::string& strValue) {
    return " " + std::string(pszName) + "=\"" + program::XmlText(strValue) + '"';
}

}  // namespace

KY_IMPLEMENT_DYNCREATE(Circle, 1, Shape)
KY_IMPLEMENT_DYNCREATE(Rectangle, 1, Shape)
KY_IMPLEMENT_DYNCREATE(Line, 1, Shape)
KY_IMPLEMENT_DYNCREATE(Label, 1, Shape)

KyRxDynCreateClass* Circle::InitObject() {
    m_strColour = "gold";
    return this;
}

void Circle::ReadMeasures(Words& words) { m_dRadius = CheckedSize(words.NextNumber("radius"), "radius"); }
void Circle::ReadMeasures(ByteReader& reader) {
    m_dRadius = CheckedSize(reader.NextNumber("radius"), "radius");
}
void Circle::WriteMeasures(ByteWriter& writer) const { writer.WriteNumber(m_dRadius); }
std::string Circle::Measures() const { return "radius " + ToText(m_dRadius); }

Box Circle::Bounds() const {
    return {{m_position.x - m_dRadius, m_position.y - m_dRadius},
            {m_position.x + m_dRadius, m_position.y + m_dRadius}};
}

std::string Circle::SvgElement() const {
    return "<circle" + Attribute("cx", m_position.x) + Attribute("cy", m_position.y) +
           Attribute("r", m_dRadius) + Attribute("fill", m_strColour) + '>';
}

KyRxDynCreateClass* Rectangle::InitObject() {
    m_strColour = "gray";
    return this;
}

void Rectangle::ReadMeasures(Words& words) {
    m_dWidth = CheckedSize(words.NextNumber("width"), "width");
    m_dHeight = CheckedSize(words.NextNumber("height"), "height");
}

void Rectangle::ReadMeasures(ByteReader& reader) {
    m_dWidth = CheckedSize(reader.NextNumber("width"), "width");
    m_dHeight = CheckedSize(reader.NextNumber("height"), "height");
}

void Rectangle::WriteMeasures(ByteWriter& writer) const {
    writer.WriteNumber(m_dWidth);
    writer.WriteNumber(m_dHeight);
}

std::string Rectangle::Measures() const { return ToText(m_dWidth) + " x " + ToText(m_dHeight); }

Box Rectangle::Bounds() const { return {m_position, {m_position.x + m_dWidth, m_position.y + m_dHeight}}; }

std::string Rectangle::SvgElement() const {
    return "<rect" + Attribute("x", m_position.x) + Attribute("y", m_position.y) +
           Attribute("width", m_dWidth) + Attribute("height", m_dHeight) + Attribute("fill", m_strColour) +
           '>';
}

void Line::ReadMeasures(Words& words) {
    m_extent.x = CheckedNumber(words.NextNumber("extent to the right"), "extent to the right");
    m_extent.y = CheckedNumber(words.NextNumber("extent down"), "extent down");
}

void Line::ReadMeasures(ByteReader& reader) {
    m_extent.x = CheckedNumber(reader.NextNumber("extent to the right"), "extent to the right");
    m_extent.y = CheckedNumber(reader.NextNumber("extent down"), "extent down");
}

void Line::WriteMeasures(ByteWriter& writer) const {
    writer.WriteNumber(m_extent.x);
    writer.WriteNumber(m_extent.y);
}

std::string Line::Measures() const {
    return "to " + ToText(m_position.x + m_extent.x) + ", " + ToText(m_position.y + m_extent.y);
}

Box Line::Bounds() const {
    const auto [xLow, xHigh] = std::minmax({m_position.x, m_position.x + m_extent.x});
    const auto [yLow, yHigh] = std::minmax({m_position.y, m_position.y + m_extent.y});
    return {{xLow, yLow}, {xHigh, yHigh}};
}

std::string Line::SvgElement() const {
    return "<line" + Attribute("x1", m_position.x) + Attribute("y1", m_position.y) +
           Attribute("x2", m_position.x + m_extent.x) + Attribute("y2", m_position.y + m_extent.y) +
           Attribute("stroke", m_strColour) + '>';
}

void Label::ReadMeasures(Words& words) {
    m_dHeight = CheckedSize(words.NextNumber("height"), "height");
    m_strText = CheckedText(words.Rest("text"), "text");
}

void Label::ReadMeasures(ByteReader& reader) {
    m_dHeight = CheckedSize(reader.NextNumber("height"), "height");
    m_strText = CheckedText(reader.NextText("text"), "text");
}

void Label::WriteMeasures(ByteWriter& writer) const {
    writer.WriteNumber(m_dHeight);
    writer.WriteText(m_strText);
}

std::string Label::Measures() const { return "height " + ToText(m_dHeight) + ", \"" + m_strText + '"'; }

Box Label::Bounds() const {
    // How wide a font runs is the viewer's business; this is room enough for most.
    const double dWidth = 0.6 * m_dHeight * static_cast<double>(m_strText.size());
    return {{m_position.x, m_position.y - m_dHeight}, {m_position.x + dWidth, m_position.y + m_dHeight / 4}};
}

std::string Label::SvgElement() const {
    return "<text" + Attribute("x", m_position.x) + Attribute("y", m_position.y) +
           Attribute("font-size", m_dHeight) + Attribute("fill", m_strColour) + '>';
}

std::string Label::SvgText() const { return program::XmlText(m_strText); }

}  // namespace journal
