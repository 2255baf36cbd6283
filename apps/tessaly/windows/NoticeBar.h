#pragma once

#include <QFrame>

class QLabel;

namespace tessaly {

/// A line at the top of a window that tells what went wrong beside what the user is doing, without stopping them. Goes
/// when it is closed. Main thread.
class NoticeBar final : public QFrame {
public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// Tells this; what is still there stays, but for the same text. At most kMaxLines are kept, the latest.
    void Tell(const QString& text);
    void Clear();

    static constexpr int kMaxLines = 8;

private:
    QLabel* mText;
};

}  // namespace tessaly
