#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/Utf.h>

#include "support/ThrowAwayFolder.h"

namespace zeltests {

inline zelcore::ustring U(std::string_view text) { return zelcore::utility::UTF8to16(text); }

inline std::string Narrow(const zelcore::ustring& text) {
    const zelcore::utf8string bytes = zelcore::utility::UTF16to8(text);
    return std::string(bytes.begin(), bytes.end());
}

inline zelaudiofilterhost::PluginLocator Vst(std::string_view path) {
    return zelaudiofilterhost::PluginLocator(zelaudiofilterhost::kTechnologyVST, U(path));
}

inline zelaudiofilterhost::PluginLocator Vst3(std::string_view path) {
    return zelaudiofilterhost::PluginLocator(zelaudiofilterhost::kTechnologyVST3, U(path));
}

/// A stereo effect with a side-chain of which every field says something.
zelaudiofilterhost::PluginComponentInfo MakeComponent(std::string_view name);
boost::intrusive_ptr<zelaudiofilterhost::PluginModuleInfo> MakeInfo(const zelaudiofilterhost::PluginLocator& locator,
                                                                    std::string_view name = "Echo");
zelaudiofilterhost::PluginScanFailure MakeFailure(const zelaudiofilterhost::PluginLocator& locator,
                                                  std::string_view reason = "no entry point");

/// All that the catalogue holds as text, to compare states: entries in their order with everything in them, and the
/// folders.
std::string StateOfCatalogue();

/// An environment variable that is set, or unset for a null value, while the object lives.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const char* value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    std::string mName;
    std::string mOld;
    bool mWasSet;
};

/// An empty catalogue without folders, and a folder of its own for the files.
class CatalogueTest : public ::testing::Test {
protected:
    CatalogueTest();
    ~CatalogueTest() override;

    zelaudiofilterhost::PluginModuleInfoManager& Catalogue() const {
        return zelaudiofilterhost::PluginModuleInfoManager::GetInstance();
    }
    /// The catalogue's file.
    zelcore::filesupport::File GetFile() const;
    std::string Text() const { return ReadFile(mFolder.Path(kName)); }
    void SetText(const std::string& text) const { WriteFile(mFolder.Path(kName), text); }
    void Save(bool withFolders = true) const { Catalogue().SaveConfiguration(GetFile(), withFolders); }
    zelaudiofilterhost::PluginModuleInfoManager::LoadOutcome Load() const {
        return Catalogue().LoadConfiguration(GetFile());
    }
    /// Empties the catalogue and its folder lists, as if the process were new.
    void Forget() const;
    std::vector<std::string> NamesInFolder() const;

    static constexpr const char* kName = "AudioPluginCatalogue.xml";
    ThrowAwayFolder mFolder;
};

}  // namespace zeltests
