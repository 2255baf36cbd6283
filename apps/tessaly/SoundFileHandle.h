#pragma once

#include <filesystem>
#include <memory>

struct sf_private_tag;
struct SF_INFO;

namespace tessaly {

/// Closes a file of libsndfile.
struct SoundFileCloser {
    void operator()(sf_private_tag* file) const;
};

/// An open file of libsndfile, or none.
typedef std::unique_ptr<sf_private_tag, SoundFileCloser> SoundFileHandle;

/// Opens as libsndfile does, with one of its modes; none when it cannot.
SoundFileHandle OpenSoundFile(const std::filesystem::path& path, int mode, SF_INFO& info);

}  // namespace tessaly
