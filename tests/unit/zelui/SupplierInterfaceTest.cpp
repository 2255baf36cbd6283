#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <QApplication>
#include <QFontInfo>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QProcess>

#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>
#include <zelui/SupplierInterface.h>
#include <zelui/Theme.h>

#include "../../../frameworks/zelui/src/Fonts.h"
#include "../../../frameworks/zelui/src/ImageDrawbot.h"

namespace {

using boost::intrusive_ptr;
using zelcore::ustring;
using zelcore::utility::AsciiToUTF16;
using zelui::drawbot::Drawbot;
using zelui::drawbot::Font;
using zelui::drawbot::SupplierInterface;

ustring ToText(const char* utf8) { return zelui::qt::FromQString(QString::fromUtf8(utf8)); }

intrusive_ptr<Font> NewFont(float size, int style = SupplierInterface::kFontPlain) {
    return SupplierInterface::GetDefault()->NewFont(zelui::ui::GetFontName(0), style, size);
}

intrusive_ptr<Drawbot> NewDrawbot(int width, int height, int scale) {
    return SupplierInterface::GetDefault()->NewDrawbot(width, height, scale);
}

}  // namespace

TEST(SupplierInterfaceTest, ThereIsOneSupplierOfTheScreen) {
    EXPECT_NE(SupplierInterface::GetDefault(), nullptr);
    EXPECT_EQ(SupplierInterface::GetDefault(), SupplierInterface::GetDefault());
}

TEST(SupplierInterfaceTest, FontsHaveSizesAboveZeroUpToAThousand) {
    for (const float size :
         {0.0f, -1.0f, 1000.5f, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()})
        EXPECT_FALSE(NewFont(size)) << size;
    for (const float size : {0.1f, 1.0f, 11.0f, 1000.0f}) EXPECT_TRUE(NewFont(size)) << size;
}

