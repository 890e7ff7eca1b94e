// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

namespace norvel {

/// Reads what the Windows tools `wmic` and `tasklist` print. What does not read as expected gives
/// 0.
class ToolOutput
{
public:
    /// Bytes as text: in the Unicode encoding that their byte-order mark tells, without one in that
    /// of the system. `wmic` answers in UTF-16 on some machines.
    static QString decoded(const QByteArray& bytes);

    /// The installed memory in bytes, from "wmic memorychip get capacity /value". Of several memory
    /// modules only the last one counts.
    static qint64 installedMemory(const QString& text);

    /// The load of the processors in percent, from "wmic cpu get loadpercentage": a header line
    /// with the number under it.
    static double cpuLoad(const QString& text);

    /// The memory of the one process that "tasklist" lists as CSV without a header, in bytes. It is
    /// the fifth field, in kilobytes, with a comma between the thousands: "12,345 K". Where the
    /// system's language writes another separator, there is no number to read.
    static qint64 processMemory(const QString& text);
};

} // namespace norvel
