#include <QIcon>
#include <QSettings>
#include <QStandardPaths>
#include <QString>

#include "HighContrast.h"

namespace zelui {

namespace {

// "HighContrast", "HighContrastInverse", "Breeze High Contrast", …
bool IsHighContrast(QString name) {
    return name.remove(u' ').remove(u'-').contains(QStringLiteral("HighContrast"), Qt::CaseInsensitive);
}

// Of the group "General", Qt knows the keys without the group.
bool HasHighContrast(const QString& file, const QString& key) {
    const QString path = QStandardPaths::locate(QStandardPaths::GenericConfigLocation, file);
    return !path.isEmpty() && IsHighContrast(QSettings(path, QSettings::IniFormat).value(key).toString());
}

}  // namespace

// There is no one setting here; each desktop names a theme, and those for this purpose are named alike.
bool SystemWantsHighContrast() {
    // The environment wins where it is set, as it does with the desktop's own programs.
    const QString chosen = qEnvironmentVariable("GTK_THEME");
    if (!chosen.isEmpty()) return IsHighContrast(chosen);
    return IsHighContrast(QIcon::themeName()) ||
           HasHighContrast(QStringLiteral("gtk-3.0/settings.ini"), QStringLiteral("Settings/gtk-theme-name")) ||
           HasHighContrast(QStringLiteral("kdeglobals"), QStringLiteral("ColorScheme"));
}

}  // namespace zelui
