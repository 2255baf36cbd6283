#pragma once

#include <string>
#include <vector>

#include <zelaudiofilterhost/AudioFilter.h>
#include <zelcore/Utf.h>

namespace zeltests {

/// A filter that records what is called on it, in order, and answers from a table. Counts how many of its kind live.
class AudioFilterDouble : public zelaudiofilterhost::AudioFilter {
public:
    struct Parameter {
        std::string name;
        std::string label;
        float value = 0.0f;
    };
    typedef zelcore::ustring ustring;

    explicit AudioFilterDouble(const std::vector<Parameter>& parameters = {}) : mParameters(parameters) {
        ++GetLiveCount();
    }

    /// Calls that set something or start something, in order: "set 2 0.500000".
    const std::vector<std::string>& GetCalls() const { return mCalls; }
    void ForgetCalls() { mCalls.clear(); }
    /// May be changed behind the back of whoever uses the filter, as plug-ins do.
    std::vector<Parameter>& GetParameters() { return mParameters; }

    static int& GetLiveCount() {
        static int count = 0;
        return count;
    }

    ustring GetComponentID() const override { return zelcore::utility::AsciiToUTF16("TEST-DOUBLE"); }
    ustring GetName() const override { return zelcore::utility::AsciiToUTF16("Double"); }

    int GetParameterCount() const override { return static_cast<int>(mParameters.size()); }
    boost::intrusive_ptr<zelaudiofilterhost::AudioFilterParameterInfo> GetParameterInfo(int index) const override {
        const Parameter parameter = Has(index) ? mParameters[static_cast<std::size_t>(index)] : Parameter();
        return new zelaudiofilterhost::AudioFilterParameterInfo(zelcore::utility::UTF8to16(parameter.name),
                                                                zelcore::utility::UTF8to16(parameter.label));
    }
    float GetParameterValue(int index) const override {
        return Has(index) ? mParameters[static_cast<std::size_t>(index)].value : 0.0f;
    }
    void SetParameterValue(int index, float value) override {
        mCalls.push_back("set " + std::to_string(index) + " " + std::to_string(value));
        if (Has(index)) mParameters[static_cast<std::size_t>(index)].value = value;
    }
    /// "<value>!", to be told apart from anything that a view might make of the number itself.
    ustring GetParameterValueString(int index) const override {
        return Has(index) ? zelcore::utility::UTF8to16(std::to_string(GetParameterValue(index)) + "!") : ustring();
    }

    void GetBusConfiguration(zelaudiofilterhost::AudioFilterBusList& inputs,
                             zelaudiofilterhost::AudioFilterBusList& outputs) const override {
        inputs = mInputs;
        outputs = mOutputs;
    }
    /// Stereo in and out, until they are set.
    void SetBuses(const zelaudiofilterhost::AudioFilterBusList& inputs,
                  const zelaudiofilterhost::AudioFilterBusList& outputs) {
        mInputs = inputs;
        mOutputs = outputs;
    }
    void ProcessEffect(const float* const*, float* const*, int) override {}

protected:
    ~AudioFilterDouble() override { --GetLiveCount(); }
    bool StartEffect(double, int) override { return true; }
    void StopEffect() override {}

private:
    static zelaudiofilterhost::AudioFilterBusList MakeStereo() {
        return {zelaudiofilterhost::AudioFilterBusDescription(ustring(), zelmediatypes::MakeChannelLayoutForCount(2))};
    }
    bool Has(int index) const { return index >= 0 && static_cast<std::size_t>(index) < mParameters.size(); }

    std::vector<Parameter> mParameters;
    zelaudiofilterhost::AudioFilterBusList mInputs = MakeStereo();
    zelaudiofilterhost::AudioFilterBusList mOutputs = MakeStereo();
    std::vector<std::string> mCalls;
};

}  // namespace zeltests
