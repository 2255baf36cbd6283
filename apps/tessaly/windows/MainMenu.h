#pragma once

#include <functional>

class QKeySequence;
class QMenu;
class QString;

namespace tessaly {

class MainWindow;

/// The menus of the main window. Main thread.
class MainMenu {
public:
    /// Fills the window's menu bar.
    explicit MainMenu(MainWindow& window);

private:
    QMenu& AddMenu(const char* objectName, const QString& title);
    void Add(QMenu& menu, const char* objectName, const QString& text, const QKeySequence& keys,
             const std::function<void()>& run);
    void FillFile();
    void FillRecent(QMenu& menu);
    void FillEdit();
    void FillEffect();
    void FillPlay();
    void FillView();

    MainWindow& mWindow;
};

}  // namespace tessaly
