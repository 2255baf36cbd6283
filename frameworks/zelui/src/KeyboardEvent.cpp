#include <zelui/KeyboardEvent.h>

namespace zelui {
namespace ui {

KeyboardEvent::KeyboardEvent(Kind kind, int osCode, int modifiers, const zelcore::ustring& text, bool isRepeat)
    : mKind(kind), mOSCode(osCode), mModifiers(modifiers), mText(text), mRepeat(isRepeat) {}

}  // namespace ui
}  // namespace zelui
