#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <QLineEdit>
#include <QWindow>
#include <vector>

#include <zelcore/Threads.h>
#include <zelui/Application.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_TextEdit.h>

#include "ArchivedDialogTools.h"
#include "NodeTools.h"

namespace zeltests {

using testing::ElementsAre;
using zelcore::geom::Rect;
using zelcore::geom::RectF;
using zelcore::threads::AsyncCallFromMainThread;
using zelui::ui::KeyboardEvent;

namespace {

const auto kOK = zelui::ui::UI_DialogViewContainer::kResponseOK;
const int kTab = 9;

class OS_DialogTest : public testing::Test {
protected:
    OS_DialogTest() : mDialog(MakeTestDialog()) {}
    ~OS_DialogTest() override { mDialog->UI_Close(kOK); }

    QWidget& GetWindow() const { return *WindowOf(mDialog); }
    void Focus(const char* id) { mDialog->GetNodeForID(id)->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram); }
    RectF FrameOf(const char* id) const { return mDialog->GetNodeForID(id)->UI_GetLocalRectF(); }

    /// Resizes the window as people do.
    void Resize(int width, int height) {
        GetWindow().resize(width, height);
        EXPECT_TRUE(ProcessUntil([&] {
            const RectF frame = FrameOf("Root");
            return frame.width == static_cast<float>(GetWindow().width()) &&
                   frame.height == static_cast<float>(GetWindow().height());
        }));
    }

