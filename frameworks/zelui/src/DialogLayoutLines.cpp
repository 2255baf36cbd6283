#include "DialogLayoutLines.h"

#include <algorithm>

namespace zelui {

namespace {

// Sums of fractions are not exact.
constexpr float kTolerance = 0.01f;

/// The places of those that are in lines, from the left.
std::vector<std::size_t> GetOrder(const std::vector<DialogLayoutLines::Child>& children) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (children[i].isInLines) order.push_back(i);
    }
    std::stable_sort(order.begin(), order.end(),
                     [&children](std::size_t a, std::size_t b) { return children[a].left < children[b].left; });
    return order;
}

}  // namespace

DialogLayoutLines::DialogLayoutLines(const std::vector<Child>& children, float limit) {
    for (const Child& child : children) mPlaces.push_back({0, child.left});
    const std::vector<std::size_t> order = GetOrder(children);
    if (order.empty()) return;
    const float begin = children[order.front()].left;
    float lineBegin = begin;
    for (const std::size_t i : order) {
        const float left = children[i].left - lineBegin + begin;
        if (left + children[i].width > limit + kTolerance && children[i].left > lineBegin) {
            ++mLineCount;
            lineBegin = children[i].left;
        }
        mPlaces[i] = {mLineCount - 1, children[i].left - lineBegin + begin};
    }
}

}  // namespace zelui
