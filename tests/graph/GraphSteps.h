// A graph's operations, transcribed step by step on plain records, for tests that run both and compare.
#pragma once

#include <algorithm>
#include <iterator>
#include <map>
#include <ostream>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

#include "Bisection.h"
#include "PlaneElements.h"

// What is compared ------------------------------------------------------------------------------------------

constexpr int nNone = -1;

struct NodeRow {
    int m_nId;
    Point m_at;
    unsigned long m_nBits;
    std::vector<int> m_arcs;  // the ids of the arcs around it, in order
};

struct ArcRow {
    int m_nId;
    int m_nStart;
    int m_nEnd;
    long m_nStrand;
    unsigned long m_nBits;
};

/// A graph's two lists in order, field by field.
struct Snapshot {
    std::vector<NodeRow> m_nodes;
    std::vector<ArcRow> m_arcs;
};

inline auto Fields(const NodeRow& row) { return std::tie(row.m_nId, row.m_at, row.m_nBits, row.m_arcs); }
inline auto Fields(const ArcRow& row) {
    return std::tie(row.m_nId, row.m_nStart, row.m_nEnd, row.m_nStrand, row.m_nBits);
}
inline bool operator==(const NodeRow& a, const NodeRow& b) { return Fields(a) == Fields(b); }
inline bool operator==(const ArcRow& a, const ArcRow& b) { return Fields(a) == Fields(b); }
inline bool operator==(const Snapshot& a, const Snapshot& b) {
    return a.m_nodes == b.m_nodes && a.m_arcs == b.m_arcs;
}

inline std::ostream& operator<<(std::ostream& os, const Snapshot& snapshot) {
    for (const NodeRow& row : snapshot.m_nodes) {
        os << "\n  node " << row.m_nId << " at " << row.m_at << ':';
        for (const int nArc : row.m_arcs) {
            os << ' ' << nArc;
        }
    }
    for (const ArcRow& row : snapshot.m_arcs) {
        os << "\n  arc " << row.m_nId << ": " << row.m_nStart << " to " << row.m_nEnd << ", strand "
           << row.m_nStrand;
    }
    return os;
}

inline int IdOf(const KyGraphNode* pNode) {
    return pNode != nullptr ? static_cast<const PlaneNode*>(pNode)->m_nId : nNone;
}
inline int IdOf(const KyGraphArc* pArc) { return static_cast<const PlaneArc*>(pArc)->m_nId; }

inline NodeRow RowOf(const KyGraphNode* pNode) {
    NodeRow row{IdOf(pNode), static_cast<const PlaneNode*>(pNode)->m_at, pNode->m_nBits, {}};
    for (const KyGraphArc* pArc : pNode->m_lstArc) {
        row.m_arcs.push_back(IdOf(pArc));
    }
    return row;
}

inline ArcRow RowOf(const KyGraphArc* pArc) {
    return {IdOf(pArc), IdOf(pArc->m_pStart), IdOf(pArc->m_pEnd),
            static_cast<const PlaneArc*>(pArc)->m_nStrand, pArc->m_nBits};
}

inline Snapshot SnapshotOf(const KyGraph& graph) {
    Snapshot snapshot;
    for (const KyGraphNode* pNode : graph.m_lstNode) {
        snapshot.m_nodes.push_back(RowOf(pNode));
    }
    for (const KyGraphArc* pArc : graph.m_lstArc) {
        snapshot.m_arcs.push_back(RowOf(pArc));
    }
    return snapshot;
}

