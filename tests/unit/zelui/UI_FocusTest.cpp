#include <stdexcept>

#include <gmock/gmock.h>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

#include "NodeTools.h"

namespace zeltests {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using zelui::qt::NodeWidget;
using namespace zelui::ui;

/// A window of the host: a line of text, the node tree, another line of text.
class UI_FocusTest : public testing::Test {
protected:
    UI_FocusTest() : root(MakeNode({0, 0, 100, 100})) {
        layout.addWidget(&before);
        layout.addWidget(widget = new NodeWidget(root));
        layout.addWidget(&after);
        QWidget::setTabOrder(&before, widget);
        QWidget::setTabOrder(widget, &after);
    }

    TestNodePtr AddStop(const TestNodePtr& parent) {
        const TestNodePtr node = MakeNode({0, 10.0f * static_cast<float>(parent->ChildCount()), 50, 10}, parent);
        node->wantsFocus = true;
        return node;
    }
    void Show() {
        ShowActive(window);
        before.setFocus();
    }
    static void Tab() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); }
    static void BackTab() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ShiftModifier); }
    TestNode* GetFocus() const { return static_cast<TestNode*>(root->UI_GetKeyboardFocusLeafNode()); }

    QWidget window;
    QVBoxLayout layout{&window};
    QLineEdit before;
    QLineEdit after;
    TestNodePtr root;
    NodeWidget* widget;
};

TEST_F(UI_FocusTest, NobodyHasItAtFirst) {
    const TestNodePtr stop = AddStop(root);
    EXPECT_EQ(nullptr, root->UI_GetKeyboardFocusLeafNode());
    EXPECT_FALSE(root->UI_HasKeyboardFocus(true));
    Show();
    EXPECT_EQ(nullptr, root->UI_GetKeyboardFocusLeafNode());
    EXPECT_EQ(nullptr, MakeNode({})->UI_GetKeyboardFocusLeafNode());
    EXPECT_FALSE(MakeNode({})->UI_HasKeyboardFocus(true));
}

TEST_F(UI_FocusTest, AncestorsHaveItThroughTheirDescendantsOnly) {
    const TestNodePtr group = MakeNode({0, 0, 100, 50}, root);
    const TestNodePtr stop = AddStop(group);
    const TestNodePtr other = AddStop(root);
    Show();
    EXPECT_TRUE(stop->UI_GainKeyboardFocus(kFocusByProgram));
    EXPECT_TRUE(stop->UI_HasKeyboardFocus(false));
    EXPECT_TRUE(stop->UI_HasKeyboardFocus(true));
    EXPECT_TRUE(group->UI_HasKeyboardFocus(true));
    EXPECT_FALSE(group->UI_HasKeyboardFocus(false));
    EXPECT_FALSE(other->UI_HasKeyboardFocus(true));
    EXPECT_EQ(stop.get(), other->UI_GetKeyboardFocusLeafNode());
}

TEST_F(UI_FocusTest, ANodeThatWantsNoneGivesItToTheFirstInItThatDoes) {
    const TestNodePtr group = MakeNode({0, 0, 100, 50}, root);
    AddStop(group)->UI_Show(false);
    AddStop(group)->UI_SetDisabled(true);
    const TestNodePtr third = AddStop(MakeNode({0, 0, 100, 50}, group));
    AddStop(group);
    Show();
    EXPECT_TRUE(root->UI_GainKeyboardFocus(kFocusByProgram));
    EXPECT_EQ(third.get(), GetFocus());
}

TEST_F(UI_FocusTest, WhatCannotTakeItRefuses) {
    const TestNodePtr group = MakeNode({0, 0, 100, 50}, root);
    const TestNodePtr stop = AddStop(group);
    Show();
    EXPECT_FALSE(MakeNode({0, 0, 1, 1})->UI_GainKeyboardFocus(kFocusByProgram));
    group->UI_Show(false);
    EXPECT_FALSE(stop->UI_GainKeyboardFocus(kFocusByProgram));
    group->UI_Show(true);
    group->UI_SetDisabled(true);
    EXPECT_FALSE(stop->UI_GainKeyboardFocus(kFocusByProgram));
    group->UI_SetDisabled(false);
    widget->setEnabled(false);
    EXPECT_FALSE(stop->UI_GainKeyboardFocus(kFocusByProgram));
    widget->setEnabled(true);
    EXPECT_TRUE(stop->UI_GainKeyboardFocus(kFocusByProgram));
    const TestNodePtr alone(new TestNode);
    alone->wantsFocus = true;
    EXPECT_FALSE(alone->UI_GainKeyboardFocus(kFocusByProgram));
}

