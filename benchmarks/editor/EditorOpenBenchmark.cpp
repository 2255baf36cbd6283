// What opening and closing a plug-in's own editor costs through the library's view, beside the same editor opened by
// hand in a bare window. Both stand in a shown window and make the place for the editor anew each time; a round ends
// when the window system has done all of it. The two take turns, so that whatever else the machine does hits both.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <QApplication>
#include <QWidget>
#include <xcb/xcb.h>

#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhost/AudioFilterEditor.h>
#include <zelaudiofilterhostui/AudioFilterViewFactory.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/QtBridge.h>

#include "support/Table.h"

namespace {

using namespace zelaudiofilterhost;
using zelaudiofilterhostui::AudioFilterViewFactory;

constexpr int kRounds = 40;
/// Windows that a view puts round an editor: its own, so that it can be scrolled and cut off, the adapter's, the
/// editor's.
constexpr int kDepthOfView = 3;

struct Plugin {
    const char* name;
    TechnologyType technology;
    std::string path;
};

boost::intrusive_ptr<AudioFilter> LoadFilter(const Plugin& plugin) {
    const auto descriptor =
        AudioFilterDescriptor::ReadModule({plugin.technology, zelcore::utility::UTF8to16(plugin.path)}).at(0);
    AudioFilterDescriptorManager::GetInstance().AddDescriptor(descriptor);
    return descriptor->CreateFilter();
}

/// A connection that waits until the window system has done what this program asked for.
class WindowSystem {
public:
    WindowSystem() : mConnection(xcb_connect(nullptr, nullptr)) {}
    ~WindowSystem() { xcb_disconnect(mConnection); }
    WindowSystem(const WindowSystem&) = delete;
    WindowSystem& operator=(const WindowSystem&) = delete;

    void Finish() const {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        std::free(xcb_get_input_focus_reply(mConnection, xcb_get_input_focus(mConnection), nullptr));
    }

private:
    xcb_connection_t* mConnection;
};

class Stage {
public:
    virtual ~Stage() = default;
    virtual bool Open() = 0;
    virtual void Close() = 0;
};

/// The view, as the factory makes it.
class ViewStage final : public Stage {
public:
    explicit ViewStage(const boost::intrusive_ptr<AudioFilter>& filter)
        : mView(AudioFilterViewFactory::GetInstance().CreateViewForAudioFilter(filter)), mWidget(mView, &mWindow) {
        mWindow.resize(1000, 800);
        mWindow.show();
    }
    bool Open() override {
        mView->OpenEditor();
        return !mView->UI_GetLocalRectF(true).IsEmpty();
    }
    void Close() override { mView->CloseEditor(); }

private:
    QWidget mWindow;
    boost::intrusive_ptr<zelaudiofilterhostui::AudioFilterEditorViewBase> mView;
    zelui::qt::NodeWidget mWidget;
};

/// A place made by hand: a window, or several in one another, as deep as those of a view that can be scrolled and cut
/// off.
class BareStage final : public Stage {
public:
    BareStage(const boost::intrusive_ptr<AudioFilter>& filter, int depth)
        : mDepth(depth), mEditor(filter->GetEditor()) {
        mWindow.resize(1000, 800);
        mWindow.show();
    }
    bool Open() override {
        mPlace = std::make_unique<QWidget>(&mWindow);
        std::vector<QWidget*> places = {mPlace.get()};
        while (static_cast<int>(places.size()) < mDepth) places.push_back(new QWidget(places.back()));
        for (QWidget* const place : places) {
            place->setAttribute(Qt::WA_NativeWindow);
            place->show();
        }
        const bool isOpen = mEditor->OpenView(zelui::qt::GetWindowHandle(places.back()));
        const zelcore::geom::Rect rect = mEditor->GetViewRect();
        for (QWidget* const place : places) place->resize(static_cast<int>(rect.width), static_cast<int>(rect.height));
        return isOpen;
    }
    void Close() override {
        mEditor->CloseView();
        mPlace.reset();
    }

private:
    const int mDepth;
    QWidget mWindow;
    std::unique_ptr<QWidget> mPlace;
    boost::intrusive_ptr<AudioFilterEditor> mEditor;
};

/// Milliseconds; negative when the editor does not open.
double Measure(Stage& stage, const WindowSystem& display) {
    const auto begin = std::chrono::steady_clock::now();
    const bool isOpen = stage.Open();
    display.Finish();
    stage.Close();
    display.Finish();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
    return isOpen ? time.count() : -1.0;
}

double MedianOf(std::vector<double> times) {
    std::nth_element(times.begin(), times.begin() + kRounds / 2, times.end());
    return times[kRounds / 2];
}

bool Compare(const Plugin& plugin, const WindowSystem& windowSystem) {
    // Each has a filter of its own: of one there is only one editor at a time.
    ViewStage view(LoadFilter(plugin));
    BareStage bare(LoadFilter(plugin), 1);
    BareStage nested(LoadFilter(plugin), kDepthOfView);
    Stage* const stages[] = {&view, &bare, &nested};
    std::vector<double> times[std::size(stages)];
    windowSystem.Finish();
    for (Stage* const stage : stages) Measure(*stage, windowSystem);
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t i = 0; i < std::size(stages); ++i) {
            times[i].push_back(Measure(*stages[i], windowSystem));
            if (times[i].back() < 0.0) return false;
        }
    }
    const double viewTime = MedianOf(times[0]);
    const double bareTime = MedianOf(times[1]);
    const double nestedTime = MedianOf(times[2]);
    std::printf("%-20s %9.2f %12.2f %7.3f %16.2f %7.3f\n", plugin.name, viewTime, bareTime, viewTime / bareTime,
                nestedTime, viewTime / nestedTime);
    zelbench::AddTableRow(std::string("open and close the editor of ") + plugin.name, "ms", viewTime, "a bare window",
                          bareTime);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    const zelui::Application application(argc, argv);
    if (!zelui::Application::HasDisplay()) {
        std::fprintf(stderr, "editors need a display\n");
        return 2;
    }
    const Plugin plugins[] = {{"VST2 ZamComp", kTechnologyVST, "/usr/lib/vst/ZamComp-vst.so"},
                              {"VST3 ZamComp", kTechnologyVST3, "/usr/lib/vst3/ZamComp.vst3"},
                              {"VST2 Zel Editor", kTechnologyVST, ZEL_TESTPLUGINS_DIR "/vst/good/zel_editor.so"},
                              {"VST3 Zel Editor 3", kTechnologyVST3, ZEL_TESTPLUGINS_DIR "/vst3/good/ZelEditor3.vst3"}};
    std::printf("%-20s %9s %12s %7s %16s %7s\n", "open and close, ms", "view", "bare window", "ratio",
                "as many windows", "ratio");
    const WindowSystem display;
    int failed = 0;
    for (const Plugin& plugin : plugins) {
        try {
            if (Compare(plugin, display)) continue;
            std::printf("%-24s does not open\n", plugin.name);
        } catch (const std::exception& exception) {
            std::printf("%-24s %s\n", plugin.name, exception.what());
        }
        ++failed;
    }
    return failed == 0 ? 0 : 1;
}
