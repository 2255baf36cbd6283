#include <charconv>
#include <cmath>

#include <boost/cstdint.hpp>

#include <zelcore/Serialization.h>
#include <zelcore/Utf.h>

namespace zelcore {
namespace serialization {

namespace {

class JsonWriter {
public:
    void Write(const boost::any& value, unsigned depth) {
        if (value.empty()) {
            mText += "null";
        } else if (const bool* const flag = boost::any_cast<bool>(&value)) {
            mText += *flag ? "true" : "false";
        } else if (const boost::int32_t* const number = boost::any_cast<boost::int32_t>(&value)) {
            mText += std::to_string(*number);
        } else if (const boost::int64_t* const wide = boost::any_cast<boost::int64_t>(&value)) {
            mText += std::to_string(*wide);
        } else if (const double* const real = boost::any_cast<double>(&value)) {
            WriteDouble(*real);
        } else if (const utf8string* const text = boost::any_cast<utf8string>(&value)) {
            WriteText(*text);
        } else if (const Array* const array = boost::any_cast<Array>(&value)) {
            WriteArray(*array, depth);
        } else if (const Object* const object = boost::any_cast<Object>(&value)) {
            WriteObject(*object, depth);
        } else {
            throw SerializationError(std::string("cannot write a value of type ") + value.type().name());
        }
    }

    std::string& GetText() { return mText; }

private:
    void WriteNode(const Variant& node, unsigned depth) { Write(node ? *node : boost::any(), depth); }

    void WriteDouble(double value) {
        if (!std::isfinite(value)) throw SerializationError("cannot write a number that is not finite");
        char buffer[32];
        const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof(buffer), value);
        const std::string_view digits(buffer, static_cast<std::size_t>(result.ptr - buffer));
        mText += digits;
        // A reader must find a double again, not a whole number.
        if (digits.find_first_of(".e") == std::string_view::npos) mText += ".0";
    }

    void WriteText(const utf8string& text) {
        mText += '"';
        // There and back replaces whatever is not UTF-8.
        for (const char c : utility::UTF16to8(utility::UTF8to16(text))) WriteCharacter(c);
        mText += '"';
    }

    void WriteCharacter(char c) {
        constexpr char kHexDigits[] = "0123456789abcdef";
        const unsigned char byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            mText += '\\';
            mText += c;
        } else if (byte < 0x20) {
            mText += "\\u00";
            mText += kHexDigits[byte >> 4];
            mText += kHexDigits[byte & 0xF];
        } else {
            mText += c;
        }
    }

    static void CheckDepth(unsigned depth) {
        if (depth >= kMaxDepth) throw SerializationError("the tree nests too deep to be written");
    }

    void WriteArray(const Array& array, unsigned depth) {
        CheckDepth(depth);
        mText += '[';
        for (std::size_t i = 0; i < array.size(); ++i) {
            if (i > 0) mText += ',';
            WriteNode(array[i], depth + 1);
        }
        mText += ']';
    }

    void WriteObject(const Object& object, unsigned depth) {
        CheckDepth(depth);
        mText += '{';
        bool first = true;
        for (const Object::value_type& member : object) {
            if (!first) mText += ',';
            first = false;
            WriteText(member.first);
            mText += ':';
            WriteNode(member.second, depth + 1);
        }
        mText += '}';
    }

    std::string mText;
};

}  // namespace

std::string ToJson(const boost::any& value) {
    JsonWriter writer;
    writer.Write(value, 0);
    return std::move(writer.GetText());
}

}  // namespace serialization
}  // namespace zelcore
