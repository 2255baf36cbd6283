#pragma once

#include <map>
#include <memory>
#include <QObject>
#include <utility>

#include <zelcore/Signals.h>

#include "EditorWindow.h"
#include "Session.h"

namespace tessaly {

/// The open editor windows of a session's effects: each effect has at most one of a kind, and it opens where it was
/// last. An effect that leaves the chain takes its windows with it. Main thread.
class EffectWindows final : public QObject {
public:
    /// The session outlives the object. `owner` (may be null) is the window above which they stay.
    EffectWindows(Session& session, QWidget* owner);
    ~EffectWindows() override;

    /// Opens that window, or brings it to the front. Nothing for an effect whose plug-in is missing.
    /// By value: the list that the effect may be in changes when it goes while its editor opens.
    void Show(ChainEffectPtr effect, EditorKind kind);
    /// The window, or null while it is closed.
    EditorWindow* Find(const ChainEffectPtr& effect, EditorKind kind) const;
    void CloseAll();
    /// Puts the places of the open windows into their effects, for a session that is about to be kept.
    void KeepPlaces();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    typedef std::pair<ChainEffectPtr, EditorKind> Key;
    struct Open {
        EditorWindow* window = nullptr;
        boost::signals::scoped_connection routingConnection;
    };
    typedef std::map<Key, Open> Windows;

    static void KeepPlace(const Windows::value_type& entry);
    void OnRoutingChanged(const ChainEffectPtr& effect, const zelaudiofilterhost::ChannelMap& inputBefore,
                          const zelaudiofilterhost::ChannelMap& inputAfter,
                          const zelaudiofilterhost::ChannelMap& outputBefore,
                          const zelaudiofilterhost::ChannelMap& outputAfter);
    Windows::iterator Close(Windows::iterator entry);
    void CloseGone();

    Session& mSession;
    QWidget* const mOwner;
    Windows mWindows;
    boost::signals::scoped_connection mChainConnection;
};

}  // namespace tessaly
