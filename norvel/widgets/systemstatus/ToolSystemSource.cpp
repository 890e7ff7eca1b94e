// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/ToolSystemSource.h>

#include <norvel/widgets/systemstatus/ToolOutput.h>

#include <QCoreApplication>

namespace norvel {

ToolSystemSource::ToolSystemSource(const ToolRunner& runner)
    : m_runner(runner)
{
}

qint64 ToolSystemSource::installedMemory()
{
    return ToolOutput::installedMemory(
        m_runner.run(QStringLiteral("wmic memorychip get capacity /value")));
}

double ToolSystemSource::cpuLoad()
{
    return ToolOutput::cpuLoad(m_runner.run(QStringLiteral("wmic cpu get loadpercentage")));
}

qint64 ToolSystemSource::processMemory()
{
    const QString filter = QStringLiteral("PID eq %1").arg(QCoreApplication::applicationPid());
    return ToolOutput::processMemory(m_runner.run(
        QStringLiteral("tasklist"), {QStringLiteral("/fi"), filter, QStringLiteral("/fo"),
                                     QStringLiteral("csv"), QStringLiteral("/nh")}));
}

QString ToolSystemSource::hardwareText()
{
    // No shell parts the two commands: all of the line after its first word are arguments of wmic.
    return m_runner.run(
        QStringLiteral("wmic cpu get name, maxclockspeed, numberofcores, "
                       "numberoflogicalprocessors && wmic memorychip get capacity"));
}

QString ToolSystemSource::graphicsText()
{
    return m_runner.run(QStringLiteral("wmic path win32_VideoController get name"));
}

} // namespace norvel
