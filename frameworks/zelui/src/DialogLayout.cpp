#include "DialogLayout.h"

#include <algorithm>
#include <cmath>

#include <QScopedValueRollback>

namespace zelui {

using zelcore::geom::PointF;
using zelcore::geom::RectF;

namespace {

// A handler that asks for another size each time it is told of one would go on forever.
const int kMaxPasses = 8;

PointF GetSize(const ui::UI_Node& node) {
    const RectF frame = node.UI_GetLocalRectF();
    return {frame.width, frame.height};
}

/// Start, size and the parent's size, along one axis.
struct Decided {
    float start;
    float size;
    float parent;
};

void Follow(const Decided& decided, SpanKind kind, float parent, float& start, float& size) {
    const float more = parent - decided.parent;
    start = decided.start;
    size = decided.size;
    if (kind == SpanKind::kKeptAtEnd) start += more;
    // Whole units, so that lines stay sharp.
    if (kind == SpanKind::kFloats) start += std::floor(more / 2.0f);
    if (kind == SpanKind::kStretches) size = std::max(size + more, 0.0f);
}

}  // namespace

/// A node, the frame that was decided for it, and the one that it was given last.
struct DialogLayout::Place {
    boost::intrusive_ptr<ui::UI_Node> node;
    SpanKind horizontal;
    SpanKind vertical;
    RectF decided;
    PointF parentThen;
    RectF last;
    bool laysOutChildren;
    std::vector<Place> children;

    void TakeDecisions(const PointF& parentSize) {
        const RectF frame = node->UI_GetLocalRectF();
        // Each axis for itself: a program that moves a node to the left decides nothing about its height.
        if (frame.left != last.left || frame.width != last.width) {
            decided.left = frame.left;
            decided.width = frame.width;
            parentThen.x = parentSize.x;
        }
        if (frame.top != last.top || frame.height != last.height) {
            decided.top = frame.top;
            decided.height = frame.height;
            parentThen.y = parentSize.y;
        }
    }

    void MoveWith(const PointF& parentSize) {
        Follow({decided.left, decided.width, parentThen.x}, horizontal, parentSize.x, last.left, last.width);
        Follow({decided.top, decided.height, parentThen.y}, vertical, parentSize.y, last.top, last.height);
        node->UI_SetLocalRectF(last);
    }
};

DialogLayout::DialogLayout(const DialogLayoutItem& root) : mWanted(GetSize(*root.node)) {
    mRoot.push_back(MakePlace(root, mWanted));
}

DialogLayout::~DialogLayout() = default;

DialogLayout::Place DialogLayout::MakePlace(const DialogLayoutItem& item, const PointF& parentSize) {
    const RectF frame = item.node->UI_GetLocalRectF();
    Place place{item.node,
                GetHorizontalKind(item.constraints),
                GetVerticalKind(item.constraints),
                frame,
                parentSize,
                frame,
                item.laysOutChildren,
                {}};
    for (const DialogLayoutItem& child : item.children)
        place.children.push_back(MakePlace(child, {frame.width, frame.height}));
    return place;
}

void DialogLayout::SetSize(const PointF& size) {
    mWanted = size;
    if (mInPass) return;
    const QScopedValueRollback<bool> inPass(mInPass, true);
    Place& root = mRoot.front();
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        const PointF now = mWanted;
        const PointF before = GetSize(*root.node);
        root.node->UI_SetLocalRectF({0.0f, 0.0f, now.x, now.y});
        LayOutChildren(root, before);
        if (mWanted == now) return;
    }
}

void DialogLayout::LayOutChildren(Place& parent, const PointF& sizeBefore) {
    if (!parent.laysOutChildren) return;
    const PointF size = GetSize(*parent.node);
    for (Place& child : parent.children) {
        if (child.node->UI_GetParentNode() != parent.node.get()) continue;
        const PointF childBefore = GetSize(*child.node);
        child.TakeDecisions(sizeBefore);
        child.MoveWith(size);
        LayOutChildren(child, childBefore);
    }
}

}  // namespace zelui
