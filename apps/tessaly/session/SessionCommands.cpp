#include "SessionCommands.h"

#include <utility>

namespace tessaly {

Session::ChainCommand::ChainCommand(Session& session, const QString& text, const std::vector<ChainEffectPtr>& after)
    : QUndoCommand(text), mSession(session), mBefore(session.mEffects), mAfter(after) {}

void Session::ChainCommand::undo() { mSession.SetEffects(mBefore); }

void Session::ChainCommand::redo() { mSession.SetEffects(mAfter); }

Session::BypassCommand::BypassCommand(Session& session, const QString& text, const ChainEffectPtr& effect,
                                      bool bypassed)
    : QUndoCommand(text), mSession(session), mEffect(effect), mIsBypassed(bypassed) {}

void Session::BypassCommand::undo() { Set(!mIsBypassed); }

void Session::BypassCommand::redo() { Set(mIsBypassed); }

void Session::BypassCommand::Set(bool bypassed) {
    mEffect->SetBypassed(bypassed);
    mSession.mChainChanged();
}

Session::MapCommand::MapCommand(const QString& text, const ChainEffectPtr& effect, Direction direction,
                                const ChannelMap& before, const ChannelMap& after)
    : QUndoCommand(text), mEffect(effect), mDirection(direction), mBefore(before), mAfter(after), mIsMade(true) {}

void Session::MapCommand::undo() { mEffect->GetFilter()->SetChannelMap(mBefore, mDirection); }

void Session::MapCommand::redo() {
    // The stack asks for it when the command is pushed, too.
    if (!std::exchange(mIsMade, false)) mEffect->GetFilter()->SetChannelMap(mAfter, mDirection);
}

}  // namespace tessaly
