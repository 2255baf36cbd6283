#include <filesystem>

#include <AudioFileError.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <Session.h>
#include <SessionFile.h>
#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>

#include "SessionStage.h"
#include "support/InstalledPlugins.h"
#include "support/PluginLeaks.h"

using namespace tessaly;
using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr std::size_t kEnd = 1000;

class SessionTest : public testing::Test {
protected:
    SessionTest() {
        mSession.GetBeforeFormatChangesSignal().connect([this] { mHeard += "before "; });
        mSession.GetFormatChangedSignal().connect([this] { mHeard += "format "; });
        mSession.GetChainChangedSignal().connect([this] { mHeard += "chain "; });
    }
    ~SessionTest() override {
        AudioFilterDescriptorManager& manager = AudioFilterDescriptorManager::GetInstance();
        for (const char* const name :
             {"vst/good/zel_gain" ZEL_MODULE, "vst/good/zel_plain" ZEL_MODULE, "vst/good/zel_chunk" ZEL_MODULE})
            manager.RemoveDescriptor(ReadDescriptor(TestPlugin(name))->GetComponent().componentId);
    }

    std::string MakeSound(const std::string& name, int channels, int sampleRate = 48000) const {
        WriteSound(mFolder.Path(name), channels, sampleRate);
        return mFolder.Path(name);
    }
    void Insert(const std::string& plugin, std::size_t index = kEnd) {
        mSession.Insert(index, *ReadDescriptor(TestPlugin("vst/good/" + plugin + ZEL_MODULE)));
    }
    /// Three effects in a stereo track.
    void Fill() {
        mSession.SetSound(MakeSound("stereo.wav", 2));
        for (const char* const plugin : {"zel_gain", "zel_plain", "zel_chunk"}) Insert(plugin);
        mHeard.clear();
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const ChainEffectPtr& effect : mSession.GetEffects()) names.push_back(Text(effect->GetName()));
        return names;
    }
    std::string UndoText() { return mSession.GetUndoStack().undoText().toStdString(); }
    /// What has been told since the last time.
    std::string Heard() { return std::exchange(mHeard, std::string()); }
    AudioFilter& FilterAt(std::size_t index) { return *mSession.GetEffects()[index]->GetFilter(); }

    const ThrowAwayFolder mFolder;
    const SearchFolders mSearchFolders{{mFolder.GetPath(), ZEL_TESTPLUGINS_DIR}};
    const std::string mPath = mFolder.Path("song.tessaly");
    std::string mHeard;
    Session mSession;
};

}  // namespace

TEST_F(SessionTest, AFreshOneIsEmptyAndUnmodified) {
    EXPECT_EQ(mSession.GetSoundPath(), "");
    EXPECT_EQ(mSession.GetSideChainPath(), "");
    EXPECT_EQ(mSession.GetPath(), "");
    EXPECT_EQ(mSession.GetSampleRate(), 0);
    EXPECT_THAT(mSession.GetLayout(), IsEmpty());
    EXPECT_THAT(mSession.GetEffects(), IsEmpty());
    EXPECT_FALSE(mSession.IsLooping());
    EXPECT_FALSE(mSession.IsModified());
    EXPECT_EQ(mSession.GetUndoStack().undoLimit(), Session::kUndoLimit);
}

// Sound and side-chain

TEST_F(SessionTest, ASoundGivesTheTrackAndEveryEffectItsFormat) {
    Insert("zel_gain");
    Heard();
    mSession.SetSound(MakeSound("mono.wav", 1, 44100));
    EXPECT_EQ(Heard(), "before format chain ");
    EXPECT_EQ(mSession.GetSampleRate(), 44100);
    EXPECT_THAT(mSession.GetLayout(), SizeIs(1));
    EXPECT_EQ(FilterAt(0).GetChannelMapTargetChannelLayout(), mSession.GetLayout());
    mSession.SetSound(MakeSound("stereo.wav", 2));
    EXPECT_THAT(FilterAt(0).GetChannelMapTargetChannelLayout(), SizeIs(2));
    Insert("zel_plain");
    EXPECT_THAT(FilterAt(1).GetChannelMapTargetChannelLayout(), SizeIs(2)) << "one that comes later";
}

