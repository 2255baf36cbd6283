// An application of Qt that was built against the installed library: a window of its own with an editor of a plug-in's
// parameters, and one with the plug-in's own editor.
//   window PLUG-IN    (a VST3 bundle)
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QSlider>
#include <QVBoxLayout>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhostui/AudioFilterViewFactory.h>
#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>
#include <zelaudiofilterhostui/Module.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/QtBridge.h>

namespace {

using namespace zelaudiofilterhost;

constexpr int kLongestWait = 20000;  // milliseconds
constexpr int kLookEvery = 20;

void Check(bool holds, const std::string& what) {
    std::cout << (holds ? "ok: " : "NOT: ") << what << '\n';
    if (!holds) throw std::runtime_error(what);
}

template <typename Condition>
bool WaitUntil(Condition condition) {
    QElapsedTimer time;
    time.start();
    while (!condition()) {
        if (time.elapsed() > kLongestWait) return false;
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, kLookEvery);
    }
    return true;
}

bool HasSeveralColours(const QImage& picture) {
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != picture.pixel(0, 0)) return true;
        }
    }
    return false;
}

std::vector<float> GetValues(const AudioFilter& filter) {
    std::vector<float> values;
    for (int i = 0; i < filter.GetParameterCount(); ++i) values.push_back(filter.GetParameterValue(i));
    return values;
}

void ShowParameters(const boost::intrusive_ptr<AudioFilter>& filter) {
    const auto view = zelaudiofilterhostui::GenericAudioFilterEditorView::Create(filter);
    QWidget window;
    QVBoxLayout layout(&window);
    layout.addWidget(new QLabel(zelui::qt::ToQString(filter->GetName())));
    QScrollArea* const area = new QScrollArea;
    area->setWidget(new zelui::qt::NodeWidget(view));
    layout.addWidget(area);
    window.resize(460, 300);
    window.show();
    Check(WaitUntil([&] { return !window.findChildren<QSlider*>().isEmpty(); }), "the parameters have sliders");
    Check(HasSeveralColours(area->viewport()->grab().toImage()), "the parameters are drawn");
    QSlider* const slider = window.findChild<QSlider*>();
    const std::vector<float> before = GetValues(*filter);
    window.activateWindow();
    slider->setFocus();
    const bool rises = slider->value() < slider->maximum();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent key(type, rises ? Qt::Key_End : Qt::Key_Home, Qt::NoModifier);
        QApplication::sendEvent(slider, &key);
    }
    Check(GetValues(*filter) != before, "a key that moves a slider sets a parameter");
}

void ShowEditor(const boost::intrusive_ptr<AudioFilter>& filter) {
    const auto view = zelaudiofilterhostui::AudioFilterViewFactory::GetInstance().CreateViewForAudioFilter(filter);
    Check(view != nullptr, "the factory has a view for the plug-in");
    zelui::qt::NodeWidget window(view);
    window.show();
    QApplication::processEvents();
    view->OpenEditor();
    window.adjustSize();
    const zelcore::geom::RectF frame = view->UI_GetLocalRectF(true);
    std::cout << "editor: " << frame.width << " x " << frame.height << '\n';
    Check(frame.width > 50 && frame.height > 50, "the editor gives the view its size");
    Check(WaitUntil([&] { return HasSeveralColours(window.screen()->grabWindow(window.winId()).toImage()); }),
          "the plug-in draws its editor");
    view->CloseEditor();
}

void Run(const char* path) {
    const PluginLocator locator(kTechnologyVST3, zelcore::utility::UTF8to16(path));
    const auto descriptor = AudioFilterDescriptor::ReadModule(locator).front();
    AudioFilterDescriptorManager::GetInstance().AddDescriptor(descriptor);
    const auto filter = descriptor->CreateFilter();
    ShowParameters(filter);
    if (zelui::Application::HasDisplay()) ShowEditor(filter);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication qt(argc, argv);
    if (argc != 2) return EXIT_FAILURE;
    zelui::Application application(argc, argv);
    zelaudiofilterhostui::Initialize();
    int code = EXIT_SUCCESS;
    try {
        Run(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        code = EXIT_FAILURE;
    }
    zelaudiofilterhostui::Terminate();
    return code;
}
