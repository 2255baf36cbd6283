#include <cmath>
#include <limits>
#include <stdexcept>

#include <gmock/gmock.h>
#include <QImage>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "NodeTools.h"

namespace zeltests {
namespace {

using testing::ElementsAre;
using zelcore::geom::RectF;
using zelui::drawbot::ColorRGBA;
using zelui::drawbot::Drawbot;
using zelui::qt::NodeWidget;
using namespace zelui::ui;

const ColorRGBA kRed{1, 0, 0, 1};
const ColorRGBA kGreen{0, 1, 0, 1};
const ColorRGBA kBlue{0, 0, 1, 1};

/// Fills the node's own rectangle, as far as the node knows.
void FillWith(const TestNodePtr& node, const ColorRGBA& color) {
    TestNode* const filled = node.get();
    node->onDraw = [filled, color](Drawbot& drawbot) { drawbot.FillRect(filled->UI_GetLocalRectF(), color); };
}

/// The smallest rectangle of all pixels of that colour; and that no other colour is in it.
QRect FindFilled(const QImage& image, QRgb color) {
    QRect found;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if ((image.pixel(x, y) | 0xFF000000u) != color) continue;
            found |= QRect(x, y, 1, 1);
            ++count;
        }
    }
    EXPECT_EQ(found.width() * found.height(), count);
    return found;
}

class NodeViewTest : public testing::Test {
protected:
    NodeViewTest() : mRoot(MakeNode({0, 0, 100, 100})), mWidget(std::make_unique<NodeWidget>(mRoot)) {}

    void Show() { ShowActive(*mWidget); }
    QImage Grab() const { return mWidget->grab().toImage(); }

    TestNodePtr mRoot;
    std::unique_ptr<NodeWidget> mWidget;
};

// Drawing

TEST_F(NodeViewTest, FillingTheLocalRectangleFillsTheNodeExactly) {
    FillWith(mRoot, kBlue);
    const TestNodePtr child = MakeNode({10, 20, 30, 40}, mRoot);
    FillWith(child, kRed);
    const TestNodePtr grandchild = MakeNode({5, 6, 7, 8}, child);
    FillWith(grandchild, kGreen);
    Show();
    const QImage image = Grab();
    EXPECT_EQ(QRgb(0xFF0000FF), image.pixel(0, 0));
    EXPECT_EQ(QRgb(0xFF0000FF), image.pixel(99, 99));
    EXPECT_EQ(QRect(15, 26, 7, 8), FindFilled(image, 0xFF00FF00));
    grandchild->UI_Show(false);
    EXPECT_EQ(QRect(10, 20, 30, 40), FindFilled(Grab(), 0xFFFF0000));
}

TEST_F(NodeViewTest, TheRootsOwnPlaceDoesNotMoveWhatItDraws) {
    for (const float left : {0.0f, 7.0f, -13.0f, 0.4f, 0.5f, -0.5f}) {
        mRoot->UI_SetLocalRectF({left, left, 50, 50});
        FillWith(mRoot, kRed);
        Show();
        EXPECT_EQ(QRect(0, 0, 50, 50), FindFilled(Grab(), 0xFFFF0000)) << left;
    }
}

TEST_F(NodeViewTest, FractionalNodesAreFilledToTheirPixels) {
    const TestNodePtr child = MakeNode({}, mRoot);
    FillWith(child, kRed);
    Show();
    for (const RectF& frame :
         {RectF{0.4f, 0.4f, 10.2f, 10.2f}, RectF{0.5f, 0.5f, 10, 10}, RectF{3.3f, 3.7f, 5.5f, 5.1f},
          RectF{10.5f, 10.49f, 9.99f, 0.6f}, RectF{2.6f, 2.4f, 1.2f, 1.2f}}) {
        child->UI_SetLocalRectF(frame);
        Settle();
        EXPECT_EQ(WidgetOf(*child)->geometry(), FindFilled(Grab(), 0xFFFF0000)) << frame.left;
    }
}

