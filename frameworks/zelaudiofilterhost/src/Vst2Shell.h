#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <zelcore/ustring.h>

namespace zelaudiofilterhost {

class Vst2Instance;

/// One entry of a shell's list.
struct Vst2ShellEntry {
    std::int32_t id;
    zelcore::ustring name;
};

/// Whether the effect is none itself, but several to choose from. Throws PluginLoadError; so does the next one.
bool IsVst2Shell(const Vst2Instance& instance);
/// What a shell lists, up to kMaxComponents. A shell that starts over, or never ends, is left where it repeats itself.
std::vector<Vst2ShellEntry> ListVst2Shell(const Vst2Instance& shell);

/// An effect's id as eight hexadecimal digits: the subcomponent of a shell's component.
zelcore::ustring Vst2IdText(std::int32_t id);
/// The id of which that is the text; nothing for any other text.
std::optional<std::int32_t> ParseVst2IdText(const zelcore::ustring& text);

}  // namespace zelaudiofilterhost
