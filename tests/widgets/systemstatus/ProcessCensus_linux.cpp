// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ProcessCensus_linux.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

int ProcessCensus::threads()
{
    return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

int ProcessCensus::children()
{
    int count = 0;
    for (const QString& process : QDir("/proc").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file("/proc/" + process + "/stat");
        if (!file.open(QIODevice::ReadOnly))
            continue;
        // "pid (name) state parent ...", and the name may hold anything.
        const QByteArray stat = file.readAll();
        const QList<QByteArray> fields =
            stat.mid(stat.lastIndexOf(')') + 1).simplified().split(' ');
        count += fields.value(1).toLongLong() == QCoreApplication::applicationPid();
    }
    return count;
}
