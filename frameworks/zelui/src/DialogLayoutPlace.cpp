#include "DialogLayoutPlace.h"

#include <algorithm>
#include <cmath>

#include "DialogLayoutAxis.h"
#include "DialogLayoutGrowth.h"

namespace zelui {

using zelcore::geom::PointF;
using zelcore::geom::RectF;

namespace {

/// Between the lines of a row.
constexpr float kLineGap = 5.0f;

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

DialogLayoutPlace::DialogLayoutPlace(const DialogLayoutItem& item, const PointF& parentSize)
    : mNode(item.node),
      mHorizontal(GetHorizontalKind(item.constraints)),
      mVertical(GetVerticalKind(item.constraints)),
      mFlow(item.flow),
      mLaysOutChildren(item.laysOutChildren),
      mDecided(item.node->UI_GetLocalRectF()),
      mParentThen(parentSize),
      mLast(mDecided) {
    for (const DialogLayoutItem& child : item.children)
        mChildren.emplace_back(child, PointF{mDecided.width, mDecided.height});
}

bool DialogLayoutPlace::IsHere(const DialogLayoutPlace& child) const {
    return child.mNode->UI_GetParentNode() == mNode.get();
}

bool DialogLayoutPlace::IsSeen(const DialogLayoutPlace& child) const {
    return IsHere(child) && child.mNode->UI_IsShown();
}

// What was decided

void DialogLayoutPlace::TakeDecisions(const PointF& size) {
    if (!mLaysOutChildren) return;
    for (DialogLayoutPlace& child : mChildren) {
        if (!IsHere(child)) continue;
        child.TakeDecision(size, child.mAdded);
        child.TakeDecisions(child.GetOwnSize());
    }
}

PointF DialogLayoutPlace::GetOwnSize() const { return {mLast.width, std::max(mLast.height - mAdded.height, 0.0f)}; }

void DialogLayoutPlace::TakeDecision(const PointF& parentSize, const RectF& added) {
    const RectF frame = mNode->UI_GetLocalRectF();
    if (frame.left != mLast.left) mAdded.left = added.left;
    if (frame.top != mLast.top) mAdded.top = added.top;
    if (frame.height != mLast.height) mAdded.height = added.height;
    // What was made narrower is as wide as there is room, whatever it would be otherwise.
    if (frame.width != mLast.width) mAdded.width = 0.0f;
    // Each axis for itself: a program that moves a node to the left decides nothing about its height. Without what
    // layouts add, as the next one adds it again.
    if (frame.left != mLast.left || frame.width != mLast.width) {
        mDecided.left = frame.left - mAdded.left;
        mDecided.width = frame.width - mAdded.width;
        mParentThen.x = parentSize.x;
    }
    if (frame.top != mLast.top || frame.height != mLast.height) {
        mDecided.top = frame.top - mAdded.top;
        mDecided.height = std::max(frame.height - mAdded.height, 0.0f);
        mParentThen.y = parentSize.y;
    }
    mLast = frame;
}

// Across

float DialogLayoutPlace::SpreadAcross(float width) {
    if (!mLaysOutChildren || mChildren.empty()) return 0.0f;
    for (DialogLayoutPlace& child : mChildren) {
        child.mLine = 0;
        child.mDown = 0.0f;
        child.mAdds = RectF();
        Follow({child.mDecided.left, child.mDecided.width, child.mParentThen.x}, child.mHorizontal, width,
               child.mNext.left, child.mNext.width);
    }
    if (IsRow()) BreakLines(width);
    for (DialogLayoutPlace& child : mChildren) {
        Narrow(child, width);
        child.mMissingHeight = child.SpreadAcross(child.mNext.width);
        // What nobody sees needs no room.
        if (!IsSeen(child)) child.mMissingHeight = 0.0f;
    }
    if (IsRow()) return StackLines();
    return MakeAxisDown(mDecided.height).GetNeed() - mDecided.height;
}

void DialogLayoutPlace::BreakLines(float width) {
    std::vector<DialogLayoutLines::Child> children;
    float end = 0.0f;
    for (const DialogLayoutPlace& child : mChildren) {
        const bool isInLines = child.mHorizontal == SpanKind::kStays && IsSeen(child);
        children.push_back({child.mNext.left, child.mNext.width, isInLines});
        if (isInLines) end = std::max(end, child.mDecided.Right());
    }
    // A row that is as wide as was decided is one line, also when something reached out of it then.
    const DialogLayoutLines lines(children, width - std::min(mDecided.width - end, kSmallestMargin));
    for (std::size_t i = 0; i < mChildren.size(); ++i) {
        mChildren[i].mLine = lines.GetLine(i);
        mChildren[i].mAdds.left = lines.GetLeft(i) - mChildren[i].mNext.left;
        mChildren[i].mNext.left = lines.GetLeft(i);
    }
}

// Constraints know nothing of what keeps its size in a parent that becomes too narrow for it. A row can do with less,
// by breaking into lines, and of what stands among others below each other the text alone has to be seen.
void DialogLayoutPlace::Narrow(DialogLayoutPlace& child, float parentWidth) const {
    if (child.mHorizontal != SpanKind::kStays || (!child.IsRow() && mFlow != DialogFlow::kVertical)) return;
    const float margin = std::min(child.mParentThen.x - child.mDecided.Right(), kSmallestMargin);
    const float room = parentWidth - margin - child.mNext.left;
    if (child.mNext.width <= room) return;
    const float width = std::max(room, std::min(GetTextNeed(*child.mNode).x, child.mNext.width));
    child.mAdds.width = width - child.mNext.width;
    child.mNext.width = width;
}

// Every line is as high as the row was with all of them on it, and as much higher as what grows on it takes. All of
// them, also those that are hidden just now: otherwise the height depended on whether they are hidden before or after a
// layout.
float DialogLayoutPlace::StackLines() {
    std::size_t lineCount = 1;
    float top = mDecided.height;
    float bottom = 0.0f;
    for (const DialogLayoutPlace& child : mChildren) {
        if (!IsHere(child)) continue;
        if (IsSeen(child)) lineCount = std::max(lineCount, child.mLine + 1);
        top = std::min(top, child.mDecided.top);
        bottom = std::max(bottom, child.mDecided.Bottom());
    }
    float down = 0.0f;
    float end = bottom;
    for (std::size_t line = 0; line < lineCount; ++line) {
        if (line > 0) down = end + kLineGap - top;
        end = bottom + down;
        for (DialogLayoutPlace& child : mChildren) {
            if (child.mLine != line || !IsSeen(child)) continue;
            child.mDown = down;
            end = std::max(end, child.mDecided.Bottom() + child.mMissingHeight + down);
        }
    }
    return end - bottom;
}

// Down

DialogLayoutAxis DialogLayoutPlace::MakeAxisDown(float height) {
    std::vector<Span> spans;
    for (DialogLayoutPlace& child : mChildren) {
        Follow({child.mDecided.top, child.mDecided.height, child.mParentThen.y}, child.mVertical, height,
               child.mNext.top, child.mNext.height);
        child.mOwnHeight = child.mNext.height;
        spans.push_back(
            {child.mNext.top, child.mNext.height, child.mNext.height + child.mMissingHeight, child.mVertical});
    }
    return DialogLayoutAxis(std::move(spans), height, mFlow == DialogFlow::kVertical, true);
}

void DialogLayoutPlace::PlaceDown(float height, float ownHeight) {
    if (!mLaysOutChildren) return;
    const std::vector<Span> spans = MakeAxisDown(ownHeight).Arrange(height);
    const PointF size{mNode->UI_GetLocalRectF().width, ownHeight};
    for (std::size_t i = 0; i < mChildren.size(); ++i) {
        DialogLayoutPlace& child = mChildren[i];
        const float top = spans[i].start + child.mDown;
        child.mAdds.top = top - child.mNext.top;
        child.mAdds.height = spans[i].size - child.mNext.height;
        child.mNext.top = top;
        child.mNext.height = spans[i].size;
        if (IsHere(child)) Place(child, size);
    }
}

void DialogLayoutPlace::Place(DialogLayoutPlace& child, const PointF& size) {
    // Whoever was told of another frame has set this one's just now.
    if (child.mNode->UI_GetLocalRectF() != child.mLast) {
        child.TakeDecision(size, child.mAdds);
        child.SpreadAcross(child.mLast.width);
        child.PlaceDown(child.mLast.height, child.GetOwnSize().y);
        return;
    }
    child.mLast = child.mNext;
    child.mAdded = child.mAdds;
    child.mNode->UI_SetLocalRectF(child.mNext);
    child.PlaceDown(child.mNext.height, child.mOwnHeight);
}

}  // namespace zelui
