// Uses a part of every source file of the library. Static objects of the program count on the library's: they
// register and post before main, and are still registered when the library's own objects go.

#include <VexaBase/containers/KyDynArray.h>
#include <VexaBase/event/KyEventReactor.h>
#include <VexaBase/ga/GA_Population.h>
#include <VexaBase/graph/KyGraph.h>
#include <VexaBase/graph/KyGraphPath.h>
#include <VexaBase/rx/KyRxClass.h>
#include <VexaBase/stream/KyDynArrayStream.h>
#include <VexaBase/stream/KyDynArrayStreamEx.h>
#include <VexaBase/string/CompareLabel.h>
#include <VexaBase/string/KyString.h>
#include <VexaBase/task/KyParallelTask.h>
#include <VexaBase/task/KyPlatform.h>

#include <cstdio>
#include <memory>

namespace {

int g_nFailures = 0;

void Expect(bool bHolds, const char* pszWhat) {
    if (!bHolds) {
        std::fprintf(stderr, "not so: %s\n", pszWhat);
        ++g_nFailures;
    }
}

#define EXPECT(condition) Expect((condition), #condition)

class Resident : public KyEventReactor {
public:
    Resident() {
        KyRegisterReactor(this);
        KyPostEvent(L"before main", nullptr, 0);
    }
    ~Resident() override {
        KyPostEvent(L"after main", nullptr, 0);
        KyProcessPostEvents();
        KyUnRegisterReactor(this);
    }
    void React(const wchar_t*, void*) override { ++m_nCalls; }

    int m_nCalls = 0;
};

Resident g_first;
Resident g_second;
const bool g_bDescribed = KyRxRunTimeClass::s_classInfo.IsClassOf("KyRxRunTimeClass");

struct Task : KyParallelTask {
    void Execute() override { ++s_nRuns; }

    inline static int s_nRuns = 0;
};

}  // namespace

int main() {
    EXPECT(g_bDescribed);
    KyProcessPostEvents();
    EXPECT(g_first.m_nCalls == 2);
    EXPECT(g_second.m_nCalls == 2);

    KyString text(L"area ");
    text << 9.0;
    EXPECT(CompareLabel(text.c_str(), L"area 10.0") < 0);

    KyDynArrayStream block;
    KyDynArrayStreamEx chunks(4);
    for (KyStream* pStream : {static_cast<KyStream*>(&block), static_cast<KyStream*>(&chunks)}) {
        long nRead = 0;
        *pStream << 12L;
        pStream->MoveTo(0);
        *pStream >> nRead;
        EXPECT(nRead == 12);
    }

    KyGraph graph;
    graph.Create(new KyGraphArc(new KyGraphNode, new KyGraphNode));
    const std::unique_ptr<KyGraphPath> pPath((*graph.m_lstArc.GetFirst())->FindMesh(KyGraphArc::Forward));
    EXPECT(pPath->GetLength() == 1);

    GA_Population population(1);
    population.Append(new GA_Individual);
    EXPECT(population.GetLength() == 1);

    KyParallelTasks tasks;
    tasks.AddTask(new Task);
    tasks.Run();
    EXPECT(Task::s_nRuns == 1);
    EXPECT(IsOS64() == (sizeof(void*) == 8));

    std::puts(g_nFailures == 0 ? "all holds" : "failed");
    return g_nFailures == 0 ? 0 : 1;
}
