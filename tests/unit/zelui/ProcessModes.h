#pragma once

namespace zeltests {

/// What this program does when it is started by one of its own tests: the beginning and the end of an application need
/// a process of their own. Each returns 0 when all was as expected, else the line that was not.
typedef int (*ProcessMode)(int& argc, char** argv);

/// The mode that the first argument names; null for none.
ProcessMode FindProcessMode(int argc, char** argv);

}  // namespace zeltests
