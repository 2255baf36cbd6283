#pragma once

#include <functional>
#include <string>

namespace zeltests {

/// Something that this test program does in a second process of itself. An object of this class stands at namespace
/// scope; where the program was started for its role, its constructor acts and the process ends without a test.
class ChildRole {
public:
    /// The name is unique in the program.
    ChildRole(const std::string& name, const std::function<void(const std::string& argument)>& act);

    /// A running child; ended with the object, however far it is.
    class Process {
    public:
        explicit Process(void* handle) : mHandle(handle) {}
        ~Process();
        Process(const Process&) = delete;
        Process& operator=(const Process&) = delete;

        unsigned long GetId() const;
        void* Get() const { return mHandle; }

    private:
        void* mHandle;
    };
    /// Starts the program again in this role. With `inherits` it gets all handles that can be had.
    Process Start(const std::string& argument, bool inherits = false) const;

private:
    std::string mName;
};

}  // namespace zeltests
