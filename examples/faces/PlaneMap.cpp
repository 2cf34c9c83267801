#include "examples/faces/PlaneMap.h"

#include <algorithm>
#include <numeric>

#include "examples/faces/PointIndex.h"

namespace faces {
namespace {

const MapNode& AsMapNode(const KyGraphNode* pNode) { return *static_cast<const MapNode*>(pNode); }

bool Touches(const KyGraphArc& arc, const KyGraphNode* pNode) {
    return arc.m_pStart == pNode || arc.m_pEnd == pNode;
}

int Compare(GridPoint a, GridPoint b) { return a < b ? -1 : b < a ? 1 : 0; }

/// The end of an arc that is not the given node.
GridPoint FarPoint(const KyGraphArc& arc, const KyGraphNode* pNode) {
    return AsMapNode(arc.m_pStart == pNode ? arc.m_pEnd : arc.m_pStart).m_point;
}

/// Clockwise from straight down: first the points less than the centre, then the greater ones.
int CompareClockwise(GridPoint centre, GridPoint a, GridPoint b) {
    const bool bGreaterA = centre < a;
    const bool bGreaterB = centre < b;
    if (bGreaterA != bGreaterB) return bGreaterA ? 1 : -1;
    const long nCross = Cross(centre, a, b);
    return nCross > 0 ? 1 : nCross < 0 ? -1 : 0;
}

/// The arcs around each node by index, dead ends left out: those of node i from m_first[i] to before
/// m_first[i + 1].
struct Incidence {
    struct Step {
        unsigned int m_nArc;
        unsigned int m_nFar;  // the node it leads to
    };
    std::vector<unsigned int> m_first;
    std::vector<Step> m_steps;

