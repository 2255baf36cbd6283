#include <gtest/gtest.h>
#include <vector>

#include <zelui/UI_SubView.h>

#include "../../../frameworks/zelui/src/DialogLayout.h"
#include "NodeTools.h"

namespace zeltests {

using zelcore::geom::RectF;
using zelui::DialogFlow;
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

DialogLayoutItem MakeFlow(const TestNodePtr& node, DialogFlow flow, std::vector<DialogLayoutItem> children,
                          std::uint32_t constraints = 0) {
    DialogLayoutItem item = MakeItem(node, constraints);
    item.flow = flow;
    item.children = std::move(children);
    return item;
}

/// A root of 300 by 200 in which stand below each other: a box with a frame, in it a row of three; a list that touches
/// it; a row at the bottom.
struct RowInABox {
    RowInABox() {
        std::vector<DialogLayoutItem> items;
        for (const TestNodePtr& node : inRow) items.push_back(MakeItem(node));
        const DialogLayoutItem rowItem = MakeFlow(row, DialogFlow::kHorizontal, items);
        layout = std::make_unique<DialogLayout>(
            MakeFlow(root, DialogFlow::kVertical,
                     {MakeFlow(box, DialogFlow::kNone, {rowItem}, 4), MakeItem(list, 12), MakeItem(bottom, 14)}));
    }
    void Resize(float width, float height) { layout->SetSize({width, height}); }
    std::vector<RectF> GetFrames() const {
        std::vector<RectF> frames;
        for (const TestNodePtr& node : {box, row, inRow[0], inRow[1], inRow[2], list, bottom})
            frames.push_back(node->UI_GetLocalRectF());
        return frames;
    }