// Tab

TEST_F(UI_FocusTest, TabGoesThroughTheNodesInTheirOrderAndOnToTheHost) {
    const TestNodePtr first = AddStop(root);
    const TestNodePtr group = AddStop(root);
    const TestNodePtr inside = AddStop(group);
    const TestNodePtr last = AddStop(root);
    Show();
    for (const TestNodePtr& node : {first, group, inside, last}) {
        Tab();
        EXPECT_EQ(node.get(), GetFocus());
        EXPECT_THAT(node->reasons, ElementsAre(kFocusByAdvance));
    }
    Tab();
    EXPECT_EQ(nullptr, GetFocus());
    EXPECT_TRUE(after.hasFocus());
    for (const TestNodePtr& node : {last, inside, group, first}) {
        node->reasons.clear();
        BackTab();
        EXPECT_EQ(node.get(), GetFocus());
        EXPECT_THAT(node->reasons, ElementsAre(kFocusByReverse));
    }
    BackTab();
    EXPECT_TRUE(before.hasFocus());
}

TEST_F(UI_FocusTest, TheOrderIsThatOfTheNodesNotOfTheirWidgets) {
    const TestNodePtr first = AddStop(root);
    const TestNodePtr second = AddStop(root);
    first->UI_Show(false);
    Show();
    first->UI_Show(true);
    Settle();
    Tab();
    EXPECT_EQ(first.get(), GetFocus());
    Tab();
    EXPECT_EQ(second.get(), GetFocus());
}

TEST_F(UI_FocusTest, HiddenAndDisabledOnesAndThoseInsideThemAreSkipped) {
    const TestNodePtr hidden = MakeNode({0, 0, 100, 20}, root);
    AddStop(hidden);
    hidden->UI_Show(false);
    const TestNodePtr disabled = AddStop(root);
    AddStop(disabled);
    disabled->UI_SetDisabled(true);
    AddStop(root)->stopsTab = false;
    const TestNodePtr stop = AddStop(root);
    Show();
    Tab();
    EXPECT_EQ(stop.get(), GetFocus());
    BackTab();
    EXPECT_TRUE(before.hasFocus());
}

TEST_F(UI_FocusTest, ATreeWithoutAStopIsPassedInBothDirections) {
    Show();
    Tab();
    EXPECT_TRUE(after.hasFocus());
    BackTab();
    EXPECT_TRUE(before.hasFocus());
}

TEST_F(UI_FocusTest, TwoTreesWithoutAStopDoNotSendItToAndFro) {
    QWidget alone;
    QVBoxLayout column(&alone);
    column.addWidget(new NodeWidget(MakeNode({0, 0, 10, 10})));
    column.addWidget(new NodeWidget(MakeNode({0, 0, 10, 10})));
    ShowActive(alone);
    ASSERT_NE(nullptr, QApplication::focusWidget());
    Tab();
    Tab();
    BackTab();
    EXPECT_TRUE(alone.isAncestorOf(QApplication::focusWidget()));
}

TEST_F(UI_FocusTest, TabGoesFromTreeToTree) {
    QWidget pair;
    QVBoxLayout column(&pair);
    const TestNodePtr upper = MakeNode({0, 0, 10, 10});
    const TestNodePtr lower = MakeNode({0, 0, 10, 10});
    upper->wantsFocus = lower->wantsFocus = true;
    column.addWidget(new NodeWidget(upper));
    column.addWidget(new NodeWidget(lower));
    ShowActive(pair);
    ASSERT_TRUE(upper->UI_GainKeyboardFocus(kFocusByProgram));
    Tab();
    EXPECT_TRUE(lower->UI_HasKeyboardFocus(false));
    Tab();
    EXPECT_TRUE(upper->UI_HasKeyboardFocus(false));
    BackTab();
    EXPECT_TRUE(lower->UI_HasKeyboardFocus(false));
}

TEST_F(UI_FocusTest, InAWindowOfItsOwnTabGoesRound) {
    const TestNodePtr tree = MakeNode({0, 0, 50, 50});
    const TestNodePtr first = AddStop(tree);
    const TestNodePtr second = AddStop(tree);
    NodeWidget own(tree);
    ShowActive(own);
    EXPECT_EQ(first.get(), tree->UI_GetKeyboardFocusLeafNode());
    Tab();
    Tab();
    EXPECT_EQ(first.get(), tree->UI_GetKeyboardFocusLeafNode());
    BackTab();
    EXPECT_EQ(second.get(), tree->UI_GetKeyboardFocusLeafNode());
}

