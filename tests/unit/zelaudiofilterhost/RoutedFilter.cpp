#include "RoutedFilter.h"

#include <algorithm>

using namespace zelaudiofilterhost;

namespace zeltests {

namespace {

std::size_t Count(const AudioFilterBusList& buses) {
    std::size_t count = 0;
    for (const AudioFilterBusDescription& bus : buses) count += bus.GetLayout().size();
    return count;
}

}  // namespace

RoutedFilter::RoutedFilter(const AudioFilterBusList& inputs, const AudioFilterBusList& outputs)
    : mBuses{inputs, outputs}, mAdopted{inputs, outputs} {}

RoutedFilter::~RoutedFilter() { StopProcessing(); }

void RoutedFilter::SetBusesAfterAdoption(const AudioFilterBusList& inputs, const AudioFilterBusList& outputs) {
    mAdopted = {inputs, outputs};
}

boost::intrusive_ptr<AudioFilterParameterInfo> RoutedFilter::GetParameterInfo(int) const {
    return new AudioFilterParameterInfo(ustring(), ustring());
}

void RoutedFilter::GetBusConfiguration(AudioFilterBusList& inputs, AudioFilterBusList& outputs) const {
    inputs = mBuses.inputs;
    outputs = mBuses.outputs;
}

void RoutedFilter::ProcessEffect(const float* const* inputs, float* const* outputs, int frames) {
    if (mEffect) return mEffect(inputs, outputs, frames);
    const std::size_t inputCount = Count(mBuses.inputs);
    const std::size_t outputCount = Count(mBuses.outputs);
    for (std::size_t i = 0; i < outputCount; ++i) {
        if (i < inputCount) {
            std::copy_n(inputs[i], frames, outputs[i]);
        } else {
            std::fill_n(outputs[i], frames, 0.0f);
        }
    }
}

bool RoutedFilter::StartEffect(double sampleRate, int maximumFrames) {
    mCalls.push_back("start " + std::to_string(static_cast<int>(sampleRate)) + " " + std::to_string(maximumFrames));
    return mStarts;
}

void RoutedFilter::StopEffect() { mCalls.push_back("stop"); }

void RoutedFilter::AdoptLayout(const zelmediatypes::AudioChannelLayout& layout) {
    mCalls.push_back("adopt " + std::to_string(layout.size()));
    mBuses = mAdopted;
}

RoutedFilterPtr MakeRouted(const AudioFilterBusList& inputs, const AudioFilterBusList& outputs) {
    return RoutedFilterPtr(new RoutedFilter(inputs, outputs));
}

}  // namespace zeltests
