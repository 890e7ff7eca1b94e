// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// What goes by the environment of a process on POSIX systems.

#include "support/ScopedCommaLocale.h"
#include "tour/TourProgramFixture.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>

TEST_F(TourProgramTest, LeavesNothingInTheCacheOfTheUser)
{
    QProcessEnvironment environment = TourRun::environmentOfTest();
    environment.insert("XDG_CACHE_HOME", m_folder.path());
    expectAgreement(TourRun::ofProgram({}, environment));
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
              QStringList());
}

TEST_F(TourProgramTest, IsTheSameUnderALocaleWithDecimalCommas)
{
    const ScopedCommaLocale comma(m_folder.path());
    QProcessEnvironment environment = TourRun::environmentOfTest();
    environment.remove("LC_ALL");
    environment.insert("LANG", "C");
    environment.insert("LC_NUMERIC", "comma");
    // The environment is one in which programs of C write commas.
    QProcess printf;
    printf.setProcessEnvironment(environment);
    printf.start("/usr/bin/printf", {"%.1f", "0,5"});
    ASSERT_TRUE(printf.waitForFinished());
    ASSERT_EQ(printf.readAllStandardOutput(), "0,5");

    const TourRun run = TourRun::ofProgram({"--json", path("docs")}, environment);
    expectAgreement(run);
    EXPECT_EQ(document(path("docs"), 1).size(), 4);
}
