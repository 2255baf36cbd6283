#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>
#include <QTest>
#include <QWindow>

#include "support/PluginLeaks.h"
#include "support/windows/Leftovers.h"
#include "ViewStage.h"

using namespace zelaudiofilterhost;

namespace zeltests {

namespace {

const QColor kUpper(0xE0, 0x80, 0x20);
const QColor kLower(0x20, 0x60, 0xC0);

/// The test plug-ins of one format.
struct Format {
    const char* name;
    TechnologyType technology;
    const char* ending;
    const char* editor;
    const char* restless;
    std::vector<const char*> failing;  ///< their editors do not open, or have no area
};

const Format kFormats[] = {
    {"Vst2",
     kTechnologyVST,
     "vst/good/%" ZEL_MODULE,
     "zel_editor",
     "zel_editor_restless",
     {"zel_editor_fails", "zel_editor_throws", "zel_editor_empty"}},
    {"Vst3",
     kTechnologyVST3,
     "vst3/good/%.vst3",
     "ZelEditor3",
     "ZelEditorRestless3",
     {"ZelEditorRefuses3", "ZelEditorThrows3", "ZelEditorEmpty3"}},
};

void PrintTo(const Format& format, std::ostream* out) { *out << format.name; }

/// The editors of real plug-ins in views in real windows.
class AudioFilterEditorViewWindowTest : public testing::TestWithParam<Format> {
protected:
    static ViewStage::FilterPtr Load(const std::string& name) {
        std::string path = std::string(ZEL_TESTPLUGINS_DIR) + "/" + GetParam().ending;
        path.replace(path.find('%'), 1, name);
        const ViewStage::FilterPtr filter = ViewStage::LoadFilter(GetParam().technology, path);
        // Where it is said by a parameter: this throws when it is opened.
        if (name == "ZelEditorThrows3") filter->SetParameterValue(1, 6.5f / 12.0f);
        return filter;
    }
    ViewStage::FilterPtr LoadEditor() { return mFilter = Load(GetParam().editor); }
    void ShowOpen() {
        mStage.Show(LoadEditor());
        ASSERT_TRUE(mStage.Open());
    }
    /// Until the editor's two colours reach as far as its size.
    bool RunUntilDrawnAs(int width, int height) {
        return mStage.RunUntil([=, this] {
            const QImage image = mStage.Grab();
            return image.width() == width && image.height() == height && image.pixelColor(0, 0) == kUpper &&
                   image.pixelColor(width - 1, height / 2 - 1) == kUpper && image.pixelColor(0, height / 2) == kLower &&
                   image.pixelColor(width - 1, height - 1) == kLower;
        });
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(mStage.GetWindow().windowHandle(), key, modifiers);
    }
    const QWidget* GetFocus() { return mStage.GetWindow().focusWidget(); }
    const QWidget* GetPlace() { return zelui::qt::GetWidget(mStage.GetView()); }

