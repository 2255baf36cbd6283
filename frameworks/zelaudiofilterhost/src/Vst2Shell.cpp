#include "Vst2Shell.h"

#include <array>
#include <cstdio>
#include <set>

#include <zelaudiofilterhost/PluginModuleInfo.h>
#include <zelcore/Utf.h>

#include "Vst2Instance.h"

namespace zelaudiofilterhost {

bool IsVst2Shell(const Vst2Instance& instance) { return instance.Dispatch(vst2::kGetCategory) == vst2::kCategoryShell; }

std::vector<Vst2ShellEntry> ListVst2Shell(const Vst2Instance& shell) {
    std::vector<Vst2ShellEntry> entries;
    std::set<std::int32_t> seen;
    while (entries.size() < kMaxComponents) {
        std::intptr_t id = 0;
        const zelcore::ustring name = shell.GetText(vst2::kShellGetNextPlugin, &id);
        const auto shortId = static_cast<std::int32_t>(id);
        if (shortId == 0 || !seen.insert(shortId).second) break;
        entries.push_back({shortId, name});
    }
    return entries;
}

zelcore::ustring Vst2IdText(std::int32_t id) {
    std::array<char, 16> text = {};
    std::snprintf(text.data(), text.size(), "%08X", static_cast<std::uint32_t>(id));
    return zelcore::utility::AsciiToUTF16(text.data());
}

std::optional<std::int32_t> ParseVst2IdText(const zelcore::ustring& text) {
    constexpr std::size_t kDigits = 8;
    if (text.size() != kDigits) return {};
    std::uint32_t id = 0;
    for (const unsigned short unit : text) {
        const bool isDigit = unit >= '0' && unit <= '9';
        if (!isDigit && (unit < 'A' || unit > 'F')) return {};
        id = id * 16 + static_cast<std::uint32_t>(isDigit ? unit - '0' : unit - 'A' + 10);
    }
    return static_cast<std::int32_t>(id);
}

}  // namespace zelaudiofilterhost
