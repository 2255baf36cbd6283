#pragma once

#include <string>

#include <zelcore/SmallBlockAllocator.h>

namespace zelcore {

/// The system's text: a string of UTF-16 code units. Nothing promises that it is well formed; the conversions of
/// Utf.h replace what is not. Compares code unit by code unit, as unsigned values.
typedef std::basic_string<unsigned short, std::char_traits<unsigned short>,
                          utility::SmallBlockAllocator::STLAllocator<unsigned short>>
    ustring;

/// Bytes that hold UTF-8, as files and remote calls carry it.
typedef std::basic_string<char, std::char_traits<char>, utility::SmallBlockAllocator::STLAllocator<char>> utf8string;

}  // namespace zelcore
