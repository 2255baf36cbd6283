#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <QImage>
#include <QPainter>
#include <stdexcept>
#include <string>
#include <vector>

#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>
#include <zelui/SupplierInterface.h>
#include <zelui/Theme.h>

#include "../../../frameworks/zelui/src/ImageDrawbot.h"

namespace {

using boost::intrusive_ptr;
using zelcore::geom::PointF;
using zelcore::geom::RectF;
using zelcore::utility::AsciiToUTF16;
using zelui::drawbot::ColorRGBA;
using zelui::drawbot::Drawbot;
using zelui::drawbot::Font;
using zelui::drawbot::ImageDrawbot;
using zelui::drawbot::PainterDrawbot;
using zelui::drawbot::Path;
using zelui::drawbot::SupplierInterface;

const ColorRGBA kRed{1, 0, 0, 1};
const ColorRGBA kBlue{0, 0, 1, 1};
const float kNoNumber = std::numeric_limits<float>::quiet_NaN();
const float kInfinite = std::numeric_limits<float>::infinity();

typedef std::vector<std::string> Picture;

// How much of each pixel is covered: nothing '.', all '#', else tenths.
Picture CoverageOf(const QImage& image) {
    Picture rows;
    for (int y = 0; y < image.height(); ++y) {
        std::string row;
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = qAlpha(image.pixel(x, y));
            row += alpha == 0 ? '.' : alpha == 255 ? '#' : static_cast<char>('0' + alpha * 10 / 256);
        }
        rows.push_back(row);
    }
    return rows;
}

QImage ImageOf(const intrusive_ptr<Drawbot>& drawbot) { return dynamic_cast<ImageDrawbot&>(*drawbot).GetImage(); }

Picture CoverageOf(const intrusive_ptr<Drawbot>& drawbot) { return CoverageOf(ImageOf(drawbot)); }

bool IsBlank(const QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != 0) return false;
        }
    }
    return true;
}

// The smallest rectangle that holds all that is drawn.
QRect InkOf(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != 0) ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

QImage MakeBlank(QSize pixels, double scale) {
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(scale);
    return image;
}

class DrawbotTest : public ::testing::Test {
protected:
    intrusive_ptr<Drawbot> NewDrawbot(int width, int height, int scale = 1) const {
        return mSupplier.NewDrawbot(width, height, scale);
    }
    intrusive_ptr<Path> NewRectPath(const RectF& rect) const {
        intrusive_ptr<Path> path = mSupplier.NewPath();
        path->AddRect(rect);
        return path;
    }
    intrusive_ptr<Font> NewFont(float size = 11) const {
        return mSupplier.NewFont(zelui::ui::GetFontName(0), SupplierInterface::kFontPlain, size);
    }

    const SupplierInterface& mSupplier = *SupplierInterface::GetDefault();
};

class ForeignPath final : public Path {
    void MoveTo(const PointF&) override {}
    void LineTo(const PointF&) override {}
    void Close() override {}
    void AddRect(const RectF&) override {}
};

class ForeignFont final : public Font {
    float GetStringWidth(const zelcore::ustring& text) const override { return static_cast<float>(text.size()); }
    float GetAscent() const override { return 8; }
    float GetDescent() const override { return 2; }
};

}  // namespace

TEST_F(DrawbotTest, FillRectFillsExactlyItsPixels) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(6, 4);
    drawbot->FillRect({1, 1, 3, 2}, kRed);
    EXPECT_EQ(CoverageOf(drawbot), (Picture{"......", ".###..", ".###..", "......"}));
    EXPECT_EQ(ImageOf(drawbot).pixelColor(1, 1), QColor(255, 0, 0));
}

TEST_F(DrawbotTest, FillRectIsCrispAtEveryScale) {
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        QImage image = MakeBlank(QSize(40, 40), scale);
        QPainter painter(&image);
        {
            const PainterDrawbot drawbot(painter);
            drawbot.Get().FillRect({1, 1, 3, 5}, kRed);
        }
        painter.end();
        const QRect expected(QPoint(qRound(scale), qRound(scale)),
                             QPoint(qRound(4 * scale), qRound(6 * scale)) - QPoint(1, 1));
        EXPECT_EQ(InkOf(image), expected) << scale;
        for (const std::string& row : CoverageOf(image))
            EXPECT_EQ(row.find_first_not_of(".#"), std::string::npos) << row;
    }
}

