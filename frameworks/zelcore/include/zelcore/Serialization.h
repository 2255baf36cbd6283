#pragma once

#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>

#include <zelcore/ustring.h>

namespace zelcore {
namespace serialization {

/// The values of remote calls and settings are trees of `boost::any`. A node holds one of: nothing (null), `bool`,
/// `boost::int32_t`, `boost::int64_t`, `double`, `utf8string`, an `Array` or an `Object`. Values; any thread.
typedef boost::shared_ptr<boost::any> Variant;
typedef std::vector<Variant> Array;
typedef std::map<utf8string, Variant> Object;

/// Thrown for a text that is not JSON or exceeds the limits, and for a tree that cannot be written.
class ZELCORE_API SerializationError : public std::runtime_error {
public:
    /// `message` says what is wrong and where, in UTF-8.
    explicit SerializationError(const std::string& message);
    ~SerializationError() override;
};

/// How deep a tree may nest; deeper ones are refused in both directions.
constexpr unsigned kMaxDepth = 32;

/// How many values (containers included) FromJson reads from one text, so that a small hostile text does not grow into
/// a tree that fills the memory.
constexpr std::size_t kMaxValues = 1u << 20;

/// Makes the tree of a call: an object with "method" (text) and "params" (`parameters`, an Array).
ZELCORE_API Variant BuildCall(const std::string& methodName, const boost::any& parameters);

/// Appends `value` to `array`. An empty `array` becomes an Array first; anything else that is not one throws
/// SerializationError.
ZELCORE_API void AppendToArray(boost::any& array, const boost::any& value);

/// The member `key` of `object`, or null when `object` is not an Object or has no such member.
ZELCORE_API Variant GetVariantInObject(const Variant& object, const std::string& key);

/// Member access with a check of the type. Each returns false, and leaves `value` as it was, when `object` is not an
/// Object, has no such member, or the member is of another type (for integers also: does not fit).
ZELCORE_API bool GetInObject(const Variant& object, const std::string& key, utf8string& value);
ZELCORE_API bool GetInObject(const Variant& object, const std::string& key, int& value);
ZELCORE_API bool GetInObject(const Variant& object, const std::string& key, bool& value);

/// Sets the member `key`. An empty `object` becomes an Object first; anything else throws SerializationError.
ZELCORE_API void SetInObject(boost::any& object, const std::string& key, const boost::any& value);

/// Writes a tree as JSON. Text that is not UTF-8 is mended with U+FFFD. Throws SerializationError for a tree with a
/// foreign type, an infinite number or too much depth.
ZELCORE_API std::string ToJson(const boost::any& value);

/// Reads JSON. Whole numbers become `int32_t` where they fit, else `int64_t`, else `double`. Of two members of one name
/// the last one counts. Throws SerializationError, also for whatever follows the value, for bad UTF-8, for numbers too
/// large for a `double`, for too many values and for too much depth.
ZELCORE_API boost::any FromJson(std::string_view text);

}  // namespace serialization
}  // namespace zelcore
