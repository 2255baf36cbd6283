#include "SharedLibrary.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <algorithm>
#include <string_view>

#include <zelaudiofilterhost/PluginDescription.h>

#include "LibraryImage.h"
#include "PluginCall.h"

namespace zelaudiofilterhost {

namespace {

/// The text between `before` and `after`, or an empty one.
std::string_view Between(std::string_view text, std::string_view before, std::string_view after) {
    const std::size_t start = text.find(before);
    if (start == std::string_view::npos) return {};
    text.remove_prefix(start + before.size());
    const std::size_t end = text.find(after);
    return end == std::string_view::npos ? std::string_view() : text.substr(0, end);
}

/// The loader names the library or symbol that is missing, in sentences of its own.
std::string ExplainLoaderMessage(std::string_view message, std::string_view path) {
    const std::string_view library = message.substr(0, message.find(": "));
    if (message.find(": cannot open shared object file: No such file") != std::string_view::npos && library != path) {
        return "needs the library " + std::string(library) + ", which is not installed";
    }
    const std::string_view version = Between(message, "version `", "' not found");
    if (!version.empty()) return "needs a newer system: it asks for " + std::string(version);
    const std::size_t symbol = message.find("undefined symbol: ");
    if (symbol != std::string_view::npos) {
        const std::string_view rest = message.substr(symbol + std::string_view("undefined symbol: ").size());
        return "needs the function " + std::string(rest.substr(0, rest.find_first_of(", "))) +
               ", which no installed library has";
    }
    if (message.find("position-independent executable") != std::string_view::npos) return "is a program, not a plug-in";
    if (message.starts_with(path)) message.remove_prefix(std::min(message.size(), path.size() + 2));
    return "could not be loaded: " + std::string(message);
}

void* LoadModule(const std::string& path) {
    return CallPlugin("while it was loaded", [&path] { return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); });
}

}  // namespace

SharedLibrary::SharedLibrary(const std::string& path) : mPath(path), mHandle(nullptr) {
    // A name without folders would make the loader search for it; one with a NUL would name another file.
    if (path.empty() || path.front() != '/' || path.find('\0') != std::string::npos) {
        throw PluginLoadError("there is no such file");
    }
    const std::string obstacle = FindLoadObstacle(path);
    if (!obstacle.empty()) throw PluginLoadError(obstacle);
    mHandle = LoadModule(path);
    if (mHandle == nullptr) {
        const char* const message = dlerror();
        throw PluginLoadError(PrintableText(ExplainLoaderMessage(message ? message : "no reason given", path)));
    }
}

SharedLibrary::~SharedLibrary() {
    CallPluginQuietly([this] { dlclose(mHandle); });
}

SharedLibrary::Function SharedLibrary::FindFunction(const char* name) const {
    return reinterpret_cast<Function>(dlsym(mHandle, name));
}

SharedLibrary::Function SharedLibrary::FindOwnFunction(const char* name) const {
    void* const address = dlsym(mHandle, name);
    if (address == nullptr) return nullptr;
    Dl_info info = {};
    ElfW(Sym)* symbol = nullptr;
    if (dladdr1(address, &info, reinterpret_cast<void**>(&symbol), RTLD_DL_SYMENT) == 0 || symbol == nullptr) {
        return nullptr;
    }
    link_map* owner = nullptr;
    link_map* own = nullptr;
    dladdr1(address, &info, reinterpret_cast<void**>(&owner), RTLD_DL_LINKMAP);
    dlinfo(mHandle, RTLD_DI_LINKMAP, &own);
    // A variable has the same kind of address as a function; calling one would end the process.
    const bool isFunction = (symbol->st_info & 0xF) == STT_FUNC || (symbol->st_info & 0xF) == STT_GNU_IFUNC;
    return owner == own && isFunction ? reinterpret_cast<Function>(address) : nullptr;
}

}  // namespace zelaudiofilterhost
