#include <gtest/gtest.h>
#include <QTest>
#include <QWindow>
#include <thread>
#include <vector>

#include <zelcore/Threads.h>
#include <zelui/Application.h>

#include "DialogTools.h"

namespace zeltests {
namespace {

using zelcore::threads::AsyncCallFromMainThread;
using zelui::ui::UI_DialogViewContainer;
typedef UI_DialogViewContainer::Response Response;

const Response kCancel = UI_DialogViewContainer::kResponseCancel;
const Response kOK = UI_DialogViewContainer::kResponseOK;

/// Collects the responses that a dialog reports.
struct Responses {
    explicit Responses(const ProgressDialogPtr& dialog) {
        dialog->SetPostCloseCallback([this](Response response) {
            list.push_back(response);
            return true;
        });
    }
    std::vector<int> list;
};

class UI_DialogTest : public ::testing::Test {
protected:
    ~UI_DialogTest() override { EXPECT_FALSE(zelui::Application::CancelActiveDialog()) << "a dialog was left open"; }
};

typedef std::vector<int> Ints;

}  // namespace

TEST_F(UI_DialogTest, TheNumbersOfTheResponsesAreFixed) {
    EXPECT_EQ(static_cast<int>(kCancel), 0);
    EXPECT_EQ(static_cast<int>(kOK), 1);
}

TEST_F(UI_DialogTest, ModelessShowsAndReturnsAtOnce) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    EXPECT_FALSE(dialog->UI_IsOpen());
    EXPECT_EQ(dialog->UI_GetPlatformWindow(), nullptr);
    dialog->UI_ShowModeless();
    EXPECT_TRUE(dialog->UI_IsOpen());
    ASSERT_NE(GetWindow(dialog), nullptr);
    EXPECT_TRUE(GetWindow(dialog)->isVisible());
    EXPECT_FALSE(GetWindow(dialog)->isModal());
    dialog->UI_Close(kOK);
    EXPECT_FALSE(dialog->UI_IsOpen());
    EXPECT_EQ(dialog->UI_GetPlatformWindow(), nullptr);
}

TEST_F(UI_DialogTest, AClickOnCancelEndsTheModalLoop) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    const Responses responses(dialog);
    AsyncCallFromMainThread([&] { QTest::mouseClick(GetCancelButton(dialog), Qt::LeftButton); });
    EXPECT_EQ(dialog->UI_RunModal(), kCancel);
    EXPECT_EQ(responses.list, Ints{0});
}

TEST_F(UI_DialogTest, EscapeCancels) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    const Responses responses(dialog);
    AsyncCallFromMainThread([&] { QTest::keyClick(GetWindow(dialog), Qt::Key_Escape); });
    EXPECT_EQ(dialog->UI_RunModal(), kCancel);
    EXPECT_EQ(responses.list, Ints{0});
}

TEST_F(UI_DialogTest, ClosingTheWindowCancels) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    const Responses responses(dialog);
    AsyncCallFromMainThread([&] { GetWindow(dialog)->windowHandle()->close(); });
    EXPECT_EQ(dialog->UI_RunModal(), kCancel);
    EXPECT_EQ(responses.list, Ints{0});
}

TEST_F(UI_DialogTest, EnterDoesNotCancel) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    dialog->UI_ShowModeless();
    QTest::keyClick(GetWindow(dialog), Qt::Key_Return);
    QTest::keyClick(GetCancelButton(dialog), Qt::Key_Enter);
    EXPECT_TRUE(dialog->UI_IsOpen());
    dialog->UI_Close(kOK);
}

TEST_F(UI_DialogTest, NothingButUI_CloseClosesOneThatCannotBeCancelled) {
    const ProgressDialogPtr dialog = MakeProgressDialog(false);
    const Responses responses(dialog);
    dialog->UI_ShowModeless();
    EXPECT_EQ(GetCancelButton(dialog), nullptr);
    QTest::keyClick(GetWindow(dialog), Qt::Key_Escape);
    EXPECT_FALSE(GetWindow(dialog)->windowHandle()->close());
    QApplication::closeAllWindows();
    EXPECT_FALSE(zelui::Application::CancelActiveDialog());
    EXPECT_TRUE(dialog->UI_IsOpen());
    EXPECT_TRUE(GetWindow(dialog)->isVisible());
    EXPECT_EQ(responses.list, Ints{});
    dialog->UI_Close(kOK);
    EXPECT_EQ(responses.list, Ints{1});
}

TEST_F(UI_DialogTest, APostedCallEndsTheModalLoopWithItsResponse) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    AsyncCallFromMainThread([&] { dialog->UI_Close(kOK); });
    EXPECT_EQ(dialog->UI_RunModal(), kOK);
    AsyncCallFromMainThread([&] { dialog->UI_Close(kCancel); });
    EXPECT_EQ(dialog->UI_RunModal(), kCancel);
}

