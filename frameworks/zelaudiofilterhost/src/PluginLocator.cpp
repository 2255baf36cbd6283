#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

namespace {

constexpr ustring::value_type kEscape = '\\';
constexpr ustring::value_type kSeparator = '|';

/// The letter behind the backslash for a code unit that cannot stand for itself, or 0 for one that can.
ustring::value_type EscapeLetter(ustring::value_type unit) {
    switch (unit) {
        case kEscape:
        case kSeparator:
            return unit;
        case '\n':
            return 'n';
        case '\r':
            return 'r';
        case 0:
            return '0';
        default:
            return 0;
    }
}

/// The opposite of EscapeLetter; false for a letter that stands for nothing.
bool UnescapeLetter(ustring::value_type letter, ustring::value_type& unit) {
    for (const ustring::value_type candidate :
         {kEscape, kSeparator, ustring::value_type('\n'), ustring::value_type('\r'), ustring::value_type(0)}) {
        if (EscapeLetter(candidate) != letter) continue;
        unit = candidate;
        return true;
    }
    return false;
}

void AppendEscaped(ustring& out, const ustring& text) {
    for (const ustring::value_type unit : text) {
        const ustring::value_type letter = EscapeLetter(unit);
        if (letter != 0) out.push_back(kEscape);
        out.push_back(letter != 0 ? letter : unit);
    }
}

/// Reads one part, up to a bar or the end, and leaves `position` behind it. False when it holds what no part holds.
bool ReadPart(const ustring& text, std::size_t& position, ustring& part) {
    for (; position < text.size() && text[position] != kSeparator; ++position) {
        ustring::value_type unit = text[position];
        if (unit == kEscape) {
            if (++position == text.size() || !UnescapeLetter(text[position], unit)) return false;
        } else if (EscapeLetter(unit) != 0) {
            return false;
        }
        part.push_back(unit);
    }
    return true;
}

bool IsKnownTechnology(int number) { return number >= kTechnologyBuiltIn && number <= kTechnologyAU; }

}  // namespace

// Who takes its address on Windows wants it to be in the library.
constexpr std::size_t PluginLocator::kMaxTextLength;

PluginLocator::PluginLocator() : mTechnology(kTechnologyNone) {}

PluginLocator::PluginLocator(TechnologyType technology, const ustring& path, const ustring& subcomponent)
    : mTechnology(technology), mPath(path), mSubcomponent(subcomponent) {}

ustring PluginLocator::ToString() const {
    if (*this == PluginLocator()) return ustring();
    ustring text;
    for (const char digit : std::to_string(static_cast<int>(mTechnology))) {
        text.push_back(static_cast<ustring::value_type>(digit));
    }
    text.push_back(kSeparator);
    AppendEscaped(text, mSubcomponent);
    text.push_back(kSeparator);
    AppendEscaped(text, mPath);
    return text;
}

PluginLocator PluginLocator::FromString(const ustring& text) {
    constexpr std::size_t kShortest = 4;  // a digit, two bars and a path
    if (text.size() < kShortest || text.size() > kMaxTextLength || text[1] != kSeparator) return PluginLocator();
    const int number = text[0] - '0';
    if (!IsKnownTechnology(number)) return PluginLocator();

    ustring subcomponent, path;
    std::size_t position = 2;
    if (!ReadPart(text, position, subcomponent) || position == text.size()) return PluginLocator();
    ++position;
    if (!ReadPart(text, position, path) || position != text.size() || path.empty()) return PluginLocator();
    return PluginLocator(static_cast<TechnologyType>(number), path, subcomponent);
}

}  // namespace zelaudiofilterhost
