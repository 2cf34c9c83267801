// A plan of three rooms, given as bare walls: the graph joins them at their
// corners, and every face is traced once.

#include <VexaBase/graph/KyGraph.h>
#include <VexaBase/graph/KyGraphPath.h>

#include <iostream>
#include <memory>

namespace {

/// A corner is its place; corners order by x, then y.
struct Corner : KyGraphNode {
    Corner(long nX, long nY) : x(nX), y(nY) {}
    int CmpNode(const KyGraphNode& other) const override {
        const auto& o = static_cast<const Corner&>(other);
        if (x != o.x) return x < o.x ? -1 : 1;
        return y == o.y ? 0 : y < o.y ? -1 : 1;
    }
    long x, y;
};

const Corner& At(const KyGraphNode* pNode) {
    return *static_cast<const Corner*>(pNode);
}

struct Wall : KyGraphArc {
    Wall(Corner* pFrom, Corner* pTo) : KyGraphArc(pFrom, pTo) {}

    /// Two orders: around a corner by direction, anywhere else by the two ends.
    int CmpArc(const KyGraphArc& other) const override {
        const KyGraphNode* const pCorner = KyGraphNode::s_pStartNode;
        if (pCorner != nullptr) {
            const Corner& a = FarEnd(*this, pCorner);
            const Corner& b = FarEnd(other, pCorner);
            const long ax = a.x - At(pCorner).x, ay = a.y - At(pCorner).y;
            const long bx = b.x - At(pCorner).x, by = b.y - At(pCorner).y;
            if (IsLower(ax, ay) != IsLower(bx, by))
                return IsLower(ax, ay) ? 1 : -1;
            // Positive where b lies counter-clockwise of a.
            const long nCross = ax * by - ay * bx;
            return nCross == 0 ? 0 : nCross > 0 ? -1 : 1;
        }
        const int nStarts = m_pStart->CmpNode(*other.m_pStart);
        return nStarts != 0 ? nStarts : m_pEnd->CmpNode(*other.m_pEnd);
    }

    /// In the second half of the turn that starts eastward.
    static bool IsLower(long nX, long nY) {
        return nY < 0 || (nY == 0 && nX < 0);
    }

    static const Corner& FarEnd(const KyGraphArc& wall,
                                const KyGraphNode* pNear) {
        return At(wall.m_pStart == pNear ? wall.m_pEnd : wall.m_pStart);
    }
};

/// Walks a face, marks the sides of the walls that it passes in the flag bits,
/// which are the application's, and gives twice the signed area within.
long Walk(const KyGraphPath& face) {
    long nArea = 0;
    const KyGraphNode* pAt = face.m_pBeginNode;
    for (KyGraphArc* pWall : face) {
        const bool bForward = pWall->m_pStart == pAt;
        pWall->m_nBits |= bForward ? 1u : 2u;
        const KyGraphNode* pNext = bForward ? pWall->m_pEnd : pWall->m_pStart;
        nArea += At(pAt).x * At(pNext).y - At(pAt).y * At(pNext).x;
        pAt = pNext;
    }
    return nArea;
}

}  // namespace

int main() {
    const long walls[][4] = {
        {0, 0, 4, 0}, {4, 0, 9, 0}, {9, 0, 9, 3}, {9, 3, 9, 6}, {9, 6, 4, 6},
        {4, 6, 0, 6}, {0, 6, 0, 0}, {4, 0, 4, 3}, {4, 3, 4, 6}, {4, 3, 9, 3}};
    KyGraph plan;
    // Corners at one place become one corner.
    for (const auto& w : walls) {
        plan.Create(new Wall(new Corner(w[0], w[1]), new Corner(w[2], w[3])));
    }
    std::cout << plan.m_lstNode.GetLength() << " corners, "
              << plan.m_lstArc.GetLength() << " walls\n";

    for (KyGraphArc* pWall : plan.m_lstArc) {
        for (const int nDir : {KyGraphArc::Forward, KyGraphArc::Backward}) {
            const unsigned long nSide = nDir == KyGraphArc::Forward ? 1 : 2;
            // Has the face on this side been traced?
            if ((pWall->m_nBits & nSide) != 0) continue;
            const std::unique_ptr<KyGraphPath> face(pWall->FindMesh(nDir));
            const long nArea = Walk(*face);
            // Turning to the next wall counter-clockwise keeps the face on the
            // right: clockwise is inside.
            if (nArea < 0) {
                std::cout << "a room of " << face->GetLength()
                          << " walls, area " << -nArea / 2 << '\n';
            } else {
                std::cout << "outside: " << face->GetLength()
                          << " walls around " << nArea / 2 << '\n';
            }
        }
    }
}
