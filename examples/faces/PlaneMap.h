// The plane graph of a noded map: its points as nodes, its segments as arcs.
//
// Around a node the arcs stand in clockwise order, so the walk that turns to the next arc at every node
// (FindMesh) has the face it traces on its left. Arcs that bound no face are set apart first, since no face
// can be traced from them: dead ends are taken out of the graph's incidence (they stay in the graph, without
// end nodes), and bridges, which have the same face on both sides, are marked.
#pragma once

#include <vector>

#include "VexaBase/graph/KyGraph.h"
#include "examples/faces/Grid.h"

namespace faces {

/// Ordered by x, then by y.
class MapNode : public KyGraphNode {
public:
    explicit MapNode(GridPoint point) : m_point(point) {}

    int CmpNode(const KyGraphNode& other) const override;

    const GridPoint m_point;
};

/// Ordered clockwise by direction around the node whose arcs are being compared, by its end points otherwise.
class MapArc : public KyGraphArc {
public:
    MapArc(MapNode* pStart, MapNode* pEnd, unsigned int nIndex)
        : KyGraphArc(pStart, pEnd), m_nIndex(nIndex) {}

    int CmpArc(const KyGraphArc& other) const override;

    const unsigned int m_nIndex;  // among all arcs, ascending
};

/// An arc seen along one of its directions: 2 x its index, plus 1 if it is walked backwards (from end to
/// start). The face on that side lies to the left.
using Side = unsigned int;

inline unsigned int ArcOf(Side nSide) { return nSide / 2; }
inline Side Opposite(Side nSide) { return nSide ^ 1U; }

class PlaneMap {
public:
    /// Requires noded segments, ascending and without duplicates, which must outlive the map. Every node and
    /// arc goes to the end of the graph's lists, so that building is linear but for sorting the points.
    explicit PlaneMap(const std::vector<Segment>& segments);

    /// Takes arcs out that end at a node with no other arc, until there are none. Returns how many. O(arcs).
    long PruneDeadEnds();

    /// Marks the arcs whose removal would take their component apart, and numbers the components. Nodes
    /// without arcs belong to none. Returns the number of bridges. Requires pruned dead ends. O(nodes +
    /// arcs).
    long MarkBridges();

    GridPoint Start(Side nSide) const;
    GridPoint End(Side nSide) const { return Start(Opposite(nSide)); }

    /// The component that an arc, which is no dead end, belongs to. Requires numbered components.
    unsigned int ComponentOf(unsigned int nArc) const { return m_componentOfNode[m_ends[nArc].m_nStart]; }

    /// By index, the nodes that an arc joins.
    struct Ends {
        unsigned int m_nStart;
        unsigned int m_nEnd;
    };

    static constexpr unsigned int NoComponent = ~0U;

    // Elements are added in ascending order and never looked up, so the lists need hardly any index.
    KyGraph m_graph{4096};
    const std::vector<Segment>& m_segments;  // segment i is arc i
    std::vector<MapNode*> m_nodes;           // ascending, as in the graph
    std::vector<MapArc*> m_arcs;             // ascending, as in the graph
    std::vector<Ends> m_ends;                // of each arc
    std::vector<bool> m_isDeadEnd;           // by arc
    std::vector<bool> m_isBridge;            // by arc
    std::vector<unsigned int> m_componentOfNode;
    std::vector<MapNode*> m_firstNodes;  // of each component, the least one
};

}  // namespace faces
