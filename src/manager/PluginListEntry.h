#pragma once

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/PluginLocator.h>
#include <zelaudiofilterhost/PluginModuleInfo.h>
#include <zelcore/ustring.h>

namespace zelaudiofilterhostui {

/// One plug-in of the list: one that works, with what the catalogue knows of it, or a banned one.
class PluginListEntry {
public:
    explicit PluginListEntry(const boost::intrusive_ptr<zelaudiofilterhost::PluginModuleInfo>& info) : mInfo(info) {}
    explicit PluginListEntry(const zelaudiofilterhost::PluginLocator& locator) : mLocator(locator) {}

    const zelaudiofilterhost::PluginLocator& GetLocator() const { return mInfo ? mInfo->GetLocator() : mLocator; }
    /// Null for a banned one.
    zelaudiofilterhost::PluginModuleInfo* GetInfo() const { return mInfo.get(); }
    bool IsEnabled() const { return mInfo && mInfo->IsEnabled(); }

    // What is to be read of it
    zelcore::ustring GetName() const;
    /// "VST", "VST3", "AU", or nothing.
    zelcore::ustring GetType() const;
    zelcore::ustring GetStatus() const;
    zelcore::ustring GetPath() const;

    /// Whether its name or its path contains `text`; everything contains the empty text.
    bool Passes(const zelcore::ustring& text) const;

private:
    boost::intrusive_ptr<zelaudiofilterhost::PluginModuleInfo> mInfo;
    zelaudiofilterhost::PluginLocator mLocator;
};

/// Whether `text` contains `part`, the letters A to Z taken for a to z and everything else as it is: as simple as that
/// on purpose, so that everybody can say what is found.
bool ContainsIgnoringAsciiCase(const zelcore::ustring& text, const zelcore::ustring& part);

}  // namespace zelaudiofilterhostui
