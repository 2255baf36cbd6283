#include "MainWindow.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <QApplication>
#include <QDialog>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QUrl>
#include <zelui/QtAccessibility.h>

#include <zelcore/Localizer.h>

#include "../render/Sound.h"
#include "ChainView.h"
#include "LevelMeters.h"
#include "LocalText.h"
#include "support/accessibility/SpokenText.h"
#include "support/SoundServer.h"
#include "WindowSettings.h"
#include "WindowStage.h"

namespace zeltests {

using tessaly::CommandLine;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Counts the events of a kind that an object gets.
class EventCount : public QObject {
public:
    EventCount(QObject& watched, QEvent::Type type) : mType(type) { watched.installEventFilter(this); }
    int Get() const { return mCount; }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == mType) ++mCount;
        return false;
    }

private:
    const QEvent::Type mType;
    int mCount = 0;
};

/// The window as a whole.
class MainWindowTest : public WindowStage {
protected:
    std::string GetText(const char* label) { return Find<QLabel>(label)->text().toStdString(); }
    /// Presses the button of the message box that has this text.
    static void Answer(QWidget& box, const char* text) {
        for (QAbstractButton* const button : static_cast<QMessageBox&>(box).buttons()) {
            if (button->text().remove('&') == QLatin1String(text)) return button->click();
        }
        ADD_FAILURE() << "no button " << text;
        static_cast<QMessageBox&>(box).reject();
    }
    /// Does something that fails and answers what the user is told.
    static std::string GetError(const std::function<void()>& action) {
        std::string text;
        WithDialog(action, [&text](QWidget& box) {
            text = static_cast<QMessageBox&>(box).text().toStdString();
            static_cast<QMessageBox&>(box).accept();
        });
        return text;
    }
    void Drop(QWidget& widget, const QPointF& position, const std::string& path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
        QDragEnterEvent enter(position.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(position, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &drop);
        QApplication::processEvents();
    }
    std::string GetRendered() const { return mFolder.Path("rendered.wav"); }
};

// Sounds

TEST_F(MainWindowTest, BeginsEmptyAndSaysWhatToDo) {
    EXPECT_THAT(GetText("SoundText"), HasSubstr("No sound"));
    EXPECT_FALSE(Find<QToolButton>("Play")->isEnabled());
    EXPECT_FALSE(Find<QPushButton>("OpenSideChain")->isEnabled());
    EXPECT_EQ(mWindow->windowTitle().toStdString(), "Untitled[*] \u2013 Tessaly");
    EXPECT_FALSE(mWindow->isWindowModified());
}

TEST_F(MainWindowTest, ASoundThatIsOpenedIsDescribedAndCanBePlayed) {
    ASSERT_TRUE(mWindow->GetFiles().OpenSound(GetSound()));
    EXPECT_EQ(GetText("SoundText"), "sound.wav \u2013 Stereo, 48000 Hz");
    EXPECT_TRUE(Find<QToolButton>("Play")->isEnabled());
    EXPECT_THAT(GetText("Time"), HasSubstr("0:01.0"));
    ASSERT_TRUE(mWindow->GetFiles().OpenSideChain(GetSideChain()));
    EXPECT_EQ(GetText("SideChainText"), "key.wav \u2013 Mono");
    Click("RemoveSideChain");
    EXPECT_EQ(GetText("SideChainText"), "None");
}

TEST_F(MainWindowTest, ASoundIsOpenedByDroppingItAnywhereAndASideChainOnItsLine) {
    Drop(*mWindow, QPointF(5, 5), GetSound());
    EXPECT_EQ(mWindow->GetSession().GetSoundPath(), FullName(GetSound()));
    QWidget* const panel = Find("SoundPanel");
    Drop(*panel, QPointF(5, panel->height() - 3), GetSideChain());
    EXPECT_EQ(mWindow->GetSession().GetSideChainPath(), FullName(GetSideChain()));
}

TEST_F(MainWindowTest, ASessionThatIsDroppedOnTheSoundsLineIsOpened) {
    mWindow->GetFiles().OpenSound(GetSound());
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly")));
    mWindow->GetSession().Clear();
    Drop(*Find("SoundPanel"), QPointF(5, 3), mFolder.Path("a.tessaly"));
    EXPECT_EQ(mWindow->GetSession().GetPath(), FullName(mFolder.Path("a.tessaly")));
    EXPECT_EQ(mWindow->GetSession().GetSoundPath(), FullName(GetSound()));
}

TEST_F(MainWindowTest, ASideChainThatDoesNotFitANewSoundIsToldOf) {
    mWindow->GetFiles().OpenSound(GetSound());
    mWindow->GetFiles().OpenSideChain(GetSideChain());
    mWindow->GetFiles().OpenSound(GetSound());
    EXPECT_EQ(GetNotice(), "");
    std::filesystem::remove(GetSideChain());
    mWindow->GetFiles().OpenSound(GetSound());
    EXPECT_THAT(GetNotice(), HasSubstr("key.wav does not fit"));
}

TEST_F(MainWindowTest, TheTimeIsSaidToScreenReaders) {
    mWindow->GetFiles().OpenSound(GetSound());
    EXPECT_EQ(zelui::qt::GetAccessibleName(*Find("Time")), "Time: 0:00 of 0:01");
    EXPECT_EQ(zelui::qt::GetAccessibleDescription(*Find("Position")), "0:00");
}

TEST_F(MainWindowTest, WhatIsNoSoundIsToldAndChangesNothing) {
    ASSERT_TRUE(mWindow->GetFiles().OpenSound(GetSound()));
    WriteFile(mFolder.Path("text.wav"), "no sound at all");
    EXPECT_THAT(GetError([this] { mWindow->GetFiles().OpenSound(mFolder.Path("text.wav")); }), HasSubstr("text.wav"));
    EXPECT_EQ(mWindow->GetSession().GetSoundPath(), FullName(GetSound()));
}

// Sessions

TEST_F(MainWindowTest, ASessionComesBackAsItWas) {
    mWindow->GetFiles().OpenSound(GetSound());
    mWindow->GetFiles().OpenSideChain(GetSideChain());
    AddEffect("Zel Gain");
    AddEffect("Zel Gain 3");
    mWindow->GetSession().GetEffects()[0]->GetFilter()->SetParameterValue(0, 0.25f);
    mWindow->GetSession().SetBypassed(1, true);
    mWindow->ToggleLoop();
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly")));
    EXPECT_EQ(mWindow->windowTitle().toStdString(), "a.tessaly[*] \u2013 Tessaly");
    OpenWindow();
    ASSERT_TRUE(mWindow->GetFiles().OpenAny(mFolder.Path("a.tessaly")));
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain", "Zel Gain 3"}));
    EXPECT_NEAR(mWindow->GetSession().GetEffects()[0]->GetFilter()->GetParameterValue(0), 0.25f, 1e-6f);
    EXPECT_TRUE(mWindow->GetSession().GetEffects()[1]->IsBypassed());
    EXPECT_TRUE(Find<QToolButton>("Loop")->isChecked());
    EXPECT_EQ(GetText("SideChainText"), "key.wav \u2013 Mono");
    EXPECT_EQ(GetNotice(), "");
    EXPECT_EQ(tessaly::WindowSettings::GetRecentSessions(),
              QStringList(QString::fromStdString(FullName(mFolder.Path("a.tessaly")))));
}

TEST_F(MainWindowTest, ChangesAreMarkedInTheTitleUntilTheyAreSavedOrUndone) {
    AddEffect("Zel Gain");
    EXPECT_TRUE(mWindow->isWindowModified());
    Trigger("Undo");
    EXPECT_FALSE(mWindow->isWindowModified());
    Trigger("Redo");
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly")));
    EXPECT_FALSE(mWindow->isWindowModified());
}

TEST_F(MainWindowTest, ChangesThatCannotBeUndoneAreMarkedInTheTitleToo) {
    mWindow->GetFiles().OpenSound(GetSound());
    EXPECT_TRUE(mWindow->isWindowModified());
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly")));
    EXPECT_FALSE(mWindow->isWindowModified());
    mWindow->GetSession().SetLooping(true);
    EXPECT_TRUE(mWindow->isWindowModified());
    EXPECT_TRUE(Find<QToolButton>("Loop")->isChecked());
    WithDialog([this] { EXPECT_TRUE(mWindow->GetFiles().OpenSession(mFolder.Path("a.tessaly"))); },
               [](QWidget& box) { Answer(box, "Discard Changes"); });
    EXPECT_FALSE(mWindow->isWindowModified());
}

TEST_F(MainWindowTest, RecentSessionsAreKeptByTheirFullPaths) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(mFolder.GetPath());
    EXPECT_TRUE(mWindow->GetFiles().SaveAs("a.tessaly"));
    EXPECT_TRUE(mWindow->GetFiles().OpenSession("./a.tessaly"));
    std::filesystem::current_path(before);
    EXPECT_EQ(tessaly::WindowSettings::GetRecentSessions(),
              QStringList(QString::fromStdString(FullName(mFolder.Path("a.tessaly")))));
}

