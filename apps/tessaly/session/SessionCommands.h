#pragma once

#include <QUndoCommand>
#include <vector>

#include "Session.h"

namespace tessaly {

/// Another list of effects: one more, one less, or in another order. Holds those that are in neither list now, too.
class Session::ChainCommand final : public QUndoCommand {
public:
    ChainCommand(Session& session, const QString& text, const std::vector<ChainEffectPtr>& after);

    void undo() override;
    void redo() override;

private:
    Session& mSession;
    const std::vector<ChainEffectPtr> mBefore;
    const std::vector<ChainEffectPtr> mAfter;
};

class Session::BypassCommand final : public QUndoCommand {
public:
    BypassCommand(Session& session, const QString& text, const ChainEffectPtr& effect, bool bypassed);

    void undo() override;
    void redo() override;

private:
    void Set(bool bypassed);

    Session& mSession;
    const ChainEffectPtr mEffect;
    const bool mIsBypassed;
};

/// A change of routing that has been made by the time the command comes.
class Session::MapCommand final : public QUndoCommand {
public:
    typedef zelaudiofilterhost::AudioFilter::Direction Direction;
    typedef zelaudiofilterhost::ChannelMap ChannelMap;

    MapCommand(const QString& text, const ChainEffectPtr& effect, Direction direction, const ChannelMap& before,
               const ChannelMap& after);

    void undo() override;
    void redo() override;

private:
    const ChainEffectPtr mEffect;
    const Direction mDirection;
    const ChannelMap mBefore;
    const ChannelMap mAfter;
    bool mIsMade;
};

}  // namespace tessaly
