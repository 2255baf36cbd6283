#include <type_traits>

#include <boost/bind/bind.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelaudiofilterhostui/AudioFilterEditorViewBase.h>

#include "unit/views/AudioFilterDouble.h"

namespace zeltests {

using boost::placeholders::_1;
using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhostui::AudioFilterEditorViewBase;

namespace {

/// A view that overrides nothing.
class PlainView : public AudioFilterEditorViewBase {
public:
    explicit PlainView(const boost::intrusive_ptr<AudioFilter>& filter) : AudioFilterEditorViewBase(filter) {}

    boost::signals::scoped_connection& GetConnection() { return mConnection; }
};

boost::intrusive_ptr<PlainView> MakeView() { return new PlainView(new AudioFilterDouble); }

/// Hears the view's signals as a host would.
class Host : public boost::signals::trackable {
public:
    explicit Host(std::vector<std::string>& heard) : mHeard(heard) {}
    void OnSizeChanged() { mHeard.push_back("size"); }
    void OnAdvanceFocus(bool forward) { mHeard.push_back(forward ? "forward" : "backward"); }

private:
    std::vector<std::string>& mHeard;
};

}  // namespace

TEST(AudioFilterEditorViewBaseTest, AViewThatOverridesNothingAnswersFalseToEveryQuery) {
    const boost::intrusive_ptr<PlainView> view = MakeView();
    EXPECT_FALSE(view->DispatchKeyboardFocus(true));
    EXPECT_FALSE(view->DispatchKeyboardFocus(false));
    EXPECT_FALSE(view->WantsToDispatchKeyboardFocus());
    EXPECT_FALSE(view->DispatchCurrentFocus());
    EXPECT_FALSE(view->CanScrollContent());
    EXPECT_FALSE(view->CanResizeContent());
}

TEST(AudioFilterEditorViewBaseTest, AViewThatOverridesNothingIgnoresOpenAndClose) {
    const boost::intrusive_ptr<AudioFilterDouble> filter(new AudioFilterDouble({{"Gain", "dB", 0.5f}}));
    const boost::intrusive_ptr<PlainView> view(new PlainView(filter));
    int changes = 0;
    view->GetContentSizeChangedSignal().connect([&changes] { ++changes; });
    view->CloseEditor();
    view->OpenEditor();
    view->OpenEditor();
    view->CloseEditor();
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(view->ChildCount(), 0u);
    EXPECT_EQ(view->UI_GetLocalRectF(true), zelcore::geom::RectF());
    EXPECT_THAT(filter->GetCalls(), testing::IsEmpty());
}

TEST(AudioFilterEditorViewBaseTest, TheFilterIsTheOneThatWasGivenForTheViewsWholeLife) {
    const boost::intrusive_ptr<AudioFilterDouble> filter(new AudioFilterDouble);
    {
        const boost::intrusive_ptr<PlainView> view(new PlainView(filter));
        EXPECT_EQ(view->GetAudioFilter(), filter);
        view->OpenEditor();
        EXPECT_EQ(view->GetAudioFilter(), filter);
        view->CloseEditor();
        EXPECT_EQ(view->GetAudioFilter(), filter);
        EXPECT_EQ(filter->GetRefCount(), 2);
    }
    EXPECT_EQ(filter->GetRefCount(), 1);
}

TEST(AudioFilterEditorViewBaseTest, TheViewAloneKeepsItsFilterAlive) {
    const int before = AudioFilterDouble::GetLiveCount();
    boost::intrusive_ptr<PlainView> view = MakeView();
    EXPECT_EQ(AudioFilterDouble::GetLiveCount(), before + 1);
    view.reset();
    EXPECT_EQ(AudioFilterDouble::GetLiveCount(), before);
}

TEST(AudioFilterEditorViewBaseTest, SlotsOfATrackableObjectAreNotCalledAfterItsEnd) {
    const boost::intrusive_ptr<PlainView> view = MakeView();
    std::vector<std::string> heard;
    {
        Host host(heard);
        view->GetContentSizeChangedSignal().connect(boost::bind(&Host::OnSizeChanged, &host));
        view->GetAdvanceFocusSignal().connect(boost::bind(&Host::OnAdvanceFocus, &host, _1));
        view->GetContentSizeChangedSignal()();
        view->GetAdvanceFocusSignal()(true);
        view->GetAdvanceFocusSignal()(false);
    }
    view->GetContentSizeChangedSignal()();
    view->GetAdvanceFocusSignal()(true);
    EXPECT_THAT(heard, testing::ElementsAre("size", "forward", "backward"));
}

TEST(AudioFilterEditorViewBaseTest, TheConnectionOfADerivedViewEndsWithTheView) {
    boost::signal<void()> signal;
    boost::intrusive_ptr<PlainView> view = MakeView();
    EXPECT_FALSE(view->GetConnection().connected());
    int calls = 0;
    view->GetConnection() = signal.connect([&calls] { ++calls; });
    signal();
    view.reset();
    signal();
    EXPECT_EQ(calls, 1);
}

TEST(AudioFilterEditorViewBaseTest, TheFilterGoesBeforeTheConnectionAndTheSignals) {
    struct Filter : AudioFilterDouble {
        explicit Filter(const std::function<void()>& onEnd) : mOnEnd(onEnd) {}
        ~Filter() override { mOnEnd(); }
        std::function<void()> mOnEnd;
    };
    boost::signal<void()> signal;
    std::vector<std::string> heard;
    boost::intrusive_ptr<PlainView> view(new PlainView(new Filter([&] {
        heard.push_back("filter");
        signal();
    })));
    view->GetConnection() = signal.connect([&heard] { heard.push_back("still connected"); });
    view.reset();
    EXPECT_THAT(heard, testing::ElementsAre("filter", "still connected"));
}

TEST(AudioFilterEditorViewBaseTest, IsASubViewAndNotCopyable) {
    static_assert(std::is_base_of_v<zelui::ui::UI_SubView, AudioFilterEditorViewBase>);
    static_assert(std::is_base_of_v<boost::noncopyable_::noncopyable, AudioFilterEditorViewBase>);
    static_assert(!std::is_copy_constructible_v<PlainView>);
    static_assert(!std::is_copy_assignable_v<PlainView>);
    const boost::intrusive_ptr<PlainView> view = MakeView();
    EXPECT_FALSE(view->UI_IsShown());
    EXPECT_EQ(view->UI_GetParentNode(), nullptr);
}

}  // namespace zeltests
