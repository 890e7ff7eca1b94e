// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <string>
#include <vector>

class QProcess;

/// A line of the table that the tour prints, with what stands below it.
struct TourLine
{
    int number = 0;
    std::string phase;
    std::string edit;
    int calls = 0;
    double milliseconds = 0.0;
    std::string result;
    int resultColumn = 0; ///< where the result begins
    std::vector<std::string> below;
};

/// What a run of the tour left behind.
struct TourRun
{
    int exitCode = -1;
    std::string output;
    std::string complaint; ///< standard error

    /// Runs the built program to its end; in `environment` that is in place of the test's own.
    static TourRun ofProgram(const QStringList& arguments,
                             const QProcessEnvironment& environment = environmentOfTest());
    /// Runs the built program in `folder`. The arguments reach it as a shell hands them over that
    /// was given them in UTF-8, whatever the locale is.
    static TourRun inFolder(const QString& folder, const QStringList& arguments,
                            const QProcessEnvironment& environment = environmentOfTest());
    /// Runs the tour in this process.
    static TourRun inProcess(const QStringList& arguments);

    /// Runs a program that is not started yet to its end.
    static TourRun ofProcess(QProcess& process, const QString& program,
                             const QStringList& arguments);

    static QProcessEnvironment environmentOfTest();

    /// The table; a line of it that reads otherwise than it should is a test failure.
    std::vector<TourLine> lines() const;
    /// The numbers of the steps with this result.
    std::vector<int> steps(const std::string& result) const;
    /// How many steps have this phase.
    int count(const std::string& phase) const;
    /// The last line of the output.
    std::string summary() const;
};
