#include <gtest/gtest.h>
#include <limits>
#include <string>

#include <QString>

#include <zelui/Drawbot.h>
#include <zelui/QtBridge.h>
#include <zelui/SupplierInterface.h>
#include <zelui/Theme.h>

namespace {

using boost::intrusive_ptr;
using zelui::drawbot::Font;
using zelui::drawbot::TruncateMode;
using zelui::drawbot::TruncateString;

// One unit for each UTF-16 unit: what fits can be counted.
class CountingFont final : public Font {
public:
    float GetStringWidth(const zelcore::ustring& text) const override {
        measured += text.size();
        return static_cast<float>(text.size());
    }
    float GetAscent() const override { return 1; }
    float GetDescent() const override { return 0; }

    mutable std::size_t measured = 0;
};

zelcore::ustring ToText(const char* utf8) { return zelui::qt::FromQString(QString::fromUtf8(utf8)); }

class TruncateStringTest : public ::testing::Test {
protected:
    std::string Truncate(const char* text, float width, int mode) const {
        const zelcore::ustring result = TruncateString(ToText(text), *mFont, width, static_cast<TruncateMode>(mode));
        return zelui::qt::ToQString(result).toStdString();
    }

    intrusive_ptr<CountingFont> mFont = new CountingFont;
};

const int kModes[] = {zelui::drawbot::kTruncateStart, zelui::drawbot::kTruncateEnd, zelui::drawbot::kTruncateMiddle};

}  // namespace

TEST_F(TruncateStringTest, ModesHaveTheirNumbers) {
    EXPECT_EQ(zelui::drawbot::kTruncateNone, 0);
    EXPECT_EQ(zelui::drawbot::kTruncateStart, 1);
    EXPECT_EQ(zelui::drawbot::kTruncateEnd, 2);
    EXPECT_EQ(zelui::drawbot::kTruncateMiddle, 3);
}

TEST_F(TruncateStringTest, ATextThatFitsExactlyIsReturnedWhole) {
    for (const int mode : kModes) EXPECT_EQ(Truncate("abcdef", 6, mode), "abcdef");
}

TEST_F(TruncateStringTest, EachModeLeavesOutItsPart) {
    EXPECT_EQ(Truncate("abcdef", 5, zelui::drawbot::kTruncateStart), "…cdef");
    EXPECT_EQ(Truncate("abcdef", 5, zelui::drawbot::kTruncateEnd), "abcd…");
    EXPECT_EQ(Truncate("abcdef", 5, zelui::drawbot::kTruncateMiddle), "ab…ef");
    EXPECT_EQ(Truncate("abcdef", 4, zelui::drawbot::kTruncateMiddle), "ab…f");
}

TEST_F(TruncateStringTest, NoneReturnsTheTextHoweverWide) {
    EXPECT_EQ(Truncate("abcdef", 0, zelui::drawbot::kTruncateNone), "abcdef");
    EXPECT_EQ(Truncate("abcdef", 3, 17), "abcdef") << "as does a mode that is none";
}

TEST_F(TruncateStringTest, OnlyTheDotsWhereNothingElseFitsAndNothingWhereTheyDoNot) {
    for (const int mode : kModes) {
        EXPECT_EQ(Truncate("abcdef", 1, mode), "…");
        EXPECT_EQ(Truncate("abcdef", 0.9f, mode), "");
        EXPECT_EQ(Truncate("abcdef", -4, mode), "");
        EXPECT_EQ(Truncate("abcdef", std::numeric_limits<float>::quiet_NaN(), mode), "");
    }
}

TEST_F(TruncateStringTest, AnEmptyTextStaysEmpty) {
    for (const int mode : kModes) EXPECT_EQ(Truncate("", 0, mode), "");
}

