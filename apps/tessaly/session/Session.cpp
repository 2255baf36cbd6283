#include "Session.h"

#include <algorithm>
#include <utility>

#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

#include "AudioFileError.h"
#include "AudioFileReader.h"
#include "FullPath.h"
#include "SessionCommands.h"
#include "SessionError.h"
#include "SessionFile.h"
#include "SideChainBus.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterBusDescription;
using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhost::ChannelMap;
using zelcore::config::Localize;
using zelcore::utility::FillPlaceholders;

namespace {

zelmediatypes::AudioChannelLayout GetLayoutOf(const AudioFileReader& file) {
    return zelmediatypes::MakeChannelLayoutForCount(static_cast<std::size_t>(file.GetChannelCount()));
}

QString MakeCommandText(const char* keyAndDefault, const ChainEffectPtr& effect) {
    return zelui::qt::ToQString(FillPlaceholders(Localize(keyAndDefault), {effect->GetName()}));
}

zelcore::ustring MakeTrouble(const char* keyAndDefault, const AudioFileError& error) {
    return FillPlaceholders(Localize(keyAndDefault), {zelcore::utility::UTF8to16(error.what())});
}

}  // namespace

Session::Session() : mIsLooping(false), mHasLastingChange(false) { mUndo.setUndoLimit(kUndoLimit); }

Session::~Session() = default;

// The files

Session::Track Session::OpenSound(const std::string& path) {
    Track track;
    track.soundPath = GetFullPath(path);
    const AudioFileReader file(track.soundPath);
    track.sampleRate = file.GetSampleRate();
    track.layout = GetLayoutOf(file);
    return track;
}

void Session::OpenSideChain(Track& track) {
    const AudioFileReader file(track.sideChainPath);
    if (file.GetSampleRate() != track.sampleRate) {
        throw AudioFileError(track.sideChainPath, "has a sample rate of " + std::to_string(file.GetSampleRate()) +
                                                      " Hz, the track " + std::to_string(track.sampleRate) + " Hz");
    }
    track.sideChain = SideChainBus::Make(GetLayoutOf(file));
}

void Session::SetSound(const std::string& path) {
    Track track = OpenSound(path);
    track.sideChainPath = mTrack.sideChainPath;
    try {
        if (!track.sideChainPath.empty()) OpenSideChain(track);
    } catch (const AudioFileError&) {
        track.sideChainPath.clear();
    }
    mHasLastingChange = true;
    Replace(track, mEffects);
}

void Session::SetSideChain(const std::string& path) {
    Track track = mTrack;
    track.sideChainPath = path.empty() ? path : GetFullPath(path);
    track.sideChain = AudioFilterBusDescription();
    if (!path.empty() && track.sampleRate == 0)
        throw AudioFileError(track.sideChainPath, "cannot be a side-chain: there is no sound yet");
    if (!path.empty()) OpenSideChain(track);
    mHasLastingChange = true;
    Replace(track, mEffects);
}

void Session::Replace(const Track& track, std::vector<ChainEffectPtr> effects) {
    mBeforeFormatChanges();
    mTrack = track;
    // Those that go are in `effects` then, and live until everybody has been told.
    mEffects.swap(effects);
    for (const ChainEffectPtr& effect : mEffects) SetFormatOf(effect);
    mUndo.clear();
    mFormatChanged();
    mChainChanged();
}

void Session::SetFormatOf(const ChainEffectPtr& effect) const {
    effect->SetTargetFormat(mTrack.layout, mTrack.sideChain);
}

void Session::SetLooping(bool looping) {
    if (mIsLooping == looping) return;
    mIsLooping = looping;
    mHasLastingChange = true;
    mDetailsChanged();
}

// The chain

void Session::SetEffects(const std::vector<ChainEffectPtr>& effects) {
    // A new one has no format yet.
    for (const ChainEffectPtr& effect : effects) {
        if (std::find(mEffects.begin(), mEffects.end(), effect) == mEffects.end()) SetFormatOf(effect);
    }
    mEffects = effects;
    mChainChanged();
}

void Session::PushChain(const char* keyAndDefault, const ChainEffectPtr& effect,
                        const std::vector<ChainEffectPtr>& after) {
    mUndo.push(new ChainCommand(*this, MakeCommandText(keyAndDefault, effect), after));
}

void Session::Insert(std::size_t index, const AudioFilterDescriptor& descriptor) {
    if (mEffects.size() >= SessionFile::kMaxEffects)
        throw SessionError("$$$/tessaly/SessionError/Full=There is no room for more effects.");
    const auto effect = std::make_shared<ChainEffect>(descriptor);
    std::vector<ChainEffectPtr> after = mEffects;
    after.insert(after.begin() + static_cast<std::ptrdiff_t>(std::min(index, after.size())), effect);
    PushChain("$$$/tessaly/Undo/Insert=Add @0", effect, after);
}

