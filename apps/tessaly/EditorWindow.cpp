#include "EditorWindow.h"

#include <algorithm>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <boost/bind/bind.hpp>
#include <boost/ref.hpp>
#include <zelaudiofilterhostui/AudioFilterViewFactory.h>
#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>
#include <zelui/Application.h>
#include <zelui/QtBridge.h>
#include <zelui/SupplierInterface.h>

#include "LocalText.h"
#include "WindowAccessible.h"

namespace tessaly {

using zelaudiofilterhostui::AudioFilterChannelMapEditorView;
using zelaudiofilterhostui::AudioFilterEditorViewBase;
using zelaudiofilterhostui::AudioFilterViewFactory;
using zelaudiofilterhostui::GenericAudioFilterEditorView;
using zelui::qt::ToQString;

namespace {

// Parameters come in any number; more of them than this at once is no help.
constexpr int kTallest = 640;
constexpr int kNoteMargin = 12;
// For a plug-in's first picture, in milliseconds.
constexpr int kLongestWait = 10000;
constexpr int kTurnEvery = 50;
constexpr int kRowHeight = static_cast<int>(GenericAudioFilterEditorView::kRowHeight);

bool IsOneColour(const QImage& picture) {
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != picture.pixel(0, 0)) return false;
        }
    }
    return true;
}

}  // namespace

/// The view as a widget that can be told to pass the focus on: Qt's own order knows nothing of the nodes in it.
class EditorWindow::Content final : public zelui::qt::NodeWidget {
public:
    using NodeWidget::focusNextPrevChild;
    using NodeWidget::NodeWidget;
};

EditorWindow::EditorWindow(const FilterPtr& filter)
    : mFilter(filter), mLayout(new QVBoxLayout(this)), mScrollArea(nullptr), mIsOwnEditor(false) {
    setObjectName(QStringLiteral("EditorWindow"));
    SetWindowKind(*this, WindowKind::kWindow);
    setWindowTitle(TitleText(ToQString(filter->GetName())));
    mLayout->setContentsMargins(0, 0, 0, 0);
    mLayout->setSpacing(0);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { OnFocusChanged(now); });
}

EditorWindow::~EditorWindow() {
    // The focus moves once more when the widgets go, and that is after this.
    disconnect(qApp, nullptr, this, nullptr);
    if (mView) mView->CloseEditor();
}

void EditorWindow::Open(bool generic) {
    // Plug-ins' editors need a real window of a real display to live in.
    const bool own = !generic && mFilter->HasEditor() && zelui::Application::HasDisplay();
    const QPointer<EditorWindow> self(this);
    if (own && OpenOwnEditor()) return;
    if (!self) return;
    OpenGenericEditor(
        own ? LocalText("$$$/tessaly/EditorFailed=The plug-in's own editor did not open. These are its parameters.")
            : QString());
}

QPixmap EditorWindow::TakePicture() {
    QApplication::processEvents();
    if (!mIsOwnEditor) return grab();
    // What a plug-in has drawn is on the screen alone.
    QElapsedTimer time;
    time.start();
    QPixmap picture = screen()->grabWindow(winId());
    while (IsOneColour(picture.toImage()) && time.elapsed() < kLongestWait) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, kTurnEvery);
        picture = screen()->grabWindow(winId());
    }
    return picture;
}

// The plug-in's own editor

bool EditorWindow::OpenOwnEditor() {
    mView = AudioFilterViewFactory::GetInstance().CreateViewForAudioFilter(mFilter);
    if (!mView) return false;
    Content* const content = new Content(mView);
    mLayout->addWidget(content);
    // The window is as large as the editor, whatever size that takes.
    mLayout->setSizeConstraint(QLayout::SetFixedSize);
    show();
    // The plug-in has a connection to the display of its own, which must find the window there. What the user does
    // meanwhile waits; the window may go for another reason all the same, also while the plug-in opens.
    const boost::intrusive_ptr<AudioFilterEditorViewBase> view = mView;
    const QPointer<EditorWindow> self(this);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    if (!self || !isVisible()) return true;
    view->OpenEditor();
    if (!self) {
        view->CloseEditor();
        return true;
    }
    if (mView->UI_GetLocalRectF(true).IsEmpty()) {
        mView->CloseEditor();
        mView.reset();
        mLayout->setSizeConstraint(QLayout::SetDefaultConstraint);
        delete content;
        return false;
    }
    mIsOwnEditor = true;
    mAdvanceConnection = mView->GetAdvanceFocusSignal().connect(
        boost::bind(&Content::focusNextPrevChild, content, boost::placeholders::_1));
    mSizeConnection = mView->GetContentSizeChangedSignal().connect(boost::bind(&EditorWindow::FitOnScreen, this));
    FitOnScreen();
    return true;
}

