#include "TextEditWidget.h"

#include <algorithm>
#include <memory>

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

#include "ClearButton.h"
#include "ControlText.h"
#include "EditableText.h"
#include "StyleEdge.h"

namespace zelui {

namespace {

constexpr int kWidestSide = 20;
// Qt keeps the text two units away from the margins.
constexpr int kTextInset = 4;
// More than any field is wide, and little enough to be measured in no time.
constexpr qsizetype kMeasuredLength = 2000;

// Of the magnifier, in units of a side that is as wide as it gets.
constexpr qreal kLensRadius = 3.9;
constexpr qreal kLensOffset = -1.1;
constexpr qreal kHandleEnd = 5.2;
constexpr qreal kDiagonal = 0.7071;
constexpr qreal kLineWidth = 1.4;

QClipboard::Mode GetPasteMode(const QKeyEvent& key) {
    const bool selection = key.key() == Qt::Key_Insert && key.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    return selection && QGuiApplication::clipboard()->supportsSelection() ? QClipboard::Selection
                                                                          : QClipboard::Clipboard;
}

bool IsInsideCharacter(const QString& text, int position) {
    return position > 0 && position < text.size() && text[position].isLowSurrogate() &&
           text[position - 1].isHighSurrogate();
}

}  // namespace

TextEditWidget::TextEditWidget(QWidget& parent, qsizetype limit) : QLineEdit(&parent), mLimit(limit) {
    setMaxLength(static_cast<int>(limit));
}

void TextEditWidget::ShowText(const QString& shown) {
    if (shown == text()) return;
    const bool atEnd = cursorPosition() == text().size();
    int cursor = cursorPosition();
    setText(shown);
    if (!hasFocus()) cursor = 0;
    if (atEnd && hasFocus()) return;
    cursor = std::min(cursor, static_cast<int>(shown.size()));
    setCursorPosition(IsInsideCharacter(shown, cursor) ? cursor - 1 : cursor);
}

bool TextEditWidget::MendText() {
    const QString is = text();
    const QString ought = ToEditableText(is, mLimit);
    if (ought == is) return false;
    const qsizetype before = ToEditableText(QStringView(is).left(cursorPosition()), mLimit).size();
    setText(ought);
    setCursorPosition(static_cast<int>(std::min(before, ought.size())));
    return true;
}

// A field that shows the beginning of its text has the cursor there, where nobody means to go on who was brought to the
// field by neither the mouse nor the Tab key.
void TextEditWidget::initStyleOption(QStyleOptionFrame* option) const {
    QLineEdit::initStyleOption(option);
    UseEdgeColor(*option, *this, EdgeOf::kField, GetFrameEdgeColor());
}

void TextEditWidget::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::OtherFocusReason && cursorPosition() == 0 && !hasSelectedText()) end(false);
}

// Putting in

void TextEditWidget::Insert(const QString& inserted) {
    // Qt takes a cursor that moved for the end of what is undone at once.
    const auto separate = [this] {
        const int cursor = cursorPosition();
        setCursorPosition(cursor > 0 ? cursor - 1 : cursor + 1);
        setCursorPosition(cursor);
    };
    const qsizetype room = mLimit - (text().size() - selectedText().size());
    const QString line = ToEditableText(inserted, room);
    if (line.isEmpty()) return;
    if (!hasSelectedText()) separate();
    insert(line);
    separate();
}

void TextEditWidget::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Paste)) return QLineEdit::keyPressEvent(event);
    event->accept();
    Insert(QGuiApplication::clipboard()->text(GetPasteMode(*event)));
}

void TextEditWidget::mouseReleaseEvent(QMouseEvent* event) {
    const bool pastes = event->button() == Qt::MiddleButton && QGuiApplication::clipboard()->supportsSelection();
    if (!pastes) return QLineEdit::mouseReleaseEvent(event);
    deselect();
    Insert(QGuiApplication::clipboard()->text(QClipboard::Selection));
}

void TextEditWidget::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* const menu = createStandardContextMenu();
    if (menu == nullptr) return;
    for (QAction* const action : menu->actions()) {
        // Qt gives its actions no other name than the words that it shows.
        if (!action->text().startsWith(QLineEdit::tr("&Paste"))) continue;
        action->disconnect(this);
        connect(action, &QAction::triggered, this, [this] { Insert(QGuiApplication::clipboard()->text()); });
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
    event->accept();
}

void TextEditWidget::dropEvent(QDropEvent* event) {
    QMimeData cleaned;
    const QString line = ToEditableText(event->mimeData()->text(), mLimit - text().size());
    if (!line.isEmpty()) cleaned.setText(line);
    QDropEvent drop(event->position(), event->possibleActions(), &cleaned, event->buttons(), event->modifiers());
    drop.setDropAction(event->dropAction());
    QLineEdit::dropEvent(&drop);
    event->setDropAction(drop.dropAction());
    event->setAccepted(drop.isAccepted());
}

// Sides

void TextEditWidget::ShowMagnifier() {
    mShowsMagnifier = true;
    Arrange();
}

QAbstractButton& TextEditWidget::AddClearButton() {
    mClearButton = new ClearButton(*this);
    mClearButton->hide();
    Arrange();
    return *mClearButton;
}

void TextEditWidget::ShowClearButton(bool show) {
    if (mClearButton == nullptr || mClearButton->isHidden() == !show) return;
    mClearButton->setVisible(show);
    Arrange();
}

int TextEditWidget::GetSideWidth() const { return std::min(height(), kWidestSide); }

void TextEditWidget::Arrange() {
    const int side = GetSideWidth();
    const bool hasButton = mClearButton != nullptr && !mClearButton->isHidden();
    const int before = mShowsMagnifier ? side : 0;
    const int behind = hasButton ? side : 0;
    const bool rightToLeft = layoutDirection() == Qt::RightToLeft;
    setTextMargins(rightToLeft ? behind : before, 0, rightToLeft ? before : behind, 0);
    if (mClearButton == nullptr) return;
    const QRect place(width() - side, 0, side, height());
    mClearButton->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
}

void TextEditWidget::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    Arrange();
}

void TextEditWidget::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::StyleChange) Arrange();
}

void TextEditWidget::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (!mShowsMagnifier) return;
    const QRect place = QStyle::visualRect(layoutDirection(), rect(), QRect(0, 0, GetSideWidth(), height()));
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(place).center());
    painter.scale(qreal(place.width()) / kWidestSide, qreal(place.width()) / kWidestSide);
    painter.setPen(QPen(palette().color(QPalette::Text), kLineWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawEllipse(QPointF(kLensOffset, kLensOffset), kLensRadius, kLensRadius);
    const qreal rim = kLensOffset + kLensRadius * kDiagonal;
    painter.drawLine(QPointF(rim, rim), QPointF(kHandleEnd, kHandleEnd));
}

bool TextEditWidget::IsCut() const {
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect contents = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    const int room = contents.width() - textMargins().left() - textMargins().right() - kTextInset;
    const QString shown = text().isEmpty() ? placeholderText() : text();
    return GetNeededWidth(font(), shown.left(kMeasuredLength)) > room;
}

}  // namespace zelui
