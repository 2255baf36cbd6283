#include "DialogLayoutItem.h"

namespace zelui {

namespace {

SpanKind GetKind(bool startIsFree, bool endIsPinned) {
    if (endIsPinned) return startIsFree ? SpanKind::kKeptAtEnd : SpanKind::kStretches;
    return startIsFree ? SpanKind::kFloats : SpanKind::kStays;
}

}  // namespace

SpanKind GetHorizontalKind(std::uint32_t constraints) {
    return GetKind((constraints & kLeftEdgeFree) != 0, (constraints & kRightEdgePinned) != 0);
}

SpanKind GetVerticalKind(std::uint32_t constraints) {
    return GetKind((constraints & kTopEdgeFree) != 0, (constraints & kBottomEdgePinned) != 0);
}

}  // namespace zelui
