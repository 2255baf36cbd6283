#include "DialogLayoutAxis.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zelui {

namespace {

// What is left of wide gaps when the room is needed.
constexpr float kSmallestGap = 9.0f;
// Frames that touch share the line between them.
constexpr float kSharedLine = 1.0f;

bool IsKeptAtEnd(const Span& span) { return span.kind == SpanKind::kKeptAtEnd; }

bool IsKeptAtStart(const Span& span) { return span.kind == SpanKind::kStays || span.kind == SpanKind::kFloats; }

bool IsBehind(const Span& span, const Span& other) {
    return span.start >= other.GetEnd() - std::min(kSharedLine, std::min(span.size, other.size));
}

}  // namespace

DialogLayoutAxis::DialogLayoutAxis(std::vector<Span> children, float extent, bool inRow, bool keepsEndMargin)
    : mChildren(std::move(children)),
      mExtent(extent),
      mInRow(inRow),
      mKeepsEndMargin(keepsEndMargin),
      mFromStart(mChildren.size()),
      mFromEnd(mChildren.size()) {
    if (mInRow) MoveOn();
}

void DialogLayoutAxis::MoveOn() {
    std::vector<std::size_t> order(mChildren.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [this](std::size_t a, std::size_t b) { return mChildren[a].start < mChildren[b].start; });
    for (const std::size_t mover : order) {
        if (!IsKeptAtStart(mChildren[mover])) continue;
        const float distance = mFromStart[mover] + mChildren[mover].GetGrowth();
        for (std::size_t i = 0; i < mChildren.size(); ++i) {
            const bool moves = !IsKeptAtEnd(mChildren[i]) && IsBehind(mChildren[i], mChildren[mover]);
            if (moves && i != mover) mFromStart[i] = std::max(mFromStart[i], distance);
        }
    }
    std::stable_sort(order.begin(), order.end(),
                     [this](std::size_t a, std::size_t b) { return mChildren[a].GetEnd() > mChildren[b].GetEnd(); });
    for (const std::size_t mover : order) {
        if (!IsKeptAtEnd(mChildren[mover])) continue;
        const float distance = mFromEnd[mover] + mChildren[mover].GetGrowth();
        for (std::size_t i = 0; i < mChildren.size(); ++i) {
            const bool moves = !IsKeptAtStart(mChildren[i]) && IsBehind(mChildren[mover], mChildren[i]);
            if (moves && i != mover) mFromEnd[i] = std::max(mFromEnd[i], distance);
        }
    }
}

float DialogLayoutAxis::GetRoomAtEnd(const Span& child) const {
    if (!mKeepsEndMargin) return std::min(mExtent - child.GetEnd(), kSmallestMargin);
    float last = child.GetEnd();
    for (const Span& other : mChildren) {
        if (IsKeptAtStart(other)) last = std::max(last, other.GetEnd());
    }
    return mExtent - last;
}

float DialogLayoutAxis::NeedOf(std::size_t i) const {
    const Span& child = mChildren[i];
    const float more = child.GetGrowth() + mFromStart[i] + mFromEnd[i];
    if (more <= 0.0f) return mExtent;
    if (child.kind == SpanKind::kStretches) return mExtent + more;
    if (IsKeptAtStart(child)) return child.GetEnd() + more + GetRoomAtEnd(child);
    return mExtent - (child.start - more) + std::min(child.start, kSmallestMargin);
}

float DialogLayoutAxis::NeedBetween(std::size_t before, std::size_t behind) const {
    const Span& first = mChildren[before];
    const Span& second = mChildren[behind];
    if (!IsKeptAtStart(first) || !IsKeptAtEnd(second) || first.GetEnd() > second.start) return mExtent;
    const float end = first.GetEnd() + mFromStart[before] + first.GetGrowth();
    const float start = second.start - mFromEnd[behind] - second.GetGrowth();
    return mExtent + end + std::min(second.start - first.GetEnd(), kSmallestGap) - start;
}

float DialogLayoutAxis::GetNeed() const {
    float need = mExtent;
    for (std::size_t i = 0; i < mChildren.size(); ++i) {
        need = std::max(need, NeedOf(i));
        for (std::size_t j = 0; mInRow && j < mChildren.size(); ++j) need = std::max(need, NeedBetween(i, j));
    }
    return need;
}

std::vector<Span> DialogLayoutAxis::Arrange(float extent) const {
    std::vector<Span> arranged = mChildren;
    for (std::size_t i = 0; i < arranged.size(); ++i) {
        Span& child = arranged[i];
        const float start = child.start + mFromStart[i];
        const float end = child.GetEnd() + (extent - mExtent) - mFromEnd[i];
        child.size = std::max(child.size, child.need);
        if (child.kind == SpanKind::kStretches) child.size = std::max(end - start, 0.0f);
        child.start = IsKeptAtEnd(child) ? end - child.size : start;
    }
    return arranged;
}

}  // namespace zelui
