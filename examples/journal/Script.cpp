#include "examples/journal/Script.h"

#include <cmath>

#include "examples/journal/Editor.h"
#include "examples/journal/Words.h"

namespace journal {
namespace {

Point NextPoint(Words& words, What what) {
    const double x = CheckedNumber(words.NextNumber(what), what);
    return {x, CheckedNumber(words.NextNumber(what), what)};
}

std::unique_ptr<Shape> NextShape(Words& words) {
    const std::string strClass = words.Next("class");
    const KyRxClassInfo* const pInfo = FindShapeClass(strClass);
    if (pInfo == nullptr)
        throw Refusal("unknown class " + Quoted(strClass) + " (known: " + ShapeClassNames() + ")");
    std::unique_ptr<Shape> shape = NewShape(*pInfo);
    shape->m_strName = CheckedName(words.Next("name"), "name");
    shape->m_position = NextPoint(words, "position");
    shape->ReadMeasures(words);
    return shape;
}

long NextSteps(Words& words) {
    if (!words.HasMore()) return 1;
    const double d = CheckedSize(words.NextNumber("count"), "count");
    if (d != std::floor(d)) throw Refusal("count is not a whole number");
    return static_cast<long>(d);
}

std::unique_ptr<Edit> NextEdit(const std::string& strVerb, Words& words) {
    if (strVerb == "add") return AddShape(NextShape(words));
    std::string strName = CheckedName(words.Next("name"), "name");
    if (strVerb == "move") return MoveShape(std::move(strName), NextPoint(words, "way"));
    if (strVerb == "colour")
        return ColourShape(std::move(strName), CheckedColour(words.Next("colour"), "colour"));
    if (strVerb == "raise") return RaiseShape(std::move(strName));
    return RemoveShape(std::move(strName));
}

void RunLine(Words words) {
    if (!words.HasMore()) return;
    const std::string strVerb = words.Next("edit");
    Request request;  // the channel has the pointer only
    if (strVerb == "undo" || strVerb == "redo") {
        request.m_nSteps = NextSteps(words);
        words.End();
        KyPostEvent(strVerb == "undo" ? L"undo" : L"redo", &request, Requests);
    } else if (strVerb == "add" || strVerb == "move" || strVerb == "colour" || strVerb == "raise" ||
               strVerb == "remove") {
        request.m_edit = NextEdit(strVerb, words);
        words.End();
        KyPostEvent(L"edit", &request, Requests);
    } else {
        throw Refusal("unknown edit " + Quoted(strVerb) +
                      " (known: add, move, colour, raise, remove, undo, redo)");
    }
    KyProcessPostEvents();
}

}  // namespace

void RunScript(std::istream& script) {
    long nLine = 0;
    for (std::string strLine; std::getline(script, strLine);) {
        ++nLine;
        try {
            RunLine(Words(strLine));
        } catch (const Refusal& refusal) {
            throw Refusal("line " + std::to_string(nLine) + ": " + refusal.what());
        }
    }
}

}  // namespace journal
