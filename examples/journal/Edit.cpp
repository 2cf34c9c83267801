#include "examples/journal/Edit.h"

#include <utility>

#include "examples/journal/Text.h"

namespace journal {
namespace {

class Add : public Edit {
public:
    explicit Add(std::unique_ptr<Shape> shape) : m_strName(shape->m_strName), m_shape(std::move(shape)) {}
    void Do(Document& document) override { document.Insert(document.m_shapes.GetLength(), m_shape); }
    void Undo(Document& document) override { m_shape = document.TakeOut(document.Locate(m_strName)); }
    std::string Describe() const override { return "add " + m_strName; }

private:
    std::string m_strName;
    std::unique_ptr<Shape> m_shape;  // while it is not in the drawing
};

class Remove : public Edit {
public:
    explicit Remove(std::string strName) : m_strName(std::move(strName)) {}
    void Do(Document& document) override {
        m_nIndex = document.Locate(m_strName);
        m_shape = document.TakeOut(m_nIndex);
    }
    void Undo(Document& document) override { document.Insert(m_nIndex, m_shape); }
    std::string Describe() const override { return "remove " + m_strName; }

private:
    std::string m_strName;
    long m_nIndex = 0;
    std::unique_ptr<Shape> m_shape;  // while it is not in the drawing
};

class Move : public Edit {
public:
    Move(std::string strName, Point way) : m_strName(std::move(strName)), m_way(way) {}
    void Do(Document& document) override {
        Point& position = document.At(document.Locate(m_strName)).m_position;
        const Point moved = {CheckedNumber(position.x + m_way.x, "new position"),
                             CheckedNumber(position.y + m_way.y, "new position")};
        m_before = std::exchange(position, moved);
    }
    void Undo(Document& document) override { document.At(document.Locate(m_strName)).m_position = m_before; }
    std::string Describe() const override { return "move " + m_strName; }

private:
    std::string m_strName;
    Point m_way;
    Point m_before;
};

class Colour : public Edit {
public:
    Colour(std::string strName, std::string strColour)
        : m_strName(std::move(strName)), m_strColour(std::move(strColour)) {}
    void Do(Document& document) override {
        std::swap(document.At(document.Locate(m_strName)).m_strColour, m_strColour);
    }
    void Undo(Document& document) override { Do(document); }
    std::string Describe() const override { return "colour " + m_strName; }

private:
    std::string m_strName;
    std::string m_strColour;  // the one that the shape does not have
};

class Raise : public Edit {
public:
    explicit Raise(std::string strName) : m_strName(std::move(strName)) {}
    void Do(Document& document) override {
        m_nIndex = document.Locate(m_strName);
        document.m_shapes.Move(m_nIndex, document.m_shapes.GetLength());
    }
    void Undo(Document& document) override {
        document.m_shapes.Move(document.m_shapes.GetLength() - 1, m_nIndex);
    }
    std::string Describe() const override { return "raise " + m_strName; }

private:
    std::string m_strName;
    long m_nIndex = 0;
};

}  // namespace

std::unique_ptr<Edit> AddShape(std::unique_ptr<Shape> shape) {
    return std::make_unique<Add>(std::move(shape));
}

std::unique_ptr<Edit> RemoveShape(std::string strName) {
    return std::make_unique<Remove>(std::move(strName));
}

std::unique_ptr<Edit> MoveShape(std::string strName, Point way) {
    return std::make_unique<Move>(std::move(strName), way);
}

std::unique_ptr<Edit> ColourShape(std::string strName, std::string strColour) {
    return std::make_unique<Colour>(std::move(strName), std::move(strColour));
}

std::unique_ptr<Edit> RaiseShape(std::string strName) { return std::make_unique<Raise>(std::move(strName)); }

}  // namespace journal
