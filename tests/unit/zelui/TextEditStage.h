#pragma once

#include <QLineEdit>
#include <zelui/UI_TextEdit.h>

#include "ControlStage.h"

namespace zeltests {

/// A stage with a text field whose messages are written down with the text at that moment: "start:", "change:a",
/// "end:a", "cancel:", and "changed:a" for the function that is not interactive.
class TextEditStage : public ::testing::Test {
protected:
    typedef zelui::controls::UI_TextEdit Edit;
    typedef zelui::controls::UI_ControlChangedMessage ChangedMessage;
    typedef zelui::controls::UI_InteractiveControlChangedMessage Message;
    typedef zelui::controls::UI_InteractiveControlView::InteractivelyChangedFunction Interactive;
    typedef zelui::controls::UI_ControlView::ChangedFunction Changed;
    typedef std::vector<std::string> Told;

    /// Has another field of that class stand on the stage, with the focus.
    void Stand(Edit* edit) {
        mEdit = mStage.Add(edit, {138, 10, 160, 20});
        Watch();
        GiveFocus();
    }

    void Watch() {
        mEdit->NotifyWhenChangedInteractively(Handler<Interactive>([this](Message* message) { Write(*message); }));
        mEdit->NotifyWhenChanged(Handler<Changed>([this](ChangedMessage* message) { WriteChanged(*message); }));
    }

    void Write(const Message& message) {
        const char* const words[] = {"start:", "change:", "end:", "cancel:"};
        mTold.push_back(words[message.GetChangeMessage()] + GetText(*message.GetControl()));
    }
    void WriteChanged(const ChangedMessage& message) { mTold.push_back("changed:" + GetText(*message.GetControl())); }

    static std::string GetText(const zelui::controls::UI_ControlView& control) {
        const zelcore::utf8string text = zelcore::utility::UTF16to8(static_cast<const Edit&>(control).GetValue());
        return std::string(text.data(), text.size());
    }
    std::string GetValue() const { return GetText(*mEdit); }
    QLineEdit* GetField() const { return ControlStage::GetWidget<QLineEdit>(*mEdit); }
    void GiveFocus() { ASSERT_TRUE(mEdit->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram)); }
    void TakeFocusAway() { mStage.GetArea().setFocus(); }
    void Type(const char* text) { QTest::keyClicks(GetField(), text); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(GetField(), key, modifiers);
    }
    bool WaitToBeTold(const std::string& last) {
        return ProcessUntil([&] { return !mTold.empty() && mTold.back() == last; });
    }

    ControlStage mStage;
    Told mTold;
    boost::intrusive_ptr<Edit> mEdit;
};

}  // namespace zeltests