TEST(SupplierInterfaceTest, ANameThatTheSystemDoesNotHaveGivesAnotherFont) {
    for (const ustring& name :
         {AsciiToUTF16("No Such Family 4711"), ustring(), ustring(100'000, 'x'), AsciiToUTF16("a,b\n[c]")}) {
        const intrusive_ptr<Font> font =
            SupplierInterface::GetDefault()->NewFont(name, SupplierInterface::kFontPlain, 11);
        ASSERT_TRUE(font);
        EXPECT_GT(font->GetStringWidth(AsciiToUTF16("text")), 0);
    }
}

TEST(SupplierInterfaceTest, StylesCanBeCombined) {
    using namespace zelui;
    const ustring name = ui::GetFontName(0);
    EXPECT_FALSE(MakeFont(name, SupplierInterface::kFontPlain, 11).bold());
    EXPECT_TRUE(MakeFont(name, SupplierInterface::kFontBold, 11).bold());
    EXPECT_FALSE(MakeFont(name, SupplierInterface::kFontBold, 11).italic());
    const QFont both = MakeFont(name, SupplierInterface::kFontBold | SupplierInterface::kFontItalic, 11);
    EXPECT_TRUE(both.bold() && both.italic());
    EXPECT_FALSE(MakeFont(name, ~3, 11).bold()) << "bits that mean nothing";
}

TEST(SupplierInterfaceTest, SizesAreWholeDisplayUnits) {
    EXPECT_EQ(zelui::MakeFont(ustring(), 0, 11).pixelSize(), 11);
    EXPECT_EQ(zelui::MakeFont(ustring(), 0, 11.5f).pixelSize(), 12);
    EXPECT_EQ(zelui::MakeFont(ustring(), 0, 0.1f).pixelSize(), 1);
}

TEST(SupplierInterfaceTest, LettersGrowWithTheSize) {
    const intrusive_ptr<Font> small = NewFont(10);
    const intrusive_ptr<Font> large = NewFont(40);
    EXPECT_NEAR(large->GetAscent(), 4 * small->GetAscent(), 5);
    EXPECT_NEAR(large->GetStringWidth(AsciiToUTF16("Frequency")), 4 * small->GetStringWidth(AsciiToUTF16("Frequency")),
                20);
    EXPECT_GT(small->GetAscent(), small->GetDescent());
    EXPECT_GT(small->GetDescent(), 0);
}

TEST(SupplierInterfaceTest, TheWidthIsThatOfTheWholeTextWithTrailingBlanks) {
    const intrusive_ptr<Font> font = NewFont(11);
    EXPECT_EQ(font->GetStringWidth(ustring()), 0);
    const float blank = font->GetStringWidth(AsciiToUTF16(" "));
    EXPECT_GT(blank, 0);
    EXPECT_NEAR(font->GetStringWidth(AsciiToUTF16("text  ")), font->GetStringWidth(AsciiToUTF16("text")) + 2 * blank,
                0.1);
}

TEST(SupplierInterfaceTest, LineEndsAndControlCharactersAreAsWideAsBlanks) {
    const intrusive_ptr<Font> font = NewFont(11);
    EXPECT_EQ(font->GetStringWidth(ToText("one\ntwo\r\tthree\u2028four\u0085five\x01")),
              font->GetStringWidth(ToText("one two  three four five ")));
    EXPECT_GT(font->GetStringWidth(AsciiToUTF16("a&b")), font->GetStringWidth(AsciiToUTF16("ab")));
}

TEST(SupplierInterfaceTest, ALongTextIsAsWideAsItsParts) {
    const intrusive_ptr<Font> font = NewFont(11);
    const float one = font->GetStringWidth(ustring(1000, 'm'));
    EXPECT_NEAR(font->GetStringWidth(ustring(1'000'000, 'm')), 1000 * one, one);
    ustring marks(100'000, 0x0301);
    marks[0] = 'e';
    EXPECT_GE(font->GetStringWidth(marks), 0) << "one letter with marks without end";
}

TEST(SupplierInterfaceTest, ALabelOfATextsWidthShowsTheWholeText) {
    for (const char* text :
         {"Channel", "Effect Input", "Left (1) - Side Chain", "WAVE To AVATAR", "fi ffi fl", "illicit",
          "Kanal (Seitenkette)", "Größe: Übersprechdämpfung ß", "チャンネル 左", "入力バス 2", "f", "j"}) {
        for (const float size : {9.0f, 11.0f, 13.0f, 24.0f}) {
            const QString shown = QString::fromUtf8(text);
            QLabel label(shown);
            label.setFont(zelui::MakeFont(zelui::ui::GetFontName(0), 0, size));
            label.resize(static_cast<int>(std::ceil(NewFont(size)->GetStringWidth(ToText(text)))), 40);
            label.show();
            EXPECT_EQ(label.fontMetrics().elidedText(shown, Qt::ElideRight, label.contentsRect().width()), shown)
                << size;
            EXPECT_GE(label.contentsRect().width() + 1, label.fontMetrics().horizontalAdvance(shown)) << text << size;
        }
    }
}

TEST(SupplierInterfaceTest, LabelsShowTheWholeTextOnADenseScreenAsWell) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", "2");
    environment.remove("GTEST_OUTPUT");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_filter=SupplierInterfaceTest.ALabelOfATextsWidthShowsTheWholeText"});
    ASSERT_TRUE(process.waitForFinished(60000));
    const QByteArray printed = process.readAllStandardOutput();
    EXPECT_EQ(process.exitCode(), 0) << printed.toStdString();
    EXPECT_TRUE(printed.contains("[  PASSED  ] 1 test.")) << printed.toStdString();
}

TEST(SupplierInterfaceTest, ASurfaceHasItsSizeInPixelsAndIsTransparent) {
    const intrusive_ptr<Drawbot> drawbot = NewDrawbot(30, 20, 2);
    ASSERT_TRUE(drawbot);
    const QImage image = dynamic_cast<zelui::drawbot::ImageDrawbot&>(*drawbot).GetImage();
    EXPECT_EQ(image.size(), QSize(60, 40));
    EXPECT_EQ(image.devicePixelRatio(), 2);
    EXPECT_EQ(image.pixelColor(59, 39).alpha(), 0);
}

TEST(SupplierInterfaceTest, TheSmallestSurfaceIsEnoughToMeasureWith) { EXPECT_TRUE(NewDrawbot(1, 1, 1)); }

TEST(SupplierInterfaceTest, SurfacesWithoutAreaAreRefused) {
    EXPECT_FALSE(NewDrawbot(0, 1, 1));
    EXPECT_FALSE(NewDrawbot(1, 0, 1));
    EXPECT_FALSE(NewDrawbot(1, 1, 0));
    EXPECT_FALSE(NewDrawbot(-5, -5, 1));
    EXPECT_FALSE(NewDrawbot(-5, 5, -1));
}

TEST(SupplierInterfaceTest, SurfacesOfMoreThan64MillionPixelsAreRefused) {
    const int most = std::numeric_limits<int>::max();
    EXPECT_TRUE(NewDrawbot(8000, 8000, 1));
    EXPECT_FALSE(NewDrawbot(8001, 8000, 1));
    EXPECT_FALSE(NewDrawbot(4001, 4000, 2));
    EXPECT_FALSE(NewDrawbot(most, most, most));
    EXPECT_FALSE(NewDrawbot(1, 1, most));
    EXPECT_FALSE(NewDrawbot(65536, 65536, 1)) << "the product is 0 in 32 bits";
}