TEST_F(SessionTest, ASoundThatCannotBeOpenedChangesNothing) {
    Fill();
    const std::string before = mSession.GetSoundPath();
    EXPECT_THROW(mSession.SetSound(mFolder.Path("missing.wav")), AudioFileError);
    WriteFile(mFolder.Path("text.wav"), "no sound");
    EXPECT_THROW(mSession.SetSound(mFolder.Path("text.wav")), AudioFileError);
    EXPECT_EQ(mSession.GetSoundPath(), before);
    EXPECT_EQ(Heard(), "");
    EXPECT_TRUE(mSession.GetUndoStack().canUndo());
}

TEST_F(SessionTest, AnotherSoundForgetsWhatCouldBeUndone) {
    Fill();
    mSession.Remove(0);
    mSession.SetSound(MakeSound("mono.wav", 1));
    EXPECT_FALSE(mSession.GetUndoStack().canUndo());
    EXPECT_THAT(Names(), ElementsAre("Zel Plain", "Zel Chunk"));
}

TEST_F(SessionTest, ASideChainIsHeardByTheEffects) {
    Fill();
    mSession.SetSideChain(MakeSound("side.wav", 1));
    EXPECT_EQ(Heard(), "before format chain ");
    EXPECT_THAT(mSession.GetSideChainBus().GetLayout(), SizeIs(1));
    EXPECT_EQ(FilterAt(0).GetSideChainTargetBus(), mSession.GetSideChainBus());
    EXPECT_FALSE(mSession.GetUndoStack().canUndo()) << "the routing of other channels";
    mSession.SetSideChain("");
    EXPECT_EQ(Heard(), "before format chain ");
    EXPECT_EQ(mSession.GetSideChainPath(), "");
    EXPECT_THAT(FilterAt(0).GetSideChainTargetBus().GetLayout(), IsEmpty());
}

TEST_F(SessionTest, ASideChainThatDoesNotFitChangesNothing) {
    EXPECT_THAT(ErrorOf([&] { mSession.SetSideChain(MakeSound("side.wav", 1)); }), HasSubstr("there is no sound yet"));
    Fill();
    mSession.SetSideChain(mFolder.Path("side.wav"));
    Heard();
    EXPECT_THAT(ErrorOf([&] { mSession.SetSideChain(MakeSound("slow.wav", 1, 44100)); }),
                HasSubstr("has a sample rate of 44100 Hz, the track 48000 Hz"));
    EXPECT_THROW(mSession.SetSideChain(mFolder.Path("missing.wav")), AudioFileError);
    EXPECT_EQ(mSession.GetSideChainPath(), FullName(mFolder.Path("side.wav")));
    EXPECT_EQ(Heard(), "");
}

TEST_F(SessionTest, AnotherSoundKeepsASideChainOfItsRateAndLetsGoOfAnother) {
    Fill();
    mSession.SetSideChain(MakeSound("side.wav", 1));
    mSession.SetSound(MakeSound("mono.wav", 1));
    EXPECT_EQ(mSession.GetSideChainPath(), FullName(mFolder.Path("side.wav")));
    EXPECT_THAT(mSession.GetSideChainBus().GetLayout(), SizeIs(1));
    mSession.SetSound(MakeSound("slow.wav", 2, 44100));
    EXPECT_EQ(mSession.GetSideChainPath(), "");
    EXPECT_THAT(mSession.GetSideChainBus().GetLayout(), IsEmpty());
    mSession.SetSound(mFolder.Path("mono.wav"));
    mSession.SetSideChain(mFolder.Path("side.wav"));
    std::filesystem::remove(mFolder.Path("side.wav"));
    mSession.SetSound(mFolder.Path("stereo.wav"));
    EXPECT_EQ(mSession.GetSideChainPath(), "") << "it is not there any more";
}

TEST_F(SessionTest, PathsAreMadeFull) {
    const std::filesystem::path before = std::filesystem::current_path();
    const std::string sound = MakeSound("stereo.wav", 2);
    std::filesystem::current_path(mFolder.GetPath());
    mSession.SetSound("./stereo.wav");
    mSession.Save("song.tessaly");
    std::filesystem::current_path(before);
    EXPECT_EQ(mSession.GetSoundPath(), FullName(sound));
    EXPECT_EQ(mSession.GetPath(), FullName(mPath));
}

// The chain

