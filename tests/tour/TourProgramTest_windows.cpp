// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// What goes by the folders of the user on Windows.

#include "tour/TourProgramFixture.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QStandardPaths>

namespace {

/// All that stands in the user's cache, but what lies there for a moment.
QStringList cached()
{
    const QString temporary = QDir::cleanPath(QDir::tempPath());
    QStringList paths;
    QDirIterator all(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation),
                     QDir::NoDotAndDotDot | QDir::AllEntries | QDir::Hidden,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString path = all.next();
        if (!path.startsWith(temporary))
            paths += path;
    }
    paths.sort();
    return paths;
}

} // namespace

TEST_F(TourProgramTest, LeavesNothingInTheCacheOfTheUser)
{
    const QStringList before = cached();
    expectAgreement(TourRun::ofProgram({}));
    EXPECT_EQ(cached(), before);
}
