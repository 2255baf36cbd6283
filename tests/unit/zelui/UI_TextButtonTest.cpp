#include <gtest/gtest.h>
#include <limits>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <stdexcept>
#include <zelui/SupplierInterface.h>
#include <zelui/UI_TextButton.h>

#include "ControlStage.h"

namespace zeltests {
namespace {

using zelui::controls::UI_Button;
using zelui::controls::UI_ButtonChangedMessage;
using zelui::controls::UI_ControlChangedMessage;
using zelui::controls::UI_ControlView;
using zelui::controls::UI_TextButton;
using zelui::drawbot::SupplierInterface;

class UI_TextButtonTest : public ::testing::Test {
protected:
    UI_TextButtonTest() : mButton(mStage.Add(new UI_TextButton, {10, 10, 100, 22})) {
        mButton->SetText(U("Reset Routing"));
        Watch(*mButton);
    }

    void Watch(UI_TextButton& button) {
        button.NotifyWhenChanged(Handler<UI_Button::ButtonChangedFunction>([this](UI_ButtonChangedMessage* message) {
            EXPECT_EQ(message->GetControl(), mButton);
            mTold.emplace_back("used");
        }));
        button.NotifyWhenChanged(Handler<UI_ControlView::ChangedFunction>(
            [this](UI_ControlChangedMessage*) { mTold.emplace_back("changed"); }));
    }

    QPushButton* GetQtButton() const { return ControlStage::GetWidget<QPushButton>(*mButton); }

    ControlStage mStage;
    boost::intrusive_ptr<UI_TextButton> mButton;
    std::vector<std::string> mTold;
};

const std::vector<std::string> kOnce = {"used", "changed"};

}  // namespace

TEST_F(UI_TextButtonTest, AClickTellsBothFunctionsInTheirOrder) {
    QTest::mouseClick(GetQtButton(), Qt::LeftButton);
    EXPECT_EQ(mTold, kOnce);
    EXPECT_TRUE(mButton->UI_HasKeyboardFocus(false));
}

TEST_F(UI_TextButtonTest, ReleasingBesideItOrAnotherButtonTellsNobody) {
    QTest::mousePress(GetQtButton(), Qt::LeftButton);
    QTest::mouseRelease(GetQtButton(), Qt::LeftButton, Qt::NoModifier, QPoint(200, 200));
    QTest::mouseClick(GetQtButton(), Qt::RightButton);
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_TextButtonTest, SpaceAndReturnPressItWhenItHasTheFocus) {
    ASSERT_TRUE(mButton->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        mTold.clear();
        QTest::keyClick(GetQtButton(), key);
        EXPECT_EQ(mTold, kOnce);
    }
}

TEST_F(UI_TextButtonTest, AHeldReturnPressesOnce) {
    SendKey(GetQtButton(), QEvent::KeyPress, Qt::Key_Return);
    SendKey(GetQtButton(), QEvent::KeyPress, Qt::Key_Return, true);
    SendKey(GetQtButton(), QEvent::KeyPress, Qt::Key_Return, true);
    EXPECT_EQ(mTold, kOnce);
}

TEST_F(UI_TextButtonTest, ItsKeysAreNotTheHostsShortcuts) {
    for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_J}) {
        QKeyEvent event(QEvent::ShortcutOverride, key, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(GetQtButton(), &event);
        EXPECT_EQ(event.isAccepted(), key != Qt::Key_J);
    }
}

TEST_F(UI_TextButtonTest, IsNoDefaultButtonByItself) {
    EXPECT_FALSE(GetQtButton()->autoDefault());
    EXPECT_FALSE(GetQtButton()->isDefault());
}

TEST_F(UI_TextButtonTest, ADisabledOneTellsNobody) {
    mButton->UI_SetDisabled(true);
    QTest::mouseClick(GetQtButton(), Qt::LeftButton);
    QTest::keyClick(GetQtButton(), Qt::Key_Space);
    QTest::keyClick(GetQtButton(), Qt::Key_Return);
    EXPECT_TRUE(mTold.empty());
    mButton->UI_SetDisabled(false);
    QTest::mouseClick(GetQtButton(), Qt::LeftButton);
    EXPECT_EQ(mTold, kOnce);
}

TEST_F(UI_TextButtonTest, AnAmpersandIsShownAndIsNoShortcut) {
    mButton->SetText(U("R&B && Soul"));
    EXPECT_EQ(GetQtButton()->text(), "R&&B &&&& Soul");
    EXPECT_TRUE(GetQtButton()->shortcut().isEmpty());
    EXPECT_EQ(GetAccessibleName(*mButton), "R&B && Soul");
    EXPECT_EQ(GetQtButton()->toolTip(), "");
}

TEST_F(UI_TextButtonTest, ATextThatDoesNotFitIsShortenedWithAllOfItInTheToolTip) {
    mButton->UI_SetLocalRectF({10, 10, 50, 22});
    EXPECT_TRUE(GetQtButton()->text().endsWith(QChar(0x2026)));
    EXPECT_TRUE(GetQtButton()->toolTip().contains("Reset Routing"));
    EXPECT_EQ(GetAccessibleName(*mButton), "Reset Routing");
    mButton->UI_SetLocalRectF({10, 10, 100, 22});
    EXPECT_EQ(GetQtButton()->text(), "Reset Routing");
    EXPECT_EQ(GetQtButton()->toolTip(), "");
}

