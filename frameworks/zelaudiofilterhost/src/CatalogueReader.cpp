#include "CatalogueReader.h"

#include <algorithm>
#include <limits>
#include <string>

#include <pugixml.hpp>

#include "CatalogueText.h"
#include "XmlText.h"

namespace zelaudiofilterhost {

namespace {

// As a fragment, text beside the root element is kept, and so noticed.
constexpr unsigned int kParseOptions = pugi::parse_minimal | pugi::parse_escapes | pugi::parse_fragment;

// More than any list that a person keeps, and no more than a file made to exhaust memory may ask for.
constexpr std::size_t kMaxFolders = 1024;

std::string_view Value(const pugi::xml_node& node, const char* name) { return node.attribute(name).value(); }

ustring Text(const pugi::xml_node& node, const char* name) { return DecodeAttribute(Value(node, name)); }

bool Flag(const pugi::xml_node& node, const char* name) { return Value(node, name) == "1"; }

/// A number, brought into the range of its type; 0 when there is none.
template <typename Number>
Number ReadNumber(const pugi::xml_node& node, const char* name) {
    std::int64_t number = 0;
    if (!ParseNumber(Value(node, name), number)) return 0;
    const std::int64_t least = std::numeric_limits<Number>::min(), most = std::numeric_limits<Number>::max();
    return static_cast<Number>(std::clamp(number, least, most));
}

bool ReadTechnologyType(const pugi::xml_node& node, const char* name, TechnologyType& type) {
    std::int64_t number = 0;
    if (!ParseNumber(Value(node, name), number)) return false;
    if (number < kTechnologyBuiltIn || number > kTechnologyAU) return false;
    type = static_cast<TechnologyType>(number);
    return true;
}

bool ReadLocator(const pugi::xml_node& node, PluginLocator& locator) {
    TechnologyType type = kTechnologyNone;
    if (!ReadTechnologyType(node, "technology", type)) return false;
    const ustring path = Text(node, "path"), subcomponent = Text(node, "subcomponent");
    if (path.empty() || path.size() + subcomponent.size() > PluginLocator::kMaxTextLength) return false;
    locator = PluginLocator(type, path, subcomponent);
    return true;
}

PluginFingerprint ReadFingerprint(const pugi::xml_node& node) {
    PluginFingerprint fingerprint;
    ParseNumber(Value(node, "size"), fingerprint.size);
    ParseNumber(Value(node, "time"), fingerprint.modificationTime);
    return fingerprint;
}

void ReadBus(const pugi::xml_node& node, std::vector<PluginBusInfo>& buses) {
    if (buses.size() == PluginComponentInfo::kMaxBuses) return;
    PluginBusInfo& bus = buses.emplace_back();
    bus.name = Text(node, "name");
    bus.channelCount = ReadNumber<int>(node, "channels");
    bus.isAuxiliary = Flag(node, "auxiliary");
}

PluginComponentInfo ReadComponent(const pugi::xml_node& node) {
    PluginComponentInfo component;
    component.componentId = Text(node, "id");
    component.subcomponent = Text(node, "subcomponent");
    component.name = Text(node, "name");
    component.vendor = Text(node, "vendor");
    component.version = Text(node, "version");
    component.category = Text(node, "category");
    component.isInstrument = Flag(node, "instrument");
    component.hasEditor = Flag(node, "editor");
    component.parameterCount = ReadNumber<int>(node, "parameters");
    component.uniqueId = ReadNumber<std::uint32_t>(node, "uniqueid");
    component.versionNumber = ReadNumber<std::int32_t>(node, "versionnumber");
    for (const pugi::xml_node& child : node.children()) {
        const std::string_view name = child.name();
        if (name == "input") ReadBus(child, component.inputBuses);
        if (name == "output") ReadBus(child, component.outputBuses);
    }
    return component;
}

bool ReadModule(const pugi::xml_node& node, CatalogueRecord& record) {
    std::vector<PluginComponentInfo> components;
    for (const pugi::xml_node& child : node.children("component")) {
        if (components.size() == kMaxComponents) break;
        components.push_back(ReadComponent(child));
    }
    if (components.empty()) return false;
    record.info = new PluginModuleInfo(record.locator, Text(node, "name"), ReadFingerprint(node), components);
    record.info->SetEnabled(record.enabled);
    return true;
}

bool ReadFailed(const pugi::xml_node& node, CatalogueRecord& record) {
    record.failure.locator = record.locator;
    record.failure.fingerprint = ReadFingerprint(node);
    record.failure.reason = Text(node, "reason");
    return true;
}

bool ReadTechnology(const pugi::xml_node& node, CatalogueRecord& record) {
    record.kind = CatalogueRecord::kTechnology;
    if (!ReadTechnologyType(node, "type", record.technology)) return false;
    for (const pugi::xml_node& child : node.children("folder")) {
        if (record.folders.size() == kMaxFolders) break;
        record.folders.push_back(Text(child, "path"));
    }
    return true;
}

bool ReadRecord(const pugi::xml_node& node, CatalogueRecord& record) {
    const std::string_view name = node.name();
    if (name == "technology") return ReadTechnology(node, record);
    if (!ReadLocator(node, record.locator)) return false;
    record.enabled = Value(node, "enabled") != "0";
    record.kind = name == "module"   ? CatalogueRecord::kModule
                  : name == "failed" ? CatalogueRecord::kFailed
                  : name == "choice" ? CatalogueRecord::kChoice
                                     : CatalogueRecord::kRemoved;
    if (record.kind == CatalogueRecord::kModule) return ReadModule(node, record);
    return record.kind != CatalogueRecord::kFailed || ReadFailed(node, record);
}

bool IsRecordName(std::string_view name) {
    return name == "technology" || name == "module" || name == "failed" || name == "choice" || name == "removed";
}

bool IsRightRoot(const pugi::xml_node& node) {
    return node.name() == kCatalogueRoot && Value(node, "version") == kCatalogueVersion;
}

bool LoadDocument(pugi::xml_document& document, std::string_view text) {
    if (text.size() > kMaxConfigurationText || text.find('\0') != std::string_view::npos) return false;
    return document.load_buffer(text.data(), text.size(), kParseOptions, pugi::encoding_utf8);
}

/// Parses a text of exactly one element; null when it is anything else.
pugi::xml_node Parse(pugi::xml_document& document, std::string_view text) {
    if (!LoadDocument(document, text)) return pugi::xml_node();
    const pugi::xml_node first = document.first_child();
    return first.type() == pugi::node_element && !first.next_sibling() ? first : pugi::xml_node();
}

/// Takes the first line off a text, with its end.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end == std::string_view::npos ? end : end + 1);
    text.remove_prefix(line.size());
    return line;
}

std::string_view WithoutEnd(std::string_view line) {
    if (line.ends_with('\n')) line.remove_suffix(1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

/// Reads a text line by line, so that damage to one line costs that line alone and memory is a few lines' at a time.
class LineReader {
public:
    CatalogueContent Read(std::string_view text) {
        while (!text.empty()) {
            const std::string_view block = text.substr(0, BlockLength(text));
            text.remove_prefix(block.size());
            if (mPlace != kInside || !ReadBlock(block)) ReadLines(block);
        }
        if (mPlace != kBehind) {
            mIsDamaged = true;
            // The lines of a save that was interrupted go together, or the state would be neither the old nor the new.
            if (mChangesLeft > 0) mContent.records.resize(mChangesBegin);
        }
        if (mPlace == kBefore && !mContent.records.empty()) mContent.isCatalogue = true;
        if (!mContent.isCatalogue) mContent.records.clear();
        mContent.isIntact = mContent.isCatalogue && !mIsDamaged;
        return std::move(mContent);
    }

private:
    enum Place { kBefore, kInside, kBehind };

    /// How much of the text to take next: lines of elements some at once, others one by one.
    std::size_t BlockLength(std::string_view text) const {
        // Setting up the parser costs as much as a few lines do.
        constexpr std::size_t kBlock = std::size_t(64) << 10;
        const std::size_t whole = text.size();
        TakeLine(text);
        while (mPlace == kInside && !text.empty() && !text.starts_with("</")) {
            std::string_view rest = text;
            TakeLine(rest);
            if (whole - rest.size() > kBlock) break;
            text = rest;
        }
        return whole - text.size();
    }

    /// Takes a block in which every line is one whole element; false, and nothing taken, for any other.
    bool ReadBlock(std::string_view block) {
        if (!block.ends_with('\n') || !LoadDocument(mDocument, block)) return false;
        pugi::xml_node node = mDocument.first_child();
        for (std::string_view rest = block; !rest.empty(); node = node.next_sibling()) {
            const std::size_t begin = block.size() - rest.size();
            TakeLine(rest);
            // Its name stands right behind the bracket that begins the line.
            if (node.type() != pugi::node_element || node.offset_debug() != std::ptrdiff_t(begin + 1)) return false;
        }
        if (node) return false;
        for (node = mDocument.first_child(); node; node = node.next_sibling()) {
            if (!ReadElement(node, WithoutEnd(TakeLine(block)))) mIsDamaged = true;
            CountLine();
        }
        return true;
    }

    void ReadLines(std::string_view lines) {
        while (!lines.empty()) {
            const std::string_view line = TakeLine(lines);
            ReadLine(WithoutEnd(line));
            // What is left of a line that was cut off is not one of those that were saved together.
            if (line.ends_with('\n')) CountLine();
        }
    }

    void CountLine() {
        if (mChangesLeft > 0) --mChangesLeft;
    }

    void ReadLine(std::string_view line) {
        if (line.empty() || mIsForeign) return;
        if (mPlace == kBefore && (line.starts_with("<?xml ") || ReadRootLine(line))) return;
        if (mPlace == kInside && line == WithoutEnd(kCatalogueTail)) {
            mPlace = kBehind;
        } else if (mPlace == kBehind || !ReadElementLine(line)) {
            mIsDamaged = true;
        }
    }

    /// Takes the line that opens the root element; false for any other.
    bool ReadRootLine(std::string_view line) {
        if (line.size() < 2 || line.front() != '<' || line.back() != '>' || line[line.size() - 2] == '/') return false;
        const std::string closed = std::string(line.substr(0, line.size() - 1)) + "/>";
        const pugi::xml_node root = Parse(mDocument, closed);
        if (!root) return false;
        mIsForeign = !IsRightRoot(root);
        mContent.isCatalogue = !mIsForeign;
        mPlace = kInside;
        return true;
    }

    bool ReadElementLine(std::string_view line) {
        const pugi::xml_node node = Parse(mDocument, line);
        return node && ReadElement(node, line);
    }

    bool ReadElement(const pugi::xml_node& node, std::string_view line) {
        if (std::string_view(node.name()) == "changes") return BeginChanges(node);
        if (!IsRecordName(node.name())) return true;
        CatalogueRecord record;
        if (!ReadRecord(node, record)) return false;
        record.line.reserve(line.size() + 1);
        record.line.append(line).push_back('\n');
        mContent.records.push_back(std::move(record));
        return true;
    }

    bool BeginChanges(const pugi::xml_node& node) {
        std::uint64_t lines = 0;
        if (!ParseNumber(Value(node, "lines"), lines) || lines == std::numeric_limits<std::uint64_t>::max())
            return false;
        mChangesBegin = mContent.records.size();
        mChangesLeft = lines + 1;  // this line is counted with them
        return true;
    }

    pugi::xml_document mDocument;
    CatalogueContent mContent;
    Place mPlace = kBefore;
    bool mIsForeign = false;  // the root is another's, or of another version
    bool mIsDamaged = false;
    std::uint64_t mChangesLeft = 0;
    std::size_t mChangesBegin = 0;
};

/// Reads a text as XML without regard to lines, as when somebody's editor has set it anew.
CatalogueContent ReadDocument(std::string_view text) {
    CatalogueContent content;
    pugi::xml_document document;
    const pugi::xml_node root = Parse(document, text);
    if (!IsRightRoot(root)) return content;
    content.isCatalogue = content.isIntact = true;
    for (const pugi::xml_node& node : root.children()) {
        if (!IsRecordName(node.name())) continue;
        CatalogueRecord record;
        if (ReadRecord(node, record)) {
            content.records.push_back(std::move(record));
        } else {
            content.isIntact = false;
        }
    }
    return content;
}

}  // namespace

CatalogueContent ReadCatalogue(std::string_view text) {
    CatalogueContent content = LineReader().Read(text);
    if (content.isIntact) return content;
    CatalogueContent document = ReadDocument(text);
    return document.isCatalogue ? document : content;
}

}  // namespace zelaudiofilterhost
