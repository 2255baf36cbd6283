#include "EffectMenu.h"

#include <algorithm>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <zelui/QtAccessibility.h>

#include "LocalText.h"
#include "WindowAccessible.h"

namespace tessaly {

namespace {

constexpr int kWidth = 380;
constexpr int kHeight = 460;
/// Where an item keeps its place in the list of effects, and what is searched.
constexpr int kIndexRole = Qt::UserRole;
constexpr int kSearchRole = Qt::UserRole + 1;

bool IsEffect(const QTreeWidgetItem* item) { return item != nullptr && item->data(0, kIndexRole).isValid(); }

}  // namespace

EffectMenu::EffectMenu(QWidget* parent)
    : QWidget(parent, Qt::Popup),
      mSearch(new QLineEdit),
      mTree(new QTreeWidget),
      mNothing(new QLabel),
      mScanButton(new QPushButton(LocalText("$$$/tessaly/Effects/Scan=Scan for Plug-Ins"))) {
    setObjectName(QStringLiteral("EffectMenu"));
    SetWindowKind(*this, WindowKind::kDialog);
    zelui::qt::SetAccessibleName(*this, LocalText("$$$/tessaly/Effects/Menu=Add an effect"));
    mSearch->setObjectName(QStringLiteral("EffectSearch"));
    zelui::qt::SetAccessibleName(*mSearch, LocalText("$$$/tessaly/Effects/Search=Search effects"));
    mSearch->setPlaceholderText(zelui::qt::GetAccessibleName(*mSearch));
    mSearch->setClearButtonEnabled(true);
    mTree->setObjectName(QStringLiteral("EffectTree"));
    zelui::qt::SetAccessibleName(*mTree, LocalText("$$$/tessaly/Effects/List=Effects"));
    mTree->setHeaderHidden(true);
    mTree->setUniformRowHeights(true);
    mTree->setFrameShape(QFrame::NoFrame);
    mNothing->setObjectName(QStringLiteral("NoEffects"));
    mNothing->setWordWrap(true);
    mNothing->setAlignment(Qt::AlignCenter);
    mScanButton->setObjectName(QStringLiteral("ScanButton"));
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(mSearch);
    layout->addWidget(mTree, 1);
    layout->addWidget(mNothing, 1);
    layout->addWidget(mScanButton, 0, Qt::AlignHCenter);
    Connect();
}

void EffectMenu::Connect() {
    mSearch->installEventFilter(this);
    connect(mSearch, &QLineEdit::textChanged, this, [this](const QString& text) { Filter(text); });
    connect(mTree, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) { Pick(item); });
    connect(mTree, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        if (IsEffect(item))
            Pick(item);
        else
            item->setExpanded(!item->isExpanded());
    });
    connect(mTree, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) { Announce(item); });
    connect(mScanButton, &QPushButton::clicked, this, [this] {
        hide();
        mScan();
    });
}

void EffectMenu::PopUp(const QWidget& anchor) {
    mSearch->clear();
    Fill();
    const QRect available = anchor.screen()->availableGeometry();
    resize(std::min(kWidth, available.width()), std::min(kHeight, available.height()));
    const QPoint corner = anchor.mapToGlobal(QPoint(0, anchor.height()));
    move(std::clamp(corner.x(), available.left(), available.right() - width() + 1),
         std::clamp(corner.y(), available.top(), available.bottom() - height() + 1));
    show();
    mSearch->setFocus(Qt::PopupFocusReason);
}

void EffectMenu::Fill() {
    mEffects = CollectOfferedEffects();
    mTree->clear();
    QTreeWidgetItem* const root = mTree->invisibleRootItem();
    for (std::size_t i = 0; i < mEffects.size(); ++i) {
        const OfferedEffect& effect = mEffects[i];
        QTreeWidgetItem* const vendor = FindOrAddGroup(FindOrAddGroup(root, effect.format), effect.vendor);
        QTreeWidgetItem* const item = new QTreeWidgetItem(vendor, {effect.name});
        item->setData(0, kIndexRole, static_cast<int>(i));
        item->setData(0, kSearchRole, QStringList{effect.name, effect.vendor, effect.format}.join(QLatin1Char('\n')));
        item->setToolTip(0, ToolTipText(zelui::qt::ToQString(effect.descriptor->GetLocator().GetPath())));
    }
    mSearch->setVisible(!mEffects.empty());
    mScanButton->setVisible(mEffects.empty());
    Filter(QString());
}

