#pragma once

#include <pluginterfaces/vst/ivstparameterchanges.h>

#include "Vst3Lent.h"

namespace zelaudiofilterhost {

/// The change of one parameter within a block. Holds one point, the last one: a block has one value here.
class Vst3ValueQueue final : public Vst3Lent<Vst3ValueQueue, Steinberg::Vst::IParamValueQueue> {
public:
    static const Steinberg::TUID& InterfaceId() { return Steinberg::Vst::IParamValueQueue_iid; }

    /// Begins anew, without a point.
    void Begin(Steinberg::Vst::ParamID id) {
        mId = id;
        mHasPoint = false;
    }
    bool HasPoint() const { return mHasPoint; }
    double GetValue() const { return mValue; }

    Steinberg::Vst::ParamID PLUGIN_API getParameterId() override { return mId; }
    Steinberg::int32 PLUGIN_API getPointCount() override { return mHasPoint ? 1 : 0; }
    Steinberg::tresult PLUGIN_API getPoint(Steinberg::int32 index, Steinberg::int32& offset,
                                           Steinberg::Vst::ParamValue& value) override {
        if (index != 0 || !mHasPoint) return Steinberg::kInvalidArgument;
        offset = mOffset;
        value = mValue;
        return Steinberg::kResultOk;
    }
    Steinberg::tresult PLUGIN_API addPoint(Steinberg::int32 offset, Steinberg::Vst::ParamValue value,
                                           Steinberg::int32& index) override {
        mOffset = offset;
        mValue = value;
        mHasPoint = true;
        index = 0;
        return Steinberg::kResultOk;
    }

private:
    Steinberg::Vst::ParamID mId = 0;
    Steinberg::int32 mOffset = 0;
    double mValue = 0.0;
    bool mHasPoint = false;
};

}  // namespace zelaudiofilterhost
