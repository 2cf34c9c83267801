// The graph, its nodes and its arcs, with comparisons that may throw.

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Elements.h"
#include "VexaBase/containers/KyDynArray.h"
#include "tests/graph/IndexedRing.h"
#include "tests/graph/NumberedElements.h"

namespace {

/// A graph, and elements that the test owns as long as the graph does not.
class World : public Subject {
public:
    World() = default;
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
        if (!m_strUnmerged.empty() && m_graph->m_lstNode.m_nLength == 3 && Words() != m_strUnmerged) {
            return "something has changed, although the node has not been merged";
        }
        if (KyGraphNode::s_pStartNode != nullptr) return "the start node was not put back";
        if (const std::string fault = FaultIn(m_graph->m_lstNode); !fault.empty()) return "nodes: " + fault;
        if (const std::string fault = FaultIn(m_graph->m_lstArc); !fault.empty()) return "arcs: " + fault;
        for (const KyGraphNode* pNode : m_graph->m_lstNode) {
            if (!IsLive(pNode)) return "a node of the graph is gone";
        }
        for (const KyGraphArc* pArc : m_graph->m_lstArc) {
            if (!IsLive(pArc)) return "an arc of the graph is gone";
            for (const KyGraphNode* pNode : {pArc->m_pStart, pArc->m_pEnd}) {
                if (pNode != nullptr && !Lists(*pNode, pArc) && !m_bMayBeUnlisted)
                    return "an arc is unlisted";
            }
        }
        for (const KyGraphNode* pNode : NumberedNode::s_live) {
            if (!IsResident(pNode) && !Has(m_looseNodes, pNode)) return "a node belongs to nobody";
            for (const KyGraphArc* pArc : pNode->m_lstArc) {
                if (!IsLive(pArc)) return "a node lists an arc that is gone";
                if (pArc->m_pStart != pNode && pArc->m_pEnd != pNode)
                    return "a node lists an arc that does not touch it";
            }
        }
        for (const KyGraphArc* pArc : NumberedArc::s_live) {
            if (!IsResident(pArc) && !Has(m_looseArcs, pArc)) return "an arc belongs to nobody";
            for (const KyGraphNode* pNode : {pArc->m_pStart, pArc->m_pEnd}) {
                if (pNode != nullptr && !IsLive(pNode)) return "an arc points at a node that is gone";
            }
        }
        return FaultOfOrder();
    }

    std::string Words() const {
        std::string words;
        for (const std::string& line : NodesOf(*m_graph)) words += line + "; ";
        for (const std::string& line : ArcsOf(*m_graph)) words += line + "; ";
        for (const NumberedArc* pArc : m_looseArcs) {
            if (!IsLive(pArc) || IsResident(pArc)) continue;
            words += "loose " + std::to_string(pArc->m_nNumber) + ": " + EndOf(pArc->m_pStart) + "-" +
                     EndOf(pArc->m_pEnd) + "; ";
        }
        for (const NumberedNode* pNode : m_looseNodes) {
            if (!IsLive(pNode) || IsResident(pNode)) continue;
            words += "loose " + std::to_string(pNode->m_nNumber) + ":";
            for (const long nArc : NumbersOf(pNode->m_lstArc)) {
                words += " " + std::to_string(nArc);
            }
            words += "; ";
        }
        return words + "gives " + std::to_string(m_nResult);
    }
    std::string Contents() const { return Words(); }
    bool IsLost() const {
        return ::IsLost(m_graph->m_lstNode.m_arrIndex) || ::IsLost(m_graph->m_lstArc.m_arrIndex);
    }

    std::optional<KyGraph> m_graph{std::in_place, 2};
    NumberedNode* m_pNode = nullptr;  // what the operation is about
    NumberedNode* m_pOther = nullptr;
    NumberedArc* m_pArc = nullptr;
    bool m_bMayBeUnlisted = false;  // an arc of the graph at a node of its own
    std::string m_strUnmerged;      // the words as long as the graph has three nodes, where that is promised
    std::vector<NumberedNode*> m_looseNodes;
    std::vector<NumberedArc*> m_looseArcs;

private:
    /// Every comparison is a fault point.
    OnCompare<NumberedNode> m_onNode{
        [](const NumberedNode&, const NumberedNode&) { FaultAt::Pass(FaultKind::Comparison); }};
    OnCompare<NumberedArc> m_onArc{
        [](const NumberedArc&, const NumberedArc&) { FaultAt::Pass(FaultKind::Comparison); }};

