#include "SoundPanel.h"

#include <QDragEnterEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <boost/bind/bind.hpp>
#include <zelui/QtAccessibility.h>

#include "DroppedFile.h"
#include "LocalText.h"
#include "Session.h"

namespace tessaly {

using zelui::qt::ToQString;

namespace {

QLabel* MakeText(const char* objectName) {
    QLabel* const label = new QLabel;
    label->setObjectName(QLatin1String(objectName));
    label->setTextFormat(Qt::PlainText);
    // However long a file's name is, the window stays as wide as the user wants it.
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

QPushButton* MakeButton(const char* objectName, const QString& text, const QString& accessibleName) {
    QPushButton* const button = new QPushButton(text);
    button->setObjectName(QLatin1String(objectName));
    zelui::qt::SetAccessibleName(*button, accessibleName);
    return button;
}

QString DescribeSound(const Session& session) {
    if (session.GetSoundPath().empty())
        return LocalText("$$$/tessaly/NoSound=No sound. Open a file, or drop one here.");
    if (session.GetSampleRate() == 0)
        return LocalText("$$$/tessaly/SoundMissing=@0 (cannot be opened)", FileNameText(session.GetSoundPath()));
    return LocalText("$$$/tessaly/SoundFormat=@0 \u2013 @1, @2 Hz", FileNameText(session.GetSoundPath()),
                     ToQString(zelmediatypes::GetChannelLayoutDisplayName(session.GetLayout())),
                     QString::number(session.GetSampleRate()));
}

QString DescribeSideChain(const Session& session) {
    if (session.GetSideChainPath().empty()) return LocalText("$$$/tessaly/NoSideChain=None");
    const auto& layout = session.GetSideChainBus().GetLayout();
    if (layout.empty())
        return LocalText("$$$/tessaly/SoundMissing=@0 (cannot be opened)", FileNameText(session.GetSideChainPath()));
    return LocalText("$$$/tessaly/SideChainFormat=@0 \u2013 @1", FileNameText(session.GetSideChainPath()),
                     ToQString(zelmediatypes::GetChannelLayoutDisplayName(layout)));
}

}  // namespace

SoundPanel::SoundPanel(Session& session)
    : mSession(session),
      mSoundText(MakeText("SoundText")),
      mSideChainText(MakeText("SideChainText")),
      mSideChainButton(MakeButton("OpenSideChain", LocalText("$$$/tessaly/ChooseSideChain=Choose..."),
                                  LocalText("$$$/tessaly/ChooseSideChainName=Choose a side-chain file"))),
      mRemoveButton(MakeButton("RemoveSideChain", LocalText("$$$/tessaly/RemoveSideChain=Remove"),
                               LocalText("$$$/tessaly/RemoveSideChainName=Remove the side-chain"))) {
    setObjectName(QStringLiteral("SoundPanel"));
    setAcceptDrops(true);
    QPushButton* const open = MakeButton("OpenSound", LocalText("$$$/tessaly/OpenSound=Open..."),
                                         LocalText("$$$/tessaly/OpenSoundName=Open a sound file"));
    QGridLayout* const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setColumnStretch(1, 1);
    layout->addWidget(new QLabel(LocalText("$$$/tessaly/SoundLabel=Track:")), 0, 0);
    layout->addWidget(mSoundText, 0, 1);
    layout->addWidget(open, 0, 2);
    layout->addWidget(new QLabel(LocalText("$$$/tessaly/SideChainLabel=Side-chain:")), 1, 0);
    layout->addWidget(mSideChainText, 1, 1);
    layout->addWidget(mSideChainButton, 1, 2);
    layout->addWidget(mRemoveButton, 1, 3);
    connect(open, &QPushButton::clicked, this, [this] { mSound(std::string()); });
    connect(mSideChainButton, &QPushButton::clicked, this, [this] { mSideChain(std::string()); });
    connect(mRemoveButton, &QPushButton::clicked, this, [this] { mSideChainRemoved(); });
    mFormatConnection = mSession.GetFormatChangedSignal().connect(boost::bind(&SoundPanel::Refresh, this));
    Refresh();
}

void SoundPanel::Refresh() {
    mSoundText->setText(DescribeSound(mSession));
    mSoundText->setToolTip(ToolTipText(QString::fromStdString(mSession.GetSoundPath())));
    mSideChainText->setText(DescribeSideChain(mSession));
    mSideChainText->setToolTip(ToolTipText(QString::fromStdString(mSession.GetSideChainPath())));
    mSideChainButton->setEnabled(mSession.GetSampleRate() > 0);
    mRemoveButton->setEnabled(!mSession.GetSideChainPath().empty());
}

void SoundPanel::dragEnterEvent(QDragEnterEvent* event) {
    if (!GetDroppedFile(*event).empty()) event->acceptProposedAction();
}

void SoundPanel::dropEvent(QDropEvent* event) {
    const std::string path = GetDroppedFile(*event);
    if (path.empty()) return;
    event->acceptProposedAction();
    const bool sideChain = event->position().y() >= mSideChainButton->y() && mSideChainButton->isEnabled();
    // Whoever dragged it waits until this returns.
    QMetaObject::invokeMethod(
        this, [this, sideChain, path] { (sideChain ? mSideChain : mSound)(path); }, Qt::QueuedConnection);
}

}  // namespace tessaly
