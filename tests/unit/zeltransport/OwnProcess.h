#pragma once

namespace zeltests {

/// What tests ask about the process that they run in.
unsigned long GetOwnProcessId();
/// Memory that is the process's alone, used or not.
long GetDataKilobytes();

}  // namespace zeltests
