#include "EditorWindow.h"

#include <gtest/gtest.h>
#include <QScrollArea>
#include <QTest>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

#include "SideChainBus.h"

namespace zeltests {

using tessaly::EditorWindow;
using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterDescriptor;
using zelmediatypes::MakeChannelLayoutForName;

namespace {

boost::intrusive_ptr<AudioFilter> LoadSideChainFilter() {
    const std::string path = std::string(ZEL_TESTPLUGINS_DIR) + "/vst/good/zel_sidechain" ZEL_MODULE;
    const boost::intrusive_ptr<AudioFilter> filter =
        AudioFilterDescriptor::ReadModule({zelaudiofilterhost::kTechnologyVST, zelcore::utility::UTF8to16(path)})
            .front()
            ->CreateFilter();
    filter->SetTargetFormat(MakeChannelLayoutForName("stereo"),
                            tessaly::SideChainBus::Make(MakeChannelLayoutForName("mono")));
    return filter;
}

}  // namespace

TEST(EditorWindowTest, AChannelMapsWindowNamesTheEffectAndWhatItShows) {
    EditorWindow window(LoadSideChainFilter());
    window.OpenChannelMap();
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Zel Side Chain: Channels"));
}

TEST(EditorWindowTest, TheTracksSideChainIsNamed) {
    const zelaudiofilterhost::AudioFilterBusDescription bus =
        tessaly::SideChainBus::Make(MakeChannelLayoutForName("mono"));
    EXPECT_EQ(zelui::qt::ToQString(bus.GetName()), QStringLiteral("Side-chain"));
    EXPECT_EQ(tessaly::SideChainBus::Make({}), zelaudiofilterhost::AudioFilterBusDescription());
}

TEST(EditorWindowTest, AChannelMapsWindowGrowsWithTheTrackUntilItScrolls) {
    const boost::intrusive_ptr<AudioFilter> filter = LoadSideChainFilter();
    EditorWindow window(filter);
    window.OpenChannelMap();
    const QScrollArea* const area = window.findChild<QScrollArea*>();
    ASSERT_NE(area, nullptr);
    const int before = window.height();
    EXPECT_EQ(before, area->widget()->height());
    ASSERT_TRUE(filter->SetTargetFormat(MakeChannelLayoutForName("5.1"), {}));
    EXPECT_GT(window.height(), before);
    EXPECT_EQ(window.height(), area->widget()->height());
    ASSERT_TRUE(filter->SetTargetFormat(MakeChannelLayoutForName("64"), {}));
    EXPECT_LT(window.height(), area->widget()->height());
    EXPECT_LE(window.height(), 640);
}

TEST(EditorWindowTest, AWindowThatGoesLeavesTheFilterUsable) {
    const boost::intrusive_ptr<AudioFilter> filter = LoadSideChainFilter();
    {
        EditorWindow window(filter);
        window.OpenChannelMap();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    filter->AssignChannelMapping(AudioFilter::kInput, 0, 1);
    EXPECT_EQ(filter->GetChannelMap(AudioFilter::kInput).at(0), 1);
}

}  // namespace zeltests
