// The classes of shapes. A class more is a class here and a line in ShapeClasses.
#pragma once

#include "examples/journal/Shape.h"

namespace journal {

/// Around its position.
class Circle : public Shape {
    KY_DECLARE_DYNCREATE(Circle)

    KyRxDynCreateClass* InitObject() override;
    void ReadMeasures(Words& words) override;
    void ReadMeasures(ByteReader& reader) override;
    void WriteMeasures(ByteWriter& writer) const override;
    std::string Measures() const override;
    Box Bounds() const override;
    std::string SvgElement() const override;

    double m_dRadius = 0;
};

/// To the right of its position and below it.
class Rectangle : public Shape {
    KY_DECLARE_DYNCREATE(Rectangle)

    KyRxDynCreateClass* InitObject() override;
    void ReadMeasures(Words& words) override;
    void ReadMeasures(ByteReader& reader) override;
    void WriteMeasures(ByteWriter& writer) const override;
    std::string Measures() const override;
    Box Bounds() const override;
    std::string SvgElement() const override;

    double m_dWidth = 0;
    double m_dHeight = 0;
};

/// From its position to the end of its extent.
class Line : public Shape {
    KY_DECLARE_DYNCREATE(Line)

    void ReadMeasures(Words& words) override;
    void ReadMeasures(ByteReader& reader) override;
    void WriteMeasures(ByteWriter& writer) const override;
    std::string Measures() const override;
    Box Bounds() const override;
    std::string SvgElement() const override;

    Point m_extent;
};

/// A line of text whose foot begins at its position.
class Label : public Shape {
    KY_DECLARE_DYNCREATE(Label)

    void ReadMeasures(Words& words) override;
    void ReadMeasures(ByteReader& reader) override;
    void WriteMeasures(ByteWriter& writer) const override;
    std::string Measures() const override;
    Box Bounds() const override;
    std::string SvgElement() const override;
    std::string SvgText() const override;

    double m_dHeight = 0;
    std::string m_strText;
};

}  // namespace journal
