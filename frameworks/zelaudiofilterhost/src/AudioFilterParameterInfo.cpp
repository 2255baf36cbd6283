#include <zelaudiofilterhost/AudioFilterParameterInfo.h>

namespace zelaudiofilterhost {

AudioFilterParameterInfo::AudioFilterParameterInfo(const ustring& name, const ustring& label)
    : mName(name), mLabel(label) {}

AudioFilterParameterInfo::~AudioFilterParameterInfo() = default;

}  // namespace zelaudiofilterhost