TEST_F(NodeViewTest, FractionalNeighboursLeaveNoGapAndDoNotOverlap) {
    FillWith(mRoot, kBlue);
    float left = 1.3f;
    for (int i = 0; i < 20; ++i) {
        const TestNodePtr child = MakeNode({left, 10, 3.7f, 10}, mRoot);
        FillWith(child, i % 2 ? kRed : kGreen);
        left = child->UI_GetLocalRectF().Right();
    }
    Show();
    const QImage image = Grab();
    for (int x = 1; x < 75; ++x) EXPECT_NE(QRgb(0xFF0000FF), image.pixel(x, 15)) << x;
    int pixels = 0;
    for (std::size_t i = 0; i < 20; ++i) pixels += WidgetOf(*mRoot->ChildAt(i))->width();
    EXPECT_EQ(WidgetOf(*mRoot->ChildAt(19))->geometry().right() + 1 - 1, pixels);
}

TEST_F(NodeViewTest, WhatAChildDrawsOutsideOfItselfIsCutOff) {
    const TestNodePtr child = MakeNode({10, 10, 20, 20}, mRoot);
    child->onDraw = [](Drawbot& drawbot) { drawbot.FillRect({-100, -100, 500, 500}, kRed); };
    Show();
    EXPECT_EQ(QRect(10, 10, 20, 20), FindFilled(Grab(), 0xFFFF0000));
}

TEST_F(NodeViewTest, LaterChildrenAreDrawnOverEarlierOnes) {
    FillWith(MakeNode({0, 0, 60, 60}, mRoot), kRed);
    FillWith(MakeNode({20, 20, 60, 60}, mRoot), kGreen);
    Show();
    EXPECT_EQ(QRgb(0xFF00FF00), Grab().pixel(30, 30));
    EXPECT_EQ(QRgb(0xFFFF0000), Grab().pixel(10, 10));
}

TEST_F(NodeViewTest, AnExceptionWhileDrawingLeavesTheOthersDrawn) {
    const TestNodePtr first = MakeNode({0, 0, 20, 20}, mRoot);
    first->onDraw = [](Drawbot& drawbot) {
        drawbot.PushClip({0, 0, 1, 1});
        throw std::runtime_error("no");
    };
    FillWith(MakeNode({20, 20, 20, 20}, mRoot), kGreen);
    Show();
    EXPECT_EQ(QRect(20, 20, 20, 20), FindFilled(Grab(), 0xFF00FF00));
    EXPECT_LT(0, first->draws);
}

TEST_F(NodeViewTest, ADrawbotThatIsKeptDrawsNothingLater) {
    boost::intrusive_ptr<Drawbot> kept;
    mRoot->onDraw = [&](Drawbot& drawbot) { kept = &drawbot; };
    Show();
    ASSERT_TRUE(kept);
    kept->FillRect({0, 0, 100, 100}, kRed);
    EXPECT_EQ(QRect(), FindFilled(Grab(), 0xFFFF0000));
}

TEST_F(NodeViewTest, ANodeMayLeaveWhileItDraws) {
    const TestNodePtr child = MakeNode({0, 0, 20, 20}, mRoot);
    child->onDraw = [&](Drawbot& drawbot) {
        drawbot.FillRect({0, 0, 5, 5}, kRed);
        mRoot->ChildRemove(child);
    };
    Show();
    EXPECT_TRUE(ProcessUntil([&] { return child->draws > 0; }));
    Settle();
    EXPECT_EQ(0u, mRoot->ChildCount());
    EXPECT_EQ(1, child->draws);
}

// Invalidating

TEST_F(NodeViewTest, InvalidatingHasTheNodeDrawnOnceSoon) {
    Show();
    mRoot->Forget();
    mRoot->UI_Invalidate();
    mRoot->UI_Invalidate(nullptr, 0);
    EXPECT_EQ(0, mRoot->draws);
    Settle();
    EXPECT_EQ(1, mRoot->draws);
}

