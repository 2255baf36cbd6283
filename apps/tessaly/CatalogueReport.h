#pragma once

#include <string>
#include <vector>

namespace tessaly {

/// The catalogue, what was looked at in vain and the ban list, as rows for printing. Main thread.
class CatalogueReport {
public:
    /// Reads the catalogue and the ban list of this process as they are now.
    CatalogueReport();

    /// An array of objects, one a plug-in.
    std::string ToJson() const;
    /// A table for a terminal, and a line that sums it up.
    std::string ToTable() const;
    /// The last line of the table: how many there are of each kind.
    std::string GetSummary() const;

private:
    struct Row {
        std::string format;
        std::string path;
        std::string subcomponent;
        std::string name;
        std::string vendor;
        std::string version;
        bool enabled = false;
        std::string status;  ///< "working", "failed" or "banned"
        std::string reason;  ///< why it is not working
        std::string kind;    ///< "effect", "instrument", "effect and instrument", or empty when not known
        std::vector<std::string> componentIds;
    };

    void AddWorking();
    void AddFailed();
    void AddBanned();

    std::vector<Row> mRows;
};

}  // namespace tessaly
