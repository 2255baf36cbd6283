#pragma once

#include <zelcore/File.h>

namespace zelaudiofilterhostui {

/// Where the scanner's program is. It lies beside the application that brings one of its own. Applications that were
/// built against an installed library share the installed one, in a folder beside the library.
class ScannerLocation {
public:
    /// Name of that folder.
    static constexpr char kSharedFolderName[] = "zelaudiofilterhostui";

    /// The program to start. Where there is none, the place beside the application.
    static zelcore::filesupport::File Find();
    /// The same for an application and a library in these folders; an empty one stands for a folder that is not known.
    static zelcore::filesupport::File Find(const zelcore::filesupport::Dir& applicationFolder,
                                           const zelcore::filesupport::Dir& libraryFolder);

    /// The folder of the module that this code is in, links followed; empty when the system does not tell.
    static zelcore::filesupport::Dir GetLibraryFolder();
};

}  // namespace zelaudiofilterhostui
