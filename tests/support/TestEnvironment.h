// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

/// What holds for every test: an unexpected Qt warning fails it, a framework object that outlives
/// it fails it, and caches are written below a folder that goes with the program.
class TestEnvironment
{
public:
    /// Puts the watch in place; called once by the main program.
    static void install();
};

/// Expects exactly one Qt warning with this text during its life, and keeps it from failing the
/// test.
class ExpectedWarning
{
public:
    explicit ExpectedWarning(const QString& text);
    ~ExpectedWarning();
    ExpectedWarning(const ExpectedWarning&) = delete;
    ExpectedWarning& operator=(const ExpectedWarning&) = delete;

private:
    QString m_text;
};

/// Expects Qt warnings that begin with this text during its life, one at least, and keeps them from
/// failing the test: for what others warn of, who do not always do so as many times.
class ExpectedWarnings
{
public:
    explicit ExpectedWarnings(const QString& beginning);
    ~ExpectedWarnings();
    ExpectedWarnings(const ExpectedWarnings&) = delete;
    ExpectedWarnings& operator=(const ExpectedWarnings&) = delete;

private:
    QString m_beginning;
};

/// Takes objects that a test leaks on purpose out of the count: the test says how many and why.
class DeliberateLeak
{
public:
    static void allow(int objects);
};
