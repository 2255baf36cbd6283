#include <windows.h>

#include <algorithm>
#include <filesystem>

#include "PluginTechnologyStage.h"

namespace {

using namespace zelaudiofilterhost;
using namespace zeltests;

/// This user's part of the registry, for this process and while the object lives: an empty one.
class ThrowAwayRegistry {
public:
    ThrowAwayRegistry() {
        EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kName, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                                  nullptr, &mKey, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, mKey), ERROR_SUCCESS);
    }
    ~ThrowAwayRegistry() {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegCloseKey(mKey);
        RegDeleteTreeW(HKEY_CURRENT_USER, kName);
    }
    ThrowAwayRegistry(const ThrowAwayRegistry&) = delete;
    ThrowAwayRegistry& operator=(const ThrowAwayRegistry&) = delete;

private:
    static constexpr const wchar_t* kName = L"Software\\ZelTestRegistry";

    HKEY mKey = nullptr;
};

/// The folder that the system names so, for this user.
std::string SystemFolder(const char* variable, const std::string& name) {
    const char* const folder = std::getenv(variable);
    EXPECT_NE(folder, nullptr) << variable;
    return folder == nullptr ? std::string() : folder + ("\\" + name);
}

class PluginTechnologyWindowsTest : public PluginTechnologyTest {
protected:
    ThrowAwayRegistry mRegistry;
};

TEST_F(PluginTechnologyWindowsTest, DefaultFoldersAreThoseOfVariablesThenTheRegistrysThenTheSystems) {
    const ScopedVariable first("VST_PATH", "C:\\one;relative;;C:/two/"), second("VST3_PATH", "C:\\four");
    const wchar_t registered[] = L"D:\\My plug-ins\\";
    ASSERT_EQ(
        RegSetKeyValueW(HKEY_CURRENT_USER, L"SOFTWARE\\VST", L"VSTPluginsPath", REG_SZ, registered, sizeof registered),
        ERROR_SUCCESS);
    Names vst = Defaults(kTechnologyVST);
    ASSERT_GE(vst.size(), 7u);
    EXPECT_EQ(Names(vst.begin(), vst.begin() + 3), (Names{"C:\\one", "C:\\two", "D:\\My plug-ins"}));
    // Between them, what the whole machine's registry says.
    EXPECT_EQ(
        Names(vst.end() - 4, vst.end()),
        (Names{SystemFolder("ProgramFiles", "VstPlugins"), SystemFolder("ProgramFiles", "Steinberg\\VstPlugins"),
               SystemFolder("CommonProgramFiles", "VST2"), SystemFolder("CommonProgramFiles", "Steinberg\\VST2")}));
    const Names vst3 = Defaults(kTechnologyVST3);
    EXPECT_EQ(vst3.front(), "C:\\four");
    EXPECT_EQ(vst3.back(), SystemFolder("CommonProgramFiles", "VST3"));
    EXPECT_EQ(Defaults(kTechnologyAU), Names());
}

TEST_F(PluginTechnologyWindowsTest, AnEntryOfTheRegistryThatIsNoTextOrNoFullPathIsNoDefault) {
    const ScopedVariable path("VST_PATH", nullptr);
    const Names before = Defaults(kTechnologyVST);
    const DWORD number = 7;
    ASSERT_EQ(
        RegSetKeyValueW(HKEY_CURRENT_USER, L"SOFTWARE\\VST", L"VSTPluginsPath", REG_DWORD, &number, sizeof number),
        ERROR_SUCCESS);
    EXPECT_EQ(Defaults(kTechnologyVST), before);
    const wchar_t relative[] = L"plug-ins";
    ASSERT_EQ(
        RegSetKeyValueW(HKEY_CURRENT_USER, L"SOFTWARE\\VST", L"VSTPluginsPath", REG_SZ, relative, sizeof relative),
        ERROR_SUCCESS);
    EXPECT_EQ(Defaults(kTechnologyVST), before);
}

TEST_F(PluginTechnologyWindowsTest, TheSameFolderUnderTwoNamesIsADefaultOnce) {
    const ScopedVariable path("VST3_PATH", "C:\\Four;c:/FOUR/;C:\\Four\\..\\four");
    const Names folders = Defaults(kTechnologyVST3);
    EXPECT_EQ(folders.front(), "C:\\Four");
    EXPECT_EQ(std::count_if(folders.begin(), folders.end(),
                            [](const std::string& folder) { return folder.find("our") != std::string::npos; }),
              1);
}

TEST_F(PluginTechnologyWindowsTest, EndingsCountWhateverTheirCase) {
    for (const char* name : {"search/a.DLL", "search/b.dll.1", "search/c.so", "search/.dll", "search/dll"}) Touch(name);
    Touch("search/Other.VST3/x.Dll");
    EXPECT_EQ(Find(kTechnologyVST), Names{"search/a.DLL"});
    EXPECT_EQ(Find(kTechnologyVST3), Names{"search/Other.VST3"});
}

TEST_F(PluginTechnologyWindowsTest, NamesInOtherScriptsAreFound) {
    Touch("search/g\xC3\xBCltig.dll");
    Touch("search/\xF0\x9F\x8E\xB5.dll");
    EXPECT_EQ(Find(kTechnologyVST), (Names{"search/g\xC3\xBCltig.dll", "search/\xF0\x9F\x8E\xB5.dll"}));
}

TEST_F(PluginTechnologyWindowsTest, AFolderIsSearchedWhicheverSeparatorsItsNameHas) {
    Touch("search/deep/a.dll");
    std::string path = mFolder.Path("search");
    std::replace(path.begin(), path.end(), '/', '\\');
    const auto found = Catalogue().GetPluginTechnology(kTechnologyVST)->FindPlugins(U(path));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(Narrow(found[0].GetPath()), path + "\\deep\\a.dll");
}

}  // namespace
