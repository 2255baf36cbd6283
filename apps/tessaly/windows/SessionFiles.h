#pragma once

#include <functional>
#include <QString>
#include <string>

#include <zelcore/Signals.h>
#include <zelcore/ustring.h>

class QWidget;

namespace tessaly {

class Session;

/// What the user does with files: opens, saves, is asked about what would be lost, and told what went wrong. Paths are
/// UTF-8; an empty one lets the user choose. Everything returns whether it was done. Main thread.
class SessionFiles {
public:
    typedef boost::signal<void(const zelcore::ustring&)> TroubleSignal;
    typedef boost::signal<void()> Signal;

    static const char* const kSuffix;  ///< of session files: ".tessaly"

    /// Both outlive the object; `window` owns the dialogs.
    SessionFiles(Session& session, QWidget& window);

    bool New();
    bool OpenSession(const std::string& path);
    bool Save();
    bool SaveAs(const std::string& path);
    bool OpenSound(const std::string& path);
    bool OpenSideChain(const std::string& path);
    bool RemoveSideChain();
    /// Opens what it is: a session, or a sound.
    bool OpenAny(const std::string& path);

    /// False when there are unsaved changes that the user does not want to lose, or could not be saved.
    bool MayLoseChanges();

    /// Where something new is to be written, as the user says; empty when they do not want to. `suffix` has its dot,
    /// and goes behind `suggestion`; a name that the user gives another ending keeps that.
    QString ChooseNewFile(const QString& title, const QString& filter, const QString& suffix,
                          const QString& suggestion) const;
    /// What ChooseNewFile shows of the formats that sounds are rendered to.
    static QString GetRenderFilter();
    /// Does `action`; whether it threw nothing. What it throws is told.
    bool Try(const std::function<void()>& action) const;
    /// With nobody there to read them, errors are thrown as std::runtime_error instead of shown.
    void SetUnattended(bool unattended) { mIsUnattended = unattended; }

    /// What the user should know of what was opened, one sentence at a time.
    TroubleSignal& GetTroubleSignal() { return mTrouble; }
    /// Before the session is saved: what is to be kept with it goes into it now.
    Signal& GetBeforeSaveSignal() { return mBeforeSave; }

private:
    void ShowError(const QString& text) const;
    QString ChooseFile(const QString& title, const QString& filter) const;
    QString ChooseNewSession() const;
    bool MayReplace(const QString& path) const;
    void NoteRecent() const;
    bool ChangeSound(const std::string& path, const QString& title, void (Session::*change)(const std::string&));

    Session& mSession;
    QWidget& mWindow;
    bool mIsUnattended = false;
    TroubleSignal mTrouble;
    Signal mBeforeSave;
};

}  // namespace tessaly
