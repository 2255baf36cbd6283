#pragma once

#include <vector>

#include <QBasicTimer>
#include <QPoint>
#include <QTableView>

#include "TreeModel.h"

namespace zelui {

class TreeClient;
class TreeHeader;

/// The widget of a tree. Qt's table view has the header, the scroll bars and what screen readers ask; painting, mouse
/// and keys go to the client, which alone knows the rows, and which may go at any of its calls.
class TreeWidget final : public QTableView {
public:
    TreeWidget(QWidget& parent, TreeClient& client);
    void LetGoOfClient();

    /// What there is to show.
    struct Look {
        std::vector<int> widths;
        int rowHeight;
        int headerHeight;  ///< 0 without a header
        int sortColumn;    ///< -1 for none
        bool ascending;
        bool indicateFocus;
        int scrollX;
        int scrollY;
        int currentPlace;  ///< -1 for none
        int currentCell;
        SelectionMode selectionMode;
        unsigned selectionGeneration;
        unsigned rowsGeneration;
    };
    void Show(const Look& look);

protected:
    void initStyleOption(QStyleOptionFrame* option) const override;
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void ConnectHeader();
    void ShowHeader();
    void ShowSelection(const Look& former);
    void Watch(QObject* object);
    bool OnTab(QKeyEvent& key);
    bool OnCellEvent(QWidget& widget, QEvent& event);
    bool ShowCellToolTip(const QPoint& point, const QPoint& globalPoint);
    void PaintRow(QPainter& painter, int place, const QRect& exposed);
    void PaintFocus(QPainter& painter);
    void PaintFocusFrame();
    QRect GetRowRect(int place) const;
    QRect GetCellRect(int place, int column) const;
    /// -1 below the rows, and beside the columns.
    int GetPlaceAt(int y) const;
    int GetColumnAt(int x) const;
    void Drag();

    TreeClient* mClient;
    TreeModel& mModel;
    TreeHeader& mHeader;
    Look mLook;
    bool mIsShowing = false;
    bool mIsDragging = false;
    QPoint mDragPoint;
    QBasicTimer mDragTimer;
};

}  // namespace zelui
