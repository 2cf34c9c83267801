// The sorted insertion, transcribed on positions: what a node's AppendArc and a graph's search probe, and
// where the newcomer belongs. Both follow the same steps.
#pragma once

#include <vector>

struct Bisection {
    bool m_bFound = false;       // an equal element is listed, at m_nPlace
    long m_nPlace = 0;           // else: the newcomer belongs in front of the element at m_nPlace
    std::vector<long> m_probes;  // the positions asked about, in order
};

/// Runs the steps over nLength elements. answer(i) is the newcomer's three-way order against the element at
/// i.
template <class Answer>
Bisection Bisect(long nLength, Answer answer) {
    Bisection result;
    const auto probe = [&](long i) {
        result.m_probes.push_back(i);
        result.m_nPlace = i;
        return answer(i);
    };
    if (nLength == 0) return result;
    if (probe(0) < 0) return result;
    if (probe(nLength - 1) > 0) {
        result.m_nPlace = nLength;
        return result;
    }
    long lo = 0;
    long hi = nLength - 1;
    while (hi > lo) {
        const long mid = (lo + hi) / 2;
        const int c = probe(mid);
        if (c > 0) {
            lo = mid + 1;
        } else if (c == 0) {
            result.m_bFound = true;
            return result;
        } else {
            hi = mid - 1;
        }
    }
    if (hi != lo) return result;
    const int c = probe(lo);
    if (c > 0) ++result.m_nPlace;
    result.m_bFound = c == 0;
    return result;
}
