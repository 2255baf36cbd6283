#include <zelaudiofilterhost/BannedPluginManager.h>

#include "CatalogueTestSupport.h"
#include "support/DiskWaits.h"

namespace {

using namespace zelaudiofilterhost;
using zeltests::DiskWaits;
using zeltests::MakeInfo;
using zeltests::Vst;

typedef zeltests::CatalogueTest DurableListsTest;

TEST_F(DurableListsTest, ABanListIsOnTheDiskWhenItIsSaved) {
    const DiskWaits waits;
    BannedPluginManager::GetInstance().SaveConfiguration(zelcore::filesupport::File(mFolder.UPath("bans")));
    EXPECT_EQ(waits.GetCount(), 1);
}

TEST_F(DurableListsTest, ACatalogueThatIsWrittenAnewIsOnTheDisk) {
    const DiskWaits waits;
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    Save();
    EXPECT_EQ(waits.GetCount(), 1);
}

}  // namespace
