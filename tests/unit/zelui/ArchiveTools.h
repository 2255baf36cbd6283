#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include <zelcore/Geometry.h>

namespace zeltests {

// Pieces of layout archives.

inline std::string Pair(const std::string& key, const std::string& value) {
    return "<prop.pair><key>" + key + "</key>" + value + "</prop.pair>\n";
}
inline std::string List(const std::string& pairs) { return "<prop.list>" + pairs + "</prop.list>"; }
inline std::string Signed(std::int64_t number) {
    return "<int type=\"signed\" size=\"32\">" + std::to_string(number) + "</int>";
}
inline std::string Unsigned(std::int64_t number) {
    return "<int type=\"unsigned\" size=\"32\">" + std::to_string(number) + "</int>";
}
inline std::string Float(const std::string& number) { return "<float>" + number + "</float>"; }
inline std::string Text(const std::string& text) { return "<ustring>" + text + "</ustring>"; }
inline std::string Bool(bool value) { return value ? "<true/>" : "<false/>"; }
inline std::string Map(const std::string& pairs) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<prop.map version=\"4\">\n" + List(pairs) + "\n</prop.map>\n";
}
inline std::string Archive(const std::string& root) {
    return Map(Pair("UINodeArchive", Unsigned(1)) + Pair("root", root));
}

/// A node to be written into an archive.
struct NodeText {
    std::string adapter = "zelui::ui::UI_SubView";
    std::string id = "Node";
    zelcore::geom::RectF bounds;
    long constraints = 0;
    std::string subView;     ///< more pairs of that section
    std::string node;        ///< more pairs of that section
    std::string className;   ///< empty: none
    std::string kind;        ///< name of a section of its kind; empty: none
    std::string properties;  ///< the pairs of that
    std::vector<NodeText> children;

    std::string Write() const {
        std::string written;
        for (std::size_t i = 0; i < children.size(); ++i)
            written += Pair("child-" + std::to_string(i), children[i].Write());
        std::vector<std::string> sections;
        if (!kind.empty()) sections.push_back(Pair("sectionName", Text(kind)) + properties);
        const std::string mask =
            Pair("Constraints", List(Pair(".aptype", Signed(4)) + Pair("constraints", Unsigned(constraints))));
        sections.push_back(Pair("sectionName", Text("UI_SubView")) + mask + subView +
                           (children.empty() ? "" : Pair("children", List(written))));
        sections.push_back(Pair("sectionName", Text("UI_Node")) + Pair("bounds", List(WriteBounds())) +
                           Pair("id", "<string>" + id + "</string>") + node);
        std::string all = Pair("count", Unsigned(static_cast<long>(sections.size())));
        for (std::size_t i = 0; i < sections.size(); ++i)
            all += Pair("section-" + std::to_string(i), List(sections[i]));
        return List(Pair("adapter", Text(adapter)) + (className.empty() ? "" : Pair("className", Text(className))) +
                    Pair("sections", List(all)));
    }

private:
    std::string WriteBounds() const {
        return Pair(".aptype", Signed(1)) + Pair("left", Float(std::to_string(bounds.left))) +
               Pair("top", Float(std::to_string(bounds.top))) + Pair("width", Float(std::to_string(bounds.width))) +
               Pair("height", Float(std::to_string(bounds.height)));
    }
};

inline std::string Flow(bool horizontal) {
    return Pair("AutoLayout", Bool(true)) + Pair("AutoLayout_Horizontal", Bool(horizontal));
}

inline NodeText Button(const std::string& id, const zelcore::geom::RectF& bounds, const std::string& text,
                       long constraints = 0) {
    NodeText node;
    node.adapter = "zelui::controls::UI_TextButton";
    node.id = id;
    node.bounds = bounds;
    node.constraints = constraints;
    node.kind = "UI_TextButton";
    node.properties = Pair("text", Text(text));
    return node;
}

}  // namespace zeltests
