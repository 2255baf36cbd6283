#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QSettings>
#include <QTest>
#include <QToolButton>
#include <QWindow>

#include <zelcore/Threads.h>
#include <zelui/Application.h>
#include <zelui/OS_FolderChooserDialog.h>

#include "DialogTools.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {
namespace {

using zelcore::threads::AsyncCallFromMainThread;
using zelui::dialogs::OS_FolderChooserDialog;

class OS_FolderChooserDialogTest : public ::testing::Test {
protected:
    OS_FolderChooserDialogTest() {
        // Qt keeps in a file of the user where such dialogs have been.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(mSettings.GetPath()));
        std::filesystem::create_directories(mFolder.Path("Plug-Ins"));
        mDialog.SetWindowTitle(U("Choose a Plug-In Folder:"));
    }

    static QFileDialog* FindDialog() { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); }
    static QLineEdit* GetPathField(const QFileDialog& dialog) { return dialog.findChild<QLineEdit*>("fileNameEdit"); }
    static void Enter(const QFileDialog& dialog, const std::string& path) {
        QLineEdit* const field = GetPathField(dialog);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, QString::fromStdString(path));
        QTest::keyClick(field, Qt::Key_Return);
    }

    /// Runs the dialog and acts on it when it is shown.
    bool Run(const std::function<void(QFileDialog&)>& act) {
        bool seen = false;
        AsyncCallFromMainThread([&seen, act] {
            QFileDialog* const dialog = FindDialog();
            ASSERT_NE(dialog, nullptr);
            ASSERT_TRUE(ProcessUntil([dialog] { return dialog->isActiveWindow(); }));
            seen = true;
            act(*dialog);
            EXPECT_FALSE(dialog->isVisible());
            if (dialog->isVisible()) dialog->reject();
        });
        const bool chosen = mDialog.RunModal();
        EXPECT_TRUE(seen);
        EXPECT_FALSE(zelui::Application::CancelActiveDialog()) << "nothing stays open";
        return chosen;
    }

    std::string GetChosen() const {
        const zelcore::utf8string path = zelcore::utility::UTF16to8(mDialog.GetDirectory().FullPath());
        return std::string(path.data(), path.size());
    }

    /// As the system writes paths, which is how plug-ins' folders are written everywhere else.
    static std::string ToNative(const std::string& path) {
        return QDir::toNativeSeparators(QString::fromStdString(path)).toStdString();
    }

    const ThrowAwayFolder mSettings;
    const ThrowAwayFolder mFolder;
    OS_FolderChooserDialog mDialog{nullptr, OS_FolderChooserDialog::kMayMakeFolders};
};

}  // namespace

TEST_F(OS_FolderChooserDialogTest, ATypedPathAndReturnChooseTheFolder) {
    EXPECT_TRUE(Run([this](QFileDialog& dialog) { Enter(dialog, mFolder.Path("Plug-Ins")); }));
    EXPECT_EQ(GetChosen(), ToNative(mFolder.Path("Plug-Ins")));
    EXPECT_TRUE(mDialog.GetDirectory().Exists());
}

TEST_F(OS_FolderChooserDialogTest, ASeparatorAtTheEndAndDotsAreNoPartOfThePath) {
    EXPECT_TRUE(Run([this](QFileDialog& dialog) { Enter(dialog, mFolder.Path("./Plug-Ins/../Plug-Ins/")); }));
    EXPECT_EQ(GetChosen(), ToNative(mFolder.Path("Plug-Ins")));
}

