#include "Vst3BundleNames.h"

namespace zelaudiofilterhost {

namespace {

#if defined(__x86_64__)
constexpr char kPlatformFolder[] = "x86_64-linux";
#elif defined(__aarch64__)
constexpr char kPlatformFolder[] = "aarch64-linux";
#elif defined(__i386__)
constexpr char kPlatformFolder[] = "i386-linux";
#elif defined(__riscv)
constexpr char kPlatformFolder[] = "riscv64-linux";
#else
constexpr char kPlatformFolder[] = "armv7l-linux";
#endif

}  // namespace

const char* GetVst3PlatformFolder() { return kPlatformFolder; }

const char* GetVst3LibraryEnding() { return ".so"; }

}  // namespace zelaudiofilterhost
