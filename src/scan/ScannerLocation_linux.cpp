#include <filesystem>
#include <system_error>

#include <dlfcn.h>
#include <zelcore/Utf.h>

#include "scan/ScannerLocation.h"

namespace zelaudiofilterhostui {

zelcore::filesupport::Dir ScannerLocation::GetLibraryFolder() {
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(&ScannerLocation::GetLibraryFolder), &info) == 0 ||
        info.dli_fname == nullptr)
        return zelcore::filesupport::Dir();
    std::error_code error;
    const std::filesystem::path path = std::filesystem::canonical(info.dli_fname, error);
    if (error) return zelcore::filesupport::Dir();
    return zelcore::filesupport::Dir(zelcore::utility::UTF8to16(path.parent_path().string()));
}

}  // namespace zelaudiofilterhostui