TEST_F(SessionTest, EffectsComeWhereTheyAreWanted) {
    Insert("zel_gain", 5);
    Insert("zel_plain", 0);
    Insert("zel_chunk", 1);
    EXPECT_THAT(Names(), ElementsAre("Zel Plain", "Zel Chunk", "Zel Gain"));
    EXPECT_EQ(Heard(), "chain chain chain ");
    EXPECT_EQ(UndoText(), "Add Zel Chunk");
    mSession.GetUndoStack().undo();
    EXPECT_THAT(Names(), ElementsAre("Zel Plain", "Zel Gain"));
    mSession.GetUndoStack().redo();
    EXPECT_THAT(Names(), ElementsAre("Zel Plain", "Zel Chunk", "Zel Gain"));
}

TEST_F(SessionTest, AnEffectThatCannotBeLoadedChangesNothing) {
    const DescriptorPtr gone(new AudioFilterDescriptor(PluginLocator(kTechnologyVST, UText("/nowhere/x.so")),
                                                       GainDescriptor()->GetComponent()));
    EXPECT_EQ(ErrorOf([&] { mSession.Insert(0, *gone); }), "Zel Gain there is no such file");
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_FALSE(mSession.GetUndoStack().canUndo());
    EXPECT_EQ(Heard(), "");
}

TEST_F(SessionTest, ThereAreNoMoreEffectsThanAFileHolds) {
    for (std::size_t i = 0; i < SessionFile::kMaxEffects; ++i) Insert("zel_plain");
    EXPECT_EQ(ErrorOf([&] { Insert("zel_plain"); }), "There is no room for more effects.");
    EXPECT_THAT(mSession.GetEffects(), SizeIs(SessionFile::kMaxEffects));
}

TEST_F(SessionTest, RemovalUndoneBringsBackTheVeryInstanceWithItsStateAndPlace) {
    Fill();
    const ChainEffectPtr effect = mSession.GetEffects()[1];
    mSession.GetUndoStack().undo();
    mSession.GetUndoStack().redo();
    FilterAt(2).SetParameterValue(0, 0.125f);
    const ChainEffectPtr last = mSession.GetEffects()[2];
    mSession.Remove(2);
    EXPECT_THAT(Names(), ElementsAre("Zel Gain", "Zel Plain"));
    EXPECT_EQ(UndoText(), "Remove Zel Chunk");
    mSession.Remove(0);
    mSession.GetUndoStack().undo();
    mSession.GetUndoStack().undo();
    EXPECT_THAT(Names(), ElementsAre("Zel Gain", "Zel Plain", "Zel Chunk"));
    EXPECT_EQ(mSession.GetEffects()[2], last);
    EXPECT_EQ(FilterAt(2).GetParameterValue(0), 0.125f);
    EXPECT_EQ(mSession.GetEffects()[1], effect);
}

TEST_F(SessionTest, AnEffectThatComesHearsTheSideChain) {
    Fill();
    mSession.SetSideChain(MakeSound("side.wav", 1));
    Insert("zel_gain", 0);
    EXPECT_EQ(FilterAt(0).GetSideChainTargetBus(), mSession.GetSideChainBus());
}

TEST_F(SessionTest, ASideChainLeavesTheRoutingAsTheUserMadeIt) {
    Fill();
    const ChannelMap before = FilterAt(0).GetChannelMap(AudioFilter::kInput);
    FilterAt(0).AssignChannelMapping(AudioFilter::kInput, 0, 1);
    const ChannelMap after = FilterAt(0).GetChannelMap(AudioFilter::kInput);
    mSession.NoteChannelMapChange(mSession.GetEffects()[0], AudioFilter::kInput, before, after);
    mSession.SetSideChain(MakeSound("side.wav", 1));
    EXPECT_EQ(FilterAt(0).GetChannelMap(AudioFilter::kInput), after);
    mSession.SetSideChain("");
    EXPECT_EQ(FilterAt(0).GetChannelMap(AudioFilter::kInput), after);
}

TEST_F(SessionTest, EffectsMove) {
    Fill();
    mSession.Move(0, 2);
    EXPECT_THAT(Names(), ElementsAre("Zel Plain", "Zel Chunk", "Zel Gain"));
    EXPECT_EQ(UndoText(), "Move Zel Gain");
    mSession.Move(2, 1);
    EXPECT_THAT(Names(), ElementsAre("Zel Plain", "Zel Gain", "Zel Chunk"));
    mSession.GetUndoStack().undo();
    mSession.GetUndoStack().undo();
    EXPECT_THAT(Names(), ElementsAre("Zel Gain", "Zel Plain", "Zel Chunk"));
    EXPECT_EQ(Heard(), "chain chain chain chain ");
}

