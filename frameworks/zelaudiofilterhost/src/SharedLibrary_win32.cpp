#include "SharedLibrary.h"

#include <windows.h>

#include <algorithm>

#include <zelaudiofilterhost/PluginDescription.h>

#include "LibraryImage.h"
#include "PeFile_win32.h"
#include "PluginCall.h"
#include "WidePath_win32.h"

namespace zelaudiofilterhost {

namespace {

constexpr DWORD kMaxMessage = 512;

/// Keeps the system from asking people about a file that it cannot load.
class QuietErrors {
public:
    QuietErrors() { SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &mBefore); }
    ~QuietErrors() { SetThreadErrorMode(mBefore, nullptr); }
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

private:
    DWORD mBefore = 0;
};

std::string MessageOf(DWORD error) {
    wchar_t text[kMaxMessage];
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                       nullptr, error, 0, text, kMaxMessage, nullptr);
    std::string message = ToUtf8(std::wstring_view(text, length));
    while (!message.empty() && (message.back() == ' ' || message.back() == '.')) message.pop_back();
    const std::string number = "error " + std::to_string(error);
    return message.empty() ? number : message + " (" + number + ")";
}

bool IsFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// Whether the loader would find a library that a module in `folder` needs.
bool IsInstalled(const std::wstring& folder, const std::wstring& name) {
    // Names that the system itself stands for; no file is called so.
    if (name.starts_with(L"api-ms-") || name.starts_with(L"ext-ms-")) return true;
    return GetModuleHandleW(name.c_str()) != nullptr || IsFile(folder + name) ||
           SearchPathW(nullptr, name.c_str(), nullptr, 0, nullptr, nullptr) != 0;
}

/// The loader says that one is missing, and not which.
std::string ExplainMissingLibrary(const std::wstring& path) {
    PeFile file(CreateFileW(path.c_str(), GENERIC_READ, kShareEverything, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                            nullptr));
    if (file.ReadHeaders().empty()) {
        const std::wstring folder = path.substr(0, path.rfind(L'\\') + 1);
        for (const std::string& name : file.ListNeededLibraries()) {
            if (!name.empty() && !IsInstalled(folder, ToWide(name))) {
                return "needs the library " + name + ", which is not installed";
            }
        }
    }
    return "needs a library that needs another one, which is not installed";
}

std::string Explain(DWORD error, const std::wstring& path) {
    switch (error) {
        case ERROR_MOD_NOT_FOUND:
            return ExplainMissingLibrary(path);
        case ERROR_PROC_NOT_FOUND:
            return "needs a function that the installed libraries do not have";
        case ERROR_DLL_INIT_FAILED:
            return "refused to be loaded";
        default:
            return "could not be loaded: " + MessageOf(error);
    }
}

HMODULE ToModule(void* handle) { return static_cast<HMODULE>(handle); }

/// Whether the address is code of that very library, and no variable or something that it has from another one.
bool IsOwnCode(HMODULE module, FARPROC address) {
    MEMORY_BASIC_INFORMATION memory;
    if (VirtualQuery(reinterpret_cast<const void*>(address), &memory, sizeof(memory)) == 0) return false;
    constexpr DWORD kExecutable = PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    return memory.AllocationBase == module && (memory.Protect & kExecutable) != 0;
}

}  // namespace

SharedLibrary::SharedLibrary(const std::string& path) : mPath(path), mHandle(nullptr) {
    std::wstring wide = ToWide(path);
    // A name without folders would make the loader search for it; one with a NUL would name another file.
    if (!IsFullWidePath(wide)) throw PluginLoadError("there is no such file");
    const std::string obstacle = FindLoadObstacle(path);
    if (!obstacle.empty()) throw PluginLoadError(obstacle);
    // The loader looks for what a module needs beside the module only when its path has the system's separators.
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    DWORD error = 0;
    mHandle = CallPlugin("while it was loaded", [&] {
        const QuietErrors quiet;
        const HMODULE module = LoadLibraryExW(wide.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
        error = GetLastError();
        return module;
    });
    if (mHandle == nullptr) throw PluginLoadError(PrintableText(Explain(error, wide)));
}

SharedLibrary::~SharedLibrary() {
    CallPluginQuietly([this] { FreeLibrary(ToModule(mHandle)); });
}

SharedLibrary::Function SharedLibrary::FindFunction(const char* name) const {
    const FARPROC address = GetProcAddress(ToModule(mHandle), name);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

SharedLibrary::Function SharedLibrary::FindOwnFunction(const char* name) const {
    const FARPROC address = GetProcAddress(ToModule(mHandle), name);
    return address != nullptr && IsOwnCode(ToModule(mHandle), address) ? FindFunction(name) : nullptr;
}

}  // namespace zelaudiofilterhost
