#include "FaultRounds.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

#include "Round.h"
#include "Seclusion.h"

namespace zelfaults {

namespace {

void DrawNothing(RoundPlan&, RoundPlan::Random&) {}

const RoundPlan::Kind kUndisturbed = {"undisturbed", &DrawNothing, false, false, false};

}  // namespace

FaultRounds::FaultRounds(const Options& options) : mOptions(options), mWorkplace(Seclusion::Enter()) {
    for (const RoundPlan::Kind& kind : RoundPlan::GetKinds())
        if (std::string(kind.name).find(options.kind) != std::string::npos) mKinds.push_back(&kind);
}

bool FaultRounds::Run() {
    if (mKinds.empty()) {
        std::cerr << "there is no such kind\n";
        return false;
    }
    std::cout << "seed " << mOptions.seed << std::endl;
    if (!Prepare()) return false;
    const unsigned long first = mOptions.only < 0 ? 0 : static_cast<unsigned long>(mOptions.only);
    const unsigned long end = mOptions.only < 0 ? mOptions.rounds : first + 1;
    for (unsigned long number = first; number < end; ++number) RunRound(number);
    PrintTable();
    return std::all_of(mResults.begin(), mResults.end(),
                       [](const auto& result) { return result.second.survived == result.second.rounds; });
}

bool FaultRounds::Prepare() {
    if (!mWorkplace.Prepare()) return false;
    if (!mWorkplace.HasSmallDisk()) std::cout << "no disk can be mounted here; full ones are simulated" << std::endl;
    mBase = std::make_unique<HostReport>(mWorkplace.ReadBase());
    // A round in which nothing happens shows that the rest is the fault's doing, and how long a scan takes here.
    RoundPlan plan;
    plan.kind = &kUndisturbed;
    plan.withDeadly = true;
    Round round(mWorkplace, plan, *mBase, 0);
    const std::vector<std::string> problems = round.Run();
    mTypicalMilliseconds = static_cast<int>(round.GetScanTime().count());
    for (const std::string& problem : problems) std::cout << "undisturbed: " << problem << std::endl;
    if (!problems.empty()) std::cout << round.GetProtocol() << std::flush;
    return problems.empty();
}

RoundPlan FaultRounds::DrawRound(unsigned long number) const {
    RoundPlan::Random random(mOptions.seed * 1000003 + number);
    const unsigned long kind = number < mKinds.size() ? number : random() % mKinds.size();
    return RoundPlan::Draw(*mKinds[kind], random, mTypicalMilliseconds, mWorkplace.HasSmallDisk());
}

void FaultRounds::RunRound(unsigned long number) {
    const RoundPlan plan = DrawRound(number);
    Round round(mWorkplace, plan, *mBase, number + 1);
    const std::vector<std::string> problems = round.Run();
    Result& result = mResults[plan.kind->name];
    ++result.rounds;
    result.survived += problems.empty() ? 1 : 0;
    result.cancelled += round.WasCancelled() ? 1 : 0;
    if (mOptions.isVerbose) std::cout << number << ' ' << plan.Describe() << std::endl << round.GetProtocol();
    if (problems.empty()) return;
    std::cout << "round " << number << ", " << plan.Describe() << '\n';
    for (const std::string& problem : problems) std::cout << "    " << problem << '\n';
    std::cout << "    again: scripts/faults --seed " << mOptions.seed << " --round " << number
              << (mOptions.kind.empty() ? "" : " --kind '" + mOptions.kind + "'") << std::endl;
}

void FaultRounds::PrintTable() const {
    std::printf("%-32s %7s %9s %10s\n", "", "rounds", "survived", "cancelled");
    Result all;
    const auto print = [](const char* name, const Result& result) {
        std::printf("%-32s %7lu %9lu %10lu\n", name, result.rounds, result.survived, result.cancelled);
    };
    for (const RoundPlan::Kind* kind : mKinds) {
        const auto found = mResults.find(kind->name);
        if (found == mResults.end()) continue;
        print(kind->name, found->second);
        all.rounds += found->second.rounds;
        all.survived += found->second.survived;
        all.cancelled += found->second.cancelled;
    }
    print("all", all);
    std::fflush(stdout);
}

}  // namespace zelfaults
