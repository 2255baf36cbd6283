#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>

#include "HostReport.h"
#include "RoundPlan.h"
#include "Workplace.h"

namespace zelfaults {

/// Many rounds, the first ones of each kind in turn and then chosen at random, and a table of them.
class FaultRounds {
public:
    struct Options {
        unsigned long rounds = 1000;
        unsigned long seed = 0;
        long only = -1;    ///< this round alone
        std::string kind;  ///< only kinds with this in their names
        bool isVerbose = false;
    };

    explicit FaultRounds(const Options& options);

    /// True when all of them were survived.
    bool Run();

private:
    struct Result {
        unsigned long rounds = 0;
        unsigned long survived = 0;
        unsigned long cancelled = 0;
    };

    bool Prepare();
    RoundPlan DrawRound(unsigned long number) const;
    void RunRound(unsigned long number);
    void PrintTable() const;

    const Options mOptions;
    Workplace mWorkplace;
    std::vector<const RoundPlan::Kind*> mKinds;
    std::unique_ptr<HostReport> mBase;
    int mTypicalMilliseconds = 0;
    std::map<std::string, Result> mResults;
};

}  // namespace zelfaults
