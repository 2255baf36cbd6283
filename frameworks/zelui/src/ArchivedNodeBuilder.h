#pragma once

#include <zelui/Export.h>
#include <zelui/UI_ArchivedDialog.h>

#include "ArchivedNode.h"
#include "DialogLayoutItem.h"

namespace zelui {

/// Makes the node of an archive, and those in it: by the factory where the archive names a class and the factory knows
/// it, else by the adapter. Texts, states and frames are the archive's. Throws ui::ArchiveError for an adapter that the
/// toolkit does not have, and for nodes that do not fit together. Main thread.
ZELUI_API DialogLayoutItem BuildArchivedNodes(const ArchivedNode& archived,
                                              const ui::UI_ArchivedDialog::NodeFactory& factory);

}  // namespace zelui
