#pragma once

#include <cstddef>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelui/UI_Node.h>

namespace zelui {

/// The stops of the Tab key in a tree, in their order, and where among them a node stands, the place, which need not be
/// one of them. For one move of the focus: what it calls may change the tree. Main thread.
class FocusStops {
public:
    /// `root` and `place` may be null; without a place all stops lie behind it. Unless `placeStays`, neither the place
    /// nor what is in it is a stop.
    FocusStops(ui::UI_Node* root, const ui::UI_Node* place, bool placeStays);

    /// Gives the focus to the first stop behind the place that takes it; false when none does.
    bool GiveToNext(ui::FocusChangeReason reason) const;
    /// The same for the nearest one before it.
    bool GiveToPrevious(ui::FocusChangeReason reason) const;
    /// The same for the last one of all.
    bool GiveToLast(ui::FocusChangeReason reason) const;

private:
    void Collect(ui::UI_Node& node, bool counts);
    bool GiveBackwards(std::size_t end, ui::FocusChangeReason reason) const;
    bool LeadsBack(const ui::UI_Node& stop) const;

    const boost::intrusive_ptr<const ui::UI_Node> mPlace;
    const bool mPlaceStays;
    std::vector<boost::intrusive_ptr<ui::UI_Node>> mStops;
    std::size_t mBefore = 0;  ///< how many come before the place
    std::size_t mUpTo = 0;    ///< the same with the place itself
};

}  // namespace zelui
