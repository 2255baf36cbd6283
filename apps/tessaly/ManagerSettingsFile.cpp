#include "ManagerSettingsFile.h"

#include <QFileInfo>
#include <QSettings>

#include <zelcore/File.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

namespace tessaly {

using zelaudiofilterhostui::AudioPluginManagerSettings;

namespace {

constexpr std::uint32_t kLastColumn = 5;
/// In bytes; what is written has some hundred.
constexpr qint64 kLargestRecord = 1 << 16;

QString GetRecordPath() {
    const zelcore::filesupport::File file(zelcore::filesupport::Dir::PrefDir(),
                                          zelcore::utility::AsciiToUTF16("PluginManagerWindow.ini"));
    return zelui::qt::ToQString(file.FullPath());
}

}  // namespace

AudioPluginManagerSettings ManagerSettingsFile::Load() {
    AudioPluginManagerSettings settings;
    if (QFileInfo(GetRecordPath()).size() > kLargestRecord) return settings;
    const QSettings file(GetRecordPath(), QSettings::IniFormat);
    settings.rescanExisting = file.value("rescanExisting", false).toBool();
    settings.sortColumn = file.value("sortColumn", 0).toUInt();
    if (settings.sortColumn > kLastColumn) settings.sortColumn = 0;
    settings.sortAscending = file.value("sortAscending", false).toBool();
    settings.dialogRect = {file.value("left").toInt(), file.value("top").toInt(), file.value("width").toInt(),
                           file.value("height").toInt()};
    return settings;
}

bool ManagerSettingsFile::Save(const AudioPluginManagerSettings& settings) {
    QSettings file(GetRecordPath(), QSettings::IniFormat);
    file.setValue("rescanExisting", settings.rescanExisting);
    file.setValue("sortColumn", settings.sortColumn);
    file.setValue("sortAscending", settings.sortAscending);
    file.setValue("left", static_cast<int>(settings.dialogRect.left));
    file.setValue("top", static_cast<int>(settings.dialogRect.top));
    file.setValue("width", static_cast<int>(settings.dialogRect.width));
    file.setValue("height", static_cast<int>(settings.dialogRect.height));
    file.sync();
    return file.status() == QSettings::NoError;
}

}  // namespace tessaly
