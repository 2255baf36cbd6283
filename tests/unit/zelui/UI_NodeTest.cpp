#include <zelui/UI_Node.h>

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <zelui/QtAccessibility.h>

#include "NodeTools.h"

namespace zeltests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using zelcore::geom::Rect;
using zelcore::geom::RectF;
using zelui::qt::NodeWidget;
using namespace zelui::ui;

const int kSized = -1;

// Frames

TEST(UI_NodeTest, ANewNodeIsHiddenEmptyAndNowhere) {
    const TestNodePtr node(new TestNode);
    EXPECT_FALSE(node->UI_IsShown());
    EXPECT_FALSE(node->UI_IsDisabled());
    EXPECT_FALSE(node->UI_IsInWindow());
    EXPECT_EQ(nullptr, node->UI_GetParentNode());
    EXPECT_EQ(RectF(), node->UI_GetLocalRectF());
    EXPECT_EQ(nullptr, node->UI_GetDrawSupplier());
}

TEST(UI_NodeTest, TheFrameIsWhatWasSet) {
    const TestNodePtr node(new TestNode);
    node->UI_SetLocalRectF({-1.5f, 2.25f, 3.5f, 4.75f});
    EXPECT_EQ((RectF{-1.5f, 2.25f, 3.5f, 4.75f}), node->UI_GetLocalRectF());
    EXPECT_EQ((RectF{-1.5f, 2.25f, 3.5f, 4.75f}), node->UI_GetLocalRectF(true));
    node->UI_SetLocalRect({1, 2, 3, 4});
    EXPECT_EQ((RectF{1, 2, 3, 4}), node->UI_GetLocalRectF());
}

TEST(UI_NodeTest, ANegativeSizeCountsAsNone) {
    const TestNodePtr node(new TestNode);
    node->UI_SetLocalRectF({1, 2, -3, 4});
    EXPECT_EQ((RectF{1, 2, 0, 4}), node->UI_GetLocalRectF());
    node->UI_SetLocalRect({1, 2, 3, -4});
    EXPECT_EQ((RectF{1, 2, 3, 0}), node->UI_GetLocalRectF());
}

TEST(UI_NodeTest, NumbersThatAreNoneOrBeyondAllMeasureChangeNothing) {
    const TestNodePtr node(new TestNode);
    node->UI_SetLocalRectF({1, 2, 3, 4});
    node->Forget();
    const float bad[] = {std::numeric_limits<float>::quiet_NaN(),
                         std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity(),
                         16000002.0f,
                         -16000002.0f,
                         3e38f};
    for (const float number : bad) {
        node->UI_SetLocalRectF({number, 2, 3, 4});
        node->UI_SetLocalRectF({1, number, 3, 4});
        node->UI_SetLocalRectF({1, 2, number, 4});
        node->UI_SetLocalRectF({1, 2, 3, number});
    }
    node->UI_SetLocalRect({std::numeric_limits<long>::max(), 2, 3, std::numeric_limits<long>::min()});
    EXPECT_EQ((RectF{1, 2, 3, 4}), node->UI_GetLocalRectF());
    EXPECT_THAT(node->changes, IsEmpty());
}

TEST(UI_NodeTest, SixteenMillionIsAFrameStill) {
    const TestNodePtr node(new TestNode);
    const RectF frame{-16000000.0f, 16000000.0f, 16000000.0f, 16000000.0f};
    node->UI_SetLocalRectF(frame);
    EXPECT_EQ(frame, node->UI_GetLocalRectF());
    EXPECT_EQ((Rect{-16000000, 16000000, 16000000, 16000000}), node->UI_GetLocalRect());
}

TEST(UI_NodeTest, RoundedNeighboursShareTheirEdge) {
    const TestNodePtr node(new TestNode);
    float left = -3.3f;
    long edge = 0;
    for (int i = 0; i < 50; ++i) {
        node->UI_SetLocalRectF({left, 0, 0.7f, 1});
        const Rect rect = node->UI_GetLocalRect();
        if (i > 0) {
            EXPECT_EQ(edge, rect.left) << i;
        }
        edge = rect.Right();
        left = node->UI_GetLocalRectF().Right();
    }
}

TEST(UI_NodeTest, RoundingKeepsAWholeSizeWhereverTheNodeIs) {
    const TestNodePtr node(new TestNode);
    for (const float left : {-2.5f, -1.5f, -0.5f, -0.4f, 0.0f, 0.5f, 1.5f}) {
        node->UI_SetLocalRectF({left, left, 10, 7});
        EXPECT_EQ(10, node->UI_GetLocalRect().width) << left;
        EXPECT_EQ(7, node->UI_GetLocalRect().height) << left;
    }
}

