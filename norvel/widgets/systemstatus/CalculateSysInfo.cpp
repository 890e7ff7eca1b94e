// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>

#include <norvel/widgets/systemstatus/SystemSource.h>
#include <norvel/widgets/systemstatus/ToolRunner.h>

#include <QThread>
#include <QTimer>

#include <utility>

namespace {

constexpr int tickMs = 1000;

/// Whether the worker is to end. Its event loop alone would not see that before all ticks that wait
/// are served, each with its commands.
bool isToEnd()
{
    return QThread::currentThread()->isInterruptionRequested();
}

/// The share of the total in percent, in whole totals: the integer division comes first.
double shareOf(qint64 total, qint64 bytes)
{
    const qint64 wholeTotals = total > 0 ? bytes / total : 0;
    return static_cast<double>(wholeTotals) * 100.0;
}

} // namespace

CalculateSysInfo::CalculateSysInfo()
    : CalculateSysInfo(norvel::SystemSource::create(runCommand))
{
}

CalculateSysInfo::CalculateSysInfo(std::unique_ptr<norvel::SystemSource> source)
    : timer(new QTimer)
    , totalMemory(source->installedMemory())
    , m_source(std::move(source))
{
    connect(timer, &QTimer::timeout, this, &CalculateSysInfo::sample);
    timer->start(tickMs);
}

CalculateSysInfo::~CalculateSysInfo() = default;

void CalculateSysInfo::sample()
{
    if (isToEnd())
        return;
    const double cpu = m_source->cpuLoad();
    if (isToEnd())
        return;
    const qint64 bytes = m_source->processMemory();
    if (!isToEnd())
        emit updateCpuMemUsage(cpu, shareOf(totalMemory, bytes));
}

void CalculateSysInfo::collectHardwareInfo()
{
    if (isToEnd())
        return;
    const QString hardware = m_source->hardwareText();
    if (isToEnd())
        return;
    const QString graphics = m_source->graphicsText();
    if (!isToEnd())
        emit displayInfo(graphics, hardware);
}

QString CalculateSysInfo::runCommand(const QString& commandLine)
{
    return norvel::ToolRunner().run(commandLine);
}
