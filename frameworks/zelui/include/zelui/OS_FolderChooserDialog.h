#pragma once

#include <memory>

#include <zelcore/Dir.h>
#include <zelcore/PlatformHandles.h>
#include <zelcore/ustring.h>

#include <zelui/Export.h>

namespace zelui {
namespace dialogs {

/// What dialogs for files and folders have in common. Main thread.
class ZELUI_API OS_NavigationDialog {
public:
    virtual ~OS_NavigationDialog();
    OS_NavigationDialog(const OS_NavigationDialog&) = delete;
    OS_NavigationDialog& operator=(const OS_NavigationDialog&) = delete;

    /// The title of the next RunModal; the platform's words for choosing a folder until it is set.
    void SetWindowTitle(const zelcore::ustring& title);
    /// True when the user chose something, false for Cancel.
    virtual bool RunModal() = 0;

protected:
    OS_NavigationDialog();
    /// The title of the dialog's window.
    const zelcore::ustring& GetWindowTitle() const { return mTitle; }

private:
    zelcore::ustring mTitle;
};

/// Lets the user choose a folder that exists, from a list or by typing its path. It begins in the folder that was
/// chosen last while the program has been running, or the nearest folder above it that is still there; the first time
/// in the user's home. A typed path that is no folder is refused, with a message when nothing is there, and the dialog
/// stays.
class ZELUI_API OS_FolderChooserDialog : public OS_NavigationDialog {
public:
    /// Combined by "or"; other bits count for nothing.
    enum Option {
        kMayMakeFolders = 4  ///< the dialog can also make a new folder, and rename and delete folders
    };

    /// `owner` is the window that it belongs to, or null.
    OS_FolderChooserDialog(HWND owner, int options);
    ~OS_FolderChooserDialog() override;

    /// Nothing is chosen either when the folder is gone by the time the dialog closes, or the application ends it. May
    /// be run again, for another choice.
    bool RunModal() override;
    /// What was chosen by the last RunModal; a folder without a path, which does not exist, when nothing was.
    const zelcore::filesupport::Dir& GetDirectory() const;

private:
    HWND mOwner;
    int mOptions;
    zelcore::filesupport::Dir mDirectory;
};

}  // namespace dialogs
}  // namespace zelui
