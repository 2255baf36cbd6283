#pragma once

#include <memory>
#include <optional>

#include <QObject>
#include <QRect>

#include <zelui/UI_ArchivedDialog.h>

#include "ArchivedKeys.h"
#include "DialogLayoutItem.h"
#include "OS_DialogWindowSide.h"
#include "UI_DialogPeer.h"

class QKeyEvent;

namespace zelui {

class DialogLayout;
class DialogWindow;

namespace ui {

/// The Qt side of a dialog from an archive: a window that people can resize, filled by the nodes. After the application
/// has gone it does nothing; the nodes stay.
class UI_ArchivedDialog::ArchivedPeer final : public UI_Dialog::Peer, public OS_Dialog::WindowSide, private QObject {
public:
    typedef boost::intrusive_ptr<controls::UI_Button> ButtonPtr;

    /// `root`, a UI_SubView and what is in it, with their archived frames.
    ArchivedPeer(const QString& title, HWND parent, DialogLayoutItem root);
    ~ArchivedPeer() override;

    const boost::intrusive_ptr<UI_SubView>& GetRoot() const { return mRoot; }
    const ButtonPtr& GetOkButton() const { return mOk; }
    const ButtonPtr& GetCancelButton() const { return mCancel; }
    void SetOkButton(const ButtonPtr& button);
    void SetCancelButton(const ButtonPtr& button) { mCancel = button; }

    void SetMinimumSize(const zelcore::geom::PointF& size) override;
    zelcore::geom::Rect GetStructureRect() const override;
    void SetStructureRect(const zelcore::geom::Rect& rect) override;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool OnKey(const QKeyEvent& key);
    bool OnUnusedKey(const QKeyEvent& key);
    bool DoCancel() override;
    void OnShow();
    void OnHide();
    void OnSized();

    DialogWindow* GetDialogWindow() const;
    void FitScreen();
    void FitStructure(const QRect& frame);

    boost::intrusive_ptr<UI_SubView> mRoot;
    std::shared_ptr<DialogLayout> mLayout;
    ButtonPtr mOk;
    ButtonPtr mCancel;
    std::unique_ptr<ArchivedKeys> mKeys;
    /// What was set, until the window is up with it.
    std::optional<QRect> mWanted;
    /// What it was when it was hidden.
    QRect mStructure;
    bool mWasShown = false;
};

}  // namespace ui
}  // namespace zelui
