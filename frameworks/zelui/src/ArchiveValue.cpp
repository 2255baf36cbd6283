#include "ArchiveValue.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <zelui/ArchiveError.h>

namespace zelui {

void ThrowArchiveError(long line, const std::string& message) {
    throw ui::ArchiveError("line " + std::to_string(line) + ": " + message);
}

ArchiveList::ArchiveList(long line) : mLine(line) {}

bool ArchiveList::Add(ArchivePair pair) {
    if (Has(pair.key)) return false;
    mPairs.push_back(std::move(pair));
    return true;
}

const ArchivePair* ArchiveList::Find(std::string_view key) const {
    const auto found =
        std::find_if(mPairs.begin(), mPairs.end(), [key](const ArchivePair& pair) { return pair.key == key; });
    return found != mPairs.end() ? &*found : nullptr;
}

const ArchivePair& ArchiveList::Get(std::string_view key) const {
    const ArchivePair* const pair = Find(key);
    if (pair == nullptr) ThrowArchiveError(mLine, "the list has no \"" + std::string(key) + "\"");
    return *pair;
}

template <typename T>
const T& ArchiveList::GetAs(std::string_view key, const char* what) const {
    const ArchivePair& pair = Get(key);
    const T* const value = std::get_if<T>(&pair.value);
    if (value == nullptr) ThrowArchiveError(pair.line, "\"" + std::string(key) + "\" is not " + what);
    return *value;
}

std::int64_t ArchiveList::GetInteger(std::string_view key) const { return GetAs<std::int64_t>(key, "a whole number"); }

float ArchiveList::GetNumber(std::string_view key) const {
    const double number = GetAs<double>(key, "a number");
    if (std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max()))
        ThrowArchiveError(Get(key).line, "\"" + std::string(key) + "\" is too large");
    return static_cast<float>(number);
}

bool ArchiveList::GetBoolean(std::string_view key) const { return GetAs<bool>(key, "true or false"); }

const std::string& ArchiveList::GetText(std::string_view key) const { return GetAs<std::string>(key, "a text"); }

const ArchiveList& ArchiveList::GetList(std::string_view key) const { return GetAs<ArchiveList>(key, "a list"); }

const ArchiveList& ArchiveList::GetRecord(std::string_view key, std::int64_t kind) const {
    const ArchiveList& record = GetList(key);
    if (record.GetInteger(".aptype") != kind)
        ThrowArchiveError(record.GetLine(), "\"" + std::string(key) + "\" is a record of another kind");
    return record;
}

}  // namespace zelui
