#include "MainMenu.h"

#include <QActionGroup>
#include <QFileInfo>
#include <QMenuBar>
#include <zelui/QtAccessibility.h>

#include "ChainView.h"
#include "LocalText.h"
#include "MainWindow.h"
#include "WindowSettings.h"

namespace tessaly {

namespace {

/// Qt names the item that opens a menu, and not the menu.
void NameForReaders(QMenu& menu) { zelui::qt::SetAccessibleName(menu, menu.title().remove(QLatin1Char('&'))); }

void ShowStep(MainWindow& window, const char* action, bool isPossible, const QString& text, const QString& textOfStep) {
    QAction* const found = window.findChild<QAction*>(QLatin1String(action));
    found->setText(isPossible ? textOfStep : text);
    found->setEnabled(isPossible);
}

}  // namespace

MainMenu::MainMenu(MainWindow& window) : mWindow(window) {
    FillFile();
    FillEdit();
    FillEffect();
    FillPlay();
    FillView();
    QMenu& help = AddMenu("HelpMenu", LocalText("$$$/tessaly/Menu/Help=&Help"));
    MainWindow* const target = &mWindow;
    Add(help, "About", LocalText("$$$/tessaly/Menu/About=&About Tessaly"), {}, [target] { target->ShowAbout(); });
}

QMenu& MainMenu::AddMenu(const char* objectName, const QString& title) {
    QMenu* const menu = mWindow.menuBar()->addMenu(title);
    menu->setObjectName(QLatin1String(objectName));
    NameForReaders(*menu);
    return *menu;
}

void MainMenu::Add(QMenu& menu, const char* objectName, const QString& text, const QKeySequence& keys,
                   const std::function<void()>& run) {
    QAction* const action = menu.addAction(text);
    action->setObjectName(QLatin1String(objectName));
    action->setShortcut(keys);
    QObject::connect(action, &QAction::triggered, &mWindow, run);
}

void MainMenu::FillFile() {
    QMenu& menu = AddMenu("FileMenu", LocalText("$$$/tessaly/Menu/File=&File"));
    MainWindow* const window = &mWindow;
    Add(menu, "NewSession", LocalText("$$$/tessaly/Menu/New=&New Session"), QKeySequence::New,
        [window] { window->GetFiles().New(); });
    Add(menu, "OpenSession", LocalText("$$$/tessaly/Menu/OpenSession=&Open Session..."), QKeySequence::Open,
        [window] { window->GetFiles().OpenSession({}); });
    FillRecent(*menu.addMenu(LocalText("$$$/tessaly/Menu/Recent=Open &Recent")));
    Add(menu, "SaveSession", LocalText("$$$/tessaly/Menu/Save=&Save Session"), QKeySequence::Save,
        [window] { window->Save(); });
    Add(menu, "SaveSessionAs", LocalText("$$$/tessaly/Menu/SaveAs=Save Session &As..."),
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), [window] { window->SaveAs(); });
    menu.addSeparator();
    Add(menu, "OpenSoundFile", LocalText("$$$/tessaly/Menu/OpenSound=Open So&und..."),
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O), [window] { window->GetFiles().OpenSound({}); });
    Add(menu, "OpenSideChainFile", LocalText("$$$/tessaly/Menu/SideChain=Choose Side-&Chain..."), {},
        [window] { window->GetFiles().OpenSideChain({}); });
    Add(menu, "Render", LocalText("$$$/tessaly/Menu/Render=R&ender..."), QKeySequence(Qt::CTRL | Qt::Key_R),
        [window] { window->Render({}); });
    menu.addSeparator();
    Add(menu, "Quit", LocalText("$$$/tessaly/Menu/Quit=&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q),
        [window] { window->close(); });
}

void MainMenu::FillRecent(QMenu& menu) {
    menu.setObjectName(QStringLiteral("RecentMenu"));
    NameForReaders(menu);
    menu.setToolTipsVisible(true);
    MainWindow* const window = &mWindow;
    QObject::connect(&menu, &QMenu::aboutToShow, window, [&menu, window] {
        menu.clear();
        for (const QString& path : WindowSettings::GetRecentSessions()) {
            QAction* const action = menu.addAction(MenuText(QFileInfo(path).fileName()));
            action->setToolTip(ToolTipText(path));
            QObject::connect(action, &QAction::triggered, window,
                             [window, path] { window->GetFiles().OpenSession(path.toStdString()); });
        }
        if (menu.isEmpty()) menu.addAction(LocalText("$$$/tessaly/Menu/NoRecent=None Yet"))->setEnabled(false);
    });
}

