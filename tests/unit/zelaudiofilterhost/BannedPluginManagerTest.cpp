#include <atomic>
#include <filesystem>
#include <random>
#include <thread>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelcore/FileError.h>

#include "CatalogueTestSupport.h"

namespace {

using namespace zelaudiofilterhost;
using zelcore::filesupport::File;
using zeltests::Narrow;
using zeltests::ReadFile;
using zeltests::U;
using zeltests::Vst;
using zeltests::Vst3;
using zeltests::WriteFile;

class BannedPluginManagerTest : public ::testing::Test {
protected:
    BannedPluginManagerTest() { Reset(); }
    ~BannedPluginManagerTest() override { Reset(); }

    static BannedPluginManager& Bans() { return BannedPluginManager::GetInstance(); }
    File UserFile() const { return File(mFolder.UPath("BannedAudioPlugIns.xml")); }
    File PermanentFile() const { return File(mFolder.UPath("UnsupportedAudioPlugIns.xml")); }
    void Reset() const {
        Bans().LoadConfiguration(File(mFolder.UPath("nothing")));
        SetPermanent("");
    }
    bool SetPermanent(const std::string& elements) const {
        WriteFile(mFolder.Path("UnsupportedAudioPlugIns.xml"),
                  "<?xml version=\"1.0\"?>\n<pluginlist version=\"4.0.0\">\n" + elements + "</pluginlist>\n");
        return Bans().LoadStaticConfiguration(PermanentFile());
    }
    static std::vector<PluginLocator> List() {
        const auto begin = Bans().BannedBegin();
        return std::vector<PluginLocator>(begin, Bans().BannedEnd());
    }
    static PluginComponentInfo Component(std::uint32_t id, std::int32_t version) {
        PluginComponentInfo component;
        component.uniqueId = id;
        component.versionNumber = version;
        return component;
    }

