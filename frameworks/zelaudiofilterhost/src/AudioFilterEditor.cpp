#include <zelaudiofilterhost/AudioFilterEditor.h>

#include <cmath>

namespace zelaudiofilterhost {

AudioFilterEditor::AudioFilterEditor() = default;

AudioFilterEditor::~AudioFilterEditor() = default;

void AudioFilterEditor::SetContentScale(float scale) {
    if (IsContentScale(scale)) mContentScale = scale;
}

bool AudioFilterEditor::IsContentScale(float scale) { return scale >= 0.1f && scale <= 16.0f; }

zelcore::geom::Rect AudioFilterEditor::ToDisplayUnits(const zelcore::geom::Rect& pixels) const {
    const auto toUnits = [this](long number) {
        return std::lround(std::ceil(static_cast<double>(number) / static_cast<double>(mContentScale)));
    };
    return {toUnits(pixels.left), toUnits(pixels.top), toUnits(pixels.width), toUnits(pixels.height)};
}

}  // namespace zelaudiofilterhost
