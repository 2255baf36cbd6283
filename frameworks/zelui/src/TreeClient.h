#pragma once

#include <optional>

#include <qnamespace.h>
#include <QString>

class QKeyEvent;
class QPainter;
class QRect;
class QWidget;

namespace zelui {

/// What a tree's widget shows, and whom it tells what the user does. Each call may run the host's code, which may
/// change the rows or delete all there is; places and columns that are not there are harmless.
class TreeClient {
public:
    virtual int GetRowCount() const = 0;
    virtual int GetColumnCount() const = 0;
    virtual QString GetTitle(int column) const = 0;
    virtual QString GetText(int place, int column) const = 0;
    /// Of the first check box in the cell; none without one.
    virtual std::optional<bool> GetCheckState(int place, int column) const = 0;
    virtual bool IsSelected(int place) const = 0;
    /// Draws what stands in a cell on its background; `cell` is in the viewport, whose coordinates the painter has.
    virtual void DrawCell(QPainter& painter, int place, int column, const QRect& cell) = 0;

    virtual bool OnKey(const QKeyEvent& key) = 0;
    /// The main button was pressed on a cell, or beside the columns (-1), or below the rows (-1).
    virtual void OnPress(int place, int column, Qt::KeyboardModifiers modifiers) = 0;
    /// The mouse was moved with the button down, over that row or the one nearest to it.
    virtual void OnDrag(int place) = 0;
    /// A control in a cell was pressed, or has got the focus; `isByMouse`: it must not move away under the mouse.
    virtual void OnControlEntered(const QWidget& control, bool isByMouse) = 0;
    /// The Tab key in a control in a cell; false when none is left to go on to.
    virtual bool OnAdvance(bool forward) = 0;
    /// The keys that move through rows and cells, in a button, which has no use for them.
    virtual bool OnKeyInButton(const QKeyEvent& key) = 0;
    /// Screen readers have selected that row, and no other.
    virtual void OnSelectedByReader(int place) = 0;
    /// Scrolled to; and the widget's size, or whether it can be seen, may be another.
    virtual void OnScrolled(int x, int y) = 0;
    virtual void OnViewChanged() = 0;
    /// A new list is about to be painted, or read.
    virtual void OnNeeded() = 0;
    virtual void OnColumnResized(int column, int width) = 0;
    virtual void OnTitleClicked(int column) = 0;
    virtual void OnBestFitWanted(int column) = 0;

protected:
    ~TreeClient() = default;
};

}  // namespace zelui
