#include <gmock/gmock.h>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include "../render/Sound.h"
#include "ChainView.h"
#include "ScreenReader.h"
#include "WindowStage.h"

namespace zeltests {

using testing::IsEmpty;

/// Every window of the application, for people who do not see it or have no mouse.
class AccessibilityTest : public WindowStage {
protected:
    AccessibilityTest() {
        AddEffect("Zel Gain");
        mWindow->GetFiles().OpenSound(GetSound());
        mWindow->GetFiles().OpenSideChain(GetSideChain());
        mWindow->GetChainView().SetCurrentIndex(0);
        mWindow->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(mWindow.get()));
    }

    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        QTest::keyClick(mWindow.get(), key, modifiers);
    }
    /// All of `window` can be heard and reached; there is at least so much of it.
    static void ExpectUsable(QWidget& window, std::size_t things) {
        // As a desktop does it with a window that opens; menus have the keyboard without.
        window.activateWindow();
        EXPECT_TRUE(WhenTrue([&window] {
            return QApplication::activeWindow() == &window || QApplication::activePopupWidget() == &window;
        }));
        EXPECT_THAT(ScreenReader::FindFaults(window), IsEmpty());
        EXPECT_GE(ScreenReader::CountUsable(window), things);
        EXPECT_THAT(ScreenReader::FindUnreachable(window), IsEmpty());
    }
    /// The window that these keys open is usable, and Escape ends it.
    void ExpectUsableDialog(Qt::Key key, Qt::KeyboardModifiers modifiers, std::size_t things) {
        ExpectUsableDialog([=, this] { Press(key, modifiers); }, things);
    }
    static void ExpectUsableDialog(const std::function<void()>& action, std::size_t things) {
        WithDialog(action, [things](QWidget& dialog) {
            ExpectUsable(dialog, things);
            QTest::keyClick(&dialog, Qt::Key_Escape);
            if (dialog.isVisible()) {
                ADD_FAILURE() << "Escape does not close it";
                dialog.close();
            }
        });
    }
    QWidget* FindEditor(tessaly::EditorKind kind) {
        return mWindow->GetEffectWindows().Find(mWindow->GetSession().GetEffects()[0], kind);
    }
    void ExpectUsableEditor(Qt::Key key, tessaly::EditorKind kind, std::size_t things) {
        Press(key);
        QWidget* const window = FindEditor(kind);
        ASSERT_NE(window, nullptr);
        ExpectUsable(*window, things);
        QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
        EXPECT_EQ(FindEditor(kind), nullptr);
    }
};

TEST_F(AccessibilityTest, TheMainWindow) {
    ExpectUsable(*mWindow, 20);
    mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly"));
    Press(Qt::Key_Q);
    EXPECT_FALSE(mWindow->isVisible());
}

TEST_F(AccessibilityTest, EveryMenuOfTheMainWindow) {
    for (const QAction* const action : mWindow->menuBar()->actions()) {
        QMenu& menu = *action->menu();
        // By the letter that is underlined in its name.
        const QChar letter = action->text().section(QLatin1Char('&'), 1).at(0);
        QTest::keyClick(mWindow.get(), letter.toUpper().toLatin1(), Qt::AltModifier);
        ASSERT_TRUE(menu.isVisible()) << action->text().toStdString();
        EXPECT_THAT(ScreenReader::FindFaults(menu), IsEmpty());
        EXPECT_GE(ScreenReader::CountUsable(menu), 1u);
        QTest::keyClick(&menu, Qt::Key_Escape);
        EXPECT_FALSE(menu.isVisible());
        QTest::keyClick(mWindow->menuBar(), Qt::Key_Escape);
    }
}

TEST_F(AccessibilityTest, TheMainWindowWithANoticeInIt) {
    mWindow->TellOfLostRuns({{"", true}});
    ExpectUsable(*mWindow, 22);
}

TEST_F(AccessibilityTest, TheMenuOfEffects) {
    Press(Qt::Key_E);
    QWidget* const menu = Find("EffectMenu");
    ASSERT_TRUE(menu->isVisible());
    ExpectUsable(*menu, 3);
    QTest::keyClick(menu, Qt::Key_Escape);
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(AccessibilityTest, TheParametersOfAnEffect) { ExpectUsableEditor(Qt::Key_2, tessaly::kGenericEditor, 4); }

TEST_F(AccessibilityTest, TheChannelMapOfAnEffect) { ExpectUsableEditor(Qt::Key_3, tessaly::kChannelMapEditor, 6); }

TEST_F(AccessibilityTest, ThePluginManager) { ExpectUsableDialog(Qt::Key_M, Qt::ControlModifier, 20); }

TEST_F(AccessibilityTest, WhatTellsOfAnError) {
    ExpectUsableDialog([this] { mWindow->GetFiles().OpenSound("/no/such/file.wav"); }, 1);
}

TEST_F(AccessibilityTest, TheQuestionAboutUnsavedChanges) { ExpectUsableDialog(Qt::Key_N, Qt::ControlModifier, 4); }

TEST_F(AccessibilityTest, WhatTellsAboutTheApplication) {
    QMenu* const help = Find<QMenu>("HelpMenu");
    Press(Qt::Key_H, Qt::AltModifier);
    ASSERT_TRUE(help->isVisible());
    ExpectUsableDialog([help] { QTest::keyClick(help, Qt::Key_A); }, 2);
}

TEST_F(AccessibilityTest, TheChooserOfFilesToOpen) {
    ExpectUsableDialog(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier, 12);
}

TEST_F(AccessibilityTest, TheChooserOfFilesToSave) {
    ExpectUsableDialog(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier, 12);
}

TEST_F(AccessibilityTest, TheProgressOfARender) {
    WriteSound(mFolder.Path("long.wav"), MakeLevel(2, 48000 * 120, 0.5f));
    mWindow->GetFiles().OpenSound(mFolder.Path("long.wav"));
    WithDialog([this] { mWindow->Render(mFolder.Path("rendered.wav")); },
               [](QWidget& dialog) {
                   ExpectUsable(dialog, 1);
                   QTest::keyClick(&dialog, Qt::Key_Escape);
               });
    EXPECT_EQ(GetNotice(), "");
}

}  // namespace zeltests