/// Flag bits that tell elements apart.
inline unsigned long BitsOf(int nId) { return 0x9E37'79B9'7F4A'7C15UL * static_cast<unsigned long>(nId + 1); }

inline PlaneNode* MakeNode(const Point& at, int nId) {
    auto* const pNode = new PlaneNode(at, nId);
    pNode->m_nBits = BitsOf(nId);
    return pNode;
}

inline PlaneArc* MakeArc(KyGraphNode* pStart, KyGraphNode* pEnd, long nStrand, int nId) {
    auto* const pArc = new PlaneArc(pStart, pEnd, nStrand, nId);
    pArc->m_nBits = BitsOf(nId);
    return pArc;
}

// The steps, transcribed ------------------------------------------------------------------------------------

/// Nodes and arcs as plain records, in tables by id; the lists hold ids.
class Steps {
public:
    struct Node {
        Point m_at;
        std::vector<int> m_arcs;
        unsigned long m_nBits;
    };
    struct Arc {
        int m_nStart;
        int m_nEnd;
        long m_nStrand;
        unsigned long m_nBits;
    };

    /// The arcs passed, and the node at which the first is entered.
    struct Path {
        std::vector<int> m_arcs;
        int m_nBegin;
    };

    Steps() = default;
    Steps(const Steps&) = delete;
    Steps& operator=(const Steps&) = delete;
    virtual ~Steps() = default;

    // Elements

    void MakeNode(const Point& at, int nId) { m_nodes[nId] = {at, {}, BitsOf(nId)}; }
    void MakeArc(int nStart, int nEnd, long nStrand, int nId) {
        m_arcs[nId] = {nStart, nEnd, nStrand, BitsOf(nId)};
    }

    bool IsListedAt(int nNode, int nArc) const {
        const std::vector<int>& arcs = m_nodes.at(nNode).m_arcs;
        return std::count(arcs.begin(), arcs.end(), nArc) != 0;
    }

    bool IsListedAtBothEnds(int nArc) const {
        const Arc& arc = m_arcs.at(nArc);
        return (arc.m_nStart == nNone || IsListedAt(arc.m_nStart, nArc)) &&
               (arc.m_nEnd == nNone || IsListedAt(arc.m_nEnd, nArc));
    }

    bool AppendArc(int nNode, int nArc) {
        std::vector<int>& arcs = m_nodes.at(nNode).m_arcs;
        const Bisection found = Search(arcs, [&](int nOther) { return OrderOfArcs(nArc, nOther, nNode); });
        if (!found.m_bFound) arcs.insert(arcs.begin() + found.m_nPlace, nArc);
        return !found.m_bFound;
    }

    bool RemoveArc(int nNode, int nArc) { return Remove(m_nodes.at(nNode).m_arcs, nArc); }

    void Connect(int nArc) {
        const Arc arc = m_arcs.at(nArc);
        if (arc.m_nStart != nNone) AppendArc(arc.m_nStart, nArc);
        if (arc.m_nEnd != nNone) AppendArc(arc.m_nEnd, nArc);
    }

    void UnConnectArc(int nArc) {
        Arc& arc = m_arcs.at(nArc);
        for (const int nNode : {arc.m_nStart, arc.m_nEnd}) {
            if (nNode != nNone) RemoveArc(nNode, nArc);
        }
        arc.m_nStart = nNone;
        arc.m_nEnd = nNone;
    }

    void UnConnectNode(int nNode) {
        for (const int nArc : m_nodes.at(nNode).m_arcs) {
            RePoint(nArc, nNode, nNone);
        }
        m_nodes.at(nNode).m_arcs.clear();
    }

    void Conbine(int nNode, int nOther) {
        if (nNode == nOther) return;
        const std::vector<int> taken = m_nodes.at(nOther).m_arcs;
        for (const int nArc : taken) {
            RePoint(nArc, nOther, nNode);
            AppendArc(nNode, nArc);
        }
        m_nodes.at(nOther).m_arcs.clear();
    }

    /// The arc so many places behind another around a node, or nNone.
    int Turn(int nNode, int nArc, int nPlaces) const {
        const std::vector<int>& arcs = m_nodes.at(nNode).m_arcs;
        const auto it = std::find(arcs.begin(), arcs.end(), nArc);
        if (arcs.size() < 2 || it == arcs.end()) return nNone;
        const auto nLength = static_cast<long>(arcs.size());
        return At(arcs, (it - arcs.begin() + nLength + nPlaces) % nLength);
    }

    void DestroyNode(int nNode) {
        UnConnectNode(nNode);
        m_nodes.erase(nNode);
    }

    void DestroyArc(int nArc) {
        UnConnectArc(nArc);
        m_arcs.erase(nArc);
    }

    // The graph

    /// Where a node is in the list, or would be.
    Bisection SearchNode(int nNode) const {
        return Search(m_lstNode, [&](int nOther) { return OrderOfNodes(nNode, nOther); });
    }

    Bisection SearchArc(int nArc) const {
        return Search(m_lstArc, [&](int nOther) { return OrderOfArcs(nArc, nOther, nNone); });
    }

    long AddNode(int nNode) {
        const Bisection found = SearchNode(nNode);
        if (!found.m_bFound) {
            m_lstNode.insert(m_lstNode.begin() + found.m_nPlace, nNode);
        } else if (const int nResident = At(m_lstNode, found.m_nPlace); nResident != nNode) {
            Conbine(nResident, nNode);
            DestroyNode(nNode);
        }
        return found.m_nPlace;
    }

    long AddArc(int nArc) {
        const Bisection found = SearchArc(nArc);
        if (found.m_bFound) {
            if (At(m_lstArc, found.m_nPlace) != nArc) DestroyArc(nArc);
        } else {
            m_lstArc.insert(m_lstArc.begin() + found.m_nPlace, nArc);
            Connect(nArc);
        }
        return found.m_nPlace;
    }

    long Create(int nArc) {
        Arc& arc = m_arcs.at(nArc);
        const bool bIsLoop = arc.m_nStart == arc.m_nEnd;
        arc.m_nStart = At(m_lstNode, AddNode(arc.m_nStart));
        if (bIsLoop) SearchNode(arc.m_nStart);
        arc.m_nEnd = bIsLoop ? arc.m_nStart : At(m_lstNode, AddNode(arc.m_nEnd));
        return AddArc(nArc);
    }

    long FindNode(const Point& at) const {
        const Bisection found =
            Search(m_lstNode, [&](int nOther) { return Order(at, m_nodes.at(nOther).m_at); });
        return found.m_bFound ? found.m_nPlace : -1;
    }

    long CheckArc(long i) {
        const int nArc = TakeAt(m_lstArc, i);
        UnConnectArcKeepingItsEnds(nArc);
        return AddArc(nArc);
    }

    long CheckNode(long i, std::vector<int>& lost) {
        const int nNode = TakeAt(m_lstNode, i);
        std::vector<int> detached;
        for (std::size_t k = 0; k < m_nodes.at(nNode).m_arcs.size(); ++k) {
            const int nArc = m_nodes.at(nNode).m_arcs[k];
            UnConnectArcKeepingItsEnds(nArc);
            detached.push_back(nArc);
        }
        const long nIndex = AddNode(nNode);
        const int nSurvivor = At(m_lstNode, nIndex);
        for (const std::vector<int>* pArcs : {&m_lstArc, &detached}) {
            for (const int nArc : *pArcs) {
                RePoint(nArc, nNode, nSurvivor);
            }
        }
        for (const int nArc : detached) {
            if (Remove(m_lstArc, nArc)) {
                AddArc(nArc);
            } else {
                lost.push_back(nArc);
            }
        }
        return nIndex;
    }

    void UnConnect() {
        for (const int nNode : m_lstNode) {
            UnConnectNode(nNode);
        }
        for (const int nArc : m_lstArc) {
            UnConnectArc(nArc);
        }
    }

    // Walks

    /// At a dead end the path begins anew, with what lies behind the first arc.
    Path FindMesh(int nFirst, int nDir) const {
        const int nBegin = nDir == 0 ? m_arcs.at(nFirst).m_nStart : m_arcs.at(nFirst).m_nEnd;
        Path path{{}, nBegin};
        int nNode = nBegin;
        for (int nArc = nFirst; nArc != nNone;) {
            path.m_arcs.push_back(nArc);
            nNode = OtherEnd(nArc, nNode);
            nArc = nNode != nNone ? Turn(nNode, nArc, 1) : nNone;
            if (nArc == nFirst) return path;
        }
        int nArc = nFirst;
        for (nNode = nBegin; nNode != nNone && (nArc = Turn(nNode, nArc, -1)) != nNone;) {
            path.m_arcs.insert(path.m_arcs.begin(), nArc);
            nNode = OtherEnd(nArc, nNode);
        }
        path.m_nBegin = nNode;
        return path;
    }

    /// All faces, with the sides in the order they are passed.
    std::vector<Path> Faces() const {
        std::vector<Path> faces;
        std::set<std::pair<int, int>> passed;  // an arc and the node it is left from
        for (const int nFirst : m_lstArc) {
            for (const int nBegin : {m_arcs.at(nFirst).m_nStart, m_arcs.at(nFirst).m_nEnd}) {
                const bool bHasNode =
                    m_arcs.at(nFirst).m_nStart != nNone || m_arcs.at(nFirst).m_nEnd != nNone;
                if (!bHasNode || passed.count({nFirst, nBegin}) != 0) continue;
                Path face{{}, nBegin};
                int nArc = nFirst;
                int nNode = nBegin;
                while (passed.insert({nArc, nNode}).second) {
                    face.m_arcs.push_back(nArc);
                    nNode = OtherEnd(nArc, nNode);
                    const int nNext = nNode != nNone ? Turn(nNode, nArc, 1) : nNone;
                    nArc = nNext != nNone ? nNext : nArc;
                }
                faces.push_back(face);
            }
        }
        return faces;
    }

    Snapshot Take() const {
        Snapshot snapshot;
        for (const int nNode : m_lstNode) {
            snapshot.m_nodes.push_back(
                {nNode, m_nodes.at(nNode).m_at, m_nodes.at(nNode).m_nBits, m_nodes.at(nNode).m_arcs});
        }
        for (const int nArc : m_lstArc) {
            snapshot.m_arcs.push_back(RowOfArc(nArc));
        }
        return snapshot;
    }

    ArcRow RowOfArc(int nArc) const {
        const Arc& arc = m_arcs.at(nArc);
        return {nArc, arc.m_nStart, arc.m_nEnd, arc.m_nStrand, arc.m_nBits};
    }

    static int TakeAt(std::vector<int>& ids, long i) {
        const int nId = At(ids, i);
        ids.erase(ids.begin() + i);
        return nId;
    }

    std::map<int, Node> m_nodes;
    std::map<int, Arc> m_arcs;
    std::vector<int> m_lstNode;
    std::vector<int> m_lstArc;

    // What the element classes answer

    virtual int OrderOfNodes(int nLeft, int nRight) const {
        return Order(m_nodes.at(nLeft).m_at, m_nodes.at(nRight).m_at);
    }

    /// nAround is the node whose arcs are ordered, nNone outside AppendArc.
    virtual int OrderOfArcs(int nLeft, int nRight, int nAround) const {
        const Arc& left = m_arcs.at(nLeft);
        const Arc& right = m_arcs.at(nRight);
        const auto isAt = [&](const Arc& arc) { return arc.m_nStart == nAround || arc.m_nEnd == nAround; };
        if (nAround != nNone && isAt(left) && isAt(right)) {
            const auto farFrom = [&](const Arc& arc) {
                const int nFar = arc.m_nStart == nAround ? arc.m_nEnd : arc.m_nStart;
                return m_nodes.at(nFar != nNone ? nFar : nAround).m_at;
            };
            return OrderAround(m_nodes.at(nAround).m_at, farFrom(left), left.m_nStrand, farFrom(right),
                               right.m_nStrand);
        }
        const auto pointOf = [&](int nNode) { return nNode != nNone ? &m_nodes.at(nNode).m_at : nullptr; };
        const auto keyOf = [&](const Arc& arc) {
            return ArcKey{pointOf(arc.m_nStart), pointOf(arc.m_nEnd), arc.m_nStrand};
        };
        return OrderOfKeys(keyOf(left), keyOf(right));
    }

private:
    static int At(const std::vector<int>& ids, long i) { return ids.at(static_cast<std::size_t>(i)); }

    /// Removes the first occurrence of an id.
    static bool Remove(std::vector<int>& ids, int nId) {
        const auto it = std::find(ids.begin(), ids.end(), nId);
        if (it == ids.end()) return false;
        ids.erase(it);
        return true;
    }

    template <class Answer>
    static Bisection Search(const std::vector<int>& ids, Answer answer) {
        return Bisect(static_cast<long>(ids.size()), [&](long i) { return answer(At(ids, i)); });
    }

    int OtherEnd(int nArc, int nNode) const {
        const Arc& arc = m_arcs.at(nArc);
        return arc.m_nStart == nNode ? arc.m_nEnd : arc.m_nStart;
    }

    void RePoint(int nArc, int nFrom, int nTo) {
        Arc& arc = m_arcs.at(nArc);
        if (arc.m_nStart == nFrom) arc.m_nStart = nTo;
        if (arc.m_nEnd == nFrom) arc.m_nEnd = nTo;
    }

    void UnConnectArcKeepingItsEnds(int nArc) {
        const Arc arc = m_arcs.at(nArc);
        UnConnectArc(nArc);
        m_arcs.at(nArc) = arc;
    }
};
