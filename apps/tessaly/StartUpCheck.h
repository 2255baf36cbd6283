#pragma once

namespace tessaly {

/// Reads ban lists and catalogue at the program's start, and deals with a plug-in that took the last run down. Main
/// thread, with an application object.
class StartUpCheck {
public:
    /// Tells the user in a box, or on the error stream where there is no display. A list that cannot be written or a
    /// marker that cannot be deleted is told there, too, and the program goes on. Throws
    /// zelcore::filesupport::FileError for a file that is there and cannot be read: what is in it must not be replaced
    /// by the next save.
    static void Run();

private:
    static void CheckWithoutDisplay();
};

}  // namespace tessaly
