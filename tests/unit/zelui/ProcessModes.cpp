#include "ProcessModes.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <QApplication>
#include <stdexcept>

#include <zelcore/MainLoop.h>
#include <zelcore/Threads.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/UI_ProgressDialog.h>

namespace zeltests {

namespace {

using zelcore::threads::AsyncCallFromMainThread;
using zelcore::utility::AsciiToUTF16;
using zelui::dialogs::UI_ProgressDialog;
using zelui::ui::UI_DialogViewContainer;

#define EXPECT_OR_FAIL(condition) \
    if (!(condition)) {           \
        return __LINE__;          \
    }

boost::intrusive_ptr<UI_ProgressDialog> MakeDialog() {
    return new UI_ProgressDialog(nullptr, AsciiToUTF16("Title"), zelcore::ustring(), nullptr, false, true);
}

int ReportPlatform(int& argc, char** argv) {
    const zelui::Application application(argc, argv);
    std::printf("%s %d %s\n", QGuiApplication::platformName().toUtf8().constData(),
                zelui::Application::HasDisplay() ? 1 : 0, qgetenv("QT_QPA_PLATFORM").constData());
    return 0;
}

int RunUntilQuit(int& argc, char** argv) {
    zelui::Application application(argc, argv);
    application.Quit(1);  // Nothing runs yet, so nothing ends.
    bool dialogCancelled = false;
    AsyncCallFromMainThread([&] {
        AsyncCallFromMainThread([&] { application.Quit(42); });
        dialogCancelled = MakeDialog()->UI_RunModal() == UI_DialogViewContainer::kResponseCancel;
    });
    EXPECT_OR_FAIL(application.Run() == 42);
    EXPECT_OR_FAIL(dialogCancelled);
    AsyncCallFromMainThread([&] { application.Quit(43); });
    EXPECT_OR_FAIL(application.Run() == 43);
    return 0;
}

int HostOwnsQt(int& argc, char** argv) {
    QApplication host(argc, argv);
    {
        const zelui::Application application(argc, argv);
        EXPECT_OR_FAIL(QCoreApplication::instance() == &host);
        EXPECT_OR_FAIL(QGuiApplication::quitOnLastWindowClosed());
        bool dialogDone = false;
        AsyncCallFromMainThread([&] {
            boost::intrusive_ptr<UI_ProgressDialog> dialog = MakeDialog();
            AsyncCallFromMainThread([dialog] { dialog->UI_Close(UI_DialogViewContainer::kResponseOK); });
            dialogDone = dialog->UI_RunModal() == UI_DialogViewContainer::kResponseOK;
            AsyncCallFromMainThread([] { QCoreApplication::exit(7); });
        });
        EXPECT_OR_FAIL(QApplication::exec() == 7);
        EXPECT_OR_FAIL(dialogDone);
    }
    EXPECT_OR_FAIL(QCoreApplication::instance() == &host);
    EXPECT_OR_FAIL(!zelcore::threads::MainLoop::GetInstalled());
    return 0;
}

int EndWithDialogsAndCalls(int& argc, char** argv) {
    bool called = false;
    bool closeReported = false;
    const std::shared_ptr<int> held = std::make_shared<int>(0);
    boost::intrusive_ptr<UI_ProgressDialog> outliving;
    {
        const zelui::Application application(argc, argv);
        outliving = MakeDialog();
        outliving->SetPostCloseCallback([&](UI_ProgressDialog::Response) { return closeReported = true; });
        outliving->UI_ShowModeless();
        MakeDialog()->UI_ShowModeless();
        AsyncCallFromMainThread([&called, held] { called = true; });
        EXPECT_OR_FAIL(held.use_count() == 2);
    }
    EXPECT_OR_FAIL(held.use_count() == 1);
    EXPECT_OR_FAIL(!called && !closeReported);
    EXPECT_OR_FAIL(!outliving->UI_IsOpen() && !outliving->UI_GetPlatformWindow());
    outliving->SetProgress(1, 2, zelcore::ustring());
    outliving->SetExtraText(AsciiToUTF16("late"));
    outliving->UI_ShowModeless();
    EXPECT_OR_FAIL(!outliving->UI_IsOpen());
    return 0;
}

bool ThrowsLogicError(int& argc, char** argv) {
    try {
        zelui::Application application(argc, argv);
        return false;
    } catch (const std::logic_error&) {
        return true;
    }
}

int RefuseSecond(int& argc, char** argv) {
    {
        QCoreApplication consoleHost(argc, argv);
        EXPECT_OR_FAIL(ThrowsLogicError(argc, argv));
    }
    {
        zelui::Application first(argc, argv);
        EXPECT_OR_FAIL(ThrowsLogicError(argc, argv));
        EXPECT_OR_FAIL(zelcore::threads::MainLoop::GetInstalled());
    }
    EXPECT_OR_FAIL(!ThrowsLogicError(argc, argv));
    return 0;
}

struct NamedMode {
    const char* name;
    ProcessMode mode;
};
const NamedMode kModes[] = {{"--report-platform", &ReportPlatform},
                            {"--run-until-quit", &RunUntilQuit},
                            {"--host-owns-qt", &HostOwnsQt},
                            {"--end-with-dialogs-and-calls", &EndWithDialogsAndCalls},
                            {"--refuse-second", &RefuseSecond}};

}  // namespace

ProcessMode FindProcessMode(int argc, char** argv) {
    for (const NamedMode& mode : kModes) {
        if (argc > 1 && std::strcmp(argv[1], mode.name) == 0) return mode.mode;
    }
    return nullptr;
}

}  // namespace zeltests
