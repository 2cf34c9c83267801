// Nodes and arcs that order by a number, for tests that want to know what is compared with what, or to
// interfere with it; and words for what a graph holds: a node with number 1 that lists the arcs 20 and 30
// reads "1: 20 30", an arc from it to node 2 "20: 1-2".
#pragma once

#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "VexaBase/graph/KyGraph.h"
#include "VexaBase/graph/KyGraphPath.h"

class NumberedNode : public KyGraphNode {
public:
    explicit NumberedNode(long nNumber) : m_nNumber(nNumber) { s_live.insert(this); }
    ~NumberedNode() override { s_live.erase(this); }

    int CmpNode(const KyGraphNode& other) const override {
        const auto& otherNode = static_cast<const NumberedNode&>(other);
        if (s_onCompare) s_onCompare(*this, otherNode);
        return static_cast<int>(m_nNumber - otherNode.m_nNumber);
    }

    long m_nNumber;

    inline static std::set<const KyGraphNode*> s_live;
    inline static std::function<void(const NumberedNode&, const NumberedNode&)> s_onCompare;
};

class NumberedArc : public KyGraphArc {
public:
    explicit NumberedArc(long nNumber, KyGraphNode* pStart = nullptr, KyGraphNode* pEnd = nullptr)
        : KyGraphArc(pStart, pEnd), m_nNumber(nNumber) {
        s_live.insert(this);
    }
    NumberedArc(const NumberedArc&) = delete;
    NumberedArc& operator=(const NumberedArc&) = delete;
    ~NumberedArc() override { s_live.erase(this); }

    int CmpArc(const KyGraphArc& other) const override {
        const auto& otherArc = static_cast<const NumberedArc&>(other);
        if (s_onCompare) s_onCompare(*this, otherArc);
        return static_cast<int>(m_nNumber - otherArc.m_nNumber);
    }

    long m_nNumber;

    inline static std::set<const KyGraphArc*> s_live;
    inline static std::function<void(const NumberedArc&, const NumberedArc&)> s_onCompare;
};

/// Calls listener(left, right) before every comparison of two elements of a class, for as long as this lives.
template <class Element>
class OnCompare {
public:
    explicit OnCompare(std::function<void(const Element&, const Element&)> listener) {
        Element::s_onCompare = std::move(listener);
    }
    OnCompare(const OnCompare&) = delete;
    OnCompare& operator=(const OnCompare&) = delete;
    ~OnCompare() { Element::s_onCompare = nullptr; }
};

inline long NumberOf(const KyGraphNode* pNode) { return static_cast<const NumberedNode*>(pNode)->m_nNumber; }
inline long NumberOf(const KyGraphArc* pArc) { return static_cast<const NumberedArc*>(pArc)->m_nNumber; }

/// One comparison: the two numbers and the number of the node around which arcs are being ordered, -1 for
/// none.
struct Comparison {
    long m_nLeft;
    long m_nRight;
    long m_nAround;

    friend bool operator==(const Comparison& a, const Comparison& b) {
        return a.m_nLeft == b.m_nLeft && a.m_nRight == b.m_nRight && a.m_nAround == b.m_nAround;
    }
    friend std::ostream& operator<<(std::ostream& os, const Comparison& c) {
        return os << c.m_nLeft << " with " << c.m_nRight << " around " << c.m_nAround;
    }
};

/// Writes down every comparison of two elements of a class, for as long as it lives.
template <class Element>
class ComparisonLog {
public:
    ComparisonLog()
        : m_onCompare([this](const Element& a, const Element& b) {
              const KyGraphNode* const pAround = KyGraphNode::s_pStartNode;
              m_log.push_back({a.m_nNumber, b.m_nNumber, pAround != nullptr ? NumberOf(pAround) : -1});
          }) {}

    const std::vector<Comparison>& Lines() const { return m_log; }

private:
    std::vector<Comparison> m_log;
    OnCompare<Element> m_onCompare;
};

/// Numbers of the elements of a list, a path or any other range of nodes or arcs, in order.
template <class Range>
std::vector<long> NumbersOf(const Range& elements) {
    std::vector<long> numbers;
    for (const auto* pElement : elements) {
        numbers.push_back(NumberOf(pElement));
    }
    return numbers;
}

inline std::vector<std::string> NodesOf(const KyGraph& graph) {
    std::vector<std::string> lines;
    for (const KyGraphNode* pNode : graph.m_lstNode) {
        std::string line = std::to_string(NumberOf(pNode)) + ":";
        for (const long nArc : NumbersOf(pNode->m_lstArc)) {
            line += " " + std::to_string(nArc);
        }
        lines.push_back(line);
    }
    return lines;
}

inline std::vector<std::string> ArcsOf(const KyGraph& graph) {
    const auto endOf = [](const KyGraphNode* pNode) {
        return pNode != nullptr ? std::to_string(NumberOf(pNode)) : std::string("none");
    };
    std::vector<std::string> lines;
    for (const KyGraphArc* pArc : graph.m_lstArc) {
        lines.push_back(std::to_string(NumberOf(pArc)) + ": " + endOf(pArc->m_pStart) + "-" +
                        endOf(pArc->m_pEnd));
    }
    return lines;
}
