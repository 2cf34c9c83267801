#include "VexaBase/graph/KyGraph.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "Bisection.h"
#include "IndexedRing.h"
#include "NumberedElements.h"
#include "PlaneElements.h"
#include "VexaBase/containers/KyDynArray.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;

using Lines = std::vector<std::string>;

NumberedNode* AddNode(KyGraph& graph, long nNumber) {
    auto* const pNode = new NumberedNode(nNumber);
    graph << pNode;
    return pNode;
}

NumberedArc* AddArc(KyGraph& graph, long nNumber, KyGraphNode* pStart, KyGraphNode* pEnd) {
    auto* const pArc = new NumberedArc(nNumber, pStart, pEnd);
    graph << pArc;
    return pArc;
}

NumberedNode* NodeAt(const KyGraph& graph, long i) {
    return static_cast<NumberedNode*>(*graph.m_lstNode.GetAt(i));
}
NumberedArc* ArcAt(const KyGraph& graph, long i) {
    return static_cast<NumberedArc*>(*graph.m_lstArc.GetAt(i));
}

/// A triangle of the nodes 1, 2, 3 and the arcs 10, 20, 30.
class Triangle : public KyGraph {
public:
    Triangle() {
        AddArc(*this, 10, AddNode(*this, 1), AddNode(*this, 2));
        AddArc(*this, 20, NodeAt(*this, 1), AddNode(*this, 3));
        AddArc(*this, 30, NodeAt(*this, 2), NodeAt(*this, 0));
    }
};

// An empty graph --------------------------------------------------------------------------------------------

TEST(KyGraph, StartsEmptyWithAUserWordOfZero) {
    const KyGraph graph;

    EXPECT_EQ(graph.m_nUserData, 0);
    EXPECT_THAT(graph.m_lstNode, ElementsAre());
    EXPECT_THAT(graph.m_lstArc, ElementsAre());
}

TEST(KyGraph, GivesBothListsItsStep) {
    const KyGraph graph(5);

    EXPECT_EQ(graph.m_lstNode.m_nStep, 5);
    EXPECT_EQ(graph.m_lstArc.m_nStep, 5);
}

TEST(KyGraph, IndexesEvery4096thElementUnlessToldOtherwise) {
    const KyGraph graph;

    EXPECT_EQ(graph.m_lstNode.m_nStep, 4096);
    EXPECT_EQ(graph.m_lstArc.m_nStep, 4096);
}

TEST(KyGraph, FindsNothingWhenEmpty) {
    KyGraph graph;

    EXPECT_EQ(graph.Find(NumberedNode(1)), -1);
    EXPECT_EQ(graph.Find(NumberedArc(1)), -1);
}

TEST(KyGraph, UnConnectWhenEmptyDoesNothing) {
    KyGraph graph;

    graph.UnConnect();

    EXPECT_THAT(graph.m_lstNode, ElementsAre());
}

// Adding nodes ----------------------------------------------------------------------------------------------

TEST(KyGraph, KeepsNodesInOrderAndReturnsTheIndexOfEach) {
    KyGraph graph;

    std::vector<long> indexes;
    for (const long nNumber : {30, 10, 20, 40}) {
        indexes.push_back(graph << new NumberedNode(nNumber));
    }

    EXPECT_THAT(indexes, ElementsAre(0, 0, 1, 3));
    EXPECT_THAT(NumbersOf(graph.m_lstNode), ElementsAre(10, 20, 30, 40));
    EXPECT_EQ(FaultIn(graph.m_lstNode), "");
}

TEST(KyGraph, LeavesTheNodeListsCursorOnTheNodeThatSurvives) {
    KyGraph graph;
    AddNode(graph, 10);
    AddNode(graph, 20);

    graph << new NumberedNode(10);

    EXPECT_EQ(graph.m_lstNode.m_nCurIndex, 0);
    EXPECT_EQ(NumberOf(graph.m_lstNode.GetCurData()), 10);
}

TEST(KyGraph, MergesANodeThatComparesEqualIntoTheResidentOne) {
    const auto nodes = NumberedNode::s_live.size();
    KyGraph graph;
    NumberedNode* const pResident = AddNode(graph, 1);
    NumberedNode far(9);
    NumberedArc own(10, pResident, &far);
    own.Connect();
    auto* const pNewcomer = new NumberedNode(1);
    NumberedArc out(20, pNewcomer, &far);
    NumberedArc in(30, &far, pNewcomer);
    out.Connect();
    in.Connect();

    EXPECT_EQ(graph << pNewcomer, 0);

    EXPECT_EQ(NumberedNode::s_live.size(), nodes + 2);
    EXPECT_THAT(graph.m_lstNode, ElementsAre(pResident));
    EXPECT_THAT(pResident->m_lstArc, ElementsAre(&own, &out, &in));
    EXPECT_EQ(out.m_pStart, pResident);
    EXPECT_EQ(in.m_pEnd, pResident);
    EXPECT_THAT(graph.m_lstArc, ElementsAre());
}

TEST(KyGraph, AResidentNodeIsNotItsOwnDuplicate) {
    Triangle graph;
    const Lines nodes = NodesOf(graph);
    const ComparisonLog<NumberedArc> log;

    std::vector<long> indexes;
    for (long i = 0; i < 3; ++i) {
        indexes.push_back(graph << NodeAt(graph, i));
    }

    EXPECT_THAT(indexes, ElementsAre(0, 1, 2));
    EXPECT_EQ(NodesOf(graph), nodes);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(KyGraph, NodesWithTheDefaultOrderAreAllDifferent) {
    KyGraph graph;

    for (int i = 0; i < 5; ++i) {
        graph << new KyGraphNode;
    }

    EXPECT_EQ(graph.m_lstNode.GetLength(), 5);
    EXPECT_TRUE(std::is_sorted(graph.m_lstNode.begin(), graph.m_lstNode.end(), std::less<>()));
}

using GraphOfAnySize = testing::TestWithParam<long>;

TEST_P(GraphOfAnySize, SearchesNodesByBisectionWithTheNewcomerOnTheLeft) {
    const long nLength = GetParam();
    for (long nNumber = 0; nNumber <= 10 * nLength + 5; nNumber += 5) {
        KyGraph graph;
        for (long i = 1; i <= nLength; ++i) {
            AddNode(graph, 10 * i);
        }
        const Bisection bisection =
            Bisect(nLength, [&](long i) { return static_cast<int>(nNumber - 10 * (i + 1)); });
        std::vector<Comparison> expected;
        for (const long i : bisection.m_probes) {
            expected.push_back({nNumber, 10 * (i + 1), -1});
        }
        const ComparisonLog<NumberedNode> log;

        const long nIndex = graph << new NumberedNode(nNumber);

        EXPECT_EQ(log.Lines(), expected);
        EXPECT_EQ(nIndex, bisection.m_nPlace);
        EXPECT_EQ(graph.m_lstNode.GetLength(), bisection.m_bFound ? nLength : nLength + 1);
    }
}

TEST_P(GraphOfAnySize, SearchesArcsByBisectionWithTheNewcomerOnTheLeftAndWithoutAStartNode) {
    const long nLength = GetParam();
    for (long nNumber = 0; nNumber <= 10 * nLength + 5; nNumber += 5) {
        KyGraph graph;
        for (long i = 1; i <= nLength; ++i) {
            AddArc(graph, 10 * i, nullptr, nullptr);
        }
        const Bisection bisection =
            Bisect(nLength, [&](long i) { return static_cast<int>(nNumber - 10 * (i + 1)); });
        std::vector<Comparison> expected;
        for (const long i : bisection.m_probes) {
            expected.push_back({nNumber, 10 * (i + 1), -1});
        }
        const ComparisonLog<NumberedArc> log;

        const long nIndex = graph << new NumberedArc(nNumber);

        EXPECT_EQ(log.Lines(), expected);
        EXPECT_EQ(nIndex, bisection.m_nPlace);
        EXPECT_EQ(graph.m_lstArc.GetLength(), bisection.m_bFound ? nLength : nLength + 1);
    }
}

INSTANTIATE_TEST_SUITE_P(KyGraph, GraphOfAnySize, testing::Range(0L, 9L));

// Adding arcs -----------------------------------------------------------------------------------------------

TEST(KyGraph, KeepsArcsInOrderConnectsThemAndReturnsTheIndexOfEach) {
    KyGraph graph;
    NumberedNode* const pOne = AddNode(graph, 1);
    NumberedNode* const pTwo = AddNode(graph, 2);

    std::vector<long> indexes;
    for (const long nNumber : {30, 10, 20, 40}) {
        indexes.push_back(graph << new NumberedArc(nNumber, pOne, pTwo));
    }

    EXPECT_THAT(indexes, ElementsAre(0, 0, 1, 3));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-2", "20: 1-2", "30: 1-2", "40: 1-2"));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 20 30 40", "2: 10 20 30 40"));
    EXPECT_EQ(FaultIn(graph.m_lstArc), "");
}

