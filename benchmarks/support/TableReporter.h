#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Table.h"

namespace zelbench {

/// Prints what the benchmarks of a program took, as usual, and keeps it for rows of the table.
class TableReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) mTimes[run.benchmark_name()].push_back(run.GetAdjustedRealTime());
        }
        benchmark::ConsoleReporter::ReportRuns(runs);
    }

    /// A row of two of them, by their names as they are printed; the times are divided by `divisor` and `otherDivisor`.
    /// Nothing when one of them was not run.
    void AddRow(const std::string& what, const char* unit, const std::string& name, const std::string& comparedWith,
                const std::string& other, double divisor = 1.0, double otherDivisor = 1.0) const {
        if (!mTimes.contains(name) || !mTimes.contains(other)) return;
        AddTableRow(what, unit, GetMedian(name) / divisor, comparedWith, GetMedian(other) / otherDivisor);
    }

private:
    double GetMedian(const std::string& name) const {
        std::vector<double> times = mTimes.at(name);
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

    std::map<std::string, std::vector<double>> mTimes;
};

}  // namespace zelbench
