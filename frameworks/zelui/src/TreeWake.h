#pragma once

#include <functional>

#include <QObject>

namespace zelui {

/// Has a function called soon, from the main loop, before anything is painted; once, however often it was asked for.
class TreeWake final : private QObject {
public:
    explicit TreeWake(const std::function<void()>& function);
    void Schedule();

private:
    bool event(QEvent* event) override;

    const std::function<void()> mFunction;
    bool mIsScheduled = false;
};

}  // namespace zelui
