// Tessaly's sessions. One that was read and is written again reads the same.
#include <string>

#include "SessionError.h"
#include "SessionFile.h"
#include "SessionReader.h"
#include "SessionWriter.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"

using namespace tessaly;
using zelfuzz::Expect;

namespace {

/// There is no such folder: what sessions name is not looked for among the files of this machine.
constexpr char kFolder[] = "/nowhere/sessions";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    SessionRecord session;
    try {
        session = SessionReader::Read(text, kFolder);
    } catch (const SessionError& error) {
        Expect(error.what()[0] != '\0', "an error says what is wrong");
        return 0;
    }
    Expect(session.effects.size() <= SessionFile::kMaxEffects, "there are not too many effects");
    for (const EffectRecord& effect : session.effects) Expect(!effect.componentId.empty(), "an effect is of a plug-in");
    const QByteArray written = SessionWriter::Write(session, kFolder);
    const SessionRecord again =
        SessionReader::Read({written.data(), static_cast<std::size_t>(written.size())}, kFolder);
    Expect(again == session, "what was written reads the same");
    Expect(SessionWriter::Write(again, kFolder) == written, "and is written the same");
    return 0;
}