TEST_F(UI_TextButtonTest, TheRecommendedSizeShowsTheWholeTextAndNoMoreThanThat) {
    for (const char* const text : {"Reload", "Reset Routing", "R&B", "W"}) {
        const zelcore::geom::PointF size =
            UI_TextButton::UI_GetRecommendedSize(SupplierInterface::GetDefault(), U(text), 11.0f);
        mButton->SetText(U(text));
        mButton->UI_SetLocalRectF({10, 10, size.x, size.y});
        EXPECT_EQ(GetQtButton()->toolTip(), "") << text;
        EXPECT_LT(size.x, static_cast<float>(GetQtButton()->fontMetrics().horizontalAdvance(text) + 30));
        EXPECT_EQ(size.x, std::floor(size.x));
        EXPECT_EQ(size.y, std::floor(size.y));
        QStyleOptionButton option;
        option.rect = QRect(0, 0, static_cast<int>(size.x), static_cast<int>(size.y));
        EXPECT_GE(QApplication::style()->subElementRect(QStyle::SE_PushButtonContents, &option).height(),
                  GetQtButton()->fontMetrics().height());
    }
}

TEST_F(UI_TextButtonTest, TheRecommendedSizeGrowsWithTextSizeAndNeedsASupplierAndAUsableSize) {
    const SupplierInterface* const supplier = SupplierInterface::GetDefault();
    const zelcore::geom::PointF nothing;
    EXPECT_GT(UI_TextButton::UI_GetRecommendedSize(supplier, U("Reload"), 22.0f).x,
              UI_TextButton::UI_GetRecommendedSize(supplier, U("Reload"), 11.0f).x);
    EXPECT_EQ(UI_TextButton::UI_GetRecommendedSize(nullptr, U("Reload"), 11.0f), nothing);
    EXPECT_EQ(UI_TextButton::UI_GetRecommendedSize(supplier, U("Reload"), 0.0f), nothing);
    EXPECT_EQ(UI_TextButton::UI_GetRecommendedSize(supplier, U("Reload"), 1e9f), nothing);
    EXPECT_EQ(UI_TextButton::UI_GetRecommendedSize(supplier, U("Reload"), std::numeric_limits<float>::quiet_NaN()),
              nothing);
}

TEST_F(UI_TextButtonTest, RoomForJapaneseIsLeftAtSeventeenUnits) {
    mButton->UI_SetLocalRectF({10, 10, 100, 17});
    QStyleOptionButton option;
    option.initFrom(GetQtButton());
    // The letters of the fonts in use reach from 0.88 above to 0.12 below the base line.
    EXPECT_GE(GetQtButton()->style()->subElementRect(QStyle::SE_PushButtonContents, &option).height(), 13);
}

TEST_F(UI_TextButtonTest, TheHandlerMayTakeAllAway) {
    mButton->NotifyWhenChanged(Handler<UI_Button::ButtonChangedFunction>([this](UI_ButtonChangedMessage*) {
        mStage.GetRoot()->ChildRemove(mButton);
        mButton.reset();
        mTold.emplace_back("gone");
    }));
    QPointer<QPushButton> widget = GetQtButton();
    QTest::mouseClick(widget, Qt::LeftButton);
    EXPECT_EQ(mTold, (std::vector<std::string>{"gone", "changed"})) << "the second is told of the same use";
    EXPECT_TRUE(WaitUntilGone(widget.data()));
}

TEST_F(UI_TextButtonTest, AnExceptionOfTheHandlerEndsAtTheButton) {
    mButton->NotifyWhenChanged(Handler<UI_Button::ButtonChangedFunction>(
        [](UI_ButtonChangedMessage*) { throw std::runtime_error("from the product"); }));
    QTest::ignoreMessage(QtWarningMsg, "A button's handler threw an exception: from the product");
    QTest::mouseClick(GetQtButton(), Qt::LeftButton);
    Watch(*mButton);
    QTest::mouseClick(GetQtButton(), Qt::LeftButton);
    EXPECT_EQ(mTold, kOnce);
}

TEST_F(UI_TextButtonTest, AButtonThatIsPressedStaysWhenItIsScrolledAway) {
    QPointer<QPushButton> widget = GetQtButton();
    mButton->SetWantsKeyboardFocus(false);
    QTest::mousePress(widget, Qt::LeftButton);
    mStage.GetArea().verticalScrollBar()->setValue(19000);
    QCoreApplication::processEvents();
    ASSERT_TRUE(widget);
    EXPECT_EQ(GetQtButton(), widget);
    QTest::mouseRelease(widget, Qt::LeftButton);
    EXPECT_EQ(mTold, kOnce);
}

TEST_F(UI_TextButtonTest, ComesBackTheSameAfterScrolling) {
    mButton->UI_SetID("ResetButton");
    const QImage image = GetQtButton()->grab().toImage();
    mStage.ScrollAwayAndBack(*mButton);
    EXPECT_EQ(GetQtButton()->objectName(), "ResetButton");
    EXPECT_EQ(GetQtButton()->grab().toImage(), image);
    QTest::mouseClick(GetQtButton(), Qt::LeftButton);
    EXPECT_EQ(mTold, kOnce);
}

}  // namespace zeltests
