#include "DialogLayout.h"

#include <QScopedValueRollback>

#include "DialogLayoutPlace.h"

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

}  // namespace

DialogLayout::DialogLayout(const DialogLayoutItem& root)
    : mRoot(std::make_unique<DialogLayoutPlace>(root, GetSize(*root.node))), mWanted(GetSize(*root.node)) {}

DialogLayout::~DialogLayout() = default;

void DialogLayout::SetSize(const PointF& size) {
    mWanted = size;
    if (mInPass) return;
    const QScopedValueRollback<bool> inPass(mInPass, true);
    ui::UI_Node& root = *mRoot->GetNode();
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        const PointF now = mWanted;
        const PointF before = GetSize(root);
        root.UI_SetLocalRectF({0.0f, 0.0f, now.x, now.y});
        mRoot->TakeDecisions(before);
        // The root cannot grow: what is missing is taken from what stretches.
        mRoot->SpreadAcross(now.x);
        mRoot->PlaceDown(now.y, now.y);
        if (mWanted == now) return;
    }
}

}  // namespace zelui