TEST_F(MainWindowTest, ASessionsNameWithADotGetsItsEndingAndNothingIsReplacedUnasked) {
    const auto choose = [this](QWidget& dialog) {
        dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
            ->setText(QString::fromStdString(mFolder.Path("my.song")));
        static_cast<QDialog&>(dialog).accept();
    };
    WithDialog([this] { EXPECT_TRUE(mWindow->GetFiles().SaveAs({})); }, choose);
    EXPECT_EQ(mWindow->GetSession().GetPath(), FullName(mFolder.Path("my.song.tessaly")));
    const std::string before = ReadFile(mFolder.Path("my.song.tessaly"));
    AddEffect("Zel Gain");
    QTimer timer;
    bool asked = false;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        QWidget* const box = QApplication::activeModalWidget();
        if (qobject_cast<QMessageBox*>(box) == nullptr || std::exchange(asked, true)) return;
        Answer(*box, "Cancel");
    });
    timer.start(1);
    WithDialog([this] { EXPECT_FALSE(mWindow->GetFiles().SaveAs({})); }, choose);
    EXPECT_TRUE(asked);
    EXPECT_EQ(ReadFile(mFolder.Path("my.song.tessaly")), before);
}

TEST_F(MainWindowTest, UnsavedChangesAreAskedAboutAndCancelKeepsEverything) {
    AddEffect("Zel Gain");
    WithDialog([this] { EXPECT_FALSE(mWindow->GetFiles().New()); }, [](QWidget& box) { Answer(box, "Cancel"); });
    EXPECT_EQ(GetChain().size(), 1u);
    WithDialog([this] { EXPECT_FALSE(mWindow->close()); }, [](QWidget& box) { Answer(box, "Cancel"); });
    EXPECT_TRUE(mWindow->isVisible());
}

