#include <zelcore/Serialization.h>

#include <limits>
#include <utility>

#include <boost/cstdint.hpp>
#include <boost/make_shared.hpp>

namespace zelcore {
namespace serialization {

namespace {

utf8string ToUtf8String(const std::string& text) { return utf8string(text.begin(), text.end()); }

template <typename T>
T& AsContainer(boost::any& value, const char* message) {
    if (value.empty()) value = T();
    T* const container = boost::any_cast<T>(&value);
    if (!container) throw SerializationError(message);
    return *container;
}

template <typename T>
bool GetExactly(const Variant& object, const std::string& key, T& value) {
    const Variant member = GetVariantInObject(object, key);
    const T* const found = member ? boost::any_cast<T>(member.get()) : nullptr;
    if (found) value = *found;
    return found != nullptr;
}

}  // namespace

SerializationError::SerializationError(const std::string& message) : std::runtime_error(message) {}

SerializationError::~SerializationError() = default;

Variant BuildCall(const std::string& methodName, const boost::any& parameters) {
    boost::any array = parameters;
    AsContainer<Array>(array, "the parameters of a call must be an array");
    boost::any call;
    SetInObject(call, "method", ToUtf8String(methodName));
    SetInObject(call, "params", array);
    return boost::make_shared<boost::any>(std::move(call));
}

void AppendToArray(boost::any& array, const boost::any& value) {
    AsContainer<Array>(array, "only an array can be appended to").push_back(boost::make_shared<boost::any>(value));
}

Variant GetVariantInObject(const Variant& object, const std::string& key) {
    const Object* const members = object ? boost::any_cast<Object>(object.get()) : nullptr;
    if (!members) return Variant();
    const Object::const_iterator found = members->find(ToUtf8String(key));
    return found != members->end() ? found->second : Variant();
}

bool GetInObject(const Variant& object, const std::string& key, utf8string& value) {
    return GetExactly(object, key, value);
}

bool GetInObject(const Variant& object, const std::string& key, int& value) {
    boost::int32_t narrow = 0;
    boost::int64_t wide = 0;
    if (GetExactly(object, key, narrow)) {
        wide = narrow;
    } else if (!GetExactly(object, key, wide)) {
        return false;
    }
    if (wide < std::numeric_limits<int>::min() || wide > std::numeric_limits<int>::max()) return false;
    value = static_cast<int>(wide);
    return true;
}

bool GetInObject(const Variant& object, const std::string& key, bool& value) { return GetExactly(object, key, value); }

void SetInObject(boost::any& object, const std::string& key, const boost::any& value) {
    AsContainer<Object>(object, "only an object has members")[ToUtf8String(key)] =
        boost::make_shared<boost::any>(value);
}

}  // namespace serialization
}  // namespace zelcore
