// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/WmicText.h>

#include <algorithm>

namespace norvel {

namespace {

/// A table with the heading as its first line.
QString table(const QVector<QStringList>& lines)
{
    constexpr int gap = 2;
    if (lines.size() < 2)
        return {};
    QVector<int> widths(lines.first().size());
    for (const QStringList& line : lines) {
        for (int column = 0; column < line.size(); ++column)
            widths[column] = std::max(widths[column], line[column].size() + gap);
    }
    const QString lineEnd = QStringLiteral("\r\r\n");
    QString text;
    for (const QStringList& line : lines) {
        for (int column = 0; column < line.size(); ++column)
            text += line[column].leftJustified(widths[column]);
        text += lineEnd;
    }
    return text + lineEnd;
}

} // namespace

QString WmicText::processors(const QVector<WmicProcessor>& processors)
{
    QVector<QStringList> lines{{QStringLiteral("MaxClockSpeed"), QStringLiteral("Name"),
                                QStringLiteral("NumberOfCores"),
                                QStringLiteral("NumberOfLogicalProcessors")}};
    for (const WmicProcessor& processor : processors) {
        lines.append({QString::number(processor.maxClockSpeed), processor.name,
                      QString::number(processor.numberOfCores),
                      QString::number(processor.numberOfLogicalProcessors)});
    }
    return table(lines);
}

QString WmicText::memory(qint64 capacity)
{
    QVector<QStringList> lines{{QStringLiteral("Capacity")}};
    if (capacity > 0)
        lines.append({QString::number(capacity)});
    return table(lines);
}

QString WmicText::videoControllers(const QStringList& names)
{
    QVector<QStringList> lines{{QStringLiteral("Name")}};
    for (const QString& name : names)
        lines.append({name});
    return table(lines);
}

} // namespace norvel
