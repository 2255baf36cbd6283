#include "RoundPlan.h"

#include <sstream>

#include "ReplyFaults.h"

namespace zelfaults {

namespace {

typedef RoundPlan::Random Random;

// Somewhat more than a scan of these plug-ins has, so that the last ones are among them.
constexpr int kReplies = 16;
constexpr int kPlugins = 7;
constexpr int kFileDeedsOfHost = 60;
constexpr int kFileDeedsOfScanner = 16;
constexpr int kAllocationsOfScan = 5000;

int Draw(Random& random, int first, int last) { return std::uniform_int_distribution<int>(first, last)(random); }

bool DrawBool(Random& random) { return Draw(random, 0, 1) == 1; }

std::string DrawFrom(Random& random, const std::vector<std::string>& words) {
    return words[static_cast<std::size_t>(Draw(random, 0, static_cast<int>(words.size()) - 1))];
}

FaultPlan Fault(const std::string& what, int at, const std::string& how) {
    return {what, static_cast<unsigned long>(at), how};
}
FaultPlan Fault(const std::string& what, int at, int amount) { return Fault(what, at, std::to_string(amount)); }

void DrawScannerKill(RoundPlan& plan, Random& random) {
    plan.scanner = Fault("kill", Draw(random, 0, kReplies), DrawFrom(random, {"before", "half", "after"}));
    plan.scannerTimes = Draw(random, 1, 3);
}

void DrawRandomScannerKill(RoundPlan& plan, Random&) { plan.killScannerAfter = 0; }

void DrawScannerFileKill(RoundPlan& plan, Random& random) {
    plan.scanner =
        Fault("file", Draw(random, 0, kFileDeedsOfScanner), DrawFrom(random, {"kill", "kill-after", "kill-half"}));
}

void DrawLate(RoundPlan& plan, Random& random) {
    plan.scanner = Fault("delay", Draw(random, 0, kReplies), Draw(random, 1, 150));
    plan.scannerTimes = 9;
}

void DrawBytes(RoundPlan& plan, Random& random) {
    plan.scanner = Fault("bytes", Draw(random, 0, 4), "-");
    plan.scannerTimes = 9;
}

void DrawTwice(RoundPlan& plan, Random& random) {
    plan.scanner = Fault("twice", Draw(random, 0, kReplies), "-");
    plan.scannerTimes = Draw(random, 1, 3);
}

void DrawWrongType(RoundPlan& plan, Random& random) {
    plan.scanner = Fault("type", Draw(random, 0, kReplies), Draw(random, 0, ReplyFaults::kForms - 1));
    plan.scannerTimes = Draw(random, 1, 3);
}

void DrawOrder(RoundPlan& plan, Random& random) {
    plan.scanner = Fault("order", Draw(random, 0, kReplies), DrawFrom(random, {"early", "late"}));
    plan.scannerTimes = Draw(random, 1, 3);
}

void DrawDiskFull(RoundPlan& plan, Random& random) {
    switch (Draw(random, 0, 3)) {
        case 0:
            plan.host = Fault("file", Draw(random, 0, kFileDeedsOfHost), "full");
            break;
        case 1:
            plan.scanner = Fault("file", Draw(random, 0, kFileDeedsOfScanner), "full");
            break;
        default:
            plan.onSmallDisk = true;
            plan.host = Fault("disk", Draw(random, 0, kPlugins), 4096 * Draw(random, 0, 6));
            break;
    }
    if (!plan.scanner.IsNone()) plan.isSeparate = true;
}

void DrawFileSize(RoundPlan& plan, Random& random) {
    if (plan.isSeparate && DrawBool(random))
        plan.scanner = Fault("size", Draw(random, 0, kReplies), Draw(random, 0, 800));
    else
        plan.host = Fault("size", Draw(random, 0, kPlugins), Draw(random, 0, 20000));
}

void DrawReadOnly(RoundPlan& plan, Random& random) {
    plan.host = DrawBool(random) ? Fault("readonly", Draw(random, 0, kPlugins), "-")
                                 : Fault("file", Draw(random, 0, kFileDeedsOfHost), "readonly");
}

void DrawBroken(RoundPlan& plan, Random& random) {
    if (plan.isSeparate && DrawBool(random))
        plan.scanner = Fault("file", Draw(random, 0, kFileDeedsOfScanner), "broken");
    else
        plan.host = Fault("file", Draw(random, 0, kFileDeedsOfHost), "broken");
}

void DrawHandles(RoundPlan& plan, Random& random) {
    if (plan.isSeparate && DrawBool(random))
        plan.scanner = Fault("handles", Draw(random, 0, kReplies), Draw(random, 0, 4));
    else
        plan.host = Fault("handles", Draw(random, 0, kPlugins), Draw(random, 0, 8));
}

void DrawMemory(RoundPlan& plan, Random& random) {
    FaultPlan& where = plan.isSeparate && DrawBool(random) ? plan.scanner : plan.host;
#if defined(__SANITIZE_ADDRESS__)  // which takes address space by the terabyte
    const bool bySystem = false;
#else
    const bool bySystem = DrawBool(random);
#endif
    if (bySystem)
        where = Fault("space", Draw(random, 0, kPlugins), Draw(random, 0, 64) * 131072);
    else
        where = Fault("memory", Draw(random, 0, kAllocationsOfScan), 1 << Draw(random, 0, 10));
}

void DrawHostKill(RoundPlan& plan, Random&) { plan.killHostAfter = 0; }

void DrawHostKillAtStep(RoundPlan& plan, Random& random) {
    plan.host = DrawBool(random) ? Fault("die", Draw(random, 0, kPlugins), "-")
                                 : Fault("file", Draw(random, 0, kFileDeedsOfHost),
                                         DrawFrom(random, {"kill", "kill-after", "kill-half"}));
}

}  // namespace

const std::vector<RoundPlan::Kind>& RoundPlan::GetKinds() {
    static const std::vector<Kind> kinds = {
        {"scanner killed at a step", &DrawScannerKill, true, false, false},
        {"scanner killed at random", &DrawRandomScannerKill, true, false, false},
        {"scanner killed while it writes", &DrawScannerFileKill, true, false, false},
        {"replies delayed", &DrawLate, false, false, false},
        {"replies in single bytes", &DrawBytes, false, false, false},
        {"a reply twice", &DrawTwice, true, false, false},
        {"a reply of a wrong type", &DrawWrongType, true, false, false},
        {"a reply out of order", &DrawOrder, true, false, false},
        {"disk full", &DrawDiskFull, false, false, false},
        {"file size limit", &DrawFileSize, false, false, false},
        {"folder read-only", &DrawReadOnly, false, false, false},
        {"disk broken once", &DrawBroken, false, false, false},
        {"file handles exhausted", &DrawHandles, true, true, false},
        {"memory refused", &DrawMemory, true, true, true},
        {"application killed at random", &DrawHostKill, true, false, false},
        {"application killed at a step", &DrawHostKillAtStep, true, false, false},
    };
    return kinds;
}

RoundPlan RoundPlan::Draw(const Kind& kind, Random& random, int typicalMilliseconds, bool hasSmallDisk) {
    RoundPlan plan;
    plan.kind = &kind;
    plan.isSeparate = DrawBool(random);
    plan.everything = zelfaults::Draw(random, 0, 3) != 0;
    kind.draw(plan, random);
    if (!plan.scanner.IsNone() || plan.killScannerAfter >= 0) plan.isSeparate = true;
    if (plan.onSmallDisk && !hasSmallDisk) {
        plan.onSmallDisk = false;
        plan.host = Fault("file", zelfaults::Draw(random, 0, kFileDeedsOfHost), "full");
    }
    // In the application itself they would take it with them.
    plan.withDeadly = plan.isSeparate && DrawBool(random);
    for (int* const after : {&plan.killHostAfter, &plan.killScannerAfter})
        if (*after >= 0) *after = zelfaults::Draw(random, 0, typicalMilliseconds * 5 / 4);
    return plan;
}

bool RoundPlan::MayHostBeKilled() const {
    return killHostAfter >= 0 || host.what == "die" || host.how.starts_with("kill");
}

std::string RoundPlan::Describe() const {
    std::ostringstream text;
    text << kind->name << ": " << (isSeparate ? "separate" : "inside") << (everything ? ", all" : ", new")
         << (withDeadly ? ", with deadly ones" : "") << (onSmallDisk ? ", on a small disk" : "");
    if (!host.IsNone()) text << ", application \"" << host.ToText() << '"';
    if (!scanner.IsNone()) text << ", scanner \"" << scanner.ToText() << "\" " << scannerTimes << " times";
    if (killHostAfter >= 0) text << ", application killed after " << killHostAfter << " ms";
    if (killScannerAfter >= 0) text << ", scanner killed after " << killScannerAfter << " ms";
    return text.str();
}

}  // namespace zelfaults
