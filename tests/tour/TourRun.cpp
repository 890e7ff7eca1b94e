// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourRun.h"

#include "tour/TourProgram.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>

#include <algorithm>
#include <sstream>

namespace {

constexpr int RunTimeoutMs = 120000;

TourLine parse(const QRegularExpressionMatch& match)
{
    TourLine line;
    line.number = match.captured(1).toInt();
    line.phase = match.captured(2).toStdString();
    line.edit = match.captured(3).toStdString();
    line.calls = match.captured(4).toInt();
    line.milliseconds = match.captured(5).toDouble();
    line.result = match.captured(6).toStdString();
    line.resultColumn = match.capturedStart(6);
    return line;
}

} // namespace

TourRun TourRun::ofProcess(QProcess& process, const QString& program, const QStringList& arguments)
{
    process.start(program, arguments, QIODevice::ReadOnly);
    EXPECT_TRUE(process.waitForFinished(RunTimeoutMs)) << process.errorString().toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    // Programs end their lines as the system does.
    return {process.exitCode(), process.readAllStandardOutput().replace("\r\n", "\n").toStdString(),
            process.readAllStandardError().replace("\r\n", "\n").toStdString()};
}

TourRun TourRun::ofProgram(const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    return ofProcess(process, NORVEL_TOUR_PROGRAM, arguments);
}

TourRun TourRun::inProcess(const QStringList& arguments)
{
    std::ostringstream out;
    std::ostringstream err;
    TourRun run;
    run.exitCode = runTourProgram(QStringList{"norvel-tour"} + arguments, out, err);
    run.output = out.str();
    run.complaint = err.str();
    return run;
}

QProcessEnvironment TourRun::environmentOfTest()
{
    return QProcessEnvironment::systemEnvironment();
}

std::vector<TourLine> TourRun::lines() const
{
    static const QRegularExpression stepLine(
        R"(^ *(\d+)  (edit|undo|redo)  (\S(?:.*\S)?) +(\d+) +(\d+\.\d+)  (same|different)$)");
    std::vector<TourLine> lines;
    std::istringstream stream(output);
    std::string text;
    while (std::getline(stream, text) && text.compare(0, 4, "step") != 0) {
    }
    while (std::getline(stream, text) && !text.empty()) {
        const auto match = stepLine.match(QString::fromStdString(text));
        if (text.compare(0, 8, "        ") == 0 && !lines.empty())
            lines.back().below.push_back(text.substr(8));
        else if (match.hasMatch())
            lines.push_back(parse(match));
        else
            ADD_FAILURE() << "no line of the table: " << text;
    }
    return lines;
}

std::vector<int> TourRun::steps(const std::string& result) const
{
    std::vector<int> numbers;
    for (const TourLine& line : lines()) {
        if (line.result == result)
            numbers.push_back(line.number);
    }
    return numbers;
}

int TourRun::count(const std::string& phase) const
{
    const std::vector<TourLine> all = lines();
    return static_cast<int>(std::count_if(
        all.begin(), all.end(), [&](const TourLine& line) { return line.phase == phase; }));
}

std::string TourRun::summary() const
{
    const std::string text = output.substr(0, output.find_last_not_of('\n') + 1);
    return text.substr(text.rfind('\n') + 1);
}
