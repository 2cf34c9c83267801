// An arc of a planar graph: a connection from a start node to an end node.
//
// An arc owns neither of its nodes. Once connected it is listed at both, in rotational order (see
// KyGraphNode); destroying an arc takes it off both lists. The geometry is the application's: it derives from
// KyGraphArc and overrides CmpArc, which is asked for two orders. While a node inserts the arc into its
// rotational order, KyGraphNode::s_pStartNode is that node and the answer is about directions around it; at
// any other time the answer is one consistent order over all arcs of a graph.
#pragma once

#include "VexaBase/graph/KyBitData.h"

class KyGraph;
class KyGraphNode;
class KyGraphPath;

class KY_API KyGraphArc : public KyBitData {
public:
    /// Directions of FindMesh: along the arc, or against it.
    enum { Forward = 0, Backward = 1 };

    /// An arc without ends.
    KyGraphArc() : KyGraphArc(nullptr) {}

    /// An arc with the given ends, listed at neither.
    explicit KyGraphArc(KyGraphNode* pStart, KyGraphNode* pEnd = nullptr) : m_pStart(pStart), m_pEnd(pEnd) {}

    /// Takes the arc off both its nodes.
    ~KyGraphArc() override;

    /// Three-way order: negative, zero or positive as this arc orders before, equal to or after `other`. Must
    /// be free of side effects. The library's version orders by place in memory, so that an arc equals only
    /// itself.
    virtual int CmpArc(const KyGraphArc& other) const;

    /// Lists the arc at its start node, then at its end node, where these are set. A loop is listed once.
    void Connect();

    /// Takes the arc off both nodes and forgets them.
    void UnConnect();

    /// Traces the face on one side of this arc and returns its arcs, a path that the caller owns; never null.
    ///
    /// Forward walks from the start node to the end node first, any other direction the other way; at each
    /// node it turns to the next arc in rotational order. A closed face holds this arc first, and the path
    /// begins at the node it was entered from. When the walk meets a dead end, the path is the whole open
    /// chain through this arc, and begins at its far end. The walk also ends when it comes back to this arc
    /// from the other side, which is where a bridge ends. A null end node is a dead end. O(arcs passed, times
    /// the arcs at their nodes). Requires a walk that ends, as every one does where no node lists an arc twice.
    KyGraphPath* FindMesh(int nDir);

    /// CmpArc, under the name that the searching lists ask for.
    int Cmp(const KyGraphArc& other) const { return CmpArc(other); }

    /// CmpArc below 0, for the sorts.
    bool operator<(const KyGraphArc& other) const { return CmpArc(other) < 0; }
    /// CmpArc above 0, for the sorts.
    bool operator>(const KyGraphArc& other) const { return CmpArc(other) > 0; }

    KyGraphNode* m_pStart;  // not owned; may be null
    KyGraphNode* m_pEnd;    // not owned; may be null

private:
    friend class KyGraph;
    friend class KyGraphNode;

    /// Makes every end that is pOld be pNew.
    void RePoint(const KyGraphNode* pOld, KyGraphNode* pNew);
};
