#include "Protocol.h"

#include <string_view>
#include <utility>

#include <boost/cstdint.hpp>
#include <boost/make_shared.hpp>

#include <zeltransport/Session.h>

namespace zelmarshal {

using zelcore::utf8string;
using zelcore::serialization::Object;
using zelcore::serialization::Variant;

namespace {

// Error texts come from exceptions of whatever a method calls; one must not be what makes a reply too long.
constexpr std::size_t kMaxErrorText = 64 * 1024;

}  // namespace

Variant ReadMessage(const char* bytes, std::size_t size) {
    return MakeVariant(zelcore::serialization::FromJson(std::string_view(bytes, size)));
}

bool IsOfThisVersion(const Variant& message) {
    utf8string version;
    return zelcore::serialization::GetInObject(message, kKeyVersion, version) && version == kVersion;
}

std::string WriteMessage(Object message) {
    message[kKeyVersion] = MakeText(kVersion);
    std::string json = zelcore::serialization::ToJson(boost::any(std::move(message)));
    if (json.size() > zeltransport::kMaxFrameSize) {
        throw zelcore::serialization::SerializationError("The message is longer than a frame may be");
    }
    return json;
}

Variant MakeVariant(const boost::any& value) { return boost::make_shared<boost::any>(value); }

Variant MakeText(const std::string& text) { return MakeVariant(utf8string(text.begin(), text.end())); }

std::string WriteErrorReply(const Variant& id, int code, const std::string& text) {
    Object error;
    error[kKeyCode] = MakeVariant(boost::int32_t(code));
    error[kKeyMessage] = MakeText(text.substr(0, kMaxErrorText));
    Object reply;
    reply[kKeyId] = id ? id : MakeVariant(boost::any());
    reply[kKeyError] = MakeVariant(std::move(error));
    return WriteMessage(std::move(reply));
}

}  // namespace zelmarshal
