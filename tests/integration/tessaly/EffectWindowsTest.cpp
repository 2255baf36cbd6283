#include "EffectWindows.h"

#include <QPointer>
#include <QTest>

#include "ChainView.h"
#include "WindowStage.h"

namespace zeltests {

using tessaly::EditorKind;
using tessaly::EditorWindow;
using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::ChannelMap;

/// The editor windows of the effects.
class EffectWindowsTest : public WindowStage {
protected:
    EffectWindowsTest() {
        AddEffect("Zel Gain");
        mWindow->GetFiles().OpenSound(GetSound());
    }

    EditorWindow* Open(EditorKind kind) {
        mWindow->GetChainView().SetCurrentIndex(0);
        mWindow->OpenEditor(kind);
        return GetOpen(kind);
    }
    EditorWindow* GetOpen(EditorKind kind) { return mWindow->GetEffectWindows().Find(GetEffect(), kind); }
    tessaly::ChainEffectPtr GetEffect() { return mWindow->GetSession().GetEffects()[0]; }
};

TEST_F(EffectWindowsTest, EachKindHasOneWindowWhichIsBroughtBackInsteadOfOpenedTwice) {
    EditorWindow* const parameters = Open(tessaly::kGenericEditor);
    EditorWindow* const channels = Open(tessaly::kChannelMapEditor);
    ASSERT_NE(parameters, nullptr);
    ASSERT_NE(channels, nullptr);
    EXPECT_NE(parameters, channels);
    EXPECT_EQ(Open(tessaly::kGenericEditor), parameters);
    EXPECT_TRUE(parameters->isVisible());
}

TEST_F(EffectWindowsTest, ReturnInTheListOpensTheEditor) {
    mWindow->GetChainView().SetCurrentIndex(0);
    QTest::keyClick(&mWindow->GetChainView(), Qt::Key_Return);
    EXPECT_NE(GetOpen(tessaly::kOwnEditor), nullptr);
}

TEST_F(EffectWindowsTest, AWindowOpensWhereItWasLast) {
    EditorWindow* const window = Open(tessaly::kGenericEditor);
    window->move(60, 70);
    EXPECT_TRUE(window->close());
    EXPECT_EQ(GetOpen(tessaly::kGenericEditor), nullptr);
    EXPECT_EQ(Open(tessaly::kGenericEditor)->pos(), QPoint(60, 70));
}

TEST_F(EffectWindowsTest, APlaceOnAScreenThatIsGoneIsNotTaken) {
    GetEffect()->GetWindowPlaces()[tessaly::kGenericEditor] = zelcore::geom::RectT<long>(90000, 90000, 300, 200);
    const EditorWindow* const window = Open(tessaly::kGenericEditor);
    EXPECT_LT(window->x(), 90000);
}

TEST_F(EffectWindowsTest, PlacesAreKeptWithTheSession) {
    Open(tessaly::kChannelMapEditor)->move(33, 44);
    mWindow->GetEffectWindows().KeepPlaces();
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly")));
    ASSERT_TRUE(mWindow->GetFiles().New());
    ASSERT_TRUE(mWindow->GetFiles().OpenSession(mFolder.Path("a.tessaly")));
    EXPECT_EQ(Open(tessaly::kChannelMapEditor)->pos(), QPoint(33, 44));
}

TEST_F(EffectWindowsTest, PlacesAreKeptByWhateverSavesTheSession) {
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly")));
    Open(tessaly::kChannelMapEditor)->move(33, 44);
    AddEffect("Zel Gain 3");
    ASSERT_TRUE(mWindow->GetFiles().Save());
    mWindow->GetEffectWindows().CloseAll();
    ASSERT_TRUE(mWindow->GetFiles().OpenSession(mFolder.Path("a.tessaly")));
    EXPECT_EQ(Open(tessaly::kChannelMapEditor)->pos(), QPoint(33, 44));
}

TEST_F(EffectWindowsTest, AnEffectThatIsRemovedTakesItsWindowsWithIt) {
    const QPointer<EditorWindow> parameters = Open(tessaly::kGenericEditor);
    mWindow->GetChainView().RemoveCurrent();
    EXPECT_TRUE(WhenTrue([&] { return parameters.isNull(); }));
    Trigger("Undo");
    EXPECT_EQ(GetOpen(tessaly::kGenericEditor), nullptr);
    EXPECT_NE(Open(tessaly::kGenericEditor), nullptr);
}

TEST_F(EffectWindowsTest, ADifferentSessionClosesThem) {
    const QPointer<EditorWindow> parameters = Open(tessaly::kGenericEditor);
    mWindow->GetSession().Clear();
    EXPECT_TRUE(WhenTrue([&] { return parameters.isNull(); }));
}

TEST_F(EffectWindowsTest, ARoutingThatTheUserChangesCanBeUndone) {
    EditorWindow* const window = Open(tessaly::kChannelMapEditor);
    const auto filter = GetEffect()->GetFilter();
    const ChannelMap inputBefore = filter->GetChannelMap(AudioFilter::kInput);
    const ChannelMap outputBefore = filter->GetChannelMap(AudioFilter::kOutput);
    // As the editor does it: in the filter first, then it tells.
    filter->AssignChannelMapping(AudioFilter::kInput, 0, 1);
    const ChannelMap inputAfter = filter->GetChannelMap(AudioFilter::kInput);
    ASSERT_NE(inputAfter, inputBefore);
    window->GetRoutingChangedSignal()(inputBefore, inputAfter, outputBefore, outputBefore);
    Trigger("Undo");
    EXPECT_EQ(filter->GetChannelMap(AudioFilter::kInput), inputBefore);
    Trigger("Redo");
    EXPECT_EQ(filter->GetChannelMap(AudioFilter::kInput), inputAfter);
}

TEST_F(EffectWindowsTest, AnActThatChangesBothDirectionsIsUndoneAsOne) {
    EditorWindow* const window = Open(tessaly::kChannelMapEditor);
    const auto filter = GetEffect()->GetFilter();
    const ChannelMap inputBefore = filter->GetChannelMap(AudioFilter::kInput);
    const ChannelMap outputBefore = filter->GetChannelMap(AudioFilter::kOutput);
    filter->AssignChannelMapping(AudioFilter::kInput, 0, 1);
    filter->AssignChannelMapping(AudioFilter::kOutput, 0, 1);
    window->GetRoutingChangedSignal()(inputBefore, filter->GetChannelMap(AudioFilter::kInput), outputBefore,
                                      filter->GetChannelMap(AudioFilter::kOutput));
    Trigger("Undo");
    EXPECT_EQ(filter->GetChannelMap(AudioFilter::kInput), inputBefore);
    EXPECT_EQ(filter->GetChannelMap(AudioFilter::kOutput), outputBefore);
}

TEST_F(EffectWindowsTest, WindowsThatAreOpenWhenTheApplicationEndsAreClosedFirst) {
    const QPointer<EditorWindow> parameters = Open(tessaly::kGenericEditor);
    const QPointer<EditorWindow> channels = Open(tessaly::kChannelMapEditor);
    mWindow.reset();
    EXPECT_TRUE(parameters.isNull());
    EXPECT_TRUE(channels.isNull());
}

}  // namespace zeltests
