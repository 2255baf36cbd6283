#pragma once

#include <string>

namespace zelaudiofilterhost {

/// A plug-in's library, loaded while the object lives. Main thread.
class SharedLibrary {
public:
    typedef void (*Function)();

    /// Loads the file at the full path `path` (UTF-8). Looks at it first, so that nothing that is not a whole library
    /// for this machine reaches the loader. Throws PluginLoadError with the reason.
    explicit SharedLibrary(const std::string& path);
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    const std::string& GetPath() const { return mPath; }
    /// What the system knows the loaded library by.
    void* GetHandle() const { return mHandle; }

    /// A function of that name from the library or those that it needs, or null.
    Function FindFunction(const char* name) const;
    /// The same, but only when it is a function and this very library is the one that exports it.
    Function FindOwnFunction(const char* name) const;

private:
    std::string mPath;
    void* mHandle;
};

}  // namespace zelaudiofilterhost
