// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/ScopedCommaLocale.h"

#include <gtest/gtest.h>

#include "support/TestMedia.h"

#include <QProcess>

#include <clocale>

ScopedCommaLocale::ScopedCommaLocale(const QString& folder)
    : m_before(setlocale(LC_NUMERIC, nullptr))
{
    const std::string source = TestMedia::file(folder, "comma.source",
                                               "comment_char %\n"
                                               "escape_char /\n"
                                               "LC_NUMERIC\n"
                                               "decimal_point \",\"\n"
                                               "thousands_sep \".\"\n"
                                               "grouping 3;3\n"
                                               "END LC_NUMERIC\n");
    // localedef exits with 1 for the categories that are left out, and writes the locale.
    QProcess localedef;
    localedef.start("localedef", {"-c", "-i", QString::fromStdString(source), folder + "/comma"});
    EXPECT_TRUE(localedef.waitForFinished()) << localedef.errorString().toStdString();
    qputenv("LOCPATH", folder.toUtf8());
    EXPECT_NE(setlocale(LC_NUMERIC, "comma"), nullptr);
    EXPECT_STREQ(localeconv()->decimal_point, ",");
}

ScopedCommaLocale::~ScopedCommaLocale()
{
    setlocale(LC_NUMERIC, m_before.c_str());
    qunsetenv("LOCPATH");
}
