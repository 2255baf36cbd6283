#pragma once

namespace zeltests {

/// Whether the libsndfile that the platform's build comes with can write and read a format (SF_FORMAT_…). Told by what
/// that build has been made with, not by asking it.
bool HasFormat(int format);

}  // namespace zeltests
