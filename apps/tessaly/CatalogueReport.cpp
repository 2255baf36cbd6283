#include "CatalogueReport.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/File.h>
#include <zelcore/Serialization.h>
#include <zelcore/Utf.h>

#include "FormatName.h"
#include "TerminalText.h"

namespace tessaly {

using namespace zelaudiofilterhost;
using zelcore::utf8string;
namespace serialization = zelcore::serialization;

namespace {

std::string GetFormatWord(TechnologyType type) { return TerminalText::FromText(GetFormatName(type)); }

std::string GetKind(const PluginModuleInfo& info) {
    const auto& components = info.GetComponents();
    const bool instruments = std::any_of(components.begin(), components.end(),
                                         [](const PluginComponentInfo& component) { return component.isInstrument; });
    if (!info.HasAnyNonSynthEffect()) return "instrument";
    return instruments ? "effect and instrument" : "effect";
}

utf8string ToUtf8(const std::string& text) { return utf8string(text.data(), text.size()); }

}  // namespace

CatalogueReport::CatalogueReport() {
    AddWorking();
    AddFailed();
    AddBanned();
    std::stable_sort(mRows.begin(), mRows.end(), [](const Row& a, const Row& b) {
        return a.format != b.format ? a.format < b.format : a.path < b.path;
    });
}

void CatalogueReport::AddWorking() {
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    for (auto it = catalogue.PluginInfoBegin(); it != catalogue.PluginInfoEnd(); ++it) {
        const PluginModuleInfo& info = **it;
        Row row;
        row.format = GetFormatWord(info.GetLocator().GetTechnologyType());
        row.path = TerminalText::FromText(info.GetLocator().GetPath());
        row.subcomponent = TerminalText::FromText(info.GetLocator().GetSubcomponent());
        row.name = TerminalText::FromText(info.GetName());
        row.vendor = TerminalText::FromText(info.GetVendor());
        row.version = TerminalText::FromText(info.GetVersion());
        row.enabled = info.IsEnabled();
        row.status = "working";
        row.kind = GetKind(info);
        for (const PluginComponentInfo& component : info.GetComponents())
            row.componentIds.push_back(TerminalText::FromText(component.componentId));
        mRows.push_back(row);
    }
}

void CatalogueReport::AddFailed() {
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    for (auto it = catalogue.FailureBegin(); it != catalogue.FailureEnd(); ++it) {
        Row row;
        row.format = GetFormatWord(it->locator.GetTechnologyType());
        row.path = TerminalText::FromText(it->locator.GetPath());
        row.subcomponent = TerminalText::FromText(it->locator.GetSubcomponent());
        row.name = TerminalText::FromText(zelcore::filesupport::File(it->locator.GetPath()).GetTitle());
        row.status = "failed";
        row.reason = TerminalText::FromText(it->reason);
        mRows.push_back(row);
    }
}

void CatalogueReport::AddBanned() {
    BannedPluginManager& bans = BannedPluginManager::GetInstance();
    for (auto it = bans.BannedBegin(); it != bans.BannedEnd(); ++it) {
        Row row;
        row.format = GetFormatWord(it->GetTechnologyType());
        row.path = TerminalText::FromText(it->GetPath());
        row.subcomponent = TerminalText::FromText(it->GetSubcomponent());
        row.name = TerminalText::FromText(zelcore::filesupport::File(it->GetPath()).GetTitle());
        row.status = "banned";
        row.reason = TerminalText::FromText(bans.GetReason(*it));
        mRows.push_back(row);
    }
}

std::string CatalogueReport::ToJson() const {
    boost::any rows = serialization::Array();
    for (const Row& row : mRows) {
        boost::any ids = serialization::Array();
        for (const std::string& id : row.componentIds) serialization::AppendToArray(ids, ToUtf8(id));
        boost::any object = serialization::Object();
        serialization::SetInObject(object, "format", ToUtf8(row.format));
        serialization::SetInObject(object, "path", ToUtf8(row.path));
        serialization::SetInObject(object, "subcomponent", ToUtf8(row.subcomponent));
        serialization::SetInObject(object, "name", ToUtf8(row.name));
        serialization::SetInObject(object, "vendor", ToUtf8(row.vendor));
        serialization::SetInObject(object, "version", ToUtf8(row.version));
        serialization::SetInObject(object, "enabled", row.enabled);
        serialization::SetInObject(object, "status", ToUtf8(row.status));
        serialization::SetInObject(object, "reason", ToUtf8(row.reason));
        serialization::SetInObject(object, "kind", ToUtf8(row.kind));
        serialization::SetInObject(object, "componentIds", ids);
        serialization::AppendToArray(rows, object);
    }
    return serialization::ToJson(rows) + "\n";
}

std::string CatalogueReport::ToTable() const {
    static const char* const kHeadings[] = {"Format", "Name", "Vendor", "Kind", "Status", "Path"};
    constexpr std::size_t kColumns = std::size(kHeadings);
    std::vector<std::vector<std::string>> cells = {{std::begin(kHeadings), std::end(kHeadings)}};
    for (const Row& row : mRows) {
        const std::string status = row.status == "working" && !row.enabled ? "disabled" : row.status;
        const std::string where = row.path + (row.subcomponent.empty() ? "" : " [" + row.subcomponent + "]");
        cells.push_back({row.format, row.name, row.vendor, row.kind, status,
                         where + (row.reason.empty() ? "" : " (" + row.reason + ")")});
    }
    std::vector<std::size_t> widths(kColumns, 0);
    for (auto& line : cells)
        for (std::size_t i = 0; i < kColumns; ++i) {
            line[i] = TerminalText::MakePrintable(line[i]);
            widths[i] = std::max(widths[i], TerminalText::GetWidth(line[i]));
        }
    std::ostringstream out;
    for (const auto& line : cells) {
        for (std::size_t i = 0; i + 1 < kColumns; ++i)
            out << line[i] << std::string(widths[i] - TerminalText::GetWidth(line[i]) + 2, ' ');
        out << line.back() << '\n';
    }
    out << GetSummary() << '\n';
    return out.str();
}

std::string CatalogueReport::GetSummary() const {
    const auto count = [this](const char* status) {
        return std::count_if(mRows.begin(), mRows.end(), [status](const Row& row) { return row.status == status; });
    };
    std::ostringstream out;
    out << count("working") << " working, " << count("failed") << " not working, " << count("banned") << " banned";
    return out.str();
}

}  // namespace tessaly
