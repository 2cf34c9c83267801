// Events: sent at once or posted for later, to the receivers whose masks match.

#include <VexaBase/event/KyEventReactor.h>
#include <VexaBase/event/KyScopedReactor.h>
#include <VexaBase/string/KyUtf8.h>

#include <iostream>

namespace {

enum : unsigned int { Edited = 0x1, Saved = 0x2 };

/// Prints what reaches it.
class Listener : public KyEventReactor {
public:
    Listener(const char* pszWho, unsigned int nMask)
        : KyEventReactor(nMask), m_pszWho(pszWho) {}
    void React(const wchar_t* pszName, void* pData) override {
        std::cout << "  " << m_pszWho << ": " << KyToUtf8(pszName);
        if (pData != nullptr)
            std::cout << " (" << *static_cast<int*>(pData) << ')';
        std::cout << '\n';
    }

private:
    const char* m_pszWho;
};

/// Answers every edit by posting that a save is due.
class AutoSave : public KyEventReactor {
public:
    AutoSave() : KyEventReactor(Edited) {}
    void React(const wchar_t* /*pszName*/, void* /*pData*/) override {
        KyPostEvent(L"save due", nullptr, Saved);
    }
};

}  // namespace

int main() {
    Listener log("log", 0);  // mask 0: every event
    Listener title("title", Saved);
    AutoSave autosave;
    // Registered until the end of main.
    const KyScopedReactor r1(log), r2(title), r3(autosave);

    int line = 12;
    std::cout << "sending: delivered before the call returns\n";
    KySendEvent(L"line edited", &line, Edited);

    std::cout << "posting: nothing yet\n";
    KyPostEvent(L"document saved", nullptr, Saved);

    std::cout << "the main loop drains the queue, oldest first\n";
    KyProcessPostEvents();

    std::cout << "an event with mask 0 reaches everybody\n";
    KySendEvent(L"closing", nullptr, 0);
    std::cout << "and what was posted meanwhile waits for the next round\n";
    KyProcessPostEvents();
}
