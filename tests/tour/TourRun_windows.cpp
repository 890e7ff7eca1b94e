// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourRun.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QTest>

namespace {

constexpr int patienceMs = 5000;

/// Waits until no process works in the folder any more: a moment longer than one runs, the system
/// keeps its working folder from being removed.
void waitUntilFree(const QString& folder)
{
    const QString other = folder + "-free";
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return QDir().rename(folder, other) && QDir().rename(other, folder); }, patienceMs))
        << folder.toStdString();
}

} // namespace

// Arguments are UTF-16 here, whatever the locale is.
TourRun TourRun::inFolder(const QString& folder, const QStringList& arguments,
                          const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    const TourRun run = ofProcess(process, NORVEL_TOUR_PROGRAM, arguments);
    waitUntilFree(folder);
    return run;
}
