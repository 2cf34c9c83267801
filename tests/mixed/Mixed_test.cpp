// A program and a library of unlike modes, one of them checked: objects that one has made work in the other, and each
// stops at what its own mode stops at. Compiled twice, once for each way round.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/event/KyCallbackReactor.h"
#include "VexaBase/event/KyScopedReactor.h"
#include "VexaBase/ga/GA_Population.h"
#include "VexaBase/graph/KyGraph.h"
#include "VexaBase/graph/KyGraphPath.h"
#include "VexaBase/rx/KyRxClass.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"
#include "VexaBase/string/CompareLabel.h"
#include "VexaBase/string/KyString.h"
#include "VexaBase/task/KyParallelTask.h"

namespace {

using testing::ElementsAre;
using testing::Pair;

#if defined(KY_CHECKED)
constexpr bool bProgramIsChecked = true;
#else
constexpr bool bProgramIsChecked = false;
#endif

/// A container's elements, seen through `describe`.
template <class Container, class Describe>
auto Seen(const Container& container, Describe describe) {
    std::vector<decltype(describe(*container.begin()))> seen;
    for (const auto& element : container) {
        seen.push_back(describe(element));
    }
    return seen;
}

// Which mode is which

TEST(MixedModesDeathTest, AListOfTheProgramsOwnElementsIsCheckedAsTheProgramIs) {
    struct OwnElement {};
    KyDList<OwnElement> list(2);

    if constexpr (bProgramIsChecked) {
        EXPECT_DEATH(list.Rotate(5, 0), "KyList::Rotate: position out of range \\(5 to 0, length 2\\)");
    } else {
        list.Rotate(5, 0);
        EXPECT_EQ(list.GetCurIndex(), -1);
    }
}

TEST(MixedModesDeathTest, ASearchInAStringIsCheckedAsTheLibraryIs) {
    const KyString s(L"abc");

    if constexpr (bProgramIsChecked) {
        EXPECT_EQ(s.Find(L"c", -1), 2);
    } else {
        EXPECT_DEATH(s.Find(L"c", -1), "KyString::Find: negative start \\(-1\\)");
    }
}

// Strings

TEST(MixedModes, BothEditTheBufferOfAString) {
    KyString s(L"item12");
    s.ReAllocate(16, true);
    s.Insert(4, KyString(L" no. "));
    KyArray<wchar_t>& buffer = s;
    buffer[0] = L'I';
    s.MakeUpper();
    s << 2.5;
    KyString copy(s);
    s.swap(copy);
    s.ReAllocate(s.GetLength() + 1, true);

    EXPECT_STREQ(s.c_str(), L"ITEM NO. 122.5");
    EXPECT_EQ(s.m_nLength, 15);
    EXPECT_EQ(s.Replace(L"2", L"two"), 2);
    EXPECT_STREQ(s.c_str(), L"ITEM NO. 1twotwo.5");
}

TEST(MixedModes, TheProgramReleasesWhatTheLibraryHasCloned) {
    const std::unique_ptr<wchar_t[]> clone(CloneString(L"item12"));

    EXPECT_EQ(CompareLabel(clone.get(), L"item9"), 1);
}

TEST(MixedModes, ASearchFillsTheProgramsQueue) {
    class EverySecond : public KyListQuene<long> {
    public:
        bool EnQuene(const long& n) override {
            return m_nOffered++ % 2 != 0 || KyListQuene<long>::EnQuene(n);
        }
        long m_nOffered = 0;
    };
    EverySecond queue;

    EXPECT_EQ(KyString(L"aXaXaXa").Find(L"a", queue), 2);

    long n = 0;
    EXPECT_TRUE(queue.DeQuene(n));
    EXPECT_THAT(queue, ElementsAre(4));
}

// Streams

TEST(MixedModes, BothWorkOnTheBytesOfAStream) {
    KyDynArrayStream stream(2);
    KyStream& base = stream;
    base << 'a' << true << static_cast<short>(0x1234) << 5L << 1.5;
    stream.m_bytes.MoveTo(0);
    stream.m_bytes.SetCurData('b');
    stream.m_bytes.Append('!');
    stream.SetLength(stream.m_bytes.GetLength());
    stream.MoveTo(0);

    char ch = 0;
    bool b = false;
    short sh = 0;
    long n = 0;
    double d = 0;
    base >> ch >> b >> sh >> n >> d;

    EXPECT_EQ(ch, 'b');
    EXPECT_TRUE(b);
    EXPECT_EQ(sh, 0x1234);
    EXPECT_EQ(n, 5);
    EXPECT_EQ(d, 1.5);
    EXPECT_EQ(stream.GetLength(), 21);
    EXPECT_EQ(stream.m_bytes.m_nCapacity, 21);
}

TEST(MixedModes, BothWorkOnTheChunksOfAStream) {
    KyDynArrayStreamEx stream(4);
    std::string text = "0123456789";
    stream.Write(text.data(), 10);
    stream.m_chunks.Move(2, 0);
    stream.m_chunks.Append(new KyDynArrayStream(4));
    stream.m_chunks.MoveToLast();
    stream.m_chunks.GetCurData()->SetLength(4);
    stream.MoveTo(12);
    stream.WriteChar('c');
    std::string read(13, '.');

    stream.MoveTo(0);
    stream.Read(read.data(), 13);

    EXPECT_EQ(read.substr(0, 2) + read.substr(4, 9), "8901234567c");
    stream.Reset();
    EXPECT_EQ(stream.m_chunks.GetLength(), 0);
}

// Graphs

class Point : public KyGraphNode {
public:
    explicit Point(long n) : m_n(n) { ++s_nAlive; }
    Point(const Point&) = delete;
    Point& operator=(const Point&) = delete;
    ~Point() override { --s_nAlive; }
    int CmpNode(const KyGraphNode& other) const override {
        return static_cast<int>(m_n - static_cast<const Point&>(other).m_n);
    }

