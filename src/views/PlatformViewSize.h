#pragma once

#include <zelui/UI_OSSubViewAdapter.h>

namespace zelaudiofilterhostui {

/// Has the adapter's platform window follow the size of `view` after a change of the given kind, where it is one that
/// matters: its frame, its being shown, its place. Sets nothing when the size is the same.
void SyncPlatformViewSize(const zelui::ui::UI_OSSubViewAdapter& view, int change);

/// Has the whole of a view painted at once.
void RepaintNow(zelui::ui::UI_Node& view);

}  // namespace zelaudiofilterhostui
