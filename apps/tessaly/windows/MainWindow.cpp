#include "MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <boost/bind/bind.hpp>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelui/Application.h>
#include <zelui/SupplierInterface.h>

#include "ChainView.h"
#include "DroppedFile.h"
#include "EffectMenu.h"
#include "LocalText.h"
#include "MainMenu.h"
#include "NoticeBar.h"
#include "PluginManagerWindow.h"
#include "RenderDialog.h"
#include "RenderJob.h"
#include "SoundPanel.h"
#include "TransportBar.h"
#include "WindowSettings.h"
#include "WindowTheme.h"

namespace tessaly {

using zelui::qt::ToQString;

namespace {

constexpr QSize kSize(760, 480);
constexpr int kMargin = 12;
/// Of silence behind a rendered sound, so that what effects let ring is in it.
constexpr int kTailSeconds = 2;
/// In milliseconds: how often it is looked whether the dialogs that were cancelled are gone.
constexpr int kLookEvery = 20;

/// Whether there is a dialog, which is then asked to go.
bool CancelDialog() {
    QWidget* const widget = QApplication::activeModalWidget();
    if (widget == nullptr) return false;
    if (zelui::Application::CancelActiveDialog()) return true;
    if (QDialog* const dialog = qobject_cast<QDialog*>(widget))
        dialog->reject();
    else
        widget->close();
    return true;
}

QString DescribeLostRun(const RunMarker::LostRun& run) {
    if (run.sessionPath.empty()) {
        return LocalText(
            "$$$/tessaly/LostUnsavedRun=Tessaly did not come to its end last time. The session had never been saved "
            "and is lost.");
    }
    const QFileInfo file(QString::fromStdString(run.sessionPath));
    if (!file.exists()) {
        return LocalText(
            "$$$/tessaly/LostRunWithoutFile=Tessaly did not come to its end last time. The file of its session, @0, "
            "is not there any more.",
            file.filePath());
    }
    return LocalText(
        "$$$/tessaly/LostRun=Tessaly did not come to its end last time. \"@0\" is as it was saved at @1; later changes "
        "are lost. Find it under File, Open Recent.",
        file.fileName(), QLocale().toString(file.lastModified(), QLocale::ShortFormat));
}

}  // namespace

MainWindow::MainWindow(CommandLine::Theme theme)
    : mPlayer(mSession), mEffectWindows(mSession, this), mFiles(mSession, *this) {
    setObjectName(QStringLiteral("MainWindow"));
    WindowTheme::Choose(theme == CommandLine::kSystem ? WindowSettings::GetTheme() : theme);
    BuildContent();
    const MainMenu menu(*this);
    Connect();
    resize(kSize);
    restoreGeometry(WindowSettings::GetGeometry());
    ShowTitle();
    ShowChainButtons();
}

MainWindow::~MainWindow() {
    // The stack forgets its steps when it goes, and would tell a window that is half gone.
    disconnect(&mSession.GetUndoStack(), nullptr, this, nullptr);
    mEffectWindows.CloseAll();
    mPlayer.Stop();
    // The session goes before the widgets do, which listen to it.
    delete takeCentralWidget();
}

void MainWindow::TellOfLostRuns(const std::vector<RunMarker::LostRun>& runs) {
    for (const RunMarker::LostRun& run : runs) {
        // Nothing was lost with it.
        if (run.sessionPath.empty() && !run.wasModified) continue;
        mNotice->Tell(DescribeLostRun(run));
    }
}

// What it is made of

void MainWindow::BuildContent() {
    QWidget* const content = new QWidget;
    QVBoxLayout* const layout = new QVBoxLayout(content);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kMargin);
    mNotice = new NoticeBar;
    mTransport = new TransportBar(mSession, mPlayer);
    layout->addWidget(mNotice);
    layout->addWidget(MakeSoundPanel());
    layout->addWidget(mTransport);
    layout->addWidget(MakeChainPanel(), 1);
    setCentralWidget(content);
    setAcceptDrops(true);
    mEffectMenu = new EffectMenu(this);
}

QWidget* MainWindow::MakeSoundPanel() {
    SoundPanel* const panel = new SoundPanel(mSession);
    // What is dropped may be a session as well.
    panel->GetSoundSignal().connect(
        [this](const std::string& path) { path.empty() ? mFiles.OpenSound(path) : mFiles.OpenAny(path); });
    panel->GetSideChainSignal().connect([this](const std::string& path) { mFiles.OpenSideChain(path); });
    panel->GetSideChainRemovedSignal().connect([this] { mFiles.Try([this] { mFiles.RemoveSideChain(); }); });
    return panel;
}

