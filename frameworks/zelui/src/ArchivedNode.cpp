#include "ArchivedNode.h"

#include <cmath>
#include <map>

#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>

#include "ArchiveReader.h"
#include "ArchiveValue.h"

namespace zelui {

namespace {

using zelcore::ustring;

const std::int64_t kArchiveVersion = 1;
const std::int64_t kRectangleRecord = 1;
const std::int64_t kSelectionRecord = 2;
const std::int64_t kConstraintsRecord = 4;

// "($$$/key=Default)"; what has another form is no reference but a text.
ustring Localized(const std::string& text) {
    const std::string_view all(text);
    const bool isReference = all.starts_with("($$$/") && all.ends_with(')') && all.find('=') != std::string_view::npos;
    if (!isReference) return zelcore::utility::UTF8to16(all);
    return zelcore::config::Localize(all.substr(1, all.size() - 2));
}

zelcore::geom::RectF ReadBounds(const ArchiveList& section) {
    const ArchiveList& record = section.GetRecord("bounds", kRectangleRecord);
    const zelcore::geom::RectF bounds{record.GetNumber("left"), record.GetNumber("top"), record.GetNumber("width"),
                                      record.GetNumber("height")};
    for (const float number : {bounds.left, bounds.top, bounds.Right(), bounds.Bottom()}) {
        if (!(std::fabs(number) <= kLargestArchivedBound)) ThrowArchiveError(record.GetLine(), "bounds out of reach");
    }
    if (bounds.width < 0.0f || bounds.height < 0.0f) ThrowArchiveError(record.GetLine(), "bounds less than empty");
    return bounds;
}

int ReadSelection(const ArchiveList& section, const char* key) {
    const ArchiveList& record = section.GetRecord(key, kSelectionRecord);
    return static_cast<int>(record.GetInteger("selected"));
}

typedef void (*SectionReader)(const ArchiveList& section, ArchivedNode& node);

void ReadNodeSection(const ArchiveList& section, ArchivedNode& node) {
    node.bounds = ReadBounds(section);
    if (section.Has("id")) node.id = section.GetText("id");
    if (section.Has("visible")) node.visible = section.GetBoolean("visible");
    if (section.Has("tooltip") && section.GetText("tooltip") != "None")
        node.toolTip = Localized(section.GetText("tooltip"));
}

void ReadSubViewSection(const ArchiveList& section, ArchivedNode& node) {
    const auto read = [&section](const char* key, bool& value) {
        if (section.Has(key)) value = section.GetBoolean(key);
    };
    read("AutoLayout", node.autoLayout);
    read("AutoLayout_Horizontal", node.autoLayoutHorizontal);
    read("AutoLayout_MaintainMargins", node.maintainMargins);
    read("LayoutChildren", node.layoutChildren);
    if (!section.Has("Constraints")) return;
    const std::int64_t mask = section.GetRecord("Constraints", kConstraintsRecord).GetInteger("constraints");
    if (mask < 0 || mask > UINT32_MAX) ThrowArchiveError(section.GetLine(), "constraints that are none");
    node.constraints = static_cast<std::uint32_t>(mask);
}

void ReadControlSection(const ArchiveList& section, ArchivedNode& node) {
    if (section.Has("enabled")) node.enabled = section.GetBoolean("enabled");
    if (section.Has("wantsFocus")) node.wantsFocus = section.GetBoolean("wantsFocus");
}

void ReadTextSection(const ArchiveList& section, ArchivedNode& node) {
    if (section.Has("text")) node.text = Localized(section.GetText("text"));
    if (section.Has("checked")) node.checked = section.GetBoolean("checked");
    if (section.Has("alignment")) node.alignment = ReadSelection(section, "alignment");
}

// Sections that are not here, and keys that are not asked for, are those of other versions and of looks that the
// platform's own controls have themselves.
const std::map<std::string, SectionReader, std::less<>>& GetSectionReaders() {
    static const std::map<std::string, SectionReader, std::less<>> readers = {
        {"UI_Node", &ReadNodeSection},           {"UI_SubView", &ReadSubViewSection},
        {"UI_ControlView", &ReadControlSection}, {"UI_TextButton", &ReadTextSection},
        {"UI_Checkbox", &ReadTextSection},       {"UI_StaticText", &ReadTextSection},
    };
    return readers;
}

class NodeReader {
public:
    ArchivedNode Read(const ArchiveList& list, int depth) {
        if (depth >= kMaxArchivedNodeDepth) ThrowArchiveError(list.GetLine(), "nodes stand too deep in each other");
        if (++mCount > kMaxArchivedNodes) ThrowArchiveError(list.GetLine(), "too many nodes");
        ArchivedNode node;
        node.line = list.GetLine();
        node.adapter = list.GetText("adapter");
        if (list.Has("className")) node.className = zelcore::utility::UTF8to16(list.GetText("className"));
        ReadSections(list.GetList("sections"), node, depth);
        return node;
    }

private:
    void ReadSections(const ArchiveList& sections, ArchivedNode& node, int depth) {
        const std::int64_t count = sections.GetInteger("count");
        bool hasFrame = false;
        for (std::int64_t i = 0; i < count; ++i) {
            const ArchiveList& section = sections.GetList("section-" + std::to_string(i));
            const std::string& name = section.GetText("sectionName");
            hasFrame = hasFrame || name == "UI_Node";
            const auto reader = GetSectionReaders().find(name);
            if (reader != GetSectionReaders().end()) reader->second(section, node);
            if (section.Has("children")) ReadChildren(section.GetList("children"), node, depth);
        }
        if (!hasFrame) ThrowArchiveError(sections.GetLine(), "a node without its \"UI_Node\" section");
    }

    void ReadChildren(const ArchiveList& children, ArchivedNode& node, int depth) {
        for (std::size_t i = 0;; ++i) {
            const std::string key = "child-" + std::to_string(i);
            if (!children.Has(key)) return;
            node.children.push_back(Read(children.GetList(key), depth + 1));
        }
    }

    std::size_t mCount = 0;
};

}  // namespace

ArchivedNode ReadArchivedNodes(const std::string& bytes) {
    const ArchiveList map = ReadPropertyMap(bytes);
    if (map.GetInteger("UINodeArchive") != kArchiveVersion)
        ThrowArchiveError(map.Find("UINodeArchive")->line, "a version of node archives that is not known");
    return NodeReader().Read(map.GetList("root"), 0);
}

}  // namespace zelui
