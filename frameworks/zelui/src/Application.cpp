#include <QApplication>
#include <QEventLoop>
#include <QThread>
#include <stdexcept>

#include <zelui/Application.h>

#include "DialogWindow.h"
#include "OpenDialogs.h"
#include "PlatformChoice.h"
#include "QtMainLoop.h"
#include "ThemeWatch.h"

namespace zelui {

namespace {

bool sExists = false;

QtMessageHandler sNextMessageHandler = nullptr;

// The offscreen platform complains of every window that has a smallest size. Nobody can do anything about that, and it
// would stand between the lines that a program without a display prints.
void PassOnMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message == QLatin1String("This plugin does not support propagateSizeHints()")) return;
    sNextMessageHandler(type, context, message);
}

std::unique_ptr<QApplication> MakeQtApplication(int& argc, char** argv) {
    const QByteArray platform = ChoosePlatform();
    // Only while Qt looks: programs started from this one make their own choice.
    if (!platform.isEmpty()) qputenv("QT_QPA_PLATFORM", platform);
    std::unique_ptr<QApplication> application = std::make_unique<QApplication>(argc, argv);
    if (!platform.isEmpty()) qunsetenv("QT_QPA_PLATFORM");
    // The program ends when it is told to, not when a progress dialog happens to be the last window.
    QApplication::setQuitOnLastWindowClosed(false);
    if (!Application::HasDisplay() && !sNextMessageHandler)
        sNextMessageHandler = qInstallMessageHandler(&PassOnMessage);
    return application;
}

// Also those of dialogs that somebody still holds and those only waiting for Qt to delete them.
void DeleteDialogWindows() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (DialogWindow* const dialog = dynamic_cast<DialogWindow*>(window)) {
            dialog->Silence();
            delete dialog;
        }
    }
}

}  // namespace

struct Application::State {
    std::unique_ptr<QApplication> ownApplication;
    QtMainLoop loop;
    int runs = 0;
};

Application::Application(int& argc, char** argv) {
    if (sExists) throw std::logic_error("zelui::Application: there is one already");
    if (QCoreApplication::instance() && !qobject_cast<QApplication*>(QCoreApplication::instance()))
        throw std::logic_error("zelui::Application: the host's Qt application object is not a QApplication");
    std::unique_ptr<QApplication> own;
    if (!QCoreApplication::instance()) own = MakeQtApplication(argc, argv);
    mState.reset(new State{std::move(own), {}, 0});
    zelcore::threads::MainLoop::Install(&mState->loop);
    ui::ThemeWatch::Get();
    sExists = true;
}

Application::~Application() {
    if (zelcore::threads::MainLoop::GetInstalled() == &mState->loop) zelcore::threads::MainLoop::Install(nullptr);
    mState->loop.DropPosted();
    OpenDialogs::AbandonAll();
    DeleteDialogWindows();
    ui::ThemeWatch::Stop();
    sExists = false;
}

bool Application::HasDisplay() {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return false;
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

int Application::Run() {
    ++mState->runs;
    int code = 0;
    if (QThread::currentThread()->loopLevel() == 0) {
        code = QApplication::exec();
    } else {
        QEventLoop loop;
        code = loop.exec();
    }
    --mState->runs;
    return code;
}

void Application::Quit(int exitCode) {
    // Qt remembers an exit without a loop and would end the next dialog's at once.
    if (mState->ownApplication && mState->runs == 0) return;
    QCoreApplication::exit(exitCode);
}

bool Application::CancelActiveDialog() { return OpenDialogs::CancelInnermost(); }

}  // namespace zelui
