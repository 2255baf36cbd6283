#include <functional>
#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QMessageBox>
#include <QScreen>
#include <QTest>
#include <QTextEdit>
#include <QWindow>

#include <zelcore/Threads.h>
#include <zelui/Application.h>
#include <zelui/MessageBox.h>

#include "DialogTools.h"

namespace zeltests {
namespace {

namespace messagebox = zelui::dialogs::messagebox;
using zelcore::threads::AsyncCallFromMainThread;

QMessageBox* FindBox() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }

/// Looks at the box that is open when the posted call runs, then dismisses it.
void WhenShown(const std::function<void(QMessageBox&)>& look) {
    AsyncCallFromMainThread([look] {
        QMessageBox* const box = FindBox();
        ASSERT_NE(box, nullptr);
        look(*box);
        if (box->isVisible()) QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    });
}

zelcore::ustring Repeat(const char* text, int times) {
    zelcore::ustring all;
    for (int i = 0; i < times; ++i) all += U(text);
    return all;
}

}  // namespace

TEST(MessageBoxTest, ANoteShowsTitleAndMessageAndReturnsWhenDismissed) {
    bool seen = false;
    WhenShown([&](QMessageBox& box) {
        seen = true;
        EXPECT_EQ(box.windowTitle(), "Scanning");
        EXPECT_EQ(box.text(), "/plug/ins/Echo.so");
        EXPECT_EQ(box.icon(), QMessageBox::Information);
        EXPECT_EQ(box.buttons().size(), 1);
        EXPECT_EQ(box.button(QMessageBox::Ok)->text(), "OK");
    });
    messagebox::ShowNote(nullptr, U("Scanning"), U("/plug/ins/Echo.so"), nullptr);
    EXPECT_TRUE(seen);
}

TEST(MessageBoxTest, ACautionWarns) {
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    WhenShown([&](QMessageBox& box) { icon = box.icon(); });
    messagebox::ShowCaution(nullptr, U("Title"), U("Message"), nullptr);
    EXPECT_EQ(icon, QMessageBox::Warning);
}

TEST(MessageBoxTest, EscapeReturnAndCloseDismissIt) {
    int dismissed = 0;
    WhenShown([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    messagebox::ShowNote(nullptr, U("Title"), U("Message"), nullptr);
    ++dismissed;
    WhenShown([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    messagebox::ShowNote(nullptr, U("Title"), U("Message"), nullptr);
    ++dismissed;
    WhenShown([](QMessageBox& box) { box.windowHandle()->close(); });
    messagebox::ShowNote(nullptr, U("Title"), U("Message"), nullptr);
    ++dismissed;
    WhenShown([](QMessageBox&) { EXPECT_TRUE(zelui::Application::CancelActiveDialog()); });
    messagebox::ShowNote(nullptr, U("Title"), U("Message"), nullptr);
    EXPECT_EQ(++dismissed, 4);
    EXPECT_FALSE(zelui::Application::CancelActiveDialog());
}

TEST(MessageBoxTest, MarkupIsText) {
    const char kMarkup[] = "<h1>Big</h1> <img src='file:///etc/passwd'> &amp;";
    bool seen = false;
    WhenShown([&](QMessageBox& box) {
        seen = true;
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.text(), kMarkup);
    });
    messagebox::ShowNote(nullptr, U("Title"), U(kMarkup), nullptr);
    EXPECT_TRUE(seen);
}

TEST(MessageBoxTest, AVeryLongMessageStaysOnTheScreenAndIsWholeInTheDetails) {
    const zelcore::ustring lines = Repeat("Plug-in number one of a great many\n", 300);
    bool seen = false;
    WhenShown([&](QMessageBox& box) {
        seen = true;
        EXPECT_TRUE(box.screen()->availableGeometry().contains(box.geometry()));
        EXPECT_TRUE(box.text().endsWith(QChar(0x2026)));
        EXPECT_EQ(box.detailedText(), zelui::qt::ToQString(lines));
        EXPECT_EQ(box.findChild<QTextEdit*>()->toPlainText(), zelui::qt::ToQString(lines));
    });
    messagebox::ShowNote(nullptr, U("Title"), lines, nullptr);
    EXPECT_TRUE(seen);
}

TEST(MessageBoxTest, AWordWithoutEndIsWrappedAndBounded) {
    bool seen = false;
    WhenShown([&](QMessageBox& box) {
        seen = true;
        EXPECT_TRUE(box.screen()->availableGeometry().contains(box.geometry()));
        const QLabel* const label = box.findChild<QLabel*>("qt_msgbox_label");
        ASSERT_NE(label, nullptr);
        EXPECT_TRUE(label->wordWrap());
        EXPECT_LE(label->minimumSizeHint().width(), label->width()) << "nothing is cut off";
        EXPECT_LE(box.detailedText().size(), 100000);
    });
    messagebox::ShowNote(nullptr, U("Title"), zelcore::ustring(1000000, 'W'), nullptr);
    EXPECT_TRUE(seen);
}

TEST(MessageBoxTest, ItBelongsToTheParentAndBlocksIt) {
    QWidget parent;
    parent.show();
    bool seen = false;
    WhenShown([&](QMessageBox& box) {
        seen = true;
        EXPECT_EQ(box.windowHandle()->transientParent(), parent.windowHandle());
        EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
    });
    messagebox::ShowNote(nullptr, U("Title"), U("Message"), zelui::qt::GetWindowHandle(&parent));
    EXPECT_TRUE(seen);
}

TEST(MessageBoxTest, OverAProgressDialogItCanBeDismissedFromAnIdleUpdate) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    dialog->UI_ShowModeless();
    bool returned = false;
    AsyncCallFromMainThread([&] {
        WhenShown([](QMessageBox& box) {
            ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
            const QPoint button = box.button(QMessageBox::Ok)->mapTo(&box, QPoint(5, 5));
            QTest::mouseClick(box.windowHandle(), Qt::LeftButton, Qt::NoModifier, button);
            EXPECT_FALSE(box.isVisible());
        });
        messagebox::ShowNote(nullptr, U("Title"), U("Message"), dialog->UI_GetPlatformWindow());
        returned = true;
    });
    dialog->UI_IdleUpdate();
    EXPECT_TRUE(returned);
    EXPECT_TRUE(dialog->UI_IsOpen());
    dialog->UI_Close(zelui::ui::UI_DialogViewContainer::kResponseOK);
}

TEST(MessageBoxTest, TheParentMayGoFirst) {
    auto parent = std::make_unique<QWidget>();
    parent->show();
    WhenShown([&](QMessageBox& box) {
        parent.reset();
        EXPECT_TRUE(box.isVisible() || !FindBox());
    });
    messagebox::ShowNote(nullptr, U("Title"), U("Message"), zelui::qt::GetWindowHandle(parent.get()));
    EXPECT_FALSE(zelui::Application::CancelActiveDialog());
}

}  // namespace zeltests
