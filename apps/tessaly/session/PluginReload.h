#pragma once

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>

#include "EffectRecord.h"

namespace tessaly {

/// Finds the plug-in of an effect that was saved. Main thread.
class PluginReload {
public:
    typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilterDescriptor> DescriptorPtr;

    struct Result {
        DescriptorPtr descriptor;
        boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> filter;
    };

    /// By its component ID in the catalogue; where it is not there or cannot be loaded, where it was, if the catalogue
    /// knows that file or it is in one of the folders in which plug-ins are looked for: a session is no reason to load
    /// just any file. Never a plug-in that is banned. Throws PluginLoadError with the reason.
    static Result Load(const EffectRecord& effect);
};

}  // namespace tessaly
