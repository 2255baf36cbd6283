#include <climits>
#include <gtest/gtest.h>
#include <QLayout>
#include <QScreen>
#include <QTest>
#include <QTextDocument>
#include <tuple>
#include <vector>

#include "DialogTools.h"
#include "support/accessibility/SpokenText.h"

namespace zeltests {
namespace {

using zelui::dialogs::UI_ProgressDialog;
using zelui::ui::UI_DialogViewContainer;

const char kLongPath[] =
    "/home/somebody/.vst3/A Vendor With A Long Name/Collections/Twenty-Four/Spectral Something Deluxe Edition.vst3/"
    "Contents/x86_64-linux/Spectral Something Deluxe Edition.so";

class UI_ProgressDialogTest : public ::testing::Test {
protected:
    UI_ProgressDialogTest() : mDialog(MakeProgressDialog()) { mDialog->UI_ShowModeless(); }
    ~UI_ProgressDialogTest() override { mDialog->UI_Close(UI_DialogViewContainer::kResponseOK); }

    ProgressDialogPtr mDialog;
};

}  // namespace

TEST_F(UI_ProgressDialogTest, ShowsTitleTextAndLocalisedCancel) {
    EXPECT_EQ(GetWindow(mDialog)->windowTitle(), "Scanning");
    EXPECT_EQ(GetExtraText(mDialog)->text(), "Extra");
    EXPECT_EQ(GetCancelButton(mDialog)->text(), "Cancel");
    EXPECT_EQ(GetSpokenName(*GetBar(mDialog)), "Scanning");
}

TEST_F(UI_ProgressDialogTest, ProgressIsShownAsGivenAndInNumbers) {
    mDialog->SetProgress(3, 17, zelcore::ustring());
    EXPECT_EQ(GetBar(mDialog)->value(), 3);
    EXPECT_EQ(GetBar(mDialog)->maximum(), 17);
    EXPECT_EQ(GetBar(mDialog)->text(), "3 of 17");
    EXPECT_EQ(GetSpokenDescription(*GetBar(mDialog)), "3 of 17");
}

TEST_F(UI_ProgressDialogTest, ATextTakesThePlaceOfTheNumbersAndIsNoFormat) {
    mDialog->SetProgress(3, 17, U("%p%% of %v &amp; <b>%m</b>"));
    EXPECT_EQ(GetBar(mDialog)->text(), "%p%% of %v &amp; <b>%m</b>");
    mDialog->SetProgress(4, 17, zelcore::ustring());
    EXPECT_EQ(GetBar(mDialog)->text(), "4 of 17");
}

TEST_F(UI_ProgressDialogTest, ACurrentAboveTheTotalCountsAsAll) {
    mDialog->SetProgress(99, 17, zelcore::ustring());
    EXPECT_EQ(GetBar(mDialog)->value(), 17);
    EXPECT_EQ(GetBar(mDialog)->text(), "17 of 17");
}

TEST_F(UI_ProgressDialogTest, CountsBeyondIntAreScaled) {
    const unsigned long total = ULONG_MAX;
    mDialog->SetProgress(total / 2, total, zelcore::ustring());
    EXPECT_GT(GetBar(mDialog)->maximum(), 1000000);
    EXPECT_NEAR(static_cast<double>(GetBar(mDialog)->value()) / GetBar(mDialog)->maximum(), 0.5, 0.001);
    mDialog->SetProgress(total, total, zelcore::ustring());
    EXPECT_EQ(GetBar(mDialog)->value(), GetBar(mDialog)->maximum());
    mDialog->SetProgress(0, static_cast<unsigned long>(INT_MAX), zelcore::ustring());
    EXPECT_EQ(GetBar(mDialog)->maximum(), INT_MAX);
    EXPECT_EQ(GetBar(mDialog)->value(), 0);
}

TEST_F(UI_ProgressDialogTest, ATotalOfZeroOnlyShowsThatSomethingGoesOn) {
    mDialog->SetProgress(3, 17, zelcore::ustring());
    mDialog->SetProgress(5, 0, zelcore::ustring());
    EXPECT_EQ(std::make_tuple(GetBar(mDialog)->minimum(), GetBar(mDialog)->maximum()), std::make_tuple(0, 0));
    EXPECT_EQ(GetBar(mDialog)->text(), "");
}

TEST_F(UI_ProgressDialogTest, IndeterminateEndsWithTheFirstProgress) {
    const ProgressDialogPtr busy = MakeProgressDialog(true, true);
    busy->UI_ShowModeless();
    EXPECT_EQ(GetBar(busy)->maximum(), 0);
    busy->SetProgress(1, 2, zelcore::ustring());
    EXPECT_EQ(GetBar(busy)->maximum(), 2);
    busy->UI_Close(UI_DialogViewContainer::kResponseOK);
}

TEST_F(UI_ProgressDialogTest, TheBarStaysEmptyUntilTheFirstProgressAndNeverGoesByItself) {
    EXPECT_GT(GetBar(mDialog)->maximum(), 0);
    EXPECT_EQ(GetBar(mDialog)->value(), 0);
    mDialog->SetProgress(17, 17, zelcore::ustring());
    mDialog->UI_IdleUpdate();
    EXPECT_TRUE(mDialog->UI_IsOpen());
    EXPECT_TRUE(GetBar(mDialog)->isVisible());
}

TEST_F(UI_ProgressDialogTest, EveryProgressFiresTheSignalWithTheTextAbove) {
    std::vector<std::tuple<unsigned long, unsigned long, std::string>> seen;
    const boost::signals::scoped_connection connection = UI_ProgressDialog::GetProgressSignal().connect(
        [&](unsigned long current, unsigned long total, const zelcore::ustring& text) {
            seen.emplace_back(current, total, std::string(zelcore::utility::UTF16to8(text)));
        });
    mDialog->SetProgress(1, 2, U("ignored"));
    mDialog->SetExtraText(U("Echo"));
    mDialog->SetProgress(3, 2, zelcore::ustring());
    mDialog->SetProgress(4, 0, zelcore::ustring());
    ASSERT_EQ(seen.size(), 3u);
    EXPECT_EQ(seen[0], std::make_tuple(1ul, 2ul, std::string("Extra")));
    EXPECT_EQ(seen[1], std::make_tuple(2ul, 2ul, std::string("Echo")));
    EXPECT_EQ(seen[2], std::make_tuple(4ul, 0ul, std::string("Echo")));
}

TEST_F(UI_ProgressDialogTest, ALongTextIsShortenedInTheMiddleAndWholeForScreenReadersAndToolTip) {
    mDialog->SetExtraText(U(kLongPath));
    mDialog->UI_IdleUpdate();
    QLabel* const label = GetExtraText(mDialog);
    const QString shown = label->text();
    EXPECT_TRUE(shown.startsWith("/home/somebody")) << shown.toStdString();
    EXPECT_TRUE(shown.endsWith("Edition.so")) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QChar(0x2026)));
    EXPECT_LE(label->fontMetrics().horizontalAdvance(shown), label->width());
    EXPECT_EQ(GetSpokenName(*label), kLongPath);
    QTextDocument toolTip;
    toolTip.setHtml(label->toolTip());
    EXPECT_EQ(toolTip.toPlainText().remove(QChar(0x200B)), kLongPath);
}

