#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zelaudiofilterhost/PluginLocator.h>
#include <zelcore/Signals.h>

#include "support/ThrowAwayFolder.h"

class QDialog;

namespace zeltests {

/// A scan in a throw-away profile with an empty catalogue and empty ban lists; records what the progress dialog shows
/// and how often the catalogue's listeners are told.
class ScanFixture : public ::testing::Test {
protected:
    struct Shown {
        unsigned long current;
        unsigned long total;
        std::string text;
    };

    ScanFixture();
    ~ScanFixture() override;

    /// Makes the folder of the real scanner process the application's, or that of the one that follows a script.
    /// `scripts` are those of the first, second, … start; the last one serves all further starts.
    void UseRealScanner();
    void UseScriptedScanner(const std::vector<std::string>& scripts);

    /// Lines of the scripted scanner's log, and how often it was started.
    std::vector<std::string> GetRequests() const;
    std::size_t CountLaunches() const;
    /// From now on there is no scanner where it is looked for.
    void RemoveScanner();
    /// Makes the file that a script waits for.
    void Release(const std::string& name) const;

    /// The progress dialog that is open now; null when none is.
    static QDialog* FindDialog();
    /// Presses its Cancel button with the mouse.
    static void ClickCancel();
    /// Runs `action` from the main loop as soon as `condition` holds.
    void WhenTrue(const std::function<bool()>& condition, const std::function<void()>& action);

    std::string GetPath(const std::string& preferencesFile) const {
        return mPreferences.GetFolder().Path(preferencesFile);
    }
    std::string GetCataloguePath() const;
    std::string GetBansPath() const;
    std::string GetMarkerPath() const { return GetPath("ScannedPluginPath.txt"); }
    static bool Exists(const std::string& path);

    static zelaudiofilterhost::PluginLocator Vst(const std::string& path);
    static zelaudiofilterhost::PluginLocator Vst3(const std::string& path);
    /// A file of the test plug-ins, such as "vst/good/zel_gain" ZEL_MODULE.
    static std::string TestPlugin(const std::string& name);
    static std::string ToString(const zelaudiofilterhost::PluginLocator& locator);
    static std::string ToBytes(const zelcore::ustring& text);

    /// Paths of the catalogue's entries in memory, and of the user's ban list; and those that their files hold.
    static std::vector<std::string> GetCatalogued();
    static std::vector<std::string> GetBanned();
    std::vector<std::string> GetCataloguedInFile();
    std::vector<std::string> GetBannedInFile();

    ThrowAwayPreferences mPreferences;
    ThrowAwayFolder mAppFolder;
    ThrowAwayFolder mScriptFolder;
    std::vector<Shown> mShown;
    int mChangedSignals = 0;

private:
    void EmptyCatalogue();

    std::vector<unsigned long> mTimers;
    boost::signals::scoped_connection mProgressConnection;
    boost::signals::scoped_connection mChangedConnection;
};

}  // namespace zeltests