TEST_F(MainWindowTest, UnsavedChangesAreGivenUpWhenTheUserSaysSo) {
    AddEffect("Zel Gain");
    WithDialog([this] { EXPECT_TRUE(mWindow->GetFiles().New()); },
               [](QWidget& box) { Answer(box, "Discard Changes"); });
    EXPECT_TRUE(GetChain().empty());
}

TEST_F(MainWindowTest, UnsavedChangesOfASessionWithAFileAreSavedWhenTheUserSaysSo) {
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly")));
    AddEffect("Zel Gain");
    WithDialog([this] { EXPECT_TRUE(mWindow->close()); }, [](QWidget& box) { Answer(box, "Save"); });
    OpenWindow();
    ASSERT_TRUE(mWindow->GetFiles().OpenSession(mFolder.Path("a.tessaly")));
    EXPECT_EQ(GetChain().size(), 1u);
}

TEST_F(MainWindowTest, ASessionThatCannotBeSavedIsToldAndStaysOpen) {
    AddEffect("Zel Gain");
    EXPECT_THAT(GetError([this] { EXPECT_FALSE(mWindow->GetFiles().SaveAs("/no/such/folder/a.tessaly")); }),
                HasSubstr("a.tessaly"));
    EXPECT_EQ(GetChain().size(), 1u);
    EXPECT_TRUE(mWindow->isWindowModified());
}

