#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <SessionFile.h>
#include <SessionReader.h>

#include "SessionStage.h"

using namespace tessaly;
using namespace zeltests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using zelaudiofilterhost::PluginLocator;

namespace {

constexpr char kNoSession[] = "This is no session of Tessaly, or it is damaged.";

EffectRecord MakeEffect() {
    EffectRecord effect;
    effect.componentId = UText("VST-5A476169");
    effect.locator = PluginLocator(zelaudiofilterhost::kTechnologyVST, UText("/usr/lib/vst/G\xC3\xA4in|1.so"));
    effect.name = UText("G\xC3\xA4in \xF0\x9F\x8E\xB5");
    effect.vendor = UText("Zel \"&\" Sons");
    effect.isBypassed = true;
    effect.state = {0, 1, 2, 0xFF};
    effect.inputMap = {{0, 1}, {1, zelaudiofilterhost::kNotConnected}};
    effect.outputMap = zelaudiofilterhost::ChannelMap();
    effect.windows[kOwnEditor] = {-20, 30, 0, 0};
    effect.windows[kChannelMapEditor] = {1, 2, 300, 400};
    return effect;
}

SessionRecord MakeSession() {
    SessionRecord session;
    session.soundPath = FullName("/nowhere/s\xC3\xB6und.wav");
    session.sideChainPath = FullName("/nowhere/else/side.wav");
    session.isLooping = true;
    session.effects = {MakeEffect(), EffectRecord(), MakeEffect()};
    session.effects[1].componentId = UText("VST3-00");
    return session;
}

class SessionFileTest : public testing::Test {
protected:
    /// The file with one change in its text.
    QJsonObject Read() const { return QJsonDocument::fromJson(QByteArray::fromStdString(ReadFile(mPath))).object(); }
    std::string Load(const QJsonObject& object) const { return Load(QJsonDocument(object).toJson().toStdString()); }
    /// Why that is no session; "nothing" when it is one.
    std::string Load(const std::string& text) const {
        WriteFile(mPath, text);
        return ErrorOf([this] { SessionFile::Load(mPath); });
    }
    /// The same of a session whose first effect has something else.
    std::string LoadWith(const char* name, const QJsonValue& value) const {
        SessionFile::Save(mPath, MakeSession());
        QJsonObject session = Read();
        QJsonArray effects = session[QStringLiteral("effects")].toArray();
        QJsonObject effect = effects[0].toObject();
        effect.insert(QString::fromLatin1(name), value);
        effects[0] = effect;
        session.insert(QStringLiteral("effects"), effects);
        return Load(session);
    }
    std::string LoadTopWith(const char* name, const QJsonValue& value) const {
        SessionFile::Save(mPath, MakeSession());
        QJsonObject session = Read();
        session.insert(QString::fromLatin1(name), value);
        return Load(session);
    }
    std::set<std::string> List() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(mFolder.GetPath()))
            names.insert(entry.path().filename().string());
        return names;
    }

    const ThrowAwayFolder mFolder;
    const std::string mPath = mFolder.Path("song.tessaly");
};

std::string Damaged(const std::string& name) { return "The session is damaged: its \"" + name + "\" makes no sense."; }

QJsonArray Numbers(std::initializer_list<double> numbers) {
    QJsonArray array;
    for (const double number : numbers) array.append(number);
    return array;
}

QJsonArray Pairs(std::initializer_list<QJsonArray> pairs) {
    QJsonArray array;
    for (const QJsonArray& pair : pairs) array.append(pair);
    return array;
}

}  // namespace

TEST_F(SessionFileTest, GivesBackWhatWasSaved) {
    SessionFile::Save(mPath, MakeSession());
    EXPECT_EQ(SessionFile::Load(mPath), MakeSession());
    SessionFile::Save(mPath, SessionRecord());
    EXPECT_EQ(SessionFile::Load(mPath), SessionRecord());
    EXPECT_THAT(List(), ElementsAre("song.tessaly"));
}

TEST_F(SessionFileTest, ALoadedSessionIsSavedAsTheSameBytes) {
    SessionFile::Save(mPath, MakeSession());
    const std::string bytes = ReadFile(mPath);
    SessionFile::Save(mPath, SessionFile::Load(mPath));
    EXPECT_EQ(ReadFile(mPath), bytes);
}

// Sounds

