// Nodes and arcs on an integer grid: nodes order by (x, y), arcs by their ends and, around the start node, by
// exact direction, counter-clockwise from the positive x axis. Parallel arcs are told apart by their strand.
#pragma once

#include <functional>
#include <ostream>
#include <set>
#include <tuple>

#include "VexaBase/graph/KyGraph.h"
#include "VexaBase/graph/KyGraphPath.h"

struct Point {
    long x;
    long y;

    friend bool operator==(const Point& a, const Point& b) { return a.x == b.x && a.y == b.y; }
    friend bool operator!=(const Point& a, const Point& b) { return !(a == b); }
    friend bool operator<(const Point& a, const Point& b) { return std::tie(a.x, a.y) < std::tie(b.x, b.y); }
    friend std::ostream& operator<<(std::ostream& os, const Point& p) {
        return os << '(' << p.x << ", " << p.y << ')';
    }
};

/// Twice the area of the triangle a, b, c; positive when it runs counter-clockwise.
inline long Cross(const Point& a, const Point& b, const Point& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

template <class T>
int Order(const T& a, const T& b) {
    return a < b ? -1 : b < a ? 1 : 0;
}

/// What orders an arc: its ends, null where not set, and its strand.
struct ArcKey {
    const Point* m_pStart;
    const Point* m_pEnd;
    long m_nStrand;
};

/// One order over all arcs: by the lower end, the higher end, the strand. An end that is not set is lowest.
inline int OrderOfKeys(const ArcKey& a, const ArcKey& b) {
    const auto isBelow = [](const Point* p, const Point* q) {
        return q != nullptr && (p == nullptr || *p < *q);
    };
    const auto ends = [&](const ArcKey& key) {
        return isBelow(key.m_pEnd, key.m_pStart) ? std::pair(key.m_pEnd, key.m_pStart)
                                                 : std::pair(key.m_pStart, key.m_pEnd);
    };
    const auto [pLowA, pHighA] = ends(a);
    const auto [pLowB, pHighB] = ends(b);
    for (const auto& [p, q] : {std::pair(pLowA, pLowB), std::pair(pHighA, pHighB)}) {
        if (isBelow(p, q)) return -1;
        if (isBelow(q, p)) return 1;
    }
    return Order(a.m_nStrand, b.m_nStrand);
}

/// Order of two arcs that leave `around` for farA and farB. Arcs that go nowhere come first; arcs of one
/// direction follow their strands, seen from the higher end backwards, so that strands do not cross.
inline int OrderAround(const Point& around, const Point& farA, long nStrandA, const Point& farB,
                       long nStrandB) {
    const auto turn = [&](const Point& far) {
        if (far == around) return 0;
        return far.y > around.y || (far.y == around.y && far.x > around.x) ? 1 : 2;
    };
    if (const int nOrder = Order(turn(farA), turn(farB)); nOrder != 0) return nOrder;
    if (const int nOrder = Order(0L, Cross(around, farA, farB)); nOrder != 0) return nOrder;
    return farA < around ? Order(nStrandB, nStrandA) : Order(nStrandA, nStrandB);
}

class PlaneNode : public KyGraphNode {
public:
    explicit PlaneNode(const Point& at, int nId = -1) : m_at(at), m_nId(nId) { s_live.insert(this); }
    ~PlaneNode() override { s_live.erase(this); }

    int CmpNode(const KyGraphNode& other) const override {
        return Order(m_at, static_cast<const PlaneNode&>(other).m_at);
    }

    Point m_at;
    int m_nId;  // for the test's own bookkeeping

    inline static std::set<const KyGraphNode*> s_live;
};

class PlaneArc : public KyGraphArc {
public:
    PlaneArc(KyGraphNode* pStart, KyGraphNode* pEnd, long nStrand = 0, int nId = -1)
        : KyGraphArc(pStart, pEnd), m_nStrand(nStrand), m_nId(nId) {
        ++s_nLive;
    }
    PlaneArc(const PlaneArc&) = delete;
    PlaneArc& operator=(const PlaneArc&) = delete;
    ~PlaneArc() override { --s_nLive; }

    int CmpArc(const KyGraphArc& otherArc) const override {
        const auto& other = static_cast<const PlaneArc&>(otherArc);
        const KyGraphNode* const pAround = KyGraphNode::s_pStartNode;
        if (pAround != nullptr && IsAt(pAround) && other.IsAt(pAround)) {
            return OrderAround(*PointOf(pAround), FarFrom(pAround), m_nStrand, other.FarFrom(pAround),
                               other.m_nStrand);
        }
        return OrderOfKeys(Key(), other.Key());
    }

    ArcKey Key() const { return {PointOf(m_pStart), PointOf(m_pEnd), m_nStrand}; }

    long m_nStrand;
    int m_nId;  // for the test's own bookkeeping

    inline static long s_nLive = 0;
    inline static long s_nDeadEndsRead = 0;  // comparisons that met an end node that was destroyed

private:
    bool IsAt(const KyGraphNode* pNode) const { return m_pStart == pNode || m_pEnd == pNode; }

    static const Point* PointOf(const KyGraphNode* pNode) {
        if (pNode != nullptr && PlaneNode::s_live.count(pNode) == 0) ++s_nDeadEndsRead;
        return pNode != nullptr ? &static_cast<const PlaneNode*>(pNode)->m_at : nullptr;
    }

    /// The other end; the node itself where that is not set.
    const Point& FarFrom(const KyGraphNode* pNode) const {
        const KyGraphNode* const pFar = m_pStart == pNode ? m_pEnd : m_pStart;
        return *PointOf(pFar != nullptr ? pFar : pNode);
    }
};
