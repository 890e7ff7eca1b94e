// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RatioReporter.h"

#include <norvel/norvel.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

constexpr const char* slowTool = "NORVEL_BENCH_SLOW_TOOL";
constexpr unsigned long toolMs = 300;
constexpr int watchedMs = 3000;
constexpr int repetitions = 5;
constexpr double bound = 3.0;

/// Programs `wmic` and `tasklist` on the search path while it lives, which take their time and
/// print nothing: this program by other names.
class SlowTools
{
public:
    SlowTools()
        : m_pathBefore(qgetenv("PATH"))
    {
        const QString program = QCoreApplication::applicationFilePath();
        const QString suffix = QFileInfo(program).suffix();
        for (const char* tool : {"wmic", "tasklist"}) {
            const QString name = suffix.isEmpty() ? QString(tool) : tool + ('.' + suffix);
            QFile::copy(program, m_folder.filePath(name));
        }
        qputenv(slowTool, "1");
        qputenv("PATH", QDir::toNativeSeparators(m_folder.path()).toLocal8Bit() +
                            QDir::listSeparator().toLatin1() + m_pathBefore);
    }

    ~SlowTools()
    {
        qputenv("PATH", m_pathBefore);
        qunsetenv(slowTool);
    }

    SlowTools(const SlowTools&) = delete;
    SlowTools& operator=(const SlowTools&) = delete;

private:
    const QTemporaryDir m_folder;
    const QByteArray m_pathBefore;
};

/// Runs the event loop for a while; gives the longest time between two rounds of it in seconds,
/// seen by a timer of 1 ms.
double longestGap()
{
    QElapsedTimer time;
    qint64 longestNs = 0;
    QEventLoop loop;
    QTimer rounds;
    rounds.setTimerType(Qt::PreciseTimer);
    QObject::connect(&rounds, &QTimer::timeout, [&] {
        longestNs = std::max(longestNs, time.nsecsElapsed());
        time.start();
    });
    QTimer::singleShot(watchedMs, &loop, &QEventLoop::quit);
    time.start();
    rounds.start(1);
    loop.exec();
    return static_cast<double>(longestNs) / 1e9;
}

void watchBareLoop(benchmark::State& state)
{
    for (auto _ : state)
        state.SetIterationTime(longestGap());
    state.SetItemsProcessed(state.iterations());
}

/// While a shown panel's tools run, one after another.
void watchLoopWithPanel(benchmark::State& state)
{
    const SlowTools tools;
    systemstatus panel(nullptr);
    panel.show();
    for (auto _ : state)
        state.SetIterationTime(longestGap());
    state.SetItemsProcessed(state.iterations());
}

void registerRun(const char* name, void (*function)(benchmark::State&))
{
    benchmark::RegisterBenchmark(name, function)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(repetitions);
}

void registerAll()
{
    registerRun("event_loop_gap", watchLoopWithPanel);
    registerRun("event_loop_gap_bare", watchBareLoop);
}

bool printPromises(const RatioReporter& reporter)
{
    const std::string run = "/iterations:1/repeats:" + std::to_string(repetitions) + "/manual_time";
    std::printf("\nRatios to an event loop without the panel\n");
    return reporter.printRatio("longest gap of the event loop, with slow tools",
                               "event_loop_gap" + run, "event_loop_gap_bare" + run, bound);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet(slowTool)) {
        QThread::msleep(toolMs);
        return 0;
    }
    return runBenchmarks(argc, argv, registerAll, printPromises);
}
