#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include <boost/cstdint.hpp>
#include <boost/json/basic_parser_impl.hpp>
#include <boost/make_shared.hpp>

#include <zelcore/Serialization.h>

namespace zelcore {
namespace serialization {

namespace {

typedef boost::json::error_code ErrorCode;
typedef boost::json::string_view JsonView;

/// What the parser calls while it reads; builds the tree as it goes. A tree of the parser's own in between would cost
/// a hostile peer's victim twice the memory, and the parser's doubles are not exact to the last bit.
class TreeBuilder {
public:
    // The names are the parser's. The length of the text bounds these three better than a number could.
    static constexpr std::size_t max_object_size = std::numeric_limits<std::size_t>::max();
    static constexpr std::size_t max_array_size = std::numeric_limits<std::size_t>::max();
    static constexpr std::size_t max_key_size = std::numeric_limits<std::size_t>::max();
    static constexpr std::size_t max_string_size = std::numeric_limits<std::size_t>::max();

    boost::any& GetRoot() { return mRoot; }

    bool on_document_begin(ErrorCode&) { return true; }
    bool on_document_end(ErrorCode&) { return true; }

    bool on_object_begin(ErrorCode&) { return Open(true); }
    bool on_object_end(std::size_t, ErrorCode& error) {
        boost::any object(std::move(mOpen.back().object));
        return Close(std::move(object), error);
    }
    bool on_array_begin(ErrorCode&) { return Open(false); }
    bool on_array_end(std::size_t, ErrorCode& error) {
        boost::any array(std::move(mOpen.back().array));
        return Close(std::move(array), error);
    }

    bool on_key_part(JsonView part, std::size_t, ErrorCode&) { return AppendText(part); }
    bool on_key(JsonView part, std::size_t, ErrorCode&) {
        AppendText(part);
        mOpen.back().key = TakeText();
        return true;
    }
    bool on_string_part(JsonView part, std::size_t, ErrorCode&) { return AppendText(part); }
    bool on_string(JsonView part, std::size_t, ErrorCode& error) {
        AppendText(part);
        return Add(TakeText(), error);
    }

    bool on_number_part(JsonView part, ErrorCode&) { return AppendText(part); }
    bool on_int64(boost::int64_t number, JsonView, ErrorCode& error) {
        mText.clear();
        const bool fits = number >= std::numeric_limits<boost::int32_t>::min() &&
                          number <= std::numeric_limits<boost::int32_t>::max();
        return fits ? Add(static_cast<boost::int32_t>(number), error) : Add(number, error);
    }
    bool on_uint64(boost::uint64_t number, JsonView rest, ErrorCode& error) {
        if (number > static_cast<boost::uint64_t>(std::numeric_limits<boost::int64_t>::max()))
            return on_double(static_cast<double>(number), rest, error);
        return on_int64(static_cast<boost::int64_t>(number), rest, error);
    }
    bool on_double(double nearly, JsonView rest, ErrorCode& error) {
        AppendText(rest);
        const utf8string digits = TakeText();
        double number = 0.0;
        const std::from_chars_result result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        // Out of range is either too large, which nobody could write again, or too small, which is zero.
        if (result.ec != std::errc()) number = nearly;
        if (!std::isfinite(number)) {
            error = boost::json::error::exponent_overflow;
            return false;
        }
        return Add(number, error);
    }
    bool on_bool(bool flag, ErrorCode& error) { return Add(flag, error); }
    bool on_null(ErrorCode& error) { return Add(boost::any(), error); }
    bool on_comment_part(JsonView, ErrorCode&) { return true; }
    bool on_comment(JsonView, ErrorCode&) { return true; }

private:
    /// An array or object that is not complete yet.
    struct Container {
        bool isObject;
        Array array;
        Object object;
        utf8string key;
    };

    bool AppendText(JsonView part) {
        mText.append(part.data(), part.size());
        return true;
    }

    utf8string TakeText() { return std::exchange(mText, utf8string()); }

    bool Open(bool isObject) {
        mOpen.push_back({isObject, Array(), Object(), utf8string()});
        return true;
    }

    bool Close(boost::any&& container, ErrorCode& error) {
        mOpen.pop_back();
        return Add(std::move(container), error);
    }

    template <typename T>
    bool Add(T&& value, ErrorCode& error) {
        if (++mCount > kMaxValues) {
            error = boost::json::error::array_too_large;
            return false;
        }
        if (mOpen.empty()) {
            mRoot = std::forward<T>(value);
            return true;
        }
        Variant node = boost::make_shared<boost::any>(std::forward<T>(value));
        Container& container = mOpen.back();
        if (container.isObject) {
            // Of two members of one name the last one counts, as with most readers.
            container.object[std::move(container.key)] = std::move(node);
        } else {
            container.array.push_back(std::move(node));
        }
        return true;
    }

    boost::any mRoot;
    std::vector<Container> mOpen;
    utf8string mText;
    std::size_t mCount = 0;
};

}  // namespace

boost::any FromJson(std::string_view text) {
    boost::json::parse_options options;
    options.max_depth = kMaxDepth;
    boost::json::basic_parser<TreeBuilder> parser(options);
    ErrorCode error;
    const std::size_t used = parser.write_some(false, text.data(), text.size(), error);
    if (!error && used < text.size()) error = boost::json::error::extra_data;
    if (error) throw SerializationError("bad JSON near byte " + std::to_string(used) + ": " + error.message());
    return std::move(parser.handler().GetRoot());
}

}  // namespace serialization
}  // namespace zelcore
