#pragma once

#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelcore/Geometry.h>
#include <zelui/UI_Node.h>

#include "DialogLayoutAxis.h"
#include "DialogLayoutItem.h"
#include "DialogLayoutLines.h"

namespace zelui {

/// A node in the layout of a dialog: the frame that somebody decided for it last, in a parent of which size that was,
/// and the frame that it was given last. A layout takes what was decided meanwhile over, then goes across, which tells
/// what has to be how high, then down. What is decided is a frame as it is when no row is broken and nothing has grown.
class DialogLayoutPlace {
public:
    /// The frames that the nodes have now are decided.
    DialogLayoutPlace(const DialogLayoutItem& item, const zelcore::geom::PointF& parentSize);

    const boost::intrusive_ptr<ui::UI_Node>& GetNode() const { return mNode; }

    /// Takes frames that the program has set since the last layout for decided. `size` is what this one had in it,
    /// without what it had grown.
    void TakeDecisions(const zelcore::geom::PointF& size);
    /// Finds out where the children stand across a width, and on which lines. What it returns is missing in height.
    float SpreadAcross(float width);
    /// Gives all nodes in this one their frames, in a height. `ownHeight` is what it would be if nothing had grown.
    void PlaceDown(float height, float ownHeight);

private:
    bool IsHere(const DialogLayoutPlace& child) const;
    bool IsSeen(const DialogLayoutPlace& child) const;
    bool IsRow() const { return mFlow == DialogFlow::kHorizontal && mLaysOutChildren && !mChildren.empty(); }
    zelcore::geom::PointF GetOwnSize() const;
    void TakeDecision(const zelcore::geom::PointF& parentSize, const zelcore::geom::RectF& added);
    void BreakLines(float width);
    void Narrow(DialogLayoutPlace& child, float parentWidth) const;
    float StackLines();
    DialogLayoutAxis MakeAxisDown(float height);
    void Place(DialogLayoutPlace& child, const zelcore::geom::PointF& size);

    boost::intrusive_ptr<ui::UI_Node> mNode;
    SpanKind mHorizontal;
    SpanKind mVertical;
    DialogFlow mFlow;
    bool mLaysOutChildren;
    std::vector<DialogLayoutPlace> mChildren;

    zelcore::geom::RectF mDecided;
    zelcore::geom::PointF mParentThen;
    zelcore::geom::RectF mLast;
    zelcore::geom::RectF mAdded;  ///< in mLast, beyond what follows from the decided frame and the parent's size

    // Of the layout that is under way
    zelcore::geom::RectF mNext;
    zelcore::geom::RectF mAdds;  ///< as mAdded, in mNext
    float mMissingHeight = 0.0f;
    float mOwnHeight = 0.0f;
    std::size_t mLine = 0;
    float mDown = 0.0f;  ///< how far below its place on a single line
};

}  // namespace zelui
