#include "ManagerSettingsFile.h"

#include <QRect>
#include <QSettings>

#include <zelcore/File.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

namespace tessaly {

using zelaudiofilterhostui::AudioPluginManagerSettings;

namespace {

constexpr std::uint32_t kLastColumn = 5;

QString GetPath() {
    const zelcore::filesupport::File file(zelcore::filesupport::Dir::PrefDir(),
                                          zelcore::utility::AsciiToUTF16("PluginManagerWindow.ini"));
    return zelui::qt::ToQString(file.FullPath());
}

}  // namespace

AudioPluginManagerSettings ManagerSettingsFile::Load() {
    const QSettings file(GetPath(), QSettings::IniFormat);
    AudioPluginManagerSettings settings;
    settings.rescanExisting = file.value("rescanExisting", false).toBool();
    settings.sortColumn = file.value("sortColumn", 0).toUInt();
    if (settings.sortColumn > kLastColumn) settings.sortColumn = 0;
    settings.sortAscending = file.value("sortAscending", false).toBool();
    const QRect rect = file.value("rect").toRect();
    settings.dialogRect = {rect.left(), rect.top(), rect.width(), rect.height()};
    return settings;
}

bool ManagerSettingsFile::Save(const AudioPluginManagerSettings& settings) {
    QSettings file(GetPath(), QSettings::IniFormat);
    file.setValue("rescanExisting", settings.rescanExisting);
    file.setValue("sortColumn", settings.sortColumn);
    file.setValue("sortAscending", settings.sortAscending);
    const auto& rect = settings.dialogRect;
    file.setValue("rect", QRect(static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.width),
                                static_cast<int>(rect.height)));
    file.sync();
    return file.status() == QSettings::NoError;
}

}  // namespace tessaly
