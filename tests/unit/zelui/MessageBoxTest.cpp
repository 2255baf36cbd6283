#include <functional>
#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QMessageBox>
#include <QScreen>
#include <QTest>
#include <QTextEdit>
#include <QWindow>
#include <stdexcept>

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

const int kYesOrNo = messagebox::kYesButton | messagebox::kNoAnswerButton;

/// Runs a box on which `act` acts; its answer, and what the handler was told.
struct Question {
    int buttons = kYesOrNo;
    messagebox::Button defaultButton = messagebox::kNoAnswerButton;
    messagebox::Icon icon = messagebox::kIconCaution;
    std::vector<messagebox::Button> told;

    messagebox::Button Ask(const std::function<void(QMessageBox&)>& act) {
        bool seen = false;
        AsyncCallFromMainThread([&seen, act] {
            QMessageBox* const box = FindBox();
            ASSERT_NE(box, nullptr);
            seen = true;
            act(*box);
            EXPECT_FALSE(box->isVisible());
            // What a test did not answer must not stay for ever.
            if (box->isVisible()) box->hide();
        });
        const auto handler = [this](messagebox::Button button) {
            EXPECT_EQ(FindBox(), nullptr) << "it is off the screen";
            told.push_back(button);
        };
        const messagebox::Button answer = messagebox::Messagebox(nullptr, U("Tessaly"), U("Go on?"), buttons,
                                                                 defaultButton, icon, nullptr, handler, 0, 0);
        EXPECT_TRUE(seen);
        return answer;
    }
};

void PressEscape(QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }
void PressReturn(QMessageBox& box) {
    EXPECT_TRUE(ProcessUntil([&box] { return box.isActiveWindow() && box.focusWidget() != nullptr; }));
    QTest::keyClick(box.focusWidget(), Qt::Key_Return);
}
void Close(QMessageBox& box) { box.windowHandle()->close(); }
void CancelFromOutside(QMessageBox&) { EXPECT_TRUE(zelui::Application::CancelActiveDialog()); }

