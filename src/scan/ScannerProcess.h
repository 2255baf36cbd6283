#pragma once

#include <zelcore/File.h>
#include <zelcore/ustring.h>

namespace zelaudiofilterhostui {

/// The scanner process as the platform knows it. A handle is null for none. Start, Abandon and Terminate belong to the
/// main thread; the rest may be asked from any thread while the handle stands.
class ScannerProcess {
public:
    /// Starts the program without arguments, without a window, with this process's environment and folder, and with
    /// none of its handles. Null when it cannot be started.
    static void* Start(const zelcore::filesupport::File& executable);

    /// Forgets a process whose connection is lost, before another one takes its place.
    static void Abandon(void* process);

    /// Ends the process whatever it is doing and forgets it.
    static void Terminate(void* process);

    /// The system's number of the process.
    static unsigned long GetId(void* process);

    /// False once the process has ended, whether or not anybody has taken notice.
    static bool IsRunning(void* process);

    /// How the process ended, in plain words for the ban list ("crashed: segmentation fault"); waits a moment for it to
    /// be over, and returns an empty text when it is not.
    static zelcore::ustring DescribeEnd(void* process);
};

}  // namespace zelaudiofilterhostui
