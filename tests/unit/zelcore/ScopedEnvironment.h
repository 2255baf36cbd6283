#pragma once

#include <cstdlib>
#include <string>

#include "support/Environment.h"

namespace zeltests {

/// Sets an environment variable, or takes it away (null), while the object lives.
class ScopedEnvironment {
public:
    ScopedEnvironment(const char* name, const char* value) : mName(name) {
        const char* const before = std::getenv(name);
        mWasSet = before != nullptr;
        if (before) mBefore = before;
        Set(value);
    }
    ~ScopedEnvironment() { Set(mWasSet ? mBefore.c_str() : nullptr); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void Set(const char* value) { SetVariable(mName, value); }

    std::string mName;
    std::string mBefore;
    bool mWasSet = false;
};

}  // namespace zeltests