TEST(KyGraph, SearchesForAnArcBeforeItComparesItAroundItsStartAndItsEnd) {
    KyGraph graph;
    NumberedNode* const pOne = AddNode(graph, 1);
    NumberedNode* const pTwo = AddNode(graph, 2);
    AddArc(graph, 10, pOne, pTwo);
    const ComparisonLog<NumberedArc> log;

    AddArc(graph, 20, pOne, pTwo);

    const Comparison globally{20, 10, -1};
    const Comparison aroundOne{20, 10, 1};
    const Comparison aroundTwo{20, 10, 2};
    EXPECT_THAT(log.Lines(), ElementsAre(globally, globally, aroundOne, aroundOne, aroundTwo, aroundTwo));
}

TEST(KyGraph, LeavesAStartNodeSetByTheApplicationInPlaceDuringItsSearches) {
    KyGraph graph;
    AddArc(graph, 10, nullptr, nullptr);
    NumberedNode around(7);
    KyGraphNode::s_pStartNode = &around;
    const ComparisonLog<NumberedArc> log;

    graph.Find(NumberedArc(5));

    EXPECT_EQ(KyGraphNode::s_pStartNode, &around);
    KyGraphNode::s_pStartNode = nullptr;
    EXPECT_THAT(log.Lines(), ElementsAre(Comparison{5, 10, 7}));
}

TEST(KyGraph, DestroysAnArcThatComparesEqualAndKeepsTheResidentOne) {
    const auto arcs = NumberedArc::s_live.size();
    Triangle graph;
    NumberedArc* const pResident = ArcAt(graph, 1);

    const long nIndex = graph << new NumberedArc(20, NodeAt(graph, 0), NodeAt(graph, 2));

    EXPECT_EQ(nIndex, 1);
    EXPECT_EQ(NumberedArc::s_live.size(), arcs + 3);
    EXPECT_EQ(ArcAt(graph, 1), pResident);
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-2", "20: 2-3", "30: 3-1"));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30", "2: 10 20", "3: 20 30"));
    EXPECT_EQ(graph.m_lstArc.m_nCurIndex, 1);
}

TEST(KyGraph, TakesARejectedArcOffTheNodesWhereItWasListed) {
    Triangle graph;
    NumberedNode elsewhere(9);
    auto* const pNewcomer = new NumberedArc(20, &elsewhere, &elsewhere);
    pNewcomer->Connect();

    graph << pNewcomer;

    EXPECT_THAT(elsewhere.m_lstArc, ElementsAre());
}

TEST(KyGraph, AResidentArcIsNotItsOwnDuplicate) {
    const auto arcs = NumberedArc::s_live.size();
    Triangle graph;
    const Lines nodes = NodesOf(graph);

    std::vector<long> indexes;
    for (long i = 0; i < 3; ++i) {
        indexes.push_back(graph << ArcAt(graph, i));
    }

    EXPECT_THAT(indexes, ElementsAre(0, 1, 2));
    EXPECT_EQ(NumberedArc::s_live.size(), arcs + 3);
    EXPECT_EQ(NodesOf(graph), nodes);
}

TEST(KyGraph, TakesArcsWithoutEnds) {
    KyGraph graph;
    NumberedNode* const pOne = AddNode(graph, 1);

    AddArc(graph, 10, nullptr, nullptr);
    AddArc(graph, 20, pOne, nullptr);
    AddArc(graph, 30, nullptr, pOne);

    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: none-none", "20: 1-none", "30: none-1"));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 20 30"));
}

TEST(KyGraph, ListsALoopOnce) {
    KyGraph graph;
    NumberedNode* const pOne = AddNode(graph, 1);

    AddArc(graph, 10, pOne, pOne);

    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10"));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-1"));
}

TEST(KyGraph, AnArcThatCannotBeConnectedIsNotTakenOver) {
    const auto arcs = NumberedArc::s_live.size();
    Triangle graph;
    NumberedArc newcomer(25, NodeAt(graph, 0), NodeAt(graph, 1));
    {
        const OnCompare<NumberedArc> thrower([&](const NumberedArc&, const NumberedArc&) {
            if (KyGraphNode::s_pStartNode == newcomer.m_pEnd) throw std::runtime_error("no order");
        });

        EXPECT_THROW(graph << &newcomer, std::runtime_error);
    }

    EXPECT_EQ(NumberedArc::s_live.size(), arcs + 4);
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-2", "20: 2-3", "30: 3-1"));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30", "2: 10 20", "3: 20 30"));
    EXPECT_EQ(newcomer.m_pStart, NodeAt(graph, 0));
    EXPECT_EQ(newcomer.m_pEnd, NodeAt(graph, 1));
    EXPECT_EQ(FaultIn(graph.m_lstArc), "");
}

// Creating an arc with its nodes ----------------------------------------------------------------------------

TEST(KyGraph, CreateAddsTheStartTheEndAndTheArc) {
    KyGraph graph;

    const long nIndex = graph.Create(new NumberedArc(10, new NumberedNode(2), new NumberedNode(1)));

    EXPECT_EQ(nIndex, 0);
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10", "2: 10"));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 2-1"));
}

TEST(KyGraph, CreateAddsTheStartBeforeTheEnd) {
    KyGraph graph;
    AddNode(graph, 5);
    const ComparisonLog<NumberedNode> log;

    graph.Create(new NumberedArc(10, new NumberedNode(7), new NumberedNode(3)));

    EXPECT_THAT(log.Lines(), ElementsAre(Comparison{7, 5, -1}, Comparison{7, 5, -1}, Comparison{3, 5, -1}));
}

