#include <sys/stat.h>

#include "CatalogueTestSupport.h"

namespace {

using zelaudiofilterhost::PluginModuleInfoManager;

class CatalogueReaderPosixTest : public zeltests::CatalogueTest {};

TEST_F(CatalogueReaderPosixTest, APipeOfThatNameDoesNotHang) {
    ASSERT_EQ(::mkfifo(mFolder.Path(kName).c_str(), 0600), 0);
    EXPECT_EQ(Load(), PluginModuleInfoManager::kMissing);
}

}  // namespace
