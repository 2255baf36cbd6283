#include "TransportBar.h"

#include <algorithm>
#include <limits>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QToolButton>

#include <boost/bind/bind.hpp>
#include <zelui/QtAccessibility.h>

#include "LevelMeters.h"
#include "LocalText.h"
#include "Player.h"
#include "Session.h"
#include "TransportIcon.h"

namespace tessaly {

namespace {

constexpr int kRefreshEvery = 40;
constexpr int kArrowStep = 1000;
constexpr int kPageStep = 10000;

int ToMilliseconds(std::int64_t frames, int sampleRate) {
    if (sampleRate <= 0) return 0;
    const double milliseconds = static_cast<double>(frames) * 1000.0 / sampleRate;
    return static_cast<int>(std::min(milliseconds, static_cast<double>(std::numeric_limits<int>::max())));
}

/// "1:02.3", with hours where there are any.
QString FormatTime(int milliseconds) {
    const int tenths = milliseconds / 100;
    const int minutes = tenths / 600;
    const QString seconds = QStringLiteral("%1.%2").arg(tenths / 10 % 60, 2, 10, QLatin1Char('0')).arg(tenths % 10);
    if (minutes < 60) return QStringLiteral("%1:%2").arg(minutes).arg(seconds);
    return QStringLiteral("%1:%2:%3").arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0')).arg(seconds);
}

/// The same for screen readers, which are told of a change once a second.
QString FormatSeconds(int milliseconds) { return FormatTime(milliseconds).section(QLatin1Char('.'), 0, 0); }

}  // namespace

TransportBar::TransportBar(Session& session, Player& player)
    : mSession(session),
      mPlayer(player),
      mPosition(new QSlider(Qt::Horizontal)),
      mTime(new QLabel),
      mMeters(new LevelMeters) {
    setObjectName(QStringLiteral("Transport"));
    QHBoxLayout* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    mRewind = AddButton("Rewind", LocalText("$$$/tessaly/Rewind=Back to the Beginning"));
    mPlay = AddButton("Play", LocalText("$$$/tessaly/Play=Play"));
    mLoop = AddButton("Loop", LocalText("$$$/tessaly/Loop=Loop"));
    mLoop->setCheckable(true);
    mLoop->setText(LocalText("$$$/tessaly/Loop=Loop"));
    mPosition->setObjectName(QStringLiteral("Position"));
    zelui::qt::SetAccessibleName(*mPosition, LocalText("$$$/tessaly/Position=Position"));
    mPosition->setSingleStep(kArrowStep);
    mPosition->setPageStep(kPageStep);
    mTime->setObjectName(QStringLiteral("Time"));
    layout->addWidget(mPosition, 3);
    layout->addWidget(mTime);
    layout->addWidget(mMeters, 2);
    Connect();
    Refresh();
    startTimer(kRefreshEvery);
}

QToolButton* TransportBar::AddButton(const char* objectName, const QString& text) {
    QToolButton* const button = new QToolButton;
    button->setObjectName(QLatin1String(objectName));
    zelui::qt::SetAccessibleName(*button, text);
    button->setToolTip(text);
    button->setFocusPolicy(Qt::StrongFocus);
    layout()->addWidget(button);
    return button;
}

void TransportBar::Connect() {
    connect(mPlay, &QToolButton::clicked, this, [this] { TogglePlay(); });
    connect(mRewind, &QToolButton::clicked, this, [this] { Rewind(); });
    connect(mLoop, &QToolButton::clicked, this, [this](bool on) { mSession.SetLooping(on); });
    // A value that the user chose; what is shown while the sound goes on is set in silence.
    connect(mPosition, &QSlider::valueChanged, this, [this](int milliseconds) {
        mPlayer.Seek(static_cast<std::int64_t>(milliseconds) * mPlayer.GetSampleRate() / 1000);
    });
    mStateConnection = mPlayer.GetStateChangedSignal().connect([this] {
        if (mPlayer.IsPlaying()) mMeters->ClearOver();
        Refresh();
    });
    mDetailsConnection = mSession.GetDetailsChangedSignal().connect(boost::bind(&TransportBar::Refresh, this));
    mFormatConnection = mSession.GetFormatChangedSignal().connect(boost::bind(&TransportBar::Refresh, this));
}

void TransportBar::TogglePlay() {
    if (mPlayer.IsPlaying())
        mPlayer.Stop();
    else
        mPlayer.Play();
}

void TransportBar::Rewind() {
    mPlayer.Seek(0);
    ShowPosition();
}

void TransportBar::ToggleLoop() { mSession.SetLooping(!mSession.IsLooping()); }

void TransportBar::Refresh() {
    if (mLoop == nullptr) return;
    const bool playing = mPlayer.IsPlaying();
    const QString text = playing ? LocalText("$$$/tessaly/Stop=Stop") : LocalText("$$$/tessaly/Play=Play");
    zelui::qt::SetAccessibleName(*mPlay, text);
    mPlay->setToolTip(text);
    mPlay->setIcon(MakeTransportIcon(playing ? TransportSign::kStop : TransportSign::kPlay, palette()));
    mRewind->setIcon(MakeTransportIcon(TransportSign::kRewind, palette()));
    mLoop->setChecked(mSession.IsLooping());
    const bool hasSound = mPlayer.GetLength() > 0;
    for (QWidget* const widget : {static_cast<QWidget*>(mPlay), static_cast<QWidget*>(mRewind),
                                  static_cast<QWidget*>(mPosition), static_cast<QWidget*>(mTime)})
        widget->setEnabled(hasSound);
    ShowPosition();
}

void TransportBar::ShowPosition() {
    const int length = ToMilliseconds(mPlayer.GetLength(), mPlayer.GetSampleRate());
    const int position = ToMilliseconds(mPlayer.GetPosition(), mPlayer.GetSampleRate());
    if (!mPosition->isSliderDown()) {
        const QSignalBlocker silence(mPosition);
        mPosition->setRange(0, length);
        mPosition->setValue(position);
    }
    mTime->setText(FormatTime(position) + QStringLiteral(" / ") + FormatTime(length));
    Describe(FormatSeconds(position), FormatSeconds(length));
    // Digits move the slider's end no more than the length itself does.
    mTime->setMinimumWidth(
        mTime->fontMetrics().horizontalAdvance(FormatTime(length) + QStringLiteral(" / ") + FormatTime(length)) + 4);
}

void TransportBar::Describe(const QString& position, const QString& length) {
    const QString name = LocalText("$$$/tessaly/TimeOf=Time: @0 of @1", position, length);
    // Screen readers are told of each change.
    if (name == zelui::qt::GetAccessibleName(*mTime)) return;
    zelui::qt::SetAccessibleName(*mTime, name);
    zelui::qt::SetAccessibleDescription(*mPosition, position);
}

void TransportBar::timerEvent(QTimerEvent*) {
    mMeters->Advance(mPlayer.TakePeaks());
    ShowPosition();
}

void TransportBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // Icons are drawn in the colours of the theme.
    if (event->type() == QEvent::PaletteChange) Refresh();
}

}  // namespace tessaly