TEST_F(MainWindowTest, WhatIsNoSessionIsToldAndChangesNothing) {
    ASSERT_TRUE(mWindow->GetFiles().OpenSound(GetSound()));
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly")));
    WriteFile(mFolder.Path("bad.tessaly"), "{]");
    EXPECT_FALSE(
        GetError([this] { EXPECT_FALSE(mWindow->GetFiles().OpenSession(mFolder.Path("bad.tessaly"))); }).empty());
    EXPECT_EQ(mWindow->GetSession().GetSoundPath(), FullName(GetSound()));
}

// Rendering

TEST_F(MainWindowTest, RendersWhatTheChainMakesOfTheSound) {
    mWindow->GetFiles().OpenSound(GetSound());
    AddEffect("Zel Gain");
    AddEffect("Zel Gain 3");
    mWindow->GetSession().GetEffects()[0]->GetFilter()->SetParameterValue(0, 0.25f);
    mWindow->GetSession().SetBypassed(1, true);
    mWindow->Render(GetRendered());
    EXPECT_THAT(GetNotice(), HasSubstr("rendered.wav"));
    const Sound before = ReadSound(GetSound());
    const Sound after = ReadSound(GetRendered());
    // Two seconds more, for what effects let ring.
    ASSERT_EQ(after.GetFrameCount(), before.GetFrameCount() + 2u * 48000u);
    for (std::size_t i = 0; i < before.GetFrameCount(); ++i) ASSERT_NEAR(after[1][i], before[1][i] * 0.5f, 1e-6f) << i;
}

TEST_F(MainWindowTest, ARenderThatIsCancelledLeavesNoFile) {
    WriteSound(mFolder.Path("long.wav"), MakeLevel(2, 48000 * 120, 0.5f));
    mWindow->GetFiles().OpenSound(mFolder.Path("long.wav"));
    AddEffect("Zel Gain");
    bool cancelled = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (QProgressDialog* const dialog = mWindow->findChild<QProgressDialog*>()) {
            cancelled = true;
            dialog->findChild<QPushButton*>()->click();
        }
    });
    timer.start(0);
    mWindow->Render(GetRendered());
    EXPECT_TRUE(cancelled);
    EXPECT_FALSE(std::filesystem::exists(GetRendered()));
    EXPECT_EQ(GetNotice(), "");
}

TEST_F(MainWindowTest, ACancelledRenderIsInFrontUntilItHasEnded) {
    WriteSound(mFolder.Path("long.wav"), MakeLevel(2, 48000 * 120, 0.5f));
    mWindow->GetFiles().OpenSound(mFolder.Path("long.wav"));
    bool cancelled = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        QProgressDialog* const dialog = mWindow->findChild<QProgressDialog*>();
        if (dialog == nullptr || !dialog->isVisible() || std::exchange(cancelled, true)) return;
        QTest::keyClick(dialog, Qt::Key_Escape);
        EXPECT_TRUE(dialog->isVisible());
        dialog->close();
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_FALSE(dialog->findChild<QPushButton*>()->isEnabled());
    });
    timer.start(0);
    mWindow->Render(GetRendered());
    EXPECT_TRUE(cancelled);
    EXPECT_FALSE(std::filesystem::exists(GetRendered()));
}

TEST_F(MainWindowTest, ARenderOfAFileThatIsAnotherByNowIsTold) {
    mWindow->GetFiles().OpenSound(GetSound());
    mWindow->GetFiles().OpenSideChain(GetSideChain());
    AddEffect("Zel Gain");
    WriteSound(GetSound(), MakeTestSound(1, 48000));
    EXPECT_THAT(GetError([this] { mWindow->Render(GetRendered()); }), HasSubstr("open it again"));
    WriteSound(GetSound(), MakeTestSound(2, 48000));
    WriteSound(GetSideChain(), MakeTestSound(2, 48000));
    EXPECT_THAT(GetError([this] { mWindow->Render(GetRendered()); }), HasSubstr("open it again"));
    EXPECT_FALSE(std::filesystem::exists(GetRendered()));
}

