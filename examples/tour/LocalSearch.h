// Improves a tour until no step of its two kinds shortens it: chains of 2-opt exchanges in the manner of Lin
// and Kernighan, and moves of up to three cities in a row to another place.
//
// The tour is an array, its cities' positions another. A chain takes away the edge from a city t1 to its
// neighbour t2, joins t2 to a near city t3, takes away the edge from t3 on the side that leaves a path, and
// so on from the new end; it keeps the steps up to the best closed tour on the way. Only near neighbours are
// tried, and only from cities whose surroundings changed.
#pragma once

#include <vector>

#include "examples/tour/Instance.h"

namespace tour {

class LocalSearch {
public:
    explicit LocalSearch(const Instance& instance);

    /// Shortens the tour in place; the result depends on the order alone. A tour of fewer than five cities
    /// stays as it is.
    void Improve(std::vector<int>& order);

private:
    /// One exchange of a chain from t1: the edges t1-t2 and t4-t3 went, t1-t4 and t2-t3 came.
    struct Step {
        int t2;
        int t3;
        int t4;
    };

    long Distance(int a, int b) const { return m_instance.Distance(a, b); }
    const int* Neighbours(int city) const;
    int Next(int city, bool bForward) const;
    void Exchange(int a, int b, int c, int d);
    void ReversePath(int from, int to);

    bool ImproveAt(int city);
    bool Chain(int t1, int t2);
    long TakeStep(int t1, int t2, int t3);
    long GoOn(int t1, long nGain);
    int BestThird(int t1, int t2, long nLimit) const;
    bool IsNew(int a, int b) const;
    void KeepSteps(int t1, std::size_t nSteps);
    bool MoveSegments(int s1, bool bForward);
    bool MoveSegment(int s1, int s2, bool bForward, int nCities);
    void MarkChanged(int city);

    const Instance& m_instance;
    int m_nNeighbours;
    std::vector<int> m_neighbours;
    std::vector<int> m_order;
    std::vector<int> m_position;
    std::vector<int> m_changed;  // cities to improve at, the next one at the end
    std::vector<char> m_isChanged;
    std::vector<Step> m_steps;  // of the chain under way
};

}  // namespace tour
