#pragma once

#include <compare>
#include <cstddef>

#include <zelcore/ustring.h>

#include <zelaudiofilterhost/Export.h>
#include <zelaudiofilterhost/TechnologyType.h>

namespace zelaudiofilterhost {

using zelcore::ustring;

/// The identity of one plug-in: its format, the full path of its file or bundle, and, where it is only one of several
/// components of that file, which one. Values; any thread.
class ZELAUDIOFILTERHOST_API PluginLocator {
public:
    /// The empty locator, which names nothing.
    PluginLocator();
    /// A plug-in of that format in that file or bundle, and which of its components.
    PluginLocator(TechnologyType technology, const ustring& path, const ustring& subcomponent = ustring());

    /// The plug-in's format.
    TechnologyType GetTechnologyType() const { return mTechnology; }
    /// Full path of the file or bundle.
    const ustring& GetPath() const { return mPath; }
    /// Which of several components; empty where there is one.
    const ustring& GetSubcomponent() const { return mSubcomponent; }

    /// The one-line text form: "<technology number>|<subcomponent>|<path>", in which backslash, bar, line ends and NUL
    /// are written as backslash sequences. The empty locator gives an empty text.
    ustring ToString() const;
    /// Reads the text form. A text that is none (also one with an unknown technology number, an empty path, or more
    /// than kMaxTextLength code units) gives the empty locator.
    static PluginLocator FromString(const ustring& text);

    /// The longest text form, in code units.
    static constexpr std::size_t kMaxTextLength = 32768;

    /// Equal when they name the same plug-in, by the letter.
    bool operator==(const PluginLocator&) const = default;
    /// By format, then path, then component; an order for containers, not for people.
    auto operator<=>(const PluginLocator&) const = default;  // NOLINT(modernize-use-nullptr): misread by the checker

private:
    TechnologyType mTechnology;
    ustring mPath;
    ustring mSubcomponent;
};

}  // namespace zelaudiofilterhost
