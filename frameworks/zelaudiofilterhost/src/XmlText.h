#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <zelcore/ustring.h>

namespace zelaudiofilterhost {

/// Texts as attributes of the XML files of this library. XML has no way to write control characters, lone surrogates
/// and the like, not even as references, but paths and what plug-ins say contain them: those code units are written as
/// \uXXXX and a backslash as two, so that every text comes back as it was.

/// Appends ` name="value"`; the value is all on one line.
void AppendAttribute(std::string& out, std::string_view name, const zelcore::ustring& value);
void AppendAttribute(std::string& out, std::string_view name, std::int64_t value);
void AppendAttribute(std::string& out, std::string_view name, std::uint64_t value);

/// The text of an attribute's value from which the XML reader has already taken XML's own escapes. A backslash sequence
/// that is none stands for itself.
zelcore::ustring DecodeAttribute(std::string_view value);

/// Reads a whole decimal number; false, and the number unchanged, when the text is anything else or out of range.
bool ParseNumber(std::string_view text, std::int64_t& number);
bool ParseNumber(std::string_view text, std::uint64_t& number);

}  // namespace zelaudiofilterhost
