#pragma once

#include <QFont>
#include <QString>

#include <zelcore/ustring.h>

#include "Fonts.h"

namespace zelui {

/// The text of a control as it is shown: one line of bounded length.
QString ToControlText(const zelcore::ustring& text);

/// The same for Qt's buttons, which take "&" for the mark of a shortcut.
QString ToButtonText(const QString& controlText);

QFont GetControlFont(float size = kDefaultTextSize);

/// How much room a text needs to be shown in full, in whole units.
int GetNeededWidth(const QFont& font, const QString& text);

}  // namespace zelui
