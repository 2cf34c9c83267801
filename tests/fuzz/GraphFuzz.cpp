// Operations on a graph in any order, against the stated steps on plain records: the same results, the same
// lists, and the same questions asked of the comparisons in the same order.
//
// The first byte chooses how elements compare: by their places in the plane, or as bytes of the input say, without
// any order. Without one, elements that the graph has already are not added again, since it could not know them.

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "ByteSource.h"
#include "VexaBase/graph/KyGraph.h"
#include "VexaBase/graph/KyGraphFaces.h"
#include "VexaBase/graph/KyGraphPath.h"
#include "tests/graph/GraphSteps.h"
#include "tests/graph/IndexedRing.h"

namespace {

/// A comparison of two nodes or two arcs, by their ids, around a node or none.
struct Question {
    bool m_bNodes;
    int m_nLeft;
    int m_nRight;
    int m_nAround;

    friend bool operator==(const Question& a, const Question& b) {
        return a.m_bNodes == b.m_bNodes && a.m_nLeft == b.m_nLeft && a.m_nRight == b.m_nRight &&
               a.m_nAround == b.m_nAround;
    }
};

/// What the graph asked and was answered, until the records have asked the same.
class Comparisons {
public:
    Comparisons(ByteSource& source, bool bInPlane) : m_source(source), m_bInPlane(bInPlane) {}

    bool AreInPlane() const { return m_bInPlane; }

    int Answer(const Question& question, int nOrderInPlane) {
        constexpr int highest = std::numeric_limits<int>::max();
        constexpr int answers[] = {0, 1, -1, highest, -highest - 1};
        const int nAnswer = m_bInPlane ? nOrderInPlane : answers[m_source.Number(0, 4)];
        m_asked.emplace_back(question, nAnswer);
        FUZZ_CHECK(m_asked.size() < 10000);  // no operation ends after that many
        return nAnswer;
    }

    int AnswerAgain(const Question& question, int nOrderInPlane) {
        FUZZ_CHECK(!m_asked.empty() && m_asked.front().first == question);
        const int nAnswer = m_asked.front().second;
        FUZZ_CHECK(!m_bInPlane || nAnswer == nOrderInPlane);
        m_asked.pop_front();
        return nAnswer;
    }

    bool AreAllAskedAgain() const { return m_asked.empty(); }

private:
    ByteSource& m_source;
    bool m_bInPlane;
    std::deque<std::pair<Question, int>> m_asked;
};

Comparisons* g_pComparisons = nullptr;  // of the input that is being run

class FuzzNode : public PlaneNode {
public:
    using PlaneNode::PlaneNode;

    int CmpNode(const KyGraphNode& other) const override {
        return g_pComparisons->Answer({true, m_nId, IdOf(&other), nNone}, PlaneNode::CmpNode(other));
    }
};

class FuzzArc : public PlaneArc {
public:
    using PlaneArc::PlaneArc;

    int CmpArc(const KyGraphArc& other) const override {
        return g_pComparisons->Answer({false, m_nId, IdOf(&other), IdOf(KyGraphNode::s_pStartNode)},
                                      PlaneArc::CmpArc(other));
    }
};

class FuzzSteps : public Steps {
public:
    /// Whether a walk is defined: some node may list a loop twice, if its order has become none.
    bool IsAnyArcListedTwice() const {
        return std::any_of(m_nodes.begin(), m_nodes.end(), [](const auto& entry) {
            std::vector<int> arcs = entry.second.m_arcs;
            std::sort(arcs.begin(), arcs.end());
            return std::adjacent_find(arcs.begin(), arcs.end()) != arcs.end();
        });
    }

    int OrderOfNodes(int nLeft, int nRight) const override {
        return g_pComparisons->AnswerAgain({true, nLeft, nRight, nNone}, Steps::OrderOfNodes(nLeft, nRight));
    }
    int OrderOfArcs(int nLeft, int nRight, int nAround) const override {
        return g_pComparisons->AnswerAgain({false, nLeft, nRight, nAround},
                                           Steps::OrderOfArcs(nLeft, nRight, nAround));
    }
};

template <class Arcs>
std::vector<int> IdsOf(const Arcs& arcs) {
    std::vector<int> ids;
    for (const KyGraphArc* pArc : arcs) {
        ids.push_back(IdOf(pArc));
    }
    return ids;
}

int IdOrNone(const KyGraphArc* pArc) { return pArc != nullptr ? IdOf(pArc) : nNone; }

int SignOf(int n) { return n < 0 ? -1 : n > 0 ? 1 : 0; }

/// A graph and the records, driven together.
class Twins {
public:
    Twins(ByteSource& source, bool bInPlane, long nStep)
        : m_source(source), m_comparisons(source, bInPlane), m_graph(nStep) {
        g_pComparisons = &m_comparisons;
    }
    Twins(const Twins&) = delete;
    Twins& operator=(const Twins&) = delete;
    ~Twins() {
        for (const int nArc : m_foreign) {
            delete m_arcs.at(nArc);
        }
    }

