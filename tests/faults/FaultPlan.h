#pragma once

#include <string>

namespace zelfaults {

/// What befalls a program, as an environment variable tells it: "<what> <at> <how>", such as "file 7 full".
struct FaultPlan {
    std::string what;      ///< empty: nothing
    unsigned long at = 0;  ///< before how many such things went well
    std::string how;       ///< a word or a number, as `what` has it

    bool IsNone() const { return what.empty(); }
    unsigned long GetAmount() const;
    std::string ToText() const;

    /// What that variable says; nothing when it is not set.
    static FaultPlan Read(const char* variable);

    /// For the program that scans, and for the scanner process.
    static constexpr char kHostVariable[] = "ZEL_HOST_FAULT";
    static constexpr char kScannerVariable[] = "ZEL_SCANNER_FAULT";
};

}  // namespace zelfaults
