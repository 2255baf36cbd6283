#pragma once

#include <functional>
#include <string>
#include <vector>

#include <zelaudiofilterhost/AudioFilter.h>

namespace zeltests {

/// A filter of any buses that does with the sound what a test gives it to do.
class RoutedFilter : public zelaudiofilterhost::AudioFilter {
public:
    typedef zelcore::ustring ustring;
    /// Told what AudioFilter::ProcessEffect is.
    typedef std::function<void(const float* const*, float* const*, int)> Effect;

    RoutedFilter(const zelaudiofilterhost::AudioFilterBusList& inputs,
                 const zelaudiofilterhost::AudioFilterBusList& outputs);

    /// Unless one is set, each output is the input of the same number, or silent.
    void SetEffect(const Effect& effect) { mEffect = effect; }
    /// The buses from the next AdoptLayout on.
    void SetBusesAfterAdoption(const zelaudiofilterhost::AudioFilterBusList& inputs,
                               const zelaudiofilterhost::AudioFilterBusList& outputs);
    void SetStarts(bool starts) { mStarts = starts; }
    /// What was called on the effect, in order: "start 48000 64", "stop", "adopt 6".
    const std::vector<std::string>& GetCalls() const { return mCalls; }

    ustring GetComponentID() const override { return ustring(); }
    ustring GetName() const override { return ustring(); }
    int GetParameterCount() const override { return 0; }
    boost::intrusive_ptr<zelaudiofilterhost::AudioFilterParameterInfo> GetParameterInfo(int index) const override;
    float GetParameterValue(int) const override { return 0.0f; }
    void SetParameterValue(int, float) override {}
    ustring GetParameterValueString(int) const override { return ustring(); }
    void GetBusConfiguration(zelaudiofilterhost::AudioFilterBusList& inputs,
                             zelaudiofilterhost::AudioFilterBusList& outputs) const override;
    void ProcessEffect(const float* const* inputs, float* const* outputs, int frames) override;

protected:
    ~RoutedFilter() override;
    bool StartEffect(double sampleRate, int maximumFrames) override;
    void StopEffect() override;
    void AdoptLayout(const zelmediatypes::AudioChannelLayout& layout) override;

private:
    struct Buses {
        zelaudiofilterhost::AudioFilterBusList inputs;
        zelaudiofilterhost::AudioFilterBusList outputs;
    };

    Buses mBuses;
    Buses mAdopted;
    Effect mEffect;
    bool mStarts = true;
    std::vector<std::string> mCalls;
};

typedef boost::intrusive_ptr<RoutedFilter> RoutedFilterPtr;

RoutedFilterPtr MakeRouted(const zelaudiofilterhost::AudioFilterBusList& inputs,
                           const zelaudiofilterhost::AudioFilterBusList& outputs);

}  // namespace zeltests
