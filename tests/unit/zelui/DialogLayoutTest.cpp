#include <gtest/gtest.h>
#include <vector>

#include <zelui/UI_SubView.h>

#include "../../../frameworks/zelui/src/DialogLayout.h"
#include "NodeTools.h"

namespace zeltests {

using zelcore::geom::RectF;
using zelui::DialogLayout;
using zelui::DialogLayoutItem;

namespace {

DialogLayoutItem MakeItem(const TestNodePtr& node, std::uint32_t constraints = 0) {
    DialogLayoutItem item;
    item.node = node;
    item.constraints = constraints;
    return item;
}

/// A root of 100 by 80 with one child, 10, 20, 30, 40.
struct OneChild {
    explicit OneChild(std::uint32_t constraints) : root(MakeNode({0, 0, 100, 80})) {
        child = MakeNode({10, 20, 30, 40}, root);
        DialogLayoutItem item = MakeItem(root);
        item.children.push_back(MakeItem(child, constraints));
        layout = std::make_unique<DialogLayout>(item);
    }
    RectF At(float width, float height) {
        layout->SetSize({width, height});
        return child->UI_GetLocalRectF();
    }

    TestNodePtr root;
    TestNodePtr child;
    std::unique_ptr<DialogLayout> layout;
};

}  // namespace

TEST(DialogLayoutTest, EachConstraintMovesItsEdges) {
    const struct {
        std::uint32_t constraints;
        RectF larger;
    } cases[] = {
        {0, {10, 20, 30, 40}},    {1, {20, 20, 30, 40}},  {2, {10, 25, 30, 40}},  {3, {20, 25, 30, 40}},
        {4, {10, 20, 50, 40}},    {5, {30, 20, 30, 40}},  {8, {10, 20, 30, 50}},  {10, {10, 30, 30, 40}},
        {12, {10, 20, 50, 50}},   {14, {10, 30, 50, 40}}, {15, {30, 30, 30, 40}}, {13, {30, 20, 30, 50}},
        {1008, {10, 20, 30, 40}},
    };
    for (const auto& one : cases) EXPECT_EQ(OneChild(one.constraints).At(120, 90), one.larger) << one.constraints;
}

TEST(DialogLayoutTest, TheRootGetsTheSizeAndStandsAtTheOrigin) {
    const TestNodePtr root = MakeNode({5, 6, 100, 80});
    DialogLayout layout(MakeItem(root));
    layout.SetSize({50, 40});
    EXPECT_EQ(root->UI_GetLocalRectF(), (RectF{0, 0, 50, 40}));
}

TEST(DialogLayoutTest, ShrunkBelowNothingAndGrownAgainTheFramesAreTheSame) {
    for (std::uint32_t constraints = 0; constraints < 16; ++constraints) {
        OneChild one(constraints);
        one.At(3, 2);
        EXPECT_GE(one.child->UI_GetLocalRectF().width, 0.0f);
        one.At(0, 0);
        one.At(71, 33);
        EXPECT_EQ(one.At(100, 80), (RectF{10, 20, 30, 40})) << constraints;
    }
}

TEST(DialogLayoutTest, AFrameThatTheProgramSetIsKeptFromThenOn) {
    OneChild one(4);
    one.At(120, 80);
    one.child->UI_SetLocalRectF({0, 20, 60, 40});
    EXPECT_EQ(one.At(130, 80), (RectF{0, 20, 70, 40}));
    EXPECT_EQ(one.At(10, 80), (RectF{0, 20, 0, 40}));
    EXPECT_EQ(one.At(120, 80), (RectF{0, 20, 60, 40}));
}

TEST(DialogLayoutTest, AFrameThatTheProgramSetAlongOneAxisDecidesNothingAlongTheOther) {
    OneChild one(12);
    one.At(120, 10);
    ASSERT_EQ(one.child->UI_GetLocalRectF().height, 0.0f);
    one.child->UI_SetLocalRectF({20, 20, 40, 0});
    EXPECT_EQ(one.At(120, 80), (RectF{20, 20, 40, 40}));
}

TEST(DialogLayoutTest, WhatIsInAChildFollowsTheChild) {
    const TestNodePtr root = MakeNode({0, 0, 100, 80});
    const TestNodePtr box = MakeNode({10, 10, 80, 60}, root);
    const TestNodePtr inner = MakeNode({50, 40, 20, 10}, box);
    DialogLayoutItem item = MakeItem(root);
    item.children.push_back(MakeItem(box, 12));
    item.children.back().children.push_back(MakeItem(inner, 15));
    DialogLayout layout(item);
    layout.SetSize({150, 90});
    EXPECT_EQ(inner->UI_GetLocalRectF(), (RectF{100, 50, 20, 10}));
    // The program makes the box narrower: what is in it follows with the next layout.
    box->UI_SetLocalRectF({10, 10, 100, 70});
    layout.SetSize({151, 90});
    EXPECT_EQ(box->UI_GetLocalRectF(), (RectF{10, 10, 101, 70}));
    EXPECT_EQ(inner->UI_GetLocalRectF(), (RectF{71, 50, 20, 10}));
}

TEST(DialogLayoutTest, MovedWithItsBoxByTheProgramBothAreKept) {
    const TestNodePtr root = MakeNode({0, 0, 100, 80});
    const TestNodePtr box = MakeNode({0, 0, 100, 80}, root);
    const TestNodePtr inner = MakeNode({50, 0, 50, 10}, box);
    DialogLayoutItem item = MakeItem(root);
    item.children.push_back(MakeItem(box, 0));
    item.children.back().children.push_back(MakeItem(inner, 5));
    DialogLayout layout(item);
    box->UI_SetLocalRectF({0, 0, 60, 80});
    inner->UI_SetLocalRectF({10, 0, 50, 10});
    layout.SetSize({200, 80});
    EXPECT_EQ(inner->UI_GetLocalRectF(), (RectF{10, 0, 50, 10}));
}

TEST(DialogLayoutTest, ChildrenThatAreNotLaidOutStay) {
    const TestNodePtr root = MakeNode({0, 0, 100, 80});
    const TestNodePtr child = MakeNode({10, 20, 30, 40}, root);
    DialogLayoutItem item = MakeItem(root);
    item.laysOutChildren = false;
    item.children.push_back(MakeItem(child, 12));
    DialogLayout layout(item);
    layout.SetSize({200, 200});
    EXPECT_EQ(child->UI_GetLocalRectF(), (RectF{10, 20, 30, 40}));
}

TEST(DialogLayoutTest, NodesThatTheProgramAddedOrTookAwayAreItsOwnAffair) {
    OneChild one(12);
    const TestNodePtr added = MakeNode({1, 2, 3, 4}, one.root);
    one.root->ChildRemove(one.child);
    EXPECT_EQ(one.At(200, 200), (RectF{10, 20, 30, 40}));
    EXPECT_EQ(added->UI_GetLocalRectF(), (RectF{1, 2, 3, 4}));
}

TEST(DialogLayoutTest, ANodeThatIsToldMayChangeFramesAndTheTree) {
    OneChild one(4);
    const TestNodePtr other = MakeNode({0, 0, 5, 5}, one.root);
    one.child->onSized = [&](const RectF&) {
        one.root->ChildRemove(one.child);
        other->UI_SetLocalRectF({0, 0, 6, 6});
    };
    one.At(200, 80);
    EXPECT_EQ(other->UI_GetLocalRectF(), (RectF{0, 0, 6, 6}));
    EXPECT_EQ(one.root->ChildCount(), 1u);
}

TEST(DialogLayoutTest, ASizeThatIsAskedForMeanwhileIsTheOneThatIsThereInTheEnd) {
    OneChild one(4);
    one.child->onSized = [&](const RectF& frame) {
        if (frame.width == 50) one.layout->SetSize({150, 80});
    };
    EXPECT_EQ(one.At(120, 80), (RectF{10, 20, 80, 40}));
    EXPECT_EQ(one.root->UI_GetLocalRectF().width, 150.0f);
}

TEST(DialogLayoutTest, AskingForAnotherSizeEachTimeEnds) {
    OneChild one(4);
    one.child->onSized = [&](const RectF& frame) { one.layout->SetSize({frame.width + 100, 80}); };
    one.At(120, 80);
    EXPECT_GT(one.root->UI_GetLocalRectF().width, 120.0f);
}

}  // namespace zeltests