    template <class List>
    static bool IsAscending(const List& elements) {
        const std::vector<long> numbers = NumbersOf(elements);
        return std::adjacent_find(numbers.begin(), numbers.end(), std::greater_equal<>()) == numbers.end();
    }

    static bool Lists(const KyGraphNode& node, const KyGraphArc* pArc) {
        return std::find(node.m_lstArc.begin(), node.m_lstArc.end(), pArc) != node.m_lstArc.end();
    }

    /// Faults that an element has while its key is a new one: the others go before.
    std::string FaultOfOrder() const {
        if (!IsAscending(m_graph->m_lstNode)) return "the nodes are out of order";
        if (!IsAscending(m_graph->m_lstArc)) return "the arcs are out of order";
        for (const KyGraphNode* pNode : NumberedNode::s_live) {
            if (!IsAscending(pNode->m_lstArc)) return "the arcs around a node are out of order";
        }
        return "";
    }

    static std::string EndOf(const KyGraphNode* pNode) {
        return pNode == nullptr ? "none" : std::to_string(NumberOf(pNode));
    }

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

/// The triangle 1, 2, 3 with the arcs 10, 20, 30.
void Triangle(World& world) {
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

void LooseStar(World& world) {
    world.m_pNode = world.LooseNode(1);
    for (const long nNumber : {10, 20, 30, 40, 50}) {
        world.LooseArc(nNumber, world.m_pNode, nullptr)->Connect();
    }
    world.m_pArc = world.LooseArc(35, world.m_pNode, nullptr);
}

/// Two nodes to be combined, with arcs between them, to a third, and a loop.
void LoosePair(World& world) {
    world.m_pNode = world.LooseNode(1);
    world.m_pOther = world.LooseNode(2);
    NumberedNode* const pFar = world.LooseNode(3);
    world.LooseArc(20, world.m_pNode, pFar)->Connect();
    world.LooseArc(40, world.m_pNode, world.m_pOther)->Connect();
    world.LooseArc(10, world.m_pOther, pFar)->Connect();
    world.LooseArc(30, pFar, world.m_pOther)->Connect();
    world.LooseArc(50, world.m_pOther, world.m_pOther)->Connect();
}

template <long nNumber>
void WithANode(World& world) {
    Triangle(world);
    world.m_pNode = world.LooseNode(nNumber);
}

template <long nNumber>
void WithAnArc(World& world) {
    Triangle(world);
    world.m_pArc = world.LooseArc(nNumber, NodeAt(world, 0), NodeAt(world, 1));
}

void WithALoop(World& world) {
    Triangle(world);
    world.m_pArc = world.LooseArc(25, NodeAt(world, 0), NodeAt(world, 0));
}

void WithADuplicateOfTwo(World& world) {
    WithANode<2>(world);
    world.LooseArc(5, world.m_pNode, world.m_pNode)->Connect();
    world.LooseArc(25, NodeAt(world, 0), world.m_pNode)->Connect();
    world.LooseArc(35, world.m_pNode, NodeAt(world, 1))->Connect();
}

void WithAnArcBetweenDuplicates(World& world) {
    Triangle(world);
    NumberedNode* const pStart = world.LooseNode(3);
    NumberedNode* const pEnd = world.LooseNode(1);
    world.LooseArc(5, pStart, pEnd)->Connect();
    world.m_pArc = world.LooseArc(25, pStart, pEnd);
}

void WithALoopAroundADuplicate(World& world) {
    WithANode<2>(world);
    world.m_pArc = world.LooseArc(25, world.m_pNode, world.m_pNode);
}

/// The first node has two arcs to each other one, a loop, and two that do not belong to the graph.
void Busy(World& world) {
    Triangle(world);
    world.Arc(40, NodeAt(world, 0), NodeAt(world, 1));
    world.Arc(45, NodeAt(world, 2), NodeAt(world, 0));
    world.Arc(50, NodeAt(world, 0), NodeAt(world, 0));
    world.LooseArc(15, NodeAt(world, 0), nullptr)->Connect();
    world.LooseArc(35, nullptr, NodeAt(world, 0))->Connect();
}

template <long nNumber>
void WithTheFirstArcNow(World& world) {
    Triangle(world);
    Renumber(ArcAt(world, 0), nNumber);
}

template <long nNumber>
void WithTheFirstNodeNow(World& world) {
    Busy(world);
    Renumber(NodeAt(world, 0), nNumber);
}

/// The same, and the arcs of its even positions, or of its odd ones, order the other way round.
template <long nNumber, long nFirst>
void WithTheFirstNodeAndArcsNow(World& world) {
    WithTheFirstNodeNow<nNumber>(world);
    long nNew = 90;
    for (long i = nFirst; i < NodeAt(world, 0)->m_lstArc.m_nLength; i += 2) {
        Renumber(*NodeAt(world, 0)->m_lstArc.GetAt(i), --nNew);
    }
}

/// An arc at an even position of the first node now equals one that is elsewhere.
void WithADuplicateArc(World& world) {
    WithTheFirstNodeNow<9>(world);
    Renumber(*NodeAt(world, 0)->m_lstArc.GetAt(0), 20);
}

/// A loop at an even position of the first node, which lists it once, now equals an arc that is elsewhere.
void WithADuplicateLoop(World& world) {
    Triangle(world);
    Renumber(world.Arc(5, NodeAt(world, 0), NodeAt(world, 0)), 20);
}

/// Checks the first of three nodes; or, where that has been merged away before a fault, attaches the arcs that
/// the fault left unlisted.
void CheckFirstNode(World& world) {
    KyGraph& graph = *world.m_graph;
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

const Operation<World> g_graph[] = {
    {"MakeANode", Triangle, [](World& w) { w.m_nResult = KyGraphNode().m_lstArc.m_nLength; }, Same},
    {"MakeAnArc", Triangle, [](World& w) { w.m_nResult = KyGraphArc().m_pStart == nullptr; }, CannotFail},
    {"MakeAPath", Triangle, [](World& w) { w.m_nResult = KyGraphPath().m_nLength; }, Same},
    {"MakeAGraph", Triangle, [](World& w) { w.m_nResult = KyGraph(3).m_lstNode.m_nStep; }, Same},
    {"AppendArc", [](World& w) { w.m_pArc = w.LooseArc(10, w.m_pNode = w.LooseNode(1), nullptr); },
     [](World& w) { w.m_nResult = w.m_pNode->AppendArc(w.m_pArc); }, Same},
    {"AppendArcAmongOthers", LooseStar, [](World& w) { w.m_nResult = w.m_pNode->AppendArc(w.m_pArc); }, Same},
    {"RemoveArc", [](World& w) { Triangle(w), w.m_bMayBeUnlisted = true; },
     [](World& w) { w.m_nResult = NodeAt(w, 0)->RemoveArc(ArcAt(w, 0)); }, CannotFail},
    {"FindNextArcAndFindPreArc", Triangle,
     [](World& w) {
         KyGraphArc* const pArc = ArcAt(w, 0);
         w.m_nResult = NodeAt(w, 0)->FindNextArc(pArc) == NodeAt(w, 0)->FindPreArc(pArc);
     },
     CannotFail},
    {"Connect", WithAnArc<25>, [](World& w) { w.m_pArc->Connect(); }, Sound},
    {"ConnectALoop", WithALoop, [](World& w) { w.m_pArc->Connect(); }, Sound},
    {"UnConnectAnArc", Triangle, [](World& w) { ArcAt(w, 0)->UnConnect(); }, CannotFail},
    {"UnConnectANode", Triangle, [](World& w) { NodeAt(w, 0)->UnConnect(); }, CannotFail},
    {"UnConnectAll", Triangle, [](World& w) { w.m_graph->UnConnect(); }, CannotFail},
    // Arcs that have been taken over by then stay so.
    {"Conbine", LoosePair, [](World& w) { w.m_pNode->Conbine(w.m_pOther); }, Sound},
    {"CompareTheDefaultWay", Triangle,
     [](World& w) {
         const KyGraphArc arc;
         w.m_nResult = (arc < arc) + (arc > arc) + arc.Cmp(arc);
     },
     CannotFail},
    {"GetArcOutAndGetArcIn", Triangle,
     [](World& w) {
         KyDynArray<KyGraphArc*> out;
         KyList<KyGraphArc*> in;
         NodeAt(w, 0)->GetArcOut(out);
         NodeAt(w, 0)->GetArcIn(in);
         w.m_nResult = out.m_nLength + in.m_nLength;
     },
     Same},
    {"FindMeshOfAFace", Triangle,
     [](World& w) {
         w.m_nResult = std::unique_ptr<KyGraphPath>(ArcAt(w, 1)->FindMesh(KyGraphArc::Forward))->m_nLength;
     },
     Same},
    {"FindMeshOfAChain",
     [](World& w) {
         Triangle(w);
         w.m_graph->m_lstArc.MoveToLast();
         w.m_graph->m_lstArc.DelCur();
     },
     [](World& w) {
         w.m_nResult = std::unique_ptr<KyGraphPath>(ArcAt(w, 1)->FindMesh(KyGraphArc::Forward))->m_nLength;
     },
     Same},
    {"AddAFreshNode", WithANode<0>, [](World& w) { w.m_nResult = *w.m_graph << w.m_pNode; }, Same},
    {"AddADuplicateNode", WithADuplicateOfTwo, [](World& w) { w.m_nResult = *w.m_graph << w.m_pNode; },
     Sound},
    {"AddAFreshArc", WithAnArc<25>, [](World& w) { w.m_nResult = *w.m_graph << w.m_pArc; }, Same},
    {"AddADuplicateArc", WithAnArc<20>, [](World& w) { w.m_nResult = *w.m_graph << w.m_pArc; }, Same},
    {"CreateWithFreshEnds",
     [](World& w) {
         Triangle(w);
         w.m_pArc = w.LooseArc(25, w.LooseNode(0), w.LooseNode(9));
     },
     [](World& w) { w.m_nResult = w.m_graph->Create(w.m_pArc); }, Sound},
    {"CreateWithDuplicateEnds", WithAnArcBetweenDuplicates,
     [](World& w) { w.m_nResult = w.m_graph->Create(w.m_pArc); }, Sound},
    {"CreateALoopAroundADuplicate", WithALoopAroundADuplicate,
     [](World& w) { w.m_nResult = w.m_graph->Create(w.m_pArc); }, Sound},
    {"CreateInAnEmptyGraph", [](World& w) { w.m_pArc = w.LooseArc(25, w.LooseNode(2), w.LooseNode(1)); },
     [](World& w) { w.m_nResult = w.m_graph->Create(w.m_pArc); }, Sound.OrLost()},
    {"FindANode", WithANode<2>, [](World& w) { w.m_nResult = w.m_graph->Find(*w.m_pNode); }, Same},
    {"FindAnArc", WithAnArc<25>, [](World& w) { w.m_nResult = w.m_graph->Find(*w.m_pArc); }, Same},
    {"CheckArcToANewPlace", WithTheFirstArcNow<25>, [](World& w) { w.m_nResult = w.m_graph->CheckArc(0); },
     Same},
    {"CheckArcOntoAnother", WithTheFirstArcNow<30>, [](World& w) { w.m_nResult = w.m_graph->CheckArc(0); },
     Same},
    {"CheckNodeWhereItIs", Busy, CheckFirstNode, Same},
    {"CheckNodeToANewPlace", WithTheFirstNodeNow<9>, CheckFirstNode, Same},
    {"CheckNodeAndItsEvenArcs", WithTheFirstNodeAndArcsNow<9, 0>, CheckFirstNode, Changed},
    // The duplicate may be gone, and the others' positions around the node with it.
    {"CheckNodeWithADuplicateArc", WithADuplicateArc, CheckFirstNode, Changed},
    {"CheckNodeWithADuplicateLoop", WithADuplicateLoop, CheckFirstNode, Changed},
    {"CheckNodeOntoAnother",
     [](World& w) {
         WithTheFirstNodeNow<2>(w);
         w.m_strUnmerged = w.Words();
         w.m_bMayBeUnlisted = true;
     },
     CheckFirstNode, Sound},
    {"CheckNodeOntoAnotherThatTakesOverTheArcsBetween",
     [](World& w) {
         WithTheFirstNodeNow<2>(w);
         w.LooseArc(5, NodeAt(w, 0), nullptr)->Connect();
         w.m_strUnmerged = w.Words();
         w.m_bMayBeUnlisted = true;
     },
     CheckFirstNode, Sound},
};
RUN_UNDER_FAULTS(KyGraph, g_graph);

TEST(GraphFaults, DetachingAndDestroyingNeitherAllocatesNorCompares) {
    for (const FaultKind kind : g_faultKinds) {
        World world;
        Triangle(world);
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
    Triangle(world);
    const long nBlocks = LiveBlocks();

    const std::unique_ptr<KyGraphPath> path(ArcAt(world, 0)->FindMesh(KyGraphArc::Forward));

    EXPECT_EQ(LiveBlocks(), nBlocks + 2 + 3);
}

}  // namespace
