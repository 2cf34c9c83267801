// Draws a tour, and beside it how the best and the mean length went over the generations.
#pragma once

#include <string>
#include <vector>

#include "examples/tour/Instance.h"
#include "examples/tour/Tour.h"

namespace tour {

struct Picture {
    const Instance& m_instance;
    const Order& m_order;
    const std::vector<Progress>& m_history;
    std::string m_strTitle;
    std::string m_strSubtitle;
};

/// The picture as SVG. On a globe's map the roads are great circles.
std::string DrawSvg(const Picture& picture);

}  // namespace tour
