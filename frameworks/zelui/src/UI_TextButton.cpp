#include <zelui/UI_TextButton.h>

#include <QApplication>
#include <QStyle>
#include <QStyleOptionButton>

#include "ControlText.h"
#include "TextButtonPeer.h"

namespace zelui {
namespace controls {

namespace {

// That of the supplier's fonts.
constexpr float kLargestTextSize = 1000.0f;

}  // namespace

UI_TextButton::UI_TextButton() = default;

UI_TextButton::~UI_TextButton() = default;

zelcore::geom::PointF UI_TextButton::UI_GetRecommendedSize(const drawbot::SupplierInterface* supplier,
                                                           const zelcore::ustring& text, float textSize) {
    const bool usable = textSize > 0.0f && textSize <= kLargestTextSize;
    if (supplier == nullptr || QApplication::instance() == nullptr || !usable) return {};
    const QFont font = GetControlFont(textSize);
    const QSize contents(GetNeededWidth(font, ToControlText(text)), QFontMetrics(font).height());
    QStyleOptionButton option;
    option.fontMetrics = QFontMetrics(font);
    // Without the text in it: styles make a button with a text as wide as looks well in a dialog, more than it needs.
    QStyle* const style = QApplication::style();
    QSize size = style->sizeFromContents(QStyle::CT_PushButton, &option, contents, nullptr);
    option.rect = QRect(QPoint(0, 0), size);
    const QSize room = style->subElementRect(QStyle::SE_PushButtonContents, &option, nullptr).size();
    size += (contents - room).expandedTo(QSize(0, 0));
    return {static_cast<float>(size.width()), static_cast<float>(size.height())};
}

std::unique_ptr<ui::UI_Node::Peer> UI_TextButton::UI_MakePeer() { return std::make_unique<TextButtonPeer>(*this); }

}  // namespace controls
}  // namespace zelui
