// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

/// What a program did that was run to its end.
struct Output
{
    int exitCode = -1;
    QStringList lines;  ///< of its standard output
    QStringList errors; ///< of its standard error, but for what is the machine's own business
};

/// Runs a program without a screen and, with a `scaleFactor`, with as many device pixels per px.
/// One that does not end, or crashes, is a test failure.
Output run(const QString& program, const QStringList& arguments, const QString& scaleFactor = {});
