#pragma once

#include <memory>

#include <zelui/Export.h>

#include "DialogLayoutItem.h"

namespace zelui {

class DialogLayoutPlace;

/// Keeps the nodes of a dialog in their places when its size changes. Every frame is reckoned from what it was when
/// somebody last decided it, never from the frame before: however small the dialog was meanwhile, a size that it had
/// before brings the same frames back. A frame that the program has set since is such a decision. Nodes that the
/// program has added, or has put somewhere else, are its own affair. Main thread.
class ZELUI_API DialogLayout {
public:
    /// The frames that the nodes have now, in the sizes that their parents have now, are the first that are kept.
    explicit DialogLayout(const DialogLayoutItem& root);
    ~DialogLayout();
    DialogLayout(const DialogLayout&) = delete;
    DialogLayout& operator=(const DialogLayout&) = delete;

    /// Gives the root this size, at 0, 0, and all nodes in it their frames. Whoever is told of a frame may call it
    /// again: then what was asked for last is what is there in the end.
    void SetSize(const zelcore::geom::PointF& size);

private:
    const std::unique_ptr<DialogLayoutPlace> mRoot;
    zelcore::geom::PointF mWanted;
    bool mInPass = false;
};

}  // namespace zelui
