#pragma once

#include <string>

#include "FaultPlan.h"

namespace zelfaults {

/// What befalls the application in the middle of a scan: "<what> <at> <how>" as FaultPoints has it, `at` being the
/// plug-in that the scan has reached, 0 before the first one.
///   die N -            the process ends
///   readonly N -       nobody may write into the profile any more
///   disk N BYTES       the profile's disk is full but for so much
///   handles N SPARE, space N SPARE, size N BYTES
///   file N HOW, memory N HOW   from the start of the scan, see FaultPoints
class HostFaults {
public:
    HostFaults(const std::string& profile, const FaultPlan& plan);

    /// The scan begins.
    void Begin();
    /// The scan has reached its `number`th plug-in.
    void Reach(unsigned long number);

private:
    void Act();

    const std::string mProfile;
    const FaultPlan mPlan;
    bool mIsDone = false;
};

}  // namespace zelfaults
