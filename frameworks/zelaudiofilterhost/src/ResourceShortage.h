#pragma once

namespace zelaudiofilterhost {

/// Whether this process gets no more descriptors or no more memory from the system, so that a plug-in which could not
/// be loaded just now may be a good one. Any thread.
bool IsShortOfResources();

}  // namespace zelaudiofilterhost
