#include <filesystem>

#include <sys/resource.h>

#include <zelaudiofilterhost/PluginModuleScanner.h>

#include "CatalogueTestSupport.h"

namespace {

using namespace zelaudiofilterhost;
using zeltests::Vst;

/// While it lives, this process gets no more than that of something.
class Shortage {
public:
    Shortage(__rlimit_resource resource, rlim_t value) : mResource(resource) {
        getrlimit(mResource, &mBefore);
        const rlimit limit = {value, mBefore.rlim_max};
        setrlimit(mResource, &limit);
    }
    ~Shortage() { setrlimit(mResource, &mBefore); }
    Shortage(const Shortage&) = delete;
    Shortage& operator=(const Shortage&) = delete;

private:
    const __rlimit_resource mResource;
    rlimit mBefore{};
};

/// A good plug-in that is looked at when there is too little for it.
class PluginShortageTest : public zeltests::CatalogueTest {
protected:
    PluginShortageTest() : mGain(Vst(mFolder.Path("gain.so"))) {
        std::filesystem::copy(std::filesystem::path(ZEL_TESTPLUGINS_DIR) / "vst/good/zel_gain.so",
                              mFolder.Path("gain.so"));
    }
    void Scan() const {
        const boost::intrusive_ptr<PluginModuleScanner> scanner(new PluginModuleScanner({mGain}, false));
        scanner->BeginScan();
        scanner->ContinueScan();
        scanner->EndScan();
    }
    void ExpectFailedAndTriedAgain() const {
        EXPECT_FALSE(Catalogue().FindPluginInfo(mGain));
        EXPECT_EQ(std::distance(Catalogue().FailureBegin(), Catalogue().FailureEnd()), 1);
        EXPECT_EQ(Catalogue().CollectPotentialPluginsIn({mFolder.UPath("")}, true), std::vector<PluginLocator>{mGain});
        Scan();
        EXPECT_TRUE(Catalogue().FindPluginInfo(mGain));
        EXPECT_EQ(Catalogue().FailureBegin(), Catalogue().FailureEnd());
        EXPECT_TRUE(Catalogue().CollectPotentialPluginsIn({mFolder.UPath("")}, true).empty());
    }

    const PluginLocator mGain;
};

}  // namespace

// Sanitizers take address space by the terabyte, and look at objects through descriptors of their own.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(PluginShortageTest, WithoutDescriptorsItFailsAndIsTriedAgain) {
    {
        const Shortage shortage(RLIMIT_NOFILE, 0);
        Scan();
    }
    ExpectFailedAndTriedAgain();
}

TEST_F(PluginShortageTest, WithoutMemoryItFailsAndIsTriedAgain) {
    {
        const Shortage shortage(RLIMIT_AS, 1);
        Scan();
    }
    ExpectFailedAndTriedAgain();
}
#endif
