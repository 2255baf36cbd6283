#include "ScanCommand.h"

#include <iostream>

#include <boost/bind/bind.hpp>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/File.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/SupplierInterface.h>
#include <zelui/UI_ProgressDialog.h>

#include "CatalogueReport.h"
#include "FilePath.h"
#include "InterruptWatch.h"
#include "OutputGuard.h"
#include "TerminalText.h"

namespace tessaly {

using zelaudiofilterhost::PluginModuleInfoManager;
using zelcore::ustring;
using zelcore::utility::UTF16to8;
using zelcore::utility::UTF8to16;

ScanCommand::ScanCommand(const CommandLine& line)
    : mLine(line), mTerminal(TerminalText::IsErrorStreamTerminal()), mLastPrinted(0) {
    using namespace boost::placeholders;
    mProgressConnection = zelui::dialogs::UI_ProgressDialog::GetProgressSignal().connect(
        boost::bind(&ScanCommand::PrintProgress, this, _1, _2, _3));
}

int ScanCommand::Run() {
    const zelcore::filesupport::File scanner = zelaudiofilterhostui::AudioPluginScan::GetScannerExecutable();
    if (!mLine.inProcess && !scanner.Exists()) {
        std::cerr << "tessaly: the scanner program is missing: " << UTF16to8(scanner.FullPath()) << '\n';
        return kExitFailed;
    }
    const std::vector<ustring> folders = GetFolders();
    Scan(folders);
    if (mTerminal && mLastPrinted) std::cerr << '\n';

    const CatalogueReport report;
    std::cout << (mLine.json ? report.ToJson() : report.ToTable()) << std::flush;
    const std::size_t notReached = CountNotReached(folders);
    if (notReached == 0) return kExitDone;
    std::cerr << "tessaly: the scan ended before it got to " << notReached
              << (notReached == 1 ? " plug-in" : " plug-ins") << "; scan again to go on\n";
    return kExitIncomplete;
}

void ScanCommand::Scan(const std::vector<ustring>& folders) const {
    const InterruptWatch interrupts([] { zelui::Application::CancelActiveDialog(); });
    const OutputGuard output;
    zelaudiofilterhostui::AudioPluginScan scan(zelui::drawbot::SupplierInterface::GetDefault());
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    if (folders.empty())
        scan.ScanForPlugins(nullptr, mLine.rescan, !mLine.inProcess);
    else
        scan.ScanForPlugins(nullptr, catalogue.CollectPotentialPluginsIn(folders, !mLine.rescan), !mLine.inProcess);
}

std::vector<ustring> ScanCommand::GetFolders() const {
    std::vector<ustring> folders;
    for (const std::string& folder : mLine.folders) {
        if (!std::filesystem::is_directory(ToFilePath(folder))) throw UsageError("no such folder: '" + folder + "'");
        folders.push_back(UTF8to16(FromFilePath(std::filesystem::canonical(ToFilePath(folder)))));
    }
    return folders;
}

std::size_t ScanCommand::CountNotReached(const std::vector<ustring>& folders) const {
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    std::vector<zelaudiofilterhost::PluginLocator> removed;
    return folders.empty() ? catalogue.CollectPotentialPlugins(true, removed).size()
                           : catalogue.CollectPotentialPluginsIn(folders, true).size();
}

void ScanCommand::PrintProgress(unsigned long current, unsigned long total, const ustring& text) {
    mLastPrinted = current;
    const char* const start = mTerminal ? "\r\033[K" : "";
    const char* const end = mTerminal ? "" : "\n";
    std::cerr << start << '[' << current << '/' << total << "] "
              << TerminalText::MakePrintable(TerminalText::FromText(text)) << end << std::flush;
}

}  // namespace tessaly
