#pragma once

#include <optional>

#include <QElapsedTimer>
#include <zelui/UI_MultiColumnTree.h>

namespace zelui {
namespace controls {

/// What the keys do in a tree.
class UI_MultiColumnTree::TreeKeys {
public:
    explicit TreeKeys(Impl& impl);

    /// True when the key is used up.
    bool Do(const ui::KeyboardEvent& event);
    /// Gives the focus to the next control of the current row, in the order of columns, or to the one before; before
    /// the first one stands the list itself. False where none is left.
    bool Advance(bool forward);
    /// Gives the focus to the last control of the current row; false without one.
    bool EnterFromBehind();

private:
    bool MoveBy(long rows, int modifiers);
    bool MoveToPlace(long place, int modifiers);
    bool MoveCell(bool forward);
    bool Scroll(int x, int y);
    bool Use(const ui::KeyboardEvent& event, bool onlyInCell);
    bool DoSpace(const ui::KeyboardEvent& event);
    bool DoWithCommand(int osCode);
    bool TypeAhead(const zelcore::ustring& text);
    int GetUsedCell() const;
    long GetPage() const;
    /// The keys go to the list again, after they went to a control in it.
    void TakeFocusBack();

    Impl& mImpl;
    zelcore::ustring mTyped;
    QElapsedTimer mLastTyped;
};

}  // namespace controls
}  // namespace zelui