TEST_F(UI_DialogTest, ACallOfAnotherThreadEndsTheModalLoop) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    std::thread thread([&] { AsyncCallFromMainThread([&] { dialog->UI_Close(kOK); }); });
    EXPECT_EQ(dialog->UI_RunModal(), kOK);
    thread.join();
}

TEST_F(UI_DialogTest, ClosedBeforeItWasRunItReturnsAtOnce) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    const Responses responses(dialog);
    dialog->UI_Close(kOK);
    dialog->UI_Close(kCancel);
    EXPECT_EQ(dialog->UI_RunModal(), kOK);
    EXPECT_EQ(responses.list, Ints{});
}

TEST_F(UI_DialogTest, ClosedWhileModelessTheNextRunReturnsAtOnce) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    dialog->UI_ShowModeless();
    QTest::mouseClick(GetCancelButton(dialog), Qt::LeftButton);
    EXPECT_EQ(dialog->UI_RunModal(), kCancel);
    // That closing is answered; a further run shows the dialog again.
    AsyncCallFromMainThread([&] { dialog->UI_Close(kOK); });
    EXPECT_EQ(dialog->UI_RunModal(), kOK);
}

TEST_F(UI_DialogTest, AnOpenModelessDialogCanBecomeModal) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    const Responses responses(dialog);
    dialog->UI_ShowModeless();
    bool modal = false;
    AsyncCallFromMainThread([&] {
        modal = GetWindow(dialog)->isModal() && GetWindow(dialog)->isVisible();
        dialog->UI_Close(kOK);
    });
    EXPECT_EQ(dialog->UI_RunModal(), kOK);
    EXPECT_TRUE(modal);
    EXPECT_EQ(responses.list, Ints{1});
}

TEST_F(UI_DialogTest, ClosingAgainIsHarmless) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    const Responses responses(dialog);
    dialog->UI_ShowModeless();
    dialog->UI_Close(kOK);
    dialog->UI_Close(kCancel);
    EXPECT_EQ(responses.list, Ints{1});
}

TEST_F(UI_DialogTest, TheCallbackRunsOncePerClosing) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    const Responses responses(dialog);
    for (int i = 0; i < 3; ++i) {
        dialog->UI_ShowModeless();
        dialog->UI_ShowModeless();
        dialog->UI_Close(kOK);
    }
    EXPECT_EQ(responses.list, (Ints{1, 1, 1}));
}

TEST_F(UI_DialogTest, TheCallbackMayReleaseTheLastReferenceInsideTheClick) {
    ProgressDialogPtr dialog = MakeProgressDialog();
    long countInCallback = 0;
    dialog->SetPostCloseCallback([&](Response) {
        const zelui::dialogs::UI_ProgressDialog* const object = dialog.get();
        dialog.reset();
        countInCallback = object->GetRefCount();
        return true;
    });
    dialog->UI_ShowModeless();
    QPointer<QWidget> window = GetWindow(dialog);
    QTest::mouseClick(GetCancelButton(dialog), Qt::LeftButton);
    EXPECT_FALSE(dialog);
    EXPECT_GE(countInCallback, 1) << "the object must be alive in its callback";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}

TEST_F(UI_DialogTest, TheCallbackMayReleaseTheLastReferenceOfAModalDialog) {
    ProgressDialogPtr dialog = MakeProgressDialog();
    dialog->SetPostCloseCallback([&](Response) {
        dialog.reset();
        return false;
    });
    AsyncCallFromMainThread([&] { GetWindow(dialog)->windowHandle()->close(); });
    EXPECT_EQ(dialog->UI_RunModal(), kCancel);
    EXPECT_FALSE(dialog);
}

TEST_F(UI_DialogTest, TheCallbackMayOpenTheDialogAgain) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    int closings = 0;
    dialog->SetPostCloseCallback([&](Response) {
        if (++closings == 1) dialog->UI_ShowModeless();
        return true;
    });
    AsyncCallFromMainThread([&] { dialog->UI_Close(kOK); });
    EXPECT_EQ(dialog->UI_RunModal(), kOK);
    EXPECT_TRUE(dialog->UI_IsOpen());
    dialog->UI_Close(kCancel);
    EXPECT_EQ(closings, 2);
}

TEST_F(UI_DialogTest, TheToolkitHoldsAnOpenDialog) {
    ProgressDialogPtr dialog = MakeProgressDialog();
    int closings = 0;
    dialog->SetPostCloseCallback([&](Response) { return ++closings > 0; });
    dialog->UI_ShowModeless();
    EXPECT_EQ(dialog->GetRefCount(), 2);
    dialog.reset();
    EXPECT_TRUE(zelui::Application::CancelActiveDialog());
    EXPECT_EQ(closings, 1);
}