TEST_F(OS_FolderChooserDialogTest, ShowsItsTitleAndFoldersOnly) {
    WriteFile(mFolder.Path("file.txt"), "x");
    mDialog.SetWindowTitle(U("[*] Choose"));
    Run([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "[*][*] Choose");
        EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
        EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
        EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
}

TEST_F(OS_FolderChooserDialogTest, EscapeClosingAndCancelChooseNothing) {
    EXPECT_TRUE(Run([this](QFileDialog& dialog) { Enter(dialog, mFolder.Path("Plug-Ins")); }));
    const std::function<void(QFileDialog&)> cancels[] = {
        [](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
        [](QFileDialog& dialog) { dialog.windowHandle()->close(); },
        [](QFileDialog&) { EXPECT_TRUE(zelui::Application::CancelActiveDialog()); }};
    for (const auto& cancel : cancels) {
        EXPECT_FALSE(Run(cancel));
        EXPECT_EQ(GetChosen(), "");
        EXPECT_FALSE(mDialog.GetDirectory().Exists());
    }
}

TEST_F(OS_FolderChooserDialogTest, BeforeItHasRunNothingIsChosen) {
    EXPECT_EQ(mDialog.GetDirectory(), zelcore::filesupport::Dir());
    EXPECT_FALSE(mDialog.GetDirectory().Exists());
}

TEST_F(OS_FolderChooserDialogTest, APathThatDoesNotExistIsRefusedAndTheDialogStays) {
    bool refused = false;
    EXPECT_FALSE(Run([&](QFileDialog& dialog) {
        AsyncCallFromMainThread([&] {
            QMessageBox* const message = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(message, nullptr);
            refused = message->text().contains("Missing");
            QTest::keyClick(message, Qt::Key_Escape);
        });
        Enter(dialog, mFolder.Path("Missing"));
        EXPECT_TRUE(dialog.isVisible());
        QTest::keyClick(&dialog, Qt::Key_Escape);
    }));
    EXPECT_TRUE(refused);
    EXPECT_EQ(GetChosen(), "");
}

TEST_F(OS_FolderChooserDialogTest, CancellingFromOutsideAlsoEndsItsMessage) {
    EXPECT_FALSE(Run([&](QFileDialog& dialog) {
        AsyncCallFromMainThread([] { EXPECT_TRUE(zelui::Application::CancelActiveDialog()); });
        Enter(dialog, mFolder.Path("Missing"));
    }));
}

TEST_F(OS_FolderChooserDialogTest, AFileIsNoFolderAndTheDialogStays) {
    WriteFile(mFolder.Path("file.txt"), "x");
    EXPECT_FALSE(Run([&](QFileDialog& dialog) {
        Enter(dialog, mFolder.Path("file.txt"));
        EXPECT_TRUE(dialog.isVisible());
        QTest::keyClick(&dialog, Qt::Key_Escape);
    }));
    EXPECT_EQ(GetChosen(), "");
}

TEST_F(OS_FolderChooserDialogTest, BeginsWhereTheLastOneEndedOrTheNearestFolderAboveThatIsStillThere) {
    std::filesystem::create_directories(mFolder.Path("Plug-Ins/More"));
    EXPECT_TRUE(Run([this](QFileDialog& dialog) { Enter(dialog, mFolder.Path("Plug-Ins/More")); }));
    const auto beginsIn = [this](const std::string& folder) {
        Run([&folder](QFileDialog& dialog) {
            EXPECT_EQ(dialog.directory().absolutePath(), QString::fromStdString(folder));
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
    };
    beginsIn(mFolder.Path("Plug-Ins/More"));
    std::filesystem::remove_all(mFolder.Path("Plug-Ins"));
    beginsIn(mFolder.GetPath());
}

TEST_F(OS_FolderChooserDialogTest, AFolderThatVanishesWhileTheDialogIsOpenIsNotChosen) {
    bool refused = false;
    EXPECT_FALSE(Run([&](QFileDialog& dialog) {
        std::filesystem::remove_all(mFolder.Path("Plug-Ins"));
        AsyncCallFromMainThread([&refused] { refused = zelui::Application::CancelActiveDialog(); });
        Enter(dialog, mFolder.Path("Plug-Ins"));
        EXPECT_TRUE(refused) << "a message was shown, in whose loop the posted call ran";
    }));
    EXPECT_EQ(GetChosen(), "");
}

TEST_F(OS_FolderChooserDialogTest, MakesFoldersOnlyWhereItMay) {
    const auto canMake = [this] {
        bool can = false;
        Run([&can](QFileDialog& dialog) {
            can = dialog.findChild<QToolButton*>("newFolderButton")->isEnabled();
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        return can;
    };
    EXPECT_TRUE(Run([this](QFileDialog& dialog) { Enter(dialog, mFolder.Path("Plug-Ins")); }));
    EXPECT_TRUE(canMake());
    OS_FolderChooserDialog other(nullptr, ~OS_FolderChooserDialog::kMayMakeFolders);
    bool can = true;
    AsyncCallFromMainThread([&can] {
        can = FindDialog()->findChild<QToolButton*>("newFolderButton")->isEnabled();
        FindDialog()->reject();
    });
    EXPECT_FALSE(other.RunModal());
    EXPECT_FALSE(can);
}

TEST_F(OS_FolderChooserDialogTest, BelongsToItsOwnerWhichMayGoFirst) {
    auto owner = std::make_unique<QWidget>();
    owner->show();
    OS_FolderChooserDialog dialog(zelui::qt::GetWindowHandle(owner.get()), OS_FolderChooserDialog::kMayMakeFolders);
    bool seen = false;
    AsyncCallFromMainThread([&] {
        seen = true;
        EXPECT_EQ(FindDialog()->windowHandle()->transientParent(), owner->windowHandle());
        owner.reset();
        EXPECT_TRUE(zelui::Application::CancelActiveDialog() || FindDialog() == nullptr);
    });
    EXPECT_FALSE(dialog.RunModal());
    EXPECT_TRUE(seen);
}

}  // namespace zeltests
