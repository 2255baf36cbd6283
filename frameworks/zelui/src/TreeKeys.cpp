#include "TreeKeys.h"

#include <algorithm>

#include <QAbstractButton>
#include <QPointer>
#include <zelui/QtBridge.h>
#include <zelui/UI_Checkbox.h>

#include "ControlText.h"
#include "NodeHost.h"
#include "TreeImpl.h"

namespace zelui {
namespace controls {

namespace {

using ui::KeyboardEvent;

// As the key events of nodes number them.
enum OSCode {
    kTab = 9,
    kReturn = 13,
    kSpace = 32,
    kPageUp = 33,
    kPageDown = 34,
    kEnd = 35,
    kHome = 36,
    kLeft = 37,
    kUp = 38,
    kRight = 39,
    kDown = 40,
    kDigitOne = 49,
    kDigitNine = 57,
    kLetterA = 65
};

// How long a pause may be within what belongs together.
constexpr qint64 kTypingPause = 1000;
constexpr std::size_t kMostTyped = 100;

bool IsPrintable(const zelcore::ustring& text) { return !text.empty() && text[0] >= 32 && text[0] != 127; }

}  // namespace

UI_MultiColumnTree::TreeKeys::TreeKeys(Impl& impl) : mImpl(impl) {}

bool UI_MultiColumnTree::TreeKeys::Do(const KeyboardEvent& event) {
    const int modifiers = event.GetModifiers();
    if (event.GetKind() != KeyboardEvent::kKeyDown || (modifiers & KeyboardEvent::kAlt) != 0) return false;
    const bool command = (modifiers & KeyboardEvent::kCommand) != 0;
    switch (event.GetOSCode()) {
        case kTab:
            return !command && Advance((modifiers & KeyboardEvent::kShift) == 0);
        case kUp:
            return MoveBy(-1, modifiers);
        case kDown:
            return MoveBy(1, modifiers);
        case kPageUp:
            return MoveBy(-GetPage(), modifiers);
        case kPageDown:
            return MoveBy(GetPage(), modifiers);
        case kHome:
            return MoveToPlace(0, modifiers);
        case kEnd:
            return MoveToPlace(static_cast<long>(mImpl.GetRows().size()) - 1, modifiers);
        case kLeft:
            return !command && MoveCell(false);
        case kRight:
            return !command && MoveCell(true);
        case kSpace:
            return DoSpace(event);
        case kReturn:
            return !command && Use(event, true);
        default:
            return command ? DoWithCommand(event.GetOSCode()) : TypeAhead(event.GetText());
    }
}

bool UI_MultiColumnTree::TreeKeys::DoWithCommand(int osCode) {
    if (osCode == kLetterA && mImpl.GetAbilities().multiple && mImpl.GetAbilities().rows) {
        mImpl.GetSelection().SelectAll();
        return true;
    }
    const bool isColumn = osCode >= kDigitOne && osCode <= kDigitNine && mImpl.GetColumns().GetHeader() != nullptr;
    if (!isColumn || osCode - kDigitOne >= mImpl.GetColumns().GetCount()) return false;
    mImpl.SortByUser(osCode - kDigitOne);
    return true;
}

// Rows and cells

long UI_MultiColumnTree::TreeKeys::GetPage() const {
    const int height = static_cast<int>(mImpl.GetContentView().UI_GetLocalRectF().height);
    return std::max(1, height / mImpl.GetRowHeight() - 1);
}

bool UI_MultiColumnTree::TreeKeys::MoveBy(long rows, int modifiers) {
    if (!mImpl.GetAbilities().rows) return Scroll(0, static_cast<int>(rows) * mImpl.GetRowHeight());
    const RowPtr current = mImpl.GetSelection().GetCurrent();
    if (!current) return MoveToPlace(rows > 0 ? 0 : static_cast<long>(mImpl.GetRows().size()) - 1, modifiers);
    return MoveToPlace(static_cast<long>(current->mPlace) + rows, modifiers);
}

bool UI_MultiColumnTree::TreeKeys::MoveToPlace(long place, int modifiers) {
    const long last = static_cast<long>(mImpl.GetRows().size()) - 1;
    if (last < 0) return false;
    if (!mImpl.GetAbilities().rows) {
        const int y = mImpl.GetScrollY();
        mImpl.ScrollTo(mImpl.GetScrollX(), place <= 0 ? 0 : static_cast<int>(last + 1) * mImpl.GetRowHeight());
        return mImpl.GetScrollY() != y;
    }
    const RowPtr row = mImpl.GetRow(static_cast<int>(std::clamp(place, 0L, last)));
    TakeFocusBack();
    mImpl.ScrollToRow(*row);
    TreeSelection& selection = mImpl.GetSelection();
    if (mImpl.GetAbilities().multiple && (modifiers & KeyboardEvent::kShift) != 0)
        selection.ExtendTo(row);
    else if (mImpl.GetAbilities().multiple && (modifiers & KeyboardEvent::kCommand) != 0)
        selection.MoveTo(row);
    else
        selection.SelectOnly(row);
    return true;
}

bool UI_MultiColumnTree::TreeKeys::MoveCell(bool forward) {
    const TreeSelection& selection = mImpl.GetSelection();
    if (!mImpl.GetAbilities().cells || !selection.GetCurrent()) return Scroll(forward ? 40 : -40, 0);
    TakeFocusBack();
    const int last = mImpl.GetColumns().GetCount() - 1;
    const int cell = std::clamp(selection.GetCell() + (forward ? 1 : -1), 0, std::max(0, last));
    const int left = mImpl.GetColumns().GetLeft(cell);
    const int width = static_cast<int>(mImpl.GetContentView().UI_GetLocalRectF().width);
    const int right = left + mImpl.GetColumns().GetWidth(cell);
    mImpl.ScrollTo(std::min(std::max(mImpl.GetScrollX(), right - width), left), mImpl.GetScrollY());
    mImpl.GetSelection().SetCell(cell);
    return true;
}

bool UI_MultiColumnTree::TreeKeys::Scroll(int x, int y) {
    const int formerX = mImpl.GetScrollX();
    const int formerY = mImpl.GetScrollY();
    mImpl.ScrollTo(formerX + x, formerY + y);
    return mImpl.GetScrollX() != formerX || mImpl.GetScrollY() != formerY;
}

void UI_MultiColumnTree::TreeKeys::TakeFocusBack() {
    UI_MultiColumnTree& tree = mImpl.GetTree();
    if (tree.UI_HasKeyboardFocus(true) && !tree.UI_HasKeyboardFocus(false))
        tree.UI_GainKeyboardFocus(ui::kFocusByProgram);
}

// Controls in cells

// The cell whose control has the focus, or else the selected one.
int UI_MultiColumnTree::TreeKeys::GetUsedCell() const {
    const TreeCells::Cell focused = mImpl.GetCells().Find(mImpl.GetTree().UI_GetKeyboardFocusLeafNode());
    return focused.first ? focused.second : mImpl.GetSelection().GetCell();
}

bool UI_MultiColumnTree::TreeKeys::Use(const KeyboardEvent& event, bool onlyInCell) {
    const RowPtr row = mImpl.GetSelection().GetCurrent();
    if (!row || !row->mIsSelected) return false;
    mImpl.ScrollToRow(*row);
    mImpl.GetVisibility().Sync();
    // Whoever was told may have taken the row away.
    if (!mImpl.Contains(row)) return true;
    TreeCells::ControlPtr control = mImpl.GetCells().FindControl(*row, GetUsedCell());
    // Return is for the dialog's button; a check mark is set with Space.
    if (onlyInCell && dynamic_cast<const UI_Checkbox*>(control.get()) != nullptr) return false;
    for (int i = 0; !control && !onlyInCell && i < mImpl.GetColumns().GetCount(); ++i) {
        const TreeCells::ControlPtr other = mImpl.GetCells().FindControl(*row, i);
        if (other && !other->UI_IsDisabled()) control = other;
    }
    if (!control) return false;
    if (event.IsRepeat() || control->UI_IsDisabled()) return true;
    NodeHost* const host = NodeHost::Of(*control);
    QWidget* const widget = host != nullptr ? host->RealizeNow(*control) : nullptr;
    if (QAbstractButton* const button = qobject_cast<QAbstractButton*>(widget))
        button->click();
    else
        control->UI_GainKeyboardFocus(ui::kFocusByProgram);
    return true;
}

bool UI_MultiColumnTree::TreeKeys::DoSpace(const KeyboardEvent& event) {
    const bool isTyping = !mTyped.empty() && mLastTyped.isValid() && mLastTyped.elapsed() < kTypingPause;
    if (isTyping && TypeAhead(event.GetText())) return true;
    const RowPtr row = mImpl.GetSelection().GetCurrent();
    if ((event.GetModifiers() & KeyboardEvent::kCommand) == 0) return Use(event, false);
    if (!row || !mImpl.GetAbilities().multiple || !mImpl.GetAbilities().rows) return false;
    mImpl.GetSelection().Toggle(row, mImpl.GetSelection().GetCell());
    return true;
}

bool UI_MultiColumnTree::TreeKeys::Advance(bool forward) {
    UI_MultiColumnTree& tree = mImpl.GetTree();
    const RowPtr row = mImpl.GetSelection().GetCurrent();
    const bool isInCell = tree.UI_HasKeyboardFocus(true) && !tree.UI_HasKeyboardFocus(false);
    if (!row || (!forward && !isInCell)) return false;
    if (!isInCell) {
        mImpl.ScrollToRow(*row);
        mImpl.GetVisibility().Sync();
        if (!mImpl.Contains(row)) return false;
    }
    const TreeCells::ControlPtr control = mImpl.GetCells().FindTabStop(*row, GetUsedCell(), forward);
    const ui::FocusChangeReason reason = forward ? ui::kFocusByAdvance : ui::kFocusByReverse;
    if (control) return control->UI_GainKeyboardFocus(reason);
    return !forward && tree.UI_WantsKeyboardFocus() && tree.UI_GainKeyboardFocus(ui::kFocusByProgram);
}

bool UI_MultiColumnTree::TreeKeys::EnterFromBehind() {
    const RowPtr row = mImpl.GetSelection().GetCurrent();
    if (!row) return false;
    const TreeCells::ControlPtr control = mImpl.GetCells().FindTabStop(*row, mImpl.GetColumns().GetCount(), false);
    return control && control->UI_GainKeyboardFocus(ui::kFocusByReverse);
}

// Typing

bool UI_MultiColumnTree::TreeKeys::TypeAhead(const zelcore::ustring& text) {
    const Impl::Abilities& abilities = mImpl.GetAbilities();
    if (!abilities.typeAhead || !abilities.rows || !IsPrintable(text) || mImpl.GetRows().empty()) return false;
    const bool goesOn = mLastTyped.isValid() && mLastTyped.elapsed() < kTypingPause;
    if (!goesOn) mTyped.clear();
    mLastTyped.start();
    if (mTyped.size() < kMostTyped) mTyped += text;
    const QString wanted = qt::ToQString(mTyped);
    const RowPtr current = mImpl.GetSelection().GetCurrent();
    const std::size_t count = mImpl.GetRows().size();
    // A first letter leads to the next row; with more of them the row of now may be the one.
    const std::size_t begin = current ? current->mPlace + (mTyped.size() > text.size() ? 0 : 1) : 0;
    const Rows rows = mImpl.GetRows();
    for (std::size_t i = 0; i < count; ++i) {
        const RowPtr& row = rows[(begin + i) % count];
        if (!ToControlText(mImpl.GetFirstText(row)).startsWith(wanted, Qt::CaseInsensitive)) continue;
        if (mImpl.Contains(row)) MoveToPlace(static_cast<long>(row->mPlace), 0);
        break;
    }
    return true;
}

}  // namespace controls
}  // namespace zelui
