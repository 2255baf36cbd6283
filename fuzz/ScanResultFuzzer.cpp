// What a scanner process leaves for its client. What is no result changes nothing; what is one takes nothing away, and
// leaves the user's choices and folders alone.
#include <string>
#include <vector>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/Utf.h>

#include "support/Expect.h"
#include "support/FuzzInput.h"

using namespace zelaudiofilterhost;
using zelcore::filesupport::File;
using zelfuzz::Expect;

namespace {

/// What is known before: plug-ins that are on and off, one that does not work, one that is gone and was off.
constexpr char kKnown[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<audioplugins version=\"1\">\n"
    "<technology type=\"2\"><folder path=\"/x\"/></technology>\n"
    "<module technology=\"3\" path=\"/x/Echo.vst3\" name=\"Echo\" enabled=\"0\" size=\"9\" time=\"7\">"
    "<component id=\"VST3-1\" name=\"Echo\"/></module>\n"
    "<module technology=\"2\" path=\"/x/a.so\" name=\"A\" enabled=\"1\" size=\"9\" time=\"7\"><component/></module>\n"
    "<failed technology=\"2\" path=\"/x/b.so\" enabled=\"0\" size=\"1\" time=\"2\" reason=\"cut off\"/>\n"
    "<choice technology=\"2\" path=\"/x/c.so\" enabled=\"0\"/>\n"
    "</audioplugins>\n";
constexpr std::size_t kMaxAdded = 10000;

PluginModuleInfoManager& Catalogue() { return PluginModuleInfoManager::GetInstance(); }

std::vector<PluginLocator> GetAll() {
    std::vector<PluginLocator> all;
    for (auto info = Catalogue().PluginInfoBegin(); info != Catalogue().PluginInfoEnd(); ++info)
        all.push_back((*info)->GetLocator());
    for (auto failure = Catalogue().FailureBegin(); failure != Catalogue().FailureEnd(); ++failure)
        all.push_back(failure->locator);
    return all;
}

std::string GetText() { return Catalogue().GetConfigurationText(GetAll()); }

std::vector<zelcore::ustring> GetFolders() {
    const auto technology = Catalogue().GetPluginTechnology(kTechnologyVST);
    return {technology->DirectoryBegin(), technology->DirectoryEnd()};
}

void ExpectChoice(const PluginLocator& locator, bool enabled) {
    const auto info = Catalogue().FindPluginInfo(locator);
    Expect(!info || info->IsEnabled() == enabled, "the user's choice stays");
}

PluginLocator MakeLocator(TechnologyType technology, const char* path) {
    return PluginLocator(technology, zelcore::utility::AsciiToUTF16(path));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const File nothing(zelcore::utility::AsciiToUTF16("/nowhere/at/all.xml"));
    static const std::vector<zelcore::ustring> folders = {zelcore::utility::AsciiToUTF16("/x")};
    Expect(Catalogue().LoadConfiguration(nothing) == PluginModuleInfoManager::kMissing, "the catalogue is empty");
    Expect(Catalogue().AddConfiguration(kKnown, true), "what is known before is a catalogue");
    const std::vector<PluginLocator> before = GetAll();
    const std::string textBefore = GetText();

    const bool isTaken = Catalogue().AddConfiguration(std::string(reinterpret_cast<const char*>(bytes), size), false);
    const std::vector<PluginLocator> after = GetAll();
    Expect(isTaken || (GetText() == textBefore && after == before), "what is no result changes nothing");
    Expect(GetFolders() == folders, "folders are the user's");
    Expect(after.size() <= before.size() + kMaxAdded, "no result adds too much");
    for (const PluginLocator& locator : before) {
        bool isThere = false;
        for (const PluginLocator& other : after) isThere |= other == locator;
        Expect(isThere, "nothing that was known goes");
    }
    ExpectChoice(MakeLocator(kTechnologyVST3, "/x/Echo.vst3"), false);
    ExpectChoice(MakeLocator(kTechnologyVST, "/x/a.so"), true);
    ExpectChoice(MakeLocator(kTechnologyVST, "/x/b.so"), false);
    ExpectChoice(MakeLocator(kTechnologyVST, "/x/c.so"), false);

    const std::string text = GetText();
    Expect(Catalogue().AddConfiguration(text, false) && GetText() == text, "the same once more changes nothing");
    return 0;
}
