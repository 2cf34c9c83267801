// All faces of a graph: each side of each arc on one of them, whatever dead ends, bridges and loops there are.

#include "VexaBase/graph/KyGraphFaces.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "NumberedElements.h"
#include "PlaneElements.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// An arc by its number, and the direction it is passed in.
using Side = std::pair<int, int>;
using Faces = std::vector<std::vector<Side>>;

constexpr int F = KyGraphArc::Forward;
constexpr int B = KyGraphArc::Backward;

std::vector<Side> SidesOf(const KyGraphPath& path) {
    std::vector<Side> sides;
    KyForEachSide(path, [&](const KyGraphArc& arc, int nDir) {
        sides.emplace_back(static_cast<const PlaneArc&>(arc).m_nId, nDir);
    });
    return sides;
}

Faces FacesOf(const KyGraph& graph) {
    Faces faces;
    KyForEachFace(graph,
                  [&](const std::unique_ptr<KyGraphPath>& pFace) { faces.push_back(SidesOf(*pFace)); });
    return faces;
}

/// Adds an arc; its number is how many there were before.
KyGraphArc* AddArc(KyGraph& graph, Point from, Point to, long nStrand = 0) {
    auto* pArc = new PlaneArc(new PlaneNode(from), new PlaneNode(to), nStrand,
                              static_cast<int>(graph.m_lstArc.GetLength()));
    graph.Create(pArc);
    return pArc;
}

TEST(KyGraphFaces, AGraphWithoutArcsHasNone) {
    KyGraph graph;
    graph << new PlaneNode({0, 0});

    EXPECT_THAT(FacesOf(graph), IsEmpty());
}

TEST(KyGraphFaces, ATriangleHasAnInsideAndAnOutside) {
    KyGraph graph;
    AddArc(graph, {0, 0}, {1, 1});
    AddArc(graph, {0, 0}, {2, 0});
    AddArc(graph, {1, 1}, {2, 0});

    // These arcs stand counter-clockwise around their nodes: faces lie to the right.
    EXPECT_THAT(FacesOf(graph), ElementsAre(ElementsAre(Side(0, F), Side(2, F), Side(1, B)),
                                            ElementsAre(Side(0, B), Side(1, F), Side(2, B))));
}

TEST(KyGraphFaces, APathBeginsAtTheNodeThatItsFirstArcIsLeftFrom) {
    KyGraph graph;
    const KyGraphArc* const pFirst = AddArc(graph, {0, 0}, {1, 1});
    AddArc(graph, {0, 0}, {2, 0});
    AddArc(graph, {1, 1}, {2, 0});

    std::vector<const KyGraphNode*> begins;
    KyForEachFace(graph,
                  [&](const std::unique_ptr<KyGraphPath>& pFace) { begins.push_back(pFace->m_pBeginNode); });

    EXPECT_THAT(begins, ElementsAre(pFirst->m_pStart, pFirst->m_pEnd));
}

TEST(KyGraphFaces, ALoneArcIsGoneAlongOnBothSides) {
    KyGraph graph;
    AddArc(graph, {0, 0}, {1, 0});

    EXPECT_THAT(FacesOf(graph), ElementsAre(ElementsAre(Side(0, F), Side(0, B))));
}

TEST(KyGraphFaces, ADeadEndStandsTwiceInTheFaceItIsIn) {
    KyGraph graph;
    AddArc(graph, {0, 0}, {1, 3});
    AddArc(graph, {0, 0}, {2, 0});
    AddArc(graph, {1, 3}, {2, 0});
    AddArc(graph, {1, 1}, {1, 3});

    EXPECT_THAT(FacesOf(graph),
                ElementsAre(ElementsAre(Side(0, F), Side(3, B), Side(3, F), Side(2, F), Side(1, B)),
                            ElementsAre(Side(0, B), Side(1, F), Side(2, B))));
}

