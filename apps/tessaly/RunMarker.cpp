#include "RunMarker.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSettings>

#include <zelcore/Dir.h>
#include <zelui/QtBridge.h>

namespace tessaly {

namespace {

/// In bytes; what is written has a path and a word.
constexpr qint64 kLargestMarker = 1 << 16;
const QString kSuffix = QStringLiteral(".run");
/// Not ".lock", which QSettings takes for itself.
const QString kLockSuffix = QStringLiteral(".owner");

QDir GetMarkerFolder() { return QDir(zelui::qt::ToQString(zelcore::filesupport::Dir::PrefDir().FullPath())); }

RunMarker::LostRun ReadMarker(const QString& path) {
    RunMarker::LostRun run;
    if (QFileInfo(path).size() > kLargestMarker) return run;
    const QSettings file(path, QSettings::IniFormat);
    run.sessionPath = file.value(QStringLiteral("session")).toString().toStdString();
    run.wasModified = file.value(QStringLiteral("modified")).toBool();
    return run;
}

}  // namespace

RunMarker::RunMarker() {
    const QString name = QStringLiteral("Tessaly-%1").arg(QCoreApplication::applicationPid());
    const QString path = GetMarkerFolder().filePath(name + kSuffix);
    mLock = std::make_unique<QLockFile>(path + kLockSuffix);
    // A run is as long as it is, never stale by the clock.
    mLock->setStaleLockTime(0);
    if (!mLock->tryLock()) return;
    mPath = path.toStdString();
    Note(std::string(), false);
}

RunMarker::~RunMarker() {
    if (!mPath.empty() && !mIsLeft) QFile::remove(QString::fromStdString(mPath));
}

void RunMarker::Note(const std::string& sessionPath, bool isModified) {
    if (mPath.empty()) return;
    QSettings file(QString::fromStdString(mPath), QSettings::IniFormat);
    file.setValue(QStringLiteral("session"), QString::fromStdString(sessionPath));
    file.setValue(QStringLiteral("modified"), isModified);
}

std::vector<RunMarker::LostRun> RunMarker::TakeLostRuns() {
    std::vector<LostRun> runs;
    const QDir folder = GetMarkerFolder();
    for (const QString& name : folder.entryList({QStringLiteral("Tessaly-*") + kSuffix}, QDir::Files)) {
        const QString path = folder.filePath(name);
        // Whoever runs holds the lock; that of a process that is gone can be had.
        QLockFile lock(path + kLockSuffix);
        lock.setStaleLockTime(0);
        if (!lock.tryLock()) continue;
        runs.push_back(ReadMarker(path));
        QFile::remove(path);
    }
    return runs;
}

}  // namespace tessaly
