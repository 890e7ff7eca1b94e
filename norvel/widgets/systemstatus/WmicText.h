// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace norvel {

/// The processor in one socket, with the properties that `wmic` calls so.
struct WmicProcessor
{
    int maxClockSpeed = 0; ///< MHz
    QString name;
    int numberOfCores = 0;
    int numberOfLogicalProcessors = 0;
};

/// Prints tables as the Windows tool `wmic` does: a heading, a line for each object, and an empty
/// line. Columns are in the alphabetical order of their headings and padded with spaces to their
/// longest text and two more. Every line ends with "\r\r\n". Without objects there is no table.
class WmicText
{
public:
    /// As "wmic cpu get name, maxclockspeed, numberofcores, numberoflogicalprocessors" prints them.
    static QString processors(const QVector<WmicProcessor>& processors);
    /// As "wmic memorychip get capacity" prints a single memory module of this size in bytes; empty
    /// for 0.
    static QString memory(qint64 capacity);
    /// As "wmic path win32_VideoController get name" prints adapters of these names.
    static QString videoControllers(const QStringList& names);
};

} // namespace norvel