void MainMenu::FillEdit() {
    QMenu& menu = AddMenu("EditMenu", LocalText("$$$/tessaly/Menu/Edit=&Edit"));
    QUndoStack* const stack = &mWindow.GetSession().GetUndoStack();
    Add(menu, "Undo", QString(), QKeySequence::Undo, [stack] { stack->undo(); });
    Add(menu, "Redo", QString(), QKeySequence::Redo, [stack] { stack->redo(); });
    // Where the words go is each language's own.
    const auto show = [window = &mWindow, stack] {
        ShowStep(*window, "Undo", stack->canUndo(), LocalText("$$$/tessaly/Menu/Undo=&Undo"),
                 LocalText("$$$/tessaly/Menu/UndoStep=&Undo @0", MenuText(stack->undoText())));
        ShowStep(*window, "Redo", stack->canRedo(), LocalText("$$$/tessaly/Menu/Redo=&Redo"),
                 LocalText("$$$/tessaly/Menu/RedoStep=&Redo @0", MenuText(stack->redoText())));
    };
    QObject::connect(stack, &QUndoStack::indexChanged, &mWindow, show);
    show();
}

void MainMenu::FillEffect() {
    QMenu& menu = AddMenu("EffectMenuBar", LocalText("$$$/tessaly/Menu/Effect=Effe&ct"));
    MainWindow* const window = &mWindow;
    Add(menu, "AddEffect", LocalText("$$$/tessaly/Menu/AddEffect=&Add Effect..."), QKeySequence(Qt::CTRL | Qt::Key_E),
        [window] { window->AddEffect(); });
    menu.addSeparator();
    Add(menu, "ShowEditor", LocalText("$$$/tessaly/Menu/Editor=&Editor"), QKeySequence(Qt::CTRL | Qt::Key_1),
        [window] { window->OpenEditor(kOwnEditor); });
    Add(menu, "ShowParameters", LocalText("$$$/tessaly/Menu/Parameters=&Parameters"),
        QKeySequence(Qt::CTRL | Qt::Key_2), [window] { window->OpenEditor(kGenericEditor); });
    Add(menu, "ShowChannels", LocalText("$$$/tessaly/Menu/Channels=&Channels"), QKeySequence(Qt::CTRL | Qt::Key_3),
        [window] { window->OpenEditor(kChannelMapEditor); });
    menu.addSeparator();
    Add(menu, "MoveUp", LocalText("$$$/tessaly/Menu/MoveUp=Move &Up"), {},
        [window] { window->GetChainView().MoveCurrent(-1); });
    Add(menu, "MoveDown", LocalText("$$$/tessaly/Menu/MoveDown=Move &Down"), {},
        [window] { window->GetChainView().MoveCurrent(1); });
    Add(menu, "RemoveEffect", LocalText("$$$/tessaly/Menu/Remove=&Remove"), {},
        [window] { window->GetChainView().RemoveCurrent(); });
    menu.addSeparator();
    Add(menu, "PluginManager", LocalText("$$$/tessaly/Menu/Manager=Plug-In &Manager..."),
        QKeySequence(Qt::CTRL | Qt::Key_M), [window] { window->OpenManager(); });
    Add(menu, "ScanPlugins", LocalText("$$$/tessaly/Menu/Scan=&Scan for New Plug-Ins"), {},
        [window] { window->Scan(); });
}

void MainMenu::FillPlay() {
    QMenu& menu = AddMenu("PlayMenu", LocalText("$$$/tessaly/Menu/Play=&Playback"));
    MainWindow* const window = &mWindow;
    Add(menu, "PlayStop", LocalText("$$$/tessaly/Menu/PlayStop=&Play or Stop"), QKeySequence(Qt::CTRL | Qt::Key_Space),
        [window] { window->TogglePlay(); });
    Add(menu, "ToBeginning", LocalText("$$$/tessaly/Menu/Rewind=Back to the &Beginning"),
        QKeySequence(Qt::CTRL | Qt::Key_Home), [window] { window->Rewind(); });
    Add(menu, "ToggleLoop", LocalText("$$$/tessaly/Menu/Loop=&Loop On or Off"), QKeySequence(Qt::CTRL | Qt::Key_L),
        [window] { window->ToggleLoop(); });
}

void MainMenu::FillView() {
    QMenu& menu = AddMenu("ViewMenu", LocalText("$$$/tessaly/Menu/View=&View"));
    QActionGroup* const group = new QActionGroup(&mWindow);
    const auto add = [&](const char* objectName, const QString& text, CommandLine::Theme theme) {
        QAction* const action = menu.addAction(text);
        action->setObjectName(QLatin1String(objectName));
        action->setCheckable(true);
        action->setChecked(WindowSettings::GetTheme() == theme);
        group->addAction(action);
        MainWindow* const window = &mWindow;
        QObject::connect(action, &QAction::triggered, window, [window, theme] { window->SetTheme(theme); });
    };
    add("SystemTheme", LocalText("$$$/tessaly/Menu/SystemTheme=&System Colours"), CommandLine::kSystem);
    add("LightTheme", LocalText("$$$/tessaly/Menu/LightTheme=&Light"), CommandLine::kLight);
    add("DarkTheme", LocalText("$$$/tessaly/Menu/DarkTheme=&Dark"), CommandLine::kDark);
}

}  // namespace tessaly
