#include "PeFile_win32.h"

#include <algorithm>
#include <cstddef>

namespace zelaudiofilterhost {

namespace {

/// The system loads no more than 96.
constexpr unsigned kMaxSections = 96;
constexpr unsigned kMaxNeededLibraries = 256;
constexpr std::size_t kMaxNameLength = 260;

/// What ours have, and no less: behind it lies the list of the libraries that a module needs.
constexpr std::size_t kLeastOptionalHeader =
    offsetof(IMAGE_OPTIONAL_HEADER64, DataDirectory) + 2 * sizeof(IMAGE_DATA_DIRECTORY);

constexpr char kDamaged[] = "damaged: its header makes no sense";
constexpr char kCutOff[] = "cut off";

std::uint64_t SizeOf(HANDLE file) {
    LARGE_INTEGER size;
    return GetFileSizeEx(file, &size) ? static_cast<std::uint64_t>(size.QuadPart) : 0;
}

}  // namespace

PeFile::PeFile(HANDLE handle) : mHandle(handle), mSize(mHandle.IsOpen() ? SizeOf(handle) : 0) {}

bool PeFile::Read(void* buffer, std::size_t length, std::uint64_t offset) const {
    if (!mHandle.IsOpen() || offset > mSize || length > mSize - offset) return false;
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD count = 0;
    return ReadFile(mHandle.Get(), buffer, static_cast<DWORD>(length), &count, &place) && count == length;
}

std::string PeFile::ReadHeaders() {
    IMAGE_DOS_HEADER start;
    if (!Read(&start, sizeof(start), 0)) return kCutOff;
    // Where the headers begin; the one before them is for systems of long ago.
    const auto begin = static_cast<std::uint32_t>(start.e_lfanew);
    if (begin < sizeof(start)) return kDamaged;
    DWORD signature = 0;
    if (!Read(&signature, sizeof(signature), begin)) return kCutOff;
    if (signature != IMAGE_NT_SIGNATURE) return "not a shared library";
    const std::uint64_t fileHeader = std::uint64_t(begin) + sizeof(signature);
    if (!Read(&mFileHeader, sizeof(mFileHeader), fileHeader)) return kCutOff;
    if (mFileHeader.NumberOfSections == 0 || mFileHeader.NumberOfSections > kMaxSections) return kDamaged;

    const std::uint64_t optionalHeader = fileHeader + sizeof(mFileHeader);
    const std::size_t length = std::min<std::size_t>(mFileHeader.SizeOfOptionalHeader, sizeof(mOptionalHeader));
    if (length < sizeof(mOptionalHeader.Magic)) return kDamaged;
    if (!Read(&mOptionalHeader, length, optionalHeader)) return kCutOff;
    if (mOptionalHeader.Magic == IMAGE_NT_OPTIONAL_HDR64_MAGIC && length < kLeastOptionalHeader) return kDamaged;
    return ReadSections(optionalHeader + mFileHeader.SizeOfOptionalHeader) ? std::string() : kCutOff;
}

bool PeFile::ReadSections(std::uint64_t offset) {
    mSections.resize(mFileHeader.NumberOfSections);
    return Read(mSections.data(), mSections.size() * sizeof(IMAGE_SECTION_HEADER), offset);
}

bool PeFile::IsWhole() const {
    if (mOptionalHeader.SizeOfHeaders > mSize) return false;
    return std::all_of(mSections.begin(), mSections.end(), [this](const IMAGE_SECTION_HEADER& section) {
        const bool isInFile = section.PointerToRawData != 0 && section.SizeOfRawData != 0;
        return !isInFile ||
               (section.PointerToRawData <= mSize && section.SizeOfRawData <= mSize - section.PointerToRawData);
    });
}

std::vector<std::string> PeFile::ListNeededLibraries() const {
    std::vector<std::string> names;
    if (mOptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR64_MAGIC ||
        mOptionalHeader.NumberOfRvaAndSizes <= IMAGE_DIRECTORY_ENTRY_IMPORT)
        return names;
    std::uint64_t offset = 0;
    if (!ToOffset(mOptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress, offset)) return names;
    IMAGE_IMPORT_DESCRIPTOR needed;
    while (names.size() < kMaxNeededLibraries && Read(&needed, sizeof(needed), offset) && needed.Name != 0) {
        names.push_back(ReadName(needed.Name));
        offset += sizeof(needed);
    }
    return names;
}

bool PeFile::ToOffset(std::uint32_t address, std::uint64_t& offset) const {
    for (const IMAGE_SECTION_HEADER& section : mSections) {
        if (address < section.VirtualAddress || address - section.VirtualAddress >= section.SizeOfRawData) continue;
        offset = std::uint64_t(section.PointerToRawData) + (address - section.VirtualAddress);
        return true;
    }
    return false;
}

std::string PeFile::ReadName(std::uint32_t address) const {
    std::uint64_t offset = 0;
    if (!ToOffset(address, offset) || offset >= mSize) return std::string();
    std::string name(std::min<std::uint64_t>(kMaxNameLength, mSize - offset), '\0');
    if (!Read(name.data(), name.size(), offset)) return std::string();
    return name.substr(0, name.find('\0'));
}

}  // namespace zelaudiofilterhost
