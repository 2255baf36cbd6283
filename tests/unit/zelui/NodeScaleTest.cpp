#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include "NodeTools.h"

namespace zeltests {
namespace {

using zelui::qt::NodeWidget;
using namespace zelui::ui;

/// A window on the first of two screens with a tree of two nodes in it.
class NodeScaleTest : public testing::Test {
protected:
    NodeScaleTest() : mRoot(MakeNode({0, 0, 100, 100})), mChild(MakeNode({10, 10, 20, 20}, mRoot)) {}

    static void MoveTo(int screen, QWidget& window) {
        window.windowHandle()->setScreen(QGuiApplication::screens().at(screen));
        Settle();
    }
    int CountTold() const { return mRoot->Count(kNodeScaleChanged); }

    const TestNodePtr mRoot;
    const TestNodePtr mChild;
};

TEST_F(NodeScaleTest, AWindowThatComesToAScreenWithAnotherScaleTellsAllItsNodesOnce) {
    NodeWidget window(mRoot);
    ShowActive(window);
    EXPECT_EQ(1.0f, mChild->UI_GetPixelScale());
    float seen = 0.0f;
    mChild->onChanged = [&](int change) {
        if (change == kNodeScaleChanged) seen = mChild->UI_GetPixelScale();
    };
    MoveTo(1, window);
    EXPECT_EQ(2.0f, seen) << "the new scale is there when it is told";
    EXPECT_EQ(1, CountTold());
    EXPECT_EQ(1, mChild->Count(kNodeScaleChanged));
    MoveTo(0, window);
    EXPECT_EQ(1.0f, seen);
    EXPECT_EQ(2, CountTold());
}

TEST_F(NodeScaleTest, MovingOnOneScreenTellsNothing) {
    NodeWidget window(mRoot);
    ShowActive(window);
    window.move(50, 60);
    window.hide();
    window.show();
    MoveTo(0, window);
    EXPECT_EQ(0, CountTold());
    EXPECT_EQ(0, mChild->Count(kNodeScaleChanged));
}

TEST_F(NodeScaleTest, ASurfaceDeepInTheHostsWindowHearsOfItToo) {
    QWidget window;
    QVBoxLayout* const outer = new QVBoxLayout(&window);
    QWidget* const middle = new QWidget;
    outer->addWidget(middle);
    (new QVBoxLayout(middle))->addWidget(new NodeWidget(mRoot));
    ShowActive(window);
    MoveTo(1, window);
    EXPECT_EQ(1, CountTold());
    EXPECT_EQ(2.0f, mChild->UI_GetPixelScale());
}

TEST_F(NodeScaleTest, ASurfaceThatIsPutIntoAWindowOnAnotherScreenTellsItsNodes) {
    QWidget first;
    QWidget second;
    NodeWidget* const widget = new NodeWidget(mRoot, &first);
    ShowActive(first);
    second.show();
    MoveTo(1, second);
    EXPECT_EQ(0, CountTold());
    widget->setParent(&second);
    widget->show();
    Settle();
    EXPECT_EQ(2.0f, mRoot->UI_GetPixelScale());
    EXPECT_EQ(1, CountTold());
}

TEST_F(NodeScaleTest, ANodeThatComesIntoAWindowIsNotToldTheScaleThatItFindsThere) {
    NodeWidget window(mRoot);
    ShowActive(window);
    MoveTo(1, window);
    const TestNodePtr late = MakeNode({30, 30, 10, 10}, mRoot);
    Settle();
    EXPECT_EQ(2.0f, late->UI_GetPixelScale());
    EXPECT_EQ(0, late->Count(kNodeScaleChanged));
    EXPECT_EQ(1, late->Count(kNodePlaceChanged));
}

TEST_F(NodeScaleTest, WhoeverIsToldMayTakeTheTreeAway) {
    NodeWidget window(mRoot);
    ShowActive(window);
    mRoot->onChanged = [&](int change) {
        if (change == kNodeScaleChanged) mRoot->ChildRemove(mChild);
    };
    MoveTo(1, window);
    EXPECT_EQ(0, mChild->Count(kNodeScaleChanged)) << "it is in no window any more";
    EXPECT_FALSE(mChild->UI_IsInWindow());
}

TEST_F(NodeScaleTest, AnExceptionOfANodeLeavesTheWindowUsable) {
    NodeWidget window(mRoot);
    ShowActive(window);
    mRoot->onChanged = [](int change) {
        if (change == kNodeScaleChanged) throw std::runtime_error("a node's");
    };
    MoveTo(1, window);
    EXPECT_EQ(1, CountTold());
    mRoot->onChanged = {};
    MoveTo(0, window);
    EXPECT_EQ(2, CountTold());
}

}  // namespace
}  // namespace zeltests
