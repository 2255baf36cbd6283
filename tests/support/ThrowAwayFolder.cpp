#include "support/ThrowAwayFolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include <gtest/gtest.h>
#include <zelcore/Utf.h>

namespace zeltests {

ThrowAwayFolder::ThrowAwayFolder() {
    std::random_device random;
    const std::filesystem::path base = std::filesystem::temp_directory_path();
    std::filesystem::path candidate;
    do {
        candidate = base / ("zeltest-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(candidate));
    const std::u8string path = std::filesystem::canonical(candidate).generic_u8string();
    mPath.assign(path.begin(), path.end());
}

ThrowAwayFolder::~ThrowAwayFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(ToPath(mPath), ignored);
}

zelcore::filesupport::Dir ThrowAwayFolder::GetDir() const {
    return zelcore::filesupport::Dir(zelcore::utility::UTF8to16(mPath));
}

zelcore::ustring ThrowAwayFolder::UPath(const std::string& name) const {
    return zelcore::utility::UTF8to16(Path(name));
}

ThrowAwayPreferences::ThrowAwayPreferences() { zelcore::filesupport::Dir::SetPrefDir(mFolder.GetDir()); }

ThrowAwayPreferences::~ThrowAwayPreferences() { zelcore::filesupport::Dir::SetPrefDir(zelcore::filesupport::Dir()); }

std::filesystem::path ToPath(const std::string& path) { return std::u8string(path.begin(), path.end()); }

std::string FullName(const std::string& path) {
    const std::u8string full = std::filesystem::absolute(ToPath(path)).make_preferred().u8string();
    return std::string(full.begin(), full.end());
}

std::string ReadFile(const std::string& path) {
    std::ifstream stream(ToPath(path), std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << path;
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream stream(ToPath(path), std::ios::binary | std::ios::trunc);
    stream << bytes;
    stream.flush();
    EXPECT_TRUE(stream.good()) << path;
}

}  // namespace zeltests