TEST(KyGraph, CreateMergesEndsThatDuplicateResidentNodes) {
    for (const auto& [nStart, nEnd] : {std::pair(1, 4), std::pair(4, 1), std::pair(1, 2), std::pair(2, 1)}) {
        const auto nodes = NumberedNode::s_live.size();
        KyGraph graph;
        AddNode(graph, 1);
        AddNode(graph, 2);

        graph.Create(new NumberedArc(10, new NumberedNode(nStart), new NumberedNode(nEnd)));

        const NumberedArc* const pArc = ArcAt(graph, 0);
        EXPECT_EQ(NumberOf(pArc->m_pStart), nStart);
        EXPECT_EQ(NumberOf(pArc->m_pEnd), nEnd);
        EXPECT_EQ(pArc->m_pStart, NodeAt(graph, graph.Find(NumberedNode(nStart))));
        EXPECT_EQ(pArc->m_pEnd, NodeAt(graph, graph.Find(NumberedNode(nEnd))));
        EXPECT_THAT(pArc->m_pStart->m_lstArc, ElementsAre(pArc));
        EXPECT_THAT(pArc->m_pEnd->m_lstArc, ElementsAre(pArc));
        EXPECT_EQ(NumberedNode::s_live.size(), nodes + static_cast<std::size_t>(graph.m_lstNode.GetLength()));
    }
}

TEST(KyGraph, CreateListsTheArcInRotationalOrderAtTheNodeThatSurvives) {
    Triangle graph;

    graph.Create(new NumberedArc(15, new NumberedNode(1), new NumberedNode(2)));

    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 15 30", "2: 10 15 20", "3: 20 30"));
}

TEST(KyGraph, CreateReturnsTheArcsIndexNotTheNodes) {
    Triangle graph;

    EXPECT_EQ(graph.Create(new NumberedArc(25, new NumberedNode(0), new NumberedNode(9))), 2);
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-2", "20: 2-3", "25: 0-9", "30: 3-1"));
}

TEST(KyGraph, CreateTakesResidentEnds) {
    Triangle graph;
    const auto nodes = NumberedNode::s_live.size();

    EXPECT_EQ(graph.Create(new NumberedArc(40, NodeAt(graph, 0), new NumberedNode(4))), 3);
    EXPECT_EQ(graph.Create(new NumberedArc(50, NodeAt(graph, 2), NodeAt(graph, 1))), 4);

    EXPECT_EQ(NumberedNode::s_live.size(), nodes + 1);
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30 40", "2: 10 20 50", "3: 20 30 50", "4: 40"));
}

TEST(KyGraph, CreateOfALoopAroundOneFreshNodeAddsThatNodeOnce) {
    KyGraph graph;
    auto* const pNode = new NumberedNode(1);

    graph.Create(new NumberedArc(10, pNode, pNode));

    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10"));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-1"));
}

/// Does not even find itself.
class NodeBehindAll : public KyGraphNode {
public:
    int CmpNode(const KyGraphNode&) const override { return 1; }
};

TEST(KyGraph, CreateOfALoopAddsItsNodeOnceEvenWhereTheComparisonDoesNotFindIt) {
    KyGraph graph;
    auto* const pNode = new NodeBehindAll;

    graph.Create(new KyGraphArc(pNode, pNode));

    EXPECT_THAT(graph.m_lstNode, ElementsAre(pNode));
    EXPECT_EQ(graph.m_lstArc.GetCurData()->m_pEnd, pNode);
}

TEST(KyGraph, CreateOfALoopAroundOneFreshDuplicateRepointsBothEnds) {
    Triangle graph;
    const auto nodes = NumberedNode::s_live.size();
    auto* const pDuplicate = new NumberedNode(2);

    graph.Create(new NumberedArc(40, pDuplicate, pDuplicate));

    EXPECT_EQ(NumberedNode::s_live.size(), nodes);
    EXPECT_EQ(ArcAt(graph, 3)->m_pStart, NodeAt(graph, 1));
    EXPECT_EQ(ArcAt(graph, 3)->m_pEnd, NodeAt(graph, 1));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30", "2: 10 20 40", "3: 20 30"));
}

TEST(KyGraph, CreateWithTwoFreshEndsThatCompareEqualMakesALoop) {
    KyGraph graph;

    graph.Create(new NumberedArc(10, new NumberedNode(1), new NumberedNode(1)));

    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10"));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-1"));
}

TEST(KyGraph, CreateOfAnEqualArcKeepsTheResidentOneAndTheNewNodes) {
    Triangle graph;
    const auto arcs = NumberedArc::s_live.size();

    EXPECT_EQ(graph.Create(new NumberedArc(20, new NumberedNode(1), new NumberedNode(4))), 1);

    EXPECT_EQ(NumberedArc::s_live.size(), arcs);
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-2", "20: 2-3", "30: 3-1"));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30", "2: 10 20", "3: 20 30", "4:"));
}

TEST(KyGraph, CreateTakesEndsThatBringOtherArcs) {
    Triangle graph;
    auto* const pDuplicate = new NumberedNode(2);
    NumberedArc* const pOther = AddArc(graph, 5, pDuplicate, NodeAt(graph, 0));

    graph.Create(new NumberedArc(40, pDuplicate, new NumberedNode(3)));

    EXPECT_EQ(pOther->m_pStart, NodeAt(graph, 1));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 5 10 30", "2: 5 10 20 40", "3: 20 30 40"));
}

// Finding ---------------------------------------------------------------------------------------------------

TEST(KyGraph, FindsEveryNodeAndEveryArcByAKeyOnTheStack) {
    Triangle graph;

    std::vector<long> indexes;
    for (const long nNumber : {0, 1, 2, 3, 4}) {
        indexes.push_back(graph.Find(NumberedNode(nNumber)));
    }
    for (const long nNumber : {5, 10, 15, 20, 25, 30, 35}) {
        indexes.push_back(graph.Find(NumberedArc(nNumber)));
    }

    EXPECT_THAT(indexes, ElementsAre(-1, 0, 1, 2, -1, -1, 0, -1, 1, -1, 2, -1));
}

TEST(KyGraph, FindLeavesTheCursorOnTheElementOrWhereItBelongs) {
    Triangle graph;

    graph.Find(NumberedArc(20));
    EXPECT_EQ(graph.m_lstArc.m_nCurIndex, 1);
    graph.Find(NumberedArc(25));
    EXPECT_EQ(graph.m_lstArc.m_nCurIndex, 2);
    graph.Find(NumberedArc(35));
    EXPECT_EQ(graph.m_lstArc.m_nCurIndex, -1);
    graph.Find(NumberedNode(0));
    EXPECT_EQ(graph.m_lstNode.m_nCurIndex, 0);
}

TEST(KyGraph, AKeyThatNamesResidentNodesLeavesThemAsTheyAre) {
    Triangle graph;
    const Lines nodes = NodesOf(graph);

    EXPECT_EQ(graph.Find(NumberedArc(20, NodeAt(graph, 1), NodeAt(graph, 2))), 1);

    EXPECT_EQ(NodesOf(graph), nodes);
}

TEST(KyGraph, FindsArcsByTheirNodesWithKeysMadeOnTheStack) {
    KyGraph graph;
    graph.Create(new PlaneArc(new PlaneNode({0, 0}), new PlaneNode({4, 1})));
    graph.Create(new PlaneArc(new PlaneNode({4, 1}), new PlaneNode({2, 5})));
    PlaneNode a({2, 5});
    PlaneNode b({4, 1});
    PlaneNode c({0, 0});

    EXPECT_EQ(graph.Find(PlaneArc(&a, &b)), 1);
    EXPECT_EQ(graph.Find(PlaneArc(&b, &c)), 0);
    EXPECT_EQ(graph.Find(PlaneArc(&a, &c)), -1);
    EXPECT_EQ(graph.Find(b), 2);
}

// Sorting the lists -----------------------------------------------------------------------------------------

