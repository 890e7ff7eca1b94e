// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace {

constexpr Query allQueries[] = {Query::InstalledMemory, Query::CpuLoad, Query::ProcessMemory,
                                Query::Hardware, Query::Graphics};

/// The tool and the letters of its last argument, by which it knows what is asked.
QString nameOf(Query query)
{
    switch (query) {
    case Query::InstalledMemory:
        return "wmic-value";
    case Query::CpuLoad:
        return "wmic-loadpercentage";
    case Query::ProcessMemory:
        return "tasklist-nh";
    case Query::Hardware:
        return "wmic-capacity";
    case Query::Graphics:
        break;
    }
    return "wmic-name";
}

} // namespace

FakeTools::FakeTools()
    : m_pathBefore(qgetenv("PATH"))
    , m_workingFolderBefore(QDir::currentPath())
{
    qputenv("NORVEL_FAKE_TOOLS", m_folder.path().toLocal8Bit());
    qputenv("PATH", QDir::toNativeSeparators(FAKE_TOOLS).toLocal8Bit() +
                        QDir::listSeparator().toLatin1() + m_pathBefore);
    // Windows looks for programs in its own folder before it looks on the path, and in the working
    // folder before both.
    EXPECT_TRUE(QDir::setCurrent(FAKE_TOOLS));
}

FakeTools::~FakeTools()
{
    QDir::setCurrent(m_workingFolderBefore);
    qputenv("PATH", m_pathBefore);
    qunsetenv("NORVEL_FAKE_TOOLS");
}

void FakeTools::answer(Query query, const QByteArray& bytes)
{
    write(query, "answer", bytes);
}

void FakeTools::answerAll()
{
    answer(Query::InstalledMemory, "\r\r\n\r\r\nCapacity=8589934592\r\r\n\r\r\n\r\r\n");
    answer(Query::CpuLoad, "LoadPercentage  \r\r\n12              \r\r\n\r\r\n");
    answer(Query::ProcessMemory, "\"editor.exe\",\"4242\",\"Console\",\"1\",\"123,456 K\"\r\n");
    answer(Query::Hardware, "MaxClockSpeed  Name\r\r\n3600           Some CPU\r\r\n");
    answer(Query::Graphics, "Name\r\r\nSome GPU\r\r\n");
}

void FakeTools::hold(Query query)
{
    write(query, "hold", "yes");
}

void FakeTools::holdAll()
{
    for (const Query query : allQueries)
        hold(query);
}

void FakeTools::release(Query query)
{
    EXPECT_TRUE(QFile::remove(fileOf(query, "hold")));
}

void FakeTools::linger(Query query)
{
    write(query, "linger", "yes");
}

void FakeTools::readInput(Query query)
{
    write(query, "read", "yes");
}

void FakeTools::fail(Query query, int exitCode)
{
    write(query, "exit", QByteArray::number(exitCode));
}

void FakeTools::crash(Query query)
{
    write(query, "exit", "crash");
}

QString FakeTools::callOf(Query query)
{
    switch (query) {
    case Query::InstalledMemory:
        return "wmic|memorychip|get|capacity|/value";
    case Query::CpuLoad:
        return "wmic|cpu|get|loadpercentage";
    case Query::ProcessMemory:
        return QString("tasklist|/fi|PID eq %1|/fo|csv|/nh")
            .arg(QCoreApplication::applicationPid());
    case Query::Hardware:
        return "wmic|cpu|get|name,|maxclockspeed,|numberofcores,|numberoflogicalprocessors|&&|wmic|"
               "memorychip|get|capacity";
    case Query::Graphics:
        break;
    }
    return "wmic|path|win32_VideoController|get|name";
}

QString FakeTools::fileOf(Query query, const char* what) const
{
    return m_folder.filePath(nameOf(query) + '.' + what);
}

void FakeTools::write(Query query, const char* what, const QByteArray& content) const
{
    QFile file(fileOf(query, what));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
}

QStringList FakeTools::logged(const QString& what) const
{
    QFile file(m_folder.filePath("calls.log"));
    if (!file.open(QIODevice::ReadOnly))
        return {}; // nothing was called yet
    QStringList calls;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
        if (line.startsWith(what))
            calls.append(line.mid(what.size()));
    }
    return calls;
}
