// An application that was built against the installed library, without a header of Qt: it scans a plug-in in the
// installed scanner process, loads it, and makes an editor of its parameters.
//   headless PLUG-IN    (a VST3 bundle)
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>

#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>
#include <zelaudiofilterhostui/Module.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>

namespace {

using namespace zelaudiofilterhost;

void Check(bool holds, const std::string& what) {
    std::cout << (holds ? "ok: " : "NOT: ") << what << '\n';
    if (!holds) throw std::runtime_error(what);
}

void Run(const char* path) {
    zelaudiofilterhostui::AudioPluginManager::GetInstance().CheckForCrashedPluginsAndNotifyUser(nullptr, nullptr);
    const zelcore::filesupport::File scanner = zelaudiofilterhostui::AudioPluginScan::GetScannerExecutable();
    std::cout << "scanner: " << zelcore::utility::UTF16to8(scanner.FullPath()) << '\n';
    Check(scanner.Exists(), "the installed scanner is found by an application that brings none");

    const PluginLocator locator(kTechnologyVST3, zelcore::utility::UTF8to16(path));
    zelaudiofilterhostui::AudioPluginScan(nullptr).ScanForPlugins(nullptr, {locator}, true);
    const auto info = PluginModuleInfoManager::GetInstance().FindPluginInfo(locator);
    Check(info != nullptr && !info->GetComponents().empty(), "the scanner process described the plug-in");

    const boost::intrusive_ptr<AudioFilterDescriptor> descriptor(
        new AudioFilterDescriptor(locator, info->GetComponents().front()));
    const auto filter = descriptor->CreateFilter();
    const auto view = zelaudiofilterhostui::GenericAudioFilterEditorView::Create(filter);
    Check(filter->GetParameterCount() > 0, "the plug-in has parameters");
    Check(view->ChildCount() == static_cast<std::size_t>(filter->GetParameterCount()), "each parameter has a row");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return EXIT_FAILURE;
    zelui::Application application(argc, argv);
    zelaudiofilterhostui::Initialize();
    int code = EXIT_SUCCESS;
    try {
        Run(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        code = EXIT_FAILURE;
    }
    zelaudiofilterhostui::Terminate();
    return code;
}
