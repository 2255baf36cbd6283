#include <limits>
#include <stdexcept>

#include <gtest/gtest.h>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include "NodeTools.h"

namespace zeltests {
namespace {

using zelcore::geom::RectF;
using zelui::qt::GetNode;
using zelui::qt::NodeWidget;
using namespace zelui::ui;

/// A window with a scroll area that shows a list of a hundred rows of 20 units, 300 of them at a time.
class ListStage {
public:
    ListStage() : root(MakeNode({0, 0, 200, 2000})) {
        for (int i = 0; i < 100; ++i) rows.push_back(MakeNode({0, static_cast<float>(20 * i), 200, 20}, root));
        area.setWidget(widget = new NodeWidget(root));
        area.resize(250, 300);
    }

    void ScrollTo(int y) {
        area.verticalScrollBar()->setValue(y);
        Settle();
    }

    TestNodePtr root;
    std::vector<TestNodePtr> rows;
    QScrollArea area;
    NodeWidget* widget;
};

// The widget and its root

TEST(NodeWidgetTest, WantsTheRootOfATree) {
    const TestNodePtr parent = MakeNode({});
    const TestNodePtr child = MakeNode({}, parent);
    EXPECT_THROW(NodeWidget widget(nullptr), std::invalid_argument);
    EXPECT_THROW(NodeWidget widget(child), std::invalid_argument);
    EXPECT_FALSE(child->UI_IsInWindow());
    EXPECT_EQ(parent.get(), child->UI_GetParentNode());
}

TEST(NodeWidgetTest, ShowsItsRootAndHasItsSizeWhateverItsPlace) {
    const TestNodePtr root(new TestNode);
    root->UI_SetLocalRectF({7, 9, 120, 80});
    NodeWidget widget(root);
    EXPECT_TRUE(root->UI_IsShown());
    EXPECT_EQ(QSize(120, 80), widget.size());
    EXPECT_EQ(QSize(120, 80), widget.sizeHint());
    EXPECT_EQ(QSize(120, 80), widget.minimumSizeHint());
    ShowActive(widget);
    EXPECT_EQ(QRect(0, 0, 120, 80), WidgetOf(*root)->geometry());
    root->UI_SetLocalRectF({-3, 1, 60, 50});
    EXPECT_EQ(QSize(60, 50), widget.size());
    EXPECT_EQ(QRect(0, 0, 60, 50), WidgetOf(*root)->geometry());
}

TEST(NodeWidgetTest, AFractionalRootAndItsSurfaceAreOfOneSize) {
    const TestNodePtr root = MakeNode({0.4f, 0.4f, 10.3f, 10.4f});
    NodeWidget widget(root);
    ShowActive(widget);
    EXPECT_EQ(widget.size(), WidgetOf(*root)->size());
}

TEST(NodeWidgetTest, KeepsTheRootsSizeInWhateverStretchesIt) {
    const TestNodePtr root = MakeNode({0, 0, 100, 50});
    QTabWidget tabs;
    NodeWidget* const widget = new NodeWidget(root);
    tabs.addTab(widget, "tab");
    tabs.resize(400, 300);
    ShowActive(tabs);
    EXPECT_EQ(QSize(100, 50), widget->size());
    root->UI_SetLocalRectF({0, 0, 150, 60});
    Settle();
    EXPECT_EQ(QSize(150, 60), widget->size());
}

TEST(NodeWidgetTest, ALayoutFollowsTheRoot) {
    const TestNodePtr root = MakeNode({0, 0, 100, 50});
    QWidget window;
    QVBoxLayout layout(&window);
    NodeWidget widget(root);
    QLineEdit below;
    layout.addWidget(&widget);
    layout.addWidget(&below);
    ShowActive(window);
    const int before = below.y();
    root->UI_SetLocalRectF({0, 0, 100, 150});
    EXPECT_TRUE(ProcessUntil([&] { return below.y() >= before + 100; }));
}

TEST(NodeWidgetTest, TheRootOutlivesTheWidget) {
    const TestNodePtr root = MakeNode({0, 0, 20, 20});
    const TestNodePtr child = MakeNode({0, 0, 10, 10}, root);
    {
        NodeWidget widget(root);
        ShowActive(widget);
        EXPECT_NE(nullptr, WidgetOf(*child));
    }
    EXPECT_FALSE(child->UI_IsInWindow());
    EXPECT_EQ(nullptr, WidgetOf(*child));
    EXPECT_EQ(1, root->GetRefCount());
    root->UI_SetLocalRectF({0, 0, 30, 30});
    root->UI_Invalidate();
    root->UI_UpdateNow();
}

TEST(NodeWidgetTest, TheWidgetHoldsItsRoot) {
    const std::size_t before = UI_NodeManager::Get(false).GetNodeCount();
    {
        NodeWidget widget(MakeNode({0, 0, 20, 20}));
        ShowActive(widget);
        EXPECT_EQ(before + 1, UI_NodeManager::Get(false).GetNodeCount());
        EXPECT_EQ(1, widget.GetRoot()->GetRefCount());
    }
    EXPECT_EQ(before, UI_NodeManager::Get(false).GetNodeCount());
}

TEST(NodeWidgetTest, AnotherWidgetTakesTheRootOver) {
    const TestNodePtr root = MakeNode({0, 0, 20, 20});
    const TestNodePtr child = MakeNode({0, 0, 10, 10}, root);
    NodeWidget first(root);
    ShowActive(first);
    NodeWidget second(root);
    ShowActive(second);
    EXPECT_EQ(nullptr, first.GetRoot());
    EXPECT_EQ(QSize(0, 0), first.sizeHint());
    EXPECT_EQ(root, second.GetRoot());
    ASSERT_NE(nullptr, WidgetOf(*child));
    EXPECT_TRUE(second.isAncestorOf(WidgetOf(*child)));
    first.resize(5, 5);
    Settle();
    EXPECT_TRUE(second.isAncestorOf(WidgetOf(*child)));
}

TEST(NodeWidgetTest, TheSameRootAgainInTheSameWindowWorks) {
    const TestNodePtr root = MakeNode({0, 0, 20, 20});
    QWidget window;
    auto first = std::make_unique<NodeWidget>(root, &window);
    auto second = std::make_unique<NodeWidget>(root, &window);
    first.reset();
    ShowActive(window);
    EXPECT_TRUE(root->UI_IsInWindow());
    EXPECT_TRUE(second->isAncestorOf(WidgetOf(*root)));
}

TEST(NodeWidgetTest, AnExceptionWhileItIsMadeLeavesTheRootAsItWas) {
    const TestNodePtr root = MakeNode({0, 0, 20, 20});
    root->onChanged = [&](int change) {
        if (change == kNodePlaceChanged && root->UI_IsInWindow()) throw std::runtime_error("no");
    };
    EXPECT_THROW(NodeWidget widget(root), std::runtime_error);
    EXPECT_FALSE(root->UI_IsInWindow());
    root->onChanged = nullptr;
    Theme::Get().Choose(Theme::kDark);
    Theme::Get().Choose(Theme::kSystem);
    NodeWidget widget(root);
    EXPECT_TRUE(root->UI_IsInWindow());
}

TEST(NodeWidgetTest, AnExceptionWhileItGoesEndsNothing) {
    const TestNodePtr root = MakeNode({0, 0, 20, 20});
    {
        NodeWidget widget(root);
        root->onChanged = [&](int) { throw std::runtime_error("no"); };
    }
    EXPECT_FALSE(root->UI_IsInWindow());
}

TEST(NodeWidgetTest, AWidgetLeadsToItsNode) {
    const TestNodePtr root = MakeNode({0, 0, 20, 20});
    const TestNodePtr child = MakeNode({0, 0, 10, 10}, root);
    NodeWidget widget(root);
    ShowActive(widget);
    EXPECT_EQ(child.get(), GetNode(WidgetOf(*child)));
    EXPECT_EQ(nullptr, GetNode(&widget));
    EXPECT_EQ(nullptr, GetNode(nullptr));
    QWidget* const old = WidgetOf(*child);
    root->ChildRemove(child);
    EXPECT_EQ(root.get(), GetNode(old));
}

// What is in view

TEST(NodeWidgetTest, AHiddenWindowHasNoWidgetsUntilItIsShown) {
    ListStage stage;
    Settle();
    EXPECT_EQ(nullptr, WidgetOf(*stage.root));
    ShowActive(stage.area);
    EXPECT_NE(nullptr, WidgetOf(*stage.rows[0]));
}

TEST(NodeWidgetTest, OnlyWhatIsInViewHasWidgets) {
    ListStage stage;
    ShowActive(stage.area);
    for (const std::size_t seen : {0u, 5u, 14u}) {
        ASSERT_NE(nullptr, WidgetOf(*stage.rows[seen])) << seen;
        EXPECT_TRUE(WidgetOf(*stage.rows[seen])->isVisible());
    }
    EXPECT_EQ(nullptr, WidgetOf(*stage.rows[60]));
    stage.ScrollTo(1700);
    EXPECT_NE(nullptr, WidgetOf(*stage.rows[99]));
    EXPECT_EQ(nullptr, WidgetOf(*stage.rows[0]));
    EXPECT_NE(nullptr, WidgetOf(*stage.root));
}

TEST(NodeWidgetTest, ScrollingALittleToAndFroKeepsTheWidgets) {
    ListStage stage;
    ShowActive(stage.area);
    QWidget* const first = WidgetOf(*stage.rows[0]);
    stage.ScrollTo(400);
    EXPECT_EQ(first, WidgetOf(*stage.rows[0]));
    stage.ScrollTo(0);
    EXPECT_EQ(first, WidgetOf(*stage.rows[0]));
}

TEST(NodeWidgetTest, WhatScrollsIntoViewIsThereAtOnce) {
    ListStage stage;
    ShowActive(stage.area);
    stage.area.verticalScrollBar()->setValue(1000);
    ASSERT_NE(nullptr, WidgetOf(*stage.rows[55]));
    EXPECT_TRUE(WidgetOf(*stage.rows[55])->isVisible());
}

TEST(NodeWidgetTest, TheHolderOfTheFocusKeepsItsWidgetOutOfView) {
    ListStage stage;
    stage.rows[0]->wantsFocus = true;
    ShowActive(stage.area);
    ASSERT_TRUE(stage.rows[0]->UI_GainKeyboardFocus(kFocusByProgram));
    stage.ScrollTo(1700);
    EXPECT_NE(nullptr, WidgetOf(*stage.rows[0]));
    EXPECT_EQ(nullptr, WidgetOf(*stage.rows[1]));
    EXPECT_TRUE(stage.rows[0]->UI_HasKeyboardFocus(false));
    stage.area.setFocus();
    stage.ScrollTo(1690);
    EXPECT_EQ(nullptr, WidgetOf(*stage.rows[0]));
}

TEST(NodeWidgetTest, WhatIsDeepInAContainerIsMadeAndLetGoWithTheView) {
    const TestNodePtr root = MakeNode({0, 0, 200, 4000});
    const TestNodePtr outer = MakeNode({10, 10, 180, 3980}, root);
    const TestNodePtr inner = MakeNode({0, 500, 180, 3000}, outer);
    const TestNodePtr above = MakeNode({0, -480, 180, 20}, inner);
    const TestNodePtr near = MakeNode({0, 0, 180, 20}, inner);
    const TestNodePtr far = MakeNode({0, 2900, 180, 20}, inner);
    QScrollArea area;
    area.setWidget(new NodeWidget(root));
    area.resize(250, 300);
    ShowActive(area);
    EXPECT_EQ(nullptr, WidgetOf(*near));
    area.verticalScrollBar()->setValue(500);
    EXPECT_NE(nullptr, WidgetOf(*near));
    EXPECT_EQ(nullptr, WidgetOf(*above)) << "cut off by its parent";
    EXPECT_EQ(nullptr, WidgetOf(*far));
    area.verticalScrollBar()->setValue(3300);
    Settle();
    EXPECT_EQ(nullptr, WidgetOf(*near));
    EXPECT_NE(nullptr, WidgetOf(*far));
}

TEST(NodeWidgetTest, HiddenNodesHaveNoWidgetsUntilTheyAreShown) {
    const TestNodePtr root = MakeNode({0, 0, 100, 100});
    const TestNodePtr hidden = MakeNode({0, 0, 50, 50}, root);
    const TestNodePtr inside = MakeNode({0, 0, 20, 20}, hidden);
    hidden->UI_Show(false);
    NodeWidget widget(root);
    ShowActive(widget);
    EXPECT_EQ(nullptr, WidgetOf(*hidden));
    EXPECT_EQ(nullptr, WidgetOf(*inside));
    hidden->UI_Show(true);
    Settle();
    ASSERT_NE(nullptr, WidgetOf(*inside));
    EXPECT_TRUE(WidgetOf(*inside)->isVisible());
    hidden->UI_Show(false);
    EXPECT_FALSE(WidgetOf(*inside)->isVisible());
    hidden->UI_Show(true);
    EXPECT_TRUE(WidgetOf(*inside)->isVisible());
}

TEST(NodeWidgetTest, WhatIsAddedAndGrowsInAWindowAppears) {
    const TestNodePtr root = MakeNode({0, 0, 100, 100});
    NodeWidget widget(root);
    ShowActive(widget);
    const TestNodePtr child = MakeNode({10, 10, 0, 0}, root);
    Settle();
    EXPECT_EQ(nullptr, WidgetOf(*child));
    child->UI_SetLocalRectF({10, 10, 20, 20});
    Settle();
    ASSERT_NE(nullptr, WidgetOf(*child));
    EXPECT_EQ(QRect(10, 10, 20, 20), WidgetOf(*child)->geometry());
}

TEST(NodeWidgetTest, DisablingReachesTheWidgets) {
    const TestNodePtr root = MakeNode({0, 0, 100, 100});
    const TestNodePtr child = MakeNode({0, 0, 20, 20}, root);
    NodeWidget widget(root);
    ShowActive(widget);
    root->UI_SetDisabled(true);
    EXPECT_FALSE(WidgetOf(*child)->isEnabled());
    child->UI_SetDisabled(true);
    root->UI_SetDisabled(false);
    EXPECT_FALSE(WidgetOf(*child)->isEnabled());
    child->UI_SetDisabled(false);
    EXPECT_TRUE(WidgetOf(*child)->isEnabled());
}

TEST(NodeWidgetTest, TheLaterChildStaysOnTopAfterScrolling) {
    const TestNodePtr root = MakeNode({0, 0, 200, 4000});
    const TestNodePtr beneath = MakeNode({0, 0, 200, 20}, root);
    const TestNodePtr middle = MakeNode({0, 0, 200, 3000}, root);
    const TestNodePtr top = MakeNode({0, 10, 200, 20}, root);
    QScrollArea area;
    area.setWidget(new NodeWidget(root));
    area.resize(250, 300);
    ShowActive(area);
    area.verticalScrollBar()->setValue(2500);
    Settle();
    ASSERT_EQ(nullptr, WidgetOf(*beneath));
    ASSERT_NE(nullptr, WidgetOf(*middle));
    area.verticalScrollBar()->setValue(0);
    Settle();
    EXPECT_EQ(WidgetOf(*middle), WidgetOf(*root)->childAt(5, 5));
    EXPECT_EQ(WidgetOf(*top), WidgetOf(*root)->childAt(5, 15));
    middle->UI_Show(false);
    EXPECT_EQ(WidgetOf(*beneath), WidgetOf(*root)->childAt(5, 5));
}

TEST(NodeWidgetTest, AnEarlierChildThatTheFocusBringsIntoViewStaysBeneath) {
    const TestNodePtr root = MakeNode({0, 0, 200, 4000});
    const TestNodePtr beneath = MakeNode({0, 0, 200, 20}, root);
    const TestNodePtr top = MakeNode({0, 10, 200, 3500}, root);
    beneath->wantsFocus = true;
    QScrollArea area;
    area.setWidget(new NodeWidget(root));
    area.resize(250, 300);
    area.verticalScrollBar()->setValue(3000);
    ShowActive(area);
    area.verticalScrollBar()->setValue(3000);
    Settle();
    area.setFocus();
    area.verticalScrollBar()->setValue(2990);
    Settle();
    ASSERT_EQ(nullptr, WidgetOf(*beneath));
    ASSERT_TRUE(beneath->UI_GainKeyboardFocus(kFocusByProgram));
    Settle();
    EXPECT_EQ(0, area.verticalScrollBar()->value());
    EXPECT_EQ(WidgetOf(*top), WidgetOf(*root)->childAt(5, 15));
}

TEST(NodeWidgetTest, AChildThatIsAddedAgainIsOnTop) {
    const TestNodePtr root = MakeNode({0, 0, 100, 100});
    const TestNodePtr first = MakeNode({0, 0, 50, 50}, root);
    const TestNodePtr second = MakeNode({0, 0, 50, 50}, root);
    NodeWidget widget(root);
    ShowActive(widget);
    EXPECT_EQ(WidgetOf(*second), WidgetOf(*root)->childAt(5, 5));
    root->ChildPushBack(first);
    Settle();
    EXPECT_EQ(WidgetOf(*first), WidgetOf(*root)->childAt(5, 5));
}

TEST(NodeWidgetTest, AListOnATabBehindAnotherIsMadeWhenItComesToTheFront) {
    QTabWidget tabs;
    auto stage = std::make_unique<ListStage>();
    tabs.addTab(new QWidget, "front");
    tabs.addTab(&stage->area, "list");
    tabs.resize(300, 300);
    ShowActive(tabs);
    EXPECT_EQ(nullptr, WidgetOf(*stage->rows[0]));
    tabs.setCurrentIndex(1);
    Settle();
    EXPECT_NE(nullptr, WidgetOf(*stage->rows[0]));
    stage->area.setParent(nullptr);
}

TEST(NodeWidgetTest, ASplitterThatOpensShowsWhatComesIntoView) {
    ListStage stage;
    QSplitter splitter(Qt::Vertical);
    stage.area.setMinimumHeight(0);
    splitter.addWidget(new QWidget);
    splitter.addWidget(&stage.area);
    splitter.resize(300, 900);
    splitter.setSizes({800, 100});
    ShowActive(splitter);
    ASSERT_EQ(nullptr, WidgetOf(*stage.rows[30]));
    splitter.setSizes({100, 800});
    Settle();
    EXPECT_NE(nullptr, WidgetOf(*stage.rows[30]));
    stage.area.setParent(nullptr);
}

TEST(NodeWidgetTest, AScrollAreaInAScrollAreaIsFollowed) {
    ListStage stage;
    QScrollArea outer;
    QWidget* const content = new QWidget;
    content->resize(300, 3000);
    stage.area.setParent(content);
    stage.area.move(0, 2500);
    stage.area.show();
    outer.setWidget(content);
    outer.resize(320, 320);
    ShowActive(outer);
    EXPECT_EQ(nullptr, WidgetOf(*stage.rows[0]));
    outer.verticalScrollBar()->setValue(2500);
    Settle();
    EXPECT_NE(nullptr, WidgetOf(*stage.rows[0]));
    stage.area.setParent(nullptr);
}

TEST(NodeWidgetTest, AnotherParentIsFollowed) {
    QWidget first;
    QWidget second;
    first.resize(300, 300);
    second.resize(300, 300);
    const TestNodePtr root = MakeNode({0, 0, 200, 2000});
    const TestNodePtr row = MakeNode({0, 1000, 200, 20}, root);
    NodeWidget* const widget = new NodeWidget(root, &first);
    ShowActive(first);
    ShowActive(second);
    widget->setParent(&second);
    widget->show();
    Settle();
    EXPECT_TRUE(WidgetOf(*root)->isVisible());
    EXPECT_EQ(nullptr, WidgetOf(*row));
    widget->move(0, -900);
    Settle();
    EXPECT_NE(nullptr, WidgetOf(*row));
}

TEST(NodeWidgetTest, AnAncestorThatMovesToAnotherWindowIsFollowed) {
    ListStage stage;
    QWidget first;
    QWidget second;
    QWidget* const panel = new QWidget(&first);
    panel->resize(300, 400);
    stage.area.setParent(panel);
    ShowActive(first);
    ShowActive(second);
    second.resize(300, 60);
    panel->setParent(&second);
    panel->show();
    Settle();
    second.resize(300, 400);
    Settle();
    stage.ScrollTo(1000);
    EXPECT_NE(nullptr, WidgetOf(*stage.rows[55]));
    stage.area.setParent(nullptr);
}

TEST(NodeWidgetTest, AWindowThatGoesWithTheFocusInsideIsLeftInOrder) {
    const TestNodePtr root = MakeNode({0, 0, 100, 100});
    const TestNodePtr child = MakeNode({0, 0, 20, 20}, root);
    child->wantsFocus = true;
    {
        QWidget window;
        QVBoxLayout layout(&window);
        layout.addWidget(new QLineEdit);
        layout.addWidget(new NodeWidget(root));
        layout.addWidget(new QLineEdit);
        ShowActive(window);
        ASSERT_TRUE(child->UI_GainKeyboardFocus(kFocusByProgram));
    }
    EXPECT_FALSE(child->UI_IsInWindow());
    EXPECT_FALSE(child->UI_HasKeyboardFocus(true));
}

TEST(NodeWidgetTest, TenThousandRowsHaveAsManyWidgetsAsAHundred) {
    const auto count = [](int rows) {
        const TestNodePtr root = MakeNode({0, 0, 200, 20.0f * static_cast<float>(rows)});
        for (int i = 0; i < rows; ++i) MakeNode({0, static_cast<float>(20 * i), 200, 20}, root);
        QScrollArea area;
        NodeWidget* const widget = new NodeWidget(root);
        area.setWidget(widget);
        area.resize(250, 300);
        ShowActive(area);
        area.verticalScrollBar()->setValue(area.verticalScrollBar()->maximum());
        area.verticalScrollBar()->setValue(0);
        Settle();
        return widget->findChildren<QWidget*>().size();
    };
    EXPECT_EQ(count(100), count(10000));
}

TEST(NodeWidgetTest, ARootOfTheLargestSizeStandsInAScrollArea) {
    const TestNodePtr root = MakeNode({0, 0, 16000000, 16000000});
    const TestNodePtr child = MakeNode({15999900, 15999900, 100, 100}, root);
    QScrollArea area;
    NodeWidget* const widget = new NodeWidget(root);
    area.setWidget(widget);
    area.resize(250, 250);
    ShowActive(area);
    EXPECT_EQ(QSize(16000000, 16000000), widget->size());
    area.horizontalScrollBar()->setValue(area.horizontalScrollBar()->maximum());
    area.verticalScrollBar()->setValue(area.verticalScrollBar()->maximum());
    Settle();
    ASSERT_NE(nullptr, WidgetOf(*child));
    EXPECT_TRUE(WidgetOf(*child)->isVisible());
}

}  // namespace
}  // namespace zeltests