TEST(KyGraph, ItsListsSortByTheComparisonsOfTheElements) {
    Triangle graph;
    for (KyGraphNode* pNode : graph.m_lstNode) {
        static_cast<NumberedNode*>(pNode)->m_nNumber *= -1;
    }
    for (KyGraphArc* pArc : graph.m_lstArc) {
        static_cast<NumberedArc*>(pArc)->m_nNumber *= -1;
    }

    graph.m_lstNode.Sort(true);
    graph.m_lstArc.Sort(true);

    EXPECT_THAT(NumbersOf(graph.m_lstNode), ElementsAre(-3, -2, -1));
    EXPECT_THAT(NumbersOf(graph.m_lstArc), ElementsAre(-30, -20, -10));
    graph.m_lstNode.Sort(false);
    graph.m_lstArc.Sort(false);
    EXPECT_THAT(NumbersOf(graph.m_lstNode), ElementsAre(-1, -2, -3));
    EXPECT_THAT(NumbersOf(graph.m_lstArc), ElementsAre(-10, -20, -30));
    EXPECT_EQ(FaultIn(graph.m_lstNode), "");
    EXPECT_EQ(FaultIn(graph.m_lstArc), "");
}

TEST(KyGraph, ASortedArcListOfANodeTurnsTheOtherWay) {
    Triangle graph;
    AddArc(graph, 40, NodeAt(graph, 0), nullptr);
    KyGraphNode* const pNode = NodeAt(graph, 0);

    pNode->m_lstArc.Sort(false);

    EXPECT_THAT(NumbersOf(pNode->m_lstArc), ElementsAre(40, 30, 10));
    EXPECT_EQ(pNode->FindNextArc(ArcAt(graph, 3)), ArcAt(graph, 2));
}

// Dissolving ------------------------------------------------------------------------------------------------

TEST(KyGraph, UnConnectEmptiesEveryNodeAndEveryEndAndKeepsTheElements) {
    Triangle graph;
    AddArc(graph, 40, NodeAt(graph, 0), NodeAt(graph, 0));

    graph.UnConnect();

    EXPECT_THAT(NodesOf(graph), ElementsAre("1:", "2:", "3:"));
    EXPECT_THAT(ArcsOf(graph),
                ElementsAre("10: none-none", "20: none-none", "30: none-none", "40: none-none"));
    for (KyGraphNode* pNode : graph.m_lstNode) {
        EXPECT_THAT(pNode->FindNextArc(ArcAt(graph, 0)), IsNull());
    }
}

TEST(KyGraph, UnConnectForgetsEndsWhereAnArcWasRefused) {
    KyGraph graph;
    NumberedNode* const pOne = AddNode(graph, 1);
    NumberedArc stranger(20);
    pOne->AppendArc(&stranger);
    AddArc(graph, 20, pOne, nullptr);
    ASSERT_THAT(ArcsOf(graph), ElementsAre("20: 1-none"));
    ASSERT_THAT(pOne->m_lstArc, ElementsAre(&stranger));

    graph.UnConnect();

    EXPECT_THAT(ArcsOf(graph), ElementsAre("20: none-none"));
    EXPECT_THAT(pOne->m_lstArc, ElementsAre());
}

TEST(KyGraph, UnConnectDetachesArcsThatAreNotTheGraphs) {
    KyGraph graph;
    NumberedNode* const pOne = AddNode(graph, 1);
    NumberedNode far(9);
    NumberedArc foreign(20, pOne, &far);
    foreign.Connect();

    graph.UnConnect();

    EXPECT_THAT(foreign.m_pStart, IsNull());
    EXPECT_EQ(foreign.m_pEnd, &far);
    EXPECT_THAT(far.m_lstArc, ElementsAre(&foreign));
}

TEST(KyGraph, DestructionDestroysEveryNodeAndEveryArcOnce) {
    const auto nodes = NumberedNode::s_live.size();
    const auto arcs = NumberedArc::s_live.size();
    {
        Triangle graph;
        AddArc(graph, 40, NodeAt(graph, 0), NodeAt(graph, 0));
        EXPECT_EQ(NumberedNode::s_live.size(), nodes + 3);
        EXPECT_EQ(NumberedArc::s_live.size(), arcs + 4);
    }

    EXPECT_EQ(NumberedNode::s_live.size(), nodes);
    EXPECT_EQ(NumberedArc::s_live.size(), arcs);
}

TEST(KyGraph, DestructionLeavesArcsThatAreNotTheGraphs) {
    auto pGraph = std::make_unique<KyGraph>();
    NumberedNode far(9);
    NumberedArc foreign(20, AddNode(*pGraph, 1), &far);
    foreign.Connect();

    pGraph.reset();

    EXPECT_THAT(foreign.m_pStart, IsNull());
    EXPECT_EQ(foreign.m_pEnd, &far);
}

/// Writes down the ends that it has when it is destroyed.
class ArcThatTellsItsEnds : public NumberedArc {
public:
    ArcThatTellsItsEnds(long nNumber, KyGraphNode* pStart, KyGraphNode* pEnd,
                        std::vector<const KyGraphNode*>& ends)
        : NumberedArc(nNumber, pStart, pEnd), m_ends(ends) {}
    ~ArcThatTellsItsEnds() override { m_ends.insert(m_ends.end(), {m_pStart, m_pEnd}); }

private:
    std::vector<const KyGraphNode*>& m_ends;
};

/// Writes down how many arcs it lists when it is destroyed.
class NodeThatTellsItsArcs : public NumberedNode {
public:
    NodeThatTellsItsArcs(long nNumber, std::vector<long>& lengths)
        : NumberedNode(nNumber), m_lengths(lengths) {}
    ~NodeThatTellsItsArcs() override { m_lengths.push_back(m_lstArc.m_nLength); }

private:
    std::vector<long>& m_lengths;
};

TEST(KyGraph, DestructionDissolvesAllIncidenceBeforeItDestroysTheFirstArc) {
    std::vector<const KyGraphNode*> ends;
    {
        KyGraph graph;
        graph.Create(new ArcThatTellsItsEnds(10, new NumberedNode(1), new NumberedNode(2), ends));
    }

    EXPECT_THAT(ends, ElementsAre(IsNull(), IsNull()));
}

TEST(KyGraph, AnElementRemovedThroughItsListIsDetachedAndDestroyed) {
    Triangle graph;

    graph.m_lstNode.MoveTo(1);
    graph.m_lstNode.DelCur();
    graph.m_lstArc.MoveTo(2);
    graph.m_lstArc.DelCur();

    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10", "3: 20"));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-none", "20: none-3"));
}

TEST(KyGraph, NoOperationTouchesTheUserWord) {
    Triangle graph;
    graph.m_nUserData = 0x123456789ABCDEF;

    graph.Create(new NumberedArc(40, new NumberedNode(3), new NumberedNode(4)));
    graph.Find(NumberedNode(1));
    graph.CheckArc(0);
    graph.CheckNode(0);
    graph.UnConnect();

    EXPECT_EQ(graph.m_nUserData, 0x123456789ABCDEF);
}

