// One of everything that the printers print. The debugger stops in Stop and prints the variables of main.
#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyDynPArray.h"
#include "VexaBase/containers/KyFill.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/containers/KyXList.h"
#include "VexaBase/event/KyEventReactor.h"
#include "VexaBase/ga/GA_Population.h"
#include "VexaBase/graph/KyGraph.h"
#include "VexaBase/graph/KyGraphPath.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"
#include "VexaBase/string/KyString.h"

namespace {

struct Shape {
    explicit Shape(int nSides) : m_nSides(nSides) {}
    virtual ~Shape() = default;

    int m_nSides;
};

struct Circle : Shape {
    explicit Circle(double dRadius) : Shape(1), m_dRadius(dRadius) {}

    double m_dRadius;
};

struct City : GA_Gene {
    explicit City(int nCity) : m_nCity(nCity) {}

    int m_nCity;
};

struct Tour : GA_Individual {
    bool operator<(const GA_Individual& other) const override {
        return m_nMiles < static_cast<const Tour&>(other).m_nMiles;
    }
    bool operator>(const GA_Individual& other) const override {
        return m_nMiles > static_cast<const Tour&>(other).m_nMiles;
    }

    long m_nMiles = 0;
};

Tour* NewTour(long nMiles, int nFirst, int nSecond) {
    auto* pTour = new Tour;
    pTour->m_nMiles = nMiles;
    KyFill(*pTour, {new City(nFirst), new City(nSecond)});
    return pTour;
}

struct Corner : KyGraphNode {
    explicit Corner(int nCorner) : m_nCorner(nCorner) {}
    int CmpNode(const KyGraphNode& other) const override {
        return m_nCorner - static_cast<const Corner&>(other).m_nCorner;
    }

    int m_nCorner;
};

struct Street : KyGraphArc {
    Street(Corner* pStart, Corner* pEnd, int nStreet) : KyGraphArc(pStart, pEnd), m_nStreet(nStreet) {}
    int CmpArc(const KyGraphArc& other) const override {
        return m_nStreet - static_cast<const Street&>(other).m_nStreet;
    }

    int m_nStreet;
};

[[gnu::noinline]] void Stop() { asm volatile(""); }

}  // namespace

int main() {
    KyArray<long> array;
    KyFill(array, {3, 1, 2});
    KyDynArray<long> dynArray(4, 8);
    KyFill(dynArray, {30, 10, 20});
    dynArray.MoveToFirst();
    KyDynArray<KyString> empty;
    KyDynPArray<Shape> dynPArray(3);
    KyFill(dynPArray, {new Shape(4), nullptr, new Circle(1.5)});

    KyList<char> list;
    KyFill(list, {'a', 'b'});
    KyDList<KyString> dList;
    KyFill(dList, {L"one", L"two"});
    dList.MoveTo(-1);
    KyPDList<Shape> pdList;
    KyFill(pdList, {new Circle(2), nullptr});
    KyXList<int> xList(2);
    KyFill(xList, {1, 2, 3, 4, 5});
    KyPXList<Shape> pxList;
    KyFill(pxList, {new Shape(3)});
    KyListQuene<long> quene(4);
    KyFill(quene, {7, 8});
    KyPDListQuene<Shape> pdQuene;
    KyFill(pdQuene, {new Circle(3)});

    KyString string(L"W\u00E4hlkreis");
    string << 9.0;
    KyString emptyString;
    KyDynArrayStream stream;
    stream << 'v' << static_cast<short>(258);
    KyDynArrayStreamEx streamEx(2);
    streamEx << 'a' << 'b' << 'c';
    streamEx.MoveTo(1);
    KyEvent event(L"saved", nullptr, 0x5);

    GA_Individual individual;
    KyFill(individual, {new City(1), new City(2), nullptr});
    GA_Population population(2, 10);
    KyFill(population, {NewTour(50, 3, 4), NewTour(40, 5, 6)});

    auto* const pA = new Corner(1);
    auto* const pB = new Corner(2);
    KyGraph graph;
    graph.Create(new Street(pA, pB, 10));
    graph.Create(new Street(pB, pA, 20));
    [[maybe_unused]] KyGraphNode& node = *pA;
    KyGraphArc loose;
    loose.m_nBits = 3;
    KyGraphPath& path = *(*graph.m_lstArc.GetFirst())->FindMesh(KyGraphArc::Forward);

    Stop();
    delete &path;
    return 0;
}