QWidget* MainWindow::MakeChainPanel() {
    QWidget* const panel = new QWidget;
    QHBoxLayout* const layout = new QHBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    mChainView = new ChainView(mSession);
    layout->addWidget(mChainView, 1);
    QWidget* const buttons = new QWidget;
    QVBoxLayout* const column = new QVBoxLayout(buttons);
    column->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const char* name, const QString& text, bool needsPlugin, const std::function<void()>& run) {
        AddChainButton(*buttons, name, text, needsPlugin, run);
    };
    QPushButton* const addEffect = new QPushButton(LocalText("$$$/tessaly/Chain/Add=Add Effect..."));
    addEffect->setObjectName(QStringLiteral("AddEffectButton"));
    connect(addEffect, &QPushButton::clicked, this, [this] { AddEffect(); });
    mAddButton = addEffect;
    column->addWidget(addEffect);
    column->addSpacing(kMargin);
    add("EditorButton", LocalText("$$$/tessaly/Chain/Editor=Editor"), true, [this] { OpenEditor(kOwnEditor); });
    add("ParametersButton", LocalText("$$$/tessaly/Chain/Parameters=Parameters"), true,
        [this] { OpenEditor(kGenericEditor); });
    add("ChannelsButton", LocalText("$$$/tessaly/Chain/Channels=Channels"), true,
        [this] { OpenEditor(kChannelMapEditor); });
    column->addSpacing(kMargin);
    add("UpButton", LocalText("$$$/tessaly/Chain/Up=Move Up"), false, [this] { mChainView->MoveCurrent(-1); });
    add("DownButton", LocalText("$$$/tessaly/Chain/Down=Move Down"), false, [this] { mChainView->MoveCurrent(1); });
    add("RemoveButton", LocalText("$$$/tessaly/Chain/Remove=Remove"), false, [this] { mChainView->RemoveCurrent(); });
    column->addStretch(1);
    layout->addWidget(buttons);
    return panel;
}

void MainWindow::AddChainButton(QWidget& panel, const char* objectName, const QString& text, bool needsPlugin,
                                const std::function<void()>& run) {
    QPushButton* const button = new QPushButton(text);
    button->setObjectName(QLatin1String(objectName));
    connect(button, &QPushButton::clicked, this, run);
    panel.layout()->addWidget(button);
    (needsPlugin ? mPluginButtons : mEffectButtons).push_back(button);
}

void MainWindow::Connect() {
    mChainView->GetOpenSignal().connect([this] { OpenEditor(kOwnEditor); });
    mChainView->GetChosenSignal().connect(boost::bind(&MainWindow::ShowChainButtons, this));
    mEffectMenu->GetPickedSignal().connect(
        [this](const zelaudiofilterhost::AudioFilterDescriptor& descriptor) { AddEffect(descriptor); });
    mEffectMenu->GetScanSignal().connect([this] { Scan(); });
    const auto tell = [this](const zelcore::ustring& text) { mNotice->Tell(ToQString(text)); };
    mPlayer.GetTroubleSignal().connect(tell);
    mFiles.GetTroubleSignal().connect(tell);
    mFiles.GetBeforeSaveSignal().connect(boost::bind(&EffectWindows::KeepPlaces, &mEffectWindows));
    mSession.GetFormatChangedSignal().connect(boost::bind(&MainWindow::ShowTitle, this));
    mSession.GetDetailsChangedSignal().connect(boost::bind(&MainWindow::ShowTitle, this));
    connect(&mSession.GetUndoStack(), &QUndoStack::cleanChanged, this, [this] { ShowTitle(); });
}

// What it shows

void MainWindow::ShowTitle() {
    const std::string& path = mSession.GetPath();
    const QString name = path.empty() ? LocalText("$$$/tessaly/Files/Untitled=Untitled") : FileNameText(path);
    const bool modified = mSession.IsMarkedChanged();
    setWindowTitle(TitleText(name) + QStringLiteral("[*] \u2013 ") + LocalText("$$$/tessaly/Name=Tessaly"));
    setWindowModified(modified);
    mMarker.Note(path, modified);
}

void MainWindow::ShowChainButtons() {
    const int index = mChainView->GetCurrentIndex();
    const bool chosen = index >= 0;
    for (QWidget* const button : mEffectButtons) button->setEnabled(chosen);
    const bool live = chosen && !mSession.GetEffects()[static_cast<std::size_t>(index)]->IsMissing();
    for (QWidget* const button : mPluginButtons) button->setEnabled(live);
}

// What the menus and buttons do

void MainWindow::Save() { mFiles.Save(); }

void MainWindow::SaveAs() { mFiles.SaveAs({}); }