    long m_n;
    static inline long s_nAlive = 0;
};

class Line : public KyGraphArc {
public:
    Line(long n, long nStart, long nEnd) : KyGraphArc(new Point(nStart), new Point(nEnd)), m_n(n) {
        ++s_nAlive;
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line() override { --s_nAlive; }
    int CmpArc(const KyGraphArc& other) const override {
        return static_cast<int>(m_n - static_cast<const Line&>(other).m_n);
    }

    long m_n;
    static inline long s_nAlive = 0;
};

long NumberOf(const KyGraphArc* pArc) { return static_cast<const Line*>(pArc)->m_n; }
long NumberOf(const KyGraphNode* pNode) { return static_cast<const Point*>(pNode)->m_n; }

template <class Container>
std::vector<long> Numbers(const Container& container) {
    return Seen(container, [](const auto* p) { return NumberOf(p); });
}

/// The triangle of the arcs 10 (1 to 2), 20 (2 to 3) and 30 (3 to 1).
class Triangle : public KyGraph {
public:
    Triangle() : KyGraph(2) {
        Create(new Line(30, 3, 1));
        Create(new Line(10, 1, 2));
        Create(new Line(20, 2, 3));
    }
};

TEST(MixedModes, AGraphKeepsAndDestroysTheProgramsElements) {
    {
        Triangle graph;

        EXPECT_THAT(Numbers(graph.m_lstNode), ElementsAre(1, 2, 3));
        EXPECT_THAT(Numbers(graph.m_lstArc), ElementsAre(10, 20, 30));
        EXPECT_EQ(Point::s_nAlive, 3);
        EXPECT_EQ(Line::s_nAlive, 3);
    }
    EXPECT_EQ(Point::s_nAlive, 0);
    EXPECT_EQ(Line::s_nAlive, 0);
}

TEST(MixedModes, TheProgramMovesAndRemovesInTheListsOfAGraph) {
    Triangle graph;

    graph.m_lstArc.MoveTo(1);
    static_cast<Line*>(graph.m_lstArc.GetCurData())->m_n = 40;
    EXPECT_EQ(graph.CheckArc(1), 2);
    EXPECT_THAT(Numbers(graph.m_lstArc), ElementsAre(10, 30, 40));
    graph.m_lstArc.MoveTo(0);
    graph.m_lstArc.DelCur();
    EXPECT_THAT(Numbers(graph.m_lstNode[1]->m_lstArc), ElementsAre(40));
    graph.m_lstNode.Append(new Point(9));
    Point key(9);

    EXPECT_EQ(graph.Find(key), 3);
    EXPECT_TRUE(graph.m_lstNode.BFindDataTo(key));
    EXPECT_EQ(graph.m_lstNode.GetCurIndex(), 3);
}

TEST(MixedModes, ACheckHandsLostArcsToTheProgramsContainer) {
    class Doubling : public KyDynArray<KyGraphArc*> {
    public:
        long Append(KyGraphArc* const& pArc) override {
            KyDynArray<KyGraphArc*>::Append(pArc);
            return KyDynArray<KyGraphArc*>::Append(pArc);
        }
    };
    Triangle graph;
    Doubling lost;
    KyList<KyGraphArc*> out;
    KyGraphNode& node = *graph.m_lstNode[0];
    const auto stray = std::make_unique<Line>(5, 7, 8);
    const std::unique_ptr<KyGraphNode> ends[] = {std::unique_ptr<KyGraphNode>(stray->m_pStart),
                                                 std::unique_ptr<KyGraphNode>(stray->m_pEnd)};
    stray->m_pStart = &node;
    node.AppendArc(stray.get());

    node.GetArcOut(out);
    EXPECT_THAT(Numbers(out), ElementsAre(5, 10));
    EXPECT_EQ(graph.CheckNode(0, &lost), 0);

    EXPECT_THAT(Numbers(lost), ElementsAre(5, 5));
    EXPECT_THAT(Numbers(node.m_lstArc), ElementsAre(10, 30));
    stray->UnConnect();
}

TEST(MixedModes, AnArcsPathIsSplicedSortedAndDestroyedByTheProgram) {
    Triangle graph;
    const std::unique_ptr<KyGraphPath> pPath(graph.m_lstArc[2]->FindMesh(KyGraphArc::Forward));
    KyDList<KyGraphArc*> list;
    list.Append(graph.m_lstArc[0]);
    EXPECT_THAT(Numbers(*pPath), ElementsAre(30, 10, 20));
    EXPECT_EQ(NumberOf(pPath->m_pBeginNode), 3);

    EXPECT_EQ(list.Conbine(*pPath, 1), 3);
    list.Sort([](KyGraphArc* const& a, KyGraphArc* const& b) { return b->CmpArc(*a); });
    list.Rotate(0, 2);
    EXPECT_EQ(pPath->Conbine(list, 1), 3);

    EXPECT_THAT(Numbers(list), ElementsAre(10));
    EXPECT_THAT(Numbers(*pPath), ElementsAre(30, 10, 20));
}

// The genetic algorithm

class Gene : public GA_Gene {
public:
    explicit Gene(long n) : m_n(n) { ++s_nAlive; }
    Gene(const Gene&) = delete;
    Gene& operator=(const Gene&) = delete;
    ~Gene() override { --s_nAlive; }
    GA_Gene* Clone() const override { return new Gene(m_n); }

