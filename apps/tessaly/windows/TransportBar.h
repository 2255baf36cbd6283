#pragma once

#include <QWidget>

#include <zelcore/Signals.h>

class QLabel;
class QSlider;
class QToolButton;

namespace tessaly {

class LevelMeters;
class Player;
class Session;

/// Play, stop, loop, where the sound is, and how loud. Main thread.
class TransportBar final : public QWidget {
public:
    /// Both outlive the bar.
    TransportBar(Session& session, Player& player);

    void TogglePlay();
    void Rewind();
    void ToggleLoop();

protected:
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QToolButton* AddButton(const char* objectName, const QString& text);
    void Connect();
    void Refresh();
    void ShowPosition();
    void Describe(const QString& position, const QString& length);

    Session& mSession;
    Player& mPlayer;
    QToolButton* mPlay = nullptr;
    QToolButton* mRewind = nullptr;
    QToolButton* mLoop = nullptr;
    QSlider* mPosition;  ///< in milliseconds
    QLabel* mTime;
    LevelMeters* mMeters;
    boost::signals::scoped_connection mStateConnection;
    boost::signals::scoped_connection mFormatConnection;
    boost::signals::scoped_connection mDetailsConnection;
};

}  // namespace tessaly
