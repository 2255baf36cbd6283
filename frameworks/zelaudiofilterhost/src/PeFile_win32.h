#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "OwnedHandle_win32.h"

namespace zelaudiofilterhost {

/// A file that may be a library or program of Windows. Reads what is asked for and believes no number in it.
class PeFile {
public:
    /// Opens the file that the handle leads to, which is this object's from now on.
    explicit PeFile(HANDLE handle);

    std::uint64_t GetSize() const { return mSize; }
    /// False unless all of it is there.
    bool Read(void* buffer, std::size_t length, std::uint64_t offset) const;

    /// Reads the headers up to the table of sections. What it returns says why that was not possible, as a part of a
    /// reason; empty when it was.
    std::string ReadHeaders();
    /// After ReadHeaders, which may have failed behind these.
    const IMAGE_FILE_HEADER& GetFileHeader() const { return mFileHeader; }

    /// Whether everything that the loader would map is there. After ReadHeaders without a reason.
    bool IsWhole() const;
    /// The names of the libraries that it needs, a bounded number of them. After ReadHeaders without a reason.
    std::vector<std::string> ListNeededLibraries() const;

private:
    bool ReadSections(std::uint64_t offset);
    /// Where a place in memory is in the file; false when it is in no section.
    bool ToOffset(std::uint32_t address, std::uint64_t& offset) const;
    std::string ReadName(std::uint32_t address) const;

    const OwnedHandle mHandle;
    std::uint64_t mSize;
    IMAGE_FILE_HEADER mFileHeader = {};
    IMAGE_OPTIONAL_HEADER64 mOptionalHeader = {};
    std::vector<IMAGE_SECTION_HEADER> mSections;
};

}  // namespace zelaudiofilterhost
