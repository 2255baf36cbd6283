#include <system_error>

#include <zelcore/FileError.h>
#include <zelcore/Utf.h>

namespace zelcore {
namespace filesupport {

namespace {

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
    if (systemError != 0) message += ": " + std::system_category().message(systemError);
    return message;
}

}  // namespace

FileError::FileError(const std::string& operation, const ustring& path, int systemError)
    : std::runtime_error(MakeMessage(operation, path, systemError)), mPath(path), mSystemError(systemError) {}

FileError::~FileError() = default;

}  // namespace filesupport
}  // namespace zelcore
