// The checked build: each broken precondition is one line on standard error and a stop; what is defined,
// however odd, goes through. This program compiles the graph's sources itself, checked, whatever the library
// was built as.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "NumberedElements.h"

#if !defined(KY_CHECKED)
#error "this program tests the checked build"
#endif

namespace {

using testing::ElementsAre;
using testing::IsNull;
using testing::MatchesRegex;

/// The one line that a check in a file of the library writes.
auto LineFrom(const std::string& file, const std::string& message) {
    return MatchesRegex("VexaBase/" + file + ":[0-9]+: " + message + "\n");
}

/// A graph of the nodes 1, 2, 3 and the arcs 10, 20.
class Chain : public KyGraph {
public:
    Chain() {
        Create(new NumberedArc(10, new NumberedNode(1), new NumberedNode(2)));
        Create(new NumberedArc(20, new NumberedNode(2), new NumberedNode(3)));
    }
};

TEST(GraphChecksDeathTest, AppendArcRequiresAnArc) {
    Chain graph;
    KyGraphNode& node = **graph.m_lstNode.GetAt(1);

    EXPECT_DEATH(node.AppendArc(nullptr),
                 LineFrom("graph/KyGraphNode\\.cpp", "KyGraphNode::AppendArc: no arc \\(2 arcs listed\\)"));
}

TEST(GraphChecksDeathTest, ConbineRequiresANode) {
    Chain graph;
    KyGraphNode& node = **graph.m_lstNode.GetAt(1);

    EXPECT_DEATH(node.Conbine(nullptr),
                 LineFrom("graph/KyGraphNode\\.cpp", "KyGraphNode::Conbine: no node \\(2 arcs listed\\)"));
}

TEST(GraphChecksDeathTest, AGraphRequiresAStep) {
    EXPECT_DEATH(KyGraph(0), LineFrom("containers/KyXList\\.h", "KyXList::KyXList: no step \\(0\\)"));
    EXPECT_DEATH(KyGraph(-3), LineFrom("containers/KyXList\\.h", "KyXList::KyXList: no step \\(-3\\)"));
}

TEST(GraphChecksDeathTest, AddingANodeRequiresANode) {
    Chain graph;

    EXPECT_DEATH(graph << static_cast<KyGraphNode*>(nullptr),
                 LineFrom("graph/KyGraph\\.cpp", "KyGraph::operator<<: no node \\(3 nodes\\)"));
}

TEST(GraphChecksDeathTest, AddingAnArcRequiresAnArc) {
    Chain graph;

    EXPECT_DEATH(graph << static_cast<KyGraphArc*>(nullptr),
                 LineFrom("graph/KyGraph\\.cpp", "KyGraph::operator<<: no arc \\(2 arcs\\)"));
}

TEST(GraphChecksDeathTest, CreateRequiresAnArcWithBothEnds) {
    Chain graph;
    NumberedNode node(1);
    NumberedArc withoutStart(30, nullptr, &node);
    NumberedArc withoutEnd(30, &node, nullptr);
    const auto line =
        LineFrom("graph/KyGraph\\.cpp", "KyGraph::Create: no arc, or an arc without both ends \\(2 arcs\\)");

    EXPECT_DEATH(graph.Create(nullptr), line);
    EXPECT_DEATH(graph.Create(&withoutStart), line);
    EXPECT_DEATH(graph.Create(&withoutEnd), line);
}

TEST(GraphChecksDeathTest, CheckArcRequiresAnIndexOfAnArc) {
    Chain graph;
    KyGraph empty;
    const auto line = [](const std::string& values) {
        return LineFrom("graph/KyGraph\\.cpp", "KyGraph::CheckArc: index out of range \\(" + values + "\\)");
    };

    EXPECT_DEATH(graph.CheckArc(-1), line("index -1, 2 arcs"));
    EXPECT_DEATH(graph.CheckArc(2), line("index 2, 2 arcs"));
    EXPECT_DEATH(empty.CheckArc(0), line("index 0, 0 arcs"));
}

TEST(GraphChecksDeathTest, CheckNodeRequiresAnIndexOfANode) {
    Chain graph;
    KyGraph empty;
    const auto line = [](const std::string& values) {
        return LineFrom("graph/KyGraph\\.cpp", "KyGraph::CheckNode: index out of range \\(" + values + "\\)");
    };

    EXPECT_DEATH(graph.CheckNode(-1), line("index -1, 3 nodes"));
    EXPECT_DEATH(graph.CheckNode(3), line("index 3, 3 nodes"));
    EXPECT_DEATH(empty.CheckNode(0), line("index 0, 0 nodes"));
}

TEST(GraphChecksDeathTest, FindMeshRequiresAWalkThatEnds) {
    NumberedNode x(1);
    NumberedNode y(2);
    NumberedNode z(3);
    NumberedArc lead(10, &x, &y);
    NumberedArc there(20, &y, &z);
    NumberedArc back(30, &z, &y);
    for (KyGraphArc* const pArc : std::initializer_list<KyGraphArc*>{&lead, &there, &back, &there}) {
        y.m_lstArc.Append(pArc);
    }
    z.AppendArc(&there);
    z.AppendArc(&back);
    const auto line = LineFrom("graph/KyGraphArc\\.cpp",
                               "KyGraphArc::FindMesh: a walk without end \\([0-9]+ arcs passed\\)");

    EXPECT_DEATH(lead.FindMesh(KyGraphArc::Forward), line);

    y.RemoveArc(&there);
}

// Defined, however odd

TEST(GraphChecks, LetNodesBeAskedForArcsThatTheyDoNotList) {
    KyGraphNode node;
    KyGraphArc arc;

    EXPECT_EQ(node.RemoveArc(&arc), 0);
    EXPECT_EQ(node.RemoveArc(nullptr), 0);
    EXPECT_THAT(node.FindNextArc(&arc), IsNull());
    EXPECT_THAT(node.FindPreArc(nullptr), IsNull());
    node.Conbine(&node);
    node.UnConnect();
}

TEST(GraphChecks, LetArcsHaveNoEnds) {
    KyGraph graph;
    auto* const pArc = new NumberedArc(10);

    EXPECT_EQ(graph << pArc, 0);
    EXPECT_EQ(graph.CheckArc(0), 0);
    delete pArc->FindMesh(KyGraphArc::Backward);
    pArc->Connect();
    pArc->UnConnect();
}

TEST(GraphChecks, LetEmptyGraphsBeSearchedAndDissolved) {
    KyGraph graph;

    EXPECT_EQ(graph.Find(NumberedNode(1)), -1);
    EXPECT_EQ(graph.Find(NumberedArc(1)), -1);
    graph.UnConnect();
}

TEST(GraphChecks, LetEveryStateOfAGraphThrough) {
    Chain graph;

    graph.Create(new NumberedArc(10, new NumberedNode(3), new NumberedNode(4)));
    graph.Create(new NumberedArc(30, *graph.m_lstNode.GetFirst(), *graph.m_lstNode.GetFirst()));
    for (long i = 0; i < graph.m_lstArc.GetLength(); ++i) {
        EXPECT_EQ(graph.CheckArc(i), i);
    }
    for (long i = 0; i < graph.m_lstNode.GetLength(); ++i) {
        EXPECT_EQ(graph.CheckNode(i), i);
    }
    static_cast<NumberedNode*>(*graph.m_lstNode.GetFirst())->m_nNumber = 3;

    EXPECT_EQ(graph.CheckNode(0), 1);
    EXPECT_THAT(NodesOf(graph), ElementsAre("2: 10 20", "3: 10 20 30", "4:"));
    graph.UnConnect();
    EXPECT_EQ(graph.CheckNode(1), 1);
}

}  // namespace
