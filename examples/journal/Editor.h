// Who does the edits and who tells of them, each a receiver of the event channel. The script knows neither:
//
//     event           mask           data      who posts it, who receives it
//     edit            Requests       Request   the script, the editor
//     undo, redo      Requests       Request   the script, the editor
//     done            Notices        Request   the editor, whoever wants to know
//
// Whoever posts a request keeps it until the queue has been drained. The editor posts its notices too, and
// does not send them: a send inside a handler would start the outer delivery over, and the edit would be done
// again.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "VexaBase/event/KyEventReactor.h"
#include "examples/journal/Edit.h"

namespace journal {

constexpr unsigned int Requests = 0x1;
constexpr unsigned int Notices = 0x2;

struct Request {
    std::unique_ptr<Edit> m_edit;  // of an edit
    long m_nSteps = 1;             // of undo and redo
    std::string m_strOutcome;      // of a notice
};

/// Does, undoes and redoes edits. A Refusal passes through the channel to whoever drains it.
class Editor : public KyEventReactor {
public:
    explicit Editor(Document& document) : KyEventReactor(Requests), m_pDocument(&document) {}
    void React(const wchar_t* pszName, void* pData) override;

private:
    using Edits = std::vector<std::unique_ptr<Edit>>;

    void Do(Request& request);
    void Undo(Request& request);
    void Redo(Request& request);

    Document* m_pDocument;
    Edits m_done;
    Edits m_undone;  // the one undone last comes last
};

/// Writes a line for every notice.
class Chronicle : public KyEventReactor {
public:
    explicit Chronicle(std::ostream& out) : KyEventReactor(Notices), m_pOut(&out) {}
    void React(const wchar_t* pszName, void* pData) override;

private:
    std::ostream* m_pOut;
};

}  // namespace journal
