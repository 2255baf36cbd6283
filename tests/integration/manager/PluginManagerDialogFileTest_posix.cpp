#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <sys/resource.h>
#include <unistd.h>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/FileError.h>
#include <zelcore/Utf.h>

#include "ManagerStage.h"

namespace zeltests {

namespace {

/// As long as it is there no file can be opened, not even by an administrator.
class NoFilesToOpen {
public:
    NoFilesToOpen() {
        const int lowestFree = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        if (lowestFree < 0 || ::getrlimit(RLIMIT_NOFILE, &mFormer) != 0) throw std::logic_error("no limit to set");
        ::close(lowestFree);
        rlimit limit = mFormer;
        limit.rlim_cur = static_cast<rlim_t>(lowestFree);
        if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) throw std::logic_error("the limit was not set");
    }
    ~NoFilesToOpen() { ::setrlimit(RLIMIT_NOFILE, &mFormer); }
    NoFilesToOpen(const NoFilesToOpen&) = delete;
    NoFilesToOpen& operator=(const NoFilesToOpen&) = delete;

private:
    rlimit mFormer = {};
};

class PluginManagerDialogFileTest : public ManagerStage {};

}  // namespace

TEST_F(PluginManagerDialogFileTest, ACatalogueThatCannotBeReadAtCancelReachesTheHostAndTheSettingsAreStored) {
    AddPlugin("/p/delay.so", "Delay");
    SaveCatalogue();
    std::unique_ptr<NoFilesToOpen> limit;
    EXPECT_THROW(RunDialog([&] {
                     Click("DisableAllButton");
                     Click("RescanExisting");
                     Click("CancelButton");
                     limit = std::make_unique<NoFilesToOpen>();
                 }),
                 zelcore::filesupport::FileError);
    limit.reset();
    EXPECT_EQ(mChangedSignals, 0);
    EXPECT_TRUE(mSettings.rescanExisting);
    EXPECT_GE(mSettings.dialogRect.width, 400);
    // What could not be taken back is still in memory, and the file is as it was.
    EXPECT_FALSE(IsEnabled("/p/delay.so"));
    zelaudiofilterhost::PluginModuleInfoManager::GetInstance().LoadConfiguration(
        zelcore::filesupport::File(zelcore::utility::UTF8to16(GetCataloguePath())));
    EXPECT_TRUE(IsEnabled("/p/delay.so"));
}

}  // namespace zeltests
