#include "SessionFiles.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <stdexcept>

#include "AudioFileFormat.h"
#include "LocalText.h"
#include "Session.h"
#include "WindowSettings.h"

namespace tessaly {

namespace {

QString GetSessionFilter() {
    return LocalText("$$$/tessaly/Files/Sessions=Tessaly sessions") + QStringLiteral(" (*.tessaly)");
}

/// `patterns`: "*.wav *.flac"
QString MakeSoundFilter(const QString& patterns) {
    return LocalText("$$$/tessaly/Files/Sounds=Sound files") + QStringLiteral(" (") + patterns + QLatin1Char(')');
}

QString GetSoundFilter() {
    return MakeSoundFilter(QStringLiteral("*.wav *.flac *.aif *.aiff *.ogg *.opus *.mp3 *.au *.caf *.w64 *.rf64")) +
           QStringLiteral(";;") + LocalText("$$$/tessaly/Files/All=All files") + QStringLiteral(" (*)");
}

}  // namespace

const char* const SessionFiles::kSuffix = ".tessaly";

SessionFiles::SessionFiles(Session& session, QWidget& window) : mSession(session), mWindow(window) {}

bool SessionFiles::New() {
    if (!MayLoseChanges()) return false;
    mSession.Clear();
    return true;
}

bool SessionFiles::OpenSession(const std::string& path) {
    if (!MayLoseChanges()) return false;
    const QString chosen = path.empty()
                               ? ChooseFile(LocalText("$$$/tessaly/Files/OpenSession=Open Session"), GetSessionFilter())
                               : QString::fromStdString(path);
    if (chosen.isEmpty()) return false;
    const bool isLoaded = Try([&] {
        for (const zelcore::ustring& trouble : mSession.Load(chosen.toStdString())) mTrouble(trouble);
    });
    if (!isLoaded) return false;
    NoteRecent();
    return true;
}

bool SessionFiles::Save() { return mSession.GetPath().empty() ? SaveAs(std::string()) : SaveAs(mSession.GetPath()); }

bool SessionFiles::SaveAs(const std::string& path) {
    const QString chosen = path.empty() ? ChooseNewSession() : QString::fromStdString(path);
    if (chosen.isEmpty()) return false;
    mBeforeSave();
    if (!Try([&] { mSession.Save(chosen.toStdString()); })) return false;
    NoteRecent();
    return true;
}

void SessionFiles::NoteRecent() const {
    // The full path, which is the same from every folder.
    WindowSettings::AddRecentSession(QString::fromStdString(mSession.GetPath()));
}

QString SessionFiles::ChooseNewSession() const {
    const QString suffix = QLatin1String(kSuffix);
    const QString chosen = ChooseNewFile(LocalText("$$$/tessaly/Files/SaveSession=Save Session"), GetSessionFilter(),
                                         suffix, LocalText("$$$/tessaly/Files/Untitled=Untitled"));
    if (chosen.isEmpty() || chosen.endsWith(suffix, Qt::CaseInsensitive)) return chosen;
    // The dialog takes what is behind a dot in a name for its ending, and has asked about a file of that name alone.
    return MayReplace(chosen + suffix) ? chosen + suffix : QString();
}

bool SessionFiles::MayReplace(const QString& path) const {
    if (!QFileInfo::exists(path)) return true;
    QMessageBox question(
        QMessageBox::Warning, LocalText("$$$/tessaly/Name=Tessaly"),
        LocalText("$$$/tessaly/Files/Exists=There is a file \"@0\" already.", QFileInfo(path).fileName()),
        QMessageBox::NoButton, &mWindow);
    question.setObjectName(QStringLiteral("Replace"));
    question.setTextFormat(Qt::PlainText);
    QPushButton* const replace =
        question.addButton(LocalText("$$$/tessaly/Files/Replace=Replace"), QMessageBox::DestructiveRole);
    question.setDefaultButton(question.addButton(LocalText("$$$/tessaly/Cancel=Cancel"), QMessageBox::RejectRole));
    question.exec();
    return question.clickedButton() == replace;
}

bool SessionFiles::ChangeSound(const std::string& path, const QString& title,
                               void (Session::*change)(const std::string&)) {
    const QString chosen = path.empty() ? ChooseFile(title, GetSoundFilter()) : QString::fromStdString(path);
    if (chosen.isEmpty()) return false;
    return Try([&] { (mSession.*change)(QFileInfo(chosen).absoluteFilePath().toStdString()); });
}

bool SessionFiles::OpenSound(const std::string& path) {
    const std::string sideChain = mSession.GetSideChainPath();
    if (!ChangeSound(path, LocalText("$$$/tessaly/Files/OpenSound=Open Sound"), &Session::SetSound)) return false;
    if (mSession.GetSideChainPath().empty() && !sideChain.empty()) {
        mTrouble(zelui::qt::FromQString(
            LocalText("$$$/tessaly/Files/SideChainLetGo=The side-chain @0 does not fit this sound and was removed.",
                      FileNameText(sideChain))));
    }
    return true;
}

bool SessionFiles::OpenSideChain(const std::string& path) {
    return ChangeSound(path, LocalText("$$$/tessaly/Files/OpenSideChain=Choose Side-Chain"), &Session::SetSideChain);
}

bool SessionFiles::RemoveSideChain() {
    mSession.SetSideChain(std::string());
    return true;
}

bool SessionFiles::OpenAny(const std::string& path) {
    const bool isSession = QString::fromStdString(path).endsWith(QLatin1String(kSuffix), Qt::CaseInsensitive);
    return isSession ? OpenSession(path) : OpenSound(path);
}

bool SessionFiles::MayLoseChanges() {
    if (!mSession.IsModified()) return true;
    const QString name = mSession.GetPath().empty() ? LocalText("$$$/tessaly/Files/Untitled=Untitled")
                                                    : FileNameText(mSession.GetPath());
    QMessageBox question(
        QMessageBox::Warning, LocalText("$$$/tessaly/Name=Tessaly"),
        LocalText("$$$/tessaly/Files/Changed=The session \"@0\" has changes that are not saved.", name),
        QMessageBox::NoButton, &mWindow);
    question.setObjectName(QStringLiteral("UnsavedChanges"));
    question.setTextFormat(Qt::PlainText);
    QPushButton* const save = question.addButton(LocalText("$$$/tessaly/Files/Save=Save"), QMessageBox::AcceptRole);
    QPushButton* const discard =
        question.addButton(LocalText("$$$/tessaly/Files/Discard=Discard Changes"), QMessageBox::DestructiveRole);
    question.addButton(LocalText("$$$/tessaly/Cancel=Cancel"), QMessageBox::RejectRole);
    question.setDefaultButton(save);
    question.exec();
    if (question.clickedButton() == save) return Save();
    return question.clickedButton() == discard;
}

QString SessionFiles::GetRenderFilter() {
    QString patterns = QString::fromStdString(AudioFileFormat::ListExtensions());
    return MakeSoundFilter(QLatin1Char('*') + patterns.replace(QStringLiteral(", "), QStringLiteral(" *")));
}

QString SessionFiles::ChooseFile(const QString& title, const QString& filter) const {
    const QString chosen = QFileDialog::getOpenFileName(&mWindow, title, WindowSettings::GetFolder(), filter);
    if (!chosen.isEmpty()) WindowSettings::SetFolder(QFileInfo(chosen).absolutePath());
    return chosen;
}

QString SessionFiles::ChooseNewFile(const QString& title, const QString& filter, const QString& suffix,
                                    const QString& suggestion) const {
    QFileDialog dialog(&mWindow, title, WindowSettings::GetFolder(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(suffix);
    // With its ending, as a dot in the name would be taken for one.
    dialog.selectFile(suggestion + suffix);
    if (dialog.exec() != QDialog::Accepted) return QString();
    const QString chosen = dialog.selectedFiles().value(0);
    WindowSettings::SetFolder(QFileInfo(chosen).absolutePath());
    return chosen;
}

bool SessionFiles::Try(const std::function<void()>& action) const {
    try {
        action();
        return true;
    } catch (const std::exception& error) {
        ShowError(ErrorText(error));
        return false;
    }
}

void SessionFiles::ShowError(const QString& text) const {
    if (mIsUnattended) throw std::runtime_error(text.toStdString());
    QMessageBox box(QMessageBox::Warning, LocalText("$$$/tessaly/Name=Tessaly"), text, QMessageBox::Ok, &mWindow);
    box.setObjectName(QStringLiteral("Error"));
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

}  // namespace tessaly
