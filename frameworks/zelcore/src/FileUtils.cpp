#include <zelcore/FileUtils.h>

#include <algorithm>

#include <zelcore/FileError.h>
#include <zelcore/IPlatformByteStream.h>
#include <zelcore/Utf.h>

#include "FileSystem.h"

namespace zelcore {
namespace utility {

using filesupport::File;
using filesupport::FileError;
using filesupport::IPlatformByteStream;

void FileUtils::SimpleWriteStringToFile(const ustring& path, std::string_view bytes) {
    filesupport::ReplaceFile(path, bytes, filesupport::kOutlivesProcess);
}

void FileUtils::WriteStringToFileDurably(const ustring& path, std::string_view bytes) {
    filesupport::ReplaceFile(path, bytes, filesupport::kOutlivesPower);
}

std::string FileUtils::ReadFileToString(const File& file, std::size_t maxBytes) {
    IPlatformByteStream stream(file, IPlatformByteStream::kRead);
    const FileError tooLarge("read", file.FullPath(), filesupport::kFileTooLargeError);
    const std::uint64_t announced = stream.Length();
    if (announced > maxBytes) throw tooLarge;

    // The length is only where to begin: the file may grow meanwhile, and the system's own files announce none.
    std::string bytes;
    std::size_t block = std::max<std::size_t>(static_cast<std::size_t>(announced), 4096);
    for (;;) {
        const std::size_t before = bytes.size();
        bytes.resize(before + block);
        const std::size_t count = stream.ReadBlock(bytes.data() + before, block);
        bytes.resize(before + count);
        if (bytes.size() > maxBytes) throw tooLarge;
        if (count < block) return bytes;
        block = 4096;
    }
}

File FileUtils::KeepAside(const File& file, const ustring& suffix) {
    constexpr int kMaxTries = 10000;
    for (int number = 1; number <= kMaxTries; ++number) {
        const ustring aside =
            file.FullPath() + suffix + (number == 1 ? ustring() : AsciiToUTF16(std::to_string(number)));
        if (filesupport::RenameToFreeName(file.FullPath(), aside)) return File(aside);
    }
    throw FileError("find a free name for", file.FullPath(), 0);
}

void FileUtils::RemoveLeftovers(const filesupport::Dir& folder) noexcept {
    filesupport::RemoveLeftovers(folder.FullPath());
}

}  // namespace utility
}  // namespace zelcore
