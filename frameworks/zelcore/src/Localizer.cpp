#include <zelcore/Localizer.h>

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
    std::string bytes(kMaxDictionaryBytes + 1, '\0');
    bytes.resize(stream.ReadBlock(bytes.data(), bytes.size()));
    if (bytes.size() > kMaxDictionaryBytes) throw serialization::SerializationError("the dictionary is too large");
    return bytes;
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

void Localizer::LoadDictionary(const filesupport::File& file) {
    const boost::any tree = serialization::FromJson(ReadDictionary(file));
    const serialization::Object* const object = boost::any_cast<serialization::Object>(&tree);
    if (!object) throw serialization::SerializationError("a dictionary must be one object");

    std::map<utf8string, ustring> texts;
    for (const auto& [key, value] : *object) {
        const utf8string* const text = value ? boost::any_cast<utf8string>(value.get()) : nullptr;
        if (!text) throw serialization::SerializationError("a dictionary must hold texts only");
        texts[key] = utility::UTF8to16(*text);
    }
    mTexts.swap(texts);
}

void Localizer::Clear() { mTexts.clear(); }

ustring Localize(std::string_view keyAndDefault) { return Localizer::GetInstance().GetString(keyAndDefault); }

ustring GetClientName() { return ClientName(); }

void SetClientName(const ustring& name) { ClientName() = name; }

}  // namespace config
}  // namespace zelcore
