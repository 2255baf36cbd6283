#include "HostFaults.h"

#include "FaultPoints.h"

namespace zelfaults {

HostFaults::HostFaults(const std::string& profile, const FaultPlan& plan) : mProfile(profile), mPlan(plan) {
    if (mPlan.what == "readonly") FaultPoints::GiveUpPrivilege();
}

void HostFaults::Begin() {
    if (mPlan.what == "file")
        FaultPoints::CountFiles(mProfile, mPlan);
    else if (mPlan.what == "memory")
        FaultPoints::CountAllocations(mPlan);
    else
        Reach(0);
}

void HostFaults::Reach(unsigned long number) {
    if (mIsDone || number < mPlan.at) return;
    mIsDone = true;
    Act();
}

void HostFaults::Act() {
    if (mPlan.what == "die") FaultPoints::Die();
    if (mPlan.what == "readonly") FaultPoints::ForbidWriting(mProfile);
    if (mPlan.what == "disk") FaultPoints::FillDisk(mProfile, mPlan.GetAmount());
    if (mPlan.what == "handles") FaultPoints::LimitHandles(mPlan.GetAmount());
    if (mPlan.what == "space") FaultPoints::LimitMemory(mPlan.GetAmount());
    if (mPlan.what == "size") FaultPoints::LimitFileSize(mPlan.GetAmount());
}

}  // namespace zelfaults
