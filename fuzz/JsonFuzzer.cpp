// JSON as remote calls and settings carry it. What was read can be written, and reads the same again.
#include <bit>
#include <string>

#include <boost/cstdint.hpp>

#include <zelcore/Serialization.h>

#include "support/Expect.h"
#include "support/FuzzInput.h"

using namespace zelcore::serialization;
using zelcore::utf8string;
using zelfuzz::Expect;

namespace {

/// Counts the values of a tree and looks at its depth.
std::size_t CountValues(const boost::any& value, unsigned depth) {
    std::size_t count = 1;
    const Array* const array = boost::any_cast<Array>(&value);
    const Object* const object = boost::any_cast<Object>(&value);
    Expect(depth < kMaxDepth || (array == nullptr && object == nullptr), "no tree is too deep");
    if (array != nullptr) {
        for (const Variant& element : *array) count += CountValues(*element, depth + 1);
    }
    if (object != nullptr) {
        for (const auto& [name, member] : *object) count += CountValues(*member, depth + 1);
    }
    return count;
}

template <typename T>
bool HaveSame(const boost::any& left, const boost::any& right) {
    const T* const one = boost::any_cast<T>(&left);
    const T* const other = boost::any_cast<T>(&right);
    return one != nullptr && other != nullptr && *one == *other;
}

bool AreSame(const boost::any& left, const boost::any& right);

bool AreSameArrays(const Array& left, const Array& right) {
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (!AreSame(*left[i], *right[i])) return false;
    }
    return true;
}

bool AreSameObjects(const Object& left, const Object& right) {
    if (left.size() != right.size()) return false;
    for (auto one = left.begin(), other = right.begin(); one != left.end(); ++one, ++other) {
        if (one->first != other->first || !AreSame(*one->second, *other->second)) return false;
    }
    return true;
}

bool AreSame(const boost::any& left, const boost::any& right) {
    if (left.type() != right.type()) return false;
    if (left.empty()) return true;
    if (const double* const number = boost::any_cast<double>(&left)) {
        // By their bits: 0 and -0 are two.
        return std::bit_cast<std::uint64_t>(*number) == std::bit_cast<std::uint64_t>(boost::any_cast<double>(right));
    }
    if (const Array* const array = boost::any_cast<Array>(&left)) {
        return AreSameArrays(*array, boost::any_cast<const Array&>(right));
    }
    if (const Object* const object = boost::any_cast<Object>(&left)) {
        return AreSameObjects(*object, boost::any_cast<const Object&>(right));
    }
    return HaveSame<bool>(left, right) || HaveSame<boost::int32_t>(left, right) ||
           HaveSame<boost::int64_t>(left, right) || HaveSame<utf8string>(left, right);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    boost::any tree;
    try {
        tree = FromJson(std::string_view(reinterpret_cast<const char*>(bytes), size));
    } catch (const SerializationError&) {
        return 0;
    }
    // A value takes a byte of text at least, so that memory is in proportion to it.
    Expect(CountValues(tree, 0) <= std::min(size, kMaxValues), "there are no more values than bytes");
    const std::string written = ToJson(tree);
    const boost::any again = FromJson(written);
    Expect(AreSame(tree, again), "what was written reads the same");
    Expect(ToJson(again) == written, "and is written the same");
    return 0;
}
