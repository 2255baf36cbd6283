#include <zelcore/DebugDatabase.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include <zelcore/FileError.h>
#include <zelcore/FileUtils.h>
#include <zelcore/Utf.h>

namespace zelcore {
namespace debug {

namespace {

constexpr std::size_t kMaxFileBytes = 1u << 20;

bool IsAsciiLetterOrDigit(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

std::string EnvironmentName(const std::string& key) {
    std::string name = "ZEL_DEBUG_" + key;
    for (char& c : name)
        if (!IsAsciiLetterOrDigit(c)) c = '_';
    return name;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return std::string_view();
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

void ReadLine(std::string_view line, std::map<std::string, std::string>& entries) {
    const std::size_t equals = line.find('=');
    const std::string_view name = Trimmed(line.substr(0, equals));
    if (equals == std::string_view::npos || name.empty() || name.front() == '#') return;
    entries[std::string(name)] = Trimmed(line.substr(equals + 1));
}

std::map<std::string, std::string> ReadEntries() {
    std::map<std::string, std::string> entries;
    std::string text;
    try {
        const filesupport::File file(filesupport::Dir::PrefDir(), utility::AsciiToUTF16("DebugDatabase.txt"));
        text = utility::FileUtils::ReadFileToString(file, kMaxFileBytes);
    } catch (const filesupport::FileError&) {
        // Hardly anybody has this file; a developer's aid must never keep the program from starting.
        return entries;
    }
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        ReadLine(std::string_view(text).substr(begin, end - begin), entries);
        begin = end + 1;
    }
    return entries;
}

}  // namespace

DebugDatabase::DebugDatabase() : mFileEntries(ReadEntries()) {}

DebugDatabase::~DebugDatabase() = default;

DebugDatabase& DebugDatabase::Instance() {
    // Never freed: static objects may still ask for settings while the process ends.
    static DebugDatabase* const sInstance = new DebugDatabase;
    return *sInstance;
}

std::string DebugDatabase::GetEntry(const std::string& key, const std::string& defaultValue) const {
    const auto run = mRunEntries.find(key);
    if (run != mRunEntries.end()) return run->second;
    if (const char* const value = std::getenv(EnvironmentName(key).c_str())) return value;
    const auto inFile = mFileEntries.find(key);
    return inFile != mFileEntries.end() ? inFile->second : defaultValue;
}

bool DebugDatabase::GetBool(const std::string& key, bool defaultValue) const {
    const std::string value = GetEntry(key, std::string());
    if (value == "true" || value == "1") return true;
    if (value == "false" || value == "0") return false;
    return defaultValue;
}

void DebugDatabase::SetEntry(const std::string& key, const std::string& value) { mRunEntries[key] = value; }

void DebugDatabase::Reload() {
    mFileEntries = ReadEntries();
    mRunEntries.clear();
}

}  // namespace debug
}  // namespace zelcore
