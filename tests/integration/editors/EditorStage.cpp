#include "EditorStage.h"

#include <algorithm>
#include <QApplication>
#include <QScreen>
#include <QWindow>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelaudiofilterhost/PluginLocator.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

#include "support/WaitFor.h"

using namespace zelaudiofilterhost;

namespace zeltests {

namespace {

constexpr int kTurnMilliseconds = 40;
/// Enough for a picture to be complete: some are painted part by part, by threads that do not like to be stopped at it.
constexpr int kFirstTurns = 15;
constexpr int kMaxPlaceExtent = 2000;

}  // namespace

EditorStage::EditorStage() : mPlace(new QWidget(&mWindow)), mTurnCount(0), mSizeChanges(0) {
    mPlace->setAttribute(Qt::WA_NativeWindow);
    mPlace->resize(320, 240);
    mWindow.resize(mPlace->size());
    mWindow.show();
    RunUntil([this] { return mWindow.windowHandle()->isExposed() && mPlace->windowHandle()->isExposed(); });
    QObject::connect(&mTurns, &QTimer::timeout, [this] {
        ++mTurnCount;
        mEditor->Idle();
    });
}

EditorStage::~EditorStage() { Unload(); }

void EditorStage::Load(TechnologyType technology, const std::string& path) {
    Unload();
    const auto descriptors =
        AudioFilterDescriptor::ReadModule(PluginLocator(technology, zelcore::utility::UTF8to16(path)));
    mFilter = descriptors.at(0)->CreateFilter();
    mEditor = mFilter->GetEditor();
    if (!mEditor) return;
    mSizeConnection = mEditor->GetContentSizeChangedSignal().connect([this] {
        ++mSizeChanges;
        SizePlace();
    });
}

bool EditorStage::Open() {
    SizePlace();
    if (!mEditor->OpenView(zelui::qt::GetWindowHandle(mPlace))) return false;
    SizePlace();
    mTurnCount = 0;
    mTurns.start(kTurnMilliseconds);
    return true;
}

void EditorStage::Close() {
    mTurns.stop();
    if (mEditor) mEditor->CloseView();
}

void EditorStage::Unload() {
    mTurns.stop();
    mSizeConnection.disconnect();
    mEditor.reset();
    mFilter.reset();
}

bool EditorStage::RunUntil(const std::function<bool()>& condition) {
    return WaitFor(condition, std::chrono::seconds(20), [] { QCoreApplication::processEvents(); });
}

bool EditorStage::RunUntilDrawn() {
    return RunUntil([this] {
        if (mTurnCount < kFirstTurns) return false;
        const QImage image = Grab();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != image.pixel(0, 0)) return true;
            }
        }
        return false;
    });
}

QImage EditorStage::Grab() const {
    return mPlace->screen()->grabWindow(mPlace->winId()).toImage().convertToFormat(QImage::Format_RGB32);
}

QColor EditorStage::GrabColour(int x, int y) const { return Grab().pixelColor(x, y); }

void EditorStage::SizePlace() {
    const zelcore::geom::Rect rect = mEditor->GetViewRect();
    const QSize size(static_cast<int>(std::clamp(rect.width, 1L, long(kMaxPlaceExtent))),
                     static_cast<int>(std::clamp(rect.height, 1L, long(kMaxPlaceExtent))));
    mPlace->resize(size);
    mWindow.resize(size);
}

}  // namespace zeltests
