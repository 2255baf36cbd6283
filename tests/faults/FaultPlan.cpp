#include "FaultPlan.h"

#include <cstdlib>
#include <sstream>

namespace zelfaults {

unsigned long FaultPlan::GetAmount() const { return std::strtoul(how.c_str(), nullptr, 10); }

std::string FaultPlan::ToText() const { return IsNone() ? "" : what + " " + std::to_string(at) + " " + how; }

FaultPlan FaultPlan::Read(const char* variable) {
    FaultPlan plan;
    const char* const text = std::getenv(variable);
    std::istringstream stream(text ? text : "");
    stream >> plan.what >> plan.at >> plan.how;
    return plan;
}

}  // namespace zelfaults
