#pragma once

#include <map>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelcore/ustring.h>

#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelaudiofilterhost/Export.h>

namespace zelaudiofilterhost {

/// Every component that there is: those of the catalogue's plug-ins, enabled or not, and those that the host brings
/// itself. One per process. Main thread only.
class ZELAUDIOFILTERHOST_API AudioFilterDescriptorManager {
public:
    /// Descriptors are shared and never change.
    typedef boost::intrusive_ptr<AudioFilterDescriptor> DescriptorPtr;

    /// The one manager; made when it is first asked for.
    static AudioFilterDescriptorManager& GetInstance();

    /// The component of that ID, as the host or the catalogue has it now; null when there is none. Where the catalogue
    /// has the ID more than once (a plug-in in two folders), the one that came first.
    DescriptorPtr GetComponentDescriptorForID(const ustring& componentId) const;

    /// All components, those of AddDescriptor first, then the catalogue's in its order.
    std::vector<DescriptorPtr> GetComponentDescriptors() const;

    /// Adds a component of a plug-in that is in no catalogue, such as one that a host brings along. It goes before the
    /// catalogue's; a second one of the same ID is ignored. Null is ignored.
    void AddDescriptor(const DescriptorPtr& descriptor);
    /// Takes a component of AddDescriptor away again; nothing for an ID that is not there.
    void RemoveDescriptor(const ustring& componentId);

private:
    AudioFilterDescriptorManager();
    ~AudioFilterDescriptorManager();
    AudioFilterDescriptorManager(const AudioFilterDescriptorManager&) = delete;
    AudioFilterDescriptorManager& operator=(const AudioFilterDescriptorManager&) = delete;

    std::map<ustring, DescriptorPtr> mOwn;
};

}  // namespace zelaudiofilterhost
