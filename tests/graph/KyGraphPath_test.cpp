#include "VexaBase/graph/KyGraphPath.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "NumberedElements.h"
#include "PlaneElements.h"

namespace {

using testing::ElementsAre;
using testing::IsNull;

using Path = std::unique_ptr<KyGraphPath>;

// The path itself -------------------------------------------------------------------------------------------

TEST(KyGraphPath, StartsEmptyAndBeginsNowhere) {
    const KyGraphPath path;

    EXPECT_THAT(path, ElementsAre());
    EXPECT_THAT(path.m_pBeginNode, IsNull());
    EXPECT_EQ(path.m_nCurIndex, -1);
}

TEST(KyGraphPath, DestructionLeavesTheArcs) {
    const auto arcs = NumberedArc::s_live.size();
    NumberedArc arc(10);
    KyDList<KyGraphArc*>* const pPath = new KyGraphPath;
    pPath->Append(&arc);

    delete pPath;

    EXPECT_EQ(NumberedArc::s_live.size(), arcs + 1);
    EXPECT_EQ(arc.m_nNumber, 10);
}

TEST(KyGraphPath, HasTheOperationsOfItsList) {
    NumberedArc arcs[]{NumberedArc(10), NumberedArc(20), NumberedArc(30)};
    KyGraphPath path;
    for (NumberedArc& arc : arcs) {
        path.Append(&arc);
    }

    path.Rotate(1, 0);

    EXPECT_THAT(NumbersOf(path), ElementsAre(20, 30, 10));
    path.ReverseList();
    EXPECT_THAT(NumbersOf(path), ElementsAre(10, 30, 20));
}

// A single arc ----------------------------------------------------------------------------------------------

TEST(FindMesh, OfASingleArcIsTheArcAndBeginsAtTheNearNode) {
    NumberedNode x(1);
    NumberedNode y(2);
    NumberedArc arc(10, &x, &y);
    arc.Connect();

    const Path forward(arc.FindMesh(KyGraphArc::Forward));
    const Path backward(arc.FindMesh(KyGraphArc::Backward));

    EXPECT_THAT(*forward, ElementsAre(&arc));
    EXPECT_EQ(forward->m_pBeginNode, &x);
    EXPECT_THAT(*backward, ElementsAre(&arc));
    EXPECT_EQ(backward->m_pBeginNode, &y);
}

TEST(FindMesh, TreatsEveryDirectionButZeroAlike) {
    NumberedNode x(1);
    NumberedNode y(2);
    NumberedArc arc(10, &x, &y);
    arc.Connect();

    for (const int nDir : {1, 2, -1, 1000000}) {
        EXPECT_EQ(Path(arc.FindMesh(nDir))->m_pBeginNode, &y);
    }
}

TEST(FindMesh, OfAnUnlistedArcIsTheArc) {
    NumberedNode x(1);
    NumberedNode y(2);
    NumberedArc a(10, &x, &y);
    NumberedArc b(20, &x, &y);
    NumberedArc unlisted(30, &x, &y);
    a.Connect();
    b.Connect();

    const Path path(unlisted.FindMesh(KyGraphArc::Forward));

    EXPECT_THAT(*path, ElementsAre(&unlisted));
    EXPECT_EQ(path->m_pBeginNode, &x);
}

TEST(FindMesh, OfAnArcWithoutEndsIsTheArcAndBeginsNowhere) {
    NumberedArc arc(10);

    const Path forward(arc.FindMesh(KyGraphArc::Forward));
    const Path backward(arc.FindMesh(KyGraphArc::Backward));

    EXPECT_THAT(*forward, ElementsAre(&arc));
    EXPECT_THAT(forward->m_pBeginNode, IsNull());
    EXPECT_THAT(*backward, ElementsAre(&arc));
    EXPECT_THAT(backward->m_pBeginNode, IsNull());
}

TEST(FindMesh, TakesANullEndForADeadEnd) {
    NumberedNode x(1);
    NumberedNode y(2);
    NumberedArc a(10, nullptr, &x);
    NumberedArc b(20, &x, &y);
    NumberedArc c(30, &y, nullptr);
    for (NumberedArc* pArc : {&a, &b, &c}) {
        pArc->Connect();
    }

    const Path fromTheMiddle(b.FindMesh(KyGraphArc::Forward));
    const Path fromTheDeadEnd(a.FindMesh(KyGraphArc::Forward));
    const Path intoTheDeadEnd(a.FindMesh(KyGraphArc::Backward));

    EXPECT_THAT(*fromTheMiddle, ElementsAre(&a, &b, &c));
    EXPECT_THAT(fromTheMiddle->m_pBeginNode, IsNull());
    EXPECT_THAT(*fromTheDeadEnd, ElementsAre(&a, &b, &c));
    EXPECT_THAT(fromTheDeadEnd->m_pBeginNode, IsNull());
    EXPECT_THAT(*intoTheDeadEnd, ElementsAre(&c, &b, &a));
    EXPECT_THAT(intoTheDeadEnd->m_pBeginNode, IsNull());
}

// Chains ----------------------------------------------------------------------------------------------------

TEST(FindMesh, OfAChainIsTheWholeChainFromAnyOfItsArcsInEitherDirection) {
    NumberedNode nodes[]{NumberedNode(1), NumberedNode(2), NumberedNode(3), NumberedNode(4)};
    NumberedArc a(10, &nodes[0], &nodes[1]);
    NumberedArc b(20, &nodes[2], &nodes[1]);  // against the chain's direction
    NumberedArc c(30, &nodes[2], &nodes[3]);
    for (NumberedArc* pArc : {&a, &b, &c}) {
        pArc->Connect();
    }

    for (const auto& [pArc, nDir] : {std::pair(&a, 0), std::pair(&b, 1), std::pair(&c, 0)}) {
        const Path path(pArc->FindMesh(nDir));

        EXPECT_THAT(*path, ElementsAre(&a, &b, &c));
        EXPECT_EQ(path->m_pBeginNode, &nodes[0]);
    }
    for (const auto& [pArc, nDir] : {std::pair(&a, 1), std::pair(&b, 0), std::pair(&c, 1)}) {
        const Path path(pArc->FindMesh(nDir));

        EXPECT_THAT(*path, ElementsAre(&c, &b, &a));
        EXPECT_EQ(path->m_pBeginNode, &nodes[3]);
    }
}

TEST(FindMesh, OfAChainOfTwoBeginsAtItsNearEnd) {
    NumberedNode x(1);
    NumberedNode y(2);
    NumberedNode z(3);
    NumberedArc first(10, &x, &y);
    NumberedArc second(20, &y, &z);
    first.Connect();
    second.Connect();

    const Path path(first.FindMesh(KyGraphArc::Forward));

    EXPECT_THAT(*path, ElementsAre(&first, &second));
    EXPECT_EQ(path->m_pBeginNode, &x);
}

TEST(FindMesh, WalksOutOfADeadEndAroundTheFork) {
    // Three arms of a star: from arm to arm in rotational order, and the dead end behind each.
    NumberedNode centre(0);
    NumberedNode tips[]{NumberedNode(1), NumberedNode(2), NumberedNode(3)};
    NumberedArc a(10, &centre, &tips[0]);
    NumberedArc b(20, &centre, &tips[1]);
    NumberedArc c(30, &centre, &tips[2]);
    for (NumberedArc* pArc : {&a, &b, &c}) {
        pArc->Connect();
    }

    const Path outwards(a.FindMesh(KyGraphArc::Forward));
    const Path inwards(a.FindMesh(KyGraphArc::Backward));

    EXPECT_THAT(*outwards, ElementsAre(&c, &a));
    EXPECT_EQ(outwards->m_pBeginNode, &tips[2]);
    EXPECT_THAT(*inwards, ElementsAre(&a, &b));
    EXPECT_EQ(inwards->m_pBeginNode, &tips[0]);
}

TEST(FindMesh, TurnsAroundALoopInADeadEnd) {
    NumberedNode x(1);
    NumberedNode tip(2);
    NumberedArc loop(10, &x, &x);
    NumberedArc arm(20, &x, &tip);
    loop.Connect();
    arm.Connect();

    const Path path(loop.FindMesh(KyGraphArc::Forward));

    EXPECT_THAT(*path, ElementsAre(&arm, &loop, &arm));
    EXPECT_EQ(path->m_pBeginNode, &tip);
}

TEST(FindMesh, OfALoopAloneIsTheLoop) {
    NumberedNode x(1);
    NumberedArc loop(10, &x, &x);
    loop.Connect();

    const Path path(loop.FindMesh(KyGraphArc::Forward));

    EXPECT_THAT(*path, ElementsAre(&loop));
    EXPECT_EQ(path->m_pBeginNode, &x);
}

TEST(FindMesh, OfTwoLoopsAtOneNodeIsClosed) {
    NumberedNode x(1);
    NumberedArc one(10, &x, &x);
    NumberedArc two(20, &x, &x);
    one.Connect();
    two.Connect();

    const Path path(two.FindMesh(KyGraphArc::Backward));

    EXPECT_THAT(*path, ElementsAre(&two, &one));
    EXPECT_EQ(path->m_pBeginNode, &x);
}

// Faces -----------------------------------------------------------------------------------------------------

TEST(FindMesh, OfATriangleIsItsThreeArcsEitherWayRound) {
    NumberedNode x(1);
    NumberedNode y(2);
    NumberedNode z(3);
    NumberedArc a(10, &x, &y);
    NumberedArc b(20, &y, &z);
    NumberedArc c(30, &z, &x);
    for (NumberedArc* pArc : {&a, &b, &c}) {
        pArc->Connect();
    }

    const Path forward(a.FindMesh(KyGraphArc::Forward));
    const Path backward(a.FindMesh(KyGraphArc::Backward));

    EXPECT_THAT(*forward, ElementsAre(&a, &b, &c));
    EXPECT_EQ(forward->m_pBeginNode, &x);
    EXPECT_THAT(*backward, ElementsAre(&a, &c, &b));
    EXPECT_EQ(backward->m_pBeginNode, &y);
}

TEST(FindMesh, OfTwoParallelArcsIsTheLensBetweenThem) {
    NumberedNode x(1);
    NumberedNode y(2);
    NumberedArc a(10, &x, &y);
    NumberedArc b(20, &x, &y);
    a.Connect();
    b.Connect();

    const Path forward(a.FindMesh(KyGraphArc::Forward));
    const Path backward(a.FindMesh(KyGraphArc::Backward));

    EXPECT_THAT(*forward, ElementsAre(&a, &b));
    EXPECT_EQ(forward->m_pBeginNode, &x);
    EXPECT_THAT(*backward, ElementsAre(&a, &b));
    EXPECT_EQ(backward->m_pBeginNode, &y);
}

/// A drawing on the grid: arcs by their end points, connected and found again by them.
class Drawing {
public:
    void Draw(const Point& from, const Point& to, long nStrand = 0) {
        m_graph.Create(new PlaneArc(new PlaneNode(from), new PlaneNode(to), nStrand));
    }

