// What opening and scrolling the generic editor costs by the number of parameters, beside bare Qt widgets: those of the
// rows that can be seen, which is the least that it could cost, and those of all rows, which is what it would cost if
// every row had its widgets at once. Everything is painted, into memory.
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <QApplication>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>

#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/QtBridge.h>

#include "support/TableReporter.h"

namespace {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhostui::GenericAudioFilterEditorView;

constexpr int kManyParameters = 2000;
constexpr int kHeight = 600;
constexpr int kVisibleRows = kHeight / 22 + 1;

boost::intrusive_ptr<AudioFilter> LoadFilterWithManyParameters() {
    const zelaudiofilterhost::PluginLocator locator(
        zelaudiofilterhost::kTechnologyVST,
        zelcore::utility::UTF8to16(std::string(ZEL_TESTPLUGINS_DIR) + "/vst/good/zel_many.so"));
    return zelaudiofilterhost::AudioFilterDescriptor::ReadModule(locator).front()->CreateFilter();
}

QWidget* MakeGenericEditor(const boost::intrusive_ptr<AudioFilter>& filter) {
    return new zelui::qt::NodeWidget(GenericAudioFilterEditorView::Create(filter));
}

void AddLabel(QWidget* row, int left, int width, const QString& text) {
    QLabel* const label = new QLabel(text, row);
    label->setGeometry(left, 0, width, 22);
}

/// The same controls for the first `rows` parameters, with texts from the same plug-in.
QWidget* MakeBareRows(const boost::intrusive_ptr<AudioFilter>& filter, int rows) {
    QWidget* const content = new QWidget;
    content->resize(380, rows * 22);
    for (int i = 0; i < rows; ++i) {
        QWidget* const row = new QWidget(content);
        row->setGeometry(0, i * 22, 380, 22);
        const auto info = filter->GetParameterInfo(i);
        AddLabel(row, 4, 130, zelui::qt::ToQString(info->GetName()));
        QSlider* const slider = new QSlider(Qt::Horizontal, row);
        slider->setGeometry(138, 0, 120, 22);
        slider->setRange(0, 10000);
        slider->setValue(static_cast<int>(filter->GetParameterValue(i) * 10000));
        AddLabel(row, 262, 60, zelui::qt::ToQString(filter->GetParameterValueString(i)));
        AddLabel(row, 326, 50, zelui::qt::ToQString(info->GetLabel()));
    }
    return content;
}

std::unique_ptr<QScrollArea> ShowInScrollArea(QWidget* content) {
    std::unique_ptr<QScrollArea> area = std::make_unique<QScrollArea>();
    area->setWidget(content);
    area->resize(420, kHeight);
    area->show();
    QApplication::processEvents();
    area->repaint();
    return area;
}

/// Takes down what was shown, outside the measured time.
void Close(benchmark::State& state, std::unique_ptr<QScrollArea>& area) {
    state.PauseTiming();
    area.reset();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
    state.ResumeTiming();
}

void OpenGenericEditor(benchmark::State& state) {
    const boost::intrusive_ptr<AudioFilter> filter = LoadFilterWithManyParameters();
    for ([[maybe_unused]] auto _ : state) {
        std::unique_ptr<QScrollArea> area = ShowInScrollArea(MakeGenericEditor(filter));
        Close(state, area);
    }
}
BENCHMARK(OpenGenericEditor)->Name("open/generic editor, 2000 parameters")->Unit(benchmark::kMillisecond);

void OpenBareRows(benchmark::State& state) {
    const boost::intrusive_ptr<AudioFilter> filter = LoadFilterWithManyParameters();
    for ([[maybe_unused]] auto _ : state) {
        std::unique_ptr<QScrollArea> area = ShowInScrollArea(MakeBareRows(filter, static_cast<int>(state.range(0))));
        Close(state, area);
    }
}
BENCHMARK(OpenBareRows)
    ->Name("open/bare widgets, rows")
    ->Arg(kVisibleRows)
    ->Arg(kManyParameters)
    ->Unit(benchmark::kMillisecond);

/// One notch of the wheel after the other, down to the end and again from the top.
void Scroll(benchmark::State& state, QWidget* content) {
    const std::unique_ptr<QScrollArea> area = ShowInScrollArea(content);
    QScrollBar& bar = *area->verticalScrollBar();
    for ([[maybe_unused]] auto _ : state) {
        bar.setValue(bar.value() == bar.maximum() ? 0 : bar.value() + 66);
        QApplication::processEvents();
        area->repaint();
    }
}

void ScrollGenericEditor(benchmark::State& state) { Scroll(state, MakeGenericEditor(LoadFilterWithManyParameters())); }
BENCHMARK(ScrollGenericEditor)->Name("scroll a notch/generic editor, 2000 parameters")->Unit(benchmark::kMillisecond);

void ScrollBareRows(benchmark::State& state) {
    Scroll(state, MakeBareRows(LoadFilterWithManyParameters(), kManyParameters));
}
BENCHMARK(ScrollBareRows)->Name("scroll a notch/bare widgets, 2000 rows")->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    // What is measured is the same on every machine, with a display or without.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const zelui::Application application(argc, argv);
    benchmark::Initialize(&argc, argv);
    zelbench::TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const std::string visible = "open/bare widgets, rows/" + std::to_string(kVisibleRows);
    const std::string all = "open/bare widgets, rows/" + std::to_string(kManyParameters);
    const std::string open = "open/generic editor, 2000 parameters";
    reporter.AddRow("open a generic editor, 2000 parameters", "ms", open, "bare widgets of the rows in view", visible);
    reporter.AddRow("open a generic editor, 2000 parameters", "ms", open, "bare widgets of all rows", all);
    reporter.AddRow("scroll it by a notch", "ms", "scroll a notch/generic editor, 2000 parameters",
                    "bare widgets of all rows", "scroll a notch/bare widgets, 2000 rows");
}