    void Step() {
        const long nOperation = m_source.Number(0, 22);
        if (nOperation == 0) return AddNode();
        if (nOperation <= 3) return Create();
        if (m_graph.m_lstNode.GetLength() == 0) return;
        switch (nOperation) {
            case 4:
            case 5:
                return AddArcBetweenResidents();
            case 6:
                return AddNodeWithArcs();
            case 7:
                return CheckNode(AnyNodeIndex());
            case 8:
                return MoveNodeAndCheck();
            case 9:
                return RemoveNode();
            case 10:
                return ConnectForeignArc();
            case 11:
                return CombineNodes();
            case 12:
                return FindNode();
            case 13:
                return CompareTwoNodes();
            case 14:
                return UnConnectNode();
            default:
                if (m_graph.m_lstArc.GetLength() != 0) StepWithArc(nOperation);
        }
    }

    void Compare() {
        SettleForeignArcs();
        FUZZ_CHECK(m_comparisons.AreAllAskedAgain());
        CompareNodes();
        CompareArcs();
        for (const int nArc : m_foreign) {
            FUZZ_CHECK(RowOf(m_arcs.at(nArc)) == m_steps.RowOfArc(nArc));
        }
        FUZZ_CHECK(FaultIn(m_graph.m_lstNode).empty());
        FUZZ_CHECK(FaultIn(m_graph.m_lstArc).empty());
        FUZZ_CHECK(PlaneNode::s_live.size() == m_steps.m_nodes.size());
        FUZZ_CHECK(static_cast<std::size_t>(PlaneArc::s_nLive) == m_steps.m_arcs.size());
        FUZZ_CHECK(PlaneArc::s_nDeadEndsRead == 0);
        FUZZ_CHECK(KyGraphNode::s_pStartNode == nullptr);
        FUZZ_CHECK(m_graph.m_nUserData == 0);
    }

    void FindFaces() {
        if (m_steps.IsAnyArcListedTwice()) return;
        const std::vector<Steps::Path> expected = m_steps.Faces();
        std::size_t nFaces = 0;
        KyForEachFace(m_graph, [&](const std::unique_ptr<KyGraphPath>& pFace) {
            FUZZ_CHECK(nFaces < expected.size() && IsSame(*pFace, expected[nFaces]));
            ++nFaces;
        });
        FUZZ_CHECK(nFaces == expected.size());
    }

private:
    // As SnapshotOf and Take compare them, without copies: this takes most of the time.

    void CompareNodes() const {
        FUZZ_CHECK(m_graph.m_lstNode.GetLength() == static_cast<long>(m_steps.m_lstNode.size()));
        auto itId = m_steps.m_lstNode.begin();
        for (const KyGraphNode* pNode : m_graph.m_lstNode) {
            const Steps::Node& node = m_steps.m_nodes.at(*itId);
            FUZZ_CHECK(IdOf(pNode) == *itId && pNode->m_nBits == node.m_nBits);
            const KyPDList<KyGraphArc>& lstArc = pNode->m_lstArc;
            FUZZ_CHECK(lstArc.GetLength() == static_cast<long>(node.m_arcs.size()));
            FUZZ_CHECK(std::equal(lstArc.begin(), lstArc.end(), node.m_arcs.begin(), node.m_arcs.end(),
                                  [](const KyGraphArc* pArc, int nId) { return IdOf(pArc) == nId; }));
            FUZZ_CHECK(node.m_arcs.empty() || IdOf(*lstArc.GetLast()) == node.m_arcs.back());
            ++itId;
        }
    }

    void CompareArcs() const {
        FUZZ_CHECK(m_graph.m_lstArc.GetLength() == static_cast<long>(m_steps.m_lstArc.size()));
        auto itId = m_steps.m_lstArc.begin();
        for (const KyGraphArc* pArc : m_graph.m_lstArc) {
            FUZZ_CHECK(RowOf(pArc) == m_steps.RowOfArc(*itId));
            ++itId;
        }
    }