    zeltests::ThrowAwayFolder mFolder;
};

typedef std::vector<PluginLocator> Locators;

TEST_F(BannedPluginManagerTest, TheFilesHaveTheirNames) {
    EXPECT_EQ(Narrow(Bans().GetSettingsFileName()), "BannedAudioPlugIns.xml");
    EXPECT_EQ(Narrow(Bans().GetPermanentBannedSettingsFileName()), "UnsupportedAudioPlugIns.xml");
}

TEST_F(BannedPluginManagerTest, TheListKeepsItsOrderAndEachPluginOnce) {
    Bans().AddBannedPlugin(Vst("/b"));
    Bans().AddBannedPlugin(Vst("/a"), U("crashed"));
    Bans().AddBannedPlugin(Vst("/b"), U("hung"));
    Bans().AddBannedPlugin(Vst("/b"));
    EXPECT_EQ(List(), (Locators{Vst("/b"), Vst("/a")}));
    EXPECT_EQ(Narrow(Bans().GetReason(Vst("/b"))), "hung");
    EXPECT_EQ(Narrow(Bans().GetReason(Vst("/a"))), "crashed");
    EXPECT_EQ(Narrow(Bans().GetReason(Vst("/other"))), "");
}

TEST_F(BannedPluginManagerTest, WhatIsTakenOffIsNoLongerBanned) {
    Bans().AddBannedPlugin(Vst("/a"), U("crashed"));
    Bans().AddBannedPlugin(Vst("/b"));
    EXPECT_TRUE(Bans().IsBanned(Vst("/a")));
    Bans().RemoveBannedPlugin(Vst("/a"));
    Bans().RemoveBannedPlugin(Vst("/a"));
    EXPECT_FALSE(Bans().IsBanned(Vst("/a")));
    EXPECT_EQ(Narrow(Bans().GetReason(Vst("/a"))), "");
    EXPECT_EQ(List(), Locators{Vst("/b")});
}

TEST_F(BannedPluginManagerTest, TheEmptyLocatorCannotBeBanned) {
    Bans().AddBannedPlugin(PluginLocator());
    EXPECT_EQ(List(), Locators());
    EXPECT_FALSE(Bans().IsBanned(PluginLocator()));
}

TEST_F(BannedPluginManagerTest, ABanCoversItsTechnologyAloneAndAFilesSubcomponents) {
    Bans().AddBannedPlugin(Vst("/a"));
    Bans().AddBannedPlugin(PluginLocator(kTechnologyVST, U("/shell"), U("one")));
    EXPECT_FALSE(Bans().IsBanned(Vst3("/a")));
    EXPECT_TRUE(Bans().IsBanned(PluginLocator(kTechnologyVST, U("/a"), U("part"))));
    EXPECT_TRUE(Bans().IsBanned(PluginLocator(kTechnologyVST, U("/shell"), U("one"))));
    EXPECT_FALSE(Bans().IsBanned(Vst("/shell")));
}

TEST_F(BannedPluginManagerTest, TheListAsShownChangesOnlyWithBannedBegin) {
    Bans().AddBannedPlugin(Vst("/a"));
    const auto begin = Bans().BannedBegin();
    Bans().AddBannedPlugin(Vst("/b"));
    Bans().RemoveBannedPlugin(Vst("/a"));
    EXPECT_EQ(Locators(begin, Bans().BannedEnd()), Locators{Vst("/a")});
    EXPECT_EQ(List(), Locators{Vst("/b")});
}

TEST_F(BannedPluginManagerTest, TheUsersListComesBackFromItsFile) {
    const PluginLocator strange(kTechnologyVST3, U("/x<>&\"|\\\n\x01 ü"), U("s|b"));
    Bans().AddBannedPlugin(strange, U("died of <signal> 11 & \"more\""));
    Bans().AddBannedPlugin(Vst("/a"));
    Bans().SaveConfiguration(UserFile());
    Reset();
    EXPECT_EQ(List(), Locators());
    EXPECT_TRUE(Bans().LoadConfiguration(UserFile()));
    EXPECT_EQ(List(), (Locators{strange, Vst("/a")}));
    EXPECT_EQ(Narrow(Bans().GetReason(strange)), "died of <signal> 11 & \"more\"");
}

TEST_F(BannedPluginManagerTest, AMissingUserFileIsAnEmptyList) {
    Bans().AddBannedPlugin(Vst("/a"));
    EXPECT_TRUE(Bans().LoadConfiguration(UserFile()));
    EXPECT_EQ(List(), Locators());
}

TEST_F(BannedPluginManagerTest, AUserFileThatIsNoListIsKeptAsideAndEmptiesTheList) {
    const std::string path = mFolder.Path("BannedAudioPlugIns.xml");
    for (const std::string& text :
         {std::string(), std::string("garbage"), std::string(1000, '\0'),
          std::string("<pluginlist version=\"4.0.0\"/>"), std::string("<bannedplugins version=\"2\"/>"),
          std::string("<bannedplugins version=\"1\"><plugin")}) {
        Bans().AddBannedPlugin(Vst("/a"));
        WriteFile(path, text);
        EXPECT_FALSE(Bans().LoadConfiguration(UserFile())) << text;
        EXPECT_EQ(List(), Locators());
        EXPECT_EQ(ReadFile(path + ".unreadable"), text);
        std::filesystem::remove(path + ".unreadable");
        EXPECT_FALSE(UserFile().Exists());
    }
}

TEST_F(BannedPluginManagerTest, AUserFileAboveTheLimitIsKeptAsideUnread) {
    const std::string path = mFolder.Path("BannedAudioPlugIns.xml");
    WriteFile(path, "<bannedplugins version=\"1\"/>");
    std::filesystem::resize_file(path, (std::uintmax_t(16) << 20) + 1);
    EXPECT_FALSE(Bans().LoadConfiguration(UserFile()));
    EXPECT_TRUE(std::filesystem::exists(path + ".unreadable"));
}

TEST_F(BannedPluginManagerTest, ElementsThatNameNoPluginArePassedOver) {
    WriteFile(mFolder.Path("BannedAudioPlugIns.xml"),
              "<bannedplugins version=\"1\"><plugin/><plugin locator=\"9||/x\"/><plugin locator=\"2||/a\"/>"
              "<plugin locator=\"2||/a\" reason=\"again\"/><other locator=\"2||/b\"/></bannedplugins>");
    EXPECT_TRUE(Bans().LoadConfiguration(UserFile()));
    EXPECT_EQ(List(), Locators{Vst("/a")});
    EXPECT_EQ(Narrow(Bans().GetReason(Vst("/a"))), "again");
}

TEST_F(BannedPluginManagerTest, AReasonIsCutToItsLimit) {
    Bans().AddBannedPlugin(Vst("/a"), ustring(100000, 'x'));
    EXPECT_EQ(Bans().GetReason(Vst("/a")).size(), 1024u);
}

TEST_F(BannedPluginManagerTest, AListThatCannotBeWrittenIsAnError) {
    EXPECT_THROW(Bans().SaveConfiguration(File(mFolder.UPath("missing/file.xml"))), zelcore::filesupport::FileError);
}

TEST_F(BannedPluginManagerTest, APermanentBanWithoutAnIdIsOfTheWholeFileInAnyCase) {
    EXPECT_TRUE(SetPermanent("\t<plugin filename=\"mda Combo.dll\"/>\n"));
    EXPECT_TRUE(Bans().IsBanned(Vst("/x/mda Combo.dll")));
    EXPECT_TRUE(Bans().IsBanned(Vst("/x/MDA combo.DLL")));
    EXPECT_TRUE(Bans().IsBanned(Vst3("/y/mda Combo.dll")));
    EXPECT_FALSE(Bans().IsBanned(Vst("/mda Combo.dll/other.so")));
    EXPECT_FALSE(Bans().IsBanned(Vst("/x/amda Combo.dll")));
    EXPECT_FALSE(Bans().IsComponentBanned(Vst("/x/mda Combo.dll"), Component(0, 0)));
    EXPECT_EQ(List(), Locators());
}

TEST_F(BannedPluginManagerTest, OnlyAsciiLettersAreComparedWithoutCase) {
    EXPECT_TRUE(SetPermanent("<plugin filename=\"Ächo.so\"/>"));
    EXPECT_TRUE(Bans().IsBanned(Vst("/x/ÄCHO.SO")));
    EXPECT_FALSE(Bans().IsBanned(Vst("/x/ächo.so")));
}

TEST_F(BannedPluginManagerTest, APermanentBanWithAnIdIsOfThatComponentUpToItsVersion) {
    EXPECT_TRUE(
        SetPermanent("<plugin filename=\"House.so\" uniqueid=\"3091950960\" version=\"2400\"/>\n"
                     "<plugin filename=\"house.SO\" uniqueid=\"7\"/>\n"));
    const PluginLocator house = Vst("/x/House.so");
    EXPECT_FALSE(Bans().IsBanned(house));
    EXPECT_TRUE(Bans().IsComponentBanned(house, Component(3091950960u, 2399)));
    EXPECT_TRUE(Bans().IsComponentBanned(house, Component(3091950960u, 2400)));
    EXPECT_FALSE(Bans().IsComponentBanned(house, Component(3091950960u, 2401)));
    EXPECT_FALSE(Bans().IsComponentBanned(house, Component(3091950961u, 1)));
    EXPECT_TRUE(Bans().IsComponentBanned(house, Component(7, 1 << 30)));
    EXPECT_FALSE(Bans().IsComponentBanned(Vst("/x/Garden.so"), Component(7, 0)));
}

TEST_F(BannedPluginManagerTest, PermanentBansWithBrokenNumbersOrNoNameBanNothing) {
    EXPECT_TRUE(
        SetPermanent("<plugin filename=\"a.so\" uniqueid=\"x\"/><plugin filename=\"b.so\" uniqueid=\"-1\"/>"
                     "<plugin filename=\"c.so\" uniqueid=\"4294967296\"/><plugin filename=\"d.so\" uniqueid=\"\"/>"
                     "<plugin filename=\"e.so\" uniqueid=\"5\" version=\"2.4\"/><plugin filename=\"\"/><plugin/>"));
    for (const char* path : {"/a.so", "/b.so", "/c.so", "/d.so", "/e.so", "/"}) {
        EXPECT_FALSE(Bans().IsBanned(Vst(path))) << path;
        EXPECT_FALSE(Bans().IsComponentBanned(Vst(path), Component(5, 0))) << path;
    }
}

TEST_F(BannedPluginManagerTest, APermanentListThatCannotBeReadLeavesTheOneInMemory) {
    EXPECT_TRUE(SetPermanent("<plugin filename=\"a.so\"/>"));
    const std::string path = mFolder.Path("UnsupportedAudioPlugIns.xml");
    for (const char* text : {"", "garbage", "<pluginlist version=\"5.0.0\"/>", "<pluginlist/>",
                             "<bannedplugins version=\"4.0.0\"/>", "<pluginlist version=\"4.0.0\"><plugin"}) {
        WriteFile(path, text);
        EXPECT_FALSE(Bans().LoadStaticConfiguration(PermanentFile())) << text;
        EXPECT_EQ(ReadFile(path), text);
    }
    std::filesystem::remove(path);
    EXPECT_FALSE(Bans().LoadStaticConfiguration(PermanentFile()));
    std::filesystem::create_directory(path);
    EXPECT_FALSE(Bans().LoadStaticConfiguration(PermanentFile()));
    EXPECT_TRUE(Bans().IsBanned(Vst("/x/a.so")));
    std::filesystem::remove(path);
}

TEST_F(BannedPluginManagerTest, RandomBytesAreNeverMoreThanNoList) {
    std::mt19937 random(9);
    for (int i = 0; i < 300; ++i) {
        std::string text = i % 2 == 0
                               ? "<bannedplugins version=\"1\"><plugin locator=\"2||/a\" reason=\"x\"/></bannedplugins>"
                               : std::string(200, ' ');
        for (int n = 0; n < 5; ++n) text[random() % text.size()] = static_cast<char>(random());
        WriteFile(mFolder.Path("BannedAudioPlugIns.xml"), text);
        Bans().LoadConfiguration(UserFile());
        ASSERT_LE(List().size(), 1u);
    }
}

TEST_F(BannedPluginManagerTest, AnyThreadMayBanAskAndSave) {
    std::atomic<int> running{3};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread) {
        threads.emplace_back([this, thread, &running] {
            for (int i = 0; i < 50; ++i) {
                Bans().AddBannedPlugin(Vst("/" + std::to_string(thread) + "/" + std::to_string(i)), U("crashed"));
                Bans().IsBanned(Vst("/0/1"));
                Bans().SaveConfiguration(UserFile());
            }
            --running;
        });
    }
    while (running > 0) {
        const Locators list = List();
        EXPECT_LE(list.size(), 150u);
    }
    for (std::thread& thread : threads) thread.join();
    const Locators list = List();
    EXPECT_EQ(list.size(), 150u);
    EXPECT_TRUE(Bans().LoadConfiguration(UserFile()));
    EXPECT_EQ(List(), list) << "the last save to end must not be an older one";
}

}  // namespace
