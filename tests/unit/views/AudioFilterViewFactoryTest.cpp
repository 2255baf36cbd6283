#include <zelaudiofilterhostui/AudioFilterViewFactory.h>

#include <gtest/gtest.h>
#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhostui/AudioFilterEditorView.h>
#include <zelaudiofilterhostui/AudioFilterViewFactoryRegistrar.h>

#include "EditorDouble.h"

namespace zeltests {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhost::AudioFilterDescriptorManager;
using zelaudiofilterhostui::AudioFilterEditorView;
using zelaudiofilterhostui::AudioFilterEditorViewBase;
using zelaudiofilterhostui::AudioFilterViewFactory;
using zelaudiofilterhostui::AudioFilterViewFactoryRegistrar;

namespace {

typedef boost::intrusive_ptr<AudioFilter> FilterPtr;
typedef boost::intrusive_ptr<AudioFilterEditorViewBase> ViewPtr;

/// Views that two different functions make.
class FirstView : public AudioFilterEditorViewBase {
public:
    explicit FirstView(const FilterPtr& filter) : AudioFilterEditorViewBase(filter) {}
};
class SecondView : public AudioFilterEditorViewBase {
public:
    explicit SecondView(const FilterPtr& filter) : AudioFilterEditorViewBase(filter) {}
};

ViewPtr MakeFirst(FilterPtr filter) { return new FirstView(filter); }
ViewPtr MakeSecond(FilterPtr filter) { return new SecondView(filter); }
ViewPtr MakeNone(FilterPtr) { return nullptr; }
ViewPtr Fail(FilterPtr) { throw std::runtime_error("no view today"); }

bool IsNative(const ViewPtr& view) { return dynamic_cast<AudioFilterEditorView*>(view.get()) != nullptr; }
bool IsFirst(const ViewPtr& view) { return dynamic_cast<FirstView*>(view.get()) != nullptr; }
bool IsSecond(const ViewPtr& view) { return dynamic_cast<SecondView*>(view.get()) != nullptr; }

}  // namespace

/// Registrations are for good, so that each test has component IDs of its own.
class AudioFilterViewFactoryTest : public testing::Test {
protected:
    ~AudioFilterViewFactoryTest() override {
        for (const zelcore::ustring& id : mDescriptors)
            AudioFilterDescriptorManager::GetInstance().RemoveDescriptor(id);
    }

    /// A component ID that is used by nobody else.
    static zelcore::ustring MakeId(const std::string& prefix = "TEST-") {
        static int last = 0;
        return zelcore::utility::UTF8to16(prefix + std::to_string(++last));
    }

    boost::intrusive_ptr<FilterWithEditor> MakeFilter(const zelcore::ustring& id) {
        const boost::intrusive_ptr<FilterWithEditor> filter(new FilterWithEditor);
        filter->componentId = id;
        return filter;
    }

    /// The same for a component that is known as one of that technology.
    boost::intrusive_ptr<FilterWithEditor> MakeFilterOf(int technology, const zelcore::ustring& id) {
        zelaudiofilterhost::PluginComponentInfo component;
        component.componentId = id;
        AudioFilterDescriptorManager::GetInstance().AddDescriptor(new AudioFilterDescriptor(
            {static_cast<zelaudiofilterhost::TechnologyType>(technology), zelcore::utility::AsciiToUTF16("/a")},
            component));
        mDescriptors.push_back(id);
        return MakeFilter(id);
    }

