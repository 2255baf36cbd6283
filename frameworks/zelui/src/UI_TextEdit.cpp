#include <zelui/UI_TextEdit.h>

#include <zelui/QtBridge.h>

#include "EditableText.h"
#include "TextEditPeer.h"

namespace zelui {
namespace controls {

// Who takes its address on Windows wants it to be in the library.
constexpr std::size_t UI_TextEdit::kMaxLength;

UI_TextEdit::UI_TextEdit() : UI_InteractiveControlView(true) {}

UI_TextEdit::~UI_TextEdit() {
    if (Peer* const peer = UI_GetPeer()) static_cast<TextEditPeer*>(peer)->Forget();
}

void UI_TextEdit::SetValue(const zelcore::ustring& text) {
    const QStringView view(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
    mText = qt::FromQString(ToEditableText(view, kMaxLength));
    UI_SyncPeer();
}

void UI_TextEdit::SetPlaceholder(const zelcore::ustring& text) {
    mPlaceholder = text;
    UI_SyncPeer();
}

std::unique_ptr<ui::UI_Node::Peer> UI_TextEdit::UI_MakePeer() { return std::make_unique<TextEditPeer>(*this); }

}  // namespace controls
}  // namespace zelui
