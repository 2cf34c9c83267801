// Random operations on a graph, against plain models, with everything compared after each: one model of sets
// and maps while the keys keep their order, and one that follows the stated steps on vectors, whatever the
// keys do.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "GraphSteps.h"
#include "IndexedRing.h"
#include "PlaneElements.h"

namespace {

/// A graph and the transcription, driven together.
class Twins {
public:
    explicit Twins(long nStep) : m_graph(nStep) { m_graph.m_nUserData = 4711; }
    Twins(const Twins&) = delete;
    Twins& operator=(const Twins&) = delete;
    ~Twins() {
        for (const int nArc : m_foreign) {
            delete m_arcs.at(nArc);
        }
    }

    void Step() {
        switch (*rc::gen::inRange(0, 12)) {
            case 0:
                return AddNode();
            case 1:
            case 2:
            case 3:
                return Create();
            case 4:
                return AddArcBetweenResidents();
            case 5:
                return ChangeStrandAndCheck();
            case 6:
            case 7:
                return MoveNodeAndCheck();
            case 8:
                return CheckAnyNode();
            case 9:
                return *rc::gen::inRange(0, 4) == 0 ? RemoveNode() : RemoveArc();
            case 10:
                return ConnectForeignArc();
            default:
                return *rc::gen::inRange(0, 20) == 0 ? UnConnect() : Find();
        }
    }

    void Compare() {
        SettleForeignArcs();
        RC_ASSERT(SnapshotOf(m_graph) == m_steps.Take());
        for (const int nArc : m_foreign) {
            RC_ASSERT(RowOf(m_arcs.at(nArc)) == m_steps.RowOfArc(nArc));
        }
        RC_ASSERT(FaultIn(m_graph.m_lstNode) == "");
        RC_ASSERT(FaultIn(m_graph.m_lstArc) == "");
        RC_ASSERT(PlaneNode::s_live.size() == m_steps.m_nodes.size());
        RC_ASSERT(static_cast<std::size_t>(PlaneArc::s_nLive) == m_steps.m_arcs.size());
        RC_ASSERT(PlaneArc::s_nDeadEndsRead == 0);
        RC_ASSERT(KyGraphNode::s_pStartNode == nullptr);
        RC_ASSERT(m_graph.m_nUserData == 4711);
    }

    KyGraph m_graph;

private:
    static Point AnyPoint() {
        return {*rc::gen::resize(100, rc::gen::inRange(0L, 4L)),
                *rc::gen::resize(100, rc::gen::inRange(0L, 4L))};
    }
    static long AnyStrand() { return *rc::gen::resize(100, rc::gen::inRange(0L, 2L)); }

    /// An index into a list, which is not empty.
    template <class List>
    static long AnyIndex(const List& list) {
        return *rc::gen::resize(100, rc::gen::inRange(0L, list.GetLength()));
    }

    PlaneNode* NewNode() {
        const Point at = AnyPoint();
        m_steps.MakeNode(at, ++m_nLastId);
        return MakeNode(at, m_nLastId);
    }

    PlaneArc* NewArc(KyGraphNode* pStart, KyGraphNode* pEnd) {
        const long nStrand = AnyStrand();
        m_steps.MakeArc(IdOf(pStart), IdOf(pEnd), nStrand, ++m_nLastId);
        return m_arcs[m_nLastId] = MakeArc(pStart, pEnd, nStrand, m_nLastId);
    }

    KyGraphNode* AnyResident() { return *m_graph.m_lstNode.GetAt(AnyIndex(m_graph.m_lstNode)); }

    /// A resident node or a fresh one.
    KyGraphNode* AnyEnd() {
        return m_graph.m_lstNode.GetLength() == 0 || *rc::gen::arbitrary<bool>() ? NewNode() : AnyResident();
    }

    void AddNode() {
        PlaneNode* const pNode = NewNode();
        const int nId = pNode->m_nId;
        RC_ASSERT((m_graph << pNode) == m_steps.AddNode(nId));
    }

    void Create() {
        KyGraphNode* const pStart = AnyEnd();
        PlaneArc* const pArc = NewArc(pStart, *rc::gen::inRange(0, 10) == 0 ? pStart : AnyEnd());
        const int nId = pArc->m_nId;
        RC_ASSERT(m_graph.Create(pArc) == m_steps.Create(nId));
    }

    void AddArcBetweenResidents() {
        if (m_graph.m_lstNode.GetLength() == 0) return;
        KyGraphNode* const pStart = *rc::gen::inRange(0, 8) == 0 ? nullptr : AnyResident();
        KyGraphNode* const pEnd = *rc::gen::inRange(0, 8) == 0 ? nullptr : AnyResident();
        PlaneArc* const pArc = NewArc(pStart, pEnd);
        const int nId = pArc->m_nId;
        RC_ASSERT((m_graph << pArc) == m_steps.AddArc(nId));
    }

