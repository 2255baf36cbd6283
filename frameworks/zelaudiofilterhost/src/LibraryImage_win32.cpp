#include "LibraryImage.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "PeFile_win32.h"
#include "WidePath_win32.h"

namespace zelaudiofilterhost {

namespace {

struct MachineName {
    unsigned machine;
    const char* name;
};

constexpr MachineName kMachineNames[] = {{IMAGE_FILE_MACHINE_I386, "32-bit Intel"},
                                         {IMAGE_FILE_MACHINE_AMD64, "x86-64"},
                                         {IMAGE_FILE_MACHINE_ARMNT, "32-bit ARM"},
                                         {IMAGE_FILE_MACHINE_ARM64, "AArch64"},
                                         {IMAGE_FILE_MACHINE_IA64, "Itanium"}};

std::string NameOfMachine(unsigned machine) {
    for (const MachineName& known : kMachineNames) {
        if (known.machine == machine) return known.name;
    }
    return "machine number " + std::to_string(machine);
}

/// What this process itself was built for: asked of the library that holds this code, as it lies in memory.
unsigned OwnMachine() {
    HMODULE own = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&FindLoadObstacle), &own))
        return IMAGE_FILE_MACHINE_UNKNOWN;
    const char* const begin = reinterpret_cast<const char*>(own);
    const auto* const start = reinterpret_cast<const IMAGE_DOS_HEADER*>(begin);
    return reinterpret_cast<const IMAGE_NT_HEADERS*>(begin + start->e_lfanew)->FileHeader.Machine;
}

std::string DescribeForeignFile(std::string_view begin) {
    if (begin.starts_with("\x7F"
                          "ELF"))
        return "a Linux library";
    if (begin.starts_with("!<arch>")) return "a static library";
    constexpr std::string_view kMacMagics[] = {"\xCF\xFA\xED\xFE", "\xCE\xFA\xED\xFE", "\xCA\xFE\xBA\xBE"};
    for (const std::string_view magic : kMacMagics) {
        if (begin.starts_with(magic)) return "a macOS library";
    }
    return "not a shared library";
}

std::string JudgeMachine(unsigned machine) {
    const unsigned own = OwnMachine();
    if (machine == own) return std::string();
    if (machine == IMAGE_FILE_MACHINE_I386 && own == IMAGE_FILE_MACHINE_AMD64) return "a 32-bit library";
    if (machine == IMAGE_FILE_MACHINE_AMD64 && own == IMAGE_FILE_MACHINE_I386) return "a 64-bit library";
    return "built for another processor (" + NameOfMachine(machine) + ")";
}

std::string JudgeHeaders(HANDLE handle) {
    PeFile file(handle);
    std::array<char, 8> bytes = {};
    const std::size_t available = std::min<std::uint64_t>(file.GetSize(), bytes.size());
    if (available == 0) return "empty file";
    if (!file.Read(bytes.data(), available, 0)) return "cannot be read";
    const std::string_view begin(bytes.data(), available);
    if (!begin.starts_with("MZ")) return DescribeForeignFile(begin);
    const std::string flaw = file.ReadHeaders();
    // The machine stands in the first of the headers, so it can be told of many a stump as well.
    const IMAGE_FILE_HEADER& header = file.GetFileHeader();
    const std::string foreign = header.NumberOfSections != 0 ? JudgeMachine(header.Machine) : std::string();
    if (!foreign.empty()) return foreign;
    if (!flaw.empty()) return flaw;
    if ((header.Characteristics & IMAGE_FILE_EXECUTABLE_IMAGE) == 0) return "not a shared library";
    if ((header.Characteristics & IMAGE_FILE_DLL) == 0) return "is a program, not a plug-in";
    return file.IsWhole() ? std::string() : "cut off";
}

}  // namespace

std::string FindLoadObstacle(const std::string& path) {
    const std::wstring wide = ToWide(path);
    // Asked before opening, because opening a device can do things. The system has a prefix for them.
    if (wide.starts_with(L"\\\\.\\")) return "is no regular file";
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return GetLastError() == ERROR_ACCESS_DENIED ? "may not be read" : "there is no such file";
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return "is a folder, not a file";
    if ((attributes & FILE_ATTRIBUTE_DEVICE) != 0) return "is no regular file";
    const HANDLE file = CreateFileW(wide.c_str(), GENERIC_READ, kShareEverything, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "may not be read";
    if (!IsFileOnDisk(file)) {
        CloseHandle(file);
        return "is no regular file";
    }
    return JudgeHeaders(file);
}

}  // namespace zelaudiofilterhost