TEST(UI_NodeTest, AFrameOfAnotherSizeIsToldAsSizeThenAsFrame) {
    const TestNodePtr node(new TestNode);
    node->UI_SetLocalRectF({1, 2, 3, 4});
    EXPECT_THAT(node->changes, ElementsAre(kSized, kNodeFrameChanged));
    EXPECT_THAT(node->sizes, ElementsAre(RectF{1, 2, 3, 4}));
}

TEST(UI_NodeTest, AMoveAloneIsNoChangeOfSize) {
    const TestNodePtr node(new TestNode);
    node->UI_SetLocalRectF({1, 2, 3, 4});
    node->Forget();
    node->UI_SetLocalRectF({5, 6, 3, 4});
    EXPECT_THAT(node->changes, ElementsAre(kNodeFrameChanged));
}

TEST(UI_NodeTest, TheSameFrameAgainTellsNobody) {
    const TestNodePtr node(new TestNode);
    node->UI_SetLocalRectF({1, 2, 3, 4});
    node->Forget();
    node->UI_SetLocalRectF({1, 2, 3, 4});
    EXPECT_THAT(node->changes, IsEmpty());
}

TEST(UI_NodeTest, WhoSetsAnotherFrameWhenToldIsToldOfThatOneLast) {
    const TestNodePtr node(new TestNode);
    node->onSized = [&](const RectF& frame) {
        if (frame.width < 50) node->UI_SetLocalRectF({0, 0, 50, 20});
    };
    node->UI_SetLocalRectF({0, 0, 10, 10});
    EXPECT_EQ((RectF{0, 0, 50, 20}), node->UI_GetLocalRectF());
    ASSERT_FALSE(node->sizes.empty());
    EXPECT_EQ((RectF{0, 0, 50, 20}), node->sizes.back());
}

class FillingNode : public TestNode {
protected:
    bool UI_FillsParent() const override { return true; }
};

TEST(UI_NodeTest, AChildThatResizesItsParentLeavesNoOldSizeBehindIt) {
    const TestNodePtr parent = MakeNode({0, 0, 10, 10});
    const TestNodePtr child(new FillingNode);
    parent->ChildPushBack(child);
    child->onSized = [&](const RectF& frame) {
        if (frame.width < 100) parent->UI_SetLocalRectF({0, 0, 100, 100});
    };
    parent->UI_SetLocalRectF({0, 0, 20, 20});
    EXPECT_EQ(100, child->UI_GetLocalRectF().width);
    EXPECT_EQ(100, parent->sizes.back().width);
}

TEST(UI_NodeTest, AFillingChildThatASiblingTakesAwayMeanwhileIsLeftAlone) {
    const TestNodePtr parent = MakeNode({0, 0, 10, 10});
    const TestNodePtr first(new FillingNode);
    const TestNodePtr second(new FillingNode);
    parent->ChildPushBack(first);
    parent->ChildPushBack(second);
    first->onSized = [&](const RectF&) { parent->ChildRemove(second); };
    parent->UI_SetLocalRectF({0, 0, 20, 20});
    EXPECT_EQ(20, first->UI_GetLocalRectF().width);
    EXPECT_EQ(10, second->UI_GetLocalRectF().width);
}

TEST(UI_NodeTest, AFillingNodeThatLeavesAsSoonAsItIsInAWindowKeepsItsFrame) {
    const TestNodePtr root = MakeNode({0, 0, 10, 10});
    NodeWidget widget(root);
    const TestNodePtr child(new FillingNode);
    child->onChanged = [&](int change) {
        if (change == kNodePlaceChanged && child->UI_IsInWindow()) root->ChildRemove(child);
    };
    root->ChildPushBack(child);
    EXPECT_EQ(0u, root->ChildCount());
    EXPECT_EQ(nullptr, child->UI_GetParentNode());
    EXPECT_FALSE(child->UI_IsInWindow());
    EXPECT_EQ(RectF(), child->UI_GetLocalRectF());
}

class SelfMadeNode : public TestNode {
public:
    SelfMadeNode() {
        UI_SetID("made");
        UI_SetLocalRectF({0, 0, 30, 40});
        UI_Show(true);
        UI_SetDisabled(true);
        const TestNodePtr child(new FillingNode);
        ChildPushBack(child);
        UI_SetLocalRectF({0, 0, 50, 60});
        UI_Invalidate();
        UI_UpdateNow();
        UI_RemoveTimer(1, true);
        UI_SetDisabled(false);
        ChildRemove(child);
        ChildPushBack(child);
    }
};

TEST(UI_NodeTest, ANodeMayDoEverythingInItsConstructor) {
    const std::size_t before = UI_NodeManager::Get(false).GetNodeCount();
    {
        const TestNodePtr node(new SelfMadeNode);
        EXPECT_EQ(1, node->GetRefCount());
        EXPECT_EQ(50, node->UI_GetLocalRectF().width);
        EXPECT_EQ(50, node->ChildAt(0)->UI_GetLocalRectF().width);
        EXPECT_EQ("made", node->UI_GetID());
    }
    EXPECT_EQ(before, UI_NodeManager::Get(false).GetNodeCount());
}

