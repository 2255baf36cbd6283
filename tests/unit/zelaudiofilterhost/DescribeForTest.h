#pragma once

#include <string>

#include <zelaudiofilterhost/PluginDescription.h>

namespace zeltests {

/// Full path of a test plug-in: TestPlugin("vst/good/zel_gain" ZEL_MODULE).
std::string TestPlugin(const std::string& name);

zelaudiofilterhost::PluginDescription DescribeVst(const std::string& path, const std::string& subcomponent = "");
zelaudiofilterhost::PluginDescription DescribeVst3(const std::string& path, const std::string& subcomponent = "");

/// Why it is no plug-in; "described" when it is one.
std::string ReasonOfVst(const std::string& path);
std::string ReasonOfVst3(const std::string& path);

/// The same of a test plug-in, by its name and whatever its format.
bool IsDescribed(const std::string& name);

/// UTF-8 for comparing.
std::string Text(const zelcore::ustring& text);

}  // namespace zeltests