TEST_F(UI_ProgressDialogTest, AWiderWindowShowsMoreOfTheText) {
    mDialog->SetExtraText(U(kLongPath));
    mDialog->UI_IdleUpdate();
    const qsizetype before = GetExtraText(mDialog)->text().size();
    GetWindow(mDialog)->resize(2400, GetWindow(mDialog)->height());
    EXPECT_GT(GetExtraText(mDialog)->text().size(), before);
    EXPECT_EQ(GetExtraText(mDialog)->text(), kLongPath);
}

TEST_F(UI_ProgressDialogTest, MarkupIsText) {
    const char kMarkup[] = "<b>bold</b> <img src='/etc/passwd'> &amp; &File";
    mDialog->SetExtraText(U(kMarkup));
    mDialog->UI_IdleUpdate();
    QLabel* const label = GetExtraText(mDialog);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(label->text(), kMarkup);
    QTextDocument toolTip;
    toolTip.setHtml(label->toolTip());
    EXPECT_EQ(toolTip.toPlainText(), kMarkup);
}

TEST_F(UI_ProgressDialogTest, LineEndsAndControlCharactersStayOnTheLine) {
    mDialog->SetExtraText(
        U("one\ntwo\r\n\tthree\x1b\xe2\x80\xa8"
          "four"));
    EXPECT_EQ(GetExtraText(mDialog)->text(), "one two   three  four");
    EXPECT_EQ(GetExtraText(mDialog)->height(), GetExtraText(mDialog)->sizeHint().height());
}

