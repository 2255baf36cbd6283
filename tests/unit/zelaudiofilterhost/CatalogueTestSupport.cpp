#include "CatalogueTestSupport.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <zelaudiofilterhost/BannedPluginManager.h>

#include "support/Environment.h"

namespace zeltests {

using namespace zelaudiofilterhost;

PluginComponentInfo MakeComponent(std::string_view name) {
    PluginComponentInfo component;
    component.componentId = U("VST-5a476169");
    component.subcomponent = U("part");
    component.name = U(name);
    component.vendor = U("Sündström & Söhne");
    component.version = U("1.2.3");
    component.category = U("Fx|Delay");
    component.hasEditor = true;
    component.parameterCount = 17;
    component.uniqueId = 0xF0E0D0C0u;
    component.versionNumber = -5;
    component.inputBuses = {{U("In"), 2, false}, {U("Side-chain"), 1, true}};
    component.outputBuses = {{U("Out"), 2, false}};
    return component;
}

boost::intrusive_ptr<PluginModuleInfo> MakeInfo(const PluginLocator& locator, std::string_view name) {
    return new PluginModuleInfo(locator, U(name), PluginFingerprint{4711, 1234567890123},
                                {MakeComponent(name), MakeComponent("Second")});
}

PluginScanFailure MakeFailure(const PluginLocator& locator, std::string_view reason) {
    return PluginScanFailure{locator, PluginFingerprint{12, -34}, U(reason)};
}

namespace {

void Print(std::ostream& out, const PluginFingerprint& fingerprint) {
    out << " [" << fingerprint.size << ' ' << fingerprint.modificationTime << ']';
}

void Print(std::ostream& out, const std::vector<PluginBusInfo>& buses) {
    for (const PluginBusInfo& bus : buses) {
        out << " (" << Narrow(bus.name) << ' ' << bus.channelCount << ' ' << bus.isAuxiliary << ')';
    }
    out << ';';
}

void Print(std::ostream& out, const PluginComponentInfo& component) {
    for (const ustring* text : {&component.componentId, &component.subcomponent, &component.name, &component.vendor,
                                &component.version, &component.category}) {
        out << " '" << Narrow(*text) << '\'';
    }
    out << ' ' << component.isInstrument << component.hasEditor << ' ' << component.parameterCount << ' '
        << component.uniqueId << ' ' << component.versionNumber;
    Print(out, component.inputBuses);
    Print(out, component.outputBuses);
}

}  // namespace

std::string StateOfCatalogue() {
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    std::ostringstream out;
    for (auto info = catalogue.PluginInfoBegin(); info != catalogue.PluginInfoEnd(); ++info) {
        out << Narrow((*info)->GetLocator().ToString()) << " '" << Narrow((*info)->GetName()) << "' "
            << (*info)->IsEnabled();
        Print(out, (*info)->GetFingerprint());
        for (const PluginComponentInfo& component : (*info)->GetComponents()) Print(out, component);
        out << '\n';
    }
    for (auto failure = catalogue.FailureBegin(); failure != catalogue.FailureEnd(); ++failure) {
        out << Narrow(failure->locator.ToString()) << " failed: " << Narrow(failure->reason);
        Print(out, failure->fingerprint);
        out << '\n';
    }
    for (const TechnologyType type : {kTechnologyVST, kTechnologyVST3, kTechnologyAU}) {
        const auto technology = catalogue.GetPluginTechnology(type);
        out << type << ':';
        for (auto folder = technology->DirectoryBegin(); folder != technology->DirectoryEnd(); ++folder) {
            out << ' ' << Narrow(*folder);
        }
        out << '\n';
    }
    return out.str();
}

ScopedVariable::ScopedVariable(const char* name, const char* value) : mName(name) {
    const char* const old = std::getenv(name);
    mWasSet = old != nullptr;
    if (mWasSet) mOld = old;
    SetVariable(name, value);
}

ScopedVariable::~ScopedVariable() { SetVariable(mName, mWasSet ? mOld.c_str() : nullptr); }

CatalogueTest::CatalogueTest() {
    Forget();
    BannedPluginManager::GetInstance().LoadConfiguration(zelcore::filesupport::File(mFolder.UPath("no list of bans")));
}

CatalogueTest::~CatalogueTest() { Forget(); }

zelcore::filesupport::File CatalogueTest::GetFile() const { return zelcore::filesupport::File(mFolder.UPath(kName)); }

void CatalogueTest::Forget() const {
    Catalogue().LoadConfiguration(zelcore::filesupport::File(mFolder.UPath("no catalogue")));
    for (const TechnologyType type : {kTechnologyVST, kTechnologyVST3, kTechnologyAU}) {
        Catalogue().GetPluginTechnology(type)->SetPluginDirectories({});
    }
}

std::vector<std::string> CatalogueTest::NamesInFolder() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(mFolder.GetPath())) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace zeltests
