// Dictionaries. One that is none changes no text; one that is gives each of its texts, and the others stay.
#include <string>

#include <zelcore/Localizer.h>
#include <zelcore/Serialization.h>
#include <zelcore/Utf.h>

#include "support/Expect.h"
#include "support/FuzzInput.h"
#include "support/ScratchFolder.h"

using zelcore::ustring;
using zelcore::utf8string;
using zelcore::config::Localizer;
using zelcore::utility::UTF8to16;
using zelfuzz::Expect;
namespace serialization = zelcore::serialization;

namespace {

constexpr char kKnownDictionary[] = "{\"/zelui/Cancel\": \"Abbrechen\", \"/zelui/OK\": \"OK!\"}";

ustring GetText(const std::string& key) { return Localizer::GetInstance().GetString("$$$" + key + "=Default"); }

/// What a text says of its keys, read without the localiser's help; null where it is no dictionary.
const serialization::Object* AsDictionary(const boost::any& tree) {
    const auto* const object = boost::any_cast<serialization::Object>(&tree);
    if (object == nullptr) return nullptr;
    for (const auto& [key, value] : *object) {
        if (boost::any_cast<utf8string>(value.get()) == nullptr) return nullptr;
    }
    return object;
}

/// Keys that cannot be written as one: "=" ends a key, and a key begins with a slash.
bool IsKey(const utf8string& key) { return key.starts_with('/') && key.find('=') == utf8string::npos; }

void ExpectTexts(const serialization::Object& texts) {
    for (const auto& [key, value] : texts) {
        if (!IsKey(key)) continue;
        Expect(GetText(std::string(key)) == UTF8to16(boost::any_cast<const utf8string&>(*value)),
               "a dictionary's texts are those in it");
    }
}

boost::any Read(std::string_view text) {
    try {
        return serialization::FromJson(text);
    } catch (const serialization::SerializationError&) {
        return boost::any();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const zelfuzz::ScratchFolder folder;
    static const auto known = folder.GetFile("known.json"), tried = folder.GetFile("tried.json");
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    if (!known.Exists()) folder.Write("known.json", kKnownDictionary);
    folder.Write("tried.json", text);

    Localizer& localizer = Localizer::GetInstance();
    localizer.LoadDictionary(known);
    const boost::any tree = Read(text);
    const serialization::Object* const texts = AsDictionary(tree);
    try {
        localizer.AddDictionary(tried);
        Expect(texts != nullptr, "what is no dictionary is not taken");
        ExpectTexts(*texts);
    } catch (const serialization::SerializationError&) {
        Expect(texts == nullptr, "a dictionary is taken");
    }
    for (const char* const key : {"/zelui/Cancel", "/zelui/OK"}) {
        const ustring expected = UTF8to16(std::string(key) == "/zelui/OK" ? "OK!" : "Abbrechen");
        const bool isReplaced = texts != nullptr && texts->count(key) != 0;
        Expect(isReplaced || GetText(key) == expected, "texts that it does not have stay");
    }
    if (texts == nullptr) return 0;
    localizer.LoadDictionary(tried);
    ExpectTexts(*texts);
    Expect(texts->count("/zelui/OK") != 0 || GetText("/zelui/OK") == UTF8to16("Default"), "the old texts are gone");
    return 0;
}
