// Every operation of the graph, with every allocation and every comparison failing in turn: the exception
// comes out, nothing leaks, nothing dangles, and where the operation promises it, a second try succeeds.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "FaultPoints.h"
#include "IndexedRing.h"
#include "NumberedElements.h"
#include "VexaBase/containers/KyDynArray.h"

namespace {

/// A graph, elements that the test owns, and what an operation gave back.
class World {
public:
    World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World() {
        DestroyLoose(m_looseArcs);
        m_graph.reset();
        DestroyLoose(m_looseNodes);
    }

    NumberedNode* LooseNode(long nNumber) {
        m_looseNodes.push_back(new NumberedNode(nNumber));
        return m_looseNodes.back();
    }

    NumberedArc* LooseArc(long nNumber, KyGraphNode* pStart, KyGraphNode* pEnd) {
        m_looseArcs.push_back(new NumberedArc(nNumber, pStart, pEnd));
        return m_looseArcs.back();
    }

    NumberedNode* Node(long nNumber) {
        auto* const pNode = new NumberedNode(nNumber);
        *m_graph << pNode;
        return pNode;
    }

    NumberedArc* Arc(long nNumber, KyGraphNode* pStart, KyGraphNode* pEnd) {
        auto* const pArc = new NumberedArc(nNumber, pStart, pEnd);
        *m_graph << pArc;
        return pArc;
    }

    /// The first thing that is not as it must be; empty when all is well.
    std::string Fault() const {
        if (KyGraphNode::s_pStartNode != nullptr) return "the start node was not put back";
        if (const std::string fault = FaultIn(m_graph->m_lstNode); !fault.empty()) return "nodes: " + fault;
        if (const std::string fault = FaultIn(m_graph->m_lstArc); !fault.empty()) return "arcs: " + fault;
        for (const KyGraphNode* pNode : m_graph->m_lstNode) {
            if (!IsLive(pNode)) return "a node of the graph is gone";
        }
        for (const KyGraphArc* pArc : m_graph->m_lstArc) {
            if (!IsLive(pArc)) return "an arc of the graph is gone";
        }
        for (const KyGraphNode* pNode : NumberedNode::s_live) {
            if (!IsResident(pNode) && !Has(m_looseNodes, pNode)) return "a node belongs to nobody";
            for (const KyGraphArc* pArc : pNode->m_lstArc) {
                if (!IsLive(pArc)) return "a node lists an arc that is gone";
                if (pArc->m_pStart != pNode && pArc->m_pEnd != pNode)
                    return "a node lists an arc that does not touch it";
            }
            const std::vector<long> numbers = NumbersOf(pNode->m_lstArc);
            if (std::adjacent_find(numbers.begin(), numbers.end(), std::greater_equal<>()) != numbers.end()) {
                return "the arcs around a node are out of order";
            }
        }
        for (const KyGraphArc* pArc : NumberedArc::s_live) {
            if (!IsResident(pArc) && !Has(m_looseArcs, pArc)) return "an arc belongs to nobody";
            for (const KyGraphNode* pNode : {pArc->m_pStart, pArc->m_pEnd}) {
                if (pNode != nullptr && !IsLive(pNode)) return "an arc points at a node that is gone";
            }
        }
        return "";
    }

    /// What the operation came to, in words.
    std::vector<std::string> Words() const {
        std::vector<std::string> words = NodesOf(*m_graph);
        const std::vector<std::string> arcs = ArcsOf(*m_graph);
        words.insert(words.end(), arcs.begin(), arcs.end());
        for (const NumberedNode* pNode : m_looseNodes) {
            if (!IsLive(pNode) || IsResident(pNode)) continue;
            words.push_back("loose " + std::to_string(pNode->m_nNumber));
            for (const long nArc : NumbersOf(pNode->m_lstArc)) {
                words.back() += " " + std::to_string(nArc);
            }
        }
        return words;
    }

    std::optional<KyGraph> m_graph{std::in_place, 2};
    std::vector<NumberedNode*> m_looseNodes;
    std::vector<NumberedArc*> m_looseArcs;

private:
    template <class Element, class Base>
    static bool Has(const std::vector<Element*>& elements, const Base* p) {
        return std::find(elements.begin(), elements.end(), p) != elements.end();
    }

    static bool IsLive(const KyGraphNode* p) { return NumberedNode::s_live.count(p) != 0; }
    static bool IsLive(const KyGraphArc* p) { return NumberedArc::s_live.count(p) != 0; }