TEST_F(DrawbotTest, NeighboursHaveNeitherGapNorOverlapAtAFractionalScale) {
    QImage image = MakeBlank(QSize(50, 3), 1.25);
    QPainter painter(&image);
    {
        const PainterDrawbot drawbot(painter);
        for (int i = 0; i < 40; ++i) drawbot.Get().FillRect({static_cast<float>(i), 0, 1, 2}, {0, 0, 0, 0.5f});
    }
    painter.end();
    for (int x = 0; x < 50; ++x) EXPECT_NEAR(qAlpha(image.pixel(x, 0)), 128, 1) << x;
}

TEST_F(DrawbotTest, ColorsOutsideTheirRangeCountAsTheNearerEnd) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(1, 1);
    drawbot->FillRect({0, 0, 1, 1}, {7, -3, kNoNumber, 2});
    EXPECT_EQ(ImageOf(drawbot).pixelColor(0, 0), QColor(255, 0, 0, 255));
}

TEST_F(DrawbotTest, ColorsThatLetSomethingThroughAreMixed) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(1, 1);
    drawbot->FillRect({0, 0, 1, 1}, kBlue);
    drawbot->FillRect({0, 0, 1, 1}, {1, 0, 0, 0.5f});
    const QColor mixed = ImageOf(drawbot).pixelColor(0, 0);
    EXPECT_NEAR(mixed.red(), 128, 2);
    EXPECT_NEAR(mixed.blue(), 128, 2);
    EXPECT_EQ(mixed.alpha(), 255);
}

TEST_F(DrawbotTest, RectanglesThatAreNoneDrawNothing) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(4, 4);
    for (const RectF& rect :
         {RectF{1, 1, 0, 2}, RectF{3, 3, -2, -2}, RectF{kNoNumber, 0, 2, 2}, RectF{0, 0, kNoNumber, 2}})
        drawbot->FillRect(rect, kRed);
    EXPECT_TRUE(IsBlank(ImageOf(drawbot)));
}

TEST_F(DrawbotTest, ARectangleWithoutEndFillsTheSurface) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(2, 2);
    drawbot->FillRect({-kInfinite, 0, kInfinite, 1}, kRed);
    EXPECT_TRUE(IsBlank(ImageOf(drawbot)));
    drawbot->FillRect({-1e30f, -1e30f, 3e30f, 3e30f}, kRed);
    EXPECT_EQ(CoverageOf(drawbot), (Picture{"##", "##"}));
}

TEST_F(DrawbotTest, AOneUnitLineFallsOnWholePixelsAtHalfCoordinates) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(6, 6);
    drawbot->StrokePath(*NewRectPath({1.5f, 1.5f, 3, 3}), kRed, 1);
    EXPECT_EQ(CoverageOf(drawbot), (Picture{"......", ".####.", ".#..#.", ".#..#.", ".####.", "......"}));
    EXPECT_EQ(ImageOf(drawbot).pixelColor(1, 1), QColor(255, 0, 0));
}

TEST_F(DrawbotTest, AOneUnitLineIsTwoWholePixelsAtScaleTwo) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(4, 2, 2);
    const intrusive_ptr<Path> path = mSupplier.NewPath();
    path->MoveTo({1, 0.5f});
    path->LineTo({3, 0.5f});
    drawbot->StrokePath(*path, kRed, 1);
    EXPECT_EQ(CoverageOf(drawbot), (Picture{"..####..", "..####..", "........", "........"}));
}

TEST_F(DrawbotTest, AStrokeThatLetsSomethingThroughIsNotDarkerAtItsCorners) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(5, 5);
    drawbot->StrokePath(*NewRectPath({0.5f, 0.5f, 4, 4}), {0, 0, 0, 0.5f}, 1);
    EXPECT_EQ(ImageOf(drawbot).pixel(0, 0), ImageOf(drawbot).pixel(2, 0));
    EXPECT_NEAR(qAlpha(ImageOf(drawbot).pixel(4, 4)), 128, 1);
}

TEST_F(DrawbotTest, AStrokeOfNoWidthDrawsNothing) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(6, 6);
    for (const float width : {0.0f, -1.0f, kNoNumber}) drawbot->StrokePath(*NewRectPath({1, 1, 4, 4}), kRed, width);
    EXPECT_TRUE(IsBlank(ImageOf(drawbot)));
}

TEST_F(DrawbotTest, AClosedPathIsStrokedAllRoundAnOpenOneIsNot) {
    const auto drawThreeSides = [this](bool close) {
        const intrusive_ptr<Drawbot> drawbot = NewDrawbot(5, 5);
        const intrusive_ptr<Path> path = mSupplier.NewPath();
        path->MoveTo({0.5f, 0.5f});
        path->LineTo({4.5f, 0.5f});
        path->LineTo({4.5f, 4.5f});
        path->LineTo({0.5f, 4.5f});
        if (close) path->Close();
        drawbot->StrokePath(*path, kRed, 1);
        return CoverageOf(drawbot)[2];
    };
    EXPECT_EQ(drawThreeSides(false), "....#");
    EXPECT_EQ(drawThreeSides(true), "#...#");
}

