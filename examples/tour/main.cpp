// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourProgram.h"

#include <QGuiApplication>

#include <iostream>

namespace {

QtMessageHandler defaultHandler = nullptr;

/// Leaves out what Qt's start says of a folder that only windows need: the program writes nothing
/// but its own complaints to standard error.
void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (!text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR")))
        defaultHandler(type, context, text);
}

/// The arguments as text. Outside Windows they are UTF-8, like every path of the framework, also
/// under a locale that would have Qt read them otherwise.
QStringList commandLine(int argc, char** argv)
{
#ifdef Q_OS_WIN
    Q_UNUSED(argc)
    Q_UNUSED(argv)
    return QCoreApplication::arguments();
#else
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromUtf8(argv[i]));
    return arguments;
#endif
}

} // namespace

int main(int argc, char** argv)
{
    // The tour shows no window: it needs no screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    defaultHandler = qInstallMessageHandler(handleMessage);
    const QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("norvel-tour"));
    return runTourProgram(commandLine(argc, argv), std::cout, std::cerr);
}
