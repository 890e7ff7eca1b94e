// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/ScopedCommaLocale.h"

#include <gtest/gtest.h>

#include <clocale>

// The system brings such a locale: nothing is made in the folder.
ScopedCommaLocale::ScopedCommaLocale(const QString&)
    : m_before(setlocale(LC_NUMERIC, nullptr))
{
    EXPECT_NE(setlocale(LC_NUMERIC, "German_Germany"), nullptr);
    EXPECT_STREQ(localeconv()->decimal_point, ",");
}

ScopedCommaLocale::~ScopedCommaLocale()
{
    setlocale(LC_NUMERIC, m_before.c_str());
}