TEST(KyGraph, NoOperationTouchesTheFlagBits) {
    Triangle graph;
    for (KyGraphNode* pNode : graph.m_lstNode) {
        pNode->m_nBits = static_cast<unsigned long>(NumberOf(pNode));
    }
    for (KyGraphArc* pArc : graph.m_lstArc) {
        pArc->m_nBits = static_cast<unsigned long>(NumberOf(pArc));
    }

    graph.Create(new NumberedArc(40, new NumberedNode(3), NodeAt(graph, 0)));
    NodeAt(graph, 0)->m_nNumber = 2;
    graph.CheckNode(0);
    ArcAt(graph, 0)->m_nNumber = 35;
    graph.CheckArc(0);
    graph.UnConnect();

    std::vector<unsigned long> bits;
    for (const KyGraphNode* pNode : graph.m_lstNode) {
        bits.push_back(pNode->m_nBits);
    }
    for (const KyGraphArc* pArc : graph.m_lstArc) {
        bits.push_back(pArc->m_nBits);
    }
    EXPECT_THAT(bits, ElementsAre(2, 3, 20, 30, 10, 0));
}

// Checking an arc -------------------------------------------------------------------------------------------

TEST(KyGraph, CheckArcOfAnUnchangedArcReturnsItsIndexAndLeavesTheGraphAsItWas) {
    for (long i = 0; i < 4; ++i) {
        Triangle graph;
        AddArc(graph, 40, NodeAt(graph, 0), NodeAt(graph, 0));
        NumberedArc* const pArc = ArcAt(graph, i);

        EXPECT_EQ(graph.CheckArc(i), i);

        EXPECT_EQ(ArcAt(graph, i), pArc);
        EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-2", "20: 2-3", "30: 3-1", "40: 1-1"));
        EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30 40", "2: 10 20", "3: 20 30"));
        EXPECT_EQ(FaultIn(graph.m_lstArc), "");
    }
}

TEST(KyGraph, CheckArcMovesAnArcWhoseKeyChangedToItsNewPlaceInTheGraphAndAroundItsNodes) {
    for (long nFrom = 0; nFrom < 5; ++nFrom) {
        for (long nTo = 0; nTo < 5; ++nTo) {
            KyGraph graph(2);
            NumberedNode* const pOne = AddNode(graph, 1);
            NumberedNode* const pTwo = AddNode(graph, 2);
            std::vector<long> numbers;
            for (long i = 0; i < 5; ++i) {
                AddArc(graph, 10 * i, pOne, pTwo);
                if (i != nFrom) numbers.push_back(10 * i);
            }
            NumberedArc* const pArc = ArcAt(graph, nFrom);
            pArc->m_nNumber = nTo <= nFrom ? 10 * nTo - 5 : 10 * nTo + 5;
            numbers.insert(numbers.begin() + nTo, pArc->m_nNumber);

            EXPECT_EQ(graph.CheckArc(nFrom), nTo);

            EXPECT_EQ(ArcAt(graph, nTo), pArc);
            EXPECT_EQ(NumbersOf(graph.m_lstArc), numbers);
            EXPECT_EQ(NumbersOf(pOne->m_lstArc), numbers);
            EXPECT_EQ(NumbersOf(pTwo->m_lstArc), numbers);
            EXPECT_EQ(FaultIn(graph.m_lstArc), "");
        }
    }
}

TEST(KyGraph, CheckArcDestroysAnArcThatNowComparesEqualToAnother) {
    const auto arcs = NumberedArc::s_live.size();
    Triangle graph;
    NumberedArc* const pSurvivor = ArcAt(graph, 2);
    ArcAt(graph, 0)->m_nNumber = 30;

    EXPECT_EQ(graph.CheckArc(0), 1);

    EXPECT_EQ(NumberedArc::s_live.size(), arcs + 2);
    EXPECT_EQ(ArcAt(graph, 1), pSurvivor);
    EXPECT_THAT(ArcsOf(graph), ElementsAre("20: 2-3", "30: 3-1"));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 30", "2: 20", "3: 20 30"));
}

TEST(KyGraph, CheckArcSearchesWithTheArcTakenOutAndThenConnectsIt) {
    KyGraph graph;
    NumberedNode* const pOne = AddNode(graph, 1);
    NumberedNode* const pTwo = AddNode(graph, 2);
    for (const long nNumber : {10, 20, 30}) {
        AddArc(graph, nNumber, pOne, pTwo);
    }
    const ComparisonLog<NumberedArc> log;

    graph.CheckArc(1);

    std::vector<Comparison> expected;
    for (const long nAround : {-1, 1, 2}) {
        for (const long nAsked : {10, 30, 10, 30}) {
            expected.push_back({20, nAsked, nAround});
        }
    }
    EXPECT_EQ(log.Lines(), expected);
}

TEST(KyGraph, CheckArcListsAnArcWhereverItsEndsWereSetMeanwhile) {
    Triangle graph;
    NumberedArc* const pArc = ArcAt(graph, 0);
    pArc->m_pEnd->RemoveArc(pArc);
    pArc->m_pEnd = NodeAt(graph, 2);

    EXPECT_EQ(graph.CheckArc(0), 0);

    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-3", "20: 2-3", "30: 3-1"));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30", "2: 20", "3: 10 20 30"));
}

TEST(KyGraph, CheckArcPutsAnArcWithoutEndsBackInOrder) {
    KyGraph graph;
    for (const long nNumber : {10, 20, 30}) {
        AddArc(graph, nNumber, nullptr, nullptr);
    }
    ArcAt(graph, 0)->m_nNumber = 40;

    EXPECT_EQ(graph.CheckArc(0), 2);

    EXPECT_THAT(ArcsOf(graph), ElementsAre("20: none-none", "30: none-none", "40: none-none"));
}

TEST(KyGraph, CheckArcOfTheOnlyArcKeepsIt) {
    KyGraph graph;
    AddArc(graph, 10, AddNode(graph, 1), nullptr);

    EXPECT_EQ(graph.CheckArc(0), 0);

    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-none"));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10"));
}

// Checking a node -------------------------------------------------------------------------------------------

TEST(KyGraph, CheckNodeOfAnUnchangedNodeReturnsItsIndexAndLeavesTheGraphAsItWas) {
    for (long i = 0; i < 3; ++i) {
        Triangle graph;
        AddArc(graph, 40, NodeAt(graph, 1), NodeAt(graph, 1));
        NumberedNode* const pNode = NodeAt(graph, i);

        EXPECT_EQ(graph.CheckNode(i), i);

        EXPECT_EQ(NodeAt(graph, i), pNode);
        EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-2", "20: 2-3", "30: 3-1", "40: 2-2"));
        EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30", "2: 10 20 40", "3: 20 30"));
        EXPECT_EQ(FaultIn(graph.m_lstNode), "");
        EXPECT_EQ(FaultIn(graph.m_lstArc), "");
    }
}

TEST(KyGraph, CheckNodeMovesANodeWhoseKeyChanged) {
    for (long nFrom = 0; nFrom < 5; ++nFrom) {
        for (long nTo = 0; nTo < 5; ++nTo) {
            KyGraph graph(2);
            std::vector<long> numbers;
            for (long i = 0; i < 5; ++i) {
                AddNode(graph, 10 * i);
                if (i != nFrom) numbers.push_back(10 * i);
            }
            NumberedNode* const pNode = NodeAt(graph, nFrom);
            pNode->m_nNumber = nTo <= nFrom ? 10 * nTo - 5 : 10 * nTo + 5;
            numbers.insert(numbers.begin() + nTo, pNode->m_nNumber);

            EXPECT_EQ(graph.CheckNode(nFrom), nTo);

            EXPECT_EQ(NodeAt(graph, nTo), pNode);
            EXPECT_EQ(NumbersOf(graph.m_lstNode), numbers);
            EXPECT_EQ(FaultIn(graph.m_lstNode), "");
        }
    }
}

