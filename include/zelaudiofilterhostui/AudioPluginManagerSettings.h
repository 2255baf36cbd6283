#pragma once

#include <cstdint>

#include <zelcore/Geometry.h>

#include <zelaudiofilterhostui/Export.h>

namespace zelaudiofilterhostui {

/// What the plug-in manager dialog remembers from one opening to the next, however it was closed. The host owns it and
/// keeps it between runs; the library stores it nowhere.
struct ZELAUDIOFILTERHOSTUI_API AudioPluginManagerSettings {
    /// All zero and false: the dialog opens at its own size, its list unsorted.
    AudioPluginManagerSettings();
    /// The same settings.
    AudioPluginManagerSettings(const AudioPluginManagerSettings& other);
    /// The same settings.
    AudioPluginManagerSettings& operator=(const AudioPluginManagerSettings& other);

    /// The check box "Rescan existing plug-ins".
    bool rescanExisting;
    /// The list's sort column: 1 Enabled, 2 Name, 3 Type, 4 Status, 5 Path; 0 for none.
    std::uint32_t sortColumn;
    /// The list's sort direction; without meaning as long as there is no sort column.
    bool sortAscending;
    /// Where the dialog's window stood, its frame included, in display units of the desktop. Used at the next opening
    /// as it is, if it is at least 1 wide and high.
    zelcore::geom::RectT<long> dialogRect;
};

}  // namespace zelaudiofilterhostui
