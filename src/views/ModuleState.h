#pragma once

#include <zelcore/PlatformHandles.h>

namespace zelui {
namespace utility {
class OS_ResourceManager;
}
}  // namespace zelui

namespace zelaudiofilterhostui {

/// The library's own handle, as the operating system gave it to the module's entry; null while it is not attached.
HINSTANCE GetModuleInstance();
/// For the module's entry alone.
void SetModuleInstance(HINSTANCE instance);

/// What the library's own resources are read with; null before Initialize and when the library has no handle.
zelui::utility::OS_ResourceManager* GetModuleResourceManager();

}  // namespace zelaudiofilterhostui
