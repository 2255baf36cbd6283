#pragma once

#include <cstddef>
#include <cstdint>

#include <zelcore/File.h>

namespace zelcore {
namespace filesupport {

/// A file opened for reading or writing, closed when the stream goes. Not shared between threads.
class ZELCORE_API IPlatformByteStream {
public:
    /// What a stream is opened for.
    enum Mode { kRead, kWrite };

    /// Opens the file: kRead needs an existing one, kWrite makes or empties it. Throws FileError, also for a folder or
    /// a device, so that a reader never hangs on one.
    IPlatformByteStream(const File& file, Mode mode);
    ~IPlatformByteStream();
    IPlatformByteStream(const IPlatformByteStream&) = delete;
    IPlatformByteStream& operator=(const IPlatformByteStream&) = delete;

    /// Length of the file in bytes, now. Throws FileError.
    std::uint64_t Length() const;
    /// Reads up to `length` bytes into `buffer` from where the last read ended and returns how many there were; fewer
    /// only at the end of the file. Throws FileError.
    std::size_t ReadBlock(void* buffer, std::size_t length);
    /// Writes all `length` bytes or throws FileError.
    void WriteBlock(const void* buffer, std::size_t length);

private:
    File mFile;
    std::intptr_t mHandle;
};

}  // namespace filesupport
}  // namespace zelcore