    bool IsResident(const KyGraphNode* p) const {
        return std::find(m_graph->m_lstNode.begin(), m_graph->m_lstNode.end(), p) != m_graph->m_lstNode.end();
    }
    bool IsResident(const KyGraphArc* p) const {
        return std::find(m_graph->m_lstArc.begin(), m_graph->m_lstArc.end(), p) != m_graph->m_lstArc.end();
    }

    /// Destroys the elements that the graph has neither taken over nor destroyed.
    template <class Element>
    void DestroyLoose(const std::vector<Element*>& elements) {
        for (Element* p : elements) {
            if (IsLive(p) && !(m_graph && IsResident(p))) delete p;
        }
    }
};

/// What is prepared without faults, and what then runs among them. Prepare returns what is to run.
struct Operation {
    const char* m_szName;
    std::function<std::function<void()>(World&)> m_prepare;
    bool m_bCanBeTriedAgain = true;
};

void PrintTo(const Operation& operation, std::ostream* pOut) { *pOut << operation.m_szName; }

/// The triangle 1, 2, 3 with the arcs 10, 20, 30.
void MakeTriangle(World& world) {
    NumberedNode* const p1 = world.Node(1);
    NumberedNode* const p2 = world.Node(2);
    NumberedNode* const p3 = world.Node(3);
    world.Arc(10, p1, p2);
    world.Arc(20, p2, p3);
    world.Arc(30, p3, p1);
}

KyGraphNode* NodeAt(World& world, long i) { return *world.m_graph->m_lstNode.GetAt(i); }
KyGraphArc* ArcAt(World& world, long i) { return *world.m_graph->m_lstArc.GetAt(i); }
void Renumber(KyGraphNode* pNode, long nNumber) { static_cast<NumberedNode*>(pNode)->m_nNumber = nNumber; }
void Renumber(KyGraphArc* pArc, long nNumber) { static_cast<NumberedArc*>(pArc)->m_nNumber = nNumber; }

/// Checks the first of three nodes; or, where that has been merged away before a fault, attaches the arcs that
/// the fault left unlisted.
void CheckFirstNode(KyGraph& graph) {
    if (graph.m_lstNode.m_nLength == 3) {
        KyList<KyGraphArc*> lost;
        graph.CheckNode(0, &lost);
        return;
    }
    for (long i = 0; i < graph.m_lstArc.m_nLength; ++i) {
        const KyGraphArc* const pArc = *graph.m_lstArc.GetAt(i);
        const auto& lstArc = pArc->m_pStart->m_lstArc;
        if (std::find(lstArc.begin(), lstArc.end(), pArc) == lstArc.end()) graph.CheckArc(i);
    }
}

const Operation g_operations[] = {
    {"AppendArcFirst",
     [](World& world) {
         NumberedNode* const pNode = world.LooseNode(1);
         NumberedArc* const pArc = world.LooseArc(10, pNode, nullptr);
         return [=] { pNode->AppendArc(pArc); };
     }},
    {"AppendArcAmongOthers",
     [](World& world) {
         NumberedNode* const pNode = world.LooseNode(1);
         for (const long nNumber : {10, 20, 30, 40, 50}) {
             world.LooseArc(nNumber, pNode, nullptr)->Connect();
         }
         NumberedArc* const pArc = world.LooseArc(35, pNode, nullptr);
         return [=] { pNode->AppendArc(pArc); };
     }},
    {"Connect",
     [](World& world) {
         MakeTriangle(world);
         NumberedArc* const pArc = world.LooseArc(25, NodeAt(world, 0), NodeAt(world, 1));
         return [=] { pArc->Connect(); };
     }},
    {"ConnectALoop",
     [](World& world) {
         MakeTriangle(world);
         NumberedArc* const pArc = world.LooseArc(25, NodeAt(world, 0), NodeAt(world, 0));
         return [=] { pArc->Connect(); };
     }},
    {"Conbine",
     [](World& world) {
         NumberedNode* const pNode = world.LooseNode(1);
         NumberedNode* const pOther = world.LooseNode(2);
         NumberedNode* const pFar = world.LooseNode(3);
         world.LooseArc(20, pNode, pFar)->Connect();
         world.LooseArc(40, pNode, pOther)->Connect();
         world.LooseArc(10, pOther, pFar)->Connect();
         world.LooseArc(30, pFar, pOther)->Connect();
         world.LooseArc(50, pOther, pOther)->Connect();
         return [=] { pNode->Conbine(pOther); };
     }},
    {"GetArcOutAndGetArcIn",
     [](World& world) {
         MakeTriangle(world);
         KyGraphNode* const pNode = NodeAt(world, 0);
         return [=] {
             KyDList<KyGraphArc*> out;
             KyList<KyGraphArc*> in;
             pNode->GetArcOut(out);
             pNode->GetArcIn(in);
         };
     }},
    {"FindMeshOfAFace",
     [](World& world) {
         MakeTriangle(world);
         KyGraphArc* const pArc = ArcAt(world, 1);
         return [=] { delete pArc->FindMesh(KyGraphArc::Forward); };
     }},
    {"FindMeshOfAChain",
     [](World& world) {
         MakeTriangle(world);
         world.m_graph->m_lstArc.MoveToLast();
         world.m_graph->m_lstArc.DelCur();
         KyGraphArc* const pArc = ArcAt(world, 1);
         return [=] { delete pArc->FindMesh(KyGraphArc::Forward); };
     }},
    {"MakeANodeAPathAndAGraph",
     [](World&) {
         return [] {
             const KyGraphNode node;
             const KyGraphPath path;
             const KyGraph graph;
         };
     }},
    {"AddAFreshNode",
     [](World& world) {
         MakeTriangle(world);
         NumberedNode* const pNode = world.LooseNode(0);
         return [&world, pNode] { *world.m_graph << pNode; };
     }},
    {"AddADuplicateNode",
     [](World& world) {
         MakeTriangle(world);
         NumberedNode* const pNode = world.LooseNode(2);
         world.LooseArc(5, pNode, pNode)->Connect();
         world.LooseArc(25, NodeAt(world, 0), pNode)->Connect();
         world.LooseArc(35, pNode, NodeAt(world, 1))->Connect();
         return [&world, pNode] { *world.m_graph << pNode; };
     }},
    {"AddAFreshArc",
     [](World& world) {
         MakeTriangle(world);
         NumberedArc* const pArc = world.LooseArc(25, NodeAt(world, 0), NodeAt(world, 1));
         return [&world, pArc] { *world.m_graph << pArc; };
     }},
    {"AddADuplicateArc",
     [](World& world) {
         MakeTriangle(world);
         NumberedArc* const pArc = world.LooseArc(20, NodeAt(world, 0), NodeAt(world, 1));
         return [&world, pArc] { *world.m_graph << pArc; };
     }},
    {"CreateWithFreshEnds",
     [](World& world) {
         MakeTriangle(world);
         NumberedArc* const pArc = world.LooseArc(25, world.LooseNode(0), world.LooseNode(9));
         return [&world, pArc] { world.m_graph->Create(pArc); };
     }},
    {"CreateWithDuplicateEnds",
     [](World& world) {
         MakeTriangle(world);
         NumberedNode* const pStart = world.LooseNode(3);
         NumberedNode* const pEnd = world.LooseNode(1);
         world.LooseArc(5, pStart, pEnd)->Connect();
         NumberedArc* const pArc = world.LooseArc(25, pStart, pEnd);
         return [&world, pArc] { world.m_graph->Create(pArc); };
     }},
    {"CreateALoopAroundADuplicate",
     [](World& world) {
         MakeTriangle(world);
         NumberedNode* const pNode = world.LooseNode(2);
         NumberedArc* const pArc = world.LooseArc(25, pNode, pNode);
         return [&world, pArc] { world.m_graph->Create(pArc); };
     }},
    {"CreateInAnEmptyGraph",
     [](World& world) {
         NumberedArc* const pArc = world.LooseArc(25, world.LooseNode(2), world.LooseNode(1));
         return [&world, pArc] { world.m_graph->Create(pArc); };
     },
     false},  // a list whose index could not grow is good for destruction only
    {"Find",
     [](World& world) {
         MakeTriangle(world);
         NumberedNode* const pNode = world.LooseNode(2);
         NumberedArc* const pArc = world.LooseArc(25, nullptr, nullptr);
         return [&world, pNode, pArc] {
             world.m_graph->Find(*pNode);
             world.m_graph->Find(*pArc);
         };
     }},
    {"CheckArcToANewPlace",
     [](World& world) {
         MakeTriangle(world);
         Renumber(ArcAt(world, 0), 25);
         return [&world] { world.m_graph->CheckArc(0); };
     }},
    {"CheckArcOntoAnother",
     [](World& world) {
         MakeTriangle(world);
         Renumber(ArcAt(world, 0), 30);
         return [&world] { world.m_graph->CheckArc(0); };
     }},
    {"CheckNodeToANewPlace",
     [](World& world) {
         MakeTriangle(world);
         world.Arc(40, NodeAt(world, 0), NodeAt(world, 1));
         world.Arc(50, NodeAt(world, 0), NodeAt(world, 0));
         world.LooseArc(15, NodeAt(world, 0), nullptr)->Connect();
         world.LooseArc(35, nullptr, NodeAt(world, 0))->Connect();
         Renumber(NodeAt(world, 0), 9);
         return [&world] { world.m_graph->CheckNode(0); };
     }},
    {"CheckNodeOntoAnother",
     [](World& world) {
         MakeTriangle(world);
         world.Arc(40, NodeAt(world, 0), NodeAt(world, 1));
         world.Arc(50, NodeAt(world, 0), NodeAt(world, 0));
         world.LooseArc(15, NodeAt(world, 0), nullptr)->Connect();
         world.LooseArc(35, nullptr, NodeAt(world, 0))->Connect();
         Renumber(NodeAt(world, 0), 2);
         return [&world] { CheckFirstNode(*world.m_graph); };
     }},
};

class EveryFault : public testing::TestWithParam<std::tuple<Operation, FaultKind>> {};

TEST_P(EveryFault, ComesOutLeaksNothingAndLeavesAGraphThatCanBeDestroyed) {
    const auto& [operation, kind] = GetParam();
    const OnCompare<NumberedNode> onNode(
        [](const NumberedNode&, const NumberedNode&) { FaultAt::Pass(FaultKind::Comparison); });
    const OnCompare<NumberedArc> onArc(
        [](const NumberedArc&, const NumberedArc&) { FaultAt::Pass(FaultKind::Comparison); });
    std::vector<std::string> undisturbed;
    {
        World world;
        operation.m_prepare(world)();
        undisturbed = world.Words();
    }

    bool bHappened = true;
    for (long k = 1; bHappened; ++k) {
        SCOPED_TRACE("fault " + std::to_string(k));
        const long nBlocks = LiveBlocks();
        {
            World world;
            const std::function<void()> run = operation.m_prepare(world);
            const std::string before = world.Fault();  // a changed key may be out of order
            bool bCaught = false;
            {
                const FaultAt fault(kind, k);
                try {
                    run();
                } catch (const std::bad_alloc&) {
                    bCaught = kind == FaultKind::Allocation;
                } catch (const OrderedFault&) {
                    bCaught = kind == FaultKind::Comparison;
                }
                bHappened = fault.HasHappened();
            }

            EXPECT_EQ(bCaught, bHappened);
            ASSERT_EQ(world.Fault(), bHappened ? before : "");
            if (bHappened && operation.m_bCanBeTriedAgain) run();
            if (!bHappened || operation.m_bCanBeTriedAgain) {
                EXPECT_EQ(world.Words(), undisturbed);
            }
        }
        ASSERT_EQ(LiveBlocks(), nBlocks);
        ASSERT_TRUE(NumberedNode::s_live.empty());
        ASSERT_TRUE(NumberedArc::s_live.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(GraphFaults, EveryFault,
                         testing::Combine(testing::ValuesIn(g_operations),
                                          testing::Values(FaultKind::Allocation, FaultKind::Comparison)),
                         [](const auto& row) {
                             const bool bAllocation = std::get<1>(row.param) == FaultKind::Allocation;
                             return std::string(std::get<0>(row.param).m_szName) +
                                    (bAllocation ? "WithoutMemory" : "WithoutOrder");
                         });

TEST(GraphFaults, DetachingAndDestroyingNeitherAllocatesNorCompares) {
    for (const FaultKind kind : {FaultKind::Allocation, FaultKind::Comparison}) {
        const OnCompare<NumberedArc> onArc(
            [](const NumberedArc&, const NumberedArc&) { FaultAt::Pass(FaultKind::Comparison); });
        World world;
        MakeTriangle(world);
        NumberedNode* const pLoose = world.LooseNode(9);
        NumberedArc* const pOne = world.LooseArc(15, NodeAt(world, 0), pLoose);
        NumberedArc* const pTwo = world.LooseArc(25, pLoose, NodeAt(world, 1));
        pOne->Connect();
        pTwo->Connect();
        const FaultAt fault(kind, 1);

        NodeAt(world, 2)->UnConnect();
        NodeAt(world, 0)->RemoveArc(ArcAt(world, 0));
        NodeAt(world, 1)->FindNextArc(pTwo);
        NodeAt(world, 1)->FindPreArc(pTwo);
        pOne->UnConnect();
        delete pTwo;
        delete pLoose;
        world.m_graph->UnConnect();
        world.m_graph.reset();

        EXPECT_FALSE(fault.HasHappened());
    }
}

TEST(GraphFaults, APathTakesOneBlockForItselfOneForItsSentinelAndOneForEachArc) {
    World world;
    MakeTriangle(world);
    const long nBlocks = LiveBlocks();

    const std::unique_ptr<KyGraphPath> path(ArcAt(world, 0)->FindMesh(KyGraphArc::Forward));

    EXPECT_EQ(LiveBlocks(), nBlocks + 2 + 3);
}

}  // namespace
