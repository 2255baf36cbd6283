#include <gtest/gtest.h>
#include <QImage>
#include <QPixmap>
#include <QWidget>
#include <zelui/QtBridge.h>

#include "manager/PluginManagerViews.h"
#include "RecordingDrawbot.h"

namespace zeltests {

namespace {

using zelaudiofilterhostui::BoxView;

constexpr int kFrameColor = 324;

QRgb ToPixel(const zelui::drawbot::ColorRGBA& color) {
    return QColor::fromRgbF(color.red, color.green, color.blue).rgb();
}

}  // namespace

TEST(BoxViewTest, TheFrameIsOneUnitWideAndInColour324) {
    const boost::intrusive_ptr<BoxView> box(new BoxView);
    box->UI_SetLocalRectF({10, 5, 40, 20});
    QWidget window;
    const zelui::qt::NodeWidget widget(box, &window);
    const boost::intrusive_ptr<RecordingDrawbot> drawbot(new RecordingDrawbot);
    box->UI_Draw(*drawbot);
    ASSERT_EQ(drawbot->strokes.size(), 1u);
    EXPECT_EQ(drawbot->strokes[0].color, zelui::ui::GetColor(kFrameColor));
    EXPECT_EQ(drawbot->strokes[0].width, 1.0f);
}

TEST(BoxViewTest, TheFrameIsTheOutermostLineOfPixelsAndNothingElse) {
    const boost::intrusive_ptr<zelui::ui::UI_SubView> root(new zelui::ui::UI_SubView);
    root->UI_SetLocalRectF({0, 0, 60, 30});
    const boost::intrusive_ptr<BoxView> box(new BoxView);
    box->UI_SetLocalRectF({10, 5, 40, 20});
    box->UI_Show(true);
    root->ChildPushBack(box);
    QWidget window;
    window.resize(60, 30);
    zelui::qt::NodeWidget widget(root, &window);
    window.show();
    const QImage picture = window.grab().toImage();
    const QRgb frame = ToPixel(zelui::ui::GetColor(kFrameColor));
    const QRect outside(10, 5, 40, 20);
    const QRect inside = outside.adjusted(1, 1, -1, -1);
    ASSERT_NE(picture.pixel(0, 0), frame);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const bool isFrame = outside.contains(x, y) && !inside.contains(x, y);
            EXPECT_EQ(picture.pixel(x, y), isFrame ? frame : picture.pixel(0, 0)) << x << " " << y;
        }
    }
}

}  // namespace zeltests
