#include "Vst3RunLoop.h"

namespace zelaudiofilterhost {

/// Nothing: on Windows a thread's messages reach every window and timer on it, whoever made them.
class Vst3RunLoop::Object {
public:
    void release() {}
};

Vst3RunLoop::Vst3RunLoop() = default;

Vst3RunLoop::~Vst3RunLoop() = default;

bool Vst3RunLoop::Query(const Steinberg::TUID, void**) { return false; }

void Vst3RunLoop::Stop() noexcept {}

}  // namespace zelaudiofilterhost
