// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// What the library asks the Windows tools for.
enum class Query { InstalledMemory, CpuLoad, ProcessMemory, Hardware, Graphics };

/// Programs named `wmic` and `tasklist` on the search path while it lives. They print nothing until
/// they are told to. One at a time.
class FakeTools
{
public:
    FakeTools();
    ~FakeTools();
    FakeTools(const FakeTools&) = delete;
    FakeTools& operator=(const FakeTools&) = delete;

    /// What the tool prints for this query.
    void answer(Query query, const QByteArray& bytes);
    /// Answers to all queries, as a machine with 8 GB and a load of 12 percent gives them.
    void answerAll();
    /// Lets the tool wait before it prints, until it is released.
    void hold(Query query);
    void holdAll();
    /// Lets a tool that waits go on, and those that are started later not wait. Any thread may
    /// call it.
    void release(Query query);
    /// The tool does not end after it has printed.
    void linger(Query query);
    /// The tool then waits for the end of its input.
    void readInput(Query query);
    void fail(Query query, int exitCode);
    void crash(Query query);

    /// The tools that were started so far, each with its arguments: "wmic|cpu|get|loadpercentage".
    QStringList begun() const { return logged("begin "); }
    /// Those of them that came to their end.
    QStringList ended() const { return logged("end "); }

    /// The command line that a query is, as `begun` gives it.
    static QString callOf(Query query);

private:
    QString fileOf(Query query, const char* what) const;
    void write(Query query, const char* what, const QByteArray& content) const;
    QStringList logged(const QString& what) const;

    QTemporaryDir m_folder;
    QByteArray m_pathBefore;
    QString m_workingFolderBefore;
};