/// Takes the Tab key, but gives the focus to what is in it.
class Gate : public TestNode {
public:
    bool UI_WantsKeyboardFocusFromAdvance() const override { return true; }
};

TEST_F(UI_FocusTest, AStopThatPassesItOnInwardsIsNoTrapOnTheWayBack) {
    const TestNodePtr gate(new Gate);
    gate->UI_SetLocalRectF({0, 0, 100, 50});
    gate->UI_Show(true);
    root->ChildPushBack(gate);
    const TestNodePtr first = AddStop(gate);
    const TestNodePtr second = AddStop(gate);
    Show();
    Tab();
    EXPECT_EQ(first.get(), GetFocus());
    Tab();
    EXPECT_EQ(second.get(), GetFocus());
    BackTab();
    EXPECT_EQ(first.get(), GetFocus());
    BackTab();
    EXPECT_TRUE(before.hasFocus());
}

TEST_F(UI_FocusTest, TabScrollsTheNextOneIntoView) {
    const TestNodePtr tree = MakeNode({0, 0, 100, 3000});
    const TestNodePtr top = AddStop(tree);
    const TestNodePtr bottom = MakeNode({0, 2900, 100, 20}, tree);
    bottom->wantsFocus = true;
    QScrollArea area;
    area.setWidget(new NodeWidget(tree));
    area.resize(150, 200);
    ShowActive(area);
    ASSERT_TRUE(top->UI_GainKeyboardFocus(kFocusByProgram));
    ASSERT_EQ(nullptr, WidgetOf(*bottom));
    Tab();
    EXPECT_TRUE(bottom->UI_HasKeyboardFocus(false));
    EXPECT_GT(area.verticalScrollBar()->value(), 2600);
    EXPECT_TRUE(WidgetOf(*bottom)->isVisible());
}

