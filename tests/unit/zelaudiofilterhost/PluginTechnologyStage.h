#pragma once

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "CatalogueTestSupport.h"

namespace zeltests {

/// The technologies of the catalogue, and files for them to find.
class PluginTechnologyTest : public CatalogueTest {
protected:
    std::vector<std::string> Folders(zelaudiofilterhost::TechnologyType type) const {
        const auto technology = Catalogue().GetPluginTechnology(type);
        std::vector<std::string> folders;
        std::transform(technology->DirectoryBegin(), technology->DirectoryEnd(), std::back_inserter(folders), Narrow);
        return folders;
    }
    std::vector<std::string> Defaults(zelaudiofilterhost::TechnologyType type) const {
        std::vector<std::string> folders;
        for (const zelcore::ustring& folder : Catalogue().GetPluginTechnology(type)->GetDefaultDirectories()) {
            folders.push_back(Narrow(folder));
        }
        return folders;
    }
    /// What is found below a folder of this test, as paths relative to the test's folder.
    std::vector<std::string> Find(zelaudiofilterhost::TechnologyType type, const std::string& name = "search") const {
        std::vector<std::string> found;
        for (const zelaudiofilterhost::PluginLocator& locator :
             Catalogue().GetPluginTechnology(type)->FindPlugins(mFolder.UPath(name))) {
            EXPECT_EQ(locator.GetTechnologyType(), type);
            EXPECT_TRUE(locator.GetSubcomponent().empty());
            const std::string path = Narrow(locator.GetPath());
            EXPECT_TRUE(path.starts_with(mFolder.GetPath() + "/")) << path;
            found.push_back(path.substr(mFolder.GetPath().size() + 1));
        }
        return found;
    }
    void Touch(const std::string& name) const {
        std::filesystem::create_directories(std::filesystem::path(mFolder.Path(name)).parent_path());
        WriteFile(mFolder.Path(name), "x");
    }
};

typedef std::vector<std::string> Names;

}  // namespace zeltests
