// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourRun.h"

#include <QProcess>
#include <QTemporaryDir>

#include <fstream>

namespace {

std::string quoted(QString argument)
{
    return '\'' + argument.replace('\'', "'\\''").toStdString() + '\'';
}

} // namespace

// QProcess writes arguments in the encoding of the test's locale: a script has them in their own.
TourRun TourRun::inFolder(const QString& folder, const QStringList& arguments,
                          const QProcessEnvironment& environment)
{
    const QTemporaryDir scripts;
    const QString script = scripts.filePath("script");
    {
        std::ofstream stream(script.toStdString());
        stream << "exec \"$1\"";
        for (const QString& argument : arguments)
            stream << ' ' << quoted(argument);
        stream << '\n';
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    return ofProcess(process, "/bin/sh", {script, NORVEL_TOUR_PROGRAM});
}
