#pragma once

#include <map>

#include <boost/function.hpp>
#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilter.h>
#include <zelcore/ustring.h>

#include <zelaudiofilterhostui/AudioFilterEditorViewBase.h>
#include <zelaudiofilterhostui/Export.h>

namespace zelaudiofilterhostui {

/// Makes the editor view of a filter. A host registers its own makers under the component IDs of the filters that they
/// are for; the library registers none. Main thread, or static initialisation.
class ZELAUDIOFILTERHOSTUI_API AudioFilterViewFactory {
public:
    /// Makes the view of a filter; null when it has none for it.
    typedef boost::function<boost::intrusive_ptr<AudioFilterEditorViewBase>(
        boost::intrusive_ptr<zelaudiofilterhost::AudioFilter>)>
        FactoryFunction;

    /// The one factory; made when it is first asked for.
    static AudioFilterViewFactory& GetInstance();

    /// Has `function` make the views of filters with exactly this component ID, capitals included. An empty function is
    /// ignored. The first function of an ID stays, on purpose: a later one is ignored, and none is ever removed.
    void RegisterFactoryFunction(const zelcore::ustring& componentId, FactoryFunction function);

    /// The view of `filter` (not null): what the function registered for its component ID makes, and otherwise, also
    /// when that makes none, the view that embeds the plug-in's own editor if its component is known to the
    /// AudioFilterDescriptorManager as one of a plug-in. Null when there is no
    /// view for this filter; what to show then is the host's decision. Exceptions of the registered function pass to
    /// the caller.
    boost::intrusive_ptr<AudioFilterEditorViewBase> CreateViewForAudioFilter(
        boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> filter);

private:
    AudioFilterViewFactory();
    ~AudioFilterViewFactory();
    AudioFilterViewFactory(const AudioFilterViewFactory&) = delete;
    AudioFilterViewFactory& operator=(const AudioFilterViewFactory&) = delete;

    std::map<zelcore::ustring, FactoryFunction> mFunctions;
};

}  // namespace zelaudiofilterhostui