TEST(KyGraphFaces, ABridgeIsPassedInBothDirectionsByOneFace) {
    KyGraph graph;
    for (const long x : {0L, 10L}) {
        AddArc(graph, {x, 0}, {x + 2, 0});
        AddArc(graph, {x, 0}, {x + 1, 1});
        AddArc(graph, {x + 1, 1}, {x + 2, 0});
    }
    const auto* const pBridge = static_cast<PlaneArc*>(AddArc(graph, {2, 0}, {10, 0}));

    int nWithBridge = 0;
    for (const std::vector<Side>& face : FacesOf(graph)) {
        const auto nForward = std::count(face.begin(), face.end(), Side(pBridge->m_nId, F));
        const auto nBackward = std::count(face.begin(), face.end(), Side(pBridge->m_nId, B));
        EXPECT_EQ(nForward, nBackward);
        if (nForward == 0) continue;
        ++nWithBridge;
        EXPECT_EQ(nForward, 1);
        EXPECT_EQ(face.size(), 8U);
    }
    EXPECT_EQ(nWithBridge, 1);
}

/// An arc with a place of its own around each of its nodes, so that arcs can turn as they do on no plane.
class PlacedArc : public PlaneArc {
public:
    PlacedArc(KyGraphNode* pStart, KyGraphNode* pEnd, int nAtStart, int nAtEnd, int nId)
        : PlaneArc(pStart, pEnd, 0, nId), m_nAtStart(nAtStart), m_nAtEnd(nAtEnd) {}

    int CmpArc(const KyGraphArc& other) const override {
        return Order(Place(), static_cast<const PlacedArc&>(other).Place());
    }

private:
    int Place() const {
        const KyGraphNode* const pAround = KyGraphNode::s_pStartNode;
        return pAround == nullptr ? m_nId : pAround == m_pStart ? m_nAtStart : m_nAtEnd;
    }

    int m_nAtStart;
    int m_nAtEnd;
};

TEST(KyGraphFaces, AnArcThatStandsBehindItsNeighbourAtBothEndsIsMetAtTheFarOneFirst) {
    KyGraph graph;
    const auto add = [&](int nAtStart, int nAtEnd, int nId) {
        graph.Create(new PlacedArc(new PlaneNode({0, 0}), new PlaneNode({1, 0}), nAtStart, nAtEnd, nId));
    };
    add(2, 2, 0);
    add(1, 1, 1);
    add(3, 3, 2);

    // Each step goes on to the next place at either end: one face, which passes every arc in both directions.
    EXPECT_THAT(FacesOf(graph), ElementsAre(ElementsAre(Side(0, F), Side(2, B), Side(1, F), Side(0, B),
                                                        Side(2, F), Side(1, B))));
}

TEST(KyGraphFaces, ALoopHasOneSide) {
    KyGraph lone;
    AddArc(lone, {0, 0}, {0, 0});
    EXPECT_THAT(FacesOf(lone), ElementsAre(ElementsAre(Side(0, F))));

    KyGraph graph;
    AddArc(graph, {0, 0}, {0, 0});
    AddArc(graph, {0, 0}, {1, 0});
    EXPECT_THAT(FacesOf(graph), ElementsAre(ElementsAre(Side(0, F), Side(1, F), Side(1, B))));
}

TEST(KyGraphFaces, AnArcThatLostItsNodesIsOnNone) {
    KyGraph graph;
    AddArc(graph, {0, 0}, {1, 0});
    (*graph.m_lstArc.GetFirst())->UnConnect();

    EXPECT_THAT(FacesOf(graph), IsEmpty());
}

TEST(KyGraphFaces, AnArcThatLostOneNodeEndsThere) {
    KyGraph graph;
    const KyGraphArc* const pArc = AddArc(graph, {0, 0}, {1, 0});
    pArc->m_pEnd->UnConnect();

    EXPECT_THAT(FacesOf(graph), ElementsAre(ElementsAre(Side(0, F), Side(0, B))));
}

