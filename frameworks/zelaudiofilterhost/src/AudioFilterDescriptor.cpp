#include <zelaudiofilterhost/AudioFilterDescriptor.h>

#include <string>

#include <zelaudiofilterhost/PluginDescription.h>
#include <zelcore/Utf.h>

#include "ProcessStateGuard.h"
#include "Vst2AudioFilter.h"
#include "Vst3AudioFilter.h"

namespace zelaudiofilterhost {

AudioFilterDescriptor::AudioFilterDescriptor(const PluginLocator& locator, const PluginComponentInfo& component)
    : mLocator(locator.GetTechnologyType(), locator.GetPath(), component.subcomponent), mComponent(component) {}

AudioFilterDescriptor::~AudioFilterDescriptor() = default;

std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> AudioFilterDescriptor::ReadModule(
    const PluginLocator& locator) {
    std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> descriptors;
    for (const PluginComponentInfo& component : DescribePlugin(locator).components) {
        descriptors.emplace_back(new AudioFilterDescriptor(locator, component));
    }
    return descriptors;
}

boost::intrusive_ptr<AudioFilter> AudioFilterDescriptor::CreateFilter() const {
    const zelcore::utf8string text = zelcore::utility::UTF16to8(mLocator.GetPath());
    const std::string path(text.begin(), text.end());
    // The module stays; what it did to the process while it was loaded does not.
    const ProcessStateGuard guard;
    switch (mLocator.GetTechnologyType()) {
        case kTechnologyVST:
            return MakeVst2AudioFilter(path, mComponent, mLocator.GetSubcomponent());
        case kTechnologyVST3:
            return MakeVst3AudioFilter(path, mComponent, mLocator.GetSubcomponent());
        case kTechnologyAU:
            throw PluginLoadError("Audio Units work on macOS only");
        default:
            throw PluginLoadError("is of no plug-in format that is known here");
    }
}

}  // namespace zelaudiofilterhost
