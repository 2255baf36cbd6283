#include <random>
#include <string>
#include <unordered_set>
#include <vector>

#include <gtest/gtest.h>
#include <zelcore/Utf.h>

using zelcore::ustring;
using zelcore::utf8string;
using zelcore::utility::AsciiToUTF16;
using zelcore::utility::UTF16to8;
using zelcore::utility::UTF8to16;

namespace {

bool IsSurrogate(char32_t code) { return code >= 0xD800 && code <= 0xDFFF; }

/// The plain definitions of both encodings, for one scalar value.
std::string EncodeUTF8(char32_t code) {
    const auto byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
    if (code < 0x80) return {byte(code)};
    if (code < 0x800) return {byte(0xC0 + code / 64), byte(0x80 + code % 64)};
    if (code < 0x10000) return {byte(0xE0 + code / 4096), byte(0x80 + code / 64 % 64), byte(0x80 + code % 64)};
    return {byte(0xF0 + code / 262144), byte(0x80 + code / 4096 % 64), byte(0x80 + code / 64 % 64),
            byte(0x80 + code % 64)};
}

ustring EncodeUTF16(char32_t code) {
    if (code < 0x10000) return ustring(1, static_cast<unsigned short>(code));
    return {static_cast<unsigned short>(0xD7C0 + code / 1024), static_cast<unsigned short>(0xDC00 + code % 1024)};
}

/// Decodes by searching: what is a character, or the beginning of one, is looked up among all that exist.
class Reference {
public:
    Reference() {
        for (char32_t code = 0; code <= 0x10FFFF; ++code) {
            if (IsSurrogate(code)) continue;
            const std::string bytes = EncodeUTF8(code);
            if (bytes.size() > 1) mBeginnings.insert(bytes.substr(0, 1));
            if (bytes.size() > 2) mBeginnings.insert(bytes.substr(0, 2));
            if (bytes.size() > 3) mBeginnings.insert(bytes.substr(0, 3));
        }
    }

    ustring Decode(const std::string& text) const {
        ustring out;
        for (std::size_t position = 0; position < text.size();) position += DecodeOne(text.substr(position, 4), out);
        return out;
    }

private:
    std::size_t DecodeOne(const std::string& next, ustring& out) const {
        for (std::size_t length = 1; length <= next.size(); ++length) {
            const char32_t code = BitsOf(next.substr(0, length));
            if (code > 0x10FFFF || IsSurrogate(code) || EncodeUTF8(code) != next.substr(0, length)) continue;
            out += EncodeUTF16(code);
            return length;
        }
        out.push_back(0xFFFD);
        std::size_t longest = 1;
        for (std::size_t length = 2; length <= next.size() && length < 4; ++length)
            if (mBeginnings.count(next.substr(0, length))) longest = length;
        return longest;
    }

    static char32_t BitsOf(const std::string& bytes) {
        const unsigned char first = static_cast<unsigned char>(bytes[0]);
        char32_t code = bytes.size() == 1 ? first : first & (0x7Fu >> bytes.size());
        for (std::size_t i = 1; i < bytes.size(); ++i) code = code * 64 + (static_cast<unsigned char>(bytes[i]) & 63u);
        return code;
    }

    std::unordered_set<std::string> mBeginnings;
};

ustring Units(std::initializer_list<unsigned short> units) { return ustring(units); }

}  // namespace

TEST(UtfTest, EveryScalarValueConvertsBothWays) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        if (IsSurrogate(code)) continue;
        const std::string bytes = EncodeUTF8(code);
        const ustring units = EncodeUTF16(code);
        ASSERT_EQ(UTF8to16(bytes), units) << std::hex << static_cast<unsigned long>(code);
        ASSERT_EQ(UTF16to8(units), utf8string(bytes.begin(), bytes.end()))
            << std::hex << static_cast<unsigned long>(code);
    }
}

