#include "Vst3EditHandler.h"

#include <memory>

#include <zelcore/Threads.h>

#include "PluginCall.h"

namespace zelaudiofilterhost {

namespace Vst = Steinberg::Vst;

Steinberg::tresult PLUGIN_API Vst3EditHandler::performEdit(Vst::ParamID id, Vst::ParamValue value) {
    if (zelcore::threads::IsMainThread()) {
        if (mTarget != nullptr) mTarget->OnEdited(id, value);
        return Steinberg::kResultOk;
    }
    // The plug-in has no use for our exceptions.
    Steinberg::tresult result = Steinberg::kResultFalse;
    CallPluginQuietly([&] {
        addRef();
        const std::shared_ptr<Vst3EditHandler> self(this, [](Vst3EditHandler* handler) { handler->release(); });
        zelcore::threads::AsyncCallFromMainThread([self, id, value] { self->performEdit(id, value); });
        result = Steinberg::kResultOk;
    });
    return result;
}

Steinberg::tresult PLUGIN_API Vst3EditHandler::restartComponent(Steinberg::int32 flags) {
    constexpr Steinberg::int32 kNeedsRestart = Vst::kReloadComponent | Vst::kIoChanged | Vst::kLatencyChanged;
    return (flags & kNeedsRestart) != 0 ? Steinberg::kResultFalse : Steinberg::kResultOk;
}

}  // namespace zelaudiofilterhost
