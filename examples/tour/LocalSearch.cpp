#include "examples/tour/LocalSearch.h"

#include <algorithm>
#include <utility>

namespace tour {
namespace {

constexpr int MaxNeighbours = 8;
constexpr std::size_t MaxSteps = 25;
constexpr int MaxSegment = 3;
constexpr int FewestCities = 5;

std::size_t Index(int i) { return static_cast<std::size_t>(i); }

}  // namespace

LocalSearch::LocalSearch(const Instance& instance)
    : m_instance(instance),
      m_nNeighbours(std::min(MaxNeighbours, instance.Cities() - 1)),
      m_neighbours(instance.Neighbours(m_nNeighbours)),
      m_position(Index(instance.Cities())),
      m_isChanged(Index(instance.Cities()), 0) {}

void LocalSearch::Improve(std::vector<int>& order) {
    if (m_instance.Cities() < FewestCities) {
        return;
    }
    m_order.swap(order);
    for (int i = m_instance.Cities() - 1; i >= 0; --i) {
        m_position[Index(m_order[Index(i)])] = i;
        MarkChanged(m_order[Index(i)]);
    }
    while (!m_changed.empty()) {
        const int city = m_changed.back();
        m_changed.pop_back();
        m_isChanged[Index(city)] = 0;
        while (ImproveAt(city)) {
        }
    }
    m_order.swap(order);
}

const int* LocalSearch::Neighbours(int city) const {
    return &m_neighbours[Index(city) * Index(m_nNeighbours)];
}

int LocalSearch::Next(int city, bool bForward) const {
    const int n = m_instance.Cities();
    const int i = m_position[Index(city)] + (bForward ? 1 : -1);
    return m_order[Index(i == n ? 0 : i < 0 ? n - 1 : i)];
}

/// Replaces the edges a-b and c-d, where b follows a as d follows c, by a-c and b-d.
void LocalSearch::Exchange(int a, int b, int c, int d) {
    if (Next(a, true) == b) {
        ReversePath(b, c);
    } else {
        ReversePath(a, d);
    }
}

/// Turns the path round, or the rest of the tour, which comes to the same and may be shorter.
void LocalSearch::ReversePath(int from, int to) {
    const int n = m_instance.Cities();
    int i = m_position[Index(from)];
    int j = m_position[Index(to)];
    int nLength = (j - i + n) % n + 1;
    if (2 * nLength > n) {
        std::swap(i, j);
        i = (i + 1) % n;
        j = (j + n - 1) % n;
        nLength = n - nLength;
    }
    for (int k = nLength / 2; k > 0; --k) {
        std::swap(m_order[Index(i)], m_order[Index(j)]);
        m_position[Index(m_order[Index(i)])] = i;
        m_position[Index(m_order[Index(j)])] = j;
        i = i + 1 == n ? 0 : i + 1;
        j = j == 0 ? n - 1 : j - 1;
    }
}

bool LocalSearch::ImproveAt(int city) {
    return Chain(city, Next(city, true)) || Chain(city, Next(city, false)) || MoveSegments(city, true) ||
           MoveSegments(city, false);
}

bool LocalSearch::Chain(int t1, int t2) {
    const long nRemoved = Distance(t1, t2);
    for (int k = 0; k < m_nNeighbours; ++k) {
        const int t3 = Neighbours(t2)[k];
        if (Distance(t2, t3) >= nRemoved) {
            break;
        }
        if (t3 == t1 || t3 == Next(t2, Next(t1, true) == t2)) {
            continue;
        }
        m_steps.clear();
        if (GoOn(t1, TakeStep(t1, t2, t3)) > 0) {
            return true;
        }
    }
    return false;
}

/// Makes the exchange that joins t2 to t3 and returns how much shorter the tour is now.
long LocalSearch::TakeStep(int t1, int t2, int t3) {
    const int t4 = Next(t3, Next(t1, true) != t2);
    Exchange(t1, t2, t4, t3);
    m_steps.push_back({t2, t3, t4});
    return Distance(t1, t2) + Distance(t3, t4) - Distance(t2, t3) - Distance(t1, t4);
}

/// Extends a chain whose first step gained so much, keeps its best part and returns what that gains.
long LocalSearch::GoOn(int t1, long nGain) {
    long nBestGain = 0;
    std::size_t nBestSteps = 0;
    while (true) {
        if (nGain > nBestGain) {
            nBestGain = nGain;
            nBestSteps = m_steps.size();
        }
        const int t2 = m_steps.back().t4;
        const int t3 =
            m_steps.size() < MaxSteps ? BestThird(t1, t2, nGain + Distance(t1, t2) - nBestGain) : -1;
        if (t3 < 0) {
            KeepSteps(t1, nBestSteps);
            return nBestGain;
        }
        nGain += TakeStep(t1, t2, t3);
    }
}

/// The city to join t2 to: that which leaves the shortest path, of those nearer than nLimit. -1 if there is
/// none.
int LocalSearch::BestThird(int t1, int t2, long nLimit) const {
    const bool bForward = Next(t1, true) == t2;
    int best = -1;
    long nBest = 0;
    for (int k = 0; k < m_nNeighbours; ++k) {
        const int t3 = Neighbours(t2)[k];
        const long nAdded = Distance(t2, t3);
        if (nAdded >= nLimit) {
            break;
        }
        const int t4 = Next(t3, !bForward);
        if (t3 == t1 || t4 == t2 || IsNew(t3, t4)) {
            continue;
        }
        const long nShorter = Distance(t3, t4) - nAdded;
        if (best < 0 || nShorter > nBest) {
            best = t3;
            nBest = nShorter;
        }
    }
    return best;
}

/// Whether this chain has made the edge: it must not take it away again.
bool LocalSearch::IsNew(int a, int b) const {
    return std::any_of(m_steps.begin(), m_steps.end(), [a, b](const Step& step) {
        return (step.t2 == a && step.t3 == b) || (step.t2 == b && step.t3 == a);
    });
}

/// Takes back the steps behind the first nSteps.
void LocalSearch::KeepSteps(int t1, std::size_t nSteps) {
    for (; m_steps.size() > nSteps; m_steps.pop_back()) {
        const Step& step = m_steps.back();
        Exchange(t1, step.t4, step.t2, step.t3);
    }
    for (const Step& step : m_steps) {
        MarkChanged(step.t2);
        MarkChanged(step.t3);
        MarkChanged(step.t4);
    }
}

/// Tries to move one, two or three cities, of which s1 is the first or the last.
bool LocalSearch::MoveSegments(int s1, bool bForward) {
    int s2 = s1;
    for (int nCities = 1; nCities <= std::min(MaxSegment, m_instance.Cities() - 3); ++nCities) {
        if (MoveSegment(s1, s2, bForward, nCities)) {
            return true;
        }
        s2 = Next(s2, bForward);
    }
    return false;
}

/// Moves the cities from s1 to s2 between q, near s1, and one of its neighbours r, if that gains something.
bool LocalSearch::MoveSegment(int s1, int s2, bool bForward, int nCities) {
    const int p = Next(s1, !bForward);
    const int after = Next(s2, bForward);
    const long nRemoved = Distance(p, s1) + Distance(s2, after) - Distance(p, after);
    const auto isMoved = [&](int city) {
        int moved = s1;
        for (int i = 0; i < nCities; ++i, moved = Next(moved, bForward)) {
            if (moved == city) {
                return true;
            }
        }
        return false;
    };
    for (int k = 0; k < m_nNeighbours; ++k) {
        const int q = Neighbours(s1)[k];
        if (Distance(s1, q) >= nRemoved) {
            break;
        }
        if (isMoved(q)) {
            continue;
        }
        for (const bool bBehind : {true, false}) {
            const int r = Next(q, bForward == bBehind);
            if (isMoved(r) || nRemoved + Distance(q, r) - Distance(q, s1) - Distance(s2, r) <= 0) {
                continue;
            }
            const int first = bBehind ? q : r;
            const int second = bBehind ? r : q;
            Exchange(p, s1, first, second);
            Exchange(p, first, after, s2);
            if (bBehind) {
                Exchange(q, s2, s1, r);
            }
            for (const int city : {p, after, s1, s2, q, r}) {
                MarkChanged(city);
            }
            return true;
        }
    }
    return false;
}

void LocalSearch::MarkChanged(int city) {
    if (m_isChanged[Index(city)] == 0) {
        m_isChanged[Index(city)] = 1;
        m_changed.push_back(city);
    }
}

}  // namespace tour
