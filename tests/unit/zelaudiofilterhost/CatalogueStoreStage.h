#pragma once

#include <string>

#include "CatalogueTestSupport.h"

namespace zeltests {

/// A catalogue that is saved and loaded.
class CatalogueStoreTest : public CatalogueTest {
protected:
    void AddMany(int count) const {
        for (int i = 0; i < count; ++i) Catalogue().AddPluginInfo(MakeInfo(Vst("/plugin" + std::to_string(i))));
    }
    /// Loads the file into an empty catalogue and compares with what is in memory now.
    void ExpectFileToHoldTheState() const {
        const std::string state = StateOfCatalogue();
        Forget();
        EXPECT_EQ(Load(), zelaudiofilterhost::PluginModuleInfoManager::kLoaded);
        EXPECT_EQ(StateOfCatalogue(), state);
    }
};

}  // namespace zeltests
