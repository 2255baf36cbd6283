#include <zelui/OS_ResourceManager.h>

#include <gtest/gtest.h>
#include <windows.h>

namespace zeltests {

using zelui::utility::OS_ResourceManager;

/// A module with resources, loaded.
class OS_ResourceManagerTest : public testing::Test {
protected:
    OS_ResourceManagerTest() : mModule(LoadLibraryA(ZEL_TEST_RESOURCES)) { EXPECT_NE(mModule, nullptr); }
    ~OS_ResourceManagerTest() override {
        if (mModule != nullptr) FreeLibrary(mModule);
    }
    HINSTANCE GetModule() const { return mModule; }

private:
    HMODULE mModule;
};

TEST_F(OS_ResourceManagerTest, AResourceIsReadWithAllItsBytes) {
    const OS_ResourceManager resources(GetModule());
    EXPECT_EQ(resources.ReadResource("xml", "Layout"), std::string("<a/>\0!", 6));
    EXPECT_EQ(resources.ReadResource("xml", "Empty"), std::string());
}

TEST_F(OS_ResourceManagerTest, WhatTheModuleDoesNotHaveIsNotThere) {
    const OS_ResourceManager resources(GetModule());
    EXPECT_EQ(resources.ReadResource("text", "Layout"), std::nullopt);
    EXPECT_EQ(resources.ReadResource("xml", "Missing"), std::nullopt);
}

TEST_F(OS_ResourceManagerTest, NamesThatAreNoneAreNotThere) {
    const OS_ResourceManager resources(GetModule());
    EXPECT_EQ(resources.ReadResource("xml", ""), std::nullopt);
    EXPECT_EQ(resources.ReadResource("", "Layout"), std::nullopt);
    EXPECT_EQ(resources.ReadResource("xml", "Lay out"), std::nullopt);
    EXPECT_EQ(resources.ReadResource("xml", std::string("Layout\0", 7)), std::nullopt);
    EXPECT_EQ(resources.ReadResource("xml", "#1"), std::nullopt);
}

TEST_F(OS_ResourceManagerTest, WithoutAModuleThereAreNone) {
    EXPECT_EQ(OS_ResourceManager(nullptr).ReadResource("xml", "Layout"), std::nullopt);
}

}  // namespace zeltests