QTreeWidgetItem* EffectMenu::FindOrAddGroup(QTreeWidgetItem* parent, const QString& text) {
    // Effects come sorted, so that a group is the last one or a new one.
    QTreeWidgetItem* const last = parent->child(parent->childCount() - 1);
    if (last != nullptr && last->text(0) == text) return last;
    QTreeWidgetItem* const group = new QTreeWidgetItem(parent, {text});
    group->setFlags(Qt::ItemIsEnabled);
    return group;
}

void EffectMenu::Filter(const QString& text) {
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    bool any = false;
    for (int i = 0; i < mTree->topLevelItemCount(); ++i) any |= FilterItem(mTree->topLevelItem(i), words);
    // The formats alone say little: their vendors are seen, and when something is searched all there is.
    if (words.isEmpty()) {
        mTree->collapseAll();
        mTree->expandToDepth(0);
    } else {
        mTree->expandAll();
    }
    mTree->setVisible(any);
    mNothing->setVisible(!any);
    mNothing->setText(mEffects.empty()
                          ? LocalText("$$$/tessaly/Effects/None=No effects are known yet, or all are switched off.")
                          : LocalText("$$$/tessaly/Effects/NoMatch=No effect matches."));
    mTree->setCurrentItem(nullptr);
    if (!words.isEmpty()) ChooseFirst();
}

bool EffectMenu::FilterItem(QTreeWidgetItem* item, const QStringList& words) {
    bool shown = false;
    if (IsEffect(item)) {
        const QString text = item->data(0, kSearchRole).toString();
        shown = std::all_of(words.begin(), words.end(),
                            [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
    } else {
        for (int i = 0; i < item->childCount(); ++i) shown |= FilterItem(item->child(i), words);
    }
    item->setHidden(!shown);
    return shown;
}

void EffectMenu::ChooseFirst() {
    for (QTreeWidgetItemIterator it(mTree, QTreeWidgetItemIterator::NotHidden); *it != nullptr; ++it) {
        if (!IsEffect(*it)) continue;
        mTree->setCurrentItem(*it);
        return;
    }
}

void EffectMenu::Step(int direction) {
    QTreeWidgetItem* item = mTree->currentItem();
    if (item == nullptr) return ChooseFirst();
    do {
        item = direction < 0 ? mTree->itemAbove(item) : mTree->itemBelow(item);
        // Into a vendor that is closed: what is in it is next.
        if (item != nullptr && !IsEffect(item) && !item->isExpanded()) {
            item->setExpanded(true);
            if (direction < 0) item = item->child(item->childCount() - 1);
        }
    } while (item != nullptr && !IsEffect(item));
    if (item != nullptr) mTree->setCurrentItem(item);
}

void EffectMenu::Announce(const QTreeWidgetItem* item) {
    // The focus stays in the field, so that the field says what is chosen beside it.
    QString text;
    if (IsEffect(item)) text = item->data(0, kSearchRole).toString().replace(QLatin1Char('\n'), QStringLiteral(", "));
    if (text == zelui::qt::GetAccessibleDescription(*mSearch)) return;
    zelui::qt::SetAccessibleDescription(*mSearch, text);
    zelui::qt::AnnounceValue(*mSearch, text);
}

void EffectMenu::Pick(QTreeWidgetItem* item) {
    // Where one click activates, both signals come.
    if (!isVisible() || !IsEffect(item)) return;
    const auto descriptor = mEffects[static_cast<std::size_t>(item->data(0, kIndexRole).toInt())].descriptor;
    hide();
    mPicked(*descriptor);
}

bool EffectMenu::eventFilter(QObject* watched, QEvent* event) {
    if (watched != mSearch || event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
            Step(-1);
            return true;
        case Qt::Key_Down:
            Step(1);
            return true;
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            QApplication::sendEvent(mTree, event);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Pick(mTree->currentItem());
            return true;
        default:
            return false;
    }
}

}  // namespace tessaly
