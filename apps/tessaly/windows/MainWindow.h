#pragma once

#include <functional>
#include <QMainWindow>
#include <string>

#include "CommandLine.h"
#include "EffectWindows.h"
#include "Player.h"
#include "RunMarker.h"
#include "Session.h"
#include "SessionFiles.h"

namespace tessaly {

class ChainView;
class EffectMenu;
class NoticeBar;
class RenderJob;
class TransportBar;

/// The application's window: a track with its sound, its side-chain and its chain of effects. Main thread.
class MainWindow final : public QMainWindow {
public:
    /// Empty, and not shown yet. `theme` kSystem takes the one that was chosen last.
    explicit MainWindow(CommandLine::Theme theme);
    /// Closes the editors and stops the sound.
    ~MainWindow() override;

    /// Tells of runs that did not come to their end, and offers the session of the last one.
    void TellOfLostRuns(const std::vector<RunMarker::LostRun>& runs);

    Session& GetSession() { return mSession; }
    Player& GetPlayer() { return mPlayer; }
    EffectWindows& GetEffectWindows() { return mEffectWindows; }
    SessionFiles& GetFiles() { return mFiles; }
    ChainView& GetChainView() { return *mChainView; }

    // What the menus and buttons do.

    void Save();
    void SaveAs();
    /// Shows the menu of effects; what is picked goes behind the chosen effect.
    void AddEffect();
    void AddEffect(const zelaudiofilterhost::AudioFilterDescriptor& descriptor);
    /// Opens an editor of the chosen effect.
    void OpenEditor(EditorKind kind);
    void OpenManager();
    /// Looks for new plug-ins.
    void Scan();
    /// Renders into that file; an empty path lets the user choose.
    void Render(const std::string& path);
    void SetTheme(CommandLine::Theme theme);
    void TogglePlay();
    void Rewind();
    void ToggleLoop();
    void ShowAbout();
    /// Ends as soon as it can, for somebody who cannot answer questions: dialogs are cancelled, a render too. Changes
    /// that are not saved are lost, and the next start says so.
    void EndWithoutAsking();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildContent();
    QWidget* MakeSoundPanel();
    QWidget* MakeChainPanel();
    void AddChainButton(QWidget& panel, const char* objectName, const QString& text, bool needsPlugin,
                        const std::function<void()>& run);
    void Connect();
    void ShowTitle();
    void ShowChainButtons();
    void WaitForRender(RenderJob& job, const std::string& path);

    RunMarker mMarker;
    Session mSession;
    Player mPlayer;
    EffectWindows mEffectWindows;
    SessionFiles mFiles;
    bool mEndsWithoutAsking = false;
    NoticeBar* mNotice = nullptr;
    TransportBar* mTransport = nullptr;
    ChainView* mChainView = nullptr;
    EffectMenu* mEffectMenu = nullptr;
    QWidget* mAddButton = nullptr;
    std::vector<QWidget*> mEffectButtons;  ///< those that need a chosen effect
    std::vector<QWidget*> mPluginButtons;  ///< those that need one whose plug-in is there
};

}  // namespace tessaly