void MainWindow::AddEffect() { mEffectMenu->PopUp(*mAddButton); }

void MainWindow::AddEffect(const zelaudiofilterhost::AudioFilterDescriptor& descriptor) {
    mFiles.Try([&] {
        const int index = mChainView->GetCurrentIndex() < 0 ? static_cast<int>(mSession.GetEffects().size())
                                                            : mChainView->GetCurrentIndex() + 1;
        mSession.Insert(static_cast<std::size_t>(index), descriptor);
        mChainView->SetCurrentIndex(index);
        mChainView->setFocus();
    });
}

void MainWindow::OpenEditor(EditorKind kind) {
    const int index = mChainView->GetCurrentIndex();
    if (index < 0) return;
    mFiles.Try([&] { mEffectWindows.Show(mSession.GetEffects()[static_cast<std::size_t>(index)], kind); });
}

void MainWindow::OpenManager() {
    mFiles.Try([this] { PluginManagerWindow::Run(zelui::qt::GetWindowHandle(this)); });
}

void MainWindow::Scan() {
    mFiles.Try([this] {
        zelaudiofilterhostui::AudioPluginScan scan(zelui::drawbot::SupplierInterface::GetDefault());
        scan.ScanForPlugins(zelui::qt::GetWindowHandle(this), false, true);
    });
}

void MainWindow::Render(const std::string& path) {
    QString chosen = QString::fromStdString(path);
    if (path.empty()) {
        const QString suggestion = QFileInfo(QString::fromStdString(mSession.GetSoundPath())).completeBaseName() +
                                   LocalText("$$$/tessaly/Render/Suffix= (rendered)");
        chosen = mFiles.ChooseNewFile(LocalText("$$$/tessaly/Render/Title=Render"), SessionFiles::GetRenderFilter(),
                                      QStringLiteral(".wav"), suggestion);
    }
    if (chosen.isEmpty()) return;
    mPlayer.Stop();
    mFiles.Try([&] {
        RenderJob job(mSession, chosen.toStdString(),
                      static_cast<std::int64_t>(kTailSeconds) * mSession.GetSampleRate());
        WaitForRender(job, chosen.toStdString());
    });
}

void MainWindow::WaitForRender(RenderJob& job, const std::string& path) {
    RenderDialog(job, FileNameText(path), this).Wait();
    if (job.GetState() == RenderJob::kFailed) throw std::runtime_error(job.GetError());
    if (job.GetState() == RenderJob::kDone)
        mNotice->Tell(LocalText("$$$/tessaly/Render/Done=Rendered to @0.",
                                QDir::toNativeSeparators(QString::fromStdString(path))));
}

void MainWindow::SetTheme(CommandLine::Theme theme) {
    WindowSettings::SetTheme(theme);
    WindowTheme::Choose(theme);
}

void MainWindow::TogglePlay() { mTransport->TogglePlay(); }

void MainWindow::Rewind() { mTransport->Rewind(); }

void MainWindow::ToggleLoop() { mTransport->ToggleLoop(); }

void MainWindow::ShowAbout() {
    QMessageBox box(
        QMessageBox::NoIcon, LocalText("$$$/tessaly/AboutTitle=About Tessaly"),
        LocalText("$$$/tessaly/About=Tessaly @0\n\nPlays a sound through audio effect plug-ins, and renders "
                  "it.\nBuilt on the zelaudiofilterhostui library.",
                  QStringLiteral(TESSALY_VERSION)),
        QMessageBox::Ok, this);
    box.setObjectName(QStringLiteral("AboutBox"));
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void MainWindow::EndWithoutAsking() {
    mEndsWithoutAsking = true;
    // Whoever opened the dialog is still at work and uses the window: it closes once they have returned.
    if (CancelDialog()) {
        QTimer::singleShot(kLookEvery, this, [this] { EndWithoutAsking(); });
        return;
    }
    if (mSession.IsModified()) mMarker.Leave();
    close();
}

// Events

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!mEndsWithoutAsking && !mFiles.MayLoseChanges()) {
        event->ignore();
        return;
    }
    mPlayer.Stop();
    mEffectWindows.CloseAll();
    WindowSettings::SetGeometry(saveGeometry());
    event->accept();
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    // Only where no button or list has a use for it.
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier)
        TogglePlay();
    else
        QMainWindow::keyPressEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!GetDroppedFile(*event).empty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const std::string path = GetDroppedFile(*event);
    if (path.empty()) return;
    event->acceptProposedAction();
    // Whoever dragged it waits until this returns.
    QMetaObject::invokeMethod(
        this, [this, path] { mFiles.OpenAny(path); }, Qt::QueuedConnection);
}

}  // namespace tessaly
