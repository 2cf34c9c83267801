// A node of a planar graph, with the arcs that touch it in rotational order.
//
// The arcs around a node form a cycle: from any arc one turns to the next or to the previous one, which is
// how faces are traced (KyGraphArc::FindMesh). The order is CmpArc's, evaluated as newcomer against resident
// while s_pStartNode is the node, so that an override knows from where the two arcs are seen; typically it
// compares the directions in which they leave.
//
// Invariants, as long as the comparisons are consistent:
//   (1) m_lstArc ascends by that order and holds no two arcs that compare equal
//   (2) a node never deletes an arc, although the list's kind is the owning one: whatever leaves the list has
//       its element emptied first. Arcs belong to the graph, or to the application.
#pragma once

#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/graph/KyGraphArc.h"

class KY_API KyGraphNode : public KyBitData {
public:
    KyGraphNode();

    /// Detaches all arcs from this node.
    ~KyGraphNode() override;

    /// Three-way order: negative, zero or positive as this node orders before, equal to or after `other`. The
    /// library's version orders by place in memory, so that a node equals only itself.
    virtual int CmpNode(const KyGraphNode& other) const;

    /// Lists an arc at its place in the rotational order, by bisection: 1, or 0 and no change when an arc
    /// that compares equal is listed already. s_pStartNode is this node meanwhile, and what it was before
    /// afterwards, also when CmpArc throws. The arc's own ends are not looked at. O(log n) comparisons, O(n)
    /// steps. Requires an arc.
    int AppendArc(KyGraphArc* pArc);

    /// Takes an arc off this node's list: 1, or 0 when it is not listed. The arc and its ends stay as they
    /// are. O(n).
    int RemoveArc(KyGraphArc* pArc);

    /// Detaches every arc from this node: its ends that are this node become null, and the list empty. The
    /// arcs survive, and stay listed at their other nodes. O(n).
    void UnConnect();

    /// Takes over the arcs of `pOther`: re-points their ends to this node and lists them here. An arc that
    /// compares equal to a listed one is re-pointed but not listed; one between the two nodes becomes a loop
    /// here. `pOther` is left without arcs, and is not deleted; a node combined with itself stays as it is.
    /// When a comparison throws, the arcs not yet taken over stay with `pOther`. Requires a node.
    void Conbine(KyGraphNode* pOther);

    /// The arc behind `pArc` in rotational order, the first behind the last. Null when the node has fewer
    /// than two arcs or does not list this one. O(n).
    KyGraphArc* FindNextArc(KyGraphArc* pArc);

    /// The arc before `pArc` in rotational order, the last before the first. Null as in FindNextArc. O(n).
    KyGraphArc* FindPreArc(KyGraphArc* pArc);

    /// Appends the listed arcs that start here to `out`, in rotational order. A loop both starts and ends
    /// here.
    void GetArcOut(KyDynArrayBase<KyGraphArc*>& out);

    /// Appends the listed arcs that end here to `out`, in rotational order.
    void GetArcIn(KyDynArrayBase<KyGraphArc*>& out);

    /// CmpNode, under the name that the searching lists ask for.
    int Cmp(const KyGraphNode& other) const { return CmpNode(other); }

    /// CmpNode below 0, for the sorts.
    bool operator<(const KyGraphNode& other) const { return CmpNode(other) < 0; }
    /// CmpNode above 0, for the sorts.
    bool operator>(const KyGraphNode& other) const { return CmpNode(other) > 0; }

    KyPDList<KyGraphArc> m_lstArc;  // the arcs around this node; its cursor stands anywhere

    static KyGraphNode* s_pStartNode;  // the node around which arcs are being ordered; null outside AppendArc
};
