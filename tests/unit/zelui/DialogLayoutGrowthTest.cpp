#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <zelcore/Utf.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_StaticText.h>
#include <zelui/UI_SubView.h>
#include <zelui/UI_TextButton.h>

#include "../../../frameworks/zelui/src/DialogLayoutAxis.h"
#include "../../../frameworks/zelui/src/DialogLayoutGrowth.h"
#include "DialogTools.h"

namespace zeltests {

using zelcore::geom::RectF;
using zelui::DialogFlow;
using zelui::DialogLayoutAxis;
using zelui::DialogLayoutItem;
using zelui::Span;
using zelui::SpanKind;
using zelui::controls::UI_Checkbox;
using zelui::controls::UI_StaticText;
using zelui::controls::UI_TextButton;

namespace {

const SpanKind kStays = SpanKind::kStays;
const SpanKind kAtEnd = SpanKind::kKeptAtEnd;
const SpanKind kStretches = SpanKind::kStretches;

/// Starts and ends.
std::vector<float> EdgesOf(const std::vector<Span>& spans) {
    std::vector<float> edges;
    for (const Span& span : spans) {
        edges.push_back(span.start);
        edges.push_back(span.GetEnd());
    }
    return edges;
}

typedef std::vector<float> Floats;

template <typename Node>
DialogLayoutItem MakeItem(Node* node, const RectF& frame, std::uint32_t constraints = 0) {
    DialogLayoutItem item;
    item.node = boost::intrusive_ptr<zelui::ui::UI_Node>(node);
    item.node->UI_SetLocalRectF(frame);
    item.constraints = constraints;
    return item;
}

DialogLayoutItem MakeButton(const char* text, const RectF& frame, std::uint32_t constraints = 0) {
    UI_TextButton* const button = new UI_TextButton;
    button->SetText(U(text));
    return MakeItem(button, frame, constraints);
}

DialogLayoutItem MakeBox(DialogFlow flow, const RectF& frame, std::vector<DialogLayoutItem> children,
                         std::uint32_t constraints = 0) {
    zelui::ui::UI_SubView* const box = new zelui::ui::UI_SubView;
    DialogLayoutItem item = MakeItem(box, frame, constraints);
    item.flow = flow;
    item.children = std::move(children);
    for (const DialogLayoutItem& child : item.children) box->ChildPushBack(child.node);
    return item;
}

RectF FrameOf(const DialogLayoutItem& item) { return item.node->UI_GetLocalRectF(); }

const char kLong[] = "A text that is longer than any button";

}  // namespace

TEST(DialogLayoutGrowthTest, WithoutNeedNothingMoves) {
    const DialogLayoutAxis axis({{4, 80, 80, kStays}, {94, 80, 20, kStays}, {300, 50, 50, kAtEnd}}, 360, true, true);
    EXPECT_EQ(axis.GetNeed(), 360);
    EXPECT_EQ(EdgesOf(axis.Arrange(360)), (Floats{4, 84, 94, 174, 300, 350}));
}

TEST(DialogLayoutGrowthTest, SiblingsBehindMoveOnAndTheGapsStay) {
    const DialogLayoutAxis axis({{4, 80, 100, kStays}, {94, 80, 85, kStays}, {184, 80, 0, kStays}}, 273, true, true);
    EXPECT_EQ(axis.GetNeed(), 298);
    EXPECT_EQ(EdgesOf(axis.Arrange(298)), (Floats{4, 104, 114, 199, 209, 289}));
}

TEST(DialogLayoutGrowthTest, TheOrderOfTheChildrenDoesNotMatter) {
    const DialogLayoutAxis axis({{184, 80, 0, kStays}, {94, 80, 85, kStays}, {4, 80, 100, kStays}}, 273, true, true);
    EXPECT_EQ(axis.GetNeed(), 298);
    EXPECT_EQ(EdgesOf(axis.Arrange(298)), (Floats{209, 289, 114, 199, 4, 104}));
}

TEST(DialogLayoutGrowthTest, WhatHasTheSizeOfItsSurroundingsUsesTheRoomThatItHas) {
    const DialogLayoutAxis axis({{4, 80, 100, kStays}}, 273, true, false);
    EXPECT_EQ(axis.GetNeed(), 273);
    const DialogLayoutAxis tight({{4, 80, 300, kStays}}, 273, true, false);
    EXPECT_EQ(tight.GetNeed(), 308);
}

TEST(DialogLayoutGrowthTest, WhatIsKeptAtTheEndGrowsToTheLeft) {
    const DialogLayoutAxis axis({{531, 77, 90, kAtEnd}, {621, 77, 97, kAtEnd}}, 698, true, false);
    EXPECT_EQ(axis.GetNeed(), 698);
    EXPECT_EQ(EdgesOf(axis.Arrange(698)), (Floats{498, 588, 601, 698}));
}

TEST(DialogLayoutGrowthTest, BetweenBothGroupsASmallGapIsLeft) {
    const DialogLayoutAxis axis({{4, 450, 500, kStays}, {463, 53, 60, kAtEnd}, {525, 173, 0, kAtEnd}}, 706, true,
                                false);
    EXPECT_EQ(axis.GetNeed(), 706 + 50 + 7);
    EXPECT_EQ(EdgesOf(axis.Arrange(763)), (Floats{4, 504, 513, 573, 582, 755}));
    const DialogLayoutAxis wide({{0, 100, 200, kStays}, {400, 50, 50, kAtEnd}}, 450, true, false);
    EXPECT_EQ(wide.GetNeed(), 450);
    const DialogLayoutAxis full({{0, 100, 395, kStays}, {400, 50, 50, kAtEnd}}, 450, true, false);
    EXPECT_EQ(full.GetNeed(), 454);
}

TEST(DialogLayoutGrowthTest, WhatStretchesKeepsItsSizeWhenItIsMovedOn) {
    const DialogLayoutAxis axis({{0, 20, 26, kStays}, {30, 100, 0, kStretches}, {140, 20, 24, kAtEnd}}, 170, true,
                                true);
    EXPECT_EQ(axis.GetNeed(), 180);
    EXPECT_EQ(EdgesOf(axis.Arrange(180)), (Floats{0, 26, 36, 136, 146, 170}));
}

TEST(DialogLayoutGrowthTest, OutsideOfARowEachChildGrowsByItself) {
    const DialogLayoutAxis axis({{0, 50, 90, kStays}, {0, 60, 60, kStays}, {10, 80, 95, kStretches}}, 100, false,
                                false);
    EXPECT_EQ(axis.GetNeed(), 115);
    EXPECT_EQ(EdgesOf(axis.Arrange(115)), (Floats{0, 90, 0, 60, 10, 105}));
}

TEST(DialogLayoutGrowthTest, ATextThatFitsLeavesTheFrameAsItIs) {
    DialogLayoutItem root = MakeBox(DialogFlow::kHorizontal, {0, 0, 200, 40}, {MakeButton("OK", {10, 10, 90, 19}, 0)});
    GrowForTexts(root);
    EXPECT_EQ(FrameOf(root.children[0]), (RectF{10, 10, 90, 19}));
    EXPECT_EQ(FrameOf(root), (RectF{0, 0, 200, 40}));
}

TEST(DialogLayoutGrowthTest, EachKindOfTextIsMeasuredAsItIsShown) {
    UI_StaticText* const text = new UI_StaticText;
    text->SetValue(U(kLong));
    UI_Checkbox* const checkbox = new UI_Checkbox;
    checkbox->SetText(U(kLong));
    DialogLayoutItem root = MakeBox(
        DialogFlow::kVertical, {0, 0, 60, 80},
        {MakeItem(text, {0, 0, 50, 19}), MakeItem(checkbox, {0, 20, 50, 19}), MakeButton(kLong, {0, 40, 50, 19})});
    GrowForTexts(root);
    const float width = FrameOf(root.children[0]).width;
    EXPECT_GT(width, 100.0f);
    EXPECT_GT(FrameOf(root.children[1]).width, width + 10);
    EXPECT_GT(FrameOf(root.children[2]).width, width);
    EXPECT_GE(FrameOf(root).width, FrameOf(root.children[1]).width);
    EXPECT_EQ(FrameOf(root).height, 80);
}

TEST(DialogLayoutGrowthTest, ContainersGrowWithTheirChildrenAndMoveWhatStandsBehindThem) {
    DialogLayoutItem row = MakeBox(DialogFlow::kHorizontal, {0, 0, 50, 19}, {MakeButton(kLong, {4, 0, 40, 19})});
    DialogLayoutItem root =
        MakeBox(DialogFlow::kHorizontal, {0, 0, 200, 19}, {row, MakeButton("OK", {60, 0, 100, 19})});
    GrowForTexts(root);
    const float growth = FrameOf(root.children[0].children[0]).width - 40;
    EXPECT_GT(growth, 0.0f);
    EXPECT_EQ(FrameOf(root.children[0]).width, 50 + growth);
    EXPECT_EQ(FrameOf(root.children[1]).left, 60 + growth);
    EXPECT_EQ(FrameOf(root).width, 200 + growth);
}

TEST(DialogLayoutGrowthTest, TheRootStaysWhenThereIsRoom) {
    DialogLayoutItem row = MakeBox(DialogFlow::kHorizontal, {0, 0, 600, 19}, {MakeButton(kLong, {4, 0, 40, 19})}, 4);
    DialogLayoutItem root = MakeBox(DialogFlow::kVertical, {0, 0, 620, 40}, {row});
    GrowForTexts(root);
    EXPECT_GT(FrameOf(root.children[0].children[0]).width, 40.0f);
    EXPECT_EQ(FrameOf(root.children[0]).width, 600);
    EXPECT_EQ(FrameOf(root), (RectF{0, 0, 620, 40}));
}

TEST(DialogLayoutGrowthTest, WithoutAFlowOrLaidOutChildrenTheFramesStay) {
    DialogLayoutItem plain = MakeBox(DialogFlow::kNone, {0, 0, 50, 19}, {MakeButton(kLong, {4, 0, 40, 19})});
    GrowForTexts(plain);
    EXPECT_EQ(FrameOf(plain.children[0]), (RectF{4, 0, 40, 19}));
    DialogLayoutItem fixed = MakeBox(DialogFlow::kHorizontal, {0, 0, 50, 19}, {MakeButton(kLong, {4, 0, 40, 19})});
    fixed.laysOutChildren = false;
    GrowForTexts(fixed);
    EXPECT_EQ(FrameOf(fixed.children[0]), (RectF{4, 0, 40, 19}));
}

}  // namespace zeltests