TEST_F(NodeViewTest, NeighboursAreNotDrawnAgain) {
    const TestNodePtr first = MakeNode({0, 0, 20, 20}, mRoot);
    const TestNodePtr second = MakeNode({30, 30, 20, 20}, mRoot);
    Show();
    first->Forget();
    second->Forget();
    first->UI_Invalidate();
    Settle();
    EXPECT_EQ(1, first->draws);
    EXPECT_EQ(0, second->draws);
}

TEST_F(NodeViewTest, ARectangleIsInTheCoordinatesOfTheFrame) {
    const TestNodePtr child = MakeNode({50, 50, 40, 40}, mRoot);
    ColorRGBA color = kRed;
    child->onDraw = [&](Drawbot& drawbot) { drawbot.FillRect({0, 0, 1000, 1000}, color); };
    Show();
    QImage before(mWidget->size(), QImage::Format_RGB32);
    color = kGreen;
    std::vector<QRect> painted;
    const RectF changed{60, 65, 10, 5};
    child->UI_Invalidate(&changed);
    struct PaintWatch : QObject {
        explicit PaintWatch(std::vector<QRect>& target) : rects(target) {}
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint) rects.push_back(static_cast<QPaintEvent*>(event)->rect());
            return false;
        }
        std::vector<QRect>& rects;
    } watch(painted);
    WidgetOf(*child)->installEventFilter(&watch);
    Settle();
    EXPECT_THAT(painted, ElementsAre(QRect(10, 15, 10, 5)));
}

TEST_F(NodeViewTest, RectanglesWithoutSenseOrBesideTheNodeDrawNothing) {
    const TestNodePtr child = MakeNode({50, 50, 40, 40}, mRoot);
    Show();
    child->Forget();
    const float none = std::numeric_limits<float>::quiet_NaN();
    for (const RectF& rect : {RectF{0, 0, 10, 10}, RectF{60, 60, 0, 10}, RectF{60, 60, -5, 5}, RectF{none, 60, 5, 5},
                              RectF{60, 60, none, 5}, RectF{1e38f, 1e38f, 3e38f, 3e38f}})
        child->UI_Invalidate(&rect);
    Settle();
    EXPECT_EQ(0, child->draws);
    const float all = std::numeric_limits<float>::max();
    const RectF huge{-all, -all, all, all};
    child->UI_Invalidate(&huge);
    const RectF everywhere{-1e30f, -1e30f, 3e30f, 3e30f};
    child->UI_Invalidate(&everywhere);
    Settle();
    EXPECT_EQ(1, child->draws);
}

TEST_F(NodeViewTest, InvalidatingAParentDrawsItsChildrenAgain) {
    const TestNodePtr child = MakeNode({0, 0, 20, 20}, mRoot);
    Show();
    child->Forget();
    mRoot->UI_Invalidate();
    Settle();
    EXPECT_EQ(1, child->draws);
}

TEST_F(NodeViewTest, UpdatingNowDrawsBeforeItReturnsAndNotAgain) {
    Show();
    mRoot->Forget();
    mRoot->UI_Invalidate();
    mRoot->UI_UpdateNow();
    EXPECT_EQ(1, mRoot->draws);
    Settle();
    EXPECT_EQ(1, mRoot->draws);
}

TEST_F(NodeViewTest, UpdatingNowDrawsNothingThatWasNotInvalidated) {
    Show();
    mRoot->Forget();
    mRoot->UI_UpdateNow();
    mRoot->UI_UpdateNow(0);
    EXPECT_EQ(0, mRoot->draws);
}

TEST_F(NodeViewTest, UpdatingNowBringsNewNodesUpToDateUnlessItIsToldNotTo) {
    Show();
    const TestNodePtr child = MakeNode({0, 0, 20, 20}, mRoot);
    child->UI_UpdateNow(0);
    EXPECT_EQ(0, child->draws);
    child->UI_UpdateNow();
    EXPECT_EQ(1, child->draws);
}

