#include "VexaBase/graph/KyGraphNode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <stdexcept>
#include <tuple>
#include <vector>

#include "Bisection.h"
#include "DistantPlace.h"
#include "NumberedElements.h"
#include "VexaBase/containers/KyDynArray.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;

/// Loose arcs with the given numbers, that outlive the nodes made after them.
class Arcs {
public:
    Arcs(std::initializer_list<long> numbers) {
        for (const long nNumber : numbers) {
            m_arcs.emplace_back(nNumber);
        }
    }

    NumberedArc& operator[](std::size_t i) { return m_arcs[i]; }
    std::size_t size() const { return m_arcs.size(); }

    void AppendAllTo(KyGraphNode& node) {
        for (NumberedArc& arc : m_arcs) {
            node.AppendArc(&arc);
        }
    }

private:
    std::deque<NumberedArc> m_arcs;
};

// An empty node ---------------------------------------------------------------------------------------------

TEST(KyGraphNode, StartsWithoutArcsAndWithoutFlagBits) {
    const KyGraphNode node;

    EXPECT_THAT(node.m_lstArc, ElementsAre());
    EXPECT_EQ(node.m_nBits, 0U);
}

TEST(KyGraphNode, NoNodeIsTheStartNodeOutsideAppendArc) { EXPECT_THAT(KyGraphNode::s_pStartNode, IsNull()); }

TEST(KyGraphNode, WithoutArcsFindsAndReportsNone) {
    KyGraphArc arc;
    KyGraphNode node;
    KyDynArray<KyGraphArc*> found;

    node.GetArcOut(found);
    node.GetArcIn(found);

    EXPECT_THAT(found, ElementsAre());
    EXPECT_THAT(node.FindNextArc(&arc), IsNull());
    EXPECT_THAT(node.FindPreArc(&arc), IsNull());
    EXPECT_EQ(node.RemoveArc(&arc), 0);
}

TEST(KyGraphNode, UnConnectWithoutArcsLeavesItEmpty) {
    KyGraphNode node;

    node.UnConnect();

    EXPECT_THAT(node.m_lstArc, ElementsAre());
}

// Inserting into the rotational order -----------------------------------------------------------------------