TEST_F(UI_FocusTest, AClickDoesNotScroll) {
    const TestNodePtr tree = MakeNode({0, 0, 100, 3000});
    tree->wantsFocus = true;
    QScrollArea area;
    area.setWidget(new NodeWidget(tree));
    area.resize(150, 200);
    ShowActive(area);
    area.setFocus();
    area.verticalScrollBar()->setValue(1000);
    QTest::mouseClick(area.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    EXPECT_TRUE(tree->UI_HasKeyboardFocus(false));
    EXPECT_EQ(1000, area.verticalScrollBar()->value());
}

TEST_F(UI_FocusTest, AnExceptionOfWhoIsGivenItEndsNothing) {
    const TestNodePtr stop = AddStop(root);
    Show();
    int calls = 0;
    stop->onFocus = [&](FocusChangeReason) {
        ++calls;
        throw std::runtime_error("no");
    };
    Tab();
    EXPECT_LT(0, calls);
}

TEST_F(UI_FocusTest, TheHostsOwnSetFocusIsTheProgramsReason) {
    const TestNodePtr stop = AddStop(root);
    Show();
    widget->setFocus();
    EXPECT_EQ(stop.get(), GetFocus());
    EXPECT_THAT(stop->reasons, ElementsAre(kFocusByProgram));
}

TEST_F(UI_FocusTest, AWindowThatIsNotShownYetKeepsItForLater) {
    const TestNodePtr first = AddStop(root);
    const TestNodePtr second = AddStop(root);
    EXPECT_TRUE(second->UI_GainKeyboardFocus(kFocusByProgram));
    EXPECT_EQ(second.get(), GetFocus());
    ShowActive(window);
    EXPECT_EQ(second.get(), GetFocus());
    EXPECT_TRUE(WidgetOf(*second)->hasFocus());
}

// Left over

TEST_F(UI_FocusTest, HidingDisablingOrRemovingItsHolderPassesItToTheNextOne) {
    const TestNodePtr first = AddStop(root);
    const TestNodePtr second = AddStop(root);
    const TestNodePtr third = AddStop(root);
    const std::function<void()> actions[] = {[&] { second->UI_Show(false); }, [&] { second->UI_SetDisabled(true); },
                                             [&] { root->ChildRemove(second); }};
    Show();
    for (const auto& action : actions) {
        second->UI_Show(true);
        second->UI_SetDisabled(false);
        ASSERT_TRUE(second->UI_GainKeyboardFocus(kFocusByProgram));
        third->reasons.clear();
        action();
        EXPECT_EQ(third.get(), GetFocus());
        EXPECT_THAT(third->reasons, ElementsAre(kFocusLeftOver));
    }
}

TEST_F(UI_FocusTest, TheLastOnesFocusGoesToTheOneBeforeIt) {
    const TestNodePtr first = AddStop(root);
    const TestNodePtr group = MakeNode({0, 50, 100, 50}, root);
    const TestNodePtr inside = AddStop(group);
    AddStop(group);
    Show();
    for (const bool removed : {false, true}) {
        ASSERT_TRUE(inside->UI_GainKeyboardFocus(kFocusByProgram));
        if (removed)
            root->ChildRemove(group);
        else
            group->UI_Show(false);
        EXPECT_EQ(first.get(), GetFocus());
        group->UI_Show(true);
    }
}

TEST_F(UI_FocusTest, WhoRefusesTheLeftOverFocusIsPassedOver) {
    const TestNodePtr first = AddStop(root);
    const TestNodePtr second = AddStop(root);
    const TestNodePtr third = AddStop(root);
    second->refusesLeftOver = true;
    Show();
    ASSERT_TRUE(first->UI_GainKeyboardFocus(kFocusByProgram));
    first->UI_Show(false);
    EXPECT_EQ(third.get(), GetFocus());
    third->refusesLeftOver = true;
    ASSERT_TRUE(second->UI_GainKeyboardFocus(kFocusByProgram));
    second->UI_SetDisabled(true);
    EXPECT_EQ(nullptr, GetFocus());
    EXPECT_EQ(nullptr, QApplication::focusWidget());
}

TEST_F(UI_FocusTest, WhoEmptiesTheTreeWhenItIsLeftOverBreaksNothing) {
    const TestNodePtr first = AddStop(root);
    const TestNodePtr second = AddStop(root);
    const TestNodePtr third = AddStop(root);
    second->onFocus = [&](FocusChangeReason) {
        root->ChildRemove(first);
        root->ChildRemove(third);
        root->ChildRemove(second);
    };
    Show();
    ASSERT_TRUE(first->UI_GainKeyboardFocus(kFocusByProgram));
    root->ChildRemove(first);
    EXPECT_EQ(0u, root->ChildCount());
    EXPECT_EQ(nullptr, GetFocus());
    EXPECT_EQ(nullptr, first->UI_GetParentNode());
}

TEST_F(UI_FocusTest, WhoGivesItBackToTheOneThatIsGoingDoesNotKeepItThere) {
    const TestNodePtr first = AddStop(root);
    const TestNodePtr second = AddStop(root);
    second->onFocus = [&](FocusChangeReason) { first->UI_GainKeyboardFocus(kFocusByProgram); };
    second->refusesLeftOver = true;
    Show();
    ASSERT_TRUE(first->UI_GainKeyboardFocus(kFocusByProgram));
    root->ChildRemove(first);
    EXPECT_EQ(nullptr, first->UI_GetParentNode());
    EXPECT_FALSE(first->UI_HasKeyboardFocus(true));
    EXPECT_EQ(nullptr, WidgetOf(*first));
    EXPECT_EQ(nullptr, GetFocus());
}

TEST_F(UI_FocusTest, RemovingSomebodyElseLeavesItAlone) {
    const TestNodePtr first = AddStop(root);
    const TestNodePtr second = AddStop(root);
    Show();
    ASSERT_TRUE(first->UI_GainKeyboardFocus(kFocusByProgram));
    first->reasons.clear();
    root->ChildRemove(second);
    EXPECT_EQ(first.get(), GetFocus());
    EXPECT_THAT(first->reasons, IsEmpty());
}

TEST_F(UI_FocusTest, AWidgetThatGoesPassesItToTheHostsNext) {
    const TestNodePtr stop = AddStop(root);
    Show();
    ASSERT_TRUE(stop->UI_GainKeyboardFocus(kFocusByProgram));
    delete widget;
    EXPECT_TRUE(after.hasFocus());
    EXPECT_EQ(nullptr, root->UI_GetKeyboardFocusLeafNode());
}

TEST_F(UI_FocusTest, AWidgetThatIsHiddenPassesItOn) {
    const TestNodePtr stop = AddStop(root);
    Show();
    ASSERT_TRUE(stop->UI_GainKeyboardFocus(kFocusByProgram));
    widget->hide();
    EXPECT_FALSE(widget->isAncestorOf(QApplication::focusWidget()));
}

}  // namespace
}  // namespace zeltests