    void StepWithArc(long nOperation) {
        switch (nOperation) {
            case 15:
                return ChangeStrandAndCheck();
            case 16:
                return RemoveArc();
            case 17:
                return ListArc();
            case 18:
                return Turn();
            case 19:
                return FindMesh();
            case 20:
                return FindFaces();
            case 21:
                return FindArc();
            default:
                return m_source.Number(0, 3) == 0 ? UnConnect() : UnConnectArc();
        }
    }

    Point AnyPoint() {
        const std::uint8_t nByte = m_source.Byte();
        return {nByte % 4, nByte / 4 % 4};
    }

    long AnyNodeIndex() { return m_source.Number(0, m_graph.m_lstNode.GetLength() - 1); }
    long AnyArcIndex() { return m_source.Number(0, m_graph.m_lstArc.GetLength() - 1); }
    KyGraphNode* AnyNode() { return *m_graph.m_lstNode.GetAt(AnyNodeIndex()); }
    KyGraphArc* AnyArc() { return *m_graph.m_lstArc.GetAt(AnyArcIndex()); }

    FuzzNode* NewNode() {
        const Point at = AnyPoint();
        m_steps.MakeNode(at, ++m_nLastId);
        auto* const pNode = new FuzzNode(at, m_nLastId);
        pNode->m_nBits = BitsOf(m_nLastId);
        return pNode;
    }

    FuzzArc* NewArc(KyGraphNode* pStart, KyGraphNode* pEnd) {
        const long nStrand = m_source.Number(0, 1);
        m_steps.MakeArc(IdOf(pStart), IdOf(pEnd), nStrand, ++m_nLastId);
        auto* const pArc = new FuzzArc(pStart, pEnd, nStrand, m_nLastId);
        pArc->m_nBits = BitsOf(m_nLastId);
        m_arcs[m_nLastId] = pArc;
        return pArc;
    }

    // Elements come and go

    void AddNode() {
        KyGraphNode* pNode = NewNode();
        const int nId = IdOf(pNode);
        FUZZ_CHECK((m_graph << pNode) == m_steps.AddNode(nId));
        if (!m_comparisons.AreInPlane()) return;
        pNode = AnyNode();
        const int nAgain = IdOf(pNode);
        FUZZ_CHECK((m_graph << pNode) == m_steps.AddNode(nAgain));
    }

    /// Between new nodes, or in the plane resident ones. A loop has only one.
    void Create() {
        const long nEnds = m_source.Number(0, 7);
        const bool bMayBeResident = m_comparisons.AreInPlane() && m_graph.m_lstNode.GetLength() != 0;
        KyGraphNode* const pStart = bMayBeResident && nEnds % 2 == 0 ? AnyNode() : NewNode();
        KyGraphNode* const pOther = bMayBeResident && nEnds / 2 % 2 == 0 ? AnyNode() : nullptr;
        KyGraphNode* const pEnd = nEnds == 7 ? pStart : pOther != nullptr ? pOther : NewNode();
        FuzzArc* const pArc = NewArc(pStart, pEnd);
        const int nId = pArc->m_nId;
        FUZZ_CHECK(m_graph.Create(pArc) == m_steps.Create(nId));
    }

    void AddArc(FuzzArc* pArc) {
        const int nId = pArc->m_nId;
        FUZZ_CHECK((m_graph << pArc) == m_steps.AddArc(nId));
    }

    void AddArcBetweenResidents() {
        const long nEnds = m_source.Number(0, 7);
        KyGraphNode* const pStart = nEnds == 1 ? nullptr : AnyNode();
        AddArc(NewArc(pStart, nEnds == 2 ? nullptr : nEnds == 3 ? pStart : AnyNode()));
    }

    /// The node comes after its arcs, and hands them over where it is a duplicate.
    void AddNodeWithArcs() {
        KyGraphNode* const pNode = NewNode();
        const int nId = IdOf(pNode);
        for (long n = m_source.Number(0, 3); n > 0; --n) {
            AddArc(NewArc(pNode, AnyNode()));
        }
        // Arcs that the node has refused would keep pointing there.
        for (KyGraphArc* pArc : m_graph.m_lstArc) {
            if (pArc->m_pStart == pNode && !m_steps.IsListedAtBothEnds(IdOf(pArc))) UnConnect(pArc);
        }
        FUZZ_CHECK((m_graph << pNode) == m_steps.AddNode(nId));
    }

