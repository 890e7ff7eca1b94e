// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/support/ProgramRun.h"

#include "support/OutputLines.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <algorithm>

namespace {

/// What a machine without a sound server, a login or a window manager is told about.
bool isAboutTheMachine(const QString& line)
{
    return line == "PulseAudioService: pa_context_connect() failed" ||
           line == "This plugin does not support propagateSizeHints()" ||
           line.startsWith("QStandardPaths: XDG_RUNTIME_DIR");
}

} // namespace

Output run(const QString& program, const QStringList& arguments, const QString& scaleFactor)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.remove("QT_SCALE_FACTOR");
    environment.remove("RVKP_TRACE");
    if (!scaleFactor.isNull())
        environment.insert("QT_SCALE_FACTOR", scaleFactor);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments, QIODevice::ReadOnly);
    EXPECT_TRUE(process.waitForFinished(120000)) << process.errorString().toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    QStringList errors = outputLines(process.readAllStandardError());
    errors.erase(std::remove_if(errors.begin(), errors.end(), isAboutTheMachine), errors.end());
    return {process.exitCode(), outputLines(process.readAllStandardOutput()), errors};
}
