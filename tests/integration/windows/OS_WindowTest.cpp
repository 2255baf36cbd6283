#include <zelui/OS_Window.h>

#include <chrono>
#include <functional>
#include <memory>

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <zelui/OS_ViewContainer.h>
#include <zelui/QtBridge.h>
#include <zelui/UI_OSSubViewAdapter.h>

#include "support/WaitFor.h"

#include "PlatformWindows.h"

namespace zeltests {
namespace {

using zelcore::geom::RectF;
using zelui::qt::GetWindowHandle;
using zelui::qt::NodeWidget;
using namespace zelui::ui;

bool ProcessUntil(const std::function<bool()>& condition) {
    return WaitFor(condition, std::chrono::seconds(20), [] {
        QCoreApplication::processEvents();
        // What a running loop does of its own accord.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
}

/// A window with a scroll area of 300 by 200, in it a tall view, in that an adapter with a window for content.
class OS_WindowTest : public testing::Test {
protected:
    OS_WindowTest() : mRoot(new UI_SubView), mAdapter(new UI_OSSubViewAdapter), mContent(new OS_ViewContainer(false)) {
        mRoot->UI_SetLocalRectF({0, 0, 280, 5000});
        mAdapter->UI_SetLocalRectF({10, 20, 200, 100});
        mAdapter->UI_Show(true);
        mContent->UI_Show(true);
        mAdapter->GetOSViewContainer()->ChildPushBack(mContent);
        mRoot->ChildPushBack(mAdapter);
        mArea->setFrameShape(QFrame::NoFrame);
        mArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        mArea->setWidget(new NodeWidget(mRoot));
        mArea->resize(300, 200);
    }

    void Show() {
        mArea->show();
        ASSERT_TRUE(ProcessUntil([this] { return mWindows.IsViewable(GetContent()); }));
    }
    void ScrollTo(int y) { mArea->verticalScrollBar()->setValue(y); }
    HWND GetContent() const { return mContent->GetPlatformWindow(false); }
    HWND GetContainer() const { return mAdapter->GetOSViewContainer()->GetPlatformWindow(false); }
    HWND GetOutermost() const { return mContent->GetPlatformWindow(true); }
    QRect GetSeen() const { return mWindows.GetSeen(GetContent(), GetOutermost()); }

    const PlatformWindows mWindows;
    const boost::intrusive_ptr<UI_SubView> mRoot;
    const boost::intrusive_ptr<UI_OSSubViewAdapter> mAdapter;
    const boost::intrusive_ptr<OS_ViewContainer> mContent;
    std::unique_ptr<QScrollArea> mArea = std::make_unique<QScrollArea>();
};

TEST_F(OS_WindowTest, ThereIsNoHandleOutsideOfWindows) {
    const boost::intrusive_ptr<OS_ViewContainer> alone(new OS_ViewContainer(false));
    EXPECT_EQ(nullptr, alone->GetPlatformWindow(false));
    EXPECT_EQ(nullptr, alone->GetPlatformWindow(true));
    mRoot->ChildRemove(mAdapter);
    EXPECT_EQ(nullptr, GetContent());
}

TEST_F(OS_WindowTest, AHandleIsKnownToOtherConnectionsAsSoonAsItIsGiven) {
    const HWND content = GetContent();
    ASSERT_NE(nullptr, content);
    EXPECT_TRUE(mWindows.Exists(content));
}

TEST_F(OS_WindowTest, AHandleThatIsAskedForInAShownWindowIsKnownToOthersAtOnceToo) {
    Show();
    const boost::intrusive_ptr<OS_ViewContainer> added(new OS_ViewContainer(false));
    added->UI_Show(true);
    mContent->ChildPushBack(added);
    const HWND window = added->GetPlatformWindow(false);
    EXPECT_TRUE(mWindows.Exists(window));
    EXPECT_EQ(GetContent(), mWindows.GetParent(window));
}

TEST_F(OS_WindowTest, WindowsStandInOneAnotherWithTheSizesOfTheirNodes) {
    Show();
    EXPECT_EQ(GetContainer(), mWindows.GetParent(GetContent()));
    EXPECT_EQ(QRect(0, 0, 200, 100), mWindows.GetFrame(GetContent()));
    EXPECT_EQ(QRect(0, 0, 200, 100), mWindows.GetFrame(GetContainer()));
    EXPECT_EQ(QRect(10, 20, 200, 100), GetSeen());
    EXPECT_EQ(GetWindowHandle(mArea.get()), GetOutermost());
}

TEST_F(OS_WindowTest, TheWindowFollowsItsNode) {
    Show();
    mAdapter->UI_SetLocalRectF({30, 5, 150, 90});
    EXPECT_TRUE(ProcessUntil([this] { return GetSeen() == QRect(30, 5, 150, 90); }));
    mContent->UI_SetLocalRectF({2, 3, 50, 40});
    EXPECT_TRUE(ProcessUntil([this] { return mWindows.GetFrame(GetContent()) == QRect(2, 3, 50, 40); }));
}

TEST_F(OS_WindowTest, ANodeWithoutASizeHasAWindowAllTheSame) {
    mAdapter->UI_SetLocalRectF({0, 0, 0, 0});
    const HWND content = GetContent();
    ASSERT_NE(nullptr, content);
    EXPECT_TRUE(mWindows.Exists(content));
    mAdapter->UI_SetLocalRectF({0, 0, 70, 60});
    mArea->show();
    EXPECT_TRUE(ProcessUntil([&] { return mWindows.GetFrame(content) == QRect(0, 0, 70, 60); }));
    EXPECT_EQ(content, GetContent());
}

TEST_F(OS_WindowTest, ScrollingMovesTheWindowAndCutsItOff) {
    Show();
    ScrollTo(50);
    EXPECT_TRUE(ProcessUntil([this] { return GetSeen() == QRect(10, 0, 200, 70); }));
    mAdapter->UI_SetLocalRectF({10, 180, 200, 100});
    EXPECT_TRUE(ProcessUntil([this] { return GetSeen() == QRect(10, 130, 200, 70); }));
}

TEST_F(OS_WindowTest, ItIsTheSameWindowAfterItWasScrolledAwayOrHidden) {
    Show();
    const HWND content = GetContent();
    ScrollTo(4000);
    EXPECT_TRUE(ProcessUntil([this] { return GetSeen().isEmpty(); }));
    EXPECT_EQ(content, GetContent());
    EXPECT_TRUE(mWindows.Exists(content));
    ScrollTo(0);
    EXPECT_TRUE(ProcessUntil([this] { return GetSeen() == QRect(10, 20, 200, 100); }));
    mAdapter->UI_Show(false);
    EXPECT_TRUE(ProcessUntil([&] { return !mWindows.IsViewable(content); }));
    EXPECT_EQ(content, GetContent());
    mAdapter->UI_Show(true);
    EXPECT_TRUE(ProcessUntil([&] { return mWindows.IsViewable(content); }));
}

TEST_F(OS_WindowTest, TheWindowIsGoneAfterItsNodeLeft) {
    Show();
    const HWND content = GetContent();
    const HWND container = GetContainer();
    mRoot->ChildRemove(mAdapter);
    EXPECT_EQ(nullptr, GetContent());
    EXPECT_TRUE(ProcessUntil([&] { return !mWindows.Exists(content) && !mWindows.Exists(container); }));
}

TEST_F(OS_WindowTest, TheWindowGoesWithTheHostsWindow) {
    Show();
    const HWND content = GetContent();
    mArea.reset();
    EXPECT_TRUE(ProcessUntil([&] { return !mWindows.Exists(content); }));
    EXPECT_FALSE(mContent->UI_IsInWindow());
}

TEST_F(OS_WindowTest, ItIsTheSameWindowInAnotherWindowOfTheHost) {
    Show();
    const HWND content = GetContent();
    QScrollArea other;
    other.resize(300, 200);
    other.setWidget(mArea->takeWidget());
    other.show();
    EXPECT_TRUE(ProcessUntil([&] { return mWindows.IsViewable(GetContent()); }));
    EXPECT_EQ(content, GetContent());
    EXPECT_EQ(GetWindowHandle(&other), GetOutermost());
    EXPECT_FALSE(GetSeen().isEmpty());
}

}  // namespace
}  // namespace zeltests
