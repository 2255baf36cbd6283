#pragma once

#include <string>

#include <zelui/Export.h>

#include "ArchiveValue.h"

namespace zelui {

/// The most that a layout archive may be and have; what is beyond is an error before it takes any memory.
constexpr std::size_t kLargestArchive = 1u << 20;
constexpr int kMaxArchiveDepth = 200;
constexpr std::size_t kMaxArchiveListLength = 1000;
constexpr std::size_t kMaxArchiveKey = 200;
constexpr std::size_t kMaxArchiveText = 32768;

/// Reads the property map that a layout archive is: `bytes` is XML, UTF-8, without a document type. Returns its list.
/// Throws ui::ArchiveError, which tells the line.
ZELUI_API ArchiveList ReadPropertyMap(const std::string& bytes);

}  // namespace zelui