TEST_F(NodeViewTest, WhoUpdatesInsideDrawingIsDrawnSoon) {
    const TestNodePtr child = MakeNode({0, 0, 20, 20}, mRoot);
    Show();
    child->Forget();
    bool asked = false;
    mRoot->onDraw = [&](Drawbot&) {
        if (asked) return;
        asked = true;
        mRoot->UI_UpdateNow();
        child->UI_Invalidate();
        child->UI_UpdateNow();
    };
    mRoot->UI_Invalidate();
    EXPECT_TRUE(ProcessUntil([&] { return asked && child->draws > 0; }));
}

TEST_F(NodeViewTest, NothingHappensWithoutAWindow) {
    const TestNodePtr node = MakeNode({0, 0, 20, 20});
    node->UI_Invalidate();
    node->UI_UpdateNow();
    mRoot->UI_Invalidate();
    mRoot->UI_UpdateNow();
    EXPECT_EQ(0, node->draws);
    EXPECT_EQ(0, mRoot->draws);
}

// Keys

TEST_F(NodeViewTest, AKeyGoesFromTheNodeThatHasTheFocusToThoseRoundIt) {
    const TestNodePtr child = MakeNode({0, 0, 50, 50}, mRoot);
    const TestNodePtr grandchild = MakeNode({0, 0, 20, 20}, child);
    grandchild->wantsFocus = true;
    child->onKey = [](const KeyboardEvent& event) { return event.GetOSCode() == 'B'; };
    Show();
    ASSERT_TRUE(mRoot->UI_GainKeyboardFocus(kFocusByProgram));
    SendKeyTo(WidgetOf(*grandchild), Qt::Key_A);
    EXPECT_EQ(1u, grandchild->keys.size());
    EXPECT_EQ(1u, child->keys.size());
    EXPECT_EQ(1u, mRoot->keys.size());
    SendKeyTo(WidgetOf(*grandchild), Qt::Key_B);
    EXPECT_EQ(2u, child->keys.size());
    EXPECT_EQ(1u, mRoot->keys.size());
}

TEST_F(NodeViewTest, TheTabKeyIsTheNodesFirstAndMovesTheFocusWhenItHasNoUseForIt) {
    const TestNodePtr first = MakeNode({0, 0, 20, 20}, mRoot);
    const TestNodePtr second = MakeNode({20, 0, 20, 20}, mRoot);
    first->wantsFocus = second->wantsFocus = true;
    bool used = true;
    first->onKey = [&used](const KeyboardEvent&) { return used; };
    Show();
    ASSERT_TRUE(first->UI_GainKeyboardFocus(kFocusByProgram));
    QTest::keyPress(WidgetOf(*first), Qt::Key_Tab);
    EXPECT_TRUE(first->UI_HasKeyboardFocus(false));
    ASSERT_EQ(1u, first->keys.size());
    EXPECT_EQ(9, first->keys.front().GetOSCode());
    used = false;
    QTest::keyPress(WidgetOf(*first), Qt::Key_Tab);
    EXPECT_TRUE(second->UI_HasKeyboardFocus(false));
}

TEST_F(NodeViewTest, AKeyThatNoNodeWantsReachesTheHost) {
    QWidget window;
    QVBoxLayout layout(&window);
    NodeWidget* const widget = new NodeWidget(MakeNode({0, 0, 50, 50}));
    layout.addWidget(widget);
    ShowActive(window);
    EventCounter presses(&window, QEvent::KeyPress);
    EventCounter releases(&window, QEvent::KeyRelease);
    QTest::keyClick(WidgetOf(*widget->GetRoot()), Qt::Key_A);
    EXPECT_EQ(1, presses.GetCount());
    EXPECT_EQ(1, releases.GetCount());
}

TEST_F(NodeViewTest, AnExceptionLeavesTheKeyUnused) {
    const TestNodePtr child = MakeNode({0, 0, 50, 50}, mRoot);
    child->onKey = [](const KeyboardEvent&) -> bool { throw std::runtime_error("no"); };
    Show();
    SendKeyTo(WidgetOf(*child), Qt::Key_A);
    EXPECT_EQ(1u, mRoot->keys.size());
}