    ViewStage mStage;
    ViewStage::FilterPtr mFilter;
};

/// What there is of everything that an editor may leave behind.
struct Leftovers {
    std::size_t windows = CountWindows();
    std::size_t descriptors = CountDescriptors();
};

}  // namespace

TEST_P(AudioFilterEditorViewWindowTest, TheEditorDrawsInTheViewAndIsGoneWhenItIsClosed) {
    ShowOpen();
    EXPECT_EQ(mStage.GetContent().size(), QSize(300, 200));
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
    EXPECT_EQ(mStage.GetSizeChanges(), 0) << "opening is no change";
    mStage.Close();
    EXPECT_EQ(mStage.GetView().ChildCount(), 0u);
    EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
    ASSERT_TRUE(mStage.Open());
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
}

TEST_P(AudioFilterEditorViewWindowTest, EachSizeThatThePluginAsksForIsToldOnceAndTaken) {
    ShowOpen();
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
    int changes = 0;
    for (const auto& [value, width, height] : {std::tuple(1.0f, 600, 400), {0.5f, 450, 300}, {0.0f, 300, 200}}) {
        mFilter->SetParameterValue(0, value);
        EXPECT_TRUE(RunUntilDrawnAs(width, height));
        EXPECT_EQ(mStage.GetSizeChanges(), ++changes);
    }
}

TEST_P(AudioFilterEditorViewWindowTest, APluginThatAnswersEachSizeWithAnotherLeavesTheHostAtWork) {
    mStage.Show(Load(GetParam().restless));
    ASSERT_TRUE(mStage.Open());
    EXPECT_TRUE(mStage.RunUntil([this] { return mStage.GetSizeChanges() > 10; }));
    EXPECT_EQ(mStage.GetContent().size(), mStage.GetContent().sizeHint());
    mStage.Close();
    EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
}

TEST_P(AudioFilterEditorViewWindowTest, AnEditorThatFailsLeavesTheWindowToAnother) {
    for (const char* const name : GetParam().failing) {
        SCOPED_TRACE(name);
        mStage.Show(Load(name));
        mStage.Open();
        // One without an area is open all the same; what did not open gets no turns.
        const bool isOpen = std::string(name).find("mpty") != std::string::npos;
        EXPECT_EQ(mStage.GetLoop().CountTimers(40), isOpen ? 1u : 0u);
        EXPECT_TRUE(mStage.GetView().UI_GetLocalRectF(true).IsEmpty());
        mStage.Show(LoadEditor());
        ASSERT_TRUE(mStage.Open());
        EXPECT_TRUE(RunUntilDrawnAs(300, 200));
    }
}

TEST_P(AudioFilterEditorViewWindowTest, ASecondViewOfAFilterTakesTheEditorOver) {
    ShowOpen();
    {
        ViewStage other;
        other.Show(mFilter);
        // Beside the first: what is covered is not to be seen.
        other.GetWindow().move(800, 0);
        ASSERT_TRUE(other.Open());
        EXPECT_TRUE(other.RunUntilDrawn());
        EXPECT_TRUE(mStage.RunUntil([this] {
            const QImage image = mStage.Grab();
            return image.pixelColor(10, 10) != kUpper && image.pixelColor(10, 190) != kLower;
        }));
    }
    mStage.Close();
    ASSERT_TRUE(mStage.Open());
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
}

TEST_P(AudioFilterEditorViewWindowTest, TabGoesInAndOutAndKeysThatThePluginDoesNotUseReachTheWindow) {
    ShowOpen();
    mStage.GetLineBefore().setFocus();
    Press(Qt::Key_Tab);
    ASSERT_EQ(GetFocus(), GetPlace());
    Press(Qt::Key_A);
    EXPECT_EQ(mStage.GetUnusedKeys(), 0);
    Press(Qt::Key_B);
    EXPECT_EQ(mStage.GetUnusedKeys(), 1);
    Press(Qt::Key_Tab);
    EXPECT_EQ(GetFocus(), &mStage.GetLineAfter());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(GetFocus(), GetPlace());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(GetFocus(), &mStage.GetLineBefore());
    EXPECT_EQ(mStage.GetUnusedKeys(), 1) << "the Tab key is nobody's leftover";
    EXPECT_EQ(mStage.GetLineBefore().text(), "");
    EXPECT_EQ(mStage.GetLineAfter().text(), "");
}

TEST_P(AudioFilterEditorViewWindowTest, ClosingHidingAndDestroyingInAnyOrderLeaveNothing) {
    const std::pair<char, std::function<void()>> ends[] = {{'c', [this] { mStage.Close(); }},
                                                           {'h', [this] { mStage.Hide(); }},
                                                           {'v', [this] { mStage.LetGoOfView(); }},
                                                           {'w', [this] { mStage.DestroyWindow(); }},
                                                           {'x', [this] { mStage.RemoveWidget(); }}};
    // What loading a plug-in and showing a window for the first time leave for good is not looked for.
    ShowOpen();
    EXPECT_TRUE(mStage.RunUntilDrawn());
    mStage.Clear();
    mFilter.reset();
    mStage.RunUntil([] { return true; });
    const Leftovers before;
    std::string order = "chvwx";
    do {
        SCOPED_TRACE(order);
        ShowOpen();
        // The view holds the filter as long as it needs it.
        mFilter.reset();
        for (const char which : order) {
            std::find_if(std::begin(ends), std::end(ends), [=](const auto& end) {
                return end.first == which;
            })->second();
            QCoreApplication::processEvents();
        }
        EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
        EXPECT_TRUE(mStage.RunUntil([&] { return CountWindows() <= before.windows; })) << CountWindows();
        EXPECT_TRUE(mStage.RunUntil([&] { return CountDescriptors() <= before.descriptors; })) << CountDescriptors();
        if (HasFailure()) return;
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_P(AudioFilterEditorViewWindowTest, AnEditorThatIsClosedInTheMiddleOfThePluginsOpenCallIsClosed) {
    const std::function<void()> interruptions[] = {[this] { mStage.Close(); }, [this] { mStage.RemoveWidget(); },
                                                   [this] { mStage.DestroyWindow(); }, [this] { mStage.Clear(); }};
    ShowOpen();
    EXPECT_TRUE(mStage.RunUntilDrawn());
    mStage.Clear();
    mFilter.reset();
    mStage.RunUntil([] { return true; });
    const Leftovers before;
    for (const auto& interruption : interruptions) {
        // It asks the loop for something in the middle of being opened.
        mFilter = Load(GetParam().restless);
        mStage.Show(mFilter);
        bool isInterrupted = false;
        mStage.GetLoop().onNextCall = [&] {
            isInterrupted = true;
            interruption();
        };
        EXPECT_FALSE(mStage.Open());
        EXPECT_TRUE(isInterrupted);
        EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
        mStage.Clear();
        mFilter.reset();
        EXPECT_TRUE(mStage.RunUntil([&] { return CountWindows() <= before.windows; })) << CountWindows();
        EXPECT_TRUE(mStage.RunUntil([&] { return CountDescriptors() <= before.descriptors; })) << CountDescriptors();
    }
    ShowOpen();
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
}

TEST_P(AudioFilterEditorViewWindowTest, OpenedAndClosedManyTimesNothingIsLeft) {
    ShowOpen();
    EXPECT_TRUE(mStage.RunUntilDrawn());
    mStage.Close();
    mStage.RunUntil([] { return true; });
    const Leftovers before;
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(mStage.Open());
        mStage.Close();
    }
    EXPECT_TRUE(mStage.RunUntil([&] { return CountWindows() <= before.windows; }));
    EXPECT_TRUE(mStage.RunUntil([&] { return CountDescriptors() <= before.descriptors; })) << CountDescriptors();
    EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Formats, AudioFilterEditorViewWindowTest, testing::ValuesIn(kFormats),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace zeltests
