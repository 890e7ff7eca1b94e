// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ProcessCensus_linux.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace {

/// What the kernel says of a process, or of a thread, behind its name: state, parent and more;
/// empty if it is gone.
QList<QByteArray> statOf(const QString& folder)
{
    QFile file(folder + "/stat");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // "pid (name) state parent ...", and the name may hold anything.
    const QByteArray stat = file.readAll();
    return stat.mid(stat.lastIndexOf(')') + 1).simplified().split(' ');
}

} // namespace

int ProcessCensus::threads()
{
    return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

int ProcessCensus::children()
{
    int count = 0;
    for (const QString& process : QDir("/proc").entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        count +=
            statOf("/proc/" + process).value(1).toLongLong() == QCoreApplication::applicationPid();
    return count;
}

bool ProcessCensus::isMainThreadAsleep()
{
    // The main thread has the number of the process.
    const QString id = QString::number(QCoreApplication::applicationPid());
    return statOf("/proc/self/task/" + id).value(0) == "S";
}
