#include <gtest/gtest.h>
#include <QHeaderView>
#include <QImage>
#include <QTableView>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>
#include <zelui/SupplierInterface.h>
#include <zelui/Theme.h>

#include "ManagerStage.h"

namespace zeltests {

using zelui::drawbot::SupplierInterface;

namespace {

constexpr int kEnabledColumn = 0;
constexpr int kNameColumn = 1;
constexpr int kTypeColumn = 2;
constexpr float kInset = 6.0f;

/// What the plug-in list draws into its cells, in pictures of them.
class PluginListDrawingTest : public ManagerStage {
protected:
    /// `text` as a column of that width shows it.
    std::string Truncate(const std::string& text, float width, int mode) const {
        const auto font =
            SupplierInterface::GetDefault()->NewFont(zelui::ui::GetFontName(0), SupplierInterface::kFontPlain, 11.0f);
        return ToBytes(zelui::drawbot::TruncateString(zelcore::utility::UTF8to16(text), *font, width - kInset,
                                                      static_cast<zelui::drawbot::TruncateMode>(mode)));
    }
    QTableView& GetPluginTable() const {
        QWidget* const widget = zelui::qt::GetWidget(GetPlugins());
        QTableView* const table = qobject_cast<QTableView*>(widget);
        return table != nullptr ? *table : *widget->findChild<QTableView*>();
    }
    void SetWidth(int column, int width) {
        GetPlugins().SetColumnWidth(column, static_cast<float>(width));
        ProcessUntil([&] { return GetPluginTable().columnWidth(column) == width; });
    }
    QImage TakePicture(int row, int column) const {
        ProcessUntil(
            [&] { return GetPluginTable().model()->rowCount() == static_cast<int>(GetPlugins().GetRowCount()); });
        const QRect cell = GetPluginTable().visualRect(GetPluginTable().model()->index(row, column));
        return GetPluginTable().viewport()->grab(cell).toImage().convertToFormat(QImage::Format_RGB32);
    }
    static bool IsOneColour(const QImage& picture) {
        QImage plain = picture;
        plain.fill(picture.pixel(0, 0));
        return picture == plain;
    }
    /// How light the ink is that differs most from the background, with that of the background.
    static std::pair<int, int> GetInk(const QImage& picture) {
        const int background = qGray(picture.pixel(0, 0));
        int ink = background;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const int gray = qGray(picture.pixel(x, y));
                if (std::abs(gray - background) > std::abs(ink - background)) ink = gray;
            }
        }
        return {ink, background};
    }
};

}  // namespace

TEST_F(PluginListDrawingTest, ANameThatIsTooLongIsShortenedAtItsEnd) {
    const std::string name = "Alpha Bravo Charlie Delta Echo Foxtrot";
    ASSERT_NE(Truncate(name, 120, 2), Truncate(name, 120, 3));
    // Every second row has the same background.
    AddPlugin("/p/0.so", name);
    AddPlugin("/p/1.so", "");
    AddPlugin("/p/2.so", Truncate(name, 120, 2));
    AddPlugin("/p/3.so", "");
    AddPlugin("/p/4.so", Truncate(name, 120, 3));
    RunDialog([this] {
        SetWidth(kNameColumn, 120);
        EXPECT_EQ(TakePicture(0, kNameColumn), TakePicture(2, kNameColumn));
        EXPECT_NE(TakePicture(0, kNameColumn), TakePicture(4, kNameColumn));
    });
}

