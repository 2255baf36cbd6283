#include "SystemErrorText.h"

#include <windows.h>

#include <zelcore/Utf.h>

#include "NativePath_win32.h"

namespace zelcore {
namespace filesupport {

std::string GetSystemErrorText(int error) {
    wchar_t* text = nullptr;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                       nullptr, static_cast<DWORD>(error), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring_view line(text != nullptr ? text : L"", length);
    // The system writes whole sentences, with an end of line behind them.
    line = line.substr(0, line.find_last_not_of(L" .\r\n") + 1);
    const utf8string bytes = utility::UTF16to8(FromWide(line));
    LocalFree(text);
    return bytes.empty() ? "error " + std::to_string(error) : std::string(bytes.begin(), bytes.end());
}

std::error_condition GetSystemErrorMeaning(int error) {
    switch (error) {
        // Those that the C++ library has no meaning for, or a wider one.
        case kIsFolderError:
            return std::errc::is_a_directory;
        case ERROR_FILE_TOO_LARGE:
            return std::errc::file_too_large;
        case ERROR_WRITE_PROTECT:
            return std::errc::read_only_file_system;
        default:
            return std::system_category().default_error_condition(error);
    }
}

}  // namespace filesupport
}  // namespace zelcore
