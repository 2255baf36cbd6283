#include "DescribeForTest.h"

#include <zelcore/Utf.h>

using namespace zelaudiofilterhost;

namespace zeltests {

namespace {

PluginDescription Describe(TechnologyType technology, const std::string& path, const std::string& subcomponent) {
    return DescribePlugin(
        PluginLocator(technology, zelcore::utility::UTF8to16(path), zelcore::utility::UTF8to16(subcomponent)));
}

std::string ReasonOf(TechnologyType technology, const std::string& path) {
    try {
        Describe(technology, path, "");
        return "described";
    } catch (const PluginLoadError& error) {
        return error.what();
    }
}

}  // namespace

std::string TestPlugin(const std::string& name) { return std::string(ZEL_TESTPLUGINS_DIR "/") + name; }

PluginDescription DescribeVst(const std::string& path, const std::string& subcomponent) {
    return Describe(kTechnologyVST, path, subcomponent);
}

PluginDescription DescribeVst3(const std::string& path, const std::string& subcomponent) {
    return Describe(kTechnologyVST3, path, subcomponent);
}

std::string ReasonOfVst(const std::string& path) { return ReasonOf(kTechnologyVST, path); }

std::string ReasonOfVst3(const std::string& path) { return ReasonOf(kTechnologyVST3, path); }

bool IsDescribed(const std::string& name) {
    const bool isVst3 = name.starts_with("vst3/");
    return (isVst3 ? ReasonOfVst3(TestPlugin(name)) : ReasonOfVst(TestPlugin(name))) == "described";
}

std::string Text(const zelcore::ustring& text) {
    const zelcore::utf8string bytes = zelcore::utility::UTF16to8(text);
    return std::string(bytes.begin(), bytes.end());
}

}  // namespace zeltests
