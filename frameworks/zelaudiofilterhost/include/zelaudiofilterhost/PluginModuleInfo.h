#pragma once

#include <boost/intrusive_ptr.hpp>
#include <vector>

#include <zelcore/RefCountedObject.h>

#include <zelaudiofilterhost/PluginComponentInfo.h>
#include <zelaudiofilterhost/PluginFingerprint.h>
#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

/// The most components that one module may have; what is beyond is not listed.
constexpr std::size_t kMaxComponents = 4096;

/// What the catalogue knows of one working plug-in module. Made by scanning or from the catalogue's file; only the
/// user's choice changes later. Main thread.
class ZELAUDIOFILTERHOST_API PluginModuleInfo : public zelcore::utility::RefCountedObject {
public:
    /// `name` is what the module calls itself as a whole; empty takes the first component's name. There is at least one
    /// component (throws std::invalid_argument otherwise).
    PluginModuleInfo(const PluginLocator& locator, const ustring& name, const PluginFingerprint& fingerprint,
                     const std::vector<PluginComponentInfo>& components);

    /// Which plug-in it is.
    const PluginLocator& GetLocator() const { return mLocator; }
    /// Its file as it was when it was scanned.
    const PluginFingerprint& GetFingerprint() const { return mFingerprint; }
    /// What it has; at least one.
    const std::vector<PluginComponentInfo>& GetComponents() const { return mComponents; }
    /// The name to show: never empty (the file's title where the plug-in gives none).
    const ustring& GetName() const { return mName; }
    /// The first component's vendor and version.
    const ustring& GetVendor() const { return mComponents.front().vendor; }
    /// The first component's version.
    const ustring& GetVersion() const { return mComponents.front().version; }
    /// True when at least one component is an effect.
    bool HasAnyNonSynthEffect() const;

    /// The user's choice whether the plug-in is offered; true for a new one. It is kept by the next save.
    bool IsEnabled() const { return mEnabled; }
    /// Sets the user's choice; saved with the catalogue.
    void SetEnabled(bool enabled);

protected:
    ~PluginModuleInfo() override;

private:
    PluginLocator mLocator;
    PluginFingerprint mFingerprint;
    ustring mName;
    std::vector<PluginComponentInfo> mComponents;
    bool mEnabled;
};

}  // namespace zelaudiofilterhost
