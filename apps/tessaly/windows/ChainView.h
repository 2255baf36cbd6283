#pragma once

#include <memory>
#include <QTreeWidget>

#include <zelcore/Signals.h>

namespace tessaly {

class ChainEffect;
class Session;

/// The effects of a session's chain, one a row, in the order in which the sound goes through them. The box in front of
/// an effect and the space bar switch it on and off; Return opens it, Delete removes it, Alt with the arrow keys moves
/// it, and so does dragging. Main thread.
class ChainView final : public QTreeWidget {
public:
    typedef boost::signal<void()> Signal;

    /// The session outlives the view.
    explicit ChainView(Session& session);

    /// Of the chosen effect; -1 when none is.
    int GetCurrentIndex() const;
    void SetCurrentIndex(int index);
    /// Moves the chosen effect up (-1) or down (1), and it stays chosen.
    void MoveCurrent(int direction);
    void RemoveCurrent();

    /// The user wants to see the chosen effect's editor.
    Signal& GetOpenSignal() { return mOpen; }
    /// Another effect is chosen, or the chosen one has changed.
    Signal& GetChosenSignal() { return mChosen; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Refresh();
    void RefreshRow(int index);
    static void DescribeRow(QTreeWidgetItem& item);
    int FindChosen() const;
    void NoteChosen();
    void ToggleCurrent();
    void MoveTo(int from, int to);
    int GetDropIndex(const QPoint& position) const;

    Session& mSession;
    Signal mOpen;
    Signal mChosen;
    std::weak_ptr<ChainEffect> mChosenEffect;
    boost::signals::scoped_connection mChainConnection;
};

}  // namespace tessaly
