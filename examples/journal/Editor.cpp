#include "examples/journal/Editor.h"

#include <string_view>

#include "examples/journal/Text.h"

namespace journal {

void Editor::React(const wchar_t* pszName, void* pData) {
    Request& request = *static_cast<Request*>(pData);
    const std::wstring_view name = pszName;
    if (name == L"edit") Do(request);
    if (name == L"undo") Undo(request);
    if (name == L"redo") Redo(request);
    KyPostEvent(L"done", &request, Notices);
}

void Editor::Do(Request& request) {
    request.m_edit->Do(*m_pDocument);
    request.m_strOutcome = request.m_edit->Describe();
    m_done.push_back(std::move(request.m_edit));
    m_undone.clear();
}

void Editor::Undo(Request& request) {
    if (request.m_nSteps > static_cast<long>(m_done.size())) {
        throw Refusal("there are " + std::to_string(m_done.size()) + " edits to undo");
    }
    for (long i = 0; i < request.m_nSteps; ++i) {
        m_done.back()->Undo(*m_pDocument);
        request.m_strOutcome += (i == 0 ? "undo " : ", ") + m_done.back()->Describe();
        m_undone.push_back(std::move(m_done.back()));
        m_done.pop_back();
    }
}

void Editor::Redo(Request& request) {
    if (request.m_nSteps > static_cast<long>(m_undone.size())) {
        throw Refusal("there are " + std::to_string(m_undone.size()) + " edits to redo");
    }
    for (long i = 0; i < request.m_nSteps; ++i) {
        m_undone.back()->Do(*m_pDocument);
        request.m_strOutcome += (i == 0 ? "redo " : ", ") + m_undone.back()->Describe();
        m_done.push_back(std::move(m_undone.back()));
        m_undone.pop_back();
    }
}

void Chronicle::React(const wchar_t* /*pszName*/, void* pData) {
    *m_pOut << static_cast<const Request*>(pData)->m_strOutcome << '\n';
}

}  // namespace journal
