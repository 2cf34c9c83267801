// A town's street plan: what an application does with an installed copy. It derives its own nodes and arcs,
// traces the blocks between the streets, and reaches the lists inside the library's classes through their
// common base, where an optimiser that knows the object calls the slots directly.

#include <VexaBase/containers/KyArray.h>
#include <VexaBase/containers/KyDList.h>
#include <VexaBase/containers/KyDynArray.h>
#include <VexaBase/containers/KyDynArrayBase.h>
#include <VexaBase/containers/KyDynPArray.h>
#include <VexaBase/containers/KyList.h>
#include <VexaBase/containers/KyPDList.h>
#include <VexaBase/containers/KyXList.h>
#include <VexaBase/graph/KyGraph.h>
#include <VexaBase/graph/KyGraphArc.h>
#include <VexaBase/graph/KyGraphNode.h>
#include <VexaBase/graph/KyGraphPath.h>

#include <cstdio>
#include <cstring>
#include <memory>

namespace {

int g_nFailures = 0;

void Expect(bool bHolds, const char* pszWhat) {
    if (!bHolds) {
        std::fprintf(stderr, "not so: %s\n", pszWhat);
        ++g_nFailures;
    }
}

#define EXPECT(condition) Expect((condition), #condition)

int Sign(long n) { return n < 0 ? -1 : n > 0 ? 1 : 0; }

class Corner : public KyGraphNode {
public:
    Corner(long x, long y) : m_x(x), m_y(y) {}

    int CmpNode(const KyGraphNode& other) const override {
        const auto& corner = static_cast<const Corner&>(other);
        return m_x != corner.m_x ? Sign(m_x - corner.m_x) : Sign(m_y - corner.m_y);
    }

    long m_x;
    long m_y;
};

class Street : public KyGraphArc {
public:
    Street(Corner* pStart, Corner* pEnd) : KyGraphArc(pStart, pEnd) {}

    int CmpArc(const KyGraphArc& other) const override {
        const Corner* pPivot = static_cast<const Corner*>(KyGraphNode::s_pStartNode);
        if (pPivot == nullptr || !Touches(pPivot) || !static_cast<const Street&>(other).Touches(pPivot)) {
            const int nStart = m_pStart->CmpNode(*other.m_pStart);
            return nStart != 0 ? nStart : m_pEnd->CmpNode(*other.m_pEnd);
        }
        const Corner* pHere = FarEnd(*this, pPivot);
        const Corner* pThere = FarEnd(other, pPivot);
        const long dx1 = pHere->m_x - pPivot->m_x, dy1 = pHere->m_y - pPivot->m_y;
        const long dx2 = pThere->m_x - pPivot->m_x, dy2 = pThere->m_y - pPivot->m_y;
        const int nHalf1 = dy1 < 0 || (dy1 == 0 && dx1 < 0), nHalf2 = dy2 < 0 || (dy2 == 0 && dx2 < 0);
        return nHalf1 != nHalf2 ? nHalf1 - nHalf2 : Sign(dx2 * dy1 - dx1 * dy2);
    }

private:
    bool Touches(const Corner* pCorner) const { return m_pStart == pCorner || m_pEnd == pCorner; }