TEST_F(SessionFileTest, SoundsAreFoundWhereTheFolderHasMoved) {
    std::filesystem::create_directories(mFolder.Path("one/sounds"));
    WriteFile(mFolder.Path("one/sounds/a.wav"), "");
    SessionRecord session;
    session.soundPath = mFolder.Path("one/sounds/a.wav");
    session.sideChainPath = mFolder.Path("one/missing.wav");
    SessionFile::Save(mFolder.Path("one/song.tessaly"), session);
    std::filesystem::rename(mFolder.Path("one"), mFolder.Path("two"));
    const SessionRecord loaded = SessionFile::Load(mFolder.Path("two/song.tessaly"));
    EXPECT_EQ(loaded.soundPath, FullName(mFolder.Path("two/sounds/a.wav")));
    EXPECT_EQ(loaded.sideChainPath, FullName(mFolder.Path("one/missing.wav"))) << "is in neither place: where it was";
}

TEST_F(SessionFileTest, TheSoundBesideTheSessionWinsOverTheOneThatWasMeant) {
    std::filesystem::create_directories(mFolder.Path("one"));
    WriteFile(mFolder.Path("one/a.wav"), "");
    SessionRecord session;
    session.soundPath = mFolder.Path("one/a.wav");
    SessionFile::Save(mFolder.Path("one/song.tessaly"), session);
    std::filesystem::copy(mFolder.Path("one"), mFolder.Path("two"));
    EXPECT_EQ(SessionFile::Load(mFolder.Path("two/song.tessaly")).soundPath, FullName(mFolder.Path("two/a.wav")));
}

TEST_F(SessionFileTest, ASoundInAnotherFolderIsFoundWhenOnlyTheSessionMoves) {
    std::filesystem::create_directories(mFolder.Path("one/deep"));
    WriteFile(mFolder.Path("a.wav"), "");
    SessionRecord session;
    session.soundPath = mFolder.Path("a.wav");
    SessionFile::Save(mFolder.Path("one/deep/song.tessaly"), session);
    EXPECT_EQ(SessionFile::Load(mFolder.Path("one/deep/song.tessaly")).soundPath, FullName(mFolder.Path("a.wav")));
    std::filesystem::rename(mFolder.Path("one/deep/song.tessaly"), mPath);
    EXPECT_EQ(SessionFile::Load(mPath).soundPath, FullName(mFolder.Path("a.wav")));
}

TEST_F(SessionFileTest, AFolderIsNoSound) {
    std::filesystem::create_directories(mFolder.Path("folder"));
    SessionFile::Save(mPath, SessionRecord());
    QJsonObject sound{{QStringLiteral("relative"), QStringLiteral("folder")},
                      {QStringLiteral("path"), QString::fromStdString(FullName("/nowhere/a.wav"))}};
    EXPECT_EQ(LoadTopWith("sound", sound), "nothing");
    EXPECT_EQ(SessionFile::Load(mPath).soundPath, FullName("/nowhere/a.wav"));
}

// Files that are none

TEST_F(SessionFileTest, AFileThatIsNotThereOrNoneIsToldOf) {
    EXPECT_EQ(ErrorOf([this] { SessionFile::Load(mPath); }), "There is no file " + FullName(mPath) + ".");
    EXPECT_EQ(ErrorOf([this] { SessionFile::Load(mFolder.GetPath()); }),
              "There is no file " + FullName(mFolder.GetPath()) + ".");
}

TEST_F(SessionFileTest, AnythingElseIsNoSession) {
    for (const std::string text : {"", "[]", "1", "null", "\"tessaly-session\"", "{", "RIFF....WAVEfmt ", "{} {}"}) {
        EXPECT_EQ(Load(text), kNoSession) << text;
    }
    EXPECT_EQ(Load(std::string("{}")), "This is no session of Tessaly.");
    EXPECT_EQ(Load(std::string("{\"format\": \"other\", \"version\": 1}")), "This is no session of Tessaly.");
}

TEST_F(SessionFileTest, OneThatIsCutAnywhereIsNoSession) {
    SessionFile::Save(mPath, MakeSession());
    const std::string whole = ReadFile(mPath);
    const std::size_t end = whole.find_last_of('}');
    for (std::size_t length = 0; length <= end; length += 7) EXPECT_EQ(Load(whole.substr(0, length)), kNoSession);
}

