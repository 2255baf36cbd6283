#pragma once

#include <optional>

#include <zelui/UI_TextEdit.h>

#include "ControlPeer.h"
#include "TextEditWidget.h"

namespace zelui {
namespace controls {

/// The Qt side of a text field: makes gestures of what the user does to the text.
class UI_TextEdit::TextEditPeer final : public ControlPeer {
public:
    explicit TextEditPeer(UI_TextEdit& edit);
    ~TextEditPeer() override;

    /// The field itself is going: nobody is told any more.
    void Forget() { mGesture.reset(); }

    bool CanBeReleased() const override;

private:
    typedef UI_InteractiveControlChangedMessage Message;
    typedef boost::intrusive_ptr<UI_TextEdit> TextEditPtr;

    struct Gesture {
        zelcore::ustring before;
        bool changed;
    };

    QWidget* MakeControl(QWidget& parent) override;
    void OnSync() override;
    QString GetOwnAccessibleName() const override;
    QString GetOwnToolTip() const override;
    bool UsesKey(const QKeyEvent& key) const override;
    bool OnEvent(QEvent& event) override;

    bool EndsGesture(const QKeyEvent& key) const;
    bool OnKey(QKeyEvent& key);
    void OnTextChanged();
    void OnClear();

    UI_TextEdit& GetTextEdit() const { return static_cast<UI_TextEdit&>(GetNode()); }
    TextEditWidget& GetField() const { return static_cast<TextEditWidget&>(*GetWidget()); }
    void ShowNodesText();
    void BeginGesture();
    void TakeText();
    void FinishGesture();
    void RevertGesture();
    void InterruptGesture();
    bool Tell(const TextEditPtr& edit, Message::ChangeMessage message);

    std::optional<Gesture> mGesture;
    /// The node's text when it was taken over last: only another one is taken over again. Between the user's change and
    /// its telling the field is ahead of the node, and stays so whatever else is set meanwhile.
    zelcore::ustring mTakenOver;
};

}  // namespace controls
}  // namespace zelui