    const TestDialogPtr mDialog;
};

Rect ToRect(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

}  // namespace

// Size and place

TEST_F(OS_DialogTest, TheNodesFillTheWindow) {
    ShowDialog(mDialog);
    EXPECT_EQ(GetWindow().size(), QSize(400, 300));
    EXPECT_EQ(FrameOf("Root"), (RectF{0, 0, 400, 300}));
    const QWidget* const root = WidgetIn(mDialog, "Root");
    EXPECT_EQ(QRect(root->mapTo(&GetWindow(), QPoint()), root->size()), GetWindow().rect());
    EXPECT_EQ(GetWindow().windowTitle(), "A title [*][*]");
    EXPECT_TRUE(mDialog->sizes.empty());
}

TEST_F(OS_DialogTest, ANodeThatIsResizedIsToldOfItsPlaceFirstAndTheDialogAfterwards) {
    ShowDialog(mDialog);
    RectF edit;
    mDialog->onSized = [&] { edit = FrameOf("Edit"); };
    Resize(500, 350);
    EXPECT_EQ(edit, (RectF{10, 40, 480, 22}));
    EXPECT_EQ(FrameOf("OK"), (RectF{280, 320, 100, 22}));
    EXPECT_THAT(mDialog->sizes, ElementsAre(RectF{0, 0, 500, 350}));
    EXPECT_EQ(WidgetIn(mDialog, "OK")->pos(), QPoint(280, 320));
}

TEST_F(OS_DialogTest, PeopleCanMakeTheWindowLargerSmallerAndMaximiseIt) {
    ShowDialog(mDialog);
    EXPECT_TRUE(GetWindow().windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_TRUE(GetWindow().windowFlags() & Qt::WindowCloseButtonHint);
    EXPECT_EQ(GetWindow().maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    Resize(50, 40);
    EXPECT_LE(GetWindow().width(), 50);
    Resize(400, 300);
    EXPECT_EQ(FrameOf("OK"), (RectF{180, 270, 100, 22}));
    EXPECT_EQ(FrameOf("Edit"), (RectF{10, 40, 380, 22}));
}

TEST_F(OS_DialogTest, TheMinimumSizeIsThatOfTheInside) {
    mDialog->SetMinimumSize({350, 250.5f});
    ShowDialog(mDialog);
    Resize(100, 100);
    EXPECT_EQ(GetWindow().size(), QSize(350, 251));
    mDialog->SetMinimumSize({std::numeric_limits<float>::quiet_NaN(), -5});
    Resize(100, 100);
    EXPECT_EQ(GetWindow().size(), QSize(100, 100));
    mDialog->SetMinimumSize({std::numeric_limits<float>::infinity(), 0});
    mDialog->SetMinimumSize({0, 0});
    EXPECT_TRUE(mDialog->UI_IsOpen());
}

TEST_F(OS_DialogTest, AMinimumSizeAboveTheArchivedOneIsTakenAtOnce) {
    mDialog->SetMinimumSize({450, 320});
    EXPECT_EQ(FrameOf("Root"), (RectF{0, 0, 450, 320}));
    EXPECT_EQ(FrameOf("OK"), (RectF{230, 290, 100, 22}));
    EXPECT_THAT(mDialog->sizes, ElementsAre(RectF{0, 0, 450, 320}));
    EXPECT_EQ(mDialog->GetGlobalStructureRect().width, 450);
}

TEST_F(OS_DialogTest, BeforeItIsShownTheStructureHasTheArchivedSize) {
    const Rect rect = mDialog->GetGlobalStructureRect();
    EXPECT_EQ(rect.width, 400);
    EXPECT_EQ(rect.height, 300);
}

TEST_F(OS_DialogTest, TheStructureIsTheWindowWithItsFrame) {
    ShowDialog(mDialog);
    EXPECT_EQ(mDialog->GetGlobalStructureRect(), ToRect(GetWindow().frameGeometry()));
    GetWindow().move(30, 40);
    Resize(420, 310);
    EXPECT_EQ(mDialog->GetGlobalStructureRect(), ToRect(GetWindow().frameGeometry()));
}

TEST_F(OS_DialogTest, AStructureThatWasSetIsTheWindowsWhenItIsShown) {
    const Rect rect{50, 60, 520, 410};
    mDialog->SetGlobalStructureRect(rect);
    EXPECT_EQ(mDialog->GetGlobalStructureRect(), rect);
    ShowDialog(mDialog);
    EXPECT_EQ(mDialog->GetGlobalStructureRect(), rect);
    EXPECT_EQ(ToRect(GetWindow().frameGeometry()), rect);
    EXPECT_EQ(FrameOf("Root").width, static_cast<float>(GetWindow().width()));
}

TEST_F(OS_DialogTest, AStructureThatIsSetWhileItIsOpenMovesTheWindow) {
    ShowDialog(mDialog);
    const Rect rect{20, 10, 450, 350};
    mDialog->SetGlobalStructureRect(rect);
    EXPECT_EQ(mDialog->GetGlobalStructureRect(), rect);
    EXPECT_EQ(FrameOf("Root").width, static_cast<float>(GetWindow().width()));
}

TEST_F(OS_DialogTest, TheStructureIsKeptWhenItHasClosedAndWhenItIsShownAgain) {
    ShowDialog(mDialog);
    GetWindow().move(33, 44);
    Resize(430, 330);
    const Rect rect = mDialog->GetGlobalStructureRect();
    mDialog->UI_Close(kOK);
    EXPECT_EQ(mDialog->GetGlobalStructureRect(), rect);
    ShowDialog(mDialog);
    EXPECT_EQ(mDialog->GetGlobalStructureRect(), rect);
}

TEST_F(OS_DialogTest, AStructureFarAwayOrWithoutAreaIsHarmless) {
    mDialog->SetGlobalStructureRect({-20000, 30000, 500, 400});
    EXPECT_EQ(mDialog->GetGlobalStructureRect(), (Rect{-20000, 30000, 500, 400}));
    mDialog->SetGlobalStructureRect({0, 0, 0, 100});
    mDialog->SetGlobalStructureRect({0, 0, 100, -5});
    EXPECT_EQ(mDialog->GetGlobalStructureRect(), (Rect{-20000, 30000, 500, 400}));
    ShowDialog(mDialog);
    EXPECT_LT(mDialog->GetGlobalStructureRect().left, -10000);
}

TEST_F(OS_DialogTest, ItOpensOverTheMiddleOfItsParent) {
    QWidget parent;
    parent.setGeometry(100, 100, 600, 500);
    parent.show();
    const TestDialogPtr dialog(new TestDialog(Archive(TestRoot().Write()), {}, zelui::qt::GetWindowHandle(&parent)));
    ShowDialog(dialog);
    const QPoint middle = WindowOf(dialog)->frameGeometry().center();
    EXPECT_LE((middle - parent.geometry().center()).manhattanLength(), 2);
    EXPECT_EQ(WindowOf(dialog)->windowHandle()->transientParent(), parent.windowHandle());
    dialog->UI_Close(kOK);
}

TEST_F(OS_DialogTest, ItHasAWindowWhileItIsOpen) {
    EXPECT_EQ(mDialog->GetPlatformWindow(true), nullptr);
    ShowDialog(mDialog);
    EXPECT_EQ(mDialog->GetPlatformWindow(false), mDialog->UI_GetPlatformWindow());
    EXPECT_NE(mDialog->GetPlatformWindow(true), nullptr);
    mDialog->UI_Close(kOK);
    EXPECT_EQ(mDialog->GetPlatformWindow(true), nullptr);
}

// Keys

TEST_F(OS_DialogTest, AKeyIsTheDialogsBeforeItIsTheControls) {
    ShowDialog(mDialog);
    Focus("Edit");
    mDialog->onKey = [](const KeyboardEvent& event) { return event.GetOSCode() == 'A'; };
    QTest::keyClicks(QApplication::focusWidget(), "aba");
    EXPECT_EQ(mDialog->GetNodeForIDAs<zelui::controls::UI_TextEdit>("Edit")->GetValue(), U("b"));
    EXPECT_THAT(mDialog->keys, ElementsAre('A', 'B', 'A'));
}

TEST_F(OS_DialogTest, TheTabKeyToo) {
    ShowDialog(mDialog);
    Focus("Edit");
    mDialog->onKey = [](const KeyboardEvent& event) { return event.GetOSCode() == kTab; };
    PressKey(Qt::Key_Tab);
    EXPECT_TRUE(mDialog->GetNodeForID("Edit")->UI_HasKeyboardFocus(false));
    mDialog->onKey = {};
    PressKey(Qt::Key_Tab);
    EXPECT_TRUE(mDialog->GetNodeForID("Check")->UI_HasKeyboardFocus(false));
    EXPECT_THAT(mDialog->keys, ElementsAre(kTab, kTab));
}

TEST_F(OS_DialogTest, AKeyThatNobodyUsesIsToldOnce) {
    ShowDialog(mDialog);
    Focus("Check");
    PressKey(Qt::Key_F5);
    PressKey(Qt::Key_F5);
    EXPECT_THAT(mDialog->keys, ElementsAre(0x74, 0x74));
}

TEST_F(OS_DialogTest, EscapeIsTheDialogsFirst) {
    ShowDialog(mDialog);
    mDialog->onKey = [](const KeyboardEvent&) { return true; };
    PressKey(Qt::Key_Escape);
    PressKey(Qt::Key_Return);
    EXPECT_TRUE(mDialog->UI_IsOpen());
}

TEST_F(OS_DialogTest, KeysOfOtherWindowsAreNotTheDialogs) {
    QLineEdit other;
    ShowDialog(mDialog);
    ShowActive(other);
    QTest::keyClicks(&other, "a");
    EXPECT_EQ(other.text(), "a");
    EXPECT_TRUE(mDialog->keys.empty());
}

// Focus

TEST_F(OS_DialogTest, TheFocusThatWasGivenBeforeItIsShownIsThereWhenItIs) {
    Focus("Check");
    bool hadFocus = false;
    AsyncCallFromMainThread([&] {
        hadFocus = ProcessUntil([&] { return QApplication::focusWidget() == WidgetIn(mDialog, "Check"); });
        mDialog->UI_Close(kOK);
    });
    mDialog->RunModal();
    EXPECT_TRUE(hadFocus);
}

TEST_F(OS_DialogTest, GivenToTheContentNodeTheFocusGoesToTheFirstControl) {
    EXPECT_TRUE(mDialog->GetContentNode()->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
    ShowDialog(mDialog);
    EXPECT_EQ(QApplication::focusWidget(), WidgetIn(mDialog, "Other"));
    EXPECT_TRUE(mDialog->GetNodeForID("Other")->UI_HasKeyboardFocus(false));
}

TEST_F(OS_DialogTest, TheFocusIsBackWhenTheWindowIsActiveAgain) {
    ShowDialog(mDialog);
    Focus("Check");
    QLineEdit other;
    other.setFocus();
    ShowActive(other);
    EXPECT_EQ(QApplication::focusWidget(), &other);
    GetWindow().activateWindow();
    EXPECT_TRUE(ProcessUntil([&] { return QApplication::focusWidget() == WidgetIn(mDialog, "Check"); }));
    other.hide();
    mDialog->UI_Close(kOK);
    ShowDialog(mDialog);
    EXPECT_EQ(QApplication::focusWidget(), WidgetIn(mDialog, "Check"));
}

}  // namespace zeltests