TEST_F(UI_ProgressDialogTest, NoTextChangesTheSizeOfTheWindow) {
    mDialog->UI_IdleUpdate();
    const QSize before = GetWindow(mDialog)->size();
    for (const zelcore::ustring& text :
         {zelcore::ustring(), U(kLongPath), zelcore::ustring(100000, 'W'), U("a\nb\nc")}) {
        mDialog->SetExtraText(text);
        mDialog->SetProgress(1, 2, text);
        mDialog->UI_IdleUpdate();
        EXPECT_EQ(GetWindow(mDialog)->size(), before);
        EXPECT_EQ(GetWindow(mDialog)->sizeHint(), before);
    }
    EXPECT_LE(GetSpokenName(*GetExtraText(mDialog)).size(), 4000);
}

TEST_F(UI_ProgressDialogTest, ItIsWideEnoughAndNeverHigherThanItsContent) {
    EXPECT_GE(GetWindow(mDialog)->width(), 420);
    EXPECT_EQ(GetWindow(mDialog)->maximumHeight(), GetWindow(mDialog)->height());
    EXPECT_GT(GetWindow(mDialog)->maximumWidth(), 2000);
}

TEST_F(UI_ProgressDialogTest, AMarkForChangesInTheTitleIsText) {
    const ProgressDialogPtr dialog =
        new UI_ProgressDialog(nullptr, U("a[*]b\nc"), zelcore::ustring(), nullptr, false, true);
    dialog->UI_ShowModeless();
    EXPECT_EQ(GetWindow(dialog)->windowHandle()->title(), "a[*]b c");
    dialog->UI_Close(UI_DialogViewContainer::kResponseOK);
}

TEST_F(UI_ProgressDialogTest, IdleUpdatePaintsBeforeItReturnsEvenManyTimesAFrame) {
    mDialog->UI_IdleUpdate();
    const EventCounter labelPaints(GetExtraText(mDialog), QEvent::Paint);
    const EventCounter barPaints(GetBar(mDialog), QEvent::Paint);
    for (int i = 1; i <= 20; ++i) {
        mDialog->SetExtraText(U(std::to_string(i).c_str()));
        mDialog->SetProgress(static_cast<unsigned long>(i), 20, zelcore::ustring());
        mDialog->UI_IdleUpdate();
        ASSERT_EQ(labelPaints.GetCount(), i);
        ASSERT_GE(barPaints.GetCount(), i);
    }
}

TEST_F(UI_ProgressDialogTest, TheFirstIdleUpdateAfterShowingBringsTheTextToTheScreen) {
    const ProgressDialogPtr dialog = MakeProgressDialog();
    dialog->SetExtraText(U("Before showing"));
    dialog->UI_ShowModeless();
    dialog->UI_IdleUpdate();
    QWidget* const window = GetWindow(dialog);
    const QImage onScreen =
        window->screen()->grabWindow(window->winId()).toImage().convertToFormat(QImage::Format_RGB32);
    const QImage drawn = window->grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(onScreen, drawn);
    dialog->UI_Close(UI_DialogViewContainer::kResponseOK);
}

TEST_F(UI_ProgressDialogTest, TheSameTextAgainPaintsNothing) {
    mDialog->UI_IdleUpdate();
    const EventCounter paints(GetExtraText(mDialog), QEvent::Paint);
    mDialog->SetExtraText(U("Extra"));
    mDialog->UI_IdleUpdate();
    EXPECT_EQ(paints.GetCount(), 0);
}

}  // namespace zeltests
