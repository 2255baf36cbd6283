#pragma once

#include <zelcore/File.h>

namespace tessaly {

/// The files in which the application keeps what it knows of plug-ins. Main thread.
class Preferences {
public:
    /// Reads catalogue and ban lists into the filter host. A damaged file is kept aside, and the user is told on the
    /// error stream. Throws zelcore::filesupport::FileError for a file that cannot be read at all.
    static void Load();

    static zelcore::filesupport::File GetCatalogueFile();

private:
    static void LoadBanLists();
    static void LoadCatalogue();
};

}  // namespace tessaly
