// The ban lists, the user's and the permanent one. What was read and is written again reads the same.
#include <string>

#include <zelcore/Utf.h>

#include "BanListFile.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"

using namespace zelaudiofilterhost;
using zelfuzz::Expect;

namespace {

void TryUserList(std::string_view text) {
    const auto list = ReadBanList(text);
    if (!list) return;
    for (const BannedPlugin& plugin : *list) Expect(!plugin.locator.GetPath().empty(), "a ban names a plug-in");
    const std::string written = WriteBanList(*list);
    const auto again = ReadBanList(written);
    Expect(again && again->size() == list->size(), "no ban gets lost");
    for (std::size_t i = 0; i < list->size(); ++i) {
        Expect((*again)[i].locator == (*list)[i].locator, "a ban is of the same plug-in");
        Expect((*again)[i].reason == (*list)[i].reason, "a ban has the same reason");
    }
    Expect(WriteBanList(*again) == written, "what reads the same is written the same");
}

void TryPermanentList(std::string_view text) {
    const auto list = ReadPermanentBanList(text);
    if (!list) return;
    Expect(list->size() <= text.size(), "there are no more bans than bytes");
    for (const PermanentBan& ban : *list) {
        Expect(!ban.fileName.empty(), "a ban names a file");
        Expect(FoldFileName(zelcore::utility::UTF8to16(ban.fileName)) == ban.fileName, "a name is folded once for all");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    TryUserList(text);
    TryPermanentList(text);
    return 0;
}
