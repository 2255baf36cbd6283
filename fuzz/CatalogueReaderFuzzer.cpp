// The catalogue's text. What was read and is written again reads the same; of a text that is cut off remains what stood
// before the cut.
#include <string>
#include <vector>

#include "CatalogueReader.h"
#include "CatalogueText.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"

using namespace zelaudiofilterhost;
using zelfuzz::Expect;

namespace {

constexpr std::size_t kMaxFolders = 1024;
/// Lines that are tried by themselves, so that a long text does not take too long.
constexpr std::size_t kMaxTriedLines = 8;

bool AreSame(const PluginModuleInfo& left, const PluginModuleInfo& right) {
    return left.GetLocator() == right.GetLocator() && left.GetName() == right.GetName() &&
           left.GetFingerprint() == right.GetFingerprint() && left.GetComponents() == right.GetComponents() &&
           left.IsEnabled() == right.IsEnabled();
}

bool AreSame(const CatalogueRecord& left, const CatalogueRecord& right) {
    if (left.kind != right.kind || !left.info != !right.info) return false;
    if (left.info && !AreSame(*left.info, *right.info)) return false;
    return left.locator == right.locator && left.failure == right.failure && left.enabled == right.enabled &&
           left.technology == right.technology && left.folders == right.folders;
}

/// Whether `left` is what `right` begins with.
bool BeginsWith(const std::vector<CatalogueRecord>& right, const std::vector<CatalogueRecord>& left) {
    if (left.size() > right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (!AreSame(left[i], right[i])) return false;
    }
    return true;
}

bool AreSame(const std::vector<CatalogueRecord>& left, const std::vector<CatalogueRecord>& right) {
    return left.size() == right.size() && BeginsWith(right, left);
}

void AppendRecord(std::string& text, const CatalogueRecord& record) {
    switch (record.kind) {
        case CatalogueRecord::kModule:
            return AppendModuleLine(text, *record.info);
        case CatalogueRecord::kFailed:
            return AppendFailedLine(text, record.failure, !record.enabled);
        case CatalogueRecord::kChoice:
            return AppendChoiceLine(text, record.locator);
        case CatalogueRecord::kRemoved:
            return AppendRemovedLine(text, record.locator);
        case CatalogueRecord::kTechnology:
            return AppendTechnologyLine(text, record.technology, record.folders);
    }
}

std::string MakeText(const std::string& lines) {
    return std::string(kCatalogueHeader).append(lines).append(kCatalogueTail);
}

void CheckLimits(const CatalogueRecord& record) {
    const std::size_t length = record.locator.GetPath().size() + record.locator.GetSubcomponent().size();
    Expect(length <= PluginLocator::kMaxTextLength, "a locator is not too long");
    Expect((record.kind == CatalogueRecord::kTechnology) == record.locator.GetPath().empty(),
           "a record names a plug-in");
    Expect(record.folders.size() <= kMaxFolders, "there are not too many folders");
    Expect((record.kind == CatalogueRecord::kModule) == (record.info != nullptr), "a plug-in that works has its entry");
    if (!record.info) return;
    const std::vector<PluginComponentInfo>& components = record.info->GetComponents();
    Expect(!components.empty() && components.size() <= kMaxComponents, "there are components, not too many");
    Expect(!record.info->GetName().empty(), "a plug-in has a name to show");
    for (const PluginComponentInfo& component : components) {
        Expect(component.name.size() <= PluginComponentInfo::kMaxTextLength, "texts are not too long");
        Expect(component.inputBuses.size() <= PluginComponentInfo::kMaxBuses, "there are not too many buses");
        Expect(component.parameterCount >= 0 && component.parameterCount <= PluginComponentInfo::kMaxParameters,
               "counts are counts");
    }
}

void CheckRoundTrip(std::vector<CatalogueRecord> records) {
    // A choice that leaves a plug-in on is never written: it is what holds without a choice.
    std::erase_if(records, [](const CatalogueRecord& record) {
        return record.kind == CatalogueRecord::kChoice && record.enabled;
    });
    std::string lines;
    for (const CatalogueRecord& record : records) AppendRecord(lines, record);
    const CatalogueContent again = ReadCatalogue(MakeText(lines));
    Expect(again.isIntact && AreSame(records, again.records), "what was written reads the same");
}

void CheckLines(const std::vector<CatalogueRecord>& records) {
    std::size_t tried = 0;
    for (const CatalogueRecord& record : records) {
        if (record.line.empty()) continue;
        if (++tried > kMaxTriedLines) return;
        const CatalogueContent again = ReadCatalogue(MakeText(record.line));
        Expect(again.isIntact && again.records.size() == 1 && AreSame(again.records.front(), record),
               "a line that is kept says what was read of it");
    }
}

bool AllHaveLines(const std::vector<CatalogueRecord>& records) {
    for (const CatalogueRecord& record : records) {
        if (record.line.empty()) return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const CatalogueContent content = ReadCatalogue(text);
    Expect(content.isCatalogue || (!content.isIntact && content.records.empty()), "nothing is read of what is none");
    for (const CatalogueRecord& record : content.records) CheckLimits(record);
    CheckRoundTrip(content.records);
    CheckLines(content.records);
    if (!content.isIntact || !AllHaveLines(content.records)) return 0;
    const std::size_t cut = size * bytes[size / 2] / 256;
    Expect(BeginsWith(content.records, ReadCatalogue(text.substr(0, cut)).records),
           "of a text that is cut off remains what stood before the cut");
    return 0;
}
