#include "scan/ScannerLocation.h"

#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/Utf.h>

namespace zelaudiofilterhostui {

using zelaudiofilterhost::scanprotocol::kScannerFileName;
using zelcore::filesupport::Dir;
using zelcore::filesupport::File;
using zelcore::utility::AsciiToUTF16;

File ScannerLocation::Find() { return Find(Dir::AppDir(), GetLibraryFolder()); }

File ScannerLocation::Find(const Dir& applicationFolder, const Dir& libraryFolder) {
    const File own(applicationFolder, AsciiToUTF16(kScannerFileName));
    if (own.Exists() || libraryFolder == Dir()) return own;
    const File folder(libraryFolder, AsciiToUTF16(kSharedFolderName));
    const File shared(Dir(folder.FullPath()), AsciiToUTF16(kScannerFileName));
    return shared.Exists() ? shared : own;
}

}  // namespace zelaudiofilterhostui
