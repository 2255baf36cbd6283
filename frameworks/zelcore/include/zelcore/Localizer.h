#pragma once

#include <map>
#include <string_view>
#include <vector>

#include <zelcore/Export.h>
#include <zelcore/File.h>
#include <zelcore/ustring.h>

namespace zelcore {
namespace config {

/// Turns "$$$/key/path=Default text" into the text of the user's language. Main thread only.
///
/// The dictionary maps key paths (without the "$$$" and with the leading slash) to texts. A key that it does not have
/// gives the default; a text that does not start with "$$$/" or has no "=" is returned as it is.
class ZELCORE_API Localizer {
public:
    /// The one localizer; made when it is first asked for.
    static Localizer& GetInstance();

    /// Resolves one localised text. `keyAndDefault` is UTF-8.
    ustring GetString(std::string_view keyAndDefault) const;

    /// Replaces the dictionary by that of a JSON file: one object, key paths to texts. Throws
    /// zelcore::filesupport::FileError when the file cannot be read and zelcore::serialization::SerializationError when
    /// it is not such an object or is larger than 4 MiB; the dictionary in use then stays.
    void LoadDictionary(const filesupport::File& file);

    /// Adds the texts of a JSON file of the same form to the dictionary in use; for a key that both have, the new text
    /// counts. Throws what LoadDictionary throws, and all texts then stay as they were.
    void AddDictionary(const filesupport::File& file);

    /// The default texts' language, "en".
    static const ustring& GetDefaultLanguage();

    /// Looks in `folder`, which holds dictionaries named for their languages ("de.json", "pt-BR.json", "zh-Hant.json"),
    /// for the first of the `wanted` languages that there is one for. The languages come as systems name them, the one
    /// liked best first: "de-AT", "de_AT.UTF-8@euro", "DE". Each is tried as it is ("de-AT"), then with less behind it
    /// ("de"). English, "C" and "POSIX" are the default texts, which are always there, so nothing after them is tried.
    /// Returns the language as in the file's name, GetDefaultLanguage(), or nothing when there is none of them. What is
    /// no language's name ("../de", "") is passed over; no file outside of `folder` is looked at. Any thread.
    static ustring FindLanguage(const filesupport::Dir& folder, const std::vector<ustring>& wanted);

    /// Adds the dictionary that FindLanguage finds. Returns false when there is none to add: none found, or the default
    /// texts are wanted; the texts then stay as they were. Throws like AddDictionary.
    bool AddLanguage(const filesupport::Dir& folder, const std::vector<ustring>& wanted);

    /// Goes back to the default texts.
    void Clear();

private:
    typedef std::map<utf8string, ustring> Texts;

    Localizer();
    ~Localizer();
    Localizer(const Localizer&) = delete;
    Localizer& operator=(const Localizer&) = delete;

    static Texts Read(const filesupport::File& file);

    Texts mTexts;
};

/// Shorthand for `Localizer::GetInstance().GetString(keyAndDefault)`.
ZELCORE_API ustring Localize(std::string_view keyAndDefault);

/// The host application's display name, the title of its message boxes; "Tessaly" until the host sets its own.
ZELCORE_API ustring GetClientName();
ZELCORE_API void SetClientName(const ustring& name);

}  // namespace config
}  // namespace zelcore
