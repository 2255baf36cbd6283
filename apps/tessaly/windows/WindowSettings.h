#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "CommandLine.h"

namespace tessaly {

/// What the main window remembers between runs: a file in the preferences folder. What is missing or makes no sense is
/// as in a new one; what cannot be written is forgotten. Main thread.
class WindowSettings {
public:
    static constexpr int kMaxRecent = 8;

    static CommandLine::Theme GetTheme();
    static void SetTheme(CommandLine::Theme theme);
    /// As QWidget::saveGeometry gives it.
    static QByteArray GetGeometry();
    static void SetGeometry(const QByteArray& geometry);
    /// The folder that a file was last chosen in.
    static QString GetFolder();
    static void SetFolder(const QString& folder);
    /// Paths of sessions, the newest first.
    static QStringList GetRecentSessions();
    static void AddRecentSession(const QString& path);
};

}  // namespace tessaly
