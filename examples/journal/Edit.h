// What can be done to a drawing, and undone. An edit is done at most once before it is undone, and the other
// way round; it finds the drawing then as it left it. One that throws Refusal has changed nothing.
#pragma once

#include <memory>
#include <string>

#include "examples/journal/Document.h"

namespace journal {

class Edit {
public:
    virtual ~Edit() = default;
    virtual void Do(Document& document) = 0;
    virtual void Undo(Document& document) = 0;

    /// What it does, for the user: "move sun".
    virtual std::string Describe() const = 0;
};

/// In front of all others.
std::unique_ptr<Edit> AddShape(std::unique_ptr<Shape> shape);
std::unique_ptr<Edit> RemoveShape(std::string strName);
std::unique_ptr<Edit> MoveShape(std::string strName, Point way);
std::unique_ptr<Edit> ColourShape(std::string strName, std::string strColour);
std::unique_ptr<Edit> RaiseShape(std::string strName);

}  // namespace journal
