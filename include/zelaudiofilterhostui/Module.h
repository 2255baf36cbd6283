#pragma once

#include <zelaudiofilterhostui/Export.h>

namespace zelaudiofilterhostui {

/// Sets the library up; a host calls it once after loading the library, before anything else of it. Gives the toolkit
/// access to the library's own resources, which its dialogs are made of. Always true; again without a Terminate between
/// it does nothing. Main thread.
ZELAUDIOFILTERHOSTUI_API bool Initialize();

/// Undoes Initialize, before the library is unloaded; harmless without one. A later Initialize sets everything up
/// afresh. Main thread.
ZELAUDIOFILTERHOSTUI_API void Terminate();

}  // namespace zelaudiofilterhostui
