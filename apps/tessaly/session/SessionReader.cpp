#include "SessionReader.h"

#include <cmath>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <zelaudiofilterhost/PluginComponentInfo.h>
#include <zelui/QtBridge.h>

#include "FilePath.h"
#include "SessionError.h"
#include "SessionFile.h"
#include "SessionFormat.h"

namespace tessaly {

using namespace sessionformat;
using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::ChannelMap;
using zelaudiofilterhost::PluginComponentInfo;
using zelaudiofilterhost::PluginLocator;
using zelui::qt::FromQString;

namespace {

constexpr std::size_t kMaxPathLength = PluginLocator::kMaxTextLength;
/// Farther out than any screen.
constexpr int kFarthest = 1 << 20;

[[noreturn]] void FailFor(const char* name) {
    throw SessionError("$$$/tessaly/SessionError/Value=The session is damaged: its \"@0\" makes no sense.",
                       {FromQString(Key(name))});
}

bool Has(const QJsonObject& object, const char* name) { return object.contains(Key(name)); }

QString ReadText(const QJsonObject& object, const char* name, std::size_t maxLength) {
    const QJsonValue value = object.value(Key(name));
    if (value.isUndefined()) return QString();
    const QString text = value.toString();
    // Paths end where the first NUL is, and everything else is for people to read.
    if (!value.isString() || static_cast<std::size_t>(text.size()) > maxLength || text.contains(QChar(0)))
        FailFor(name);
    return text;
}

bool ReadFlag(const QJsonObject& object, const char* name) {
    const QJsonValue value = object.value(Key(name));
    if (!value.isUndefined() && !value.isBool()) FailFor(name);
    return value.toBool();
}

QJsonObject ReadObject(const QJsonObject& object, const char* name) {
    const QJsonValue value = object.value(Key(name));
    if (!value.isUndefined() && !value.isObject()) FailFor(name);
    return value.toObject();
}

QJsonArray ReadArray(const QJsonObject& object, const char* name) {
    const QJsonValue value = object.value(Key(name));
    if (!value.isUndefined() && !value.isArray()) FailFor(name);
    return value.toArray();
}

/// A whole number; `name` is what it belongs to.
int ReadJsonNumber(const QJsonValue& value, int least, int most, const char* name) {
    const double number = value.toDouble();
    if (!value.isDouble() || !(number >= least && number <= most) || number != std::floor(number)) FailFor(name);
    return static_cast<int>(number);
}

std::string ReadSound(const QJsonObject& session, const char* name, const std::string& folder) {
    const QJsonObject sound = ReadObject(session, name);
    const std::string path = ReadText(sound, "path", kMaxPathLength).toStdString();
    const std::string relative = ReadText(sound, "relative", kMaxPathLength).toStdString();
    if (Has(session, name) && path.empty()) FailFor(name);
    // Each is taken from the folder; a path that is full stays what it is.
    const auto complete = [&folder](const std::string& part) {
        return (ToFilePath(folder) / ToFilePath(part)).lexically_normal();
    };
    std::error_code error;
    if (!relative.empty() && std::filesystem::is_regular_file(complete(relative), error))
        return FromFilePath(complete(relative));
    return path.empty() ? path : FromFilePath(complete(path));
}

std::optional<ChannelMap> ReadMap(const QJsonObject& effect, const char* name) {
    if (!Has(effect, name)) return {};
    const QJsonArray array = ReadArray(effect, name);
    if (array.size() > PluginComponentInfo::kMaxChannels) FailFor(name);
    ChannelMap map;
    for (const QJsonValue value : array) {
        const QJsonArray entry = value.toArray();
        if (entry.size() != 2) FailFor(name);
        const int effectChannel = ReadJsonNumber(entry[0], 0, PluginComponentInfo::kMaxChannels - 1, name);
        const int targetChannel = ReadJsonNumber(entry[1], zelaudiofilterhost::kNotConnected,
                                                 static_cast<int>(AudioFilter::kMaxTargetChannels) - 1, name);
        if (!map.emplace(effectChannel, targetChannel).second) FailFor(name);
    }
    return map;
}

WindowPlaces ReadWindows(const QJsonObject& effect) {
    const QJsonObject windows = ReadObject(effect, "windows");
    WindowPlaces places;
    for (std::size_t kind = 0; kind < places.size(); ++kind) {
        const char* const name = kWindowNames[kind];
        if (!Has(windows, name)) continue;
        const QJsonArray place = ReadArray(windows, name);
        if (place.size() != 4) FailFor(name);
        places[kind] = {ReadJsonNumber(place[0], -kFarthest, kFarthest, name),
                        ReadJsonNumber(place[1], -kFarthest, kFarthest, name),
                        ReadJsonNumber(place[2], 0, kFarthest, name), ReadJsonNumber(place[3], 0, kFarthest, name)};
    }
    return places;
}

AudioFilter::State ReadState(const QJsonObject& effect) {
    constexpr std::size_t kMaxText = (AudioFilter::kMaxStateSize + 2) / 3 * 4;
    const QByteArray text = ReadText(effect, "state", kMaxText).toUtf8();
    const auto decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    // Qt takes bytes that lack their end; what writes sessions always fills it.
    if (text.size() % 4 != 0 || !decoded ||
        static_cast<std::size_t>(decoded.decoded.size()) > AudioFilter::kMaxStateSize)
        FailFor("state");
    return AudioFilter::State(decoded.decoded.begin(), decoded.decoded.end());
}

EffectRecord ReadEffect(const QJsonValue& value) {
    if (!value.isObject()) FailFor("effects");
    const QJsonObject object = value.toObject();
    EffectRecord effect;
    effect.componentId = FromQString(ReadText(object, "component", PluginComponentInfo::kMaxTextLength));
    if (effect.componentId.empty()) FailFor("component");
    const auto locator = FromQString(ReadText(object, "plugin", PluginLocator::kMaxTextLength));
    effect.locator = PluginLocator::FromString(locator);
    if (effect.locator == PluginLocator() && !locator.empty()) FailFor("plugin");
    effect.name = FromQString(ReadText(object, "name", PluginComponentInfo::kMaxTextLength));
    effect.vendor = FromQString(ReadText(object, "vendor", PluginComponentInfo::kMaxTextLength));
    effect.isBypassed = ReadFlag(object, "bypassed");
    effect.state = ReadState(object);
    effect.inputMap = ReadMap(object, "inputMap");
    effect.outputMap = ReadMap(object, "outputMap");
    effect.windows = ReadWindows(object);
    return effect;
}

void CheckFormat(const QJsonObject& object) {
    if (object.value(Key("format")).toString() != Key(kFormat))
        throw SessionError("$$$/tessaly/SessionError/Format=This is no session of Tessaly.");
    const QJsonValue version = object.value(Key("version"));
    if (!version.isDouble() || !(version.toDouble() >= kVersion)) FailFor("version");
    if (version.toDouble() > kVersion)
        throw SessionError("$$$/tessaly/SessionError/Later=The session was saved by a later version of Tessaly.");
}

}  // namespace

SessionRecord SessionReader::Read(std::string_view text, const std::string& folder) {
    const auto bytes = QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        throw SessionError("$$$/tessaly/SessionError/Damaged=This is no session of Tessaly, or it is damaged.");
    const QJsonObject object = document.object();
    CheckFormat(object);
    SessionRecord session;
    session.soundPath = ReadSound(object, "sound", folder);
    session.sideChainPath = ReadSound(object, "sideChain", folder);
    session.isLooping = ReadFlag(object, "loop");
    const QJsonArray effects = ReadArray(object, "effects");
    if (static_cast<std::size_t>(effects.size()) > SessionFile::kMaxEffects) FailFor("effects");
    for (const QJsonValue effect : effects) session.effects.push_back(ReadEffect(effect));
    return session;
}

}  // namespace tessaly
