#pragma once

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QProcess>

namespace zeltests {

struct Outcome {
    int exitCode;
    QString printed;
    QString complained;
};

/// Runs this program in one of its modes, which must end well.
inline Outcome RunMode(const QString& mode, const QProcessEnvironment& environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {mode});
    EXPECT_TRUE(process.waitForFinished(60000)) << mode.toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << mode.toStdString();
    // A line that is printed ends as the system's lines do.
    const QString printed = QString::fromUtf8(process.readAllStandardOutput()).replace("\r\n", "\n");
    const Outcome outcome{process.exitCode(), printed, process.readAllStandardError()};
    EXPECT_EQ(outcome.exitCode, 0) << mode.toStdString() << ": line " << outcome.exitCode << "\n"
                                   << outcome.complained.toStdString();
    return outcome;
}

inline QProcessEnvironment Offscreen() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    return environment;
}

inline QProcessEnvironment NothingSet() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) environment.remove(name);
    return environment;
}

}  // namespace zeltests
