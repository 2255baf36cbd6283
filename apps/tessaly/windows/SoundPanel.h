#pragma once

#include <QWidget>

#include <zelcore/Signals.h>

class QLabel;
class QPushButton;

namespace tessaly {

class Session;

/// What is played: the track's sound file and its side-chain, each with a button to choose it, and what is known of
/// them. Files can be dropped on either line. Main thread.
class SoundPanel final : public QWidget {
public:
    /// Told a file's path that was dropped, UTF-8; empty when the user wants to choose one.
    typedef boost::signal<void(const std::string&)> FileSignal;
    typedef boost::signal<void()> Signal;

    explicit SoundPanel(Session& session);

    FileSignal& GetSoundSignal() { return mSound; }
    FileSignal& GetSideChainSignal() { return mSideChain; }
    Signal& GetSideChainRemovedSignal() { return mSideChainRemoved; }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void Refresh();

    Session& mSession;
    QLabel* mSoundText;
    QLabel* mSideChainText;
    QPushButton* mSideChainButton;
    QPushButton* mRemoveButton;
    FileSignal mSound;
    FileSignal mSideChain;
    Signal mSideChainRemoved;
    boost::signals::scoped_connection mFormatConnection;
};

}  // namespace tessaly