TEST_F(SessionTest, IndexesThatAreNotThereAndChangesThatAreNoneDoNothing) {
    Fill();
    const int commands = mSession.GetUndoStack().count();
    mSession.Remove(3);
    mSession.Remove(kEnd);
    mSession.Move(0, 3);
    mSession.Move(3, 0);
    mSession.Move(1, 1);
    mSession.SetBypassed(3, true);
    mSession.SetBypassed(0, false);
    EXPECT_EQ(mSession.GetUndoStack().count(), commands);
    EXPECT_EQ(Heard(), "");
}

TEST_F(SessionTest, BypassingIsUndone) {
    Fill();
    mSession.SetBypassed(1, true);
    EXPECT_TRUE(mSession.GetEffects()[1]->IsBypassed());
    EXPECT_EQ(UndoText(), "Bypass Zel Plain");
    EXPECT_EQ(Heard(), "chain ");
    mSession.SetBypassed(1, false);
    EXPECT_EQ(UndoText(), "Switch On Zel Plain");
    mSession.GetUndoStack().undo();
    EXPECT_TRUE(mSession.GetEffects()[1]->IsBypassed());
    mSession.GetUndoStack().undo();
    EXPECT_FALSE(mSession.GetEffects()[1]->IsBypassed());
    EXPECT_EQ(Heard(), "chain chain chain ");
}

TEST_F(SessionTest, RoutingIsUndoneAndMadeOnlyOnce) {
    Fill();
    const ChainEffectPtr effect = mSession.GetEffects()[0];
    const ChannelMap before = effect->GetFilter()->GetChannelMap(AudioFilter::kInput);
    effect->GetFilter()->AssignChannelMapping(AudioFilter::kInput, 0, 1);
    const ChannelMap after = effect->GetFilter()->GetChannelMap(AudioFilter::kInput);
    int changes = 0;
    const boost::signals::scoped_connection connection(effect->GetFilter()->GetChannelMapChangedSignal().connect(
        [&](AudioFilter::Direction, const ChannelMap&, const ChannelMap&) { ++changes; }));
    mSession.NoteChannelMapChange(effect, AudioFilter::kInput, before, after);
    EXPECT_EQ(changes, 0) << "the editor has made it already";
    EXPECT_EQ(UndoText(), "Route Zel Gain");
    mSession.GetUndoStack().undo();
    EXPECT_EQ(effect->GetFilter()->GetChannelMap(AudioFilter::kInput), before);
    mSession.GetUndoStack().redo();
    EXPECT_EQ(effect->GetFilter()->GetChannelMap(AudioFilter::kInput), after);
    EXPECT_EQ(effect->GetFilter()->GetChannelMap(AudioFilter::kOutput), before);
    EXPECT_EQ(changes, 2);
    const int commands = mSession.GetUndoStack().count();
    mSession.NoteChannelMapChange(effect, AudioFilter::kInput, after, after);
    EXPECT_EQ(mSession.GetUndoStack().count(), commands);
}

TEST_F(SessionTest, WhatIsUndoneTooLongAgoIsForgotten) {
    Fill();
    for (int i = 0; i < Session::kUndoLimit + 5; ++i) mSession.SetBypassed(0, i % 2 == 0);
    EXPECT_EQ(mSession.GetUndoStack().count(), Session::kUndoLimit);
}

// Keeping it