    void RemoveNode() {
        const long i = AnyNodeIndex();
        KyGraphNode* const pNode = *m_graph.m_lstNode.GetAt(i);
        for (KyGraphArc* pArc : m_graph.m_lstArc) {
            if (pArc->m_pStart == pNode || pArc->m_pEnd == pNode) UnConnect(pArc);
        }
        m_graph.m_lstNode.MoveTo(i);
        m_graph.m_lstNode.DelCur();
        m_steps.DestroyNode(Steps::TakeAt(m_steps.m_lstNode, i));
    }

    void RemoveArc() {
        const long i = AnyArcIndex();
        m_graph.m_lstArc.MoveTo(i);
        m_graph.m_lstArc.DelCur();
        m_steps.DestroyArc(Steps::TakeAt(m_steps.m_lstArc, i));
    }

    /// An arc of the application's own, listed at nodes of the graph.
    void ConnectForeignArc() {
        if (m_foreign.size() > 5) return;
        KyGraphNode* const pStart = AnyNode();
        FuzzArc* const pArc = NewArc(pStart, AnyNode());
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

    // Keys and places change

    void CheckNode(long i) {
        KyList<KyGraphArc*> lost;
        std::vector<int> expectedLost;
        const bool bAsk = m_source.Number(0, 3) != 0;
        FUZZ_CHECK(m_graph.CheckNode(i, bAsk ? &lost : nullptr) == m_steps.CheckNode(i, expectedLost));
        FUZZ_CHECK(!bAsk || IdsOf(lost) == expectedLost);
    }

    void MoveNodeAndCheck() {
        const long i = AnyNodeIndex();
        auto* const pNode = static_cast<PlaneNode*>(*m_graph.m_lstNode.GetAt(i));
        pNode->m_at = AnyPoint();
        pNode->m_nBits ^= 1;
        m_steps.m_nodes.at(pNode->m_nId).m_at = pNode->m_at;
        m_steps.m_nodes.at(pNode->m_nId).m_nBits ^= 1;
        CheckNode(i);
    }

    void ChangeStrandAndCheck() {
        const long i = AnyArcIndex();
        auto* const pArc = static_cast<PlaneArc*>(*m_graph.m_lstArc.GetAt(i));
        pArc->m_nStrand = m_source.Number(0, 1);
        pArc->m_nBits ^= 1;
        m_steps.m_arcs.at(pArc->m_nId).m_nStrand = pArc->m_nStrand;
        m_steps.m_arcs.at(pArc->m_nId).m_nBits ^= 1;
        FUZZ_CHECK(m_graph.CheckArc(i) == m_steps.CheckArc(i));
    }

    void CombineNodes() {
        KyGraphNode* const pNode = AnyNode();
        KyGraphNode* const pOther = AnyNode();
        pNode->Conbine(pOther);
        m_steps.Conbine(IdOf(pNode), IdOf(pOther));
    }

    /// Lists an arc at a node again, or at one that it does not end at, in which case it goes at once.
    void ListArc() {
        KyGraphArc* const pArc = AnyArc();
        KyGraphNode* const pNode =
            m_source.Number(0, 1) == 0 && pArc->m_pEnd != nullptr ? pArc->m_pEnd : AnyNode();
        const int nArc = IdOf(pArc);
        const int nNode = IdOf(pNode);
        const bool bStays =
            (pArc->m_pStart == pNode || pArc->m_pEnd == pNode) && !m_steps.IsListedAt(nNode, nArc);
        FUZZ_CHECK(pNode->AppendArc(pArc) == (m_steps.AppendArc(nNode, nArc) ? 1 : 0));
        if (bStays && m_source.Number(0, 1) == 0) return;
        FUZZ_CHECK(pNode->RemoveArc(pArc) == (m_steps.RemoveArc(nNode, nArc) ? 1 : 0));
    }

    void UnConnect(KyGraphArc* pArc) {
        pArc->UnConnect();
        m_steps.UnConnectArc(IdOf(pArc));
    }

    void UnConnectArc() { UnConnect(AnyArc()); }

    void UnConnectNode() {
        KyGraphNode* const pNode = AnyNode();
        pNode->UnConnect();
        m_steps.UnConnectNode(IdOf(pNode));
    }

    void UnConnect() {
        m_graph.UnConnect();
        m_steps.UnConnect();
    }

    // Questions

    void FindNode() {
        const std::unique_ptr<FuzzNode> pKey(NewNode());
        const long i = m_graph.Find(*pKey);
        const Bisection found = m_steps.SearchNode(pKey->m_nId);
        FUZZ_CHECK(i == (found.m_bFound ? found.m_nPlace : -1));
        m_steps.DestroyNode(pKey->m_nId);
    }

    void FindArc() {
        KyGraphNode* const pStart = AnyNode();
        const std::unique_ptr<FuzzArc> pKey(NewArc(pStart, AnyNode()));
        const long i = m_graph.Find(*pKey);
        const Bisection found = m_steps.SearchArc(pKey->m_nId);
        FUZZ_CHECK(i == (found.m_bFound ? found.m_nPlace : -1));
        m_steps.DestroyArc(pKey->m_nId);
        if (!m_comparisons.AreInPlane()) return;
        // A resident arc that is found is not its own duplicate.
        FuzzArc& arc = static_cast<FuzzArc&>(*AnyArc());
        const long nAt = m_graph.Find(arc);
        const Bisection place = m_steps.SearchArc(arc.m_nId);
        FUZZ_CHECK(nAt == (place.m_bFound ? place.m_nPlace : -1));
        if (nAt >= 0 && *m_graph.m_lstArc.GetAt(nAt) == &arc) AddArc(&arc);
    }

    void CompareTwoNodes() {
        const KyGraphNode& a = *AnyNode();
        const KyGraphNode& b = *AnyNode();
        FUZZ_CHECK((a < b) == (m_steps.OrderOfNodes(IdOf(&a), IdOf(&b)) < 0));
        FUZZ_CHECK((a > b) == (m_steps.OrderOfNodes(IdOf(&a), IdOf(&b)) > 0));
        FUZZ_CHECK(SignOf(a.Cmp(b)) == SignOf(m_steps.OrderOfNodes(IdOf(&a), IdOf(&b))));
    }

    void Turn() {
        KyGraphNode* const pNode = AnyNode();
        const int nNode = IdOf(pNode);
        KyGraphArc* const pArc =
            m_source.Number(0, 7) != 0 && pNode->m_lstArc.GetLength() != 0
                ? *pNode->m_lstArc.GetAt(m_source.Number(0, pNode->m_lstArc.GetLength() - 1))
                : AnyArc();
        FUZZ_CHECK(IdOrNone(pNode->FindNextArc(pArc)) == m_steps.Turn(nNode, IdOf(pArc), 1));
        FUZZ_CHECK(IdOrNone(pNode->FindPreArc(pArc)) == m_steps.Turn(nNode, IdOf(pArc), -1));

        KyDynArray<KyGraphArc*> out;
        KyDList<KyGraphArc*> in;
        pNode->GetArcOut(out);
        pNode->GetArcIn(in);
        std::vector<int> expectedOut;
        std::vector<int> expectedIn;
        for (const int nArc : m_steps.m_nodes.at(nNode).m_arcs) {
            if (m_steps.m_arcs.at(nArc).m_nStart == nNode) expectedOut.push_back(nArc);
            if (m_steps.m_arcs.at(nArc).m_nEnd == nNode) expectedIn.push_back(nArc);
        }
        FUZZ_CHECK(IdsOf(out) == expectedOut && IdsOf(in) == expectedIn);
    }

    static bool IsSame(const KyGraphPath& path, const Steps::Path& expected) {
        return IdsOf(path) == expected.m_arcs && IdOf(path.m_pBeginNode) == expected.m_nBegin;
    }

    void FindMesh() {
        KyGraphArc* const pArc = AnyArc();
        const int nDirection = static_cast<int>(m_source.Number(-1, 1));
        if (m_steps.IsAnyArcListedTwice()) return;
        const std::unique_ptr<KyGraphPath> pPath(pArc->FindMesh(nDirection));
        FUZZ_CHECK(IsSame(*pPath, m_steps.FindMesh(IdOf(pArc), nDirection)));
    }

    ByteSource& m_source;
    Comparisons m_comparisons;
    KyGraph m_graph;
    FuzzSteps m_steps;
    std::map<int, FuzzArc*> m_arcs;  // by id; some are gone
    std::vector<int> m_foreign;
    int m_nLastId = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    ByteSource source(pData, nSize);
    const bool bInPlane = source.Number(0, 1) == 0;
    {
        Twins twins(source, bInPlane, source.Number(1, 4));
        while (!source.IsEmpty()) {
            twins.Step();
            twins.Compare();
        }
        twins.FindFaces();
    }
    FUZZ_CHECK(PlaneNode::s_live.empty() && PlaneArc::s_nLive == 0);
    return 0;
}
