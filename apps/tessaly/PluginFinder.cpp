#include "PluginFinder.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhost/PluginDescription.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/Utf.h>

#include "FilePath.h"
#include "TerminalText.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhost::PluginModuleInfoManager;

namespace {

typedef std::vector<PluginFinder::DescriptorPtr> Descriptors;

constexpr std::size_t kListed = 10;

std::string GetName(const AudioFilterDescriptor& descriptor) {
    return TerminalText::FromText(descriptor.GetComponent().name);
}

std::string GetId(const AudioFilterDescriptor& descriptor) {
    return TerminalText::FromText(descriptor.GetComponent().componentId);
}

/// Those that `matches`, if there are any.
template <typename Matches>
bool Keep(Descriptors& descriptors, Matches matches) {
    Descriptors kept;
    std::copy_if(descriptors.begin(), descriptors.end(), std::back_inserter(kept), matches);
    if (!kept.empty()) descriptors = kept;
    return !kept.empty();
}

/// Leaves those that are meant by `text`: by ID, else by name, else by a part of the name. False when none is.
bool KeepMeant(Descriptors& descriptors, const std::string& text) {
    const std::string wanted = TerminalText::FoldCase(text);
    return Keep(descriptors, [&](const auto& descriptor) { return GetId(*descriptor) == text; }) ||
           Keep(descriptors,
                [&](const auto& descriptor) { return TerminalText::FoldCase(GetName(*descriptor)) == wanted; }) ||
           Keep(descriptors, [&](const auto& descriptor) {
               return TerminalText::FoldCase(GetName(*descriptor)).find(wanted) != std::string::npos;
           });
}

std::string ListNames(const Descriptors& descriptors) {
    std::string list;
    for (std::size_t i = 0; i < descriptors.size() && i < kListed; ++i) {
        list += "\n  " + TerminalText::MakePrintable(GetName(*descriptors[i])) + "  (" +
                TerminalText::MakePrintable(GetId(*descriptors[i])) + ")";
    }
    if (descriptors.size() > kListed) list += "\n  and " + std::to_string(descriptors.size() - kListed) + " more";
    return list;
}

Descriptors ReadCatalogue() {
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    Descriptors descriptors;
    for (auto info = catalogue.PluginInfoBegin(); info != catalogue.PluginInfoEnd(); ++info) {
        for (const zelaudiofilterhost::PluginComponentInfo& component : (*info)->GetComponents())
            descriptors.emplace_back(new AudioFilterDescriptor((*info)->GetLocator(), component));
    }
    return descriptors;
}

Descriptors ReadFile(const std::filesystem::path& path) {
    const std::filesystem::path full = std::filesystem::canonical(path);
    const auto technology = TerminalText::FoldCase(FromFilePath(full.extension())) == ".vst3"
                                ? zelaudiofilterhost::kTechnologyVST3
                                : zelaudiofilterhost::kTechnologyVST;
    try {
        return AudioFilterDescriptor::ReadModule(
            PluginLocator(technology, zelcore::utility::UTF8to16(FromFilePath(full))));
    } catch (const zelaudiofilterhost::PluginLoadError& error) {
        throw std::runtime_error("'" + FromFilePath(path) + "' " + error.what());
    }
}

}  // namespace

PluginFinder::DescriptorPtr PluginFinder::Find(const std::string& plugin, const std::string& component) {
    const std::filesystem::path path = ToFilePath(plugin);
    const bool isFile = std::filesystem::exists(path);
    Descriptors found = isFile ? ReadFile(path) : ReadCatalogue();
    if (!isFile && !KeepMeant(found, plugin)) {
        throw std::runtime_error("there is no plug-in called '" + plugin +
                                 "' in the catalogue; give its path, or scan first");
    }
    if (!component.empty() && !KeepMeant(found, component))
        throw std::runtime_error("'" + plugin + "' has no component called '" + component + "', but" +
                                 ListNames(found));
    if (found.size() == 1) return found.front();
    throw std::runtime_error("'" + plugin +
                             "' may be one of several; say which with --component or its ID:" + ListNames(found));
}

boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> PluginFinder::Load(const std::string& plugin,
                                                                         const std::string& component) {
    const DescriptorPtr descriptor = Find(plugin, component);
    // One that was given by its path need not be in the catalogue, and has the same right to a view.
    zelaudiofilterhost::AudioFilterDescriptorManager::GetInstance().AddDescriptor(descriptor);
    try {
        return descriptor->CreateFilter();
    } catch (const zelaudiofilterhost::PluginLoadError& error) {
        throw std::runtime_error(TerminalText::MakePrintable(GetName(*descriptor)) + " " + error.what());
    }
}

}  // namespace tessaly
