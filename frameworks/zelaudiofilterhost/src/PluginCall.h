#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>

#include <zelaudiofilterhost/PluginDescription.h>

namespace zelaudiofilterhost {

/// A text from outside as part of a reason: its printable ASCII characters, the others as '?', cut at 200.
std::string PrintableText(std::string_view text);
/// The same for a text of unknown length, which may be null.
std::string PrintableText(const char* text);

/// A plug-in that wanted memory and got none, which says less about it than about the moment.
class PluginMemoryError : public PluginLoadError {
public:
    using PluginLoadError::PluginLoadError;
};

/// Runs code that calls into a plug-in. An exception of the plug-in's becomes a PluginLoadError that says `when` it was
/// thrown ("while it was opened"), and is gone before this returns: its destructor may be code of the plug-in's module.
template <typename Function>
auto CallPlugin(const char* when, Function function) -> decltype(function()) {
    try {
        return function();
    } catch (const PluginLoadError&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw PluginMemoryError(std::string("got no memory ") + when);
    } catch (const std::exception& error) {
        throw PluginLoadError(std::string("threw an exception ") + when + ": " + PrintableText(error.what()));
    } catch (...) {
        throw PluginLoadError(std::string("threw an exception ") + when);
    }
}

/// The same on the way out, where nobody is left to be told.
template <typename Function>
void CallPluginQuietly(Function function) noexcept {
    try {
        function();
    } catch (...) {
    }
}

}  // namespace zelaudiofilterhost