TEST(KyGraphNode, AppendArcListsTheFirstArcWithoutAComparison) {
    NumberedArc arc(10);
    NumberedNode node(1);
    const ComparisonLog<NumberedArc> log;

    EXPECT_EQ(node.AppendArc(&arc), 1);

    EXPECT_THAT(node.m_lstArc, ElementsAre(&arc));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(KyGraphNode, AppendArcDoesNotLookAtTheArcsEnds) {
    KyGraphNode start;
    KyGraphNode end;
    NumberedArc arc(10, &start, &end);
    NumberedNode node(1);

    EXPECT_EQ(node.AppendArc(&arc), 1);

    EXPECT_THAT(node.m_lstArc, ElementsAre(&arc));
    EXPECT_EQ(arc.m_pStart, &start);
    EXPECT_EQ(arc.m_pEnd, &end);
    EXPECT_THAT(start.m_lstArc, ElementsAre());
    node.RemoveArc(&arc);
}

struct AppendRow {
    long m_nNumber;
    int m_nResult;
    std::vector<long> m_asked;
    std::vector<long> m_order;
};

void PrintTo(const AppendRow& row, std::ostream* pOut) { *pOut << row.m_nNumber << " among 10 20 30 40"; }

class AppendArcToFour : public testing::TestWithParam<AppendRow> {};

TEST_P(AppendArcToFour, AsksTheFirstTheLastAndThenByBisection) {
    const AppendRow& row = GetParam();
    Arcs arcs{10, 20, 30, 40};
    NumberedArc newcomer(row.m_nNumber);
    NumberedNode node(7);
    arcs.AppendAllTo(node);
    const ComparisonLog<NumberedArc> log;

    EXPECT_EQ(node.AppendArc(&newcomer), row.m_nResult);

    std::vector<Comparison> expected;
    for (const long nAsked : row.m_asked) {
        expected.push_back({row.m_nNumber, nAsked, 7});
    }
    EXPECT_EQ(log.Lines(), expected);
    EXPECT_EQ(NumbersOf(node.m_lstArc), row.m_order);
}

INSTANTIATE_TEST_SUITE_P(KyGraphNode, AppendArcToFour,
                         testing::Values(AppendRow{5, 1, {10}, {5, 10, 20, 30, 40}},
                                         AppendRow{10, 0, {10, 40, 20, 10}, {10, 20, 30, 40}},
                                         AppendRow{15, 1, {10, 40, 20, 10}, {10, 15, 20, 30, 40}},
                                         AppendRow{20, 0, {10, 40, 20}, {10, 20, 30, 40}},
                                         AppendRow{25, 1, {10, 40, 20, 30}, {10, 20, 25, 30, 40}},
                                         AppendRow{30, 0, {10, 40, 20, 30}, {10, 20, 30, 40}},
                                         AppendRow{35, 1, {10, 40, 20, 30, 40}, {10, 20, 30, 35, 40}},
                                         AppendRow{40, 0, {10, 40, 20, 30, 40}, {10, 20, 30, 40}},
                                         AppendRow{45, 1, {10, 40}, {10, 20, 30, 40, 45}}));

/// An arc that answers from a script, and remembers whom it was asked about.
class ScriptedArc : public KyGraphArc {
public:
    explicit ScriptedArc(std::vector<int> answers) : m_answers(std::move(answers)) {}

    int CmpArc(const KyGraphArc& other) const override {
        m_asked.push_back(&other);
        return m_answers.at(m_asked.size() - 1);
    }

    mutable std::vector<const KyGraphArc*> m_asked;

private:
    std::vector<int> m_answers;
};

/// Every row of nLength answers out of below, equal and above.
std::vector<std::vector<int>> AllAnswers(std::size_t nLength) {
    std::vector<std::vector<int>> rows{{}};
    for (std::size_t i = 0; i < nLength; ++i) {
        std::vector<std::vector<int>> longer;
        for (const auto& row : rows) {
            for (const int nAnswer : {-5, 0, 5}) {
                longer.push_back(row);
                longer.back().push_back(nAnswer);
            }
        }
        rows = std::move(longer);
    }
    return rows;
}

using EveryAnswer = testing::TestWithParam<long>;

TEST_P(EveryAnswer, LeadsAppendArcThroughTheStatedSteps) {
    const long nLength = GetParam();
    for (const std::vector<int>& answers : AllAnswers(6)) {
        std::vector<KyGraphArc> residents(static_cast<std::size_t>(nLength));
        ScriptedArc newcomer(answers);
        KyGraphNode node;
        std::vector<KyGraphArc*> order;
        for (KyGraphArc& arc : residents) {
            node.m_lstArc.Append(&arc);
            order.push_back(&arc);
        }
        std::size_t nAnswered = 0;
        const Bisection bisection = Bisect(nLength, [&](long) { return answers[nAnswered++]; });

        const int nResult = node.AppendArc(&newcomer);

        std::vector<const KyGraphArc*> asked;
        for (const long i : bisection.m_probes) {
            asked.push_back(&residents[static_cast<std::size_t>(i)]);
        }
        if (!bisection.m_bFound) order.insert(order.begin() + bisection.m_nPlace, &newcomer);
        SCOPED_TRACE(testing::PrintToString(answers));
        ASSERT_EQ(newcomer.m_asked, asked);
        ASSERT_EQ(nResult, bisection.m_bFound ? 0 : 1);
        ASSERT_THAT(node.m_lstArc, testing::ElementsAreArray(order));
        ASSERT_EQ(KyGraphNode::s_pStartNode, nullptr);
    }
}

INSTANTIATE_TEST_SUITE_P(KyGraphNode, EveryAnswer, testing::Range(0L, 9L));

TEST(KyGraphNode, AnEqualFirstArcDoesNotStopTheBisection) {
    KyGraphArc residents[2];
    ScriptedArc newcomer({0, 5});
    KyGraphNode node;
    node.m_lstArc.Append(&residents[0]);
    node.m_lstArc.Append(&residents[1]);

    EXPECT_EQ(node.AppendArc(&newcomer), 1);

    EXPECT_THAT(newcomer.m_asked, ElementsAre(&residents[0], &residents[1]));
    EXPECT_THAT(node.m_lstArc, ElementsAre(&residents[0], &residents[1], &newcomer));
}

TEST(KyGraphNode, AppendArcRefusesAnArcThatCompareEqualAndChangesNothing) {
    NumberedArc resident(10);
    NumberedArc equal(10);
    NumberedNode node(1);
    node.AppendArc(&resident);

    EXPECT_EQ(node.AppendArc(&equal), 0);

    EXPECT_THAT(node.m_lstArc, ElementsAre(&resident));
}

TEST(KyGraphNode, AppendArcRefusesAListedArcWhereverItStands) {
    Arcs arcs{10, 20, 30, 40, 50};
    NumberedNode node(1);
    arcs.AppendAllTo(node);

    std::vector<int> results;
    for (std::size_t i = 0; i < arcs.size(); ++i) {
        results.push_back(node.AppendArc(&arcs[i]));
    }

    EXPECT_THAT(results, ElementsAre(0, 0, 0, 0, 0));
    EXPECT_THAT(NumbersOf(node.m_lstArc), ElementsAre(10, 20, 30, 40, 50));
}

TEST(KyGraphNode, AppendArcWithTheDefaultOrderKeepsArcsAsTheyLieInMemory) {
    KyGraphArc arcs[4];
    KyGraphNode node;

    for (const int i : {2, 0, 3, 1}) {
        EXPECT_EQ(node.AppendArc(&arcs[i]), 1);
    }

    EXPECT_EQ(node.AppendArc(&arcs[2]), 0);
    EXPECT_THAT(node.m_lstArc, ElementsAre(&arcs[0], &arcs[1], &arcs[2], &arcs[3]));
}

// The start node --------------------------------------------------------------------------------------------

TEST(KyGraphNode, IsTheStartNodeWhileItsArcsAreCompared) {
    Arcs arcs{10, 20};
    NumberedNode node(7);
    NumberedNode outer(9);
    KyGraphNode::s_pStartNode = &outer;
    node.AppendArc(&arcs[0]);
    const ComparisonLog<NumberedArc> log;

    node.AppendArc(&arcs[1]);

    EXPECT_EQ(KyGraphNode::s_pStartNode, &outer);
    KyGraphNode::s_pStartNode = nullptr;
    EXPECT_THAT(log.Lines(), ElementsAre(Comparison{20, 10, 7}, Comparison{20, 10, 7}));
}

TEST(KyGraphNode, AppendArcPutsTheFormerStartNodeBackOnEveryExit) {
    Arcs arcs{20, 10, 40, 30, 50};
    NumberedArc equal(30);
    NumberedNode node(7);
    NumberedNode outer(9);
    KyGraphNode::s_pStartNode = &outer;

    std::vector<std::pair<int, bool>> exits;
    for (std::size_t i = 0; i < arcs.size(); ++i) {
        const int nResult = node.AppendArc(&arcs[i]);
        exits.emplace_back(nResult, KyGraphNode::s_pStartNode == &outer);
    }
    const int nResult = node.AppendArc(&equal);
    exits.emplace_back(nResult, KyGraphNode::s_pStartNode == &outer);

    KyGraphNode::s_pStartNode = nullptr;
    using Exit = std::pair<int, bool>;
    EXPECT_THAT(exits, ElementsAre(Exit{1, true}, Exit{1, true}, Exit{1, true}, Exit{1, true}, Exit{1, true},
                                   Exit{0, true}));
}

TEST(KyGraphNode, AThrowingComparisonLeavesTheListAndTheStartNodeAsTheyWere) {
    for (int nThrowing = 1; nThrowing <= 5; ++nThrowing) {
        Arcs arcs{10, 20, 30, 40};
        NumberedArc newcomer(35);
        NumberedNode node(7);
        NumberedNode outer(9);
        arcs.AppendAllTo(node);
        KyGraphNode::s_pStartNode = &outer;
        int nAsked = 0;
        const OnCompare<NumberedArc> thrower([&](const NumberedArc&, const NumberedArc&) {
            if (++nAsked == nThrowing) throw std::runtime_error("no order");
        });

        EXPECT_THROW(node.AppendArc(&newcomer), std::runtime_error);

        EXPECT_EQ(KyGraphNode::s_pStartNode, &outer);
        KyGraphNode::s_pStartNode = nullptr;
        EXPECT_EQ(nAsked, nThrowing);
        EXPECT_THAT(NumbersOf(node.m_lstArc), ElementsAre(10, 20, 30, 40));
    }
}

TEST(KyGraphNode, AppendArcInsideAComparisonHandsTheStartNodeBackToTheOuterOne) {
    Arcs arcs{10, 20};
    Arcs inner{1, 2};
    NumberedNode node(7);
    NumberedNode nested(8);
    node.AppendArc(&arcs[0]);
    nested.AppendArc(&inner[0]);
    std::vector<std::pair<long, long>> around;  // the start node before and after the nested call
    const OnCompare<NumberedArc> nester([&](const NumberedArc& left, const NumberedArc&) {
        if (&left != &arcs[1]) return;
        const long nBefore = NumberOf(KyGraphNode::s_pStartNode);
        nested.AppendArc(&inner[1]);
        around.emplace_back(nBefore, NumberOf(KyGraphNode::s_pStartNode));
    });

    node.AppendArc(&arcs[1]);

    EXPECT_THAT(around, ElementsAre(std::pair(7L, 7L), std::pair(7L, 7L)));
    EXPECT_THAT(KyGraphNode::s_pStartNode, IsNull());
    EXPECT_THAT(NumbersOf(node.m_lstArc), ElementsAre(10, 20));
    EXPECT_THAT(NumbersOf(nested.m_lstArc), ElementsAre(1, 2));
}

TEST(KyGraphNode, AThrowInsideANestedAppendArcUnwindsBothStartNodes) {
    Arcs arcs{10, 20};
    Arcs inner{1, 2};
    NumberedNode node(7);
    NumberedNode nested(8);
    node.AppendArc(&arcs[0]);
    nested.AppendArc(&inner[0]);
    const OnCompare<NumberedArc> thrower([&](const NumberedArc& left, const NumberedArc&) {
        if (&left == &inner[1]) throw std::runtime_error("no order");
        nested.AppendArc(&inner[1]);
    });

    EXPECT_THROW(node.AppendArc(&arcs[1]), std::runtime_error);

    EXPECT_THAT(KyGraphNode::s_pStartNode, IsNull());
    EXPECT_THAT(NumbersOf(node.m_lstArc), ElementsAre(10));
}

// Removing --------------------------------------------------------------------------------------------------

TEST(KyGraphNode, RemoveArcTakesOffOneArcAndLeavesItsEnds) {
    for (std::size_t i = 0; i < 4; ++i) {
        NumberedNode node(1);
        NumberedNode far(2);
        Arcs arcs{10, 20, 30, 40};
        std::vector<long> rest;
        for (std::size_t j = 0; j < arcs.size(); ++j) {
            arcs[j].m_pStart = &node;
            arcs[j].m_pEnd = &far;
            arcs[j].Connect();
            if (j != i) rest.push_back(arcs[j].m_nNumber);
        }

        EXPECT_EQ(node.RemoveArc(&arcs[i]), 1);

        EXPECT_EQ(NumbersOf(node.m_lstArc), rest);
        EXPECT_THAT(NumbersOf(far.m_lstArc), ElementsAre(10, 20, 30, 40));
        EXPECT_EQ(arcs[i].m_pStart, &node);
        EXPECT_EQ(arcs[i].m_pEnd, &far);
        EXPECT_EQ(node.RemoveArc(&arcs[i]), 0);
    }
}

TEST(KyGraphNode, RemoveArcOfAnUnlistedArcChangesNothing) {
    Arcs arcs{10, 20};
    NumberedArc equal(20);
    NumberedNode node(1);
    arcs.AppendAllTo(node);

    EXPECT_EQ(node.RemoveArc(&equal), 0);
    EXPECT_EQ(node.RemoveArc(nullptr), 0);

    EXPECT_THAT(node.m_lstArc, ElementsAre(&arcs[0], &arcs[1]));
}

TEST(KyGraphNode, RemoveArcComparesNothing) {
    Arcs arcs{10, 20, 30};
    NumberedNode node(1);
    arcs.AppendAllTo(node);
    const ComparisonLog<NumberedArc> log;

    node.RemoveArc(&arcs[1]);

    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(KyGraphNode, RemoveArcDeletesNoArc) {
    const auto before = NumberedArc::s_live.size();
    NumberedArc arc(10);
    NumberedNode node(1);
    node.AppendArc(&arc);

    node.RemoveArc(&arc);

    EXPECT_EQ(NumberedArc::s_live.size(), before + 1);
    EXPECT_EQ(arc.m_nNumber, 10);
}

TEST(KyGraphNode, UnConnectForgetsTheNodeAtEveryEndAndKeepsTheOtherEnd) {
    NumberedNode node(1);
    NumberedNode far(2);
    NumberedArc out(10, &node, &far);
    NumberedArc in(20, &far, &node);
    NumberedArc loop(30, &node, &node);
    for (NumberedArc* pArc : {&out, &in, &loop}) {
        pArc->Connect();
    }

    node.UnConnect();

    const auto ends = [](const KyGraphArc& arc) { return std::tuple(arc.m_pStart, arc.m_pEnd); };
    KyGraphNode* const pNone = nullptr;
    KyGraphNode* const pFar = &far;
    EXPECT_EQ(ends(out), std::tuple(pNone, pFar));
    EXPECT_EQ(ends(in), std::tuple(pFar, pNone));
    EXPECT_EQ(ends(loop), std::tuple(pNone, pNone));
    EXPECT_THAT(node.m_lstArc, ElementsAre());
    EXPECT_THAT(NumbersOf(far.m_lstArc), ElementsAre(10, 20));
}

TEST(KyGraphNode, UnConnectLeavesTheEndsOfAnArcThatMerelyIsListed) {
    KyGraphNode start;
    KyGraphNode end;
    NumberedArc arc(10, &start, &end);
    NumberedNode node(1);
    node.AppendArc(&arc);

    node.UnConnect();

    EXPECT_EQ(arc.m_pStart, &start);
    EXPECT_EQ(arc.m_pEnd, &end);
    EXPECT_THAT(node.m_lstArc, ElementsAre());
}

TEST(KyGraphNode, CanListArcsAgainAfterUnConnect) {
    NumberedNode node(1);
    NumberedArc arc(10, &node);
    arc.Connect();
    node.UnConnect();

    arc.m_pEnd = &node;
    arc.Connect();

    EXPECT_THAT(node.m_lstArc, ElementsAre(&arc));
}

TEST(KyGraphNode, DestructionDetachesTheArcsAndDestroysNone) {
    NumberedNode far(2);
    auto pNode = std::make_unique<NumberedNode>(1);
    NumberedArc out(10, pNode.get(), &far);
    NumberedArc loop(20, pNode.get(), pNode.get());
    out.Connect();
    loop.Connect();

    pNode.reset();

    EXPECT_THAT(out.m_pStart, IsNull());
    EXPECT_EQ(out.m_pEnd, &far);
    EXPECT_THAT(loop.m_pStart, IsNull());
    EXPECT_THAT(loop.m_pEnd, IsNull());
    EXPECT_THAT(far.m_lstArc, ElementsAre(&out));
}

TEST(KyGraphNode, IsDestroyedThroughItsBase) {
    const auto before = NumberedNode::s_live.size();
    KyBitData* const pBits = new NumberedNode(1);

    delete pBits;

    EXPECT_EQ(NumberedNode::s_live.size(), before);
}

// Merging ---------------------------------------------------------------------------------------------------

TEST(KyGraphNode, ConbineTakesOverTheArcsInRotationalOrder) {
    NumberedNode far(3);
    NumberedNode node(1);
    NumberedNode other(2);
    NumberedArc a10(10, &node, &far);
    NumberedArc a20(20, &other, &far);
    NumberedArc a30(30, &far, &node);
    NumberedArc a40(40, &far, &other);
    NumberedArc a50(50, &other, &other);
    for (NumberedArc* pArc : {&a10, &a20, &a30, &a40, &a50}) {
        pArc->Connect();
    }

    node.Conbine(&other);

    EXPECT_THAT(NumbersOf(node.m_lstArc), ElementsAre(10, 20, 30, 40, 50));
    EXPECT_THAT(other.m_lstArc, ElementsAre());
    EXPECT_THAT(NumbersOf(far.m_lstArc), ElementsAre(10, 20, 30, 40));
    EXPECT_EQ(a20.m_pStart, &node);
    EXPECT_EQ(a20.m_pEnd, &far);
    EXPECT_EQ(a40.m_pStart, &far);
    EXPECT_EQ(a40.m_pEnd, &node);
    EXPECT_EQ(a50.m_pStart, &node);
    EXPECT_EQ(a50.m_pEnd, &node);
}

TEST(KyGraphNode, ConbineOffersTheOthersArcsInTheirOrderAroundThisNode) {
    Arcs own{20};
    Arcs taken{10, 30};
    NumberedNode node(7);
    NumberedNode other(8);
    own.AppendAllTo(node);
    taken.AppendAllTo(other);
    const ComparisonLog<NumberedArc> log;

    node.Conbine(&other);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Comparison{10, 20, 7},                           // first: in front
                            Comparison{30, 10, 7}, Comparison{30, 20, 7}));  // first, last: behind
}