TEST_F(NodeViewTest, ANodeMayLeaveWhileItHandlesAKey) {
    const TestNodePtr child = MakeNode({0, 0, 50, 50}, mRoot);
    child->wantsFocus = true;
    for (const bool used : {true, false}) {
        child->onKey = [&](const KeyboardEvent&) {
            mRoot->ChildRemove(child);
            return used;
        };
        mRoot->ChildPushBack(child);
        Show();
        ASSERT_TRUE(child->UI_GainKeyboardFocus(kFocusByProgram));
        QTest::keyPress(QApplication::focusWidget(), Qt::Key_A);
        Settle();
        EXPECT_EQ(nullptr, child->UI_GetParentNode());
    }
}

TEST_F(NodeViewTest, DisabledNodesGetNoKeys) {
    const TestNodePtr child = MakeNode({0, 0, 50, 50}, mRoot);
    Show();
    child->UI_SetDisabled(true);
    SendKeyTo(WidgetOf(*child), Qt::Key_A);
    EXPECT_TRUE(child->keys.empty());
}

// Clicks

TEST_F(NodeViewTest, AClickGivesTheFocusToAViewThatWantsIt) {
    const TestNodePtr child = MakeNode({0, 0, 50, 50}, mRoot);
    child->wantsFocus = true;
    Show();
    QTest::mouseClick(mWidget->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_TRUE(child->UI_HasKeyboardFocus(false));
    EXPECT_EQ(kFocusByMouse, child->reasons.back());
}

TEST_F(NodeViewTest, TheInnermostOfTheClickedViewsTakesTheFocus) {
    mRoot->wantsFocus = true;
    const TestNodePtr child = MakeNode({0, 0, 50, 50}, mRoot);
    child->wantsFocus = true;
    const TestNodePtr inside = MakeNode({0, 0, 20, 20}, child);
    Show();
    mRoot->reasons.clear();
    QTest::mouseClick(mWidget->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_TRUE(child->UI_HasKeyboardFocus(false));
    EXPECT_TRUE(mRoot->reasons.empty());
    QTest::mouseClick(mWidget->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(80, 80));
    EXPECT_TRUE(mRoot->UI_HasKeyboardFocus(false));
}

TEST_F(NodeViewTest, AClickOnADisabledViewGoesToTheOneRoundIt) {
    mRoot->wantsFocus = true;
    const TestNodePtr child = MakeNode({0, 0, 50, 50}, mRoot);
    child->wantsFocus = true;
    const TestNodePtr other = MakeNode({50, 50, 50, 50}, mRoot);
    other->wantsFocus = true;
    Show();
    ASSERT_TRUE(other->UI_GainKeyboardFocus(kFocusByProgram));
    child->UI_SetDisabled(true);
    QTest::mouseClick(mWidget->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_TRUE(mRoot->UI_HasKeyboardFocus(false));
}

TEST_F(NodeViewTest, ClicksReachTheHost) {
    QWidget window;
    QVBoxLayout layout(&window);
    NodeWidget* const widget = new NodeWidget(MakeNode({0, 0, 50, 50}));
    layout.addWidget(widget);
    ShowActive(window);
    EventCounter presses(&window, QEvent::MouseButtonPress);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, widget->pos() + QPoint(10, 10));
    EXPECT_EQ(1, presses.GetCount());
}

TEST_F(NodeViewTest, AnExceptionOfWhoIsClickedEndsNothing) {
    mRoot->wantsFocus = true;
    Show();
    bool thrown = false;
    mRoot->onFocus = [&](FocusChangeReason) {
        thrown = true;
        throw std::runtime_error("no");
    };
    QTest::mouseClick(mWidget->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_TRUE(thrown);
}

}  // namespace
}  // namespace zeltests