// Shown

TEST(UI_NodeTest, ShowingAndHidingIsToldOnceToTheNodeAlone) {
    const TestNodePtr node(new TestNode);
    const TestNodePtr child = MakeNode({}, node);
    child->Forget();
    node->UI_Show(true);
    node->UI_Show(true);
    EXPECT_THAT(node->changes, ElementsAre(kNodeShownChanged));
    node->UI_Hide();
    node->UI_Hide();
    EXPECT_THAT(node->changes, ElementsAre(kNodeShownChanged, kNodeShownChanged));
    EXPECT_TRUE(child->UI_IsShown());
    EXPECT_THAT(child->changes, IsEmpty());
}

// Disabled

TEST(UI_NodeTest, DisablingReachesEachNodeBelowOnce) {
    const TestNodePtr root = MakeNode({});
    const TestNodePtr child = MakeNode({}, root);
    const TestNodePtr grandchild = MakeNode({}, child);
    for (const TestNodePtr& node : {root, child, grandchild}) node->Forget();
    root->UI_SetDisabled(true);
    root->UI_SetDisabled(true);
    for (const TestNodePtr& node : {root, child, grandchild}) {
        EXPECT_TRUE(node->UI_IsDisabled());
        EXPECT_EQ(1, node->disabledChanges);
        EXPECT_THAT(node->changes, ElementsAre(kNodeStateChanged));
    }
    root->UI_SetDisabled(false);
    for (const TestNodePtr& node : {root, child, grandchild}) {
        EXPECT_FALSE(node->UI_IsDisabled());
        EXPECT_EQ(2, node->disabledChanges);
    }
}

TEST(UI_NodeTest, WhatIsDisabledItselfHearsNothingOfItsParent) {
    const TestNodePtr root = MakeNode({});
    const TestNodePtr child = MakeNode({}, root);
    const TestNodePtr grandchild = MakeNode({}, child);
    child->UI_SetDisabled(true);
    for (const TestNodePtr& node : {child, grandchild}) node->Forget();
    root->UI_SetDisabled(true);
    child->UI_SetDisabled(false);
    child->UI_SetDisabled(true);
    root->UI_SetDisabled(false);
    for (const TestNodePtr& node : {child, grandchild}) {
        EXPECT_TRUE(node->UI_IsDisabled());
        EXPECT_EQ(0, node->disabledChanges);
    }
}

TEST(UI_NodeTest, ComingUnderADisabledParentAndLeavingItIsTold) {
    const TestNodePtr root = MakeNode({});
    root->UI_SetDisabled(true);
    const TestNodePtr child = MakeNode({});
    const TestNodePtr grandchild = MakeNode({}, child);
    root->ChildPushBack(child);
    EXPECT_EQ(1, child->disabledChanges);
    EXPECT_EQ(1, grandchild->disabledChanges);
    root->ChildRemove(child);
    EXPECT_EQ(2, child->disabledChanges);
    EXPECT_EQ(2, grandchild->disabledChanges);
    EXPECT_FALSE(grandchild->UI_IsDisabled());
}

TEST(UI_NodeTest, TheEndOfADisabledParentIsTold) {
    TestNodePtr root = MakeNode({});
    root->UI_SetDisabled(true);
    const TestNodePtr child = MakeNode({}, root);
    const TestNodePtr grandchild = MakeNode({}, child);
    child->Forget();
    grandchild->Forget();
    root.reset();
    EXPECT_EQ(nullptr, child->UI_GetParentNode());
    EXPECT_FALSE(grandchild->UI_IsDisabled());
    EXPECT_EQ(1, child->disabledChanges);
    EXPECT_EQ(1, grandchild->disabledChanges);
}

TEST(UI_NodeTest, WhoGoesWithADisabledParentIsToldNothing) {
    TestNodePtr root = MakeNode({});
    root->UI_SetDisabled(true);
    int told = 0;
    MakeNode({}, root)->onDisabledChanged = [&told] { ++told; };
    root.reset();
    EXPECT_EQ(0, told);
}

TEST(UI_NodeTest, AnExceptionAtTheEndOfAParentStaysThere) {
    TestNodePtr root = MakeNode({});
    root->UI_SetDisabled(true);
    const TestNodePtr first = MakeNode({}, root);
    const TestNodePtr second = MakeNode({}, root);
    first->onDisabledChanged = [] { throw std::runtime_error("no"); };
    second->Forget();
    root.reset();
    EXPECT_EQ(nullptr, first->UI_GetParentNode());
    EXPECT_EQ(1, second->disabledChanges);
}

