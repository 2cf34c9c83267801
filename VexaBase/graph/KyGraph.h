// A planar graph: all nodes and all arcs of one graph, unique and sorted.
//
// The graph owns its elements. Adding a node that compares equal to a resident one merges the newcomer into
// it, adding an equal arc discards the newcomer; either way the newcomer is destroyed at once, and the index
// returned designates the element that survives. An index is an element's position in m_lstNode or m_lstArc,
// and shifts when elements are inserted or removed before it. During the graph's own searches
// KyGraphNode::s_pStartNode is left alone (null, as a rule), so CmpArc must then give one consistent order
// over all arcs.
//
// Invariants, as long as the comparisons are consistent and keys do not change behind the graph's back (after
// such a change CheckNode or CheckArc puts the element right):
//   (1) m_lstNode ascends by CmpNode and m_lstArc by CmpArc, no two elements comparing equal
//   (2) a listed arc is listed at both its nodes too, except where it compares equal to another arc around
//       one of them
//
// Elements added in ascending order are inserted in constant time. Elsewhere an insertion takes O(log(length))
// comparisons and moves one index entry for every nStep elements behind it. A large step is no burden to the
// searches, since the lists learn where their elements are (see KyXList).
#pragma once

#include "VexaBase/containers/KyXList.h"
#include "VexaBase/graph/KyGraphArc.h"
#include "VexaBase/graph/KyGraphNode.h"

class KY_API KyGraph {
public:
    /// An empty graph whose two lists index every 4096th element.
    KyGraph() : KyGraph(4096) {}

    /// An empty graph whose two lists index every nStep-th element. Requires nStep > 0.
    explicit KyGraph(long nStep);
    KyGraph(const KyGraph&) = delete;
    KyGraph& operator=(const KyGraph&) = delete;

    /// Dissolves all incidence, then deletes every arc and every node.
    ~KyGraph();

    /// Adds a node and takes it over: inserts it at its sorted place, or, where a resident node compares
    /// equal, hands that one its arcs and deletes it. Returns the index of the node that survives. A resident
    /// node is not its own duplicate. When an exception comes out, the caller still owns the node. Requires a
    /// node.
    long operator<<(KyGraphNode* pNode);

    /// Adds an arc and takes it over: inserts it at its sorted place and connects it to both its nodes, or,
    /// where a resident arc compares equal, deletes it. Returns the index of the arc that survives. A
    /// resident arc is not its own duplicate. When an exception comes out, the caller still owns the arc,
    /// unconnected. Requires an arc.
    long operator<<(KyGraphArc* pArc);

    /// Adds an arc together with its end nodes, start first: nodes that duplicate resident ones are merged
    /// away and the arc is re-pointed to those before it is added. The end nodes may be resident ones, or one
    /// and the same. Returns the arc's index. Requires an arc with both ends set.
    long Create(KyGraphArc* pArc);

    /// Index of the node that compares equal, or -1. The key may be any node made for the purpose.
    long Find(const KyGraphNode& node);

    /// Index of the arc that compares equal, or -1. The key may be any arc made for the purpose; remember
    /// that an arc unlists itself from the nodes it names when it is destroyed.
    long Find(const KyGraphArc& arc);

    /// Dissolves all incidence: every node's arc list becomes empty, every arc's ends null. The elements
    /// stay.
    void UnConnect();

    /// Puts arc i back in order after its key changed: takes it out, adds it again, and lists it anew around
    /// both nodes. Returns its new index, or that of an arc that now compares equal, in which case this one
    /// is deleted. When an exception comes out, the graph is as it was. Requires 0 <= i < number of arcs.
    long CheckArc(long i);

    /// Puts node i back in order after its key changed, and re-attaches the arcs at the even positions of its
    /// rotational order (0, 2, 4, ...); those at odd positions stay attached, deliberately, with the place in
    /// m_lstArc that they had. Where another node now compares equal, it takes over the arcs and this one is
    /// deleted; no arc of the graph points at it afterwards. Arcs listed at the node that do not belong to
    /// the graph are appended to pLost, if that is given, neither connected nor deleted. Returns the index of
    /// the node that survives.
    ///
    /// When an exception comes out, the node is where it was, with the arcs that it had: the same call can be
    /// made again. What was done for single arcs by then stays done: some have their new place in m_lstArc,
    /// one that compares equal to another is gone (the positions behind it have moved up), and pLost may name
    /// some. Only where this node has been merged away already there is no way back: the arcs not yet
    /// re-attached stay in the graph, their ends set but listed at neither, and CheckArc attaches each.
    /// Requires 0 <= i < number of nodes.
    long CheckNode(long i, KyDynArrayBase<KyGraphArc*>* pLost = nullptr);

    long m_nUserData = 0;             // the application's; the graph's operations leave it alone
    KyPXList<KyGraphNode> m_lstNode;  // all nodes, ascending by CmpNode
    KyPXList<KyGraphArc> m_lstArc;    // all arcs, ascending by CmpArc

private:
    class NodeCheck;
};