    void ChangeStrandAndCheck() {
        if (m_graph.m_lstArc.GetLength() == 0) return;
        const long i = AnyIndex(m_graph.m_lstArc);
        auto* const pArc = static_cast<PlaneArc*>(*m_graph.m_lstArc.GetAt(i));
        pArc->m_nStrand = AnyStrand();
        m_steps.m_arcs.at(pArc->m_nId).m_nStrand = pArc->m_nStrand;
        RC_ASSERT(m_graph.CheckArc(i) == m_steps.CheckArc(i));
    }

    void MoveNodeAndCheck() {
        if (m_graph.m_lstNode.GetLength() == 0) return;
        const long i = AnyIndex(m_graph.m_lstNode);
        auto* const pNode = static_cast<PlaneNode*>(*m_graph.m_lstNode.GetAt(i));
        pNode->m_at = AnyPoint();
        m_steps.m_nodes.at(pNode->m_nId).m_at = pNode->m_at;
        CheckNode(i);
    }

    void CheckAnyNode() {
        if (m_graph.m_lstNode.GetLength() != 0) CheckNode(AnyIndex(m_graph.m_lstNode));
    }

    void CheckNode(long i) {
        KyList<KyGraphArc*> lost;
        std::vector<int> expectedLost;
        const bool bAsk = *rc::gen::inRange(0, 4) != 0;
        RC_ASSERT(m_graph.CheckNode(i, bAsk ? &lost : nullptr) == m_steps.CheckNode(i, expectedLost));
        std::vector<int> actualLost;
        for (const KyGraphArc* pArc : lost) {
            actualLost.push_back(IdOf(pArc));
        }
        if (bAsk) RC_ASSERT(actualLost == expectedLost);
    }

    void RemoveNode() {
        if (m_graph.m_lstNode.GetLength() == 0) return;
        const long i = AnyIndex(m_graph.m_lstNode);
        // Arcs that point at the node although it refused them would keep pointing there.
        KyGraphNode* const pNode = *m_graph.m_lstNode.GetAt(i);
        for (KyGraphArc* pArc : m_graph.m_lstArc) {
            if (pArc->m_pStart != pNode && pArc->m_pEnd != pNode) continue;
            m_steps.UnConnectArc(IdOf(pArc));
            pArc->UnConnect();
        }
        m_graph.m_lstNode.MoveTo(i);
        m_graph.m_lstNode.DelCur();
        m_steps.DestroyNode(Steps::TakeAt(m_steps.m_lstNode, i));
    }

    void RemoveArc() {
        if (m_graph.m_lstArc.GetLength() == 0) return;
        const long i = AnyIndex(m_graph.m_lstArc);
        m_graph.m_lstArc.MoveTo(i);
        m_graph.m_lstArc.DelCur();
        m_steps.DestroyArc(Steps::TakeAt(m_steps.m_lstArc, i));
    }

    /// An arc of the application's own, listed at nodes of the graph.
    void ConnectForeignArc() {
        if (m_graph.m_lstNode.GetLength() == 0 || m_foreign.size() > 5) return;
        PlaneArc* const pArc = NewArc(AnyResident(), AnyResident());
        m_foreign.push_back(pArc->m_nId);
        pArc->Connect();
        m_steps.Connect(pArc->m_nId);
    }

    /// The graph keeps track of the foreign arcs that its nodes list; the application forgets the others.
    void SettleForeignArcs() {
        std::vector<int> stay;
        for (const int nArc : m_foreign) {
            if (m_steps.IsListedAtBothEnds(nArc) && m_steps.m_arcs.at(nArc).m_nStart != nNone) {
                stay.push_back(nArc);
                continue;
            }
            delete m_arcs.at(nArc);
            m_steps.DestroyArc(nArc);
        }
        m_foreign = stay;
    }

    void UnConnect() {
        m_graph.UnConnect();
        m_steps.UnConnect();
    }

    void Find() {
        const Point at = AnyPoint();
        RC_ASSERT(m_graph.Find(PlaneNode(at)) == m_steps.FindNode(at));
    }

