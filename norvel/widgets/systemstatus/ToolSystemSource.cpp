// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/ToolSystemSource.h>

#include <norvel/widgets/systemstatus/ToolOutput.h>

#include <QCoreApplication>
#include <QStandardPaths>

#include <utility>

namespace norvel {

ToolSystemSource::ToolSystemSource(CommandRunner runCommand)
    : m_runCommand(std::move(runCommand))
{
}

QStringList ToolSystemSource::missingTools()
{
    QStringList missing;
    for (const QString& tool : {QStringLiteral("wmic"), QStringLiteral("tasklist")}) {
        if (QStandardPaths::findExecutable(tool).isEmpty())
            missing.append(tool);
    }
    return missing;
}

qint64 ToolSystemSource::installedMemory()
{
    return ToolOutput::installedMemory(
        m_runCommand(QStringLiteral("wmic memorychip get capacity /value")));
}

double ToolSystemSource::cpuLoad()
{
    return ToolOutput::cpuLoad(m_runCommand(QStringLiteral("wmic cpu get loadpercentage")));
}

qint64 ToolSystemSource::processMemory()
{
    return ToolOutput::processMemory(
        m_runCommand(QStringLiteral("tasklist /fi \"PID eq %1\" /fo csv /nh")
                         .arg(QCoreApplication::applicationPid())));
}

QString ToolSystemSource::hardwareText()
{
    // No shell splits the two commands: all of the line after its first word are arguments of wmic.
    return m_runCommand(
        QStringLiteral("wmic cpu get name, maxclockspeed, numberofcores, "
                       "numberoflogicalprocessors && wmic memorychip get capacity"));
}

QString ToolSystemSource::graphicsText()
{
    return m_runCommand(QStringLiteral("wmic path win32_VideoController get name"));
}

} // namespace norvel
