#include <filesystem>

#include <gmock/gmock.h>

#include "../render/Sound.h"
#include "RunMarker.h"
#include "SessionFile.h"
#include "support/Program.h"
#include "support/WaitFor.h"
#include "WindowStage.h"

namespace zeltests {

using tessaly::RunMarker;
using testing::HasSubstr;
using testing::IsEmpty;

/// A run of the application that is killed in the middle of something, and what the next one finds.
class KilledRunTest : public WindowStage {
protected:
    KilledRunTest() {
        mWindow->GetFiles().OpenSound(GetSound());
        AddEffect("Zel Gain");
        mWindow->GetSession().GetEffects()[0]->GetFilter()->SetParameterValue(0, 0.0f);
        mWindow->GetFiles().SaveAs(GetSession());
    }

    std::string GetSession() const { return mFolder.Path("a.tessaly"); }

    /// Starts a run that does `what` over and over, and kills it in the middle of the next one after so many. Returns
    /// how many it has done.
    int Kill(const char* what, int after) {
        Program program(
            mFolder.GetPath(),
            {ZEL_BIN_DIR "/tessaly_killed_run", mPreferences.GetFolder().GetPath(), mFolder.GetPath(), what},
            {"QT_QPA_PLATFORM=offscreen"});
        EXPECT_TRUE(WaitFor([&] { return CountLines(program) >= after || !program.IsRunning(); }));
        program.Signal(Program::kKill);
        EXPECT_EQ(program.Wait(), -Program::kKill) << program.GetErrors();
        return CountLines(program);
    }
    static int CountLines(const Program& program) {
        const std::string output = program.GetOutput();
        return static_cast<int>(std::count(output.begin(), output.end(), '\n'));
    }
    /// The next start says which session it was; once.
    RunMarker::LostRun ExpectToBeTold() {
        OpenWindow();
        const std::vector<RunMarker::LostRun> lost = RunMarker::TakeLostRuns();
        EXPECT_EQ(lost.size(), 1u);
        mWindow->TellOfLostRuns(lost);
        EXPECT_THAT(GetNotice(), HasSubstr("\"a.tessaly\" is as it was saved at"));
        EXPECT_THAT(RunMarker::TakeLostRuns(), IsEmpty());
        return lost.empty() ? RunMarker::LostRun() : lost[0];
    }
    /// Opens the session, which is whole. Its mark: which save it is from.
    int ReadSave() {
        EXPECT_TRUE(mWindow->GetFiles().OpenSession(GetSession()));
        EXPECT_EQ(mWindow->GetSession().GetSoundPath(), FullName(GetSound()));
        if (GetChain() != std::vector<std::string>{"Zel Gain"}) return -1;
        const float mark = mWindow->GetSession().GetEffects()[0]->GetFilter()->GetParameterValue(0);
        return static_cast<int>(std::lround(mark * 1000.0f));
    }
};

TEST_F(KilledRunTest, WhileItSavesLeavesTheLastSaveOrTheOneThatItWasAt) {
    for (const int after : {1, 2, 5, 20, 40}) {
        mWindow->GetFiles().OpenSession(GetSession());
        const int done = Kill("save", after);
        ExpectToBeTold();
        const int found = ReadSave();
        // The first save has the mark 0.
        EXPECT_TRUE(found == done - 1 || found == done) << found << " of " << done;
    }
}

TEST_F(KilledRunTest, WithChangesThatAreNotSavedLosesThoseAlone) {
    const std::string before = ReadFile(GetSession());
    for (const int after : {1, 7}) {
        Kill("change", after);
        EXPECT_TRUE(ExpectToBeTold().wasModified);
        EXPECT_EQ(ReadFile(GetSession()), before);
        EXPECT_EQ(ReadSave(), 0);
    }
}

TEST_F(KilledRunTest, WhileItOpensASessionLosesNothing) {
    for (const int after : {1, 3, 10}) {
        Kill("open", after);
        EXPECT_FALSE(ExpectToBeTold().wasModified);
        EXPECT_EQ(ReadSave(), 0);
    }
}

TEST_F(KilledRunTest, WhileEffectsComeAndGoAndTheirEditorsOpenLosesThoseChangesAlone) {
    const std::string before = ReadFile(GetSession());
    for (const int after : {1, 4, 16}) {
        Kill("edit", after);
        ExpectToBeTold();
        EXPECT_EQ(ReadFile(GetSession()), before);
        EXPECT_EQ(ReadSave(), 0);
    }
}

TEST_F(KilledRunTest, WhileItRendersLeavesTheWholeFileOfTheRenderBefore) {
    for (const int after : {1, 3}) {
        Kill("render", after);
        ExpectToBeTold();
        EXPECT_EQ(ReadSound(mFolder.Path("rendered.wav")).GetFrameCount(), 3u * 48000u);
        EXPECT_EQ(ReadSave(), 0);
    }
}

}  // namespace zeltests
