#pragma once

#include "ControlPeer.h"
#include "TreeClient.h"
#include "TreeImpl.h"
#include "TreeWidget.h"

namespace zelui {
namespace controls {

/// The Qt side of a tree.
class UI_MultiColumnTree::TreePeer final : public ControlPeer, private TreeClient {
public:
    TreePeer(UI_MultiColumnTree& tree, Impl& impl);
    ~TreePeer() override;

    /// The tree is going: what it was is not asked for any more.
    void Forget();

private:
    QWidget* MakeControl(QWidget& parent) override;
    void OnSync() override;
    bool UsesKey(const QKeyEvent& key) const override;

    int GetRowCount() const override;
    int GetColumnCount() const override;
    QString GetTitle(int column) const override;
    QString GetText(int place, int column) const override;
    std::optional<bool> GetCheckState(int place, int column) const override;
    bool IsSelected(int place) const override;
    void DrawCell(QPainter& painter, int place, int column, const QRect& cell) override;
    bool OnKey(const QKeyEvent& key) override;
    void OnPress(int place, int column, Qt::KeyboardModifiers modifiers) override;
    void OnDrag(int place) override;
    void OnControlEntered(const QWidget& control, bool isByMouse) override;
    bool OnAdvance(bool forward) override;
    bool OnKeyInButton(const QKeyEvent& key) override;
    void OnSelectedByReader(int place) override;
    void OnScrolled(int x, int y) override;
    void OnViewChanged() override;
    void OnNeeded() override;
    void OnColumnResized(int column, int width) override;
    void OnTitleClicked(int column) override;
    void OnBestFitWanted(int column) override;

    TreeWidget* GetTreeWidget() const { return static_cast<TreeWidget*>(GetWidget()); }
    QAbstractItemView::SelectionMode GetSelectionMode() const;

    Impl& mImpl;
    bool mIsForgotten = false;
};

}  // namespace controls
}  // namespace zelui
