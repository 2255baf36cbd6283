#pragma once

#include <QWidget>
#include <zelui/UI_Node.h>

namespace zelui {

/// The widget of a node that draws itself: hands painting and keys to the node.
class NodeView : public QWidget {
public:
    explicit NodeView(QWidget& parent);

    /// Whether a node is drawing now.
    static bool IsDrawing();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool OnTab(QKeyEvent& key);
    void OnKey(QKeyEvent& event);
    bool IsOnViewInside(const QPoint& point) const;
};

}  // namespace zelui