TEST(KyGraphNode, ConbineRepointsAnArcBeforeItIsCompared) {
    NumberedNode node(1);
    NumberedNode other(2);
    NumberedArc own(10, &node, nullptr);
    NumberedArc taken(20, &other, &other);
    own.Connect();
    taken.Connect();
    std::vector<std::pair<KyGraphNode*, KyGraphNode*>> ends;
    const OnCompare<NumberedArc> watch(
        [&](const NumberedArc& left, const NumberedArc&) { ends.emplace_back(left.m_pStart, left.m_pEnd); });

    node.Conbine(&other);

    const std::pair<KyGraphNode*, KyGraphNode*> here(&node, &node);
    EXPECT_THAT(ends, ElementsAre(here, here));
}

TEST(KyGraphNode, ConbineRepointsAnArcThatItRefusesAsEqual) {
    NumberedNode far(3);
    NumberedNode node(1);
    NumberedNode other(2);
    NumberedArc own(10, &node, nullptr);
    NumberedArc refused(10, &other, &far);
    own.Connect();
    refused.Connect();

    node.Conbine(&other);

    EXPECT_THAT(node.m_lstArc, ElementsAre(&own));
    EXPECT_THAT(other.m_lstArc, ElementsAre());
    EXPECT_EQ(refused.m_pStart, &node);
    EXPECT_THAT(far.m_lstArc, ElementsAre(&refused));
}

