#include "NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <zelui/QtAccessibility.h>

#include "LocalText.h"

namespace tessaly {

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent), mText(new QLabel) {
    setObjectName(QStringLiteral("Notice"));
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    mText->setObjectName(QStringLiteral("NoticeText"));
    mText->setForegroundRole(QPalette::ToolTipText);
    mText->setTextFormat(Qt::PlainText);
    mText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    mText->setWordWrap(true);
    QToolButton* const close = new QToolButton;
    close->setObjectName(QStringLiteral("NoticeClose"));
    close->setText(QStringLiteral("\u00d7"));
    close->setAutoRaise(true);
    close->setFocusPolicy(Qt::StrongFocus);
    zelui::qt::SetAccessibleName(*close, LocalText("$$$/tessaly/CloseNotice=Close this message"));
    close->setToolTip(zelui::qt::GetAccessibleName(*close));
    connect(close, &QToolButton::clicked, this, [this] { Clear(); });
    QHBoxLayout* const layout = new QHBoxLayout(this);
    layout->addWidget(mText, 1);
    layout->addWidget(close, 0, Qt::AlignTop);
    hide();
}

void NoticeBar::Tell(const QString& text) {
    QStringList lines = mText->text().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.removeAll(text);
    lines.append(text);
    mText->setText(lines.mid(std::max<qsizetype>(lines.size() - kMaxLines, 0)).join(QLatin1Char('\n')));
    zelui::qt::SetAccessibleName(*mText, mText->text());
    show();
    zelui::qt::AnnounceAlert(*this);
}

void NoticeBar::Clear() {
    mText->clear();
    hide();
}

}  // namespace tessaly