    static const Corner* FarEnd(const KyGraphArc& arc, const Corner* pNear) {
        return static_cast<const Corner*>(arc.m_pStart == pNear ? arc.m_pEnd : arc.m_pStart);
    }
};

// Four blocks around a square: nine corners, twelve streets.
void Build(KyGraph& plan) {
    for (long x = 0; x < 3; ++x) {
        for (long y = 0; y < 3; ++y) {
            if (x < 2) plan.Create(new Street(new Corner(x, y), new Corner(x + 1, y)));
            if (y < 2) plan.Create(new Street(new Corner(x, y), new Corner(x, y + 1)));
        }
    }
}

void BlocksAreTraced() {
    KyGraph plan;
    Build(plan);

    EXPECT(plan.m_lstNode.GetLength() == 9);
    EXPECT(plan.m_lstArc.GetLength() == 12);

    long nSides = 0;
    for (KyGraphArc* pArc : plan.m_lstArc) {
        for (int nDir : {KyGraphArc::Forward, KyGraphArc::Backward}) {
            const std::unique_ptr<KyGraphPath> pPath(pArc->FindMesh(nDir));
            nSides += pPath->GetLength();
        }
    }

    // Sixteen sides face a block of four, eight the outside of eight.
    EXPECT(nSides == 16 * 4 + 8 * 8);

    Corner key(1, 1);
    EXPECT(plan.Find(key) == 4);
}

// Every slot of a container of streets, through the base.
template <class List>
void EverySlot(List& list, KyGraphArc* pA, KyGraphArc* pB) {
    KyDynArrayBase<KyGraphArc*>& base = list;
    EXPECT(base.Append(pA) == 0);
    base.InsertHead(pB);
    base.MoveToFirst();
    EXPECT(base.GetCurData() == pB);
    base.MoveToNext();
    EXPECT(base.GetCurData() == pA);
    base.MoveToPre();
    base.MoveToLast();
    base.MoveTo(1);
    EXPECT(base.GetCurData() == pA);
    EXPECT(*base.GetFirst() == pB);
    EXPECT(*base.GetLast() == pA);
    EXPECT(base.GetNext(base.GetFirst()) == base.GetLast());
    EXPECT(base.GetPre(base.GetLast()) == base.GetFirst());
    EXPECT(*base.GetAt(1) == pA);
    EXPECT(base[0] == pB);
    EXPECT(base.Move(0, 2));
    EXPECT(base[0] == pA);
    base.Sort(true);
    base.Sort([](KyGraphArc* const& a, KyGraphArc* const& b) { return a->CmpArc(*b); });
    EXPECT(base.GetLength() == 2);
    for (long i = 0; i < 2; ++i) {
        base[i] = nullptr;
    }
    base.MoveTo(0);
    base.SetCurData(nullptr);
    base.InsertCur(nullptr);
    base.Insert(1, nullptr);
    base.DelCur();
    EXPECT(base.GetLength() == 3);
    base.SetLength(4, false);
    base.ReAllocate(5);
    EXPECT(base.GetLength() == 5);
    base.Reset();
    EXPECT(base.GetLength() == 0);
}

void ListsInsideLibraryClassesAnswerThroughTheBase() {
    Corner a(0, 0), b(1, 0), c(0, 1);
    Street ab(&a, &b), ac(&a, &c);

    KyGraphNode node;
    EverySlot(node.m_lstArc, &ab, &ac);
    KyGraph plan;
    EverySlot(plan.m_lstArc, &ab, &ac);
    KyGraphPath path;
    EverySlot(path, &ab, &ac);
    KyDynArray<KyGraphArc*> array;
    EverySlot(array, &ab, &ac);
    KyDynPArray<KyGraphArc> owning;
    EverySlot(owning, &ab, &ac);
    KyXList<KyGraphArc*> indexed;
    EverySlot(indexed, &ab, &ac);
}

void ArcsAreHandedOverInAContainerOfTheCallers() {
    KyGraph plan;
    Build(plan);
    KyGraphNode* pMiddle = *plan.m_lstNode.GetAt(4);
    KyDynArray<KyGraphArc*> arcsOut;
    KyList<KyGraphArc*> arcsIn;

    pMiddle->GetArcOut(arcsOut);
    pMiddle->GetArcIn(arcsIn);

    EXPECT(arcsOut.GetLength() == 2);
    EXPECT(arcsIn.GetLength() == 2);
    const KyArray<KyGraphArc*> snapshot(arcsOut);
    EXPECT(snapshot.GetLength() == 2);
}

}  // namespace

int main() {
#ifdef CONSUMER_EXPECTS_VERSION
    EXPECT(std::strcmp(VEXABASE_VERSION, CONSUMER_EXPECTS_VERSION) == 0);
#endif

    BlocksAreTraced();
    ListsInsideLibraryClassesAnswerThroughTheBase();
    ArcsAreHandedOverInAContainerOfTheCallers();

    std::printf("%s\n", g_nFailures == 0 ? "all holds" : "failed");
    return g_nFailures == 0 ? 0 : 1;
}
