#include "LevelMeters.h"

#include <algorithm>
#include <cmath>
#include <QPainter>
#include <zelui/QtAccessibility.h>

#include "LocalText.h"

namespace tessaly {

namespace {

constexpr int kBarHeight = 10;
constexpr int kBarGap = 3;
constexpr int kOverWidth = 12;
constexpr int kMinimumWidth = 160;
/// A bar falls that much with each call, in decibels: some 30 a second.
constexpr float kFall = 1.2f;
constexpr int kHoldCalls = 40;
/// Where a bar's colour changes.
constexpr float kLoud = -12.0f;
constexpr float kVeryLoud = -3.0f;

const QColor kQuietColour(0x3f, 0xa9, 0x5c);
const QColor kLoudColour(0xd9, 0xa4, 0x1e);
const QColor kOverColour(0xd1, 0x3b, 0x3b);

float ToDecibels(float peak) {
    return peak > 0.0f ? std::max(20.0f * std::log10(peak), LevelMeters::kLowest) : LevelMeters::kLowest;
}

double ToShare(float level) { return std::clamp((level - LevelMeters::kLowest) / -LevelMeters::kLowest, 0.0f, 1.0f); }

}  // namespace

LevelMeters::LevelMeters(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Levels"));
    zelui::qt::SetAccessibleName(*this, LocalText("$$$/tessaly/Levels=Levels"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LevelMeters::Advance(const std::vector<float>& peaks) {
    bool isChanged = peaks.size() != mChannels.size();
    if (isChanged) {
        mChannels.assign(peaks.size(), Channel());
        updateGeometry();
    }
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const Channel before = mChannels[i];
        Follow(mChannels[i], peaks[i]);
        isChanged |= !mChannels[i].LooksLike(before);
    }
    // It is called all the time, and most of the time nothing is played.
    if (isChanged) Show();
}

void LevelMeters::Follow(Channel& channel, float peak) {
    channel.isOver |= peak > 1.0f;
    channel.level = std::max(ToDecibels(peak), channel.level - kFall);
    if (channel.level < channel.held && --channel.heldFor >= 0) return;
    channel.held = channel.level;
    channel.heldFor = kHoldCalls;
}

void LevelMeters::Show() {
    Describe();
    update();
}

void LevelMeters::Describe() {
    QStringList texts;
    for (std::size_t i = 0; i < mChannels.size(); ++i) {
        const QString level =
            mChannels[i].held > kLowest ? QString::number(std::lround(mChannels[i].held)) : QStringLiteral("-\u221e");
        const QString channel = QString::number(i + 1);
        texts.append(mChannels[i].isOver
                         ? LocalText("$$$/tessaly/LevelOver=Channel @0: @1 dB, was beyond full scale", channel, level)
                         : LocalText("$$$/tessaly/Level=Channel @0: @1 dB", channel, level));
    }
    const QString text = texts.join(QLatin1Char('\n'));
    // Screen readers are told of each change.
    if (text == toolTip()) return;
    setToolTip(text);
    zelui::qt::SetAccessibleDescription(*this, texts.join(QStringLiteral(", ")));
}

QSize LevelMeters::sizeHint() const {
    const int bars = std::max(static_cast<int>(mChannels.size()), 1);
    return {kMinimumWidth * 2, bars * (kBarHeight + kBarGap) - kBarGap};
}

QSize LevelMeters::minimumSizeHint() const { return {kMinimumWidth, sizeHint().height()}; }

void LevelMeters::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (mChannels.empty()) painter.fillRect(rect(), palette().color(QPalette::Mid));
    for (std::size_t i = 0; i < mChannels.size(); ++i)
        Paint(painter, QRectF(0, static_cast<double>(i) * (kBarHeight + kBarGap), width(), kBarHeight), mChannels[i]);
}

void LevelMeters::Paint(QPainter& painter, const QRectF& bar, const Channel& channel) const {
    const QRectF scale = bar.adjusted(0, 0, -kOverWidth - kBarGap, 0);
    painter.fillRect(scale, palette().color(QPalette::Mid));
    const auto fill = [&](float from, float to, const QColor& colour) {
        const float level = std::min(channel.level, to);
        if (level <= from) return;
        const double left = scale.width() * ToShare(from);
        painter.fillRect(
            QRectF(scale.left() + left, scale.top(), scale.width() * ToShare(level) - left, scale.height()), colour);
    };
    fill(kLowest, kLoud, kQuietColour);
    fill(kLoud, kVeryLoud, kLoudColour);
    fill(kVeryLoud, 0.0f, kOverColour);
    if (channel.held > kLowest) {
        const double x = scale.left() + (scale.width() - 2) * ToShare(channel.held);
        painter.fillRect(QRectF(x, scale.top(), 2, scale.height()), palette().color(QPalette::Text));
    }
    painter.fillRect(QRectF(bar.right() - kOverWidth, bar.top(), kOverWidth, bar.height()),
                     channel.isOver ? kOverColour : palette().color(QPalette::Mid));
}

void LevelMeters::ClearOver() {
    for (Channel& channel : mChannels) channel.isOver = false;
    Show();
}

void LevelMeters::mousePressEvent(QMouseEvent*) { ClearOver(); }

}  // namespace tessaly
