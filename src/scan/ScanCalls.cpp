#include "scan/ScanCalls.h"

#include <algorithm>

#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/Serialization.h>
#include <zelcore/Utf.h>

namespace zelaudiofilterhostui {

namespace protocol = zelaudiofilterhost::scanprotocol;
using zelaudiofilterhost::PluginLocator;
using zelcore::ustring;
using zelcore::utf8string;
using zelcore::serialization::AppendToArray;
using zelcore::serialization::Array;
using zelcore::serialization::BuildCall;
using zelcore::serialization::GetInObject;
using zelcore::utility::UTF16to8;
using zelcore::utility::UTF8to16;

namespace {

unsigned ReadCount(const ScanCalls::Variant& object, const char* key) {
    int count = 0;
    GetInObject(object, key, count);
    return static_cast<unsigned>(std::max(count, 0));
}

}  // namespace

ScanCalls::Variant ScanCalls::Connect(const ustring& registryPath, const ustring& bannedPath,
                                      const ustring& permanentBannedPath, const ustring& scanFilePath) {
    boost::any parameters = Array();
    for (const ustring* path : {&registryPath, &bannedPath, &permanentBannedPath, &scanFilePath})
        AppendToArray(parameters, UTF16to8(*path));
    return BuildCall(protocol::kConnect, parameters);
}

ScanCalls::Variant ScanCalls::BeginScanForPlugins(const std::vector<PluginLocator>& locators) {
    boost::any texts = Array();
    for (const PluginLocator& locator : locators) AppendToArray(texts, UTF16to8(locator.ToString()));
    boost::any parameters = Array();
    AppendToArray(parameters, texts);
    return BuildCall(protocol::kBeginScanForPlugins, parameters);
}

ScanCalls::Variant ScanCalls::GetScanInfo() { return BuildCall(protocol::kGetScanInfo, Array()); }

ScanCalls::Variant ScanCalls::ScanOneEntity() { return BuildCall(protocol::kScanOneEntity, Array()); }

ScanInfo ScanCalls::ReadScanInfo(const Variant& reply) {
    const Variant value = zelcore::serialization::GetVariantInObject(reply, "value");
    ScanInfo info;
    utf8string text;
    if (GetInObject(value, protocol::kKeyLocator, text)) info.locator = PluginLocator::FromString(UTF8to16(text));
    text.clear();
    if (GetInObject(value, protocol::kKeySubcomponent, text)) info.subcomponent = UTF8to16(text);
    info.progress = ReadCount(value, protocol::kKeyProgress);
    info.total = ReadCount(value, protocol::kKeyTotal);
    GetInObject(value, protocol::kKeyContinue, info.goOn);
    return info;
}

}  // namespace zelaudiofilterhostui
