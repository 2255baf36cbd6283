#pragma once

#include <cstddef>
#include <string>

#include "support/ThrowAwayFolder.h"

namespace zeltests {

/// What tests of files need of the platform, without the code under test.

/// The system's numbers of errors, and what it says of one.
extern const int kNoSuchFile;
extern const int kNoSuchFolder;
extern const int kIsAFolder;
extern const int kInvalidPath;
extern const int kFileTooLarge;
extern const int kDiskFull;
extern const int kNoPermission;
extern const int kDeviceBroken;
std::string GetSystemText(int error);

/// The variable that names the folder in which applications keep their settings.
extern const char* const kSettingsVariable;

/// Makes a link at `path`. False where the system or this user cannot.
bool MakeLink(const std::string& target, const std::string& path);
/// Whether nobody but this user, and who may do everything anyhow, can use the folder.
bool IsForThisUserOnly(const std::string& folder);
/// How many files and folders there are in a folder.
std::size_t CountEntries(const ThrowAwayFolder& folder);
/// The folder of the running test program, as the system writes it.
std::string GetProgramFolder();

}  // namespace zeltests
