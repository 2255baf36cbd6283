#include <zelui/UI_OSSubViewAdapter.h>

#include <gtest/gtest.h>
#include <QScrollArea>
#include <QScrollBar>
#include <zelui/OS_ViewContainer.h>

#include "NodeTools.h"

namespace zeltests {
namespace {

using zelcore::geom::RectF;
using zelui::qt::NodeWidget;
using namespace zelui::ui;

class Adapter : public UI_OSSubViewAdapter {
public:
    using UI_OSSubViewAdapter::ReleaseOSViewContainer;
};
typedef boost::intrusive_ptr<Adapter> AdapterPtr;
typedef boost::intrusive_ptr<OS_ViewContainer> WindowPtr;

AdapterPtr MakeAdapter(const RectF& frame) {
    const AdapterPtr adapter(new Adapter);
    adapter->UI_SetLocalRectF(frame);
    adapter->UI_Show(true);
    return adapter;
}

WindowPtr MakeWindow(OS_Window& parent) {
    const WindowPtr window(new OS_ViewContainer(false));
    window->UI_Show(true);
    parent.ChildPushBack(window);
    return window;
}

TEST(UI_OSSubViewAdapterTest, HasAShownContainerOfItsSizeFromTheStart) {
    const AdapterPtr adapter = MakeAdapter({10, 20, 300, 200});
    OS_Window* const container = adapter->GetOSViewContainer();
    ASSERT_NE(nullptr, container);
    EXPECT_TRUE(container->UI_IsShown());
    EXPECT_EQ(adapter.get(), container->UI_GetParentNode());
    EXPECT_EQ((RectF{0, 0, 300, 200}), container->UI_GetLocalRectF());
    adapter->UI_SetLocalRectF({0, 0, 50, 60});
    EXPECT_EQ((RectF{0, 0, 50, 60}), container->UI_GetLocalRectF());
}

TEST(UI_OSSubViewAdapterTest, OnceItsFrameIsSetTheContainerKeepsIt) {
    const AdapterPtr adapter = MakeAdapter({0, 0, 300, 200});
    adapter->GetOSViewContainer()->UI_SetLocalRectF({0, 0, 300, 200});
    adapter->UI_SetLocalRectF({0, 0, 50, 60});
    EXPECT_EQ((RectF{0, 0, 300, 200}), adapter->GetOSViewContainer()->UI_GetLocalRectF());
}

TEST(UI_OSSubViewAdapterTest, WindowsInWindowsFillThemTooUntilTheirFrameIsSet) {
    const AdapterPtr adapter = MakeAdapter({0, 0, 300, 200});
    const WindowPtr outer = MakeWindow(*adapter->GetOSViewContainer());
    const WindowPtr inner = MakeWindow(*outer);
    EXPECT_EQ((RectF{0, 0, 300, 200}), inner->UI_GetLocalRectF());
    inner->UI_SetLocalRect({5, 5, 10, 10});
    adapter->UI_SetLocalRectF({0, 0, 50, 60});
    EXPECT_EQ((RectF{0, 0, 50, 60}), outer->UI_GetLocalRectF());
    EXPECT_EQ((RectF{5, 5, 10, 10}), inner->UI_GetLocalRectF());
}

TEST(UI_OSSubViewAdapterTest, AFrameThatIsNoneDoesNotEndTheFilling) {
    const AdapterPtr adapter = MakeAdapter({0, 0, 300, 200});
    adapter->GetOSViewContainer()->UI_SetLocalRectF({0, 0, 3e38f, 1});
    adapter->UI_SetLocalRectF({0, 0, 50, 60});
    EXPECT_EQ(50, adapter->GetOSViewContainer()->UI_GetLocalRectF().width);
}

TEST(UI_OSSubViewAdapterTest, TheViewIsTheContainerUntilAWindowIsAdded) {
    const AdapterPtr adapter = MakeAdapter({0, 0, 300, 200});
    OS_Window* const container = adapter->GetOSViewContainer();
    EXPECT_EQ(container, adapter->GetOSView());
    container->ChildPushBack(MakeNode({0, 0, 10, 10}));
    EXPECT_EQ(container, adapter->GetOSView());
    const WindowPtr first = MakeWindow(*container);
    const WindowPtr second = MakeWindow(*container);
    EXPECT_EQ(first.get(), adapter->GetOSView());
    container->ChildRemove(first);
    EXPECT_EQ(second.get(), adapter->GetOSView());
}

TEST(UI_OSSubViewAdapterTest, WithoutItsContainerItHasNoView) {
    const std::size_t before = UI_NodeManager::Get(false).GetNodeCount();
    const AdapterPtr adapter = MakeAdapter({0, 0, 300, 200});
    MakeWindow(*adapter->GetOSViewContainer());
    adapter->ReleaseOSViewContainer();
    adapter->ReleaseOSViewContainer();
    EXPECT_EQ(nullptr, adapter->GetOSViewContainer());
    EXPECT_EQ(nullptr, adapter->GetOSView());
    EXPECT_EQ(0u, adapter->ChildCount());
    EXPECT_EQ(before + 1, UI_NodeManager::Get(false).GetNodeCount());
}

TEST(UI_OSSubViewAdapterTest, AContainerThatIsHeldOutlivesTheAdapter) {
    AdapterPtr adapter = MakeAdapter({0, 0, 300, 200});
    const boost::intrusive_ptr<OS_Window> container(adapter->GetOSViewContainer());
    adapter.reset();
    EXPECT_EQ(nullptr, container->UI_GetParentNode());
    EXPECT_EQ(300, container->UI_GetLocalRectF().width);
}

TEST(UI_OSSubViewAdapterTest, AWindowTakesTheFocusOnlyWhenItWasMadeTo) {
    const boost::intrusive_ptr<OS_ViewContainer> deaf(new OS_ViewContainer(false));
    const boost::intrusive_ptr<OS_ViewContainer> taking(new OS_ViewContainer(true));
    EXPECT_FALSE(deaf->UI_WantsKeyboardFocus());
    EXPECT_TRUE(taking->UI_WantsKeyboardFocus());
    EXPECT_TRUE(taking->UI_WantsKeyboardFocusFromAdvance());
}

TEST(UI_OSSubViewAdapterTest, WithoutADisplayThereIsNoHandle) {
    const AdapterPtr adapter = MakeAdapter({0, 0, 300, 200});
    EXPECT_EQ(nullptr, adapter->GetOSView()->GetPlatformWindow(false));
    NodeWidget widget(adapter);
    ShowActive(widget);
    EXPECT_EQ(nullptr, adapter->GetOSView()->GetPlatformWindow(false));
    EXPECT_EQ(nullptr, adapter->GetOSView()->GetPlatformWindow(true));
}

TEST(UI_OSSubViewAdapterTest, AWindowIsKeptOutOfView) {
    const TestNodePtr root = MakeNode({0, 0, 200, 5000});
    const TestNodePtr around = MakeNode({0, 0, 200, 100}, root);
    const AdapterPtr adapter = MakeAdapter({0, 0, 100, 100});
    around->ChildPushBack(adapter);
    QScrollArea area;
    area.setWidget(new NodeWidget(root));
    area.resize(250, 250);
    ShowActive(area);
    QWidget* const window = WidgetOf(*adapter->GetOSView());
    ASSERT_NE(nullptr, window);
    EXPECT_TRUE(window->testAttribute(Qt::WA_NativeWindow));
    area.verticalScrollBar()->setValue(4500);
    Settle();
    EXPECT_EQ(window, WidgetOf(*adapter->GetOSView()));
    around->UI_Show(false);
    Settle();
    EXPECT_EQ(window, WidgetOf(*adapter->GetOSView()));
    root->ChildRemove(around);
    EXPECT_EQ(nullptr, WidgetOf(*adapter->GetOSView()));
}

}  // namespace
}  // namespace zeltests