TEST_F(MainWindowTest, ARenderThatCannotBeIsTold) {
    EXPECT_THAT(GetError([this] { mWindow->Render(GetRendered()); }), HasSubstr("no sound"));
    mWindow->GetFiles().OpenSound(GetSound());
    EXPECT_THAT(GetError([this] { mWindow->Render("/no/such/folder/a.wav"); }), HasSubstr("a.wav"));
    EXPECT_THAT(GetError([this] { mWindow->Render(mFolder.Path("a.xyz")); }), HasSubstr(".flac"));
    EXPECT_THAT(GetError([this] { mWindow->Render(GetSound()); }), HasSubstr("what is played"));
}

// The window itself

TEST_F(MainWindowTest, TheThemeIsChosenInTheMenuAndKept) {
    Trigger("DarkTheme");
    EXPECT_EQ(tessaly::WindowSettings::GetTheme(), CommandLine::kDark);
    const QPalette dark = QApplication::palette();
    EXPECT_LT(dark.color(QPalette::Window).lightness(), 128);
    Trigger("LightTheme");
    EXPECT_GT(QApplication::palette().color(QPalette::Window).lightness(), 128);
}

TEST_F(MainWindowTest, EveryControlHasANameForScreenReaders) {
    AddEffect("Zel Gain");
    mWindow->GetFiles().OpenSound(GetSound());
    int controls = 0;
    for (QWidget* const widget : mWindow->findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible()) continue;
        // What belongs to a control is named by it.
        if (qobject_cast<QAbstractItemView*>(widget->parentWidget()) != nullptr) continue;
        ++controls;
        EXPECT_FALSE(GetSpokenName(*widget).isEmpty()) << widget->objectName().toStdString();
    }
    EXPECT_GE(controls, 12);
}

TEST_F(MainWindowTest, TabReachesEveryControl) {
    AddEffect("Zel Gain");
    mWindow->GetFiles().OpenSound(GetSound());
    mWindow->GetFiles().OpenSideChain(GetSideChain());
    mWindow->GetChainView().SetCurrentIndex(0);
    mWindow->activateWindow();
    mWindow->setFocus();
    std::set<std::string> reached;
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(mWindow->focusWidget() ? mWindow->focusWidget() : mWindow.get(), Qt::Key_Tab);
        if (const QWidget* const focus = mWindow->focusWidget()) reached.insert(focus->objectName().toStdString());
    }
    for (const char* const name : {"OpenSound", "OpenSideChain", "RemoveSideChain", "Rewind", "Play", "Loop",
                                   "Position", "Chain", "AddEffectButton", "EditorButton", "ParametersButton",
                                   "ChannelsButton", "UpButton", "DownButton", "RemoveButton"}) {
        EXPECT_EQ(reached.count(name), 1u) << name;
    }
}

TEST_F(MainWindowTest, EveryActionIsInAMenuAndShortcutsAreNotGivenTwice) {
    std::set<QString> shortcuts;
    int actions = 0;
    for (const QAction* const top : mWindow->menuBar()->actions()) {
        for (const QAction* const action : top->menu()->actions()) {
            if (action->isSeparator()) continue;
            ++actions;
            EXPECT_FALSE(action->text().isEmpty()) << action->objectName().toStdString();
            const QString keys = action->shortcut().toString();
            if (keys.isEmpty()) continue;
            EXPECT_TRUE(shortcuts.insert(keys).second) << keys.toStdString();
        }
    }
    EXPECT_GE(actions, 20);
}

TEST_F(MainWindowTest, ALostRunIsToldWithWhenItsSessionWasSaved) {
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly")));
    mWindow->TellOfLostRuns({{mFolder.Path("a.tessaly"), true}});
    EXPECT_THAT(GetNotice(), HasSubstr("\"a.tessaly\" is as it was saved at"));
    Click("NoticeClose");
    EXPECT_EQ(GetNotice(), "");
    mWindow->TellOfLostRuns({{"", true}});
    EXPECT_THAT(GetNotice(), HasSubstr("never been saved"));
}

