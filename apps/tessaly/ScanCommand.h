#pragma once

#include <cstddef>
#include <vector>

#include <zelcore/Signals.h>
#include <zelcore/ustring.h>

#include "CommandLine.h"

namespace tessaly {

/// `tessaly scan`: scans, shows how far it is, and prints the catalogue. Main thread.
class ScanCommand {
public:
    explicit ScanCommand(const CommandLine& line);

    /// Runs the scan and returns the program's exit code.
    int Run();

private:
    void Scan(const std::vector<zelcore::ustring>& folders) const;
    std::vector<zelcore::ustring> GetFolders() const;
    std::size_t CountNotReached(const std::vector<zelcore::ustring>& folders) const;
    void PrintProgress(unsigned long current, unsigned long total, const zelcore::ustring& text);

    CommandLine mLine;
    bool mTerminal;
    unsigned long mLastPrinted;
    boost::signals::scoped_connection mProgressConnection;
};

}  // namespace tessaly