    long m_n;
    static inline long s_nAlive = 0;
};

class Individual : public GA_Individual {
public:
    static Individual* Of(std::initializer_list<long> genes) {
        auto pIndividual = std::make_unique<Individual>();
        for (const long n : genes) {
            pIndividual->Append(new Gene(n));
        }
        return pIndividual.release();
    }
    long Sum() const {
        long nSum = 0;
        for (const GA_Gene* const pGene : *this) {
            nSum += static_cast<const Gene*>(pGene)->m_n;
        }
        return nSum;
    }
    GA_Individual* New() const override { return new Individual; }
    GA_Individual* Mutation() const override { return Of({Sum() + 1000}); }
    bool operator<(const GA_Individual& other) const override {
        return Sum() < static_cast<const Individual&>(other).Sum();
    }
    bool operator>(const GA_Individual& other) const override {
        return Sum() > static_cast<const Individual&>(other).Sum();
    }
};

template <class Container>
std::vector<long> Sums(const Container& container) {
    return Seen(container, [](const GA_Individual* p) { return static_cast<const Individual*>(p)->Sum(); });
}

TEST(MixedModes, APopulationEvolvesTheProgramsIndividuals) {
    class Stepping : public GA_Population {
    public:
        using GA_Population::GA_Population;
        void Step() override { ++m_nSteps; }
        long m_nSteps = 0;
    };
    {
        Stepping population(3, 100);
        for (const long n : {5, 1, 3}) {
            population.Append(Individual::Of({n, 10 * n}));
        }
        EXPECT_THAT(Sums(population), ElementsAre(11, 33, 55));
        EXPECT_THAT(Sums(KyArray<GA_Individual*>(population)), ElementsAre(11, 33, 55));

        population.Evolve();

        EXPECT_EQ(population.m_nGeneration, 1);
        EXPECT_EQ(population.m_nSteps, 6);
        EXPECT_EQ(population.GetLength(), 6);
        population.SetLength(3, true);
        EXPECT_THAT(Sums(population), testing::Each(testing::Lt(56)));
        population.Move(0, 3);
        population.Sort(false);
        EXPECT_EQ(Sums(population).back(), 11);
    }
    EXPECT_EQ(Gene::s_nAlive, 0);
}

// Events, class information, tasks

TEST(MixedModes, ReactorsOfTheProgramReceiveWhatTheChannelKeeps) {
    std::vector<std::pair<std::wstring, int>> received;
    int nData = 1;
    KyCallbackReactor reactor(
        [&](const wchar_t* pszName, void* pData) {
            received.emplace_back(pszName, *static_cast<int*>(pData));
            if (received.size() == 1) KyPostEvent(L"meanwhile", pData, 0x2);
        },
        0x6);
    const KyScopedReactor listening(reactor);

    KyPostEvent(L"with a name that is longer than the one before", &nData, 0x4);
    KyPostEvent(L"unwanted", &nData, 0x1);
    nData = 2;
    KyProcessPostEvents();
    KySendEvent(L"sent", &nData, 0);

    EXPECT_THAT(received, ElementsAre(Pair(L"with a name that is longer than the one before", 2),
                                      Pair(L"meanwhile", 2), Pair(L"sent", 2)));
}

class Shape : public KyRxRunTimeClass {
    KY_DECLARE_CLASS(Shape)
};
KY_IMPLEMENT_CLASS(Shape, 7, KyRxRunTimeClass)

TEST(MixedModes, DescriptorsOfBothAreOfOneKin) {
    const Shape shape;
    const KyRxRunTimeClass& object = shape;

    EXPECT_TRUE(object.GetCI()->IsClassOf(KyRxRunTimeClass::GetStaticCI()));
    EXPECT_TRUE(object.GetCI()->IsClassOf("KyRxRunTimeClass"));
    EXPECT_FALSE(KyRxRunTimeClass::GetStaticCI()->IsClassOf(object.GetCI()));
    const std::unique_ptr<KyRxDynCreateClass> pMade(KyRxDynCreateClass::GetStaticCI()->NewObject());
    EXPECT_EQ(pMade->GetCI(), KyRxDynCreateClass::GetStaticCI());
}

TEST(MixedModes, TasksOfTheProgramAreRunAndReleased) {
    class Count final : public KyParallelTask {
    public:
        explicit Count(long& n) : m_n(n) {}
        void Execute() override { ++m_n; }

    private:
        long& m_n;
    };
    long n = 0;
    KyParallelTasks tasks;
    tasks.AddTask(new Count(n));
    tasks.AddTask(new Count(n));

    tasks.Run();
    EXPECT_TRUE(tasks[1]->Start());
    tasks.Clear();

    EXPECT_EQ(n, 3);
    EXPECT_EQ(tasks.GetLength(), 0);
}

}  // namespace
