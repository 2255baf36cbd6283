#pragma once

#include <QWidget>
#include <vector>

namespace tessaly {

/// One bar per channel of the track, from silence to full scale in decibels, with the loudest of late held for a while
/// and a mark for what went beyond full scale, which stays until a click or the next start. Main thread.
class LevelMeters final : public QWidget {
public:
    static constexpr float kLowest = -60.0f;  ///< in decibels below full scale, where a bar begins

    explicit LevelMeters(QWidget* parent = nullptr);

    /// The loudest samples since the last call, which is some 40 ms ago; without channels where there is no sound.
    void Advance(const std::vector<float>& peaks);
    /// What is shown of a channel, in decibels; kLowest or below for silence.
    float GetLevel(std::size_t channel) const { return mChannels[channel].level; }
    /// Forgets what went beyond full scale.
    void ClearOver();
    bool IsOver(std::size_t channel) const { return mChannels[channel].isOver; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    struct Channel {
        float level = kLowest;
        float held = kLowest;
        int heldFor = 0;  ///< calls of Advance that the mark stays
        bool isOver = false;

        bool LooksLike(const Channel& other) const {
            return level == other.level && held == other.held && isOver == other.isOver;
        }
    };

    static void Follow(Channel& channel, float peak);
    void Paint(QPainter& painter, const QRectF& bar, const Channel& channel) const;
    void Show();
    void Describe();

    std::vector<Channel> mChannels;
};

}  // namespace tessaly
