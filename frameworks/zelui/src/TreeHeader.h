#pragma once

#include <QHeaderView>

namespace zelui {

/// The titles of a tree's columns; those that are cut off are in the tool tips.
class TreeHeader final : public QHeaderView {
public:
    explicit TreeHeader(QWidget& parent);

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool ShowToolTip(const QPoint& point, const QPoint& globalPoint);
};

}  // namespace zelui