TEST(KyGraphNode, ConbineTurnsTheArcsBetweenTheTwoNodesIntoLoops) {
    NumberedNode node(1);
    NumberedNode other(2);
    NumberedArc there(10, &node, &other);
    NumberedArc back(20, &other, &node);
    there.Connect();
    back.Connect();

    node.Conbine(&other);

    EXPECT_THAT(node.m_lstArc, ElementsAre(&there, &back));
    for (const NumberedArc* pArc : {&there, &back}) {
        EXPECT_EQ(pArc->m_pStart, &node);
        EXPECT_EQ(pArc->m_pEnd, &node);
    }
    KyDynArray<KyGraphArc*> out;
    KyDynArray<KyGraphArc*> in;
    node.GetArcOut(out);
    node.GetArcIn(in);
    EXPECT_THAT(out, ElementsAre(&there, &back));
    EXPECT_THAT(in, ElementsAre(&there, &back));
}

TEST(KyGraphNode, ConbineListsAnArcOfTheOtherNodeThatDoesNotEndThere) {
    KyGraphNode start;
    NumberedNode node(1);
    NumberedNode other(2);
    NumberedArc arc(10, &start, nullptr);
    other.AppendArc(&arc);

    node.Conbine(&other);

    EXPECT_THAT(node.m_lstArc, ElementsAre(&arc));
    EXPECT_EQ(arc.m_pStart, &start);
    EXPECT_THAT(arc.m_pEnd, IsNull());
    node.RemoveArc(&arc);
}

