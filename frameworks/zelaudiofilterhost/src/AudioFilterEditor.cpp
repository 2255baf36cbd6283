#include <zelaudiofilterhost/AudioFilterEditor.h>

namespace zelaudiofilterhost {

AudioFilterEditor::AudioFilterEditor() = default;

AudioFilterEditor::~AudioFilterEditor() = default;

}  // namespace zelaudiofilterhost
