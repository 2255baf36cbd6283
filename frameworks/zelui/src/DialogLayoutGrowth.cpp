#include "DialogLayoutGrowth.h"

#include <algorithm>

#include "DialogLayoutAxis.h"

namespace zelui {

namespace {

using zelcore::geom::PointF;
using zelcore::geom::RectF;

/// An item and the size that it needs.
struct Grown {
    const DialogLayoutItem* item = nullptr;
    PointF need;
    std::vector<Grown> children;
};

DialogLayoutAxis MakeAxis(const Grown& parent, bool horizontal) {
    std::vector<Span> spans;
    for (const Grown& child : parent.children) {
        const RectF frame = child.item->node->UI_GetLocalRectF();
        const std::uint32_t mask = child.item->constraints;
        spans.push_back(horizontal ? Span{frame.left, frame.width, child.need.x, GetHorizontalKind(mask)}
                                   : Span{frame.top, frame.height, child.need.y, GetVerticalKind(mask)});
    }
    const DialogLayoutItem& item = *parent.item;
    const RectF frame = item.node->UI_GetLocalRectF();
    const bool inRow = item.flow == (horizontal ? DialogFlow::kHorizontal : DialogFlow::kVertical);
    const SpanKind kind = horizontal ? GetHorizontalKind(item.constraints) : GetVerticalKind(item.constraints);
    // What has the size of its surroundings has room behind its last child for that reason alone.
    const bool keepsEndMargin = inRow && item.keepsEndMargin && kind != SpanKind::kStretches;
    return DialogLayoutAxis(std::move(spans), horizontal ? frame.width : frame.height, inRow, keepsEndMargin);
}

Grown Measure(const DialogLayoutItem& item, bool inFlow) {
    Grown grown;
    grown.item = &item;
    const RectF frame = item.node->UI_GetLocalRectF();
    const PointF text = inFlow ? GetTextNeed(*item.node) : PointF();
    grown.need = {std::max(frame.width, text.x), std::max(frame.height, text.y)};
    if (!item.laysOutChildren) return grown;
    for (const DialogLayoutItem& child : item.children)
        grown.children.push_back(Measure(child, item.flow != DialogFlow::kNone));
    if (grown.children.empty()) return grown;
    grown.need.x = std::max(grown.need.x, MakeAxis(grown, true).GetNeed());
    grown.need.y = std::max(grown.need.y, MakeAxis(grown, false).GetNeed());
    return grown;
}

// The frames are read before any of them is set: the axes are made of those that the archive has.
void Arrange(const Grown& parent, const RectF& frame) {
    const std::vector<Span> horizontal = MakeAxis(parent, true).Arrange(frame.width);
    const std::vector<Span> vertical = MakeAxis(parent, false).Arrange(frame.height);
    for (std::size_t i = 0; i < parent.children.size(); ++i) {
        const RectF child{horizontal[i].start, vertical[i].start, horizontal[i].size, vertical[i].size};
        Arrange(parent.children[i], child);
    }
    parent.item->node->UI_SetLocalRectF(frame);
}

}  // namespace

void GrowForTexts(DialogLayoutItem& root) {
    const Grown grown = Measure(root, false);
    const RectF frame = root.node->UI_GetLocalRectF();
    Arrange(grown, {frame.left, frame.top, grown.need.x, grown.need.y});
}

}  // namespace zelui
