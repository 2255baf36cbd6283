#pragma once

#include <zelcore/File.h>

namespace zelaudiofilterhostui {

// The filter host's files in the user's preferences folder.
zelcore::filesupport::File GetCatalogueFile();
zelcore::filesupport::File GetBanListFile();
zelcore::filesupport::File GetPermanentBanListFile();

}  // namespace zelaudiofilterhostui