    static ViewPtr MakeView(const FilterPtr& filter) {
        return AudioFilterViewFactory::GetInstance().CreateViewForAudioFilter(filter);
    }
    static void Register(const zelcore::ustring& id, AudioFilterViewFactory::FactoryFunction function) {
        AudioFilterViewFactory::GetInstance().RegisterFactoryFunction(id, function);
    }

private:
    std::vector<zelcore::ustring> mDescriptors;
};

TEST_F(AudioFilterViewFactoryTest, ThereIsOneFactory) {
    EXPECT_EQ(&AudioFilterViewFactory::GetInstance(), &AudioFilterViewFactory::GetInstance());
}

TEST_F(AudioFilterViewFactoryTest, ARegisteredFunctionMakesTheViewWhateverTheTechnology) {
    const zelcore::ustring id = MakeId();
    Register(id, &MakeFirst);
    const FilterPtr filter = MakeFilterOf(3, id);
    const ViewPtr view = MakeView(filter);
    EXPECT_TRUE(IsFirst(view));
    EXPECT_EQ(view->GetAudioFilter(), filter);
    const zelcore::ustring unknown = MakeId();
    Register(unknown, &MakeFirst);
    EXPECT_TRUE(IsFirst(MakeView(MakeFilter(unknown))));
}

TEST_F(AudioFilterViewFactoryTest, OfTwoFunctionsForOneIdTheFirstStays) {
    const zelcore::ustring id = MakeId();
    Register(id, &MakeFirst);
    Register(id, &MakeSecond);
    EXPECT_TRUE(IsFirst(MakeView(MakeFilter(id))));
}

TEST_F(AudioFilterViewFactoryTest, AnEmptyFunctionLeavesTheIdFree) {
    const zelcore::ustring id = MakeId();
    Register(id, AudioFilterViewFactory::FactoryFunction());
    EXPECT_TRUE(IsNative(MakeView(MakeFilterOf(2, id))));
    Register(id, &MakeSecond);
    EXPECT_TRUE(IsSecond(MakeView(MakeFilter(id))));
}

TEST_F(AudioFilterViewFactoryTest, AFunctionThatMakesNoViewLeavesItToThePluginsOwnEditor) {
    for (const int technology : {2, 3, 4}) {
        const zelcore::ustring id = MakeId();
        Register(id, &MakeNone);
        EXPECT_TRUE(IsNative(MakeView(MakeFilterOf(technology, id)))) << technology;
    }
    for (const int technology : {0, 1, 5}) {
        const zelcore::ustring id = MakeId();
        Register(id, &MakeNone);
        EXPECT_EQ(MakeView(MakeFilterOf(technology, id)), nullptr) << technology;
    }
}

TEST_F(AudioFilterViewFactoryTest, WithoutAFunctionOnlyPluginsHaveAView) {
    for (const int technology : {2, 3, 4}) {
        EXPECT_TRUE(IsNative(MakeView(MakeFilterOf(technology, MakeId())))) << technology;
    }
    for (const int technology : {0, 1, 5, 6, 7}) {
        EXPECT_EQ(MakeView(MakeFilterOf(technology, MakeId())), nullptr) << technology;
    }
    EXPECT_EQ(MakeView(MakeFilter(MakeId())), nullptr);
}

TEST_F(AudioFilterViewFactoryTest, IdsThatDifferInCapitalsAloneAreDifferent) {
    const zelcore::ustring small = MakeId("test-");
    zelcore::ustring capital = small;
    capital[0] = 'T';
    Register(small, &MakeFirst);
    Register(capital, &MakeSecond);
    EXPECT_TRUE(IsFirst(MakeView(MakeFilter(small))));
    EXPECT_TRUE(IsSecond(MakeView(MakeFilter(capital))));
}

TEST_F(AudioFilterViewFactoryTest, ARegistrationOutlivesItsRegistrar) {
    const zelcore::ustring id = MakeId();
    { const AudioFilterViewFactoryRegistrar registrar(id, &MakeSecond); }
    EXPECT_TRUE(IsSecond(MakeView(MakeFilter(id))));
}

TEST_F(AudioFilterViewFactoryTest, AFunctionThatThrowsLetsGoOfTheFilter) {
    const zelcore::ustring id = MakeId();
    Register(id, &Fail);
    const FilterPtr filter = MakeFilter(id);
    EXPECT_THROW(MakeView(filter), std::runtime_error);
    EXPECT_EQ(filter->GetRefCount(), 1);
}

TEST_F(AudioFilterViewFactoryTest, AViewIsTheOnlyOneThatKeepsTheFilter) {
    const FilterPtr filter = MakeFilterOf(2, MakeId());
    ViewPtr view = MakeView(filter);
    EXPECT_EQ(filter->GetRefCount(), 2);
    view.reset();
    EXPECT_EQ(filter->GetRefCount(), 1);
}

}  // namespace zeltests