TEST(UtfTest, LoneSurrogatesBecomeReplacementCharacters) {
    EXPECT_EQ(UTF16to8(Units({0xD800})), "\xEF\xBF\xBD");
    EXPECT_EQ(UTF16to8(Units({0xDC00})), "\xEF\xBF\xBD");
    EXPECT_EQ(UTF16to8(Units({'a', 0xDBFF, 'b'})),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(UTF16to8(Units({0xDC00, 0xD800})), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(UTF16to8(Units({0xD83D, 0xD83D, 0xDE00})), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(UtfTest, IllFormedBytesBecomeOneReplacementPerLongestBeginning) {
    const struct {
        const char* what;
        std::string bytes;
        ustring expected;
    } cases[] = {
        {"stray continuation", "\x80", Units({0xFFFD})},
        {"overlong slash", "\xC0\xAF", Units({0xFFFD, 0xFFFD})},
        {"overlong in three bytes", "\xE0\x80\xAF", Units({0xFFFD, 0xFFFD, 0xFFFD})},
        {"surrogate", "\xED\xA0\x80", Units({0xFFFD, 0xFFFD, 0xFFFD})},
        {"beyond the last", "\xF4\x90\x80\x80", Units({0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD})},
        {"five-byte form", "\xF8\x88\x80\x80\x80", Units({0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD})},
        {"cut off at the end", "a\xF0\x9F\x98", Units({'a', 0xFFFD})},
        {"cut off by a letter", "\xE2\x82z", Units({0xFFFD, 'z'})},
        {"the standard's example",
         "a\xF1\x80\x80\xE1\x80\xC2"
         "b\x80"
         "c\x80\xBF"
         "d",
         Units({'a', 0xFFFD, 0xFFFD, 0xFFFD, 'b', 0xFFFD, 'c', 0xFFFD, 0xFFFD, 'd'})},
    };
    for (const auto& one : cases) EXPECT_EQ(UTF8to16(one.bytes), one.expected) << one.what;
}

TEST(UtfTest, RandomBytesDecodeAsTheDefinitionsSay) {
    const Reference reference;
    // Mostly bytes near the borders of the rules, where decoders go wrong.
    const std::vector<unsigned char> borders = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0,
                                                0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0,
                                                0xF1, 0xF3, 0xF4, 0xF5, 0xF7, 0xF8, 0xFE, 0xFF};
    std::mt19937 random(4711);
    for (int round = 0; round < 20000; ++round) {
        std::string bytes;
        for (std::size_t i = random() % 12; i > 0; --i)
            bytes.push_back(static_cast<char>(random() % 4 ? borders[random() % borders.size()] : random() % 256));
        ASSERT_EQ(UTF8to16(bytes), reference.Decode(bytes)) << ::testing::PrintToString(bytes);
    }
}

TEST(UtfTest, RandomTextSurvivesBothWays) {
    std::mt19937 random(815);
    for (int round = 0; round < 2000; ++round) {
        ustring text;
        for (std::size_t i = random() % 40; i > 0; --i) {
            const char32_t code = static_cast<char32_t>(random() % (random() % 2 ? 0x110000u : 0x800u));
            if (!IsSurrogate(code)) text += EncodeUTF16(code);
        }
        ASSERT_EQ(UTF8to16(UTF16to8(text)), text);
    }
}

TEST(UtfTest, MendedTextStaysAsItIs) {
    std::mt19937 random(42);
    for (int round = 0; round < 2000; ++round) {
        ustring text;
        for (std::size_t i = random() % 20; i > 0; --i)
            text.push_back(static_cast<unsigned short>(random() % 2 ? 0xD7F0 + random() % 0x820 : random()));
        const utf8string once = UTF16to8(text);
        ASSERT_EQ(UTF16to8(UTF8to16(once)), once);
        ASSERT_EQ(UTF8to16(once).size(), text.size()) << "each lone surrogate is one replacement character";
    }
}

TEST(UtfTest, ByteOrderMarkIsText) {
    EXPECT_EQ(UTF8to16("\xEF\xBB\xBF"
                       "a"),
              Units({0xFEFF, 'a'}));
    EXPECT_EQ(UTF16to8(Units({0xFEFF, 'a'})),
              "\xEF\xBB\xBF"
              "a");
}

TEST(UtfTest, ZeroIsACharacterLikeAnyOther) {
    EXPECT_EQ(UTF8to16(std::string_view("a\0b", 3)), Units({'a', 0, 'b'}));
    EXPECT_EQ(UTF16to8(Units({'a', 0, 'b'})), utf8string("a\0b", 3));
}

TEST(UtfTest, AsciiWidensAndOtherBytesAreReplacedOneByOne) {
    EXPECT_EQ(AsciiToUTF16("Az~"), Units({'A', 'z', '~'}));
    EXPECT_EQ(AsciiToUTF16("\xC3\xA4"), Units({0xFFFD, 0xFFFD}));
    EXPECT_TRUE(AsciiToUTF16("").empty());
}
