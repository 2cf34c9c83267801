// A drawing: shapes, back to front, each with a name of its own.
#pragma once

#include <memory>
#include <string>

#include "VexaBase/containers/KyPDList.h"
#include "examples/journal/Shape.h"

namespace journal {

class Document {
public:
    /// Index of the shape with that name; -1 if there is none.
    long Find(const std::string& strName) const;

    /// The same, where there has to be one: throws Refusal if not.
    long Locate(const std::string& strName) const;

    Shape& At(long i) const { return **m_shapes.GetAt(i); }

    /// Puts a shape at an index; the length is in front of all others. Throws Refusal if its name is taken,
    /// and changes nothing.
    void Insert(long i, std::unique_ptr<Shape>& shape);

    /// Takes a shape out, alive.
    std::unique_ptr<Shape> TakeOut(long i);

    KyPDList<Shape> m_shapes;  // owns them
};

/// A line for each shape and one that counts them by class.
std::string Listing(const Document& document);

/// The drawing as the text of an SVG file.
std::string DrawSvg(const Document& document);

}  // namespace journal
