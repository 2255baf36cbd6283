#pragma once

#include <string>
#include <vector>

#include "../render/Sound.h"

namespace zeltests {

/// What a file becomes that is rendered through new filters of these modules, in blocks of the engine's size, with as
/// many frames of silence behind. An empty path for no side-chain.
Sound RenderFile(const std::string& sound, const std::string& sideChain, const std::vector<std::string>& modules,
                 std::size_t tail);

}  // namespace zeltests