TEST_F(DrawbotTest, FillPathFillsInside) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(6, 4);
    const intrusive_ptr<Path> path = NewRectPath({1, 1, 4, 2});
    path->AddRect({2, 1, 1, 2});
    drawbot->FillPath(*path, kRed);
    EXPECT_EQ(CoverageOf(drawbot), (Picture{"......", ".#.##.", ".#.##.", "......"})) << "a rectangle inside is a hole";
}

TEST_F(DrawbotTest, ALineWithoutABeginningBeginsAtItsEnd) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(4, 4);
    const intrusive_ptr<Path> path = mSupplier.NewPath();
    path->Close();
    path->LineTo({1, 2.5f});
    path->LineTo({kNoNumber, 0});
    path->LineTo({3, 2.5f});
    drawbot->StrokePath(*path, kRed, 1);
    EXPECT_EQ(CoverageOf(drawbot), (Picture{"....", "....", ".##.", "...."}));
}

TEST_F(DrawbotTest, NothingIsDrawnOutsideTheClips) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(6, 3);
    drawbot->PushClip({1, 0, 4, 3});
    drawbot->PushClip({3, 1, 4, 3});
    drawbot->FillRect({0, 0, 6, 3}, kRed);
    EXPECT_EQ(CoverageOf(drawbot), (Picture{"......", "...##.", "...##."}));
    drawbot->PopClip();
    drawbot->StrokePath(*NewRectPath({-2, -2, 20, 4.5f}), kRed, 1);
    EXPECT_EQ(CoverageOf(drawbot), (Picture{"......", "...##.", ".####."}));
    drawbot->PopClip();
    drawbot->FillRect({0, 0, 6, 1}, kRed);
    EXPECT_EQ(CoverageOf(drawbot)[0], "######");
}

TEST_F(DrawbotTest, AnEmptyClipLetsNothingThrough) {
    for (const RectF& rect : {RectF{1, 1, 0, 0}, RectF{0, 0, -5, 5}, RectF{kNoNumber, 0, 5, 5}}) {
        const intrusive_ptr<Drawbot> drawbot = NewDrawbot(4, 4);
        drawbot->PushClip(rect);
        drawbot->FillRect({0, 0, 4, 4}, kRed);
        drawbot->StrokePath(*NewRectPath({1, 1, 2, 2}), kRed, 2);
        drawbot->DrawString(AsciiToUTF16("M"), *NewFont(), {0, 4}, kRed);
        EXPECT_TRUE(IsBlank(ImageOf(drawbot)));
    }
}

TEST_F(DrawbotTest, APopClipTooManyIsIgnored) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(2, 1);
    drawbot->PopClip();
    drawbot->PushClip({0, 0, 1, 1});
    drawbot->PopClip();
    drawbot->PopClip();
    drawbot->FillRect({0, 0, 2, 1}, kRed);
    EXPECT_EQ(CoverageOf(drawbot), (Picture{"##"}));
}

TEST_F(DrawbotTest, DrawStringStandsOnItsBaseline) {
    const intrusive_ptr<Font> font = NewFont(20);
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(60, 60);
    drawbot->DrawString(AsciiToUTF16("HH"), *font, {10, 40}, kRed);
    const QRect ink = InkOf(ImageOf(drawbot));
    EXPECT_EQ(ink.bottom(), 39);
    EXPECT_GE(static_cast<float>(ink.top()), 40 - font->GetAscent() - 1);
    EXPECT_LT(ink.top(), 30);
    EXPECT_GE(ink.left(), 10);
    EXPECT_LE(static_cast<float>(ink.right()), 10 + font->GetStringWidth(AsciiToUTF16("HH")));
    EXPECT_EQ(ImageOf(drawbot).pixelColor(ink.left() + 1, 39).red(), 255);
}

TEST_F(DrawbotTest, LettersHangBelowTheBaselineNoFartherThanTheDescent) {
    const intrusive_ptr<Font> font = NewFont(20);
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(60, 60);
    drawbot->DrawString(AsciiToUTF16("gj"), *font, {10, 40}, kRed);
    const int bottom = InkOf(ImageOf(drawbot)).bottom();
    EXPECT_GE(bottom, 41);
    EXPECT_LE(static_cast<float>(bottom), 40 + font->GetDescent());
}

