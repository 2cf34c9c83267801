// The faces of a plane map.
//
// A walk goes along arcs with one and the same face on its left, until it is back. Every side of every arc
// that is no dead end lies on one walk. A walk around a bounded face is counterclockwise, its area positive;
// each component also has one walk around its outside, with negative area. A component that lies inside a
// bounded face of another one is a hole of that face: its outer walk is part of the face's boundary.
#pragma once

#include <utility>
#include <vector>

#include "examples/faces/PlaneMap.h"

namespace faces {

struct Walk {
    unsigned int m_nFirst;   // where its sides begin in FaceMap::m_sides
    unsigned int m_nLength;  // how many they are
    long m_nTwiceArea;       // in cells
    long m_nFace;            // on its left; FaceMap::Outside for the unbounded one
};

struct Face {
    unsigned int m_nOuterWalk;
    long m_nTwiceArea;  // in cells, without the holes
};

struct Hole {
    long m_nFace;  // the face it is in
    unsigned int m_nWalk;
};

struct EulerCount {
    long m_nNodes;
    long m_nArcs;
    long m_nWalks;
    long m_nComponents;

    bool Holds() const { return m_nNodes - m_nArcs + m_nWalks == 2 * m_nComponents; }
};

class FaceMap {
public:
    static constexpr long Outside = -1;

    /// Traces every walk, from arcs that are no bridges. Requires pruned dead ends and marked bridges, and a
    /// map that lives as long. O(arcs). Throws std::logic_error if the map turns out not to be plane.
    /// Sends PartDone now and then.
    explicit FaceMap(const PlaneMap& map);

    /// Finds the innermost face around each component, and makes the component a hole of it.
    void LocateHoles();

    /// What Euler's formula is about, counted over what was traced.
    EulerCount CountForEuler() const;

    /// Pairs of bounded faces with a common arc, the lesser number first, ascending, each once.
    std::vector<std::pair<long, long>> Neighbours() const;

    /// Twice the area of all bounded faces together, in cells.
    long TwiceTotalArea() const;

    /// The points of a walk in order.
    Line PointsOf(const Walk& walk) const;

    /// The walk that a side lies on; NoWalk for dead ends.
    unsigned int WalkOf(Side nSide) const { return m_walkOfSide[nSide]; }

    /// The face to the left of a side; Outside for the unbounded one and for dead ends.
    long FaceOf(Side nSide) const;

    static constexpr unsigned int NoWalk = ~0U;

    const PlaneMap& m_map;
    std::vector<Side> m_sides;
    std::vector<Walk> m_walks;
    std::vector<Face> m_faces;
    std::vector<Hole> m_holes;  // ascending by face

private:
    void AddWalk(const KyGraphPath& path);
    void MakeHole(unsigned int nWalk, long nFace);
    bool Surrounds(const Walk& walk, GridPoint point) const;
    std::vector<unsigned int> OuterWalks() const;

    std::vector<unsigned int> m_walkOfSide;
};

}  // namespace faces
