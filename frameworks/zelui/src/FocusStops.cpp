#include "FocusStops.h"

#include <zelui/UI_Container.h>

#include "OwnTabOrder.h"

namespace zelui {

using ui::UI_Container;
using ui::UI_Node;

FocusStops::FocusStops(UI_Node* root, const UI_Node* place, bool placeStays) : mPlace(place), mPlaceStays(placeStays) {
    if (root != nullptr) Collect(*root, true);
}

// Where no stops are counted is gone through all the same: the place may be there.
void FocusStops::Collect(UI_Node& node, bool counts) {
    const bool isPlace = &node == mPlace.get();
    if (isPlace) mBefore = mUpTo = mStops.size();
    if (!node.UI_IsShown() || node.UI_IsDisabled() || (isPlace && !mPlaceStays)) return;
    counts = counts && dynamic_cast<const OwnTabOrder*>(&node) == nullptr;
    if (counts && node.UI_WantsKeyboardFocusFromAdvance()) mStops.emplace_back(&node);
    if (isPlace) mUpTo = mStops.size();
    const UI_Container* const container = node.UI_AsContainer();
    for (std::size_t i = 0; container != nullptr && i < container->ChildCount(); ++i)
        Collect(*container->ChildAt(i), counts);
}

bool FocusStops::GiveToNext(ui::FocusChangeReason reason) const {
    for (std::size_t i = mUpTo; i < mStops.size(); ++i) {
        if (mStops[i]->UI_GainKeyboardFocus(reason)) return true;
    }
    return false;
}

bool FocusStops::GiveToPrevious(ui::FocusChangeReason reason) const { return GiveBackwards(mBefore, reason); }

bool FocusStops::GiveToLast(ui::FocusChangeReason reason) const { return GiveBackwards(mStops.size(), reason); }

bool FocusStops::GiveBackwards(std::size_t end, ui::FocusChangeReason reason) const {
    for (std::size_t i = end; i-- > 0;) {
        if (!LeadsBack(*mStops[i]) && mStops[i]->UI_GainKeyboardFocus(reason)) return true;
    }
    return false;
}

// A stop round the place that takes no focus itself gives it to the first node in it, and so perhaps to the place
// again.
bool FocusStops::LeadsBack(const UI_Node& stop) const {
    if (stop.UI_WantsKeyboardFocus()) return false;
    const UI_Node* node = mPlace.get();
    while (node != nullptr && node != &stop) node = node->UI_GetParentNode();
    return node != nullptr;
}

}  // namespace zelui
