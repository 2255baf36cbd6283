#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <boost/intrusive_ptr.hpp>

#include <zelaudiofilterhost/PluginModuleInfo.h>
#include <zelaudiofilterhost/PluginScanFailure.h>

namespace zelaudiofilterhost {

/// What one line of a catalogue says.
struct CatalogueRecord {
    enum Kind { kModule, kFailed, kChoice, kRemoved, kTechnology };

    Kind kind = kRemoved;
    PluginLocator locator;                        ///< all kinds but kTechnology
    boost::intrusive_ptr<PluginModuleInfo> info;  ///< kModule; its own choice is the file's
    PluginScanFailure failure;                    ///< kFailed
    bool enabled = true;                          ///< kModule, kFailed, kChoice
    TechnologyType technology = kTechnologyNone;  ///< kTechnology
    std::string line;              ///< as it is in the text, with its end; empty when it was not a line of its own
    std::vector<ustring> folders;  ///< kTechnology
};

/// What could be read of a catalogue text.
struct CatalogueContent {
    bool isCatalogue = false;  ///< it is one, whole or damaged
    bool isIntact = false;     ///< nothing of it was lost
    std::vector<CatalogueRecord> records;
};

/// Reads the text form that CatalogueText writes. Trusts nothing in it: memory stays in proportion to its length, every
/// text and count is cut to the limits of PluginModuleInfo. A text that was cut off or damaged gives every line that is
/// whole, except those of a save that did not reach its end. Elements of unknown names are passed over.
CatalogueContent ReadCatalogue(std::string_view text);

}  // namespace zelaudiofilterhost