/// A hub, number 0, with arcs 10, 20 ... to the leaves 1, 2 ...; and the steps of CheckNode on plain numbers.
class Star {
public:
    explicit Star(long nArcs) {
        m_pHub = AddNode(m_graph, 0);
        for (long i = 1; i <= nArcs; ++i) {
            m_arcs.push_back(AddArc(m_graph, 10 * i, m_pHub, AddNode(m_graph, i)));
        }
        m_hub = m_all = NumbersOf(m_graph.m_lstArc);
    }

    /// Gives every arc a new number, which nothing is told about.
    template <class NewNumber>
    void Renumber(NewNumber newNumber) {
        for (NumberedArc* pArc : m_arcs) {
            pArc->m_nNumber = newNumber(pArc->m_nNumber);
        }
        for (std::vector<long>* pList : {&m_hub, &m_all}) {
            for (long& nNumber : *pList) {
                nNumber = newNumber(nNumber);
            }
        }
    }

    /// What CheckNode(0) must make of it, transcribed. Returns the arcs detached.
    std::vector<long> Expect() {
        std::vector<long> detached;
        for (std::size_t k = 0; k < m_hub.size(); ++k) {
            detached.push_back(m_hub[k]);
            m_hub.erase(m_hub.begin() + static_cast<std::ptrdiff_t>(k));
        }
        for (const long nArc : detached) {
            m_all.erase(std::find(m_all.begin(), m_all.end(), nArc));
            if (Insert(m_all, nArc)) Insert(m_hub, nArc);
        }
        return detached;
    }

    KyGraph m_graph;
    NumberedNode* m_pHub;
    std::vector<NumberedArc*> m_arcs;
    std::vector<long> m_hub;  // the arcs around the hub, in order
    std::vector<long> m_all;  // the graph's arcs, in order

private:
    static bool Insert(std::vector<long>& sorted, long nNumber) {
        const Bisection bisection = Bisect(static_cast<long>(sorted.size()), [&](long i) {
            return static_cast<int>(nNumber - sorted[static_cast<std::size_t>(i)]);
        });
        if (!bisection.m_bFound) sorted.insert(sorted.begin() + bisection.m_nPlace, nNumber);
        return !bisection.m_bFound;
    }
};

using HubOfAnyDegree = testing::TestWithParam<long>;

TEST_P(HubOfAnyDegree, CheckNodeResortsTheArcsAtEvenPositionsOnly) {
    Star star(GetParam());
    star.Renumber([](long nNumber) { return 1000 - nNumber; });
    star.Expect();

    EXPECT_EQ(star.m_graph.CheckNode(0), 0);

    EXPECT_EQ(NumbersOf(star.m_graph.m_lstArc), star.m_all);
    EXPECT_EQ(NumbersOf(star.m_pHub->m_lstArc), star.m_hub);
    for (const NumberedArc* pArc : star.m_arcs) {
        EXPECT_EQ(pArc->m_pStart, star.m_pHub);
        EXPECT_THAT(pArc->m_pEnd->m_lstArc, ElementsAre(pArc));
    }
    EXPECT_EQ(FaultIn(star.m_graph.m_lstArc), "");
}

TEST_P(HubOfAnyDegree, CheckNodeDestroysDetachedArcsThatNowCompareEqual) {
    const auto arcs = NumberedArc::s_live.size();
    Star star(GetParam());
    star.Renumber([](long nNumber) { return nNumber / 40; });
    star.Expect();

    star.m_graph.CheckNode(0);

    EXPECT_EQ(NumbersOf(star.m_graph.m_lstArc), star.m_all);
    EXPECT_EQ(NumbersOf(star.m_pHub->m_lstArc), star.m_hub);
    EXPECT_EQ(NumberedArc::s_live.size(), arcs + star.m_all.size());
}

TEST_P(HubOfAnyDegree, CheckNodeLooksForTheDetachedArcsInTheOrderOfTheRotation) {
    Star star(GetParam());
    KyGraph& graph = star.m_graph;
    std::vector<long> searched;
    std::vector<long> expected;
    star.Renumber([](long nNumber) { return 1000 - nNumber; });
    if (GetParam() > 1) expected = star.Expect();
    const OnCompare<NumberedArc> watch([&](const NumberedArc& left, const NumberedArc&) {
        const bool bGlobally = KyGraphNode::s_pStartNode == nullptr;
        if (bGlobally && (searched.empty() || searched.back() != left.m_nNumber))
            searched.push_back(left.m_nNumber);
    });

    graph.CheckNode(0);

    EXPECT_EQ(searched, expected);
}

TEST_P(HubOfAnyDegree, CheckNodeHandsOverTheDetachedArcsThatAreNotTheGraphs) {
    const long nArcs = GetParam();
    KyGraph graph;
    NumberedNode* const pHub = AddNode(graph, 0);
    NumberedNode far(9);
    std::vector<std::unique_ptr<NumberedArc>> foreign;
    std::vector<long> lost;
    std::vector<long> kept;
    for (long i = 0; i < nArcs; ++i) {
        foreign.push_back(std::make_unique<NumberedArc>(i, pHub, &far));
        foreign.back()->Connect();
        (i % 2 == 0 ? lost : kept).push_back(i);
    }
    KyDynArray<KyGraphArc*> reported;

    EXPECT_EQ(graph.CheckNode(0, &reported), 0);

    EXPECT_EQ(NumbersOf(reported), lost);
    EXPECT_EQ(NumbersOf(pHub->m_lstArc), kept);
    EXPECT_EQ(NumbersOf(far.m_lstArc), kept);
    for (const auto& pArc : foreign) {
        EXPECT_EQ(pArc->m_pStart, pHub);
        EXPECT_EQ(pArc->m_pEnd, &far);
    }
    foreign.clear();
    EXPECT_THAT(pHub->m_lstArc, ElementsAre());
}

INSTANTIATE_TEST_SUITE_P(KyGraph, HubOfAnyDegree, testing::Range(0L, 9L));

TEST(KyGraph, CheckNodeWithFourArcsDetachesThoseAtPositionsZeroAndTwo) {
    Star star(4);
    star.Renumber([](long nNumber) { return 100 - nNumber; });

    star.m_graph.CheckNode(0);

    // 90 and 70 find their places; 80 and 60 stay as they stood: 80 60, 60 70 80 90.
    EXPECT_THAT(NumbersOf(star.m_pHub->m_lstArc), ElementsAre(70, 80, 60, 90));
    EXPECT_THAT(NumbersOf(star.m_graph.m_lstArc), ElementsAre(70, 80, 60, 90));
}

TEST(KyGraph, CheckNodeDoesNotResortAnArcAtAnOddPositionEvenWhenItsKeyChanged) {
    Star star(4);
    star.m_arcs[1]->m_nNumber = 500;
    star.m_arcs[3]->m_nNumber = -5;

    star.m_graph.CheckNode(0);

    // 10 goes in front of the first arc, 500, and 30 behind the last one, -5.
    EXPECT_THAT(NumbersOf(star.m_graph.m_lstArc), ElementsAre(10, 500, -5, 30));
    EXPECT_THAT(NumbersOf(star.m_pHub->m_lstArc), ElementsAre(10, 500, -5, 30));
}

