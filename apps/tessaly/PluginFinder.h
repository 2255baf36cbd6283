#pragma once

#include <string>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>

namespace tessaly {

/// Finds the plug-in that a person means. Main thread.
class PluginFinder {
public:
    typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilterDescriptor> DescriptorPtr;

    /// `plugin` is the path of a file or bundle, which is loaded and asked, or the component ID or the name of a
    /// component of the catalogue; of a name a part is enough where only one has it, and capitals do not matter.
    /// `component` (may be empty) chooses one of several by name or ID. Throws std::runtime_error with what is wrong
    /// and what there is to choose from.
    static DescriptorPtr Find(const std::string& plugin, const std::string& component);
    /// A filter of what Find finds, which has a component descriptor from now on. Throws std::runtime_error also when
    /// the plug-in cannot be loaded.
    static boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> Load(const std::string& plugin,
                                                                      const std::string& component);
};

}  // namespace tessaly
