// Headers of plug-in files, looked at before the system's loader is. What nothing speaks against lies wholly in its
// file.
#include <cstring>
#include <string>

#include <elf.h>
#include <link.h>

#include "LibraryImage.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"
#include "support/ScratchFolder.h"

using zelaudiofilterhost::FindLoadObstacle;
using zelfuzz::Expect;

namespace {

constexpr std::size_t kMaxReason = 80;

/// Where the last part that the loader maps ends. The image is one that nothing speaks against.
std::size_t GetEnd(std::string_view image) {
    ElfW(Ehdr) header;
    Expect(image.size() >= sizeof(header), "the header is there");
    std::memcpy(&header, image.data(), sizeof(header));
    Expect(header.e_type == ET_DYN && header.e_phnum > 0, "it is a library that has parts");
    std::size_t end = sizeof(header);
    for (std::size_t i = 0; i < header.e_phnum; ++i) {
        ElfW(Phdr) part;
        const std::size_t at = header.e_phoff + i * sizeof(part);
        Expect(at <= image.size() && image.size() - at >= sizeof(part), "the list of parts is there");
        std::memcpy(&part, image.data() + at, sizeof(part));
        end = std::max(end, at + sizeof(part));
        if (part.p_type != PT_LOAD && part.p_type != PT_DYNAMIC) continue;
        Expect(part.p_offset <= image.size() && part.p_filesz <= image.size() - part.p_offset, "the part is there");
        end = std::max<std::size_t>(end, part.p_offset + part.p_filesz);
    }
    return end;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const zelfuzz::ScratchFolder folder;
    static const std::string path = folder.Path("image.so");
    const std::string_view image(reinterpret_cast<const char*>(bytes), size);
    folder.Write("image.so", image);
    const std::string reason = FindLoadObstacle(path);
    Expect(reason.size() <= kMaxReason, "a reason is short");
    for (const char c : reason) Expect(c >= ' ' && c <= '~', "a reason is plain text");
    if (!reason.empty()) return 0;
    folder.Write("image.so", image.substr(0, GetEnd(image) - 1));
    Expect(!FindLoadObstacle(path).empty(), "without its last byte it is cut off");
    return 0;
}
