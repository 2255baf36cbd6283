#pragma once

#include <cstdint>
#include <vector>

#include <zelcore/ustring.h>

namespace zelaudiofilterhost {

/// One bus of a component, as the plug-in described it when it was scanned.
struct PluginBusInfo {
    zelcore::ustring name;
    int channelCount = 0;
    bool isAuxiliary = false;  ///< a side-chain or another bus beside the main one

    bool operator==(const PluginBusInfo&) const = default;
};

/// One effect or instrument of a plug-in module. Every text is at most kMaxTextLength code units, every count at most
/// what its constant says, whatever the plug-in claimed.
struct PluginComponentInfo {
    static constexpr std::size_t kMaxTextLength = 256;
    static constexpr std::size_t kMaxBuses = 64;
    static constexpr int kMaxChannels = 1024;
    static constexpr int kMaxParameters = 1 << 16;

    zelcore::ustring componentId;   ///< unique among all components: "VST-" or "VST3-" and the format's own id in hex
    zelcore::ustring subcomponent;  ///< which component of its file; empty where the file has only this one
    zelcore::ustring name;
    zelcore::ustring vendor;
    zelcore::ustring version;
    zelcore::ustring category;
    bool isInstrument = false;
    bool hasEditor = false;
    int parameterCount = 0;
    std::uint32_t uniqueId = 0;      ///< VST only: the id that ban lists name; else 0
    std::int32_t versionNumber = 0;  ///< VST only: the version as the plug-in's number; else 0
    std::vector<PluginBusInfo> inputBuses;
    std::vector<PluginBusInfo> outputBuses;

    bool operator==(const PluginComponentInfo&) const = default;
};

}  // namespace zelaudiofilterhost