TEST_F(SessionTest, WhatIsSavedComesBack) {
    Fill();
    mSession.SetSideChain(MakeSound("side.wav", 1));
    mSession.SetLooping(true);
    mSession.SetBypassed(1, true);
    FilterAt(0).SetParameterValue(0, 0.25f);
    for (const float value : {0.1f, 0.75f}) FilterAt(2).SetParameterValue(0, value);
    FilterAt(0).AssignChannelMapping(AudioFilter::kOutput, 0, 1);
    mSession.GetEffects()[0]->GetWindowPlaces()[kOwnEditor] = {1, 2, 3, 4};
    EXPECT_TRUE(mSession.IsModified());
    mSession.Save(mPath);
    EXPECT_FALSE(mSession.IsModified());
    EXPECT_TRUE(mSession.GetUndoStack().isClean());
    EXPECT_TRUE(mSession.GetUndoStack().canUndo());

    Session other;
    EXPECT_THAT(other.Load(mPath), IsEmpty());
    EXPECT_EQ(other.GetPath(), FullName(mPath));
    EXPECT_FALSE(other.IsModified());
    EXPECT_EQ(other.GetSoundPath(), mSession.GetSoundPath());
    EXPECT_EQ(other.GetSideChainBus(), mSession.GetSideChainBus());
    EXPECT_TRUE(other.IsLooping());
    ASSERT_THAT(other.GetEffects(), SizeIs(3));
    EXPECT_TRUE(other.GetEffects()[1]->IsBypassed());
    EXPECT_EQ(other.GetEffects()[0]->GetFilter()->GetChannelMap(AudioFilter::kOutput),
              FilterAt(0).GetChannelMap(AudioFilter::kOutput));
    EXPECT_EQ(other.GetEffects()[0]->GetWindowPlaces(), mSession.GetEffects()[0]->GetWindowPlaces());
    for (const std::size_t i : {0u, 2u})
        EXPECT_EQ(HearOnes(*other.GetEffects()[i]), HearOnes(*mSession.GetEffects()[i])) << i;
    other.Save(mFolder.Path("again.tessaly"));
    EXPECT_EQ(ReadFile(mFolder.Path("again.tessaly")), ReadFile(mPath));
}

TEST_F(SessionTest, EverythingThatIsKeptCountsAsAChange) {
    Fill();
    mSession.Save(mPath);
    const auto expectModified = [this](const char* what) {
        EXPECT_TRUE(mSession.IsModified()) << what;
        mSession.Save(mPath);
        EXPECT_FALSE(mSession.IsModified()) << what;
    };
    FilterAt(0).SetParameterValue(0, 0.25f);
    expectModified("a plug-in's parameter");
    FilterAt(2).SetParameterValue(0, FilterAt(2).GetParameterValue(0));
    expectModified("what only a plug-in knows");
    mSession.SetLooping(true);
    expectModified("looping");
    mSession.SetBypassed(0, true);
    expectModified("bypass");
    FilterAt(0).AssignChannelMapping(AudioFilter::kInput, 0, 1);
    expectModified("routing");
    mSession.Move(0, 1);
    expectModified("order");
    mSession.Remove(0);
    expectModified("one less");
    mSession.SetSideChain(MakeSound("side.wav", 1));
    expectModified("side-chain");
    mSession.SetSound(MakeSound("mono.wav", 1));
    expectModified("sound");
    mSession.GetEffects()[0]->GetWindowPlaces()[kGenericEditor] = {1, 2, 3, 4};
    EXPECT_FALSE(mSession.IsModified()) << "where windows are does not count";
}

TEST_F(SessionTest, WhatCannotBeUndoneMarksItUntilItIsSavedOrAnotherIsLoaded) {
    EXPECT_FALSE(mSession.IsMarkedChanged());
    const auto expectMarked = [this](const char* what) {
        EXPECT_TRUE(mSession.IsMarkedChanged()) << what;
        mSession.Save(mPath);
        EXPECT_FALSE(mSession.IsMarkedChanged()) << what;
    };
    mSession.SetSound(MakeSound("stereo.wav", 2));
    expectMarked("sound");
    mSession.SetSideChain(MakeSound("side.wav", 1));
    expectMarked("side-chain");
    int told = 0;
    const boost::signals::scoped_connection connection(mSession.GetDetailsChangedSignal().connect([&told] { ++told; }));
    mSession.SetLooping(true);
    mSession.SetLooping(true);
    EXPECT_EQ(told, 1);
    expectMarked("looping");
    EXPECT_EQ(told, 2) << "it was saved";
    Insert("zel_gain");
    mSession.SetSound(MakeSound("mono.wav", 1));
    EXPECT_TRUE(mSession.IsMarkedChanged()) << "what is forgotten is not undone";
    mSession.Load(mPath);
    EXPECT_FALSE(mSession.IsMarkedChanged());
    mSession.SetLooping(false);
    mSession.Clear();
    EXPECT_FALSE(mSession.IsMarkedChanged());
}

TEST_F(SessionTest, WhatIsUndoneCompletelyIsNoChange) {
    Fill();
    mSession.Save(mPath);
    mSession.Remove(1);
    mSession.SetBypassed(0, true);
    EXPECT_TRUE(mSession.IsModified());
    mSession.GetUndoStack().undo();
    mSession.GetUndoStack().undo();
    EXPECT_FALSE(mSession.IsModified());
    EXPECT_TRUE(mSession.GetUndoStack().isClean());
}