TEST(KyGraphFaces, FromALostNodeAFaceGoesAroundByTheOtherEndAndComesBack) {
    KyGraph graph;
    AddArc(graph, {0, 0}, {1, 1});
    AddArc(graph, {0, 0}, {0, 2});
    AddArc(graph, {1, 1}, {0, 2});
    KyGraphArc* const pTail = AddArc(graph, {1, 0}, {0, 0});
    pTail->m_pStart->UnConnect();

    const auto pFace = KyTraceFace(*pTail, nullptr);

    EXPECT_THAT(SidesOf(*pFace), ElementsAre(Side(3, F), Side(0, F), Side(2, F), Side(1, B), Side(3, B)));
    EXPECT_EQ(pFace->m_pBeginNode, nullptr);
}

TEST(KyGraphFaces, FromALostNodeToALostNodeAFaceGoesThereAndBack) {
    KyGraph graph;
    KyGraphArc* const pTail = AddArc(graph, {0, 0}, {1, 0});
    AddArc(graph, {1, 0}, {2, 0});
    const KyGraphArc* const pHead = AddArc(graph, {2, 0}, {3, 0});
    pTail->m_pStart->UnConnect();
    pHead->m_pEnd->UnConnect();

    const auto pFace = KyTraceFace(*pTail, nullptr);

    EXPECT_THAT(SidesOf(*pFace),
                ElementsAre(Side(0, F), Side(1, F), Side(2, F), Side(2, B), Side(1, B), Side(0, B)));
    EXPECT_EQ(pFace->m_pBeginNode, nullptr);
}

TEST(KyGraphFaces, AFaceThatMeetsItsArcAtTheFarEndAlongAnotherOfTheSameNodesGoesOn) {
    for (const bool bTurned : {false, true}) {
        // Around both nodes the arcs stand in the order of their numbers, which no plane has.
        NumberedNode near(1), far(2), third(3);
        NumberedArc other(10, bTurned ? &near : &far, bTurned ? &far : &near);
        NumberedArc arc(20, &near, &far);
        NumberedArc back(30, &third, &near);
        NumberedArc on(40, &far, &third);
        for (NumberedArc* p : {&other, &arc, &back, &on}) {
            p->Connect();
        }

        const auto pFace = KyTraceFace(arc, &near);

        EXPECT_THAT(NumbersOf(*pFace), ElementsAre(20, 40, 30, 10, 20, 30, 40, 10));
    }
}

TEST(KyGraphFaces, ThePathsAreTheVisitorsToKeep) {
    std::vector<std::unique_ptr<KyGraphPath>> paths;
    {
        KyGraph graph;
        AddArc(graph, {0, 0}, {1, 0});
        KyForEachFace(graph, [&](std::unique_ptr<KyGraphPath> pFace) { paths.push_back(std::move(pFace)); });
    }

    EXPECT_EQ(paths.at(0)->GetLength(), 2);
}

TEST(KyGraphFaces, NoFaceBeginsWhereTheCallerSaysPassed) {
    KyGraph graph;
    AddArc(graph, {0, 0}, {2, 0});
    AddArc(graph, {0, 0}, {1, 1});
    AddArc(graph, {1, 1}, {2, 0});
    std::vector<Side> asked;
    Faces faces;

    KyForEachFace(
        graph.m_lstArc,
        [&](const KyGraphArc& arc, int nDir) {
            asked.emplace_back(static_cast<const PlaneArc&>(arc).m_nId, nDir);
            return asked.back() != Side(2, F);
        },
        [&](const std::unique_ptr<KyGraphPath>& pFace) { faces.push_back(SidesOf(*pFace)); });

    EXPECT_THAT(asked, testing::UnorderedElementsAre(Side(0, F), Side(0, B), Side(1, F), Side(1, B),
                                                     Side(2, F), Side(2, B)));
    EXPECT_THAT(faces, ElementsAre(ElementsAre(Side(2, F), Side(0, B), Side(1, F))));
}

// Random graphs ---------------------------------------------------------------------------------------------

