#include <zelcore/FileError.h>

#include <algorithm>
#include <iterator>
#include <system_error>

#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>

#include "SystemErrorText.h"

namespace zelcore {
namespace filesupport {

namespace {

using config::Localize;
using utility::FillPlaceholders;

/// What could not be done. Several verbs say the same to people.
struct OperationText {
    const char* operation;
    const char* keyAndDefault;
};

constexpr char kWrite[] = "$$$/zelcore/FileError/Write='@0' could not be written";
constexpr char kRead[] = "$$$/zelcore/FileError/Read='@0' could not be read";
constexpr char kRename[] = "$$$/zelcore/FileError/Rename='@0' could not be renamed";
constexpr char kRegular[] = "$$$/zelcore/FileError/Regular='@0' is something else than a file";

constexpr OperationText kOperations[] = {
    {"write", kWrite},
    {"extend", kWrite},
    {"save so large a", kWrite},
    {"read", kRead},
    {"open", kRead},
    {"look at", kRead},
    {"measure", kRead},
    {"read the link", kRead},
    {"rename", kRename},
    {"find a free name for", kRename},
    {"write as a regular file", kRegular},
    {"open as a regular file", kRegular},
    {"delete", "$$$/zelcore/FileError/Delete='@0' could not be deleted"},
    {"make the folder", "$$$/zelcore/FileError/MakeFolder=the folder '@0' could not be made"},
    {"find the home folder", "$$$/zelcore/FileError/HomeFolder=your home folder was not found"},
};

/// The reasons that people meet.
struct ReasonText {
    std::errc reason;
    const char* keyAndDefault;
};

constexpr ReasonText kReasons[] = {
    {std::errc::no_such_file_or_directory, "$$$/zelcore/FileError/NotThere=there is no such file or folder"},
    {std::errc::permission_denied, "$$$/zelcore/FileError/Permission=you do not have the permission"},
    {std::errc::operation_not_permitted, "$$$/zelcore/FileError/Permission=you do not have the permission"},
    {std::errc::no_space_on_device, "$$$/zelcore/FileError/Full=the disk is full"},
    {std::errc::read_only_file_system, "$$$/zelcore/FileError/ReadOnly=the disk can only be read"},
    {std::errc::file_too_large, "$$$/zelcore/FileError/TooLarge=it is too large"},
    {std::errc::is_a_directory, "$$$/zelcore/FileError/IsFolder=it is a folder"},
};

ustring DescribeReason(int systemError) {
    const std::error_condition meaning = GetSystemErrorMeaning(systemError);
    const auto* const found = std::find_if(std::begin(kReasons), std::end(kReasons),
                                           [&](const ReasonText& text) { return meaning == text.reason; });
    return found != std::end(kReasons) ? Localize(found->keyAndDefault)
                                       : utility::UTF8to16(GetSystemErrorText(systemError));
}

/// File names may hold line breaks and other control characters; a message must stay one line.
std::string OneLine(const utf8string& text) {
    std::string line(text.begin(), text.end());
    for (char& c : line) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) c = '?';
    }
    return line;
}

std::string MakeMessage(const std::string& operation, const ustring& path, int systemError) {
    std::string message = "could not " + operation + " '" + OneLine(utility::UTF16to8(path)) + "'";
    if (systemError != 0) message += ": " + GetSystemErrorText(systemError);
    return message;
}

}  // namespace

FileError::FileError(const std::string& operation, const ustring& path, int systemError)
    : std::runtime_error(MakeMessage(operation, path, systemError)),
      mOperation(operation),
      mPath(path),
      mSystemError(systemError) {}

FileError::~FileError() = default;

ustring FileError::GetLocalizedText() const {
    const auto* const found = std::find_if(std::begin(kOperations), std::end(kOperations),
                                           [this](const OperationText& text) { return mOperation == text.operation; });
    if (found == std::end(kOperations)) return utility::UTF8to16(what());
    const ustring path = utility::UTF8to16(OneLine(utility::UTF16to8(mPath)));
    const ustring text = FillPlaceholders(Localize(found->keyAndDefault), {path});
    if (mSystemError == 0) return text;
    return FillPlaceholders(Localize("$$$/zelcore/FileError/Because=@0: @1"), {text, DescribeReason(mSystemError)});
}

}  // namespace filesupport
}  // namespace zelcore
