#include "Arguments.h"

#include "UsageError.h"

namespace tessaly {

Arguments::Arguments(const std::vector<std::string>& arguments, std::size_t first)
    : mArguments(arguments), mNext(first) {}

bool Arguments::AtEnd() const { return mNext == mArguments.size(); }

std::string Arguments::Take() { return mArguments[mNext++]; }

std::string Arguments::TakeValueOf(const std::string& option) {
    if (AtEnd()) throw UsageError("a value is missing after '" + option + "'");
    return Take();
}

}  // namespace tessaly
