#pragma once

#include <cstdio>
#include <string>

namespace zelbench {

/// Hands a row to the table that scripts/bench prints at its end: what was measured, in which unit, of ours and of what
/// stands beside it. Figures of one run alone; the table works out the ratio.
inline void AddTableRow(const std::string& what, const char* unit, double ours, const std::string& comparedWith,
                        double theirs) {
    std::printf("@row\t%s\t%s\t%.6g\t%s\t%.6g\n", what.c_str(), unit, ours, comparedWith.c_str(), theirs);
    std::fflush(stdout);
}

/// A row of the table that says why there are no figures.
inline void AddTableNote(const std::string& what, const std::string& note) {
    std::printf("@row\t%s\t\t-\t%s\t\n", what.c_str(), note.c_str());
    std::fflush(stdout);
}

}  // namespace zelbench