    Steps m_steps;
    std::map<int, PlaneArc*> m_arcs;  // by id; some are gone
    std::vector<int> m_foreign;
    int m_nLastId = 0;
};

RC_GTEST_PROP(GraphModel, AnyOperationsWithAnyKeysFollowTheStatedSteps, ()) {
    const auto nodes = PlaneNode::s_live.size();
    const auto nArcs = PlaneArc::s_nLive;
    {
        Twins twins(*rc::gen::element(1L, 2L, 3L, 16L));
        const int nSteps = *rc::gen::inRange(1, 120);
        for (int i = 0; i < nSteps; ++i) {
            twins.Step();
            twins.Compare();
        }
    }
    RC_ASSERT(PlaneNode::s_live.size() == nodes);
    RC_ASSERT(PlaneArc::s_nLive == nArcs);
}

// Sets and maps ---------------------------------------------------------------------------------------------

/// What identifies an arc: its lower end, its higher end, its strand.
using ArcName = std::tuple<Point, Point, long>;

ArcName NameOf(const Point& a, const Point& b, long nStrand) {
    return {std::min(a, b), std::max(a, b), nStrand};
}

ArcName NameOf(const KyGraphArc* pArc) {
    const auto at = [](const KyGraphNode* pNode) { return static_cast<const PlaneNode*>(pNode)->m_at; };
    return NameOf(at(pArc->m_pStart), at(pArc->m_pEnd), static_cast<const PlaneArc*>(pArc)->m_nStrand);
}

/// Points and names, sorted; the arcs around a point follow from them.
struct Sets {
    std::set<Point> m_nodes;
    std::set<ArcName> m_arcs;

    std::vector<ArcName> Around(const Point& at) const {
        std::vector<ArcName> names;
        const auto far = [&](const ArcName& name) {
            return std::get<0>(name) == at ? std::get<1>(name) : std::get<0>(name);
        };
        for (const ArcName& name : m_arcs) {
            if (std::get<0>(name) == at || std::get<1>(name) == at) names.push_back(name);
        }
        std::sort(names.begin(), names.end(), [&](const ArcName& a, const ArcName& b) {
            return OrderAround(at, far(a), std::get<2>(a), far(b), std::get<2>(b)) < 0;
        });
        return names;
    }
};

/// A point so that no two directions from it to others are the same: no three points of a parabola are in
/// line.
Point OnParabola(long x) { return {x, x * x}; }

class SortedTwins {
public:
    explicit SortedTwins(long nStep) : m_graph(nStep) {}

    void Step() {
        switch (*rc::gen::inRange(0, 8)) {
            case 0:
                return AddNode();
            case 1:
            case 2:
            case 3:
                return Create();
            case 4:
                return RemoveArc();
            case 5:
                return ChangeStrand();
            case 6:
                return MoveNode();
            default:
                return Find();
        }
    }

    void Compare() const {
        std::vector<Point> points;
        for (const KyGraphNode* pNode : m_graph.m_lstNode) {
            points.push_back(PointOf(pNode));
        }
        RC_ASSERT(points == std::vector<Point>(m_sets.m_nodes.begin(), m_sets.m_nodes.end()));
        RC_ASSERT(NamesOf(m_graph.m_lstArc) ==
                  std::vector<ArcName>(m_sets.m_arcs.begin(), m_sets.m_arcs.end()));
        for (KyGraphNode* pNode : m_graph.m_lstNode) {
            const std::vector<ArcName> names = NamesOf(pNode->m_lstArc);
            RC_ASSERT(names == m_sets.Around(PointOf(pNode)));
            const auto n = names.size();
            for (std::size_t i = 0; i < n; ++i) {
                KyGraphArc* const pArc = *pNode->m_lstArc.GetAt(static_cast<long>(i));
                if (n < 2) {
                    RC_ASSERT(pNode->FindNextArc(pArc) == nullptr);
                    RC_ASSERT(pNode->FindPreArc(pArc) == nullptr);
                    continue;
                }
                RC_ASSERT(NameOf(pNode->FindNextArc(pArc)) == names[(i + 1) % n]);
                RC_ASSERT(NameOf(pNode->FindPreArc(pArc)) == names[(n + i - 1) % n]);
            }
            CompareReports(*pNode);
        }
        RC_ASSERT(FaultIn(m_graph.m_lstNode) == "");
        RC_ASSERT(FaultIn(m_graph.m_lstArc) == "");
        RC_ASSERT(PlaneNode::s_live.size() == m_sets.m_nodes.size());
        RC_ASSERT(static_cast<std::size_t>(PlaneArc::s_nLive) == m_sets.m_arcs.size());
    }

private:
    static Point PointOf(const KyGraphNode* pNode) { return static_cast<const PlaneNode*>(pNode)->m_at; }

    template <class List>
    static std::vector<ArcName> NamesOf(const List& arcs) {
        std::vector<ArcName> names;
        for (const KyGraphArc* pArc : arcs) {
            names.push_back(NameOf(pArc));
        }
        return names;
    }

