#include "ColorContrast.h"

#include <algorithm>
#include <cmath>

namespace zelui {

namespace {

double ToLinear(float part) { return part <= 0.04045f ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); }

double GetLuminance(const QColor& color) {
    return 0.2126 * ToLinear(color.redF()) + 0.7152 * ToLinear(color.greenF()) + 0.0722 * ToLinear(color.blueF());
}

}  // namespace

double GetContrast(const QColor& one, const QColor& other) {
    const double darker = std::min(GetLuminance(one), GetLuminance(other));
    const double lighter = std::max(GetLuminance(one), GetLuminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

QColor Mix(const QColor& from, const QColor& to, float part) {
    return QColor::fromRgbF(from.redF() + (to.redF() - from.redF()) * part,
                            from.greenF() + (to.greenF() - from.greenF()) * part,
                            from.blueF() + (to.blueF() - from.blueF()) * part);
}

}  // namespace zelui
