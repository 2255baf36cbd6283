#include "WindowSettings.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <zelcore/Dir.h>
#include <zelcore/File.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

namespace tessaly {

namespace {

/// In bytes; what is written has some hundred.
constexpr qint64 kLargestSettings = 1 << 18;

QString GetSettingsPath() {
    const zelcore::filesupport::File file(zelcore::filesupport::Dir::PrefDir(),
                                          zelcore::utility::AsciiToUTF16("TessalyWindow.ini"));
    return zelui::qt::ToQString(file.FullPath());
}

QVariant ReadSetting(const char* key) {
    if (QFileInfo(GetSettingsPath()).size() > kLargestSettings) return QVariant();
    return QSettings(GetSettingsPath(), QSettings::IniFormat).value(QLatin1String(key));
}

void WriteSetting(const char* key, const QVariant& value) {
    QSettings(GetSettingsPath(), QSettings::IniFormat).setValue(QLatin1String(key), value);
}

}  // namespace

CommandLine::Theme WindowSettings::GetTheme() {
    const QString theme = ReadSetting("theme").toString();
    if (theme == QLatin1String("light")) return CommandLine::kLight;
    return theme == QLatin1String("dark") ? CommandLine::kDark : CommandLine::kSystem;
}

void WindowSettings::SetTheme(CommandLine::Theme theme) {
    WriteSetting("theme", theme == CommandLine::kLight ? "light" : theme == CommandLine::kDark ? "dark" : "system");
}

QByteArray WindowSettings::GetGeometry() { return ReadSetting("geometry").toByteArray(); }

void WindowSettings::SetGeometry(const QByteArray& geometry) { WriteSetting("geometry", geometry); }

QString WindowSettings::GetFolder() {
    const QString folder = ReadSetting("folder").toString();
    return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

void WindowSettings::SetFolder(const QString& folder) { WriteSetting("folder", folder); }

QStringList WindowSettings::GetRecentSessions() {
    return ReadSetting("recentSessions").toStringList().mid(0, kMaxRecent);
}

void WindowSettings::AddRecentSession(const QString& path) {
    QStringList recent = GetRecentSessions();
    recent.removeAll(path);
    recent.prepend(path);
    WriteSetting("recentSessions", recent.mid(0, kMaxRecent));
}

}  // namespace tessaly
