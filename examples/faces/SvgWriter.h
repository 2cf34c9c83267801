// Draws the faces of a map as SVG.
#pragma once

#include <string>

#include "examples/faces/DrawnMap.h"

namespace faces {

/// The picture as the text of an SVG file, 1280 units wide: title, faces filled so that neighbours differ,
/// borders, legend. A face shows its name when pointed at. The same map gives the same text.
std::string DrawSvg(const DrawnMap& map);

/// 1234567 as 1,234,567.
std::string WithCommas(long n);

}  // namespace faces
