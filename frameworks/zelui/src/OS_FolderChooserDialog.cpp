#include <zelui/OS_FolderChooserDialog.h>

#include <memory>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <zelui/QtBridge.h>

#include "OpenDialogs.h"
#include "PlainText.h"
#include "WindowParent.h"

namespace zelui {
namespace dialogs {

namespace {

QString& GetLastChosen() {
    static QString* const folder = new QString;
    return *folder;
}

QString FindStart() {
    QString folder = GetLastChosen();
    while (!folder.isEmpty() && !QFileInfo(folder).isDir()) {
        const QString above = QFileInfo(folder).path();
        if (above == folder) break;
        folder = above;
    }
    return folder.isEmpty() || !QFileInfo(folder).isDir() ? QDir::homePath() : folder;
}

class ChooserWindow final : public QFileDialog {
public:
    explicit ChooserWindow(int options) {
        setObjectName(QStringLiteral("FolderChooser"));
        setAttribute(Qt::WA_QuitOnClose, false);
        // Before all else, which a dialog of the desktop would be told as well. Those know no owner among the windows
        // of other toolkits, and are as different as the desktops.
        setOption(QFileDialog::DontUseNativeDialog);
        setOption(QFileDialog::ShowDirsOnly);
        setOption(QFileDialog::ReadOnly, (options & OS_FolderChooserDialog::kMayMakeFolders) == 0);
        setAcceptMode(QFileDialog::AcceptOpen);
        setFileMode(QFileDialog::Directory);
        setDirectory(FindStart());
    }

    /// Closes without a choice, with the messages that it may be showing.
    void Dismiss() {
        for (QMessageBox* const message : findChildren<QMessageBox*>()) message->reject();
        reject();
    }

private:
    void showEvent(QShowEvent* event) override {
        QFileDialog::showEvent(event);
        WindowParent::Centre(*this);
    }
};

class Chooser final : private OpenDialog {
public:
    Chooser(HWND owner, int options, const zelcore::ustring& title)
        : mParent(owner), mWindow(std::make_unique<ChooserWindow>(options)) {
        if (!title.empty()) mWindow->setWindowTitle(ToWindowTitle(qt::ToQString(title)));
    }

    /// The path of what was chosen; empty for nothing.
    QString Run() {
        mWindow->setWindowModality(Qt::ApplicationModal);
        mParent.Attach(*mWindow);
        OpenDialogs::Add(this);
        const bool accepted = mWindow->exec() == QDialog::Accepted;
        OpenDialogs::Remove(this);
        const QStringList chosen = mWindow->selectedFiles();
        if (!accepted || chosen.isEmpty() || !QFileInfo(chosen.front()).isDir()) return QString();
        return QDir::cleanPath(QFileInfo(chosen.front()).absoluteFilePath());
    }

private:
    bool Cancel() override {
        mWindow->Dismiss();
        return true;
    }
    void Abandon() override { mWindow->Dismiss(); }

    WindowParent mParent;
    std::unique_ptr<ChooserWindow> mWindow;
};

}  // namespace

OS_NavigationDialog::OS_NavigationDialog() = default;

OS_NavigationDialog::~OS_NavigationDialog() = default;

void OS_NavigationDialog::SetWindowTitle(const zelcore::ustring& title) { mTitle = title; }

OS_FolderChooserDialog::OS_FolderChooserDialog(HWND owner, int options) : mOwner(owner), mOptions(options) {}

OS_FolderChooserDialog::~OS_FolderChooserDialog() = default;

bool OS_FolderChooserDialog::RunModal() {
    mDirectory = zelcore::filesupport::Dir();
    const QString chosen = Chooser(mOwner, mOptions, GetWindowTitle()).Run();
    if (chosen.isEmpty()) return false;
    GetLastChosen() = chosen;
    mDirectory = zelcore::filesupport::Dir(qt::FromQString(QDir::toNativeSeparators(chosen)));
    return true;
}

const zelcore::filesupport::Dir& OS_FolderChooserDialog::GetDirectory() const { return mDirectory; }

}  // namespace dialogs
}  // namespace zelui
