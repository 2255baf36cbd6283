#pragma once

namespace zelfuzz {

/// Ends the program with what does not hold; the fuzzer keeps the input as a finding.
[[noreturn]] void Fail(const char* what);

/// The property that an input is tried for. `what` says it in words: "what was written reads the same".
inline void Expect(bool holds, const char* what) {
    if (!holds) Fail(what);
}

}  // namespace zelfuzz
