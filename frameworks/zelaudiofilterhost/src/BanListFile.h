#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

/// A line of the user's ban list.
struct BannedPlugin {
    PluginLocator locator;
    ustring reason;
};

/// A line of the permanent ban list.
struct PermanentBan {
    std::string fileName;  ///< UTF-8, ASCII letters in lower case
    std::optional<std::uint32_t> uniqueId;
    std::optional<std::int32_t> version;
};

/// What a ban list may be long at most, in bytes of its file and code units of a reason.
constexpr std::size_t kMaxBanListSize = std::size_t(16) << 20;
constexpr std::size_t kMaxBanReason = 1024;

/// The user's list: `<bannedplugins version="1">` around `<plugin locator="…" reason="…"/>`, the locator in its text
/// form. None when the text is no such list; elements that name no plug-in are passed over.
std::optional<std::vector<BannedPlugin>> ReadBanList(std::string_view text);
std::string WriteBanList(const std::vector<BannedPlugin>& list);

/// The permanent list: `<pluginlist version="4.0.0">` around `<plugin filename="…" uniqueid="…" version="…"/>`, the
/// numbers decimal and each of them optional. None when the text is no such list; an element without a file name or
/// with a number that is none is passed over, since it might otherwise ban more than was meant.
std::optional<std::vector<PermanentBan>> ReadPermanentBanList(std::string_view text);

/// A file name as PermanentBan holds it.
std::string FoldFileName(const ustring& name);

}  // namespace zelaudiofilterhost
