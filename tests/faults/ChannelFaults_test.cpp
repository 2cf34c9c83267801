// Class information, the event channel, tasks: what they call is the application's, and may throw.

#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "EveryOperation.h"
#include "VexaBase/event/KyEventReactor.h"
#include "VexaBase/event/KyScopedReactor.h"
#include "VexaBase/rx/KyRxClass.h"
#include "VexaBase/task/KyParallelTask.h"
#include "VexaBase/task/KyPlatform.h"

namespace {

// Class information

class Created : public KyRxDynCreateClass, Counted {
    KY_DECLARE_DYNCREATE(Created)

    Created() { FaultAt::Pass(FaultKind::Hook); }
    KyRxDynCreateClass* InitObject() override {
        FaultAt::Pass(FaultKind::Hook);
        return this;
    }
};
KY_IMPLEMENT_DYNCREATE(Created, 7, KyRxDynCreateClass)

class ClassInfo : public Subject {
public:
    std::string Words() const { return std::to_string(m_nResult); }
    std::string Contents() const { return ""; }
    std::string Fault() const { return ""; }
};

void Nothing(ClassInfo&) {}

const Operation<ClassInfo> g_classInfo[] = {
    {"MakeADescriptor", Nothing, [](ClassInfo& c) { c.m_nResult = KyRxClassInfo("A", 3, nullptr).m_nNumber; },
     CannotFail},
    {"NewObjectByTheDescriptor", Nothing,
     [](ClassInfo& c) {
         const std::unique_ptr<KyRxDynCreateClass> pObject(Created::GetStaticCI()->NewObject());
         c.m_nResult = pObject->GetCI()->m_nNumber;
     },
     Same},
    {"NewObjectOfTheRoot", Nothing,
     [](ClassInfo& c) {
         const std::unique_ptr<KyRxDynCreateClass> pObject(KyRxDynCreateClass::NewObject());
         c.m_nResult = pObject->GetCI()->m_nNumber;
     },
     Same},
    {"InitObject", Nothing,
     [](ClassInfo& c) {
         const std::unique_ptr<KyRxDynCreateClass> pObject(Created::NewObject());
         c.m_nResult = pObject->InitObject() == pObject.get();
     },
     Same},
    {"IsClassOf", Nothing,
     [](ClassInfo& c) {
         c.m_nResult = KyRxRunTimeClass::s_classInfo.IsClassOf("KyRxRunTimeClass") +
                       KyRxRunTimeClass::s_classInfo.IsClassOf(KyRxRunTimeClass::GetStaticCI());
     },
     CannotFail},
};
RUN_UNDER_FAULTS(KyRxClassInfo, g_classInfo);

// Events

constexpr wchar_t szLongName[] = L"a name that no short buffer has room for";

/// Two registered reactors and a third. What they received since the last Begin is on record.
class Channel : public Subject {
public:
    Channel() {
        KyRegisterReactor(&m_a);
        KyRegisterReactor(&m_b);
    }
    ~Channel() {
        for (Reactor* pReactor : {&m_a, &m_b, &m_c}) {
            KyUnRegisterReactor(pReactor);
        }
        KyProcessPostEvents();
    }

    std::string Words() const { return Contents() + m_strReceived; }

    /// Who is registered, and what is queued: delivered to one who looks, and posted again.
    std::string Contents() const {
        Spy spy;
        KyRegisterReactor(&spy);
        s_bIsLooking = true;
        KySendEvent(L"", nullptr, 0);
        KyProcessPostEvents();
        s_bIsLooking = false;
        KyUnRegisterReactor(&spy);
        std::string words = std::exchange(s_strSeen, {});
        for (const std::wstring& strName : spy.m_names) {
            KyPostEvent(strName.c_str(), nullptr, 0);
            words.append(strName.begin(), strName.end()).append(" ");
        }
        return words;
    }
    std::string Fault() const { return ""; }

    void Begin() { m_strReceived.clear(); }

    class Reactor : public KyEventReactor {
    public:
        Reactor(Channel& channel, char chName) : m_channel(channel), m_chName(chName) {}
        void React(const wchar_t* pszName, void*) override {
            if (s_bIsLooking) {
                if (*pszName == 0) s_strSeen += m_chName;
                return;
            }
            FaultAt::Pass(FaultKind::Hook);
            m_channel.m_strReceived += m_chName;  // has room
        }

    private:
        Channel& m_channel;
        char m_chName;
    };

