#pragma once

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

    /// Where something new is to be written, as the user says; empty when they do not want to.
    QString ChooseNewFile(const QString& title, const QString& filter, const QString& suffix,
                          const QString& suggestion) const;
    void ShowError(const QString& text) const;

    /// What a session that was opened has to tell, one sentence at a time.
    TroubleSignal& GetTroubleSignal() { return mTrouble; }

private:
    QString ChooseFile(const QString& title, const QString& filter) const;
    bool ChangeSound(const std::string& path, const QString& title, void (Session::*change)(const std::string&));

    Session& mSession;
    QWidget& mWindow;
    TroubleSignal mTrouble;
};

}  // namespace tessaly