    TestNodePtr root = MakeNode({0, 0, 300, 200});
    TestNodePtr box = MakeNode({10, 10, 280, 31}, root);
    TestNodePtr row = MakeNode({4, 6, 264, 19}, box);
    std::vector<TestNodePtr> inRow = {MakeNode({4, 0, 80, 19}, row), MakeNode({94, 3, 80, 14}, row),
                                      MakeNode({184, 0, 76, 19}, row)};
    TestNodePtr list = MakeNode({10, 40, 280, 120}, root);
    TestNodePtr bottom = MakeNode({10, 170, 280, 19}, root);
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

// Rows that break into lines

TEST(DialogLayoutTest, ARowThatItsParentLeavesTooLittleRoomBreaksIntoLines) {
    RowInABox one;
    one.Resize(220, 200);
    EXPECT_EQ(one.row->UI_GetLocalRectF(), (RectF{4, 6, 192, 43}));
    EXPECT_EQ(one.inRow[0]->UI_GetLocalRectF(), (RectF{4, 0, 80, 19}));
    EXPECT_EQ(one.inRow[1]->UI_GetLocalRectF(), (RectF{94, 3, 80, 14}));
    EXPECT_EQ(one.inRow[2]->UI_GetLocalRectF(), (RectF{4, 24, 76, 19}));
}

TEST(DialogLayoutTest, TheBoxRoundARowGrowsWithItAndWhatStretchesBelowGivesTheHeight) {
    RowInABox one;
    one.Resize(220, 200);
    EXPECT_EQ(one.box->UI_GetLocalRectF(), (RectF{10, 10, 200, 55}));
    EXPECT_EQ(one.list->UI_GetLocalRectF(), (RectF{10, 64, 200, 96}));
    EXPECT_EQ(one.bottom->UI_GetLocalRectF(), (RectF{10, 170, 200, 19}));
    one.Resize(110, 250);
    EXPECT_EQ(one.inRow[2]->UI_GetLocalRectF(), (RectF{4, 48, 76, 19}));
    EXPECT_EQ(one.box->UI_GetLocalRectF().height, 79);
    EXPECT_EQ(one.list->UI_GetLocalRectF(), (RectF{10, 88, 90, 122}));
    EXPECT_EQ(one.bottom->UI_GetLocalRectF(), (RectF{10, 220, 90, 19}));
}

TEST(DialogLayoutTest, ARowThatFitsAgainIsOneLineAgain) {
    RowInABox one;
    one.Resize(300, 200);
    const std::vector<RectF> before = one.GetFrames();
    for (const float width : {150.0f, 0.0f, 110.0f, 220.0f, 287.0f}) {
        one.Resize(width, 120);
        EXPECT_NE(one.GetFrames(), before) << width;
    }
    one.Resize(300, 200);
    EXPECT_EQ(one.GetFrames(), before);
}

TEST(DialogLayoutTest, AsLongAsItFitsARowIsOneLine) {
    RowInABox one;
    one.Resize(292, 200);
    EXPECT_EQ(one.row->UI_GetLocalRectF(), (RectF{4, 6, 264, 19}));
    EXPECT_EQ(one.inRow[2]->UI_GetLocalRectF(), (RectF{184, 0, 76, 19}));
    EXPECT_EQ(one.list->UI_GetLocalRectF(), (RectF{10, 40, 272, 120}));
}

TEST(DialogLayoutTest, WhatIsHiddenInARowNeedsNoRoom) {
    RowInABox one;
    one.inRow[2]->UI_Hide();
    one.Resize(220, 200);
    EXPECT_EQ(one.box->UI_GetLocalRectF().height, 31);
    EXPECT_EQ(one.list->UI_GetLocalRectF(), (RectF{10, 40, 200, 120}));
}

TEST(DialogLayoutTest, WhatIsHiddenMakesARowNoHigher) {
    RowInABox one;
    one.inRow[2]->UI_SetLocalRectF({184, 0, 76, 30});
    one.inRow[2]->UI_Hide();
    one.Resize(300, 210);
    EXPECT_EQ(one.row->UI_GetLocalRectF().height, 19);
    EXPECT_EQ(one.list->UI_GetLocalRectF().top, 40);
}

TEST(DialogLayoutTest, WhatIsKeptAtTheEndOfARowStaysOnItsFirstLine) {
    const TestNodePtr root = MakeNode({0, 0, 300, 50});
    const std::vector<TestNodePtr> nodes = {MakeNode({0, 0, 90, 20}, root), MakeNode({100, 0, 90, 20}, root),
                                            MakeNode({210, 0, 80, 20}, root)};
    DialogLayout layout(
        MakeFlow(root, DialogFlow::kHorizontal, {MakeItem(nodes[0]), MakeItem(nodes[1]), MakeItem(nodes[2], 5)}));
    layout.SetSize({150, 50});
    EXPECT_EQ(nodes[1]->UI_GetLocalRectF(), (RectF{0, 25, 90, 20}));
    EXPECT_EQ(nodes[2]->UI_GetLocalRectF(), (RectF{60, 0, 80, 20}));
}

TEST(DialogLayoutTest, ARowThatTheProgramMadeNarrowerIsLaidOutInTheWidthThatItGaveIt) {
    RowInABox one;
    one.Resize(300, 200);
    one.row->UI_SetLocalRectF({4, 6, 262, 19});
    one.Resize(310, 200);
    EXPECT_EQ(one.row->UI_GetLocalRectF(), (RectF{4, 6, 262, 19}));
    EXPECT_EQ(one.inRow[2]->UI_GetLocalRectF(), (RectF{184, 0, 76, 19}));
    one.Resize(220, 200);
    EXPECT_EQ(one.row->UI_GetLocalRectF().width, 192);
    one.Resize(310, 200);
    EXPECT_EQ(one.row->UI_GetLocalRectF(), (RectF{4, 6, 262, 19}));
}

TEST(DialogLayoutTest, AFrameThatIsSetWhileARowIsBrokenIsKept) {
    RowInABox one;
    one.Resize(220, 200);
    one.list->UI_SetLocalRectF({10, 100, 200, 60});
    one.Resize(220, 210);
    EXPECT_EQ(one.list->UI_GetLocalRectF(), (RectF{10, 100, 200, 70}));
    one.Resize(300, 200);
    EXPECT_EQ(one.inRow[2]->UI_GetLocalRectF(), (RectF{184, 0, 76, 19}));
    EXPECT_EQ(one.list->UI_GetLocalRectF(), (RectF{10, 76, 280, 84}));
}

TEST(DialogLayoutTest, AFrameThatIsSetOnALineOfABrokenRowIsKept) {
    RowInABox one;
    one.Resize(220, 200);
    ASSERT_EQ(one.inRow[2]->UI_GetLocalRectF(), (RectF{4, 24, 76, 19}));
    one.inRow[2]->UI_SetLocalRectF({4, 24, 70, 19});
    one.Resize(220, 210);
    EXPECT_EQ(one.inRow[2]->UI_GetLocalRectF(), (RectF{4, 24, 70, 19}));
    EXPECT_EQ(one.row->UI_GetLocalRectF().height, 43);
    one.Resize(300, 200);
    EXPECT_EQ(one.inRow[2]->UI_GetLocalRectF(), (RectF{184, 0, 70, 19}));
    EXPECT_EQ(one.row->UI_GetLocalRectF(), (RectF{4, 6, 264, 19}));
}

TEST(DialogLayoutTest, ABoxThatIsSetWhileItsRowIsBrokenGrowsOnce) {
    RowInABox one;
    one.Resize(220, 200);
    ASSERT_EQ(one.box->UI_GetLocalRectF(), (RectF{10, 10, 200, 55}));
    one.box->UI_SetLocalRectF({10, 5, 200, 55});
    one.Resize(220, 210);
    EXPECT_EQ(one.box->UI_GetLocalRectF(), (RectF{10, 5, 200, 55}));
    EXPECT_EQ(one.row->UI_GetLocalRectF(), (RectF{4, 6, 192, 43}));
    one.Resize(300, 200);
    EXPECT_EQ(one.box->UI_GetLocalRectF(), (RectF{10, 5, 280, 31}));
}

TEST(DialogLayoutTest, WhatIsHiddenAfterALayoutMakesNoDifferenceToTheNext) {
    std::vector<std::vector<RectF>> frames;
    for (const float before : {221.0f, 220.0f}) {
        RowInABox one;
        one.inRow[1]->UI_SetLocalRectF({94, 0, 80, 20});
        one.Resize(300, 200);
        one.Resize(before, 200);
        one.inRow[1]->UI_Hide();
        if (before != 220) one.Resize(220, 200);
        frames.push_back(one.GetFrames());
    }
    EXPECT_EQ(frames[0], frames[1]);
}

TEST(DialogLayoutTest, BelowEachOtherWhatKeepsItsSizeDoesNotReachOutOfTheParent) {
    const TestNodePtr root = MakeNode({0, 0, 300, 50});
    const TestNodePtr wide = MakeNode({10, 0, 280, 20}, root);
    DialogLayout layout(MakeFlow(root, DialogFlow::kVertical, {MakeItem(wide)}));
    layout.SetSize({200, 50});
    EXPECT_EQ(wide->UI_GetLocalRectF(), (RectF{10, 0, 186, 20}));
    layout.SetSize({300, 50});
    EXPECT_EQ(wide->UI_GetLocalRectF(), (RectF{10, 0, 280, 20}));
}

TEST(DialogLayoutTest, AFrameThatIsSetInTheMiddleOfALayoutIsKept) {
    RowInABox one;
    one.box->onSized = [&](const RectF&) { one.list->UI_SetLocalRectF({1, 2, 3, 4}); };
    one.Resize(220, 200);
    EXPECT_EQ(one.list->UI_GetLocalRectF(), (RectF{1, 2, 3, 4}));
}

}  // namespace zeltests
