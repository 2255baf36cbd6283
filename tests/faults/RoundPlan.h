#pragma once

#include <random>
#include <string>
#include <vector>

#include "FaultPlan.h"

namespace zelfaults {

/// What happens in one round.
struct RoundPlan {
    typedef std::mt19937_64 Random;

    /// A kind of fault: how it is drawn, and what it may lead to.
    struct Kind {
        const char* name;
        void (*draw)(RoundPlan& plan, Random& random);
        /// The plug-in that a scanner, or an application that scans by itself, was working on may be banned.
        bool mayBlame;
        /// The scan may come to a halt, so that its user cancels it.
        bool mayStop;
        /// The application may die of it, although nobody kills it.
        bool mayDie;
    };

    const Kind* kind = nullptr;
    bool isSeparate = true;  ///< the scanner process, or in the application itself
    bool everything = true;  ///< scans what is known as well
    bool withDeadly = false;
    bool onSmallDisk = false;
    FaultPlan host;
    FaultPlan scanner;
    int scannerTimes = 1;  ///< how many scanner processes of the scan it befalls
    // Killed from outside, so many milliseconds after the scan began; negative: not.
    int killHostAfter = -1;
    int killScannerAfter = -1;

    bool MayHostBeKilled() const;
    std::string Describe() const;

    static const std::vector<Kind>& GetKinds();
    /// `typicalMilliseconds`: how long a scan takes here, which is when things from outside happen. `hasSmallDisk`: a
    /// disk can be filled.
    static RoundPlan Draw(const Kind& kind, Random& random, int typicalMilliseconds, bool hasSmallDisk);
};

}  // namespace zelfaults
