#include <zelui/UI_Container.h>

#include <stdexcept>

#include <gtest/gtest.h>

#include "NodeTools.h"

namespace zeltests {
namespace {

using zelui::qt::NodeWidget;
using namespace zelui::ui;

TEST(UI_ContainerTest, ChildrenStandInTheOrderOfTheirComing) {
    const TestNodePtr parent = MakeNode({});
    const TestNodePtr first = MakeNode({}, parent);
    const TestNodePtr second = MakeNode({}, parent);
    ASSERT_EQ(2u, parent->ChildCount());
    EXPECT_EQ(first, parent->ChildAt(0));
    EXPECT_EQ(second, parent->ChildAt(1));
    EXPECT_EQ(nullptr, parent->ChildAt(2));
    EXPECT_EQ(nullptr, parent->ChildAt(static_cast<std::size_t>(-1)));
    EXPECT_EQ(parent.get(), first->UI_GetParentNode());
    EXPECT_EQ(2, first->GetRefCount());
}

TEST(UI_ContainerTest, NullIsNoChild) {
    const TestNodePtr parent = MakeNode({});
    EXPECT_THROW(parent->ChildPushBack(nullptr), std::invalid_argument);
    parent->ChildRemove(nullptr);
    EXPECT_EQ(0u, parent->ChildCount());
}

TEST(UI_ContainerTest, ANodeIsNotPartOfItself) {
    const TestNodePtr parent = MakeNode({});
    const TestNodePtr child = MakeNode({}, parent);
    const TestNodePtr grandchild = MakeNode({}, child);
    EXPECT_THROW(parent->ChildPushBack(parent), std::invalid_argument);
    EXPECT_THROW(grandchild->ChildPushBack(parent), std::invalid_argument);
    EXPECT_THROW(grandchild->ChildPushBack(child), std::invalid_argument);
    EXPECT_EQ(parent.get(), child->UI_GetParentNode());
    EXPECT_EQ(nullptr, parent->UI_GetParentNode());
    EXPECT_EQ(0u, grandchild->ChildCount());
}

TEST(UI_ContainerTest, AChildHasOneParent) {
    const TestNodePtr first = MakeNode({});
    const TestNodePtr second = MakeNode({});
    const TestNodePtr child = MakeNode({}, first);
    second->ChildPushBack(child);
    EXPECT_EQ(0u, first->ChildCount());
    EXPECT_EQ(1u, second->ChildCount());
    EXPECT_EQ(second.get(), child->UI_GetParentNode());
}

TEST(UI_ContainerTest, AChildThatIsAddedAgainBecomesTheLast) {
    const TestNodePtr parent = MakeNode({});
    const TestNodePtr first = MakeNode({}, parent);
    const TestNodePtr second = MakeNode({}, parent);
    parent->ChildPushBack(parent->ChildAt(0));
    ASSERT_EQ(2u, parent->ChildCount());
    EXPECT_EQ(second, parent->ChildAt(0));
    EXPECT_EQ(first, parent->ChildAt(1));
}

TEST(UI_ContainerTest, TakingAwayWhatIsNoChildChangesNothing) {
    const TestNodePtr parent = MakeNode({});
    const TestNodePtr other = MakeNode({});
    const TestNodePtr child = MakeNode({}, parent);
    other->ChildRemove(child);
    EXPECT_EQ(parent.get(), child->UI_GetParentNode());
    EXPECT_EQ(1u, parent->ChildCount());
}

TEST(UI_ContainerTest, TheLastReferenceMayBeTheContainersOwn) {
    const std::size_t before = UI_NodeManager::Get(false).GetNodeCount();
    const TestNodePtr parent = MakeNode({});
    parent->ChildPushBack(new TestNode);
    parent->ChildRemove(parent->ChildAt(0));
    EXPECT_EQ(0u, parent->ChildCount());
    EXPECT_EQ(before + 1, UI_NodeManager::Get(false).GetNodeCount());
}

TEST(UI_ContainerTest, ChildrenOutliveTheirParent) {
    TestNodePtr parent = MakeNode({});
    const TestNodePtr child = MakeNode({}, parent);
    const TestNodePtr grandchild = MakeNode({}, child);
    parent.reset();
    EXPECT_EQ(nullptr, child->UI_GetParentNode());
    EXPECT_EQ(1, child->GetRefCount());
    EXPECT_EQ(child.get(), grandchild->UI_GetParentNode());
}

TEST(UI_ContainerTest, ChildrenGoWithTheirParent) {
    const std::size_t before = UI_NodeManager::Get(false).GetNodeCount();
    TestNodePtr parent = MakeNode({});
    for (int i = 0; i < 10; ++i) MakeNode({}, MakeNode({}, parent));
    EXPECT_EQ(before + 21, UI_NodeManager::Get(false).GetNodeCount());
    parent.reset();
    EXPECT_EQ(before, UI_NodeManager::Get(false).GetNodeCount());
}

TEST(UI_ContainerTest, MovingBetweenWindowsIsToldAsLeavingAndComing) {
    const TestNodePtr first = MakeNode({0, 0, 20, 20});
    const TestNodePtr second = MakeNode({0, 0, 20, 20});
    const TestNodePtr child = MakeNode({0, 0, 10, 10}, first);
    NodeWidget firstWidget(first);
    NodeWidget secondWidget(second);
    ShowActive(firstWidget);
    ShowActive(secondWidget);
    child->Forget();
    second->ChildPushBack(child);
    EXPECT_EQ(2, child->Count(kNodePlaceChanged));
    Settle();
    ASSERT_NE(nullptr, WidgetOf(*child));
    EXPECT_TRUE(secondWidget.isAncestorOf(WidgetOf(*child)));
}

TEST(UI_ContainerTest, TheRootOfAWindowThatBecomesAChildLeavesThatWindow) {
    const TestNodePtr root = MakeNode({0, 0, 20, 20});
    NodeWidget widget(root);
    ShowActive(widget);
    const TestNodePtr parent = MakeNode({0, 0, 20, 20});
    parent->ChildPushBack(root);
    EXPECT_EQ(nullptr, widget.GetRoot());
    EXPECT_FALSE(root->UI_IsInWindow());
    EXPECT_EQ(nullptr, WidgetOf(*root));
    Settle();
    EXPECT_EQ(nullptr, WidgetOf(*root));
    NodeWidget other(parent);
    ShowActive(other);
    ASSERT_NE(nullptr, WidgetOf(*root));
    EXPECT_TRUE(other.isAncestorOf(WidgetOf(*root)));
}

TEST(UI_ContainerTest, WhoMovesAChildThatIsBeingMovedHasTheLastWord) {
    const TestNodePtr from = MakeNode({0, 0, 20, 20});
    const TestNodePtr to = MakeNode({});
    const TestNodePtr elsewhere = MakeNode({});
    const TestNodePtr child = MakeNode({}, from);
    NodeWidget widget(from);
    child->onChanged = [&](int change) {
        if (change == kNodePlaceChanged) elsewhere->ChildPushBack(child);
    };
    to->ChildPushBack(child);
    EXPECT_EQ(elsewhere.get(), child->UI_GetParentNode());
    EXPECT_EQ(0u, from->ChildCount());
    EXPECT_EQ(0u, to->ChildCount());
    EXPECT_EQ(1u, elsewhere->ChildCount());
}

}  // namespace
}  // namespace zeltests
