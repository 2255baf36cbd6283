#pragma once

#include <string>
#include <vector>

#include <zelcore/ustring.h>

namespace tessaly {

/// The language of the program's windows. What it writes to the terminal, for people and for other programs, is
/// English.
class UserLanguage {
public:
    typedef std::vector<zelcore::ustring> Languages;

    /// The languages that the user has set for the system, the one liked best first: "de-AT".
    static Languages GetUsersLanguages();

    /// Loads the library's texts, the program's own and, where they are installed, Qt's, from "../share" beside the
    /// program's folder. The language is `chosen`, else that of the environment variable TESSALY_LANGUAGE ("de",
    /// "de_AT.UTF-8"; "en" for the default texts), else the first of `users` that there is. One that was asked for and
    /// is not there, and a dictionary that cannot be read, are told of on the error stream; the default texts stand in.
    ///
    /// Main thread, once, with an application object and before there is a window; Qt's texts last as long as the
    /// object.
    static void Load(const std::string& chosen = std::string(), const Languages& users = GetUsersLanguages());
};

}  // namespace tessaly
