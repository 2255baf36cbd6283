#include "ViewStage.h"

#include <algorithm>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>
#include <stdexcept>
#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhostui/AudioFilterViewFactory.h>
#include <zelcore/Utf.h>

#include "support/WaitFor.h"

using namespace zelaudiofilterhost;
using zelaudiofilterhostui::AudioFilterViewFactory;

namespace zeltests {

namespace {

constexpr int kLineHeight = 24;
constexpr int kLineWidth = 200;
constexpr int kTurnMilliseconds = 40;
/// Turns in which a picture that is complete does not change any more.
constexpr int kQuietTurns = 6;
/// Of a picture that moves all the time, enough for the parts of it that do not.
constexpr int kMostTurns = 75;

bool IsOneColour(const QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0)) return false;
        }
    }
    return true;
}

CountingMainLoop* FindCountingLoop() {
    return dynamic_cast<CountingMainLoop*>(zelcore::threads::MainLoop::GetInstalled());
}

}  // namespace

/// What the view does not use of the keyboard comes here.
class ViewStage::Window final : public QWidget {
public:
    int unusedKeys = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override { unusedKeys += event->key() != Qt::Key_Shift ? 1 : 0; }
};

/// Moves the focus on from the view as the Tab key does: Qt's own order knows nothing of nodes.
class ViewStage::Content final : public zelui::qt::NodeWidget {
public:
    using NodeWidget::focusNextPrevChild;
    using NodeWidget::NodeWidget;
};

ViewStage::ViewStage()
    : mOwnLoop(FindCountingLoop() == nullptr ? std::make_unique<CountingMainLoop>() : nullptr),
      mLoop(*FindCountingLoop()) {}

ViewStage::~ViewStage() { Clear(); }

ViewStage::FilterPtr ViewStage::LoadFilter(TechnologyType technology, const std::string& path) {
    const auto descriptors =
        AudioFilterDescriptor::ReadModule(PluginLocator(technology, zelcore::utility::UTF8to16(path)));
    if (descriptors.empty()) throw std::runtime_error(path + " has no component");
    AudioFilterDescriptorManager::GetInstance().AddDescriptor(descriptors.front());
    return descriptors.front()->CreateFilter();
}

void ViewStage::MakeKnown(const AudioFilter& filter) {
    PluginComponentInfo component;
    component.componentId = filter.GetComponentID();
    AudioFilterDescriptorManager::GetInstance().AddDescriptor(
        new AudioFilterDescriptor({kTechnologyVST, zelcore::utility::AsciiToUTF16("/none.so")}, component));
}

void ViewStage::Show(const FilterPtr& filter) {
    Close();
    RemoveWidget();
    LetGoOfView();
    mView = AudioFilterViewFactory::GetInstance().CreateViewForAudioFilter(filter);
    if (!mView) throw std::runtime_error("the factory makes no view");
    if (!mWindow) {
        mWindow = std::make_unique<Window>();
        mBefore = new QLineEdit(mWindow.get());
        mAfter = new QLineEdit(mWindow.get());
        mFocusConnection = QObject::connect(qApp, &QApplication::focusChanged, mWindow.get(),
                                            [this](QWidget*, QWidget* now) { OnFocusChanged(now); });
    }
    mContent = new Content(mView, mWindow.get());
    QWidget::setTabOrder(mBefore, mContent);
    QWidget::setTabOrder(mContent, mAfter);
    mSizeConnection = mView->GetContentSizeChangedSignal().connect([this] {
        ++mSizeChanges;
        FitWindow();
    });
    mAdvanceConnection =
        mView->GetAdvanceFocusSignal().connect([this](bool forward) { mContent->focusNextPrevChild(forward); });
    FitWindow();
    mContent->show();
    mWindow->show();
    mWindow->activateWindow();
    RunUntil([this] { return mWindow->windowHandle()->isExposed() && mWindow->isActiveWindow(); });
}

bool ViewStage::Open() {
    // The view may be let go of in the middle of it.
    const ViewPtr view = mView;
    mSizeChanges = 0;
    view->OpenEditor();
    if (mWindow && mContent) FitWindow();
    return !view->UI_GetLocalRectF(true).IsEmpty();
}

void ViewStage::Close() {
    if (mView) mView->CloseEditor();
}

void ViewStage::Hide() {
    if (mWindow) mWindow->hide();
}

void ViewStage::RemoveWidget() { delete mContent; }

void ViewStage::LetGoOfView() {
    mSizeConnection.disconnect();
    mAdvanceConnection.disconnect();
    mView.reset();
}

void ViewStage::DestroyWindow() {
    QObject::disconnect(mFocusConnection);
    mWindow.reset();
}

void ViewStage::Clear() {
    Close();
    RemoveWidget();
    LetGoOfView();
    DestroyWindow();
}

QWidget& ViewStage::GetContent() { return *mContent; }

QWidget& ViewStage::GetWindow() { return *mWindow; }

bool ViewStage::RunUntil(const std::function<bool()>& condition) {
    return WaitFor(condition, std::chrono::seconds(20), [] {
        QCoreApplication::processEvents();
        // What a running loop does of its own accord.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
}

bool ViewStage::RunUntilDrawn() {
    QElapsedTimer sinceLook;
    sinceLook.start();
    QImage last;
    int turns = 0;
    int quiet = 0;
    return RunUntil([&] {
        if (sinceLook.elapsed() < kTurnMilliseconds) return false;
        sinceLook.restart();
        const QImage now = Grab();
        if (IsOneColour(now)) return false;
        quiet = now == last ? quiet + 1 : 0;
        last = now;
        return quiet >= kQuietTurns || ++turns >= kMostTurns;
    });
}

QImage ViewStage::Grab() const {
    return mContent->screen()->grabWindow(mContent->winId()).toImage().convertToFormat(QImage::Format_RGB32);
}

int ViewStage::GetUnusedKeys() const { return mWindow->unusedKeys; }

void ViewStage::FitWindow() {
    const QSize size = mContent->sizeHint();
    const int width = std::max(size.width(), kLineWidth);
    mBefore->setGeometry(0, 0, width, kLineHeight);
    mContent->move(0, kLineHeight);
    mAfter->setGeometry(0, kLineHeight + size.height(), width, kLineHeight);
    mWindow->resize(width, size.height() + 2 * kLineHeight);
}

void ViewStage::OnFocusChanged(QWidget* now) {
    if (mView && now != nullptr && now == zelui::qt::GetWidget(*mView) && mView->WantsToDispatchKeyboardFocus())
        mView->DispatchCurrentFocus();
}

}  // namespace zeltests