TEST_F(DrawbotTest, NothingInATextIsMarkupOrEndsItsLine) {
    const auto draw = [this](const char* text) {
        const intrusive_ptr<Drawbot> drawbot = NewDrawbot(200, 60);
        drawbot->DrawString(AsciiToUTF16(text), *NewFont(), {5, 20}, kRed);
        return ImageOf(drawbot);
    };
    EXPECT_EQ(draw("one\ntwo\tthree\x01"
                   "four"),
              draw("one two three four"));
    EXPECT_NE(draw("A&B"), draw("AB"));
    EXPECT_GT(InkOf(draw("<b>x</b>")).width(), 3 * InkOf(draw("x")).width());
}

TEST_F(DrawbotTest, WhatIsNotDrawableIsNotDrawn) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(40, 40);
    drawbot->DrawString(AsciiToUTF16("text"), *NewFont(), {kNoNumber, 20}, kRed);
    drawbot->DrawString(zelcore::ustring(), *NewFont(), {10, 20}, kRed);
    drawbot->StrokePath(*mSupplier.NewPath(), kRed, 3);
    drawbot->FillPath(*mSupplier.NewPath(), kRed);
    EXPECT_TRUE(IsBlank(ImageOf(drawbot)));
}

TEST_F(DrawbotTest, AVeryLongTextIsDrawnFromItsBeginning) {
    const auto draw = [this](std::size_t length) {
        const intrusive_ptr<Drawbot> drawbot = NewDrawbot(50, 20);
        drawbot->DrawString(zelcore::ustring(length, 'm'), *NewFont(), {2, 15}, kRed);
        return ImageOf(drawbot);
    };
    EXPECT_EQ(draw(200'000), draw(100));
    EXPECT_FALSE(IsBlank(draw(100)));
}

TEST_F(DrawbotTest, FontsAndPathsOfAnotherSupplierAreNotDrawn) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(10, 10);
    const intrusive_ptr<Path> path = new ForeignPath;
    const intrusive_ptr<Font> font = new ForeignFont;
    drawbot->FillPath(*path, kRed);
    drawbot->StrokePath(*path, kRed, 2);
    drawbot->DrawString(AsciiToUTF16("text"), *font, {1, 9}, kRed);
    EXPECT_TRUE(IsBlank(ImageOf(drawbot)));
}

TEST_F(DrawbotTest, ANodesFrameFillsItsWidget) {
    QImage image = MakeBlank(QSize(6, 4), 2);
    QPainter painter(&image);
    {
        const PainterDrawbot drawbot(painter, QPointF(-100.5, -20));
        drawbot.Get().FillRect({100.5f, 20, 3, 2}, kRed);
    }
    painter.end();
    EXPECT_EQ(CoverageOf(image), (Picture(4, "######")));
}

TEST_F(DrawbotTest, AKeptDrawbotDrawsNothingAfterItsTime) {
    QImage image = MakeBlank(QSize(4, 4), 1);
    QPainter painter(&image);
    intrusive_ptr<Drawbot> kept;
    {
        const PainterDrawbot drawbot(painter);
        kept = &drawbot.Get();
    }
    kept->PushClip({0, 0, 1, 1});
    kept->FillRect({0, 0, 4, 4}, kRed);
    kept->FillPath(*NewRectPath({0, 0, 4, 4}), kRed);
    kept->StrokePath(*NewRectPath({1, 1, 2, 2}), kRed, 1);
    kept->DrawString(AsciiToUTF16("text"), *NewFont(), {0, 4}, kRed);
    kept->PopClip();
    painter.end();
    kept->FillRect({0, 0, 4, 4}, kRed);
    EXPECT_TRUE(IsBlank(image));
}

TEST_F(DrawbotTest, ThePainterIsLeftAsItWasFoundAlsoByAnException) {
    QImage image = MakeBlank(QSize(8, 8), 1);
    QPainter painter(&image);
    painter.setPen(Qt::green);
    painter.setRenderHint(QPainter::Antialiasing, true);
    try {
        const PainterDrawbot drawbot(painter, QPointF(3, 3));
        drawbot.Get().PushClip({0, 0, 1, 1});
        drawbot.Get().PushClip({0, 0, 1, 1});
        drawbot.Get().DrawString(AsciiToUTF16("x"), *NewFont(), {0, 0}, kRed);
        throw std::runtime_error("half way");
    } catch (const std::runtime_error&) {
    }
    EXPECT_FALSE(painter.hasClipping());
    EXPECT_TRUE(painter.testRenderHint(QPainter::Antialiasing));
    EXPECT_EQ(painter.pen().color(), QColor(Qt::green));
    EXPECT_TRUE(painter.transform().isIdentity());
}
