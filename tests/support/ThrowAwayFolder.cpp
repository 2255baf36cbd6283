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
    mPath = std::filesystem::canonical(candidate).string();
}

ThrowAwayFolder::~ThrowAwayFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

zelcore::filesupport::Dir ThrowAwayFolder::GetDir() const {
    return zelcore::filesupport::Dir(zelcore::utility::UTF8to16(mPath));
}

zelcore::ustring ThrowAwayFolder::UPath(const std::string& name) const {
    return zelcore::utility::UTF8to16(Path(name));
}

ThrowAwayPreferences::ThrowAwayPreferences() { zelcore::filesupport::Dir::SetPrefDir(mFolder.GetDir()); }

ThrowAwayPreferences::~ThrowAwayPreferences() { zelcore::filesupport::Dir::SetPrefDir(zelcore::filesupport::Dir()); }

std::string ReadFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << path;
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream << bytes;
    stream.flush();
    EXPECT_TRUE(stream.good()) << path;
}

}  // namespace zeltests