TEST_F(SessionFileTest, OneThatIsChangedAnywhereIsReadOrToldOfAndNothingElse) {
    SessionFile::Save(mPath, MakeSession());
    const std::string whole = ReadFile(mPath);
    std::size_t refused = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\0', '"', '9', '\xFF'}) {
            std::string changed = whole;
            changed[at] = byte;
            if (ErrorOf([&] { SessionReader::Read(changed, mFolder.GetPath()); }) != "nothing") ++refused;
        }
    }
    EXPECT_GT(refused, whole.size());
}

TEST_F(SessionFileTest, BytesThatAreNoTextAreNoSession) {
    EXPECT_EQ(Load(std::string("{\"format\": \"tessaly-session\", \"version\": 1, \"x\": \"\xC3\x28\"}")), kNoSession);
}

TEST_F(SessionFileTest, DeepNestingIsNoSession) {
    const std::string start = "{\"format\": \"tessaly-session\", \"version\": 1, \"x\": ";
    EXPECT_EQ(Load(start + std::string(1'000'000, '[')), kNoSession);
    EXPECT_EQ(Load(start + std::string(100'000, '[') + std::string(100'000, ']') + "}"), kNoSession);
    EXPECT_EQ(Load(start + "[[[]]]}"), "nothing");
}

TEST_F(SessionFileTest, ALaterVersionIsRefusedInPlainWords) {
    for (const double version : {2.0, 1.5, 1e300})
        EXPECT_EQ(LoadTopWith("version", version), "The session was saved by a later version of Tessaly.");
    for (const QJsonValue& version : {QJsonValue(0), QJsonValue(-1), QJsonValue(QStringLiteral("1")), QJsonValue()})
        EXPECT_EQ(LoadTopWith("version", version), Damaged("version"));
}

TEST_F(SessionFileTest, WhatALaterVersionAddsIsLeftOut) {
    EXPECT_EQ(LoadTopWith("tempo", 120), "nothing");
    EXPECT_EQ(LoadWith("colour", QStringLiteral("red")), "nothing");
    EXPECT_EQ(SessionFile::Load(mPath), MakeSession());
}

// Values that make no sense

TEST_F(SessionFileTest, ValuesOfAnotherTypeAreToldOf) {
    for (const QJsonValue& wrong : {QJsonValue(1), QJsonValue(QJsonArray()), QJsonValue(QJsonValue::Null)}) {
        for (const char* const name : {"component", "plugin", "name", "vendor", "state"})
            EXPECT_EQ(LoadWith(name, wrong), Damaged(name));
        EXPECT_EQ(LoadWith("bypassed", wrong), Damaged("bypassed"));
        EXPECT_EQ(LoadTopWith("loop", wrong), Damaged("loop"));
        EXPECT_EQ(LoadTopWith("sound", wrong), Damaged("sound"));
    }
    for (const QJsonValue& wrong : {QJsonValue(1), QJsonValue(QJsonObject()), QJsonValue(QStringLiteral("x"))}) {
        for (const char* const name : {"inputMap", "outputMap"}) EXPECT_EQ(LoadWith(name, wrong), Damaged(name));
        EXPECT_EQ(LoadTopWith("effects", wrong), Damaged("effects"));
        EXPECT_EQ(LoadTopWith("effects", QJsonArray{wrong}),
                  wrong.isObject() ? Damaged("component") : Damaged("effects"));
    }
}

TEST_F(SessionFileTest, NumbersThatMakeNoSenseAreToldOf) {
    for (const double number : {-2.0, 0.5, 256.0, 1e18, -1e300}) {
        EXPECT_EQ(LoadWith("inputMap", Pairs({Numbers({0, number})})), Damaged("inputMap")) << number;
    }
    for (const double number : {-1.0, 1024.0, 1e18}) {
        EXPECT_EQ(LoadWith("outputMap", Pairs({Numbers({number, 0})})), Damaged("outputMap")) << number;
    }
    EXPECT_EQ(LoadWith("inputMap", Pairs({Numbers({0, 1}), Numbers({0, 2})})), Damaged("inputMap"))
        << "one channel twice";
    EXPECT_EQ(LoadWith("inputMap", Pairs({Numbers({0})})), Damaged("inputMap"));
    EXPECT_EQ(LoadWith("inputMap", Pairs({Numbers({0, 1, 2})})), Damaged("inputMap"));
    for (const QJsonArray& place : {Numbers({}), Numbers({1, 2, 3}), Numbers({1e9, 0, 1, 1}), Numbers({0, -1e9, 1, 1}),
                                    Numbers({0, 0, -1, 1}), Numbers({0, 0, 1, 1e9}), Numbers({0, 0, 1, 1, 1})}) {
        EXPECT_EQ(LoadWith("windows", QJsonObject{{QStringLiteral("generic"), place}}), Damaged("generic"));
    }
}

TEST_F(SessionFileTest, TextsThatMakeNoSenseAreToldOf) {
    EXPECT_EQ(LoadWith("component", QString()), Damaged("component"));
    EXPECT_EQ(LoadWith("component", QString(257, QLatin1Char('x'))), Damaged("component"));
    EXPECT_EQ(LoadWith("name", QString(100'000, QLatin1Char('x'))), Damaged("name"));
    EXPECT_EQ(LoadWith("name", QString(3, QChar(0))), Damaged("name"));
    EXPECT_EQ(LoadWith("plugin", QStringLiteral("99||/x.so")), Damaged("plugin"));
    EXPECT_EQ(LoadWith("plugin", QStringLiteral("/x.so")), Damaged("plugin"));
    for (const char* const state : {"A", "AB", "AA=A", "AA\nAA", "\xC3\xA4\xC3\xA4", "AAA"})
        EXPECT_EQ(LoadWith("state", QString::fromUtf8(state)), Damaged("state")) << state;
    for (const QJsonObject& sound : {QJsonObject(), QJsonObject{{QStringLiteral("path"), 1}},
                                     QJsonObject{{QStringLiteral("relative"), QStringLiteral("a.wav")}}}) {
        EXPECT_THAT(LoadTopWith("sound", sound), HasSubstr("makes no sense"));
    }
    const QString farAway(100'000, QLatin1Char('/'));
    EXPECT_EQ(LoadTopWith("sound", QJsonObject{{QStringLiteral("path"), farAway}}), Damaged("path"));
}

TEST_F(SessionFileTest, MoreEffectsThanThereMayBeAreToldOf) {
    SessionRecord session;
    session.effects.assign(SessionFile::kMaxEffects, MakeEffect());
    SessionFile::Save(mPath, session);
    EXPECT_EQ(SessionFile::Load(mPath).effects.size(), SessionFile::kMaxEffects);
    QJsonObject object = Read();
    QJsonArray effects = object[QStringLiteral("effects")].toArray();
    while (effects.size() < 300) effects.append(effects[0]);
    object.insert(QStringLiteral("effects"), effects);
    EXPECT_EQ(Load(object), Damaged("effects"));
}

// Saving

TEST_F(SessionFileTest, ASessionThatIsTooLargeIsNotSavedAndTheOldFileStays) {
    SessionFile::Save(mPath, MakeSession());
    const std::string before = ReadFile(mPath);
    SessionRecord large;
    large.effects.assign(7, MakeEffect());
    for (EffectRecord& effect : large.effects) effect.state.resize(zelaudiofilterhost::AudioFilter::kMaxStateSize);
    EXPECT_EQ(ErrorOf([&] { SessionFile::Save(mPath, large); }), "The session is too large to be saved.");
    large.effects.assign(SessionFile::kMaxEffects + 1, MakeEffect());
    EXPECT_EQ(ErrorOf([&] { SessionFile::Save(mPath, large); }), "The session is too large to be saved.");
    EXPECT_EQ(ReadFile(mPath), before);
    EXPECT_THAT(List(), ElementsAre("song.tessaly"));
}

TEST_F(SessionFileTest, AStateAsLargeAsItMayBeIsKept) {
    SessionRecord large;
    large.effects = {MakeEffect()};
    large.effects[0].state.assign(zelaudiofilterhost::AudioFilter::kMaxStateSize, 0xA5);
    SessionFile::Save(mPath, large);
    EXPECT_TRUE(SessionFile::Load(mPath) == large);
}

TEST_F(SessionFileTest, SavingWhereThereIsNoFolderSaysWhy) {
    EXPECT_THAT(ErrorOf([&] { SessionFile::Save(mFolder.Path("missing/song.tessaly"), MakeSession()); }),
                HasSubstr("missing"));
    EXPECT_THAT(ErrorOf([&] { SessionFile::Save(mFolder.GetPath(), MakeSession()); }), Not(IsEmpty()));
    EXPECT_THAT(List(), IsEmpty());
}
