#include "LibraryImage.h"

#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace zelaudiofilterhost {

namespace {

typedef ElfW(Ehdr) FileHeader;
typedef ElfW(Phdr) ProgramHeader;

constexpr unsigned char kOwnByteOrder = std::endian::native == std::endian::little ? ELFDATA2LSB : ELFDATA2MSB;
constexpr unsigned char kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
/// Libraries have about ten.
constexpr unsigned kMaxProgramHeaders = 4096;

class ImageFile {
public:
    explicit ImageFile(const std::string& path)
        : mDescriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY)) {}
    ~ImageFile() {
        if (mDescriptor >= 0) close(mDescriptor);
    }
    ImageFile(const ImageFile&) = delete;
    ImageFile& operator=(const ImageFile&) = delete;

    bool IsOpen() const { return mDescriptor >= 0; }
    bool Read(void* buffer, std::size_t length, std::uint64_t offset) const {
        return pread(mDescriptor, buffer, length, static_cast<off_t>(offset)) == static_cast<ssize_t>(length);
    }

private:
    int mDescriptor;
};

struct MachineName {
    unsigned machine;
    const char* name;
};

constexpr MachineName kMachineNames[] = {{EM_386, "32-bit Intel"}, {EM_X86_64, "x86-64"},      {EM_ARM, "32-bit ARM"},
                                         {EM_AARCH64, "AArch64"},  {EM_PPC, "PowerPC"},        {EM_PPC64, "POWER"},
                                         {EM_MIPS, "MIPS"},        {EM_S390, "S/390"},         {EM_SPARCV9, "SPARC"},
                                         {EM_RISCV, "RISC-V"},     {EM_LOONGARCH, "LoongArch"}};

std::string NameOfMachine(unsigned machine) {
    for (const MachineName& known : kMachineNames) {
        if (known.machine == machine) return known.name;
    }
    return "machine number " + std::to_string(machine);
}

/// What this process itself was built for: asked of the library that holds this code, as it lies in memory.
unsigned OwnMachine() {
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(&FindLoadObstacle), &info) == 0 || info.dli_fbase == nullptr)
        return EM_NONE;
    return static_cast<const FileHeader*>(info.dli_fbase)->e_machine;
}

std::string DescribeForeignFile(std::string_view begin) {
    if (begin.starts_with("MZ")) return "a Windows library";
    if (begin.starts_with("!<arch>")) return "a static library";
    constexpr std::string_view kMacMagics[] = {"\xCF\xFA\xED\xFE", "\xCE\xFA\xED\xFE", "\xCA\xFE\xBA\xBE"};
    for (const std::string_view magic : kMacMagics) {
        if (begin.starts_with(magic)) return "a macOS library";
    }
    return "not a shared library";
}

std::string JudgeMachine(const FileHeader& header) {
    const unsigned char fileClass = header.e_ident[EI_CLASS];
    const bool sameOrder = header.e_ident[EI_DATA] == kOwnByteOrder;
    const unsigned own = OwnMachine();
    const std::uint16_t swapped = static_cast<std::uint16_t>((header.e_machine << 8) | (header.e_machine >> 8));
    const unsigned machine = sameOrder ? header.e_machine : swapped;
    const bool sameFamily =
        machine == own || (machine == EM_386 && own == EM_X86_64) || (machine == EM_X86_64 && own == EM_386);
    if (sameFamily && fileClass != kOwnClass) return fileClass == ELFCLASS32 ? "a 32-bit library" : "a 64-bit library";
    if (machine != own || !sameOrder) return "built for another processor (" + NameOfMachine(machine) + ")";
    return std::string();
}

/// True when every part that the loader would map is there.
bool IsWhole(const ImageFile& file, const FileHeader& header, std::uint64_t size) {
    const std::uint64_t tableLength = std::uint64_t(header.e_phnum) * sizeof(ProgramHeader);
    if (header.e_phoff > size || tableLength > size - header.e_phoff) return false;
    std::vector<ProgramHeader> parts(header.e_phnum);
    if (!file.Read(parts.data(), tableLength, header.e_phoff)) return false;
    for (const ProgramHeader& part : parts) {
        if (part.p_type != PT_LOAD && part.p_type != PT_DYNAMIC) continue;
        if (part.p_offset > size || part.p_filesz > size - part.p_offset) return false;
    }
    return true;
}

std::string JudgeHeader(const ImageFile& file, std::uint64_t size) {
    std::array<char, sizeof(FileHeader)> bytes = {};
    const std::size_t available = size < bytes.size() ? static_cast<std::size_t>(size) : bytes.size();
    if (!file.Read(bytes.data(), available, 0)) return "cannot be read";
    if (!std::string_view(bytes.data(), available).starts_with(std::string_view(ELFMAG, SELFMAG))) {
        return DescribeForeignFile(std::string_view(bytes.data(), available));
    }
    FileHeader header;
    std::memcpy(&header, bytes.data(), sizeof(header));
    // The machine stands in the first bytes, in the same place for all of them, so it can be told of a stump as well.
    if (available < offsetof(FileHeader, e_version)) return "cut off";
    const std::string foreign = JudgeMachine(header);
    if (!foreign.empty()) return foreign;
    if (available < bytes.size()) return "cut off";
    if (header.e_type != ET_DYN) return "not a shared library";
    if (header.e_phentsize != sizeof(ProgramHeader) || header.e_phnum == 0 || header.e_phnum > kMaxProgramHeaders) {
        return "damaged: its header makes no sense";
    }
    return IsWhole(file, header, size) ? std::string() : "cut off";
}

}  // namespace

std::string FindLoadObstacle(const std::string& path) {
    // Asked before opening, because opening a device can do things.
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        return errno == EACCES ? "may not be read" : "there is no such file";
    }
    if (S_ISDIR(status.st_mode)) return "is a folder, not a file";
    if (!S_ISREG(status.st_mode)) return "is no regular file";
    if (status.st_size == 0) return "empty file";
    const ImageFile file(path);
    if (!file.IsOpen()) return "may not be read";
    return JudgeHeader(file, static_cast<std::uint64_t>(status.st_size));
}

}  // namespace zelaudiofilterhost
