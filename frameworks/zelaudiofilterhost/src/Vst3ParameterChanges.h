#pragma once

#include <cstddef>
#include <vector>

#include <pluginterfaces/vst/ivstparameterchanges.h>

#include "Vst3Lent.h"
#include "Vst3ValueQueue.h"

namespace zelaudiofilterhost {

/// The parameter changes of one block, in one direction. Only Reserve allocates. Sound thread.
class Vst3ParameterChanges final : public Vst3Lent<Vst3ParameterChanges, Steinberg::Vst::IParameterChanges> {
public:
    /// Whose changes they are: a plug-in can add to its own only.
    enum class Author { kHost, kPlugin };

    static const Steinberg::TUID& InterfaceId() { return Steinberg::Vst::IParameterChanges_iid; }

    explicit Vst3ParameterChanges(Author author) : mAuthor(author) {}

    /// Forgets all changes and makes room for `count`. While nothing is processed.
    void Reserve(std::size_t count);
    void Clear() { mUsed = 0; }
    std::size_t GetRoom() const { return mQueues.size() - mUsed; }
    /// Adds the change to `value` at the block's start; there must be room.
    void Add(Steinberg::Vst::ParamID id, double value);

    /// Calls `function(id, value)` for each change, in the order in which they were added.
    template <typename Function>
    void ForEach(Function function) {
        for (std::size_t i = 0; i < mUsed; ++i) {
            if (mQueues[i].HasPoint()) function(mQueues[i].getParameterId(), mQueues[i].GetValue());
        }
    }

    Steinberg::int32 PLUGIN_API getParameterCount() override { return static_cast<Steinberg::int32>(mUsed); }
    Steinberg::Vst::IParamValueQueue* PLUGIN_API getParameterData(Steinberg::int32 index) override;
    /// Null when there is no room left; what the plug-in had to say is then lost.
    Steinberg::Vst::IParamValueQueue* PLUGIN_API addParameterData(const Steinberg::Vst::ParamID& id,
                                                                  Steinberg::int32& index) override;

private:
    Author mAuthor;
    std::vector<Vst3ValueQueue> mQueues;
    std::size_t mUsed = 0;
};

}  // namespace zelaudiofilterhost
