#include "support/ScratchFolder.h"

#include <filesystem>
#include <fstream>
#include <random>

#include <zelcore/Utf.h>

#include "support/Expect.h"

namespace zelfuzz {

ScratchFolder::ScratchFolder() {
    std::random_device random;
    std::filesystem::path candidate;
    do {
        candidate = std::filesystem::temp_directory_path() / ("zelfuzz-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(candidate));
    mPath = std::filesystem::canonical(candidate).string();
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

zelcore::filesupport::File ScratchFolder::GetFile(const std::string& name) const {
    return zelcore::filesupport::File(zelcore::utility::UTF8to16(Path(name)));
}

void ScratchFolder::Write(const std::string& name, std::string_view bytes) const {
    std::ofstream stream(Path(name), std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.flush();
    Expect(stream.good(), "the scratch file can be written");
}

void ScratchFolder::Clear() const {
    for (const auto& entry : std::filesystem::directory_iterator(mPath)) std::filesystem::remove_all(entry.path());
}

}  // namespace zelfuzz
