#include "Footprint.h"

#include <filesystem>
#include <iterator>

#include <malloc.h>

#include "../player/ResidentMemory.h"
#include "support/windows/Leftovers.h"

namespace zeltests {

Footprint Footprint::Take() {
    Footprint footprint;
    // What was freed and is kept for the next time is no growth.
    malloc_trim(0);
    const struct mallinfo2 heap = mallinfo2();
    footprint.resident = GetResidentMemory();
    footprint.allocated = heap.uordblks + heap.hblkhd;
    footprint.descriptors = CountDescriptors();
    footprint.windows = CountWindows();
    const std::filesystem::directory_iterator threads("/proc/self/task");
    footprint.threads = static_cast<std::size_t>(std::distance(begin(threads), end(threads)));
    return footprint;
}

}  // namespace zeltests