std::function<void(QMessageBox&)> Click(QMessageBox::StandardButton button) {
    return [button](QMessageBox& box) { QTest::mouseClick(box.button(button), Qt::LeftButton); };
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

// Questions

TEST(MessageBoxTest, TheNumbersOfTheButtonsAndIconsDoNotChange) {
    EXPECT_EQ(messagebox::kOKButton, 1);
    EXPECT_EQ(messagebox::kCancelButton, 2);
    EXPECT_EQ(messagebox::kYesButton, 16);
    EXPECT_EQ(messagebox::kNoAnswerButton, 64);
    EXPECT_EQ(messagebox::kIconCaution, 2);
}

TEST(MessageBoxTest, AnswersWithTheButtonThatWasPressedAndTellsItFirst) {
    Question question;
    EXPECT_EQ(question.Ask(Click(QMessageBox::Yes)), messagebox::kYesButton);
    EXPECT_EQ(question.Ask(Click(QMessageBox::No)), messagebox::kNoAnswerButton);
    question.buttons = messagebox::kOKButton | messagebox::kCancelButton;
    EXPECT_EQ(question.Ask(Click(QMessageBox::Ok)), messagebox::kOKButton);
    EXPECT_EQ(question.Ask(Click(QMessageBox::Cancel)), messagebox::kCancelButton);
    EXPECT_EQ(question.told, (std::vector<messagebox::Button>{messagebox::kYesButton, messagebox::kNoAnswerButton,
                                                              messagebox::kOKButton, messagebox::kCancelButton}));
}

TEST(MessageBoxTest, ShowsTheButtonsThatItKnowsAndNoOthers) {
    Question question;
    question.buttons = 0x7FFFFF00 | messagebox::kCancelButton | kYesOrNo;
    question.Ask([](QMessageBox& box) {
        EXPECT_EQ(box.buttons().size(), 3);
        EXPECT_EQ(box.button(QMessageBox::Yes)->text(), "Yes");
        EXPECT_EQ(box.button(QMessageBox::No)->text(), "No");
        EXPECT_EQ(box.button(QMessageBox::Cancel)->text(), "Cancel");
        PressEscape(box);
    });
}

TEST(MessageBoxTest, WithoutAButtonItKnowsItHasOK) {
    for (const int buttons : {0, 4, 8, 32, 128}) {
        Question question;
        question.buttons = buttons;
        EXPECT_EQ(question.Ask([](QMessageBox& box) {
            EXPECT_EQ(box.buttons().size(), 1);
            Click(QMessageBox::Ok)(box);
        }),
                  messagebox::kOKButton);
    }
}

TEST(MessageBoxTest, EscapeAndClosingAreCancelOrNoOrOKOrTheOnlyOne) {
    const std::pair<int, messagebox::Button> expected[] = {
        {kYesOrNo | messagebox::kCancelButton | messagebox::kOKButton, messagebox::kCancelButton},
        {kYesOrNo | messagebox::kOKButton, messagebox::kNoAnswerButton},
        {messagebox::kYesButton | messagebox::kOKButton, messagebox::kOKButton},
        {messagebox::kYesButton, messagebox::kYesButton},
        {messagebox::kNoAnswerButton, messagebox::kNoAnswerButton}};
    for (const auto& [buttons, answer] : expected) {
        Question question;
        question.buttons = buttons;
        EXPECT_EQ(question.Ask(PressEscape), answer);
        EXPECT_EQ(question.Ask(Close), answer);
        EXPECT_EQ(question.Ask(CancelFromOutside), answer);
        EXPECT_EQ(question.told, std::vector<messagebox::Button>(3, answer));
    }
}

TEST(MessageBoxTest, ReturnPressesTheDefaultButton) {
    Question question;
    EXPECT_EQ(question.Ask(PressReturn), messagebox::kNoAnswerButton);
    question.defaultButton = messagebox::kYesButton;
    EXPECT_EQ(question.Ask(PressReturn), messagebox::kYesButton);
}

TEST(MessageBoxTest, ADefaultThatTheBoxHasNotIsTheButtonOfEscape) {
    Question question;
    for (const messagebox::Button button : {messagebox::kNoButton, messagebox::kOKButton}) {
        question.defaultButton = button;
        EXPECT_EQ(question.Ask(PressReturn), messagebox::kNoAnswerButton);
    }
}

TEST(MessageBoxTest, IconsAreThoseOfThePlatform) {
    const std::pair<messagebox::Icon, QMessageBox::Icon> expected[] = {
        {messagebox::kIconNote, QMessageBox::Information},
        {messagebox::kIconError, QMessageBox::Critical},
        {messagebox::kIconCaution, QMessageBox::Warning},
        {static_cast<messagebox::Icon>(3), QMessageBox::Information}};
    for (const auto& [icon, shown] : expected) {
        Question question;
        question.icon = icon;
        question.Ask([shown = shown](QMessageBox& box) {
            EXPECT_EQ(box.icon(), shown);
            PressEscape(box);
        });
    }
}

TEST(MessageBoxTest, AnEmptyHandlerIsNotCalledAndAnExceptionOfOneComesOut) {
    const auto ask = [](const messagebox::ButtonHandler& handler) {
        WhenShown([](QMessageBox& box) { PressEscape(box); });
        return messagebox::Messagebox(nullptr, U("Title"), U("Message"), kYesOrNo, messagebox::kYesButton,
                                      messagebox::kIconNote, nullptr, handler, 0, 0);
    };
    EXPECT_EQ(ask({}), messagebox::kNoAnswerButton);
    EXPECT_THROW(ask([](messagebox::Button) { throw std::runtime_error("from the product"); }), std::runtime_error);
    EXPECT_FALSE(zelui::Application::CancelActiveDialog());
}

TEST(MessageBoxTest, WhenTheApplicationEndsItTheAnswerIsThatOfEscapeAndNobodyIsTold) {
    bool told = false;
    AsyncCallFromMainThread([] { QCoreApplication::exit(); });
    EXPECT_EQ(messagebox::Messagebox(
                  nullptr, U("Title"), U("Message"), kYesOrNo, messagebox::kYesButton, messagebox::kIconNote, nullptr,
                  [&told](messagebox::Button) { told = true; }, 0, 0),
              messagebox::kNoAnswerButton);
    EXPECT_FALSE(told);
    EXPECT_EQ(FindBox(), nullptr);
    // Qt lets no loop run any more until the outermost one has begun anew.
    AsyncCallFromMainThread([] { QCoreApplication::exit(); });
    QCoreApplication::exec();
}

TEST(MessageBoxTest, ALongQuestionKeepsItsButtons) {
    const zelcore::ustring lines = Repeat("Plug-in number one of a great many\n", 300);
    WhenShown([](QMessageBox& box) {
        EXPECT_TRUE(box.screen()->availableGeometry().contains(box.geometry()));
        EXPECT_EQ(box.buttons().size(), 3) << "Yes, No and the details";
        PressEscape(box);
    });
    EXPECT_EQ(messagebox::Messagebox(nullptr, U("Title"), lines, kYesOrNo, messagebox::kYesButton,
                                     messagebox::kIconNote, nullptr, {}, 0, 0),
              messagebox::kNoAnswerButton);
}

}  // namespace zeltests
