// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/ToolRunner.h>

#include <norvel/widgets/systemstatus/ToolOutput.h>

#include <QProcess>

namespace norvel {

ToolRunner::ToolRunner(int limitMs)
    : m_limitMs(limitMs)
{
}

QString ToolRunner::run(const QString& commandLine) const
{
    QStringList arguments = QProcess::splitCommand(commandLine);
    if (arguments.isEmpty())
        return {};
    const QString program = arguments.takeFirst();
    QProcess process;
    process.start(program, arguments, QIODevice::ReadWrite);
    process.waitForFinished(m_limitMs);
    const QByteArray output = process.readAllStandardOutput();
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
    }
    return ToolOutput::decoded(output);
}

} // namespace norvel