TEST(KyGraph, CheckNodeDetachesALoopLikeAnyArc) {
    KyGraph graph;
    NumberedNode* const pHub = AddNode(graph, 0);
    AddArc(graph, 10, pHub, pHub);
    AddArc(graph, 20, pHub, pHub);
    AddArc(graph, 30, pHub, pHub);
    ArcAt(graph, 0)->m_nNumber = 40;

    EXPECT_EQ(graph.CheckNode(0), 0);

    EXPECT_THAT(NodesOf(graph), ElementsAre("0: 20 30 40"));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("20: 0-0", "30: 0-0", "40: 0-0"));
}

TEST(KyGraph, CheckNodeComparesNoArcBeforeTheNodeHasItsPlace) {
    Star star(3);
    std::vector<char> kinds;
    const OnCompare<NumberedNode> onNode(
        [&](const NumberedNode&, const NumberedNode&) { kinds.push_back('n'); });
    const OnCompare<NumberedArc> onArc([&](const NumberedArc&, const NumberedArc&) { kinds.push_back('a'); });

    star.m_graph.CheckNode(0);

    EXPECT_EQ(kinds.front(), 'n');
    EXPECT_EQ(kinds.back(), 'a');
    EXPECT_TRUE(std::is_sorted(kinds.rbegin(), kinds.rend()));
}

// Lost arcs

TEST(KyGraph, CheckNodeWithoutAContainerLeavesLostArcsAlone) {
    KyGraph graph;
    NumberedNode* const pHub = AddNode(graph, 0);
    NumberedNode far(9);
    NumberedArc foreign(10, pHub, &far);
    foreign.Connect();

    EXPECT_EQ(graph.CheckNode(0), 0);

    EXPECT_THAT(pHub->m_lstArc, ElementsAre());
    EXPECT_THAT(far.m_lstArc, ElementsAre());
    EXPECT_EQ(foreign.m_pStart, pHub);
    EXPECT_EQ(foreign.m_pEnd, &far);
}

TEST(KyGraph, CheckNodeAppendsLostArcsBehindWhatTheContainerHolds) {
    KyGraph graph;
    NumberedNode* const pHub = AddNode(graph, 0);
    NumberedArc held(1);
    NumberedArc foreign(10, pHub, nullptr);
    foreign.Connect();
    KyList<KyGraphArc*> lost;
    lost.Append(&held);

    graph.CheckNode(0, &lost);

    EXPECT_THAT(lost, ElementsAre(&held, &foreign));
}

TEST(KyGraph, CheckNodeFindsAnArcByIdentityNotByItsKey) {
    KyGraph graph;
    NumberedNode* const pHub = AddNode(graph, 0);
    AddArc(graph, 10, nullptr, nullptr);
    NumberedArc foreign(10, pHub, nullptr);
    foreign.Connect();
    KyList<KyGraphArc*> lost;

    graph.CheckNode(0, &lost);

    EXPECT_THAT(lost, ElementsAre(&foreign));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: none-none"));
}

TEST(KyGraph, CheckNodePointsLostArcsAtTheNodeThatSurvives) {
    KyGraph graph;
    NumberedNode* const pSurvivor = AddNode(graph, 1);
    NumberedNode* const pGoes = AddNode(graph, 2);
    NumberedArc foreign(10, pGoes, pGoes);
    foreign.Connect();
    pGoes->m_nNumber = 1;
    KyList<KyGraphArc*> lost;

    EXPECT_EQ(graph.CheckNode(1, &lost), 0);

    EXPECT_THAT(lost, ElementsAre(&foreign));
    EXPECT_EQ(foreign.m_pStart, pSurvivor);
    EXPECT_EQ(foreign.m_pEnd, pSurvivor);
    EXPECT_THAT(pSurvivor->m_lstArc, ElementsAre());
}

// Merging away

TEST(KyGraph, CheckNodeMergesANodeThatNowComparesEqualIntoTheOther) {
    const auto nodes = NumberedNode::s_live.size();
    Star star(4);
    KyGraph& graph = star.m_graph;
    NumberedNode* const pSurvivor = AddNode(graph, 9);
    AddArc(graph, 25, pSurvivor, nullptr);
    star.m_pHub->m_nNumber = 9;

    EXPECT_EQ(graph.CheckNode(0), 4);

    EXPECT_EQ(NumberedNode::s_live.size(), nodes + 5);
    EXPECT_EQ(NodeAt(graph, 4), pSurvivor);
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10", "2: 20", "3: 30", "4: 40", "9: 10 20 25 30 40"));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 9-1", "20: 9-2", "25: 9-none", "30: 9-3", "40: 9-4"));
}

TEST(KyGraph, ANodeListsNoArcAnyMoreWhenCheckNodeDestroysIt) {
    KyGraph graph;
    std::vector<long> lengths;
    AddNode(graph, 1);
    auto* const pGoes = new NodeThatTellsItsArcs(2, lengths);
    graph << pGoes;
    for (const long nNumber : {10, 20, 30}) {
        AddArc(graph, nNumber, pGoes, nullptr);
    }
    pGoes->m_nNumber = 1;

    graph.CheckNode(1);

    EXPECT_THAT(lengths, ElementsAre(0));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 20 30"));
}

TEST(KyGraph, CheckNodeTurnsTheArcsBetweenTheMergedNodesIntoLoops) {
    Triangle graph;
    NodeAt(graph, 0)->m_nNumber = 2;

    EXPECT_EQ(graph.CheckNode(0), 0);

    EXPECT_THAT(NodesOf(graph), ElementsAre("2: 10 20 30", "3: 20 30"));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 2-2", "20: 2-3", "30: 3-2"));
}

TEST(KyGraph, CheckNodePassesTheArcsAtOddPositionsOnBeforeTheOthers) {
    Star star(4);
    KyGraph& graph = star.m_graph;
    NumberedNode* const pSurvivor = AddNode(graph, 9);
    star.m_pHub->m_nNumber = 9;
    std::vector<long> offered;
    const OnCompare<NumberedArc> watch([&](const NumberedArc& left, const NumberedArc&) {
        const bool bAroundSurvivor = KyGraphNode::s_pStartNode == pSurvivor;
        if (bAroundSurvivor && (offered.empty() || offered.back() != left.m_nNumber))
            offered.push_back(left.m_nNumber);
    });

    graph.CheckNode(0);

    EXPECT_THAT(offered, ElementsAre(40, 10, 30));  // 20 came first, into the empty list
}

TEST(KyGraph, AfterAMergeNoArcOfTheGraphPointsAtTheNodeThatIsGone) {
    KyGraph graph;
    NumberedNode* const pSurvivor = AddNode(graph, 1);
    NumberedNode* const pGoes = AddNode(graph, 2);
    NumberedArc stranger(20);
    pGoes->AppendArc(&stranger);
    AddArc(graph, 10, pGoes, nullptr);
    AddArc(graph, 20, pGoes, pGoes);  // refused at its node: listed in the graph alone
    AddArc(graph, 30, nullptr, pGoes);
    ASSERT_THAT(NumbersOf(pGoes->m_lstArc), ElementsAre(10, 20, 30));
    pGoes->RemoveArc(&stranger);
    pGoes->m_nNumber = 1;

    EXPECT_EQ(graph.CheckNode(1), 0);

    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-none", "20: 1-1", "30: none-1"));
    EXPECT_THAT(NumbersOf(pSurvivor->m_lstArc), ElementsAre(10, 30));
}

