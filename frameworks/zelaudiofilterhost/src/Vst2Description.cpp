#include "Vst2Description.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include <zelcore/Utf.h>

#include "PluginCall.h"
#include "Vst2Instance.h"
#include "Vst2Module.h"
#include "Vst2Shell.h"

namespace zelaudiofilterhost {

namespace {

const char* CategoryText(std::intptr_t category) {
    switch (category) {
        case vst2::kCategoryEffect:
            return "Effect";
        case vst2::kCategorySynth:
            return "Instrument";
        case vst2::kCategoryAnalysis:
            return "Analysis";
        case vst2::kCategoryMastering:
            return "Mastering";
        case vst2::kCategorySpatializer:
            return "Spatializer";
        case vst2::kCategoryRoom:
            return "Room";
        case vst2::kCategorySurround:
            return "Surround";
        case vst2::kCategoryRestoration:
            return "Restoration";
        case vst2::kCategoryOffline:
            return "Offline";
        case vst2::kCategoryGenerator:
            return "Generator";
        default:
            return "";
    }
}

/// The habits of packing a version into a number: four bytes, three bytes (a first one of zero can only be guessed),
/// and four decimal digits. Other numbers stay as they are.
zelcore::ustring VersionText(std::int32_t version) {
    std::array<char, 48> text = {};
    const int bytes[] = {version >> 24, (version >> 16) & 0xFF, (version >> 8) & 0xFF, version & 0xFF};
    const bool startsWithZero = version >= 0x100 && version < 1000 && bytes[3] < 16;
    if (version >= 0x1000000) {
        std::snprintf(text.data(), text.size(), "%d.%d.%d.%d", bytes[0], bytes[1], bytes[2], bytes[3]);
    } else if (version >= 0x10000 || startsWithZero) {
        std::snprintf(text.data(), text.size(), "%d.%d.%d", bytes[1], bytes[2], bytes[3]);
    } else if (version >= 1000 && version <= 9999) {
        std::snprintf(text.data(), text.size(), "%d.%d.%d.%d", version / 1000, version / 100 % 10, version / 10 % 10,
                      version % 10);
    } else if (version > 0) {
        std::snprintf(text.data(), text.size(), "%d", version);
    }
    return zelcore::utility::AsciiToUTF16(text.data());
}

std::int32_t GetVersionNumber(const Vst2Instance& instance) {
    const auto vendorVersion = static_cast<std::int32_t>(instance.Dispatch(vst2::kGetVendorVersion));
    return vendorVersion != 0 ? vendorVersion : instance.GetEffect().version;
}

std::vector<PluginBusInfo> MakeBuses(std::int32_t channels) {
    if (channels <= 0) return {};
    PluginBusInfo bus;
    bus.channelCount = std::min(channels, PluginComponentInfo::kMaxChannels);
    return {bus};
}

PluginComponentInfo DescribeInstance(const Vst2Instance& instance) {
    PluginComponentInfo info;
    info.name = instance.GetText(vst2::kGetEffectName);
    if (info.name.empty()) info.name = instance.GetText(vst2::kGetProductText);
    info.vendor = instance.GetText(vst2::kGetVendorText);
    const std::intptr_t category = instance.Dispatch(vst2::kGetCategory);
    info.category = zelcore::utility::AsciiToUTF16(CategoryText(category));
    info.versionNumber = GetVersionNumber(instance);
    info.version = VersionText(info.versionNumber);
    const vst2::Effect effect = instance.GetEffect();
    info.uniqueId = static_cast<std::uint32_t>(effect.uniqueId);
    info.isInstrument = (effect.flags & vst2::kIsSynth) != 0 || category == vst2::kCategorySynth;
    info.hasEditor = (effect.flags & vst2::kHasEditor) != 0;
    info.parameterCount = std::clamp(effect.parameterCount, 0, PluginComponentInfo::kMaxParameters);
    info.inputBuses = MakeBuses(effect.inputCount);
    info.outputBuses = MakeBuses(effect.outputCount);
    return info;
}

PluginComponentInfo DescribeShellEntry(const Vst2Module& module, const Vst2ShellEntry& entry) {
    PluginComponentInfo info = DescribeInstance(Vst2Instance(module, entry.id));
    // The list's name tells the variants of an effect apart, and its id is the one that makes the effect again.
    if (!entry.name.empty()) info.name = entry.name;
    info.uniqueId = static_cast<std::uint32_t>(entry.id);
    return info;
}

/// The components of a shell that can be made. One that cannot costs no other its place.
std::vector<PluginComponentInfo> DescribeShell(const Vst2Module& module, const std::vector<Vst2ShellEntry>& entries,
                                               const zelcore::ustring& subcomponent) {
    std::vector<PluginComponentInfo> components;
    std::optional<PluginLoadError> firstError;
    for (const Vst2ShellEntry& entry : entries) {
        if (!subcomponent.empty() && Vst2IdText(entry.id) != subcomponent) continue;
        try {
            components.push_back(DescribeShellEntry(module, entry));
            if (entries.size() > 1) components.back().subcomponent = Vst2IdText(entry.id);
        } catch (const PluginLoadError& error) {
            if (!firstError) firstError = error;
        }
    }
    if (components.empty() && firstError) throw *firstError;
    return components;
}

}  // namespace

PluginDescription DescribeVst2(const std::string& path, const zelcore::ustring& subcomponent) {
    const Vst2Module module(path);
    PluginDescription description;
    std::vector<Vst2ShellEntry> entries;
    bool isShell = false;
    {
        const Vst2Instance instance(module, 0);
        isShell = IsVst2Shell(instance);
        if (isShell) {
            entries = ListVst2Shell(instance);
            description.name = instance.GetText(vst2::kGetEffectName);
            if (description.name.empty()) description.name = instance.GetText(vst2::kGetProductText);
        } else if (subcomponent.empty()) {
            description.components.push_back(DescribeInstance(instance));
        }
    }
    if (isShell) description.components = DescribeShell(module, entries, subcomponent);
    for (PluginComponentInfo& component : description.components) {
        component.componentId =
            zelcore::utility::AsciiToUTF16("VST-") + Vst2IdText(static_cast<std::int32_t>(component.uniqueId));
    }
    return description;
}

}  // namespace zelaudiofilterhost
