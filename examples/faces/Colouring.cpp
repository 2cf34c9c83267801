#include "examples/faces/Colouring.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace faces {
namespace {

using Neighbours = std::vector<std::vector<std::size_t>>;

/// The faces, each one with fewest neighbours among those that come after it.
std::vector<std::size_t> FewestNeighboursFirst(const Neighbours& neighbours) {
    std::vector<std::size_t> left(neighbours.size());  // neighbours not set aside yet
    std::vector<std::vector<std::size_t>> byLeft;      // outdated entries are passed over
    const auto file = [&](std::size_t nFace) {
        if (left[nFace] >= byLeft.size()) byLeft.resize(left[nFace] + 1);
        byLeft[left[nFace]].push_back(nFace);
    };
    for (std::size_t i = neighbours.size(); i-- > 0;) {
        left[i] = neighbours[i].size();
        file(i);
    }

    std::vector<std::size_t> order;
    std::vector<bool> isAside(neighbours.size(), false);
    for (std::size_t n = 0; n < byLeft.size();) {
        if (byLeft[n].empty()) {
            ++n;
            continue;
        }
        const std::size_t nFace = byLeft[n].back();
        byLeft[n].pop_back();
        if (isAside[nFace] || left[nFace] != n) continue;
        isAside[nFace] = true;
        order.push_back(nFace);
        for (const std::size_t nNeighbour : neighbours[nFace]) {
            if (isAside[nNeighbour]) continue;
            --left[nNeighbour];
            file(nNeighbour);
        }
        n = n > 0 ? n - 1 : 0;
    }
    return order;
}

}  // namespace

std::vector<std::pair<long, long>> PairsAcross(const std::vector<long>& faceOfSides) {
    std::vector<std::pair<long, long>> pairs;
    for (std::size_t i = 0; i + 1 < faceOfSides.size(); i += 2) {
        const long nLeft = faceOfSides[i];
        const long nRight = faceOfSides[i + 1];
        if (nLeft < 0 || nRight < 0 || nLeft == nRight) continue;
        pairs.emplace_back(std::min(nLeft, nRight), std::max(nLeft, nRight));
    }
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    return pairs;
}

std::vector<int> ColourFaces(std::size_t nFaces, const std::vector<std::pair<long, long>>& pairs) {
    Neighbours neighbours(nFaces);
    for (const auto& [nA, nB] : pairs) {
        neighbours[static_cast<std::size_t>(nA)].push_back(static_cast<std::size_t>(nB));
        neighbours[static_cast<std::size_t>(nB)].push_back(static_cast<std::size_t>(nA));
    }
    const std::vector<std::size_t> order = FewestNeighboursFirst(neighbours);

    constexpr int none = -1;
    std::vector<int> colours(nFaces, none);
    std::array<long, Colours> used{};
    for (auto it = order.rbegin(); it != order.rend(); ++it) {
        std::array<bool, Colours> isTaken{};
        for (const std::size_t nNeighbour : neighbours[*it]) {
            if (colours[nNeighbour] != none) isTaken[static_cast<std::size_t>(colours[nNeighbour])] = true;
        }
        std::size_t nBest = Colours;
        for (std::size_t n = 0; n < Colours; ++n) {
            if (!isTaken[n] && (nBest == Colours || used[n] < used[nBest])) nBest = n;
        }
        if (nBest == Colours)
            throw std::logic_error("the map is not plane: its faces need more than six colours");
        ++used[nBest];
        colours[*it] = static_cast<int>(nBest);
    }
    return colours;
}

}  // namespace faces
