#pragma once

#include <zelcore/ustring.h>

namespace zelcore {
namespace filesupport {

/// The platform's folder for the settings of all the user's applications, whether it exists or not. Throws FileError
/// when the platform names none.
ustring UserSettingsFolder();
/// The folder of the running program. Throws FileError when the platform does not tell.
ustring ProgramFolder();

}  // namespace filesupport
}  // namespace zelcore