TEST_F(PluginListDrawingTest, ATypeThatIsTooLongIsShortenedInTheMiddle) {
    int width = 18;
    while (width < 60 &&
           (Truncate("VST3", static_cast<float>(width), 3) == Truncate("VST3", static_cast<float>(width), 2) ||
            Truncate("VST3", static_cast<float>(width), 3).empty()))
        ++width;
    const std::string middle = Truncate("VST3", static_cast<float>(width), 3);
    ASSERT_NE(middle, "VST3");
    AddPlugin("/p/0.vst3", middle, true, zelaudiofilterhost::kTechnologyVST3);
    AddPlugin("/p/1.vst3", "", true, zelaudiofilterhost::kTechnologyVST3);
    AddPlugin("/p/2.vst3", Truncate("VST3", static_cast<float>(width), 2), true, zelaudiofilterhost::kTechnologyVST3);
    RunDialog([&] {
        SetWidth(kNameColumn, width);
        SetWidth(kTypeColumn, width);
        EXPECT_FALSE(IsOneColour(TakePicture(0, kTypeColumn)));
        EXPECT_EQ(TakePicture(0, kTypeColumn), TakePicture(0, kNameColumn));
        EXPECT_NE(TakePicture(2, kTypeColumn), TakePicture(2, kNameColumn));
    });
}

TEST_F(PluginListDrawingTest, TheFirstSixUnitsOfACellAreFree) {
    // Its letters begin where the text begins.
    AddPlugin("/p/0.so", "HHHH");
    RunDialog([this] {
        const QImage picture = TakePicture(0, kNameColumn);
        EXPECT_TRUE(IsOneColour(picture.copy(0, 0, 6, picture.height())));
        EXPECT_FALSE(IsOneColour(picture.copy(0, 0, 9, picture.height())));
    });
}

TEST_F(PluginListDrawingTest, ASelectedRowHasTheColourOfHighlightedText) {
    AddPlugin("/p/0.so", "HHHH");
    RunDialog([this] {
        const auto [ink, background] = GetInk(TakePicture(0, kNameColumn));
        EXPECT_LT(ink, background);
        GetPlugins().SelectRow(GetPlugins().GetRowAt(0));
        const auto [selectedInk, selectedBackground] = GetInk(TakePicture(0, kNameColumn));
        EXPECT_GT(selectedInk, selectedBackground);
    });
}

TEST_F(PluginListDrawingTest, InTheFirstColumnThereIsTheCheckBoxAlone) {
    AddPlugin("/p/0.so", "Name");
    RunDialog([this] {
        ASSERT_NE(GetEnabledBox(0), nullptr);
        EXPECT_FALSE(IsOneColour(TakePicture(0, kEnabledColumn)));
        GetEnabledBox(0)->UI_Hide();
        EXPECT_TRUE(IsOneColour(TakePicture(0, kEnabledColumn)));
    });
}

TEST_F(PluginListDrawingTest, ARowThatIsNoPluginsIsBlank) {
    AddPlugin("/p/0.so", "Name");
    RunDialog([this] {
        GetPlugins().CreateAndAppendRow();
        GetPlugins().SyncVisibility();
        for (int column = 0; column < 5; ++column) EXPECT_TRUE(IsOneColour(TakePicture(1, column))) << column;
        EXPECT_EQ(GetEnabledBox(1), nullptr);
    });
}

TEST_F(PluginListDrawingTest, ReloadStaysAtTheRightEdgeOfTheStatusColumnWhenItIsDragged) {
    Ban("/p/crashes.so");
    RunDialog([this] {
        ASSERT_NE(GetReloadButton(0), nullptr);
        const auto header = GetPlugins().GetHeaderRow();
        for (const int width : {300, 150, 220}) {
            GetPluginTable().horizontalHeader()->resizeSection(3, width);
            EXPECT_EQ(header->GetColumnWidth(4), static_cast<float>(width));
            EXPECT_EQ(GetReloadButton(0)->UI_GetLocalRectF().Right(), static_cast<float>(width) - 4.0f);
        }
        // In a column that is too narrow for it the button begins where the column does.
        GetPluginTable().horizontalHeader()->resizeSection(3, 20);
        EXPECT_EQ(GetReloadButton(0)->UI_GetLocalRectF().left, 0.0f);
    });
}

}  // namespace zeltests