    PlaneArc& Arc(const Point& from, const Point& to, long nStrand = 0) {
        PlaneNode a(from);
        PlaneNode b(to);
        return static_cast<PlaneArc&>(**m_graph.m_lstArc.GetAt(m_graph.Find(PlaneArc(&a, &b, nStrand))));
    }

    /// The points that a walk passes, the begin node first, ended by the point where it stops.
    std::vector<Point> Walk(const Point& from, const Point& to, long nStrand = 0) {
        PlaneArc& arc = Arc(from, to, nStrand);
        const bool bForward = PointOf(arc.m_pStart) == from;
        const Path path(arc.FindMesh(bForward ? KyGraphArc::Forward : KyGraphArc::Backward));
        const KyGraphNode* pNode = path->m_pBeginNode;
        std::vector<Point> points{PointOf(pNode)};
        for (const KyGraphArc* pArc : *path) {
            pNode = pArc->m_pStart == pNode ? pArc->m_pEnd : pArc->m_pStart;
            points.push_back(PointOf(pNode));
        }
        return points;
    }

    KyGraph m_graph;

private:
    static Point PointOf(const KyGraphNode* pNode) { return static_cast<const PlaneNode*>(pNode)->m_at; }
};

TEST(FindMesh, TracesTheFaceOnTheRightOfAnArcWhoseDirectionsAscendCounterClockwise) {
    Drawing square;  // with one diagonal
    square.Draw({0, 0}, {2, 0});
    square.Draw({2, 0}, {2, 2});
    square.Draw({2, 2}, {0, 2});
    square.Draw({0, 2}, {0, 0});
    square.Draw({0, 0}, {2, 2});
    using P = Point;

    EXPECT_THAT(square.Walk({0, 0}, {2, 2}), ElementsAre(P{0, 0}, P{2, 2}, P{2, 0}, P{0, 0}));
    EXPECT_THAT(square.Walk({2, 2}, {0, 0}), ElementsAre(P{2, 2}, P{0, 0}, P{0, 2}, P{2, 2}));
    EXPECT_THAT(square.Walk({0, 0}, {2, 0}), ElementsAre(P{0, 0}, P{2, 0}, P{2, 2}, P{0, 2}, P{0, 0}));
}

TEST(FindMesh, TellsTheStrandsBetweenTwoNodesApart) {
    Drawing strands;
    for (const long nStrand : {1, 2, 3}) {
        strands.Draw({0, 0}, {4, 0}, nStrand);
    }
    const auto facing = [&](long nStrand, int nDir) {
        PlaneArc& arc = strands.Arc({0, 0}, {4, 0}, nStrand);
        const Path path(arc.FindMesh(nDir));
        std::vector<long> walk;
        for (const KyGraphArc* pArc : *path) {
            walk.push_back(static_cast<const PlaneArc*>(pArc)->m_nStrand);
        }
        return walk;
    };

    EXPECT_THAT(facing(2, KyGraphArc::Forward), ElementsAre(2, 1));
    EXPECT_THAT(facing(2, KyGraphArc::Backward), ElementsAre(2, 3));
    EXPECT_THAT(facing(1, KyGraphArc::Forward), ElementsAre(1, 3));
}

/// Two triangles, and the bridge from (0, 0) to (4, 0) between them.
class Dumbbell : public Drawing {
public:
    Dumbbell() {
        Draw({0, 0}, {-2, 1});
        Draw({-2, 1}, {-2, -1});
        Draw({-2, -1}, {0, 0});
        Draw({0, 0}, {4, 0});
        Draw({4, 0}, {6, 1});
        Draw({6, 1}, {6, -1});
        Draw({6, -1}, {4, 0});
    }
};

TEST(FindMesh, FromABridgeStopsWhenItComesBackToTheBridgeFromTheOtherSide) {
    Dumbbell dumbbell;
    using P = Point;

    EXPECT_THAT(dumbbell.Walk({0, 0}, {4, 0}), ElementsAre(P{0, 0}, P{4, 0}, P{6, -1}, P{6, 1}, P{4, 0}));
    EXPECT_THAT(dumbbell.Walk({4, 0}, {0, 0}), ElementsAre(P{4, 0}, P{0, 0}, P{-2, 1}, P{-2, -1}, P{0, 0}));
}

TEST(FindMesh, PassesABridgeOnItsWayTwice) {
    Dumbbell dumbbell;
    using P = Point;

    EXPECT_THAT(dumbbell.Walk({-2, -1}, {0, 0}), ElementsAre(P{-2, -1}, P{0, 0}, P{4, 0}, P{6, -1}, P{6, 1},
                                                             P{4, 0}, P{0, 0}, P{-2, 1}, P{-2, -1}));
}

TEST(FindMesh, OfAFaceWithADeadEndInsideIsTheOpenChainBetweenTheDeadEnds) {
    Drawing triangle;
    triangle.Draw({0, 0}, {4, 8});
    triangle.Draw({4, 8}, {8, 0});
    triangle.Draw({8, 0}, {0, 0});
    triangle.Draw({0, 0}, {4, 2});  // into the face, and ends there
    using P = Point;

    EXPECT_THAT(triangle.Walk({4, 8}, {8, 0}),
                ElementsAre(P{4, 2}, P{0, 0}, P{4, 8}, P{8, 0}, P{0, 0}, P{4, 2}));
    EXPECT_THAT(triangle.Walk({8, 0}, {4, 8}), ElementsAre(P{8, 0}, P{4, 8}, P{0, 0}, P{8, 0}));
}

// What a walk leaves behind ---------------------------------------------------------------------------------

TEST(FindMesh, ChangesNothingInTheGraphAndComparesNothing) {
    KyGraph graph;
    for (const auto& [nArc, nStart, nEnd] :
         {std::tuple(10, 1, 2), std::tuple(20, 2, 3), std::tuple(30, 3, 1)}) {
        graph.Create(new NumberedArc(nArc, new NumberedNode(nStart), new NumberedNode(nEnd)));
    }
    const std::vector<std::string> nodes = NodesOf(graph);
    const std::vector<std::string> arcs = ArcsOf(graph);
    const ComparisonLog<NumberedArc> log;

    for (KyGraphArc* pArc : graph.m_lstArc) {
        delete pArc->FindMesh(KyGraphArc::Forward);
        delete pArc->FindMesh(KyGraphArc::Backward);
    }

    EXPECT_EQ(NodesOf(graph), nodes);
    EXPECT_EQ(ArcsOf(graph), arcs);
    EXPECT_TRUE(log.Lines().empty());
}

TEST(FindMesh, ReturnsAPathThatOutlivesTheArcsAsLongAsItIsNotRead) {
    Path path;
    {
        NumberedNode x(1);
        NumberedArc arc(10, &x, nullptr);
        arc.Connect();
        path.reset(arc.FindMesh(KyGraphArc::Forward));
    }

    EXPECT_EQ(path->GetLength(), 1);
}

}  // namespace
