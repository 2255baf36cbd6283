#pragma once

#include <cstddef>

#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

/// Hash of a locator for the unordered containers of this library.
struct LocatorHash {
    std::size_t operator()(const PluginLocator& locator) const noexcept;
};

}  // namespace zelaudiofilterhost
