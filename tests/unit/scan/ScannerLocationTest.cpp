#include <filesystem>

#include <gtest/gtest.h>
#include <scan/ScannerLocation.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/Utf.h>

using zelaudiofilterhostui::ScannerLocation;
using zelcore::filesupport::Dir;
using zelcore::filesupport::File;
using zelcore::utility::UTF16to8;
using zeltests::ThrowAwayFolder;
using zeltests::WriteFile;

namespace {

constexpr char kName[] = "zelaudiofilterscan.exe";
constexpr char kShared[] = "zelaudiofilterhostui/zelaudiofilterscan.exe";

class ScannerLocationTest : public ::testing::Test {
protected:
    void PutBesideApplication() { WriteFile(mApplication.Path(kName), "own"); }
    void PutBesideLibrary() {
        std::filesystem::create_directory(mLibrary.Path("zelaudiofilterhostui"));
        WriteFile(mLibrary.Path(kShared), "shared");
    }
    File Find() const { return ScannerLocation::Find(mApplication.GetDir(), mLibrary.GetDir()); }

    ThrowAwayFolder mApplication;
    ThrowAwayFolder mLibrary;
};

}  // namespace

TEST_F(ScannerLocationTest, TheOneBesideTheApplicationGoesBeforeTheSharedOne) {
    PutBesideApplication();
    PutBesideLibrary();
    EXPECT_EQ(File(mApplication.UPath(kName)), Find());
}

TEST_F(ScannerLocationTest, AnApplicationWithoutOneUsesTheOneThatIsInstalledWithTheLibrary) {
    PutBesideLibrary();
    EXPECT_EQ(File(mLibrary.UPath(kShared)), Find());
}

TEST_F(ScannerLocationTest, WithoutAnyThePlaceBesideTheApplicationIsNamed) {
    EXPECT_EQ(File(mApplication.UPath(kName)), Find());
    EXPECT_FALSE(Find().Exists());
}

TEST_F(ScannerLocationTest, OneThatLiesBesideTheLibraryAndNotInItsFolderIsNotTaken) {
    WriteFile(mLibrary.Path(kName), "stray");
    EXPECT_EQ(File(mApplication.UPath(kName)), Find());
}

TEST_F(ScannerLocationTest, AFolderOfThatNameIsNoScanner) {
    std::filesystem::create_directory(mApplication.Path(kName));
    PutBesideLibrary();
    EXPECT_EQ(File(mLibrary.UPath(kShared)), Find());
}

TEST_F(ScannerLocationTest, ALibraryWhoseFolderIsNotKnownHasNoSharedOne) {
    EXPECT_EQ(File(mApplication.UPath(kName)), ScannerLocation::Find(mApplication.GetDir(), Dir()));
}

TEST_F(ScannerLocationTest, TheLibrarysFolderIsThatOfTheModuleThatTheCodeIsIn) {
    // The code is linked into this program.
    EXPECT_EQ(UTF16to8(Dir::AppDir().FullPath()), UTF16to8(ScannerLocation::GetLibraryFolder().FullPath()));
}

TEST_F(ScannerLocationTest, TheApplicationsFolderMayBeSet) {
    PutBesideApplication();
    Dir::SetAppDir(mApplication.GetDir());
    EXPECT_EQ(File(mApplication.UPath(kName)), ScannerLocation::Find());
    Dir::SetAppDir(Dir());
}
