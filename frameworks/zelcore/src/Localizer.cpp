#include <zelcore/Localizer.h>

#include <algorithm>
#include <cstdint>

#include <zelcore/IPlatformByteStream.h>
#include <zelcore/Serialization.h>
#include <zelcore/Utf.h>

namespace zelcore {
namespace config {

namespace {

constexpr std::size_t kMaxDictionaryBytes = 4u << 20;
constexpr std::string_view kKeyStart = "$$$/";

std::string ReadDictionary(const filesupport::File& file) {
    filesupport::IPlatformByteStream stream(file, filesupport::IPlatformByteStream::kRead);
    // One byte more than there should be tells whether there is more.
    std::string bytes(std::min<std::uint64_t>(stream.Length(), kMaxDictionaryBytes) + 1, '\0');
    bytes.resize(stream.ReadBlock(bytes.data(), bytes.size()));
    if (bytes.size() > kMaxDictionaryBytes) throw serialization::SerializationError("the dictionary is too large");
    return bytes;
}

// Longer than any language's name that a system gives.
constexpr std::size_t kMaxLanguageLength = 64;
constexpr std::size_t kMaxTagLength = 8;

// The letters of the locale may be others; names of languages are ASCII.
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// File systems may tell capital letters from small ones, so each part gets the usual ones: "zh-Hant-TW".
std::string WithUsualLetters(std::string tag, bool isFirst) {
    std::transform(tag.begin(), tag.end(), tag.begin(), ToLower);
    if (!isFirst && tag.size() == 2) std::transform(tag.begin(), tag.end(), tag.begin(), ToUpper);
    if (!isFirst && tag.size() == 4) tag[0] = ToUpper(tag[0]);
    return tag;
}

bool IsTag(std::string_view tag, bool isFirst) {
    if (tag.empty() || tag.size() > kMaxTagLength) return false;
    return std::all_of(tag.begin(), tag.end(), [isFirst](char c) { return IsLetter(c) || (!isFirst && IsDigit(c)); });
}

// "zh-Hant-TW" for "zh_hant_tw.UTF-8"; nothing for what is no language's name.
std::string CleanLanguage(const ustring& name) {
    if (name.size() > kMaxLanguageLength) return std::string();
    const utf8string all = utility::UTF16to8(name);
    std::string_view rest(all);
    // The character set and the variant of a system's locale.
    rest = rest.substr(0, rest.find_first_of(".@"));
    std::string clean;
    for (bool isFirst = true;; isFirst = false) {
        const std::size_t end = rest.find_first_of("-_");
        const std::string_view tag = rest.substr(0, end);
        if (!IsTag(tag, isFirst)) return std::string();
        if (!isFirst) clean += '-';
        clean += WithUsualLetters(std::string(tag), isFirst);
        if (end == std::string_view::npos) return clean;
        rest.remove_prefix(end + 1);
    }
}

std::string WithoutLastTag(const std::string& language) {
    const std::size_t last = language.rfind('-');
    return last == std::string::npos ? std::string() : language.substr(0, last);
}

bool IsDefaultLanguage(std::string_view language) { return language == "en" || language == "c" || language == "posix"; }

filesupport::File GetDictionary(const filesupport::Dir& folder, const ustring& language) {
    return filesupport::File(folder, language + utility::AsciiToUTF16(".json"));
}

ustring& ClientName() {
    static ustring* const sName = new ustring(utility::AsciiToUTF16("Tessaly"));
    return *sName;
}

}  // namespace

Localizer::Localizer() = default;

Localizer::~Localizer() = default;

Localizer& Localizer::GetInstance() {
    // Never freed: static objects may still ask for texts while the process ends.
    static Localizer* const sInstance = new Localizer;
    return *sInstance;
}

ustring Localizer::GetString(std::string_view keyAndDefault) const {
    const std::size_t equals = keyAndDefault.find('=');
    if (!keyAndDefault.starts_with(kKeyStart) || equals == std::string_view::npos)
        return utility::UTF8to16(keyAndDefault);
    // The key keeps the slash that ends the marker.
    const std::size_t keyBegin = kKeyStart.size() - 1;
    const auto found = mTexts.find(utf8string(keyAndDefault.substr(keyBegin, equals - keyBegin)));
    return found != mTexts.end() ? found->second : utility::UTF8to16(keyAndDefault.substr(equals + 1));
}

Localizer::Texts Localizer::Read(const filesupport::File& file) {
    const boost::any tree = serialization::FromJson(ReadDictionary(file));
    const serialization::Object* const object = boost::any_cast<serialization::Object>(&tree);
    if (!object) throw serialization::SerializationError("a dictionary must be one object");

    Texts texts;
    for (const auto& [key, value] : *object) {
        const utf8string* const text = value ? boost::any_cast<utf8string>(value.get()) : nullptr;
        if (!text) throw serialization::SerializationError("a dictionary must hold texts only");
        texts[key] = utility::UTF8to16(*text);
    }
    return texts;
}

void Localizer::LoadDictionary(const filesupport::File& file) { mTexts = Read(file); }

void Localizer::AddDictionary(const filesupport::File& file) {
    Texts texts = Read(file);
    // What the new texts have already is not taken over.
    texts.merge(mTexts);
    mTexts.swap(texts);
}

const ustring& Localizer::GetDefaultLanguage() {
    static const ustring* const sLanguage = new ustring(utility::AsciiToUTF16("en"));
    return *sLanguage;
}

ustring Localizer::FindLanguage(const filesupport::Dir& folder, const std::vector<ustring>& wanted) {
    for (const ustring& name : wanted) {
        for (std::string language = CleanLanguage(name); !language.empty(); language = WithoutLastTag(language)) {
            if (IsDefaultLanguage(language)) return GetDefaultLanguage();
            const ustring found = utility::AsciiToUTF16(language);
            if (GetDictionary(folder, found).Exists()) return found;
        }
    }
    return ustring();
}

bool Localizer::AddLanguage(const filesupport::Dir& folder, const std::vector<ustring>& wanted) {
    const ustring language = FindLanguage(folder, wanted);
    if (language.empty() || language == GetDefaultLanguage()) return false;
    AddDictionary(GetDictionary(folder, language));
    return true;
}

void Localizer::Clear() { mTexts.clear(); }

ustring Localize(std::string_view keyAndDefault) { return Localizer::GetInstance().GetString(keyAndDefault); }

ustring GetClientName() { return ClientName(); }

void SetClientName(const ustring& name) { ClientName() = name; }

}  // namespace config
}  // namespace zelcore
