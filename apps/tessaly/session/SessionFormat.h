#pragma once

#include <array>
#include <QString>

#include "EffectRecord.h"

/// The words of session files, which docs/file-formats.md describes.
namespace tessaly::sessionformat {

inline constexpr char kFormat[] = "tessaly-session";
inline constexpr int kVersion = 1;
/// In the order of EditorKind.
inline constexpr std::array<const char*, kEditorKindCount> kWindowNames = {"own", "generic", "channels"};

inline QString Key(const char* name) { return QString::fromLatin1(name); }

}  // namespace tessaly::sessionformat
