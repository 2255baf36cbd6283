#include "Vst3ParameterChanges.h"

namespace zelaudiofilterhost {

using Steinberg::int32;
using Steinberg::Vst::IParamValueQueue;
using Steinberg::Vst::ParamID;

void Vst3ParameterChanges::Reserve(std::size_t count) {
    mUsed = 0;
    mQueues.resize(count);
}

void Vst3ParameterChanges::Add(ParamID id, double value) {
    Vst3ValueQueue& queue = mQueues[mUsed++];
    int32 index = 0;
    queue.Begin(id);
    queue.addPoint(0, value, index);
}

IParamValueQueue* PLUGIN_API Vst3ParameterChanges::getParameterData(int32 index) {
    if (index < 0 || static_cast<std::size_t>(index) >= mUsed) return nullptr;
    return &mQueues[static_cast<std::size_t>(index)];
}

IParamValueQueue* PLUGIN_API Vst3ParameterChanges::addParameterData(const ParamID& id, int32& index) {
    if (mAuthor != Author::kPlugin || GetRoom() == 0) return nullptr;
    index = static_cast<int32>(mUsed);
    Vst3ValueQueue& queue = mQueues[mUsed++];
    queue.Begin(id);
    return &queue;
}

}  // namespace zelaudiofilterhost
