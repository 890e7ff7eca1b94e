// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/ToolOutput.h>

#include <QStringList>
#include <QTextCodec>

#include <limits>

namespace norvel {

namespace {

constexpr qint64 bytesPerKilobyte = 1024;

/// Kilobytes in bytes; 0 for more than can be counted.
qint64 bytesOf(qint64 kilobytes)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max() / bytesPerKilobyte;
    return kilobytes > most || kilobytes < -most ? 0 : kilobytes * bytesPerKilobyte;
}

} // namespace

QString ToolOutput::decoded(const QByteArray& bytes)
{
    return QTextCodec::codecForUtfText(bytes, QTextCodec::codecForLocale())->toUnicode(bytes);
}

qint64 ToolOutput::installedMemory(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('='));
    return parts.size() < 2 ? 0 : parts.last().trimmed().toLongLong();
}

double ToolOutput::cpuLoad(const QString& text)
{
    const QStringList lines = text.trimmed().split(QLatin1Char('\n'));
    if (lines.size() < 2)
        return 0.0;
    bool isNumber = false;
    const double load = lines[1].trimmed().toDouble(&isNumber);
    return isNumber ? load : 0.0;
}

qint64 ToolOutput::processMemory(const QString& text)
{
    const QStringList fields = text.split(QLatin1String("\",\""));
    if (fields.size() < 5)
        return 0;
    QStringList parts = fields[4].split(QLatin1Char(' '));
    return parts.size() < 2 ? 0 : bytesOf(parts[0].remove(QLatin1Char(',')).toLongLong());
}

} // namespace norvel