TEST_F(SessionTest, ASaveThatFailsChangesNothing) {
    Fill();
    EXPECT_NE(ErrorOf([&] { mSession.Save(mFolder.Path("missing/song.tessaly")); }), "nothing");
    EXPECT_EQ(mSession.GetPath(), "");
    EXPECT_TRUE(mSession.IsModified());
    EXPECT_FALSE(mSession.GetUndoStack().isClean());
}

TEST_F(SessionTest, LoadingTellsInOrderAndForgetsWhatCouldBeUndone) {
    Fill();
    mSession.Save(mPath);
    mSession.Remove(0);
    Heard();
    bool sawAll = false;
    const boost::signals::scoped_connection connection(mSession.GetFormatChangedSignal().connect([&] {
        sawAll = Names().size() == 3 && !mSession.IsModified() && mSession.GetPath() == FullName(mPath) &&
                 mSession.GetSampleRate() == 48000;
    }));
    mSession.Load(mPath);
    EXPECT_EQ(Heard(), "before format chain ");
    EXPECT_TRUE(sawAll) << "whoever is told finds all of it";
    EXPECT_FALSE(mSession.GetUndoStack().canUndo());
}

TEST_F(SessionTest, EffectsLiveUntilEverybodyHasBeenToldThatTheyGo) {
    Fill();
    const std::weak_ptr<ChainEffect> effect = mSession.GetEffects()[0];
    bool lives = false;
    const boost::signals::scoped_connection connection(
        mSession.GetChainChangedSignal().connect([&] { lives = !effect.expired(); }));
    mSession.Clear();
    EXPECT_TRUE(lives);
    EXPECT_TRUE(effect.expired());
}

TEST_F(SessionTest, ALoadThatFailsChangesNothing) {
    Fill();
    mSession.Save(mFolder.Path("other.tessaly"));
    mSession.SetLooping(true);
    const std::vector<ChainEffectPtr> effects = mSession.GetEffects();
    WriteFile(mPath, "{\"format\": \"tessaly-session\", \"version\": 1, \"effects\": [{}]}");
    for (const std::string& path : {mPath, mFolder.Path("missing.tessaly"), mFolder.GetPath()})
        EXPECT_NE(ErrorOf([&] { mSession.Load(path); }), "nothing") << path;
    EXPECT_EQ(mSession.GetEffects(), effects);
    EXPECT_EQ(mSession.GetPath(), FullName(mFolder.Path("other.tessaly")));
    EXPECT_TRUE(mSession.IsLooping());
    EXPECT_TRUE(mSession.GetUndoStack().canUndo());
    EXPECT_EQ(Heard(), "");
}

TEST_F(SessionTest, LostSoundsStayNamedAndAreToldOf) {
    Fill();
    mSession.SetSideChain(MakeSound("side.wav", 1));
    FilterAt(0).AssignChannelMapping(AudioFilter::kInput, 0, 1);
    mSession.Save(mPath);
    const std::string whole = ReadFile(mPath);
    std::filesystem::rename(mFolder.Path("stereo.wav"), mFolder.Path("hidden.wav"));
    EXPECT_THAT(mSession.Load(mPath), ElementsAre(UText("The sound cannot be opened: '" +
                                                        FullName(mFolder.Path("stereo.wav")) + "' is not there.")));
    EXPECT_EQ(mSession.GetSoundPath(), FullName(mFolder.Path("stereo.wav")));
    EXPECT_EQ(mSession.GetSideChainPath(), FullName(mFolder.Path("side.wav")));
    EXPECT_EQ(mSession.GetSampleRate(), 0);
    EXPECT_FALSE(mSession.IsModified());
    mSession.Save(mPath);
    EXPECT_EQ(ReadFile(mPath), whole) << "also the routing, which no track has taken";
    std::filesystem::rename(mFolder.Path("hidden.wav"), mFolder.Path("stereo.wav"));
    std::filesystem::remove(mFolder.Path("side.wav"));
    EXPECT_THAT(mSession.Load(mPath), ElementsAre(UText("The side-chain cannot be opened: '" +
                                                        FullName(mFolder.Path("side.wav")) + "' is not there.")));
    EXPECT_EQ(mSession.GetSideChainPath(), FullName(mFolder.Path("side.wav")));
    EXPECT_THAT(mSession.GetSideChainBus().GetLayout(), IsEmpty());
    EXPECT_THAT(mSession.GetLayout(), SizeIs(2));
    MakeSound("side.wav", 1, 44100);
    EXPECT_THAT(mSession.Load(mPath), SizeIs(1)) << "of another rate by now";
}