    Reactor m_a{*this, 'A'};
    Reactor m_b{*this, 'B'};
    Reactor m_c{*this, 'C'};

private:
    class Spy : public KyEventReactor {
    public:
        void React(const wchar_t* pszName, void*) override {
            if (*pszName != 0) m_names.emplace_back(pszName);
        }
        std::vector<std::wstring> m_names;
    };

    std::string m_strReceived = std::string(100, ' ').substr(0, 0);

    inline static bool s_bIsLooking = false;
    inline static std::string s_strSeen;
};

void Registered(Channel&) {}
void ThreePosted(Channel&) {
    for (const wchar_t* pszName : {L"1", L"2", L"3"}) {
        KyPostEvent(pszName, nullptr, 0);
    }
}

const Operation<Channel> g_channel[] = {
    {"MakeAnEvent", Registered, [](Channel& c) { c.m_nResult = KyEvent(szLongName, nullptr, 3).m_nMask; },
     Same},
    {"CompareEvents", Registered,
     [](Channel& c) {
         const KyEvent a(L"a", nullptr, 0);
         const KyEvent b(L"b", nullptr, 0);
         c.m_nResult = (a < b) + (a > b);
     },
     Same},
    {"Register", ThreePosted, [](Channel& c) { KyRegisterReactor(&c.m_c); }, Same},
    {"UnRegister", ThreePosted, [](Channel& c) { KyUnRegisterReactor(&c.m_a); }, CannotFail},
    {"RegisterForAScope", ThreePosted, [](Channel& c) { const KyScopedReactor scope(c.m_c); }, Same},
    {"Post", ThreePosted, [](Channel&) { KyPostEvent(szLongName, nullptr, 0); }, Same},
    {"Send", ThreePosted,
     [](Channel& c) {
         c.Begin();
         KySendEvent(L"4", nullptr, 0);
     },
     Kept},
    {"SendALongName", ThreePosted,
     [](Channel& c) {
         c.Begin();
         KySendEvent(szLongName, nullptr, 0);
     },
     Kept},
    // The event whose handler throws is gone, the others are still to come.
    {"ProcessPostEvents", ThreePosted, [](Channel&) { KyProcessPostEvents(); }, Changed},
    {"ProcessNoEvents", Registered, [](Channel&) { KyProcessPostEvents(); }, CannotFail},
};
RUN_UNDER_FAULTS(KyEventReactor, g_channel);

// Tasks

class Tasks : public Subject {
public:
    class Task final : public KyParallelTask {
    public:
        explicit Task(Tasks& tasks) : m_owner(tasks) {}
        void Execute() override {
            FaultAt::Pass(FaultKind::Hook);
            ++m_owner.m_nResult;
        }

    private:
        Tasks& m_owner;
    };

    ~Tasks() {
        if (m_tasks.GetLength() == 0 || m_tasks[static_cast<int>(m_tasks.GetLength() - 1)] != m_pLoose) {
            delete m_pLoose;
        }
    }

    std::string Words() const { return Contents() + "gives " + std::to_string(m_nResult); }
    std::string Contents() const {
        return std::to_string(m_tasks.GetLength()) + " in " + std::to_string(m_tasks.m_tasks.capacity());
    }
    std::string Fault() const { return ""; }

    KyParallelTasks m_tasks;
    Task* m_pLoose = new Task(*this);  // the list's, once it is in there
};

void TwoTasks(Tasks& t) {
    t.m_tasks.AddTask(new Tasks::Task(t));
    t.m_tasks.AddTask(new Tasks::Task(t));
}

const Operation<Tasks> g_tasks[] = {
    {"Make", TwoTasks, [](Tasks& t) { t.m_nResult = KyParallelTasks().GetLength(); }, CannotFail},
    {"AddTask", TwoTasks, [](Tasks& t) { t.m_tasks.AddTask(t.m_pLoose); }, Same},
    {"Run", TwoTasks, [](Tasks& t) { t.m_nResult = 0, t.m_tasks.Run(); }, Kept},
    {"Clear", TwoTasks, [](Tasks& t) { t.m_tasks.Clear(); }, CannotFail},
    {"Index", TwoTasks, [](Tasks& t) { t.m_nResult = t.m_tasks[1] == nullptr; }, CannotFail},
    {"RunOne", TwoTasks, [](Tasks& t) { t.m_pLoose->run(); }, Same},
    {"StartAndWait", TwoTasks,
     [](Tasks& t) {
         if (t.m_pLoose->Start()) t.m_pLoose->Wait();
     },
     Same},
    {"AskThePlatform", TwoTasks, [](Tasks& t) { t.m_nResult = IsWow64() + IsOS64(); }, CannotFail},
};
RUN_UNDER_FAULTS(KyParallelTasks, g_tasks);

}  // namespace