TEST(KyGraph, AMergeRepointsAllDetachedArcsBeforeItComparesTheFirst) {
    Star star(5);
    KyGraph& graph = star.m_graph;
    AddNode(graph, 9);
    star.m_pHub->m_nNumber = 9;
    std::vector<long> early;  // arcs that still pointed at the hub after it was gone
    const OnCompare<NumberedArc> watch([&](const NumberedArc&, const NumberedArc&) {
        if (NumberedNode::s_live.count(star.m_pHub) != 0) return;
        for (const NumberedArc* pArc : star.m_arcs) {
            if (pArc->m_pStart == star.m_pHub) early.push_back(pArc->m_nNumber);
        }
    });

    graph.CheckNode(0);

    EXPECT_THAT(early, IsEmpty());
    EXPECT_EQ(NumberedNode::s_live.count(star.m_pHub), 0U);
}

TEST(KyGraph, AComparisonThatReadsTheEndNodesNeverMeetsAMergedNode) {
    KyGraph graph;
    const auto create = [&](Point from, Point to) {
        graph.Create(new PlaneArc(new PlaneNode(from), new PlaneNode(to)));
    };
    for (const Point& to :
         {Point{4, 0}, Point{3, 3}, Point{0, 4}, Point{-3, 3}, Point{-4, 0}, Point{0, -4}, Point{8, 0}}) {
        create({0, 0}, to);
        create({1, 1}, to);
    }
    create({1, 1}, {0, 0});
    const long nGoes = graph.Find(PlaneNode({0, 0}));
    auto* const pGoes = static_cast<PlaneNode*>(*graph.m_lstNode.GetAt(nGoes));
    pGoes->m_at = {1, 1};

    const long nSurvivor = graph.CheckNode(nGoes);

    EXPECT_EQ(static_cast<PlaneNode*>(*graph.m_lstNode.GetAt(nSurvivor))->m_at, (Point{1, 1}));
    EXPECT_EQ(PlaneArc::s_nDeadEndsRead, 0);
    for (const KyGraphArc* pArc : graph.m_lstArc) {
        EXPECT_NE(pArc->m_pStart, pGoes);
        EXPECT_NE(pArc->m_pEnd, pGoes);
    }
}

// Comparisons that throw

TEST(KyGraph, AThrowInCheckArcLeavesTheGraphAsItWas) {
    Triangle graph;
    static_cast<NumberedArc*>(ArcAt(graph, 1))->m_nNumber = 40;
    {
        const OnCompare<NumberedArc> thrower(
            [](const NumberedArc&, const NumberedArc&) { throw std::runtime_error("no order"); });

        EXPECT_THROW(graph.CheckArc(1), std::runtime_error);
    }

    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-2", "40: 2-3", "30: 3-1"));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30", "2: 10 40", "3: 40 30"));
    EXPECT_EQ(graph.CheckArc(1), 2);
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-2", "30: 3-1", "40: 2-3"));
}

TEST(KyGraph, AThrowWhileCheckNodeSearchesLeavesTheGraphAsItWas) {
    Triangle graph;
    AddArc(graph, 40, NodeAt(graph, 1), NodeAt(graph, 1));
    static_cast<NumberedNode*>(NodeAt(graph, 1))->m_nNumber = 9;
    {
        const OnCompare<NumberedNode> thrower(
            [](const NumberedNode&, const NumberedNode&) { throw std::runtime_error("no order"); });

        EXPECT_THROW(graph.CheckNode(1), std::runtime_error);
    }

    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30", "9: 10 20 40", "3: 20 30"));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("10: 1-9", "20: 9-3", "30: 3-1", "40: 9-9"));
    EXPECT_EQ(graph.CheckNode(1), 2);
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 30", "3: 20 30", "9: 10 20 40"));
}

TEST(KyGraph, AThrowInCheckNodeLeavesTheNodeWhereItWasWhateverTheComparisonDidToTheCursor) {
    Star star(2);
    KyGraph& graph = star.m_graph;
    star.m_pHub->m_nNumber = 9;
    {
        const OnCompare<NumberedArc> thrower([&](const NumberedArc&, const NumberedArc&) {
            graph.m_lstNode.MoveToFirst();
            throw std::runtime_error("no order");
        });

        EXPECT_THROW(graph.CheckNode(0), std::runtime_error);
    }

    EXPECT_THAT(NodesOf(graph), ElementsAre("9: 10 20", "1: 10", "2: 20"));
    EXPECT_EQ(FaultIn(graph.m_lstNode), "");
    EXPECT_EQ(graph.CheckNode(0), 2);
}

TEST(KyGraph, AThrowInCheckNodeLeavesNoTraceOfAnArcThatWasDestroyedBefore) {
    Star star(4);
    KyGraph& graph = star.m_graph;
    AddArc(graph, 50, AddNode(graph, 5), nullptr);
    star.m_arcs[0]->m_nNumber = 50;
    {
        const OnCompare<NumberedArc> thrower([](const NumberedArc& left, const NumberedArc&) {
            if (left.m_nNumber == 30) throw std::runtime_error("no order");
        });

        EXPECT_THROW(graph.CheckNode(0), std::runtime_error);
    }

    EXPECT_EQ(NodeAt(graph, 1)->m_lstArc.m_nLength, 0) << "the node at the other end of the arc that is gone";
    EXPECT_THAT(NodesOf(graph), ElementsAre("0: 20 30 40", "1:", "2: 20", "3: 30", "4: 40", "5: 50"));
    EXPECT_THAT(ArcsOf(graph), ElementsAre("20: 0-2", "30: 0-3", "40: 0-4", "50: 5-none"));
}

TEST(KyGraph, AThrowInCheckNodeLeavesAnArcListedAsOftenAsItWas) {
    KyGraph graph;
    NumberedNode* const pNode = AddNode(graph, 1);
    AddNode(graph, 2);
    NumberedArc* const pArc = AddArc(graph, 10, pNode, nullptr);
    pNode->m_lstArc.Append(pArc);
    pNode->m_lstArc.Append(pArc);
    {
        const OnCompare<NumberedNode> thrower(
            [](const NumberedNode&, const NumberedNode&) { throw std::runtime_error("no order"); });

        EXPECT_THROW(graph.CheckNode(0), std::runtime_error);
    }

    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10 10 10", "2:"));
}

TEST(KyGraph, AThrowInAMergeLeavesTheCallerTheNode) {
    KyGraph graph;
    NumberedNode* const pResident = AddNode(graph, 1);
    AddArc(graph, 10, pResident, nullptr);
    NumberedNode duplicate(1);
    NumberedArc taken(20, &duplicate, nullptr);
    taken.Connect();
    {
        const OnCompare<NumberedArc> thrower(
            [](const NumberedArc&, const NumberedArc&) { throw std::runtime_error("no order"); });

        EXPECT_THROW(graph << &duplicate, std::runtime_error);
    }

    EXPECT_EQ(taken.m_pStart, &duplicate);
    EXPECT_THAT(duplicate.m_lstArc, ElementsAre(&taken));
    EXPECT_THAT(NodesOf(graph), ElementsAre("1: 10"));
}

TEST(KyGraph, IsMadeFromEmptyBracesAsAnArcIs) {
    struct Plan {
        KyGraphArc m_arc;
        KyGraph m_graph;
    };

    const Plan plan = {};

    EXPECT_EQ(plan.m_arc.m_pStart, nullptr);
    EXPECT_EQ(plan.m_arc.m_pEnd, nullptr);
    EXPECT_EQ(plan.m_graph.m_lstNode.m_nStep, KyGraph().m_lstNode.m_nStep);
    EXPECT_EQ(plan.m_graph.m_lstArc.m_nLength, 0);
}

}  // namespace
