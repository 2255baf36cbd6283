#pragma once

#include <cstdint>
#include <vector>

#include <zelcore/ustring.h>

namespace zelaudiofilterhost {

/// One bus of a component, as the plug-in described it when it was scanned.
struct PluginBusInfo {
    /// What people call the bus; may be empty.
    zelcore::ustring name;
    /// How many channels it has by itself.
    int channelCount = 0;
    bool isAuxiliary = false;  ///< a side-chain or another bus beside the main one

    /// Equal when all members are.
    bool operator==(const PluginBusInfo&) const = default;
};

/// One effect or instrument of a plug-in module. Every text is at most kMaxTextLength code units, every count at most
/// what its constant says, whatever the plug-in claimed.
struct PluginComponentInfo {
    /// The longest text, in code units; longer ones are cut.
    static constexpr std::size_t kMaxTextLength = 256;
    /// The most buses in one direction; further ones are left out.
    static constexpr std::size_t kMaxBuses = 64;
    /// The most channels in one direction; what goes beyond is left out.
    static constexpr int kMaxChannels = 1024;
    /// The most parameters; further ones are left out.
    static constexpr int kMaxParameters = 1 << 16;

    zelcore::ustring componentId;   ///< unique among all components: "VST-" or "VST3-" and the format's own id in hex
    zelcore::ustring subcomponent;  ///< which component of its file; empty where the file has only this one
    /// For people.
    zelcore::ustring name;
    /// Who made it, for people; may be empty.
    zelcore::ustring vendor;
    /// As the plug-in writes it; may be empty.
    zelcore::ustring version;
    /// As the plug-in says it, such as "Fx|Dynamics"; may be empty.
    zelcore::ustring category;
    /// Makes sound of notes instead of sound.
    bool isInstrument = false;
    /// Has an editor of its own.
    bool hasEditor = false;
    /// How many parameters it had when it was scanned.
    int parameterCount = 0;
    std::uint32_t uniqueId = 0;      ///< VST only: the id that ban lists name; else 0
    std::int32_t versionNumber = 0;  ///< VST only: the version as the plug-in's number; else 0
    /// Where sound goes in, in the plug-in's order.
    std::vector<PluginBusInfo> inputBuses;
    /// Where sound comes out, in the plug-in's order.
    std::vector<PluginBusInfo> outputBuses;

    /// Equal when all members are.
    bool operator==(const PluginComponentInfo&) const = default;
};

}  // namespace zelaudiofilterhost
