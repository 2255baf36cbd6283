#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <string>

#include <boost/cstdint.hpp>
#include <boost/make_shared.hpp>
#include <gtest/gtest.h>
#include <zelcore/Serialization.h>

using namespace zelcore::serialization;
using zelcore::utf8string;

namespace {

std::string Nested(unsigned depth) { return std::string(depth, '[') + std::string(depth, ']'); }

Variant Node(const boost::any& value) { return boost::make_shared<boost::any>(value); }

template <typename T>
bool SameAs(const boost::any& a, const boost::any& b) {
    return boost::any_cast<T>(a) == boost::any_cast<T>(b);
}

/// Equal trees, types and the bits of doubles included.
bool SameTree(const boost::any& a, const boost::any& b) {
    if (a.type() != b.type()) return false;
    if (a.empty()) return true;
    if (a.type() == typeid(bool)) return SameAs<bool>(a, b);
    if (a.type() == typeid(boost::int32_t)) return SameAs<boost::int32_t>(a, b);
    if (a.type() == typeid(boost::int64_t)) return SameAs<boost::int64_t>(a, b);
    if (a.type() == typeid(utf8string)) return SameAs<utf8string>(a, b);
    if (a.type() == typeid(double)) {
        const double x = boost::any_cast<double>(a);
        const double y = boost::any_cast<double>(b);
        return std::memcmp(&x, &y, sizeof(x)) == 0;
    }
    if (a.type() == typeid(Array)) {
        const Array& x = *boost::any_cast<Array>(&a);
        const Array& y = *boost::any_cast<Array>(&b);
        return std::equal(x.begin(), x.end(), y.begin(), y.end(),
                          [](const Variant& p, const Variant& q) { return SameTree(*p, *q); });
    }
    const Object& x = *boost::any_cast<Object>(&a);
    const Object& y = *boost::any_cast<Object>(&b);
    return std::equal(x.begin(), x.end(), y.begin(), y.end(), [](const auto& p, const auto& q) {
        return p.first == q.first && SameTree(*p.second, *q.second);
    });
}

class RandomTrees {
public:
    explicit RandomTrees(unsigned seed) : mRandom(seed) {}

    unsigned Below(unsigned bound) { return static_cast<unsigned>(mRandom() % bound); }

    boost::any Make(unsigned depth) {
        switch (Below(depth > 0 ? 9 : 7)) {
            case 0:
                return boost::any();
            case 1:
                return Below(2) == 0;
            case 2:
                return static_cast<boost::int32_t>(mRandom());
            case 3:
                return WideNumber();
            case 4:
                return AnyDouble();
            case 5:
                return static_cast<double>(Below(1000)) / 8.0;
            case 6:
                return Text();
            case 7:
                return MakeArray(depth);
            default:
                return MakeObject(depth);
        }
    }

private:
    boost::any WideNumber() {
        const boost::int64_t number = static_cast<boost::int64_t>(mRandom());
        // What fits into 32 bits comes back as such.
        return number == static_cast<boost::int32_t>(number) ? boost::any(boost::int32_t(1)) : boost::any(number);
    }

    boost::any AnyDouble() {
        double number = 0.0;
        do {
            const std::uint64_t bits = mRandom();
            std::memcpy(&number, &bits, sizeof(number));
        } while (!std::isfinite(number));
        return number;
    }

    utf8string Text() {
        static const char* const kPieces[] = {"a",
                                              "\"",
                                              "\\",
                                              "/",
                                              "\n",
                                              "\x01",
                                              "\x7F",
                                              "\xC3\xA4",
                                              "\xE2\x82\xAC",
                                              "\xF0\x9F\x8E\xB5",
                                              "\xEF\xBF\xBD",
                                              "\xED\x9F\xBF",
                                              "u0041",
                                              " "};
        utf8string text;
        for (unsigned i = Below(8); i > 0; --i) text += kPieces[Below(std::size(kPieces))];
        if (Below(8) == 0) text.push_back('\0');
        return text;
    }

    boost::any MakeArray(unsigned depth) {
        Array array;
        for (unsigned i = Below(5); i > 0; --i) array.push_back(Node(Make(depth - 1)));
        return array;
    }

    boost::any MakeObject(unsigned depth) {
        Object object;
        for (unsigned i = Below(5); i > 0; --i) object[Text()] = Node(Make(depth - 1));
        return object;
    }

    std::mt19937_64 mRandom;
};

}  // namespace

TEST(JsonTest, RandomTreesSurviveBothWays) {
    RandomTrees trees(2024);
    for (int round = 0; round < 3000; ++round) {
        const boost::any tree = trees.Make(6);
        const std::string text = ToJson(tree);
        ASSERT_TRUE(SameTree(FromJson(text), tree)) << text;
    }
}

