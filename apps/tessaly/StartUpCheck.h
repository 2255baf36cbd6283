#pragma once

namespace tessaly {

/// Reads ban lists and catalogue at the program's start, and deals with a plug-in that took the last run down. Main
/// thread, with an application object.
class StartUpCheck {
public:
    /// Tells the user in a box, or on the error stream where there is no display. What cannot be read or deleted is
    /// told there, too; the program goes on with what there is.
    static void Run();

private:
    static void CheckWithoutDisplay();
};

}  // namespace tessaly
