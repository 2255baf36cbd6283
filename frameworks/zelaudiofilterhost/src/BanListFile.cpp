#include "BanListFile.h"

#include <limits>

#include <pugixml.hpp>
#include <zelcore/Utf.h>

#include "XmlText.h"

namespace zelaudiofilterhost {

namespace {

bool ParseList(pugi::xml_document& document, std::string_view text, std::string_view root, std::string_view version) {
    if (text.size() > kMaxBanListSize || text.find('\0') != std::string_view::npos) return false;
    // As a fragment, text beside the root element is kept, and so noticed.
    constexpr unsigned int kOptions = pugi::parse_minimal | pugi::parse_escapes | pugi::parse_fragment;
    if (!document.load_buffer(text.data(), text.size(), kOptions, pugi::encoding_utf8)) return false;
    const pugi::xml_node node = document.first_child();
    return !node.next_sibling() && node.name() == root && node.attribute("version").value() == version;
}

/// Reads an attribute that may be missing; false when it is there and is no number of that range.
template <typename Number>
bool ReadOptional(const pugi::xml_node& node, const char* name, std::optional<Number>& number) {
    const pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute) return true;
    std::int64_t value = 0;
    if (!ParseNumber(std::string_view(attribute.value()), value)) return false;
    if (value < std::int64_t(std::numeric_limits<Number>::min())) return false;
    if (value > std::int64_t(std::numeric_limits<Number>::max())) return false;
    number = static_cast<Number>(value);
    return true;
}

}  // namespace

std::optional<std::vector<BannedPlugin>> ReadBanList(std::string_view text) {
    pugi::xml_document document;
    if (!ParseList(document, text, "bannedplugins", "1")) return std::nullopt;
    std::vector<BannedPlugin> list;
    for (const pugi::xml_node& node : document.document_element().children("plugin")) {
        BannedPlugin plugin;
        plugin.locator = PluginLocator::FromString(DecodeAttribute(node.attribute("locator").value()));
        plugin.reason = DecodeAttribute(node.attribute("reason").value());
        if (!plugin.locator.GetPath().empty()) list.push_back(std::move(plugin));
    }
    return list;
}

std::string WriteBanList(const std::vector<BannedPlugin>& list) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<bannedplugins version=\"1\">\n";
    for (const BannedPlugin& plugin : list) {
        text += "<plugin";
        AppendAttribute(text, "locator", plugin.locator.ToString());
        if (!plugin.reason.empty()) AppendAttribute(text, "reason", plugin.reason);
        text += "/>\n";
    }
    text += "</bannedplugins>\n";
    return text;
}

std::optional<std::vector<PermanentBan>> ReadPermanentBanList(std::string_view text) {
    pugi::xml_document document;
    if (!ParseList(document, text, "pluginlist", "4.0.0")) return std::nullopt;
    std::vector<PermanentBan> list;
    for (const pugi::xml_node& node : document.document_element().children("plugin")) {
        PermanentBan ban;
        ban.fileName = FoldFileName(zelcore::utility::UTF8to16(node.attribute("filename").value()));
        const bool isWhole = ReadOptional(node, "uniqueid", ban.uniqueId) && ReadOptional(node, "version", ban.version);
        if (isWhole && !ban.fileName.empty()) list.push_back(std::move(ban));
    }
    return list;
}

std::string FoldFileName(const ustring& name) {
    const zelcore::utf8string bytes = zelcore::utility::UTF16to8(name);
    std::string folded(bytes.data(), bytes.size());
    for (char& byte : folded) {
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
    }
    return folded;
}

}  // namespace zelaudiofilterhost
