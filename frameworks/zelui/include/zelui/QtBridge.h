#pragma once

#include <memory>

#include <boost/intrusive_ptr.hpp>
#include <QString>
#include <QWidget>
#include <zelcore/PlatformHandles.h>
#include <zelcore/ustring.h>

#include <zelui/Export.h>
#include <zelui/UI_Node.h>

/// The one place where a Qt host meets the toolkit's types.
namespace zelui {
namespace qt {

ZELUI_API QString ToQString(const zelcore::ustring& text);
ZELUI_API zelcore::ustring FromQString(const QString& text);

/// The widget of this process whose window is `window`; null for another one's.
ZELUI_API QWidget* FindWidget(HWND window);
/// The native window of a widget; makes it native when it is not yet.
ZELUI_API HWND GetWindowHandle(QWidget* widget);

/// The widget that stands for a node; null while the node is not in view. It may go and come again with scrolling, so
/// that nobody keeps it.
ZELUI_API QWidget* GetWidget(const ui::UI_Node& node);
/// The node that a widget, or the nearest widget round it, stands for; null for a widget of the host.
ZELUI_API ui::UI_Node* GetNode(const QWidget* widget);

/// A widget of a Qt host that shows a node tree. It holds the tree's root, shows it, and has its size, always; where it
/// stands in a scroll area the widgets of what is out of view do not exist. The root's own left and top do not matter.
///
/// The Tab key goes through the nodes in their order, then on to the host's next widget. Keys that no node used reach
/// the host's widgets round it as Qt events, as do clicks. A root is in one widget at a time; another one takes it
/// over. Main thread.
class ZELUI_API NodeWidget : public QWidget {
public:
    /// Shows that tree; its root must not be null.
    explicit NodeWidget(const boost::intrusive_ptr<ui::UI_Node>& root, QWidget* parent = nullptr);
    ~NodeWidget() override;

    /// What it shows.
    const boost::intrusive_ptr<ui::UI_Node>& GetRoot() const;

    /// The root's size.
    QSize sizeHint() const override;
    /// The root's size: the tree decides.
    QSize minimumSizeHint() const override;

protected:
    /// Goes to the next node that wants the focus, then to the host's next widget.
    bool focusNextPrevChild(bool next) override;
    /// Passes the focus in to the first node or the last.
    void focusInEvent(QFocusEvent* event) override;
    /// Keeps the tree's size and what is in view up to date.
    bool event(QEvent* event) override;

private:
    std::unique_ptr<NodeHost> mHost;
};

}  // namespace qt
}  // namespace zelui
