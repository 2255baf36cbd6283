#include "Environment.h"

#include <cstdlib>

#include <zelcore/Utf.h>

namespace zeltests {

void SetVariable(const std::string& name, const char* value) {
    const auto toWide = [](const std::string& text) {
        const zelcore::ustring units = zelcore::utility::UTF8to16(text);
        return std::wstring(units.begin(), units.end());
    };
    // An empty one is none.
    _wputenv_s(toWide(name).c_str(), toWide(value != nullptr ? value : "").c_str());
}

}  // namespace zeltests
