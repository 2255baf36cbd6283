#pragma once

#include <functional>

#include <boost/intrusive_ptr.hpp>
#include <zelui/UI_Node.h>

namespace zelui {

/// Tells of the ends of gestures that were cut short: the control was hidden, disabled, taken away, or lost the focus.
/// That happens inside of other things, not seldom while what the control belongs to is being destroyed, so that it is
/// told from the main loop, in the order in which it happened, or when the user begins the next gesture. Where nobody
/// else holds the control any more by then, nobody is told.
class LateGestureEnds {
public:
    static void Add(const boost::intrusive_ptr<ui::UI_Node>& control, const std::function<void()>& tell);
    /// Tells of all now.
    static void TellAll();
};

}  // namespace zelui