    static void CompareReports(KyGraphNode& node) {
        KyDynArray<KyGraphArc*> out;
        KyDynArray<KyGraphArc*> in;
        node.GetArcOut(out);
        node.GetArcIn(in);
        std::vector<KyGraphArc*> expectedOut;
        std::vector<KyGraphArc*> expectedIn;
        for (KyGraphArc* pArc : node.m_lstArc) {
            if (pArc->m_pStart == &node) expectedOut.push_back(pArc);
            if (pArc->m_pEnd == &node) expectedIn.push_back(pArc);
        }
        RC_ASSERT(std::vector<KyGraphArc*>(out.begin(), out.end()) == expectedOut);
        RC_ASSERT(std::vector<KyGraphArc*>(in.begin(), in.end()) == expectedIn);
    }

    static Point AnyPoint() { return OnParabola(*rc::gen::resize(100, rc::gen::inRange(-8L, 9L))); }
    static long AnyStrand() { return *rc::gen::resize(100, rc::gen::inRange(0L, 3L)); }

    template <class Set>
    static long IndexIn(const Set& set, const typename Set::value_type& x) {
        const auto it = set.find(x);
        return it != set.end() ? std::distance(set.begin(), it) : -1;
    }

    void AddNode() {
        const Point at = AnyPoint();
        m_sets.m_nodes.insert(at);
        RC_ASSERT((m_graph << new PlaneNode(at)) == IndexIn(m_sets.m_nodes, at));
    }

    void Create() {
        const Point from = AnyPoint();
        const Point to = AnyPoint();
        const long nStrand = AnyStrand();
        m_sets.m_nodes.insert({from, to});
        m_sets.m_arcs.insert(NameOf(from, to, nStrand));
        auto* const pArc = new PlaneArc(new PlaneNode(from), new PlaneNode(to), nStrand);
        RC_ASSERT(m_graph.Create(pArc) == IndexIn(m_sets.m_arcs, NameOf(from, to, nStrand)));
    }

    void RemoveArc() {
        const long nLength = m_graph.m_lstArc.GetLength();
        if (nLength == 0) return;
        const long i = *rc::gen::inRange(0L, nLength);
        m_sets.m_arcs.erase(NameOf(*m_graph.m_lstArc.GetAt(i)));
        m_graph.m_lstArc.MoveTo(i);
        m_graph.m_lstArc.DelCur();
    }

    void ChangeStrand() {
        const long nLength = m_graph.m_lstArc.GetLength();
        if (nLength == 0) return;
        const long i = *rc::gen::inRange(0L, nLength);
        auto* const pArc = static_cast<PlaneArc*>(*m_graph.m_lstArc.GetAt(i));
        m_sets.m_arcs.erase(NameOf(pArc));
        pArc->m_nStrand = AnyStrand();
        const ArcName name = NameOf(pArc);
        m_sets.m_arcs.insert(name);
        RC_ASSERT(m_graph.CheckArc(i) == IndexIn(m_sets.m_arcs, name));
    }

    /// Moves a node with one arc at most: with more, the arcs at odd positions would keep their stale places.
    void MoveNode() {
        const long nLength = m_graph.m_lstNode.GetLength();
        if (nLength == 0) return;
        const long i = *rc::gen::inRange(0L, nLength);
        auto* const pNode = static_cast<PlaneNode*>(*m_graph.m_lstNode.GetAt(i));
        if (pNode->m_lstArc.GetLength() > 1) return;
        KyGraphArc* const pArc = pNode->m_lstArc.GetLength() == 1 ? *pNode->m_lstArc.GetFirst() : nullptr;
        const Point to = AnyPoint();
        m_sets.m_nodes.erase(pNode->m_at);
        m_sets.m_nodes.insert(to);
        if (pArc != nullptr) m_sets.m_arcs.erase(NameOf(pArc));
        pNode->m_at = to;
        if (pArc != nullptr) m_sets.m_arcs.insert(NameOf(pArc));
        RC_ASSERT(m_graph.CheckNode(i) == IndexIn(m_sets.m_nodes, to));
    }

    void Find() {
        PlaneNode from(AnyPoint());
        PlaneNode to(AnyPoint());
        const long nStrand = AnyStrand();
        RC_ASSERT(m_graph.Find(from) == IndexIn(m_sets.m_nodes, from.m_at));
        RC_ASSERT(m_graph.Find(PlaneArc(&to, &from, nStrand)) ==
                  IndexIn(m_sets.m_arcs, NameOf(from.m_at, to.m_at, nStrand)));
    }

    KyGraph m_graph;
    Sets m_sets;
};

RC_GTEST_PROP(GraphModel, WithSteadyKeysTheGraphIsASetOfNodesAndASetOfArcsInOrder, ()) {
    SortedTwins twins(*rc::gen::element(1L, 2L, 5L, 16L));
    const int nSteps = *rc::gen::inRange(1, 150);
    for (int i = 0; i < nSteps; ++i) {
        twins.Step();
        twins.Compare();
    }
}

}  // namespace
