#include <stdexcept>

#include "CatalogueTestSupport.h"

namespace {

using namespace zelaudiofilterhost;
using zeltests::MakeComponent;
using zeltests::Narrow;
using zeltests::U;
using zeltests::Vst;

boost::intrusive_ptr<PluginModuleInfo> Make(const char* name, const std::vector<PluginComponentInfo>& components) {
    return new PluginModuleInfo(Vst("/x/Delay.so"), U(name), PluginFingerprint{1, 2}, components);
}

TEST(PluginModuleInfoTest, TheNameIsTheModulesElseTheFirstComponentsElseTheFiles) {
    EXPECT_EQ(Narrow(Make("Module", {MakeComponent("First")})->GetName()), "Module");
    EXPECT_EQ(Narrow(Make("", {MakeComponent("First"), MakeComponent("Second")})->GetName()), "First");
    EXPECT_EQ(Narrow(Make("", {MakeComponent("")})->GetName()), "Delay");
}

TEST(PluginModuleInfoTest, AModuleWithoutComponentsIsRefused) {
    EXPECT_THROW(Make("Module", {}), std::invalid_argument);
}

TEST(PluginModuleInfoTest, VendorAndVersionAreTheFirstComponents) {
    PluginComponentInfo second = MakeComponent("Second");
    second.vendor = U("Other");
    const auto info = Make("Module", {MakeComponent("First"), second});
    EXPECT_EQ(Narrow(info->GetVendor()), "Sündström & Söhne");
    EXPECT_EQ(Narrow(info->GetVersion()), "1.2.3");
}

TEST(PluginModuleInfoTest, OneEffectAmongInstrumentsMakesItAnEffect) {
    PluginComponentInfo instrument = MakeComponent("Synth");
    instrument.isInstrument = true;
    EXPECT_FALSE(Make("Module", {instrument, instrument})->HasAnyNonSynthEffect());
    EXPECT_TRUE(Make("Module", {instrument, MakeComponent("Fx")})->HasAnyNonSynthEffect());
}

TEST(PluginModuleInfoTest, ItIsEnabledUntilTheUserSaysOtherwise) {
    const auto info = Make("Module", {MakeComponent("First")});
    EXPECT_TRUE(info->IsEnabled());
    info->SetEnabled(false);
    EXPECT_FALSE(info->IsEnabled());
}

TEST(PluginModuleInfoTest, TextsAndCountsAreCutToTheirLimits) {
    PluginComponentInfo component = MakeComponent("x");
    component.name = ustring(10000, 'n');
    component.parameterCount = -1;
    component.inputBuses.assign(1000, {ustring(1000, 'b'), 1 << 30, false});
    component.outputBuses = {{U("Out"), -3, false}};
    const auto info = Make("", {component});
    EXPECT_EQ(info->GetName().size(), PluginComponentInfo::kMaxTextLength);
    const PluginComponentInfo& kept = info->GetComponents().front();
    EXPECT_EQ(kept.name.size(), PluginComponentInfo::kMaxTextLength);
    EXPECT_EQ(kept.parameterCount, 0);
    ASSERT_EQ(kept.inputBuses.size(), PluginComponentInfo::kMaxBuses);
    EXPECT_EQ(kept.inputBuses.front().name.size(), PluginComponentInfo::kMaxTextLength);
    EXPECT_EQ(kept.inputBuses.front().channelCount, PluginComponentInfo::kMaxChannels);
    EXPECT_EQ(kept.outputBuses.front().channelCount, 0);
}

TEST(PluginModuleInfoTest, ComponentsBeyondTheLimitAreNotListed) {
    const auto info = Make("", std::vector<PluginComponentInfo>(kMaxComponents + 1, MakeComponent("x")));
    EXPECT_EQ(info->GetComponents().size(), kMaxComponents);
}

}  // namespace
