#include "EffectWindows.h"

#include <algorithm>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QShortcut>

#include <boost/bind/bind.hpp>

#include "LocalText.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::ChannelMap;
using zelcore::geom::RectT;

namespace {

/// A screen that is not there any more would take the window with it.
void MoveTo(QWidget& window, const RectT<long>& place) {
    const QPoint corner(static_cast<int>(place.left), static_cast<int>(place.top));
    if (QGuiApplication::screenAt(corner) != nullptr) window.move(corner);
}

}  // namespace

EffectWindows::EffectWindows(Session& session, QWidget* owner) : mSession(session), mOwner(owner) {
    mChainConnection = mSession.GetChainChangedSignal().connect(boost::bind(&EffectWindows::CloseGone, this));
}

EffectWindows::~EffectWindows() { CloseAll(); }

EditorWindow* EffectWindows::Find(const ChainEffectPtr& effect, EditorKind kind) const {
    const auto found = mWindows.find(Key(effect, kind));
    return found == mWindows.end() ? nullptr : found->second.window;
}

void EffectWindows::Show(ChainEffectPtr effect, EditorKind kind) {
    if (effect->IsMissing()) return;
    if (EditorWindow* const window = Find(effect, kind)) {
        window->showNormal();
        window->raise();
        window->activateWindow();
        return;
    }
    EditorWindow* const window = new EditorWindow(effect->GetFilter());
    if (mOwner != nullptr) window->setParent(mOwner, Qt::Window);
    window->installEventFilter(this);
    QShortcut* const close = new QShortcut(QKeySequence::Close, window);
    connect(close, &QShortcut::activated, window, &QWidget::close);
    Open& open = mWindows[Key(effect, kind)];
    open.window = window;
    open.routingConnection = window->GetRoutingChangedSignal().connect(
        boost::bind(&EffectWindows::OnRoutingChanged, this, effect, boost::placeholders::_1, boost::placeholders::_2,
                    boost::placeholders::_3, boost::placeholders::_4));
    const auto place = effect->GetWindowPlaces()[kind];
    // Before it is shown: plug-ins draw where they are.
    if (place) MoveTo(*window, *place);
    if (kind == kChannelMapEditor)
        window->OpenChannelMap();
    else
        window->Open(kind == kGenericEditor);
    // It may have been closed while it opened.
    if (Find(effect, kind) != window) return;
    // Windows that have one size only take no other.
    if (place && place->width > 0 && place->height > 0)
        window->resize(static_cast<int>(place->width), static_cast<int>(place->height));
}

void EffectWindows::KeepPlace(const Windows::value_type& entry) {
    const EditorWindow& window = *entry.second.window;
    if (!window.isVisible()) return;
    entry.first.first->GetWindowPlaces()[entry.first.second] =
        RectT<long>{window.x(), window.y(), window.width(), window.height()};
}

void EffectWindows::KeepPlaces() {
    for (const Windows::value_type& entry : mWindows) KeepPlace(entry);
}

EffectWindows::Windows::iterator EffectWindows::Close(Windows::iterator entry) {
    KeepPlace(*entry);
    EditorWindow* const window = entry->second.window;
    window->removeEventFilter(this);
    window->hide();
    // It may be in the middle of an event of its own.
    window->deleteLater();
    return mWindows.erase(entry);
}

void EffectWindows::CloseGone() {
    const std::vector<ChainEffectPtr>& effects = mSession.GetEffects();
    for (auto entry = mWindows.begin(); entry != mWindows.end();)
        entry = std::find(effects.begin(), effects.end(), entry->first.first) == effects.end() ? Close(entry)
                                                                                               : std::next(entry);
}

void EffectWindows::CloseAll() {
    for (auto entry = mWindows.begin(); entry != mWindows.end();) entry = Close(entry);
}

bool EffectWindows::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close) {
        const auto found = std::find_if(mWindows.begin(), mWindows.end(),
                                        [watched](const auto& entry) { return entry.second.window == watched; });
        if (found != mWindows.end()) Close(found);
    }
    return QObject::eventFilter(watched, event);
}

void EffectWindows::OnRoutingChanged(const ChainEffectPtr& effect, const ChannelMap& inputBefore,
                                     const ChannelMap& inputAfter, const ChannelMap& outputBefore,
                                     const ChannelMap& outputAfter) {
    const bool input = inputBefore != inputAfter;
    const bool output = outputBefore != outputAfter;
    // What was one act of the user is undone as one.
    const QString name = zelui::qt::ToQString(effect->GetName());
    if (input && output) mSession.GetUndoStack().beginMacro(LocalText("$$$/tessaly/Undo/Routing=Route @0", name));
    if (input) mSession.NoteChannelMapChange(effect, AudioFilter::kInput, inputBefore, inputAfter);
    if (output) mSession.NoteChannelMapChange(effect, AudioFilter::kOutput, outputBefore, outputAfter);
    if (input && output) mSession.GetUndoStack().endMacro();
}

}  // namespace tessaly
