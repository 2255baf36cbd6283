#include <zelaudiofilterhost/AudioFilter.h>

#include <array>

#include <zelaudiofilterhost/AudioFilterEditor.h>

#include "ChannelMapRules.h"
#include "ChannelRouting.h"

namespace zelaudiofilterhost {

using zelmediatypes::AudioChannelLayout;

namespace {

constexpr double kMaxSampleRate = 10e6;
constexpr int kMaxBlockSize = 1 << 20;

}  // namespace

// Who takes its address on Windows wants it to be in the library.
constexpr std::size_t AudioFilter::kMaxTargetChannels;

AudioFilter::AudioFilter()
    : mRouting(std::make_unique<ChannelRouting>()), mIsStarted(false), mSampleRate(0.0), mMaximumFrames(0) {}

AudioFilter::~AudioFilter() = default;

// State

AudioFilter::State AudioFilter::GetState() const { return State(); }

bool AudioFilter::SetState(const State&) { return false; }

// The editor

bool AudioFilter::HasEditor() const { return false; }

boost::intrusive_ptr<AudioFilterEditor> AudioFilter::GetEditor() { return nullptr; }

// Channels

int AudioFilter::GetEffectChannelCount(Direction direction) const {
    AudioFilterBusList inputs;
    AudioFilterBusList outputs;
    GetBusConfiguration(inputs, outputs);
    return CountChannels(direction == kInput ? inputs : outputs);
}

void AudioFilter::AdoptLayout(const AudioChannelLayout&) {}

bool AudioFilter::SetTargetFormat(const AudioChannelLayout& layout, const AudioFilterBusDescription& sideChain) {
    if (layout.size() + sideChain.GetLayout().size() > kMaxTargetChannels) return false;
    if (layout == mRouting->GetTargetLayout() && sideChain == mRouting->GetSideChain()) return true;
    // Whoever is told below may let go of the filter.
    const boost::intrusive_ptr<AudioFilter> self(this);
    SyncEffectChannels();
    const std::array<ChannelMap, 2> before = mRouting->GetMaps();
    if (layout == mRouting->GetTargetLayout() && sideChain.GetLayout() == mRouting->GetSideChain().GetLayout())
        mRouting->RenameSideChain(sideChain);
    else
        MoveTo(layout, sideChain);
    // At last: whoever is told finds the filter at work again, and may throw.
    mRouting->TellTarget(before);
    return true;
}

void AudioFilter::MoveTo(const AudioChannelLayout& layout, const AudioFilterBusDescription& sideChain) {
    const bool wasStarted = mIsStarted;
    StopProcessing();
    AdoptLayout(layout);
    AudioFilterBusList inputs;
    AudioFilterBusList outputs;
    GetBusConfiguration(inputs, outputs);
    mRouting->SetTarget(layout, sideChain, inputs, outputs);
    if (wasStarted) StartProcessing(mSampleRate, mMaximumFrames);
}

const AudioChannelLayout& AudioFilter::GetChannelMapTargetChannelLayout() const { return mRouting->GetTargetLayout(); }

const AudioFilterBusDescription& AudioFilter::GetSideChainTargetBus() const { return mRouting->GetSideChain(); }

const ChannelMap& AudioFilter::GetChannelMap(Direction direction) const {
    SyncEffectChannels();
    return mRouting->GetMap(direction);
}

void AudioFilter::SetChannelMap(const ChannelMap& map, Direction direction) {
    const boost::intrusive_ptr<AudioFilter> self(this);
    SyncEffectChannels();
    mRouting->SetMap(map, direction);
}

void AudioFilter::AssignChannelMapping(Direction direction, int effectChannel, int targetChannel) {
    SyncEffectChannels();
    SetChannelMap(mRouting->Assign(direction, effectChannel, targetChannel), direction);
}

ChannelMap AudioFilter::BuildBestFitChannelMap(const AudioFilterBusList& buses,
                                               const AudioChannelLayout& targetLayout) {
    return BuildBestFitMap(buses, targetLayout);
}

void AudioFilter::AutoConnectSideChainChannels(bool replaceExisting) {
    AudioFilterBusList inputs;
    AudioFilterBusList outputs;
    GetBusConfiguration(inputs, outputs);
    const int firstTarget = static_cast<int>(mRouting->GetTargetLayout().size());
    SetChannelMap(ConnectSideChain(GetChannelMap(kInput), inputs, mRouting->GetSideChain().GetLayout(), firstTarget,
                                   replaceExisting),
                  kInput);
}

AudioFilter::ChannelMapChangedSignal& AudioFilter::GetChannelMapChangedSignal() {
    return mRouting->GetMapChangedSignal();
}

AudioFilter::TargetFormatChangedSignal& AudioFilter::GetTargetFormatChangedSignal() {
    return mRouting->GetTargetChangedSignal();
}

// The effect is asked as late as that because it is not there yet when the base is made.
void AudioFilter::SyncEffectChannels() const {
    const int inputs = GetEffectChannelCount(kInput);
    const int outputs = GetEffectChannelCount(kOutput);
    if (inputs == mRouting->GetEffectChannels(kInput) && outputs == mRouting->GetEffectChannels(kOutput)) return;
    mRouting->SetEffectChannels(inputs, outputs);
}

// Sound

bool AudioFilter::StartProcessing(double sampleRate, int maximumFrames) {
    StopProcessing();
    if (!(sampleRate >= 1.0 && sampleRate <= kMaxSampleRate)) return false;
    if (maximumFrames < 1 || maximumFrames > kMaxBlockSize) return false;
    SyncEffectChannels();
    ChannelRouter& router = mRouting->GetRouter();
    if (!router.Allocate(mRouting->GetEffectChannels(kInput), mRouting->GetEffectChannels(kOutput), maximumFrames))
        return false;
    if (!StartEffect(sampleRate, maximumFrames)) {
        router.Free();
        return false;
    }
    mIsStarted = true;
    mSampleRate = sampleRate;
    mMaximumFrames = maximumFrames;
    return true;
}

void AudioFilter::StopProcessing() {
    if (!mIsStarted) return;
    mIsStarted = false;
    StopEffect();
    mRouting->GetRouter().Free();
}

void AudioFilter::Process(const float* const* inputs, float* const* outputs, int frames) {
    mRouting->GetRouter().Process(*this, inputs, outputs, frames);
}

}  // namespace zelaudiofilterhost