TEST_F(MainWindowTest, ALostRunWhoseFileIsGoneIsToldAsThat) {
    mWindow->TellOfLostRuns({{mFolder.Path("gone.tessaly"), true}});
    EXPECT_THAT(GetNotice(), HasSubstr(mFolder.Path("gone.tessaly") + ", is not there any more"));
    EXPECT_THAT(GetNotice(), Not(HasSubstr("never been saved")));
}

TEST_F(MainWindowTest, RecentSessionsHaveTheirNamesInTheMenuAndTheirPathsInTooltips) {
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("rock & roll.tessaly")));
    QMenu* const recent = Find<QMenu>("RecentMenu");
    Q_EMIT recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 1);
    const QAction& action = *recent->actions()[0];
    EXPECT_EQ(action.text(), "rock && roll.tessaly");
    EXPECT_EQ(action.toolTip().toStdString(), FullName(mFolder.Path("rock & roll.tessaly")));
    EXPECT_TRUE(recent->toolTipsVisible());
}

TEST_F(MainWindowTest, AnAmpersandInAnEffectsNameIsNoMenuKey) {
    QUndoStack& stack = mWindow->GetSession().GetUndoStack();
    stack.push(new QUndoCommand(QStringLiteral("Add Drum & Bass")));
    EXPECT_EQ(Find<QAction>("Undo")->text(), "&Undo Add Drum && Bass");
    stack.undo();
    EXPECT_EQ(Find<QAction>("Redo")->text(), "&Redo Add Drum && Bass");
}

TEST_F(MainWindowTest, RendersAreOfferedAllFormatsThatAreWritten) {
    EXPECT_EQ(tessaly::SessionFiles::GetRenderFilter(), "Sound files (*.wav *.flac *.aiff *.aif *.ogg)");
}

TEST_F(MainWindowTest, ErrorsOfFilesAreToldInTheUsersLanguage) {
    using zelcore::config::Localizer;
    WriteFile(mFolder.Path("de.json"), R"({"/zelcore/FileError/Write": "@0 geht nicht"})");
    Localizer::GetInstance().LoadDictionary(zelcore::filesupport::File(mFolder.UPath("de.json")));
    EXPECT_THAT(GetError([this] { mWindow->GetFiles().SaveAs("/no/such/folder/a.tessaly"); }),
                StartsWith(FullName("/no/such/folder/a.tessaly") + " geht nicht"));
    Localizer::GetInstance().Clear();
}

TEST_F(MainWindowTest, WhatWentBeyondFullScaleIsForgottenWhenTheSoundBeginsToPlay) {
    SoundServer server;
    if (!server.IsThere()) GTEST_SKIP() << "PulseAudio does not start here";
    server.AddDevice("levels");
    mWindow->GetFiles().OpenSound(GetSound());
    tessaly::LevelMeters& levels = *static_cast<tessaly::LevelMeters*>(Find("Levels"));
    levels.Advance({1.5f, 0.0f});
    ASSERT_TRUE(levels.IsOver(0));
    mWindow->GetPlayer().Play();
    ASSERT_TRUE(mWindow->GetPlayer().IsPlaying());
    EXPECT_FALSE(levels.IsOver(0));
    levels.Advance({1.5f, 0.0f});
    mWindow->GetPlayer().Stop();
    EXPECT_TRUE(levels.IsOver(0));
}

TEST_F(MainWindowTest, NothingIsToldOfALostRunInWhichNothingWasLost) {
    mWindow->TellOfLostRuns({{"", false}});
    EXPECT_EQ(GetNotice(), "");
}

TEST_F(MainWindowTest, OneThatGoesWithChangesLeavesNoMark) {
    AddEffect("Zel Gain");
    ASSERT_FALSE(mWindow->GetSession().GetUndoStack().isClean());
    mWindow.reset();
    EXPECT_TRUE(tessaly::RunMarker::TakeLostRuns().empty());
}

TEST_F(MainWindowTest, EndsWhenItIsAskedToWhileItTellsSomething) {
    WriteFile(mFolder.Path("bad.tessaly"), "{]");
    WithDialog([this] { EXPECT_FALSE(mWindow->GetFiles().OpenSession(mFolder.Path("bad.tessaly"))); },
               [this](QWidget&) { mWindow->EndWithoutAsking(); });
    EXPECT_TRUE(WhenTrue([this] { return !mWindow->isVisible(); }));
}