TEST_F(SessionTest, AMissingPluginStaysInTheSessionAndComesBackWithItsState) {
    const std::string plugin = mFolder.Path("gain" ZEL_MODULE);
    std::filesystem::copy_file(TestPlugin("vst/good/zel_gain" ZEL_MODULE), plugin);
    mSession.SetSound(MakeSound("stereo.wav", 2));
    mSession.Insert(0, *ReadDescriptor(plugin));
    Insert("zel_plain");
    FilterAt(0).SetParameterValue(0, 0.25f);
    FilterAt(0).AssignChannelMapping(AudioFilter::kInput, 0, 1);
    mSession.Save(mPath);
    const std::string whole = ReadFile(mPath);

    std::filesystem::rename(plugin, mFolder.Path("hidden"));
    EXPECT_THAT(mSession.Load(mPath),
                ElementsAre(UText("The plug-in Zel Gain cannot be loaded: there is no such file.")));
    EXPECT_TRUE(mSession.GetEffects()[0]->IsMissing());
    EXPECT_FALSE(mSession.IsModified());
    mSession.NoteChannelMapChange(mSession.GetEffects()[0], AudioFilter::kInput, {}, {{0, 0}});
    EXPECT_FALSE(mSession.GetUndoStack().canUndo());
    // It can be moved and bypassed like the others.
    mSession.Move(0, 1);
    mSession.SetBypassed(1, true);
    mSession.GetUndoStack().undo();
    mSession.GetUndoStack().undo();
    mSession.Save(mPath);
    EXPECT_EQ(ReadFile(mPath), whole);

    std::filesystem::rename(mFolder.Path("hidden"), plugin);
    EXPECT_THAT(mSession.Load(mPath), IsEmpty());
    EXPECT_EQ(FilterAt(0).GetParameterValue(0), 0.25f);
    mSession.Save(mPath);
    EXPECT_EQ(ReadFile(mPath), whole);
}

TEST_F(SessionTest, ClearingLeavesNothing) {
    Fill();
    mSession.SetLooping(true);
    mSession.Save(mPath);
    Heard();
    mSession.Clear();
    EXPECT_EQ(Heard(), "before format chain ");
    EXPECT_EQ(mSession.GetPath(), "");
    EXPECT_EQ(mSession.GetSoundPath(), "");
    EXPECT_EQ(mSession.GetSampleRate(), 0);
    EXPECT_FALSE(mSession.IsLooping());
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_FALSE(mSession.GetUndoStack().canUndo());
    EXPECT_FALSE(mSession.IsModified());
}

TEST_F(SessionTest, PluginsOfTheSystemComeBackWithTheirStates) {
    const IgnorePluginLeaks ignored;
    std::size_t count = 0;
    mSession.SetSound(MakeSound("stereo.wav", 2));
    for (const char* const path : {"/usr/lib/vst/ZamCompX2-vst.so", "/usr/lib/vst3/ZamCompX2.vst3",
                                   "/usr/lib/vst/lsp-plugins/compressor-stereo.so"}) {
        if (!IsInstalled(path)) continue;
        mSession.Insert(kEnd, *ReadDescriptor(path));
        FilterAt(count).SetParameterValue(3, 1.0f);
        ++count;
    }
    if (count == 0) GTEST_SKIP() << "neither zam-plugins nor lsp-plugins-vst is installed";
    mSession.Save(mPath);
    EXPECT_FALSE(mSession.IsModified());
    Session other;
    EXPECT_THAT(other.Load(mPath), IsEmpty());
    EXPECT_FALSE(other.IsModified());
    for (std::size_t i = 0; i < count; ++i) {
        const ChainEffect& effect = *other.GetEffects()[i];
        EXPECT_EQ(effect.GetFilter()->GetParameterValue(3), 1.0f) << Text(effect.GetName());
        EXPECT_EQ(HearOnes(effect), HearOnes(*mSession.GetEffects()[i])) << Text(effect.GetName());
        AudioFilterDescriptorManager::GetInstance().RemoveDescriptor(effect.MakeRecord().componentId);
    }
}