void Session::Remove(std::size_t index) {
    if (index >= mEffects.size()) return;
    std::vector<ChainEffectPtr> after = mEffects;
    after.erase(after.begin() + static_cast<std::ptrdiff_t>(index));
    PushChain("$$$/tessaly/Undo/Remove=Remove @0", mEffects[index], after);
}

void Session::Move(std::size_t from, std::size_t to) {
    if (from >= mEffects.size() || to >= mEffects.size() || from == to) return;
    std::vector<ChainEffectPtr> after = mEffects;
    after.erase(after.begin() + static_cast<std::ptrdiff_t>(from));
    after.insert(after.begin() + static_cast<std::ptrdiff_t>(to), mEffects[from]);
    PushChain("$$$/tessaly/Undo/Move=Move @0", mEffects[from], after);
}

void Session::SetBypassed(std::size_t index, bool bypassed) {
    if (index >= mEffects.size() || mEffects[index]->IsBypassed() == bypassed) return;
    const char* const text = bypassed ? "$$$/tessaly/Undo/Bypass=Bypass @0" : "$$$/tessaly/Undo/SwitchOn=Switch On @0";
    mUndo.push(new BypassCommand(*this, MakeCommandText(text, mEffects[index]), mEffects[index], bypassed));
}

void Session::NoteChannelMapChange(const ChainEffectPtr& effect, AudioFilter::Direction direction,
                                   const ChannelMap& before, const ChannelMap& after) {
    if (effect->IsMissing() || before == after) return;
    mUndo.push(
        new MapCommand(MakeCommandText("$$$/tessaly/Undo/Routing=Route @0", effect), effect, direction, before, after));
}

// Keeping it

SessionRecord Session::MakeRecord(const Track& track, bool isLooping, const std::vector<ChainEffectPtr>& effects) {
    SessionRecord record;
    record.soundPath = track.soundPath;
    record.sideChainPath = track.sideChainPath;
    record.isLooping = isLooping;
    for (const ChainEffectPtr& effect : effects) record.effects.push_back(effect->MakeRecord());
    return record;
}

bool Session::IsModified() const {
    SessionRecord now = MakeRecord(mTrack, mIsLooping, mEffects);
    if (now.effects.size() != mSaved.effects.size()) return true;
    for (std::size_t i = 0; i < now.effects.size(); ++i) now.effects[i].windows = mSaved.effects[i].windows;
    return now != mSaved;
}

void Session::Save(const std::string& path) {
    const std::string fullPath = GetFullPath(path);
    SessionRecord record = MakeRecord(mTrack, mIsLooping, mEffects);
    SessionFile::Save(fullPath, record);
    mPath = fullPath;
    mSaved = std::move(record);
    mHasLastingChange = false;
    mUndo.setClean();
    mDetailsChanged();
}

Session::Track Session::Reopen(const SessionRecord& record, std::vector<zelcore::ustring>& troubles) {
    Track track;
    try {
        if (!record.soundPath.empty()) track = OpenSound(record.soundPath);
    } catch (const AudioFileError& error) {
        track.soundPath = record.soundPath;
        troubles.push_back(MakeTrouble("$$$/tessaly/Session/SoundLost=The sound cannot be opened: @0.", error));
    }
    track.sideChainPath = record.sideChainPath;
    try {
        // Beside a sound that is missing it is not missed.
        if (!track.sideChainPath.empty() && track.sampleRate != 0) OpenSideChain(track);
    } catch (const AudioFileError& error) {
        troubles.push_back(
            MakeTrouble("$$$/tessaly/Session/SideChainLost=The side-chain cannot be opened: @0.", error));
    }
    return track;
}

std::vector<zelcore::ustring> Session::Load(const std::string& path) {
    const std::string fullPath = GetFullPath(path);
    const SessionRecord record = SessionFile::Load(fullPath);
    std::vector<zelcore::ustring> troubles;
    const Track track = Reopen(record, troubles);
    std::vector<ChainEffectPtr> effects;
    for (const EffectRecord& effect : record.effects) {
        effects.push_back(std::make_shared<ChainEffect>(effect));
        if (!effects.back()->GetTrouble().empty()) troubles.push_back(effects.back()->GetTrouble());
    }
    // All of it before anything changes: what fails, fails here.
    for (const ChainEffectPtr& effect : effects) effect->SetTargetFormat(track.layout, track.sideChain);
    SessionRecord saved = MakeRecord(track, record.isLooping, effects);
    mPath = fullPath;
    mIsLooping = record.isLooping;
    mHasLastingChange = false;
    mSaved = std::move(saved);
    Replace(track, effects);
    return troubles;
}

void Session::Clear() {
    mPath.clear();
    mIsLooping = false;
    mHasLastingChange = false;
    mSaved = SessionRecord();
    Replace(Track(), {});
}

}  // namespace tessaly
