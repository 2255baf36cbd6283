#include <sys/resource.h>

#include <csignal>
#include <fstream>

#include <zelcore/FileError.h>

#include "CatalogueStoreStage.h"

namespace {

using namespace zelaudiofilterhost;
using zelcore::filesupport::FileError;
using zeltests::MakeInfo;
using zeltests::StateOfCatalogue;
using zeltests::Vst;

class CatalogueFullDiskTest : public zeltests::CatalogueStoreTest {};

/// No file can grow beyond a size while the object lives, as on a disk that is full.
class FileSizeLimit {
public:
    explicit FileSizeLimit(std::size_t bytes) {
        mOldHandler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &mOld);
        const rlimit limit = {bytes, mOld.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &mOld);
        std::signal(SIGXFSZ, mOldHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit mOld;
    void (*mOldHandler)(int);
};

TEST_F(CatalogueFullDiskTest, AnAdditionThatDoesNotFitLeavesTheFileAsItWasAndIsTriedAgain) {
    AddMany(10);
    Save();
    const std::string before = Text();
    Catalogue().AddPluginInfo(MakeInfo(Vst("/new")));
    Catalogue().FindPluginInfo(Vst("/plugin2"))->SetEnabled(false);
    Catalogue().RemovePluginLocators({Vst("/plugin4")});
    const std::string state = StateOfCatalogue();
    for (const std::size_t room : {std::size_t(0), std::size_t(1), std::size_t(100), std::size_t(900)}) {
        const FileSizeLimit limit(before.size() + room);
        EXPECT_THROW(Save(), FileError) << room;
        EXPECT_EQ(Text(), before) << room;
        EXPECT_EQ(StateOfCatalogue(), state);
    }
    EXPECT_EQ(NamesInFolder(), std::vector<std::string>{kName});
    Save();
    ExpectFileToHoldTheState();
    EXPECT_EQ(StateOfCatalogue(), state);
}

TEST_F(CatalogueFullDiskTest, AWholeSaveThatDoesNotFitLeavesTheOldFileAndNothingBeside) {
    AddMany(10);
    Save();
    const std::string before = Text();
    AddMany(3000);
    std::ofstream(mFolder.Path(kName), std::ios::app) << "\n";
    {
        const FileSizeLimit limit(before.size() * 2);
        EXPECT_THROW(Save(), FileError);
    }
    EXPECT_EQ(Text(), before + "\n");
    EXPECT_EQ(NamesInFolder(), std::vector<std::string>{kName});
    Save();
    ExpectFileToHoldTheState();
}

}  // namespace
