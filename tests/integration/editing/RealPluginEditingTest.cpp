#include <cmath>
#include <set>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QScrollArea>
#include <QSlider>
#include <QTest>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelaudiofilterhost/PluginDescription.h>
#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>
#include <zelui/UI_Slider.h>
#include <zelui/UI_StaticText.h>

#include "support/InstalledPlugins.h"
#include "support/PluginLeaks.h"

namespace zeltests {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhostui::GenericAudioFilterEditorView;
using zelui::controls::UI_Slider;
using zelui::controls::UI_StaticText;

namespace {

typedef boost::intrusive_ptr<AudioFilter> FilterPtr;

constexpr int kFrames = 512;
constexpr double kSampleRate = 48000.0;

std::string ToString(const zelcore::ustring& text) {
    const zelcore::utf8string utf8 = zelcore::utility::UTF16to8(text);
    return std::string(utf8.begin(), utf8.end());
}

/// The filters that the module at a path has.
std::vector<FilterPtr> LoadFilters(const std::string& path) {
    const auto technology =
        path.ends_with(".vst3") ? zelaudiofilterhost::kTechnologyVST3 : zelaudiofilterhost::kTechnologyVST;
    std::vector<FilterPtr> filters;
    for (const auto& descriptor : AudioFilterDescriptor::ReadModule({technology, zelcore::utility::UTF8to16(path)}))
        filters.push_back(descriptor->CreateFilter());
    return filters;
}

/// A generic editor on the screen.
class Editor {
public:
    explicit Editor(const FilterPtr& filter) : mView(GenericAudioFilterEditorView::Create(filter)) {
        mArea.setWidget(new zelui::qt::NodeWidget(mView));
        mArea.resize(420, 300);
        mArea.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&mArea));
    }

    std::size_t GetRowCount() const { return mView->ChildCount(); }

    /// Moves a parameter's slider as far up as it goes, by keys.
    void MoveToEnd(std::size_t row) {
        UI_Slider& slider = GetControl<UI_Slider>(row, 1);
        ASSERT_TRUE(slider.UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
        QTest::keyClick(zelui::qt::GetWidget(slider), Qt::Key_End);
    }
    double GetSliderValue(std::size_t row) { return GetControl<UI_Slider>(row, 1).GetValue(); }
    std::string GetText(std::size_t row, std::size_t column) {
        return ToString(GetControl<UI_StaticText>(row, column).GetValue());
    }

private:
    template <typename T>
    T& GetControl(std::size_t row, std::size_t column) {
        return dynamic_cast<T&>(*mView->ChildAt(row)->UI_AsContainer()->ChildAt(column));
    }

    boost::intrusive_ptr<GenericAudioFilterEditorView> mView;
    QScrollArea mArea;
};

std::size_t FindRow(const FilterPtr& filter, const std::string& name) {
    for (int i = 0; i < filter->GetParameterCount(); ++i) {
        if (ToString(filter->GetParameterInfo(i)->GetName()) == name) return static_cast<std::size_t>(i);
    }
    throw std::runtime_error("no parameter is called " + name);
}

/// Loudness of what comes out for a tone of 1 kHz, once the filter has settled.
double MeasureLoudness(AudioFilter& filter) {
    const auto inputs = static_cast<std::size_t>(filter.GetEffectChannelCount(AudioFilter::kInput));
    const auto outputs = static_cast<std::size_t>(filter.GetEffectChannelCount(AudioFilter::kOutput));
    std::vector<std::vector<float>> in(inputs, std::vector<float>(kFrames));
    std::vector<std::vector<float>> out(outputs, std::vector<float>(kFrames));
    std::vector<const float*> inPointers;
    std::vector<float*> outPointers;
    for (auto& channel : in) inPointers.push_back(channel.data());
    for (auto& channel : out) outPointers.push_back(channel.data());
    double sum = 0.0;
    for (int block = 0; block < 40; ++block) {
        for (int frame = 0; frame < kFrames; ++frame) {
            const double time = (block * kFrames + frame) / kSampleRate;
            for (auto& channel : in)
                channel[static_cast<std::size_t>(frame)] = static_cast<float>(0.1 * std::sin(6283.185307 * time));
        }
        filter.ProcessEffect(inPointers.data(), outPointers.data(), kFrames);
        if (block < 20) continue;
        for (const float sample : out.front()) sum += static_cast<double>(sample) * static_cast<double>(sample);
    }
    return std::sqrt(sum / (20 * kFrames));
}

void ExpectThatTheSliderMakesItLouder(const std::string& path, const std::string& parameter) {
    const IgnorePluginLeaks ignored;
    if (!FindInstalledPlugins().count(path)) GTEST_SKIP() << path << " is not installed";
    const FilterPtr filter = LoadFilters(path).front();
    ASSERT_TRUE(filter->StartProcessing(kSampleRate, kFrames));
    const double before = MeasureLoudness(*filter);
    ASSERT_GT(before, 0.001);
    Editor editor(filter);
    const std::size_t row = FindRow(filter, parameter);
    const std::string textBefore = editor.GetText(row, 2);
    editor.MoveToEnd(row);
    EXPECT_EQ(filter->GetParameterValue(static_cast<int>(row)), 1.0f);
    EXPECT_NE(editor.GetText(row, 2), textBefore);
    EXPECT_GT(MeasureLoudness(*filter), before * 1.5);
}

}  // namespace

TEST(RealPluginEditingTest, ASliderOfAVst2PluginIsHeardInItsSound) {
    ExpectThatTheSliderMakesItLouder("/usr/lib/vst/ZamGEQ31-vst.so", "Master Gain");
}

TEST(RealPluginEditingTest, ASliderOfAVst3PluginIsHeardInItsSound) {
    ExpectThatTheSliderMakesItLouder("/usr/lib/vst3/ZamGEQ31.vst3", "Master Gain");
}

TEST(RealPluginEditingTest, EveryInstalledPluginIsShownWithAllItsParametersAndTheirTexts) {
    const std::set<std::string> installed = FindInstalledPlugins();
    if (installed.empty()) GTEST_SKIP() << "no plug-ins are installed";
    const IgnorePluginLeaks ignored;
    std::size_t shown = 0;
    std::vector<std::string> notPlugins;
    for (const std::string& path : installed) {
        SCOPED_TRACE(path);
        std::vector<FilterPtr> filters;
        try {
            filters = LoadFilters(path);
        } catch (const zelaudiofilterhost::PluginLoadError&) {
            notPlugins.push_back(path);
            continue;
        }
        for (const FilterPtr& filter : filters) {
            Editor editor(filter);
            const int count = filter->GetParameterCount();
            ASSERT_EQ(editor.GetRowCount(), static_cast<std::size_t>(count));
            for (int i = 0; i < count; ++i) {
                const auto row = static_cast<std::size_t>(i);
                ASSERT_EQ(editor.GetText(row, 0), ToString(filter->GetParameterInfo(i)->GetName()));
                ASSERT_EQ(editor.GetText(row, 2), ToString(filter->GetParameterValueString(i)));
                ASSERT_EQ(editor.GetSliderValue(row), static_cast<double>(filter->GetParameterValue(i)));
            }
            ++shown;
        }
    }
    EXPECT_GE(shown + notPlugins.size(), installed.size());
    EXPECT_LE(notPlugins.size(), 1u) << testing::PrintToString(notPlugins);
}

}  // namespace zeltests
