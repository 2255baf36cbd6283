#pragma once

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <zelcore/Serialization.h>

#include "ScanFixture.h"
#include "support/Program.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

/// The host application as a user calls it.
class TessalyStage : public ScanFixture {
protected:
    TessalyStage() { std::filesystem::create_directory(mPlugins.Path("plugins")); }

    /// Copies test plug-ins into the folder to scan and gives them other names.
    void Add(const std::string& plugin, const std::string& name) {
        std::filesystem::copy(TestPlugin(plugin), mPlugins.Path("plugins/" + name),
                              std::filesystem::copy_options::recursive);
    }

    std::string GetFolder() const { return mPlugins.Path("plugins"); }
    /// What is left behind when the process goes while it is at the plug-in of that name in the folder.
    std::string GetMark(const std::string& name) const {
        return ToBytes(Vst(FullName(GetFolder() + "/" + name)).ToString());
    }

    std::unique_ptr<Program> Start(std::vector<std::string> arguments, const std::string& profile = "profile",
                                   const std::string& binary = std::string(ZEL_BIN_DIR) + "/tessaly") {
        arguments.insert(arguments.begin(), binary);
        return std::make_unique<Program>(
            mOutput.GetPath(), arguments,
            std::vector<std::string>{SettingsIn(mProfiles.Path(profile)), "ZEL_SCANNER_TIMEOUT_SECONDS=2",
                                     "ZEL_SCANNER_MEMORY_MB=300", "VST_PATH=", "VST3_PATH="});
    }

    std::string GetProfileFile(const std::string& name, const std::string& profile = "profile") const {
        return mProfiles.Path(profile + "/tessaly/" + name);
    }
    std::string GetCatalogueName() const { return std::filesystem::path(GetCataloguePath()).filename().string(); }

    static zelcore::serialization::Array Parse(const std::string& json) {
        return boost::any_cast<zelcore::serialization::Array>(zelcore::serialization::FromJson(json));
    }

    static std::string Get(const zelcore::serialization::Variant& row, const std::string& key) {
        zelcore::utf8string text;
        EXPECT_TRUE(zelcore::serialization::GetInObject(row, key, text)) << key;
        return std::string(text.data(), text.size());
    }

    /// File names of the rows with that status.
    static std::set<std::string> GetNames(const std::string& json, const std::string& status) {
        std::set<std::string> names;
        for (const zelcore::serialization::Variant& row : Parse(json))
            if (Get(row, "status") == status) names.insert(std::filesystem::path(Get(row, "path")).filename().string());
        return names;
    }

    ThrowAwayFolder mPlugins;
    ThrowAwayFolder mProfiles;
    ThrowAwayFolder mOutput;
};

}  // namespace zeltests
