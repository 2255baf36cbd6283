#include "ChainEffect.h"

#include <algorithm>
#include <stdexcept>

#include <zelaudiofilterhost/PluginDescription.h>
#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>

#include "PluginReload.h"
#include "TerminalText.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterBusDescription;
using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhost::ChannelMap;
using zelaudiofilterhost::PluginLoadError;
using zelcore::config::Localize;
using zelcore::utility::FillPlaceholders;
using zelmediatypes::AudioChannelLayout;

namespace {

constexpr AudioFilter::Direction kDirections[] = {AudioFilter::kInput, AudioFilter::kOutput};

bool FitsFilter(const ChannelMap& map, const AudioFilter& filter, AudioFilter::Direction direction) {
    const std::size_t main = filter.GetChannelMapTargetChannelLayout().size();
    const std::size_t sideChain = filter.GetSideChainTargetBus().GetLayout().size();
    const auto targets = static_cast<int>(direction == AudioFilter::kInput ? main + sideChain : main);
    const ChannelMap& own = filter.GetChannelMap(direction);
    return map.size() == own.size() && std::all_of(map.begin(), map.end(), [&](const auto& entry) {
               return own.contains(entry.first) && entry.second < targets;
           });
}

}  // namespace

ChainEffect::ChainEffect(const AudioFilterDescriptor& descriptor) : mIsBypassed(false) {
    Take(descriptor);
    try {
        mFilter = descriptor.CreateFilter();
    } catch (const PluginLoadError& error) {
        throw std::runtime_error(TerminalText::FromText(mRecord.name) + " " + error.what());
    }
}

ChainEffect::ChainEffect(const EffectRecord& record) : mRecord(record), mIsBypassed(record.isBypassed) {
    try {
        const PluginReload::Result found = PluginReload::Load(record);
        mFilter = found.filter;
        Take(*found.descriptor);
        GiveState();
    } catch (const PluginLoadError& error) {
        mTrouble = FillPlaceholders(Localize("$$$/tessaly/Session/EffectMissing=The plug-in @0 cannot be loaded: @1."),
                                    {mRecord.name, zelcore::utility::UTF8to16(error.what())});
    }
}

ChainEffect::~ChainEffect() = default;

void ChainEffect::Take(const AudioFilterDescriptor& descriptor) {
    mRecord.componentId = descriptor.GetComponent().componentId;
    mRecord.locator = descriptor.GetLocator();
    mRecord.name = descriptor.GetComponent().name;
    mRecord.vendor = descriptor.GetComponent().vendor;
}

void ChainEffect::GiveState() {
    // One that never gave a state begins as it is.
    if (mRecord.state.empty() || mFilter->SetState(mRecord.state)) return;
    mStateAfterRefusal = mFilter->GetState();
    mTrouble = FillPlaceholders(
        Localize("$$$/tessaly/Session/StateRefused=The plug-in @0 did not take its settings back."), {mRecord.name});
}

void ChainEffect::SetTargetFormat(const AudioChannelLayout& layout, const AudioFilterBusDescription& sideChain) {
    if (!mFilter) return;
    const bool isSame = layout == mFilter->GetChannelMapTargetChannelLayout() &&
                        sideChain.GetLayout() == mFilter->GetSideChainTargetBus().GetLayout();
    const bool hadSideChain = !mFilter->GetSideChainTargetBus().GetLayout().empty();
    const bool keepsInput = !isSame && KeepMaps();
    if (!mFilter->SetTargetFormat(layout, sideChain) || isSame) return;
    ApplyMaps();
    // The map of a track without a side-chain says nothing about one.
    if (keepsInput && !hadSideChain) mFilter->AutoConnectSideChainChannels(false);
}

/// Whether the inputs have a map of their own.
bool ChainEffect::KeepMaps() {
    if (mFilter->GetChannelMapTargetChannelLayout().empty()) return false;
    for (const AudioFilter::Direction direction : kDirections) {
        const ChannelMap& map = mFilter->GetChannelMap(direction);
        if (map != mBestFit[direction]) GetKeptMap(direction) = map;
    }
    return mFilter->GetChannelMap(AudioFilter::kInput) != mBestFit[AudioFilter::kInput];
}

void ChainEffect::ApplyMaps() {
    const bool hasTrack = !mFilter->GetChannelMapTargetChannelLayout().empty();
    for (const AudioFilter::Direction direction : kDirections) {
        mBestFit[direction] = mFilter->GetChannelMap(direction);
        std::optional<ChannelMap>& map = GetKeptMap(direction);
        if (!hasTrack || !map || !FitsFilter(*map, *mFilter, direction)) continue;
        mFilter->SetChannelMap(*map, direction);
        map.reset();
    }
}

std::optional<ChannelMap>& ChainEffect::GetKeptMap(AudioFilter::Direction direction) {
    return direction == AudioFilter::kInput ? mRecord.inputMap : mRecord.outputMap;
}

EffectRecord ChainEffect::MakeRecord() const {
    if (mFilter) {
        AudioFilter::State state = mFilter->GetState();
        const bool isUntouched = !mStateAfterRefusal.empty() && state == mStateAfterRefusal;
        if (!state.empty() && !isUntouched) mRecord.state = std::move(state);
    }
    EffectRecord record = mRecord;
    record.isBypassed = mIsBypassed;
    if (!mFilter || mFilter->GetChannelMapTargetChannelLayout().empty()) return record;
    for (const AudioFilter::Direction direction : kDirections) {
        const ChannelMap& map = mFilter->GetChannelMap(direction);
        if (map != mBestFit[direction]) (direction == AudioFilter::kInput ? record.inputMap : record.outputMap) = map;
    }
    return record;
}

}  // namespace tessaly