TEST_F(MainWindowTest, EndsWhenItIsAskedToWhileItRendersAndLeavesNoFile) {
    WriteSound(mFolder.Path("long.wav"), MakeLevel(2, 48000 * 120, 0.5f));
    mWindow->GetFiles().OpenSound(mFolder.Path("long.wav"));
    WithDialog([this] { mWindow->Render(GetRendered()); }, [this](QWidget&) { mWindow->EndWithoutAsking(); });
    EXPECT_FALSE(std::filesystem::exists(GetRendered()));
    EXPECT_TRUE(WhenTrue([this] { return !mWindow->isVisible(); }));
}

TEST_F(MainWindowTest, WithNobodyThereErrorsAreThrown) {
    mWindow->GetFiles().SetUnattended(true);
    EXPECT_THROW(mWindow->GetFiles().OpenSound("/no/such/file.wav"), std::runtime_error);
    EXPECT_THROW(mWindow->Render(GetRendered()), std::runtime_error);
}

TEST(LocalTextTest, TooltipsShowTheTextOfOthersAsItIs) {
    EXPECT_EQ(tessaly::ToolTipText("a & b < c"), "a & b < c");
    EXPECT_EQ(tessaly::ToolTipText("<b>a</b>"), "<span>&lt;b&gt;a&lt;/b&gt;</span>");
    EXPECT_EQ(tessaly::ToolTipText(""), "");
}

// Levels

TEST(LevelMetersTest, ShowTheLoudestInDecibelsAndFallSlowly) {
    tessaly::LevelMeters meters;
    meters.Advance({0.5f, 0.0f});
    EXPECT_NEAR(meters.GetLevel(0), -6.02f, 0.01f);
    EXPECT_EQ(meters.GetLevel(1), tessaly::LevelMeters::kLowest);
    meters.Advance({0.0f, 0.0f});
    EXPECT_LT(meters.GetLevel(0), -6.02f);
    EXPECT_GT(meters.GetLevel(0), -12.0f);
    EXPECT_THAT(zelui::qt::GetAccessibleDescription(meters).toStdString(), HasSubstr("Channel 1: -6 dB"));
}

TEST(LevelMetersTest, WhatDoesNotChangeIsNeitherPaintedNorTold) {
    tessaly::LevelMeters meters;
    meters.resize(200, 30);
    meters.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&meters));
    meters.Advance({0.0f, 0.0f});
    EventCount paints(meters, QEvent::Paint);
    EventCount texts(meters, QEvent::ToolTipChange);
    QApplication::processEvents();
    const int before = paints.Get();
    for (int i = 0; i < 10; ++i) {
        meters.Advance({0.0f, 0.0f});
        QApplication::processEvents();
    }
    EXPECT_EQ(paints.Get(), before);
    EXPECT_EQ(texts.Get(), 0);
    meters.Advance({0.5f, 0.0f});
    QApplication::processEvents();
    EXPECT_EQ(paints.Get(), before + 1);
    EXPECT_EQ(texts.Get(), 1);
    // It falls and is painted, the mark and its text stay.
    meters.Advance({0.0f, 0.0f});
    QApplication::processEvents();
    EXPECT_EQ(paints.Get(), before + 2);
    EXPECT_EQ(texts.Get(), 1);
}

TEST(LevelMetersTest, KeepInMindThatFullScaleWasPassedUntilTheyAreClicked) {
    tessaly::LevelMeters meters;
    meters.resize(200, 30);
    meters.Advance({1.5f});
    meters.Advance({0.1f});
    EXPECT_TRUE(meters.IsOver(0));
    EXPECT_THAT(zelui::qt::GetAccessibleDescription(meters).toStdString(), HasSubstr("was beyond full scale"));
    QTest::mouseClick(&meters, Qt::LeftButton);
    EXPECT_FALSE(meters.IsOver(0));
    EXPECT_EQ(zelui::qt::GetAccessibleDescription(meters).indexOf("beyond"), -1);
}

}  // namespace zeltests