TEST_F(UI_DialogTest, CancellingTakesTheInnermostThatCanBeCancelled) {
    const ProgressDialogPtr outer = MakeProgressDialog();
    const ProgressDialogPtr inner = MakeProgressDialog();
    const ProgressDialogPtr stubborn = MakeProgressDialog(false);
    outer->UI_ShowModeless();
    inner->UI_ShowModeless();
    stubborn->UI_ShowModeless();
    EXPECT_TRUE(zelui::Application::CancelActiveDialog());
    EXPECT_FALSE(inner->UI_IsOpen());
    EXPECT_TRUE(outer->UI_IsOpen());
    EXPECT_TRUE(zelui::Application::CancelActiveDialog());
    EXPECT_FALSE(outer->UI_IsOpen());
    EXPECT_FALSE(zelui::Application::CancelActiveDialog());
    stubborn->UI_Close(kOK);
}

TEST_F(UI_DialogTest, NestedModalDialogsEndFromTheInside) {
    const ProgressDialogPtr outer = MakeProgressDialog();
    const ProgressDialogPtr inner = MakeProgressDialog();
    Ints responses;
    AsyncCallFromMainThread([&] {
        AsyncCallFromMainThread([&] { outer->UI_Close(kOK); });
        AsyncCallFromMainThread([&] { inner->UI_Close(kCancel); });
        responses.push_back(inner->UI_RunModal());
    });
    responses.push_back(outer->UI_RunModal());
    EXPECT_EQ(responses, (Ints{0, 1}));
}

TEST_F(UI_DialogTest, RunningAModalDialogAgainInsideItselfEndsBothRuns) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    const Responses closings(dialog);
    Ints responses;
    AsyncCallFromMainThread([&] {
        AsyncCallFromMainThread([&] { dialog->UI_Close(kOK); });
        responses.push_back(dialog->UI_RunModal());
    });
    responses.push_back(dialog->UI_RunModal());
    EXPECT_EQ(responses, (Ints{1, 1}));
    EXPECT_EQ(closings.list, Ints{1});
}

TEST_F(UI_DialogTest, ItBelongsToTheParentWindowAndStandsOverItsMiddle) {
    QWidget parent;
    parent.setGeometry(50, 60, 700, 500);
    parent.show();
    const ProgressDialogPtr dialog = MakeProgressDialog(true, false, zelui::qt::GetWindowHandle(&parent));
    dialog->UI_ShowModeless();
    EXPECT_EQ(GetWindow(dialog)->windowHandle()->transientParent(), parent.windowHandle());
    const QPoint offset = GetWindow(dialog)->geometry().center() - parent.geometry().center();
    EXPECT_LE(std::abs(offset.x()), 2);
    EXPECT_LE(std::abs(offset.y()), 40) << "but for the title bar";
    dialog->UI_Close(kOK);
}

TEST_F(UI_DialogTest, NearTheEdgeItStaysOnTheScreen) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget parent;
    parent.setGeometry(screen.right() - 60, screen.bottom() - 60, 50, 50);
    parent.show();
    const ProgressDialogPtr dialog = MakeProgressDialog(true, false, zelui::qt::GetWindowHandle(&parent));
    dialog->UI_ShowModeless();
    EXPECT_TRUE(screen.contains(GetWindow(dialog)->frameGeometry()));
    dialog->UI_Close(kOK);
}

TEST_F(UI_DialogTest, TheParentMayGoFirst) {
    auto parent = std::make_unique<QWidget>();
    parent->show();
    const ProgressDialogPtr dialog = MakeProgressDialog(true, false, zelui::qt::GetWindowHandle(parent.get()));
    dialog->UI_ShowModeless();
    parent.reset();
    ASSERT_TRUE(dialog->UI_IsOpen());
    QTest::mouseClick(GetCancelButton(dialog), Qt::LeftButton);
    EXPECT_FALSE(dialog->UI_IsOpen());
}

TEST_F(UI_DialogTest, AParentThatIsNoWindowIsNoParent) {
    const ProgressDialogPtr dialog = MakeProgressDialog(true, false, reinterpret_cast<HWND>(0x7FFFFFF1));
    dialog->UI_ShowModeless();
    EXPECT_TRUE(GetWindow(dialog)->isVisible());
    dialog->UI_Close(kOK);
}

