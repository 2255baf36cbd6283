#include <zelaudiofilterhostui/Module.h>

#include <gtest/gtest.h>
#include <zelui/OS_ResourceManager.h>

#include "views/ModuleState.h"

namespace zeltests {

using zelaudiofilterhostui::GetModuleInstance;
using zelaudiofilterhostui::GetModuleResourceManager;
using zelaudiofilterhostui::Initialize;
using zelaudiofilterhostui::SetModuleInstance;
using zelaudiofilterhostui::Terminate;

/// Each test begins and ends with a module that is not initialised.
class ModuleTest : public testing::Test {
protected:
    ModuleTest() { Terminate(); }
    ~ModuleTest() override { Terminate(); }
};

TEST_F(ModuleTest, TheHandleIsThereFromLoadingOn) { EXPECT_NE(GetModuleInstance(), nullptr); }

TEST_F(ModuleTest, InitializeTwiceIsTrueBothTimesAndMakesOneResourceManager) {
    EXPECT_EQ(GetModuleResourceManager(), nullptr);
    EXPECT_TRUE(Initialize());
    const zelui::utility::OS_ResourceManager* const resources = GetModuleResourceManager();
    EXPECT_NE(resources, nullptr);
    EXPECT_TRUE(Initialize());
    EXPECT_EQ(GetModuleResourceManager(), resources);
}

TEST_F(ModuleTest, TerminateTwiceIsHarmlessAndAnotherInitializeStartsAfresh) {
    Initialize();
    Terminate();
    EXPECT_EQ(GetModuleResourceManager(), nullptr);
    Terminate();
    EXPECT_EQ(GetModuleResourceManager(), nullptr);
    EXPECT_TRUE(Initialize());
    EXPECT_NE(GetModuleResourceManager(), nullptr);
}

TEST_F(ModuleTest, TerminateWithoutInitializeLeavesTheLibraryReadyToBeInitialized) {
    const HINSTANCE handle = GetModuleInstance();
    Terminate();
    EXPECT_EQ(GetModuleInstance(), handle) << "that is the loader's, not ours to take away";
    EXPECT_EQ(GetModuleResourceManager(), nullptr);
    EXPECT_TRUE(Initialize());
    EXPECT_NE(GetModuleResourceManager(), nullptr) << "the Terminate before it counts for nothing";
    Terminate();
    EXPECT_EQ(GetModuleResourceManager(), nullptr);
}

TEST_F(ModuleTest, WithoutAHandleThereIsNoResourceManagerAndNoError) {
    const HINSTANCE handle = GetModuleInstance();
    SetModuleInstance(nullptr);
    EXPECT_TRUE(Initialize());
    EXPECT_EQ(GetModuleResourceManager(), nullptr);
    SetModuleInstance(handle);
    // It is initialised all the same: only Terminate starts over.
    EXPECT_TRUE(Initialize());
    EXPECT_EQ(GetModuleResourceManager(), nullptr);
}

}  // namespace zeltests
