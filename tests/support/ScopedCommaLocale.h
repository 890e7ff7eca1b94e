// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

class QString;

/// Makes the decimal point of the C library a comma while it lives, with a locale of its own in a
/// folder: the machine need not have one installed.
class ScopedCommaLocale
{
public:
    explicit ScopedCommaLocale(const QString& folder);
    ~ScopedCommaLocale();
    ScopedCommaLocale(const ScopedCommaLocale&) = delete;
    ScopedCommaLocale& operator=(const ScopedCommaLocale&) = delete;

private:
    std::string m_before;
};
