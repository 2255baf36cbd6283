#pragma once

#include <cmath>

namespace zelui {

/// Where an edge at `coordinate` falls. Halves go up, also below 0: that keeps a rectangle's size wherever it is moved
/// to, and is how Qt's painter places the edges of what it fills.
inline int ToPixelEdge(float coordinate) { return static_cast<int>(std::floor(static_cast<double>(coordinate) + 0.5)); }

}  // namespace zelui
