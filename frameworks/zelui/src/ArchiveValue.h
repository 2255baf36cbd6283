#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <zelui/Export.h>

namespace zelui {

struct ArchivePair;

/// A list of a layout archive: names and values in the order in which they stand there, no name twice.
class ZELUI_API ArchiveList {
public:
    /// `line` is where the list begins; errors tell it.
    explicit ArchiveList(long line);

    /// False, and nothing else, when the list has the key already.
    bool Add(ArchivePair pair);
    /// Null when the list does not have the key.
    const ArchivePair* Find(std::string_view key) const;
    bool Has(std::string_view key) const { return Find(key) != nullptr; }
    const std::vector<ArchivePair>& GetPairs() const { return mPairs; }
    long GetLine() const { return mLine; }

    // The value of a key as what it has to be. Throws ui::ArchiveError when the key is missing or its value is
    // something else.

    std::int64_t GetInteger(std::string_view key) const;
    float GetNumber(std::string_view key) const;
    bool GetBoolean(std::string_view key) const;
    const std::string& GetText(std::string_view key) const;
    const ArchiveList& GetList(std::string_view key) const;
    /// A list that is a record of a kind: ".aptype" says which.
    const ArchiveList& GetRecord(std::string_view key, std::int64_t kind) const;

private:
    const ArchivePair& Get(std::string_view key) const;
    template <typename T>
    const T& GetAs(std::string_view key, const char* what) const;

    std::vector<ArchivePair> mPairs;
    long mLine;
};

/// A name and its value.
struct ArchivePair {
    typedef std::variant<std::int64_t, double, bool, std::string, ArchiveList> Value;

    std::string key;
    Value value;
    long line;
};

/// Throws ui::ArchiveError: `message`, and on which line.
[[noreturn]] void ThrowArchiveError(long line, const std::string& message);

}  // namespace zelui
