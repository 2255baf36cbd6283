#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zelaudiofilterscan {

/// What the scanner asks of its platform.
class ProcessSupport {
public:
    /// What the program was started with, without its own name, in UTF-8.
    static std::vector<std::string> GetArguments(int argumentCount, char** arguments);

    /// Prepares a process that serves a client: it ends with the process that started it, leaves no core files, asks
    /// nobody about a crash, and its standard streams lead nowhere (or to the file that ZEL_SCANNER_LOG names), so that
    /// plug-ins may print what they like. First thing in main.
    static void PrepareServer();

    /// Prepares a process run by hand: whatever plug-ins print goes to the error stream, and the returned descriptor
    /// leads to what was the output stream.
    static int PrepareManual();
    /// Writes to a descriptor of PrepareManual.
    static void Write(int descriptor, const std::string& text);

    /// The process that started this one.
    static unsigned long GetStarter();
    /// Whether the process that started this one has gone.
    static bool IsOrphaned();
    /// Memory of this process that is in use now.
    static std::size_t GetResidentMegabytes();
    /// Ends the process here and now, without running anything that a plug-in may have left behind.
    [[noreturn]] static void EndNow(int exitCode);
};

}  // namespace zelaudiofilterscan
