#pragma once

#include <memory>

struct sf_private_tag;

namespace tessaly {

/// Closes a file of libsndfile.
struct SoundFileCloser {
    void operator()(sf_private_tag* file) const;
};

/// An open file of libsndfile, or none.
typedef std::unique_ptr<sf_private_tag, SoundFileCloser> SoundFileHandle;

}  // namespace tessaly
