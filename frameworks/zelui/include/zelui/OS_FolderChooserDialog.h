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

    void SetWindowTitle(const zelcore::ustring& title);
    /// True when the user chose something, false for Cancel.
    virtual bool RunModal() = 0;

protected:
    OS_NavigationDialog();
    const zelcore::ustring& GetWindowTitle() const { return mTitle; }

private:
    zelcore::ustring mTitle;
};

/// Lets the user choose a folder that exists.
class ZELUI_API OS_FolderChooserDialog : public OS_NavigationDialog {
public:
    /// Combined by "or".
    enum Option { kMayMakeFolders = 4 };

    /// `owner` is the window that it belongs to, or null.
    OS_FolderChooserDialog(HWND owner, int options);
    ~OS_FolderChooserDialog() override;

    bool RunModal() override;
    /// What was chosen; a folder without a path, which does not exist, when nothing was.
    const zelcore::filesupport::Dir& GetDirectory() const;

private:
    HWND mOwner;
    int mOptions;
    zelcore::filesupport::Dir mDirectory;
};

}  // namespace dialogs
}  // namespace zelui
