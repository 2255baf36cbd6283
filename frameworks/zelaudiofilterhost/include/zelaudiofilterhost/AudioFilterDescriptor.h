#pragma once

#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelcore/RefCountedObject.h>

#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/PluginComponentInfo.h>
#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

/// One component that filters can be made of: where it is and what it said of itself when it was scanned. Never
/// changes. Main thread.
class ZELAUDIOFILTERHOST_API AudioFilterDescriptor : public zelcore::utility::RefCountedObject {
public:
    /// `locator` names the module; a subcomponent in it is replaced by the component's own.
    AudioFilterDescriptor(const PluginLocator& locator, const PluginComponentInfo& component);

    /// Loads the module that `locator` names, asks it for its components and unloads it. Throws PluginLoadError.
    static std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> ReadModule(const PluginLocator& locator);

    /// The component: technology, path, and which of the module's components where it has several.
    PluginLocator GetLocator() const { return mLocator; }
    /// What the component said of itself.
    const PluginComponentInfo& GetComponent() const { return mComponent; }

    /// Loads the plug-in and makes a filter of it. Throws PluginLoadError with the reason in plain words. A filter
    /// keeps its module loaded.
    boost::intrusive_ptr<AudioFilter> CreateFilter() const;

protected:
    ~AudioFilterDescriptor() override;

private:
    PluginLocator mLocator;
    PluginComponentInfo mComponent;
};

}  // namespace zelaudiofilterhost