    explicit Incidence(const PlaneMap& map) : m_first(map.m_nodes.size() + 1, 0) {
        const auto forEachArc = [&map](auto&& visit) {
            for (unsigned int i = 0; i < map.m_ends.size(); ++i) {
                if (!map.m_isDeadEnd[i]) visit(i, map.m_ends[i]);
            }
        };
        forEachArc([this](unsigned int, PlaneMap::Ends ends) {
            ++m_first[ends.m_nStart];
            ++m_first[ends.m_nEnd];
        });
        std::partial_sum(m_first.begin(), m_first.end(), m_first.begin());
        m_steps.resize(m_first.back());
        forEachArc([this](unsigned int nArc, PlaneMap::Ends ends) {
            m_steps[--m_first[ends.m_nStart]] = {nArc, ends.m_nEnd};
            m_steps[--m_first[ends.m_nEnd]] = {nArc, ends.m_nStart};
        });
    }
};

}  // namespace

int MapNode::CmpNode(const KyGraphNode& other) const { return Compare(m_point, AsMapNode(&other).m_point); }

int MapArc::CmpArc(const KyGraphArc& other) const {
    const KyGraphNode* pCentre = KyGraphNode::s_pStartNode;
    if (pCentre != nullptr && Touches(*this, pCentre) && Touches(other, pCentre)) {
        const GridPoint centre = AsMapNode(pCentre).m_point;
        return CompareClockwise(centre, FarPoint(*this, pCentre), FarPoint(other, pCentre));
    }
    const int nStart = Compare(AsMapNode(m_pStart).m_point, AsMapNode(other.m_pStart).m_point);
    return nStart != 0 ? nStart : Compare(AsMapNode(m_pEnd).m_point, AsMapNode(other.m_pEnd).m_point);
}

PlaneMap::PlaneMap(const std::vector<Segment>& segments)
    : m_segments(segments), m_isDeadEnd(segments.size(), false), m_isBridge(segments.size(), false) {
    const PointIndex index(segments);
    m_nodes.reserve(index.Points().size());
    m_arcs.reserve(segments.size());
    m_ends.reserve(segments.size());
    for (const Segment& segment : segments) {
        m_ends.push_back({index.Find(segment.m_from), index.Find(segment.m_to)});
        const auto [nStart, nEnd] = m_ends.back();
        while (m_nodes.size() <= nEnd) {
            m_nodes.push_back(new MapNode(index.Points()[m_nodes.size()]));
            m_graph << m_nodes.back();
        }
        m_arcs.push_back(
            new MapArc(m_nodes[nStart], m_nodes[nEnd], static_cast<unsigned int>(m_arcs.size())));
        m_graph << m_arcs.back();
    }
}

long PlaneMap::PruneDeadEnds() {
    long nPruned = 0;
    for (KyGraphNode* pNode : m_nodes) {
        while (pNode->m_lstArc.GetLength() == 1) {
            auto* pArc = static_cast<MapArc*>(*pNode->m_lstArc.GetFirst());
            KyGraphNode* pFar = pArc->m_pStart == pNode ? pArc->m_pEnd : pArc->m_pStart;
            pArc->UnConnect();
            m_isDeadEnd[pArc->m_nIndex] = true;
            ++nPruned;
            pNode = pFar;
        }
    }
    return nPruned;
}

// A depth-first search from the least node of each component. Its order numbers the nodes; an arc down to a
// subtree is a bridge if no other arc leads from there to a node found before the subtree. The search strays
// far over the map, so it runs on indices, which keeps the memory it strays through small.
long PlaneMap::MarkBridges() {
    const Incidence incidence(*this);
    std::vector<unsigned int> order(m_nodes.size(), 0);   // 1, 2, ... as found; 0: not yet
    std::vector<unsigned int> lowest(m_nodes.size(), 0);  // the least order reachable from the subtree
    unsigned int nFound = 0;
    long nBridges = 0;
    m_componentOfNode.assign(m_nodes.size(), NoComponent);
    m_firstNodes.clear();

    struct Visit {
        unsigned int m_nNode;
        unsigned int m_nEntry;  // the arc it was entered by
        unsigned int m_nNext;   // the step to look at next
    };
    constexpr unsigned int none = ~0U;
    std::vector<Visit> way;
    const auto enter = [&](unsigned int nNode, unsigned int nEntry) {
        order[nNode] = lowest[nNode] = ++nFound;
        m_componentOfNode[nNode] = static_cast<unsigned int>(m_firstNodes.size() - 1);
        way.push_back({nNode, nEntry, incidence.m_first[nNode]});
    };
    for (unsigned int nFirst = 0; nFirst < m_nodes.size(); ++nFirst) {
        if (order[nFirst] != 0 || incidence.m_first[nFirst] == incidence.m_first[nFirst + 1]) continue;
        m_firstNodes.push_back(m_nodes[nFirst]);
        enter(nFirst, none);
        while (!way.empty()) {
            Visit& visit = way.back();
            const unsigned int nNode = visit.m_nNode;
            if (visit.m_nNext < incidence.m_first[nNode + 1]) {
                const auto [nArc, nFar] = incidence.m_steps[visit.m_nNext++];
                if (nArc == visit.m_nEntry) continue;
                if (order[nFar] == 0) {
                    enter(nFar, nArc);
                } else {
                    lowest[nNode] = std::min(lowest[nNode], order[nFar]);
                }
                continue;
            }

            const unsigned int nEntry = visit.m_nEntry;
            way.pop_back();
            if (nEntry == none) continue;
            const unsigned int nParent = way.back().m_nNode;
            lowest[nParent] = std::min(lowest[nParent], lowest[nNode]);
            if (lowest[nNode] > order[nParent]) {
                m_isBridge[nEntry] = true;
                ++nBridges;
            }
        }
    }
    return nBridges;
}

GridPoint PlaneMap::Start(Side nSide) const {
    const Segment& segment = m_segments[ArcOf(nSide)];
    return nSide % 2 == 0 ? segment.m_from : segment.m_to;
}

}  // namespace faces
