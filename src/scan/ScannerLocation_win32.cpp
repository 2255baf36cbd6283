#include <windows.h>

#include "scan/ScannerLocation.h"

#include "views/ModuleState.h"

namespace zelaudiofilterhostui {

namespace {

/// The longest path that the system gives.
constexpr DWORD kMaxPath = 32768;

}  // namespace

zelcore::filesupport::Dir ScannerLocation::GetLibraryFolder() {
    zelcore::ustring path(kMaxPath, 0);
    const DWORD length = GetModuleFileNameW(GetModuleInstance(), reinterpret_cast<wchar_t*>(path.data()), kMaxPath);
    if (length == 0 || length >= kMaxPath) return zelcore::filesupport::Dir();
    path.resize(length);
    return zelcore::filesupport::File(path).GetDir();
}

}  // namespace zelaudiofilterhostui
