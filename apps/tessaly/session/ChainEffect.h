#pragma once

#include <array>
#include <atomic>
#include <memory>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>

#include "EffectRecord.h"

namespace tessaly {

/// One effect of a chain: a live filter, or a plug-in that is missing and of which all is kept that was known. Main
/// thread but for the one function that says otherwise.
class ChainEffect {
public:
    typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> FilterPtr;

    /// A new effect. Throws std::runtime_error with the reason when the plug-in cannot be loaded.
    explicit ChainEffect(const zelaudiofilterhost::AudioFilterDescriptor& descriptor);
    /// An effect of a session: looked for by its component ID in the catalogue, then where its plug-in was, as
    /// PluginReload says. Where it cannot be loaded it is missing, and GetTrouble tells why; where the plug-in does not
    /// take its state back it is there, and GetTrouble tells that. Its maps are applied with the first SetTargetFormat.
    explicit ChainEffect(const EffectRecord& record);
    ~ChainEffect();
    ChainEffect(const ChainEffect&) = delete;
    ChainEffect& operator=(const ChainEffect&) = delete;

    /// Null while the plug-in is missing.
    const FilterPtr& GetFilter() const { return mFilter; }
    bool IsMissing() const { return !mFilter; }
    /// Localised, one sentence; empty when all is well.
    const zelcore::ustring& GetTrouble() const { return mTrouble; }

    const zelcore::ustring& GetName() const { return mRecord.name; }
    const zelcore::ustring& GetVendor() const { return mRecord.vendor; }
    /// Where its plug-in is, or was.
    const zelaudiofilterhost::PluginLocator& GetLocator() const { return mRecord.locator; }

    /// Also the sound thread's.
    bool IsBypassed() const { return mIsBypassed; }
    void SetBypassed(bool bypassed) { mIsBypassed = bypassed; }

    /// Puts the filter into a track. A map that is not the best fit is kept: it is applied in the first track whose
    /// channels it fits, be it one that the session brought or the one before. Side-chain channels that come are
    /// connected all the same. Not while its sound runs.
    void SetTargetFormat(const zelmediatypes::AudioChannelLayout& layout,
                         const zelaudiofilterhost::AudioFilterBusDescription& sideChain);

    WindowPlaces& GetWindowPlaces() { return mRecord.windows; }

    /// The effect as it is now, the state asked of the plug-in; of a missing one what was kept. When the plug-in fails
    /// to give its state, the last one that is known; of one that did not take its state back that state, until
    /// something of it changes.
    EffectRecord MakeRecord() const;

private:
    void Take(const zelaudiofilterhost::AudioFilterDescriptor& descriptor);
    void GiveState();
    bool KeepMaps();
    void ApplyMaps();
    std::optional<zelaudiofilterhost::ChannelMap>& GetKeptMap(zelaudiofilterhost::AudioFilter::Direction direction);

    /// What came from the session or the track before: of a live filter its maps as long as they are not applied, and
    /// its last known state.
    mutable EffectRecord mRecord;
    FilterPtr mFilter;
    zelcore::ustring mTrouble;
    zelaudiofilterhost::AudioFilter::State mStateAfterRefusal;  ///< empty when the plug-in took its state
    std::array<zelaudiofilterhost::ChannelMap, 2> mBestFit;     ///< by direction, of the track's format
    std::atomic<bool> mIsBypassed;
};

typedef std::shared_ptr<ChainEffect> ChainEffectPtr;

}  // namespace tessaly
