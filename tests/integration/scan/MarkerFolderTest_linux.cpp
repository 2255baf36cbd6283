#include <filesystem>

#include <gmock/gmock.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/FileError.h>
#include <zelui/UI_ProgressDialog.h>

#include "ScanFixture.h"
#include "support/Unprivileged.h"

namespace zeltests {

using std::filesystem::perms;

/// A scan in this process, in whose middle the preferences folder stops to take anything.
class MarkerFolderTest : public ScanFixture {};

TEST_F(MarkerFolderTest, MarkerThatCannotBeDeletedBlamesNobody) {
    const Unprivileged unprivileged;
    const std::filesystem::path folder = mPreferences.GetFolder().GetPath();
    boost::signals::scoped_connection connection = zelui::dialogs::UI_ProgressDialog::GetProgressSignal().connect(
        [&](unsigned long, unsigned long, const zelcore::ustring&) {
            std::filesystem::permissions(folder, perms::owner_read | perms::owner_exec);
        });
    zelaudiofilterhostui::AudioPluginScan scan(nullptr);
    EXPECT_THROW(scan.ScanForPlugins(nullptr, {Vst(TestPlugin("vst/good/zel_gain.so"))}, false),
                 zelcore::filesupport::FileError);
    std::filesystem::permissions(folder, perms::owner_all);
    EXPECT_EQ("", ReadFile(GetMarkerPath()));
}

}  // namespace zeltests
