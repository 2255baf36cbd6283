#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "../WindowStage.h"
#include "ChainView.h"

namespace zeltests {

/// The rows of the list of effects, dragged with the mouse, which takes a display.
class ChainDragTest : public WindowStage {
protected:
    ChainDragTest() : mView(mWindow->GetChainView()) {
        AddEffect("Zel Gain");
        AddEffect("Zel Gain 3");
        AddEffect("Zel Side Chain");
        EXPECT_EQ(GetChain(), kChain);
    }

    /// Drags a row to that share of another row's height.
    void Drag(int from, int to, double share) {
        const QPoint start = mView.visualItemRect(mView.topLevelItem(from)).center();
        const QRect target = mView.visualItemRect(mView.topLevelItem(to));
        const QPoint end(start.x(), target.top() + static_cast<int>(target.height() * share));
        QWindow* const window = mWindow->windowHandle();
        const auto inWindow = [&](const QPoint& point) { return mView.viewport()->mapTo(mWindow.get(), point); };
        QTest::mousePress(window, Qt::LeftButton, {}, inWindow(start));
        // The drag has a loop of its own, in which the rest happens.
        QTimer timer;
        int step = 0;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            ++step;
            if (step <= kSteps)
                QTest::mouseMove(window, inWindow(start + (end - start) * step / kSteps));
            else if (step == kSteps + 1)
                QTest::mouseRelease(window, Qt::LeftButton, {}, inWindow(end));
        });
        timer.start(5);
        for (const int distance : {kFarEnough / 2, kFarEnough * 2})
            QTest::mouseMove(window, inWindow(start + QPoint(distance, 0)));
        EXPECT_TRUE(WhenTrue([&] { return step > kSteps; }));
        QApplication::processEvents();
    }

    static constexpr int kSteps = 4;
    static constexpr int kFarEnough = 12;
    const std::vector<std::string> kChain{"Zel Gain", "Zel Gain 3", "Zel Side Chain"};
    tessaly::ChainView& mView;
};

TEST_F(ChainDragTest, DraggingARowMovesItsEffectWhichStaysChosen) {
    Drag(0, 2, 0.9);
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain 3", "Zel Side Chain", "Zel Gain"}));
    EXPECT_EQ(mView.GetCurrentIndex(), 2);
    Drag(2, 0, 0.1);
    EXPECT_EQ(GetChain(), kChain);
    EXPECT_EQ(mView.GetCurrentIndex(), 0);
    Drag(0, 1, 0.9);
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain 3", "Zel Gain", "Zel Side Chain"}));
    Trigger("Undo");
    EXPECT_EQ(GetChain(), kChain);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(mView.topLevelItem(i)->text(0).toStdString(), kChain[std::size_t(i)]);
}

TEST_F(ChainDragTest, ARowThatIsDroppedWhereItWasStaysThere) {
    const int steps = mWindow->GetSession().GetUndoStack().count();
    Drag(1, 0, 0.9);
    Drag(1, 2, 0.1);
    EXPECT_EQ(GetChain(), kChain);
    EXPECT_EQ(mWindow->GetSession().GetUndoStack().count(), steps);
}

}  // namespace zeltests
