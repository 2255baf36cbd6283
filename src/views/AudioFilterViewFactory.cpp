#include <zelaudiofilterhostui/AudioFilterViewFactory.h>

#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhostui/AudioFilterEditorView.h>

namespace zelaudiofilterhostui {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhost::AudioFilterDescriptorManager;
using zelaudiofilterhost::TechnologyType;

namespace {

/// The formats whose plug-ins may bring an editor: those between VST and AU.
bool MayHaveEditor(TechnologyType technology) { return static_cast<unsigned>(technology) - 2u < 3u; }

bool IsPlugin(const AudioFilter& filter) {
    const boost::intrusive_ptr<AudioFilterDescriptor> descriptor =
        AudioFilterDescriptorManager::GetInstance().GetComponentDescriptorForID(filter.GetComponentID());
    return descriptor && MayHaveEditor(descriptor->GetLocator().GetTechnologyType());
}

}  // namespace

AudioFilterViewFactory::AudioFilterViewFactory() = default;

AudioFilterViewFactory::~AudioFilterViewFactory() = default;

AudioFilterViewFactory& AudioFilterViewFactory::GetInstance() {
    static AudioFilterViewFactory factory;
    return factory;
}

void AudioFilterViewFactory::RegisterFactoryFunction(const zelcore::ustring& componentId, FactoryFunction function) {
    if (function.empty()) return;
    mFunctions.emplace(componentId, function);
}

boost::intrusive_ptr<AudioFilterEditorViewBase> AudioFilterViewFactory::CreateViewForAudioFilter(
    boost::intrusive_ptr<AudioFilter> filter) {
    const auto found = mFunctions.find(filter->GetComponentID());
    if (found != mFunctions.end()) {
        // A copy: the function may register others.
        const FactoryFunction function = found->second;
        if (const boost::intrusive_ptr<AudioFilterEditorViewBase> view = function(filter)) return view;
    }
    if (IsPlugin(*filter)) return new AudioFilterEditorView(filter);
    return nullptr;
}

}  // namespace zelaudiofilterhostui