TEST(KyGraphNode, ConbineWithAnEmptyNodeChangesNothing) {
    Arcs arcs{10, 20};
    NumberedNode node(1);
    NumberedNode empty(2);
    arcs.AppendAllTo(node);

    node.Conbine(&empty);

    EXPECT_THAT(NumbersOf(node.m_lstArc), ElementsAre(10, 20));
    EXPECT_THAT(empty.m_lstArc, ElementsAre());
}

TEST(KyGraphNode, ConbineWithItselfChangesNothingAndComparesNothing) {
    NumberedNode node(1);
    NumberedNode far(2);
    NumberedArc a10(10, &node, &far);
    NumberedArc a20(20, &node, &node);
    a10.Connect();
    a20.Connect();
    const ComparisonLog<NumberedArc> log;

    node.Conbine(&node);

    EXPECT_THAT(node.m_lstArc, ElementsAre(&a10, &a20));
    EXPECT_EQ(a10.m_pStart, &node);
    EXPECT_EQ(a10.m_pEnd, &far);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(KyGraphNode, ConbineDeletesNeitherTheOtherNodeNorAnArc) {
    const auto nodes = NumberedNode::s_live.size();
    const auto arcs = NumberedArc::s_live.size();
    NumberedNode node(1);
    NumberedNode other(2);
    NumberedArc own(10, &node, nullptr);
    NumberedArc refused(10, &other, nullptr);
    own.Connect();
    refused.Connect();

    node.Conbine(&other);

    EXPECT_EQ(NumberedNode::s_live.size(), nodes + 2);
    EXPECT_EQ(NumberedArc::s_live.size(), arcs + 2);
}

TEST(KyGraphNode, AThrowAmidConbineLeavesEachArcAtOneOfTheTwoNodes) {
    NumberedNode far(3);
    NumberedNode node(1);
    NumberedNode other(2);
    NumberedArc own(15, &node, nullptr);
    NumberedArc a10(10, &other, &far);
    NumberedArc a20(20, &far, &other);
    NumberedArc a30(30, &other, &other);
    for (NumberedArc* pArc : {&own, &a10, &a20, &a30}) {
        pArc->Connect();
    }
    {
        const OnCompare<NumberedArc> thrower([&](const NumberedArc& left, const NumberedArc&) {
            if (&left == &a20) throw std::runtime_error("no order");
        });

        EXPECT_THROW(node.Conbine(&other), std::runtime_error);
    }

    EXPECT_THAT(KyGraphNode::s_pStartNode, IsNull());
    EXPECT_THAT(node.m_lstArc, ElementsAre(&a10, &own));
    EXPECT_THAT(other.m_lstArc, ElementsAre(&a20, &a30));
    EXPECT_EQ(a10.m_pStart, &node);
    EXPECT_EQ(a20.m_pStart, &far);
    EXPECT_EQ(a20.m_pEnd, &other);
    EXPECT_EQ(a30.m_pStart, &other);
    EXPECT_EQ(a30.m_pEnd, &other);

    node.Conbine(&other);

    EXPECT_THAT(node.m_lstArc, ElementsAre(&a10, &own, &a20, &a30));
    EXPECT_THAT(other.m_lstArc, ElementsAre());
}

// Turning around the node -----------------------------------------------------------------------------------

TEST(KyGraphNode, WithOneArcThereIsNoNextAndNoPreviousOne) {
    NumberedArc arc(10);
    NumberedNode node(1);
    node.AppendArc(&arc);

    EXPECT_THAT(node.FindNextArc(&arc), IsNull());
    EXPECT_THAT(node.FindPreArc(&arc), IsNull());
}

TEST(KyGraphNode, WithTwoArcsEachIsTheNextAndThePreviousOfTheOther) {
    Arcs arcs{10, 20};
    NumberedNode node(1);
    arcs.AppendAllTo(node);

    EXPECT_EQ(node.FindNextArc(&arcs[0]), &arcs[1]);
    EXPECT_EQ(node.FindNextArc(&arcs[1]), &arcs[0]);
    EXPECT_EQ(node.FindPreArc(&arcs[0]), &arcs[1]);
    EXPECT_EQ(node.FindPreArc(&arcs[1]), &arcs[0]);
}

TEST(KyGraphNode, TheLastArcIsFollowedByTheFirst) {
    Arcs arcs{10, 20, 30};
    NumberedNode node(1);
    arcs.AppendAllTo(node);

    EXPECT_EQ(node.FindNextArc(&arcs[0]), &arcs[1]);
    EXPECT_EQ(node.FindNextArc(&arcs[2]), &arcs[0]);
    EXPECT_EQ(node.FindPreArc(&arcs[0]), &arcs[2]);
    EXPECT_EQ(node.FindPreArc(&arcs[1]), &arcs[0]);
}

TEST(KyGraphNode, PreviousUndoesNextAtEveryArcOfAnyNode) {
    Arcs arcs{10, 20, 30, 40, 50, 60, 70};
    NumberedNode node(1);
    node.AppendArc(&arcs[0]);

    for (std::size_t n = 2; n <= arcs.size(); ++n) {
        node.AppendArc(&arcs[n - 1]);
        for (std::size_t i = 0; i < n; ++i) {
            EXPECT_EQ(node.FindNextArc(&arcs[i]), &arcs[(i + 1) % n]);
            EXPECT_EQ(node.FindPreArc(&arcs[i]), &arcs[(n + i - 1) % n]);
        }
    }
}

TEST(KyGraphNode, AnUnlistedArcHasNoNextAndNoPreviousOne) {
    Arcs arcs{10, 20, 30};
    NumberedArc equal(20);
    NumberedNode node(1);
    arcs.AppendAllTo(node);

    EXPECT_THAT(node.FindNextArc(&equal), IsNull());
    EXPECT_THAT(node.FindPreArc(&equal), IsNull());
    EXPECT_THAT(node.FindNextArc(nullptr), IsNull());
    EXPECT_THAT(node.FindPreArc(nullptr), IsNull());
}

TEST(KyGraphNode, TurningComparesNothing) {
    Arcs arcs{10, 20, 30};
    NumberedNode node(1);
    arcs.AppendAllTo(node);
    const ComparisonLog<NumberedArc> log;

    node.FindNextArc(&arcs[1]);
    node.FindPreArc(&arcs[1]);

    EXPECT_THAT(log.Lines(), IsEmpty());
}

// Reporting -------------------------------------------------------------------------------------------------

/// A node with two arcs out, one in and one loop.
struct Crossing {
    NumberedNode far{2};
    NumberedNode node{1};
    NumberedArc in{10, &far, &node};
    NumberedArc out{20, &node, &far};
    NumberedArc loop{30, &node, &node};
    NumberedArc dead{40, &node, nullptr};

    Crossing() {
        for (NumberedArc* pArc : {&dead, &loop, &out, &in}) {
            pArc->Connect();
        }
    }
};

TEST(KyGraphNode, GetArcOutAppendsTheArcsThatStartHereInRotationalOrder) {
    Crossing crossing;
    KyDynArray<KyGraphArc*> out;

    crossing.node.GetArcOut(out);

    EXPECT_THAT(out, ElementsAre(&crossing.out, &crossing.loop, &crossing.dead));
}

TEST(KyGraphNode, GetArcInAppendsTheArcsThatEndHereInRotationalOrder) {
    Crossing crossing;
    KyDList<KyGraphArc*> in;

    crossing.node.GetArcIn(in);

    EXPECT_THAT(in, ElementsAre(&crossing.in, &crossing.loop));
}

TEST(KyGraphNode, AListedArcThatNeitherStartsNorEndsHereIsNotReported) {
    NumberedNode far(2);
    NumberedArc arc(10, &far, &far);
    NumberedNode node(1);
    node.AppendArc(&arc);
    KyDynArray<KyGraphArc*> found;

    node.GetArcOut(found);
    node.GetArcIn(found);

    EXPECT_THAT(found, ElementsAre());
    node.RemoveArc(&arc);
}

/// Counts what reaches it through the virtual Append.
class AppendCounter : public KyList<KyGraphArc*> {
public:
    long Append(KyGraphArc* const& pArc) override {
        ++m_nAppended;
        return KyList<KyGraphArc*>::Append(pArc);
    }

    long m_nAppended = 0;
};

TEST(KyGraphNode, ReportsBehindWhatTheContainerHoldsThroughItsVirtualAppend) {
    Crossing crossing;
    NumberedArc held(1);
    AppendCounter found;
    found.Append(&held);

    crossing.node.GetArcOut(found);
    crossing.node.GetArcIn(found);

    EXPECT_THAT(NumbersOf(found), ElementsAre(1, 20, 30, 40, 10, 30));
    EXPECT_EQ(found.m_nAppended, 6);
}

// The default order -----------------------------------------------------------------------------------------

TEST(KyGraphNode, TheDefaultCmpNodeCountsNodesBetweenTheTwoAddresses) {
    const KyGraphNode nodes[4];

    EXPECT_EQ(nodes[3].CmpNode(nodes[1]), 2);
    EXPECT_EQ(nodes[0].CmpNode(nodes[3]), -3);
    EXPECT_EQ(nodes[2].CmpNode(nodes[2]), 0);
}

TEST(KyGraphNode, TheDefaultCmpNodeDividesTheDistanceBeforeItNarrowsIt) {
    const KyGraphNode node;
    constexpr long nApart = 100'000'003;  // nodes; more bytes than an int holds

    EXPECT_EQ(node.CmpNode(PlaceBehind(node, -nApart)), 100'000'003);
    EXPECT_EQ(node.CmpNode(PlaceBehind(node, nApart)), -100'000'003);
}

TEST(KyGraphNode, TheDefaultCmpNodeNarrowsToInt) {
    const KyGraphNode node;
    constexpr long nApart = (1L << 32) + 5;

    EXPECT_EQ(node.CmpNode(PlaceBehind(node, -nApart)), 5);
    EXPECT_EQ(node.CmpNode(PlaceBehind(node, nApart)), -5);
}

TEST(KyGraphNode, CmpForwardsToCmpNode) {
    const NumberedNode two(2);
    const NumberedNode five(5);

    EXPECT_EQ(two.Cmp(five), -3);
    EXPECT_EQ(five.Cmp(two), 3);
    EXPECT_EQ(two.Cmp(two), 0);
}

TEST(KyGraphNode, IsLessAndGreaterByCmpNode) {
    const NumberedNode two(2);
    const NumberedNode five(5);

    EXPECT_TRUE(two < five);
    EXPECT_FALSE(two > five);
    EXPECT_TRUE(five > two);
    EXPECT_FALSE(five < two);
    EXPECT_FALSE(two < two);
    EXPECT_FALSE(two > two);
}

}  // namespace
