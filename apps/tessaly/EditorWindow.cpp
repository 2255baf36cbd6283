#include "EditorWindow.h"

#include <algorithm>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <boost/bind/bind.hpp>
#include <zelaudiofilterhostui/AudioFilterViewFactory.h>
#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>
#include <zelcore/Localizer.h>
#include <zelui/Application.h>
#include <zelui/QtBridge.h>

namespace tessaly {

using zelaudiofilterhostui::AudioFilterEditorViewBase;
using zelaudiofilterhostui::AudioFilterViewFactory;
using zelaudiofilterhostui::GenericAudioFilterEditorView;
using zelcore::config::Localize;

namespace {

// Parameters come in any number; more of them than this at once is no help.
constexpr int kTallest = 640;
constexpr int kNoteMargin = 12;
// For a plug-in's first picture, in milliseconds.
constexpr int kLongestWait = 10000;
constexpr int kLookEvery = 50;
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

EditorWindow::EditorWindow(const FilterPtr& filter) : mFilter(filter), mLayout(new QVBoxLayout(this)) {
    setObjectName(QStringLiteral("EditorWindow"));
    // A name in which Qt would see its mark of unsaved changes.
    setWindowTitle(zelui::qt::ToQString(filter->GetName()).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
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
    if (own && OpenOwnEditor()) return;
    const char* const failed =
        "$$$/tessaly/EditorFailed=The plug-in's own editor did not open. These are its parameters.";
    OpenGenericEditor(own ? zelui::qt::ToQString(Localize(failed)) : QString());
}

QPixmap EditorWindow::TakePicture() {
    QApplication::processEvents();
    if (!mView) return grab();
    // What a plug-in has drawn is on the screen alone.
    QElapsedTimer time;
    time.start();
    QPixmap picture = screen()->grabWindow(winId());
    while (IsOneColour(picture.toImage()) && time.elapsed() < kLongestWait) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, kLookEvery);
        picture = screen()->grabWindow(winId());
    }
    return picture;
}

// The plug-in's own editor

bool EditorWindow::OpenOwnEditor() {
    mView = AudioFilterViewFactory::GetInstance().CreateViewForAudioFilter(mFilter);
    if (!mView) return false;
    QWidget* const content = new zelui::qt::NodeWidget(mView);
    mLayout->addWidget(content);
    // The window is as large as the editor, whatever size that takes.
    mLayout->setSizeConstraint(QLayout::SetFixedSize);
    show();
    // The plug-in has a connection to the display of its own, which must find the window there.
    QApplication::processEvents();
    mView->OpenEditor();
    if (mView->UI_GetLocalRectF(true).IsEmpty()) {
        mView->CloseEditor();
        mView.reset();
        mLayout->setSizeConstraint(QLayout::SetDefaultConstraint);
        delete content;
        return false;
    }
    mAdvanceConnection = mView->GetAdvanceFocusSignal().connect(
        boost::bind(&EditorWindow::OnAdvanceFocus, this, boost::placeholders::_1));
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

void EditorWindow::OnAdvanceFocus(bool forward) { focusNextPrevChild(forward); }

// The parameters

void EditorWindow::OpenGenericEditor(const QString& note) {
    if (!note.isEmpty()) AddNote(note);
    if (mFilter->GetParameterCount() > 0)
        AddScrollArea(new zelui::qt::NodeWidget(GenericAudioFilterEditorView::Create(mFilter)));
    else
        AddNote(zelui::qt::ToQString(Localize("$$$/tessaly/NoParameters=This effect has no parameters.")));
    show();
}

void EditorWindow::AddScrollArea(QWidget* content) {
    QScrollArea* const area = new QScrollArea;
    area->setObjectName(QStringLiteral("EditorScrollArea"));
    area->setFrameShape(QFrame::NoFrame);
    area->verticalScrollBar()->setSingleStep(kRowHeight);
    area->setWidget(content);
    mLayout->addWidget(area);

    const QSize available = screen()->availableGeometry().size();
    const int note = mLayout->count() > 1 ? mLayout->itemAt(0)->sizeHint().height() : 0;
    const int height = std::min(content->height(), std::min(kTallest, available.height() * 3 / 4));
    const int bar = content->height() > height ? area->verticalScrollBar()->sizeHint().width() : 0;
    const int width = content->width() + bar;
    setMinimumSize(std::min(width, available.width()), std::min(height, kRowHeight * 3) + note);
    // Wider or taller than all of it would only show emptiness.
    setMaximumSize(width, content->height() + note);
    resize(width, height + note);
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