TEST_F(UI_DialogTest, OneWithoutParentIsNotBlockedByTheModalDialogBelowIt) {
    const ProgressDialogPtr modal = MakeProgressDialog();
    const ProgressDialogPtr orphan = MakeProgressDialog();
    QWindow* transientParent = nullptr;
    QWindow* modalWindow = nullptr;
    AsyncCallFromMainThread([&] {
        modalWindow = GetWindow(modal)->windowHandle();
        orphan->UI_ShowModeless();
        transientParent = GetWindow(orphan)->windowHandle()->transientParent();
        EXPECT_TRUE(ProcessUntil([&] { return GetWindow(orphan)->windowHandle()->isExposed(); }));
        QWindow* const window = GetWindow(orphan)->windowHandle();
        const QPoint button = GetCancelButton(orphan)->mapTo(GetWindow(orphan), QPoint(5, 5));
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, button);
        EXPECT_FALSE(orphan->UI_IsOpen());
        modal->UI_Close(kOK);
    });
    EXPECT_EQ(modal->UI_RunModal(), kOK);
    EXPECT_EQ(transientParent, modalWindow);
}

TEST_F(UI_DialogTest, IdleUpdateRunsPostedCallsAndTheClickOnCancel) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    const Responses responses(dialog);
    dialog->UI_ShowModeless();
    std::string order;
    AsyncCallFromMainThread([&] { order += 'a'; });
    AsyncCallFromMainThread([&] {
        order += 'b';
        QTest::mouseClick(GetCancelButton(dialog), Qt::LeftButton);
    });
    dialog->UI_IdleUpdate();
    EXPECT_EQ(order, "ab");
    EXPECT_EQ(responses.list, Ints{0});
    dialog->UI_IdleUpdate();
}

TEST_F(UI_DialogTest, IdleUpdateOutlivesTheLastReference) {
    ProgressDialogPtr dialog = MakeProgressDialog();
    dialog->UI_ShowModeless();
    AsyncCallFromMainThread([&] {
        dialog->UI_Close(kOK);
        dialog.reset();
    });
    dialog->UI_IdleUpdate();
    EXPECT_FALSE(dialog);
}

TEST_F(UI_DialogTest, IdleUpdateReturnsThoughCallsPostThemselvesForEver) {
    struct Forever {
        bool* stop;
        int* calls;
        void operator()() const {
            ++*calls;
            if (!*stop) AsyncCallFromMainThread(*this);
        }
    };
    bool stop = false;
    int calls = 0;
    const ProgressDialogPtr dialog = MakeProgressDialog();
    dialog->UI_ShowModeless();
    AsyncCallFromMainThread(Forever{&stop, &calls});
    dialog->UI_IdleUpdate();
    dialog->UI_IdleUpdate();
    EXPECT_GE(calls, 2);
    stop = true;
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents();
    dialog->UI_Close(kOK);
}

TEST_F(UI_DialogTest, IdleUpdateThrowsInputToOtherWindowsAwayButNotInALoopInsideIt) {
    QPushButton other;
    int clicks = 0;
    QObject::connect(&other, &QPushButton::clicked, [&] { ++clicks; });
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    const auto clickOther = [&] {
        QTest::mouseClick(other.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    };
    clickOther();
    ASSERT_EQ(clicks, 1) << "the button can be clicked";
    const ProgressDialogPtr dialog = MakeProgressDialog();
    dialog->UI_ShowModeless();
    AsyncCallFromMainThread(clickOther);
    dialog->UI_IdleUpdate();
    EXPECT_EQ(clicks, 1);
    AsyncCallFromMainThread([&] {
        QEventLoop loop;
        AsyncCallFromMainThread([&] {
            clickOther();
            loop.quit();
        });
        loop.exec();
    });
    dialog->UI_IdleUpdate();
    EXPECT_EQ(clicks, 2);
    dialog->UI_Close(kOK);
    clickOther();
    EXPECT_EQ(clicks, 3) << "and again once the dialog has gone";
}

TEST_F(UI_DialogTest, IdleUpdateLetsTheDialogsOwnWindowBeClicked) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    dialog->UI_ShowModeless();
    dialog->UI_IdleUpdate();
    AsyncCallFromMainThread([&] {
        const QPoint button = GetCancelButton(dialog)->mapTo(GetWindow(dialog), QPoint(5, 5));
        QTest::mouseClick(GetWindow(dialog)->windowHandle(), Qt::LeftButton, Qt::NoModifier, button);
    });
    dialog->UI_IdleUpdate();
    EXPECT_FALSE(dialog->UI_IsOpen());
}

TEST_F(UI_DialogTest, AThousandDialogsLeaveNoWidgetBehind) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const qsizetype before = QApplication::allWidgets().size();
    for (int i = 0; i < 1000; ++i) {
        const ProgressDialogPtr dialog = MakeProgressDialog(i % 2 == 0);
        if (i % 3 == 0) {
            AsyncCallFromMainThread([&] { dialog->UI_Close(kOK); });
            dialog->UI_RunModal();
        } else {
            dialog->UI_ShowModeless();
            dialog->UI_Close(kCancel);
        }
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}

}  // namespace zeltests