TEST(UI_NodeTest, ASiblingThatIsTakenAwayMeanwhileHearsOfNoStateThatItNeverHad) {
    const TestNodePtr root = MakeNode({});
    const TestNodePtr first = MakeNode({}, root);
    const TestNodePtr second = MakeNode({}, root);
    first->onDisabledChanged = [&] { root->ChildRemove(second); };
    root->UI_SetDisabled(true);
    EXPECT_EQ(0, second->disabledChanges);
    EXPECT_FALSE(second->UI_IsDisabled());
}

TEST(UI_NodeTest, EnablingWhileBeingToldOfDisablingEndsEnabledForAll) {
    const TestNodePtr root = MakeNode({});
    const TestNodePtr child = MakeNode({}, root);
    root->Forget();
    child->Forget();
    root->onDisabledChanged = [&] { root->UI_SetDisabled(false); };
    root->UI_SetDisabled(true);
    EXPECT_FALSE(child->UI_IsDisabled());
    EXPECT_EQ(2, root->disabledChanges);
    EXPECT_EQ(0, child->disabledChanges % 2);
}

// In a window

TEST(UI_NodeTest, ComingIntoAWindowAndLeavingItReachesEachNodeOnce) {
    const TestNodePtr root = MakeNode({0, 0, 10, 10});
    const TestNodePtr child = MakeNode({}, root);
    const TestNodePtr hidden(new TestNode);
    child->ChildPushBack(hidden);
    {
        const NodeWidget widget(root);
        for (const TestNodePtr& node : {root, child, hidden}) {
            EXPECT_TRUE(node->UI_IsInWindow());
            EXPECT_EQ(1, node->Count(kNodePlaceChanged));
            EXPECT_NE(nullptr, node->UI_GetDrawSupplier());
        }
        root->ChildRemove(child);
        EXPECT_FALSE(hidden->UI_IsInWindow());
        EXPECT_EQ(2, hidden->Count(kNodePlaceChanged));
    }
    EXPECT_FALSE(root->UI_IsInWindow());
    EXPECT_EQ(2, root->Count(kNodePlaceChanged));
    EXPECT_EQ(2, hidden->Count(kNodePlaceChanged));
    EXPECT_EQ(nullptr, root->UI_GetDrawSupplier());
}

TEST(UI_NodeTest, ASiblingThatIsTakenAwayMeanwhileHearsOfNoWindowThatItNeverSaw) {
    const TestNodePtr root = MakeNode({0, 0, 10, 10});
    const TestNodePtr first = MakeNode({}, root);
    const TestNodePtr second = MakeNode({}, root);
    first->onChanged = [&](int) { root->ChildRemove(second); };
    const NodeWidget widget(root);
    EXPECT_FALSE(second->UI_IsInWindow());
    EXPECT_EQ(0, second->Count(kNodePlaceChanged));
}

TEST(UI_NodeTest, ANodeMayLetGoOfItselfInEachOfItsCalls) {
    const std::size_t before = UI_NodeManager::Get(false).GetNodeCount();
    {
        const TestNodePtr root = MakeNode({0, 0, 10, 10});
        NodeWidget widget(root);
        const std::function<void(TestNode&)> actions[] = {
            [](TestNode& node) {
                node.UI_SetLocalRectF({1, 1, 2, 2});
            },
            [](TestNode& node) { node.UI_Show(false); },
            [](TestNode& node) { node.UI_SetDisabled(true); },
        };
        for (const auto& action : actions) {
            TestNode* const node = MakeNode({0, 0, 5, 5}, root).get();
            node->onChanged = [&root, node](int) { root->ChildRemove(node); };
            action(*node);
            EXPECT_EQ(0u, root->ChildCount());
        }
    }
    EXPECT_EQ(before, UI_NodeManager::Get(false).GetNodeCount());
}

TEST(UI_NodeTest, NamesAndToolTipsReachTheWidget) {
    const TestNodePtr root = MakeNode({0, 0, 10, 10});
    root->UI_SetID("before");
    NodeWidget widget(root);
    ShowActive(widget);
    ASSERT_NE(nullptr, WidgetOf(*root));
    EXPECT_EQ("before", WidgetOf(*root)->objectName());
    root->UI_SetID("after");
    root->UI_SetAccessibleName(U("name"));
    root->UI_SetToolTip(U("tip"));
    EXPECT_EQ("after", WidgetOf(*root)->objectName());
    EXPECT_EQ("name", zelui::qt::GetAccessibleName(*WidgetOf(*root)));
    EXPECT_TRUE(WidgetOf(*root)->toolTip().contains("tip"));
    EXPECT_EQ(U("name"), root->UI_GetAccessibleName());
    EXPECT_EQ(U("tip"), root->UI_GetToolTip());
}

}  // namespace
}  // namespace zeltests
