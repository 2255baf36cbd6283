#include "SessionWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <stdexcept>

#include <zelui/QtBridge.h>

#include "FilePath.h"
#include "SessionError.h"
#include "SessionFile.h"
#include "SessionFormat.h"

namespace tessaly {

using namespace sessionformat;
using zelaudiofilterhost::ChannelMap;
using zelui::qt::ToQString;

namespace {

QJsonObject WriteSound(const std::string& path, const std::string& folder) {
    const std::filesystem::path relative = ToFilePath(path).lexically_relative(ToFilePath(folder));
    QJsonObject sound{{Key("path"), QString::fromStdString(path)}};
    // None where the two are on different drives.
    if (!relative.empty())
        sound.insert(Key("relative"), QString::fromStdString(FromFilePath(relative.generic_u8string())));
    return sound;
}

QJsonArray WriteMap(const ChannelMap& map) {
    QJsonArray array;
    for (const auto& [effectChannel, targetChannel] : map) array.append(QJsonArray{effectChannel, targetChannel});
    return array;
}

QJsonObject WriteWindows(const WindowPlaces& places) {
    QJsonObject windows;
    for (std::size_t kind = 0; kind < places.size(); ++kind) {
        if (!places[kind]) continue;
        const auto& place = *places[kind];
        windows.insert(Key(kWindowNames[kind]),
                       QJsonArray{qint64(place.left), qint64(place.top), qint64(place.width), qint64(place.height)});
    }
    return windows;
}

QJsonObject WriteEffect(const EffectRecord& effect) {
    // The bytes stay where they are: there may be many.
    const QByteArray state = QByteArray::fromRawData(reinterpret_cast<const char*>(effect.state.data()),
                                                     static_cast<qsizetype>(effect.state.size()));
    QJsonObject object{{Key("component"), ToQString(effect.componentId)},
                       {Key("plugin"), ToQString(effect.locator.ToString())},
                       {Key("name"), ToQString(effect.name)},
                       {Key("vendor"), ToQString(effect.vendor)},
                       {Key("bypassed"), effect.isBypassed},
                       {Key("state"), QString::fromLatin1(state.toBase64())}};
    if (effect.inputMap) object.insert(Key("inputMap"), WriteMap(*effect.inputMap));
    if (effect.outputMap) object.insert(Key("outputMap"), WriteMap(*effect.outputMap));
    const QJsonObject windows = WriteWindows(effect.windows);
    if (!windows.isEmpty()) object.insert(Key("windows"), windows);
    return object;
}

/// Before anything is made of it: base64 makes four bytes of three.
bool HasTooLargeStates(const SessionRecord& session) {
    std::size_t left = SessionFile::kMaxSize / 4 * 3;
    for (const EffectRecord& effect : session.effects) {
        if (effect.state.size() > left) return true;
        left -= effect.state.size();
    }
    return false;
}

}  // namespace

QByteArray SessionWriter::Write(const SessionRecord& session, const std::string& folder) {
    constexpr char kTooLarge[] = "$$$/tessaly/SessionError/CannotGrow=The session is too large to be saved.";
    if (session.effects.size() > SessionFile::kMaxEffects || HasTooLargeStates(session)) throw SessionError(kTooLarge);
    QJsonObject object{{Key("format"), Key(kFormat)}, {Key("version"), kVersion}, {Key("loop"), session.isLooping}};
    if (!session.soundPath.empty()) object.insert(Key("sound"), WriteSound(session.soundPath, folder));
    if (!session.sideChainPath.empty()) object.insert(Key("sideChain"), WriteSound(session.sideChainPath, folder));
    QJsonArray effects;
    for (const EffectRecord& effect : session.effects) effects.append(WriteEffect(effect));
    object.insert(Key("effects"), effects);
    const QByteArray text = QJsonDocument(object).toJson();
    if (static_cast<std::size_t>(text.size()) > SessionFile::kMaxSize) throw SessionError(kTooLarge);
    return text;
}

}  // namespace tessaly
