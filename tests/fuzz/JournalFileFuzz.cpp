// The reading of drawings and scripts: bytes are refused in one line, or make a drawing that is saved and drawn. A
// file comes out as it went in; a script's edits are undone one by one to nothing, and redone through the same drawings.
//
// What begins like a drawing is opened as one, anything else is run as a script.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ByteSource.h"
#include "examples/journal/DocumentFile.h"
#include "tests/journal/JournalKit.h"

namespace {

using journal::Desk;
using journal::Document;
using journal::Refusal;

/// Whether work() is done rather than refused.
template <class Work>
bool IsDone(const Work& work) {
    try {
        work();
        return true;
    } catch (const Refusal& refusal) {
        const std::string strReason = refusal.what();
        FUZZ_CHECK(!strReason.empty());
        FUZZ_CHECK(
            std::all_of(strReason.begin(), strReason.end(), [](char ch) { return ch >= ' ' && ch <= '~'; }));
        return false;
    }
}

long LinesIn(const std::string& strText) { return std::count(strText.begin(), strText.end(), '\n'); }

void CheckDrawing(const Document& document) {
    const long nShapes = document.m_shapes.GetLength();
    const std::string strSvg = DrawSvg(document);
    FUZZ_CHECK(strSvg.find("<svg ") == 0 && strSvg.rfind("</svg>\n") == strSvg.size() - 7);
    FUZZ_CHECK(LinesIn(strSvg) == nShapes + 2);
    FUZZ_CHECK(LinesIn(Listing(document)) == nShapes + 1);

    const std::string strBytes = BytesOf(document);
    Document again;
    journal::ReadBytes(strBytes, again);
    FUZZ_CHECK(BytesOf(again) == strBytes);
}

void OpenDrawing(const std::string& strBytes) {
    Document document;
    if (!IsDone([&] { journal::ReadBytes(strBytes, document); })) return;
    CheckDrawing(document);
    FUZZ_CHECK(BytesOf(document) == strBytes);
}

void RunScript(const std::string& strScript) {
    {
        Desk desk;
        IsDone([&] { desk.Run(strScript); });
        CheckDrawing(desk.m_document);

        std::vector<std::string> undone;
        do {
            undone.push_back(BytesOf(desk.m_document));
        } while (IsDone([&] { desk.Run("undo"); }));
        FUZZ_CHECK(desk.m_document.m_shapes.GetLength() == 0);
        for (auto it = undone.rbegin() + 1; it != undone.rend(); ++it) {
            desk.Run("redo");
            FUZZ_CHECK(BytesOf(desk.m_document) == *it);
        }
    }
    KyProcessPostEvents();  // notices that a refusal has left to nobody
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    const std::string strBytes(reinterpret_cast<const char*>(pData), nSize);
    if (strBytes.compare(0, 7, "JOURNAL") == 0) {
        OpenDrawing(strBytes);
    } else {
        RunScript(strBytes);
    }
    return 0;
}
