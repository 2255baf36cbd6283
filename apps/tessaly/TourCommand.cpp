#include "TourCommand.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPixmap>
#include <QProgressBar>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <stdexcept>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelui/Application.h>
#include <zelui/SupplierInterface.h>

#include "CatalogueReport.h"
#include "ChainView.h"
#include "EditorWindow.h"
#include "EffectMenu.h"
#include "LocalText.h"
#include "MainWindow.h"
#include "OfferedEffects.h"
#include "OutputGuard.h"
#include "PluginManagerWindow.h"
#include "TourSound.h"
#include "WindowTheme.h"

namespace tessaly {

namespace {

constexpr std::size_t kEffects = 3;
constexpr int kWaitEvery = 50;
/// In milliseconds: for windows to be drawn, and how long is listened.
constexpr int kSettle = 400;
constexpr int kListen = 2000;
constexpr int kLongestListen = 8000;
/// Between windows.
constexpr int kGap = 24;
/// Effects that a person would begin with, where they are there.
const char* const kFavourites[] = {"ZamComp", "ZamEQ2", "ZamDelay", "3 Band EQ", "Ping Pong Pan"};

/// The main loop goes on meanwhile.
void Wait(int milliseconds) {
    QElapsedTimer time;
    for (time.start(); time.elapsed() < milliseconds;) QApplication::processEvents(QEventLoop::AllEvents, kWaitEvery);
}

bool IsHalfDone(const QWidget& dialog) {
    const QProgressBar* const bar = dialog.findChild<QProgressBar*>();
    return bar != nullptr && bar->value() * 2 >= bar->maximum();
}

/// Those of the favourites that are there, then others with editors of their own.
std::vector<OfferedEffect> ChooseEffects() {
    std::vector<OfferedEffect> offered = CollectOfferedEffects();
    std::erase_if(offered, [](const OfferedEffect& effect) { return !effect.descriptor->GetComponent().hasEditor; });
    const auto rank = [](const OfferedEffect& effect) {
        return std::find(std::begin(kFavourites), std::end(kFavourites), effect.name) - std::begin(kFavourites);
    };
    std::stable_sort(offered.begin(), offered.end(),
                     [&rank](const OfferedEffect& a, const OfferedEffect& b) { return rank(a) < rank(b); });
    std::vector<OfferedEffect> chosen;
    for (const OfferedEffect& effect : offered) {
        const bool isNew = std::none_of(chosen.begin(), chosen.end(),
                                        [&effect](const OfferedEffect& other) { return other.name == effect.name; });
        if (isNew && chosen.size() < kEffects) chosen.push_back(effect);
    }
    return chosen;
}

}  // namespace

TourCommand::TourCommand(const CommandLine& line)
    : mLine(line), mFolder(QString::fromStdString(line.out)), mPictures(0) {}

int TourCommand::Run() {
    if (!zelui::Application::HasDisplay()) {
        std::cerr << "tessaly: there is no display for the tour\n";
        return kExitFailed;
    }
    if (!mFolder.mkpath(QStringLiteral("."))) throw std::runtime_error("the folder cannot be made: " + mLine.out);
    {
        const OutputGuard guard;
        WindowTheme::Choose(mLine.theme);
        Scan();
        ShowManager();
        MainWindow window(mLine.theme);
        window.GetFiles().SetUnattended(true);
        window.move(0, 0);
        window.show();
        OpenSounds(window);
        AddEffects(window);
        ShowEffectMenu(window);
        ShowEditors(window);
        Play(window);
        RenderAndSave(window);
        ShowInTheDark(window);
    }
    std::cout << mPictures << " pictures, rendered.wav and tour.tessaly are in " << mLine.out << '\n';
    return kExitDone;
}

// Its stations

void TourCommand::Scan() {
    Say("scanning");
    zelaudiofilterhostui::AudioPluginScan scan(zelui::drawbot::SupplierInterface::GetDefault());
    KeepModal([&scan] { scan.ScanForPlugins(nullptr, true, true); }, IsHalfDone, QStringLiteral("scan"));
    Say(CatalogueReport().GetSummary());
}

void TourCommand::ShowManager() {
    Say("the plug-in manager");
    KeepModal([] { PluginManagerWindow::Run(nullptr); },
              [](const QWidget& dialog) { return dialog.findChild<QWidget*>(QStringLiteral("PluginList")) != nullptr; },
              QStringLiteral("plug-in-manager"));
}

void TourCommand::OpenSounds(MainWindow& window) {
    TourSound::WriteChords(GetPath(QStringLiteral("chords.wav")));
    TourSound::WriteBeat(GetPath(QStringLiteral("beat.wav")));
    window.GetFiles().OpenSound(GetPath(QStringLiteral("chords.wav")));
    window.GetFiles().OpenSideChain(GetPath(QStringLiteral("beat.wav")));
}

void TourCommand::AddEffects(MainWindow& window) {
    for (const OfferedEffect& effect : ChooseEffects()) window.AddEffect(*effect.descriptor);
    if (window.GetSession().GetEffects().empty())
        throw std::runtime_error("no plug-in with an editor of its own was found; install some and try again");
    Wait(kSettle);
    Keep(window.grab(), QStringLiteral("window"));
}

void TourCommand::ShowEffectMenu(MainWindow& window) {
    window.AddEffect();
    QWidget* const menu = window.findChild<QWidget*>(QStringLiteral("EffectMenu"));
    menu->findChild<QLineEdit*>()->setText(QStringLiteral("comp"));
    Wait(kSettle);
    Keep(menu->grab(), QStringLiteral("effect-menu"));
    menu->hide();
}

void TourCommand::ShowEditors(MainWindow& window) {
    const int count = static_cast<int>(window.GetSession().GetEffects().size());
    for (int i = 0; i < count; ++i) ShowEditor(window, i, kOwnEditor, QStringLiteral("editor-%1").arg(i + 1));
    ShowEditor(window, 0, kGenericEditor, QStringLiteral("parameters"));
    ShowEditor(window, 0, kChannelMapEditor, QStringLiteral("channel-map"));
}

void TourCommand::ShowEditor(MainWindow& window, int index, EditorKind kind, const QString& name) {
    window.GetChainView().SetCurrentIndex(index);
    const ChainEffectPtr effect = window.GetSession().GetEffects()[static_cast<std::size_t>(index)];
    // Beside the main window, whose pixels would be taken for the editor's until it has drawn its own.
    effect->GetWindowPlaces()[kind] = zelcore::geom::RectT<long>{window.frameGeometry().right() + kGap, kGap, 0, 0};
    window.OpenEditor(kind);
    EditorWindow* const editor = window.GetEffectWindows().Find(effect, kind);
    if (editor == nullptr) throw std::runtime_error("an editor did not open");
    Say("an editor of " + zelui::qt::ToQString(effect->GetName()).toStdString());
    editor->raise();
    Keep(editor->TakePicture(), name);
    editor->close();
}

void TourCommand::Play(MainWindow& window) {
    Say("playing");
    Player& player = window.GetPlayer();
    player.Play();
    const auto played = [&player] {
        return player.GetPosition() * 1000 >= std::int64_t(kListen) * player.GetSampleRate();
    };
    QElapsedTimer time;
    // Some devices take a while before they begin.
    for (time.start(); player.IsPlaying() && !played() && time.elapsed() < kLongestListen;) Wait(kWaitEvery);
    Wait(kSettle);
    Keep(window.grab(), QStringLiteral("playing"));
    const Player::Counts counts = player.GetCounts();
    if (player.IsPlaying()) {
        Say(std::to_string(counts.blocks) + " blocks played, " + std::to_string(counts.lost) + " lost");
    } else {
        Say("there is no audio device: nothing was heard");
    }
    player.Stop();
}

void TourCommand::RenderAndSave(MainWindow& window) {
    Say("rendering");
    window.Render(GetPath(QStringLiteral("rendered.wav")));
    if (!mFolder.exists(QStringLiteral("rendered.wav"))) throw std::runtime_error("the render did not succeed");
    if (!window.GetFiles().SaveAs(GetPath(QStringLiteral("tour.tessaly"))))
        throw std::runtime_error("the session could not be saved");
}

void TourCommand::ShowInTheDark(MainWindow& window) {
    WindowTheme::Choose(CommandLine::kDark);
    Wait(kSettle);
    Keep(window.grab(), QStringLiteral("window-dark"));
}

// What it keeps

std::string TourCommand::GetPath(const QString& fileName) const {
    return mFolder.absoluteFilePath(fileName).toStdString();
}

void TourCommand::Keep(const QPixmap& picture, const QString& name) {
    const QString file = QStringLiteral("%1-%2.png").arg(++mPictures, 2, 10, QLatin1Char('0')).arg(name);
    if (!picture.save(mFolder.filePath(file), "PNG"))
        throw std::runtime_error("the picture could not be written: " + GetPath(file));
}

void TourCommand::KeepModal(const std::function<void()>& modal, const std::function<bool(const QWidget&)>& isReady,
                            const QString& name) {
    QTimer timer;
    bool isKept = false;
    bool isSeen = false;
    std::exception_ptr failure;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || isKept || !isReady(*dialog)) return;
        // One more turn, for it to be drawn in full.
        if (!std::exchange(isSeen, true)) return;
        isKept = true;
        try {
            Keep(dialog->grab(), name);
        } catch (...) {
            // Not through the dialog's loop, which is not made for it.
            failure = std::current_exception();
        }
        // A scan goes on to its end, other dialogs wait for somebody.
        if (failure || dialog->findChild<QProgressBar*>() == nullptr) zelui::Application::CancelActiveDialog();
    });
    timer.start(kWaitEvery);
    modal();
    if (failure) std::rethrow_exception(failure);
}

void TourCommand::Say(const std::string& text) const { std::cerr << "tessaly: " << text << '\n'; }

}  // namespace tessaly
