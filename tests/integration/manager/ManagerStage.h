#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <QWidget>
#include <zelaudiofilterhost/PluginLocator.h>
#include <zelaudiofilterhost/TechnologyType.h>
#include <zelaudiofilterhostui/AudioPluginManager.h>
#include <zelcore/Signals.h>
#include <zelui/UI_Button.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_ClearButtonTextEdit.h>
#include <zelui/UI_MultiColumnTree.h>
#include <zelui/UI_MultiColumnTreeHeaderRow.h>

#include "support/ThrowAwayFolder.h"

namespace zeltests {

/// The plug-in manager in a throw-away profile: a catalogue and ban lists to fill, and the real dialog, used in its
/// modal loop by input events.
class ManagerStage : public ::testing::Test {
protected:
    typedef zelui::controls::UI_MultiColumnTree Tree;

    ManagerStage();
    ~ManagerStage() override;

    // The profile

    /// A working effect of the catalogue in memory.
    void AddPlugin(const std::string& path, const std::string& name, bool enabled = true,
                   zelaudiofilterhost::TechnologyType technology = zelaudiofilterhost::kTechnologyVST,
                   bool isInstrument = false);
    void Ban(const std::string& path,
             zelaudiofilterhost::TechnologyType technology = zelaudiofilterhost::kTechnologyVST);
    /// No folders, so that nothing of this machine is found.
    void SetFolders(const std::vector<std::string>& folders);
    std::vector<std::string> GetFolders() const;
    void SaveCatalogue();
    bool IsEnabled(const std::string& path) const;
    static std::string TestPlugin(const std::string& name);
    std::string GetPath(const std::string& preferencesFile) const {
        return mPreferences.GetFolder().Path(preferencesFile);
    }
    std::string GetCataloguePath() const;
    std::string GetBansPath() const;
    static zelaudiofilterhost::PluginLocator Locate(
        const std::string& path, zelaudiofilterhost::TechnologyType technology = zelaudiofilterhost::kTechnologyVST);
    static std::string ToBytes(const zelcore::ustring& text);

    // The dialog

    /// Runs the dialog; `use` is called from its modal loop once it can be seen. One that `use` leaves open is
    /// cancelled.
    void RunDialog(const std::function<void()>& use);
    QWidget& GetWindow() const;
    template <typename T = zelui::ui::UI_Node>
    T& Find(const std::string& id) const {
        return dynamic_cast<T&>(*FindNode(id));
    }
    Tree& GetPlugins() const { return Find<Tree>("PluginList"); }
    Tree& GetFolderTree() const { return Find<Tree>("DirectoryList"); }
    void Click(const std::string& id) const;
    void ClickNode(const zelui::ui::UI_Node& node) const;
    void Type(const std::string& text) const;
    void PressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;

    /// What is to be read in a list's column, from the top.
    static std::vector<std::string> Read(const Tree& tree, int column);
    std::vector<std::string> ReadNames() const { return Read(GetPlugins(), 1); }
    std::size_t FindRow(const std::string& name) const;
    /// Null while it is not in view or has none.
    zelui::controls::UI_Checkbox* GetEnabledBox(std::size_t row) const;
    zelui::controls::UI_Button* GetReloadButton(std::size_t row) const;
    void ClickHeader(int column) const;

    /// Runs the event loop until the condition holds; fails the test when it does not in time.
    static void ProcessUntil(const std::function<bool()>& condition);
    /// Runs `action` from the main loop as soon as `condition` holds.
    void WhenTrue(const std::function<bool()>& condition, const std::function<void()>& action);
    /// The window on top that waits for an answer; null when there is none but the dialog.
    QWidget* FindBox() const;

    ThrowAwayPreferences mPreferences;
    ThrowAwayFolder mFolder;
    zelaudiofilterhostui::AudioPluginManagerSettings mSettings;
    int mChangedSignals = 0;

private:
    zelui::ui::UI_Node* FindNode(const std::string& id) const;

    std::vector<unsigned long> mTimers;
    boost::signals::scoped_connection mChangedConnection;
};

}  // namespace zeltests
