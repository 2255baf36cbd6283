#include "manager/PluginListEntry.h"

#include <algorithm>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/File.h>
#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>

namespace zelaudiofilterhostui {

using zelaudiofilterhost::PluginModuleInfoManager;
using zelcore::ustring;
using zelcore::config::Localize;
using zelcore::utility::AsciiToUTF16;

namespace {

ustring::value_type Fold(ustring::value_type unit) {
    return unit >= 'A' && unit <= 'Z' ? static_cast<ustring::value_type>(unit - 'A' + 'a') : unit;
}

}  // namespace

ustring PluginListEntry::GetName() const {
    return mInfo ? mInfo->GetName() : zelcore::filesupport::File(GetPath()).GetTitle();
}

ustring PluginListEntry::GetType() const {
    switch (GetLocator().GetTechnologyType()) {
        case zelaudiofilterhost::kTechnologyVST:
            return AsciiToUTF16("VST");
        case zelaudiofilterhost::kTechnologyVST3:
            return AsciiToUTF16("VST3");
        case zelaudiofilterhost::kTechnologyAU:
            return AsciiToUTF16("AU");
        default:
            return ustring();
    }
}

ustring PluginListEntry::GetStatus() const {
    return mInfo ? Localize("$$$/AudioPluginManager/Working=Working")
                 : Localize("$$$/AudioPluginManager/Failed=Not Working");
}

ustring PluginListEntry::GetPath() const {
    return PluginModuleInfoManager::GetInstance().GetDisplayStringForLocator(GetLocator());
}

bool PluginListEntry::Passes(const ustring& text) const {
    if (text.empty()) return true;
    if (mInfo && ContainsIgnoringAsciiCase(mInfo->GetName(), text)) return true;
    const ustring path = GetPath();
    if (!mInfo && ContainsIgnoringAsciiCase(zelcore::filesupport::File(path).GetTitle(), text)) return true;
    return ContainsIgnoringAsciiCase(path, text);
}

bool ContainsIgnoringAsciiCase(const ustring& text, const ustring& part) {
    const auto found = std::search(text.begin(), text.end(), part.begin(), part.end(),
                                   [](ustring::value_type a, ustring::value_type b) { return Fold(a) == Fold(b); });
    return found != text.end() || part.empty();
}

}  // namespace zelaudiofilterhostui
