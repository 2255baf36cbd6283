#pragma once

#include <map>
#include <string_view>

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
    static Localizer& GetInstance();

    /// Resolves one localised text. `keyAndDefault` is UTF-8.
    ustring GetString(std::string_view keyAndDefault) const;

    /// Replaces the dictionary by that of a JSON file: one object, key paths to texts. Throws
    /// zelcore::filesupport::FileError when the file cannot be read and zelcore::serialization::SerializationError when
    /// it is not such an object or is larger than 4 MiB; the dictionary in use then stays.
    void LoadDictionary(const filesupport::File& file);

    /// Goes back to the default texts.
    void Clear();

private:
    Localizer();
    ~Localizer();
    Localizer(const Localizer&) = delete;
    Localizer& operator=(const Localizer&) = delete;

    std::map<utf8string, ustring> mTexts;
};

/// Shorthand for `Localizer::GetInstance().GetString(keyAndDefault)`.
ZELCORE_API ustring Localize(std::string_view keyAndDefault);

/// The host application's display name, the title of its message boxes; "Tessaly" until the host sets its own.
ZELCORE_API ustring GetClientName();
ZELCORE_API void SetClientName(const ustring& name);

}  // namespace config
}  // namespace zelcore
