// Drawings for the tests of the example journal, and a script's way to one.
#pragma once

#include <memory>
#include <sstream>
#include <string>

#include "VexaBase/event/KyScopedReactor.h"
#include "examples/journal/Document.h"
#include "examples/journal/Editor.h"
#include "examples/journal/Script.h"
#include "examples/journal/Text.h"

namespace journal {

/// A drawing with an editor that listens while this lives.
class Desk {
public:
    /// Does a script's edits. The Refusal of the first bad line passes through.
    void Run(const std::string& strScript) {
        std::istringstream script(strScript);
        RunScript(script);
    }

    std::string Names() const {
        std::string strNames;
        for (const Shape* pShape : m_document.m_shapes) {
            if (!strNames.empty()) strNames += ' ';
            strNames += pShape->m_strName;
        }
        return strNames;
    }

    Document m_document;

private:
    Editor m_editor{m_document};
    KyScopedReactor m_editing{m_editor};
};

constexpr const char* OneOfEach = R"(
add Circle sun 100 80 40
add Rectangle wall 10.5 20 300 200.25
add Line roof -5 0 70 -60
add Label sign 30 40 12 A & B #1 <größer>
colour wall #12ab00
)";

}  // namespace journal
