#include "Vst3BundleNames.h"

namespace zelaudiofilterhost {

namespace {

#if defined(__x86_64__) || defined(_M_X64)
constexpr char kPlatformFolder[] = "x86_64-win";
#elif defined(__aarch64__) || defined(_M_ARM64)
constexpr char kPlatformFolder[] = "arm64-win";
#else
constexpr char kPlatformFolder[] = "x86-win";
#endif

}  // namespace

const char* GetVst3PlatformFolder() { return kPlatformFolder; }

const char* GetVst3LibraryEnding() { return ".vst3"; }

}  // namespace zelaudiofilterhost
