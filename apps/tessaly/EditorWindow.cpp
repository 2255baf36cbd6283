#include "EditorWindow.h"

#include <algorithm>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>
#include <zelcore/Localizer.h>
#include <zelui/QtBridge.h>

namespace tessaly {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhostui::GenericAudioFilterEditorView;
using zelcore::config::Localize;

namespace {

// Parameters come in any number; more of them than this at once is no help.
constexpr int kTallest = 640;
constexpr int kNoteMargin = 24;

}  // namespace

EditorWindow::EditorWindow(const boost::intrusive_ptr<AudioFilter>& filter) {
    setObjectName(QStringLiteral("EditorWindow"));
    // A name in which Qt would see its mark of unsaved changes.
    setWindowTitle(zelui::qt::ToQString(filter->GetName()).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (filter->GetParameterCount() > 0)
        AddEditor(filter);
    else
        AddNote(zelui::qt::ToQString(Localize("$$$/tessaly/NoParameters=This effect has no parameters.")));
}

void EditorWindow::AddEditor(const boost::intrusive_ptr<AudioFilter>& filter) {
    QScrollArea* const area = new QScrollArea;
    area->setObjectName(QStringLiteral("EditorScrollArea"));
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area->verticalScrollBar()->setSingleStep(static_cast<int>(GenericAudioFilterEditorView::kRowHeight));
    QWidget* const content = new zelui::qt::NodeWidget(GenericAudioFilterEditorView::Create(filter));
    area->setWidget(content);
    layout()->addWidget(area);

    const int tallest = std::min(kTallest, screen()->availableGeometry().height() * 3 / 4);
    const int height = std::min(content->height(), tallest);
    const bool scrolls = content->height() > height;
    const int bar = scrolls ? area->verticalScrollBar()->sizeHint().width() : 0;
    setMinimumSize(std::min(content->width() + bar, screen()->availableGeometry().width()),
                   std::min(height, static_cast<int>(GenericAudioFilterEditorView::kRowHeight) * 3));
    // Wider or taller than all of it would only show emptiness.
    setMaximumSize(content->width() + bar, content->height());
    resize(content->width() + bar, height);
}

void EditorWindow::AddNote(const QString& text) {
    QLabel* const note = new QLabel(text);
    note->setObjectName(QStringLiteral("EditorNote"));
    note->setTextFormat(Qt::PlainText);
    note->setMargin(kNoteMargin);
    layout()->addWidget(note);
}

}  // namespace tessaly
