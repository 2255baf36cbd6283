#pragma once

#include <map>
#include <string>
#include <variant>
#include <vector>

#include <pluginterfaces/vst/ivstattributes.h>

#include "Vst3Object.h"

namespace zelaudiofilterhost {

/// Named values that the parts of a VST3 plug-in send each other in a message. One thread at a time.
class Vst3AttributeList final : public Vst3Object<Vst3AttributeList, Steinberg::Vst::IAttributeList> {
public:
    static constexpr std::size_t kMaxTextLength = 1 << 20;
    static constexpr std::size_t kMaxBytes = 64 << 20;

    static const Steinberg::TUID& InterfaceId() { return Steinberg::Vst::IAttributeList_iid; }

    Steinberg::tresult PLUGIN_API setInt(AttrID id, Steinberg::int64 value) override;
    Steinberg::tresult PLUGIN_API getInt(AttrID id, Steinberg::int64& value) override;
    Steinberg::tresult PLUGIN_API setFloat(AttrID id, double value) override;
    Steinberg::tresult PLUGIN_API getFloat(AttrID id, double& value) override;
    Steinberg::tresult PLUGIN_API setString(AttrID id, const Steinberg::Vst::TChar* text) override;
    Steinberg::tresult PLUGIN_API getString(AttrID id, Steinberg::Vst::TChar* text,
                                            Steinberg::uint32 sizeInBytes) override;
    Steinberg::tresult PLUGIN_API setBinary(AttrID id, const void* data, Steinberg::uint32 sizeInBytes) override;
    Steinberg::tresult PLUGIN_API getBinary(AttrID id, const void*& data, Steinberg::uint32& sizeInBytes) override;

private:
    typedef std::basic_string<Steinberg::Vst::TChar> Text;
    typedef std::variant<Steinberg::int64, double, Text, std::vector<char>> Value;

    Steinberg::tresult Set(AttrID id, Value value);
    template <typename T>
    const T* Find(AttrID id) const;

    std::map<std::string, Value, std::less<>> mValues;
};

}  // namespace zelaudiofilterhost