TEST_F(TruncateStringTest, AsMuchAsFitsIsKeptForEveryWidth) {
    for (int width = 1; width < 40; ++width) {
        for (const int mode : kModes)
            EXPECT_EQ(QString::fromStdString(
                          Truncate("0123456789012345678901234567890123456789", static_cast<float>(width), mode))
                          .size(),
                      width);
    }
}

TEST_F(TruncateStringTest, CharactersOfTwoUnitsAreNotCut) {
    const char* const notes = "\U0001F3B5\U0001F3B6\U0001F3B7";
    EXPECT_EQ(Truncate(notes, 4, zelui::drawbot::kTruncateEnd), "\U0001F3B5…");
    EXPECT_EQ(Truncate(notes, 4, zelui::drawbot::kTruncateStart), "…\U0001F3B7");
    EXPECT_EQ(Truncate(notes, 5, zelui::drawbot::kTruncateMiddle), "\U0001F3B5…\U0001F3B7");
    EXPECT_EQ(Truncate(notes, 4, zelui::drawbot::kTruncateMiddle), "\U0001F3B5…");
    EXPECT_EQ(Truncate(notes, 2, zelui::drawbot::kTruncateEnd), "…");
}

TEST_F(TruncateStringTest, CombiningMarksStayWithTheirLetters) {
    const char* const text = "e\u0301e\u0301e\u0301";
    EXPECT_EQ(Truncate(text, 4, zelui::drawbot::kTruncateEnd), "e\u0301…");
    EXPECT_EQ(Truncate(text, 4, zelui::drawbot::kTruncateStart), "…e\u0301");
    EXPECT_EQ(Truncate(text, 5, zelui::drawbot::kTruncateMiddle), "e\u0301…e\u0301");
}

TEST_F(TruncateStringTest, JoinedPicturesAreOneCharacter) {
    EXPECT_EQ(Truncate("a\U0001F468\u200D\U0001F469\u200D\U0001F467b", 8, zelui::drawbot::kTruncateEnd), "a…");
}

TEST_F(TruncateStringTest, HalfACharacterInTheTextIsNoReasonToFail) {
    const zelcore::ustring text{'a', 0xD83C, 'b', 0xDFB5, 'c', 'd'};
    const zelcore::ustring expected{'a', 0xD83C, 0x2026};
    EXPECT_EQ(TruncateString(text, *mFont, 3, zelui::drawbot::kTruncateEnd), expected);
}

TEST_F(TruncateStringTest, ALongTextCostsNoMoreThanWhatFitsOfIt) {
    const zelcore::ustring text(1'000'000, 'x');
    for (const int mode : kModes)
        EXPECT_EQ(TruncateString(text, *mFont, 20, static_cast<TruncateMode>(mode)).size(), 20u);
    EXPECT_LT(mFont->measured, 100'000u);
}

TEST_F(TruncateStringTest, ALongTextThatFitsIsReturnedWhole) {
    const zelcore::ustring text(30'000, 'x');
    EXPECT_EQ(TruncateString(text, *mFont, 30'000, zelui::drawbot::kTruncateMiddle), text);
}

TEST_F(TruncateStringTest, WithARealFontTheResultFitsAndOneMoreWouldNot) {
    const intrusive_ptr<Font> font =
        zelui::drawbot::SupplierInterface::GetDefault()->NewFont(zelui::ui::GetFontName(0), 0, 11);
    const QString text = QStringLiteral("/usr/lib/vst3/Wide Waves.vst3/Contents/x86_64-linux/Wide Waves.so");
    for (float width = 20; width < 300; width += 7.3f) {
        const zelcore::ustring kept =
            TruncateString(zelui::qt::FromQString(text), *font, width, zelui::drawbot::kTruncateEnd);
        EXPECT_LE(font->GetStringWidth(kept), width);
        const QString more = text.left(static_cast<qsizetype>(kept.size())) + QChar(0x2026);
        EXPECT_GT(font->GetStringWidth(zelui::qt::FromQString(more)), width) << more.toStdString();
    }
}
