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
constexpr qint64 kLargestFile = 1 << 18;

QString GetPath() {
    const zelcore::filesupport::File file(zelcore::filesupport::Dir::PrefDir(),
                                          zelcore::utility::AsciiToUTF16("TessalyWindow.ini"));
    return zelui::qt::ToQString(file.FullPath());
}

QVariant Read(const char* key) {
    if (QFileInfo(GetPath()).size() > kLargestFile) return QVariant();
    return QSettings(GetPath(), QSettings::IniFormat).value(QLatin1String(key));
}

void Write(const char* key, const QVariant& value) {
    QSettings(GetPath(), QSettings::IniFormat).setValue(QLatin1String(key), value);
}

}  // namespace

CommandLine::Theme WindowSettings::GetTheme() {
    const QString theme = Read("theme").toString();
    if (theme == QLatin1String("light")) return CommandLine::kLight;
    return theme == QLatin1String("dark") ? CommandLine::kDark : CommandLine::kSystem;
}

void WindowSettings::SetTheme(CommandLine::Theme theme) {
    Write("theme", theme == CommandLine::kLight ? "light" : theme == CommandLine::kDark ? "dark" : "system");
}

QByteArray WindowSettings::GetGeometry() { return Read("geometry").toByteArray(); }

void WindowSettings::SetGeometry(const QByteArray& geometry) { Write("geometry", geometry); }

QString WindowSettings::GetFolder() {
    const QString folder = Read("folder").toString();
    return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

void WindowSettings::SetFolder(const QString& folder) { Write("folder", folder); }

QStringList WindowSettings::GetRecentSessions() { return Read("recentSessions").toStringList().mid(0, kMaxRecent); }

void WindowSettings::AddRecentSession(const QString& path) {
    QStringList recent = GetRecentSessions();
    recent.removeAll(path);
    recent.prepend(path);
    Write("recentSessions", recent.mid(0, kMaxRecent));
}

}  // namespace tessaly
