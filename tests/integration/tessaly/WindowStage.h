#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <QAction>
#include <QWidget>

#include "MainWindow.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

/// The application's window with a profile of its own, a catalogue of test plug-ins and two sounds.
class WindowStage : public testing::Test {
protected:
    WindowStage();
    ~WindowStage() override;

    /// A new window, shown; the one before goes.
    void OpenWindow();
    /// Takes a test plug-in into the catalogue, as a scan would.
    void AddToCatalogue(int technology, const std::string& path);
    void AddEffect(const std::string& name);
    std::vector<std::string> GetChain();

    template <typename Widget = QWidget>
    Widget* Find(const char* objectName) {
        return mWindow->findChild<Widget*>(QLatin1String(objectName));
    }
    void Click(const char* objectName);
    void Trigger(const char* action);
    std::string GetNotice();
    std::string GetSound() const { return mFolder.Path("sound.wav"); }
    std::string GetSideChain() const { return mFolder.Path("key.wav"); }

    /// Does `action`, which opens a modal dialog, and `answer` with that dialog once it is there.
    static void WithDialog(const std::function<void()>& action, const std::function<void(QWidget&)>& answer);
    static bool WhenTrue(const std::function<bool()>& condition);

    ThrowAwayPreferences mPreferences;
    ThrowAwayFolder mFolder;
    std::unique_ptr<tessaly::MainWindow> mWindow;
};

}  // namespace zeltests
