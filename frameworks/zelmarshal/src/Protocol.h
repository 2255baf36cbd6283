#pragma once

#include <cstddef>
#include <string>

#include <boost/any.hpp>

#include <zelcore/Serialization.h>

namespace zelmarshal {

/// Member names and values of JSON-RPC 2.0, and of what this library puts into it.
constexpr char kKeyVersion[] = "jsonrpc";
constexpr char kVersion[] = "2.0";
constexpr char kKeyId[] = "id";
constexpr char kKeyMethod[] = "method";
constexpr char kKeyParams[] = "params";
constexpr char kKeyClient[] = "client";
constexpr char kKeyResult[] = "result";
constexpr char kKeyValue[] = "value";
constexpr char kKeyError[] = "error";
constexpr char kKeyCode[] = "code";
constexpr char kKeyMessage[] = "message";

/// Reads a frame; throws SerializationError.
zelcore::serialization::Variant ReadMessage(const char* bytes, std::size_t size);

/// Whether `message` is an Object that says it is of this protocol.
bool IsOfThisVersion(const zelcore::serialization::Variant& message);

/// Writes a message with the version added; throws SerializationError, also when it is longer than a frame may be.
std::string WriteMessage(zelcore::serialization::Object message);

zelcore::serialization::Variant MakeVariant(const boost::any& value);
zelcore::serialization::Variant MakeText(const std::string& text);

/// The error reply to the request `id`; null stands for one that is not known.
std::string WriteErrorReply(const zelcore::serialization::Variant& id, int code, const std::string& text);

}  // namespace zelmarshal