TEST(JsonTest, DamagedTextIsRefusedOrReadButNeverHarmful) {
    RandomTrees trees(99);
    int refused = 0;
    int read = 0;
    for (int round = 0; round < 5000; ++round) {
        std::string text = ToJson(trees.Make(4));
        for (unsigned i = trees.Below(3) + 1; i > 0; --i)
            text[trees.Below(static_cast<unsigned>(text.size()))] = static_cast<char>(trees.Below(256));
        if (trees.Below(4) == 0) text.resize(trees.Below(static_cast<unsigned>(text.size()) + 1));
        try {
            const boost::any tree = FromJson(text);
            ASSERT_TRUE(SameTree(FromJson(ToJson(tree)), tree)) << text;
            ++read;
        } catch (const SerializationError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 100);
    EXPECT_GT(read, 100);
}

TEST(JsonTest, WholeNumbersTakeTheNarrowestType) {
    EXPECT_EQ(boost::any_cast<boost::int32_t>(FromJson("2147483647")), 2147483647);
    EXPECT_EQ(boost::any_cast<boost::int32_t>(FromJson("-2147483648")), std::numeric_limits<boost::int32_t>::min());
    EXPECT_EQ(boost::any_cast<boost::int64_t>(FromJson("2147483648")), 2147483648);
    EXPECT_EQ(boost::any_cast<boost::int64_t>(FromJson("-9223372036854775808")),
              std::numeric_limits<boost::int64_t>::min());
    EXPECT_EQ(boost::any_cast<boost::int64_t>(FromJson("9223372036854775807")),
              std::numeric_limits<boost::int64_t>::max());
    EXPECT_EQ(boost::any_cast<double>(FromJson("9223372036854775808")), 9223372036854775808.0);
    EXPECT_EQ(boost::any_cast<double>(FromJson("100000000000000000000000")), 1e23);
}

TEST(JsonTest, DoublesStayDoublesToTheLastBit) {
    for (const double number :
         {1.0, -0.0, 0.1, 1e23, 5e-324, 1.7976931348623157e308, 9007199254740993.0, 2.2250738585072011e-308})
        EXPECT_TRUE(SameTree(FromJson(ToJson(number)), number)) << number;
    EXPECT_EQ(boost::any_cast<double>(FromJson("1e-400")), 0.0);
}

TEST(JsonTest, NumbersThatNoDoubleHoldsAreRefused) {
    EXPECT_THROW(FromJson("1e999"), SerializationError);
    EXPECT_THROW(FromJson("-1e309"), SerializationError);
    EXPECT_THROW(ToJson(std::numeric_limits<double>::infinity()), SerializationError);
    EXPECT_THROW(ToJson(std::numeric_limits<double>::quiet_NaN()), SerializationError);
}

TEST(JsonTest, DepthIsBoundedInBothDirections) {
    const boost::any deepest = FromJson(Nested(kMaxDepth));
    EXPECT_EQ(ToJson(deepest), Nested(kMaxDepth));
    EXPECT_THROW(FromJson(Nested(kMaxDepth + 1)), SerializationError);
    EXPECT_THROW(FromJson(std::string(1000000, '[')), SerializationError);
    boost::any tooDeep;
    AppendToArray(tooDeep, deepest);
    EXPECT_THROW(ToJson(tooDeep), SerializationError);
    boost::any tooDeepObject;
    SetInObject(tooDeepObject, "a", deepest);
    EXPECT_THROW(ToJson(tooDeepObject), SerializationError);
}

TEST(JsonTest, TreeThatContainsItselfIsRefused) {
    const Variant node = boost::make_shared<boost::any>(Array());
    boost::any_cast<Array&>(*node).push_back(node);
    EXPECT_THROW(ToJson(*node), SerializationError);
    boost::any_cast<Array&>(*node).clear();
}

TEST(JsonTest, NumberOfValuesIsBounded) {
    std::string text = "[0";
    for (std::size_t i = 2; i < kMaxValues; ++i) text += ",0";
    EXPECT_EQ(boost::any_cast<Array>(FromJson(text + "]")).size(), kMaxValues - 1);
    EXPECT_THROW(FromJson(text + ",0]"), SerializationError);
}

TEST(JsonTest, TextThatIsNotJsonIsRefused) {
    for (const char* const text :
         {"",   " ",   "{",      "[1,]",    "{\"a\":}",    "{a:1}",   "[1 2]", "nul",  "01",  "+1", ".5",
          "1.", "'a'", "\"\t\"", "\"\\x\"", "\"\\ud800\"", "// c\n1", "NaN",   "[1]]", "1 2", "{}x"})
        EXPECT_THROW(FromJson(text), SerializationError) << text;
    EXPECT_THROW(FromJson(std::string_view("1\0", 2)), SerializationError);
}

TEST(JsonTest, BadUtf8IsRefusedWhenReadAndMendedWhenWritten) {
    EXPECT_THROW(FromJson("\"\xC0\xAF\""), SerializationError);
    EXPECT_THROW(FromJson("\"\xED\xA0\x80\""), SerializationError);
    EXPECT_THROW(FromJson("{\"\xFF\":1}"), SerializationError);
    EXPECT_EQ(ToJson(utf8string("a\xFF"
                                "b")),
              "\"a\xEF\xBF\xBD"
              "b\"");
    boost::any object;
    SetInObject(object, "\xFF", true);
    EXPECT_EQ(ToJson(object), "{\"\xEF\xBF\xBD\":true}");
}

TEST(JsonTest, EscapesAndSpacesAreUnderstood) {
    EXPECT_EQ(boost::any_cast<utf8string>(FromJson(R"( "\u0041\n\/\ud83c\udfb5\u0000" )")),
              utf8string("A\n/\xF0\x9F\x8E\xB5\0", 8));
}

TEST(JsonTest, OfTwoMembersOfOneNameTheLastCounts) {
    EXPECT_EQ(ToJson(FromJson(R"({"a":1,"b":2,"a":3})")), R"({"a":3,"b":2})");
}

TEST(JsonTest, ForeignTypesAreRefused) {
    EXPECT_THROW(ToJson(std::string("not the system's text")), SerializationError);
    EXPECT_THROW(ToJson(1.0f), SerializationError);
    EXPECT_THROW(ToJson(boost::any(Variant())), SerializationError);
}

TEST(JsonTest, ErrorNamesThePlace) {
    try {
        FromJson("[1,2,x]");
        FAIL() << "was read";
    } catch (const SerializationError& error) {
        EXPECT_NE(std::string(error.what()).find("byte 5"), std::string::npos) << error.what();
    }
}
