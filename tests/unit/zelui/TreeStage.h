#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <QCheckBox>
#include <QHeaderView>
#include <QTableView>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_MultiColumnTree.h>
#include <zelui/UI_MultiColumnTreeHeaderRow.h>
#include <zelui/UI_TextButton.h>

#include "ControlStage.h"

namespace zeltests {

typedef zelui::controls::UI_MultiColumnTree Tree;
typedef zelui::controls::UI_MultiColumnTreeHeaderRow HeaderRow;
typedef Tree::RowPtr RowPtr;
typedef boost::intrusive_ptr<HeaderRow> HeaderRowPtr;
typedef boost::intrusive_ptr<zelui::controls::UI_Checkbox> CheckboxPtr;
typedef boost::intrusive_ptr<zelui::controls::UI_TextButton> ButtonPtr;

/// Ten rows fit below the header, and two stops of the Tab key stand round the list.
const zelcore::geom::RectF kTreeFrame = {10, 30, 360, 222 + 2};

/// A list in a window, filled with rows that have texts and, where a test wants it, a check box in column 0 and a
/// button in column 2, made when their row comes into view.
class TreeStage : public ::testing::Test {
protected:
    TreeStage() {
        mBefore = mStage.Add(new zelui::controls::UI_TextButton, {10, 5, 80, 20});
        mTree.reset(new Tree);
        mTree->SetCellTextFunction([this](const RowPtr& row, int column) { return TextOf(row, column); });
        mTree->SetRowVisibilityChangedCallback([this](const RowPtr& row) { OnVisibility(row); });
        mTree->SetRowsSelectionChangedCallback([this] { ++mRowsTold; });
        mTree->SetCellSelectionChangedCallback([this] { ++mCellsTold; });
        mTree->SetSupportNoneSelected(true);
    }

    void MakeHeader() {
        mHeader.reset(new HeaderRow(*mTree));
        mHeader->AppendColumn(U("Enabled"), 11);
        mHeader->AppendColumn(U("Name"), 12);
        mHeader->AppendColumn(U("Status"), 13);
        mHeader->SetColumnWidth(11, 70);
        mHeader->SetColumnWidth(12, 140);
        mHeader->SetColumnWidth(13, 100);
    }

    void Fill(int count) {
        std::vector<std::string> names;
        for (int i = 0; i < count; ++i) names.push_back("Row " + std::to_string(i));
        Fill(names);
    }

    void Fill(const std::vector<std::string>& names) {
        for (std::size_t i = 0; i < names.size(); ++i)
            mNames[mTree->CreateAndAppendRow(i + 1 == names.size()).get()] = names[i];
    }

    /// Puts the list into the window.
    void Show() {
        mStage.Add(mTree.get(), kTreeFrame);
        mAfter = mStage.Add(new zelui::controls::UI_TextButton, {10, 265, 80, 20});
        Sync();
    }

    /// What the main loop does between two events.
    void Sync() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

    zelcore::ustring TextOf(const RowPtr& row, int column) const {
        const auto found = mNames.find(row.get());
        return column == 1 && found != mNames.end() ? U(found->second.c_str()) : zelcore::ustring();
    }

    QTableView* GetTable() const { return ControlStage::GetWidget<QTableView>(*mTree); }
    QWidget* GetViewport() const { return GetTable()->viewport(); }
    QHeaderView* GetQtHeader() const { return GetTable()->horizontalHeader(); }
    int GetRowHeight() const { return static_cast<int>(mTree->GetRowHeight()); }

    RowPtr Row(std::size_t place) const { return mTree->GetRowAt(place); }
    std::string NameAt(std::size_t place) const { return mNames.at(Row(place).get()); }
    std::vector<std::string> GetNames() const {
        std::vector<std::string> names;
        for (std::size_t i = 0; i < mTree->GetRowCount(); ++i) names.push_back(NameAt(i));
        return names;
    }
    std::vector<std::string> GetSelectedNames() const {
        std::vector<std::string> names;
        for (const RowPtr& row : mTree->GetSelectedRows()) names.push_back(mNames.at(row.get()));
        return names;
    }

    QPoint PointIn(std::size_t place, int column) const {
        const int x = GetQtHeader()->sectionViewportPosition(column) + GetQtHeader()->sectionSize(column) - 8;
        return QPoint(x, static_cast<int>(place) * GetRowHeight() + GetRowHeight() / 2 -
                             GetTable()->verticalScrollBar()->value());
    }
    void Click(std::size_t place, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* const target = GetViewport()->childAt(PointIn(place, column));
        const QPoint point = PointIn(place, column);
        QWidget* const widget = target != nullptr ? target : GetViewport();
        QTest::mouseClick(widget, Qt::LeftButton, modifiers, widget->mapFrom(GetViewport(), point));
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    void GiveFocus() { ASSERT_TRUE(mTree->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram)); }

    void OnVisibility(const RowPtr& row) {
        ++mVisibilityTold;
        if (!mTree) return;
        if (!mTree->IsRowVisible(row)) {
            mCheckboxes.erase(row.get());
            mButtons.erase(row.get());
        } else if (mWantsControls) {
            AddControls(row);
        }
        if (onVisibility) onVisibility(row);
    }

    void AddControls(const RowPtr& row) {
        const CheckboxPtr checkbox(new zelui::controls::UI_Checkbox);
        checkbox->UI_SetLocalRectF({0, 3, 200, 14});
        checkbox->UI_Show(true);
        row->GetCellView(0)->ChildPushBack(checkbox);
        checkbox->zelui::controls::UI_ControlView::NotifyWhenChanged(
            Handler<zelui::controls::UI_ControlView::ChangedFunction>(
                [this, key = row.get()](zelui::controls::UI_ControlChangedMessage*) {
                    mUsed.push_back(mNames.at(key));
                    if (onUsed) onUsed();
                }));
        mCheckboxes[row.get()] = checkbox;
        const ButtonPtr button(new zelui::controls::UI_TextButton);
        button->SetText(U("Reload"));
        button->UI_SetLocalRectF({4, 1, 60, 17});
        button->UI_Show(true);
        row->GetCellView(2)->ChildPushBack(button);
        button->zelui::controls::UI_ControlView::NotifyWhenChanged(
            Handler<zelui::controls::UI_ControlView::ChangedFunction>(
                [this, key = row.get()](zelui::controls::UI_ControlChangedMessage*) {
                    mUsed.push_back("reload " + mNames.at(key));
                    if (onUsed) onUsed();
                }));
        mButtons[row.get()] = button;
    }
    CheckboxPtr CheckboxAt(std::size_t place) const { return mCheckboxes.at(Row(place).get()); }
    ButtonPtr ButtonAt(std::size_t place) const { return mButtons.at(Row(place).get()); }
    QWidget* BoxWidgetAt(std::size_t place) const { return zelui::qt::GetWidget(*CheckboxAt(place)); }

    ControlStage mStage;
    ButtonPtr mBefore;
    ButtonPtr mAfter;
    boost::intrusive_ptr<Tree> mTree;
    HeaderRowPtr mHeader;
    std::map<const void*, std::string> mNames;
    std::map<const void*, CheckboxPtr> mCheckboxes;
    std::map<const void*, ButtonPtr> mButtons;
    std::vector<std::string> mUsed;
    std::function<void(const RowPtr&)> onVisibility;
    std::function<void()> onUsed;
    bool mWantsControls = false;
    int mVisibilityTold = 0;
    int mRowsTold = 0;
    int mCellsTold = 0;
};

typedef std::vector<std::string> Names;

}  // namespace zeltests
