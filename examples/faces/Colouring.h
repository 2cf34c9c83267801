// Colours for faces, so that neighbours differ.
#pragma once

#include <utility>
#include <vector>

namespace faces {

/// Pairs of faces with a common arc, the lesser number first, ascending, each once. Takes the faces on the
/// two sides of each arc, one arc after the other; a negative number is no face.
std::vector<std::pair<long, long>> PairsAcross(const std::vector<long>& faceOfSides);

/// Six are enough for every plane map: some face always has fewer than six neighbours among those that are
/// left.
constexpr int Colours = 6;

/// Gives each of nFaces faces a colour, 0 to Colours - 1. `neighbours` names each pair once. Greedy: a face
/// with fewest neighbours is set aside until none is left; then they take their colours in the opposite
/// order, each the least used one that no neighbour has. O(faces + neighbours). Throws
/// std::logic_error if that takes more colours, as it does only where the map is not plane.
std::vector<int> ColourFaces(std::size_t nFaces, const std::vector<std::pair<long, long>>& neighbours);

}  // namespace faces
