#include "examples/faces/PointIndex.h"

#include <algorithm>
#include <numeric>

namespace faces {

PointIndex::PointIndex(const std::vector<Segment>& segments) {
    if (segments.empty()) return;
    m_nLowX = segments.front().m_from.x;
    int nHighX = m_nLowX;
    for (const Segment& segment : segments) {
        m_nLowX = std::min(m_nLowX, segment.m_from.x);
        nHighX = std::max(nHighX, segment.m_to.x);
    }
    while (static_cast<std::size_t>(nHighX - m_nLowX) >> m_nShift > segments.size()) ++m_nShift;

    // All ends, by column: counted, then put in their places from each column's end to its beginning.
    m_first.assign(ColumnOf({nHighX, 0}) + 2, 0);
    const auto forEachEnd = [&segments](auto&& visit) {
        const Segment* pBefore = nullptr;
        for (const Segment& segment : segments) {
            if (pBefore == nullptr || segment.m_from != pBefore->m_from) visit(segment.m_from);
            visit(segment.m_to);
            pBefore = &segment;
        }
    };
    forEachEnd([this](GridPoint point) { ++m_first[ColumnOf(point)]; });
    std::partial_sum(m_first.begin(), m_first.end(), m_first.begin());
    m_points.resize(m_first.back());
    forEachEnd([this](GridPoint point) { m_points[--m_first[ColumnOf(point)]] = point; });

    // Each column in order and without duplicates, moved up to the one before it.
    auto itEnd = m_points.begin();
    for (std::size_t i = 0; i + 1 < m_first.size(); ++i) {
        const auto itFirst = m_points.begin() + m_first[i];
        const auto itLast = m_points.begin() + m_first[i + 1];
        std::sort(itFirst, itLast);
        m_first[i] = static_cast<unsigned int>(itEnd - m_points.begin());
        itEnd = std::move(itFirst, std::unique(itFirst, itLast), itEnd);
    }
    m_points.erase(itEnd, m_points.end());
    m_first.back() = static_cast<unsigned int>(m_points.size());
}

unsigned int PointIndex::Find(GridPoint point) const {
    const std::size_t nColumn = ColumnOf(point);
    const auto it =
        std::lower_bound(m_points.begin() + m_first[nColumn], m_points.begin() + m_first[nColumn + 1], point);
    return static_cast<unsigned int>(it - m_points.begin());
}

}  // namespace faces
