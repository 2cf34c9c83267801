// What can stand in a drawing. Every class of shapes has a descriptor, and shapes come into being through it
// alone, whether a script names the class or a file does: find the descriptor for the name, NewObject,
// InitObject.
//
// Shapes are told apart by descriptor identity, pShape->GetCI() == Circle::GetStaticCI(). Their bases lead to
// KyRxDynCreateClass, whose descriptor is its own base: IsClassOf would never come back.
//
// The number of a descriptor is the version of what the class writes into a file.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "VexaBase/rx/KyRxClass.h"

namespace journal {

class ByteReader;
class ByteWriter;
class Words;

struct Point {
    double x = 0;
    double y = 0;
};

struct Box {
    Point m_low;
    Point m_high;
};

class Shape : public KyRxDynCreateClass {
    KY_DECLARE_CLASS(Shape)

    /// Gives the shape the look that its class has before anybody changes it.
    KyRxDynCreateClass* InitObject() override;

    // The measures, which each class has its own of: from a script's line, from and to a file, and as text.
    // Reading checks what it reads.
    virtual void ReadMeasures(Words& words) = 0;
    virtual void ReadMeasures(ByteReader& reader) = 0;
    virtual void WriteMeasures(ByteWriter& writer) const = 0;
    virtual std::string Measures() const = 0;

    /// The space that it takes.
    virtual Box Bounds() const = 0;

    /// Its element in an SVG picture, up to the title inside: "<circle cx=...".
    virtual std::string SvgElement() const = 0;

    /// What stands in that element behind the title.
    virtual std::string SvgText() const { return ""; }

    std::string m_strName;
    Point m_position;
    std::string m_strColour;
};

/// The descriptors of the classes that a drawing can hold.
const std::vector<const KyRxClassInfo*>& ShapeClasses();

/// The descriptor with that name; null if there is none.
const KyRxClassInfo* FindShapeClass(const std::string& strName);

/// "Circle, Label, ...".
std::string ShapeClassNames();

/// A new shape of that class, initialised.
std::unique_ptr<Shape> NewShape(const KyRxClassInfo& info);

}  // namespace journal
