#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>

#include <zelui/Drawbot.h>

namespace zelui {
namespace drawbot {

/// A font of the screen's supplier.
class QtFont final : public Font {
public:
    explicit QtFont(const QFont& font);

    float GetStringWidth(const zelcore::ustring& text) const override;
    float GetAscent() const override;
    float GetDescent() const override;

    const QFont& GetFont() const { return mFont; }

private:
    QFont mFont;
    QFontMetricsF mMetrics;
};

/// The text as it is measured and drawn: what would end the line or control it is blank.
QString ToDrawnLine(const zelcore::ustring& text);
/// Where to cut a long text near `position` (before it, or at it) without cutting a character in two; never 0.
qsizetype FindCut(const QString& text, qsizetype position);

}  // namespace drawbot
}  // namespace zelui
