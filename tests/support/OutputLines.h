// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QStringList>

/// The lines that a program printed in UTF-8, without those that are empty. Programs end their
/// lines as the system does.
inline QStringList outputLines(const QByteArray& output)
{
    return QString::fromUtf8(output).remove('\r').split('\n', Qt::SkipEmptyParts);
}