// The layout gives the window the editor's size; where that reaches beyond the screen the window moves.
void EditorWindow::FitOnScreen() {
    mLayout->activate();
    const QRect available = screen()->availableGeometry();
    const QPoint most = available.bottomRight() - QPoint(frameGeometry().width() - 1, frameGeometry().height() - 1);
    move(std::max(available.left(), std::min(x(), most.x())), std::max(available.top(), std::min(y(), most.y())));
}

void EditorWindow::OnFocusChanged(QWidget* now) {
    if (mView && now != nullptr && now == zelui::qt::GetWidget(*mView) && mView->WantsToDispatchKeyboardFocus())
        mView->DispatchCurrentFocus();
}

// The parameters

void EditorWindow::OpenGenericEditor(const QString& note) {
    if (!note.isEmpty()) AddNote(note);
    if (mFilter->GetParameterCount() > 0)
        AddScrollArea(new zelui::qt::NodeWidget(GenericAudioFilterEditorView::Create(mFilter)));
    else
        AddNote(LocalText("$$$/tessaly/NoParameters=This effect has no parameters."));
    show();
}

void EditorWindow::AddScrollArea(QWidget* content) {
    mScrollArea = new QScrollArea;
    mScrollArea->setObjectName(QStringLiteral("EditorScrollArea"));
    mScrollArea->setFrameShape(QFrame::NoFrame);
    // Whatever in it gets the focus is scrolled into view.
    mScrollArea->setFocusPolicy(Qt::NoFocus);
    mScrollArea->verticalScrollBar()->setSingleStep(kRowHeight);
    mScrollArea->setWidget(content);
    mLayout->addWidget(mScrollArea);
    FitScrollArea();
}

void EditorWindow::FitScrollArea() {
    const QWidget* const content = mScrollArea->widget();
    const QSize available = screen()->availableGeometry().size();
    const int height = std::min(content->height(), std::min(kTallest, available.height() * 3 / 4));
    const int bar = content->height() > height ? mScrollArea->verticalScrollBar()->sizeHint().width() : 0;
    const int width = content->width() + bar;
    QWidget* const noteLabel = mLayout->count() > 1 ? mLayout->itemAt(0)->widget() : nullptr;
    const int note = noteLabel != nullptr ? noteLabel->heightForWidth(width) : 0;
    // All lines of it, whatever of the rest can be scrolled.
    if (noteLabel != nullptr) noteLabel->setFixedHeight(note);
    setMinimumSize(std::min(width, available.width()), std::min(height, kRowHeight * 3) + note);
    // Wider or taller than all of it would only show emptiness.
    setMaximumSize(width, content->height() + note);
    resize(width, height + note);
}

// The routing

void EditorWindow::OpenChannelMap() {
    const boost::intrusive_ptr<AudioFilterChannelMapEditorView> view =
        AudioFilterChannelMapEditorView::Create(mFilter, zelui::drawbot::SupplierInterface::GetDefault());
    view->GetChannelMapChangedInteractivelySignal().connect(boost::ref(mRoutingChanged));
    mView = view;
    setWindowTitle(TitleText(LocalText("$$$/tessaly/ChannelMapTitle=@0: Channels", ToQString(mFilter->GetName()))));
    Content* const content = new Content(mView);
    const bool scrolls = mView->CanScrollContent();
    if (scrolls) {
        AddScrollArea(content);
    } else {
        mLayout->addWidget(content);
        if (!mView->CanResizeContent()) mLayout->setSizeConstraint(QLayout::SetFixedSize);
    }
    show();
    mView->OpenEditor();
    mAdvanceConnection = mView->GetAdvanceFocusSignal().connect(
        boost::bind(&Content::focusNextPrevChild, content, boost::placeholders::_1));
    mSizeConnection = mView->GetContentSizeChangedSignal().connect(
        boost::bind(scrolls ? &EditorWindow::FitScrollArea : &EditorWindow::FitOnScreen, this));
}

void EditorWindow::AddNote(const QString& text) {
    QLabel* const note = new QLabel(text);
    note->setObjectName(QStringLiteral("EditorNote"));
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    note->setMinimumWidth(static_cast<int>(GenericAudioFilterEditorView::kWidth));
    note->setMargin(kNoteMargin);
    mLayout->addWidget(note);
}

}  // namespace tessaly