/// Arcs, loops and strands beside each other among a few points: planar or not, turning is a permutation.
void BuildAnything(KyGraph& graph) {
    const long nArcs = *rc::gen::resize(100, rc::gen::inRange(0L, 30L));
    const auto coordinate = rc::gen::resize(100, rc::gen::inRange(0L, 3L));
    const auto point = rc::gen::construct<Point>(coordinate, coordinate);
    while (graph.m_lstArc.GetLength() < nArcs) {
        const Point from = *point;
        const Point to = *point;
        AddArc(graph, from, to, graph.m_lstArc.GetLength());
    }
    for (KyGraphArc* pArc : graph.m_lstArc) {
        if (*rc::gen::resize(100, rc::gen::inRange(0, 20)) == 0) pArc->UnConnect();
    }
}

RC_GTEST_PROP(KyGraphFaces, EverySideIsOnOneFaceInTheOrderOfTurning, ()) {
    KyGraph graph;
    BuildAnything(graph);
    std::map<int, const KyGraphArc*> arcs;
    std::set<Side> sides;
    for (const KyGraphArc* pArc : graph.m_lstArc) {
        const int nId = static_cast<const PlaneArc*>(pArc)->m_nId;
        arcs[nId] = pArc;
        if (pArc->m_pStart == nullptr) continue;
        sides.emplace(nId, F);
        if (pArc->m_pStart != pArc->m_pEnd) sides.emplace(nId, B);
    }

    const Faces faces = FacesOf(graph);

    std::vector<Side> passed;
    for (const std::vector<Side>& face : faces) {
        passed.insert(passed.end(), face.begin(), face.end());
        for (std::size_t i = 0; i < face.size(); ++i) {
            const auto [nArc, nDir] = face[i];
            const KyGraphArc* const pArc = arcs.at(nArc);
            KyGraphNode* const pAt = nDir == F ? pArc->m_pEnd : pArc->m_pStart;
            const std::vector<KyGraphArc*> around(pAt->m_lstArc.begin(), pAt->m_lstArc.end());
            const auto it = std::find(around.begin(), around.end(), pArc);
            RC_ASSERT(it != around.end());
            const KyGraphArc* const pNext = std::next(it) != around.end() ? *std::next(it) : around.front();
            const Side next(static_cast<const PlaneArc*>(pNext)->m_nId, pNext->m_pStart == pAt ? F : B);
            const Side expected =
                pNext == pArc && pArc->m_pStart != pArc->m_pEnd ? Side(nArc, 1 - nDir) : next;
            RC_ASSERT(face[(i + 1) % face.size()] == expected);
        }
    }
    RC_ASSERT(passed.size() == sides.size());
    RC_ASSERT((std::set<Side>(passed.begin(), passed.end()) == sides));
}

RC_GTEST_PROP(KyGraphFaces, AMeshThatFindMeshClosesIsTheFace, ()) {
    KyGraph graph;
    BuildAnything(graph);

    KyForEachFace(graph, [](const std::unique_ptr<KyGraphPath>& pFace) {
        KyGraphArc* const pFirst = *pFace->GetFirst();
        const std::unique_ptr<KyGraphPath> pMesh(pFirst->FindMesh(SidesOf(*pFace).front().second));
        const std::vector<KyGraphArc*> face(pFace->begin(), pFace->end());
        const bool bTwice = std::count(face.begin(), face.end(), pFirst) == 2;
        const bool bDeadEnd = std::any_of(face.begin(), face.end(), [](const KyGraphArc* pArc) {
            return pArc->m_pStart->m_lstArc.GetLength() < 2 || pArc->m_pEnd->m_lstArc.GetLength() < 2;
        });
        if (bTwice || bDeadEnd) return;
        RC_ASSERT(std::vector<KyGraphArc*>(pMesh->begin(), pMesh->end()) == face);
        RC_ASSERT(pMesh->m_pBeginNode == pFace->m_pBeginNode);
    });
}

}  // namespace
