#include "RenderOptions.h"

#include <charconv>
#include <cmath>

#include "Arguments.h"
#include "AudioFileFormat.h"
#include "ChannelLayoutName.h"
#include "ChannelMapText.h"
#include "UsageError.h"

namespace tessaly {

namespace {

/// False when the whole of `text` is no such number.
template <typename Number>
bool ReadNumber(const std::string& text, Number least, Number most, Number& number) {
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    // What is no number is in no range.
    return result.ec == std::errc() && result.ptr == end && number >= least && number <= most;
}

RenderOptions::Setting ParseSetting(const std::string& text) {
    // Names may have that sign in them, values cannot.
    const std::size_t sign = text.rfind('=');
    RenderOptions::Setting setting;
    if (sign == std::string::npos || sign == 0 || !ReadNumber(text.substr(sign + 1), 0.0f, 1.0f, setting.value))
        throw UsageError("'" + text + "' sets no parameter: write its number or name, = and a value from 0 to 1");
    setting.parameter = text.substr(0, sign);
    return setting;
}

void ParseMap(RenderOptions::Effect& effect, const std::string& text) {
    if (text.starts_with("in="))
        effect.inputMap = ChannelMapText::Parse(text.substr(3));
    else if (text.starts_with("out="))
        effect.outputMap = ChannelMapText::Parse(text.substr(4));
    else
        throw UsageError("'" + text + "' is no map: write in=LIST or out=LIST");
}

}  // namespace

bool RenderOptions::ParseOption(const std::string& option, Arguments& arguments) {
    if (option == "--effect") {
        effects.emplace_back().plugin = arguments.TakeValueOf(option);
    } else if (option == "--track") {
        track = ChannelLayoutName::Parse(arguments.TakeValueOf(option));
    } else if (option == "--side-chain") {
        sideChain = arguments.TakeValueOf(option);
    } else if (option == "--block") {
        if (!ReadNumber(arguments.TakeValueOf(option), 1, kMaxBlock, block))
            throw UsageError("a block has 1 to " + std::to_string(kMaxBlock) + " frames");
    } else if (option == "--tail") {
        if (!ReadNumber(arguments.TakeValueOf(option), 0.0, kMaxTail, tail))
            throw UsageError("a tail has 0 to " + std::to_string(std::lround(kMaxTail)) + " seconds");
    } else {
        return ParseEffectOption(option, arguments);
    }
    return true;
}

bool RenderOptions::ParseEffectOption(const std::string& option, Arguments& arguments) {
    if (option != "--component" && option != "--map" && option != "--set") return false;
    if (effects.empty()) throw UsageError("'" + option + "' belongs behind the --effect that it is for");
    const std::string value = arguments.TakeValueOf(option);
    if (option == "--component")
        effects.back().component = value;
    else if (option == "--map")
        ParseMap(effects.back(), value);
    else
        effects.back().settings.push_back(ParseSetting(value));
    return true;
}

bool RenderOptions::ParsePlainArgument(const std::string& argument) {
    for (std::string* const file : {&input, &output}) {
        if (!file->empty()) continue;
        *file = argument;
        return true;
    }
    return false;
}

void RenderOptions::CheckComplete() const {
    if (input.empty()) throw UsageError("say which file to render");
    if (output.empty()) throw UsageError("say which file to write");
    if (AudioFileFormat::FindForPath(output) == nullptr)
        throw UsageError("what kind of file '" + output +
                         "' is to be is told by its end: " + AudioFileFormat::ListExtensions());
    if (effects.empty()) throw UsageError("say with --effect what to render it with");
}

}  // namespace tessaly
