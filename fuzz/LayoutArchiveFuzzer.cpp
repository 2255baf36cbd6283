// Layout archives. What was read and is written again reads the same, and no archive makes more nodes than it may.
#include <charconv>
#include <cmath>
#include <string>
#include <variant>

#include <zelui/ArchiveError.h>

#include "ArchivedNode.h"
#include "ArchiveReader.h"
#include "ArchiveValue.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"

using namespace zelui;
using zelfuzz::Expect;

namespace {

std::string Escape(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        const bool isSpecial = c == '&' || c == '<' || c == '>' || c == '\r' || c == '\t' || c == '\n';
        escaped += isSpecial ? "&#" + std::to_string(static_cast<int>(c)) + ";" : std::string(1, c);
    }
    return escaped;
}

std::string WriteList(const ArchiveList& list);

struct ValueWriter {
    std::string operator()(std::int64_t number) const {
        const char* const type = number < 0 ? "signed" : "unsigned";
        return "<int type=\"" + std::string(type) + "\" size=\"32\">" + std::to_string(number) + "</int>";
    }
    std::string operator()(double number) const {
        char digits[64];
        const std::to_chars_result result = std::to_chars(digits, digits + sizeof(digits), number);
        return "<float>" + std::string(digits, result.ptr) + "</float>";
    }
    std::string operator()(bool value) const { return value ? "<true/>" : "<false/>"; }
    std::string operator()(const std::string& text) const { return "<string>" + Escape(text) + "</string>"; }
    std::string operator()(const ArchiveList& list) const { return WriteList(list); }
};

std::string WriteList(const ArchiveList& list) {
    std::string text = "<prop.list>";
    for (const ArchivePair& pair : list.GetPairs()) {
        text += "<prop.pair><key>" + Escape(pair.key) + "</key>";
        text += std::visit(ValueWriter(), pair.value) + "</prop.pair>\n";
    }
    return text + "</prop.list>";
}

bool AreSame(const ArchiveList& left, const ArchiveList& right);

bool AreSame(const ArchivePair& left, const ArchivePair& right) {
    if (left.key != right.key || left.value.index() != right.value.index()) return false;
    if (const auto* const list = std::get_if<ArchiveList>(&left.value)) {
        return AreSame(*list, std::get<ArchiveList>(right.value));
    }
    const auto* const text = std::get_if<std::string>(&left.value);
    if (text != nullptr) return *text == std::get<std::string>(right.value);
    const auto* const number = std::get_if<double>(&left.value);
    if (number != nullptr) return *number == std::get<double>(right.value);
    const auto* const whole = std::get_if<std::int64_t>(&left.value);
    if (whole != nullptr) return *whole == std::get<std::int64_t>(right.value);
    return std::get<bool>(left.value) == std::get<bool>(right.value);
}

bool AreSame(const ArchiveList& left, const ArchiveList& right) {
    if (left.GetPairs().size() != right.GetPairs().size()) return false;
    for (std::size_t i = 0; i < left.GetPairs().size(); ++i) {
        if (!AreSame(left.GetPairs()[i], right.GetPairs()[i])) return false;
    }
    return true;
}

void CheckList(const ArchiveList& list, int depth) {
    Expect(depth < kMaxArchiveDepth, "lists do not stand too deep in each other");
    Expect(list.GetPairs().size() <= kMaxArchiveListLength, "no list is too long");
    for (const ArchivePair& pair : list.GetPairs()) {
        Expect(!pair.key.empty() && pair.key.size() <= kMaxArchiveKey, "keys are there and not too long");
        Expect(list.Find(pair.key) == &pair, "no key is there twice");
        if (const auto* const inner = std::get_if<ArchiveList>(&pair.value)) CheckList(*inner, depth + 1);
    }
}

/// The number of nodes.
std::size_t CheckNode(const ArchivedNode& node, int depth) {
    Expect(depth < kMaxArchivedNodeDepth, "nodes do not stand too deep in each other");
    const auto& bounds = node.bounds;
    for (const float edge : {bounds.left, bounds.top, bounds.Right(), bounds.Bottom()}) {
        Expect(std::isfinite(edge) && std::fabs(edge) <= kLargestArchivedBound, "bounds are within reach");
    }
    Expect(bounds.width >= 0.0f && bounds.height >= 0.0f, "bounds are not less than empty");
    std::size_t count = 1;
    for (const ArchivedNode& child : node.children) count += CheckNode(child, depth + 1);
    return count;
}

bool AreSame(const ArchivedNode& left, const ArchivedNode& right) {
    const bool isSame = left.adapter == right.adapter && left.className == right.className && left.id == right.id &&
                        left.bounds == right.bounds && left.toolTip == right.toolTip && left.visible == right.visible &&
                        left.constraints == right.constraints && left.autoLayout == right.autoLayout &&
                        left.autoLayoutHorizontal == right.autoLayoutHorizontal &&
                        left.maintainMargins == right.maintainMargins && left.layoutChildren == right.layoutChildren &&
                        left.enabled == right.enabled && left.wantsFocus == right.wantsFocus &&
                        left.checked == right.checked && left.text == right.text && left.alignment == right.alignment &&
                        left.children.size() == right.children.size();
    if (!isSame) return false;
    for (std::size_t i = 0; i < left.children.size(); ++i) {
        if (!AreSame(left.children[i], right.children[i])) return false;
    }
    return true;
}

/// The property map written anew, or nothing where there is none.
std::string TryMap(const std::string& text) {
    try {
        const ArchiveList map = ReadPropertyMap(text);
        CheckList(map, 0);
        const std::string written = "<prop.map version=\"4\">" + WriteList(map) + "</prop.map>";
        Expect(AreSame(map, ReadPropertyMap(written)), "what was written reads the same");
        return written;
    } catch (const ui::ArchiveError& error) {
        Expect(error.what()[0] != '\0', "an error says what is wrong");
        return std::string();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    const std::string written = TryMap(text);
    try {
        const ArchivedNode root = ReadArchivedNodes(text);
        Expect(!written.empty(), "nodes come out of a property map");
        Expect(CheckNode(root, 0) <= kMaxArchivedNodes, "there are not too many nodes");
        Expect(AreSame(root, ReadArchivedNodes(written)), "the same map has the same nodes");
    } catch (const ui::ArchiveError&) {
        return 0;
    }
    return 0;
}
